#include "tests/vexge/geasserts.h"
#include "tests/vexge/gebytes.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgespline.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <rapidcheck/gtest.h>

namespace {

using Points = std::vector<CVexGePoint2d>;

/// The bulge of a quarter circle: tan(90 degrees / 4).
constexpr double kQuarter = 0.41421356237309503;

/// With its chain made.
CVexGeSpline made(const Points& points, double fit = 0.5)
{
    CVexGeSpline spline;
    spline.setFitParam(fit);
    for (const CVexGePoint2d& point : points) {
        spline.appendCtrlPt(point);
    }
    CVexGePolyline2d chain;
    spline.getGePolyline(chain);
    return spline;
}

void expectVertices(const Points& expected, const CVexGePolyline2d& chain)
{
    ASSERT_EQ(expected.size(), chain.numVerts());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_POINT_NEAR(expected[i].x, expected[i].y, chain.vertices()[i], 1e-12);
    }
}

} // namespace

TEST(FitSplineTest, TwoPointsAreAStraightLine)
{
    const CVexGeSpline spline = made({{1, 1}, {5, 4}});
    EXPECT_EQ(VexGe::kGeSpline, spline.type());
    expectVertices({{1, 1}, {5, 4}}, spline.chain());
    EXPECT_EQ(0.0, spline.chain().getBulgeAt(0));
    EXPECT_EQ(5.0, spline.length());
}

TEST(FitSplineTest, OneCornerGivesFourVerticesAndOneBulge)
{
    const CVexGeSpline left = made({{0, 0}, {10, 0}, {10, 10}});
    expectVertices({{0, 0}, {5, 0}, {10, 5}, {10, 10}}, left.chain());
    EXPECT_EQ(0.0, left.chain().getBulgeAt(0));
    EXPECT_NEAR(kQuarter, left.chain().getBulgeAt(1), 1e-12);
    EXPECT_EQ(0.0, left.chain().getBulgeAt(2));
    EXPECT_NEAR(10.0 + 2.5 * std::numbers::pi, left.length(), 1e-9);
    EXPECT_NEAR(-kQuarter, made({{0, 0}, {10, 0}, {10, -10}}).chain().getBulgeAt(1), 1e-12);
}

TEST(FitSplineTest, BothEndsOfAnArcLieAtAShareOfTheShorterLeg)
{
    expectVertices({{0, 0}, {8, 0}, {10, 2}, {10, 4}}, made({{0, 0}, {10, 0}, {10, 4}}).chain());
    expectVertices({{6, 0}, {8, 0}, {10, 2}, {10, 10}}, made({{6, 0}, {10, 0}, {10, 10}}).chain());
    expectVertices({{0, 0}, {7.5, 0}, {10, 2.5}, {10, 10}},
                   made({{0, 0}, {10, 0}, {10, 10}}, 0.25).chain());
}

TEST(FitSplineTest, TheNextCornerStartsWhereTheArcEnded)
{
    const CVexGeSpline spline = made({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    expectVertices({{0, 0}, {5, 0}, {10, 5}, {10, 7.5}, {7.5, 10}, {0, 10}}, spline.chain());
    EXPECT_NEAR(kQuarter, spline.chain().getBulgeAt(3), 1e-12);
    EXPECT_EQ(0.0, spline.chain().getBulgeAt(4));
}

TEST(FitSplineTest, ASharpTurnHasALongArc)
{
    // Back by 120 degrees: the arc turns by 120 degrees, its bulge is tan 30.
    const CVexGeSpline spline = made({{0, 0}, {10, 0}, {5, 5.0 * std::sqrt(3.0)}});
    EXPECT_NEAR(1.0 / std::sqrt(3.0), spline.chain().getBulgeAt(1), 1e-9);
}

TEST(FitSplineTest, PointsOnALineGetABulgeFromTheOrigin)
{
    // The arc's centre stays the origin, from which the ends are seen 62.98 and 33.87 degrees up;
    // points on a line do not turn counter-clockwise, so the bulge is negative.
    const CVexGeSpline above = made({{0, 1}, {1, 1}, {2, 1}}, 0.49);
    expectVertices({{0, 1}, {0.51, 1}, {1.49, 1}, {2, 1}}, above.chain());
    EXPECT_NEAR(-0.12770932675007235, above.chain().getBulgeAt(1), 1e-12);
    // Through the origin's own height both are seen under one angle: straight.
    EXPECT_EQ(0.0, made({{1, 0}, {2, 0}, {3, 0}}).chain().getBulgeAt(1));
}

TEST(FitSplineTest, CornerFunctionAnswersWithBothLegsEnds)
{
    const CVexGePoint2d in[3] = {{0, 0}, {10, 0}, {10, 10}};
    CVexGePoint2d out[4];
    double bulge = 7.0;
    EXPECT_TRUE(made({}).GetPolyVertex(in, out, bulge));
    EXPECT_POINT(0, 0, out[0]);
    EXPECT_POINT_NEAR(5, 0, out[1], 1e-12);
    EXPECT_POINT_NEAR(10, 5, out[2], 1e-12);
    EXPECT_POINT(10, 10, out[3]);
    EXPECT_NEAR(kQuarter, bulge, 1e-12);
}

TEST(FitSplineTest, FitBelowOneIsStoredAndTheAnswerIsAlwaysTrue)
{
    CVexGeSpline spline;
    EXPECT_TRUE(spline.setFitParam(0.25));
    EXPECT_TRUE(spline.setFitParam(1.0));
    EXPECT_EQ(0.25, spline.getFitParam());
    EXPECT_TRUE(spline.setFitParam(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ(0.25, spline.getFitParam());
    EXPECT_TRUE(spline.setFitParam(-0.5));
    EXPECT_EQ(-0.5, spline.getFitParam());
}

TEST(FitSplineTest, AddingAtTheCountAppends)
{
    CVexGeSpline spline;
    CVexGePoint2d point(7, 7);
    EXPECT_FALSE(spline.AddCtrlPt(1, {1, 1}));
    EXPECT_TRUE(spline.AddCtrlPt(0, {1, 1}));
    EXPECT_TRUE(spline.AddCtrlPt(1, {3, 3}));
    EXPECT_TRUE(spline.AddCtrlPt(1, {2, 2}));
    EXPECT_TRUE(spline.getCtrlPtAt(1, point));
    EXPECT_POINT(2, 2, point);
    EXPECT_EQ(3U, spline.numCtrlVerts());
}

TEST(FitSplineTest, AccessBeyondTheLastPointIsRefused)
{
    CVexGeSpline spline;
    CVexGePoint2d point(7, 7);
    EXPECT_FALSE(spline.setPointAt(0, {1, 1}));
    spline.appendCtrlPt({1, 1});
    EXPECT_TRUE(spline.setPointAt(0, {2, 2}));
    EXPECT_FALSE(spline.setPointAt(1, {3, 3}));
    EXPECT_FALSE(spline.getCtrlPtAt(1, point));
    EXPECT_POINT(7, 7, point);
    EXPECT_FALSE(spline.removeCtrlPtAt(1));
    EXPECT_TRUE(spline.removeCtrlPtAt(0));
    spline.appendCtrlPt({1, 1});
    spline.setSize(0xffffffffU); // a hint: nothing of that size is taken
    EXPECT_EQ(0U, spline.numCtrlVerts());
}

TEST(FitSplineTest, QueriesAnswerFromTheChainAsItStands)
{
    CVexGeSpline spline = made({{0, 0}, {10, 0}});
    spline.appendCtrlPt({10, 10});
    EXPECT_EQ(10.0, spline.length());
    CVexGePolyline2d anew;
    EXPECT_TRUE(spline.getGePolyline(anew));
    EXPECT_EQ(4U, anew.numVerts());
    EXPECT_NEAR(10.0 + 2.5 * std::numbers::pi, spline.length(), 1e-9);
    CVexGeSpline empty;
    EXPECT_FALSE(empty.getGePolyline(anew));
}

TEST(FitSplineTest, TheChainAnswersForPointsAndRadii)
{
    const CVexGeSpline spline = made({{0, 0}, {10, 0}, {10, 10}});
    EXPECT_TRUE(spline.isOn({5.0 + 5.0 * std::sqrt(0.5), 5.0 - 5.0 * std::sqrt(0.5)}, 1e-9));
    EXPECT_NEAR(5.0, spline.curvatureAtParam(0.5), 1e-9);
    EXPECT_EQ(0.0, spline.curvatureAtParam(0.1));
    EXPECT_POINT_NEAR(10, 10, spline.pointAtParam(1.0), 1e-12);
    EXPECT_FALSE(spline.isInsidePoint({9, 1}));
    const CVexGeSpline ring = made({{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}});
    EXPECT_TRUE(ring.isInsidePoint({6, 5.3}));
}

TEST(FitSplineTest, ReverseTurnsChainAndPoints)
{
    CVexGeSpline spline = made({{0, 0}, {10, 0}, {10, 10}});
    spline.reverse();
    expectVertices({{10, 10}, {10, 5}, {5, 0}, {0, 0}}, spline.chain());
    EXPECT_NEAR(-kQuarter, spline.chain().getBulgeAt(1), 1e-12);
    CVexGePoint2d first;
    spline.getCtrlPtAt(0, first);
    EXPECT_POINT(10, 10, first);
}

TEST(FitSplineTest, EditsMakeTheChainAnew)
{
    CVexGeSpline spline = made({{0, 0}, {10, 0}, {10, 10}});
    spline.translateBy({1, 0}).rotateBy(std::numbers::pi / 2.0, {0, 0});
    expectVertices({{0, 1}, {0, 6}, {-5, 11}, {-10, 11}}, spline.chain());
    spline.mirror(CVexGeLine2d::kYAxis);
    EXPECT_NEAR(-kQuarter, spline.chain().getBulgeAt(1), 1e-9);
    spline.scaleBy(2.0, {0, 0}).scaleBy(0.5, 1.0, {0, 0});
    EXPECT_POINT_NEAR(10, 22, spline.pointAtParam(1.0), 1e-12);
}

TEST(FitSplineTest, OffsetMakesTheChainsVerticesControlPoints)
{
    CVexGeSpline spline = made({{0, 0}, {10, 0}, {10, 10}});
    EXPECT_TRUE(spline.offset({0, 5}, 1.0));
    ASSERT_EQ(4U, spline.numCtrlVerts()); // the former ends of the arc among them
    CVexGePoint2d point;
    spline.getCtrlPtAt(0, point);
    EXPECT_POINT_NEAR(0, 1, point, 1e-6);
    spline.getCtrlPtAt(1, point);
    EXPECT_POINT_NEAR(5, 1, point, 1e-6);
    spline.getCtrlPtAt(2, point);
    EXPECT_POINT_NEAR(9, 5, point, 1e-6);
}

TEST(FitSplineTest, OffsetIsTrueAlsoWhenNothingIsOffset)
{
    CVexGeSpline single;
    single.appendCtrlPt({3, 3});
    EXPECT_TRUE(single.offset({5, 5}, 1.0));
    CVexGePoint2d point;
    EXPECT_TRUE(single.getCtrlPtAt(0, point)); // and the point is still there
    EXPECT_POINT(3, 3, point);
}

TEST(FitSplineTest, EqualityIsExactInTheFitAndForgivingByTolerance)
{
    const CVexGeSpline spline = made({{0, 0}, {10, 0}}, 0.5);
    CVexGeSpline other = made({{0, 0}, {10, 0.2}}, 0.25);
    EXPECT_TRUE(spline.isEqualTo(other, 0.25));
    EXPECT_FALSE(spline.isEqualTo(other, 0.2)); // the fit is off by 0.25
    EXPECT_FALSE(spline == other);
    EXPECT_TRUE(spline == made({{0, 0}, {10, 1e-7}}, 0.5));
    EXPECT_TRUE(spline != made({{0, 0}}, 0.5));
    EXPECT_FALSE(spline.isEqualTo(made({{0, 0}}, 0.5), 9.0));
    EXPECT_FALSE(spline.isEqualTo(CVexGeLine2d(), 9.0));
}

TEST(FitSplineTest, SavesFitCountPointsThenTheChain)
{
    EXPECT_EQ("000000000000e03f"                         // fit 0.5
              "01000000"                                 // one control point
              "000000000000f03f000000000000004000000000" // (1, 2)
              "0100000000"                               // a chain of one vertex, open
              "000000000000f03f000000000000004000000000" //
              "0000000000000000"                         // bulge
              "000000000000f0bf000000000000f0bf",        // no widths
              savedHex(made({{1, 2}})));
}

TEST(FitSplineTest, ReadKeepsTheStoredChainUntilItIsMadeAnew)
{
    CVexGeSpline spline = made({{0, 0}, {10, 0}, {10, 10}});
    spline.appendCtrlPt({20, 10}); // after the chain was made
    CVexGeSpline read;
    EXPECT_TRUE(readHex(read, savedHex(spline)));
    EXPECT_EQ(4U, read.numCtrlVerts());
    EXPECT_EQ(4U, read.chain().numVerts());
    EXPECT_EQ(0.5, read.getFitParam());
    EXPECT_FALSE(readHex(read, "000000000000e03fffffffff0000"));
    EXPECT_EQ(0U, read.numCtrlVerts());
}

TEST(FitSplineHostileTest, CoincidentPointsGiveNumbers)
{
    for (const Points& points : {Points{{5, 5}, {5, 5}, {5, 5}}, Points{{0, 0}, {5, 5}, {5, 5}},
                                 Points{{5, 5}, {5, 5}, {9, 9}}}) {
        const CVexGeSpline spline = made(points);
        EXPECT_EQ(4U, spline.chain().numVerts());
        for (unsigned i = 0; i < 4; ++i) {
            EXPECT_TRUE(std::isfinite(spline.chain().vertices()[i].x));
            EXPECT_TRUE(std::isfinite(spline.chain().getBulgeAt(i)));
        }
    }
}

TEST(FitSplineHostileTest, AnEmptyOneAnswersWithFailures)
{
    CVexGeSpline empty;
    CVexGeVector2d way(7, 7);
    EXPECT_EQ(0.0, empty.length());
    EXPECT_EQ(-1.0, empty.paramAtPoint({0, 0}, 1.0));
    EXPECT_FALSE(empty.perpVecFromPoint({1, 1}, way, 0.1));
    EXPECT_POINT(7, 7, way);
    EXPECT_POINT(0, 0, empty.pointAtParam(1.0));
    EXPECT_TRUE(empty.offset({1, 1}, 1.0));
}

namespace {

double within(int low, int high)
{
    return *rc::gen::inRange(low, high) / 100.0;
}

CVexGeSpline anySpline()
{
    Points points;
    double x = within(-5000, 5000);
    for (int left = *rc::gen::inRange(2, 7); left > 0; --left) {
        points.emplace_back(x, within(-3000, 3000));
        x += within(200, 2000);
    }
    return made(points, within(10, 50));
}

} // namespace

RC_GTEST_PROP(FitSplineProperty, RigidEditsKeepTheLength, ())
{
    CVexGeSpline moved = anySpline();
    const double length = moved.length();
    RC_PRE(std::isfinite(length));
    moved.rotateBy(within(-628, 628), {within(-900, 900), 3.0});
    moved.mirror(CVexGeLine2d(CVexGePoint2d(1, 2), CVexGePoint2d(within(200, 900), 7)));
    moved.translateBy({within(-900, 900), 2.0});
    RC_ASSERT(std::fabs(moved.length() - length) < 1e-5 * length);
}

RC_GTEST_PROP(FitSplineProperty, ReverseTwiceIsTheIdentity, ())
{
    const CVexGeSpline spline = anySpline();
    CVexGeSpline twice = spline;
    twice.reverse();
    twice.reverse();
    RC_ASSERT(twice == spline);
    RC_ASSERT(twice.chain() == spline.chain());
}

RC_GTEST_PROP(FitSplineProperty, PointAndParameterAnswerEachOther, ())
{
    const CVexGeSpline spline = anySpline();
    const CVexGePoint2d on = spline.pointAtParam(within(0, 100));
    const double param = spline.paramAtPoint(on, 1e-6);
    RC_ASSERT(param >= 0.0);
    RC_ASSERT(spline.pointAtParam(param).distanceTo(on) <= 0.0011 * spline.length());
}

RC_GTEST_PROP(FitSplineProperty, ArcsLeaveTheLegsSmoothly, ())
{
    const CVexGeSpline spline = anySpline();
    const CVexGePolyline2d& chain = spline.chain();
    for (unsigned i = 0; i + 1 < chain.numVerts(); ++i) {
        CVexGeCircArc2d arc;
        CVexGeLine2d leg;
        if (chain.getArcSegAt(i, arc) && i > 0 && chain.getLineSegAt(i - 1, leg)) {
            const CVexGeVector2d outward = (leg.endPoint() - arc.center()).normal();
            RC_ASSERT(std::fabs(outward.dotProduct(leg.direction())) < 1e-6);
        }
    }
}
