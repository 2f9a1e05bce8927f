#include "tests/vexge/geasserts.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgerect2d.h"
#include "vexge/geentity2d/vexgespline.h"

#include <cmath>
#include <numbers>
#include <rapidcheck/gtest.h>

namespace {

using Entity = CVexGeEntity2d;
using Points = std::vector<CVexGePoint2d>;

constexpr double kPi = std::numbers::pi;
/// The arcs of the chain stray this little from an ellipse of radii 4 and 2.
constexpr double kChainError = 1e-4;

CVexGeEllipArc2d flat()
{
    return {{0, 0}, {1, 0}, {0, 1}, 4.0, 2.0, 0.0, 2.0 * kPi};
}

CVexGeEllipArc2d quarterOfFive()
{
    return CVexGeEllipArc2d(CVexGeCircArc2d({0, 0}, 5.0, 0.0, kPi / 2.0));
}

CVexGeLine2d line(double x1, double y1, double x2, double y2)
{
    return {CVexGePoint2d(x1, y1), CVexGePoint2d(x2, y2)};
}

} // namespace

TEST(EllipArcIntersectTest, ALineMeetsItInTheOrderOfTheChain)
{
    int count = 0;
    CVexGePoint2d first, second;
    EXPECT_TRUE(CVexGeEllipArc2d().intersectWith(line(0.5, -9, 0.5, 9), count, first, second,
                                                 Entity::kExtendNone, kGeEpsilon));
    EXPECT_EQ(2, count);
    EXPECT_POINT_NEAR(0.5, std::sqrt(0.75), first, 1e-9);
    EXPECT_POINT_NEAR(0.5, -std::sqrt(0.75), second, 1e-9);
}

TEST(EllipArcIntersectTest, TheCountIsOfAllHitsAndOnlyTwoAreGiven)
{
    // The x axis meets the first and the last arc where the chain closes, and two in the middle,
    // of which the second hit is next to the first and so reduced.
    int count = 0;
    CVexGePoint2d first, second;
    EXPECT_TRUE(CVexGeEllipArc2d().intersectWith(line(-9, 0, 9, 0), count, first, second,
                                                 Entity::kExtendNone, kGeEpsilon));
    EXPECT_EQ(3, count);
    EXPECT_POINT_NEAR(1, 0, first, 1e-9);
    EXPECT_POINT_NEAR(-1, 0, second, 1e-9);
}

TEST(EllipArcIntersectTest, AMissLeavesThePointsAlone)
{
    int count = 7;
    CVexGePoint2d first(1, 2), second(3, 4);
    EXPECT_FALSE(flat().intersectWith(line(5, -9, 5, 9), count, first, second, Entity::kExtendNone,
                                      kGeEpsilon));
    EXPECT_EQ(0, count);
    EXPECT_POINT(1, 2, first);
    EXPECT_POINT(3, 4, second);
}

struct EllipKindRow {
    const char* name;
    CVexGeLine2d other;
    int kind;
    int expected;
};

class EllipArcKindTest : public testing::TestWithParam<EllipKindRow> {};

TEST_P(EllipArcKindTest, CountsByWhichIsUnboundedAndTheLineAgrees)
{
    const EllipKindRow& row = GetParam();
    const auto kind = static_cast<Entity::Intersect>(row.kind);
    int count = 0;
    CVexGePoint2d first, second;
    EXPECT_EQ(row.expected > 0,
              quarterOfFive().intersectWith(row.other, count, first, second, kind, kGeEpsilon));
    EXPECT_EQ(row.expected, count);

    int fromLine = 0;
    Points out{{9, 9}};
    row.other.intersectWith(quarterOfFive(), fromLine, out, Entity::exchanged(kind), kGeEpsilon);
    EXPECT_EQ(row.expected, fromLine);
    EXPECT_EQ(row.expected, static_cast<int>(out.size())); // cleared first
}

INSTANTIATE_TEST_SUITE_P(Table, EllipArcKindTest,
                         testing::Values(EllipKindRow{"ThroughNone", line(3, 0, 3, 9), 0, 1},
                                         EllipKindRow{"ShortNone", line(3, 0, 3, 1), 0, 0},
                                         EllipKindRow{"ShortExtendThis", line(3, 0, 3, 1), 1, 0},
                                         EllipKindRow{"ShortExtendArg", line(3, 0, 3, 1), 2, 1},
                                         EllipKindRow{"Unknown", line(3, 0, 3, 9), 4, 0}),
                         [](const auto& row) { return row.param.name; });

TEST(EllipArcIntersectTest, ExtendedItIsEveryArcOfTheChainAsACircle)
{
    // All twelve arcs but the last lie on one circle, which the line meets below the quarter too.
    int count = 0;
    CVexGePoint2d first, second;
    EXPECT_TRUE(quarterOfFive().intersectWith(line(3, -9, 3, 9), count, first, second,
                                              Entity::kExtendThis, kGeEpsilon));
    EXPECT_LT(2, count);
    EXPECT_POINT_NEAR(3, 4, first, 1e-6);
    EXPECT_POINT_NEAR(3, -4, second, 1e-6);
}

TEST(EllipArcIntersectTest, ACircleMeetsItInFourPoints)
{
    int count = 0;
    Points out;
    EXPECT_TRUE(flat().intersectWith(CVexGeCircArc2d({0, 0}, 3.0), count, out, Entity::kExtendNone,
                                     kGeEpsilon));
    ASSERT_EQ(4, count);
    EXPECT_POINT_NEAR(2.581988897471611, 1.5275252316519468, out[0], kChainError);
    EXPECT_POINT_NEAR(-2.581988897471611, 1.5275252316519468, out[1], kChainError);
    EXPECT_POINT_NEAR(-2.581988897471611, -1.5275252316519468, out[2], kChainError);
    EXPECT_POINT_NEAR(2.581988897471611, -1.5275252316519468, out[3], kChainError);
}

TEST(EllipArcIntersectTest, TheArcForwardsWithTheRolesExchanged)
{
    const CVexGeCircArc2d right({0, 0}, 3.0, 1.5 * kPi, 0.5 * kPi);
    int count = 0;
    Points bounded, extended;
    EXPECT_TRUE(right.intersectWith(flat(), count, bounded, Entity::kExtendNone, kGeEpsilon));
    EXPECT_EQ(2, count);
    EXPECT_TRUE(right.intersectWith(flat(), count, extended, Entity::kExtendThis, kGeEpsilon));
    EXPECT_EQ(4, count); // the arc is extended to its circle
}

TEST(EllipArcIntersectTest, TwoEllipsesMeetChainToChain)
{
    const CVexGeEllipArc2d tall({0, 0}, {0, 1}, {-1, 0}, 4.0, 2.0, 0.0, 2.0 * kPi);
    int count = 0;
    Points out;
    EXPECT_TRUE(flat().intersectWith(tall, count, out, Entity::kExtendNone, kGeEpsilon));
    ASSERT_EQ(4, count);
    for (const CVexGePoint2d& hit : out) {
        EXPECT_NEAR(1.7888543819998317, std::fabs(hit.x), kChainError);
        EXPECT_NEAR(1.7888543819998317, std::fabs(hit.y), kChainError);
    }
}

TEST(EllipArcIntersectTest, APolylineMeetsItFromBothSides)
{
    const CVexGePolyline2d across(Points{{0.5, -9}, {0.5, 9}, {20, 9}});
    int count = 0;
    Points fromEllipse, fromPolyline;
    EXPECT_TRUE(flat().intersectWith(across, count, fromEllipse, Entity::kExtendNone, kGeEpsilon));
    EXPECT_EQ(2, count);
    EXPECT_TRUE(across.intersectWith(flat(), count, fromPolyline, Entity::kExtendNone, kGeEpsilon));
    ASSERT_EQ(2, count);
    EXPECT_POINT_NEAR(fromPolyline[0].x, fromPolyline[0].y, fromEllipse[0], 1e-6);
}

TEST(EllipArcIntersectTest, RectanglesAndSplinesMeetItThroughTheirChains)
{
    const CVexGeRect2d rect({0, -9}, 3.0, 18.0, 0.0);
    int count = 0;
    Points out;
    EXPECT_TRUE(rect.intersectWith(flat(), count, out, Entity::kExtendNone, kGeEpsilon));
    EXPECT_EQ(4, count);
    CVexGeSpline spline;
    spline.appendCtrlPt({0.5, -9});
    spline.appendCtrlPt({0.5, 9});
    CVexGePolyline2d built;
    spline.getGePolyline(built);
    Points fromSpline, fromEllipse;
    EXPECT_TRUE(spline.intersectWith(flat(), count, fromSpline, Entity::kExtendNone, kGeEpsilon));
    EXPECT_EQ(2, count);
    EXPECT_TRUE(flat().intersectWith(spline, count, fromEllipse, Entity::kExtendNone, kGeEpsilon));
    EXPECT_EQ(2, count);
}

RC_GTEST_PROP(EllipArcIntersectProperty, AHitLiesOnBoth, ())
{
    const auto within = [](int low, int high) { return *rc::gen::inRange(low, high) / 100.0; };
    const double turn = within(0, 628);
    const CVexGeEllipArc2d ellipse({within(-500, 500), 0}, CVexGeVector2d(turn),
                                   CVexGeVector2d(turn + kPi / 2.0), within(200, 900),
                                   within(200, 900), 0.0, 2.0 * kPi);
    const CVexGeLine2d outward(ellipse.center(), CVexGeVector2d(within(0, 628)) * 50.0);
    int count = 0;
    CVexGePoint2d first, second;
    RC_ASSERT(ellipse.intersectWith(outward, count, first, second, Entity::kExtendNone, 1e-6));
    RC_ASSERT(ellipse.isOn(first, 1e-4));
    RC_ASSERT(outward.isOn(first, 1e-4));
}
