#include "shapefixture.h"
#include "tests/vexdb/polylinewords.h"

#include <algorithm>

namespace {

/// Drags of vertices and middles: what a move strokes.
class PolylineStrokesTest : public ShapeTrackerTest {
protected:
    CVexDbPolyline& put(const std::vector<Corner>& corners, bool closed = false)
    {
        auto* const made = new CVexDbPolyline(0, database.get());
        setCorners(*made, corners, closed);
        return *ShapeTrackerTest::select(made);
    }
    /// A row of teeth, a bend at every `bend`-th vertex, the bends to both sides by turns.
    CVexDbPolyline& putTeeth(unsigned bend, bool closed = false)
    {
        std::vector<Corner> corners;
        for (unsigned i = 0; i < 30; ++i) {
            const double bulge = i % (2 * bend) == 0 ? 0.37 : -0.61;
            corners.push_back(
                {2.013 + i, i % 2 == 0 ? 10.004 : 12.507, bend > 0 && i % bend == 0 ? bulge : 0.0});
        }
        return put(corners, closed);
    }
    /// How many strokes so many moves of a drag make.
    std::size_t strokesOf(int grip, int moves)
    {
        const CVexGePoint2d from = selectedGrip(grip);
        for (int i = 0; i < moves; ++i) {
            moveAt(from.x + 1 + 0.1 * i, from.y + 2);
        }
        press(VK_ESCAPE);
        dc.clear();
        tracker().Track(&display, px(from.x, from.y), grip);
        return dc.strokes().size();
    }
    CVexGePoint2d selectedGrip(int grip) { return tracker().GetEntity()->getGripPoint(grip); }
    /// Drags every grip but the first, moving about; the picture must be off again behind each: the
    /// end of a drag takes the whole copy off that the moves have put on by parts.
    void dragEachGrip()
    {
        CVexDbEntity::PointList* list = nullptr;
        ASSERT_TRUE(tracker().GetEntity()->getGripPointVec(list));
        const int grips = static_cast<int>(list->size());
        for (int grip = 1; grip < grips; ++grip) {
            const CVexGePoint2d from = selectedGrip(grip);
            moveAt(from.x + 0.73, from.y + 1.31);
            moveAt(from.x - 1.17, from.y + 3.9);
            moveAt(from.x + 2.5, from.y - 2.2);
            press(VK_ESCAPE);
            dc.clear();
            tracker().Track(&display, px(from.x, from.y), grip);
            ASSERT_TRUE(leftOver().empty()) << "grip " << grip << ": " << leftOver().front();
        }
    }
};

TEST_F(PolylineStrokesTest, AMoveOfAVertexStrokesThreeSegmentsOffAndOn)
{
    putTeeth(50); // straight but for the first segment
    // The band and three segments, each off and on.
    EXPECT_EQ(10u * 8, strokesOf(15, 13) - strokesOf(15, 3));
}

TEST_F(PolylineStrokesTest, TheLastVertexHasOneSegment)
{
    putTeeth(50);
    EXPECT_EQ(10u * 4, strokesOf(30, 13) - strokesOf(30, 3));
}

TEST_F(PolylineStrokesTest, PartsMakeThePictureOfTheWhole)
{
    putTeeth(3);
    dragEachGrip();
}

TEST_F(PolylineStrokesTest, PartsMakeThePictureOfAClosedOneOfArcs)
{
    putTeeth(1, true);
    dragEachGrip();
}

TEST_F(PolylineStrokesTest, AFilledOneIsStrokedAsAWhole)
{
    putTeeth(3, true).SetFill(true);
    dragEachGrip();
}

TEST_F(PolylineStrokesTest, BesideSegmentsThatAreNotStrokedItIsTheWhole)
{
    CVexDbPolyline& polyline = putTeeth(3);
    for (const unsigned wide : {4u, 5u, 11u, 20u}) {
        polyline.SetWidthsAt(wide, 2.0, 2.0);
    }
    handler().ClearTracker(true);
    handler().DoDragEntity(&polyline, {});
    dragEachGrip();
}

TEST_F(PolylineStrokesTest, WhatIsShownWhileADragWaitsIsThePictureOfTheCopy)
{
    CVexDbPolyline& polyline = putTeeth(2);
    const CVexGePoint2d from = polyline.getGripPoint(5); // vertex 3, behind a bend
    moveAt(from.x + 1, from.y + 1);
    moveAt(from.x + 2, from.y + 3);
    std::vector<VexStroke> shown;
    whileWaiting([&] { shown = leftOver(); });
    press(VK_ESCAPE);
    dc.clear();
    tracker().Track(&display, px(from.x, from.y), 5);
    dc.clear();
    CVexDbPolyline copy(polyline);
    copy.SetPointAt(3, {px(from.x + 2, 0).x / 10.0, 40.0 - px(0, from.y + 3).y / 10.0});
    dc.SetROP2(R2_XORPEN);
    copy.Draw(&dc);
    dc.SetROP2(R2_COPYPEN);
    std::erase_if(shown, [](const VexStroke& stroke) { return stroke.color == kBand; });
    const std::vector<VexStroke> whole = leftOver();
    EXPECT_TRUE(std::ranges::is_permutation(whole, shown));
}

} // namespace
