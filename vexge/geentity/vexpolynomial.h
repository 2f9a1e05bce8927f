#pragma once

#include "platform/base/vexexport.h"

#include <vector>

/// A polynomial in one variable with real coefficients, the index of a coefficient being its power.
/// The degree is the size of the array, not the power of the last coefficient that is not 0;
/// Compress drops the zeros above. The degree -1 is the empty polynomial, which arithmetic takes
/// as 0.
///
/// Where roots are asked, `roots` has room for GetDegree() numbers and `count` gets how many are
/// filled.
class VEXGE_EXPORT CVexPolynomial {
public:
    static constexpr int DIGITS_ACCURACY = 6; ///< decimal digits that Bisection goes for
    // Single-precision 1e-6 and 1e-4, held in doubles.
    static constexpr double ZERO_TOLERANCE = 9.999999974752427e-07;
    static constexpr double REMAINDER_EPSILON = 9.999999974752427e-07;
    static constexpr double STURM_EPSILON = 9.999999747378752e-05; ///< less is 0 in GetRootCount

    /// `degree` + 1 coefficients of 0; a negative degree gives the empty polynomial.
    CVexPolynomial(int degree = -1);

    /// Drops the coefficients and makes fresh ones of 0.
    void SetDegree(int degree);
    [[nodiscard]] int GetDegree() const { return m_degree; }
    /// The coefficient of a power from 0 to the degree; another index is a broken promise.
    double& operator[](int power);
    const double& operator[](int power) const;
    /// The value at `x`, by Horner's rule; 0 after an assertion for the empty polynomial.
    double operator()(double x) const;

    /// Empty for a degree of 0 or less.
    [[nodiscard]] CVexPolynomial GetDerivative() const;
    /// The coefficients in reverse order: its roots are the reciprocals.
    [[nodiscard]] CVexPolynomial GetInversion() const;
    CVexPolynomial operator+(const CVexPolynomial& other) const;
    CVexPolynomial operator-(const CVexPolynomial& other) const;
    CVexPolynomial operator-() const;
    CVexPolynomial operator*(const CVexPolynomial& other) const;
    CVexPolynomial operator*(double factor) const;
    friend CVexPolynomial operator*(double factor, const CVexPolynomial& polynomial)
    {
        return polynomial * factor;
    }
    /// Lowers the degree past leading coefficients of at most `remainder`, then divides by the
    /// leading one. A polynomial of nothing but such coefficients becomes empty.
    void Compress(double remainder);
    /// Long division: this = quotient * divisor + remainder. The divisor's leading coefficient is
    /// not held against 0.
    void Divide(const CVexPolynomial& divisor, CVexPolynomial& quotient,
                CVexPolynomial& remainder) const;

    /// Halves [a, b] down to a root, which `root` gets. False, with `root` as it was, when the
    /// values at the ends have one sign; true when the rounds run out, with the last middle.
    bool Bisection(double a, double b, double& root) const;
    /// All roots between `a` and `b`, ascending.
    void GetRootsOnInterval(double a, double b, int& count, double* roots) const;
    /// A radius within which all real roots lie: those of the inversion when the constant term is
    /// larger than the leading one.
    [[nodiscard]] double GetRootBound() const;
    /// All real roots. When the constant term is larger than the leading one they come from the
    /// inversion, and one of its roots that is 0 leaves its place in `roots` as it was.
    void GetAllRoots(int& count, double* roots) const;
    // The closed forms; false, with the outputs as they were, for another degree.
    bool RootsDegree2(int& count, double* roots) const;
    /// One root or three; a double root is given twice.
    bool RootsDegree3(int& count, double* roots) const;
    bool RootsDegree4(int& count, double* roots) const;
    /// The real root of a x^3 + b x = c for b / a > 0.
    [[nodiscard]] static double SpecialCubeRoot(double a, double b, double c);

    /// Whether all roots, complex ones too, have a negative real part; true without any root.
    [[nodiscard]] bool AlldoublePartsNegative() const;
    [[nodiscard]] bool AlldoublePartsPositive() const;
    /// The test for x^n + c[n-1] x^(n-1) + ... + c[0]; `c` is overwritten.
    static bool AlldoublePartsNegative(int n, double* c);
    /// How many distinct real roots lie between `t0` and `t1`, by Sturm's theorem. -DBL_MAX and
    /// DBL_MAX stand for minus and plus infinity. -1 for the constant 0, of which all are roots.
    [[nodiscard]] int GetRootCount(double t0, double t1) const;

private:
    [[nodiscard]] CVexPolynomial monic() const;

    int m_degree = -1;
    std::vector<double> m_coeffs; // keeps its size when Compress lowers the degree
};
