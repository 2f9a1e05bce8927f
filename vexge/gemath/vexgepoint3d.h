#pragma once

#include "platform/base/vexexport.h"
#include "vexge/gemath/vexgetol.h"
#include "vexge/gemath/vexgevector3d.h"

class CFile;
class CVexGePlane;
class CVexGePoint2d;

/// A point in space, in drawing units. Edits work in place and return the point.
class VEXGE_EXPORT CVexGePoint3d {
public:
    static const CVexGePoint3d kOrigin;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    constexpr CVexGePoint3d() = default;
    constexpr CVexGePoint3d(const CVexGePoint3d&) = default;
    constexpr CVexGePoint3d(double xAt, double yAt, double zAt) : x(xAt), y(yAt), z(zAt) {}
    /// As set() of the same arguments.
    CVexGePoint3d(const CVexGePlane& plane, const CVexGePoint2d& point) { set(plane, point); }
    constexpr CVexGePoint3d& operator=(const CVexGePoint3d&) = default;
    constexpr virtual ~CVexGePoint3d() {}

    /// Writes x, y, z: 24 bytes.
    virtual void save(CFile* file) const;
    virtual void read(CFile* file);

    constexpr CVexGePoint3d& set(double xAt, double yAt, double zAt)
    {
        x = xAt;
        y = yAt;
        z = zAt;
        return *this;
    }
    /// Lifts `point` to the height that `plane` has at the point's distance from the origin. The
    /// height has the sign of the plane's upward normal; the direction of the point is not asked.
    CVexGePoint3d& set(const CVexGePlane& plane, const CVexGePoint2d& point);
    /// The coordinates of orthoProject(plane), measured from the plane's point on the z axis as
    /// CVexGeVector3d::convert2d does.
    [[nodiscard]] CVexGePoint2d convert2d(const CVexGePlane& plane) const;
    /// This point plus the plane's normal times its signed distance, the sign as it comes.
    [[nodiscard]] CVexGePoint3d orthoProject(const CVexGePlane& plane) const;
    /// As CVexGeVector3d::mirror, on the vector from the origin.
    CVexGePoint3d& mirror(const CVexGePlane& plane);

    CVexGePoint3d operator*(double factor) const { return {x * factor, y * factor, z * factor}; }
    CVexGePoint3d operator/(double d) const { return {x / d, y / d, z / d}; }
    CVexGePoint3d& operator*=(double factor) { return set(x * factor, y * factor, z * factor); }
    CVexGePoint3d& operator/=(double d) { return set(x / d, y / d, z / d); }
    CVexGePoint3d operator+(const CVexGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    CVexGePoint3d operator-(const CVexGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    CVexGePoint3d& operator+=(const CVexGeVector3d& v) { return set(x + v.x, y + v.y, z + v.z); }
    CVexGePoint3d& operator-=(const CVexGeVector3d& v) { return set(x - v.x, y - v.y, z - v.z); }
    CVexGeVector3d operator-(const CVexGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
    CVexGePoint3d& setToSum(const CVexGePoint3d& point, const CVexGeVector3d& vector)
    {
        return *this = point + vector;
    }
    [[nodiscard]] CVexGeVector3d asVector() const { return {x, y, z}; }
    /// x, y, z by index 0 to 2.
    double operator[](int index) const { return index == 0 ? x : index == 1 ? y : z; }
    double& operator[](int index) { return index == 0 ? x : index == 1 ? y : z; }

    CVexGePoint3d& translateBy(const CVexGeVector3d& vector) { return *this += vector; }
    /// Turns by `angle` radians, right-handed, about the line through `centre` along `axis`.
    CVexGePoint3d& rotateBy(double angle, const CVexGeVector3d& axis,
                            const CVexGePoint3d& centre = kOrigin);
    CVexGePoint3d& scaleBy(double factor, const CVexGePoint3d& centre);
    CVexGePoint3d& scaleBy(double fx, double fy, double fz, const CVexGePoint3d& centre);

    [[nodiscard]] double distanceTo(const CVexGePoint3d& point) const
    {
        return (point - *this).length();
    }
    [[nodiscard]] bool isOn(const CVexGePoint3d& point, double tol = kGeEpsilon) const
    {
        return distanceTo(point) <= tol;
    }
    [[nodiscard]] bool isEqualTo(const CVexGePoint3d& point, double tol = kGeTol) const
    {
        return distanceTo(point) <= tol;
    }
    /// Nearer than kGeEpsilon; at exactly that distance neither == nor != holds.
    bool operator==(const CVexGePoint3d& point) const { return distanceTo(point) < kGeEpsilon; }
    bool operator!=(const CVexGePoint3d& point) const { return distanceTo(point) > kGeEpsilon; }
};
