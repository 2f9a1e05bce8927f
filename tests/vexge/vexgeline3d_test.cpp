#include "tests/vexge/geasserts.h"
#include "tests/vexge/gebytes.h"
#include "vexge/geentity3d/vexgeline3d.h"
#include "vexge/geentity3d/vexgeplane.h"
#include "vexge/geentity3d/vexgepolyline3d.h"

#include <memory>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
using Point = CVexGePoint3d;
using Vector = CVexGeVector3d;
using Line = CVexGeLine3d;
using Entity = CVexGeEntity3d;

void expectLine(const Point& start, const Point& end, const Line& line, double tol = 0.0)
{
    EXPECT_POINT3D_NEAR(start.x, start.y, start.z, line.start(), tol);
    EXPECT_POINT3D_NEAR(end.x, end.y, end.z, line.end(), tol);
}

const Line kLevel(Point(0, 0, 0), Point(10, 0, 0));

} // namespace

TEST(Line3dTest, EachSourceGivesItsEnds)
{
    expectLine({0, 0, 0}, {0, 0, 0}, Line());
    expectLine({1, 2, 3}, {2, 4, 6}, Line(Point(1, 2, 3), Vector(1, 2, 3)));
    expectLine({0, 0, 0}, {1, 0, 0}, Line::kXAxis);
    expectLine({0, 0, 0}, {0, 1, 0}, Line::kYAxis);
    expectLine({0, 0, 0}, {0, 0, 1}, Line::kZAxis);
    Line line;
    line.set(Point(1, 1, 1), Vector(1, 0, 0));
    line.setEnd({5, 5, 5});
    line.setStart({4, 4, 4});
    expectLine({4, 4, 4}, {5, 5, 5}, line);
}

TEST(Line3dTest, ReadersGiveEndsMiddleAndDirection)
{
    const Line line(Point(1, 2, 2), Point(3, 6, 6));
    Point start, end;
    line.getPoints(start, end);
    EXPECT_POINT3D_NEAR(1, 2, 2, start, 0);
    EXPECT_POINT3D_NEAR(3, 6, 6, end, 0);
    EXPECT_POINT3D_NEAR(2, 4, 4, line.midPoint(), 0);
    EXPECT_POINT3D_NEAR(1.0 / 3, 2.0 / 3, 2.0 / 3, line.direction(), 1e-15);
    EXPECT_POINT3D_NEAR(0, 0, 0.001, Line(Point(), Point(0, 0, 0.001)).direction(), 0);
}

TEST(Line3dTest, EqualityFollowsThePlanesLine)
{
    EXPECT_TRUE(kLevel.isEqualTo(Line(Point(0.25, 0, 0), Point(10, 0, -0.25)), 0.25));
    EXPECT_FALSE(kLevel.isEqualTo(Line(Point(0.26, 0, 0), Point(10, 0, 0)), 0.25));
    EXPECT_FALSE(kLevel.isEqualTo(Line(Point(10, 0, 0), Point(0, 0, 0)), 0.25));
    EXPECT_TRUE(kLevel == Line(Point(1e-8, 0, 0), Point(10, 0, 0)));
    EXPECT_TRUE(kLevel != Line(Point(1e-6, 0, 0), Point(10, 0, 0)));
}

TEST(Line3dTest, DirectionsAreComparedAsVectors)
{
    EXPECT_TRUE(kLevel.isParallelTo(Line(Point(0, 5, 5), Point(1, 5, 5))));
    EXPECT_TRUE(kLevel.isColinearTo(Line(Point(1, 5, 5), Point(0, 5, 5)))); // the opposite way only
    EXPECT_FALSE(kLevel.isColinearTo(Line(Point(0, 0, 0), Point(1, 0, 0))));
    EXPECT_TRUE(kLevel.isPerpendicularTo(Line(Point(3, 3, 3), Point(3, 5, 9))));
}

TEST(Line3dTest, EditsActOnBothEnds)
{
    Line line(Point(1, 0, 2), Point(3, 0, 2));
    expectLine({2, 1, 3}, {4, 1, 3}, line.translateBy({1, 1, 1}));
    expectLine({4, 2, 6}, {8, 2, 6}, line.scaleBy(2, {0, 0, 0}));
    expectLine({4, 4, 18}, {8, 4, 18}, line.scaleBy(1, 2, 3, {0, 0, 0}));
    // A quarter turn about the upright axis through (4, 4).
    const Line axis(Point(4, 4, 0), Point(4, 4, 1));
    expectLine({4, 4, 18}, {4, 8, 18}, line.rotateBy(kPi / 2, axis), 1e-14);
    expectLine({4, 4, -18}, {4, 8, -18}, line.mirror(CVexGePlane::kXYPlane), 1e-14);
}

TEST(Line3dTest, DistanceToAPointEndsAtTheEnds)
{
    EXPECT_EQ(5.0, kLevel.distanceTo(Point(4, 3, 4)));
    EXPECT_EQ(3.0, kLevel.distanceTo(Point(-1, 2, 2)));
    EXPECT_EQ(3.0, kLevel.distanceTo(Point(11, 2, 2)));
    EXPECT_POINT3D_NEAR(10, 0, 0, kLevel.closestPointTo(Point(11, 2, 2)), 0);
    // Within the tolerance beyond an end it is the foot itself.
    EXPECT_POINT3D_NEAR(10.5, 0, 0, kLevel.closestPointTo(Point(10.5, 2, 2), 0.5), 0);
    EXPECT_FALSE(kLevel.isOn({5, 0, 0.25}, 0.25));
    EXPECT_TRUE(kLevel.isOn({5, 0, 0.25}, 0.26));
}

TEST(Line3dTest, FootIsNoneBeyondTheTolerance)
{
    struct Opened : CVexGeLine3d {
        using CVexGeLine3d::closestPoint;
        using CVexGeLine3d::CVexGeLine3d;
    };
    const Opened line(Point(0, 0, 0), Point(10, 0, 0));
    Point foot(7, 7, 7);
    EXPECT_FALSE(line.closestPoint({10.6, 1, 0}, foot, 0.5));
    EXPECT_POINT3D_NEAR(7, 7, 7, foot, 0);
    EXPECT_TRUE(line.closestPoint({-0.5, 1, 0}, foot, 0.5));
    EXPECT_POINT3D_NEAR(-0.5, 0, 0, foot, 0);
}

TEST(Line3dTest, NearestPairOfSkewAndOfParallelLines)
{
    Point there;
    const Line above(Point(4, -5, 3), Point(4, 5, 3));
    EXPECT_POINT3D_NEAR(4, 0, 0, kLevel.closestPointTo(above, there), 1e-15);
    EXPECT_POINT3D_NEAR(4, 0, 3, there, 1e-15);
    EXPECT_EQ(3.0, kLevel.distanceTo(above));
    EXPECT_EQ(5.0, kLevel.distanceTo(Line(Point(2, 3, 4), Point(8, 3, 4))));
    EXPECT_EQ(3.0, kLevel.distanceTo(Line(Point(11, 2, 2), Point(20, 9, 9))));
    EXPECT_EQ(2.0, kLevel.distanceTo(Line(Point(-2, -5, 0), Point(-2, 5, 0))));
}

TEST(Line3dTest, LengthsAndParameters)
{
    EXPECT_EQ(10.0, kLevel.length());
    EXPECT_EQ(5.0, kLevel.length(0.75, 0.25));
    EXPECT_EQ(0.0, kLevel.length(0.2, 1.2));
    EXPECT_EQ(0.75, kLevel.paramAtDist(0.25, 5, true));
    EXPECT_EQ(1.0, kLevel.paramAtDist(0.25, 50, true));
    EXPECT_EQ(0.0, kLevel.paramAtDist(0.25, 50, false));
    EXPECT_EQ(0.25, kLevel.paramAtPoint({2.5, 0, 0}));
    EXPECT_EQ(-1.0, kLevel.paramAtPoint({2.5, 0, 1}));
    EXPECT_EQ(2.5, kLevel.distAtParam(0.25));
    EXPECT_EQ(5.0, kLevel.distAtPoint({3, 4, 0}));
    EXPECT_POINT3D_NEAR(4, 0, 0, kLevel.pointAtDist(4), 0);
    EXPECT_POINT3D_NEAR(-10, 0, 0, kLevel.pointAtParam(-1), 0);
}

TEST(Line3dTest, NormalsAndPerpendiculars)
{
    // To the right of the direction of travel, as in the plane.
    EXPECT_POINT3D_NEAR(0, -1, 0, kLevel.normalAtPlane(CVexGePlane::kXYPlane), 0);
    Vector across;
    EXPECT_TRUE(kLevel.perpVecFromPoint({25, 3, 4}, across));
    EXPECT_POINT3D_NEAR(0, 3, 4, across, 0);
    EXPECT_FALSE(Line().perpVecFromPoint({25, 3, 4}, across));
    CVexGePlane plane;
    kLevel.getPerpPlane({4, 9, 9}, plane);
    EXPECT_EQ(1.0, plane.a);
    EXPECT_EQ(-4.0, plane.d);
}

TEST(Line3dTest, PerpendicularLineReachesTowardsTheLine)
{
    Line across;
    Line(Point(0, 0, 0), Point(2, 0, 0)).getPerpLine({5, 0, 3}, across);
    expectLine({5, 0, 3 - 2e9}, {5, 0, 3 + 2e9}, across);
    kLevel.getPerpLine({5, 0, 0}, across); // on the line: one of the many
    EXPECT_TRUE(across.isPerpendicularTo(kLevel));
    EXPECT_EQ(2e10, across.length());
    Line(Point(0, 0, 0), Point(0, 0, 2)).getPerpLine({0, 0, 1}, across);
    EXPECT_TRUE(across.isPerpendicularTo(Line::kZAxis));
}

TEST(Line3dTest, MeetsAPlane)
{
    const Line down(Point(1, 2, 10), Point(1, 2, 4));
    const CVexGePlane floor(0, 0, 1, -3); // z = 3, below the segment's end
    Point hit;
    EXPECT_TRUE(down.intersectWith(floor, hit, Entity::kExtendThis));
    EXPECT_POINT3D_NEAR(1, 2, 3, hit, 0);
    EXPECT_FALSE(down.intersectWith(floor, hit, Entity::kExtendNone));
    EXPECT_FALSE(down.intersectWith(floor, hit, Entity::kExtendBoth)); // every kind but one asks
    EXPECT_TRUE(down.intersectWith(CVexGePlane(0, 0, 1, -5), hit, Entity::kExtendNone));
    EXPECT_POINT3D_NEAR(1, 2, 5, hit, 0);
}

TEST(PlaneTest, ALineInThePlaneIsTrueAndLeavesThePoint)
{
    Point point(7, 7, 7);
    const CVexGePlane floor(0, 0, 1, -3);
    EXPECT_TRUE(floor.intersectWith(Line(Point(0, 0, 3), Point(5, 5, 3)), point, 0.001));
    EXPECT_FALSE(floor.intersectWith(Line(Point(0, 0, 4), Point(5, 5, 4)), point, 0.001));
    EXPECT_FALSE(floor.intersectWith(Line(Point(0, 0, -9), Point(5, 5, -9)), point, 0.001));
    EXPECT_POINT3D_NEAR(7, 7, 7, point, 0);
}

TEST(PlaneTest, AScaledEquationScalesTheWayToTheCrossing)
{
    // 2z - 6 = 0 is z = 3 as well, but the height is not divided by the length of the normal: the
    // way from z = 10 is 14 instead of 7. Hosts keep normals of length 1.
    Point point;
    EXPECT_TRUE(
        CVexGePlane(0, 0, 2, -6).intersectWith(Line(Point(1, 2, 10), Point(1, 2, 4)), point));
    EXPECT_POINT3D_NEAR(1, 2, -4, point, 0);
}

TEST(PlaneTest, TwoPlanesGiveALineOfTheirDirection)
{
    // x + y + z = 0 and y - z = 0: along (-2, 1, 1), through the origin.
    Line line;
    EXPECT_TRUE(CVexGePlane(1, 1, 1, 0).intersectWith(CVexGePlane(0, 1, -1, 0), line));
    const double reach = 3.4028234663852886e+38;
    expectLine({1.1754943508222875e-38, -1.1754943508222875e-38 / 2, -1.1754943508222875e-38 / 2},
               {reach, -reach / 2, -reach / 2}, line);
}

TEST(PlaneTest, PlanesWithinAThousandthOfParallelHaveNoLine)
{
    Line line;
    EXPECT_FALSE(CVexGePlane(1, 1, 1, 0).intersectWith(CVexGePlane(2, 2, 2.001, 0), line));
    EXPECT_FALSE(CVexGePlane(1, 1, 1, 0).intersectWith(CVexGePlane(-1, -1, -1.001, 5), line));
    EXPECT_TRUE(CVexGePlane(1, 1, 1, 0).intersectWith(CVexGePlane(1, 1, 2, 0), line));
}

TEST(Line3dTest, FileFormIsFortyEightBytes)
{
    const std::string zero = "0000000000000000", one = "000000000000f03f";
    const std::string hex = savedHex(Line(Point(1, 0, 0), Point(0, 1, 1)));
    EXPECT_EQ(one + zero + zero + zero + one + one, hex);
    Line read;
    EXPECT_TRUE(readHex(read, hex));
    expectLine({1, 0, 0}, {0, 1, 1}, read);
}

TEST(Entity3dTest, CopyAndAssignmentGoByTheKind)
{
    const CVexGePolyline3d chain({{1, 0, 0}, {2, 0, 0}, {3, 1, 0}});
    const std::unique_ptr<Entity> line(static_cast<const Entity&>(kLevel).copy());
    const std::unique_ptr<Entity> copy(static_cast<const Entity&>(chain).copy());
    ASSERT_TRUE(line && line->isKindOf(VexGe::kGeLine3d));
    ASSERT_TRUE(copy && copy->isKindOf(VexGe::kGePolyline3d));
    EXPECT_TRUE(*line == kLevel && *copy == chain);
    EXPECT_TRUE(*line != *copy);
    *line = static_cast<const Entity&>(Line::kZAxis);
    EXPECT_TRUE(*line == Line::kZAxis);
    *copy = static_cast<const Entity&>(CVexGePolyline3d());
    EXPECT_TRUE(*copy == CVexGePolyline3d());
}
