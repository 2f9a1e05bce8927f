#pragma once

#include "platform/base/vexexport.h"
#include "vexge/gemath/vexgetol.h"

#include <cmath>

class CFile;
class CVexGePlane;
class CVexGeVector2d;

/// A displacement or direction in space, in drawing units. Edits work in place and return the
/// vector.
class VEXGE_EXPORT CVexGeVector3d {
public:
    static const CVexGeVector3d kIdentity; ///< (0, 0, 0), which changes nothing when added
    static const CVexGeVector3d kXAxis;
    static const CVexGeVector3d kYAxis;
    static const CVexGeVector3d kZAxis;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    constexpr CVexGeVector3d() = default;
    constexpr CVexGeVector3d(const CVexGeVector3d&) = default;
    constexpr CVexGeVector3d(double along, double across, double up) : x(along), y(across), z(up) {}
    /// As set() of the same arguments.
    CVexGeVector3d(const CVexGePlane& plane, const CVexGeVector2d& vector) { set(plane, vector); }
    constexpr CVexGeVector3d& operator=(const CVexGeVector3d&) = default;
    constexpr virtual ~CVexGeVector3d() {}

    /// Writes x, y, z: 24 bytes.
    void save(CFile* file) const;
    void read(CFile* file);

    constexpr CVexGeVector3d& set(double along, double across, double up)
    {
        x = along;
        y = across;
        z = up;
        return *this;
    }
    /// Lifts `vector` by its length times the slope of `plane`, upwards for a normal that points
    /// up. The direction of `vector` is not asked. Divides by zero for a plane along the z axis.
    CVexGeVector3d& set(const CVexGePlane& plane, const CVexGeVector2d& vector);
    /// This vector's projection into `plane` by two coordinates: y up the plane's slope, x across
    /// it and never negative. A level plane has no slope to measure by: it divides by zero.
    [[nodiscard]] CVexGeVector2d convert2d(const CVexGePlane& plane) const;
    /// A copy without its part along `unitVector`: the projection into the plane across it.
    [[nodiscard]] CVexGeVector3d orthoProject(const CVexGeVector3d& unitVector) const;
    /// Becomes its projection into `plane`, less the plane's normal times the length of what the
    /// projection took away: the mirror image of a vector that points to the normal's side.
    CVexGeVector3d& mirror(const CVexGePlane& plane);

    CVexGeVector3d operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
    CVexGeVector3d operator/(double d) const { return {x / d, y / d, z / d}; }
    CVexGeVector3d& operator*=(double factor) { return set(x * factor, y * factor, z * factor); }
    CVexGeVector3d& operator/=(double d) { return set(x / d, y / d, z / d); }
    CVexGeVector3d operator+(const CVexGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    CVexGeVector3d operator-(const CVexGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    CVexGeVector3d& operator+=(const CVexGeVector3d& v) { return set(x + v.x, y + v.y, z + v.z); }
    CVexGeVector3d& operator-=(const CVexGeVector3d& v) { return set(x - v.x, y - v.y, z - v.z); }
    CVexGeVector3d operator-() const { return {-x, -y, -z}; }
    CVexGeVector3d& negate() { return set(-x, -y, -z); }
    CVexGeVector3d& setToSum(const CVexGeVector3d& a, const CVexGeVector3d& b)
    {
        return *this = a + b;
    }
    /// Becomes `vector` times `factor`.
    CVexGeVector3d& setToProduct(const CVexGeVector3d& vector, double factor)
    {
        return *this = vector * factor;
    }
    /// x, y, z by index 0 to 2.
    double operator[](int index) const { return index == 0 ? x : index == 1 ? y : z; }
    double& operator[](int index) { return index == 0 ? x : index == 1 ? y : z; }

    /// A copy of length 1, or an unchanged copy when the length is at most `tol`.
    [[nodiscard]] CVexGeVector3d normal(double tol = kGeTol) const
    {
        return CVexGeVector3d(*this).normalize(tol);
    }
    /// Brings the length to 1, unless it is at most `tol`.
    CVexGeVector3d& normalize(double tol = kGeTol)
    {
        const double size = length();
        return size <= tol ? *this : *this /= size;
    }
    [[nodiscard]] double length() const { return std::sqrt(lengthSqrd()); }
    [[nodiscard]] double lengthSqrd() const { return x * x + y * y + z * z; }
    [[nodiscard]] double dotProduct(const CVexGeVector3d& v) const
    {
        return x * v.x + y * v.y + z * v.z;
    }
    /// The right-handed product.
    [[nodiscard]] CVexGeVector3d crossProduct(const CVexGeVector3d& v) const
    {
        return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
    }
    /// 1 when y > x, else 0; and 2 whenever z > y, so (5, 1, 2) gives 2.
    [[nodiscard]] int largestElement() const;
    /// The angle between the two in [0, pi], without a sign; 0 when either has no length.
    [[nodiscard]] double angleTo(const CVexGeVector3d& other) const;
    /// Turns by `angle` radians, right-handed, about `axis`; nothing when `axis` has no length.
    CVexGeVector3d& rotateBy(double angle, const CVexGeVector3d& axis);

    [[nodiscard]] bool isZeroLength(double tol = kGeTol) const { return length() <= tol; }
    [[nodiscard]] bool isUnitLength(double tol = kGeTol) const
    {
        return std::fabs(length() - 1.0) <= tol;
    }
    /// Equal within kGeTol, whatever `tol` says.
    [[nodiscard]] bool isEqualTo(const CVexGeVector3d& other, double tol = kGeTol) const;
    bool operator==(const CVexGeVector3d& other) const { return isEqualTo(other); }
    bool operator!=(const CVexGeVector3d& other) const { return !isEqualTo(other); }
    /// True for vectors that point the same way, and only for those.
    [[nodiscard]] bool isParallelTo(const CVexGeVector3d& other, double tol = kGeTol) const;
    /// True for vectors that point in opposite directions, and only for those.
    [[nodiscard]] bool isCodirectionalTo(const CVexGeVector3d& other, double tol = kGeTol) const;
    /// The absolute dot product is at most `tol`.
    [[nodiscard]] bool isPerpendicularTo(const CVexGeVector3d& other, double tol = kGeTol) const;
};
