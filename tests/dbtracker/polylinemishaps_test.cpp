#include "shapefixture.h"
#include "tests/vexdb/polylinewords.h"

#include <functional>

namespace {

/// What may come between while a grip of a selected polyline is dragged.
class PolylineMishapTest : public ShapeTrackerTest {
protected:
    CVexDbPolyline& put(const std::vector<Corner>& corners, bool closed = false)
    {
        auto* const made = new CVexDbPolyline(0, database.get());
        setCorners(*made, corners, closed);
        return *select(made);
    }
    /// A pipe run: a line, an arc, a line.
    CVexDbPolyline& putPipe() { return put({{10, 10}, {20, 10, 0.5}, {20, 20}, {30, 20}}); }
    /// Drags from a grip to (24, 13), where `happens`; what the track answers.
    int dragUntil(CVexGePoint2d grip, std::function<void()> happens)
    {
        moveAt(24, 13);
        whileWaiting(std::move(happens));
        return tracker().Track(&display, px(grip.x, grip.y));
    }
};

/// Grips of the pipe: the first, a vertex, the middle of the arc, the last.
constexpr CVexGePoint2d kPipeGrips[] = {{10, 10}, {20, 10}, {22.5, 15}, {30, 20}};

TEST_F(PolylineMishapTest, EscapeAndTheRightButtonGiveTheDragUp)
{
    CVexDbPolyline& pipe = putPipe();
    const auto before = bytes();
    for (const CVexGePoint2d& grip : kPipeGrips) {
        EXPECT_EQ(InputCancel, dragUntil(grip, [this] { press(VK_ESCAPE); }));
        EXPECT_EQ(InputCancel, dragUntil(grip, [this] { rightClick(); }));
    }
    EXPECT_TRUE(before == bytes()) << wordsOf(pipe);
    EXPECT_TRUE(undo().undoStack().empty());
    EXPECT_TRUE(tracker().gripsShown());
    expectNothingLeftOver();
}

TEST_F(PolylineMishapTest, ALostCaptureGivesTheDragUp)
{
    CVexDbPolyline& pipe = putPipe();
    const auto before = bytes();
    for (const CVexGePoint2d& grip : kPipeGrips) {
        EXPECT_EQ(InputLost, dragUntil(grip, [] { ReleaseCapture(); }));
    }
    EXPECT_TRUE(before == bytes()) << wordsOf(pipe);
    EXPECT_TRUE(undo().undoStack().empty());
    expectNothingLeftOver();
}

TEST_F(PolylineMishapTest, NothingIsUndoneWhileItWaits)
{
    CVexDbPolyline& pipe = putPipe();
    drag({20, 10}, {20, 5});
    bool undone = true;
    moveAt(24, 13);
    whileWaiting([&] { undone = undo().Undo(); });
    releaseAt(24, 13);
    EXPECT_EQ(InputPoint, tracker().Track(&display, px(20, 5)));
    EXPECT_FALSE(undone);
    EXPECT_EQ("10,10 24,13 b0.5 20,20 30,20", wordsOf(pipe));
    EXPECT_TRUE(undo().Undo());
    EXPECT_EQ("10,10 20,5 b0.5 20,20 30,20", wordsOf(pipe));
}

TEST_F(PolylineMishapTest, AnErasedPolylineEndsIt)
{
    for (const CVexGePoint2d& grip : kPipeGrips) {
        CVexDbPolyline& pipe = putPipe();
        EXPECT_EQ(InputCancel, dragUntil(grip, [&] { pipe.setErased(); }));
        EXPECT_EQ("10,10 20,10 b0.5 20,20 30,20", wordsOf(pipe));
        EXPECT_TRUE(handler().trackers().empty());
    }
    EXPECT_TRUE(undo().undoStack().empty());
    expectNothingLeftOver();
}

TEST_F(PolylineMishapTest, OfTwoWhoseGripsLieOnOneAnotherOneFollows)
{
    CVexDbPolyline& first = put({{10, 10}, {20, 10}, {30, 10}});
    CVexDbPolyline& second = put({{20, 30}, {20, 10}, {10, 30}});
    drag({20, 10}, {22, 14});
    EXPECT_EQ("10,10 22,14 30,10", wordsOf(first));
    EXPECT_EQ("20,30 20,10 10,30", wordsOf(second));
    drag({20, 10}, {18, 14});
    EXPECT_EQ("10,10 22,14 30,10", wordsOf(first));
    EXPECT_EQ("20,30 18,14 10,30", wordsOf(second));
    expectNothingLeftOver();
}

TEST_F(PolylineMishapTest, EachGripOfAClosedOneIsDraggedThereAndBack)
{
    CVexDbPolyline& outline = put({{10, 10, 0.5}, {20, 10}, {20, 20}, {10, 20, 1}}, true);
    dragBackAndForth({15, 7.5}, {15, 11}); // the middle of the first arc
    dragBackAndForth({20, 10}, {23, 12});
    dragBackAndForth({10, 20}, {8, 24}); // where the closing arc leaves
    dragBackAndForth({20, 20}, {24, 23});
    EXPECT_EQ("10,10 b-0.2 23,12 24,23 8,24 b1 closed", wordsOf(outline));
    expectNothingLeftOver();
}

TEST_F(PolylineMishapTest, ATypedTargetCountsWhereTheGripWasPressed)
{
    CVexDbPolyline& pipe = putPipe();
    type(L"20.2,10\n");
    EXPECT_EQ(InputPoint, tracker().Track(&display, px(20.2, 10))); // beside the grip's centre
    EXPECT_EQ("10,10 20.2,10 b0.5 20,20 30,20", wordsOf(pipe));
    type(L"10.2,10\n"); // the first grip goes by the way, and there is none
    EXPECT_EQ(InputPoint, tracker().Track(&display, px(10.2, 10)));
    EXPECT_EQ("10,10 20.2,10 b0.5 20,20 30,20", wordsOf(pipe));
    EXPECT_EQ(1u, undo().undoStack().size());
}

TEST_F(PolylineMishapTest, ADragThatEndsWhereTheVertexWasIsNoStep)
{
    putPipe();
    settings().m_bGridSnap = true;
    drag({20.2, 10}, {19.7, 10.3});
    EXPECT_TRUE(undo().undoStack().empty());
}

TEST_F(PolylineMishapTest, AnArcIsNotBentBeyondAllMeasure)
{
    CVexDbPolyline& pipe = putPipe();
    type(L"1e300,15\n");
    EXPECT_EQ(InputPoint, tracker().Track(&display, px(22.5, 15)));
    EXPECT_EQ("10,10 20,10 b0.5 20,20 30,20", wordsOf(pipe));
    EXPECT_TRUE(undo().undoStack().empty());
}

} // namespace
