#include "tests/vexge/geasserts.h"
#include "tests/vexge/gebytes.h"
#include "vexge/geentity3d/vexgeplane.h"
#include "vexge/gemath/vexgepoint2d.h"

#include <cmath>

namespace {

using Point = CVexGePoint3d;
using Vector = CVexGeVector3d;

void expectPlane(double a, double b, double c, double d, const CVexGePlane& plane)
{
    EXPECT_EQ(a, plane.a);
    EXPECT_EQ(b, plane.b);
    EXPECT_EQ(c, plane.c);
    EXPECT_EQ(d, plane.d);
}

/// Rises by 3 for each 4 along x: its normal is (-0.6, 0, 0.8).
const CVexGePlane kSlope(-3, 0, 4, 0);

} // namespace

TEST(PlaneTest, ConstantsAreTheSevenViews)
{
    expectPlane(0, 0, 1, 0, CVexGePlane());
    expectPlane(0, 0, 1, 0, CVexGePlane::kXYPlane);
    expectPlane(1, 0, 0, 0, CVexGePlane::kYZPlane);
    expectPlane(0, 1, 0, 0, CVexGePlane::kZXPlane);
    expectPlane(-1, -1, 1, 0, CVexGePlane::kSWPlane);
    expectPlane(1, -1, 1, 0, CVexGePlane::kSEPlane);
    expectPlane(-1, 1, 1, 0, CVexGePlane::kNWPlane);
    expectPlane(1, 1, 1, 0, CVexGePlane::kNEPlane);
}

TEST(PlaneTest, PointAndNormalGiveTheEquation)
{
    expectPlane(1, 2, 3, -14, CVexGePlane(CVexGePoint3d(1, 2, 3), CVexGeVector3d(1, 2, 3)));
    expectPlane(0, 0, 6, -30, CVexGePlane(Point(7, 8, 5), Vector(2, 0, 0), Vector(0, 3, 0)));
    CVexGePlane copy;
    copy = CVexGePlane(1, 2, 3, 4);
    expectPlane(1, 2, 3, 4, copy);
}

TEST(PlaneTest, ThreePointsOfTheLevelPlaneGiveALevelNormal)
{
    // u = (1, 0, 0) - (0, 0, 0), v = (0, 1, 0) - (0, 0, 0).
    expectPlane(0, 0, 1, 0, CVexGePlane(Point(1, 0, 0), Point(0, 0, 0), Point(0, 1, 0)));
    expectPlane(0, 0, -1, 0, CVexGePlane(Point(0, 1, 0), Point(0, 0, 0), Point(1, 0, 0)));
    expectPlane(0, 0, 1, -5, CVexGePlane(Point(1, 0, 5), Point(0, 0, 5), Point(0, 1, 5)));
}

TEST(PlaneTest, NormalHasLengthOne)
{
    EXPECT_POINT3D_NEAR(-0.6, 0, 0.8, kSlope.getNorm(), 0);
    EXPECT_POINT3D_NEAR(0, 0, 0.001, CVexGePlane(0, 0, 0.001, 0).getNorm(), 0);
}

TEST(PlaneTest, SignedDistanceDoesNotDependOnTheScaleOfTheEquation)
{
    const CVexGePoint3d above(0, 0, 10);
    EXPECT_EQ(8.0, kSlope.signedDistanceTo(above));
    EXPECT_EQ(8.0, CVexGePlane(-30, 0, 40, 0).signedDistanceTo(above));
    EXPECT_EQ(-8.0, CVexGePlane(3, 0, -4, 0).signedDistanceTo(above));
    EXPECT_EQ(-3.0, CVexGePlane(0, 0, 2, -10).signedDistanceTo({1, 1, 2}));
}

TEST(PlaneTest, LiftTakesItsSignFromThePlaneOnly)
{
    // Length 5 times 0.6 / 0.8, whichever way the vector runs; a reader expects the plane's height.
    EXPECT_POINT3D_NEAR(3, 4, 3.75, CVexGeVector3d(kSlope, {3, 4}), 1e-14);
    EXPECT_POINT3D_NEAR(-3, -4, 3.75, CVexGeVector3d(kSlope, {-3, -4}), 1e-14);
    EXPECT_POINT3D_NEAR(3, 4, -3.75, CVexGeVector3d(CVexGePlane(3, 0, -4, 0), {3, 4}), 1e-14);
    EXPECT_POINT3D_NEAR(3, 4, 3.75, CVexGePoint3d(kSlope, CVexGePoint2d(3, 4)), 1e-14);
    EXPECT_TRUE(std::isinf(CVexGeVector3d(CVexGePlane::kYZPlane, {3, 4}).z));
}

TEST(PlaneTest, ProjectionOfAPointDoublesItsDistance)
{
    // The signed distance is added where a foot would need it taken away.
    EXPECT_POINT3D_NEAR(1, 2, 6, CVexGePoint3d(1, 2, 3).orthoProject(CVexGePlane::kXYPlane), 0);
    EXPECT_POINT3D_NEAR(1, 2, -6, CVexGePoint3d(1, 2, -3).orthoProject(CVexGePlane::kXYPlane), 0);
}

TEST(PlaneTest, MirrorTakesAVectorToTheSideBelow)
{
    EXPECT_POINT3D_NEAR(1, 2, -3, CVexGeVector3d(1, 2, 3).mirror(CVexGePlane::kXYPlane), 0);
    // A length has no sign: what is below stays below.
    EXPECT_POINT3D_NEAR(1, 2, -3, CVexGeVector3d(1, 2, -3).mirror(CVexGePlane::kXYPlane), 0);
    EXPECT_POINT3D_NEAR(1, 2, -3, CVexGePoint3d(1, 2, 3).mirror(CVexGePlane::kXYPlane), 0);
}

TEST(PlaneTest, TwoCoordinatesInAPlaneMeasureUpItsSlope)
{
    // (4, 0, 3) runs straight up the slope: all of its length is y. (0, 7, 0) runs across it.
    EXPECT_POINT_NEAR(0, 5, CVexGeVector3d(4, 0, 3).convert2d(kSlope), 1e-7);
    EXPECT_POINT_NEAR(7, 0, CVexGeVector3d(0, 7, 0).convert2d(kSlope), 1e-14);
    // The way across has no sign.
    EXPECT_POINT_NEAR(7, 5, CVexGeVector3d(4, -7, 3).convert2d(kSlope), 1e-14);
}

TEST(PlaneTest, TwoCoordinatesOfAPointCountFromThePlanesPointOnTheAxis)
{
    const CVexGePlane raised(-3, 0, 4, -8); // through (0, 0, 2)
    EXPECT_POINT_NEAR(7, 5, CVexGePoint3d(4, 7, 5).convert2d(raised), 1e-14);
    // What stands off the plane is dropped: (-0.6, 0, 0.8) more.
    EXPECT_POINT_NEAR(7, 5, CVexGePoint3d(3.4, 7, 5.8).convert2d(raised), 1e-14);
}

TEST(PlaneTest, FileFormIsThirtyTwoBytesAndExact)
{
    const CVexGePlane plane(0.1, -2.5, 1.0, 1e-300);
    const std::string hex = savedHex(plane);
    EXPECT_EQ("9a9999999999b93f"
              "00000000000004c0"
              "000000000000f03f"
              "59f3f8c21f6ea501",
              hex);
    CVexGePlane read;
    EXPECT_TRUE(readHex(read, hex));
    expectPlane(0.1, -2.5, 1.0, 1e-300, read);
}
