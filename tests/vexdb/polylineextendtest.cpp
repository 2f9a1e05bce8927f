#include "tests/vexdb/polylineeditfixture.h"

namespace {

constexpr double kQuarter = 0.41421356237309503; // the bulge of a quarter circle

using PolylineExtendTest = PolylineEditTest;

TEST_F(PolylineExtendTest, NearerEndMovesAlongItsOwnSegment)
{
    put({{0, 0}, {10, 0}, {10, 10}});
    editThereAndBack([&] {
        EXPECT_TRUE(extend({10, 8}, {level(15)}));
        EXPECT_EQ("0,0 10,0 10,15", wordsOf(*polyline));
        EXPECT_EQ("18[2]@10,10", records());
    });
    EXPECT_TRUE(extend({2, 0}, {upright(-5)}));
    EXPECT_EQ("-5,0 10,0 10,15", wordsOf(*polyline));
}

TEST_F(PolylineExtendTest, MiddleMovesTheEnd)
{
    put({{0, 0}, {10, 0}, {10, 10}});
    EXPECT_TRUE(extend({10, 0}, {level(15), upright(-5)}));
    EXPECT_EQ("0,0 10,0 10,15", wordsOf(*polyline));
}

TEST_F(PolylineExtendTest, ArcAtTheEndReachesRoundItsCircle)
{
    put({{-10, 0}, {0, 0, kQuarter}, {10, 10}}); // about 0,10
    editThereAndBack([&] {
        EXPECT_TRUE(extend({9, 6}, {cutter({0, 15}, {0, 25})}));
        EXPECT_EQ("-10,0 0,0 b1 0,20", wordsOf(*polyline));
        EXPECT_EQ("18[2]@10,10 15[1]=0.414214", records());
    });
}

TEST_F(PolylineExtendTest, ClockwiseArcAtTheStartReachesRoundItsCircle)
{
    put({{10, 10, -kQuarter}, {0, 0}, {-10, 0}}); // the same the other way
    editThereAndBack([&] {
        EXPECT_TRUE(extend({9, 6}, {cutter({0, 15}, {0, 25})}));
        EXPECT_EQ("0,20 b-1 0,0 -10,0", wordsOf(*polyline));
        EXPECT_EQ("18[0]@10,10 15[0]=-0.414214", records());
    });
}

TEST_F(PolylineExtendTest, OnlyHitsOnTheMovedEndsOwnExtensionCount)
{
    put({{0, 0}, {10, 0}, {10, 10}});
    EXPECT_FALSE(extend({10, 8}, {upright(15)})); // the first segment would reach it
    EXPECT_FALSE(extend({10, 8}, {level(-5)}));   // behind the segment's other end
    EXPECT_FALSE(extend({2, 0}, {level(15)}));    // beyond the end that does not move
    EXPECT_EQ("0,0 10,0 10,10", wordsOf(*polyline));
    EXPECT_EQ("", records());
}

TEST_F(PolylineExtendTest, WhatLiesOnThePolylineDoesNotLengthenIt)
{
    put({{0, 0}, {10, 0}, {10, 10}, {5, 10}, {5, 5}});
    EXPECT_FALSE(extend({5, 6}, {cutter({0, 0}, {6, 0.0})})); // meets its first segment only
    EXPECT_FALSE(extend({5, 6}, {level(5)}));
    EXPECT_TRUE(extend({5, 6}, {level(3)}));
    EXPECT_EQ("0,0 10,0 10,10 5,10 5,3", wordsOf(*polyline));
}

TEST_F(PolylineExtendTest, NearestToThePickIsTheTarget)
{
    put({{0, 0}, {10, 0}});
    EXPECT_TRUE(extend({9, 0}, {upright(30), upright(12), upright(20)}));
    EXPECT_EQ("0,0 12,0", wordsOf(*polyline));
}

TEST_F(PolylineExtendTest, ClosedOnesAndEndsWithoutADirectionStay)
{
    put({{0, 0}, {10, 0}, {10, 10}}, true);
    EXPECT_FALSE(extend({10, 8}, {level(15)}));
    put({{0, 0}, {10, 0}, {10, 0}});
    EXPECT_FALSE(extend({9, 0}, {upright(15)}));
    EXPECT_EQ("", records());
}

TEST_F(PolylineExtendTest, GripsFollow)
{
    put({{0, 0}, {10, 0}});
    EXPECT_POINT(10, 0, polyline->getGripPoint(1));
    extend({9, 0}, {upright(12)});
    EXPECT_POINT_NEAR(12, 0, polyline->getGripPoint(1), 1e-9);
    drawing.undoHandler().Undo();
    EXPECT_POINT(10, 0, polyline->getGripPoint(1));
}

} // namespace
