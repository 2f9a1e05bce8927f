#include "shapefixture.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/dbtracker/vexrecttracker.h"

namespace {

#define EXPECT_RECT(left, top, right, bottom, rect)                                                \
    do {                                                                                           \
        const CVexDbRect& looked = (rect);                                                         \
        EXPECT_POINT(left, top, looked.LeftTop());                                                 \
        EXPECT_POINT(right, bottom, looked.RightBottom());                                         \
    } while (false)

/// A rectangle being drawn from the corner (10, 10), as the command draws it.
class RectCreationTest : public ShapeCreationTest<CVexDbRect, CVexRectTracker> {
protected:
    RectCreationTest() { setUp(); }
    void setUp()
    {
        shape.setLeftTop({10, 10});
        shape.setRightBottom({11, 11});
        drawer.SetStartPoint({10, 10}, true);
    }
};

TEST_F(RectCreationTest, WhicheverWayTheDragGoesItsCornersAreSorted)
{
    struct Row {
        CVexGePoint2d at;
        CVexGePoint2d leftTop;
        CVexGePoint2d rightBottom;
    };
    const Row rows[] = {{{18, 17}, {10, 10}, {18, 17}},
                        {{4, 17}, {4, 10}, {10, 17}},
                        {{4, 3}, {4, 3}, {10, 10}},
                        {{18, 3}, {10, 3}, {18, 10}}};
    for (const Row& row : rows) {
        setUp();
        moveAt(12, 12);
        clickAt(row.at.x, row.at.y);
        EXPECT_EQ(InputPoint, track());
        EXPECT_RECT(row.leftTop.x, row.leftTop.y, row.rightBottom.x, row.rightBottom.y, shape);
        EXPECT_POINT(row.at.x, row.at.y, lastPoint());
    }
    EXPECT_TRUE(undo().undoStack().empty()) << "who adds the rectangle records it";
}

TEST_F(RectCreationTest, DraggedAcrossItsCornerItStaysSortedAtEachMove)
{
    moveAt(18, 17);
    whileWaiting([this] { EXPECT_EQ(2u, leftOver().size()) << "the band and the frame"; });
    moveAt(4, 3);
    clickAt(4, 3);
    track();
    EXPECT_LT(shape.LeftTop().y, shape.RightBottom().y);
    EXPECT_RECT(4.0, 3.0, 10.0, 10.0, shape);
    EXPECT_EQ(1u, leftOver().size()) << "the frame stays until the drawing shows it";
}

TEST_F(RectCreationTest, BandAndFrameShowAndGo)
{
    const std::vector<VexStroke> shown = shownAt(18, 17);
    EXPECT_EQ((std::vector<std::vector<CPoint>>{{{100, 300}, {180, 230}}}), bandsAmong(shown));
    ASSERT_EQ(2u, shown.size());
    EXPECT_EQ(VexStroke::Kind::kPolyline, shown[1].kind);
    EXPECT_EQ((std::vector<CPoint>{{100, 300}, {180, 300}, {180, 230}, {100, 230}, {100, 300}}),
              shown[1].points);
    EXPECT_TRUE(leftOver().empty());
    expectReleased();
}

TEST_F(RectCreationTest, ATypedCornerIsLeftToTheCommand)
{
    type(L"18,17\n");
    EXPECT_EQ(InputTypedPoint, track());
    EXPECT_RECT(10.0, 10.0, 11.0, 11.0, shape);
    EXPECT_POINT(18.0, 17.0, lastPoint());
}

/// A selected rectangle from (10, 10) to (20, 16).
class RectGripTest : public ShapeTrackerTest {
protected:
    CVexDbRect* rect = select(new CVexDbRect({10, 10}, {20, 16}));
};

TEST_F(RectGripTest, EachGripDragsItsSides)
{
    struct Row {
        const char* name;
        CVexGePoint2d grip;
        CVexGePoint2d to;
        CVexGePoint2d leftTop;
        CVexGePoint2d rightBottom;
        int editType;
    };
    const Row rows[] = {
        {"middle", {15, 13}, {16, 15}, {11, 12}, {21, 18}, kUndoMove},
        {"bottom", {15, 16}, {17, 19}, {10, 10}, {20, 19}, kUndoChangeSize},
        {"right", {20, 13}, {23, 18}, {10, 10}, {23, 16}, kUndoChangeSize},
        {"top", {15, 10}, {12, 7}, {10, 7}, {20, 16}, kUndoChangeSize},
        {"left", {10, 13}, {8, 12}, {8, 10}, {20, 16}, kUndoChangeSize},
        {"left bottom", {10, 16}, {8, 19}, {8, 10}, {20, 19}, kUndoChangeSize},
        {"right bottom", {20, 16}, {22, 15}, {10, 10}, {22, 15}, kUndoChangeSize},
        {"right top", {20, 10}, {19, 8}, {10, 8}, {19, 16}, kUndoChangeSize},
        {"left top", {10, 10}, {12, 11}, {12, 11}, {20, 16}, kUndoChangeSize},
        {"right over left", {20, 13}, {5, 13}, {10, 10}, {5, 16}, kUndoChangeSize},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        drag(row.grip, row.to);
        EXPECT_RECT(row.leftTop.x, row.leftTop.y, row.rightBottom.x, row.rightBottom.y, *rect);
        EXPECT_EQ(std::vector<int>{row.editType}, newestStep());
        EXPECT_TRUE(undo().Undo());
        EXPECT_RECT(10.0, 10.0, 20.0, 16.0, *rect);
    }
}

TEST_F(RectGripTest, TheRecordKeepsTheSides)
{
    drag({20, 16}, {22, 15});
    EXPECT_POINT(10.0, 10.0, newest().point);
    EXPECT_POINT(20.0, 16.0, CVexGePoint2d(newest().vector.x, newest().vector.y));
    EXPECT_FALSE(newest().continues);
}

TEST_F(RectGripTest, ASnappedSideMeetsItsTargetExactly)
{
    addLine({30.0123456, 20.0654321}, {35, 25});
    settings().m_bGripSnap = true;
    drag({20, 13}, {30, 20.1});
    EXPECT_EQ(30.0123456, rect->RightBottom().x);
    EXPECT_EQ(16.0, rect->RightBottom().y);
    drag({30, 16}, {30, 20.1});
    EXPECT_EQ(20.0654321, rect->RightBottom().y);
}

TEST_F(RectGripTest, ARectangleWithoutWidthIsPulledOpen)
{
    rect->setRightBottom({10, 16});
    releaseAt(14, 13);
    EXPECT_EQ(InputPoint, tracker().Track(&display, px(10, 13), 2));
    EXPECT_RECT(10.0, 10.0, 14.0, 16.0, *rect);
}

TEST_F(RectGripTest, ScaleEntityBringsACornerToTheEndOfTheBand)
{
    CVexDbRect copy(*rect);
    auto& grips = static_cast<CVexRectTracker&>(tracker());
    grips.SetPos({26, 31});
    grips.ScaleEntity(&copy, 6);
    EXPECT_RECT(10.0, 10.0, 26.0, 31.0, copy);
    grips.ScaleEntity(&copy, 9);
    EXPECT_RECT(10.0, 10.0, 26.0, 31.0, copy);
}

TEST_F(RectGripTest, ADragAlongTheSideIsNoStep)
{
    drag({20, 13}, {20, 18});
    EXPECT_RECT(10.0, 10.0, 20.0, 16.0, *rect);
    EXPECT_TRUE(undo().undoStack().empty());
    expectNothingLeftOver();
}

TEST_F(RectGripTest, EachDragIsTakenBackToTheByte)
{
    dragBackAndForth({15, 13}, {16.5, 14.25});
    dragBackAndForth({21.5, 14.3}, {23.7, 15});
    dragBackAndForth({11.5, 11.3}, {8.1, 12.7});
    expectNothingLeftOver();
}

TEST_F(RectGripTest, ACancelledDragLeavesItAsItWas)
{
    moveAt(25, 15);
    rightClick();
    handler().TrackTracker(&display, px(20, 16));
    EXPECT_RECT(10.0, 10.0, 20.0, 16.0, *rect);
    EXPECT_TRUE(undo().undoStack().empty());
    expectNothingLeftOver();
}

TEST_F(RectGripTest, EachTransformDoesAndRecordsWhatItSays)
{
    struct Row {
        VexDb::TransFormOption option;
        CVexGePoint2d leftTop;
        CVexGePoint2d rightBottom;
        int editType;
    };
    // From (10, 10) straight up by 2. Turning moves the middle and never tilts; a mirror may leave
    // left above right.
    const Row rows[] = {
        {VexDb::TransFormMove, {10, 12}, {20, 18}, kUndoMove},
        {VexDb::TransFormRotate, {2, 12}, {12, 18}, kUndoRotate},
        {VexDb::TransFormMirror, {10, 10}, {0, 16}, kUndoMirror},
        {VexDb::TransFormScale, {10, 10}, {10.2, 10.12}, kUndoScale},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(InputPoint, transform(row.option, 10, 12));
        EXPECT_RECT(row.leftTop.x, row.leftTop.y, row.rightBottom.x, row.rightBottom.y, *rect);
        EXPECT_EQ(row.editType, newest().editType) << row.option;
        EXPECT_TRUE(undo().Undo());
        EXPECT_NEAR(0.0, rect->RightBottom().distanceTo({20, 16}), 1e-9) << row.option;
    }
}

} // namespace
