#include "tests/vexge/geasserts.h"
#include "tests/vexge/gebytes.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <cmath>
#include <memory>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kExact = 1e-12;

CVexGeCircArc2d arcOf(double startAng, double endAng, double radius = 1.0,
                      CVexGePoint2d centre = {})
{
    CVexGeCircArc2d arc(centre, radius);
    arc.setAngles(startAng, endAng);
    return arc;
}

} // namespace

TEST(ArcTest, DefaultIsTheUnitCircle)
{
    const CVexGeCircArc2d arc;
    EXPECT_POINT(0, 0, arc.center());
    EXPECT_EQ(1.0, arc.radius());
    EXPECT_EQ(0.0, arc.startAng());
    EXPECT_EQ(2.0 * kPi, arc.endAng());
    EXPECT_TRUE(arc.isKindOf(VexGe::kGeCircArc2d));
}

TEST(ArcTest, SettingCentreAndRadiusKeepsTheAngles)
{
    CVexGeCircArc2d arc = arcOf(1.0, 2.0);
    arc.set({3, 4}, 5.0);
    EXPECT_POINT(3, 4, arc.center());
    EXPECT_EQ(5.0, arc.radius());
    EXPECT_EQ(1.0, arc.startAng());
    EXPECT_EQ(2.0, arc.endAng());
}

TEST(ArcTest, ClockwiseExchangesTheAngles)
{
    const CVexGeCircArc2d arc({0, 0}, 2.0, 0.5, 1.5, CVexGeVector2d::kXAxis, true);
    EXPECT_EQ(1.5, arc.startAng());
    EXPECT_EQ(0.5, arc.endAng());
}

TEST(ArcTest, AnotherReferenceDirectionIsTakenOffBothAngles)
{
    const CVexGeCircArc2d arc({0, 0}, 2.0, 2.0, 3.0, CVexGeVector2d::kYAxis, false);
    EXPECT_NEAR(2.0 - kPi / 2.0, arc.startAng(), kExact);
    EXPECT_NEAR(3.0 - kPi / 2.0, arc.endAng(), kExact);
}

TEST(ArcTest, ThreePointsCounterClockwiseRunFromFirstToThird)
{
    const CVexGeCircArc2d arc({3, 2}, {2, 3}, {1, 2});
    EXPECT_POINT_NEAR(2, 2, arc.center(), kExact);
    EXPECT_NEAR(1.0, arc.radius(), kExact);
    EXPECT_NEAR(0.0, arc.startAng(), kExact);
    EXPECT_NEAR(kPi, arc.endAng(), kExact);
}

TEST(ArcTest, ThreePointsClockwiseAreStoredFromTheThird)
{
    const CVexGeCircArc2d arc({1, 2}, {2, 3}, {3, 2});
    EXPECT_POINT_NEAR(3, 2, arc.startPoint(), kExact);
    EXPECT_POINT_NEAR(1, 2, arc.endPoint(), kExact);
    EXPECT_NE(0, arc.isOn({2, 3}));
}

TEST(ArcTest, ThreePointsOnALineLeaveTheCentreAndMeasureTheRadius)
{
    CVexGeCircArc2d arc({4, 0}, 9.0);
    arc.set(CVexGePoint2d(0, 0), CVexGePoint2d(0.1, 0.1), CVexGePoint2d(0.3, 0.3));
    EXPECT_POINT(4, 0, arc.center());
    EXPECT_EQ(4.0, arc.radius());
    EXPECT_NEAR(kPi, arc.endAng(), kExact); // towards the first point: no turn counts as clockwise
}

TEST(ArcTest, PositiveBulgeSwellsToTheRightAndIsStoredFromTheFirstPoint)
{
    const CVexGeCircArc2d arc({0, 0}, {10, 0}, 1.0, true);
    EXPECT_POINT(5, 0, arc.center());
    EXPECT_EQ(5.0, arc.radius());
    EXPECT_POINT_NEAR(0, 0, arc.startPoint(), kExact);
    EXPECT_POINT_NEAR(5, -5, arc.pointAtParam(0.5), kExact);
}

TEST(ArcTest, NegativeBulgeSwellsToTheLeftAndIsStoredFromTheSecondPoint)
{
    const CVexGeCircArc2d arc({0, 0}, {10, 0}, -1.0, true);
    EXPECT_POINT_NEAR(10, 0, arc.startPoint(), kExact);
    EXPECT_POINT_NEAR(5, 5, arc.pointAtParam(0.5), kExact);
    EXPECT_NEAR(1.0, arc.bulge(), kExact); // the arc itself always runs counter-clockwise
}

TEST(ArcTest, QuarterBulgeHasItsCentreLeftOfTheChord)
{
    const CVexGeCircArc2d arc({6, 0}, {12, 6}, std::tan(kPi / 8.0), true);
    EXPECT_POINT_NEAR(6, 6, arc.center(), kExact);
    EXPECT_NEAR(6.0, arc.radius(), kExact);
}

TEST(ArcTest, BulgeOfZeroKeepsTheCentre)
{
    CVexGeCircArc2d arc({5, 3}, 1.0);
    arc.set({0, 0}, {10, 0}, 0.0, true);
    EXPECT_POINT(5, 3, arc.center());
    EXPECT_NEAR(std::sqrt(34.0), arc.radius(), kExact);
}

// The form that is no bulge keeps the angles from the ends towards the centre: half a turn off.
TEST(ArcTest, FormThatIsNoBulgeHasTheAnglesTowardsTheCentre)
{
    const CVexGeCircArc2d arc({0, 0}, {2, 0}, std::tan(kPi / 8.0), false);
    EXPECT_POINT_NEAR(1, 1, arc.center(), 1e-9);
    EXPECT_NEAR(std::sqrt(2.0), arc.radius(), 1e-9);
    EXPECT_NEAR(kPi / 4.0, arc.startAng(), kExact);
    EXPECT_NEAR(3.0 * kPi / 4.0, arc.endAng(), kExact);
}

TEST(ArcTest, SettersOfOneAngleAddATurnToANegativeOne)
{
    CVexGeCircArc2d arc;
    arc.setStartAngle(-1.0);
    arc.setEndAngle(-0.5);
    EXPECT_EQ(2.0 * kPi - 1.0, arc.startAng());
    EXPECT_EQ(2.0 * kPi - 0.5, arc.endAng());
    arc.setAngles(-1.0, -0.5);
    EXPECT_EQ(-1.0, arc.startAng());
}

TEST(ArcTest, BulgeIsTheTangentOfAQuarterOfTheSweep)
{
    EXPECT_NEAR(1.0, arcOf(0.0, kPi).bulge(), kExact);
    EXPECT_NEAR(std::tan(kPi / 8.0), arcOf(-kPi / 4.0, kPi / 4.0).bulge(), kExact);
    EXPECT_EQ(0.0, arcOf(1.0, 1.0005).bulge());
    EXPECT_GT(CVexGeCircArc2d().bulge(), 1e15);
}

// The slack of 0.001 at the ends does not wrap: displays and picks of arcs from 0 rely on it.
TEST(ArcTest, SlackBeforeAStartAtZeroDoesNotWrap)
{
    const CVexGeCircArc2d arc = arcOf(0.0, 1.0);
    EXPECT_EQ(0, arc.isOn({std::cos(-0.0001), std::sin(-0.0001)}));
    EXPECT_NE(0, arc.isOn({std::cos(1.0009), std::sin(1.0009)}));
    EXPECT_EQ(0, arc.isOn({std::cos(1.0011), std::sin(1.0011)}));
    EXPECT_NE(0, arcOf(0.5, 1.0).isOn({std::cos(0.4991), std::sin(0.4991)}));
}

TEST(ArcTest, ArcAcrossAngleZeroHoldsBothSidesOfIt)
{
    const CVexGeCircArc2d arc = arcOf(1.5 * kPi, 0.5 * kPi);
    EXPECT_NE(0, arc.isOn({1, 0}));
    EXPECT_NE(0, arc.isOn({std::cos(6.0), std::sin(6.0)}));
    EXPECT_EQ(0, arc.isOn({-1, 0}));
    EXPECT_NEAR(kPi, arc.length(), kExact);
}

TEST(ArcTest, NegativeStartIsComparedAfterATurnWasAdded)
{
    const CVexGeCircArc2d arc = arcOf(-0.5, 0.5);
    EXPECT_NE(0, arc.isOn({std::cos(-0.25), std::sin(-0.25)}));
    EXPECT_NE(0, arc.isOn({std::cos(0.25), std::sin(0.25)}));
    EXPECT_EQ(0, arc.isOn({-1, 0}));
}

TEST(ArcTest, IsOnForgivesExactlyTheTolerance)
{
    const CVexGeCircArc2d arc({0, 0}, 4.0);
    EXPECT_NE(0, arc.isOn({4.5, 0}, 0.5));
    EXPECT_EQ(0, arc.isOn({4.75, 0}, 0.5));
}

// The sector test has no wrap: it understands arcs that do not cross angle zero.
TEST(ArcTest, SectorAcrossZeroIsNotUnderstood)
{
    EXPECT_TRUE(arcOf(0.0, kPi / 2.0, 2.0).isInside({1, 1}));
    EXPECT_FALSE(arcOf(0.0, kPi / 2.0, 2.0).isInside({-1, 1}));
    EXPECT_FALSE(arcOf(0.0, kPi / 2.0, 2.0).isInside({2, 2}));
    EXPECT_FALSE(arcOf(-0.5, 0.5, 2.0).isInside({std::cos(-0.25), std::sin(-0.25)}));
}

TEST(ArcTest, WholeCircleHoldsItsInsidePoints)
{
    const CVexGeCircArc2d circle({3, 3}, 2.0);
    EXPECT_TRUE(circle.isInsidePoint({3.5, 2.5}));
    EXPECT_FALSE(circle.isInsidePoint({6, 3}));
    EXPECT_FALSE(arcOf(0.0, kPi).isInsidePoint({0, 0.5}));
}

TEST(ArcTest, LengthTreatsEqualAnglesAsAWholeCircle)
{
    EXPECT_NEAR(4.0 * kPi, arcOf(1.0, 1.0, 2.0).length(), kExact);
    EXPECT_NEAR(4.0 * kPi, arcOf(0.0, 2.0 * kPi, 2.0).length(), kExact);
    EXPECT_NEAR(2.0, arcOf(-0.5, 0.5, 2.0).length(), kExact);
}

TEST(ArcTest, PartialLengthChecksOnlyTheFirstParameter)
{
    const CVexGeCircArc2d arc = arcOf(0.0, 2.0, 3.0);
    EXPECT_NEAR(3.0, arc.length(0.25, 0.75), kExact);
    EXPECT_NEAR(12.0, arc.length(0.0, 2.0), kExact);
    EXPECT_EQ(0.0, arc.length(1.5, 0.5));
    EXPECT_EQ(0.0, arc.length(0.5, 0.5000001, 0.001));
}

TEST(ArcTest, DistanceBeyondTheEndWrapsOnACircleAndStopsOnAnArc)
{
    const CVexGeCircArc2d circle;
    EXPECT_NEAR(0.25, circle.paramAtDist(0.5, 1.5 * kPi, true), kExact);
    EXPECT_NEAR(0.75, circle.paramAtDist(0.25, kPi, false), kExact);
    const CVexGeCircArc2d arc = arcOf(0.0, kPi);
    EXPECT_EQ(1.0, arc.paramAtDist(0.5, 3.0, true));
    EXPECT_EQ(0.0, arc.paramAtDist(0.5, 3.0, false));
}

TEST(ArcTest, ParameterOfAPointAndBack)
{
    const CVexGeCircArc2d arc = arcOf(1.5 * kPi, 0.5 * kPi, 2.0);
    EXPECT_NEAR(0.5, arc.paramAtPoint({2, 0}), kExact);
    EXPECT_NEAR(kPi, arc.distAtPoint({2, 0}), kExact);
    EXPECT_EQ(-1.0, arc.paramAtPoint({-2, 0}));
    EXPECT_POINT_NEAR(2, 0, arc.pointAtParam(0.5), kExact);
    EXPECT_POINT_NEAR(2, 0, arc.pointAtDist(kPi), kExact);
}

TEST(ArcTest, PointWithinTheSlackOfTheStartIsTheStart)
{
    const CVexGeCircArc2d arc = arcOf(1.0, 2.0);
    EXPECT_EQ(0.0, arc.paramAtPoint({std::cos(0.9995), std::sin(0.9995)}));
    EXPECT_EQ(0.0, arc.paramAtPoint({std::cos(1.0005), std::sin(1.0005)}));
    EXPECT_NEAR(0.0015, arc.paramAtPoint({std::cos(1.0015), std::sin(1.0015)}), 1e-9);
}

TEST(ArcTest, NormalPointsOutwardAndCurvatureIsTheRadius)
{
    const CVexGeCircArc2d arc = arcOf(0.0, kPi, 4.0, {1, 1});
    EXPECT_POINT_NEAR(0, 1, arc.normalAtParam(0.5), kExact);
    EXPECT_POINT_NEAR(1, 0, arc.normalAtPoint({9, 1}), kExact);
    EXPECT_EQ(4.0, arc.curvatureAtParam(0.3)); // the radius, not its reciprocal
    EXPECT_EQ(4.0, arc.curvatureAtPoint({0, 0}));
}

TEST(ArcTest, OffsetByTheRadiusIsRefusedEvenOutward)
{
    CVexGeCircArc2d arc({0, 0}, 2.0);
    EXPECT_FALSE(arc.offset({9, 0}, 2.0));
    EXPECT_EQ(2.0, arc.radius());
    EXPECT_TRUE(arc.offset({9, 0}, 1.5));
    EXPECT_EQ(3.5, arc.radius());
    EXPECT_TRUE(arc.offset({1, 0}, 0.5));
    EXPECT_EQ(3.0, arc.radius());
}

TEST(ArcTest, OffsetByZeroGoesThroughThePoint)
{
    CVexGeCircArc2d arc({0, 0}, 2.0);
    EXPECT_TRUE(arc.offset({3, 0}, 0.0));
    EXPECT_NEAR(3.0, arc.radius(), kExact);
}

TEST(ArcTest, ScalingByTwoFactorsStaysACircle)
{
    CVexGeCircArc2d arc({1, 1}, 2.0);
    arc.scaleBy(2.0, 3.0, {0, 0});
    EXPECT_POINT(2, 3, arc.center());
    EXPECT_EQ(4.0, arc.radius());
    arc.scaleBy(0.5, {2, 3});
    EXPECT_EQ(2.0, arc.radius());
}

TEST(ArcTest, TransformByAScaleMovesTheCentreAndKeepsTheRadius)
{
    CVexGeCircArc2d arc = arcOf(0.0, kPi / 2.0, 3.0, {1, 2});
    arc.transformBy(CVexGeMatrix2d::scaling(2.0, {0, 0}));
    EXPECT_POINT(2, 4, arc.center());
    EXPECT_EQ(3.0, arc.radius());
    EXPECT_NEAR(kPi / 2.0, arc.endAng(), kExact);
}

TEST(ArcTest, RotationTakesWholeTurnsOffAndLeavesACircleAlone)
{
    CVexGeCircArc2d arc = arcOf(1.0, 6.0);
    arc.rotateBy(1.0, {0, 0});
    EXPECT_EQ(2.0, arc.startAng());
    EXPECT_NEAR(7.0 - 2.0 * kPi, arc.endAng(), kExact);
    CVexGeCircArc2d circle({1, 0}, 1.0);
    circle.rotateBy(kPi / 2.0, {0, 0});
    EXPECT_POINT_NEAR(0, 1, circle.center(), kExact);
    EXPECT_EQ(0.0, circle.startAng());
}

TEST(ArcTest, TranslationMovesTheCentre)
{
    CVexGeCircArc2d arc = arcOf(1.0, 2.0);
    arc.translateBy({3, 4});
    EXPECT_POINT(3, 4, arc.center());
    EXPECT_EQ(1.0, arc.startAng());
}

TEST(ArcTest, MirroredArcStaysCounterClockwise)
{
    CVexGeCircArc2d arc = arcOf(0.0, kPi / 2.0, 1.0, {2, 0});
    arc.mirror(CVexGeLine2d({0, 0}, CVexGePoint2d(0, 1)));
    EXPECT_POINT_NEAR(-2, 0, arc.center(), kExact);
    EXPECT_NEAR(kPi / 2.0, arc.startAng(), kExact);
    EXPECT_NEAR(kPi, arc.endAng(), kExact);
}

TEST(ArcTest, MirroredCircleIsWhole)
{
    CVexGeCircArc2d circle({2, 0}, 1.0);
    circle.mirror(CVexGeLine2d({0, 0}, CVexGePoint2d(0, 1)));
    EXPECT_EQ(0.0, circle.startAng());
    EXPECT_EQ(2.0 * kPi, circle.endAng());
    EXPECT_NE(0, circle.isOn({-1, 0}, 1e-9));
}

TEST(ArcTest, TangentFromOutsideTouchesOnlyAtEnds)
{
    CVexGeLine2d line;
    const CVexGeCircArc2d circle;
    EXPECT_TRUE(circle.tangent({2, 0}, line, 1e-9));
    EXPECT_POINT(2, 0, line.startPoint());
    EXPECT_POINT_NEAR(0.5, std::sqrt(3.0) / 2.0, line.endPoint(), 1e-9);
    EXPECT_FALSE(arcOf(kPi, 1.5 * kPi).tangent({2, 0}, line, 1e-9));
}

TEST(ArcTest, TangentFromInsideIsNotANumber)
{
    CVexGeLine2d line;
    EXPECT_FALSE(CVexGeCircArc2d().tangent({0.5, 0}, line));
    EXPECT_TRUE(std::isnan(line.endPoint().x));
}

TEST(ArcTest, WholeCircleBecomesTwoClosedHalves)
{
    CVexGePolyline2d chain;
    CVexGeCircArc2d({1, 1}, 2.0).asPolyline(chain, 0);
    ASSERT_EQ(2U, chain.numVerts());
    EXPECT_TRUE(chain.isClosed());
    EXPECT_POINT_NEAR(-1, 1, chain.vertices()[0], kExact);
    EXPECT_POINT_NEAR(3, 1, chain.vertices()[1], kExact);
    EXPECT_EQ((std::vector<double>{1.0, 1.0}), chain.bulges());
    CVexGeCircArc2d({1, 1}, 2.0).asPolyline(chain, 1);
    EXPECT_EQ((std::vector<double>{-1.0, -1.0}), chain.bulges());
}

// Reversed, the points stay in their order and only the bulge turns: the mirror image in the chord.
TEST(ArcTest, ReversedPolylineFormTurnsOnlyTheBulge)
{
    CVexGePolyline2d chain;
    chain = CVexGeCircArc2d();
    arcOf(0.0, kPi, 2.0).asPolyline(chain, 1);
    EXPECT_FALSE(chain.isClosed());
    EXPECT_POINT_NEAR(2, 0, chain.vertices()[0], kExact);
    EXPECT_POINT_NEAR(-2, 0, chain.vertices()[1], kExact);
    EXPECT_NEAR(-1.0, chain.getBulgeAt(0), kExact);
    EXPECT_EQ(0.0, chain.getBulgeAt(1));
}

TEST(ArcTest, WholeTurnOfAHundredStepsGivesTwoMoreDisplayVertices)
{
    std::vector<CPoint> points;
    CVexGeCircArc2d({0, 0}, 10.0).getGrVertexArray(points, 100, 100.0);
    ASSERT_EQ(102U, points.size());
    EXPECT_EQ(CPoint(1000, 0), points.front());
    EXPECT_EQ(points[100], points[101]);
}

TEST(ArcTest, DisplayStepIsAShareOfTheWholeTurn)
{
    std::vector<CPoint> points{{7, 7}};
    arcOf(0.0, kPi / 2.0, 1.999).getGrVertexArray(points, 8, 1.0);
    EXPECT_EQ((std::vector<CPoint>{{1, 0}, {1, 1}, {0, 1}}), points);
    arcOf(kPi, kPi + 0.1, 1.999).getGrVertexArray(points, 8, 1.0);
    EXPECT_EQ((std::vector<CPoint>{{-1, 0}, {-1, 0}}), points); // towards zero
}

TEST(ArcTest, NoStepsGiveTheEndAlone)
{
    std::vector<CPoint> points;
    arcOf(0.0, kPi, 2.0).getGrVertexArray(points, -4, 1.0);
    EXPECT_EQ(1U, points.size());
}

// The virtual comparison is false for arcs; mixed lists of curves rely on never finding two equal.
TEST(ArcTest, ThroughTheBaseNoTwoArcsAreEqual)
{
    const CVexGeCircArc2d arc;
    const CVexGeEntity2d& base = arc;
    EXPECT_FALSE(base.isEqualTo(CVexGeCircArc2d(), 0.001));
    EXPECT_FALSE(base.isEqualTo(CVexGeLine2d(), 0.001));
    EXPECT_TRUE(arc.isEqualTo(arcOf(0.001, 2.0 * kPi, 1.001), 0.0011));
    EXPECT_FALSE(arc.isEqualTo(arcOf(0.002, 2.0 * kPi), 0.001));
}

TEST(ArcTest, EqualityIsExactInRadiusAndAngles)
{
    EXPECT_TRUE(arcOf(1, 2) == arcOf(1, 2, 1.0, {1e-7, 0}));
    EXPECT_TRUE(arcOf(1, 2) != arcOf(1, 2, 1.0 + 1e-12));
    EXPECT_TRUE(arcOf(1, 2) != arcOf(1, 2 + 1e-12));
}

TEST(ArcTest, CopyIsAnArcOfItsOwn)
{
    const CVexGeCircArc2d arc = arcOf(1, 2, 3, {4, 5});
    const std::unique_ptr<CVexGeEntity2d> copy(arc.copy());
    ASSERT_TRUE(copy->isKindOf(VexGe::kGeCircArc2d));
    EXPECT_TRUE(static_cast<const CVexGeCircArc2d&>(*copy) == arc);
}

TEST(ArcTest, EllipseOfAnArcHasItsRadiiAndAngles)
{
    CVexGeEllipArc2d ellipse;
    arcOf(1, 2, 3, {4, 5}).getEllipse(ellipse);
    EXPECT_POINT(4, 5, ellipse.center());
    EXPECT_EQ(3.0, ellipse.majorRadius());
    EXPECT_EQ(3.0, ellipse.minorRadius());
    EXPECT_EQ(1.0, ellipse.startAng());
    EXPECT_EQ(2.0, ellipse.endAng());
}

TEST(ArcTest, FileHoldsRadiusAnglesCentre)
{
    CVexGeCircArc2d arc = arcOf(0.5, 2.0, 1.0, {3, -1});
    EXPECT_EQ("000000000000f03f"
              "000000000000e03f"
              "0000000000000040"
              "0000000000000840"
              "000000000000f0bf"
              "00000000",
              savedHex(arc));
    CVexGeCircArc2d back;
    ASSERT_TRUE(readHex(back, savedHex(arc)));
    EXPECT_TRUE(back == arc);
}
