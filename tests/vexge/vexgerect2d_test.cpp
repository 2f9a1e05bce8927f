#include "tests/vexge/geasserts.h"
#include "tests/vexge/gebytes.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/geentity2d/vexgerect2d.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
using Rect = CVexGeRect2d;
using Points = std::vector<CVexGePoint2d>;

void expectCorners(const Points& expected, const Rect& rect)
{
    Points corners = {{9, 9}};
    ASSERT_EQ(4, rect.getVertex(corners));
    ASSERT_EQ(4U, corners.size());
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_POINT_NEAR(expected[i].x, expected[i].y, corners[i], 1e-14);
    }
}

CVexGePoint2d diagonalOf(const Rect& rect)
{
    CVexGePoint2d corner;
    rect.getDiagonPoint(corner);
    return corner;
}

/// 4 by 2 from (1, 2), upright.
const Rect kUpright(CVexGePoint2d(1, 2), 4, 2, 0);
/// The same, turned by a quarter about (1, 2).
const Rect kTurned(CVexGePoint2d(1, 2), 4, 2, kPi / 2);

} // namespace

TEST(RectTest, ADefaultOneIsAPoint)
{
    expectCorners({{0, 0}, {0, 0}, {0, 0}, {0, 0}}, Rect());
    CVexGePolyline2d chain;
    Rect().getPolyline(chain);
    EXPECT_EQ(4U, chain.numVerts());
    EXPECT_TRUE(chain.isClosed());
    EXPECT_EQ(0.0, chain.length());
    EXPECT_TRUE(Rect().isKindOf(VexGe::kGeRect2d));
}

TEST(RectTest, ConstructorsRotateTheDiagonal)
{
    EXPECT_POINT(5, 4, diagonalOf(kUpright));
    EXPECT_POINT_NEAR(-1, 6, diagonalOf(kTurned), 1e-15);
    EXPECT_POINT_NEAR(-1, 6, diagonalOf(Rect({1, 2}, CVexGeVector2d(4, 2), kPi / 2)), 1e-15);
    Rect rect;
    rect.set({1, 2}, CVexGeVector2d(4, 2), kPi / 2);
    EXPECT_POINT_NEAR(-1, 6, diagonalOf(rect), 1e-15);
    expectCorners({{1, 2}, {1, 6}, {-1, 6}, {-1, 2}}, kTurned);
    expectCorners({{1, 2}, {5, 2}, {5, 4}, {1, 4}}, kUpright);
}

TEST(RectTest, SettingTheFourValuesLeavesTheDiagonalUpright)
{
    // The constructor of the same arguments rotates it. The rectangle entity and its files hold
    // diagonals placed this way, and the corners come out as another shape.
    Rect rect;
    rect.set({1, 2}, 4, 2, kPi / 2);
    EXPECT_POINT(5, 4, diagonalOf(rect));
    expectCorners({{1, 2}, {1, 4}, {5, 4}, {5, 2}}, rect);
}

TEST(RectTest, SettingASideOfATurnedOneLosesItsShape)
{
    Rect rect = kTurned;
    rect.setWidth(6);
    EXPECT_POINT(7, 4, diagonalOf(rect));
    expectCorners({{1, 2}, {1, 4}, {7, 4}, {7, 2}}, rect);
    rect = kTurned;
    rect.setHeight(3);
    EXPECT_POINT(5, 5, diagonalOf(rect));
    EXPECT_EQ(4.0, rect.width());
    EXPECT_EQ(3.0, rect.height());
    EXPECT_EQ(kPi / 2, rect.rotation());
}

TEST(RectTest, RotationAndBaseCarryTheDiagonal)
{
    Rect rect = kUpright;
    rect.setRotation(kPi / 2);
    expectCorners({{1, 2}, {1, 6}, {-1, 6}, {-1, 2}}, rect);
    rect.setBasePoint({0, 0});
    EXPECT_POINT(0, 0, rect.basePoint());
    EXPECT_POINT_NEAR(-2, 4, diagonalOf(rect), 1e-14);
    EXPECT_NEAR(std::sqrt(20.0), rect.diagonal(), 1e-14);
    EXPECT_POINT_NEAR(-1, 2, rect.centerPoint(), 1e-14);
}

TEST(RectTest, NegativeSidesRunToTheOtherSide)
{
    expectCorners({{1, 2}, {-3, 2}, {-3, 0}, {1, 0}}, Rect({1, 2}, -4, -2, 0));
}

TEST(RectTest, OperatorIsExactInTheRotationAndIsEqualToIsNot)
{
    const Rect other({1, 2}, 4, 2, 1e-12);
    EXPECT_FALSE(kUpright == other);
    EXPECT_TRUE(kUpright != other);
    EXPECT_TRUE(kUpright.isEqualTo(other, 0.001));
    EXPECT_TRUE(kUpright == Rect({1, 2 + 9e-7}, 4, 2, 0));
    EXPECT_FALSE(kUpright.isEqualTo(CVexGeLine2d::kXAxis, 0.001));
}

TEST(RectTest, ToleranceIncludesItsBoundButForTheRotation)
{
    EXPECT_TRUE(kUpright.isEqualTo(Rect({1.25, 2}, 4, 2, 0), 0.25));
    EXPECT_TRUE(kUpright.isEqualTo(Rect({1, 2}, 4.25, 1.75, 0), 0.25));
    EXPECT_FALSE(kUpright.isEqualTo(Rect({1, 2}, 4, 2, 0.25), 0.25));
    EXPECT_TRUE(kUpright.isEqualTo(Rect({1, 2}, 4, 2, 0.24), 0.25));
    EXPECT_FALSE(kUpright.isEqualTo(Rect({1.3, 2}, 4, 2, 0), 0.25));
}

TEST(RectTest, PointsOnTheEdges)
{
    EXPECT_EQ(1, kUpright.isOn({3, 2}, 0.001));
    EXPECT_EQ(1, kUpright.isOn({5, 3}, 0.001));
    EXPECT_EQ(1, kUpright.isOn({2, 4}, 0.001));
    EXPECT_EQ(1, kUpright.isOn({1, 3}, 0.001));
    EXPECT_EQ(0, kUpright.isOn({3, 3}, 0.001));
    EXPECT_EQ(1, kTurned.isOn({-1, 5}, 0.001));
}

TEST(RectTest, ClosestPointIsOnTheLastEdgeInReachAndNotOnTheNearest)
{
    // (3, 1) lies 1 below the edge 0-1, yet the edge 3-0 answers: it is within 1 / 0.001 and comes
    // last. Selection asks isOn, and other callers keep their points by this.
    EXPECT_POINT(1, 2, kUpright.closestPointTo(CVexGePoint2d(3, 1), 0.001));
    EXPECT_POINT(1, 3, kUpright.closestPointTo(CVexGePoint2d(4.9, 3), 0.001));
    // Only the edge 0-1 is nearer than 1 / 0.5.
    EXPECT_POINT(3, 2, kUpright.closestPointTo(CVexGePoint2d(3, 0.5), 0.5));
    // None is nearer than 1 / 1: the origin.
    EXPECT_POINT(0, 0, kUpright.closestPointTo(CVexGePoint2d(3, -5), 1.0));
    EXPECT_EQ(std::sqrt(5.0), kUpright.distanceTo(CVexGePoint2d(3, 1), 0.001));
}

TEST(RectTest, ClosestPointToALineIsOnTheLastEdgeInReachToo)
{
    const CVexGeLine2d right(CVexGePoint2d(6, 0), CVexGePoint2d(6, 9)); // 1 from the edge 1-2
    CVexGePoint2d onLine;
    EXPECT_POINT(1, 4, kUpright.closestPointTo(right, onLine, 0.001));
    EXPECT_POINT(6, 4, onLine);
    EXPECT_EQ(5.0, kUpright.distanceTo(right, 0.001));
    EXPECT_POINT(5, 4, kUpright.closestPointTo(right, onLine, 0.5)); // the end of the edge 2-3
    EXPECT_POINT(0, 0, kUpright.closestPointTo(right, onLine, 1.0));
}

TEST(RectTest, TransformTakesTheSizeFromTheDiagonalAndPlacesItUpright)
{
    Rect rect(CVexGePoint2d(0, 0), 4, 2, 0);
    rect.transformBy(CVexGeMatrix2d::rotation(kPi / 2, {0, 0}));
    EXPECT_NEAR(kPi / 2, rect.rotation(), 1e-14);
    EXPECT_NEAR(4.0, rect.width(), 1e-14);
    EXPECT_NEAR(2.0, rect.height(), 1e-14);
    EXPECT_POINT_NEAR(4, 2, diagonalOf(rect), 1e-14); // not (-2, 4): setWidth came last
}

TEST(RectTest, ScalesTheSidesAboutThePoint)
{
    Rect rect = kUpright;
    rect.scaleBy(2, {0, 0});
    expectCorners({{2, 4}, {10, 4}, {10, 8}, {2, 8}}, rect);
    rect.scaleBy(0.5, 0.25, rect.basePoint());
    expectCorners({{2, 4}, {6, 4}, {6, 5}, {2, 5}}, rect);
    EXPECT_EQ(4.0, rect.width());
    EXPECT_EQ(1.0, rect.height());
}

TEST(RectTest, RotationTurnsBaseDiagonalAndAngle)
{
    Rect rect = kUpright;
    rect.rotateBy(kPi / 2, {0, 0});
    EXPECT_NEAR(kPi / 2, rect.rotation(), 1e-14);
    expectCorners({{-2, 1}, {-2, 5}, {-4, 5}, {-4, 1}}, rect);
    EXPECT_EQ(4.0, rect.width());
    rect.translateBy({10, 20});
    expectCorners({{8, 21}, {8, 25}, {6, 25}, {6, 21}}, rect);
}

TEST(RectTest, MirrorTakesTheRotationFromTheFirstEdge)
{
    Rect rect = kUpright;
    rect.mirror(CVexGeLine2d::kYAxis);
    EXPECT_POINT_NEAR(-1, 2, rect.basePoint(), 1e-14);
    EXPECT_POINT_NEAR(-5, 4, diagonalOf(rect), 1e-14);
    EXPECT_NEAR(kPi, rect.rotation(), 1e-14);
    EXPECT_EQ(4.0, rect.width()); // the signs do not change
    EXPECT_EQ(2.0, rect.height());
}

TEST(RectTest, MeasuresAsItsClosedPolyline)
{
    EXPECT_EQ(12.0, kUpright.length());
    EXPECT_NEAR(6.0, kUpright.length(0.25, 0.75), 1e-14);
    EXPECT_POINT_NEAR(5, 4, kUpright.pointAtParam(0.5), 1e-14);
    EXPECT_POINT_NEAR(5, 3, kUpright.pointAtDist(5), 1e-14);
    EXPECT_NEAR(0.25, kUpright.paramAtPoint({4, 2}), 1e-14);
    EXPECT_EQ(-1.0, kUpright.paramAtPoint({3, 3}));
    EXPECT_NEAR(3.0, kUpright.distAtPoint({4, 2}), 1e-14);
    EXPECT_EQ(3.0, kUpright.distAtParam(0.25));
    EXPECT_EQ(0.75, kUpright.paramAtDist(0.25, 6, true));
}

TEST(RectTest, NormalsInsideAndPerpendiculars)
{
    EXPECT_POINT_NEAR(0, -1, kUpright.normalAtParam(0.1), 1e-14);
    EXPECT_POINT_NEAR(1, 0, kUpright.normalAtPoint({5, 3}), 1e-14);
    EXPECT_EQ(0.0, kUpright.curvatureAtParam(0.5));
    EXPECT_EQ(0.0, kUpright.curvatureAtPoint({5, 3}));
    EXPECT_TRUE(kUpright.isInsidePoint({2, 3}));
    EXPECT_FALSE(kUpright.isInsidePoint({6, 3}));
    CVexGeVector2d across;
    EXPECT_TRUE(kUpright.perpVecFromPoint({3, 1.5}, across));
    EXPECT_POINT_NEAR(0, -0.5, across, 1e-12);
}

TEST(RectTest, OffsetLosesTheSignsOfItsSides)
{
    Rect rect({5, 4}, -4, -2, 0); // the same edges as the upright one, from the other corner
    EXPECT_TRUE(rect.offset({3, 3}, 0.5));
    EXPECT_NEAR(3.0, rect.width(), 1e-9);
    EXPECT_NEAR(1.0, rect.height(), 1e-9);
    EXPECT_EQ(0.0, rect.rotation());
    EXPECT_NEAR(std::sqrt(10.0), rect.diagonal(), 1e-9);
    EXPECT_POINT_NEAR(3, 3, rect.centerPoint(), 1e-9);
}

TEST(RectTest, OffsetWithoutRoomIsTrueAndMovesNothing)
{
    // A reader expects false. Callers compare the corners, which stay; the sides become positive.
    Rect rect({5, 4}, -4, -2, 0);
    EXPECT_TRUE(rect.offset({3, 3}, 1.5));
    EXPECT_POINT(5, 4, rect.basePoint());
    EXPECT_POINT(1, 2, diagonalOf(rect));
    EXPECT_EQ(4.0, rect.width());
    EXPECT_EQ(2.0, rect.height());
}

TEST(RectTest, IntersectsLinesAndArcsButNoPolyline)
{
    Points points;
    int count = 0;
    const CVexGeLine2d level(CVexGePoint2d(0, 3), CVexGePoint2d(9, 3));
    EXPECT_TRUE(kUpright.intersectWith(level, count, points, Rect::kExtendNone));
    EXPECT_EQ(2, count);
    points.clear();
    const CVexGeCircArc2d arc(CVexGePoint2d(1, 3), 0.5);
    EXPECT_TRUE(kUpright.intersectWith(arc, count, points, Rect::kExtendNone));
    EXPECT_EQ(2, count);
    // A polyline along the same line as above: never reported through the rectangle, on purpose.
    const CVexGePolyline2d chain(Points{{0, 3}, {9, 3}});
    EXPECT_FALSE(kUpright.intersectWith(chain, count, points, Rect::kExtendNone));
    EXPECT_EQ(0, count);
    EXPECT_TRUE(points.empty());
}

TEST(RectTest, FileFormIsFortyFourBytesWithoutTheDiagonal)
{
    const std::string hex = savedHex(Rect({1, 0}, 1, 2, 0.5));
    EXPECT_EQ("000000000000f03f"
              "0000000000000000"
              "00000000"
              "000000000000f03f"
              "0000000000000040"
              "000000000000e03f",
              hex);
    Rect read;
    EXPECT_TRUE(readHex(read, hex));
    EXPECT_EQ(0.5, read.rotation());
    EXPECT_POINT(2, 2, diagonalOf(read)); // upright, beside the rotation
}
