#include "platform/base/vexassert.h"
#include "vexge/geentity/vexpolynomial.h"

#include <cfloat>
#include <cmath>
#include <cstddef>

bool CVexPolynomial::AlldoublePartsNegative(int n, double* c)
{
    if (n < 1) {
        return true;
    }
    if (c[n - 1] <= 0.0) {
        return false;
    }
    if (n == 1) {
        return true;
    }
    // One step of the Routh-Hurwitz recursion on the polynomial of the next lower degree.
    std::vector<double> next(static_cast<std::size_t>(n));
    next[0] = 2.0 * c[0] * c[n - 1];
    for (int i = 1; i <= n - 2; ++i) {
        const double product = c[n - 1] * c[i];
        next[static_cast<std::size_t>(i)] = 2.0 * ((n - i) % 2 == 0 ? product - c[i - 1] : product);
    }
    next[static_cast<std::size_t>(n - 1)] = 2.0 * c[n - 1] * c[n - 1];
    int degree = n - 1;
    while (degree > 0 && next[static_cast<std::size_t>(degree)] == 0.0) {
        --degree;
    }
    for (int i = 0; i < degree; ++i) {
        c[i] = next[static_cast<std::size_t>(i)] / next[static_cast<std::size_t>(degree)];
    }
    return AlldoublePartsNegative(degree, c);
}

bool CVexPolynomial::AlldoublePartsNegative() const
{
    if (m_degree < 1) {
        return true;
    }
    CVexPolynomial copy = monic();
    return AlldoublePartsNegative(m_degree, copy.m_coeffs.data());
}

bool CVexPolynomial::AlldoublePartsPositive() const
{
    if (m_degree < 1) {
        return true;
    }
    CVexPolynomial mirrored = monic(); // -x for x: the roots change their sign
    double sign = -1.0;
    for (int i = m_degree - 1; i >= 0; --i) {
        mirrored[i] *= sign;
        sign = -sign;
    }
    return AlldoublePartsNegative(m_degree, mirrored.m_coeffs.data());
}

namespace {

/// The value of a member of the sequence for the count of signs; less than STURM_EPSILON is 0.
double sturmValue(const CVexPolynomial& member, double t)
{
    const int degree = member.GetDegree();
    double value = 0.0;
    if (t == -DBL_MAX) {
        value = degree % 2 == 0 ? member[degree] : -member[degree];
    } else if (t == DBL_MAX) {
        value = member[degree];
    } else {
        value = member(t);
    }
    return std::fabs(value) < CVexPolynomial::STURM_EPSILON ? 0.0 : value;
}

int signChanges(const std::vector<CVexPolynomial>& sequence, double t)
{
    int changes = 0;
    double previous = sturmValue(sequence.front(), t);
    for (std::size_t i = 1; i < sequence.size(); ++i) {
        const double current = sturmValue(sequence[i], t);
        // A zero counts as a change of its own, where the theorem would skip it. The count of an
        // interval that begins at a root takes that root in by this.
        if (previous * current < 0.0 || previous == 0.0) {
            ++changes;
        }
        previous = current;
    }
    return changes;
}

} // namespace

int CVexPolynomial::GetRootCount(double t0, double t1) const
{
    VEX_ASSERT(m_degree >= 0, "vexge/geentity/vexpolynomial: a count needs a coefficient");
    if (m_degree < 0) {
        return 0;
    }
    if (m_degree == 0) {
        return (*this)[0] == 0.0 ? -1 : 0;
    }
    std::vector<CVexPolynomial> sequence = {*this, GetDerivative()};
    while (sequence.back().GetDegree() > 0) {
        CVexPolynomial quotient, remainder;
        sequence[sequence.size() - 2].Divide(sequence.back(), quotient, remainder);
        sequence.push_back(-remainder);
    }
    const int count = signChanges(sequence, t0) - signChanges(sequence, t1);
    VEX_ASSERT(count >= 0, "false");
    return count < 0 ? 0 : count;
}
