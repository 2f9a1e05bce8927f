#pragma once

#include "platform/base/vexexport.h"
#include "vexge/gemath/vexgetol.h"

#include <cmath>

class CFile;
class CVexGeMatrix2d;

/// A displacement or direction in the drawing plane, in drawing units. Plain: no virtual table, 16
/// bytes. It indexes as (x, y, 1), which is why a matrix also translates it. Edits work in place
/// and return the vector.
class VEXGE_EXPORT CVexGeVector2d {
public:
    static const CVexGeVector2d kIdentity; ///< (0, 0), which changes nothing when added
    static const CVexGeVector2d kXAxis;
    static const CVexGeVector2d kYAxis;

    double x = 0.0;
    double y = 0.0;

    constexpr CVexGeVector2d() = default;
    constexpr CVexGeVector2d(const CVexGeVector2d&) = default;
    constexpr CVexGeVector2d(double along, double up) : x(along), y(up) {}
    /// The unit vector at `angle` radians from the x axis.
    explicit CVexGeVector2d(double angle) : x(std::cos(angle)), y(std::sin(angle)) {}
    constexpr CVexGeVector2d& operator=(const CVexGeVector2d&) = default;

    /// Writes x, y: 16 bytes.
    void save(CFile* file) const;
    void read(CFile* file);

    constexpr CVexGeVector2d& set(double along, double up)
    {
        x = along;
        y = up;
        return *this;
    }
    /// Becomes the vector of `length` at `angle` radians.
    CVexGeVector2d& setAngle(double angle, double length)
    {
        return set(std::cos(angle) * length, std::sin(angle) * length);
    }

    constexpr CVexGeVector2d operator*(double factor) const { return {x * factor, y * factor}; }
    constexpr CVexGeVector2d operator/(double divisor) const { return {x / divisor, y / divisor}; }
    constexpr CVexGeVector2d& operator*=(double factor) { return set(x * factor, y * factor); }
    constexpr CVexGeVector2d& operator/=(double divisor) { return set(x / divisor, y / divisor); }
    constexpr CVexGeVector2d operator+(const CVexGeVector2d& v) const { return {x + v.x, y + v.y}; }
    constexpr CVexGeVector2d operator-(const CVexGeVector2d& v) const { return {x - v.x, y - v.y}; }
    constexpr CVexGeVector2d& operator+=(const CVexGeVector2d& v) { return set(x + v.x, y + v.y); }
    constexpr CVexGeVector2d& operator-=(const CVexGeVector2d& v) { return set(x - v.x, y - v.y); }
    constexpr CVexGeVector2d operator-() const { return {-x, -y}; }
    constexpr CVexGeVector2d& negate() { return set(-x, -y); }
    constexpr CVexGeVector2d& setToSum(const CVexGeVector2d& a, const CVexGeVector2d& b)
    {
        return set(a.x + b.x, a.y + b.y);
    }
    /// Becomes `vector` times `factor`.
    constexpr CVexGeVector2d& setToProduct(const CVexGeVector2d& vector, double factor)
    {
        return set(vector.x * factor, vector.y * factor);
    }
    /// The transformed copy of `vector`. The receiver stays as it is, unlike with a factor.
    CVexGeVector2d setToProduct(const CVexGeMatrix2d& matrix, const CVexGeVector2d& vector) const;

    /// This vector turned by +90 degrees.
    [[nodiscard]] constexpr CVexGeVector2d perpVector() const { return {-y, x}; }
    /// The direction in [0, 2 pi); 0 for a zero vector.
    [[nodiscard]] double angle() const;
    /// The angle between the two in [0, pi], without a sign; 0 when either has no length.
    [[nodiscard]] double angleTo(const CVexGeVector2d& other) const;
    /// A copy of length 1, or an unchanged copy when the length is at most `tol`.
    [[nodiscard]] CVexGeVector2d normal(double tol = kGeTol) const
    {
        return CVexGeVector2d(*this).normalize(tol);
    }
    /// Brings the length to 1, unless it is at most `tol`.
    CVexGeVector2d& normalize(double tol = kGeTol)
    {
        const double size = length();
        return size <= tol ? *this : *this /= size;
    }
    [[nodiscard]] double length() const { return std::sqrt(x * x + y * y); }
    [[nodiscard]] constexpr double lengthSqrd() const { return x * x + y * y; }
    [[nodiscard]] constexpr double dotProduct(const CVexGeVector2d& other) const
    {
        return x * other.x + y * other.y;
    }

    /// x, y and, for any other index, 1.
    constexpr double operator[](int index) const { return index == 0 ? x : index == 1 ? y : 1.0; }
    /// As above, by reference; index 2 is one double holding 1.0, the same for all vectors.
    double& operator[](int index);
    /// Longer than `other`.
    bool operator>(const CVexGeVector2d& other) const { return length() > other.length(); }
    /// Shorter than `other`.
    bool operator<(const CVexGeVector2d& other) const { return length() < other.length(); }

    /// Applies the affine `matrix`, its translation included. For a pure direction pass a matrix
    /// without one.
    CVexGeVector2d& transformBy(const CVexGeMatrix2d& matrix);
    /// Turns by `angle` radians.
    CVexGeVector2d& rotateBy(double angle);
    /// Mirrors in the line that runs from the origin along `axis`.
    CVexGeVector2d& mirror(const CVexGeVector2d& axis);
    /// The translation by this vector.
    operator CVexGeMatrix2d() const;

    [[nodiscard]] bool isZeroLength(double tol = kGeTol) const { return length() <= tol; }
    [[nodiscard]] bool isUnitLength(double tol = kGeTol) const
    {
        return std::fabs(length() - 1.0) <= tol;
    }
    /// Equal within kGeTol, whatever `tol` says.
    [[nodiscard]] bool isEqualTo(const CVexGeVector2d& other, double tol = kGeTol) const;
    bool operator==(const CVexGeVector2d& other) const { return isEqualTo(other); }
    bool operator!=(const CVexGeVector2d& other) const { return !isEqualTo(other); }
    /// True for vectors that point the same way, and only for those.
    [[nodiscard]] bool isParallelTo(const CVexGeVector2d& other, double tol = kGeTol) const;
    /// True for vectors that point in opposite directions, and only for those.
    [[nodiscard]] bool isCodirectionalTo(const CVexGeVector2d& other, double tol = kGeTol) const;
    /// |x other.x + y other.x| <= tol: both products take the other's x.
    [[nodiscard]] bool isPerpendicularTo(const CVexGeVector2d& other, double tol = kGeTol) const;
};
