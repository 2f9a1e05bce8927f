#include "tests/vexge/geasserts.h"
#include "tests/vexge/gebytes.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <cmath>
#include <memory>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
const CVexGePoint2d earlyEnd = CVexGeLine2d::kYAxis.endPoint();

CVexGeLine2d line(double x1, double y1, double x2, double y2)
{
    return {CVexGePoint2d(x1, y1), CVexGePoint2d(x2, y2)};
}

void expectLine(double x1, double y1, double x2, double y2, const CVexGeLine2d& actual,
                double tol = 0.0)
{
    EXPECT_POINT_NEAR(x1, y1, actual.startPoint(), tol);
    EXPECT_POINT_NEAR(x2, y2, actual.endPoint(), tol);
}

} // namespace

TEST(LineTest, EachSourceGivesItsEnds)
{
    expectLine(0, 0, 0, 0, CVexGeLine2d());
    expectLine(1, 2, 4, 6, CVexGeLine2d(CVexGePoint2d(1, 2), CVexGeVector2d(3, 4)));
    expectLine(0, 0, 1, 0, CVexGeLine2d::kXAxis);
    expectLine(0, 0, 0, 1, CVexGeLine2d::kYAxis);
    EXPECT_POINT(0, 1, earlyEnd);
    CVexGeLine2d other;
    other.set(CVexGePoint2d(5, 6), CVexGeVector2d(1, 1));
    expectLine(5, 6, 6, 7, other);
}

TEST(LineTest, ReadersGiveTheEndsTheMiddleAndTheDirection)
{
    const CVexGeLine2d slope = line(1, 2, 7, 10);
    CVexGePoint2d start, end;
    slope.getPoints(start, end);
    EXPECT_POINT(1, 2, start);
    EXPECT_POINT(7, 10, end);
    EXPECT_POINT(4, 6, slope.midPoint());
    EXPECT_POINT(0.6, 0.8, slope.direction());
    EXPECT_TRUE(std::isnan(line(1, 1, 1, 1).direction().x));
}

TEST(LineTest, ToleranceOfEqualityIncludesItsBoundAndTheOrderCounts)
{
    const CVexGeLine2d a = line(0, 0, 10, 0);
    EXPECT_TRUE(a.isEqualTo(line(0.25, -0.25, 10.25, 0.25), 0.25));
    EXPECT_FALSE(a.isEqualTo(line(0.25, -0.25, 10.26, 0.25), 0.25));
    EXPECT_FALSE(a.isEqualTo(line(10, 0, 0, 0), 0.25));
}

TEST(LineTest, OperatorsCompareTheEndsAsPoints)
{
    const CVexGeLine2d a = line(0, 0, 10, 0);
    EXPECT_TRUE(a == line(0.9e-6, 0, 10, 0.9e-6));
    EXPECT_FALSE(a == line(1.1e-6, 0, 10, 0));
    EXPECT_TRUE(a != line(1.1e-6, 0, 10, 0));
    EXPECT_FALSE(a != line(1e-6, 0, 10, 0)); // and not equal either: each excludes its bound
    EXPECT_FALSE(a == line(1e-6, 0, 10, 0));
}

TEST(LineTest, EntityEqualityAsksTheKindAndOneThousandth)
{
    const CVexGeLine2d a = line(0, 0, 10, 0), b = line(0, 0.0009, 10, 0),
                       c = line(0, 0.0011, 10, 0);
    const CVexGeEntity2d& entity = a;
    EXPECT_TRUE(entity == static_cast<const CVexGeEntity2d&>(b));
    EXPECT_FALSE(entity == static_cast<const CVexGeEntity2d&>(c));
    EXPECT_TRUE(entity != static_cast<const CVexGeEntity2d&>(c));
    EXPECT_TRUE(entity.isEqualTo(c, 0.01));
    EXPECT_TRUE(entity.isKindOf(VexGe::kGeLine2d) && !entity.isKindOf(VexGe::kGeCircArc2d));
    EXPECT_EQ(3, entity.type());
}

TEST(LineTest, ParallelIsTheSameWayAndColinearTheOppositeWhereverTheyLie)
{
    const CVexGeLine2d a = line(0, 0, 10, 0);
    EXPECT_TRUE(a.isParallelTo(line(5, 7, 6, 7), 0.001));
    EXPECT_FALSE(a.isParallelTo(line(6, 7, 5, 7), 0.001));
    EXPECT_TRUE(a.isColinearTo(line(6, 7, 5, 7), 0.001)); // far off the carrier: not looked at
    EXPECT_FALSE(a.isColinearTo(line(5, 0, 6, 0), 0.001));
    EXPECT_TRUE(a.isPerpendicularTo(line(0, 0, 0, 5), 0.001));
    EXPECT_FALSE(line(0, 0, 0, 5).isPerpendicularTo(a, 0.001)); // the vectors' own asymmetry
}

TEST(LineTest, PointAtExactlyTheToleranceIsOff)
{
    const CVexGeLine2d a = line(0, 0, 10, 0);
    EXPECT_EQ(0, a.isOn({5, 0.25}, 0.25));
    EXPECT_NE(0, a.isOn({5, 0.25}, 0.2501));
    EXPECT_EQ(0, a.isOn({10.25, 0}, 0.25)); // beyond the end counts from the end
    EXPECT_NE(0, a.isOn({10.2, 0}, 0.25));
}

TEST(LineTest, ClosestPointIsTheFootOrTheNearerEnd)
{
    const CVexGeLine2d a = line(0, 0, 10, 0);
    EXPECT_POINT(4, 0, a.closestPointTo(CVexGePoint2d(4, 3)));
    EXPECT_POINT(10, 0, a.closestPointTo(CVexGePoint2d(12, 3)));
    EXPECT_POINT(0, 0, a.closestPointTo(CVexGePoint2d(-1, 3)));
    EXPECT_EQ(5.0, a.distanceTo(CVexGePoint2d(13, 4)));
    EXPECT_EQ(3.0, a.distanceTo(CVexGePoint2d(4, 3)));
}

TEST(LineTest, ALineWithoutLengthIsNearestAtItsStart)
{
    CVexGePoint2d start(2, 2);
    start.tag = 1;
    const CVexGeLine2d nothing(start, CVexGePoint2d(2, 2));
    const CVexGePoint2d nearest = nothing.closestPointTo(CVexGePoint2d(5, 6));
    EXPECT_POINT(2, 2, nearest);
    EXPECT_EQ(1, nearest.tag); // the start itself, not the end
    EXPECT_EQ(5.0, nothing.distanceTo(CVexGePoint2d(5, 6)));
}

TEST(LineTest, DistanceAsksTheSubclassForItsClosestPoint)
{
    struct Anchored : CVexGeLine2d {
        using CVexGeLine2d::closestPointTo;
        CVexGePoint2d closestPointTo(const CVexGePoint2d&, double) const override { return {0, 9}; }
    };
    const Anchored anchored;
    EXPECT_EQ(5.0, anchored.distanceTo(CVexGePoint2d(3, 5), kGeEpsilon));
    EXPECT_NE(0, anchored.isOn({0, 9}, kGeEpsilon));
}

TEST(LineTest, FootOutsideTheSegmentIsNone)
{
    struct Opened : CVexGeLine2d {
        using CVexGeLine2d::closestPoint;
        using CVexGeLine2d::CVexGeLine2d;
    };
    const Opened a(CVexGePoint2d(0, 0), CVexGePoint2d(10, 0));
    CVexGePoint2d foot(7, 7);
    EXPECT_FALSE(a.closestPoint({10.001, 1}, foot));
    EXPECT_POINT(7, 7, foot);
    EXPECT_TRUE(a.closestPoint({10, 1}, foot));
    EXPECT_POINT(10, 0, foot);
}

TEST(LineTest, LengthBetweenParametersIsZeroOutside)
{
    const CVexGeLine2d a = line(0, 0, 6, 8);
    EXPECT_EQ(10.0, a.length());
    EXPECT_NEAR(5.0, a.length(0.75, 0.25, kGeEpsilon), 1e-14);
    EXPECT_EQ(0.0, a.length(0.2, 1.2, kGeEpsilon)); // not the part that lies inside
    EXPECT_EQ(0.0, a.length(-0.1, 0.5, kGeEpsilon));
    EXPECT_EQ(0.0, a.length(0.25, 0.5, 0.26));
    EXPECT_NEAR(2.5, a.length(0.25, 0.5, 0.25), 1e-14); // a difference of exactly tol counts
}

TEST(LineTest, ParameterByDistanceStopsAtTheEnds)
{
    const CVexGeLine2d a = line(0, 0, 10, 0);
    EXPECT_EQ(0.75, a.paramAtDist(0.25, 5, true));
    EXPECT_EQ(1.0, a.paramAtDist(0.25, 50, true));
    EXPECT_EQ(0.25, a.paramAtDist(0.75, 5, false));
    EXPECT_EQ(0.0, a.paramAtDist(0.25, 5, false));
}

TEST(LineTest, ParametersAndPointsAnswerEachOther)
{
    const CVexGeLine2d a = line(0, 0, 10, 0);
    EXPECT_EQ(0.25, a.paramAtPoint({2.5, 0}, kGeEpsilon));
    EXPECT_POINT(2.5, 0, a.pointAtParam(0.25));
    EXPECT_EQ(2.5, a.distAtParam(0.25));
    EXPECT_POINT(4, 0, a.pointAtDist(4));
    EXPECT_POINT(10, 0, a.pointAtDist(400));
    EXPECT_EQ(5.0, a.distAtPoint({3, 4}, kGeEpsilon)); // off the line: nobody asks
}

TEST(LineTest, AFailedParameterExtrapolates)
{
    const CVexGeLine2d a = line(0, 0, 10, 0);
    const double param = a.paramAtPoint({5, 1}, kGeEpsilon);
    EXPECT_EQ(-1.0, param);
    EXPECT_POINT(-10, 0, a.pointAtParam(param));
}

TEST(LineTest, NormalIsToTheRightEverywhereAndCurvatureIsNone)
{
    const CVexGeLine2d up = line(0, 0, 0, 5);
    EXPECT_POINT_NEAR(1, 0, up.normalAtParam(0.1), 1e-15);
    EXPECT_POINT_NEAR(1, 0, up.normalAtParam(77), 1e-15);
    EXPECT_POINT_NEAR(1, 0, up.normalAtPoint({9, 9}), 1e-15);
    EXPECT_POINT_NEAR(0, -1, line(0, 0, 5, 0).normalAtParam(0.5), 1e-15);
    EXPECT_EQ(0.0, up.curvatureAtParam(0.5));
    EXPECT_EQ(0.0, up.curvatureAtPoint({0, 1}));
}

TEST(LineTest, RigidEditsActOnBothEnds)
{
    CVexGeLine2d a = line(1, 0, 3, 0);
    expectLine(2, 5, 4, 5, a.translateBy({1, 5}));
    expectLine(4, 10, 8, 10, a.scaleBy(2.0, {0, 0}));
    expectLine(4, 1, 8, 1, a.scaleBy(1.0, 0.1, {0, 0}), 1e-15);
    expectLine(-1, 4, -1, 8, a.rotateBy(kPi / 2, {0, 0}), 1e-14);
    expectLine(1, 4, 1, 8, a.mirror(CVexGeLine2d::kYAxis), 1e-14);
    expectLine(11, 24, 11, 28, a.transformBy(CVexGeMatrix2d::translation({10, 20})), 1e-13);
}

TEST(LineTest, EditsThroughTheBaseReturnTheReceiver)
{
    CVexGeLine2d a = line(1, 0, 3, 0);
    CVexGeEntity2d& entity = a;
    EXPECT_EQ(&a, &entity.translateBy({1, 1}));
    EXPECT_EQ(&a, &entity.scaleBy(1.0, {0, 0}));
    EXPECT_EQ(&a, &entity.transformBy(CVexGeMatrix2d::kIdentity));
    EXPECT_FALSE(entity.isInsidePoint({1, 1}));
}

TEST(LineTest, ItsOwnEndsServeAsCentreAndAxis)
{
    CVexGeLine2d a = line(1, 1, 3, 1);
    expectLine(1, 1, 1, 3, a.rotateBy(kPi / 2, a.startPoint()), 1e-15);
    expectLine(1, 1, 1, 3, a.mirror(a), 1e-14);
    expectLine(1, -1, 1, 3, a.scaleBy(2, a.endPoint()), 1e-14);
}

TEST(LineTest, PerpendicularLineIsHugeAndFollowsThePerpendicularVector)
{
    CVexGeLine2d across;
    line(0, 0, 2, 0).getPerpLine({5, 1}, across);
    expectLine(5, 1 - 2e9, 5, 1 + 2e9, across);
}

TEST(LineTest, PerpendicularVectorIsPointMinusFootAlsoBeyondTheEnds)
{
    const CVexGeLine2d a = line(0, 0, 10, 0);
    CVexGeVector2d across;
    EXPECT_TRUE(a.perpVecFromPoint({4, 3}, across, kGeEpsilon));
    EXPECT_POINT(0, 3, across);
    EXPECT_TRUE(a.perpVecFromPoint({25, -3}, across, kGeEpsilon));
    EXPECT_POINT(0, -3, across);
    EXPECT_FALSE(line(1, 1, 1, 1).perpVecFromPoint({25, -3}, across, kGeEpsilon));
    EXPECT_POINT(0, -3, across);
}

TEST(LineTest, OffsetMovesTowardsTheSide)
{
    CVexGeLine2d a = line(0, 0, 10, 0);
    EXPECT_TRUE(a.offset({3, 7}, 2));
    expectLine(0, 2, 10, 2, a);
    EXPECT_TRUE(a.offset({33, -1}, 2)); // a side beyond the end still has its foot
    expectLine(0, 0, 10, 0, a);
    EXPECT_TRUE(a.offset({3, 7}, 0)); // onto the side point
    expectLine(0, 7, 10, 7, a);
}

TEST(LineTest, OffsetWithTheSideOnTheLineMovesNothing)
{
    CVexGeLine2d a = line(0, 0, 10, 0);
    EXPECT_TRUE(a.offset({3, 0}, 2));
    expectLine(0, 0, 10, 0, a);
    CVexGeLine2d nothing = line(1, 1, 1, 1);
    EXPECT_TRUE(nothing.offset({3, 0}, 2));
    expectLine(1, 1, 1, 1, nothing);
}

TEST(LineTest, FileFormIsFortyBytes)
{
    const std::string zero = "0000000000000000", one = "000000000000f03f", tag = "00000000";
    const std::string hex = savedHex(line(1, 0, 0, 1));
    EXPECT_EQ(one + zero + tag + zero + one + tag, hex);
    CVexGeLine2d read;
    EXPECT_TRUE(readHex(read, hex));
    expectLine(1, 0, 0, 1, read);
}

TEST(LineTest, CopyAndAssignmentGoByTheKind)
{
    const CVexGeLine2d a = line(1, 2, 3, 4);
    const std::unique_ptr<CVexGeEntity2d> copy(static_cast<const CVexGeEntity2d&>(a).copy());
    ASSERT_TRUE(copy && copy->isKindOf(VexGe::kGeLine2d));
    expectLine(1, 2, 3, 4, static_cast<const CVexGeLine2d&>(*copy));
    const CVexGeLine2d b = line(5, 6, 7, 8);
    *copy = static_cast<const CVexGeEntity2d&>(b);
    expectLine(5, 6, 7, 8, static_cast<const CVexGeLine2d&>(*copy));
}
