#include "tests/vexge/geallocations.h"
#include "tests/vexge/geasserts.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <numbers>

namespace {

using Kind = CVexGeEntity2d::Intersect;
constexpr double kPi = std::numbers::pi;
constexpr double kExact = 1e-12;
constexpr auto kNone = CVexGeEntity2d::kExtendNone;
constexpr auto kThis = CVexGeEntity2d::kExtendThis;
constexpr auto kArg = CVexGeEntity2d::kExtendArg;
constexpr auto kBoth = CVexGeEntity2d::kExtendBoth;

CVexGeCircArc2d arcOf(double startAng, double endAng, double radius = 1.0,
                      CVexGePoint2d centre = {})
{
    CVexGeCircArc2d arc(centre, radius);
    arc.setAngles(startAng, endAng);
    return arc;
}

struct Hits {
    bool answer = false;
    int count = 77;
    CVexGePoint2d p1, p2;
};

template <class Curve>
Hits hits(const CVexGeCircArc2d& arc, const Curve& curve, Kind kind, double tol = kGeEpsilon)
{
    Hits result;
    result.answer = arc.intersectWith(curve, result.count, result.p1, result.p2, kind, tol);
    return result;
}

} // namespace

TEST(ArcLineTest, VerticalLineGivesTheUpperPointFirst)
{
    const Hits found =
        hits(CVexGeCircArc2d(), CVexGeLine2d({0.6, 5}, CVexGePoint2d(0.6, -5)), kNone);
    EXPECT_EQ(2, found.count);
    EXPECT_POINT_NEAR(0.6, 0.8, found.p1, kExact);
    EXPECT_POINT_NEAR(0.6, -0.8, found.p2, kExact);
}

TEST(ArcLineTest, OtherLinesGiveTheGreaterXFirst)
{
    const Hits found =
        hits(CVexGeCircArc2d(), CVexGeLine2d({-5, 0.6}, CVexGePoint2d(5, 0.6)), kNone);
    EXPECT_EQ(2, found.count);
    EXPECT_POINT_NEAR(0.8, 0.6, found.p1, kExact);
    EXPECT_POINT_NEAR(-0.8, 0.6, found.p2, kExact);
}

TEST(ArcLineTest, TouchWithinTheToleranceOfTheDiscriminantIsOnePoint)
{
    const CVexGeLine2d line({-5, 1 - 1e-9}, CVexGePoint2d(5, 1 - 1e-9));
    const Hits found = hits(CVexGeCircArc2d(), line, kNone);
    EXPECT_EQ(1, found.count);
    EXPECT_POINT_NEAR(0, 1, found.p1, 1e-8);
    EXPECT_EQ(
        2,
        hits(CVexGeCircArc2d(), CVexGeLine2d({-5, 0.999}, CVexGePoint2d(5, 0.999)), kNone).count);
}

TEST(ArcLineTest, MissSetsTheCountToZero)
{
    const Hits found = hits(CVexGeCircArc2d(), CVexGeLine2d({-5, 2}, CVexGePoint2d(5, 2)), kBoth);
    EXPECT_FALSE(found.answer);
    EXPECT_EQ(0, found.count);
}

// The upper half circle and a line that reaches only its right hit, (0.8, 0.6); the carrier line
// also meets the circle at (-0.8, 0.6).
TEST(ArcLineTest, EachKindTakesThePointsOfItsBoundedCurve)
{
    const CVexGeCircArc2d upper = arcOf(0.0, kPi);
    const CVexGeLine2d right({0, 0.6}, CVexGePoint2d(5, 0.6));
    EXPECT_EQ(1, hits(upper, right, kNone).count);
    EXPECT_EQ(1, hits(upper, right, kThis).count); // the line is bounded
    EXPECT_EQ(2, hits(upper, right, kArg).count);  // the arc is bounded
    EXPECT_EQ(2, hits(upper, right, kBoth).count);
    EXPECT_EQ(0, hits(upper, right, static_cast<Kind>(4)).count);
}

TEST(ArcLineTest, SecondPointAloneTakesTheFirstPlace)
{
    const CVexGeLine2d left({-5, 0.6}, CVexGePoint2d(0, 0.6));
    const Hits found = hits(CVexGeCircArc2d(), left, kNone);
    EXPECT_EQ(1, found.count);
    EXPECT_POINT_NEAR(-0.8, 0.6, found.p1, kExact);
}

TEST(ArcLineTest, SteepLineLosesNoDigits)
{
    const CVexGeLine2d steep({100, -50}, CVexGePoint2d(100 + 1e-6, 50));
    const Hits found = hits(CVexGeCircArc2d({97, 0}, 5.0), steep, kNone);
    EXPECT_EQ(2, found.count);
    EXPECT_POINT_NEAR(100, 4, found.p1, 2e-6);
    EXPECT_NEAR(5.0, CVexGePoint2d(97, 0).distanceTo(found.p1), 1e-12);
}

TEST(ArcLineTest, WholeCircleHoldsItsSeam)
{
    // The direction to a hit just below angle zero is off no whole circle, however it is stored.
    const CVexGeLine2d line({0, 0}, CVexGePoint2d(5, -1e-9));
    EXPECT_EQ(1, hits(arcOf(0.0, 2.0 * kPi), line, kNone).count);
    EXPECT_EQ(1, hits(arcOf(1.0, 1.0), line, kNone).count);
}

TEST(ArcArcTest, WholeCirclesThatTouchFromOutsideDoNotMeet)
{
    const Hits found = hits(CVexGeCircArc2d(), CVexGeCircArc2d({3, 0}, 2.0), kBoth);
    EXPECT_FALSE(found.answer);
    EXPECT_EQ(77, found.count); // left as the caller had it
}

TEST(ArcArcTest, ArcsThatTouchFromOutsideMeetWhereTwoEndsAgree)
{
    const CVexGeCircArc2d left = arcOf(0.0, kPi);
    const Hits atStart = hits(left, arcOf(kPi, 1.5 * kPi, 2.0, {3, 0}), kNone);
    EXPECT_EQ(1, atStart.count);
    EXPECT_POINT_NEAR(1, 0, atStart.p1, kExact);
    const Hits atEnd = hits(left, arcOf(0.5 * kPi, kPi, 2.0, {3, 0}), kNone);
    EXPECT_EQ(1, atEnd.count);
    EXPECT_FALSE(
        hits(arcOf(1.5 * kPi, kPi), arcOf(0.5 * kPi, 1.5 * kPi, 2.0, {3, 0}), kBoth).answer);
}

// The tolerance goes off the receiver's radius only, so a touch from within counts for the outer
// circle and not for the inner one. Which hits a chain has with another rests on who is asked.
TEST(ArcArcTest, TouchFromWithinCountsForTheOuterCircleAlone)
{
    const CVexGeCircArc2d outer({0, 0}, 5.0);
    const CVexGeCircArc2d inner({2, 0}, 3.0);
    const Hits found = hits(outer, inner, kNone);
    EXPECT_EQ(2, found.count);
    EXPECT_POINT_NEAR(5, 0, found.p1, kExact);
    EXPECT_POINT_NEAR(5, 0, found.p2, kExact);
    EXPECT_FALSE(hits(inner, outer, kBoth).answer);
}

TEST(ArcArcTest, CirclesApartWithinAndOnEachOtherDoNotMeet)
{
    EXPECT_FALSE(hits(CVexGeCircArc2d(), CVexGeCircArc2d({9, 0}, 2.0), kBoth).answer);
    EXPECT_FALSE(hits(CVexGeCircArc2d({0, 0}, 5.0), CVexGeCircArc2d({1, 0}, 2.0), kBoth).answer);
    EXPECT_FALSE(hits(CVexGeCircArc2d(), CVexGeCircArc2d(), kBoth).answer);
    EXPECT_EQ(77, hits(CVexGeCircArc2d(), CVexGeCircArc2d(), kBoth).count);
}

TEST(ArcArcTest, CrossingCirclesGiveTheLeftOfTheLineOfCentresFirst)
{
    const Hits found = hits(CVexGeCircArc2d({0, 0}, 5.0), CVexGeCircArc2d({6, 0}, 5.0), kNone);
    EXPECT_EQ(2, found.count);
    EXPECT_POINT_NEAR(3, 4, found.p1, kExact);
    EXPECT_POINT_NEAR(3, -4, found.p2, kExact);
}

TEST(ArcArcTest, EachKindTakesThePointsOfItsBoundedArc)
{
    const CVexGeCircArc2d upper = arcOf(0.0, kPi, 5.0);
    const CVexGeCircArc2d whole({6, 0}, 5.0);
    EXPECT_EQ(1, hits(upper, whole, kNone).count);
    EXPECT_EQ(2, hits(upper, whole, kThis).count); // the receiver is extended
    EXPECT_EQ(1, hits(upper, whole, kArg).count);
    EXPECT_EQ(2, hits(upper, whole, kBoth).count);
    const CVexGeCircArc2d lower = arcOf(kPi, 2.0 * kPi, 5.0, {6, 0});
    EXPECT_EQ(0, hits(upper, lower, kNone).count);
    EXPECT_POINT_NEAR(3, -4, hits(upper, lower, kThis).p1, kExact);
}

TEST(ArcPolylineTest, ForwardsWithTheKindsExchanged)
{
    CVexGePolyline2d chain;
    chain.appendVertex({0, 0.6});
    chain.appendVertex({5, 0.6});
    std::vector<CVexGePoint2d> points;
    int count = 0;
    EXPECT_TRUE(arcOf(0.0, kPi).intersectWith(chain, count, points, kArg));
    EXPECT_EQ(2, count);
    points.clear();
    EXPECT_TRUE(arcOf(0.0, kPi).intersectWith(chain, count, points, kThis));
    EXPECT_EQ(1, count);
}

TEST(ArcClosestTest, PointProjectsOntoTheSweepOrTheNearerEnd)
{
    const CVexGeCircArc2d upper = arcOf(0.0, kPi);
    EXPECT_POINT_NEAR(0, 1, upper.closestPointTo({0, 3}), kExact);
    EXPECT_POINT_NEAR(-1, 0, upper.closestPointTo({-2, -3}), kExact);
    EXPECT_POINT_NEAR(1, 0, upper.closestPointTo({0, -3}), kExact); // a tie goes to the start
    EXPECT_NEAR(2.0, upper.distanceTo(CVexGePoint2d(0, 3)), kExact);
}

// A crossing is not looked for: the answer lies on the way from the centre to the line.
TEST(ArcClosestTest, CrossingLineIsNotAnsweredWithTheCrossing)
{
    CVexGePoint2d onLine;
    const CVexGeLine2d line({-5, 0.6}, CVexGePoint2d(5, 0.6));
    EXPECT_POINT_NEAR(0, 1, CVexGeCircArc2d().closestPointTo(line, onLine), kExact);
    EXPECT_POINT_NEAR(0, 0.6, onLine, kExact);
    EXPECT_NEAR(0.4, CVexGeCircArc2d().distanceTo(line), kExact);
}

TEST(ArcClosestTest, LineBesideTheSweepIsReachedFromAnEnd)
{
    CVexGePoint2d onLine;
    const CVexGeLine2d below({-5, -2}, CVexGePoint2d(-0.5, -2));
    EXPECT_POINT_NEAR(-1, 0, arcOf(0.0, kPi).closestPointTo(below, onLine), kExact);
    EXPECT_POINT_NEAR(-1, -2, onLine, kExact);
    const CVexGeLine2d level({-5, -2}, CVexGePoint2d(5, -2));
    EXPECT_POINT_NEAR(1, 0, arcOf(0.0, kPi).closestPointTo(level, onLine), kExact); // the start
}

TEST(ArcClosestTest, ArcsAnswerAlongTheLineOfCentres)
{
    CVexGePoint2d onOther;
    const CVexGeCircArc2d other({5, 0}, 2.0);
    EXPECT_POINT_NEAR(1, 0, CVexGeCircArc2d().closestPointTo(other, onOther), kExact);
    EXPECT_POINT_NEAR(3, 0, onOther, kExact);
    EXPECT_NEAR(2.0, CVexGeCircArc2d().distanceTo(other), kExact);
    const CVexGeCircArc2d away = arcOf(-kPi / 2.0, kPi / 2.0, 2.0, {5, 0});
    CVexGeCircArc2d().closestPointTo(away, onOther);
    EXPECT_POINT_NEAR(5, -2, onOther, kExact); // its start wins the tie
}

TEST(ArcPerpTest, VectorIsPointLessFoot)
{
    CVexGeVector2d way;
    ASSERT_TRUE(CVexGeCircArc2d({0, 0}, 2.0).perpVecFromPoint({5, 0}, way));
    EXPECT_POINT_NEAR(3, 0, way, kExact);
    ASSERT_TRUE(CVexGeCircArc2d({0, 0}, 2.0).perpVecFromPoint({1, 0}, way));
    EXPECT_POINT_NEAR(-1, 0, way, kExact);
}

TEST(ArcPerpTest, FootOnTheOtherSideOrOnTheCircleIsFoundToo)
{
    CVexGeVector2d way;
    ASSERT_TRUE(arcOf(0.75 * kPi, 1.25 * kPi, 2.0).perpVecFromPoint({1, 0}, way));
    EXPECT_POINT_NEAR(3, 0, way, kExact); // through the centre to the far side
    ASSERT_TRUE(arcOf(0.25 * kPi, 0.75 * kPi, 2.0).perpVecFromPoint({1, 0}, way));
    EXPECT_POINT_NEAR(-1, 0, way, kExact); // on the circle beyond the ends
    ASSERT_TRUE(arcOf(0.25 * kPi, 0.75 * kPi, 2.0).perpVecFromPoint({5, 0}, way));
    EXPECT_POINT_NEAR(3, 0, way, kExact);
}

TEST(ArcPerpTest, CentreHasNoFootNorHasAPointNearTheCentreOfASmallArc)
{
    CVexGeVector2d way(7, 7);
    EXPECT_FALSE(CVexGeCircArc2d().perpVecFromPoint({0, 0}, way));
    EXPECT_FALSE(CVexGeCircArc2d({0, 0}, 0.5).perpVecFromPoint({0.01, 0}, way));
    EXPECT_POINT(7, 7, way);
}

TEST(ArcMemoryTest, QueriesAndEditsTakeNoHeap)
{
    const CVexGeCircArc2d arc = arcOf(0.0, kPi, 5.0), other = arcOf(1.0, 5.0, 4.0, {3, 3});
    const CVexGeLine2d line({-9, 2}, CVexGePoint2d(9, 3));
    CVexGePoint2d first, second;
    CVexGeVector2d way;
    CVexGeLine2d touch;
    int count = 0;
    const std::size_t before = allocationCount();
    arc.isOn({0, 5});
    static_cast<void>(arc.isInside({0, 4}));
    arc.paramAtPoint({0, 5});
    arc.distAtPoint({0, 5});
    arc.pointAtDist(3.0);
    arc.normalAtParam(0.5);
    arc.length(0.25, 0.5);
    arc.distanceTo(CVexGePoint2d(1, 1));
    arc.distanceTo(line);
    arc.distanceTo(other);
    arc.closestPointTo(other, first);
    arc.perpVecFromPoint({1, 1}, way);
    arc.tangent({9, 9}, touch);
    for (const Kind kind : {kNone, kThis, kArg, kBoth}) {
        arc.intersectWith(line, count, first, second, kind);
        arc.intersectWith(other, count, first, second, kind);
    }
    CVexGeCircArc2d moved(arc);
    moved.rotateBy(1.0, {3, 3}).scaleBy(2.0, {1, 1}).mirror(line).offset({9, 9}, 1.0);
    moved.set({0, 0}, {4, 0}, 0.5, true).set({0, 0}, {1, 1}, {2, 0});
    EXPECT_EQ(before, allocationCount());
}
