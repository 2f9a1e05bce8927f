#include "tests/vexge/geasserts.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <rapidcheck/gtest.h>

namespace {

constexpr double kPi = std::numbers::pi;
const CVexGeVector2d kRight(1, 0), kUp(0, 1);
/// tan(a quarter of two steps of 3.6 degrees).
constexpr double kBulge = 0.03142626604335115;

CVexGeEllipArc2d flat(double startAng = 0.0, double endAng = 2.0 * kPi)
{
    return {CVexGePoint2d(0, 0), kRight, kUp, 4.0, 2.0, startAng, endAng};
}

/// The unit circle between two angles.
CVexGeEllipArc2d round(double startAng, double endAng)
{
    return CVexGeEllipArc2d(CVexGeCircArc2d({0, 0}, 1.0, startAng, endAng));
}

} // namespace

TEST(EllipArcChainTest, AWholeOneHasFiftyArcs)
{
    const CVexGeEllipArc2d whole;
    const CVexGePolyline2d& chain = whole.chain();
    EXPECT_EQ(51U, chain.numVerts());
    EXPECT_NEAR(kBulge, chain.getBulgeAt(0), 1e-12);
    EXPECT_NEAR(kBulge, chain.getBulgeAt(49), 1e-12);
    EXPECT_EQ(0.0, chain.getBulgeAt(50));
    EXPECT_NEAR(2.0 * kPi, whole.length(), 1e-9);
    EXPECT_POINT(1, 0, chain.vertices()[50]);
    EXPECT_FALSE(chain.isClosed());
}

TEST(EllipArcChainTest, WithoutAnglesItClosesWithNoGapOrOverlap)
{
    for (const double turn : {0.0, 0.3, 0.9273, 2.5, 4.0, 6.0}) {
        const CVexGeEllipArc2d whole({10, 20}, CVexGeVector2d(turn),
                                     CVexGeVector2d(turn + kPi / 2.0), 4.0, 2.0);
        const auto& vertices = whole.chain().vertices();
        ASSERT_EQ(51U, vertices.size()) << turn;
        EXPECT_POINT(vertices[0].x, vertices[0].y, vertices[50]);
        EXPECT_NEAR(9.688448, whole.length() / 2.0, 1e-4) << turn; // half the circumference
    }
}

TEST(EllipArcChainTest, AWholeTurnFromAnyAngleClosesToo)
{
    const CVexGeEllipArc2d whole = flat(1.0, 1.0 + 2.0 * kPi);
    EXPECT_EQ(51U, whole.chain().numVerts());
    EXPECT_POINT_NEAR(4.0 * std::cos(1.0), 2.0 * std::sin(1.0), whole.chain().vertices()[0], 1e-12);
    EXPECT_NEAR(19.376896, whole.length(), 2e-4);
}

TEST(EllipArcChainTest, EndsThatCoincideMakeFullTurns)
{
    EXPECT_EQ(51U, round(0.0, 2.0 * kPi - 5e-8).chain().numVerts());
    EXPECT_EQ(51U, round(0.0, 5e-8).chain().numVerts());
    EXPECT_EQ(51U, round(2.0 * kPi, 0.0).chain().numVerts());
    EXPECT_NEAR(4.0 * kPi, round(0.0, 4.0 * kPi).length(), 1e-9);
}

TEST(EllipArcChainTest, HasNoWidths)
{
    double start = 0.0, end = 0.0;
    EXPECT_TRUE(CVexGeEllipArc2d().chain().getWidthsAt(50, start, end));
    EXPECT_EQ(-1.0, start);
    EXPECT_EQ(-1.0, end);
}

TEST(EllipArcChainTest, AHalfEndsWithAWholePair)
{
    const CVexGeEllipArc2d half = round(0.0, kPi);
    EXPECT_EQ(26U, half.chain().numVerts());
    EXPECT_NEAR(kBulge, half.chain().getBulgeAt(24), 1e-12);
    EXPECT_NEAR(kPi, half.length(), 1e-9);
}

TEST(EllipArcChainTest, AnUnfinishedPairDropsItsStart)
{
    // A quarter has 25 steps: twelve pairs, and the last arc, made for 7.2 degrees, spans 10.8.
    const CVexGeEllipArc2d quarter = round(0.0, kPi / 2.0);
    const CVexGePolyline2d& chain = quarter.chain();
    ASSERT_EQ(13U, chain.numVerts());
    EXPECT_POINT_NEAR(0.18738131458572452, 0.9822872507286887, chain.vertices()[11], 1e-12);
    EXPECT_NEAR(kBulge, chain.getBulgeAt(11), 1e-12);
    EXPECT_POINT_NEAR(0, 1, chain.vertices()[12], 1e-12);
}

TEST(EllipArcChainTest, AnArcBelowTwoStepsIsItsEndAlone)
{
    const CVexGeEllipArc2d twoSteps = round(0.0, 7.2 * kPi / 180.0);
    EXPECT_EQ(2U, twoSteps.chain().numVerts());
    const CVexGeEllipArc2d less = round(0.0, 7.1 * kPi / 180.0);
    ASSERT_EQ(1U, less.chain().numVerts());
    EXPECT_POINT_NEAR(std::cos(7.1 * kPi / 180.0), std::sin(7.1 * kPi / 180.0),
                      less.chain().vertices()[0], 1e-12);
    EXPECT_EQ(0.0, less.length());
}

TEST(EllipArcChainTest, AnEndBeforeTheStartRunsOverAngleZero)
{
    const CVexGeEllipArc2d right = round(1.5 * kPi, 0.5 * kPi);
    EXPECT_POINT_NEAR(0, -1, right.pointAtParam(0.0), 1e-9);
    EXPECT_NEAR(kPi, right.length(), 1e-9);
    EXPECT_TRUE(right.isOn({1, 0}, 1e-6));
    EXPECT_FALSE(right.isOn({-1, 0}, 1e-6));
}

TEST(EllipArcChainTest, AnglesAreTrueDirectionsAndNotEccentricOnes)
{
    const CVexGeEllipArc2d arc = flat(kPi / 4.0, kPi / 2.0);
    EXPECT_POINT_NEAR(1.7888543819998317, 1.7888543819998317, arc.pointAtParam(0.0), 1e-9);
    EXPECT_POINT_NEAR(0, 2, arc.pointAtParam(1.0), 1e-9);
}

TEST(EllipArcChainTest, OtherStepsLastUntilTheNextEdit)
{
    CVexGeEllipArc2d whole;
    EXPECT_TRUE(whole.setGePolyline(8));
    EXPECT_EQ(5U, whole.chain().numVerts());
    EXPECT_TRUE(whole.setGePolyline(0));
    EXPECT_EQ(1U, whole.chain().numVerts());
    CVexGePolyline2d out;
    EXPECT_TRUE(whole.getGePolyline(out));
    EXPECT_EQ(51U, out.numVerts());
    EXPECT_EQ(51U, whole.chain().numVerts());
}

struct DirectionRow {
    const char* name;
    double angle;
    double x, y;
    double eccentric;
};

class EllipArcDirectionTest : public testing::TestWithParam<DirectionRow> {};

TEST_P(EllipArcDirectionTest, PointAndEccentricAngle)
{
    const DirectionRow& row = GetParam();
    EXPECT_POINT_NEAR(row.x, row.y, flat().pointAtAngle(row.angle, 0, kGeEpsilon), 1e-9);
    EXPECT_NEAR(row.eccentric, flat().angleAtPoint({row.x, row.y}, 0, kGeEpsilon), 1e-9);
}

namespace {

constexpr double kDiagonal = 1.7888543819998317; // 4 / sqrt 5, where y = x meets the ellipse
constexpr double kAtan2 = 1.1071487177940904;    // atan((4 / 2) tan 45)

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Table, EllipArcDirectionTest,
    testing::Values(DirectionRow{"Right", 0, 4, 0, 0},
                    DirectionRow{"First", kPi / 4, kDiagonal, kDiagonal, kAtan2},
                    DirectionRow{"Up", kPi / 2, 0, 2, kPi / 2},
                    DirectionRow{"Second", 3 * kPi / 4, -kDiagonal, kDiagonal, kPi - kAtan2},
                    DirectionRow{"Left", kPi, -4, 0, kPi},
                    DirectionRow{"Third", 5 * kPi / 4, -kDiagonal, -kDiagonal, kPi + kAtan2},
                    DirectionRow{"Down", 3 * kPi / 2, 0, -2, 3 * kPi / 2},
                    DirectionRow{"FourthIsNegative", 7 * kPi / 4, kDiagonal, -kDiagonal, -kAtan2},
                    DirectionRow{"FromBelowZero", -kPi / 4, kDiagonal, -kDiagonal, -kAtan2}),
    [](const auto& row) { return row.param.name; });

TEST(EllipArcAngleTest, AnAxisAngleIsReturnedAsItIsWithinTolerance)
{
    const CVexGePoint2d low(std::cos(0.05), std::sin(0.05));
    EXPECT_NEAR(0.05, flat().angleAtPoint(low, 0, 0.1), 1e-12);
    EXPECT_NEAR(std::atan(2.0 * std::tan(0.05)), flat().angleAtPoint(low, 0, 0.01), 1e-12);
}

TEST(EllipArcAngleTest, TheWorldFormsTurnAndMove)
{
    const CVexGeEllipArc2d upright({10, 20}, kUp, {-1, 0}, 4.0, 2.0, 0.0, 2.0 * kPi);
    const CVexGePoint2d world(10.0 - kDiagonal, 20.0 + kDiagonal);
    EXPECT_POINT_NEAR(world.x, world.y, upright.pointAtAngle(kPi / 4.0, 1, kGeEpsilon), 1e-9);
    EXPECT_NEAR(kAtan2, upright.angleAtPoint(world, 1, kGeEpsilon), 1e-9);
}

TEST(EllipArcAngleTest, StartAndEndPointLeaveTheCentreOut)
{
    CVexGeEllipArc2d quarter = flat(0.0, kPi / 4.0);
    quarter.setCenter({10, 10});
    EXPECT_POINT_NEAR(4, 0, quarter.startPoint(), 1e-12);
    EXPECT_POINT_NEAR(kDiagonal, kDiagonal, quarter.endPoint(), 1e-9);
    EXPECT_EQ(0.0, quarter.startEllAng());
    EXPECT_NEAR(kAtan2, quarter.endEllAng(), 1e-9);
}

TEST(EllipArcDisplayTest, TheWholeFormIgnoresTheAngles)
{
    CVexGeEllipArc2d quarter = flat(0.0, kPi / 2.0);
    quarter.setCenter({1.005, 1.005}); // off the whole hundredths, where rounding decides
    std::vector<CPoint> out{{9, 9}};
    quarter.getGrVertexArray(out, 4, 100.0);
    ASSERT_EQ(5U, out.size());
    EXPECT_EQ(CPoint(500, 100), out[0]);
    EXPECT_EQ(CPoint(100, 300), out[1]);
    EXPECT_EQ(CPoint(-299, 100), out[2]); // -299.5 without its fraction
    EXPECT_EQ(CPoint(500, 100), out[4]);
}

TEST(EllipArcDisplayTest, TheArcFormMeasuresByTheLengthsOfTheAxes)
{
    CVexGeEllipArc2d quarter = flat(0.0, kPi / 2.0);
    std::vector<CPoint> out{{9, 9}};
    quarter.getGrVertexArray_Arc(out, 8, 100.0);
    EXPECT_EQ(CPoint(100, 0), out.front()); // axes of length 1, though the radii are 4 and 2
    EXPECT_EQ(CPoint(0, 100), out.back());
    quarter.setAxes({4, 0}, {0, 2});
    quarter.getGrVertexArray_Arc(out, 8, 100.0);
    EXPECT_EQ(CPoint(400, 0), out.front());
    EXPECT_EQ(CPoint(282, 141), out[1]); // eccentric angle 45 degrees
    EXPECT_EQ(CPoint(0, 200), out.back());
}

TEST(EllipArcDisplayTest, AWholeTurnOfAHundredGivesTheEndTwice)
{
    std::vector<CPoint> out;
    CVexGeEllipArc2d().getGrVertexArray_Arc(out, 100, 1000.0);
    ASSERT_EQ(102U, out.size());
    EXPECT_EQ(out[100].x, out[101].x);
    EXPECT_EQ(0, out[100].y);
    EXPECT_EQ(0, out[101].y);
}

TEST(EllipArcDisplayTest, EqualAnglesAreDrawnWhole)
{
    std::vector<CPoint> out;
    CVexGeEllipArc2d({0, 0}, kRight, kUp, 1.0, 1.0).getGrVertexArray_Arc(out, 4, 100.0);
    ASSERT_LE(5U, out.size());
    EXPECT_EQ(CPoint(0, 100), out[1]);
    EXPECT_EQ(CPoint(-100, 0), out[2]);
}

TEST(EllipArcHostileTest, AnglesTooLargeToGrowByAStepMakeNoEndlessChain)
{
    // Both ends fall together at 1e300, where adding a step changes nothing; so they do at 1e17.
    for (const double angle : {1e17, 1e300}) {
        const CVexGeEllipArc2d ellipse({0, 0}, kRight, kUp, 4.0, 2.0, angle, angle);
        EXPECT_GE(52U, ellipse.chain().numVerts()) << angle;
        std::vector<CPoint> out;
        ellipse.getGrVertexArray_Arc(out, 100, 100.0);
        EXPECT_GE(103U, out.size()) << angle;
    }
}

TEST(EllipArcHostileTest, NothingTakesWithoutBounds)
{
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double wild : {nan, inf, 1e300, 0.0}) {
        for (const double end : {nan, inf, 1e17, 2.0 * kPi * 1e7}) {
            CVexGeEllipArc2d ellipse({wild, 0}, {wild, 1}, {0, wild}, wild, 2.0, 0.0, end);
            EXPECT_GE(5001U, ellipse.chain().numVerts()) << wild << ' ' << end; // 100 turns
            std::vector<CPoint> out;
            ellipse.getGrVertexArray_Arc(out, 100, 100.0);
            EXPECT_GE(10002U, out.size()) << wild << ' ' << end;
            CVexGePoint2d side(1, 1);
            ellipse.offset(side, 1.0);
            EXPECT_LE(1U, ellipse.chain().numVerts());
        }
    }
}

namespace {

double within(int low, int high)
{
    return *rc::gen::inRange(low, high) / 100.0;
}

CVexGeEllipArc2d anyArc()
{
    const double turn = within(0, 628);
    const double major = within(100, 5000);
    const double minor = major * within(20, 100);
    const double start = within(-300, 628);
    const double x = within(-10000, 10000);
    return {CVexGePoint2d(x, within(-10000, 10000)),
            CVexGeVector2d(turn),
            CVexGeVector2d(turn + kPi / 2.0),
            major,
            minor,
            start,
            start + within(100, 600)};
}

} // namespace

RC_GTEST_PROP(EllipArcProperty, RigidEditsKeepTheLength, ())
{
    CVexGeEllipArc2d moved = anyArc();
    const double length = moved.length();
    moved.rotateBy(within(-628, 628), {within(-9999, 9999), 3.0}).translateBy({5.0, -7.0});
    RC_ASSERT(std::fabs(moved.length() - length) < 1e-6 * length);
    moved.rotateBy(kPi, moved.center());
    RC_ASSERT(std::fabs(moved.length() - length) < 1e-6 * length);
}

RC_GTEST_PROP(EllipArcProperty, PointAndParameterAnswerEachOther, ())
{
    const CVexGeEllipArc2d arc = anyArc();
    const CVexGePoint2d on = arc.pointAtParam(within(0, 100));
    const double param = arc.paramAtPoint(on, 1e-6);
    RC_ASSERT(param >= 0.0);
    // Arcs take angles within 0.001 for their start, and the last one may have twice the radius of
    // the ellipse there; parameters that near to 1 are the end.
    const double flattest = 2.0 * arc.majorRadius() * arc.majorRadius() / arc.minorRadius();
    RC_ASSERT(arc.pointAtParam(param).distanceTo(on) < 0.0011 * (flattest + arc.length()));
}

RC_GTEST_PROP(EllipArcProperty, TheChainKeepsToTheConic, ())
{
    const CVexGeEllipArc2d arc = anyArc();
    const auto& vertices = arc.chain().vertices();
    for (const CVexGePoint2d& vertex : vertices) {
        const double direction = (vertex - arc.center()).angle() - arc.majorAxis().angle();
        const CVexGePoint2d there = arc.pointAtAngle(direction, 1, kGeEpsilon);
        RC_ASSERT(there.distanceTo(vertex) < 1e-6 * arc.majorRadius());
    }
}
