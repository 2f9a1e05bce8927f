#include "vexge/geentity/vexpolynomial.h"
#include "vexge/gemath/vextruncate.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

// Single-precision ln 10 and 1 / ln 2, held in doubles. The number of rounds is reckoned with them
// as they are: a more exact constant can shift it by one, and with it the last digits of a root.
constexpr double kLogTen = 2.3025851249694824;
constexpr double kInverseLogTwo = 1.4426950216293335;
/// More halvings than any finite interval asks for; an infinite one stops here.
constexpr int kMostRounds = 1100;
/// Single-precision 1e-8: a root of the inversion below it has no reciprocal worth giving.
constexpr double kNoReciprocal = 9.99999993922529e-09;

int roundsFor(double width)
{
    const double digits = std::log(width) + CVexPolynomial::DIGITS_ACCURACY * kLogTen;
    return std::min(truncateSaturated(std::ceil(digits * kInverseLogTwo)), kMostRounds);
}

} // namespace

bool CVexPolynomial::Bisection(double a, double b, double& root) const
{
    double atA = (*this)(a);
    if (std::fabs(atA) <= ZERO_TOLERANCE) {
        root = a;
        return true;
    }
    const double atB = (*this)(b);
    if (std::fabs(atB) <= ZERO_TOLERANCE) {
        root = b;
        return true;
    }
    if (atA * atB > 0.0) {
        return false;
    }
    root = (a + b) * 0.5; // also for an interval too narrow to be halved
    for (int rounds = roundsFor(b - a); rounds > 0; --rounds) {
        root = (a + b) * 0.5;
        const double atRoot = (*this)(root);
        if (std::fabs(atRoot) <= ZERO_TOLERANCE) {
            return true;
        }
        if (atRoot * atA < 0.0) {
            b = root;
        } else {
            a = root;
            atA = atRoot;
        }
    }
    return true;
}

void CVexPolynomial::GetRootsOnInterval(double a, double b, int& count, double* roots) const
{
    if (m_degree <= 1) {
        count = m_degree == 1 && Bisection(a, b, roots[0]) ? 1 : 0;
        return;
    }
    // Between the roots of the derivative the curve is monotone: one root a stretch at most.
    GetDerivative().GetRootsOnInterval(a, b, count, roots);
    std::vector<double> found;
    for (int i = 0; i <= count; ++i) {
        const double from = i == 0 ? a : roots[i - 1];
        const double to = i == count ? b : roots[i];
        double root = 0.0;
        if (Bisection(from, to, root)) {
            found.push_back(root);
        }
    }
    count = 0;
    for (std::size_t i = 0; i < found.size(); ++i) {
        // Held against its neighbour and not against the last one kept, so a chain of near roots
        // shrinks to its first. The count of roots that callers see depends on it.
        if (i == 0 || std::fabs(found[i] - found[i - 1]) > ZERO_TOLERANCE) {
            roots[count++] = found[i];
        }
    }
}

double CVexPolynomial::GetRootBound() const
{
    if (m_degree < 0) {
        return 0.0;
    }
    const double constant = std::fabs((*this)[0]);
    const double leading = std::fabs((*this)[m_degree]);
    // The larger of the two leads: with the constant leading this bounds the inversion's roots.
    const double lead = std::max(constant, leading);
    double bound = std::min(constant, leading);
    for (int i = 0; i < m_degree; ++i) {
        bound = std::max(bound, std::fabs((*this)[i]) + lead);
    }
    return bound / lead;
}

void CVexPolynomial::GetAllRoots(int& count, double* roots) const
{
    count = 0;
    if (m_degree < 1) {
        return;
    }
    const double bound = GetRootBound();
    if (std::fabs((*this)[0]) <= std::fabs((*this)[m_degree])) {
        GetRootsOnInterval(-bound, bound, count, roots);
        return;
    }
    std::vector<double> inverse(static_cast<std::size_t>(m_degree));
    int found = 0;
    GetInversion().GetRootsOnInterval(-bound, bound, found, inverse.data());
    for (int i = 0; i < found; ++i) {
        const double root = inverse[static_cast<std::size_t>(found - 1 - i)];
        if (std::fabs(root) >= kNoReciprocal) {
            // The place is i and not count: a root without a reciprocal leaves a gap. Who reads
            // the array by position finds each root where its reciprocal stood.
            roots[i] = 1.0 / root;
            ++count;
        }
    }
}
