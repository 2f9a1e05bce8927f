#pragma once

#include "tests/file/filetest.h"
#include "tests/vexge/geasserts.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexundohandler.h"

#include <memory>
#include <vector>

/// A drawing with records to change to, and short ways to edit it as commands do: each records
/// first and acts then, where the order matters.
class UndoTest : public FileTest {
protected:
    UndoTest() { _gpDatabase = &drawing; }
    ~UndoTest() override { _gpDatabase = nullptr; }

    CVexDbLine* addLine(CVexGePoint2d start = {0, 0}, CVexGePoint2d end = {10, 0})
    {
        return addTo(drawing, new CVexDbLine(start, end));
    }
    static tagUndoEditEntity edit(const CVexDbEntity* entity, int type, bool continues = false)
    {
        tagUndoEditEntity record;
        record.continues = continues;
        record.editType = type;
        record.entity = entity->objectId();
        return record;
    }
    int record(const CVexDbEntity* entity, int type, bool continues = false)
    {
        const tagUndoEditEntity made = edit(entity, type, continues);
        return undo.AddUndo(&made);
    }
    void move(CVexDbEntity* entity, CVexGeVector2d by, bool continues = false)
    {
        tagUndoEditEntity made = edit(entity, kUndoMove, continues);
        made.vector = by;
        undo.AddUndo(&made);
        entity->TranslateBy(by);
    }
    void mirror(CVexDbEntity* entity, CVexGePoint2d at, CVexGeVector2d along)
    {
        tagUndoEditEntity made = edit(entity, kUndoMirror);
        made.point = at;
        made.vector = along;
        undo.AddUndo(&made);
        entity->Mirror(CVexGeLine2d(at, along));
    }
    void rotate(CVexDbEntity* entity, CVexGePoint2d about, double angle)
    {
        tagUndoEditEntity made = edit(entity, kUndoRotate);
        made.point = about;
        made.vector = CVexGeVector2d(angle);
        undo.AddUndo(&made);
        entity->RotateBy(angle, about);
    }
    void scale(CVexDbEntity* entity, CVexGePoint2d about, double fx, double fy)
    {
        tagUndoEditEntity made = edit(entity, kUndoScale);
        made.point = about;
        made.vector.set(fx, fy);
        undo.AddUndo(&made);
        entity->ScaleBy(fx, fy, about);
    }
    void erase(CVexDbEntity* entity, bool continues = false)
    {
        entity->setErased();
        record(entity, kUndoErase, continues);
    }
    /// The record of a name in its table.
    template <class Table>
    static CVexDbObjectId named(Table& table, const wchar_t* name)
    {
        CVexDbObjectId id;
        EXPECT_TRUE(table.getAt(name, id, false));
        return id;
    }
    std::vector<std::byte> bytes() { return saved(drawing); }

    CVexDbDatabase drawing{false};
    CVexUndoHandler& undo = drawing.undoHandler();
};

/// Data of a record that counts how many of its kind there are.
struct CountedData : VexUndoData {
    CountedData() { ++living; }
    ~CountedData() override { --living; }
    void swapWith(CVexDbEntity&) override { ++swaps; }

    static inline int living = 0;
    int swaps = 0;
};

#define EXPECT_LINE(x1, y1, x2, y2, line)                                                          \
    EXPECT_POINT(x1, y1, (line)->StartPoint());                                                    \
    EXPECT_POINT(x2, y2, (line)->EndPoint())
