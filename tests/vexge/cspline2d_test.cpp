#include "tests/vexge/geasserts.h"
#include "tests/vexge/gebytes.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgecspline2d.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <cmath>
#include <numbers>
#include <rapidcheck/gtest.h>

namespace {

using Spline = CVexGeCSpline2d;
using Points = Spline::PointList;
using Options = Spline::OptionList;
using Indices = std::vector<unsigned long>;

/// Through points 10 apart on the x axis, one for each option.
Spline level(const Options& options)
{
    Points points;
    for (std::size_t i = 0; i < options.size(); ++i) {
        points.emplace_back(10.0 * static_cast<double>(i), 0.0);
    }
    Spline spline;
    spline.set(points, options);
    return spline;
}

Options optionsOf(const Spline& spline)
{
    Options options;
    for (unsigned i = 0; i < spline.numCtrlVerts(); ++i) {
        options.push_back(spline.getCtrlOption(i));
    }
    return options;
}

} // namespace

TEST(CSplineTest, SetZeroesOptionsThatAreNotGiven)
{
    Spline spline(Points{{1, 2}, {3, 4}});
    EXPECT_EQ(VexGe::kGeCSpline2d, spline.type());
    EXPECT_EQ((Options{0, 0}), optionsOf(spline));
    spline.set({{0, 0}, {1, 1}, {2, 2}}, {3, 2});
    EXPECT_EQ((Options{3, 2, 0}), optionsOf(spline));
    spline.set({{5, 5}});
    EXPECT_EQ((Options{0}), optionsOf(spline));
}

TEST(CSplineTest, PointsGoInUpToTheCountAndNoFurther)
{
    Spline spline(0.5);
    EXPECT_TRUE(spline.appendCtrlPt({1, 1}, 2));
    EXPECT_TRUE(spline.addCtrlPt(1, {3, 3}, 3));
    EXPECT_TRUE(spline.addCtrlPt(0, {0, 0}, 0));
    EXPECT_FALSE(spline.addCtrlPt(4, {9, 9}, 0));
    const Points more{{4, 4}, {5, 5}};
    const Options first{1};
    EXPECT_TRUE(spline.appendCtrlPt(&more, &first));
    EXPECT_TRUE(spline.appendCtrlPt(&more, nullptr));
    EXPECT_EQ((Options{0, 2, 3, 1, 0, 0, 0}), optionsOf(spline));
}

TEST(CSplineTest, AccessBeyondTheLastPointIsRefused)
{
    Spline spline = level({2, 0});
    CVexGePoint2d point(7, 7);
    unsigned char option = 9;
    EXPECT_FALSE(spline.getCtrlPtAt(2, point));
    EXPECT_FALSE(spline.getCtrlPtAt(2, point, option));
    EXPECT_POINT(7, 7, point);
    EXPECT_EQ(9, option);
    EXPECT_TRUE(spline.getCtrlPtAt(0, point, option));
    EXPECT_EQ(2, option);
    EXPECT_EQ(0, spline.getCtrlOption(2));
    EXPECT_FALSE(spline.setControlOption(2, 1));
    EXPECT_FALSE(spline.setPointAt(2, {1, 1}, 1));
    EXPECT_FALSE(spline.removeCtrlPtAt(2));
}

TEST(CSplineTest, ReverseTurnsPointsAndOptions)
{
    Spline spline = level({3, 0, 2});
    spline.reverse();
    CVexGePoint2d first;
    EXPECT_TRUE(spline.getCtrlPtAt(0, first));
    EXPECT_POINT(20, 0, first);
    EXPECT_EQ((Options{2, 0, 3}), optionsOf(spline));
}

TEST(CSplineTest, ClosedMeansTheFlagOrEndsNearerThanTwoHundredths)
{
    EXPECT_TRUE(Spline(Points{{0, 0}, {5, 5}, {0.019, 0}}).closed());
    EXPECT_FALSE(Spline(Points{{0, 0}, {5, 5}, {0.02, 0}}).closed());
    EXPECT_FALSE(Spline(Points{{0, 0}, {5, 5}, {0.019, 0}}).isClosed());
    Spline open = level({0, 0, 0});
    open.setClosed(true);
    EXPECT_TRUE(open.closed());
    open.setClosed(false);
    EXPECT_FALSE(open.closed());
    EXPECT_FALSE(Spline(0.5).closed());
}

TEST(CSplineTest, ClosingDropsALastPointThatRepeatsTheFirst)
{
    Spline ring(Points{{0, 0}, {5, 5}, {0.0009, 0}});
    ring.setClosed(true);
    EXPECT_EQ(2U, ring.numCtrlVerts());
    Spline wider(Points{{0, 0}, {5, 5}, {0.0011, 0}});
    wider.setClosed(true);
    EXPECT_EQ(3U, wider.numCtrlVerts());
    Spline opened(Points{{0, 0}, {5, 5}, {0, 0}});
    opened.setClosed(false);
    EXPECT_EQ(3U, opened.numCtrlVerts());
}

TEST(CSplineTest, OnlyTheCornerBitCountsAsAControlOption)
{
    EXPECT_FALSE(level({2, 2}).hasCtrlOption());
    EXPECT_TRUE(level({2, 3}).hasCtrlOption());
    EXPECT_EQ(2, level({2, 3, 1, 0}).numRealCtrlVerts());
}

TEST(CSplineTest, IndexListsFindThePointsOnTheCurve)
{
    Indices at{99};
    EXPECT_TRUE(level({0, 0, 0}).getControlPtIndex(at));
    EXPECT_EQ((Indices{0, 20, 40}), at);
    EXPECT_TRUE(level({0, 2, 0}).getRealControlPtIndex(at));
    EXPECT_EQ((Indices{20}), at);
    EXPECT_FALSE(Spline(0.5).getControlPtIndex(at));
    EXPECT_TRUE(at.empty());
}

TEST(CSplineTest, ARealPointMatchesTheFirstCurvePointWithinHalfAStep)
{
    // A factor of 8 gives one piece a span and a reach of 4, so the point at 3 is found at 0.
    Spline coarse(8.0);
    coarse.set({{0, 0}, {3, 0}, {6, 0}}, {0, 2, 2});
    Indices at;
    EXPECT_TRUE(coarse.getRealControlPtIndex(at));
    EXPECT_EQ((Indices{0, 1}), at);
    EXPECT_TRUE(coarse.getControlPtIndex(at));
    EXPECT_EQ((Indices{0, 1, 2}), at);
}

TEST(CSplineTest, CornerListHasBothEndsAndEachOnce)
{
    Indices at;
    EXPECT_TRUE(level({0, 0, 1, 0, 0}).getVertexControlPtIndex(at));
    EXPECT_EQ((Indices{0, 40, 80}), at);
    EXPECT_TRUE(level({3, 0, 0, 0, 3}).getVertexControlPtIndex(at));
    EXPECT_EQ((Indices{0, 80}), at);
    Spline ring(Points{{0, 0}, {10, 0}, {10, 10}});
    ring.setClosed(true);
    ring.set({{0, 0}, {10, 0}, {10, 10}}, {1, 0, 1});
    EXPECT_TRUE(ring.getVertexControlPtIndex(at));
    EXPECT_EQ((Indices{0, 40, 41}), at); // the closing piece is straight, and no corner is its end
}

TEST(CSplineTest, ClearingRealPointsKeepsCornersAndEnds)
{
    Spline spline = level({2, 2, 3, 1, 6, 2});
    spline.clearRealControl();
    EXPECT_EQ((Options{2, 0, 3, 1, 0, 2}), optionsOf(spline));
}

TEST(CSplineTest, ARealPointGoesInByItsParameter)
{
    Spline spline = level({2, 2, 2});
    EXPECT_TRUE(spline.addRealControlPoint({15, 0}));
    EXPECT_EQ((Options{2, 2, 2, 2}), optionsOf(spline));
    CVexGePoint2d third;
    EXPECT_TRUE(spline.getCtrlPtAt(2, third));
    EXPECT_POINT(15, 0, third);
    EXPECT_FALSE(spline.addRealControlPoint({20, 0})); // the end itself
}

TEST(CSplineTest, APointOffTheCurveBecomesTheSecondOne)
{
    Spline spline = level({0, 0, 0});
    EXPECT_TRUE(spline.addRealControlPoint({15, 4}));
    EXPECT_EQ((Options{0, 2, 0, 0}), optionsOf(spline));
}

TEST(CSplineTest, AClosedOneTakesAPointBehindItsLast)
{
    Spline ring(Points{{0, 0}, {10, 0}, {10, 10}});
    ring.set({{0, 0}, {10, 0}, {10, 10}}, {1, 1, 1});
    ring.setClosed(true);
    EXPECT_TRUE(ring.addRealControlPoint({5, 5}));
    EXPECT_EQ((Options{1, 1, 1, 2}), optionsOf(ring));
}

TEST(CSplineTest, SavesFlagCountPointsThenOptions)
{
    Spline spline(Points{{1, 2}, {3, 4}});
    spline.setControlOption(1, 3);
    spline.setClosed(true);
    EXPECT_EQ("01"
              "02000000"
              "000000000000f03f000000000000004000000000"
              "0000000000000840000000000000104000000000"
              "0003",
              savedHex(spline));
}

TEST(CSplineTest, ReadBringsThePointsBackAndRefusesWildCounts)
{
    const std::string bytes = savedHex(level({1, 0, 3}));
    Spline read(0.5);
    EXPECT_TRUE(readHex(read, bytes));
    EXPECT_TRUE(read.isEqualTo(level({1, 0, 3}), 0.0));
    EXPECT_FALSE(readHex(read, "00ffffffff0000"));
    EXPECT_EQ(0U, read.numCtrlVerts());
}

TEST(CSplineTest, EqualityComparesPointsAndOptionsButNotTheFlag)
{
    Spline ring = level({0, 2, 0});
    ring.setClosed(true);
    EXPECT_TRUE(ring.isEqualTo(level({0, 2, 0}), 0.0));
    EXPECT_FALSE(ring.isEqualTo(level({0, 0, 0}), 1.0));
    EXPECT_FALSE(ring.isEqualTo(level({0, 2}), 1.0));
    EXPECT_FALSE(ring.isEqualTo(CVexGeLine2d(), 1.0));
    Spline moved = ring;
    moved.translateBy({0.5, 0});
    EXPECT_TRUE(moved.isEqualTo(ring, 0.5));
    EXPECT_FALSE(moved.isEqualTo(ring, 0.4));
}

TEST(CSplineTest, EditsMoveTheControlPoints)
{
    Spline spline = level({0, 0});
    spline.translateBy({0, 5}).rotateBy(std::numbers::pi / 2.0, {0, 0});
    EXPECT_POINT_NEAR(-5, 10, spline.pointAtParam(1.0), 1e-12);
    spline.scaleBy(2.0, {0, 0}).scaleBy(1.0, 0.5, {0, 0});
    EXPECT_POINT_NEAR(-10, 10, spline.pointAtParam(1.0), 1e-12);
    spline.mirror(CVexGeLine2d::kYAxis);
    EXPECT_POINT_NEAR(10, 10, spline.pointAtParam(1.0), 1e-12);
}

TEST(CSplineTest, MeasuresAreThoseOfTheChain)
{
    const Spline spline = level({1, 1, 1}); // two straight pieces
    EXPECT_EQ(0.75, spline.paramAtPoint({15, 0}, 0.001));
    EXPECT_EQ(-1.0, spline.paramAtPoint({15, 1}, 0.001));
    EXPECT_POINT(20, 0, spline.pointAtParam(0.9995)); // the end itself
    EXPECT_POINT_NEAR(0, -1, spline.normalAtParam(1.0), 1e-12);
    EXPECT_EQ(0.0, spline.curvatureAtParam(0.5));
    EXPECT_EQ(0.0, spline.curvatureAtPoint({5, 0}, 0.001));
    EXPECT_EQ(3.0, spline.distanceTo(CVexGePoint2d(5, 3), 0.001));
    EXPECT_POINT(5, 0, spline.pointAtDist(5.0));
    EXPECT_EQ(0.0, spline.length(0.5, 0.25, 0.001)); // only forward
    EXPECT_EQ(5.0, spline.length(0.25, 0.5, 0.001));
}

TEST(CSplineTest, AllKindsMeetItsChain)
{
    const Spline spline = level({1, 1, 1});
    int count = 0;
    Points out;
    EXPECT_TRUE(spline.intersectWith(CVexGeLine2d(CVexGePoint2d(5, 1), CVexGePoint2d(5, 2)), count,
                                     out, CVexGeEntity2d::kExtendArg, 1e-6));
    EXPECT_TRUE(spline.intersectWith(CVexGeCircArc2d({12, 0}, 1.0), count, out,
                                     CVexGeEntity2d::kExtendNone, 1e-6));
    EXPECT_EQ(3, count);
    EXPECT_TRUE(spline.intersectWith(CVexGePolyline2d(Points{{7, -1}, {7, 1}}), count, out,
                                     CVexGeEntity2d::kExtendNone, 1e-6));
    Spline upright = level({1, 1, 1});
    upright.rotateBy(std::numbers::pi / 2.0, {8, 0});
    EXPECT_TRUE(spline.intersectWith(upright, count, out, CVexGeEntity2d::kExtendNone, 1e-6));
    EXPECT_EQ(5, count);
    EXPECT_POINT_NEAR(8, 0, out[4], 1e-9);
}

namespace {

double within(int low, int high)
{
    return *rc::gen::inRange(low, high) / 100.0;
}

/// Points at least 2 apart in x, so none coincide.
Spline anySpline()
{
    Points points;
    Options options;
    double x = within(-5000, 5000);
    const int count = *rc::gen::inRange(2, 8);
    for (int i = 0; i < count; ++i) {
        points.emplace_back(x, within(-3000, 3000));
        options.push_back(static_cast<unsigned char>(*rc::gen::inRange(0, 4)));
        x += within(200, 2000);
    }
    Spline spline;
    spline.set(points, options);
    return spline;
}

} // namespace

RC_GTEST_PROP(CSplineProperty, MovingKeepsTheLength, ())
{
    Spline moved = anySpline();
    const double length = moved.length();
    // Pieces are counted by whole units of x and y: a quarter turn keeps them but for rounding.
    moved.translateBy({within(-900, 900), 3.0}).rotateBy(std::numbers::pi / 2.0, {1.0, 2.0});
    RC_ASSERT(std::fabs(moved.length() - length) < 0.02 * length);
}

RC_GTEST_PROP(CSplineProperty, ReverseTwiceIsTheIdentity, ())
{
    const Spline spline = anySpline();
    Spline twice = spline;
    twice.reverse();
    twice.reverse();
    RC_ASSERT(twice.isEqualTo(spline, 0.0));
}

RC_GTEST_PROP(CSplineProperty, PointAndParameterAnswerEachOther, ())
{
    const Spline spline = anySpline();
    const CVexGePoint2d on = spline.pointAtParam(within(0, 100));
    const double param = spline.paramAtPoint(on, 1e-6);
    RC_ASSERT(param >= 0.0);
    RC_ASSERT(spline.pointAtParam(param).distanceTo(on) <= 0.0011 * spline.length());
}

RC_GTEST_PROP(CSplineProperty, EveryControlPointStandsInTheCurve, ())
{
    const Spline spline = anySpline();
    Indices at;
    RC_ASSERT(spline.getControlPtIndex(at));
    RC_ASSERT(at.size() == spline.numCtrlVerts());
    RC_ASSERT(at.back() + 1 == spline.chain().numVerts());
}

RC_GTEST_PROP(CSplineProperty, AHitLiesOnBoth, ())
{
    const Spline spline = anySpline();
    const CVexGeLine2d across({within(-5000, 5000), -40.0},
                              CVexGePoint2d(within(-5000, 9000), 40.0));
    int count = 0;
    Points out;
    RC_PRE(spline.intersectWith(across, count, out, CVexGeEntity2d::kExtendNone, 1e-6));
    RC_ASSERT(spline.isOn(out[0], 1e-5));
    RC_ASSERT(across.isOn(out[0], 1e-5));
}
