#pragma once

#include "platform/base/cfile.h"
#include "tests/dbtracker/trackerfixture.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbpoint.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"

#include <cstddef>
#include <utility>
#include <vector>

/// Two lines of the drawing, (10, 10) to (12, 10) and (10, 20) to (14, 20), and a user who edits.
class EditingTest : public TrackerTest {
protected:
    using Records = std::vector<std::pair<int, bool>>;

    EditingTest()
    {
        first = addLine({10, 10}, {12, 10});
        second = addLine({10, 20}, {14, 20});
        database->setLastPoint({7, 8});
        start = bytes();
    }

    /// Runs an editing command to its end: it gives nothing back and leaves its step alone.
    void run(VexDb::CommandID id)
    {
        unsigned long step = 5;
        EXPECT_EQ(nullptr, handler().DoCommand(id, step));
        EXPECT_EQ(5u, step);
        expectReleased();
    }
    void select(CVexDbEntity* entity) { handler().DoDragEntity(entity, {}); }
    void selectBoth()
    {
        select(first);
        select(second);
    }
    /// Picks both lines and closes the selection.
    void pickBoth()
    {
        clickAt(11, 10);
        clickAt(12, 20);
        type(L"\n");
    }
    template <class Entity>
    Entity* add(Entity* entity)
    {
        CVexDbObjectId id;
        database->addEntity(entity, id);
        return entity;
    }
    /// The drawing as a file.
    std::vector<std::byte> bytes()
    {
        CMemFile file{CString(L"plan.zpl")};
        CArchive archive(&file, CArchive::store);
        EXPECT_TRUE(database->Save(archive) && file.Close());
        return file.bytes();
    }
    /// Edit type and continuation flag of each undo record, the oldest first.
    Records records()
    {
        Records all;
        for (const tagUndoEditEntity& edit : undo().undoStack()) {
            all.insert(all.begin(), {edit.editType, edit.continues});
        }
        return all;
    }
    /// The lines that can be seen, the oldest first.
    std::vector<CVexDbLine*> lines()
    {
        std::vector<CVexDbLine*> found;
        for (const CVexDbObjectId& id : *view->displayedIdSet()) {
            CVexDbObject* const object = id.getPObject();
            if (object->isVisiable() && object->classType() == VexDb::kLine) {
                found.push_back(static_cast<CVexDbLine*>(object));
            }
        }
        return found;
    }
    void expectWhole()
    {
        for (const CString& fault : database->selfCheck()) {
            ADD_FAILURE() << fault.utf8();
        }
    }
    void expectUntouched()
    {
        EXPECT_TRUE(start == bytes());
        EXPECT_TRUE(undo().undoStack().empty());
        EXPECT_POINT(7.0, 8.0, database->lastPoint());
        expectWhole();
    }
    /// All steps back give the bytes of the start, all forth again those of now.
    void expectExactUndo()
    {
        const std::vector<std::byte> end = bytes();
        EXPECT_FALSE(start == end);
        while (undo().Undo()) {
        }
        EXPECT_TRUE(start == bytes());
        expectWhole();
        while (undo().Redo()) {
        }
        EXPECT_TRUE(end == bytes());
        expectWhole();
    }

    CVexDbLine* first = nullptr;
    CVexDbLine* second = nullptr;
    std::vector<std::byte> start;
};
