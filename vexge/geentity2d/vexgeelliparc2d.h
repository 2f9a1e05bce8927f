#pragma once

#include "platform/base/cpoint.h"
#include "platform/base/vexexport.h"
#include "vexge/geentity2d/vexgechaincurve2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <numbers>
#include <vector>

class CVexGeCircArc2d;

/// An ellipse or an arc of one. Its angles are radians, true directions measured from the major
/// axis. It answers from a chain of circular arcs, at most 50 a turn, which every edit makes anew:
/// a point computed from the conic need not be on it.
class VEXGE_EXPORT CVexGeEllipArc2d : public CVexGeChainCurve2d {
public:
    /// The whole unit circle about the origin.
    CVexGeEllipArc2d();
    CVexGeEllipArc2d(const CVexGeEllipArc2d&) = default;
    /// The same shape as `arc`, major axis along x.
    explicit CVexGeEllipArc2d(const CVexGeCircArc2d& arc);
    /// A whole ellipse whose angles both are that of `majorAxis`. The axes become unit vectors; a
    /// negative radius turns its axis round.
    CVexGeEllipArc2d(const CVexGePoint2d& center, const CVexGeVector2d& majorAxis,
                     const CVexGeVector2d& minorAxis, double majorRadius, double minorRadius);
    /// As above with its own angles; the radii stay as they are given.
    CVexGeEllipArc2d(const CVexGePoint2d& center, const CVexGeVector2d& majorAxis,
                     const CVexGeVector2d& minorAxis, double majorRadius, double minorRadius,
                     double startAng, double endAng);
    CVexGeEllipArc2d& operator=(const CVexGeEllipArc2d& other);
    /// set(arc).
    CVexGeEllipArc2d& operator=(const CVexGeCircArc2d& arc);

    // The axes are stored as they are given, unlike with the constructors.
    /// Keeps the angles.
    CVexGeEllipArc2d& set(const CVexGePoint2d& center, const CVexGeVector2d& majorAxis,
                          const CVexGeVector2d& minorAxis, double majorRadius, double minorRadius);
    CVexGeEllipArc2d& set(const CVexGePoint2d& center, const CVexGeVector2d& majorAxis,
                          const CVexGeVector2d& minorAxis, double majorRadius, double minorRadius,
                          double startAng, double endAng);
    /// The shape of `arc`, flagged clockwise.
    CVexGeEllipArc2d& set(const CVexGeCircArc2d& arc);
    void setCenter(const CVexGePoint2d& center);
    void setMinorRadius(double radius);
    void setMajorRadius(double radius);
    void setAxes(const CVexGeVector2d& majorAxis, const CVexGeVector2d& minorAxis);
    void setAngles(double startAng, double endAng);

    [[nodiscard]] const CVexGePoint2d& center() const { return m_center; }
    [[nodiscard]] const CVexGeVector2d& minorAxis() const { return m_minorAxis; }
    [[nodiscard]] const CVexGeVector2d& majorAxis() const { return m_majorAxis; }
    [[nodiscard]] double minorRadius() const { return m_minorRadius; }
    [[nodiscard]] double majorRadius() const { return m_majorRadius; }
    [[nodiscard]] double startAng() const { return m_startAng; }
    [[nodiscard]] double endAng() const { return m_endAng; }
    [[nodiscard]] bool isClockWise() const { return m_clockwise; }
    /// The eccentric angles of the ends, by angleAtPoint.
    [[nodiscard]] double startEllAng() const;
    [[nodiscard]] double endEllAng() const;
    // In the ellipse's own frame: centre at the origin, major axis along x.
    [[nodiscard]] CVexGePoint2d startPoint() const;
    [[nodiscard]] CVexGePoint2d endPoint() const;
    /// Radii that differ by less than `tol`.
    [[nodiscard]] bool isCircular(double tol = kGeTol) const;
    /// The point in true direction `angle` from the major axis: in the ellipse's own frame, or in
    /// the drawing when `toWorld` is not 0. `tol` takes no part.
    [[nodiscard]] CVexGePoint2d pointAtAngle(double angle, int toWorld,
                                             double tol = kGeEpsilon) const;
    /// The eccentric angle in the direction of `point`, which is given in the drawing when
    /// `fromWorld` is not 0: negative in the fourth quadrant. A direction within `tol` of an axis
    /// is returned as it is.
    [[nodiscard]] double angleAtPoint(CVexGePoint2d point, int fromWorld,
                                      double tol = kGeEpsilon) const;
    /// Makes the chain anew, an arc for each two of `steps` steps a turn; always true.
    bool setGePolyline(int steps);
    /// Makes the chain anew with 100 steps and copies it; true when it has vertices.
    bool getGePolyline(CVexGePolyline2d& out);
    [[nodiscard]] const CVexGePolyline2d& chain() const override { return m_polyline; }
    /// Display vertices of the whole ellipse, whatever its angles: `steps` + 1 points, each
    /// coordinate times `scale` and without its fraction. `out` is cleared first.
    void getGrVertexArray(std::vector<CPoint>& out, int steps, double scale) const;
    /// Display vertices of the arc, one at each 1/`steps` of a turn, then its end. The radii are
    /// the lengths of the axis vectors, not the radii: see the source.
    void getGrVertexArray_Arc(std::vector<CPoint>& out, int steps, double scale) const;

    bool isEqualTo(const CVexGeEntity2d& other, const double& tol = kGeTol) const override;
    /// Centre coordinates, radii and angles each differ by at most `tol`; axes equal by the
    /// vectors' own test, which looks at no `tol`; same direction.
    bool isEqualTo(const CVexGeEllipArc2d& other, const double& tol = kGeTol) const;
    /// Centre and axes not !=, all else exactly equal.
    bool operator==(const CVexGeEllipArc2d& other) const;
    bool operator!=(const CVexGeEllipArc2d& other) const { return !(*this == other); }

    /// The centre by both factors, the major radius by `fx`, the minor by `fy`, however it lies.
    CVexGeEllipArc2d& scaleBy(double fx, double fy, const CVexGePoint2d& centre) override;
    CVexGeEllipArc2d& scaleBy(double factor, const CVexGePoint2d& centre) override;
    /// A whole ellipse keeps its chain where it was: see the source.
    CVexGeEllipArc2d& mirror(const CVexGeLine2d& line) override;
    CVexGeEllipArc2d& rotateBy(double angle, const CVexGePoint2d& centre) override;
    CVexGeEllipArc2d& translateBy(const CVexGeVector2d& vector) override;
    /// Transforms centre and axes, a translation moving the axes too; radii and angles stay.
    CVexGeEllipArc2d& transformBy(const CVexGeMatrix2d& matrix) override;
    bool isInsidePoint(const CVexGePoint2d& point) const override;
    using CVexGeChainCurve2d::length;
    /// 0 when the parameters are nearer than `tol` or the first lies outside [0, 1].
    double length(double fromParam, double toParam, double tol = kGeEpsilon) const override;
    CVexGePoint2d pointAtParam(double param) const override;
    using CVexGeChainCurve2d::closestPointTo;
    /// Always the origin, with `onOther` as it was.
    CVexGePoint2d closestPointTo(const CVexGeCircArc2d& arc, CVexGePoint2d& onOther,
                                 double tol = kGeEpsilon) const;
    /// Writes centre, minor axis, major axis, major radius, minor radius, angles, direction: 85
    /// bytes.
    void save(CFile* file) const override;
    void read(CFile* file) override;

    using CVexGeChainCurve2d::intersectWith;
    /// The first two hits of the chain into `p1` and `p2`; `count` is the number of all hits.
    bool intersectWith(const CVexGeLine2d& line, int& count, CVexGePoint2d& p1, CVexGePoint2d& p2,
                       Intersect kind, double tol = kGeEpsilon) const;
    /// Chain against chain.
    bool intersectWith(const CVexGeEllipArc2d& other, int& count, std::vector<CVexGePoint2d>& out,
                       Intersect kind, double tol = kGeEpsilon) const;

    /// For `point` on the chain, sets `out` between the tangent's intercepts with the axes, as they
    /// are for an ellipse about the origin along x and y.
    bool tangent(const CVexGePoint2d& point, CVexGeLine2d& out, double tol = kGeEpsilon) const;
    /// Grows or shrinks both radii by `dist`, on the side of `side`; onto `side` when `dist` is 0.
    /// False when the minor radius would not remain. `side` comes back turned into the ellipse's
    /// frame about the centre.
    bool offset(CVexGePoint2d& side, double dist);
    /// Whether the ellipse holds `point` and the direction to it, from the x axis, lies between
    /// the angles.
    [[nodiscard]] bool isInside(const CVexGePoint2d& point, double tol = kGeEpsilon) const;

private:
    static constexpr int kChainSteps = 100;

    CVexGePoint2d m_center;
    CVexGeVector2d m_minorAxis{0.0, 1.0};
    CVexGeVector2d m_majorAxis{1.0, 0.0};
    double m_minorRadius = 1.0;
    double m_majorRadius = 1.0;
    double m_startAng = 0.0;
    double m_endAng = 2.0 * std::numbers::pi;
    bool m_clockwise = false;
    CVexGePolyline2d m_polyline;
};
