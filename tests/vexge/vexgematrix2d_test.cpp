#include "tests/vexge/geasserts.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/gemath/vexgematrix2d.h"
#include "vexge/gemath/vexgematrix3d.h"
#include "vexge/gemath/vexgepoint2d.h"

#include <array>
#include <numbers>
#include <type_traits>

namespace {

constexpr double kPi = std::numbers::pi;
using Rows = std::array<double, 9>;

CVexGeMatrix2d matrixOf(const Rows& rows)
{
    CVexGeMatrix2d result(false);
    for (int i = 0; i < 9; ++i) {
        result(i / 3, i % 3) = rows[static_cast<std::size_t>(i)];
    }
    return result;
}

Rows rowsOf(const CVexGeMatrix2d& matrix)
{
    Rows rows{};
    for (int i = 0; i < 9; ++i) {
        rows[static_cast<std::size_t>(i)] = matrix(i / 3, i % 3);
    }
    return rows;
}

void expectNear(const Rows& expected, const CVexGeMatrix2d& matrix, double tol)
{
    for (int i = 0; i < 9; ++i) {
        EXPECT_NEAR(expected[static_cast<std::size_t>(i)], matrix(i / 3, i % 3), tol)
            << "row " << i / 3 << ", column " << i % 3;
    }
}

const Rows kIdentityRows = {1, 0, 0, 0, 1, 0, 0, 0, 1};
const Rows kCounting = {1, 2, 3, 4, 5, 6, 7, 8, 10};

} // namespace

TEST(Matrix2dTest, StartsAsIdentityOrZeros)
{
    static_assert(!std::is_polymorphic_v<CVexGeMatrix2d>);
    EXPECT_EQ(kIdentityRows, rowsOf(CVexGeMatrix2d(true)));
    EXPECT_EQ(Rows{}, rowsOf(CVexGeMatrix2d(false)));
    EXPECT_EQ(kIdentityRows, rowsOf(CVexGeMatrix2d::kIdentity));
    EXPECT_EQ(kIdentityRows, rowsOf(matrixOf(kCounting).setToIdentity()));
}

TEST(Matrix2dTest, ProductAppliesItsRightOperandFirst)
{
    const CVexGeMatrix2d shift = CVexGeMatrix2d::translation({10, 0});
    const CVexGeMatrix2d twice = CVexGeMatrix2d::scaling(2, CVexGePoint2d::kOrigin);
    EXPECT_POINT(12, 2, CVexGePoint2d(1, 1).transformBy(shift * twice));
    EXPECT_POINT(22, 2, CVexGePoint2d(1, 1).transformBy(twice * shift));
}

TEST(Matrix2dTest, EachProductInPlaceKeepsItsSide)
{
    const CVexGeMatrix2d a = CVexGeMatrix2d::translation({10, 0});
    const CVexGeMatrix2d b = CVexGeMatrix2d::scaling(2, CVexGePoint2d::kOrigin);
    CVexGeMatrix2d product = a;
    EXPECT_EQ(rowsOf(a * b), rowsOf(product *= b));
    product = a;
    EXPECT_EQ(rowsOf(a * b), rowsOf(product.postMultBy(b)));
    product = a;
    EXPECT_EQ(rowsOf(b * a), rowsOf(product.preMultBy(b)));
    EXPECT_EQ(rowsOf(a * b), rowsOf(product.setToProduct(a, b)));
}

TEST(Matrix2dTest, TransposeAnswersWithACopy)
{
    CVexGeMatrix2d matrix = matrixOf(kCounting);
    const Rows turned = {1, 4, 7, 2, 5, 8, 3, 6, 10};
    EXPECT_EQ(turned, rowsOf(matrix.transpose()));
    EXPECT_EQ(kCounting, rowsOf(matrix));
    matrix.transposeIt();
    EXPECT_EQ(turned, rowsOf(matrix));
}

TEST(Matrix2dTest, DeterminantTakesM11M20InItsSecondCofactor)
{
    // (5*10 - 6*8)*1 - (4*10 - 5*7)*2 + (4*8 - 5*7)*3 = 2 - 10 - 9. A textbook has 42 for 35.
    EXPECT_EQ(-17.0, matrixOf(kCounting).det());
    EXPECT_EQ(6.0, CVexGeMatrix2d::scaling(2, 3, {5, 7}).det());
    EXPECT_TRUE(matrixOf(kCounting).isSingular(17.0));
    EXPECT_FALSE(matrixOf(kCounting).isSingular(16.9));
}

TEST(Matrix2dTest, EqualityIsStrict)
{
    CVexGeMatrix2d other(true);
    other(2, 1) = 0.25;
    EXPECT_FALSE(CVexGeMatrix2d::kIdentity.isEqualTo(other, 0.25));
    EXPECT_TRUE(CVexGeMatrix2d::kIdentity.isEqualTo(other, 0.26));
    other(2, 1) = 0.00099;
    EXPECT_TRUE(CVexGeMatrix2d::kIdentity == other && !(CVexGeMatrix2d::kIdentity != other));
    other(2, 1) = 0.001;
    EXPECT_TRUE(CVexGeMatrix2d::kIdentity != other && !(CVexGeMatrix2d::kIdentity == other));
}

TEST(Matrix2dTest, ScaleIsTheLongerColumn)
{
    EXPECT_EQ(5.0, matrixOf({3, 0, 9, 4, 2, 9, 9, 9, 9}).scale());
    EXPECT_EQ(13.0, matrixOf({3, 5, 9, 4, 12, 9, 9, 9, 9}).scale());
}

TEST(Matrix2dTest, MemberTranslationKeepsYOnTheDiagonal)
{
    // The pair is a store for two numbers: y does not move a point but scales it.
    CVexGeMatrix2d matrix(true);
    matrix.setTranslation({3, 4});
    EXPECT_POINT(3, 4, matrix.translation());
    EXPECT_EQ((Rows{1, 0, 3, 0, 4, 0, 0, 0, 1}), rowsOf(matrix));
    EXPECT_POINT(13, 20, CVexGePoint2d(10, 5).transformBy(matrix));
    EXPECT_POINT(3, 1, CVexGeMatrix2d::translation({3, 4}).translation());
}

TEST(Matrix2dTest, CoordinateSystemStandsInTheColumns)
{
    CVexGeMatrix2d matrix(false);
    matrix.setCoordSystem({5, 6}, {1, 2}, {3, 4});
    EXPECT_EQ((Rows{1, 3, 5, 2, 4, 6, 0, 0, 1}), rowsOf(matrix));
    CVexGePoint2d origin;
    CVexGeVector2d xAxis, yAxis;
    matrix.getCoordSystem(origin, xAxis, yAxis);
    EXPECT_POINT(5, 6, origin);
    EXPECT_POINT(1, 2, xAxis);
    EXPECT_POINT(3, 4, yAxis);
}

TEST(Matrix2dTest, ScaledOrthoHasNoAbsoluteValueAndTakesM01Twice)
{
    // 2*(-3) + (-3)*5 = -21 passes any tolerance, although the columns are not at right angles.
    EXPECT_TRUE(matrixOf({2, -3, 0, 7, 5, 0, 0, 0, 1}).isScaledOrtho(0.001));
    EXPECT_FALSE(matrixOf({2, 3, 0, 7, 5, 0, 0, 0, 1}).isScaledOrtho(20.9));
    EXPECT_TRUE(matrixOf({2, 3, 0, 7, 5, 0, 0, 0, 1}).isScaledOrtho(21.0));
    // A rotation by 30 degrees has m00 m01 + m01 m11 = -2 cos sin and passes; by -30 it fails.
    EXPECT_TRUE(CVexGeMatrix2d::rotation(kPi / 6, {0, 0}).isScaledOrtho(0.001));
    EXPECT_FALSE(CVexGeMatrix2d::rotation(-kPi / 6, {0, 0}).isScaledOrtho(0.001));
}

TEST(Matrix2dTest, UniformScaleIsNotPartOfTheUniformTest)
{
    // Different lengths pass against the name; entities choose how to transform by it.
    EXPECT_TRUE(CVexGeMatrix2d::scaling(2, 9, {0, 0}).isUniScaledOrtho(0.001));
    EXPECT_TRUE(CVexGeMatrix2d::scaling(2, 2, {0, 0}).isUniScaledOrtho(0.001));
    EXPECT_FALSE(matrixOf({2, 3, 0, 7, 5, 0, 0, 0, 1}).isUniScaledOrtho(0.001));
}

TEST(Matrix2dTest, SettersComposeBehindWhatTheMatrixHolds)
{
    CVexGeMatrix2d matrix(true);
    matrix.setToRotation(kPi / 2, CVexGePoint2d::kOrigin);
    matrix.setToRotation(kPi / 2, CVexGePoint2d::kOrigin);
    expectNear({-1, 0, 0, 0, -1, 0, 0, 0, 1}, matrix, 1e-15);
    matrix.setToTranslation({10, 20}).setToScaling(2, {0, 0});
    EXPECT_POINT_NEAR(18, 38, CVexGePoint2d(1, 1).transformBy(matrix), 1e-14);
}

TEST(Matrix2dTest, EverySetterIsItsStaticTimesTheMatrix)
{
    const CVexGeLine2d line(CVexGePoint2d(1, 0), CVexGePoint2d(3, 2));
    const CVexGePoint2d p(2, 5);
    const CVexGeMatrix2d held = matrixOf({1, 2, 3, 4, 5, 6, 0, 0, 1});
    const auto after = [&held](const CVexGeMatrix2d& operation) {
        return rowsOf(operation * held);
    };
    CVexGeMatrix2d m = held;
    EXPECT_EQ(after(CVexGeMatrix2d::scaling(2, 3, p)), rowsOf(m.setToScaling(2, 3, p)));
    m = held;
    EXPECT_EQ(after(CVexGeMatrix2d::mirroring(p)), rowsOf(m.setToMirroring(p)));
    m = held;
    EXPECT_EQ(after(CVexGeMatrix2d::mirroring(line)), rowsOf(m.setToMirroring(line)));
    m = held;
    EXPECT_EQ(after(CVexGeMatrix2d::slant(0.5, p, {1, 1})), rowsOf(m.setToSlant(0.5, p, {1, 1})));
    m = held;
    EXPECT_EQ(after(CVexGeMatrix2d::translation({1, 1})), rowsOf(m.setToTranslation({1, 1})));
}

TEST(Matrix2dTest, RotationAndScalingKeepTheirCentre)
{
    expectNear({0, -1, 3, 1, 0, 1, 0, 0, 1}, CVexGeMatrix2d::rotation(kPi / 2, {1, 2}), 1e-15);
    EXPECT_EQ((Rows{2, 0, -1, 0, 3, -4, 0, 0, 1}), rowsOf(CVexGeMatrix2d::scaling(2, 3, {1, 2})));
    EXPECT_EQ((Rows{2, 0, -1, 0, 2, -2, 0, 0, 1}), rowsOf(CVexGeMatrix2d::scaling(2, {1, 2})));
}

TEST(Matrix2dTest, MirrorThroughAPointIsHalfATurn)
{
    EXPECT_EQ((Rows{-1, 0, 2, 0, -1, 4, 0, 0, 1}), rowsOf(CVexGeMatrix2d::mirroring({1, 2})));
    EXPECT_POINT(-1, 1, CVexGePoint2d(3, 3).transformBy(CVexGeMatrix2d::mirroring({1, 2})));
}

TEST(Matrix2dTest, MirrorInALineFollowsItsSlope)
{
    const CVexGeLine2d diagonal(CVexGePoint2d(1, 0), CVexGePoint2d(3, 2)); // y = x - 1
    expectNear({0, 1, 1, 1, 0, -1, 0, 0, 1}, CVexGeMatrix2d::mirroring(diagonal), 1e-15);
}

TEST(Matrix2dTest, ANearlyVerticalLineMirrorsAsVerticalThroughItsEnd)
{
    // dx is 0.0009 over a height of 0.001, so the true slope would be near 45 degrees.
    const CVexGeLine2d leaning(CVexGePoint2d(2, 0), CVexGePoint2d(2.0009, 0.001));
    expectNear({-1, 0, 4.0018, 0, 1, 0, 0, 0, 1}, CVexGeMatrix2d::mirroring(leaning), 1e-14);
    const CVexGeLine2d sloped(CVexGePoint2d(0, 0), CVexGePoint2d(0.00101, 0.00101));
    expectNear({0, 1, 0, 1, 0, 0, 0, 0, 1}, CVexGeMatrix2d::mirroring(sloped), 1e-14);
}

TEST(Matrix2dTest, SlantShearsAlongItsDirection)
{
    const CVexGeMatrix2d level = CVexGeMatrix2d::slant(kPi / 4, {1, 2}, {1, 0});
    EXPECT_POINT_NEAR(1, 2, CVexGePoint2d(1, 2).transformBy(level), 1e-15);
    EXPECT_POINT_NEAR(4, 5, CVexGePoint2d(1, 5).transformBy(level), 1e-14);
    const CVexGeMatrix2d upright = CVexGeMatrix2d::slant(kPi / 4, {0, 0}, {0, 1});
    EXPECT_POINT_NEAR(3, -3, CVexGePoint2d(3, 0).transformBy(upright), 1e-14);
}

TEST(Matrix2dTest, SlantAtARightAngleIsTheIdentity)
{
    EXPECT_EQ(kIdentityRows, rowsOf(CVexGeMatrix2d::slant(kPi / 2, {1, 2}, {1, 1})));
    EXPECT_EQ(kIdentityRows, rowsOf(CVexGeMatrix2d::slant(-kPi / 2, {1, 2}, {1, 1})));
    EXPECT_EQ(kIdentityRows, rowsOf(CVexGeMatrix2d::slant(3.0, {1, 2}, {1, 1})));
    EXPECT_NE(kIdentityRows, rowsOf(CVexGeMatrix2d::slant(1.57, {1, 2}, {1, 1})));
}

TEST(Matrix2dTest, InverseUndoes)
{
    expectNear({-2.0 / 3, -4.0 / 3, 1, -2.0 / 3, 11.0 / 3, -2, 1, -2, 1},
               matrixOf(kCounting).inverse(), 1e-14);
    expectNear(kIdentityRows, matrixOf(kCounting) * matrixOf(kCounting).inverse(), 1e-14);
    // A zero in the pivot's place needs an exchange of rows.
    EXPECT_EQ((Rows{0, 1, 0, 1, 0, 0, 0, 0, 0.5}),
              rowsOf(matrixOf({0, 1, 0, 1, 0, 0, 0, 0, 2}).inverse()));
}

TEST(Matrix2dTest, InverseOfASingularMatrixIsZeros)
{
    EXPECT_EQ(Rows{}, rowsOf(CVexGeMatrix2d(false).inverse()));
    EXPECT_EQ(Rows{}, rowsOf(matrixOf({1, 2, 3, 0, 0, 0, 7, 8, 10}).inverse()));
    CVexGeMatrix2d flat = matrixOf({1, 2, 0, 2, 4, 0, 0, 0, 1});
    EXPECT_EQ(Rows{}, rowsOf(flat.invert()));
    EXPECT_EQ(Rows{}, rowsOf(flat));
}

TEST(Matrix2dTest, PivotOnATieIsTheLaterRow)
{
    struct Opened : CVexGeMatrix2d {
        using CVexGeMatrix2d::LU_Backsub;
        using CVexGeMatrix2d::LU_Decompose;
    };
    double parts[3][3] = {{1, 2, 1}, {1, 1, 1}, {1, 1, 2}}; // scaled firsts: 1/2, 1, 1/2
    int index[3] = {};
    ASSERT_TRUE(Opened::LU_Decompose(parts, index));
    EXPECT_EQ(1, index[0]);
    double even[3][3] = {{1, 0, 0}, {1, 1, 0}, {1, 0, 1}}; // all scaled firsts are 1
    ASSERT_TRUE(Opened::LU_Decompose(even, index));
    EXPECT_EQ(2, index[0]);
    double right[3] = {1, 2, 3}; // x = 1, y = 1, z = 2
    Opened::LU_Backsub(even, index, right);
    EXPECT_THAT(right, testing::ElementsAre(1, 1, 2));
}

TEST(Matrix3dTest, CarriesSixteenElements)
{
    static_assert(std::has_virtual_destructor_v<CVexGeMatrix3d>);
    CVexGeMatrix3d matrix;
    for (int i = 0; i < 16; ++i) {
        matrix(i / 4, i % 4) = i;
    }
    CVexGeMatrix3d other;
    other = matrix;
    EXPECT_EQ(6.0, other(1, 2));
    EXPECT_EQ(15.0, other.m[3][3]);
}
