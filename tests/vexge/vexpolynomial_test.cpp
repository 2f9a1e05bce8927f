#include "tests/vexge/geassertlog.h"
#include "vexge/geentity/vexpolynomial.h"

#include <cfloat>
#include <cmath>
#include <gmock/gmock.h>
#include <initializer_list>

namespace {

using testing::DoubleNear;
using testing::ElementsAre;

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

std::vector<double> coefficientsOf(const CVexPolynomial& p)
{
    std::vector<double> result;
    for (int i = 0; i <= p.GetDegree(); ++i) {
        result.push_back(p[i]);
    }
    return result;
}

constexpr double kUntouched = -777.0;

} // namespace

TEST(PolynomialTest, ANegativeDegreeIsEmpty)
{
    EXPECT_EQ(-1, CVexPolynomial().GetDegree());
    EXPECT_EQ(-1, CVexPolynomial(-5).GetDegree());
    CVexPolynomial p = polynomial({1, 2, 3});
    p.SetDegree(1);
    EXPECT_THAT(coefficientsOf(p), ElementsAre(0, 0)); // discarded, not cut
}

TEST(PolynomialTest, CopiesAreDeep)
{
    CVexPolynomial p = polynomial({1, 2, 3});
    CVexPolynomial copy = p, assigned;
    assigned = p;
    p[1] = 99;
    EXPECT_THAT(coefficientsOf(copy), ElementsAre(1, 2, 3));
    EXPECT_THAT(coefficientsOf(assigned), ElementsAre(1, 2, 3));
}

TEST(PolynomialTest, PowersBeyondTheDegreeAreAsserted)
{
    const GeAssertLog log;
    CVexPolynomial p = polynomial({1, 2});
    EXPECT_EQ(0.0, p[2]);
    EXPECT_EQ(0.0, p[-1]);
    EXPECT_EQ(0.0, CVexPolynomial()(3.0));
    ASSERT_EQ(3U, log.promises().size());
    EXPECT_THAT(log.promises()[0], testing::HasSubstr("vexge/geentity/vexpolynomial"));
}

TEST(PolynomialTest, ValueDerivativeAndInversion)
{
    const CVexPolynomial p = polynomial({5, -3, 0, 2}); // 2x^3 - 3x + 5
    EXPECT_EQ(15.0, p(2.0));
    EXPECT_EQ(5.0, p(0.0));
    EXPECT_THAT(coefficientsOf(p.GetDerivative()), ElementsAre(-3, 0, 6));
    EXPECT_THAT(coefficientsOf(p.GetInversion()), ElementsAre(2, 0, -3, 5));
    EXPECT_EQ(-1, polynomial({7}).GetDerivative().GetDegree());
    EXPECT_EQ(-1, CVexPolynomial().GetDerivative().GetDegree());
}

TEST(PolynomialTest, ArithmeticTakesTheLargerDegreeAndTheEmptyOneAsZero)
{
    const CVexPolynomial p = polynomial({1, 2}), q = polynomial({3, 0, 4}), none;
    EXPECT_THAT(coefficientsOf(p + q), ElementsAre(4, 2, 4));
    EXPECT_THAT(coefficientsOf(p - q), ElementsAre(-2, 2, -4));
    EXPECT_THAT(coefficientsOf(-q), ElementsAre(-3, 0, -4));
    EXPECT_THAT(coefficientsOf(p * q), ElementsAre(3, 6, 4, 8));
    EXPECT_THAT(coefficientsOf(p * 3.0), ElementsAre(3, 6));
    EXPECT_THAT(coefficientsOf(3.0 * p), ElementsAre(3, 6));
    EXPECT_THAT(coefficientsOf(p + none), ElementsAre(1, 2));
    EXPECT_EQ(-1, (p * none).GetDegree());
}

TEST(PolynomialTest, CompressDropsLeadingTermsUpToItsBoundAndMakesMonic)
{
    CVexPolynomial p = polynomial({2, 8, 4, 0.25, 0});
    p.Compress(0.25);
    EXPECT_THAT(coefficientsOf(p), ElementsAre(0.5, 2, 1));
    CVexPolynomial small = polynomial({0.1, 0.1});
    small.Compress(0.2);
    EXPECT_EQ(-1, small.GetDegree());
}

TEST(PolynomialTest, DivisionGivesQuotientAndRemainder)
{
    CVexPolynomial quotient, remainder;
    polynomial({3, -5, 2, 4}).Divide(polynomial({-1, 2}), quotient, remainder);
    // 4x^3 + 2x^2 - 5x + 3 = (2x - 1)(2x^2 + 2x - 1.5) + 1.5
    EXPECT_THAT(coefficientsOf(quotient), ElementsAre(-1.5, 2, 2));
    EXPECT_THAT(coefficientsOf(remainder), ElementsAre(1.5));
}

TEST(PolynomialTest, DivisionByAHigherDegreeIsAllRemainder)
{
    CVexPolynomial quotient, remainder;
    polynomial({1, 2}).Divide(polynomial({1, 2, 3}), quotient, remainder);
    EXPECT_THAT(coefficientsOf(quotient), ElementsAre(0));
    EXPECT_THAT(coefficientsOf(remainder), ElementsAre(1, 2));
}

TEST(PolynomialTest, DivisionDropsLeadingRemaindersBelowAMillionth)
{
    CVexPolynomial quotient, remainder;
    // (x^3 + 1)x + 5e-7 x^2 + 5e-7 x + 3
    polynomial({3, 1 + 5e-7, 5e-7, 0, 1}).Divide(polynomial({1, 0, 0, 1}), quotient, remainder);
    EXPECT_THAT(coefficientsOf(remainder), ElementsAre(3));
    polynomial({5e-7, 0, 1}).Divide(polynomial({0, 1}), quotient, remainder);
    EXPECT_THAT(coefficientsOf(remainder), ElementsAre(0));
    polynomial({4, 8}).Divide(polynomial({2}), quotient, remainder); // by a constant: nothing left
    EXPECT_THAT(coefficientsOf(quotient), ElementsAre(2, 4));
    EXPECT_EQ(-1, remainder.GetDegree());
}

TEST(PolynomialTest, DivisionMayWriteOverItsOperands)
{
    CVexPolynomial p = polynomial({3, -5, 2, 4}), q = polynomial({-1, 2});
    p.Divide(q, p, q);
    EXPECT_THAT(coefficientsOf(p), ElementsAre(-1.5, 2, 2));
    EXPECT_THAT(coefficientsOf(q), ElementsAre(1.5));
}

TEST(PolynomialTest, BisectionTakesAnEndThatIsARoot)
{
    const CVexPolynomial p = polynomial({-2, 1}); // x - 2
    double root = kUntouched;
    EXPECT_TRUE(p.Bisection(2, 9, root));
    EXPECT_EQ(2.0, root);
    EXPECT_TRUE(p.Bisection(-9, 2.0000005, root)); // within a millionth of zero
    EXPECT_EQ(2.0000005, root);
}

TEST(PolynomialTest, BisectionNeedsAChangeOfSign)
{
    double root = kUntouched;
    EXPECT_FALSE(polynomial({1, 0, 1}).Bisection(-3, 3, root));
    EXPECT_EQ(kUntouched, root);
    EXPECT_TRUE(polynomial({-2, 0, 1}).Bisection(0, 2, root));
    EXPECT_NEAR(std::sqrt(2.0), root, 1e-6);
}

TEST(PolynomialTest, BisectionEndsWithItsRoundsWhereTheCurveIsSteep)
{
    // 1e9 (x - 1/3) never comes within a millionth of zero in the rounds for six digits:
    // ceil((ln 1 + 6 ln 10) / ln 2) = 20 halvings of [0, 1].
    double root = kUntouched;
    EXPECT_TRUE(polynomial({-1e9 / 3, 1e9}).Bisection(0, 1, root));
    EXPECT_NE(1.0 / 3, root);
    EXPECT_NEAR(1.0 / 3, root, 1.0 / (1 << 20));
    EXPECT_EQ(0.0, std::fmod(root * (1 << 20), 1.0)); // a 20th midpoint, no finer
}

TEST(PolynomialTest, BisectionOfAnEndlessIntervalEnds)
{
    double root = kUntouched;
    EXPECT_TRUE(polynomial({-1, 1}).Bisection(-DBL_MAX, HUGE_VAL, root));
    EXPECT_TRUE(polynomial({-1, 1e9}).Bisection(0, 1e-8, root)); // too narrow for a round
    EXPECT_EQ(5e-9, root);
}

TEST(PolynomialTest, RootsOnAnIntervalComeInOrder)
{
    const CVexPolynomial p = polynomial({-1, 1}) * polynomial({-2, 1}) * polynomial({3, 1});
    double roots[3];
    int count = 0;
    p.GetRootsOnInterval(-10, 10, count, roots);
    EXPECT_EQ(3, count);
    EXPECT_THAT(roots, ElementsAre(DoubleNear(-3, 1e-6), DoubleNear(1, 1e-6), DoubleNear(2, 1e-6)));
    p.GetRootsOnInterval(0, 1.5, count, roots);
    EXPECT_EQ(1, count);
    EXPECT_NEAR(1.0, roots[0], 1e-6);
    polynomial({1, 0, 1}).GetRootsOnInterval(-10, 10, count, roots);
    EXPECT_EQ(0, count);
}

TEST(PolynomialTest, ARootAtTheDerivativesRootIsGivenOnce)
{
    // (x - 1)^2: both stretches end at the double root, and the merge drops the second find.
    double roots[2];
    int count = 0;
    polynomial({1, -2, 1}).GetRootsOnInterval(0, 3, count, roots);
    EXPECT_EQ(1, count);
    EXPECT_NEAR(1.0, roots[0], 1e-3);
    // The interval's own end is a root.
    polynomial({-1, 0, 1}).GetRootsOnInterval(-1, 0.5, count, roots);
    EXPECT_EQ(1, count);
    EXPECT_EQ(-1.0, roots[0]);
}

TEST(PolynomialTest, ConstantsAndTheEmptyOneHaveNoRoots)
{
    double roots[1] = {kUntouched};
    int count = 9;
    polynomial({0}).GetRootsOnInterval(-1, 1, count, roots);
    EXPECT_EQ(0, count);
    count = 9;
    CVexPolynomial().GetAllRoots(count, roots);
    EXPECT_EQ(0, count);
    EXPECT_EQ(kUntouched, roots[0]);
}

TEST(PolynomialTest, RootBoundLeadsWithTheLargerOfTheEnds)
{
    // Leading 2 is larger: max(1, 1 + 2, 6 + 2, 3 + 2) / 2.
    EXPECT_EQ(4.0, polynomial({1, -6, 3, 2}).GetRootBound());
    // The constant 4 is larger: max(1, 4 + 4, 6 + 4) / 4, for the inversion.
    EXPECT_EQ(2.5, polynomial({4, -6, 1}).GetRootBound());
    EXPECT_EQ(0.0, CVexPolynomial().GetRootBound());
}

TEST(PolynomialTest, AllRootsOfALeadingPolynomial)
{
    double roots[3];
    int count = 0;
    (polynomial({-0.5, 1}) * polynomial({0.25, 1}) * polynomial({0, 1})).GetAllRoots(count, roots);
    EXPECT_EQ(3, count);
    EXPECT_THAT(roots,
                ElementsAre(DoubleNear(-0.25, 1e-5), DoubleNear(0, 1e-5), DoubleNear(0.5, 1e-5)));
}

TEST(PolynomialTest, ALargeConstantTermGoesThroughTheInversion)
{
    double roots[3];
    int count = 0;
    (polynomial({-2, 1}) * polynomial({-4, 1}) * polynomial({5, 1})).GetAllRoots(count, roots);
    EXPECT_EQ(3, count);
    // The reciprocals 1/2, 1/4 and -1/5, taken from the largest down.
    EXPECT_THAT(roots, ElementsAre(DoubleNear(2, 1e-3), DoubleNear(4, 1e-3), DoubleNear(-5, 1e-3)));
}

TEST(PolynomialTest, ARootOfTheInversionAtZeroLeavesAGap)
{
    // 0 x^3 + x^2 - 9: the inversion -9 x^3 + x has the roots 1/3, 0, -1/3. The place of 0 stays
    // as it was and the last root stands behind it, where readers by position look for it; count
    // still says 2.
    double roots[3] = {kUntouched, kUntouched, kUntouched};
    int count = 0;
    polynomial({-9, 0, 1, 0}).GetAllRoots(count, roots);
    EXPECT_EQ(2, count);
    EXPECT_THAT(roots, ElementsAre(DoubleNear(3, 1e-4), kUntouched, DoubleNear(-3, 1e-4)));
}

TEST(PolynomialTest, ALeadingZeroTakesTheInversionUntilItIsCompressed)
{
    CVexPolynomial p = polynomial({0.5, 1, 0}); // x + 0.5 that says degree 2
    double roots[2] = {kUntouched, kUntouched};
    int count = 0;
    p.GetAllRoots(count, roots);
    EXPECT_GE(count, 1);
    p.Compress(0.0);
    EXPECT_EQ(1, p.GetDegree());
    p.GetAllRoots(count, roots);
    EXPECT_EQ(1, count);
    EXPECT_NEAR(-0.5, roots[0], 1e-6);
}
