#include "editingfixture.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"

namespace {

class EraseCommandTest : public EditingTest {
protected:
    /// The strokes that take something off the screen.
    [[nodiscard]] std::vector<std::vector<CPoint>> wiped() const
    {
        std::vector<std::vector<CPoint>> found;
        for (const VexStroke& stroke : dc.strokes()) {
            if (stroke.rop == R2_MASKNOTPEN) {
                found.push_back(stroke.points);
            }
        }
        return found;
    }
};

TEST_F(EraseCommandTest, TheSelectionGoesWithoutAQuestionAsOneStep)
{
    selectBoth();
    CVexDbLine* const third = addLine({30, 30}, {35, 30});
    start = bytes();
    dc.clear();
    run(VexDb::CmdErase);
    EXPECT_EQ(L"", told());
    EXPECT_EQ(L"", line());
    EXPECT_TRUE(first->isErased() && second->isErased());
    EXPECT_FALSE(third->isErased());
    EXPECT_TRUE(handler().trackers().empty() && handler().selectedEntities().empty());
    EXPECT_EQ((Records{{kUndoErase, false}, {kUndoErase, true}}), records());
    EXPECT_POINT(7.0, 8.0, database->lastPoint());
    expectExactUndo();
}

TEST_F(EraseCommandTest, EachIsDrawnOnceToTakeItOffTheScreen)
{
    selectBoth();
    addLine({10, 10}, {35, 30});
    dc.clear();
    run(VexDb::CmdErase);
    EXPECT_EQ(
        (std::vector<std::vector<CPoint>>{{px(10, 10), px(12, 10)}, {px(10, 20), px(14, 20)}}),
        wiped());
    EXPECT_EQ(R2_COPYPEN, dc.GetROP2());
}

TEST_F(EraseCommandTest, WithoutASelectionTheSetIsPicked)
{
    pickBoth();
    run(VexDb::CmdErase);
    EXPECT_EQ(L"P35: ", line());
    EXPECT_TRUE(lines().empty());
    EXPECT_EQ(2u, wiped().size());
    expectExactUndo();
}

TEST_F(EraseCommandTest, AWindowErasesWhatLiesInside)
{
    clickAt(9, 9);
    clickAt(13, 11);
    type(L"\n");
    run(VexDb::CmdErase);
    EXPECT_TRUE(first->isErased());
    EXPECT_FALSE(second->isErased());
}

TEST_F(EraseCommandTest, EscapeLossAndAnEmptySetEraseNothing)
{
    for (const auto& leave : std::vector<std::function<void()>>{
             [this] {
                 clickAt(11, 10);
                 press(VK_ESCAPE);
             },
             [this] { clickAt(11, 10); },
             [this] { type(L"\n"); },
         }) {
        leave();
        run(VexDb::CmdErase);
        expectUntouched();
    }
}

TEST_F(EraseCommandTest, ExplodePassesOverWhatIsMadeOfNothingSmaller)
{
    add(new CVexDbBox({20, 20}, 5.0, 4.0, 0.0));
    start = bytes();
    selectBoth();
    run(VexDb::CmdExplode);
    EXPECT_TRUE(handler().trackers().empty()) << "the set is taken as by an erasure";
    EXPECT_EQ(2u, lines().size());
    clickAt(11, 10);
    clickAt(22, 20);
    type(L"\n");
    run(VexDb::CmdExplode);
    EXPECT_EQ(L"P35: ", line());
    expectUntouched();
}

TEST_F(EraseCommandTest, ExplodeTakesAPolylineApartAsOneStep)
{
    auto* const polyline = add(new CVexDbPolyline(0, database.get()));
    polyline->SetVertexes({{20, 20}, {30, 20}, {30, 30}}, false);
    start = bytes();
    clickAt(25, 20);
    type(L"\n");
    run(VexDb::CmdExplode);
    EXPECT_TRUE(polyline->isErased());
    EXPECT_EQ(4u, lines().size());
    EXPECT_EQ((Records{{kUndoCreate, false}, {kUndoCreate, true}, {kUndoErase, true}}), records());
    EXPECT_TRUE(undo().Undo());
    EXPECT_TRUE(start == bytes());
}

} // namespace
