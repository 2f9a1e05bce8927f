#pragma once

#include "platform/base/vexexport.h"
#include "vexge/geentity2d/vexgeentity2d.h"

#include <vector>

class CVexGeEllipArc2d;
class CVexGePolyline2d;

/// A straight segment, parameter 0 at its start and 1 at its end. Always bounded: only an
/// `Intersect` argument extends it. No heap memory; polyline work makes these by the million.
class VEXGE_EXPORT CVexGeLine2d : public CVexGeEntity2d {
public:
    static const CVexGeLine2d kXAxis; ///< from the origin to (1, 0)
    static const CVexGeLine2d kYAxis; ///< from the origin to (0, 1)

    /// Both ends at the origin.
    constexpr CVexGeLine2d() : CVexGeEntity2d(VexGe::kGeLine2d) {}
    constexpr CVexGeLine2d(const CVexGeLine2d&) = default;
    constexpr CVexGeLine2d(const CVexGePoint2d& start, const CVexGePoint2d& end)
        : CVexGeEntity2d(VexGe::kGeLine2d), m_start(start), m_end(end)
    {
    }
    constexpr CVexGeLine2d(const CVexGePoint2d& start, const CVexGeVector2d& along)
        : CVexGeEntity2d(VexGe::kGeLine2d), m_start(start), m_end(start + along)
    {
    }
    CVexGeLine2d& operator=(const CVexGeLine2d& other) { return set(other.m_start, other.m_end); }

    CVexGeLine2d& set(const CVexGePoint2d& start, const CVexGePoint2d& end);
    CVexGeLine2d& set(const CVexGePoint2d& start, const CVexGeVector2d& along);
    void getPoints(CVexGePoint2d& start, CVexGePoint2d& end) const;
    [[nodiscard]] const CVexGePoint2d& startPoint() const { return m_start; }
    [[nodiscard]] const CVexGePoint2d& endPoint() const { return m_end; }
    [[nodiscard]] CVexGePoint2d midPoint() const;
    /// The unit vector from start to end; not a number for a line without length.
    [[nodiscard]] CVexGeVector2d direction() const;

    bool isEqualTo(const CVexGeEntity2d& other, const double& tol = kGeTol) const override;
    /// Each coordinate differs by at most `tol`; the order of the ends counts.
    bool isEqualTo(const CVexGeLine2d& other, const double& tol = kGeTol) const;
    /// Start == start and end == end, by the points' own test.
    bool operator==(const CVexGeLine2d& other) const;
    /// Start != start or end != end.
    bool operator!=(const CVexGeLine2d& other) const;
    /// True for lines that run the same way, wherever they lie.
    [[nodiscard]] bool isParallelTo(const CVexGeLine2d& other, double tol = kGeTol) const;
    /// True for lines that run in opposite directions, wherever they lie.
    [[nodiscard]] bool isColinearTo(const CVexGeLine2d& other, double tol = kGeTol) const;
    /// CVexGeVector2d::isPerpendicularTo of the two runs, which is no dot product.
    [[nodiscard]] bool isPerpendicularTo(const CVexGeLine2d& other, double tol = kGeTol) const;

    /// Nearer to the segment than `tol`, strictly.
    int isOn(const CVexGePoint2d& point, const double& tol = kGeEpsilon) const override;
    CVexGeLine2d& scaleBy(double fx, double fy, const CVexGePoint2d& centre) override;
    CVexGeLine2d& scaleBy(double factor, const CVexGePoint2d& centre) override;
    CVexGeLine2d& mirror(const CVexGeLine2d& line) override;
    CVexGeLine2d& rotateBy(double angle, const CVexGePoint2d& centre) override;
    CVexGeLine2d& translateBy(const CVexGeVector2d& vector) override;
    CVexGeLine2d& transformBy(const CVexGeMatrix2d& matrix) override;
    double length() const override;
    /// 0 when the parameters are nearer than `tol`, and when one lies outside [0, 1].
    double length(double fromParam, double toParam, double tol = kGeEpsilon) const override;
    /// Held within [0, 1] on the side it runs to.
    double paramAtDist(double fromParam, double dist, bool forward,
                       double tol = kGeEpsilon) const override;
    double paramAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    double distAtParam(double param) const override;
    /// The distance from the start, also of a point off the line.
    double distAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    CVexGePoint2d pointAtDist(double dist) const override;
    /// Not held within the ends: -1.0, a failed paramAtPoint, gives a point before the start.
    CVexGePoint2d pointAtParam(double param) const override;
    /// The unit vector to the right of the direction of travel, the same for every parameter.
    CVexGeVector2d normalAtParam(double param) const override;
    CVexGeVector2d normalAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    /// The foot of the perpendicular within the segment, else the nearer end; the start on a tie.
    CVexGePoint2d closestPointTo(const CVexGePoint2d& point,
                                 double tol = kGeEpsilon) const override;
    /// The crossing of the segments when they have one, else the nearest pair of points, one of
    /// which is an end.
    CVexGePoint2d closestPointTo(const CVexGeLine2d& line, CVexGePoint2d& onLine,
                                 double tol = kGeEpsilon) const override;
    /// The point of the segment next to `arc`; `onArc` gets its counterpart.
    CVexGePoint2d closestPointTo(const CVexGeCircArc2d& arc, CVexGePoint2d& onArc,
                                 double tol = kGeEpsilon) const;
    double distanceTo(const CVexGeLine2d& line, double tol = kGeEpsilon) const override;
    double distanceTo(const CVexGePoint2d& point, double tol = kGeEpsilon) const override;
    /// 0 for a straight line.
    double curvatureAtParam(double param) const override;
    double curvatureAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    /// The foot may lie beyond the ends; false for a line without length.
    bool perpVecFromPoint(const CVexGePoint2d& point, CVexGeVector2d& out,
                          double tol = kGeEpsilon) const override;
    /// Writes start and end: 40 bytes.
    void save(CFile* file) const override;
    void read(CFile* file) override;

    /// Intersects with `other`: `kind` says which of the two is unbounded, `tol` is a length.
    /// True when the crossing counts. `out` gets the crossing of the carrier lines even when it
    /// does not, and keeps its value for parallel, zero-length or overlapping lines.
    bool intersectWith(const CVexGeLine2d& other, CVexGePoint2d& out, Intersect kind,
                       double tol = kGeEpsilon) const;
    /// As above; appends the crossing and sets `count` to 1, or leaves both alone.
    bool intersectWith(const CVexGeLine2d& other, int& count, std::vector<CVexGePoint2d>& out,
                       Intersect kind, double tol = kGeEpsilon) const;
    // The curves' own intersection with a line: `out` is cleared and gets `count` points.
    bool intersectWith(const CVexGeCircArc2d& arc, int& count, std::vector<CVexGePoint2d>& out,
                       Intersect kind, double tol = kGeEpsilon) const;
    bool intersectWith(const CVexGeEllipArc2d& ellipse, int& count, std::vector<CVexGePoint2d>& out,
                       Intersect kind, double tol = kGeEpsilon) const;
    bool intersectWith(const CVexGePolyline2d& polyline, int& count,
                       std::vector<CVexGePoint2d>& out, Intersect kind,
                       double tol = kGeEpsilon) const;

    /// Sets `out` through `point` along the perpendicular vector, 1e9 lengths of this line to both
    /// sides: a bounded stand-in for an unbounded line.
    void getPerpLine(const CVexGePoint2d& point, CVexGeLine2d& out) const;
    /// The part that two lines of opposite direction share, as a new line in `out` that the caller
    /// owns. False, with `out` as it was, for any other pair.
    bool overlap(const CVexGeLine2d& line, CVexGeLine2d*& out, double tol = kGeEpsilon) const;
    /// Moves the line by `dist` towards `side`; onto `side` when `dist` is 0. Always true.
    bool offset(const CVexGePoint2d& side, double dist);

protected:
    /// The foot of the perpendicular from `point`, when it falls within the segment.
    bool closestPoint(const CVexGePoint2d& point, CVexGePoint2d& out) const;

private:
    [[nodiscard]] double footParam(const CVexGePoint2d& point) const;
    [[nodiscard]] bool contains(const CVexGeLine2d& other, double tol) const;

    CVexGePoint2d m_start;
    CVexGePoint2d m_end;
};
