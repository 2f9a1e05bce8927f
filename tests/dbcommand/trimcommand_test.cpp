#include "editingfixture.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"

#include <numbers>

namespace {

/// A level line from (5, 30) to (35, 30), crossed by upright ones at 10, 20 and 30.
class CutCommandTest : public EditingTest {
protected:
    CutCommandTest()
    {
        level = addLine({5, 30}, {35, 30});
        for (const double x : {10.0, 20.0, 30.0}) {
            uprights.push_back(addLine({x, 25}, {x, 35}));
        }
        start = bytes();
    }
    /// Picks the uprights as boundaries and goes on to what is cut.
    void pickBoundaries(std::vector<double> at = {10.0, 20.0, 30.0})
    {
        for (const double x : at) {
            clickAt(x, 27);
        }
        type(L"\n");
    }
    [[nodiscard]] std::vector<std::wstring> boxes() const
    {
        std::vector<std::wstring> texts;
        for (const VexShownMessage& shown : backend.shownMessages()) {
            texts.push_back(shown.text.str());
        }
        return texts;
    }

    CVexDbLine* level = nullptr;
    std::vector<CVexDbLine*> uprights;
};

TEST_F(CutCommandTest, ATrimInTheMiddleLeavesASecondEntityWithItsOwnRecord)
{
    pickBoundaries();
    clickAt(15, 30);
    type(L"\n");
    run(VexDb::CmdTrim);
    EXPECT_EQ(L"P36: \nP36: \nP36: \nP36: \nP35: ", told());
    EXPECT_EQ(L"P35: ", line());
    EXPECT_LINE(5.0, 30.0, 10.0, 30.0, *level);
    ASSERT_EQ(7u, lines().size());
    CVexDbLine* const rest = lines().back();
    EXPECT_LINE(20.0, 30.0, 35.0, 30.0, *rest);
    EXPECT_TRUE(rest->IsDbEntity());
    EXPECT_EQ((Records{{kUndoMovePoint, false}, {kUndoCreate, true}}), records());
    EXPECT_EQ(rest->objectId(), newest().entity);
    expectExactUndo();
}

TEST_F(CutCommandTest, EachPickOfATrimIsAStepOfItsOwn)
{
    pickBoundaries();
    clickAt(6, 30);
    clickAt(34, 30);
    press(VK_ESCAPE);
    run(VexDb::CmdTrim);
    EXPECT_LINE(10.0, 30.0, 30.0, 30.0, *level);
    EXPECT_EQ((Records{{kUndoMovePoint, false}, {kUndoMovePoint, false}}), records());
    undo().Undo();
    EXPECT_LINE(10.0, 30.0, 35.0, 30.0, *level);
    undo().Redo();
    expectExactUndo();
}

TEST_F(CutCommandTest, TheViewIsPaintedAfterATrim)
{
    pickBoundaries();
    clickAt(6, 30);
    type(L"\n");
    run(VexDb::CmdTrim);
    EXPECT_EQ(1, received(WM_PAINT));
}

TEST_F(CutCommandTest, ATrimmedBoundaryStillCutsWhereItWas)
{
    CVexDbLine* const low = addLine({5, 26}, {35, 26});
    start = bytes();
    clickAt(20, 33); // the upright at 20
    clickAt(15, 30); // and the level line
    type(L"\n");
    clickAt(20, 27); // the upright loses what lies below the level line
    clickAt(33, 26); // the low line is cut by what it lost
    type(L"\n");
    run(VexDb::CmdTrim);
    EXPECT_LINE(20.0, 30.0, 20.0, 35.0, *uprights[1]);
    EXPECT_LINE(5.0, 26.0, 20.0, 26.0, *low);
    expectExactUndo();
}

TEST_F(CutCommandTest, WithoutBoundariesNothingMoreIsAsked)
{
    for (const VexDb::CommandID id : {VexDb::CmdTrim, VexDb::CmdExtend}) {
        type(L"\n");
        run(id);
        press(VK_ESCAPE);
        run(id);
        run(id); // lost
        expectUntouched();
    }
    EXPECT_EQ(L"P37: ", line());
}

TEST_F(CutCommandTest, EscapeBehindABoundaryGoesOnToTheCutting)
{
    clickAt(20, 27);
    press(VK_ESCAPE);
    clickAt(30, 30);
    press(VK_ESCAPE);
    run(VexDb::CmdTrim);
    EXPECT_LINE(5.0, 30.0, 20.0, 30.0, *level);
}

TEST_F(CutCommandTest, ALossBehindABoundaryEndsTheCommand)
{
    for (const VexDb::CommandID id : {VexDb::CmdTrim, VexDb::CmdExtend}) {
        clickAt(20, 27);
        run(id);
        pickBoundaries();
        run(id);
        expectUntouched();
    }
}

TEST_F(CutCommandTest, WhatIsNoCurveIsNoBoundary)
{
    auto* const point = add(new CVexDbPoint(database.get()));
    point->SetPosition({25, 5});
    clickAt(25, 5);
    type(L"\n");
    run(VexDb::CmdTrim);
    clickAt(25, 5);
    type(L"\n");
    run(VexDb::CmdExtend);
    EXPECT_EQ((std::vector<std::wstring>{L"Selected entity cannot be a trim boundary.",
                                         L"Selected entity cannot be a extend boundary."}),
              boxes());
    EXPECT_TRUE(undo().undoStack().empty());
}

TEST_F(CutCommandTest, BoxesAndPointsAreNotCutAndTheCommandGoesOn)
{
    add(new CVexDbBox({18, 3}, 4.0, 4.0, 0.0));
    auto* const point = add(new CVexDbPoint(database.get()));
    point->SetPosition({25, 5});
    start = bytes();
    for (const VexDb::CommandID id : {VexDb::CmdTrim, VexDb::CmdExtend}) {
        pickBoundaries();
        clickAt(20, 3);
        clickAt(25, 5);
        type(L"\n");
        run(id);
        expectUntouched();
    }
    EXPECT_EQ((std::vector<std::wstring>{
                  L"Selected entity cannot be trimed.", L"Selected entity cannot be trimed.",
                  L"Selected entity cannot be Extended.", L"Selected entity cannot be Extended."}),
              boxes());
}

TEST_F(CutCommandTest, ABoxIsABoundary)
{
    add(new CVexDbBox({15, 28}, 4.0, 4.0, 0.0));
    start = bytes();
    clickAt(17, 28);
    type(L"\n");
    clickAt(17, 30);
    type(L"\n");
    run(VexDb::CmdTrim);
    EXPECT_LINE(5.0, 30.0, 15.0, 30.0, *level);
    EXPECT_LINE(19.0, 30.0, 35.0, 30.0, *lines().back());
    EXPECT_TRUE(boxes().empty());
    expectExactUndo();
}

TEST_F(CutCommandTest, ATrimThatMeetsNoBoundaryChangesNothing)
{
    pickBoundaries();
    clickAt(11, 10);
    type(L"\n");
    run(VexDb::CmdTrim);
    expectUntouched();
}

TEST_F(CutCommandTest, TheLastEntityIsTakenByItsKey)
{
    database->setLastEntity(uprights[1]);
    press(L'L');
    type(L"\n");
    clickAt(30, 30);
    type(L"\n");
    run(VexDb::CmdTrim);
    EXPECT_LINE(5.0, 30.0, 20.0, 30.0, *level);
}

TEST_F(CutCommandTest, TheKeyTakesNothingThatDoesNotShow)
{
    uprights[1]->setInVisable();
    database->setLastEntity(uprights[1]);
    press(L'L');
    type(L"\n");
    run(VexDb::CmdTrim);
    EXPECT_EQ(L"P36: ", line()) << "no boundary, so nothing to cut";
}

// The key tells no piece: what a click before pointed at would go by chance.
TEST_F(CutCommandTest, WhatIsTakenByTheKeyIsNotCut)
{
    const unsigned long before = handler().refusals();
    pickBoundaries();
    database->setLastEntity(level);
    press(L'L');
    type(L"\n");
    run(VexDb::CmdTrim);
    EXPECT_LINE(5.0, 30.0, 35.0, 30.0, *level);
    EXPECT_EQ(before + 1, handler().refusals());
}

TEST_F(CutCommandTest, TheSelectionStaysAndIsNoBoundary)
{
    select(uprights[1]);
    type(L"\n");
    run(VexDb::CmdTrim);
    EXPECT_EQ(L"P36: ", line());
    EXPECT_EQ(1u, handler().trackers().size());
    expectUntouched();
}

TEST_F(CutCommandTest, ATrimmedSelectionKeepsItsGripsOnItself)
{
    select(level);
    pickBoundaries({20.0});
    clickAt(30, 30);
    type(L"\n");
    run(VexDb::CmdTrim);
    EXPECT_POINT(20.0, 30.0, level->getGripPoint(2));
    EXPECT_EQ(1u, handler().selectedEntities().count(level));
}

TEST_F(CutCommandTest, AnExtendMovesTheNearEndToTheBoundaryEachAStep)
{
    CVexDbLine* const above = addLine({12, 32}, {15, 32});
    CVexDbLine* const below = addLine({13, 28}, {15, 28});
    start = bytes();
    pickBoundaries({20.0});
    clickAt(14.5, 32);
    clickAt(14.5, 28);
    type(L"\n");
    run(VexDb::CmdExtend);
    EXPECT_EQ(L"P37: \nP37: \nP35: \nP35: ", told());
    EXPECT_EQ(L"P35: ", line());
    EXPECT_LINE(12.0, 32.0, 20.0, 32.0, *above);
    EXPECT_LINE(13.0, 28.0, 20.0, 28.0, *below);
    EXPECT_EQ((Records{{kUndoMovePoint, false}, {kUndoMovePoint, false}}), records());
    EXPECT_EQ(2, received(WM_PAINT));
    expectExactUndo();
}

TEST_F(CutCommandTest, AnExtendThatFindsNothingPaintsNothing)
{
    pickBoundaries({20.0});
    clickAt(12, 20); // meets the upright only beyond its end
    type(L"\n");
    run(VexDb::CmdExtend);
    EXPECT_EQ(0, received(WM_PAINT));
    expectUntouched();
    EXPECT_TRUE(boxes().empty());
}

TEST_F(CutCommandTest, ATrimmedCircleGivesItsPlaceToTheArcThatStays)
{
    CVexDbCircle* const circle = add(new CVexDbCircle({25, 10}, 4.0));
    circle->setColor(3, true);
    addLine({25, 2}, {25, 18});
    start = bytes();
    clickAt(25, 3);
    type(L"\n");
    clickAt(29, 10);
    type(L"\n");
    run(VexDb::CmdTrim);
    EXPECT_TRUE(circle->isErased());
    CVexDbEntity* const made = database->lastEntity();
    ASSERT_EQ(VexDb::kArc, made->classType());
    const auto& arc = static_cast<const CVexDbArc&>(*made);
    EXPECT_NEAR(std::numbers::pi / 2.0, arc.StartAngle(), 1e-12);
    EXPECT_NEAR(std::numbers::pi * 1.5, arc.EndAngle(), 1e-12);
    EXPECT_EQ(3, made->ColorIndex());
    EXPECT_EQ((Records{{kUndoErase, false}, {kUndoCreate, true}}), records());
    expectExactUndo();
}

TEST_F(CutCommandTest, ACircleIsABoundaryButIsNotExtended)
{
    add(new CVexDbCircle({20, 30}, 3.0));
    start = bytes();
    clickAt(20, 33);
    type(L"\n");
    clickAt(17.88, 27.88);
    type(L"\n");
    run(VexDb::CmdExtend);
    EXPECT_EQ((std::vector<std::wstring>{L"Selected entity cannot be Extended."}), boxes());
    expectUntouched();
}

TEST_F(CutCommandTest, AnArcIsExtendedToALine)
{
    auto* const arc = add(new CVexDbArc({25, 10}, 4.0, 0.0, std::numbers::pi / 2.0));
    addLine({19, 10}, {23, 10});
    start = bytes();
    clickAt(20, 10);
    type(L"\n");
    clickAt(25.7, 13.9);
    type(L"\n");
    run(VexDb::CmdExtend);
    EXPECT_NEAR(0.0, arc->StartAngle(), 1e-12);
    EXPECT_NEAR(std::numbers::pi, arc->EndAngle(), 1e-12);
    EXPECT_EQ((Records{{kUndoChangeAngle, false}}), records());
    EXPECT_EQ(1, received(WM_PAINT));
    EXPECT_TRUE(undo().Undo());
    EXPECT_NEAR(std::numbers::pi / 2.0, arc->EndAngle(), 1e-12);
}

} // namespace
