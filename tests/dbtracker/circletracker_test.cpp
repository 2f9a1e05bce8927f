#include "shapefixture.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbtracker/vexcircletracker.h"

namespace {

/// A circle being drawn around (10, 10).
class CircleCreationTest : public ShapeCreationTest<CVexDbCircle, CVexCircleTracker> {
protected:
    CircleCreationTest()
    {
        shape.setCenter({10, 10});
        shape.setRadius(1.0);
    }
};

TEST_F(CircleCreationTest, TheRadiusIsTheWayFromTheCentreToTheClick)
{
    moveAt(12, 10);
    clickAt(13, 14);
    EXPECT_EQ(InputPoint, track());
    EXPECT_POINT(10.0, 10.0, shape.Center());
    EXPECT_EQ(5.0, shape.Radius());
    EXPECT_POINT(13.0, 14.0, lastPoint());
    EXPECT_TRUE(undo().undoStack().empty()) << "who adds the circle records it";
}

TEST_F(CircleCreationTest, APositionThatIsNotTheBandsEndCountsInLogicalUnits)
{
    drawer.SetStartPoint({10, 10}, true);
    CPoint position(1300, 1400);
    drawer.CheckCreateOption(&shape, position);
    EXPECT_EQ(5.0, shape.Radius());
}

TEST_F(CircleCreationTest, TheBandShowsTheRadiusAndGoesWithTheClick)
{
    const std::vector<VexStroke> shown = shownAt(13, 14);
    EXPECT_EQ((std::vector<std::vector<CPoint>>{{{100, 300}, {130, 260}}}), bandsAmong(shown));
    EXPECT_EQ(2u, shown.size()) << "the band and the circle";
    EXPECT_TRUE(leftOver().empty());

    clickAt(13, 14);
    track();
    ASSERT_EQ(1u, leftOver().size());
    EXPECT_EQ(VexStroke::Kind::kEllipse, leftOver()[0].kind);
    expectReleased();
}

TEST_F(CircleCreationTest, ASnappedRadiusEndsExactlyOnItsTarget)
{
    addLine({13.1234567, 10}, {30, 10});
    settings().m_bGripSnap = true;
    moveAt(11, 10);
    clickAt(13.1, 10.1);
    track();
    EXPECT_EQ(13.1234567 - 10.0, shape.Radius());
}

TEST_F(CircleCreationTest, WhatIsTypedIsLeftToTheCommand)
{
    type(L"7.5\n");
    EXPECT_EQ(InputNumber, track());
    EXPECT_EQ(7.5, drawer.resBuffer().value.number);
    EXPECT_EQ(1.0, shape.Radius());
    type(L"5<90\n");
    EXPECT_EQ(InputTypedPoint, track());
    EXPECT_POINT(10.0, 15.0, lastPoint());
    EXPECT_TRUE(leftOver().empty());
}

/// A selected circle around (20, 20) with radius 5.
class CircleGripTest : public ShapeTrackerTest {
protected:
    CVexDbCircle* circle = select(new CVexDbCircle({20, 20}, 5.0));
};

TEST_F(CircleGripTest, TheCentreMovesIt)
{
    drag({20, 20}, {22, 23});
    EXPECT_POINT(22.0, 23.0, circle->Center());
    EXPECT_EQ(5.0, circle->Radius());
    EXPECT_EQ(kUndoMove, newest().editType);
    EXPECT_EQ(2.0, newest().vector.x);
    EXPECT_EQ(3.0, newest().vector.y);
    EXPECT_POINT(22.0, 23.0, lastPoint());
}

TEST_F(CircleGripTest, EveryOtherGripSizesIt)
{
    struct Row {
        CVexGePoint2d grip;
        CVexGePoint2d to;
        double radius;
    };
    const Row rows[] = {{{25, 20}, {23, 24}, 5.0},
                        {{25, 20}, {28, 20}, 8.0},
                        {{20, 28}, {20, 29}, 9.0},
                        {{11, 20}, {20, 26}, 6.0},
                        {{20, 14}, {12, 14}, 10.0}};
    for (const Row& row : rows) {
        drag(row.grip, row.to);
        EXPECT_EQ(row.radius, circle->Radius()) << px(row.grip.x, row.grip.y);
        EXPECT_POINT(20.0, 20.0, circle->Center());
    }
    EXPECT_EQ(4u, undo().undoStack().size()) << "the first left the radius as it was";
    EXPECT_EQ(kUndoChangeSize, newest().editType);
    EXPECT_EQ(6.0, newest().vector.x) << "the radius before";
    EXPECT_FALSE(newest().continues);
}

TEST_F(CircleGripTest, TheBandRunsFromTheCentreToThePressAndThenToThePointer)
{
    dc.clear();
    moveAt(27, 20);
    press(VK_ESCAPE);
    handler().TrackTracker(&display, px(25.2, 20.1));
    const auto bands = bandsAmong(strokesOf(kBand));
    ASSERT_EQ(4u, bands.size()) << "each on and off";
    EXPECT_EQ((std::vector<CPoint>{{200, 200}, {252, 199}}), bands[0]);
    EXPECT_EQ((std::vector<CPoint>{{200, 200}, {270, 200}}), bands[2]);
    EXPECT_EQ(5.0, circle->Radius());
    EXPECT_TRUE(leftOver().empty());
}

TEST_F(CircleGripTest, APressBesideTheCentreBringsTheCentreToTheReleaseAllTheSame)
{
    drag({20.3, 19.8}, {25, 22});
    EXPECT_POINT(25.0, 22.0, circle->Center());
    EXPECT_EQ(5.0, newest().vector.x) << "the way of the centre, not of the mouse";
}

TEST_F(CircleGripTest, AReleaseOnTheCentreLeavesTheRadius)
{
    drag({25, 20}, {20, 20});
    EXPECT_EQ(5.0, circle->Radius());
    EXPECT_TRUE(undo().undoStack().empty());
    expectNothingLeftOver();
}

TEST_F(CircleGripTest, ATouchedGripChangesNothing)
{
    for (const CPoint at : {px(20.2, 20.1), px(25.2, 19.9)}) {
        moveTo(at);
        mouse(WM_LBUTTONUP, at);
        handler().TrackTracker(&display, at);
    }
    EXPECT_POINT(20.0, 20.0, circle->Center());
    EXPECT_EQ(5.0, circle->Radius());
    EXPECT_TRUE(undo().undoStack().empty());
    expectNothingLeftOver();
}

TEST_F(CircleGripTest, EachDragIsTakenBackToTheByte)
{
    dragBackAndForth({20, 20}, {22.5, 17.25});
    dragBackAndForth({27.5, 17.2}, {29.3, 18.7});
    expectNothingLeftOver();
}

TEST_F(CircleGripTest, EachTransformDoesAndRecordsWhatItSays)
{
    struct Row {
        VexDb::TransFormOption option;
        CVexGePoint2d centre;
        double radius;
        int editType;
    };
    // From (10, 10) straight up by 2.
    const Row rows[] = {
        {VexDb::TransFormMove, {20, 22}, 5.0, kUndoMove},
        {VexDb::TransFormRotate, {0, 20}, 5.0, kUndoRotate},
        {VexDb::TransFormMirror, {0, 20}, 5.0, kUndoMirror},
        {VexDb::TransFormScale, {10.2, 10.2}, 0.1, kUndoScale},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(InputPoint, transform(row.option, 10, 12));
        EXPECT_POINT(row.centre.x, row.centre.y, circle->Center());
        EXPECT_NEAR(row.radius, circle->Radius(), 1e-12) << row.option;
        EXPECT_EQ(row.editType, newest().editType) << row.option;
        EXPECT_TRUE(undo().Undo());
        EXPECT_NEAR(20.0, circle->Center().x, 1e-9) << row.option;
        EXPECT_NEAR(5.0, circle->Radius(), 1e-9) << row.option;
    }
}

} // namespace
