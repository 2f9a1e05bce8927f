#include "vexge/geentity/vexpolynomial.h"

#include "platform/base/vexassert.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

CVexPolynomial::CVexPolynomial(int degree)
{
    SetDegree(degree);
}

void CVexPolynomial::SetDegree(int degree)
{
    m_degree = std::max(degree, -1);
    m_coeffs.assign(static_cast<std::size_t>(m_degree) + 1U, 0.0); // -1 wraps to none
}

double& CVexPolynomial::operator[](int power)
{
    return const_cast<double&>(static_cast<const CVexPolynomial&>(*this)[power]);
}

const double& CVexPolynomial::operator[](int power) const
{
    const bool within = power >= 0 && power <= m_degree;
    VEX_ASSERT(within, "vexge/geentity/vexpolynomial: a power from 0 to the degree");
    static thread_local double nowhere = 0.0;
    return within ? m_coeffs[static_cast<std::size_t>(power)] : (nowhere = 0.0);
}

double CVexPolynomial::operator()(double x) const
{
    VEX_ASSERT(m_degree >= 0, "vexge/geentity/vexpolynomial: a value needs a coefficient");
    double value = 0.0;
    if (m_degree >= 0) {
        const double* const first = m_coeffs.data();
        value = first[m_degree];
        for (int i = m_degree - 1; i >= 0; --i) {
            value = value * x + first[i];
        }
    }
    return value;
}

CVexPolynomial CVexPolynomial::GetDerivative() const
{
    CVexPolynomial result(m_degree - 1);
    for (int i = 1; i <= m_degree; ++i) {
        result[i - 1] = i * (*this)[i];
    }
    return result;
}

CVexPolynomial CVexPolynomial::GetInversion() const
{
    CVexPolynomial result(m_degree);
    for (int i = 0; i <= m_degree; ++i) {
        result[i] = (*this)[m_degree - i];
    }
    return result;
}

CVexPolynomial CVexPolynomial::operator+(const CVexPolynomial& other) const
{
    CVexPolynomial result(std::max(m_degree, other.m_degree));
    for (int i = 0; i <= m_degree; ++i) {
        result[i] = (*this)[i];
    }
    for (int i = 0; i <= other.m_degree; ++i) {
        result[i] += other[i];
    }
    return result;
}

CVexPolynomial CVexPolynomial::operator-(const CVexPolynomial& other) const
{
    return *this + -other;
}

CVexPolynomial CVexPolynomial::operator-() const
{
    return *this * -1.0;
}

CVexPolynomial CVexPolynomial::operator*(const CVexPolynomial& other) const
{
    if (m_degree < 0 || other.m_degree < 0) {
        return {};
    }
    CVexPolynomial result(m_degree + other.m_degree);
    for (int i = 0; i <= m_degree; ++i) {
        for (int j = 0; j <= other.m_degree; ++j) {
            result[i + j] += (*this)[i] * other[j];
        }
    }
    return result;
}

CVexPolynomial CVexPolynomial::operator*(double factor) const
{
    CVexPolynomial result(m_degree);
    for (int i = 0; i <= m_degree; ++i) {
        result[i] = (*this)[i] * factor;
    }
    return result;
}

void CVexPolynomial::Compress(double remainder)
{
    while (m_degree >= 0 && std::fabs((*this)[m_degree]) <= remainder) {
        --m_degree;
    }
    if (m_degree >= 0) {
        const double leading = (*this)[m_degree];
        for (int i = 0; i <= m_degree; ++i) {
            (*this)[i] /= leading;
        }
    }
}

CVexPolynomial CVexPolynomial::monic() const
{
    CVexPolynomial result = *this;
    const double leading = result[m_degree];
    for (int i = 0; i <= m_degree; ++i) {
        result[i] /= leading;
    }
    return result;
}

void CVexPolynomial::Divide(const CVexPolynomial& divisor, CVexPolynomial& quotient,
                            CVexPolynomial& remainder) const
{
    const int divisorDegree = divisor.m_degree;
    VEX_ASSERT(divisorDegree >= 0, "vexge/geentity/vexpolynomial: a divisor has a coefficient");
    CVexPolynomial result(0);
    CVexPolynomial rest = *this;
    if (divisorDegree >= 0 && m_degree >= divisorDegree) {
        const double inverse = 1.0 / divisor[divisorDegree];
        result.SetDegree(m_degree - divisorDegree);
        for (int i = result.m_degree; i >= 0; --i) {
            const int top = divisorDegree + i;
            result[i] = inverse * rest[top];
            for (int k = top - 1; k >= i; --k) {
                rest[k] -= result[i] * divisor[k - i];
            }
        }
        int degree = divisorDegree - 1;
        while (degree > 0 && std::fabs(rest[degree]) < ZERO_TOLERANCE) {
            --degree;
        }
        if (degree == 0 && std::fabs(rest[0]) < ZERO_TOLERANCE) {
            rest[0] = 0.0;
        }
        rest.m_degree = degree;
        rest.m_coeffs.resize(static_cast<std::size_t>(degree) + 1U); // -1 wraps to none
    }
    quotient = result;
    remainder = rest;
}
