#include "tests/vexge/geasserts.h"
#include "tests/vexge/gebytes.h"
#include "vexge/geentity3d/vexgeplane.h"
#include "vexge/geentity3d/vexgepolyline3d.h"

#include <numbers>

namespace {

using Point = CVexGePoint3d;
using Polyline = CVexGePolyline3d;
using Entity = CVexGeEntity3d;

/// Along x, up, and back: lengths 4, 3, 4.
Polyline uShape()
{
    return Polyline({{0, 0, 0}, {4, 0, 0}, {4, 0, 3}, {0, 0, 3}});
}

void expectVertices(const std::vector<Point>& expected, const Polyline& chain)
{
    ASSERT_EQ(expected.size(), chain.numVerts());
    for (unsigned i = 0; i < chain.numVerts(); ++i) {
        Point vertex;
        EXPECT_TRUE(chain.getPointAt(i, vertex));
        EXPECT_POINT3D_NEAR(expected[i].x, expected[i].y, expected[i].z, vertex, 1e-14);
    }
}

} // namespace

TEST(Polyline3dTest, VerticesAreAppendedInsertedAndRemoved)
{
    Polyline chain;
    EXPECT_TRUE(chain.appendVertex({1, 0, 0}));
    EXPECT_TRUE(chain.addVertexAt(0, {0, 0, 0}));
    EXPECT_TRUE(chain.addVertexAt(2, {2, 0, 0})); // the count appends
    EXPECT_FALSE(chain.addVertexAt(4, {9, 9, 9}));
    expectVertices({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, chain);
    chain.setSize(8);
    EXPECT_EQ(0U, chain.numVerts());
    Point kept(7, 7, 7);
    EXPECT_FALSE(chain.getPointAt(0, kept));
    EXPECT_POINT3D_NEAR(7, 7, 7, kept, 0);
}

TEST(Polyline3dTest, RemovalTakesARangeAndALastOfZeroMeansOne)
{
    Polyline chain = uShape();
    EXPECT_FALSE(chain.removeVertexAt(3, 2));
    EXPECT_FALSE(chain.removeVertexAt(4, 9));
    EXPECT_FALSE(chain.removeVertexAt(-1, 0));
    EXPECT_TRUE(chain.removeVertexAt(3, 0));
    expectVertices({{0, 0, 0}, {4, 0, 0}, {4, 0, 3}}, chain);
    EXPECT_TRUE(chain.removeVertexAt(1, 9));
    expectVertices({{0, 0, 0}}, chain);
}

TEST(Polyline3dTest, ReverseTwiceIsTheSame)
{
    Polyline chain = uShape();
    chain.reverse();
    expectVertices({{0, 0, 3}, {4, 0, 3}, {4, 0, 0}, {0, 0, 0}}, chain);
    chain.reverse();
    EXPECT_TRUE(chain == uShape());
}

TEST(Polyline3dTest, ANewStartNeedsAClosedChain)
{
    Polyline chain = uShape();
    EXPECT_FALSE(chain.changeStart(1));
    EXPECT_FALSE(chain.changeStart(4));
    chain.setClosed(true);
    EXPECT_TRUE(chain.changeStart(1));
    expectVertices({{4, 0, 0}, {4, 0, 3}, {0, 0, 3}, {0, 0, 0}}, chain);
    EXPECT_TRUE(chain.changeStart(3)); // the last one reverses
    expectVertices({{0, 0, 0}, {0, 0, 3}, {4, 0, 3}, {4, 0, 0}}, chain);
}

TEST(Polyline3dTest, ANewStartOfAReturningChainReturnsToIt)
{
    Polyline chain({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 0, 0}});
    EXPECT_TRUE(chain.changeStart(1));
    expectVertices({{1, 0, 0}, {1, 1, 0}, {0, 0, 0}, {1, 0, 0}}, chain);
    EXPECT_FALSE(chain.isClosed());
    EXPECT_TRUE(chain.closed());
}

TEST(Polyline3dTest, ClosedAsksTheFlagOrTheGap)
{
    Polyline chain({{0, 0, 0}, {1, 0, 0}, {0, 0, 0.25}});
    EXPECT_FALSE(chain.closed(0.25));
    EXPECT_TRUE(chain.closed(0.26));
    chain.setClosed(true);
    EXPECT_TRUE(chain.closed(0.0));
    EXPECT_FALSE(Polyline().closed());
}

namespace {

struct JoinRow {
    const char* name;
    std::vector<Point> other;
    int index;
    std::vector<Point> joined;
};

class Polyline3dJoinTest : public testing::TestWithParam<JoinRow> {};

} // namespace

TEST_P(Polyline3dJoinTest, JoinsTheFirstEndsThatMeet)
{
    const JoinRow& row = GetParam();
    Polyline chain({{0, 0, 0}, {1, 0, 0}});
    const Polyline other(row.other);
    int index = -7;
    ASSERT_EQ(!row.joined.empty(), chain.appendPolyline(&other, index));
    EXPECT_EQ(row.index, index);
    if (!row.joined.empty()) {
        expectVertices(row.joined, chain);
    }
}

INSTANTIATE_TEST_SUITE_P(Table, Polyline3dJoinTest,
                         testing::Values(JoinRow{"LastToFirst",
                                                 {{1, 0, 0}, {2, 0, 0}, {3, 0, 0}},
                                                 2,
                                                 {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}},
                                         JoinRow{"LastToLast",
                                                 {{3, 0, 0}, {2, 0, 0}, {1, 0, 0}},
                                                 2,
                                                 {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}},
                                         JoinRow{"FirstToFirst",
                                                 {{0, 0, 0}, {0, 1, 0}, {0, 2, 0}},
                                                 0,
                                                 {{0, 2, 0}, {0, 1, 0}, {0, 0, 0}, {1, 0, 0}}},
                                         JoinRow{"FirstToLast",
                                                 {{0, 2, 0}, {0, 1, 0}, {0, 0, 0}},
                                                 0,
                                                 {{0, 2, 0}, {0, 1, 0}, {0, 0, 0}, {1, 0, 0}}},
                                         JoinRow{"Apart", {{5, 5, 5}, {6, 6, 6}}, -7, {}}),
                         [](const auto& row) { return row.param.name; });

TEST(Polyline3dTest, ALineJoinsAClosedChainToo)
{
    Polyline chain({{0, 0, 0}, {1, 0, 0}});
    chain.setClosed(true);
    int index = -7;
    const Polyline other({{1, 0, 0}, {2, 0, 0}});
    EXPECT_FALSE(chain.appendPolyline(&other, index));
    const CVexGeLine3d end(Point(2, 0, 0), Point(1, 0, 0)), front(Point(0, 0, 0), Point(0, 9, 0));
    EXPECT_TRUE(chain.appendPolyline(&end, index));
    EXPECT_EQ(2, index);
    EXPECT_TRUE(chain.appendPolyline(&front, index));
    EXPECT_EQ(0, index);
    expectVertices({{0, 9, 0}, {0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, chain);
    EXPECT_TRUE(chain.isClosed());
}

TEST(Polyline3dTest, SegmentsKnowTheirPoints)
{
    Polyline chain = uShape();
    CVexGeLine3d segment;
    EXPECT_TRUE(chain.getLineSegAt(1, segment));
    EXPECT_POINT3D_NEAR(4, 0, 3, segment.end(), 0);
    EXPECT_FALSE(chain.getLineSegAt(3, segment));
    chain.setClosed(true);
    EXPECT_TRUE(chain.getLineSegAt(3, segment));
    EXPECT_POINT3D_NEAR(0, 0, 0, segment.end(), 0);
    double param = -7;
    EXPECT_TRUE(chain.onSegAt(0, {1, 0, 0}, param));
    EXPECT_EQ(0.25, param);
    EXPECT_EQ(1, chain.isOnSegAt({4, 0, 2}));
    EXPECT_EQ(-1, chain.isOnSegAt({4, 1, 2}));
    EXPECT_TRUE(chain.isOn({0, 0, 1}) && !chain.isOn({1, 0, 1}));
}

TEST(Polyline3dTest, LengthsAndParametersAreSharesOfTheWhole)
{
    const Polyline chain = uShape();
    EXPECT_EQ(11.0, chain.length());
    EXPECT_NEAR(5.5, chain.length(0.25, 0.75), 1e-14);
    EXPECT_EQ(0.0, chain.length(0.75, 0.25));
    EXPECT_NEAR(5.5 / 11, chain.paramAtPoint({4, 0, 1.5}), 1e-15);
    EXPECT_EQ(-1.0, chain.paramAtPoint({4, 1, 1.5}));
    EXPECT_EQ(1.0, chain.paramAtDist(0.5, 50, true));
    EXPECT_EQ(0.0, chain.paramAtDist(0.5, 50, false));
    EXPECT_EQ(5.5, chain.distAtParam(0.5));
    EXPECT_NEAR(5.5, chain.distAtPoint({4, 0, 1.5}), 1e-14);
}

TEST(Polyline3dTest, PointsAtParameters)
{
    Polyline chain = uShape();
    EXPECT_POINT3D_NEAR(4, 0, 1.5, chain.pointAtParam(0.5), 1e-14);
    EXPECT_POINT3D_NEAR(0, 0, 3, chain.pointAtParam(0.9995), 0); // within 0.001 of the end
    EXPECT_POINT3D_NEAR(3, 0, 3, chain.pointAtDist(8), 1e-14);
    EXPECT_POINT3D_NEAR(0, 0, 0, chain.pointAtParam(2), 0);
    chain.setClosed(true);
    EXPECT_POINT3D_NEAR(0, 0, 0, chain.pointAtParam(1), 0);
    EXPECT_POINT3D_NEAR(0, 0, 0, Polyline().pointAtParam(1), 0);
}

TEST(Polyline3dTest, SegmentParametersAnswerEachOther)
{
    const Polyline chain = uShape();
    EXPECT_NEAR(5.5 / 11, chain.paramAtSegParam(1, 0.5), 1e-15);
    EXPECT_EQ(-1.0, chain.paramAtSegParam(3, 0.5));
    int segment = -7;
    EXPECT_NEAR(0.5, chain.segParamAtParam(0.5, segment), 1e-14);
    EXPECT_EQ(1, segment);
    EXPECT_EQ(-1.0, Polyline({{0, 0, 0}}).segParamAtParam(0.5, segment));
    EXPECT_EQ(0, segment);
}

TEST(Polyline3dTest, NormalsLieInThePlane)
{
    const Polyline chain({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}});
    const CVexGePlane& level = CVexGePlane::kXYPlane;
    EXPECT_POINT3D_NEAR(0, -1, 0, chain.normalAtSegment(0, level), 0);
    EXPECT_POINT3D_NEAR(1, 0, 0, chain.normalAtParam(1.0, level), 0);
    EXPECT_POINT3D_NEAR(0, -1, 0, chain.normalAtPoint({1, 0, 0}, level), 0);
    EXPECT_POINT3D_NEAR(0, 0, 0, chain.normalAtSegment(2, level), 0);
}

TEST(Polyline3dTest, NearestPointsOfTheEarliestSegment)
{
    const Polyline chain = uShape();
    int segment = -7;
    EXPECT_POINT3D_NEAR(2, 0, 3, chain.closestPointTo(Point(2, 0, 5), segment), 0);
    EXPECT_EQ(2, segment);
    EXPECT_POINT3D_NEAR(1, 0, 0, chain.closestPointTo(Point(1, 0, 1.5), segment), 0); // a tie
    EXPECT_EQ(0, segment);
    EXPECT_EQ(2.0, chain.distanceTo(Point(2, 0, 5)));
    Point there;
    const CVexGeLine3d beside(Point(6, -1, 1), Point(6, 1, 1));
    EXPECT_POINT3D_NEAR(4, 0, 1, chain.closestPointTo(beside, there), 0);
    EXPECT_POINT3D_NEAR(6, 0, 1, there, 0);
    EXPECT_EQ(2.0, chain.distanceTo(beside));
}

TEST(Polyline3dTest, PerpendicularPrefersAFootOnTheChain)
{
    const Polyline chain = uShape();
    CVexGeVector3d across;
    EXPECT_TRUE(chain.perpVecFromPoint({3.5, 0, 1}, across));
    EXPECT_POINT3D_NEAR(-0.5, 0, 0, across, 1e-15); // the upright is nearer than the first
    EXPECT_TRUE(chain.perpVecFromPoint({9, 0, 0.5}, across));
    EXPECT_POINT3D_NEAR(5, 0, 0, across, 1e-15); // not the 0.5 to a foot beyond the first
    EXPECT_FALSE(Polyline().perpVecFromPoint({1, 1, 1}, across));
}

TEST(Polyline3dTest, MeetsAPlaneOnceAtAVertex)
{
    const Polyline chain = uShape();
    std::vector<Point> points;
    int count = 0;
    EXPECT_TRUE(chain.intersectWith(CVexGePlane(1, 0, 0, -4), count, points, Entity::kExtendNone));
    ASSERT_EQ(2, count); // the first vertex on it, then the upright's own start merged, its end
    EXPECT_POINT3D_NEAR(4, 0, 0, points[0], 0);
    EXPECT_POINT3D_NEAR(4, 0, 3, points[1], 0);
    points.clear();
    EXPECT_FALSE(chain.intersectWith(CVexGePlane(1, 0, 0, -9), count, points, Entity::kExtendNone));
    EXPECT_EQ(0, count);
}

TEST(Polyline3dTest, EditsActOnEveryVertex)
{
    Polyline chain({{1, 0, 2}, {3, 0, 2}});
    chain.translateBy({0, 1, 0}).scaleBy(2, {0, 0, 0});
    expectVertices({{2, 2, 4}, {6, 2, 4}}, chain);
    chain.scaleBy(1, 2, 3, {0, 0, 0}).rotateBy(std::numbers::pi / 2, CVexGeLine3d::kZAxis);
    expectVertices({{-4, 2, 12}, {-4, 6, 12}}, chain);
    chain.mirror(CVexGePlane::kXYPlane);
    expectVertices({{-4, 2, -12}, {-4, 6, -12}}, chain);
}

TEST(Polyline3dTest, EqualityAsksFlagCountAndVertices)
{
    Polyline other = uShape();
    EXPECT_TRUE(uShape() == other && uShape().isEqualTo(other, 0.0));
    other.translateBy({0.25, 0, 0});
    EXPECT_TRUE(uShape() != other && uShape().isEqualTo(other, 0.25));
    EXPECT_FALSE(uShape().isEqualTo(other, 0.2));
    other = uShape();
    other.setClosed(true);
    EXPECT_FALSE(uShape() == other || uShape().isEqualTo(other, 1.0));
    EXPECT_FALSE(uShape().isEqualTo(CVexGeLine3d::kXAxis, 100.0));
}

TEST(Polyline3dTest, FileFormIsCountFlagAndVertices)
{
    Polyline chain({{1, 0, 0}, {0, 0, 1}});
    chain.setClosed(true);
    const std::string zero = "0000000000000000", one = "000000000000f03f";
    const std::string hex = savedHex(chain);
    EXPECT_EQ("02000000"
              "01" +
                  one + zero + zero + zero + zero + one,
              hex);
    Polyline read;
    EXPECT_TRUE(readHex(read, hex));
    EXPECT_TRUE(read == chain);
}

TEST(Polyline3dTest, ACountThatTheFileCannotHoldIsRefused)
{
    Polyline read = uShape();
    EXPECT_FALSE(readHex(read, "ffffffff"
                               "00"
                               "000000000000f03f"));
    EXPECT_EQ(0U, read.numVerts());
}
