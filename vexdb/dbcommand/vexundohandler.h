#pragma once

#include "platform/base/vexexport.h"
#include "vexdb/dbobject/vexdbobjectid.h"
#include "vexge/gemath/vexgepoint2d.h"
#include "vexge/gemath/vexgevector2d.h"

#include <cstdint>
#include <deque>

class CWnd;

/// What an undo record says was done; the handlers of the classes know these numbers.
enum UndoEditType : std::int32_t {
    kUndoMark = 0,
    kUndoBlockBegin = 1,
    kUndoBlockEnd = 2,
    kUndoStop = 3,
    kUndoAddToOwner = 4,
    kUndoRemoveFromOwner = 5,
    kUndoCreate = 6,
    kUndoErase = 7,
    kUndoMove = 8,
    kUndoMirror = 9,
    kUndoRotate = 10,
    kUndoScale = 11,
    kUndoChangeText = 12,
    kUndoChangeAngle = 13,
    kUndoChangeSize = 14,
    kUndoChangeBulge = 15,
    kUndoClose = 16,
    kUndoOpen = 17,
    kUndoMovePoint = 18,
    kUndoChangeParam = 19,
    kUndoChangeCount = 20,
    kUndoReservedA = 21,
    kUndoChangeLayer = 22,
    kUndoChangeLinetype = 23,
    kUndoChangeColor = 24,
    kUndoChangeWeight = 25,
    kUndoAddVertex = 26,
    kUndoRemoveVertex = 27,
    kUndoReverse = 28,
};

/// One undo record: what was done to which entity, with which numbers.
struct VEXDB_EXPORT tagUndoEditEntity {
    bool continues = true; // undone together with the next older record
    std::int32_t editType = kUndoMark;
    std::int32_t classType = 56; // stands for no class until the handler finds one
    CVexGePoint2d point;
    CVexGeVector2d vector;
    CVexDbObjectId entity;
    CVexDbObjectId other;
    CVexDbObjectId third;
    std::int32_t weight = 0;
    std::int32_t index = -1;
    std::int32_t index2 = -1;
    void* data = nullptr; // saved text, a new wchar_t[] that the record owns
};

/// Keeps the records of what was edited, newest first.
class VEXDB_EXPORT CVexUndoHandler {
public:
    CVexUndoHandler() = default;
    ~CVexUndoHandler();
    CVexUndoHandler(const CVexUndoHandler&) = delete;
    CVexUndoHandler& operator=(const CVexUndoHandler&) = delete;
    /// Pushes a copy of `edit` and takes over its data; one whose entity is null pushes nothing.
    /// Returns the stack's size.
    int AddUndo(const tagUndoEditEntity& edit);
    [[nodiscard]] const std::deque<tagUndoEditEntity>& undoStack() const { return m_undo; }
    /// Drops every record with its data.
    void clear();

private:
    std::deque<tagUndoEditEntity> m_undo; // the front is the newest
};
