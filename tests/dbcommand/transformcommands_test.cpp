#include "editingfixture.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"

#include <cmath>

namespace {

/// As near as turning and scaling there and back come to it.
#define EXPECT_NEARLY(expectedX, expectedY, point)                                                 \
    do {                                                                                           \
        const CVexGePoint2d seen = (point);                                                        \
        EXPECT_NEAR(expectedX, seen.x, 1e-9);                                                      \
        EXPECT_NEAR(expectedY, seen.y, 1e-9);                                                      \
    } while (false)

class TransformCommandTest : public EditingTest {
protected:
    /// One step back: both lines stand where they stood.
    void expectOneStepBack()
    {
        EXPECT_TRUE(undo().Undo());
        EXPECT_TRUE(undo().undoStack().empty());
        EXPECT_NEARLY(10.0, 10.0, first->StartPoint());
        EXPECT_NEARLY(12.0, 10.0, first->EndPoint());
        EXPECT_NEARLY(10.0, 20.0, second->StartPoint());
        EXPECT_NEARLY(14.0, 20.0, second->EndPoint());
        expectWhole();
    }
};

TEST_F(TransformCommandTest, MoveOfASelectionAsksForNoSet)
{
    selectBoth();
    type(L"10,10\n13,14\n");
    run(VexDb::CmdMove);
    EXPECT_EQ(L"P38: 10,10", told());
    EXPECT_EQ(L"P11: 13,14", line());
    EXPECT_LINE(13.0, 14.0, 15.0, 14.0, *first);
    EXPECT_LINE(13.0, 24.0, 17.0, 24.0, *second);
    EXPECT_EQ((Records{{kUndoMove, false}, {kUndoMove, true}}), records());
    EXPECT_POINT(3.0, 4.0, CVexGePoint2d(newest().vector.x, newest().vector.y));
    EXPECT_POINT(13.0, 14.0, database->lastPoint());
    EXPECT_EQ(2u, handler().trackers().size()) << "they stay selected";
    expectExactUndo();
}

TEST_F(TransformCommandTest, MoveWithoutASelectionAsksForTheSetFirst)
{
    pickBoth();
    clickAt(10, 10);
    moveAt(20, 15);
    clickAt(10, 14);
    run(VexDb::CmdMove);
    EXPECT_EQ(L"P35: \nP38: ", told());
    EXPECT_EQ(L"P11: ", line());
    EXPECT_LINE(10.0, 14.0, 12.0, 14.0, *first);
    EXPECT_LINE(10.0, 24.0, 14.0, 24.0, *second);
    EXPECT_TRUE(handler().trackers().empty());
    expectExactUndo();
}

TEST_F(TransformCommandTest, APolarTargetCountsFromTheBase)
{
    select(first);
    type(L"10,10\n5<90\n");
    run(VexDb::CmdMove);
    EXPECT_NEARLY(10.0, 15.0, first->StartPoint());
    EXPECT_EQ((Records{{kUndoMove, false}}), records());
}

TEST_F(TransformCommandTest, EnterBehindArrowKeysPlacesTheSet)
{
    select(first);
    type(L"10,10\n");
    moveAt(13, 14);
    arrow(VK_RIGHT);
    type(L"\n");
    run(VexDb::CmdMove);
    EXPECT_POINT(13.1, 14.0, first->StartPoint());
}

TEST_F(TransformCommandTest, WhatIsNotInTheSelectionStays)
{
    select(second);
    type(L"0,0\n1,1\n");
    run(VexDb::CmdMove);
    EXPECT_LINE(10.0, 10.0, 12.0, 10.0, *first);
    EXPECT_LINE(11.0, 21.0, 15.0, 21.0, *second);
}

TEST_F(TransformCommandTest, ANumberIsNoTargetAndCountsAsRefused)
{
    selectBoth();
    type(L"10,10\n5\n");
    run(VexDb::CmdMove);
    expectUntouched();
    handler().setMsg();
    EXPECT_EQ(1u, handler().refusals());
}

TEST_F(TransformCommandTest, EveryWayOutOfEveryQuestionLeavesAllAsItWas)
{
    const std::vector<std::function<void()>> ways = {[this] { press(VK_ESCAPE); },
                                                     [this] { press(VK_CANCEL); }, [] {}};
    const VexDb::CommandID commands[] = {VexDb::CmdMove,       VexDb::CmdCopy,  VexDb::CmdRotate,
                                         VexDb::CmdCopyRotate, VexDb::CmdScale, VexDb::CmdMirror};
    for (const VexDb::CommandID id : commands) {
        for (const auto& leave : ways) {
            leave(); // at the selection
            run(id);
            expectUntouched();
            pickBoth();
            if (id == VexDb::CmdMirror) {
                type(L"n");
            }
            leave(); // at the base point
            run(id);
            expectUntouched();
            pickBoth();
            if (id == VexDb::CmdMirror) {
                type(L"y");
            }
            clickAt(10, 10);
            moveAt(15, 17);
            leave(); // at the target, with copies on screen
            run(id);
            expectUntouched();
            EXPECT_EQ(2u, lines().size());
            EXPECT_EQ(0u, backend.queued());
        }
    }
}

TEST_F(TransformCommandTest, ARightClickAndAnEmptyLineEndAtTheTarget)
{
    for (const VexDb::CommandID id : {VexDb::CmdMove, VexDb::CmdCopy, VexDb::CmdRotate,
                                      VexDb::CmdCopyRotate, VexDb::CmdScale}) {
        selectBoth();
        clickAt(10, 10);
        moveAt(15, 17);
        rightClick();
        run(id);
        expectUntouched();
        clickAt(10, 10);
        type(L"\n");
        run(id);
        expectUntouched();
    }
}

TEST_F(TransformCommandTest, AnEmptySelectionEndsBeforeTheBasePoint)
{
    type(L"\n");
    run(VexDb::CmdMove);
    EXPECT_EQ(L"", told());
    EXPECT_EQ(L"P35: ", line());
}

TEST_F(TransformCommandTest, CopiesArePlacedOneAfterAnotherFromOneBaseEachAStep)
{
    selectBoth();
    clickAt(10, 10);
    type(L"10,12\n");
    moveAt(20, 20);
    clickAt(20, 10);
    type(L"\n"); // keeps them and ends
    run(VexDb::CmdCopy);
    EXPECT_EQ(L"P38: \nP11: 10,12\nP11: ", told());
    const std::vector<CVexDbLine*> all = lines();
    ASSERT_EQ(6u, all.size());
    EXPECT_LINE(10.0, 12.0, 12.0, 12.0, *all[2]);
    EXPECT_LINE(10.0, 22.0, 14.0, 22.0, *all[3]);
    EXPECT_LINE(20.0, 10.0, 22.0, 10.0, *all[4]);
    EXPECT_LINE(20.0, 20.0, 24.0, 20.0, *all[5]);
    EXPECT_EQ(
        (Records{
            {kUndoCreate, false}, {kUndoCreate, true}, {kUndoCreate, false}, {kUndoCreate, true}}),
        records());
    EXPECT_EQ(all[5], database->lastEntity());
    EXPECT_LINE(10.0, 10.0, 12.0, 10.0, *first);
    undo().Undo();
    EXPECT_EQ(4u, lines().size()) << "the last pick alone";
    undo().Redo();
    expectExactUndo();
}

TEST_F(TransformCommandTest, ACopyGoesOnBehindWhatIsNoTarget)
{
    select(first);
    clickAt(10, 10);
    type(L"5\nabc\n");
    type(L"20,20\n");
    press(VK_ESCAPE);
    run(VexDb::CmdCopy);
    ASSERT_EQ(3u, lines().size());
    EXPECT_LINE(20.0, 20.0, 22.0, 20.0, *lines()[2]);
    EXPECT_EQ(2u, handler().refusals());
}

TEST_F(TransformCommandTest, ACopyTakesThePropertiesAlong)
{
    first->setColor(3, true);
    first->setLayer(CString(L"WeldNum"));
    select(first);
    type(L"0,0\n1,1\n\n");
    run(VexDb::CmdCopy);
    ASSERT_EQ(3u, lines().size());
    EXPECT_EQ(3, lines()[2]->ColorIndex());
    EXPECT_EQ(first->LayerId(), lines()[2]->LayerId());
}

TEST_F(TransformCommandTest, ALossInTheMiddleOfCopyingKeepsWhatWasPlaced)
{
    select(first);
    clickAt(10, 10);
    clickAt(20, 20);
    moveAt(25, 25);
    run(VexDb::CmdCopy); // the queue runs dry
    EXPECT_EQ(3u, lines().size());
    EXPECT_EQ((Records{{kUndoCreate, false}}), records());
    expectExactUndo();
}

TEST_F(TransformCommandTest, ATypedAngleTurnsAllAboutTheBaseAsOneStep)
{
    for (const wchar_t* angle : {L"90\n", L"90d\n", L"450\n", L"-270\n"}) {
        selectBoth();
        clickAt(10, 10);
        moveAt(15, 17);
        type(angle);
        run(VexDb::CmdRotate);
        EXPECT_NEARLY(10.0, 12.0, first->EndPoint());
        EXPECT_NEARLY(0.0, 10.0, second->StartPoint());
        EXPECT_NEARLY(0.0, 14.0, second->EndPoint());
        EXPECT_EQ((Records{{kUndoRotate, false}, {kUndoRotate, true}}), records());
        EXPECT_NEAR(0.0, newest().vector.x, 1e-12);
        EXPECT_NEAR(1.0, newest().vector.y, 1e-12);
        EXPECT_POINT(10.0, 10.0, newest().point);
        expectOneStepBack();
    }
}

TEST_F(TransformCommandTest, RedoTurnsByTheAngleAgain)
{
    selectBoth();
    type(L"10,10\n");
    type(L"30\n");
    run(VexDb::CmdRotate);
    const CVexGePoint2d turned = second->EndPoint();
    undo().Undo();
    undo().Redo();
    EXPECT_NEARLY(turned.x, turned.y, second->EndPoint());
}

TEST_F(TransformCommandTest, AnAngleOfNothingChangesAndRecordsNothing)
{
    for (const wchar_t* angle : {L"0\n", L"abc\n", L"-\n"}) {
        selectBoth();
        clickAt(10, 10);
        type(angle);
        run(VexDb::CmdRotate);
        expectUntouched();
    }
}

TEST_F(TransformCommandTest, AClickOrATypedPointTurnsByItsDirection)
{
    for (const bool typed : {false, true}) {
        selectBoth();
        clickAt(10, 10);
        moveAt(30, 12);
        typed ? type(L"10,30\n") : clickAt(10, 30);
        run(VexDb::CmdRotate);
        EXPECT_NEARLY(10.0, 12.0, first->EndPoint());
        EXPECT_NEARLY(0.0, 10.0, second->StartPoint());
        EXPECT_EQ((Records{{kUndoRotate, false}, {kUndoRotate, true}}), records());
        expectOneStepBack();
    }
}

TEST_F(TransformCommandTest, TurnedEntitiesAreTakenOffAndDrawnAgain)
{
    select(first);
    type(L"10,10\n");
    type(L"90\n");
    run(VexDb::CmdRotate);
    const auto shown = [this](CPoint from, CPoint to) {
        return std::ranges::any_of(dc.strokes(), [&](const VexStroke& stroke) {
            return stroke.rop == R2_COPYPEN && stroke.color != 0x000000 &&
                   stroke.points == std::vector{from, to};
        });
    };
    EXPECT_TRUE(shown(px(10, 10), px(10, 12)));
    EXPECT_EQ(1, display.invalidations());
}

TEST_F(TransformCommandTest, CopiesAreTurnedByTheMouseWhereTheyWerePut)
{
    selectBoth();
    clickAt(10, 10);
    clickAt(20, 10);
    moveAt(30, 12);
    clickAt(20, 30);
    run(VexDb::CmdCopyRotate);
    EXPECT_EQ(L"P38: \nP11: ", told());
    EXPECT_EQ(L"P40: ", line());
    const std::vector<CVexDbLine*> all = lines();
    ASSERT_EQ(4u, all.size());
    EXPECT_NEARLY(20.0, 12.0, all[2]->EndPoint());
    EXPECT_NEARLY(10.0, 10.0, all[3]->StartPoint());
    EXPECT_LINE(10.0, 10.0, 12.0, 10.0, *first);
    EXPECT_EQ(
        (Records{
            {kUndoCreate, false}, {kUndoCreate, true}, {kUndoRotate, true}, {kUndoRotate, true}}),
        records());
    expectOneStepBack();
    EXPECT_EQ(2u, lines().size());
}

TEST_F(TransformCommandTest, ATypedAngleTurnsTheCopiesAboutTheFirstBase)
{
    select(first);
    type(L"10,10\n20,10\n90\n");
    run(VexDb::CmdCopyRotate);
    ASSERT_EQ(3u, lines().size());
    EXPECT_NEARLY(10.0, 20.0, lines()[2]->StartPoint()); // and not (20, 10), where it was put
    EXPECT_NEARLY(10.0, 22.0, lines()[2]->EndPoint());
    EXPECT_POINT(10.0, 10.0, newest().point);
    EXPECT_LINE(10.0, 10.0, 12.0, 10.0, *first);
    EXPECT_EQ((Records{{kUndoCreate, false}, {kUndoRotate, true}}), records());
}

TEST_F(TransformCommandTest, ACancelledTurnLeavesTheCopiesWhereTheyWerePut)
{
    for (const bool escapes : {true, false}) {
        select(first);
        clickAt(10, 10);
        clickAt(20, 20);
        moveAt(25, 25);
        if (escapes) {
            press(VK_ESCAPE);
        }
        run(VexDb::CmdCopyRotate);
        ASSERT_EQ(3u, lines().size());
        EXPECT_LINE(20.0, 20.0, 22.0, 20.0, *lines()[2]);
        EXPECT_EQ((Records{{kUndoCreate, false}}), records());
        undo().Undo();
        EXPECT_TRUE(start == bytes());
    }
}

TEST_F(TransformCommandTest, ATypedFactorScalesAllAboutTheBaseAsOneStep)
{
    for (const wchar_t* factor : {L"2\n", L"2x\n", L"2.0\n"}) {
        selectBoth();
        clickAt(10, 10);
        moveAt(15, 17);
        type(factor);
        run(VexDb::CmdScale);
        EXPECT_LINE(10.0, 10.0, 14.0, 10.0, *first);
        EXPECT_LINE(10.0, 30.0, 18.0, 30.0, *second);
        EXPECT_EQ((Records{{kUndoScale, false}, {kUndoScale, true}}), records());
        EXPECT_EQ(2.0, newest().vector.x);
        EXPECT_EQ(2.0, newest().vector.y);
        EXPECT_POINT(10.0, 10.0, newest().point);
        expectOneStepBack();
    }
}

TEST_F(TransformCommandTest, AFactorThatIsNotAboveNothingChangesAndRecordsNothing)
{
    for (const wchar_t* factor : {L"0\n", L"-2\n", L"abc\n", L"0.0\n"}) {
        selectBoth();
        clickAt(10, 10);
        type(factor);
        run(VexDb::CmdScale);
        expectUntouched();
    }
}

TEST_F(TransformCommandTest, TheMouseScalesByItsDistanceInHundredths)
{
    selectBoth();
    clickAt(10, 10);
    moveAt(20, 12);
    clickAt(10, 35); // 25 units are a quarter
    run(VexDb::CmdScale);
    EXPECT_NEARLY(10.5, 10.0, first->EndPoint());
    EXPECT_NEARLY(10.0, 12.5, second->StartPoint());
    EXPECT_EQ(0.25, newest().vector.x);
    expectOneStepBack();
}

TEST_F(TransformCommandTest, AScaleThatCollapsesIsTakenBackByTheShapesItKept)
{
    selectBoth();
    clickAt(10, 10);
    moveAt(20, 12);
    clickAt(10, 10);
    run(VexDb::CmdScale);
    EXPECT_LINE(10.0, 10.0, 10.0, 10.0, *first);
    EXPECT_LINE(10.0, 10.0, 10.0, 10.0, *second);
    EXPECT_EQ(0.0, newest().vector.x);
    expectExactUndo();
}

TEST_F(TransformCommandTest, AMoveBeyondAllDigitsIsTakenBackByTheShapesItKept)
{
    for (const wchar_t* target : {L"1e300,0\n", L"1000000000000.3,0\n"}) {
        selectBoth();
        type(L"0,0\n");
        type(target);
        run(VexDb::CmdMove);
        expectOneStepBack();
        EXPECT_TRUE(start == bytes()) << "to the bit";
        EXPECT_TRUE(undo().Redo());
        EXPECT_GT(first->StartPoint().x, 1e11);
        EXPECT_TRUE(undo().Undo());
        EXPECT_TRUE(start == bytes()) << "and once more";
        handler().ClearTracker(false);
    }
}

TEST_F(TransformCommandTest, AShortSteepMirrorLineMirrorsRoundThingsAsItDoesLines)
{
    auto* const line = addLine({1000, 0}, {1000, 500});
    auto* const circle = add(new CVexDbCircle({1000, 500}, 5.0));
    select(line);
    select(circle);
    type(L"y0,0\n0.0009,10\n");
    run(VexDb::CmdMirror);
    EXPECT_NEAR(-999.910, line->EndPoint().x, 0.001);
    EXPECT_NEARLY(line->EndPoint().x, line->EndPoint().y, circle->Center());
}

TEST_F(TransformCommandTest, YesMirrorsTheSourcesAwayAndAllElseKeepsThem)
{
    struct Row {
        const wchar_t* answer;
        bool replaces;
    };
    const Row rows[] = {{L"y", true},   {L"Y", true},  {L"n", false},   {L"N", false},
                        {L"\n", false}, {L" ", false}, {L"x\n", false}, {L"xy", true}};
    for (const Row& row : rows) {
        selectBoth();
        type(row.answer);
        clickAt(10, 10);
        moveAt(30, 12);
        clickAt(10, 30);
        run(VexDb::CmdMirror);
        const std::vector<CVexDbLine*> all = lines();
        ASSERT_EQ(row.replaces ? 2u : 4u, all.size()) << row.answer;
        EXPECT_NEARLY(8.0, 10.0, all[all.size() - 2]->EndPoint());
        EXPECT_NEARLY(6.0, 20.0, all.back()->EndPoint());
        const int edit = row.replaces ? kUndoMirror : kUndoCreate;
        EXPECT_EQ((Records{{edit, false}, {edit, true}}), records());
        undo().Undo();
        EXPECT_TRUE(start == bytes());
    }
}

TEST_F(TransformCommandTest, EscapeAtTheKeywordKeepsTheSourcesAndGoesOn)
{
    select(second);
    press(VK_ESCAPE);
    type(L"20,0\n20,5\n");
    run(VexDb::CmdMirror);
    EXPECT_EQ(L"P47: \nP38: 20,0", told());
    ASSERT_EQ(3u, lines().size());
    EXPECT_LINE(30.0, 20.0, 26.0, 20.0, *lines()[2]);
    EXPECT_LINE(10.0, 20.0, 14.0, 20.0, *second);
    expectExactUndo();
}

TEST_F(TransformCommandTest, AMirrorRecordHasTheLine)
{
    select(second);
    type(L"y");
    type(L"20,0\n20,5\n");
    run(VexDb::CmdMirror);
    EXPECT_POINT(20.0, 0.0, newest().point);
    EXPECT_EQ(0.0, newest().vector.x);
    EXPECT_EQ(5.0, newest().vector.y);
    EXPECT_LINE(30.0, 20.0, 26.0, 20.0, *second);
    expectExactUndo();
}

TEST_F(TransformCommandTest, AMirrorLineWithoutLengthMirrorsNothing)
{
    for (const wchar_t* answer : {L"y", L"n"}) {
        selectBoth();
        type(answer);
        type(L"7,8\n7,8\n");
        run(VexDb::CmdMirror);
        expectUntouched();
    }
}

TEST_F(TransformCommandTest, ASnappedTargetIsMetExactlyByTheCopy)
{
    CVexDbLine* const target = addLine({30.0123456, 20.0654321}, {35, 25});
    settings().m_bGripSnap = true;
    select(first);
    type(L"10,10\n");
    clickAt(30, 20.1);
    press(VK_ESCAPE);
    run(VexDb::CmdCopy);
    ASSERT_EQ(4u, lines().size());
    EXPECT_EQ(target->StartPoint().x, lines()[3]->StartPoint().x);
    EXPECT_EQ(target->StartPoint().y, lines()[3]->StartPoint().y);
}

TEST_F(TransformCommandTest, AKindWithoutUndoMovesAndTheStepEndsWithWhatIsRecorded)
{
    auto* const point = add(new CVexDbPoint(database.get()));
    point->SetPosition({25, 25});
    clickAt(25, 25);
    clickAt(11, 10);
    type(L"\n");
    type(L"0,0\n1,2\n");
    run(VexDb::CmdMove);
    EXPECT_POINT(26.0, 27.0, point->Position());
    EXPECT_LINE(11.0, 12.0, 13.0, 12.0, *first);
    EXPECT_EQ((Records{{kUndoMove, false}}), records());
}

} // namespace
