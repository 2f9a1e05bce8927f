#include "tests/vexge/geasserts.h"
#include "vexge/geentity2d/vexgecircarc2d.h"

#include <cmath>
#include <vector>

namespace {

CVexGeCircArc2d arcBetween(double startAng, double endAng)
{
    CVexGeCircArc2d arc({0, 0}, 2.0);
    arc.setAngles(startAng, endAng);
    return arc;
}

} // namespace

TEST(ArcHostileTest, BulgeNextToZeroIsStraightAndNotBeyondAllNumbers)
{
    CVexGeCircArc2d arc({5, 3}, 1.0);
    for (const double bulge : {1e-310, -1e-310, 1e-12}) {
        arc.set({0, 0}, {10, 0}, bulge, true);
        EXPECT_POINT(5, 3, arc.center());
        EXPECT_NEAR(std::sqrt(34.0), arc.radius(), 1e-12);
    }
}

TEST(ArcHostileTest, WildAnglesAreDisplayedForAHundredTurnsAtMost)
{
    std::vector<CPoint> points;
    for (const double start : {0.0, -1e300, 1e17}) {
        arcBetween(start, 1e300).getGrVertexArray(points, 8, 1.0);
        EXPECT_GE(804U, points.size()) << start;
    }
    arcBetween(1e17, 1e17 + 64.0).getGrVertexArray(points, 8, 1.0); // a step changes nothing there
    EXPECT_GE(90U, points.size());
}
