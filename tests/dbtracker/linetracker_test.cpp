#include "trackerfixture.h"

#include <cmath>

namespace {

/// A line being drawn from (5, 5), as the command draws it.
class LineCreationTest : public TrackerTest {
protected:
    LineCreationTest()
    {
        line.setDatabase(database.get());
        line.setStartPoint({5, 5});
        line.setEndPoint({6, 6});
        drawer = std::make_unique<CVexLineTracker>(&display, &line, VexDb::TransFormNone, true);
        drawer->SetStartPoint({5, 5}, true);
    }
    int track() { return drawer->Track(&display, {0, 0}); }

    CVexDbLine line{database.get()};
    std::unique_ptr<CVexLineTracker> drawer;
};

TEST_F(LineCreationTest, TheEndFollowsTheMouseAndStaysAtTheClick)
{
    moveAt(10, 5);
    clickAt(15, 9);
    EXPECT_EQ(InputPoint, track());
    EXPECT_LINE(5.0, 5.0, 15.0, 9.0, line);
    EXPECT_POINT(15.0, 9.0, lastPoint());
    EXPECT_TRUE(undo().undoStack().empty()) << "who adds the line records it";
}

TEST_F(LineCreationTest, TheLineIsItsOwnBandAndStaysOnScreen)
{
    moveAt(10, 5);
    clickAt(15, 9);
    track();
    EXPECT_TRUE(strokesOf(kBand).empty());
    ASSERT_EQ(1u, leftOver().size());
    EXPECT_EQ((std::vector{CPoint(50, 350), CPoint(150, 310)}), leftOver()[0].points);
    expectReleased();
}

TEST_F(LineCreationTest, EveryOtherWayOutTakesItOffTheScreen)
{
    const std::vector<std::pair<int, std::function<void()>>> ways = {
        {InputCancel, [this] { press(VK_ESCAPE); }},
        {InputCancel, [this] { rightClick(); }},
        {InputCancel, [this] { type(L"\n"); }},
        {InputTypedPoint, [this] { type(L"9,9\n"); }},
        {InputNumber, [this] { type(L"9\n"); }},
        {InputString, [this] { type(L"x\n"); }},
        {InputLost, [] {}},
    };
    for (const auto& [result, leave] : ways) {
        dc.clear();
        moveAt(10, 5);
        leave();
        EXPECT_EQ(result, track());
        EXPECT_TRUE(leftOver().empty()) << result;
        EXPECT_LINE(5.0, 5.0, 6.0, 6.0, line);
        expectReleased();
    }
}

TEST_F(LineCreationTest, AClickOnTheStartMakesALineWithoutLength)
{
    clickAt(5, 5);
    EXPECT_EQ(InputPoint, track());
    EXPECT_LINE(5.0, 5.0, 5.0, 5.0, line);
}

TEST_F(LineCreationTest, ASnappedEndMeetsItsTargetExactly)
{
    addLine({20.1234567, 10.7654321}, {30, 10});
    settings().m_bGripSnap = true;
    moveAt(19, 10);
    clickAt(20.1, 10.8);
    EXPECT_EQ(InputPoint, track());
    EXPECT_EQ(20.1234567, line.EndPoint().x);
    EXPECT_EQ(10.7654321, line.EndPoint().y);
}

TEST_F(LineCreationTest, AnEndOnTheGridIsExactToo)
{
    settings().m_bGridSnap = true;
    settings().m_dGridStep = 0.125;
    clickAt(10.1, 7.3);
    track();
    EXPECT_EQ(10.125, line.EndPoint().x);
    EXPECT_EQ(7.25, line.EndPoint().y);
    EXPECT_EQ(10.125, lastPoint().x);
}

TEST_F(LineCreationTest, EnterBehindArrowKeysIsAClick)
{
    moveAt(10, 5);
    arrow(VK_DOWN);
    type(L"\n");
    EXPECT_EQ(InputPoint, track());
    EXPECT_LINE(5.0, 5.0, 10.0, 4.9, line);
}

TEST_F(LineCreationTest, OnWhiteTheLineShowsToo)
{
    dc.SetBkColor(0xffffff);
    moveAt(10, 5);
    rightClick();
    track();
    ASSERT_FALSE(dc.strokes().empty());
    for (const VexStroke& stroke : dc.strokes()) {
        EXPECT_EQ(R2_NOTXORPEN, stroke.rop); // a black pen in XOR would leave nothing
        EXPECT_EQ(0x000000u, stroke.color);
    }
}

TEST_F(LineCreationTest, DrawOrgEntityStrokesTheEntityOnAndOff)
{
    drawer->DrawOrgEntity();
    ASSERT_EQ(1u, leftOver().size());
    EXPECT_EQ((std::vector{CPoint(50, 350), CPoint(60, 340)}), leftOver()[0].points);
    drawer->DrawOrgEntity();
    EXPECT_TRUE(leftOver().empty());
}

TEST_F(LineCreationTest, ARepaintInBetweenLeavesNothingBehind)
{
    moveAt(10, 5);
    post(WM_PAINT);
    moveAt(12, 5);
    press(VK_ESCAPE);
    track();
    EXPECT_TRUE(leftOver().empty());
}

/// A line of the drawing from (10, 10) to (20, 10), selected.
class LineGripTest : public TrackerTest {
protected:
    CVexDbLine* line = selectLine({10, 10}, {20, 10});

    void drag(CVexGePoint2d from, CVexGePoint2d to)
    {
        moveAt((from.x + to.x) / 2, (from.y + to.y) / 2);
        releaseAt(to.x, to.y);
        handler().TrackTracker(&display, px(from.x, from.y));
    }
};

TEST_F(LineGripTest, TheEndGripsMoveTheirEnds)
{
    drag({20, 10}, {22, 13});
    EXPECT_LINE(10.0, 10.0, 22.0, 13.0, *line);
    EXPECT_EQ(kUndoMovePoint, newest().editType);
    EXPECT_EQ(1, newest().index);
    EXPECT_EQ(2.0, newest().vector.x);
    EXPECT_EQ(3.0, newest().vector.y);
    drag({10, 10}, {9, 8});
    EXPECT_LINE(9.0, 8.0, 22.0, 13.0, *line);
    EXPECT_EQ(0, newest().index);
    EXPECT_EQ(-2.0, newest().vector.y);
}

TEST_F(LineGripTest, TheMiddleGripMovesTheLine)
{
    drag({15, 10}, {16, 14});
    EXPECT_LINE(11.0, 14.0, 21.0, 14.0, *line);
    EXPECT_EQ(kUndoMove, newest().editType);
    EXPECT_EQ(1.0, newest().vector.x);
    EXPECT_EQ(4.0, newest().vector.y);
    EXPECT_POINT(16.0, 14.0, lastPoint());
}

TEST_F(LineGripTest, EachDragIsOneStepBack)
{
    drag({20, 10}, {22, 13});
    drag({15.9, 11.5}, {16.9, 11.5});
    ASSERT_EQ(2u, undo().undoStack().size());
    EXPECT_FALSE(newest().continues);
    EXPECT_TRUE(undo().Undo());
    EXPECT_LINE(10.0, 10.0, 22.0, 13.0, *line);
    EXPECT_TRUE(undo().Undo());
    EXPECT_LINE(10.0, 10.0, 20.0, 10.0, *line);
}

TEST_F(LineGripTest, APressBesideTheGripsCentreMovesTheEndToTheReleaseAllTheSame)
{
    drag({20.3, 9.8}, {25, 12});
    EXPECT_LINE(10.0, 10.0, 25.0, 12.0, *line);
    EXPECT_EQ(5.0, newest().vector.x) << "the way of the end, not of the mouse";
    EXPECT_EQ(2.0, newest().vector.y);
}

TEST_F(LineGripTest, ADragSnapsExactlyToAnotherEnd)
{
    addLine({30.0123456, 20.0654321}, {35, 25});
    settings().m_bGripSnap = true;
    drag({20, 10}, {30, 20.1});
    EXPECT_EQ(30.0123456, line->EndPoint().x);
    EXPECT_EQ(20.0654321, line->EndPoint().y);
    EXPECT_EQ(30.0123456 - 20.0, newest().vector.x);
    EXPECT_EQ(30.0123456, lastPoint().x);
}

TEST_F(LineGripTest, APressWithoutAWayChangesAndRecordsNothing)
{
    releaseAt(20, 10);
    EXPECT_EQ(InputPoint, tracker().Track(&display, px(20, 10)));
    EXPECT_TRUE(undo().undoStack().empty());
    EXPECT_LINE(10.0, 10.0, 20.0, 10.0, *line);
    handler().ClearTracker(true);
    EXPECT_TRUE(leftOver().empty());
}

TEST_F(LineGripTest, ATouchedGripStaysWhereItIsUnderEverySnap)
{
    const std::vector<std::pair<const char*, std::function<void()>>> snaps = {
        {"grid", [this] { settings().m_bGridSnap = true; }},
        {"grip", [this] { settings().m_bGripSnap = true; }},
    };
    for (const auto& [name, arm] : snaps) {
        settings().m_bGridSnap = settings().m_bGripSnap = false;
        arm();
        for (const CPoint at : {px(15.2, 10.1), px(20.2, 9.9)}) {
            moveTo(at);
            mouse(WM_LBUTTONUP, at);
            handler().TrackTracker(&display, at);
            EXPECT_EQ(20.0, line->EndPoint().x) << name;
            EXPECT_EQ(10.0, line->EndPoint().y) << name;
            EXPECT_TRUE(undo().undoStack().empty()) << name;
            EXPECT_FALSE(handler().isBlipDrawn()) << name;
        }
    }
    handler().ClearTracker(true);
    EXPECT_TRUE(leftOver().empty());
}

TEST_F(LineGripTest, AReleaseOutsideWithoutAWayBeforeMovesNothing)
{
    settings().m_bGridSnap = true;
    mouse(WM_LBUTTONUP, {500, 500});
    handler().TrackTracker(&display, px(15.2, 10.1));
    EXPECT_LINE(10.0, 10.0, 20.0, 10.0, *line);
    EXPECT_TRUE(undo().undoStack().empty());
}

TEST_F(LineGripTest, AGripMayComeBackToItsPress)
{
    moveAt(25, 15);
    releaseAt(20, 10);
    handler().TrackTracker(&display, px(20, 10));
    EXPECT_LINE(10.0, 10.0, 20.0, 10.0, *line);
    EXPECT_TRUE(undo().undoStack().empty());
    handler().ClearTracker(true);
    EXPECT_TRUE(leftOver().empty());
}

TEST_F(LineGripTest, ADragThatEndsWhereTheEndWasIsNoStep)
{
    settings().m_bGridSnap = true;
    drag({20.2, 10}, {19.7, 10.3}); // rounded to the end as it is
    EXPECT_LINE(10, 10, 20, 10, *line);
    EXPECT_TRUE(undo().undoStack().empty());
}

TEST_F(LineGripTest, AWheelZoomInTheMiddleOfADragLeavesNothingBehind)
{
    display.setHandler([this](const MSG& sent) {
        if (sent.message == WM_MOUSEWHEEL) {
            view->ScaleUpDown(view->GetCurrentDC(), px(20, 10), 0.5, false);
            dc.clear(); // the picture that it paints covers all
        } else if (sent.message == WM_TIMER) {
            EXPECT_EQ(2u, leftOver().size()) << "band and copy";
        }
        return LRESULT(0);
    });
    moveAt(25, 15);
    post(WM_MOUSEWHEEL);
    moveAt(22, 12);
    post(WM_TIMER);
    press(VK_ESCAPE);
    handler().TrackTracker(&display, px(20, 10));
    EXPECT_TRUE(leftOver().empty());
    EXPECT_LINE(10.0, 10.0, 20.0, 10.0, *line);
}

TEST_F(LineGripTest, AReleaseOutsideEndsAtTheLastValidPosition)
{
    moveAt(25, 15);
    mouse(WM_LBUTTONUP, {500, 500});
    handler().TrackTracker(&display, px(20, 10));
    EXPECT_LINE(10.0, 10.0, 25.0, 15.0, *line);
    EXPECT_EQ(0u, backend.queued());
}

TEST_F(LineGripTest, ADragEndsWhenTheButtonGoesUpAndNotDown)
{
    moveAt(22, 12);
    clickAt(23, 13);
    releaseAt(24, 14);
    handler().TrackTracker(&display, px(20, 10));
    EXPECT_LINE(10.0, 10.0, 24.0, 14.0, *line);
    EXPECT_EQ(1, received(WM_LBUTTONDOWN));
}

TEST_F(LineGripTest, AClickOffTheGripsLeavesItPassive)
{
    releaseAt(1, 1);
    EXPECT_EQ(InputCancel, tracker().Track(&display, px(13, 20)));
    EXPECT_EQ(1u, backend.queued());
}

TEST_F(LineGripTest, BandCopyAndGripsAreTakenOffInPairs)
{
    drag({20, 10}, {22, 13});
    EXPECT_FALSE(strokesOf(kBand).empty());
    handler().ClearTracker(true);
    EXPECT_TRUE(leftOver().empty()) << leftOver().front();
}

TEST_F(LineGripTest, ACancelledDragLeavesTheLineAndItsGripsShown)
{
    moveAt(22, 13);
    rightClick();
    handler().TrackTracker(&display, px(20, 10));
    EXPECT_LINE(10.0, 10.0, 20.0, 10.0, *line);
    EXPECT_TRUE(tracker().gripsShown());
    EXPECT_TRUE(undo().undoStack().empty());
    handler().ClearTracker(true);
    EXPECT_TRUE(leftOver().empty());
}

TEST_F(LineGripTest, ALineOutsideTheDrawingIsChangedWithoutARecord)
{
    CVexDbLine loose(database.get());
    loose.setStartPoint({1, 20});
    loose.setEndPoint({5, 20});
    CVexLineTracker grips(&display, &loose, VexDb::TransFormNone, false);
    releaseAt(6, 22);
    EXPECT_EQ(InputPoint, grips.Track(&display, px(5, 20)));
    EXPECT_LINE(1.0, 20.0, 6.0, 22.0, loose);
    EXPECT_TRUE(undo().undoStack().empty());
}

/// A transform of one selected line from (10, 10) to (12, 10), with base and click given.
class LineTransformTest : public TrackerTest {
protected:
    CVexDbLine* line = selectLine({10, 10}, {12, 10});

    int transform(VexDb::TransFormOption option)
    {
        tracker().SetTransOpt(option);
        tracker().SetStartPoint({10, 10}, false);
        return tracker().Track(&display, {0, 0}, -1);
    }
};

TEST_F(LineTransformTest, EachOptionDoesAndRecordsItsTransform)
{
    struct Row {
        VexDb::TransFormOption option;
        CVexGePoint2d start;
        CVexGePoint2d end;
        int editType;
        CVexGeVector2d vector;
    };
    const Row rows[] = {
        {VexDb::TransFormMove, {10, 12}, {12, 12}, kUndoMove, {0, 2}},
        {VexDb::TransFormCopy, {10, 12}, {12, 12}, kUndoMove, {0, 2}},
        {VexDb::TransFormRotate, {10, 10}, {10, 12}, kUndoRotate, {0, 2}},
        {VexDb::TransFormMirror, {10, 10}, {8, 10}, kUndoMirror, {0, 2}},
        {VexDb::TransFormScale, {10, 10}, {10.04, 10}, kUndoScale, {0.02, 0.02}},
    };
    for (const Row& row : rows) {
        moveAt(14, 11);
        clickAt(10, 12);
        EXPECT_EQ(InputPoint, transform(row.option)) << row.option;
        EXPECT_LINE(row.start.x, row.start.y, row.end.x, row.end.y, *line);
        EXPECT_EQ(row.editType, newest().editType) << row.option;
        EXPECT_NEAR(row.vector.x, newest().vector.x, 1e-12) << row.option;
        EXPECT_NEAR(row.vector.y, newest().vector.y, 1e-12) << row.option;
        EXPECT_POINT(10.0, 10.0, newest().point);
        EXPECT_TRUE(undo().Undo());
        EXPECT_POINT(10.0, 10.0, line->StartPoint());
        EXPECT_NEAR(12.0, line->EndPoint().x, 1e-9);
    }
}

TEST_F(LineTransformTest, AScaleToNothingCollapsesAndUndoBringsTheLineBack)
{
    clickAt(10, 10);
    EXPECT_EQ(InputPoint, transform(VexDb::TransFormScale));
    EXPECT_LINE(10.0, 10.0, 10.0, 10.0, *line);
    EXPECT_TRUE(undo().Undo());
    EXPECT_LINE(10.0, 10.0, 12.0, 10.0, *line);
}

TEST_F(LineTransformTest, WithoutAWayTheOthersDoNothing)
{
    for (const auto option :
         {VexDb::TransFormMove, VexDb::TransFormRotate, VexDb::TransFormMirror}) {
        clickAt(10, 10);
        EXPECT_EQ(InputPoint, transform(option));
        EXPECT_TRUE(undo().undoStack().empty());
        EXPECT_LINE(10.0, 10.0, 12.0, 10.0, *line);
    }
}

TEST_F(LineTransformTest, AHostileScalePercentCountsAsAHundred)
{
    for (const double hostile : {0.0, -5.0, std::nan(""), HUGE_VAL}) {
        settings().m_dScalePercent = hostile;
        line->set({10, 10}, {12, 10});
        clickAt(10, 12);
        transform(VexDb::TransFormScale);
        EXPECT_LINE(10.0, 10.0, 10.04, 10.0, *line);
    }
}

TEST_F(LineTransformTest, AGridWithoutAStepRoundsNothing)
{
    settings().m_bGridSnap = true;
    for (const double hostile : {0.0, -1.0, std::nan("")}) {
        settings().m_dGridStep = hostile;
        line->set({10, 10}, {12, 10});
        moveAt(11, 11);
        arrow(VK_UP);
        type(L"\n");
        EXPECT_EQ(InputPoint, transform(VexDb::TransFormMove));
        EXPECT_LINE(11.0, 11.1, 13.0, 11.1, *line);
    }
}

} // namespace
