#pragma once

#include "platform/base/vexexport.h"
#include "vexge/gemath/vexgepoint2d.h"
#include "vexge/gemath/vexgetol.h"
#include "vexge/gemath/vexgevector2d.h"

#include <cstdint>

class CFile;
class CVexGeCircArc2d;
class CVexGeLine2d;
class CVexGeMatrix2d;

namespace VexGe {

/// The kind of a curve, as every curve stores it. No class has the number 7.
enum EntityId : std::int32_t {
    kGeNone = 0,
    kGeCircArc2d = 1,
    kGeEllipArc2d = 2,
    kGeLine2d = 3,
    kGePolyline2d = 4,
    kGeSpline = 5,
    kGeCSpline2d = 6,
    kGeRect2d = 8,
    kGeSpiral = 9,
};

} // namespace VexGe

/// A bounded curve of the drawing plane with a parameter that runs from 0 to 1. Lengths and
/// tolerances are in drawing units, angles in radians. Edits work in place and return the receiver.
class VEXGE_EXPORT CVexGeEntity2d {
public:
    /// Which of two curves is taken as unbounded when they are intersected.
    enum Intersect : std::int32_t {
        kExtendNone = 0, ///< a point counts on the receiver and on the argument
        kExtendThis = 1, ///< a point counts on the argument
        kExtendArg = 2,  ///< a point counts on the receiver
        kExtendBoth = 3, ///< every point counts
    };
    /// `kind` as the other curve sees it, for handing an intersection over with swapped roles.
    static constexpr Intersect exchanged(Intersect kind)
    {
        return kind == kExtendThis ? kExtendArg : kind == kExtendArg ? kExtendThis : kind;
    }
    /// Whether a point of the unbounded curves counts by `kind`, given on which of the bounded ones
    /// it lies. False for a value outside the enumeration.
    static constexpr bool counts(Intersect kind, bool onThis, bool onArg)
    {
        switch (kind) {
        case kExtendNone: return onThis && onArg;
        case kExtendThis: return onArg;
        case kExtendArg: return onThis;
        case kExtendBoth: return true;
        }
        return false;
    }

    virtual ~CVexGeEntity2d() = default;

    /// Same kind and same geometry within `tol`.
    virtual bool isEqualTo(const CVexGeEntity2d& other, const double& tol = kGeTol) const = 0;
    /// Not 0 when `point` lies on the bounded curve.
    virtual int isOn(const CVexGePoint2d& point, const double& tol = kGeEpsilon) const = 0;
    virtual CVexGeEntity2d& scaleBy(double fx, double fy, const CVexGePoint2d& centre) = 0;
    virtual CVexGeEntity2d& scaleBy(double factor, const CVexGePoint2d& centre) = 0;
    virtual CVexGeEntity2d& mirror(const CVexGeLine2d& line) = 0;
    virtual CVexGeEntity2d& rotateBy(double angle, const CVexGePoint2d& centre) = 0;
    virtual CVexGeEntity2d& translateBy(const CVexGeVector2d& vector) = 0;
    virtual CVexGeEntity2d& transformBy(const CVexGeMatrix2d& matrix) = 0;
    /// Whether the curve encloses `point`; false for a kind that encloses nothing.
    virtual bool isInsidePoint(const CVexGePoint2d& point) const;
    /// The whole length.
    virtual double length() const = 0;
    /// The length between two parameters.
    virtual double length(double fromParam, double toParam, double tol = kGeEpsilon) const = 0;
    /// The parameter at `dist` along the curve from a parameter, to the end or to the start.
    virtual double paramAtDist(double fromParam, double dist, bool forward,
                               double tol = kGeEpsilon) const = 0;
    /// -1.0 when `point` is off the curve.
    virtual double paramAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const = 0;
    /// The length from the start to a parameter.
    virtual double distAtParam(double param) const = 0;
    /// The length from the start to a point of the curve.
    virtual double distAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const = 0;
    virtual CVexGePoint2d pointAtDist(double dist) const = 0;
    virtual CVexGePoint2d pointAtParam(double param) const = 0;
    virtual CVexGeVector2d normalAtParam(double param) const = 0;
    virtual CVexGeVector2d normalAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const = 0;
    virtual CVexGePoint2d closestPointTo(const CVexGePoint2d& point,
                                         double tol = kGeEpsilon) const = 0;
    /// The point of this curve next to `line`; `onLine` gets its counterpart.
    virtual CVexGePoint2d closestPointTo(const CVexGeLine2d& line, CVexGePoint2d& onLine,
                                         double tol = kGeEpsilon) const = 0;
    virtual double distanceTo(const CVexGeLine2d& line, double tol = kGeEpsilon) const = 0;
    virtual double distanceTo(const CVexGePoint2d& point, double tol = kGeEpsilon) const = 0;
    virtual double curvatureAtParam(double param) const = 0;
    virtual double curvatureAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const = 0;
    /// The vector from the foot of the perpendicular to `point`, into `out`: point minus foot. On
    /// false `out` keeps its value.
    virtual bool perpVecFromPoint(const CVexGePoint2d& point, CVexGeVector2d& out,
                                  double tol = kGeEpsilon) const = 0;
    /// Writes the geometry, with no mark of its kind.
    virtual void save(CFile* file) const = 0;
    virtual void read(CFile* file) = 0;

    [[nodiscard]] VexGe::EntityId type() const { return m_type; }
    [[nodiscard]] bool isKindOf(VexGe::EntityId kind) const { return m_type == kind; }
    /// A new curve of the same class and geometry, owned by the caller; null, after an assertion,
    /// for a kind that has no class.
    [[nodiscard]] CVexGeEntity2d* copy() const;
    /// Assigns as the class of `other` does and takes its kind: both must be of one class. So a
    /// concrete class assigns its own fields in its own operator= and never calls this one.
    CVexGeEntity2d& operator=(const CVexGeEntity2d& other);
    /// An arc takes the arc, a polyline its polyline form; any other receiver is left alone.
    CVexGeEntity2d& operator=(const CVexGeCircArc2d& arc);
    /// Same kind, and equal within kGeTol.
    bool operator==(const CVexGeEntity2d& other) const;
    bool operator!=(const CVexGeEntity2d& other) const { return !(*this == other); }

protected:
    explicit constexpr CVexGeEntity2d(VexGe::EntityId kind) : m_type(kind) {}
    constexpr CVexGeEntity2d(const CVexGeEntity2d&) = default;

private:
    VexGe::EntityId m_type;
};
