#include "tests/vexge/geallocations.h"
#include "tests/vexge/geasserts.h"
#include "tests/vexge/offsetshapes.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <cmath>
#include <iterator>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kExact = 1e-9;
constexpr auto kNone = CVexGeEntity2d::kExtendNone;
constexpr auto kThis = CVexGeEntity2d::kExtendThis;
constexpr auto kArg = CVexGeEntity2d::kExtendArg;
constexpr auto kBoth = CVexGeEntity2d::kExtendBoth;
using shapes::chain;
using Points = std::vector<CVexGePoint2d>;

template <class Curve>
Points hits(const CVexGePolyline2d& polyline, const Curve& curve, CVexGeEntity2d::Intersect kind)
{
    Points points;
    int count = -1;
    const bool found = polyline.intersectWith(curve, count, points, kind);
    EXPECT_EQ(static_cast<int>(points.size()), count);
    EXPECT_EQ(!points.empty(), found);
    return points;
}

} // namespace

TEST(PolylineIntersectTest, HitsWithALineComeInTheOrderOfTheSegments)
{
    const Points found =
        hits(shapes::rectangle(10, 4), CVexGeLine2d({-5, 2}, CVexGePoint2d(15, 2)), kNone);
    ASSERT_EQ(2U, found.size());
    EXPECT_POINT_NEAR(10, 2, found[0], kExact); // the right side is segment 1, the left one 3
    EXPECT_POINT_NEAR(0, 2, found[1], kExact);
}

TEST(PolylineIntersectTest, VectorIsNotClearedOnEntry)
{
    Points points{{7, 7}};
    int count = 0;
    const CVexGePolyline2d square = shapes::rectangle(10, 4);
    EXPECT_TRUE(
        square.intersectWith(CVexGeLine2d({1, 1}, CVexGePoint2d(2, 2)), count, points, kNone));
    EXPECT_EQ(1, count); // what was there counts
    EXPECT_POINT(7, 7, points[0]);
}

TEST(PolylineIntersectTest, KindsExtendTheSegmentsOrTheLine)
{
    const CVexGePolyline2d step({{0, 0}, {4, 0}});
    const CVexGeLine2d above({2, 1}, CVexGePoint2d(2, 5)), beside({6, -1}, CVexGePoint2d(6, 1));
    EXPECT_TRUE(hits(step, above, kNone).empty());
    EXPECT_EQ(1U, hits(step, above, kArg).size());
    EXPECT_TRUE(hits(step, above, kThis).empty());
    EXPECT_EQ(1U, hits(step, beside, kThis).size());
    EXPECT_TRUE(hits(step, beside, kArg).empty());
    EXPECT_EQ(1U, hits(step, beside, kBoth).size());
    EXPECT_TRUE(hits(step, beside, static_cast<CVexGeEntity2d::Intersect>(9)).empty());
}

TEST(PolylineIntersectTest, BothHitsOfAnArcSegmentCount)
{
    const CVexGePolyline2d half = chain({{0, 0, 1.0}, {10, 0}}, false);
    const Points found = hits(half, CVexGeLine2d({-1, -3}, CVexGePoint2d(11, -3)), kNone);
    ASSERT_EQ(2U, found.size());
    EXPECT_POINT_NEAR(9, -3, found[0], kExact);
    EXPECT_POINT_NEAR(1, -3, found[1], kExact);
}

TEST(PolylineIntersectTest, ArcArgumentMeetsLinesAndArcs)
{
    const CVexGePolyline2d slot = shapes::slot(10, 4);
    const Points found = hits(slot, CVexGeCircArc2d({0, -4}, 3.0), kNone);
    ASSERT_EQ(2U, found.size());
    EXPECT_POINT_NEAR(3, -4, found[0], kExact);
    EXPECT_NEAR(4.0, CVexGePoint2d(0, 0).distanceTo(found[1]), kExact);
}

TEST(PolylineIntersectTest, KindsAreExchangedOnTheWayToAnotherPolyline)
{
    const CVexGePolyline2d step({{0, 0}, {4, 0}}), above({{2, 1}, {2, 5}});
    EXPECT_TRUE(hits(step, above, kNone).empty());
    EXPECT_EQ(1U, hits(step, above, kArg).size());
    EXPECT_TRUE(hits(step, above, kThis).empty());
    EXPECT_EQ(1U, hits(above, step, kThis).size());
}

TEST(PolylineIntersectTest, CrossingAtASharedVertexIsOneHit)
{
    const CVexGePolyline2d rising({{0, 0}, {5, 5}, {10, 10}}), falling({{0, 10}, {5, 5}, {10, 0}});
    EXPECT_EQ(1U, hits(CVexGePolyline2d({{0, 0}, {10, 10}}), falling, kNone).size());
    // Each of the two segments of the receiver meets the vertex; the two hits are neighbours.
    EXPECT_EQ(1U, hits(rising, falling, kNone).size());
}

TEST(PolylineIntersectTest, EllipseArgumentIsMetByItsChain)
{
    const CVexGeEllipArc2d ellipse({0, 0}, CVexGeVector2d::kXAxis, CVexGeVector2d::kYAxis, 4, 2);
    const Points found = hits(CVexGePolyline2d({{-9, 0}, {9, 0}}), ellipse, kNone);
    ASSERT_EQ(2U, found.size());
    EXPECT_NEAR(4.0, std::fabs(found[0].x), 1e-6);
    CVexGePolyline2d::ParamMap map;
    int count = 0;
    EXPECT_TRUE(CVexGePolyline2d({{-9, 0}, {9, 0}}).intersectWith(ellipse, count, map, kNone));
    EXPECT_EQ(2, count);
    EXPECT_NEAR(5.0 / 18.0, map.begin()->first, 1e-6);
}

// After an equal point is taken out the walk goes on beyond the next: of three equal ones two stay.
TEST(PolylineIntersectTest, ThreeEqualPointsLoseOnlyTheMiddleOne)
{
    const CVexGePolyline2d any;
    Points three{{1, 1}, {1, 1.001}, {1, 1}};
    EXPECT_EQ(2, any.CheckSameIntPoints(three));
    EXPECT_POINT(1, 1, three[1]);
    Points pairs{{1, 1}, {1, 1}, {2, 2}, {2, 2}, {1, 1}};
    EXPECT_EQ(3, any.CheckSameIntPoints(pairs));
    Points none;
    EXPECT_EQ(0, any.CheckSameIntPoints(none));
    Points apart{{1, 1}, {1, 1.0011}};
    EXPECT_EQ(2, any.CheckSameIntPoints(apart));
}

TEST(PolylineIntersectTest, MapKeysAreTheParameterCutToEightDigits)
{
    const CVexGePolyline2d line({{0, 0}, {3, 0}});
    CVexGePolyline2d::ParamMap map;
    int count = 0;
    EXPECT_TRUE(line.intersectWith(CVexGeLine2d({1, -1}, CVexGePoint2d(1, 1)), count, map, kNone));
    EXPECT_EQ(1, count);
    EXPECT_EQ(33333333.0 / 1e8, map.begin()->first);
}

TEST(PolylineIntersectTest, HitsWithOneKeyKeepTheFirst)
{
    const CVexGePolyline2d line({{0, 0}, {100, 0}});
    const CVexGePolyline2d comb({{50, -1}, {50, 1}, {50 + 1e-7, 1}, {50 + 1e-7, -1}});
    CVexGePolyline2d::ParamMap map;
    int count = 0;
    EXPECT_TRUE(line.intersectWith(comb, count, map, kNone));
    EXPECT_EQ(1, count);
    EXPECT_EQ(50.0, map.begin()->second.x);
}

// Only against another polyline is the parameter on a clockwise arc that of the travel; lines and
// arcs count from the arc's own start, and trimming reads the keys so.
// Within 0.001 radians of its start an arc knows one distance along it, none: hits there share a
// key, and the map holds one of what the list has. At a radius of 1000 that is the first unit.
TEST(PolylineIntersectTest, HitsNextToTheStartOfAnArcShareAKey)
{
    const CVexGePolyline2d arc = chain({{0, 1000, std::tan(kPi / 8.0)}, {-1000, 2000}}, false);
    const CVexGePolyline2d post =
        chain({{-5, 1000.3}, {5, 1000.3}, {5, 1000.6}, {-5, 1000.6}}, false);
    EXPECT_EQ(2U, hits(arc, post, kNone).size());
    CVexGePolyline2d::ParamMap keyed;
    int count = 0;
    EXPECT_TRUE(arc.intersectWith(post, count, keyed, kNone));
    ASSERT_EQ(1, count);
    EXPECT_EQ(0.0, keyed.begin()->first);
    EXPECT_NEAR(1000.3, keyed.begin()->second.y, kExact);
}

TEST(PolylineIntersectTest, KeyOnAClockwiseArcIsOfTheTravelOnlyAgainstAPolyline)
{
    const CVexGePolyline2d half = chain({{0, 0, -1.0}, {10, 0}}, false);
    const double x = 5.0 - 5.0 * std::cos(kPi / 4.0); // an eighth of a turn after the start
    const CVexGeLine2d line({x, 0}, CVexGePoint2d(x, 10));
    CVexGePolyline2d::ParamMap byLine, byChain;
    int count = 0;
    half.intersectWith(line, count, byLine, kNone);
    half.intersectWith(CVexGePolyline2d({{x, 0}, {x, 10}}), count, byChain, kNone);
    ASSERT_EQ(1U, byLine.size());
    EXPECT_NEAR(0.75, byLine.begin()->first, 1e-7);
    EXPECT_NEAR(0.25, byChain.begin()->first, 1e-7);
}

TEST(PolylineIntersectTest, KeysAgainstArcsAndEllipsesCountFromTheClockwiseArcsOwnStart)
{
    // The circle about the start meets the half circle an eighth of a turn after it.
    const CVexGePolyline2d half = chain({{0, 0, -1.0}, {10, 0}}, false);
    const double radius = 10.0 * std::sin(kPi / 8.0);
    const CVexGeEllipArc2d ellipse({0, 0}, CVexGeVector2d::kXAxis, CVexGeVector2d::kYAxis, radius,
                                   radius);
    CVexGePolyline2d::ParamMap byArc, byEllipse;
    int count = 0;
    half.intersectWith(CVexGeCircArc2d({0, 0}, radius), count, byArc, kNone);
    half.intersectWith(ellipse, count, byEllipse, kNone);
    ASSERT_TRUE(byArc.size() == 1U && byEllipse.size() == 1U);
    EXPECT_NEAR(0.75, byArc.begin()->first, 1e-7);
    EXPECT_NEAR(0.75, byEllipse.begin()->first, 0.01);
}

TEST(PolylineIntersectTest, LineAndArcQueriesUseNoHeap)
{
    const CVexGeCircArc2d arc({0, 0}, {10, 0}, 0.5, true), other({5, 0}, 3.0);
    const CVexGeLine2d line({0, -1}, CVexGePoint2d(10, -1));
    CVexGePoint2d p1, p2;
    CVexGeVector2d way;
    int count = 0;
    const std::size_t before = allocationCount();
    arc.intersectWith(line, count, p1, p2, kNone);
    arc.intersectWith(other, count, p1, p2, kBoth);
    arc.closestPointTo(line, p1);
    arc.perpVecFromPoint({5, 5}, way);
    line.closestPointTo(arc, p1);
    EXPECT_EQ(before, allocationCount());
}
