#include "tests/vexge/geasserts.h"
#include "tests/vexge/gebytes.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgespiral.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <rapidcheck/gtest.h>

namespace {

constexpr double kPi = std::numbers::pi;

/// Four segments a turn about the origin.
CVexGeSpiral made(double maxRadius, double minRadius, double startAng, double pitch,
                  double ratio = 1.0, int divNum = 4)
{
    CVexGeSpiral spiral;
    spiral.set(divNum, {0, 0}, maxRadius, minRadius, startAng, pitch, ratio);
    return spiral;
}

void expectRadii(const std::vector<double>& expected, const CVexGeSpiral& spiral)
{
    ASSERT_EQ(expected.size(), spiral.chain().numVerts());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_NEAR(expected[i], spiral.center().distanceTo(spiral.chain().vertices()[i]), 1e-9);
    }
}

} // namespace

TEST(SpiralTest, DefaultIsEmpty)
{
    CVexGeSpiral spiral;
    CVexGePolyline2d chain;
    EXPECT_EQ(VexGe::kGeSpiral, spiral.type());
    EXPECT_EQ(0.0, spiral.maxRadius());
    EXPECT_EQ(0.0, spiral.divNum());
    EXPECT_EQ(1.0, spiral.ratio());
    EXPECT_FALSE(spiral.getGePolyline(chain));
    EXPECT_EQ(-1.0, spiral.paramAtPoint({0, 0}, 1.0));
}

TEST(SpiralTest, ConstantPitchHasRadiiInArithmeticOrder)
{
    const CVexGeSpiral spiral = made(16, 0, 0, 8);
    expectRadii({0, 2, 4, 6, 8, 10, 12, 14, 16}, spiral);
    const auto& vertices = spiral.chain().vertices();
    EXPECT_POINT_NEAR(0, 2, vertices[1], 1e-12);
    EXPECT_POINT_NEAR(-4, 0, vertices[2], 1e-12);
    EXPECT_POINT_NEAR(0, -6, vertices[3], 1e-12);
    EXPECT_POINT_NEAR(16, 0, vertices[8], 1e-12);
    EXPECT_EQ(0.0, spiral.chain().getBulgeAt(3));
}

TEST(SpiralTest, BeginsAtTheFirstVertexOfTheLeastRadius)
{
    expectRadii({4, 6, 8}, made(9, 3, 0, 8));
    expectRadii({4, 6, 8}, made(9, 4, 0, 8)); // not below it
}

TEST(SpiralTest, TheStartAnglePlacesTheOuterEnd)
{
    const CVexGeSpiral up = made(16, 0, kPi / 2.0, 8);
    EXPECT_POINT_NEAR(0, 16, up.pointAtParam(1.0), 1e-9);
    // A smaller radius ends a quarter earlier, and the inner windings turn to bring it up again.
    const CVexGeSpiral smaller = made(15, 0, kPi / 2.0, 8);
    EXPECT_POINT_NEAR(0, 14, smaller.pointAtParam(1.0), 1e-9);
    EXPECT_POINT_NEAR(-2, 0, up.chain().vertices()[1], 1e-9);
    EXPECT_POINT_NEAR(0, -2, smaller.chain().vertices()[1], 1e-9);
}

TEST(SpiralTest, ARatioGrowsThePitchTurnByTurn)
{
    // Pitch 4 in the first turn, up to 8 over the second, then on by 2 a step.
    expectRadii({0, 1, 2, 3, 5, 7.5, 10.5, 14, 20}, made(20, 0, 0, 4, 2.0));
}

TEST(SpiralTest, APitchThatShrinksStopsWhereTheRadiusTurnsBack)
{
    // Ratio 1/4: after the first turn the pitch falls from 4 by 3/4 a step. The next radius would
    // be 2.5 times 5/4, which is less than 3.25.
    expectRadii({0, 1, 2, 3, 3.25}, made(100, 0, 0, 4, 0.25));
}

TEST(SpiralTest, SettersRefuseWhatLeavesNoRoomBetweenTheRadii)
{
    CVexGeSpiral spiral = made(16, 4, 0, 8);
    EXPECT_FALSE(spiral.setMaxRadius(4));
    EXPECT_FALSE(spiral.setMinRadius(16));
    EXPECT_FALSE(spiral.setOffsetDist(12));
    EXPECT_EQ(16.0, spiral.maxRadius());
    EXPECT_EQ(4.0, spiral.minRadius());
    EXPECT_EQ(8.0, spiral.offsetDist());
    EXPECT_TRUE(spiral.setOffsetDist(11));
    EXPECT_TRUE(spiral.setMaxRadius(5));
    EXPECT_TRUE(spiral.setMinRadius(4.5));
}

TEST(SpiralTest, SettersLeaveTheChainUntilItIsMadeAnew)
{
    CVexGeSpiral spiral = made(16, 0, 0, 8);
    spiral.setMaxRadius(8);
    spiral.setCenter({100, 0});
    spiral.setStartAngle(1.0);
    spiral.setDivNum(8);
    EXPECT_EQ(8.0, spiral.divNum());
    EXPECT_EQ(1.0, spiral.startAng());
    EXPECT_EQ(9U, spiral.chain().numVerts());
    EXPECT_POINT_NEAR(16, 0, spiral.pointAtParam(1.0), 1e-9);
    CVexGePolyline2d chain;
    EXPECT_TRUE(spiral.getGePolyline(chain));
    expectRadii({0, 1, 2, 3, 4, 5, 6, 7, 8}, spiral);
}

TEST(SpiralTest, ReverseLastsUntilTheChainIsMadeAnew)
{
    CVexGeSpiral spiral = made(16, 0, 0, 8);
    spiral.reverse();
    EXPECT_POINT_NEAR(16, 0, spiral.pointAtParam(0.0), 1e-9);
    spiral.translateBy({1, 0});
    EXPECT_POINT_NEAR(1, 0, spiral.pointAtParam(0.0), 1e-9);
}

TEST(SpiralTest, TransformsTakeTheLengthsAlongX)
{
    CVexGeSpiral spiral = made(16, 2, 0, 8);
    spiral.scaleBy(2.0, 3.0, {1, 1});
    EXPECT_POINT(-1, -2, spiral.center());
    EXPECT_EQ(32.0, spiral.maxRadius());
    EXPECT_EQ(4.0, spiral.minRadius());
    EXPECT_EQ(16.0, spiral.offsetDist());
    expectRadii({4, 8, 12, 16, 20, 24, 28, 32}, spiral); // still round
}

TEST(SpiralTest, RotationAndMirrorMoveTheStartAngle)
{
    CVexGeSpiral spiral = made(16, 0, 0.5, 8);
    spiral.rotateBy(1.0, {0, 0});
    EXPECT_NEAR(1.5, spiral.startAng(), 1e-12);
    spiral.mirror(CVexGeLine2d::kXAxis);
    EXPECT_NEAR(2.0 * kPi - 1.5, spiral.startAng(), 1e-9);
    const auto& vertices = spiral.chain().vertices();
    const double turn = vertices[8].asVector().angle() - vertices[7].asVector().angle();
    EXPECT_NEAR(kPi / 2.0, turn < 0.0 ? turn + 2.0 * kPi : turn, 1e-9); // winds as before
}

TEST(SpiralTest, RatioCountsForTheOperatorAlone)
{
    const CVexGeSpiral spiral = made(16, 0, 0, 8);
    const CVexGeSpiral growing = made(16, 0, 0, 8, 1.5);
    EXPECT_TRUE(spiral.isEqualTo(growing, 0.0));
    EXPECT_FALSE(spiral == growing);
    EXPECT_TRUE(spiral != growing);
    EXPECT_TRUE(spiral == made(16, 0, 0, 8));
    EXPECT_TRUE(spiral.isEqualTo(made(16.5, 0, 0, 7.5), 0.5));
    EXPECT_FALSE(spiral.isEqualTo(made(16.5, 0, 0, 8), 0.4));
    EXPECT_FALSE(spiral.isEqualTo(made(16, 0, 0, 8, 1.0, 5), 0.5));
    EXPECT_FALSE(spiral.isEqualTo(CVexGeLine2d(), 9.0));
}

TEST(SpiralTest, CurvatureIsNothing)
{
    const CVexGeSpiral spiral = made(16, 0, 0, 8);
    EXPECT_EQ(0.0, spiral.curvatureAtParam(0.5));
    EXPECT_EQ(0.0, spiral.curvatureAtPoint({16, 0}, 0.1));
}

TEST(SpiralTest, SavesItsValuesWithoutTheRatioThenTheChain)
{
    // Radii up to 1 with a pitch of 8: only the centre itself is a vertex.
    CVexGeSpiral spiral;
    spiral.set(4, {1, 2}, 1.0, 0.0, 0.0, 8.0, 3.0);
    EXPECT_EQ("000000000000f03f"                         // max radius 1
              "0000000000000000"                         // min radius 0
              "0000000000002040"                         // pitch 8
              "0000000000000000"                         // start angle
              "04000000"                                 // divisions
              "000000000000f03f000000000000004000000000" // centre (1, 2)
              "0100000000"                               // one vertex, open
              "000000000000f03f000000000000004000000000" //
              "0000000000000000"                         // bulge
              "000000000000f0bf000000000000f0bf",        // no widths
              savedHex(spiral));
}

TEST(SpiralTest, ReadKeepsTheStoredShapeAndTheRatioItHad)
{
    const CVexGeSpiral growing = made(20, 0, 0, 4, 2.0);
    CVexGeSpiral fresh;
    EXPECT_TRUE(readHex(fresh, savedHex(growing)));
    EXPECT_EQ(1.0, fresh.ratio());
    expectRadii({0, 1, 2, 3, 5, 7.5, 10.5, 14, 20}, fresh);
    CVexGePolyline2d anew;
    fresh.getGePolyline(anew);
    EXPECT_EQ(21U, anew.numVerts()); // of constant pitch from now on
    CVexGeSpiral other = made(9, 0, 0, 8, 3.0);
    EXPECT_TRUE(readHex(other, savedHex(growing)));
    EXPECT_EQ(3.0, other.ratio());
}

TEST(SpiralTest, TheChainMeetsOtherCurves)
{
    const CVexGeSpiral spiral = made(16, 0, 0, 8);
    int count = 0;
    std::vector<CVexGePoint2d> out;
    EXPECT_TRUE(spiral.intersectWith(CVexGeLine2d(CVexGePoint2d(0, 1), CVexGePoint2d(0, 20)), count,
                                     out, CVexGeEntity2d::kExtendNone, 1e-6));
    EXPECT_EQ(2, count);
    EXPECT_POINT_NEAR(0, 10, out[1], 1e-9);
    EXPECT_FALSE(spiral.isInsidePoint({0, 1})); // an open chain
}

TEST(SpiralHostileTest, WithoutPitchOrDivisionsThereIsNoChain)
{
    EXPECT_EQ(0U, made(16, 0, 0, 0).chain().numVerts());
    EXPECT_EQ(0U, made(16, 0, 0, 8, 1.0, 0).chain().numVerts());
    EXPECT_EQ(1U, made(16, 0, 0, -8).chain().numVerts());         // turns back at once
    EXPECT_EQ(1U, made(16, 0, 0, 8, 1.0, -4).chain().numVerts()); // likewise
}

TEST(SpiralHostileTest, WildValuesAreBounded)
{
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double wild : {nan, inf, 1e-300}) {
        for (const double other : {nan, 1e-300, -3.0}) {
            EXPECT_GE(1'000'000U, made(wild, other, 0, 8).chain().numVerts());
            EXPECT_GE(1'000'000U, made(16, 0, wild, other).chain().numVerts());
            EXPECT_GE(1'000'000U, made(wild, 0, 0, 8, other, 0x7fffffff).chain().numVerts());
        }
    }
}

namespace {

double within(int low, int high)
{
    return *rc::gen::inRange(low, high) / 100.0;
}

CVexGeSpiral anySpiral()
{
    CVexGeSpiral spiral;
    const double pitch = within(100, 1000);
    const double x = within(-5000, 5000);
    // No vertex has just the greatest, the least or its predecessor's radius, where a rounding
    // error would decide: so the pitch does not shrink.
    const double odd = 0.0123456789;
    spiral.set(*rc::gen::inRange(3, 40), {x, within(-5000, 5000)}, pitch * within(150, 500) + odd,
               pitch * within(0, 100) + odd, within(-628, 628), pitch, within(100, 150));
    return spiral;
}

} // namespace

RC_GTEST_PROP(SpiralProperty, RigidEditsKeepTheLength, ())
{
    CVexGeSpiral moved = anySpiral();
    const double length = moved.length();
    moved.translateBy({within(-900, 900), 2.0});
    RC_ASSERT(std::fabs(moved.length() - length) <= 1e-9 * length);
    moved.rotateBy(within(-628, 628), moved.center());
    RC_ASSERT(std::fabs(moved.length() - length) <= 1e-9 * length);
}

RC_GTEST_PROP(SpiralProperty, PointAndParameterAnswerEachOther, ())
{
    const CVexGeSpiral spiral = anySpiral();
    const CVexGePoint2d on = spiral.pointAtParam(within(0, 100));
    const double param = spiral.paramAtPoint(on, 1e-6);
    RC_ASSERT(param >= 0.0);
    RC_ASSERT(spiral.pointAtParam(param).distanceTo(on) <= 0.0011 * spiral.length());
}

RC_GTEST_PROP(SpiralProperty, TheOuterEndLiesAtTheStartAngle, ())
{
    const CVexGeSpiral spiral = anySpiral();
    const CVexGePoint2d end = spiral.chain().vertices().back();
    const CVexGeVector2d there(spiral.startAng());
    RC_ASSERT((end - spiral.center()).normal().dotProduct(there) > 1.0 - 1e-9);
}
