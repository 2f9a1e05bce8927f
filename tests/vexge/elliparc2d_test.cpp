#include "tests/vexge/geasserts.h"
#include "tests/vexge/gebytes.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <cmath>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
const CVexGeVector2d kRight(1, 0), kUp(0, 1);

/// Radii 4 and 2 about the origin, major axis along x.
CVexGeEllipArc2d flat(double startAng = 0.0, double endAng = 2.0 * kPi)
{
    return {CVexGePoint2d(0, 0), kRight, kUp, 4.0, 2.0, startAng, endAng};
}

} // namespace

TEST(EllipArcTest, DefaultIsTheWholeUnitCircle)
{
    const CVexGeEllipArc2d ellipse;
    EXPECT_EQ(VexGe::kGeEllipArc2d, ellipse.type());
    EXPECT_POINT(0, 0, ellipse.center());
    EXPECT_POINT(1, 0, ellipse.majorAxis());
    EXPECT_POINT(0, 1, ellipse.minorAxis());
    EXPECT_EQ(1.0, ellipse.majorRadius());
    EXPECT_EQ(1.0, ellipse.minorRadius());
    EXPECT_EQ(2.0 * kPi, ellipse.endAng());
    EXPECT_FALSE(ellipse.isClockWise());
}

TEST(EllipArcTest, WithoutAnglesBothAreThatOfTheMajorAxis)
{
    const CVexGeEllipArc2d ellipse({10, 10}, {0, 5}, {-3, 0}, 4.0, 2.0);
    EXPECT_EQ(kPi / 2.0, ellipse.startAng());
    EXPECT_EQ(kPi / 2.0, ellipse.endAng());
    EXPECT_POINT(0, 1, ellipse.majorAxis()); // a unit vector, as is the other
    EXPECT_POINT(-1, 0, ellipse.minorAxis());
    EXPECT_POINT_NEAR(0, 2, ellipse.startPoint(), 1e-12);
    EXPECT_POINT(ellipse.startPoint().x, ellipse.startPoint().y, ellipse.endPoint());
}

TEST(EllipArcTest, WithoutAnglesANegativeRadiusTurnsItsAxisRound)
{
    const CVexGeEllipArc2d ellipse({0, 0}, {2, 0}, {0, 2}, -4.0, -1.0);
    EXPECT_POINT(-1, 0, ellipse.majorAxis());
    EXPECT_POINT(0, -1, ellipse.minorAxis());
    EXPECT_EQ(4.0, ellipse.majorRadius());
    EXPECT_EQ(1.0, ellipse.minorRadius());
    EXPECT_EQ(0.0, ellipse.startAng()); // of the axis as it was given
}

TEST(EllipArcTest, WithAnglesTheRadiiStayAsTheyAre)
{
    const CVexGeEllipArc2d ellipse({0, 0}, {2, 0}, {0, 2}, -4.0, -1.0, 0.5, 1.5);
    EXPECT_POINT(1, 0, ellipse.majorAxis());
    EXPECT_EQ(-4.0, ellipse.majorRadius());
    EXPECT_EQ(-1.0, ellipse.minorRadius());
    EXPECT_EQ(0.5, ellipse.startAng());
    EXPECT_EQ(1.5, ellipse.endAng());
}

TEST(EllipArcTest, SetStoresTheAxesAsTheyAreAndKeepsTheAngles)
{
    CVexGeEllipArc2d ellipse = flat(0.0, kPi);
    ellipse.set({1, 2}, {0, 6}, {-3, 0}, 6.0, 3.0);
    EXPECT_POINT(0, 6, ellipse.majorAxis());
    EXPECT_POINT(-3, 0, ellipse.minorAxis());
    EXPECT_EQ(kPi, ellipse.endAng());
    EXPECT_POINT_NEAR(1, 8, ellipse.pointAtParam(0.0), 1e-12); // the chain is that of the new data
}

TEST(EllipArcTest, SetFromAnArcFlagsClockwiseAndTheConstructorDoesNot)
{
    const CVexGeCircArc2d arc({3, 4}, 5.0, 0.5, 1.5);
    const CVexGeEllipArc2d made(arc);
    CVexGeEllipArc2d assigned;
    assigned = arc;
    EXPECT_FALSE(made.isClockWise());
    EXPECT_TRUE(assigned.isClockWise());
    EXPECT_POINT(3, 4, assigned.center());
    EXPECT_EQ(5.0, assigned.majorRadius());
    EXPECT_EQ(1.5, assigned.endAng());
    EXPECT_FALSE(made == assigned); // the flag counts
    EXPECT_FALSE(made.isEqualTo(assigned, 1.0));
}

TEST(EllipArcTest, EverySetterMakesTheChainAnew)
{
    CVexGeEllipArc2d ellipse = flat();
    ellipse.setCenter({10, 0});
    EXPECT_POINT_NEAR(14, 0, ellipse.pointAtParam(0.0), 1e-12);
    ellipse.setMajorRadius(6.0);
    EXPECT_POINT_NEAR(16, 0, ellipse.pointAtParam(0.0), 1e-12);
    ellipse.setAxes({0, 1}, {-1, 0});
    EXPECT_POINT_NEAR(10, 6, ellipse.pointAtParam(0.0), 1e-12);
    ellipse.setMinorRadius(3.0);
    ellipse.setAngles(kPi / 2.0, kPi);
    EXPECT_POINT_NEAR(7, 0, ellipse.pointAtParam(0.0), 1e-12);
}

TEST(EllipArcTest, CircularLooksAtTheRadiiStrictly)
{
    EXPECT_FALSE(flat().isCircular(2.0));
    EXPECT_TRUE(flat().isCircular(2.1));
}

TEST(EllipArcTest, SavesMinorAxisBeforeMajorAndMajorRadiusBeforeMinor)
{
    CVexGePoint2d center(1, 2);
    center.tag = 3;
    CVexGeEllipArc2d ellipse;
    ellipse.set(CVexGeCircArc2d()); // clockwise
    ellipse.set(center, {4, 0}, {0, 2}, 4.0, 2.0, 0.0, 1.0);
    EXPECT_EQ("000000000000f03f" // centre x 1
              "0000000000000040" // centre y 2
              "03000000"         // tag
              "0000000000000000" // minor axis (0, 2)
              "0000000000000040" //
              "0000000000001040" // major axis (4, 0)
              "0000000000000000" //
              "0000000000001040" // major radius 4
              "0000000000000040" // minor radius 2
              "0000000000000000" // start angle 0
              "000000000000f03f" // end angle 1
              "01",
              savedHex(ellipse));
}

TEST(EllipArcTest, ReadMakesTheChainOfAHundredSteps)
{
    const std::string bytes = savedHex(flat(0.0, kPi));
    CVexGeEllipArc2d read;
    EXPECT_TRUE(readHex(read, bytes));
    EXPECT_TRUE(read == flat(0.0, kPi));
    EXPECT_EQ(26U, read.chain().numVerts());
    EXPECT_FALSE(readHex(read, bytes.substr(0, 100)));
}

TEST(EllipArcTest, EqualityWithinToleranceForgivesNothingInTheAxes)
{
    const CVexGeEllipArc2d ellipse = flat();
    CVexGeEllipArc2d other = ellipse;
    other.setCenter({0.5, -0.5});
    other.setMajorRadius(4.5);
    EXPECT_TRUE(ellipse.isEqualTo(other, 0.5));
    EXPECT_FALSE(ellipse.isEqualTo(other, 0.4));
    other.setAxes({1, 0.01}, kUp);
    EXPECT_FALSE(ellipse.isEqualTo(other, 0.5)); // vectors compare by 0.001, whatever is asked
}

TEST(EllipArcTest, VirtualEqualityIsFalseForAnotherKind)
{
    const CVexGeEllipArc2d ellipse;
    const CVexGeEntity2d& same = ellipse;
    EXPECT_TRUE(ellipse.isEqualTo(same, 0.0));
    EXPECT_FALSE(same.isEqualTo(CVexGeCircArc2d(), 1.0));
    EXPECT_TRUE(ellipse == CVexGeEllipArc2d());
    EXPECT_TRUE(ellipse != flat());
}

TEST(EllipArcTest, LengthBetweenParametersTakesEitherOrder)
{
    const CVexGeEllipArc2d circle;
    EXPECT_NEAR(kPi, circle.length(0.25, 0.75, 1e-6), 1e-9);
    EXPECT_NEAR(kPi, circle.length(0.75, 0.25, 1e-6), 1e-9);
    EXPECT_EQ(0.0, circle.length(1.5, 0.5, 1e-6));
    EXPECT_EQ(0.0, circle.length(0.5, 0.5, 1e-6));
    EXPECT_NEAR(2.0 * kPi, circle.length(0.5, 1.5, 1e-6), 1e-9); // the second is not looked at
}

TEST(EllipArcTest, PointAtParameterStopsAtTheEnds)
{
    const CVexGeEllipArc2d half = flat(0.0, kPi);
    EXPECT_POINT_NEAR(4, 0, half.pointAtParam(-1.0), 1e-12);
    EXPECT_POINT_NEAR(0, 2, half.pointAtParam(0.5), 1e-4);
    EXPECT_POINT_NEAR(-4, 0, half.pointAtParam(2.0), 1e-12);
}

TEST(EllipArcTest, TranslateAndRotateCarryTheChain)
{
    CVexGeEllipArc2d ellipse = flat(0.0, kPi / 2.0);
    ellipse.translateBy({10, 0}).rotateBy(kPi / 2.0, {0, 0});
    EXPECT_POINT_NEAR(0, 10, ellipse.center(), 1e-12);
    EXPECT_POINT_NEAR(0, 1, ellipse.majorAxis(), 1e-12);
    EXPECT_EQ(kPi / 2.0, ellipse.endAng()); // counts from the axis, so it stays
    EXPECT_POINT_NEAR(0, 14, ellipse.pointAtParam(0.0), 1e-12);
    EXPECT_POINT_NEAR(-2, 10, ellipse.pointAtParam(1.0), 1e-12);
}

TEST(EllipArcTest, RotationAboutItsOwnCentreLeavesTheCentre)
{
    CVexGeEllipArc2d ellipse = flat();
    ellipse.setCenter({5, 5});
    ellipse.rotateBy(kPi, ellipse.center());
    EXPECT_POINT(5, 5, ellipse.center());
    EXPECT_POINT_NEAR(1, 5, ellipse.pointAtParam(0.0), 1e-12);
}

TEST(EllipArcTest, ScaleTakesItsFactorsByTheNamesOfTheRadii)
{
    CVexGeEllipArc2d upright({1, 1}, kUp, {-1, 0}, 4.0, 2.0, 0.0, 2.0 * kPi);
    upright.scaleBy(2.0, 3.0, {0, 0});
    EXPECT_POINT(2, 3, upright.center());
    EXPECT_EQ(8.0, upright.majorRadius()); // by the factor for x, though it points up
    EXPECT_EQ(6.0, upright.minorRadius());
    upright.scaleBy(0.5, {0, 0});
    EXPECT_EQ(4.0, upright.majorRadius());
    EXPECT_EQ(3.0, upright.minorRadius());
}

TEST(EllipArcTest, ATranslationInAMatrixShiftsTheAxesToo)
{
    CVexGeEllipArc2d ellipse = flat(0.0, 1.0);
    ellipse.transformBy(CVexGeMatrix2d::translation({0, 5}));
    EXPECT_POINT(0, 5, ellipse.center());
    EXPECT_POINT(1, 5, ellipse.majorAxis());
    EXPECT_POINT(0, 6, ellipse.minorAxis());
    EXPECT_EQ(4.0, ellipse.majorRadius());
    EXPECT_EQ(1.0, ellipse.endAng());
}

TEST(EllipArcTest, AMirroredWholeEllipseLeavesItsChainBehind)
{
    CVexGeEllipArc2d ellipse = flat();
    ellipse.mirror(CVexGeLine2d(CVexGePoint2d(10, 0), CVexGePoint2d(10, 1)));
    EXPECT_POINT_NEAR(20, 0, ellipse.center(), 1e-12);
    EXPECT_TRUE(ellipse.isOn({4, 0}, 1e-6));
    EXPECT_FALSE(ellipse.isOn({16, 0}, 1e-6));
    EXPECT_TRUE(ellipse.isInsidePoint({20.5, 0.25})); // asks for a chain of its own
    CVexGePolyline2d anew;
    EXPECT_TRUE(ellipse.getGePolyline(anew));
    EXPECT_TRUE(ellipse.isOn({16, 0}, 1e-6));
}

TEST(EllipArcTest, AMirroredArcExchangesAndNegatesItsAngles)
{
    CVexGeEllipArc2d quarter = flat(0.0, kPi / 2.0);
    quarter.mirror(CVexGeLine2d::kYAxis);
    EXPECT_POINT_NEAR(-1, 0, quarter.majorAxis(), 1e-12);
    EXPECT_POINT_NEAR(0, 1, quarter.minorAxis(), 1e-12);
    EXPECT_EQ(-kPi / 2.0, quarter.startAng());
    EXPECT_EQ(0.0, quarter.endAng());
    EXPECT_POINT_NEAR(0, 2, quarter.pointAtParam(0.0), 1e-9);
    EXPECT_POINT_NEAR(-4, 0, quarter.pointAtParam(1.0), 1e-9);
}

TEST(EllipArcTest, TangentTakesItsInterceptsFromRawCoordinates)
{
    // Eccentric angle 36 degrees is the fifth vertex of the chain.
    CVexGeLine2d tangent;
    const CVexGePoint2d touch(4.0 * std::cos(kPi / 5.0), 2.0 * std::sin(kPi / 5.0));
    EXPECT_TRUE(flat().tangent(touch, tangent, 1e-6));
    EXPECT_POINT_NEAR(4.944271909999158, 0, tangent.startPoint(), 1e-9);
    EXPECT_POINT_NEAR(0, 3.4026032334081595, tangent.endPoint(), 1e-9);
    EXPECT_FALSE(flat().tangent({9, 9}, tangent, 1e-6));

    CVexGeEllipArc2d moved = flat();
    moved.setCenter({10, 0});
    EXPECT_TRUE(moved.tangent({10.0 + touch.x, touch.y}, tangent, 1e-6));
    EXPECT_POINT_NEAR(1.208818210000029, 0, tangent.startPoint(), 1e-9); // 16 / 13.236
}

TEST(EllipArcTest, OffsetOutsideGrowsBothRadii)
{
    CVexGeEllipArc2d ellipse = flat();
    CVexGePoint2d side(0, 9);
    EXPECT_TRUE(ellipse.offset(side, 1.0));
    EXPECT_EQ(5.0, ellipse.majorRadius());
    EXPECT_EQ(3.0, ellipse.minorRadius());
    EXPECT_POINT_NEAR(5, 0, ellipse.pointAtParam(0.0), 1e-12);
}

TEST(EllipArcTest, OffsetInsideShrinksUntilTheMinorRadiusIsGone)
{
    CVexGeEllipArc2d ellipse = flat();
    CVexGePoint2d centre(0, 0);
    EXPECT_TRUE(ellipse.offset(centre, 1.5));
    EXPECT_EQ(2.5, ellipse.majorRadius());
    EXPECT_EQ(0.5, ellipse.minorRadius());
    EXPECT_FALSE(ellipse.offset(centre, 0.5));
    EXPECT_EQ(0.5, ellipse.minorRadius());
}

TEST(EllipArcTest, OffsetByNothingGoesThroughTheSidePoint)
{
    CVexGeEllipArc2d ellipse = flat();
    CVexGePoint2d side(0, 5);
    EXPECT_TRUE(ellipse.offset(side, 0.0));
    EXPECT_EQ(7.0, ellipse.majorRadius());
    EXPECT_EQ(5.0, ellipse.minorRadius());
}

TEST(EllipArcTest, OffsetTurnsTheCallersPointIntoTheFrame)
{
    CVexGeEllipArc2d upright({1, 0}, kUp, {-1, 0}, 4.0, 2.0, 0.0, 2.0 * kPi);
    CVexGePoint2d side(6, 0);
    EXPECT_TRUE(upright.offset(side, 1.0));
    EXPECT_POINT_NEAR(1, -5, side, 1e-12);
    CVexGePoint2d inside(2, 0);
    EXPECT_FALSE(upright.offset(inside, 50.0));
    EXPECT_POINT_NEAR(1, -1, inside, 1e-12); // on failure too
}

TEST(EllipArcTest, InsideIsWithinTheSumOfTheFocalDistances)
{
    const CVexGeEllipArc2d ellipse({0, 0}, kRight, kUp, 5.0, 3.0, 0.0, 2.0 * kPi); // foci at +-4
    EXPECT_TRUE(ellipse.isInside({0, 2.9}, 1e-6));
    EXPECT_FALSE(ellipse.isInside({0, 3.1}, 1e-6));
    EXPECT_TRUE(ellipse.isInside({-4.9, 0.1}, 1e-6));
    const CVexGeEllipArc2d tall({0, 0}, kRight, kUp, 3.0, 5.0, 0.0, 2.0 * kPi);
    EXPECT_TRUE(tall.isInside({0.1, 4.9}, 1e-6));
    EXPECT_FALSE(tall.isInside({4.9, 0.1}, 1e-6));
}

TEST(EllipArcTest, InsideMeasuresTheSectorFromTheXAxis)
{
    // The arc itself lies in the second quadrant, and its sector is looked for in the first.
    const CVexGeEllipArc2d turned({0, 0}, kUp, {-1, 0}, 5.0, 3.0, 0.0, kPi / 2.0);
    EXPECT_TRUE(turned.isInside({1, 1}, 1e-6));
    EXPECT_FALSE(turned.isInside({-1, 1}, 1e-6));
}

TEST(EllipArcTest, InsidePointAsksTheWholeChain)
{
    CVexGeEllipArc2d ellipse = flat();
    ellipse.setCenter({10, 10});
    EXPECT_TRUE(ellipse.isInsidePoint({13, 10.25}));
    EXPECT_FALSE(ellipse.isInsidePoint({13.9, 11}));
    EXPECT_FALSE(flat(0.0, kPi).isInsidePoint({0, 1}));
}

TEST(EllipArcTest, ClosestPointToAnArcIsTheOrigin)
{
    CVexGePoint2d onOther(7, 8);
    EXPECT_POINT(0, 0, flat().closestPointTo(CVexGeCircArc2d({20, 0}, 3.0), onOther, kGeEpsilon));
    EXPECT_POINT(7, 8, onOther);
}

TEST(EllipArcTest, TheChainAnswersForLengthsAndDistances)
{
    const CVexGeEllipArc2d circle;
    EXPECT_NEAR(0.25, circle.paramAtPoint({0, 1}, 1e-6), 1e-9);
    EXPECT_EQ(-1.0, circle.paramAtPoint({0, 1.1}, 1e-6));
    EXPECT_NEAR(kPi / 2.0, circle.distAtPoint({0, 1}, 1e-6), 1e-9);
    EXPECT_NEAR(2.0, circle.distanceTo(CVexGePoint2d(3, 0), kGeEpsilon), 1e-12);
    EXPECT_NEAR(1.0, circle.curvatureAtParam(0.3), 1e-9); // the radius
    EXPECT_POINT_NEAR(0, 1, circle.normalAtPoint({0, 1}, 1e-6), 1e-6);
}
