#include "tests/vexdb/entityfixture.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"

#include <cmath>
#include <numbers>
#include <random>

// The box by which the views' indexes place an arc.

namespace {

constexpr double kPi = std::numbers::pi;

class ArcExtentsTest : public EntityTest {
protected:
    double any(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(m_random);
    }
    CVexDbArc anyArc()
    {
        const CVexGePoint2d centre(any(-1e4, 1e4), any(-1e4, 1e4));
        const double radius = std::exp(any(-3.0, 12.0));
        const double start = any(-7.0, 7.0);
        return {centre, radius, start, any(-7.0, 7.0)};
    }
    static testing::AssertionResult holds(const CVexDbArc& arc, const CVexGePoint2d& point,
                                          double slack)
    {
        CVexGePoint2d min, max;
        const bool told = arc.trueExtents(min, max);
        if (told && point.x >= min.x - slack && point.x <= max.x + slack &&
            point.y >= min.y - slack && point.y <= max.y + slack) {
            return testing::AssertionSuccess();
        }
        return testing::AssertionFailure()
               << point.x << ' ' << point.y << " outside of " << min.x << ' ' << min.y << ' '
               << max.x << ' ' << max.y << ", from " << arc.StartAngle() << " to "
               << arc.EndAngle();
    }

    std::mt19937 m_random{5};
};

TEST_F(ArcExtentsTest, QuarterIsItsEndsAndNoMore)
{
    const CVexDbArc arc({1, 2}, 10.0, 0.0, 0.5 * kPi);
    CVexGePoint2d min, max;
    ASSERT_TRUE(arc.trueExtents(min, max));
    EXPECT_POINT_NEAR(1, 2, min, 0.01 + 1e-9); // 0.001 radians beyond an end still count as on it
    EXPECT_POINT_NEAR(11, 12, max, 1e-9);
}

TEST_F(ArcExtentsTest, SweepThroughAngleZeroReachesToTheRight)
{
    const CVexDbArc arc({0, 0}, 10.0, -0.25 * kPi, 0.25 * kPi);
    CVexGePoint2d min, max;
    ASSERT_TRUE(arc.trueExtents(min, max));
    EXPECT_EQ(10.0, max.x);
    EXPECT_NEAR(10.0 * std::sqrt(0.5), min.x, 0.011);
    EXPECT_NEAR(10.0 * std::sqrt(0.5), max.y, 0.011);
}

TEST_F(ArcExtentsTest, WholeTurnsAndAnglesBeyondOneAreTheCircle)
{
    const std::pair<double, double> turns[] = {
        {0.0, 2.0 * kPi}, {1.0, 1.0}, {-kPi, kPi}, {0.0, 20.0}, {-30.0, 1.0}};
    for (const auto& [start, end] : turns) {
        SCOPED_TRACE(start);
        CVexGePoint2d min, max;
        ASSERT_TRUE(CVexDbArc({1, 2}, 10.0, start, end).trueExtents(min, max));
        EXPECT_POINT(-9, -8, min);
        EXPECT_POINT(11, 12, max);
    }
}

TEST_F(ArcExtentsTest, HoldAllThatIsDrawn)
{
    constexpr double kLogicalUnit = 0.0101; // a vertex is cut towards zero by up to one
    for (int i = 0; i < 3000; ++i) {
        CVexDbArc arc = anyArc();
        arc.InitGrVertexArray();
        for (const CPoint& vertex : arc.GrVertexArray()) {
            ASSERT_TRUE(holds(arc, {vertex.x / 100.0, vertex.y / 100.0}, kLogicalUnit));
        }
    }
}

TEST_F(ArcExtentsTest, HoldAllThatCountsAsOnTheArc)
{
    for (int i = 0; i < 3000; ++i) {
        const CVexDbArc arc = anyArc();
        const double slack = arc.Radius() * 1e-12 + 1e-9;
        for (const double angle :
             {any(0.0, 6.3), arc.StartAngle() - 0.0009, arc.EndAngle() + 0.0009, 0.0, 0.5 * kPi}) {
            const CVexGePoint2d point(arc.Center().x + arc.Radius() * std::cos(angle),
                                      arc.Center().y + arc.Radius() * std::sin(angle));
            if (arc.isOn(point, 1e-6) != 0) {
                ASSERT_TRUE(holds(arc, point, slack)) << "at " << angle;
            }
        }
    }
}

} // namespace
