#pragma once

#include "platform/base/cpoint.h"
#include "platform/base/vexexport.h"
#include "vexge/geentity2d/vexgeentity2d.h"

#include <numbers>
#include <vector>

class CVexGeEllipArc2d;
class CVexGePolyline2d;

/// A circular arc or a full circle. It always runs counter-clockwise from its start angle to its
/// end angle; parameter 0 is its start, 1 its end. Angles are radians and are kept as they are
/// given, negative ones too. Full circles run from 0 to 2 pi; equal angles are also a full circle.
/// No heap memory: a polyline makes one for each query of a curved segment.
class VEXGE_EXPORT CVexGeCircArc2d : public CVexGeEntity2d {
public:
    /// The full unit circle about the origin.
    constexpr CVexGeCircArc2d() : CVexGeEntity2d(VexGe::kGeCircArc2d) {}
    constexpr CVexGeCircArc2d(const CVexGeCircArc2d&) = default;
    /// A full circle.
    constexpr CVexGeCircArc2d(const CVexGePoint2d& centre, double radius)
        : CVexGeEntity2d(VexGe::kGeCircArc2d), m_radius(radius), m_center(centre)
    {
    }
    // The other constructors do what set() of the same arguments does.
    CVexGeCircArc2d(const CVexGePoint2d& centre, double radius, double startAng, double endAng,
                    const CVexGeVector2d& refVec = CVexGeVector2d(1.0, 0.0),
                    bool clockwise = false);
    CVexGeCircArc2d(const CVexGePoint2d& p1, const CVexGePoint2d& p2, const CVexGePoint2d& p3);
    CVexGeCircArc2d(const CVexGePoint2d& p1, const CVexGePoint2d& p2, double value, bool isBulge);
    CVexGeCircArc2d& operator=(const CVexGeCircArc2d& other);

    /// Takes centre and radius; the angles stay.
    CVexGeCircArc2d& set(const CVexGePoint2d& centre, double radius);
    /// `clockwise` exchanges the two angles; then a `refVec` other than the x axis takes its own
    /// angle off both.
    CVexGeCircArc2d& set(const CVexGePoint2d& centre, double radius, double startAng, double endAng,
                         const CVexGeVector2d& refVec, bool clockwise);
    /// The arc from `p1` over `p2` to `p3`, stored from p3 when it runs clockwise. For points on
    /// one line the centre stays as it was and only radius and angles are measured from it.
    CVexGeCircArc2d& set(const CVexGePoint2d& p1, const CVexGePoint2d& p2, const CVexGePoint2d& p3);
    /// The arc between two points by tan(sweep / 4). With `isBulge` a positive `value` runs
    /// counter-clockwise from `p1` to `p2`, a negative one is stored from `p2` to `p1`. Without it
    /// the angles are those from the two ends towards the centre: see the source.
    CVexGeCircArc2d& set(const CVexGePoint2d& p1, const CVexGePoint2d& p2, double value,
                         bool isBulge);

    [[nodiscard]] const CVexGePoint2d& center() const { return m_center; }
    // By reference: a property row points at the number itself.
    [[nodiscard]] const double& radius() const { return m_radius; }
    [[nodiscard]] const double& startAng() const { return m_startAng; }
    [[nodiscard]] const double& endAng() const { return m_endAng; }
    [[nodiscard]] CVexGePoint2d startPoint() const { return pointAtAngle(m_startAng); }
    [[nodiscard]] CVexGePoint2d endPoint() const { return pointAtAngle(m_endAng); }
    /// tan(sweep / 4), never negative; 0 for equal angles, huge for a full circle.
    [[nodiscard]] double bulge() const;
    void setCenter(const CVexGePoint2d& centre) { m_center = centre; }
    void setRadius(double radius) { m_radius = radius; }
    /// Stores both as they are.
    void setAngles(double startAng, double endAng);
    /// Adds 2 pi to a negative angle.
    void setStartAngle(double startAng);
    void setEndAngle(double endAng);
    /// Makes `out` the ellipse of the same shape.
    void getEllipse(CVexGeEllipArc2d& out) const;
    /// Makes `out` two vertices with this arc between them, or a closed pair of half circles for a
    /// full one. A `reverse` other than 0 only turns the sign of the bulge.
    void asPolyline(CVexGePolyline2d& out, int reverse) const;
    /// Display vertices: one at each 1/`segments` of a full turn from the start, then the end, each
    /// coordinate times `scale` and without its fraction. `out` is cleared first.
    void getGrVertexArray(std::vector<CPoint>& out, int segments, double scale) const;

    /// False, for an arc too. Arcs compare by the form below.
    bool isEqualTo(const CVexGeEntity2d& other, const double& tol = kGeTol) const override;
    /// Centre coordinates, radius and angles each differ by at most `tol`.
    bool isEqualTo(const CVexGeCircArc2d& other, const double& tol = kGeTol) const;
    /// Centres not !=, radius and angles exactly equal.
    bool operator==(const CVexGeCircArc2d& other) const;
    bool operator!=(const CVexGeCircArc2d& other) const { return !(*this == other); }

    /// Within `tol` of the circle and within 0.001 radians of the sweep.
    int isOn(const CVexGePoint2d& point, const double& tol = kGeEpsilon) const override;
    /// Whether the sector holds `point`; a sector over angle zero is not understood.
    [[nodiscard]] bool isInside(const CVexGePoint2d& point, double tol = kGeEpsilon) const;
    /// Whether the closed shape of asPolyline holds `point`; false for an arc that is not whole.
    bool isInsidePoint(const CVexGePoint2d& point) const override;
    /// The centre by both factors, the radius by `fx` alone.
    CVexGeCircArc2d& scaleBy(double fx, double fy, const CVexGePoint2d& centre) override;
    CVexGeCircArc2d& scaleBy(double factor, const CVexGePoint2d& centre) override;
    CVexGeCircArc2d& mirror(const CVexGeLine2d& line) override;
    CVexGeCircArc2d& rotateBy(double angle, const CVexGePoint2d& centre) override;
    CVexGeCircArc2d& translateBy(const CVexGeVector2d& vector) override;
    /// The radius stays, whatever the matrix scales by: use scaleBy for that.
    CVexGeCircArc2d& transformBy(const CVexGeMatrix2d& matrix) override;
    double length() const override;
    /// 0 when the parameters are nearer than `tol` or the first lies outside [0, 1].
    double length(double fromParam, double toParam, double tol = kGeEpsilon) const override;
    /// Beyond an end a full circle wraps by 1, an arc stops there.
    double paramAtDist(double fromParam, double dist, bool forward,
                       double tol = kGeEpsilon) const override;
    double paramAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    double distAtParam(double param) const override;
    double distAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    CVexGePoint2d pointAtDist(double dist) const override;
    CVexGePoint2d pointAtParam(double param) const override;
    /// The unit vector away from the centre.
    CVexGeVector2d normalAtParam(double param) const override;
    CVexGeVector2d normalAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    CVexGePoint2d closestPointTo(const CVexGePoint2d& point,
                                 double tol = kGeEpsilon) const override;
    /// From the line's point nearest to the centre; no test whether the line crosses the arc.
    CVexGePoint2d closestPointTo(const CVexGeLine2d& line, CVexGePoint2d& onLine,
                                 double tol = kGeEpsilon) const override;
    /// Along the line of centres, else from an end of `arc`.
    CVexGePoint2d closestPointTo(const CVexGeCircArc2d& arc, CVexGePoint2d& onOther,
                                 double tol = kGeEpsilon) const;
    double distanceTo(const CVexGeLine2d& line, double tol = kGeEpsilon) const override;
    double distanceTo(const CVexGePoint2d& point, double tol = kGeEpsilon) const override;
    double distanceTo(const CVexGeCircArc2d& arc, double tol = kGeEpsilon) const;
    /// The radius, not its reciprocal.
    double curvatureAtParam(double param) const override;
    double curvatureAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    bool perpVecFromPoint(const CVexGePoint2d& point, CVexGeVector2d& out,
                          double tol = kGeEpsilon) const override;
    /// Writes radius, start angle, end angle, centre: 44 bytes.
    void save(CFile* file) const override;
    void read(CFile* file) override;

    /// Up to two points, `count` of them, into `p1` and `p2`: the one with the greater x first, on
    /// a vertical line the upper one. A line that touches within `tol` of the discriminant gives
    /// one. `count` is set in any case; true when it is not 0.
    bool intersectWith(const CVexGeLine2d& line, int& count, CVexGePoint2d& p1, CVexGePoint2d& p2,
                       Intersect kind, double tol = kGeEpsilon) const;
    /// As above for two arcs. Circles that are apart, within one another or touch from outside
    /// leave `count` as it was, unless touching arcs share an end.
    bool intersectWith(const CVexGeCircArc2d& arc, int& count, CVexGePoint2d& p1, CVexGePoint2d& p2,
                       Intersect kind, double tol = kGeEpsilon) const;
    // The other curves' own intersection with an arc.
    bool intersectWith(const CVexGeEllipArc2d& ellipse, int& count, std::vector<CVexGePoint2d>& out,
                       Intersect kind, double tol = kGeEpsilon) const;
    bool intersectWith(const CVexGePolyline2d& polyline, int& count,
                       std::vector<CVexGePoint2d>& out, Intersect kind,
                       double tol = kGeEpsilon) const;

    /// Sets `out` from `point` to the nearer point of touch on the circle; true when that lies on
    /// the arc. Not a number for a point within the circle.
    bool tangent(const CVexGePoint2d& point, CVexGeLine2d& out, double tol = kGeEpsilon) const;
    /// Grows or shrinks the radius by `dist` towards `side`; onto `side` when `dist` is 0. False,
    /// with nothing changed, for a `dist` of the radius or more, also when it would grow.
    bool offset(const CVexGePoint2d& side, double dist);

private:
    [[nodiscard]] CVexGePoint2d pointAtAngle(double angle) const;
    [[nodiscard]] double sweep() const;
    [[nodiscard]] bool isWhole() const;
    [[nodiscard]] bool isOnOrWhole(const CVexGePoint2d& point, double tol) const;

    double m_endAng = 2.0 * std::numbers::pi;
    double m_startAng = 0.0;
    double m_radius = 1.0;
    CVexGePoint2d m_center;
};
