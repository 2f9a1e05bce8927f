#include "vexge/geentity/vexpolynomial.h"

#include <cmath>

namespace {

// Single-precision constants held in doubles: the closed forms give the same digits as ever.
constexpr double kThird = 0.3333333432674408;
constexpr double kTwentySeventh = 0.03703703731298447;
constexpr double kSqrtThree = 1.7320507764816284;

double zeroed(double value)
{
    return std::fabs(value) <= CVexPolynomial::ZERO_TOLERANCE ? 0.0 : value;
}

double cubeRoot(double value)
{
    return value < 0.0 ? -std::pow(-value, kThird) : std::pow(value, kThird);
}

} // namespace

bool CVexPolynomial::RootsDegree2(int& count, double* roots) const
{
    if (m_degree != 2) {
        return false;
    }
    const CVexPolynomial c = monic();
    const double discriminant = zeroed(c[1] * c[1] - 4.0 * c[0]);
    count = 0;
    if (discriminant < 0.0) {
        return true;
    }
    const double root = std::sqrt(discriminant);
    roots[count++] = (-c[1] - root) * 0.5;
    if (root != 0.0) {
        roots[count++] = (-c[1] + root) * 0.5;
    }
    return true;
}

bool CVexPolynomial::RootsDegree3(int& count, double* roots) const
{
    if (m_degree != 3) {
        return false;
    }
    // Cardano's formula for y^3 + p y + q with x = y - offset.
    const CVexPolynomial c = monic();
    const double p = (3.0 * c[1] - c[2] * c[2]) * kThird;
    const double q = (2.0 * c[2] * c[2] * c[2] - 9.0 * c[1] * c[2] + 27.0 * c[0]) * kTwentySeventh;
    const double offset = kThird * c[2];
    const double discriminant = zeroed(0.25 * q * q + kTwentySeventh * p * p * p);
    const double halfQ = 0.5 * q;
    if (discriminant > 0.0) {
        const double root = std::sqrt(discriminant);
        roots[0] = cubeRoot(-halfQ + root) + cubeRoot(-halfQ - root) - offset;
        count = 1;
    } else if (discriminant < 0.0) {
        const double radius = std::sqrt(-kThird * p);
        const double angle = std::atan2(std::sqrt(-discriminant), -halfQ) * kThird;
        const double cosine = std::cos(angle);
        const double sine = std::sin(angle);
        roots[0] = 2.0 * radius * cosine - offset;
        roots[1] = -radius * (cosine + kSqrtThree * sine) - offset;
        roots[2] = -radius * (cosine - kSqrtThree * sine) - offset;
        count = 3;
    } else {
        const double m = halfQ >= 0.0 ? -std::pow(halfQ, kThird) : std::pow(-halfQ, kThird);
        roots[0] = 2.0 * m - offset;
        roots[1] = -m - offset;
        roots[2] = roots[1];
        count = 3;
    }
    return true;
}

namespace {

/// Gathers the roots of a quartic around its centre -c3 / 4.
struct QuarticRoots {
    double centre = 0.0;
    double* roots = nullptr;
    int count = 0;

    void add(double fromCentre) { roots[count++] = centre + fromCentre; }
    /// Adds `middle` + sqrt(square) / 2 and, where it differs, `middle` - sqrt(square) / 2.
    void addPair(double middle, double square)
    {
        if (square < 0.0) {
            return;
        }
        const double root = std::sqrt(square);
        add(middle + 0.5 * root);
        if (root != 0.0) {
            add(middle - 0.5 * root);
        }
    }
};

/// The case of a positive resolvent square: two quadratics with different middles.
void addSplitRoots(const CVexPolynomial& c, double square, QuarticRoots& out)
{
    const double root = std::sqrt(square);
    const double a = 0.75 * c[3] * c[3] - root * root - 2.0 * c[2];
    const double b = (4.0 * c[3] * c[2] - 8.0 * c[1] - c[3] * c[3] * c[3]) / (4.0 * root);
    out.addPair(0.5 * root, zeroed(a + b));
    out.addPair(-0.5 * root, zeroed(a - b));
}

/// The case of a resolvent square of 0: two quadratics around one middle.
void addCentredRoots(const CVexPolynomial& c, double resolvent, QuarticRoots& out)
{
    const double square = resolvent * resolvent - 4.0 * c[0];
    if (square < -CVexPolynomial::ZERO_TOLERANCE) {
        return;
    }
    const double t = 2.0 * std::sqrt(square < 0.0 ? 0.0 : square);
    const double a = 0.75 * c[3] * c[3] - 2.0 * c[2];
    if (a + t >= CVexPolynomial::ZERO_TOLERANCE) {
        out.addPair(0.0, a + t);
    }
    if (a - t >= CVexPolynomial::ZERO_TOLERANCE) {
        // The inner quadratic gives its upper root twice and never its lower one. Who counts on
        // four entries gets them, and the value of the last is required as it stands.
        const double inner = 0.5 * std::sqrt(a - t);
        out.add(inner);
        out.add(inner);
    }
}

} // namespace

bool CVexPolynomial::RootsDegree4(int& count, double* roots) const
{
    if (m_degree != 4) {
        return false;
    }
    const CVexPolynomial c = monic();
    CVexPolynomial resolvent(3);
    resolvent[0] = -c[3] * c[3] * c[0] + 4.0 * c[2] * c[0] - c[1] * c[1];
    resolvent[1] = c[3] * c[1] - 4.0 * c[0];
    resolvent[2] = -c[2];
    resolvent[3] = 1.0;
    double resolved[3] = {};
    resolvent.RootsDegree3(count, resolved);

    const double square = zeroed(0.25 * c[3] * c[3] - c[2] + resolved[0]);
    QuarticRoots out{-0.25 * c[3], roots};
    if (square > 0.0) {
        addSplitRoots(c, square, out);
    } else if (square == 0.0) {
        addCentredRoots(c, resolved[0], out);
    }
    count = out.count;
    return true;
}

double CVexPolynomial::SpecialCubeRoot(double a, double b, double c)
{
    const double s = std::sqrt(4.0 * kThird * b / a);
    const double t = 4.0 * c / (a * s * s * s);
    const double u = std::pow(std::sqrt(t * t + 1.0) + t, kThird);
    return 0.5 * s * (u - 1.0 / u);
}
