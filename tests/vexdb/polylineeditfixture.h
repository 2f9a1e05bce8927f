#pragma once

#include "tests/vexdb/polylinefixture.h"
#include "tests/vexdb/polylinewords.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"

#include <algorithm>
#include <functional>

/// An undo record in words: its number, the vertex, and what was there before.
inline std::string wordsOf(const tagUndoEditEntity& edit)
{
    std::ostringstream words;
    words << edit.editType;
    if (edit.index >= 0) {
        words << '[' << edit.index << ']';
    }
    if (edit.editType == kUndoChangeBulge) {
        words << '=' << wordOf(edit.vector.x);
    } else if (edit.editType == kUndoMovePoint || edit.editType == kUndoRemoveVertex) {
        words << '@' << wordOf(edit.point);
    }
    return words.str();
}

/// A polyline that stands in the drawing, edited as the commands do it.
class PolylineEditTest : public EntityTest {
protected:
    CVexDbPolyline& put(std::initializer_list<Corner> corners, bool closed = false)
    {
        drawing.undoHandler().clear();
        polyline = add(new CVexDbPolyline(0, &drawing));
        setCorners(*polyline, corners, closed);
        return *polyline;
    }
    CVexDbEntity* cutter(CVexGePoint2d start, CVexGePoint2d end)
    {
        m_others.push_back(std::make_unique<CVexDbLine>(start, end));
        return m_others.back().get();
    }
    CVexDbEntity* upright(double x) { return cutter({x, -50}, {x, 50}); }
    CVexDbEntity* level(double y) { return cutter({-50, y}, {50, y}); }
    CVexDbPolyline* otherPolyline(std::initializer_list<Corner> corners, bool closed = false)
    {
        auto made = std::make_unique<CVexDbPolyline>(0, &drawing);
        setCorners(*made, corners, closed);
        m_others.push_back(std::move(made));
        return static_cast<CVexDbPolyline*>(m_others.back().get());
    }
    /// What a trim leaves, in words: the polyline, then what is new.
    std::string trim(CVexGePoint2d pick, std::vector<CVexDbEntity*> cutters)
    {
        std::unique_ptr<CVexDbEntity> made(polyline->Trim(pick, cutters, kGeEpsilon));
        rest.reset(static_cast<CVexDbPolyline*>(made.release()));
        std::ostringstream words;
        words << wordsOf(*polyline);
        if (rest != nullptr) {
            words << " and " << wordsOf(*rest);
        }
        return words.str();
    }
    bool extend(CVexGePoint2d pick, std::vector<CVexDbEntity*> boundaries)
    {
        return polyline->Extend(pick, boundaries, kGeEpsilon);
    }
    /// The undo stack in words, the oldest record first.
    std::string records()
    {
        const auto& stack = drawing.undoHandler().undoStack();
        std::ostringstream words;
        const char* gap = "";
        for (auto edit = stack.rbegin(); edit != stack.rend(); ++edit) {
            words << gap << wordsOf(*edit);
            gap = " ";
        }
        return words.str();
    }
    /// Does `edit`, and holds one undo and one redo against the bytes before and after it.
    void editThereAndBack(const std::function<void()>& edit)
    {
        const std::vector<std::byte> before = saved(*polyline);
        edit();
        const std::vector<std::byte> after = saved(*polyline);
        EXPECT_NE(before, after);
        for (int turn = 0; turn < 2; ++turn) {
            EXPECT_TRUE(drawing.undoHandler().Undo());
            EXPECT_TRUE(drawing.undoHandler().undoStack().empty());
            EXPECT_EQ(before, saved(*polyline));
            EXPECT_TRUE(drawing.undoHandler().Redo());
            EXPECT_TRUE(drawing.undoHandler().redoStack().empty());
            EXPECT_EQ(after, saved(*polyline));
        }
    }

    CVexDbPolyline* polyline = nullptr;
    std::unique_ptr<CVexDbPolyline> rest;

private:
    std::vector<std::unique_ptr<CVexDbEntity>> m_others;
};
