#include "tests/vexdb/trimfixture.h"

namespace {

class ExtendArcTest : public CutTest {
protected:
    /// What becomes of an arc round the origin, radius 10.
    std::string extended(double from, double to, double pick, Entities boundaries)
    {
        CVexDbArc* arc = addArc(10, from, to);
        const bool moved = extend(*arc, polar(10, pick), std::move(boundaries));
        return (moved ? "" : "still ") + shapeOf(*arc);
    }
};

TEST_F(ExtendArcTest, MovesTheEndNearestThePick)
{
    EXPECT_EQ("arc 0,0 r10 from 20 to 110", extended(20, 60, 50, {spoke(110)}));
    EXPECT_EQ("arc 0,0 r10 from 330 to 60", extended(20, 60, 25, {spoke(330)}));
    EXPECT_EQ("arc 0,0 r10 from 20 to 110", extended(20, 60, 80, {spoke(110)})); // pick beyond it
}

TEST_F(ExtendArcTest, PickInTheMiddleMovesTheEnd)
{
    EXPECT_EQ("arc 0,0 r10 from 20 to 110", extended(20, 60, 40, {spoke(110)}));
    EXPECT_EQ("arc 0,0 r10 from 340 to 110", extended(340, 40, 10, {spoke(110)}));
    EXPECT_EQ("arc 0,0 r10 from 110 to 60", extended(20, 60, 39.99, {spoke(110)}));
}

TEST_F(ExtendArcTest, StopsAtTheHitNearerToTheEndThatMoves)
{
    const Entities level = {makeLine({-20, 5}, {20, 5})}; // at 30 and 150 degrees
    EXPECT_EQ("arc 0,0 r10 from 60 to 150", extended(60, 120, 100, level));
    EXPECT_EQ("arc 0,0 r10 from 30 to 120", extended(60, 120, 70, level));
    const Entities upright = {this->upright(5)}; // at 60 and 300 degrees, over angle zero
    EXPECT_EQ("arc 0,0 r10 from 350 to 60", extended(350, 20, 10, upright));
    EXPECT_EQ("arc 0,0 r10 from 300 to 20", extended(350, 20, 355, upright));
}

TEST_F(ExtendArcTest, RecordsTheAngleOfBefore)
{
    CVexDbArc* arc = addArc(10, 20, 60);
    EXPECT_TRUE(extend(*arc, polar(10, 50), {spoke(110)}));
    ASSERT_EQ(1u, undoStack().size());
    EXPECT_FALSE(undoStack().front().continues);
    EXPECT_EQ(13, undoStack().front().editType);
    EXPECT_EQ(1, undoStack().front().index);
    EXPECT_POINT_NEAR(0.5, std::sqrt(0.75), undoStack().front().vector, 1e-12);
}

// Who relies on it: picks for an arc are the two boundaries that it runs between.
TEST_F(ExtendArcTest, OfManyHitsOnlyTheFirstAndLastFromAngleZeroAreLookedAt)
{
    EXPECT_EQ("arc 0,0 r10 from 60 to 170",
              extended(60, 90, 85, {spoke(100), spoke(170), spoke(5)}));
}

TEST_F(ExtendArcTest, NearerIsByTheAngleBetweenNotByTheWayTheEndTurns)
{
    EXPECT_EQ("arc 0,0 r10 from 60 to 10", extended(60, 90, 85, {spoke(10), spoke(250)}));
}

TEST_F(ExtendArcTest, OppositeHitIsFarAndNotNear)
{
    EXPECT_EQ("arc 0,0 r10 from 60 to 110", extended(60, 80, 75, {spoke(110), spoke(260)}));
    EXPECT_EQ("arc 0,0 r10 from 7 to 19", extended(7, 17, 16, {spoke(19), spoke(197)}));
}

TEST_F(ExtendArcTest, WhatLiesOnTheArcDoesNotLengthenIt)
{
    EXPECT_EQ("still arc 0,0 r10 from 20 to 60", extended(20, 60, 50, {spoke(40), spoke(60)}));
    EXPECT_EQ("still arc 0,0 r10 from 20 to 60", extended(20, 60, 50, {}));
    EXPECT_EQ("arc 0,0 r10 from 20 to 110", extended(20, 60, 50, {spoke(40), spoke(110)}));
    EXPECT_TRUE(undoStack().size() == 1);
}

TEST_F(ExtendArcTest, NoWholeTurnIsMade)
{
    // The kernel's slack at an end does not reach over angle zero: the hit counts as off the arc.
    EXPECT_EQ("still arc 0,0 r10 from 0 to 60", extended(0, 60, 50, {spoke(359.99)}));
    EXPECT_EQ("arc 0,0 r10 from 0 to 359", extended(0, 60, 50, {spoke(359.99), spoke(359)}));
    EXPECT_EQ("still arc 0,0 r10 from 0 to 360", extended(0, 360, 50, {spoke(90)}));
}

TEST_F(ExtendArcTest, WhatTheCircleDoesNotReachBoundsNothing)
{
    EXPECT_EQ("still arc 0,0 r10 from 20 to 60",
              extended(20, 60, 50,
                       {makeLine({-20, 11}, {20, 11}), makeCircle({0, 0}, 5),
                        makeLine({-1, 3}, {-2, 4}), makeCircle({30, 0}, 5)}));
}

TEST_F(ExtendArcTest, TouchingLineBounds)
{
    EXPECT_EQ("arc 0,0 r10 from 20 to 90", extended(20, 60, 50, {makeLine({-20, 10}, {20, 10})}));
}

// Rounding puts some of these hits just below a full turn, where isOn does not find the start.
TEST_F(ExtendArcTest, AHitAtTheStartThatMovesIsNoneOverAngleZeroEither)
{
    for (int k = 0; k < 30; ++k) {
        const double slope = 0.05 + 0.037 * k;
        CVexDbArc* arc = addArc(30, 0, 86);
        CVexDbLine* through = makeLine({-50, -80 * slope}, {43, 13 * slope});
        EXPECT_TRUE(extend(*arc, polar(30, 20), {through}));
        EXPECT_LT(arc->StartAngle(), 5.0) << k;
    }
}

} // namespace
