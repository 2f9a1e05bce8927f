#include "tests/vexge/geasserts.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <cmath>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
using Entity = CVexGeEntity2d;
using Points = std::vector<CVexGePoint2d>;

CVexGeLine2d line(double x1, double y1, double x2, double y2)
{
    return {CVexGePoint2d(x1, y1), CVexGePoint2d(x2, y2)};
}

CVexGeCircArc2d circle(double radius)
{
    return CVexGeCircArc2d(CVexGePoint2d(0, 0), radius);
}

/// The quarter from (0, 5) to (-5, 0).
CVexGeCircArc2d upperLeft()
{
    CVexGeCircArc2d arc = circle(5);
    arc.setAngles(kPi / 2, kPi);
    return arc;
}

} // namespace

TEST(LineArcTest, HitsReplaceWhatTheListHeld)
{
    Points points = {{9, 9}};
    int count = 0;
    EXPECT_TRUE(line(3, -9, 3, 9).intersectWith(circle(5), count, points, Entity::kExtendNone));
    ASSERT_EQ(2U, points.size());
    EXPECT_EQ(2, count);
    EXPECT_POINT_NEAR(3, 4, points[0], 1e-14);
    EXPECT_POINT_NEAR(3, -4, points[1], 1e-14);
    EXPECT_FALSE(line(7, -9, 7, 9).intersectWith(circle(5), count, points, Entity::kExtendNone));
    EXPECT_TRUE(points.empty());
}

TEST(LineArcTest, KindsAreSeenFromTheLine)
{
    const CVexGeLine2d stub = line(3, 1, 3, 2); // within the circle
    Points points;
    int count = 0;
    EXPECT_FALSE(stub.intersectWith(circle(5), count, points, Entity::kExtendNone));
    EXPECT_TRUE(stub.intersectWith(circle(5), count, points, Entity::kExtendThis));
    EXPECT_EQ(2, count);
    EXPECT_FALSE(stub.intersectWith(circle(5), count, points, Entity::kExtendArg));
    const CVexGeLine2d across = line(3, -9, 3, 9); // beside the quarter
    EXPECT_FALSE(across.intersectWith(upperLeft(), count, points, Entity::kExtendThis));
    EXPECT_TRUE(across.intersectWith(upperLeft(), count, points, Entity::kExtendArg));
}

TEST(LineEllipseTest, HitsReplaceWhatTheListHeldAndKindsAreExchanged)
{
    const CVexGeEllipArc2d ellipse({0, 0}, {1, 0}, {0, 1}, 10, 5);
    Points points = {{9, 9}};
    int count = 0;
    EXPECT_TRUE(line(6, -9, 6, 9).intersectWith(ellipse, count, points, Entity::kExtendNone));
    ASSERT_EQ(2U, points.size());
    EXPECT_EQ(2, count);
    EXPECT_NEAR(4.0, std::fabs(points[0].y), 0.02); // the ellipse is a chain of arcs
    const CVexGeLine2d stub = line(6, 1, 6, 2);
    EXPECT_FALSE(stub.intersectWith(ellipse, count, points, Entity::kExtendArg));
    EXPECT_TRUE(points.empty());
    EXPECT_TRUE(stub.intersectWith(ellipse, count, points, Entity::kExtendThis));
}

TEST(LineArcTest, ClosestPointIsTheFirstCrossing)
{
    CVexGePoint2d onArc;
    EXPECT_POINT_NEAR(3, 4, line(3, -9, 3, 9).closestPointTo(circle(5), onArc), 1e-14);
    EXPECT_POINT_NEAR(3, 4, onArc, 1e-14);
}

namespace {

struct ArcNearestRow {
    const char* name;
    CVexGeLine2d segment;
    CVexGeCircArc2d arc;
    CVexGePoint2d here, onArc;
};

class LineArcNearestTest : public testing::TestWithParam<ArcNearestRow> {};

} // namespace

TEST_P(LineArcNearestTest, RanksTheRaysFromTheCentreAndTheEnds)
{
    const ArcNearestRow& row = GetParam();
    CVexGePoint2d onArc;
    EXPECT_POINT_NEAR(row.here.x, row.here.y, row.segment.closestPointTo(row.arc, onArc), 1e-12);
    EXPECT_POINT_NEAR(row.onArc.x, row.onArc.y, onArc, 1e-12);
}

INSTANTIATE_TEST_SUITE_P(
    Table, LineArcNearestTest,
    testing::Values(
        ArcNearestRow{"TowardsTheFoot", line(10, -3, 10, 3), circle(5), {10, 0}, {5, 0}},
        ArcNearestRow{"TowardsTheStart", line(6, 8, 9, 12), circle(5), {6, 8}, {3, 4}},
        ArcNearestRow{"TowardsTheEnd", line(9, 12, 6, 8), circle(5), {6, 8}, {3, 4}},
        ArcNearestRow{"AnEndOfTheArc", line(10, -3, 10, 3), upperLeft(), {10, 3}, {0, 5}},
        // No ray from the centre reaches the circle before it ends at the segment, so only the
        // arc's own ends are left, though the circle is nearer above.
        ArcNearestRow{"WithinTheCircle", line(-1, 1, 1, 1), circle(5), {1, 1}, {5, 0}}),
    [](const auto& row) { return row.param.name; });

TEST(LinePolylineTest, ForwardsWithExchangedKinds)
{
    const CVexGePolyline2d chain(Points{{0, 0}, {10, 0}, {10, 10}});
    Points points = {{9, 9}};
    int count = 0;
    EXPECT_TRUE(line(4, -5, 4, 5).intersectWith(chain, count, points, Entity::kExtendNone));
    ASSERT_EQ(1U, points.size());
    EXPECT_POINT(4, 0, points[0]);
    const CVexGeLine2d above = line(4, 2, 4, 5);
    EXPECT_FALSE(above.intersectWith(chain, count, points, Entity::kExtendNone));
    EXPECT_TRUE(points.empty());
    EXPECT_TRUE(above.intersectWith(chain, count, points, Entity::kExtendThis));
    EXPECT_FALSE(above.intersectWith(chain, count, points, Entity::kExtendArg));
}
