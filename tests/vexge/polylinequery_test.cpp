#include "tests/vexge/geassertlog.h"
#include "tests/vexge/geasserts.h"
#include "tests/vexge/offsetshapes.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <cmath>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kExact = 1e-9;
using shapes::chain;

/// A line of 10, a counter-clockwise half circle of radius 2, a clockwise one of radius 2.
CVexGePolyline2d lineAndArcs()
{
    return chain({{0, 0}, {10, 0, 1.0}, {10, 4, -1.0}, {10, 8}}, false);
}

} // namespace

TEST(PolylineQueryTest, SegmentKinds)
{
    CVexGePolyline2d some =
        chain({{0, 0}, {5, 0, 0.001}, {9, 0, -0.5}, {9, 5}, {9, 5.0005}}, false);
    EXPECT_EQ(CVexGePolyline2d::kLine, some.segType(0));
    EXPECT_EQ(CVexGePolyline2d::kLine, some.segType(1)); // bulges up to 0.001 are straight
    EXPECT_EQ(CVexGePolyline2d::kArc, some.segType(2));
    EXPECT_EQ(CVexGePolyline2d::kCoincident, some.segType(3));
    EXPECT_EQ(CVexGePolyline2d::kPoint, some.segType(4));
    some.setClosed(true);
    EXPECT_EQ(CVexGePolyline2d::kLine, some.segType(4));
}

TEST(PolylineQueryTest, OpenChainOfThreeHasTwoSegments)
{
    const CVexGePolyline2d some({{0, 0}, {3, 0}, {3, 4}});
    EXPECT_EQ(7.0, some.length());
    EXPECT_EQ(CVexGePolyline2d::kPoint, some.segType(2));
    CVexGeLine2d line;
    EXPECT_FALSE(some.getLineSegAt(2, line));
}

TEST(PolylineQueryTest, DoubledEndOfAClosedChainHasNoLength)
{
    const CVexGePolyline2d square = chain({{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}}, true);
    EXPECT_EQ(CVexGePolyline2d::kCoincident, square.segType(4));
    EXPECT_EQ(16.0, square.length());
    EXPECT_EQ(-1.0, square.paramAtSegParam(4, 0.5));
    EXPECT_POINT(0, 0, square.pointAtParam(1.0));
}

TEST(PolylineQueryTest, ClosedByFlagOrByEndsNearerThanTwoThousandths)
{
    EXPECT_TRUE(chain({{0, 0}, {4, 0}, {0, 0.0019}}, false).closed());
    EXPECT_FALSE(chain({{0, 0}, {4, 0}, {0, 0.002}}, false).closed());
    EXPECT_TRUE(chain({{0, 0}, {4, 0}, {4, 4}}, true).closed());
}

TEST(PolylineQueryTest, SegmentsAreGivenByTheirKindOnly)
{
    CVexGeLine2d line;
    CVexGeCircArc2d arc;
    EXPECT_TRUE(lineAndArcs().getLineSegAt(0, line));
    EXPECT_POINT(10, 0, line.endPoint());
    EXPECT_FALSE(lineAndArcs().getLineSegAt(1, line));
    EXPECT_FALSE(lineAndArcs().getArcSegAt(0, arc));
    ASSERT_TRUE(lineAndArcs().getArcSegAt(2, arc));
    EXPECT_POINT_NEAR(10, 8, arc.startPoint(), kExact); // clockwise: stored from the far vertex
}

TEST(PolylineQueryTest, ParameterOnAClockwiseSegmentCountsFromTheFarVertex)
{
    double param = -7.0;
    const double angle = kPi / 4.0;
    EXPECT_TRUE(lineAndArcs().onSegAt(0, {2.5, 0}, param));
    EXPECT_EQ(0.25, param);
    EXPECT_TRUE(
        lineAndArcs().onSegAt(2, {10 - 2 * std::sin(angle), 6 + 2 * std::cos(angle)}, param));
    EXPECT_NEAR(0.25, param, kExact);
    EXPECT_FALSE(lineAndArcs().onSegAt(0, {2.5, 1}, param));
    EXPECT_FALSE(lineAndArcs().onSegAt(3, {10, 8}, param));
}

TEST(PolylineQueryTest, FirstSegmentAndFirstVertexWin)
{
    const CVexGePolyline2d cross({{0, 0}, {4, 4}, {4, 0}, {0, 4}});
    EXPECT_EQ(0, cross.isOnSegAt({2, 2}));
    EXPECT_EQ(1, cross.isOnSegAt({4, 1}));
    EXPECT_EQ(-1, cross.isOnSegAt({9, 9}));
    EXPECT_EQ(0, cross.isOn({9, 9}));
    EXPECT_EQ(1, cross.isVertex({4, 3.5}, 0.5)); // within the tolerance, inclusive
    EXPECT_EQ(-1, cross.isVertex({4, 3.5}, 0.4));
}

// Negative bulges do not count as bulges: the short ways of closing and drawing go by that.
TEST(PolylineQueryTest, ClockwiseArcsAreNoBulges)
{
    EXPECT_FALSE(chain({{0, 0, -1.0}, {4, 0}}, false).hasBulges());
    EXPECT_TRUE(chain({{0, 0, -1.0}, {4, 0}}, false).isOnlyLines());
    EXPECT_TRUE(lineAndArcs().hasBulges());
    EXPECT_FALSE(lineAndArcs().isOnlyLines());
}

TEST(PolylineQueryTest, WidthIsAnyAboveAThousandth)
{
    CVexGePolyline2d some = lineAndArcs();
    EXPECT_FALSE(some.hasWidth());
    some.setWidthsAt(1, -1.0, 0.002);
    EXPECT_TRUE(some.hasWidth());
    some.setWidthsAt(1, 0.002, -1.0);
    EXPECT_TRUE(some.hasWidth());
}

TEST(PolylineQueryTest, OrientationIsThatOfTheVertices)
{
    CVexGePolyline2d square = shapes::rectangle(4, 2);
    EXPECT_TRUE(square.isCCW());
    square.reverse();
    EXPECT_FALSE(square.isCCW());
    EXPECT_TRUE(chain({{0, 0, -1}, {4, 0, -1}, {4, 4, -1}}, true).isCCW()); // without the bulges
}

TEST(PolylineQueryTest, BoxIsThatOfTheVerticesAndNotOfTheArcs)
{
    CVexGePoint2d min, max;
    lineAndArcs().getMinMaxpoint(min, max);
    EXPECT_POINT(0, 0, min);
    EXPECT_POINT(10, 8, max);
}

TEST(PolylineQueryTest, PartialLengthChecksOnlyTheFirstParameter)
{
    const CVexGePolyline2d some({{0, 0}, {6, 0}, {6, 4}});
    EXPECT_EQ(5.0, some.length(0.25, 0.75));
    EXPECT_EQ(20.0, some.length(0.0, 2.0));
    EXPECT_EQ(0.0, some.length(0.75, 0.25));
    EXPECT_EQ(0.0, some.length(-0.5, 0.25));
    EXPECT_EQ(0.0, some.length(0.25, 0.2505, 0.001));
}

TEST(PolylineQueryTest, ParameterIsAShareOfTheLength)
{
    const CVexGePolyline2d some({{0, 0}, {6, 0}, {6, 4}});
    EXPECT_EQ(0.8, some.paramAtPoint({6, 2}));
    EXPECT_EQ(-1.0, some.paramAtPoint({6, 5}));
    EXPECT_EQ(0.7, some.paramAtDist(0.5, 2.0, true));
    EXPECT_EQ(1.0, some.paramAtDist(0.5, 9.0, true));
    EXPECT_EQ(0.0, some.paramAtDist(0.5, 9.0, false));
    EXPECT_EQ(8.0, some.distAtParam(0.8));
    EXPECT_EQ(8.0, some.distAtPoint({6, 2}));
    EXPECT_POINT_NEAR(6, 2, some.pointAtDist(8.0), kExact);
}

TEST(PolylineQueryTest, ParameterRunsWithTheTravelOnBothKindsOfArc)
{
    const CVexGePolyline2d some = lineAndArcs();
    const double total = 10.0 + 4.0 * kPi;
    EXPECT_NEAR((10.0 + kPi) / total, some.paramAtPoint({12, 2}, 1e-9), kExact);
    EXPECT_NEAR((10.0 + 3.0 * kPi) / total, some.paramAtPoint({8, 6}, 1e-9), kExact);
    EXPECT_POINT_NEAR(12, 2, some.pointAtParam((10.0 + kPi) / total), kExact);
    const CVexGePoint2d ahead = some.pointAtParam((10.0 + 2.5 * kPi) / total);
    EXPECT_POINT_NEAR(10 - std::sqrt(2.0), 6 - std::sqrt(2.0), ahead, kExact);
}

TEST(PolylineQueryTest, ParameterNearTheEndIsTheEnd)
{
    const CVexGePolyline2d some({{0, 0}, {100, 0}});
    EXPECT_POINT(100, 0, some.pointAtParam(0.9995));
    EXPECT_POINT(100, 0, some.pointAtParam(1.0005));
    EXPECT_POINT_NEAR(99.8, 0, some.pointAtParam(0.998), kExact);
    EXPECT_POINT(0, 0, some.pointAtParam(1.5)); // no segment holds it: the origin
}

TEST(PolylineQueryTest, NormalPointsToTheRightOnLinesAndAwayOrTowardsTheCentreOnArcs)
{
    const CVexGePolyline2d some = lineAndArcs();
    const double total = 10.0 + 4.0 * kPi;
    EXPECT_POINT_NEAR(0, -1, some.normalAtParam(0.1), kExact);
    EXPECT_POINT_NEAR(1, 0, some.normalAtParam((10.0 + kPi) / total), kExact);
    EXPECT_POINT_NEAR(1, 0, some.normalAtParam((10.0 + 3.0 * kPi) / total), kExact);
    EXPECT_POINT_NEAR(1, 0, some.normalAtPoint({12, 2}, 1e-9), kExact);
}

TEST(PolylineQueryTest, NormalAtTheEndIsTakenShortOfIt)
{
    const CVexGePolyline2d arc = chain({{0, 0, 1.0}, {10, 0}}, false);
    const double angle = kPi * (1.0 + 0.999);
    EXPECT_POINT_NEAR(std::cos(angle), std::sin(angle), arc.normalAtParam(1.0), kExact);
    EXPECT_POINT_NEAR(std::cos(angle), std::sin(angle), arc.normalAtParam(5.0), kExact);
    EXPECT_POINT(0, 0, CVexGePolyline2d().normalAtParam(0.5));
}

TEST(PolylineQueryTest, CurvatureIsTheRadiusAndOfTheNextSegmentAtAJoint)
{
    const CVexGePolyline2d some = lineAndArcs();
    EXPECT_EQ(0.0, some.curvatureAtParam(0.1));
    EXPECT_EQ(2.0, some.curvatureAtParam(0.9));
    EXPECT_EQ(0.0, some.curvatureAtParam(1.0));
    EXPECT_EQ(2.0, some.curvatureAtPoint({12, 2}, 1e-9));
    EXPECT_EQ(0.0, some.curvatureAtPoint({50, 50}));
    EXPECT_EQ(2.0, chain({{0, 0}, {4, 0, 1.0}, {4, 4}}, false).curvatureAtPoint({4, 0}, 1e-9));
}

TEST(PolylineQueryTest, SegmentParameterAndChainParameterAnswerEachOther)
{
    const CVexGePolyline2d some({{0, 0}, {6, 0}, {6, 4}});
    EXPECT_EQ(0.8, some.paramAtSegParam(1, 0.5));
    EXPECT_EQ(-1.0, some.paramAtSegParam(2, 0.5));
    EXPECT_EQ(-1.0, some.paramAtSegParam(3, 0.5));
    int segment = 7;
    EXPECT_NEAR(0.5, some.segParamAtParam(0.8, segment), kExact);
    EXPECT_EQ(1, segment);
    EXPECT_EQ(-1.0, some.segParamAtParam(-3.0, segment));
    EXPECT_EQ(2, segment); // at the count
}

TEST(PolylineQueryTest, ClosestPointIsOnTheEarliestOfEqualSegments)
{
    const CVexGePolyline2d square = shapes::rectangle(4, 4);
    int segment = 7;
    EXPECT_POINT_NEAR(2, 0, square.closestPointTo({2, 2}, segment), kExact);
    EXPECT_EQ(0, segment);
    EXPECT_POINT_NEAR(4, 3, square.closestPointTo({9, 3}, segment), kExact);
    EXPECT_EQ(1, segment);
    EXPECT_EQ(5.0, square.distanceTo(CVexGePoint2d(9, 3)));
}

// A doubled first vertex makes the default point the first best: the origin may win.
TEST(PolylineQueryTest, DoubledFirstVertexLetsTheOriginBeTheClosest)
{
    const CVexGePolyline2d some({{5, 5}, {5, 5}, {9, 5}});
    EXPECT_POINT(0, 0, some.closestPointTo({1, 1}));
    EXPECT_POINT(5, 5, some.closestPointTo({4, 5}));
    EXPECT_EQ(std::sqrt(2.0), some.distanceTo(CVexGePoint2d(1, 1)));
}

TEST(PolylineQueryTest, ClosestPairWithALineAndAnArc)
{
    CVexGePoint2d there;
    const CVexGePolyline2d square = shapes::rectangle(4, 4);
    const CVexGeLine2d line({6, -2}, CVexGePoint2d(6, 1));
    EXPECT_POINT_NEAR(4, 0, square.closestPointTo(line, there), kExact);
    EXPECT_POINT_NEAR(6, 0, there, kExact);
    EXPECT_NEAR(2.0, square.distanceTo(line), kExact);
    EXPECT_POINT_NEAR(4, 2, square.closestPointTo(CVexGeCircArc2d({8, 2}, 1.0), there), kExact);
    EXPECT_POINT_NEAR(7, 2, there, kExact);
}

TEST(PolylineQueryTest, PerpendicularPrefersAFootOnTheChain)
{
    // From (1,5) the foot on the second segment's carrier, (0,5), is nearer but off the chain.
    const CVexGePolyline2d corner({{9, 0}, {0, 0}, {0, 3}});
    CVexGeVector2d way;
    EXPECT_TRUE(corner.perpVecFromPoint({1, 5}, way));
    EXPECT_POINT_NEAR(0, 5, way, kExact);
    EXPECT_TRUE(CVexGePolyline2d({{9, 0}, {2, 0}}).perpVecFromPoint({1, 5}, way));
    EXPECT_POINT_NEAR(0, 5, way, kExact); // none on the chain: the shortest of the others
}

// The answer is the last segment's: snaps try the next curve on false.
TEST(PolylineQueryTest, PerpendicularAnswersForTheLastSegment)
{
    const CVexGePolyline2d some = chain({{0, 0}, {10, 0, 1.0}, {10, 8}}, false);
    CVexGeVector2d way(7, 7);
    EXPECT_FALSE(some.perpVecFromPoint({10, 4}, way)); // the centre of the last arc has no foot
    EXPECT_POINT_NEAR(0, 4, way, kExact);
}

TEST(PolylineQueryTest, PerpendicularWithoutASegmentIsRefused)
{
    const GeAssertLog log;
    CVexGeVector2d way(7, 7);
    EXPECT_FALSE(CVexGePolyline2d().perpVecFromPoint({0, 0}, way));
    EXPECT_FALSE(CVexGePolyline2d({{1, 1}}).perpVecFromPoint({0, 0}, way));
    EXPECT_FALSE(chain({{1, 1}, {1, 1}}, true).perpVecFromPoint({0, 0}, way));
    EXPECT_TRUE(log.promises().empty()); // whoever picks such a chain has broken no promise
    EXPECT_POINT(7, 7, way);
}

TEST(PolylineQueryTest, InsideOfAClosedChainByParity)
{
    const CVexGePolyline2d square = shapes::rectangle(4, 4);
    EXPECT_TRUE(square.isInsidePoint({1, 3}));
    EXPECT_FALSE(square.isInsidePoint({5, 3}));
    EXPECT_FALSE(square.isInsidePoint({-1, 3}));
    EXPECT_TRUE(shapes::slot(10, 4).isInsidePoint({12, 1})); // within the round
    EXPECT_FALSE(shapes::comb(3, 4, 10).isInsidePoint({6, 9}));
}

TEST(PolylineQueryTest, InsideNeedsEndsNearerThanTwoThousandths)
{
    const auto square = [](double gap) {
        return chain({{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, gap}}, false);
    };
    EXPECT_TRUE(square(0.001).isInsidePoint({2, 1}));
    EXPECT_FALSE(square(0.003).isInsidePoint({2, 1}));
}

TEST(PolylineQueryTest, RayThroughAVertexCountsItOnce)
{
    // The ray starts at (-0.5, -1) and runs through the corner (4, 8) of this kite.
    const CVexGePolyline2d kite = chain({{0, 0.5}, {5, 0}, {4, 8}, {0, 8}}, true);
    EXPECT_FALSE(kite.isInsidePoint({8.5, 17}));
    EXPECT_TRUE(kite.isInsidePoint({3.5, 7}));
}
