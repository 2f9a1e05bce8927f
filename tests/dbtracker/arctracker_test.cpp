#include "shapefixture.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbtracker/vexarctracker.h"

#include <cmath>

namespace {

#define EXPECT_ARC(centreX, centreY, radius, startAngle, endAngle, arc)                            \
    do {                                                                                           \
        const CVexDbArc& looked = (arc);                                                           \
        EXPECT_POINT(centreX, centreY, looked.Center());                                           \
        EXPECT_NEAR(radius, looked.Radius(), 1e-12);                                               \
        EXPECT_NEAR(startAngle, looked.StartAngle(), 1e-12);                                       \
        EXPECT_NEAR(endAngle, looked.EndAngle(), 1e-12);                                           \
    } while (false)

/// An arc being drawn from (10, 10), in the way that each test chooses.
class ArcCreationTest : public ShapeCreationTest<CVexDbArc, CVexArcTracker> {
protected:
    ArcCreationTest() { shape.set({10, 10}, 5.0, 0.0, 0.1); }
    int drawTo(double x, double y)
    {
        clickAt(x, y);
        return track();
    }
    void continueFrom(CVexDbEntity* previous, CVexGePoint2d start)
    {
        drawer.SetOption(CVexArcTracker::kTangent);
        drawer.SetPrevEntity(previous);
        drawer.SetStartPoint(start, true);
    }
    /// From `start` to `end` with next to no bend.
    void expectNearlyStraight(CVexGePoint2d start, CVexGePoint2d end)
    {
        EXPECT_NEAR(0.001, shape.Bulge(), 1e-9);
        EXPECT_NEAR(0.0, shape.StartPoint().distanceTo(start), 1e-9);
        EXPECT_NEAR(0.0, shape.EndPoint().distanceTo(end), 1e-9);
    }
};

TEST_F(ArcCreationTest, ThreePointsGoOverTheSecondOne)
{
    drawer.SetOption(CVexArcTracker::kThreePoints);
    drawer.SetArcPoint({15, 15});
    moveAt(18, 12);
    EXPECT_EQ(InputPoint, drawTo(20, 10));
    EXPECT_ARC(15.0, 10.0, 5.0, 0.0, kPi, shape);
    EXPECT_POINT(20.0, 10.0, lastPoint());
    EXPECT_TRUE(undo().undoStack().empty());
}

TEST_F(ArcCreationTest, FromTheCentreThePositionIsTheEndAngle)
{
    for (const auto option : {CVexArcTracker::kEndAngle, CVexArcTracker::kEndAngleByRadius}) {
        shape.set({10, 10}, 5.0, 0.0, 0.1);
        drawer.SetOption(option);
        drawer.SetStartPoint({10, 10}, true);
        moveAt(20, 15);
        EXPECT_EQ(InputPoint, drawTo(10, 3)) << option;
        EXPECT_ARC(10.0, 10.0, 5.0, 0.0, 1.5 * kPi, shape);
    }
}

TEST_F(ArcCreationTest, TheEndAngleMeetsASnappedPointExactly)
{
    addLine({13.3333333, 11.7777777}, {30, 30});
    settings().m_bGripSnap = true;
    drawer.SetOption(CVexArcTracker::kEndAngle);
    moveAt(12, 12);
    drawTo(13.3, 11.8);
    EXPECT_NEAR(std::atan2(1.7777777, 3.3333333), shape.EndAngle(), 1e-15);
}

TEST_F(ArcCreationTest, TheBandIsAlwaysDrawnAndGoesWithTheEnd)
{
    drawer.SetOption(CVexArcTracker::kEndAngle);
    const std::vector<VexStroke> shown = shownAt(10, 20);
    EXPECT_EQ((std::vector<std::vector<CPoint>>{{{100, 300}, {100, 200}}}), bandsAmong(shown));
    EXPECT_TRUE(leftOver().empty());
    expectReleased();
}

TEST_F(ArcCreationTest, WithNothingBeforeItLeavesAlongX)
{
    continueFrom(nullptr, {10, 10});
    drawTo(15, 15);
    EXPECT_ARC(10.0, 15.0, 5.0, 1.5 * kPi, 0.0, shape); // bends to the left
    drawTo(15, 5);
    EXPECT_ARC(10.0, 5.0, 5.0, 0.0, 0.5 * kPi, shape); // to the right: stored from its end
    drawTo(5, 15);
    EXPECT_ARC(10.0, 15.0, 5.0, 1.5 * kPi, kPi, shape); // three quarters round
}

TEST_F(ArcCreationTest, ACircleBeforeCountsAsNothing)
{
    CVexDbCircle circle({5, 10}, 5.0);
    continueFrom(&circle, {10, 10});
    drawTo(15, 15);
    EXPECT_ARC(10.0, 15.0, 5.0, 1.5 * kPi, 0.0, shape);
}

TEST_F(ArcCreationTest, ItGoesOnFromTheEndOfAnArc)
{
    CVexDbArc before({10, 15}, 5.0, 1.5 * kPi, 0.0); // arrives at (15, 15) upwards
    continueFrom(&before, {15, 15});
    drawTo(10, 20);
    EXPECT_ARC(10.0, 15.0, 5.0, 0.0, 0.5 * kPi, shape);
    drawTo(20, 20);
    EXPECT_ARC(20.0, 15.0, 5.0, 0.5 * kPi, kPi, shape);
}

TEST_F(ArcCreationTest, ItGoesOnBackwardsFromTheStartOfAnArc)
{
    CVexDbArc before({10, 10}, 5.0, 0.0, 0.5 * kPi); // leaves (15, 10) upwards
    continueFrom(&before, {15, 10});
    drawTo(20, 5);
    EXPECT_ARC(20.0, 10.0, 5.0, kPi, 1.5 * kPi, shape);
}

TEST_F(ArcCreationTest, TheSideOfTheBendIsToldAcrossAngleZero)
{
    CVexDbArc before({20, 10}, std::sqrt(50.0), 0.75 * kPi, 1.5 * kPi); // left at 45 degrees
    continueFrom(&before, {15, 15});
    drawTo(20, 15);
    EXPECT_ARC(17.5, 12.5, std::sqrt(12.5), 0.25 * kPi, 0.75 * kPi, shape);
}

TEST_F(ArcCreationTest, AnEndWithinAThousandthIsTheEnd)
{
    CVexDbArc before({10, 15}, 5.0, 1.5 * kPi, 0.0);
    continueFrom(&before, {15, 15.0009});
    drawTo(20, 20);
    EXPECT_GT(shape.Center().x, 15.0) << "upwards, and to the right";
    EXPECT_NEAR(kPi, shape.EndAngle(), 0.001);
    continueFrom(&before, {15, 15.0011});
    drawTo(20, 20);
    EXPECT_NEAR(kPi, shape.StartAngle(), 0.001) << "downwards, and round";
}

TEST_F(ArcCreationTest, ItGoesOnFromTheEndOfALine)
{
    CVexDbLine before({5, 5}, {10, 10});
    continueFrom(&before, {10, 10});
    drawTo(10, 20);
    EXPECT_ARC(5.0, 15.0, std::sqrt(50.0), 1.75 * kPi, 0.25 * kPi, shape);
    drawTo(20, 10);
    EXPECT_ARC(15.0, 5.0, std::sqrt(50.0), 0.25 * kPi, 0.75 * kPi, shape);
}

TEST_F(ArcCreationTest, TheNormalOfALineStandsOnItsEndWhereverTheArcStarts)
{
    CVexDbLine before({10, 10}, {20, 10});
    continueFrom(&before, {10, 10});
    drawTo(10, 20);
    EXPECT_POINT(20.0, 15.0, shape.Center());
    EXPECT_NEAR(std::sqrt(125.0), shape.Radius(), 1e-12);
    EXPECT_NEAR(0.0, shape.StartPoint().distanceTo({10, 10}), 1e-12);
}

TEST_F(ArcCreationTest, APositionOnTheTangentGivesANearlyStraightArc)
{
    continueFrom(nullptr, {10, 10});
    for (const CVexGePoint2d& at : {CVexGePoint2d(20, 10), CVexGePoint2d(2, 10)}) {
        drawTo(at.x, at.y);
        expectNearlyStraight({10, 10}, at);
    }
    CVexDbLine slanted({7, 9}, {10, 10});
    continueFrom(&slanted, {10, 10});
    drawTo(25, 15);
    expectNearlyStraight({10, 10}, {25, 15});
}

TEST_F(ArcCreationTest, APositionOnTheStartGivesAnArcWithoutSize)
{
    continueFrom(nullptr, {10, 10});
    drawTo(10, 10);
    EXPECT_POINT(10.0, 10.0, shape.Center());
    EXPECT_EQ(0.0, shape.Radius());
}

TEST_F(ArcCreationTest, AnotherOptionLeavesTheArcAsItIs)
{
    EXPECT_EQ(InputPoint, drawTo(20, 20));
    EXPECT_ARC(10.0, 10.0, 5.0, 0.0, 0.1, shape);
}

TEST_F(ArcCreationTest, ATypedAngleIsLeftToTheCommand)
{
    drawer.SetOption(CVexArcTracker::kEndAngle);
    moveAt(20, 20);
    type(L"90\n");
    EXPECT_EQ(InputNumber, track());
    EXPECT_EQ(90.0, drawer.resBuffer().value.number);
    EXPECT_ARC(10.0, 10.0, 5.0, 0.0, 0.1, shape);
    EXPECT_TRUE(leftOver().empty());
}

/// A selected quarter around (20, 20) with radius 10, from (30, 20) to (20, 30).
class ArcGripTest : public ShapeTrackerTest {
protected:
    CVexDbArc* arc = select(new CVexDbArc({20, 20}, 10.0, 0.0, 0.5 * kPi));
};

TEST_F(ArcGripTest, TheStartGripTurnsTheStart)
{
    drag({30, 20}, {29, 11});
    EXPECT_ARC(20.0, 20.0, 10.0, 1.75 * kPi, 0.5 * kPi, *arc);
    EXPECT_EQ(kUndoChangeAngle, newest().editType);
    EXPECT_EQ(0, newest().index);
    EXPECT_POINT(1.0, 0.0, CVexGePoint2d(newest().vector.x, newest().vector.y));
    EXPECT_FALSE(newest().continues);
}

TEST_F(ArcGripTest, TheEndGripTurnsTheEnd)
{
    drag({20, 30}, {14, 20});
    EXPECT_ARC(20.0, 20.0, 10.0, 0.0, kPi, *arc);
    EXPECT_EQ(kUndoChangeAngle, newest().editType);
    EXPECT_EQ(1, newest().index);
    EXPECT_POINT(0.0, 1.0, CVexGePoint2d(newest().vector.x, newest().vector.y));
}

TEST_F(ArcGripTest, TheGripOnTheSweepSizesIt)
{
    drag({27.1, 27.1}, {23, 24});
    EXPECT_ARC(20.0, 20.0, 5.0, 0.0, 0.5 * kPi, *arc);
    EXPECT_EQ(kUndoChangeSize, newest().editType);
    EXPECT_EQ(10.0, newest().vector.x);
}

TEST_F(ArcGripTest, TheCentreMovesIt)
{
    drag({20, 20}, {19, 22});
    EXPECT_ARC(19.0, 22.0, 10.0, 0.0, 0.5 * kPi, *arc);
    EXPECT_EQ(kUndoMove, newest().editType);
}

TEST_F(ArcGripTest, TheBandStartsAtTheCentreWhateverTheGrip)
{
    for (const CVexGePoint2d& grip : {CVexGePoint2d(30, 20), {27.1, 27.1}, {20, 30}, {20, 20}}) {
        dc.clear();
        moveAt(12, 12);
        press(VK_ESCAPE);
        handler().TrackTracker(&display, px(grip.x, grip.y));
        const auto bands = bandsAmong(strokesOf(kBand));
        ASSERT_EQ(4u, bands.size());
        EXPECT_EQ((std::vector<CPoint>{{200, 200}, px(grip.x, grip.y)}), bands[0]);
        EXPECT_EQ((std::vector<CPoint>{{200, 200}, {120, 280}}), bands[2]);
        EXPECT_TRUE(leftOver().empty());
    }
}

TEST_F(ArcGripTest, EachDragIsTakenBackToTheByte)
{
    arc->set({20, 20}, 10.0, 0.203, 0.445); // directions do not keep such angles to the bit
    arc->setGripPoints();
    const CVexGePoint2d start = arc->StartPoint();
    dragBackAndForth(start, {29, 11});
    dragBackAndForth(arc->EndPoint(), {14, 21});
    dragBackAndForth(arc->getGripPoint(2), {23, 24.5});
    dragBackAndForth({20, 20}, {22.5, 17.25});
}

TEST_F(ArcGripTest, AnAngleThatStaysIsNoStep)
{
    drag({30, 20}, {35, 20});
    EXPECT_ARC(20.0, 20.0, 10.0, 0.0, 0.5 * kPi, *arc);
    EXPECT_TRUE(undo().undoStack().empty());
}

TEST_F(ArcGripTest, EachTransformDoesAndRecordsWhatItSays)
{
    struct Row {
        VexDb::TransFormOption option;
        CVexGePoint2d start;
        CVexGePoint2d end;
        int editType;
    };
    // From (10, 10) straight up by 2; a mirrored arc runs from the image of its end.
    const Row rows[] = {
        {VexDb::TransFormCopy, {30, 22}, {20, 32}, kUndoMove},
        {VexDb::TransFormMove, {30, 22}, {20, 32}, kUndoMove},
        {VexDb::TransFormRotate, {0, 30}, {-10, 20}, kUndoRotate},
        {VexDb::TransFormMirror, {0, 30}, {-10, 20}, kUndoMirror},
        {VexDb::TransFormScale, {10.4, 10.2}, {10.2, 10.4}, kUndoScale},
    };
    const auto before = bytes();
    for (const Row& row : rows) {
        EXPECT_EQ(InputPoint, transform(row.option, 10, 12));
        EXPECT_NEAR(0.0, arc->StartPoint().distanceTo(row.start), 1e-9) << row.option;
        EXPECT_NEAR(0.0, arc->EndPoint().distanceTo(row.end), 1e-9) << row.option;
        EXPECT_EQ(row.editType, newest().editType) << row.option;
        EXPECT_TRUE(undo().Undo());
        EXPECT_TRUE(row.option == VexDb::TransFormScale || before == bytes()) << row.option;
    }
    EXPECT_NEAR(10.0, arc->Radius(), 1e-9);
}

} // namespace
