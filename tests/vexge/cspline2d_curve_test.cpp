#include "tests/vexge/geasserts.h"
#include "vexge/geentity2d/vexgecspline2d.h"
#include "vexge/geentity2d/vexgecspline2d_curve.h"

#include <limits>

namespace {

using Points = std::vector<CVexGePoint2d>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

} // namespace

struct StepRow {
    const char* name;
    double divFactor;
    double x, y;
    int steps;
};

class SplineStepTest : public testing::TestWithParam<StepRow> {};

TEST_P(SplineStepTest, CountsWholeUnitsOfTheLongerSide)
{
    const StepRow& row = GetParam();
    EXPECT_EQ(row.steps, CSplineCurve(row.divFactor).stepsFor({row.x, row.y}));
}

INSTANTIATE_TEST_SUITE_P(
    Table, SplineStepTest,
    testing::Values(StepRow{"WithinOneUnit", 0.5, 0.3, 0.3, 0}, StepRow{"Wide", 0.5, 3.9, -1.2, 6},
                    StepRow{"Deep", 0.5, 2.5, -7.9, 14}, StepRow{"FractionDropped", 2.0, 7.0, 0, 3},
                    StepRow{"FactorZero", 0.0, 3.0, 0, 6}, StepRow{"FactorBelow", -4.0, 3.0, 0, 6},
                    StepRow{"FactorNan", kNan, 3.0, 0, 6}, StepRow{"ChordNan", 0.5, kNan, 2.0, 4},
                    StepRow{"Endless", 0.5, 1e300, 0, 2'000'000},
                    StepRow{"TinyFactor", 1e-300, 1.0, 0, 2'000'000}),
    [](const auto& row) { return row.param.name; });

TEST(SplineSpanTest, AShortSpanIsOneStraightPiece)
{
    CSplineCurve span(0.5);
    span.set({0.3, 0.3}, {5, 0}, {0, 5});
    Points out;
    span.generate({1, 1}, out, false);
    ASSERT_EQ(2U, out.size());
    EXPECT_POINT(1, 1, out[0]);
    EXPECT_POINT_NEAR(1.3, 1.3, out[1], 1e-12);
}

TEST(SplineSpanTest, TheTangentsBendTheMiddle)
{
    // At the middle the weights are 1/2, 1/8 and -1/8.
    CSplineCurve span(0.5);
    span.set({4, 0}, {4, 4}, {4, -4}, 2);
    Points out;
    span.generate({10, 0}, out, true); // without the start
    ASSERT_EQ(2U, out.size());
    EXPECT_POINT(12, 1, out[0]);
    EXPECT_POINT(14, 0, out[1]);
}

TEST(SplineSystemTest, TwoPointsHaveEqualTangents)
{
    CVexGeCSplineSystem system;
    system.generate(Points{{0, 0}, {8, 0}});
    EXPECT_EQ(2, system.count);
    EXPECT_EQ(1.0, system.ratio[0]);
    EXPECT_POINT(9, 0, system.mat[0]); // 9/8 of the chord after two rounds
    EXPECT_POINT(9, 0, system.mat[1]);
    EXPECT_POINT(9, 0, system.tangents[0]);
}

TEST(SplineSystemTest, FewerThanTwoPointsLeaveItAlone)
{
    CVexGeCSplineSystem system;
    system.generate(Points{{0, 0}});
    system.genClosed(Points{});
    EXPECT_EQ(0, system.count);
    EXPECT_TRUE(system.mat.empty());
}

TEST(SplineSystemTest, StopsAfterTwoRounds)
{
    // A corner with equal chords: 3/2, 3/4, 3/2 before the rounds. Solved to the end the middle
    // tangent would be 3/4 of the chords' sum, not 9/16.
    CVexGeCSplineSystem system;
    system.generate(Points{{0, 0}, {1, 0}, {1, 1}});
    EXPECT_EQ(4.0, system.diag[1]);
    EXPECT_EQ(1.0, system.superDiag[1]);
    EXPECT_POINT(1.3125, -0.1875, system.mat[0]);
    EXPECT_POINT(0.5625, 0.5625, system.mat[1]);
    EXPECT_POINT(-0.1875, 1.3125, system.mat[2]);
    EXPECT_POINT(-0.1875, 1.3125, system.tangents[1]);
}

TEST(SplineSystemTest, UnequalChordsWeighTheRows)
{
    CVexGeCSplineSystem system;
    system.generate(Points{{0, 0}, {2, 0}, {2, 1}});
    EXPECT_EQ(2.0, system.ratio[0]);
    EXPECT_EQ(1.0, system.ratio[1]);
    EXPECT_EQ(2.0, system.superDiag[0]);
    EXPECT_EQ(12.0, system.diag[1]);
    EXPECT_EQ(4.0, system.superDiag[1]);
    EXPECT_POINT(2.75, -0.5, system.mat[0]);
    EXPECT_POINT(0.375, 0.75, system.mat[1]);
    EXPECT_POINT(-0.125, 1.25, system.mat[2]);
    EXPECT_POINT(0.75, 1.5, system.tangents[0]);
}

TEST(SplineSystemTest, AClosedRunHasItsEndsAsNeighbours)
{
    CVexGeCSplineSystem system;
    system.genClosed(Points{{0, 0}, {2, 0}, {2, 1}, {0, 1}});
    EXPECT_EQ(4U, system.chords.size());
    EXPECT_POINT(0, -1, system.chords[3]);
    EXPECT_EQ(1.5, system.diag[0]);
    EXPECT_EQ(0.5, system.superDiag[0]);
    EXPECT_POINT_NEAR(43.0 / 36.0, -31.0 / 18.0, system.mat[0], 1e-12);
    EXPECT_POINT_NEAR(43.0 / 72.0, 31.0 / 36.0, system.mat[1], 1e-12);
    EXPECT_POINT_NEAR(-43.0 / 36.0, 31.0 / 18.0, system.mat[2], 1e-12);
    EXPECT_POINT_NEAR(43.0 / 72.0, -31.0 / 36.0, system.tangents[3], 1e-12); // half of mat[0]
}

TEST(CSplineCurveTest, TwoPointsMakeAStraightSpan)
{
    const CVexGeCSpline2d spline(Points{{0, 0}, {10, 0}});
    Points* curve = nullptr;
    ASSERT_EQ(21, spline.getCurve(curve));
    EXPECT_POINT(0, 0, curve->front());
    EXPECT_POINT_NEAR(2.6171875, 0, (*curve)[5], 1e-12); // closer together towards the ends
    EXPECT_POINT_NEAR(5, 0, (*curve)[10], 1e-12);
    EXPECT_POINT_NEAR(10, 0, curve->back(), 1e-12);
    EXPECT_NEAR(10.0, spline.length(), 1e-12);
}

TEST(CSplineCurveTest, PassesThroughItsPointsSpanBySpan)
{
    const CVexGeCSpline2d spline(Points{{0, 0}, {10, 0}, {10, 10}});
    Points* curve = nullptr;
    ASSERT_EQ(41, spline.getCurve(curve));
    EXPECT_POINT_NEAR(10, 0, (*curve)[20], 1e-12);
    // The middle of the first span: half the chord, an eighth of the tangents' difference.
    EXPECT_POINT_NEAR(5.0 + (13.125 - 5.625) / 8.0, (-1.875 - 5.625) / 8.0, (*curve)[10], 1e-12);
}

TEST(CSplineCurveTest, ACornerBreaksItIntoRunsSolvedAlone)
{
    CVexGeCSpline2d spline(Points{{0, 0}, {10, 5}, {20, 0}, {30, 5}, {40, 0}});
    spline.setControlOption(2, CVexGeCSpline2d::kCorner);
    Points* curve = nullptr;
    ASSERT_EQ(81, spline.getCurve(curve));
    const CVexGeCSpline2d alone(Points{{0, 0}, {10, 5}, {20, 0}});
    Points* half = nullptr;
    ASSERT_EQ(41, alone.getCurve(half));
    for (std::size_t i = 0; i < 41; ++i) {
        EXPECT_POINT_NEAR((*half)[i].x, (*half)[i].y, (*curve)[i], 1e-12);
        EXPECT_POINT_NEAR((*half)[i].x + 20.0, (*half)[i].y, (*curve)[i + 40], 1e-12);
    }
}

TEST(CSplineCurveTest, ARunOfTwoPointsIsAStraightPiece)
{
    CVexGeCSpline2d spline(Points{{0, 0}, {10, 0}, {10, 10}});
    spline.setControlOption(1, CVexGeCSpline2d::kCorner);
    Points* curve = nullptr;
    ASSERT_EQ(3, spline.getCurve(curve));
    EXPECT_POINT(10, 0, (*curve)[1]);
    EXPECT_EQ(20.0, spline.length());
}

TEST(CSplineCurveTest, AClosedOneReturnsToItsStart)
{
    CVexGeCSpline2d ring(Points{{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    ring.setClosed(true);
    Points* curve = nullptr;
    ASSERT_EQ(81, ring.getCurve(curve));
    EXPECT_POINT_NEAR(0, 0, curve->back(), 1e-12);
    // Tangents of 3/4 (1, -1) and 3/4 (1, 1) chords: the side swells out by 1/8 of the difference.
    EXPECT_POINT_NEAR(5, -10.0 * 1.5 / 8.0, (*curve)[10], 1e-12);
}

TEST(CSplineCurveTest, TheFlagDecidesAndNotEndsThatMeet)
{
    CVexGeCSpline2d ring(Points{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0.01}});
    EXPECT_TRUE(ring.closed());
    ring.generate();
    EXPECT_EQ(4U, ring.system().chords.size()); // solved as an open run
    ring.setClosed(true);
    ring.generate();
    EXPECT_EQ(5U, ring.system().chords.size()); // 0.01 apart, so the last point stays
}

TEST(CSplineCurveTest, AClosedOneWithACornerEndsItsLastRunAtTheFirstPoint)
{
    CVexGeCSpline2d ring(Points{{0, 0}, {10, 0}, {10, 10}});
    ring.setClosed(true);
    ring.setControlOption(1, CVexGeCSpline2d::kCorner);
    ring.setControlOption(2, CVexGeCSpline2d::kCorner);
    Points* curve = nullptr;
    ASSERT_EQ(4, ring.getCurve(curve));
    EXPECT_POINT(0, 0, (*curve)[3]);
}

TEST(CSplineCurveTest, IsKeptUntilTheControlDataChanges)
{
    CVexGeCSpline2d spline(Points{{0, 0}, {10, 5}, {20, 0}});
    const CVexGePoint2d* first = spline.chain().vertices().data();
    spline.paramAtPoint({10, 5}, 0.001);
    spline.genCurve();
    EXPECT_EQ(first, spline.chain().vertices().data());
    EXPECT_NEAR(20.0, spline.pointAtParam(1.0).x, 1e-12);
    spline.setPointAt(2, {30, 0}, 0);
    EXPECT_NEAR(30.0, spline.pointAtParam(1.0).x, 1e-12);
    spline.setControlOption(1, CVexGeCSpline2d::kCorner);
    EXPECT_EQ(3U, spline.chain().numVerts());
    spline.removeCtrlPtAt(2);
    EXPECT_NEAR(10.0, spline.pointAtParam(1.0).x, 1e-12);
}

TEST(CSplineCurveTest, WithoutTwoPointsEveryMeasureFails)
{
    CVexGeCSpline2d spline(Points{{3, 3}});
    Points* curve = nullptr;
    CVexGePolyline2d chain(Points{{1, 1}});
    CVexGeVector2d way(7, 7);
    EXPECT_FALSE(spline.genCurve());
    EXPECT_EQ(0, spline.getCurve(curve));
    EXPECT_EQ(nullptr, curve);
    EXPECT_FALSE(spline.getGePolyline(chain));
    EXPECT_EQ(1U, chain.numVerts());
    EXPECT_EQ(-1.0, spline.length());
    EXPECT_EQ(-1.0, spline.paramAtPoint({3, 3}, 1.0));
    EXPECT_POINT(0, 0, spline.pointAtParam(0.5));
    EXPECT_FALSE(spline.perpVecFromPoint({1, 1}, way, 0.1));
    EXPECT_POINT(7, 7, way);
}

TEST(CSplineCurveTest, PartsOfItIncludeBothEnds)
{
    const CVexGeCSpline2d spline(Points{{0, 0}, {10, 0}});
    CVexGePolyline2d part;
    EXPECT_TRUE(spline.getSubGePolyline(part, 5, 10));
    ASSERT_EQ(6U, part.numVerts());
    EXPECT_POINT_NEAR(2.6171875, 0, part.vertices()[0], 1e-12);
    EXPECT_POINT_NEAR(5, 0, part.vertices()[5], 1e-12);
    EXPECT_TRUE(spline.getSubGePolyline(part, -5, 999));
    EXPECT_EQ(21U, part.numVerts());
    EXPECT_FALSE(CVexGeCSpline2d(0.5).getSubGePolyline(part, 0, 1));
    EXPECT_EQ(21U, part.numVerts());
}

TEST(CSplineHostileTest, WildPointsTakeBoundedTimeAndMemory)
{
    const double inf = std::numeric_limits<double>::infinity();
    for (const double wild : {kNan, inf, -inf, 1e300}) {
        CVexGeCSpline2d spline(Points{{0, 0}, {wild, 1}, {2, wild}, {3, 3}});
        EXPECT_GE(2'000'010U, spline.chain().numVerts()) << wild;
        std::vector<unsigned long> at;
        EXPECT_TRUE(spline.getControlPtIndex(at));
        spline.addRealControlPoint({1, 1});
        CVexGePolyline2d out;
        spline.getOffsetPolyline(out, 0.0);
        EXPECT_GE(50U, out.numVerts()) << wild;
    }
}

TEST(CSplineHostileTest, CoincidentPointsMakeNoCurveButAnAnswer)
{
    CVexGeCSpline2d spline(Points{{1, 1}, {1, 1}, {1, 1}, {1, 1}});
    CVexGeVector2d way;
    EXPECT_EQ(4U, spline.chain().numVerts());
    EXPECT_FALSE(spline.perpVecFromPoint({5, 5}, way, 0.1));
    EXPECT_TRUE(spline.offset({5, 5}, 1.0));
    spline.setClosed(true);
    EXPECT_FALSE(spline.isInsidePoint({1, 1}));
}
