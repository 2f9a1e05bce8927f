#include "tests/vexge/geasserts.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgecspline2d.h"
#include "vexge/geentity2d/vexgeline2d.h"

#include <cmath>
#include <numbers>

namespace {

using Spline = CVexGeCSpline2d;
using Points = Spline::PointList;
using Options = Spline::OptionList;

constexpr double kPi = std::numbers::pi;

Spline made(const Points& points, const Options& options)
{
    Spline spline;
    spline.set(points, options);
    return spline;
}

void expectControl(const Spline& spline, const Points& points, const Options& options,
                   double tol = 1e-9)
{
    ASSERT_EQ(points.size(), spline.numCtrlVerts());
    for (unsigned i = 0; i < spline.numCtrlVerts(); ++i) {
        CVexGePoint2d point;
        unsigned char option = 0;
        spline.getCtrlPtAt(i, point, option);
        EXPECT_POINT_NEAR(points[i].x, points[i].y, point, tol);
        EXPECT_EQ(options[i], option) << "option of point " << i;
    }
}

} // namespace

struct JoinRow {
    const char* name;
    Points other;
    Options otherOptions;
    bool joins;
    int index;
    Points points;
    Options options;
};

class CSplineJoinTest : public testing::TestWithParam<JoinRow> {};

TEST_P(CSplineJoinTest, TakesTheFirstPairOfEndsThatMeet)
{
    const JoinRow& row = GetParam();
    Spline spline = made({{0, 0}, {10, 0}}, {3, 2});
    const Spline other = made(row.other, row.otherOptions);
    int index = -7;
    EXPECT_EQ(row.joins, spline.appendCSpline(&other, index));
    EXPECT_EQ(row.index, index);
    expectControl(spline, row.points, row.options);
    EXPECT_EQ(row.other.size(), other.numCtrlVerts());
}

INSTANTIATE_TEST_SUITE_P(
    Table, CSplineJoinTest,
    testing::Values(
        JoinRow{"LastToFirst",
                {{10.019, 0}, {20, 1}, {30, 2}},
                {1, 0, 3},
                true,
                2,
                {{0, 0}, {10, 0}, {20, 1}, {30, 2}},
                {3, 2, 0, 3}},
        JoinRow{"LastToLast",
                {{30, 2}, {20, 1}, {10, 0.019}},
                {1, 0, 3},
                true,
                2,
                {{0, 0}, {10, 0}, {20, 1}, {30, 2}},
                {3, 2, 0, 1}},
        JoinRow{"FirstToFirst",
                {{0, 0}, {-5, 1}, {-9, 2}},
                {3, 0, 1},
                true,
                0,
                {{-9, 2}, {-5, 1}, {0, 0}, {10, 0}},
                {1, 0, 3, 2}},
        JoinRow{"FirstToLast",
                {{-9, 2}, {-5, 1}, {0, 0}},
                {1, 0, 0},
                true,
                0,
                {{-9, 2}, {-5, 1}, {0, 0}, {10, 0}},
                {1, 0, 3, 2}},
        JoinRow{"LastBeforeFirst",
                {{0, 0}, {5, 5}, {10, 0}},
                {0, 2, 0},
                true,
                2,
                {{0, 0}, {10, 0}, {5, 5}, {0, 0}},
                {3, 2, 2, 0}},
        JoinRow{"Apart", {{10.021, 0}, {20, 1}}, {0, 0}, false, -7, {{0, 0}, {10, 0}}, {3, 2}}),
    [](const auto& row) { return row.param.name; });

TEST(CSplineAppendTest, ClosedSplinesDoNotJoin)
{
    Spline ring = made({{0, 0}, {10, 0}, {5, 5}}, {0, 0, 0});
    ring.setClosed(true);
    Spline open = made({{10, 0}, {20, 0}}, {0, 0});
    int index = -7;
    EXPECT_FALSE(open.appendCSpline(&ring, index));
    EXPECT_FALSE(ring.appendCSpline(&open, index));
    EXPECT_EQ(-7, index);
    EXPECT_FALSE(Spline(0.5).appendCSpline(&open, index));
}

TEST(CSplineAppendTest, ItselfIsJoinedEndToEnd)
{
    Spline spline = made({{0, 0}, {10, 0}, {20, 5}}, {1, 0, 2});
    int index = -7;
    EXPECT_TRUE(spline.appendCSpline(&spline, index));
    expectControl(spline, {{0, 0}, {10, 0}, {20, 5}, {10, 0}, {0, 0}}, {1, 0, 2, 0, 1});
    EXPECT_EQ(2, index);
}

TEST(CSplineAppendTest, ALineEndsInARealCorner)
{
    Spline spline = made({{0, 0}, {10, 0}}, {0, 0});
    const CVexGeLine2d ahead(CVexGePoint2d(20, 5), CVexGePoint2d(10, 0));
    const CVexGeLine2d before(CVexGePoint2d(0, 0), CVexGePoint2d(-5, 5));
    const CVexGeLine2d apart(CVexGePoint2d(50, 0), CVexGePoint2d(60, 0));
    int index = -7;
    EXPECT_TRUE(spline.appendCSpline(&ahead, index));
    EXPECT_EQ(2, index);
    EXPECT_TRUE(spline.appendCSpline(&before, index));
    EXPECT_EQ(0, index);
    EXPECT_FALSE(spline.appendCSpline(&apart, index));
    expectControl(spline, {{-5, 5}, {0, 0}, {10, 0}, {20, 5}}, {3, 0, 0, 3});
}

TEST(CSplineAppendTest, AnArcOfSixtyDegreesHasFourPieces)
{
    const CVexGeCircArc2d arc({0, 0}, 10.0, 0.0, kPi / 3.0);
    Spline spline = made({{20, 0}, {10, 0}}, {0, 0});
    int index = -7;
    EXPECT_TRUE(spline.appendCSpline(&arc, index));
    EXPECT_EQ(5, index);
    const auto on = [](double degrees) {
        return CVexGePoint2d(10.0 * std::cos(degrees * kPi / 180.0),
                             10.0 * std::sin(degrees * kPi / 180.0));
    };
    expectControl(spline, {{20, 0}, {10, 0}, on(15), on(30), on(45), on(60)}, {0, 0, 0, 0, 0, 3});
}

TEST(CSplineAppendTest, SixtyDegreesFromAnyAngleHaveFourPieces)
{
    for (const double start : {0.1, kPi / 6.0, 1.0, 2.0}) {
        const CVexGeCircArc2d arc({0, 0}, 10.0, start, start + kPi / 3.0);
        Spline spline = made({{50, 0}, arc.startPoint()}, {0, 0});
        int index = 0;
        EXPECT_TRUE(spline.appendCSpline(&arc, index));
        EXPECT_EQ(6U, spline.numCtrlVerts()) << start;
    }
}

TEST(CSplineAppendTest, AnArcIsWalkedFromTheEndThatMeets)
{
    const CVexGeCircArc2d arc({0, 0}, 10.0, 0.0, kPi / 6.0);
    const CVexGePoint2d middle(10.0 * std::cos(kPi / 12.0), 10.0 * std::sin(kPi / 12.0));
    Spline after = made({{0, 9}, arc.endPoint()}, {0, 0});
    Spline ahead = made({{10, 0}, {20, 0}}, {0, 0});
    int index = -7;
    EXPECT_TRUE(after.appendCSpline(&arc, index));
    expectControl(after, {{0, 9}, arc.endPoint(), middle, {10, 0}}, {0, 0, 0, 3});
    EXPECT_TRUE(ahead.appendCSpline(&arc, index));
    EXPECT_EQ(0, index);
    expectControl(ahead, {arc.endPoint(), middle, {10, 0}, {20, 0}}, {3, 0, 0, 0});
}

TEST(CSplineAppendTest, AnArcOverAngleZeroHasTwoPieces)
{
    // Half a turn would be twelve pieces, but the plain difference of its angles is negative.
    const CVexGeCircArc2d arc({0, 0}, 10.0, 1.5 * kPi, 0.5 * kPi);
    Spline spline = made({{0, -20}, {0, -10}}, {0, 0});
    int index = -7;
    EXPECT_TRUE(spline.appendCSpline(&arc, index));
    expectControl(spline, {{0, -20}, {0, -10}, {10, 0}, {0, 10}}, {0, 0, 0, 3});
}

TEST(CSplineAppendTest, AWildArcIsBounded)
{
    const CVexGeCircArc2d arc({0, 0}, 10.0, 0.0, 1e12);
    Spline spline = made({{20, 0}, {10, 0}}, {0, 0});
    int index = 0;
    EXPECT_TRUE(spline.appendCSpline(&arc, index));
    EXPECT_EQ(10'002U, spline.numCtrlVerts());
}

TEST(CSplineOffsetTest, ASpanIsCutByTheDistanceIntoSixAtMost)
{
    Spline fine = made({{0, 0}, {12, 0}}, {2, 2});
    CVexGePolyline2d out;
    fine.getOffsetPolyline(out, 0.1);
    ASSERT_EQ(7U, out.numVerts());
    EXPECT_POINT_NEAR(2, 0, out.vertices()[1], 1e-9);
    expectControl(fine, {{0, 0}, {2, 0}, {4, 0}, {6, 0}, {8, 0}, {10, 0}, {12, 0}},
                  {2, 0, 0, 0, 0, 0, 2});
    Spline coarse = made({{0, 0}, {12, 0}}, {2, 2});
    coarse.getOffsetPolyline(out, 5.0); // trunc(2.4) + 1
    expectControl(coarse, {{0, 0}, {4, 0}, {8, 0}, {12, 0}}, {2, 0, 0, 2});
}

TEST(CSplineOffsetTest, GeneratedPointsGiveWayAtParametersOfTheOldCurve)
{
    // Straight runs between corners. The point at 20 goes; the last point is at 30 / 40 of the
    // old length with it, and its span is cut on the old curve, over the bend at (20, 0).
    Spline spline = made({{0, 0}, {10, 0}, {20, 0}, {20, 20}}, {2, 1, 0, 2});
    const double before = spline.length();
    const CVexGePoint2d middle = spline.pointAtParam((10.0 / before + 1.0) / 2.0);
    CVexGePolyline2d out;
    spline.getOffsetPolyline(out, before - 10.0 - 0.1); // two parts of the second span
    expectControl(spline, {{0, 0}, {10, 0}, middle, {20, 20}}, {2, 1, 0, 2});
}

TEST(CSplineOffsetTest, AClosedOneFillsTheGapBehindItsLastPoint)
{
    Spline ring = made({{0, 0}, {12, 0}, {12, 12}, {0, 12}}, {3, 3, 3, 3});
    ring.setClosed(true);
    CVexGePolyline2d out;
    ring.getOffsetPolyline(out, 8.0); // two parts each
    EXPECT_TRUE(out.isClosed());
    expectControl(ring, {{0, 0}, {6, 0}, {12, 0}, {12, 6}, {12, 12}, {6, 12}, {0, 12}, {0, 6}},
                  {3, 0, 3, 0, 3, 0, 3, 0});
}

TEST(CSplineOffsetTest, PointsNearerThanAHalfGo)
{
    Spline spline = made({{0, 0}, {0.4, 0}, {0.9, 0}, {9, 0}, {9.4, 0}}, {3, 3, 3, 3, 3});
    CVexGePolyline2d out;
    spline.getOffsetPolyline(out, 100.0);
    expectControl(spline, {{0, 0}, {0.9, 0}, {9, 0}}, {3, 3, 3});
    Spline ring = made({{0, 0}, {9, 0}, {9, 9}, {0, 0.4}}, {3, 3, 3, 3});
    ring.setClosed(true);
    ring.getOffsetPolyline(out, 100.0);
    expectControl(ring, {{0, 0}, {9, 0}, {9, 9}}, {3, 3, 3});
}

TEST(CSplineOffsetTest, TakesTheVerticesOfThePolygonsOffset)
{
    Spline spline = made({{0, 0}, {10, 0}}, {3, 2});
    EXPECT_TRUE(spline.offset({4, 5}, 2.0));
    ASSERT_LE(2U, spline.numCtrlVerts());
    CVexGePoint2d first, last;
    spline.getCtrlPtAt(0, first);
    spline.getCtrlPtAt(spline.numCtrlVerts() - 1, last);
    EXPECT_POINT_NEAR(0, 2, first, 1e-6);
    EXPECT_POINT_NEAR(10, 2, last, 1e-6);
    EXPECT_EQ(3, spline.getCtrlOption(0)); // stays at its index
    EXPECT_NEAR(10.0, spline.length(), 1e-6);
}

TEST(CSplineOffsetTest, IsTrueAlsoWhenThereIsNone)
{
    Spline single = made({{3, 3}}, {2});
    EXPECT_TRUE(single.offset({5, 5}, 2.0));
    expectControl(single, {{3, 3}}, {2});
    Spline ring = made({{0, 0}, {4, 0}, {4, 4}, {0, 4}}, {3, 3, 3, 3});
    ring.setClosed(true);
    EXPECT_TRUE(ring.offset({2, 2}, 50.0)); // nothing is left of the square
    expectControl(ring, {{0, 0}, {4, 0}, {4, 4}, {0, 4}}, {3, 3, 3, 3});
}

TEST(CSplineOffsetTest, OptionsFollowTheCountAndNothingElse)
{
    Spline spline = made({{0, 0}, {20, 0}, {20, 20}}, {2, 3, 2});
    EXPECT_TRUE(spline.offset({40, -10}, 1.0));
    for (unsigned i = 0; i < spline.numCtrlVerts(); ++i) {
        spline.setControlOption(i, 0); // one for each point
    }
    EXPECT_TRUE(spline.genCurve());
}

TEST(CSplineOffsetTest, ThePolygonFormHasTheControlPoints)
{
    Spline ring = made({{0, 0}, {4, 0}, {4, 4}}, {0, 0, 0});
    ring.setClosed(true);
    CVexGePolyline2d polygon;
    ring.asPolyline(polygon);
    EXPECT_EQ(3U, polygon.numVerts());
    EXPECT_TRUE(polygon.isClosed());
    EXPECT_EQ(0.0, polygon.getBulgeAt(1));
}
