#pragma once

#include "platform/base/vexexport.h"
#include "vexge/gemath/vexgepoint3d.h"
#include "vexge/gemath/vexgetol.h"
#include "vexge/gemath/vexgevector3d.h"

class CFile;
class CVexGeLine3d;

/// The plane a x + b y + c z + d = 0; the level one through the origin by default. Every drawing
/// keeps one.
class VEXGE_EXPORT CVexGePlane {
public:
    static const CVexGePlane kXYPlane; ///< seen from above
    static const CVexGePlane kYZPlane; ///< seen from the right
    static const CVexGePlane kZXPlane; ///< seen from behind
    static const CVexGePlane kSWPlane; ///< the four slanted views, named by their corner
    static const CVexGePlane kSEPlane;
    static const CVexGePlane kNWPlane;
    static const CVexGePlane kNEPlane;

    double a = 0.0;
    double b = 0.0;
    double c = 1.0;
    double d = 0.0;

    constexpr CVexGePlane() = default;
    constexpr CVexGePlane(const CVexGePlane&) = default;
    constexpr CVexGePlane(double nx, double ny, double nz, double offset)
        : a(nx), b(ny), c(nz), d(offset)
    {
    }
    // As set() of the same arguments.
    CVexGePlane(const CVexGePoint3d& point, const CVexGeVector3d& normal) { set(point, normal); }
    CVexGePlane(const CVexGePoint3d& p1, const CVexGePoint3d& p2, const CVexGePoint3d& p3)
    {
        set(p1, p2, p3);
    }
    CVexGePlane(const CVexGePoint3d& point, const CVexGeVector3d& u, const CVexGeVector3d& v)
    {
        set(point, u, v);
    }
    constexpr CVexGePlane& operator=(const CVexGePlane&) = default;

    /// Writes a, b, c, d: 32 bytes.
    virtual void save(CFile* file) const;
    virtual void read(CFile* file);
    constexpr virtual ~CVexGePlane() {}

    constexpr CVexGePlane& set(double nx, double ny, double nz, double offset)
    {
        a = nx;
        b = ny;
        c = nz;
        d = offset;
        return *this;
    }
    /// The plane through `point`; `normal` is taken as it is, of any length.
    CVexGePlane& set(const CVexGePoint3d& point, const CVexGeVector3d& normal);
    /// The plane through `point` along `u` and `v`, seen from where u turns left into v.
    CVexGePlane& set(const CVexGePoint3d& point, const CVexGeVector3d& u, const CVexGeVector3d& v);
    /// The plane through three points, its normal along (p1 - p2) x (p3 - p2).
    CVexGePlane& set(const CVexGePoint3d& p1, const CVexGePoint3d& p2, const CVexGePoint3d& p3);

    /// (a, b, c) at length 1, or as it is when it is no longer than kGeTol.
    [[nodiscard]] CVexGeVector3d getNorm() const;
    /// How far `point` lies from the plane, positive on the side of its normal.
    [[nodiscard]] double signedDistanceTo(const CVexGePoint3d& point) const;
    /// The crossing of the line's unbounded carrier, into `point`. A line parallel to the plane
    /// within `tol` gives true exactly when it lies in it, and leaves `point` as it was.
    bool intersectWith(const CVexGeLine3d& line, CVexGePoint3d& point,
                       double tol = kGeEpsilon) const;
    /// Sets `line` through two points of both planes, at the smallest and the largest
    /// single-precision x. True unless the normals are parallel within 0.001; `tol` is not asked.
    /// Needs c not 0 here and b1 c2 different from b2 c1: the line divides by them.
    bool intersectWith(const CVexGePlane& plane, CVexGeLine3d& line, double tol = kGeEpsilon) const;
};
