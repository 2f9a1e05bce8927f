#include "tests/vexdb/polylineeditfixture.h"

#include <limits>

namespace {

using PolylineDivideTest = PolylineEditTest;

TEST_F(PolylineDivideTest, LineFallsIntoEqualPieces)
{
    put({{0, 0}, {12, 0}, {12, 8}});
    editThereAndBack([&] {
        polyline->DivideSegment(3, 0, false);
        EXPECT_EQ("0,0 4,0 8,0 12,0 12,8", wordsOf(*polyline));
        EXPECT_EQ("26[1] 15[1]=0 26[2] 15[2]=0 15[0]=0", records());
    });
}

TEST_F(PolylineDivideTest, ArcFallsIntoArcsOnTheSameCircle)
{
    put({{0, 0, 1}, {20, 0}, {30, 0}}); // a half circle below
    editThereAndBack([&] {
        polyline->DivideSegment(2, 0, false);
        EXPECT_EQ("0,0 b0.414214 10,-10 b0.414214 20,0 30,0", wordsOf(*polyline));
        EXPECT_EQ("26[1] 15[1]=0 15[0]=1", records());
    });
}

TEST_F(PolylineDivideTest, PiecesOfAClockwiseArcRunInTheDirectionOfTravel)
{
    put({{0, 0, -1}, {20, 0}});
    polyline->DivideSegment(3, 0, false); // each a sixth of a circle: tan 15 degrees
    EXPECT_EQ("0,0 b-0.267949 5,8.660254 b-0.267949 15,8.660254 b-0.267949 20,0",
              wordsOf(*polyline));
}

TEST_F(PolylineDivideTest, ClosingSegmentHasTwoNumbers)
{
    for (const int segment : {2, 3}) {
        put({{0, 0}, {8, 0}, {8, 8, 1}}, true);
        polyline->DivideSegment(2, segment, false);
        EXPECT_EQ("0,0 8,0 8,8 b0.414214 0,8 b0.414214 closed", wordsOf(*polyline)) << segment;
    }
}

TEST_F(PolylineDivideTest, ClosingSegmentComesBack)
{
    put({{0, 0, 1}, {8, 0, -0.5}, {8, 8, 1}}, true);
    editThereAndBack([&] { polyline->DivideSegment(5, 3, false); });
}

TEST_F(PolylineDivideTest, WhatIsNoSegmentAndLessThanTwoPiecesChangeNothing)
{
    put({{0, 0}, {8, 0}, {8, 8}, {8, 8}});
    constexpr int kLeast = std::numeric_limits<int>::min();
    for (const auto& [n, segment] : {std::pair(1, 0),
                                     {0, 0},
                                     {-4, 0},
                                     {2, 2},
                                     {2, 3},
                                     {2, 4},
                                     {2, 5},
                                     {2, -1},
                                     {kLeast, kLeast}}) {
        polyline->DivideSegment(n, segment, false);
        EXPECT_EQ("0,0 8,0 8,8 8,8", wordsOf(*polyline)) << n << " of " << segment;
    }
    EXPECT_EQ("", records());
}

TEST_F(PolylineDivideTest, ArcWhoseCircleIsNoNumberStays)
{
    put({{0, 0, 1e300}, {10, 0, -1e300}, {20, 0}});
    polyline->DivideSegment(2, 0, false);
    polyline->DivideSegment(2, 1, false);
    EXPECT_EQ(3u, polyline->NumVerts());
    EXPECT_EQ("", records());
}

TEST_F(PolylineDivideTest, LengthStays)
{
    put({{3, 4, 0.7}, {11, -2, -2.5}, {9, 9}});
    const double before = polyline->length();
    polyline->DivideSegment(7, 1, false);
    polyline->DivideSegment(4, 0, false);
    EXPECT_EQ(12u, polyline->NumVerts());
    EXPECT_NEAR(before, polyline->length(), 1e-9);
}

} // namespace
