#include "tests/vexge/geasserts.h"
#include "tests/vexge/gebytes.h"
#include "vexge/gemath/vexgepoint3d.h"
#include "vexge/gemath/vexgevector3d.h"

#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;

} // namespace

TEST(Point3dTest, ArithmeticActsOnAllCoordinates)
{
    CVexGePoint3d p(1, 2, 3);
    EXPECT_POINT3D_NEAR(2, 4, 6, p * 2.0, 0);
    EXPECT_POINT3D_NEAR(0.5, 1, 1.5, p / 2.0, 0);
    EXPECT_POINT3D_NEAR(2, 3, 4, p + CVexGeVector3d(1, 1, 1), 0);
    EXPECT_POINT3D_NEAR(0, 1, 2, p - CVexGeVector3d(1, 1, 1), 0);
    EXPECT_POINT3D_NEAR(-3, -3, -3, p - CVexGePoint3d(4, 5, 6), 0);
    (((p *= 4.0) /= 2.0) += {1, 1, 1}) -= {2, 2, 2};
    EXPECT_POINT3D_NEAR(1, 3, 5, p, 0);
    EXPECT_POINT3D_NEAR(5, 7, 9, p.setToSum({1, 2, 3}, {4, 5, 6}), 0);
    EXPECT_POINT3D_NEAR(5, 7, 9, p.asVector(), 0);
}

TEST(Point3dTest, IndexNamesTheThreeCoordinates)
{
    CVexGePoint3d p(1, 2, 3);
    p[2] = 9;
    const CVexGePoint3d& fixed = p;
    EXPECT_EQ(1.0, fixed[0]);
    EXPECT_EQ(2.0, fixed[1]);
    EXPECT_EQ(9.0, fixed[2]);
    EXPECT_POINT3D_NEAR(0, 0, 0, CVexGePoint3d::kOrigin, 0);
}

TEST(Point3dTest, EqualityUsesTheSmallTolerance)
{
    const CVexGePoint3d origin, atBound(kGeEpsilon, 0, 0), near(0.9 * kGeEpsilon, 0, 0);
    EXPECT_FALSE(origin == atBound);
    EXPECT_FALSE(origin != atBound);
    EXPECT_TRUE(origin == near && !(origin != near));
    EXPECT_TRUE(origin != CVexGePoint3d(1e-6, 0, 0)); // which points of the plane call equal
    EXPECT_TRUE(origin.isEqualTo({0, 0.25, 0}, 0.25));
    EXPECT_FALSE(origin.isEqualTo({0, 0.25, 0}, 0.2));
}

TEST(Point3dTest, TurnsAndScalesAboutAPoint)
{
    CVexGePoint3d p(2, 1, 5);
    EXPECT_POINT3D_NEAR(1, 2, 5, p.rotateBy(kPi / 2, {0, 0, 7}, {1, 1, 0}), 1e-15);
    EXPECT_POINT3D_NEAR(1, 3, 10, p.scaleBy(2, {1, 1, 0}), 1e-14);
    EXPECT_POINT3D_NEAR(1, 5, 30, p.scaleBy(9, 2, 3, {1, 1, 0}), 1e-13);
}

TEST(Point3dTest, FileFormIsTwentyFourBytes)
{
    const std::string hex = savedHex(CVexGePoint3d(1, -2.5, 0));
    EXPECT_EQ("000000000000f03f"
              "00000000000004c0"
              "0000000000000000",
              hex);
    CVexGePoint3d p(9, 9, 9);
    EXPECT_TRUE(readHex(p, hex));
    EXPECT_POINT3D_NEAR(1, -2.5, 0, p, 0);
}

TEST(Vector3dTest, ConstantsAreTheAxes)
{
    EXPECT_POINT3D_NEAR(0, 0, 0, CVexGeVector3d::kIdentity, 0);
    EXPECT_POINT3D_NEAR(1, 0, 0, CVexGeVector3d::kXAxis, 0);
    EXPECT_POINT3D_NEAR(0, 1, 0, CVexGeVector3d::kYAxis, 0);
    EXPECT_POINT3D_NEAR(0, 0, 1, CVexGeVector3d::kZAxis, 0);
}

TEST(Vector3dTest, ArithmeticActsOnAllComponents)
{
    CVexGeVector3d v(1, 2, 3);
    EXPECT_POINT3D_NEAR(-1, -2, -3, -v, 0);
    EXPECT_POINT3D_NEAR(0.5, 1, 1.5, v / 2.0, 0);
    EXPECT_POINT3D_NEAR(3, 6, 9, v.setToProduct({1, 2, 3}, 3.0), 0);
    EXPECT_POINT3D_NEAR(2, 3, 4, v.setToSum({1, 1, 1}, {1, 2, 3}), 0);
    (((v *= 4.0) /= 2.0) += {1, 1, 1}) -= {2, 2, 2};
    EXPECT_POINT3D_NEAR(-3, -5, -7, v.negate(), 0);
}

TEST(Vector3dTest, ProductsAreRightHanded)
{
    EXPECT_POINT3D_NEAR(0, 0, 1, CVexGeVector3d::kXAxis.crossProduct(CVexGeVector3d::kYAxis), 0);
    EXPECT_POINT3D_NEAR(-3, 6, -3, CVexGeVector3d(1, 2, 3).crossProduct({4, 5, 6}), 0);
    EXPECT_EQ(32.0, CVexGeVector3d(1, 2, 3).dotProduct({4, 5, 6}));
    EXPECT_POINT3D_NEAR(1, 2, 0, CVexGeVector3d(1, 2, 3).orthoProject({0, 0, 1}), 0);
}

TEST(Vector3dTest, LengthAndNormal)
{
    EXPECT_EQ(3.0, CVexGeVector3d(1, 2, 2).length());
    EXPECT_EQ(9.0, CVexGeVector3d(1, 2, 2).lengthSqrd());
    EXPECT_POINT3D_NEAR(1, 2, 2, CVexGeVector3d(1, 2, 2).normal(3.0), 0);
    EXPECT_TRUE(CVexGeVector3d(1, 2, 2).normal(0.001).isUnitLength(1e-15));
    EXPECT_TRUE(CVexGeVector3d(0, 0.25, 0).isZeroLength(0.25));
    EXPECT_FALSE(CVexGeVector3d(0, 0.25, 0).isZeroLength(0.2));
}

TEST(Vector3dTest, LargestElementHoldsZAgainstYOnly)
{
    // The largest of (5, 1, 2) is the first, yet the answer is 2: z is compared with y alone.
    EXPECT_EQ(2, CVexGeVector3d(5, 1, 2).largestElement());
    EXPECT_EQ(0, CVexGeVector3d(5, 2, 1).largestElement());
    EXPECT_EQ(1, CVexGeVector3d(1, 5, 2).largestElement());
    EXPECT_EQ(2, CVexGeVector3d(1, 2, 5).largestElement());
}

TEST(Vector3dTest, TestsOfDirectionFollowThePlane)
{
    const CVexGeVector3d v(0, 0, 2);
    EXPECT_TRUE(v.isParallelTo({0, 0, 5}, 0.001) && !v.isCodirectionalTo({0, 0, 5}, 0.001));
    EXPECT_TRUE(v.isCodirectionalTo({0, 0, -5}, 0.001) && !v.isParallelTo({0, 0, -5}, 0.001));
    EXPECT_TRUE(v.isPerpendicularTo({0, 3, 0}, 0.0)); // a true dot product, unlike in the plane
    EXPECT_FALSE(v.isPerpendicularTo({0, 3, 1}, 1.9));
    EXPECT_TRUE(v.isPerpendicularTo({0, 3, -1}, 2.0));
}

TEST(Vector3dTest, EqualityNeverAsksItsTolerance)
{
    const CVexGeVector3d zero, near(0, 0, 0.001), far(0, 0, 0.0011);
    EXPECT_TRUE(zero.isEqualTo(near, 1e-12) && zero == near && !(zero != near));
    EXPECT_FALSE(zero.isEqualTo(far, 100.0));
    EXPECT_TRUE(zero != far && !(zero == far));
}

TEST(Vector3dTest, TurnsRightHandedAboutAnAxisOfAnyLength)
{
    EXPECT_POINT3D_NEAR(0, 0, 1, CVexGeVector3d(0, 1, 0).rotateBy(kPi / 2, {5, 0, 0}), 1e-15);
    EXPECT_POINT3D_NEAR(0, 1, 0, CVexGeVector3d(1, 0, 0).rotateBy(2 * kPi / 3, {1, 1, 1}), 1e-15);
    EXPECT_POINT3D_NEAR(0, 1, 0, CVexGeVector3d(0, 1, 0).rotateBy(1.0, {0, 0, 0}), 0);
}

TEST(Vector3dTest, AngleBetweenHasNoSign)
{
    EXPECT_NEAR(kPi / 2, CVexGeVector3d(1, 0, 0).angleTo({0, 0, -3}), 1e-15);
    EXPECT_EQ(0.0, CVexGeVector3d(0, 0, 0).angleTo({1, 0, 0}));
    EXPECT_EQ(0.0, CVexGeVector3d(0.1, 0.6, 0).angleTo({-0.1, -0.6, 0})); // rounded below -1
}

TEST(Vector3dTest, FileFormIsTwentyFourBytes)
{
    const std::string hex = savedHex(CVexGeVector3d(1, -2.5, 0));
    EXPECT_EQ("000000000000f03f"
              "00000000000004c0"
              "0000000000000000",
              hex);
    CVexGeVector3d v(9, 9, 9);
    EXPECT_TRUE(readHex(v, hex));
    EXPECT_POINT3D_NEAR(1, -2.5, 0, v, 0);
}
