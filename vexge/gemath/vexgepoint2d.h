#pragma once

#include "platform/base/cpoint.h"
#include "platform/base/vexexport.h"
#include "vexge/gemath/vexgetol.h"
#include "vexge/gemath/vexgevector2d.h"
#include "vexge/gemath/vexxy.h"

#include <cmath>
#include <cstdint>

class CFile;
class CVexGeLine2d;
class CVexGeMatrix2d;

/// A point of the drawing plane, in drawing units; the element of every vertex array. It indexes
/// as the homogeneous triple (x, y, 1). Edits work in place and return the point.
class VEXGE_EXPORT CVexGePoint2d {
public:
    static const CVexGePoint2d kOrigin;

    double x = 0.0;
    double y = 0.0;
    std::int32_t tag = 0; ///< spare word, kept in copies and files; the kernel never looks at it

    constexpr CVexGePoint2d() = default;
    constexpr CVexGePoint2d(const CVexGePoint2d&) = default;
    constexpr CVexGePoint2d(double xAt, double yAt) : x(xAt), y(yAt) {}
    constexpr CVexGePoint2d(const CPoint& point) : x(point.x), y(point.y) {}
    constexpr CVexGePoint2d(const VexXY& pair) : x(pair.x), y(pair.y) {}
    constexpr CVexGePoint2d& operator=(const CVexGePoint2d&) = default;
    /// Takes the pair and zeroes the tag.
    constexpr CVexGePoint2d& operator=(const VexXY& pair)
    {
        tag = 0;
        return set(pair.x, pair.y);
    }

    /// Writes x, y, tag: 20 bytes.
    virtual void save(CFile* file) const;
    /// Reads what save wrote, unchecked.
    virtual void read(CFile* file);

    /// The nearest integers for coordinates that are not negative: 0.5 is added and the fraction
    /// dropped, so negative ones round towards zero by more than a half. Saturates at +-10^9.
    [[nodiscard]] CPoint asCPoint() const;
    /// Sets the coordinates; the tag stays.
    constexpr CVexGePoint2d& set(double xAt, double yAt)
    {
        x = xAt;
        y = yAt;
        return *this;
    }

    constexpr CVexGePoint2d operator*(double factor) const { return {x * factor, y * factor}; }
    constexpr CVexGePoint2d operator/(double divisor) const { return {x / divisor, y / divisor}; }
    constexpr CVexGePoint2d& operator*=(double factor) { return set(x * factor, y * factor); }
    constexpr CVexGePoint2d& operator/=(double divisor) { return set(x / divisor, y / divisor); }
    constexpr CVexGePoint2d operator+(const CVexGeVector2d& v) const { return {x + v.x, y + v.y}; }
    constexpr CVexGePoint2d operator-(const CVexGeVector2d& v) const { return {x - v.x, y - v.y}; }
    constexpr CVexGePoint2d& operator+=(const CVexGeVector2d& v) { return set(x + v.x, y + v.y); }
    constexpr CVexGePoint2d& operator-=(const CVexGeVector2d& v) { return set(x - v.x, y - v.y); }
    constexpr CVexGeVector2d operator-(const CVexGePoint2d& p) const { return {x - p.x, y - p.y}; }
    /// Becomes `point` moved by `vector`.
    constexpr CVexGePoint2d& setToSum(const CVexGePoint2d& point, const CVexGeVector2d& vector)
    {
        return set(point.x + vector.x, point.y + vector.y);
    }
    /// The transformed copy of `point`. The receiver stays as it is, unlike with the sum.
    CVexGePoint2d setToProduct(const CVexGeMatrix2d& matrix, const CVexGePoint2d& point) const;
    [[nodiscard]] constexpr CVexGeVector2d asVector() const { return {x, y}; }

    /// x, y and, for any other index, 1.
    constexpr double operator[](int index) const { return index == 0 ? x : index == 1 ? y : 1.0; }
    /// As above, by reference; index 2 is one double holding 1.0, the same for all points.
    double& operator[](int index);

    /// Applies the affine `matrix`: its third row is not used.
    CVexGePoint2d& transformBy(const CVexGeMatrix2d& matrix);
    constexpr CVexGePoint2d& translateBy(const CVexGeVector2d& vector) { return *this += vector; }
    /// Turns by `angle` radians about `centre`; a point equal to the centre keeps its bits.
    CVexGePoint2d& rotateBy(double angle, const CVexGePoint2d& centre);
    CVexGePoint2d& mirror(const CVexGeLine2d& line);
    CVexGePoint2d& scaleBy(double factor, const CVexGePoint2d& centre);
    CVexGePoint2d& scaleBy(double fx, double fy, const CVexGePoint2d& centre);
    /// Moves by the perpendicular from `line` to the point, turned by `angle` radians. With `flag`
    /// the way is stretched so that the component across the line keeps its length.
    CVexGePoint2d& slantBy(const CVexGeLine2d& line, double angle, bool flag);

    [[nodiscard]] double distanceTo(const CVexGePoint2d& point) const
    {
        return (point - *this).length();
    }
    /// The direction to `point` in [0, 2 pi).
    [[nodiscard]] double angleTo(const CVexGePoint2d& point) const
    {
        return (point - *this).angle();
    }
    [[nodiscard]] bool isOn(const CVexGePoint2d& point, double tol = kGeEpsilon) const
    {
        return distanceTo(point) <= tol;
    }
    [[nodiscard]] bool isEqualTo(const CVexGePoint2d& point, double tol = kGeTol) const
    {
        return distanceTo(point) <= tol;
    }
    /// Nearer than 1e-6. At a distance of exactly 1e-6 neither == nor != holds: each excludes its
    /// own bound, and curves that compare their ends by one of them rely on that.
    bool operator==(const CVexGePoint2d& point) const { return distanceTo(point) < kGePointTol; }
    bool operator!=(const CVexGePoint2d& point) const { return distanceTo(point) > kGePointTol; }
};
