#include "tests/vexge/geassertlog.h"
#include "vexge/geentity/vexpolynomial.h"

#include <cfloat>
#include <cmath>
#include <gmock/gmock.h>
#include <initializer_list>

namespace {

/// Coefficients from the constant term upwards.
CVexPolynomial polynomial(std::initializer_list<double> coefficients)
{
    CVexPolynomial result(static_cast<int>(coefficients.size()) - 1);
    int power = 0;
    for (const double coefficient : coefficients) {
        result[power++] = coefficient;
    }
    return result;
}

constexpr double kUntouched = -777.0;

struct ClosedRow {
    const char* name;
    std::vector<double> coefficients;
    std::vector<double> roots; // in the order of the closed form
};

/// Solves by the closed form of the polynomial's degree.
std::vector<double> solve(const CVexPolynomial& p)
{
    double roots[4] = {kUntouched, kUntouched, kUntouched, kUntouched};
    int count = -1;
    const bool known = p.GetDegree() == 2   ? p.RootsDegree2(count, roots)
                       : p.GetDegree() == 3 ? p.RootsDegree3(count, roots)
                                            : p.RootsDegree4(count, roots);
    EXPECT_TRUE(known);
    return {roots, roots + count};
}

class PolynomialClosedTest : public testing::TestWithParam<ClosedRow> {};

} // namespace

TEST_P(PolynomialClosedTest, GivesItsRootsInOrder)
{
    const ClosedRow& row = GetParam();
    CVexPolynomial p(static_cast<int>(row.coefficients.size()) - 1);
    for (std::size_t i = 0; i < row.coefficients.size(); ++i) {
        p[static_cast<int>(i)] = row.coefficients[i];
    }
    EXPECT_THAT(solve(p), testing::Pointwise(testing::DoubleNear(2e-6), row.roots));
}

INSTANTIATE_TEST_SUITE_P(
    Quadratic, PolynomialClosedTest,
    testing::Values(ClosedRow{"Two", {-6, 1, 1}, {-3, 2}},
                    ClosedRow{"Scaled", {12, -14, 4}, {1.5, 2}}, ClosedRow{"None", {1, 0, 1}, {}},
                    ClosedRow{"Double", {4, -4, 1}, {2}},
                    ClosedRow{"DiscriminantOfAMillionth", {1 - 2.4e-7, 2, 1}, {-1}},
                    ClosedRow{"NegativeDiscriminantOfAMillionth", {1 + 2.4e-7, 2, 1}, {-1}}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Cubic, PolynomialClosedTest,
    testing::Values(
        // (x - 1)(x^2 + 1): off = -1/3, one real root.
        ClosedRow{"One", {-1, 1, -1, 1}, {1}}, ClosedRow{"OneScaled", {16, 0, 0, 2}, {-2}},
        // (x + 3)(x - 1)(x - 2): the angle's root first, then the lowest, then the middle one.
        ClosedRow{"Three", {6, -7, 0, 1}, {2, -3, 1}},
        // (x - 1)^2 (x + 2): the single root first, the double one twice.
        ClosedRow{"DoubleIsGivenTwice", {2, -3, 0, 1}, {-2, 1, 1}},
        ClosedRow{"DoubleBelow", {-2, -3, 0, 1}, {2, -1, -1}},
        ClosedRow{"Triple", {0, 0, 0, 1}, {0, 0, 0}}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Quartic, PolynomialClosedTest,
    testing::Values(
        // (x^2 - 3x + 2)(x^2 + 7x + 12) = x^4 + 4x^3 - 7x^2 - 22x + 24.
        ClosedRow{"Four", {24, -22, -7, 4, 1}, {2, 1, -3, -4}},
        // (x^2 - 1)(x^2 + 2x + 5)
        ClosedRow{"Two", {-5, -2, 4, 2, 1}, {1, -1}},
        // (x^2 + x + 1)(x^2 - x + 2)
        ClosedRow{"None", {2, 1, 2, 0, 1}, {}},
        // x^4 + 5x^2 + 4: the resolvent's square is above 0, both quadratics without roots.
        ClosedRow{"Imaginary", {4, 0, 5, 0, 1}, {}},
        // (x - 1)^2 (x + 1)^2: each double root once, in the split case.
        ClosedRow{"TwoDoubles", {1, 0, -2, 0, 1}, {1, -1}}),
    [](const auto& row) { return row.param.name; });

TEST(PolynomialClosedFormTest, AnotherDegreeIsRefusedAndNothingWritten)
{
    double roots[4] = {kUntouched, kUntouched, kUntouched, kUntouched};
    int count = 9;
    EXPECT_FALSE(polynomial({1, 1}).RootsDegree2(count, roots));
    EXPECT_FALSE(polynomial({1, 1, 1}).RootsDegree3(count, roots));
    EXPECT_FALSE(polynomial({1, 1, 1}).RootsDegree4(count, roots));
    EXPECT_EQ(9, count);
    EXPECT_EQ(kUntouched, roots[0]);
}

TEST(PolynomialClosedFormTest, CentredQuarticGivesItsOuterPair)
{
    // x^4 - 0.5x^2 - 1: the resolvent (y + 0.5)(y^2 + 4) has the one root c2, so R2 is 0. A is 1
    // and t is 2 sqrt(4.25) = sqrt(17): A - t is below 0 and leaves the outer pair alone.
    const double outer = 0.5 * std::sqrt(1 + std::sqrt(17.0));
    EXPECT_THAT(solve(polynomial({-1, 0, -0.5, 0, 1})),
                testing::Pointwise(testing::DoubleNear(1e-5), {outer, -outer}));
}

TEST(PolynomialClosedFormTest, CentredQuarticRepeatsItsInnerUpperRoot)
{
    // x^4 - 0.1x^2 + 1e-8: the resolvent's discriminant counts as 0 and its first root is
    // -0.1 + 8e-7, so R2 counts as 0. A + t is 0.399998 and A - t is 2e-6. A reader expects the
    // minus root last; the plus root stands there again.
    const std::vector<double> roots = solve(polynomial({1e-8, 0, -0.1, 0, 1}));
    EXPECT_THAT(roots, testing::Pointwise(testing::DoubleNear(1e-5),
                                          {0.316227, -0.316227, 0.000707, 0.000707}));
    EXPECT_EQ(roots[2], roots[3]);
}

TEST(PolynomialClosedFormTest, SpecialCubeRootSolvesTheMonotoneCubic)
{
    // 2 x^3 + 3 x = 22 at x = 2; the exponent is a third in single precision.
    EXPECT_NEAR(2.0, CVexPolynomial::SpecialCubeRoot(2, 3, 22), 1e-5);
    EXPECT_NEAR(-2.0, CVexPolynomial::SpecialCubeRoot(2, 3, -22), 1e-5);
    EXPECT_NEAR(0.0, CVexPolynomial::SpecialCubeRoot(2, 3, 0), 1e-15);
}

TEST(PolynomialStabilityTest, HoldsWhenEveryRootHasANegativeRealPart)
{
    EXPECT_TRUE(polynomial({2, 3, 1}).AlldoublePartsNegative());      // -1, -2
    EXPECT_TRUE(polynomial({4, 6, 2}).AlldoublePartsNegative());      // the same, scaled
    EXPECT_FALSE(polynomial({-2, 1, 1}).AlldoublePartsNegative());    // 1, -2
    EXPECT_TRUE(polynomial({5, 7, 3, 1}).AlldoublePartsNegative());   // -1, -1 +- 2i
    EXPECT_FALSE(polynomial({5, 3, -1, 1}).AlldoublePartsNegative()); // -1, 1 +- 2i
    EXPECT_FALSE(polynomial({1, 0, 1}).AlldoublePartsNegative());     // +-i
}

TEST(PolynomialStabilityTest, PositiveIsTheSameForMinusX)
{
    EXPECT_TRUE(polynomial({2, -3, 1}).AlldoublePartsPositive()); // 1, 2
    EXPECT_FALSE(polynomial({2, 3, 1}).AlldoublePartsPositive());
    EXPECT_TRUE(polynomial({-5, 7, -3, 1}).AlldoublePartsPositive()); // 1, 1 +- 2i
    EXPECT_FALSE(polynomial({-2, 1, 1}).AlldoublePartsPositive());
}

TEST(PolynomialStabilityTest, StaticFormReducesTheDegreeInPlace)
{
    // x^3 + 3x^2 + 7x + 5: temp = {2*5*3, 2*(3*7 - 5), 2*3*3} = {30, 32, 18}.
    double c[3] = {5, 7, 3};
    EXPECT_TRUE(CVexPolynomial::AlldoublePartsNegative(3, c));
    // Then x^2 + 32/18 x + 30/18: temp = {2*30/18*32/18, 2*(32/18)^2}, so c[0] = 30/32.
    EXPECT_NEAR(0.9375, c[0], 1e-15);
    EXPECT_TRUE(polynomial({3}).AlldoublePartsNegative());
}

TEST(PolynomialSturmTest, CountsDistinctRootsBetweenTwoParameters)
{
    const CVexPolynomial p = polynomial({-6, 11, -6, 1}); // 1, 2, 3
    EXPECT_EQ(3, p.GetRootCount(0, 4));
    EXPECT_EQ(1, p.GetRootCount(1.5, 2.5));
    EXPECT_EQ(0, p.GetRootCount(5, 9));
    EXPECT_EQ(2, polynomial({2, -3, 0, 1}).GetRootCount(-5, 5)); // 1 twice and -2
    EXPECT_EQ(0, polynomial({1, 0, 1}).GetRootCount(-5, 5));
}

TEST(PolynomialSturmTest, TheLargestDoublesStandForInfinity)
{
    const CVexPolynomial p = polynomial({-6, 11, -6, 1});
    EXPECT_EQ(3, p.GetRootCount(-DBL_MAX, DBL_MAX));
    EXPECT_EQ(2, p.GetRootCount(-DBL_MAX, 2.5));
    EXPECT_EQ(1, p.GetRootCount(2.5, DBL_MAX));
    EXPECT_EQ(2, polynomial({-6, 1, 1}).GetRootCount(-DBL_MAX, DBL_MAX));
}

TEST(PolynomialSturmTest, AZeroIsAChangeOfItsOwn)
{
    // x - 1 from its root on: values 0, 1 make one change where Sturm's rule would make none, so
    // the root at the start of the interval counts.
    EXPECT_EQ(1, polynomial({-1, 1}).GetRootCount(1, 5));
    EXPECT_EQ(1, polynomial({-1, 1}).GetRootCount(1.00009, 5)); // still below 1e-4
    EXPECT_EQ(0, polynomial({-1, 1}).GetRootCount(1.0002, 5));
    EXPECT_EQ(0, polynomial({-1, 1}).GetRootCount(-5, 1)); // and at its end it does not
}

TEST(PolynomialSturmTest, ConstantsHaveNoRootsOrAllOfThem)
{
    EXPECT_EQ(-1, polynomial({0}).GetRootCount(0, 1));
    EXPECT_EQ(0, polynomial({3}).GetRootCount(0, 1));
}

TEST(PolynomialSturmTest, ABackwardIntervalIsAssertedAndHasNone)
{
    const GeAssertLog log;
    EXPECT_EQ(0, polynomial({-6, 11, -6, 1}).GetRootCount(4, 0));
    EXPECT_THAT(log.promises(), testing::ElementsAre("false"));
}
