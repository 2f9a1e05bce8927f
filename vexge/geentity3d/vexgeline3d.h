#pragma once

#include "platform/base/vexexport.h"
#include "vexge/geentity3d/vexgeentity3d.h"

class CVexGePlane;

/// A straight segment in space, parameter 0 at its start and 1 at its end; bounded but where an
/// `Intersect` argument extends it.
class VEXGE_EXPORT CVexGeLine3d : public CVexGeEntity3d {
public:
    static const CVexGeLine3d kXAxis; ///< from the origin along the unit vector
    static const CVexGeLine3d kYAxis;
    static const CVexGeLine3d kZAxis;

    constexpr CVexGeLine3d() : CVexGeEntity3d(VexGe::kGeLine3d) {}
    constexpr CVexGeLine3d(const CVexGeLine3d&) = default;
    constexpr CVexGeLine3d(const CVexGePoint3d& start, const CVexGePoint3d& end)
        : CVexGeEntity3d(VexGe::kGeLine3d), m_start(start), m_end(end)
    {
    }
    CVexGeLine3d(const CVexGePoint3d& start, const CVexGeVector3d& along)
        : CVexGeLine3d(start, start + along)
    {
    }
    CVexGeLine3d& operator=(const CVexGeLine3d& other) { return set(other.m_start, other.m_end); }

    CVexGeLine3d& set(const CVexGePoint3d& start, const CVexGePoint3d& end);
    CVexGeLine3d& set(const CVexGePoint3d& start, const CVexGeVector3d& along);
    void setStart(const CVexGePoint3d& start) { m_start = start; }
    void setEnd(const CVexGePoint3d& end) { m_end = end; }
    [[nodiscard]] const CVexGePoint3d& start() const { return m_start; }
    [[nodiscard]] const CVexGePoint3d& end() const { return m_end; }
    void getPoints(CVexGePoint3d& start, CVexGePoint3d& end) const;
    [[nodiscard]] CVexGePoint3d midPoint() const;
    /// The unit vector from start to end; the run itself when it is no longer than kGeTol.
    [[nodiscard]] CVexGeVector3d direction() const;

    bool isEqualTo(const CVexGeEntity3d& other, double tol = kGeTol) const override;
    /// Each coordinate differs by at most `tol`; the order of the ends counts.
    bool isEqualTo(const CVexGeLine3d& other, double tol = kGeTol) const;
    bool operator==(const CVexGeLine3d& other) const;
    bool operator!=(const CVexGeLine3d& other) const;
    /// True for lines that run the same way, wherever they lie.
    [[nodiscard]] bool isParallelTo(const CVexGeLine3d& other, double tol = kGeTol) const;
    /// True for lines that run in opposite directions, wherever they lie.
    [[nodiscard]] bool isColinearTo(const CVexGeLine3d& other, double tol = kGeTol) const;
    [[nodiscard]] bool isPerpendicularTo(const CVexGeLine3d& other, double tol = kGeTol) const;

    CVexGeLine3d& translateBy(const CVexGeVector3d& vector);
    CVexGeLine3d& scaleBy(double factor, const CVexGePoint3d& centre);
    CVexGeLine3d& scaleBy(double fx, double fy, double fz, const CVexGePoint3d& centre);
    /// Turns by `angle` radians, right-handed, about the carrier of `axis`.
    CVexGeLine3d& rotateBy(double angle, const CVexGeLine3d& axis);
    /// CVexGePoint3d::mirror of both ends.
    CVexGeLine3d& mirror(const CVexGePlane& plane);

    /// Nearer to the segment than `tol`, strictly.
    [[nodiscard]] bool isOn(const CVexGePoint3d& point, double tol = kGeEpsilon) const;
    [[nodiscard]] double length() const;
    /// 0 when the parameters are nearer than `tol`, and when one lies outside [0, 1].
    [[nodiscard]] double length(double fromParam, double toParam, double tol = kGeEpsilon) const;
    /// Held within [0, 1] on the side it runs to.
    [[nodiscard]] double paramAtDist(double fromParam, double dist, bool forward,
                                     double tol = kGeEpsilon) const;
    /// -1.0 when `point` is off the line.
    [[nodiscard]] double paramAtPoint(const CVexGePoint3d& point, double tol = kGeEpsilon) const;
    [[nodiscard]] double distAtParam(double param) const;
    [[nodiscard]] double distAtPoint(const CVexGePoint3d& point, double tol = kGeEpsilon) const;
    [[nodiscard]] CVexGePoint3d pointAtDist(double dist) const;
    [[nodiscard]] CVexGePoint3d pointAtParam(double param) const;
    /// The unit normal of the line within `plane`, to the right of the direction of travel for who
    /// looks against the plane's normal.
    [[nodiscard]] CVexGeVector3d normalAtPlane(const CVexGePlane& plane) const;
    /// The foot of the perpendicular, or the end that it falls beyond by more than `tol`.
    [[nodiscard]] CVexGePoint3d closestPointTo(const CVexGePoint3d& point,
                                               double tol = kGeEpsilon) const;
    /// The point of this segment next to `line`; `onLine` gets its counterpart.
    CVexGePoint3d closestPointTo(const CVexGeLine3d& line, CVexGePoint3d& onLine,
                                 double tol = kGeEpsilon) const;
    [[nodiscard]] double distanceTo(const CVexGePoint3d& point, double tol = kGeEpsilon) const;
    [[nodiscard]] double distanceTo(const CVexGeLine3d& line, double tol = kGeEpsilon) const;
    /// The vector from the foot on the carrier to `point`, into `out`; false for a line without
    /// length.
    bool perpVecFromPoint(const CVexGePoint3d& point, CVexGeVector3d& out,
                          double tol = kGeEpsilon) const;
    /// CVexGePlane::intersectWith; then kExtendThis takes the crossing at once, and every other
    /// kind when it lies on the segment within 0.001.
    bool intersectWith(const CVexGePlane& plane, CVexGePoint3d& point, Intersect kind,
                       double tol = kGeEpsilon) const;

    /// Sets `out` through `point` at right angles to this line and towards it, 1e9 of its lengths
    /// to both sides. For a point on the line the direction is one of the many.
    void getPerpLine(const CVexGePoint3d& point, CVexGeLine3d& out) const;
    /// Sets `out` to the plane through `point` with the line's direction as its normal.
    void getPerpPlane(const CVexGePoint3d& point, CVexGePlane& out) const;

    /// Writes start and end: 48 bytes.
    void save(CFile* file) const override;
    void read(CFile* file) override;

protected:
    /// The foot of the perpendicular from `point`, when it falls within the segment, give or take
    /// `tol`.
    bool closestPoint(const CVexGePoint3d& point, CVexGePoint3d& out, double tol) const;

private:
    [[nodiscard]] bool closestCrossing(const CVexGeLine3d& line, CVexGePoint3d& here,
                                       CVexGePoint3d& there) const;

    CVexGePoint3d m_start;
    CVexGePoint3d m_end;
};
