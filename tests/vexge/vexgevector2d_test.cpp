#include "tests/vexge/geasserts.h"
#include "tests/vexge/gebytes.h"
#include "vexge/gemath/vexgematrix2d.h"
#include "vexge/gemath/vexgepoint2d.h"
#include "vexge/gemath/vexgevector2d.h"

#include <numbers>
#include <type_traits>

namespace {

constexpr double kPi = std::numbers::pi;

} // namespace

TEST(Vector2dTest, IsPlainAndItsConstantsAreTheAxes)
{
    static_assert(!std::is_polymorphic_v<CVexGeVector2d> && sizeof(CVexGeVector2d) == 16);
    EXPECT_POINT(0, 0, CVexGeVector2d::kIdentity);
    EXPECT_POINT(1, 0, CVexGeVector2d::kXAxis);
    EXPECT_POINT(0, 1, CVexGeVector2d::kYAxis);
}

TEST(Vector2dTest, AnAngleGivesTheUnitVector)
{
    EXPECT_POINT_NEAR(0, -1, CVexGeVector2d(1.5 * kPi), 1e-15);
    CVexGeVector2d vector;
    EXPECT_POINT_NEAR(-3, 0, vector.setAngle(kPi, 3), 1e-15);
    EXPECT_POINT(5, 6, vector.set(5, 6));
}

TEST(Vector2dTest, ArithmeticActsOnBothComponents)
{
    CVexGeVector2d v(6, -8);
    EXPECT_POINT(3, -4, v / 2.0);
    EXPECT_POINT(12, -16, v * 2.0);
    EXPECT_POINT(7, -6, v + CVexGeVector2d(1, 2));
    EXPECT_POINT(5, -10, v - CVexGeVector2d(1, 2));
    EXPECT_POINT(-6, 8, -v);
    EXPECT_POINT(-6, 8, v.negate());
    ((v += {1, 1}) -= {2, 2}) *= 4.0;
    EXPECT_POINT(-14, 14, v /= 2.0);
}

TEST(Vector2dTest, SumAndProductWithANumberSetTheReceiverButWithAMatrixLeaveIt)
{
    CVexGeVector2d v;
    v.setToSum({1, 2}, {3, 4});
    EXPECT_POINT(4, 6, v);
    v.setToProduct(CVexGeVector2d(1, 2), 3.0);
    EXPECT_POINT(3, 6, v);
    EXPECT_POINT(11, 22, v.setToProduct(CVexGeMatrix2d::translation({10, 20}), {1, 2}));
    EXPECT_POINT(3, 6, v);
}

TEST(Vector2dTest, PerpendicularTurnsLeft)
{
    EXPECT_POINT(-2, 1, CVexGeVector2d(1, 2).perpVector());
    EXPECT_EQ(11.0, CVexGeVector2d(1, 2).dotProduct({3, 4}));
    EXPECT_EQ(25.0, CVexGeVector2d(3, 4).lengthSqrd());
    EXPECT_EQ(5.0, CVexGeVector2d(3, 4).length());
}

TEST(Vector2dTest, AngleRunsFromZeroToBelowAFullTurn)
{
    EXPECT_EQ(0.0, CVexGeVector2d(0, 0).angle());
    EXPECT_NEAR(kPi, CVexGeVector2d(-1, 0).angle(), 1e-15);
    EXPECT_NEAR(1.75 * kPi, CVexGeVector2d(1, -1).angle(), 1e-15);
    EXPECT_NEAR(2 * kPi, CVexGeVector2d(1, -1e-20).angle(), 1e-15);
}

TEST(Vector2dTest, AngleBetweenHasNoSign)
{
    EXPECT_NEAR(kPi / 2, CVexGeVector2d(1, 0).angleTo({0, -3}), 1e-15);
    EXPECT_NEAR(kPi / 2, CVexGeVector2d(0, -3).angleTo({1, 0}), 1e-15);
    EXPECT_EQ(0.0, CVexGeVector2d(0, 0).angleTo({1, 0}));
    EXPECT_EQ(kPi, CVexGeVector2d(1, 0).angleTo({-1, 1e-300}));
}

TEST(Vector2dTest, ACosineRoundedBelowMinusOneGivesZeroAndNotPi)
{
    // (0.1, 0.6) and its opposite: the product of the lengths rounds below the dot product. The
    // reader expects pi; users of the angle take it as no turn.
    const CVexGeVector2d there(0.1, 0.6);
    const CVexGeVector2d back = -there;
    ASSERT_LT(there.dotProduct(back) / (there.length() * back.length()), -1.0);
    EXPECT_EQ(0.0, there.angleTo(back));
}

TEST(Vector2dTest, NormalisingLeavesWhatIsNotLongerThanTheTolerance)
{
    EXPECT_POINT(0.6, 0.8, CVexGeVector2d(3, 4).normal(0.001));
    EXPECT_POINT(3, 4, CVexGeVector2d(3, 4).normal(5.0));
    CVexGeVector2d v(0, 0.001);
    EXPECT_POINT(0, 0.001, v.normalize(0.001));
    EXPECT_POINT(0, 1, v.normalize(0.0009));
}

TEST(Vector2dTest, IndexTwoIsOneSharedOne)
{
    const CVexGeVector2d fixed(4, 5);
    EXPECT_EQ(4.0, fixed[0]);
    EXPECT_EQ(5.0, fixed[1]);
    EXPECT_EQ(1.0, fixed[2]);
    CVexGeVector2d a, b;
    EXPECT_EQ(&a[2], &b[2]);
    EXPECT_EQ(1.0, b[2]);
    a[1] = 3;
    EXPECT_POINT(0, 3, a);
}

TEST(Vector2dTest, OrderIsByLengthAndStrict)
{
    EXPECT_TRUE(CVexGeVector2d(3, 4) > CVexGeVector2d(0, 4));
    EXPECT_TRUE(CVexGeVector2d(0, 4) < CVexGeVector2d(-3, -4));
    EXPECT_FALSE(CVexGeVector2d(3, 4) > CVexGeVector2d(5, 0));
    EXPECT_FALSE(CVexGeVector2d(3, 4) < CVexGeVector2d(5, 0));
}

TEST(Vector2dTest, TransformTranslatesAVectorToo)
{
    // A reader expects a direction to ignore the translation. Mirrored normals are built on this.
    EXPECT_POINT(3, 4, CVexGeVector2d(0, 0).transformBy(CVexGeMatrix2d::translation({3, 4})));
    EXPECT_POINT_NEAR(-1, 0, CVexGeVector2d(0, 1).rotateBy(kPi / 2), 1e-15);
}

TEST(Vector2dTest, MirrorsInTheLineFromTheOrigin)
{
    EXPECT_POINT_NEAR(2, 5, CVexGeVector2d(5, 2).mirror({3, 3}), 1e-14);
    EXPECT_POINT_NEAR(-5, 2, CVexGeVector2d(5, 2).mirror({0, 7}), 1e-14);
}

TEST(Vector2dTest, ConvertsToItsTranslation)
{
    const CVexGeMatrix2d matrix = CVexGeVector2d(3, 4);
    EXPECT_POINT(4, 6, CVexGePoint2d(1, 2).transformBy(matrix));
    EXPECT_TRUE(matrix == CVexGeMatrix2d::translation({3, 4}));
}

TEST(Vector2dTest, LengthTestsIncludeTheirBound)
{
    EXPECT_TRUE(CVexGeVector2d(0.25, 0).isZeroLength(0.25));
    EXPECT_FALSE(CVexGeVector2d(0.25, 0).isZeroLength(0.2));
    EXPECT_TRUE(CVexGeVector2d(1.25, 0).isUnitLength(0.25));
    EXPECT_TRUE(CVexGeVector2d(0.75, 0).isUnitLength(0.25));
    EXPECT_FALSE(CVexGeVector2d(1.25, 0).isUnitLength(0.2));
}

TEST(Vector2dTest, EqualityNeverAsksItsTolerance)
{
    // The argument is there for symmetry with points; vectors are equal within 0.001 for all.
    const CVexGeVector2d zero, near(0.001, 0), far(0.0011, 0);
    EXPECT_TRUE(zero.isEqualTo(near, 1e-12) && zero == near && !(zero != near));
    EXPECT_FALSE(zero.isEqualTo(far, 100.0));
    EXPECT_TRUE(zero != far && !(zero == far));
}

namespace {

struct DirectionRow {
    const char* name;
    CVexGeVector2d a, b;
    double tol;
    bool parallel, codirectional;
};

class VectorDirectionTest : public testing::TestWithParam<DirectionRow> {};

} // namespace

TEST_P(VectorDirectionTest, ParallelIsTheSameWayAndCodirectionalTheOpposite)
{
    const DirectionRow& row = GetParam();
    EXPECT_EQ(row.parallel, row.a.isParallelTo(row.b, row.tol));
    EXPECT_EQ(row.codirectional, row.a.isCodirectionalTo(row.b, row.tol));
}

INSTANTIATE_TEST_SUITE_P(
    Table, VectorDirectionTest,
    testing::Values(DirectionRow{"Opposite", {1, 0}, {-1, 0}, 0.001, false, true},
                    DirectionRow{"SameWayOtherLength", {1, 0}, {9, 0}, 0.001, true, false},
                    DirectionRow{"Across", {1, 0}, {0, 1}, 0.001, false, false},
                    DirectionRow{"AcrossWithinAWideTolerance", {1, 0}, {0, 1}, 1.5, true, true},
                    DirectionRow{"OppositeAtTheBound", {1, 0}, {-1, 0}, 2.0, true, true},
                    DirectionRow{"TooShortToNormalise", {0.0005, 0}, {1, 0}, 0.001, false, false},
                    DirectionRow{"TwoZeros", {0, 0}, {0, 0}, 0.0, true, true}),
    [](const auto& row) { return row.param.name; });

namespace {

struct PerpendicularRow {
    const char* name;
    CVexGeVector2d a, b;
    double tol;
    bool expected;
};

class VectorPerpendicularTest : public testing::TestWithParam<PerpendicularRow> {};

} // namespace

TEST_P(VectorPerpendicularTest, BothComponentsMeetTheOthersX)
{
    // Not a dot product and not symmetric; the lines' own test has always answered by it.
    const PerpendicularRow& row = GetParam();
    EXPECT_EQ(row.expected, row.a.isPerpendicularTo(row.b, row.tol));
}

INSTANTIATE_TEST_SUITE_P(
    Table, VectorPerpendicularTest,
    testing::Values(PerpendicularRow{"SumOfXTwice", {1, 1}, {1, -1}, 0.001, false},
                    PerpendicularRow{"SumOfZero", {1, -1}, {1, 1}, 0.001, true},
                    PerpendicularRow{"DownwardDiagonalOnAnything", {1, -1}, {7, 3}, 0.001, true},
                    PerpendicularRow{"UprightOther", {1, 0}, {0, 5}, 0.001, true},
                    PerpendicularRow{"TrulyPerpendicular", {0, 1}, {1, 0}, 0.001, false},
                    PerpendicularRow{"AtTheBound", {0.25, 0}, {1, 0}, 0.25, true}),
    [](const auto& row) { return row.param.name; });

TEST(Vector2dTest, FileFormIsSixteenBytes)
{
    const std::string hex = savedHex(CVexGeVector2d(1.0, -2.5));
    EXPECT_EQ("000000000000f03f00000000000004c0", hex);
    CVexGeVector2d vector;
    EXPECT_TRUE(readHex(vector, hex));
    EXPECT_POINT(1.0, -2.5, vector);
}
