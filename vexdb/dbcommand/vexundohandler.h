#pragma once

#include "platform/base/vexexport.h"
#include "vexdb/dbcommand/vexundodata.h"
#include "vexdb/dbobject/vexdbobjectid.h"
#include "vexge/gemath/vexgepoint2d.h"
#include "vexge/gemath/vexgevector2d.h"

#include <cstdint>
#include <deque>
#include <memory>

class CVexDbDatabase;
class CVexDbEntity;
class CVexDbPolyline;
class CWnd;
class VexUndoVertices;

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
    kUndoChangeStart = 34, // what lies between is reserved
};

/// One undo record: what was done to which entity, with which numbers.
struct VEXDB_EXPORT tagUndoEditEntity {
    bool continues = true; // undone together with the next older record
    std::int32_t editType = kUndoMark;
    std::int32_t classType = 56; // stands for no class until the handler finds one
    CVexGePoint2d point;
    CVexGeVector2d vector;
    CVexDbObjectId entity;
    CVexDbObjectId other; // the block, or the layer, linetype or colour before
    CVexDbObjectId third;
    std::int32_t weight = 0;
    std::int32_t index = -1;
    std::int32_t index2 = -1;
    std::shared_ptr<VexUndoData> data; // a text or shape kept; goes with its last record
};

/// Undo and redo by inverse operation: a record says what was done, undoing it does the opposite
/// through the entity's own setters, turns the record into its inverse and moves it to the other
/// stack.
class VEXDB_EXPORT CVexUndoHandler {
public:
    CVexUndoHandler();
    ~CVexUndoHandler();
    CVexUndoHandler(const CVexUndoHandler&) = delete;
    CVexUndoHandler& operator=(const CVexUndoHandler&) = delete;

    /// Pushes a copy of a new edit; the redo stack goes. Null (from Redo) pushes the current
    /// record. One that classifies nowhere, and a new one while redoing, is dropped. Gives the
    /// stack's size, or 0 while undoing. In an open group the record's `continues` is the group's;
    /// outside of one a dropped record hands its false on to the next.
    ///
    /// A transform is recorded before it is done: where no number brings the shape back, as after
    /// a scale by 0, the record keeps the shape that the entity has now. An erasure keeps the block
    /// that the entity stands in.
    int AddUndo(const tagUndoEditEntity* edit);
    /// Pushes the current record; gives the redo stack's size, or 0 while redoing.
    int AddRedo();
    /// Takes the newest step back, or forth again, drops from the selection what is no longer
    /// visible and has the view repainted. True when its last record succeeded; false for an empty
    /// stack, and while a command, track or menu of the drawing runs.
    bool Undo();
    bool Redo();
    /// Drops records unapplied, up to a kUndoStop and with it; gives how many.
    int UndoPop();
    /// The window to redraw after a step; not owned.
    void setView(CWnd* view) { m_view = view; }
    [[nodiscard]] bool isUndoing() const { return m_undoing; }
    [[nodiscard]] bool isRedoing() const { return m_redoing; }
    [[nodiscard]] const std::deque<tagUndoEditEntity>& undoStack() const { return m_undo; }
    [[nodiscard]] const std::deque<tagUndoEditEntity>& redoStack() const { return m_redo; }
    /// Drops every record with its data.
    void clear();

    // Classify the current record: what every entity shares goes to class 0.
    bool MakeUndoEntity();
    bool MakeUndoArc();
    bool MakeUndoBox();
    bool MakeUndoCircle();
    bool MakeUndoLine();
    bool MakeUndoPolyline();
    bool MakeUndoRect();
    // Apply the current record and turn it into its inverse.
    bool UndoEntity(bool redo);
    /// kUndoChangeAngle: the start (index 0) or end angle swapped with that of `vector`, to the bit
    /// where `point.x` is that angle, too; kUndoChangeSize: the radius swapped with `vector.x`.
    bool UndoArc(bool redo);
    /// kUndoChangeSize: the radius swapped with `vector.x`.
    bool UndoCircle(bool redo);
    /// kUndoMovePoint: width and height swapped with `vector`.
    bool UndoBox(bool redo);
    /// kUndoMovePoint: the start (index 0) or end moved by minus `vector`, to the bit where `point`
    /// is the place that it came from.
    bool UndoLine(bool redo);
    /// The vertex at `index`: its bulge swapped with `vector.x`, its place with `point`, itself
    /// taken out or put in; closing, direction and start (`index`) of the polyline turned back.
    /// Records of closing, opening and another start are made before these are done: they keep what
    /// is lost.
    bool UndoPolyline(bool redo);
    /// kUndoChangeSize: the sides swapped with `point` (left, top) and `vector` (right, bottom);
    /// kUndoMovePoint: the left top (index 0) or right bottom swapped with `point`.
    bool UndoRect(bool redo);

    // Groups: see VexUndoGroup.
    void openGroup();
    void closeGroup();

private:
    bool step(bool redo);
    bool applyCurrent(bool redo, bool& inBlock);
    void finishStep(CVexDbDatabase* drawing);
    [[nodiscard]] bool classifyByEntity();
    bool classifyAs(int classType);
    void pushNew();
    void keepWhatIsLost();
    template <class Entity = CVexDbEntity>
    Entity& subject() const
    {
        return static_cast<Entity&>(*m_current.entity.getPObject());
    }
    void changePresence(CVexDbEntity& entity);
    void putBack(CVexDbEntity& entity) const;
    void transform(CVexDbEntity& entity, bool redo);
    void swapProperty(CVexDbEntity& entity);
    VexUndoVertices& verticesOf(CVexDbPolyline& polyline);
    [[nodiscard]] bool isAboutVertices() const;
    [[nodiscard]] bool isPresenceOfAnother() const;

    bool m_undoing = false;
    bool m_redoing = false;
    CWnd* m_view = nullptr;
    tagUndoEditEntity m_current;
    std::deque<tagUndoEditEntity> m_undo; // the front is the newest
    std::deque<tagUndoEditEntity> m_redo;
    int m_groups = 0;                            // open ones, one in another
    int m_groupRecords = 0;                      // pushed since the outermost was opened
    bool m_endIsOwed = false;                    // the false of a record that was dropped
    std::unique_ptr<VexUndoVertices> m_vertices; // of the polyline that a step is at, or null
};

/// Makes one undo step of everything recorded while it lives: the first record really pushed ends
/// the step, the rest chain to it. One inside another starts none of its own.
class VexUndoGroup {
public:
    explicit VexUndoGroup(CVexUndoHandler& undo) : m_undo(undo) { m_undo.openGroup(); }
    ~VexUndoGroup() { m_undo.closeGroup(); }
    VexUndoGroup(const VexUndoGroup&) = delete;
    VexUndoGroup& operator=(const VexUndoGroup&) = delete;

private:
    CVexUndoHandler& m_undo;
};
