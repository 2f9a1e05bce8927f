#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"
#include "vexge/gemath/vextruncate.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

// The ellipse's angles, and the chain and display vertices that are made from them.

namespace {

/// The most steps of a chain or display line that a caller may ask for.
constexpr int kMostSteps = 1'000'000;
/// The most turns of a whole ellipse, however far a damaged file puts its angles apart: each
/// ellipse of a drawing holds its chain in memory.
constexpr double kMostTurns = 100.0;
/// A step that ends this little beyond the arc's end, in radians, ends at it.
constexpr double kStepSlack = 1e-9;

enum class Quadrant { kNone, kFirst, kSecond, kThird, kFourth };

/// By the signs of sine, cosine and tangent; none on an axis.
Quadrant quadrantOf(double angle)
{
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    const double tangent = std::tan(angle);
    if (cosine > 0.0 && sine > 0.0 && tangent > 0.0) {
        return Quadrant::kFirst;
    }
    if (cosine < 0.0 && sine > 0.0 && tangent < 0.0) {
        return Quadrant::kSecond;
    }
    if (cosine < 0.0 && sine < 0.0 && tangent > 0.0) {
        return Quadrant::kThird;
    }
    return cosine > 0.0 && sine < 0.0 && tangent < 0.0 ? Quadrant::kFourth : Quadrant::kNone;
}

/// Both radii of an ellipse in its own frame.
struct Radii {
    double major;
    double minor;

    [[nodiscard]] CVexGePoint2d at(double eccentric) const
    {
        return {major * std::cos(eccentric), minor * std::sin(eccentric)};
    }
    /// atan((a / b) tan(angle)), on whichever branch.
    [[nodiscard]] double eccentric(double angle) const
    {
        return std::atan(major / minor * std::tan(angle));
    }
    [[nodiscard]] CVexGePoint2d inDirection(double angle) const
    {
        switch (quadrantOf(angle)) {
        case Quadrant::kSecond:
        case Quadrant::kThird: return at(eccentric(angle) + std::numbers::pi);
        case Quadrant::kFourth: return at(eccentric(angle) + kGeTwoPi);
        case Quadrant::kFirst:
        case Quadrant::kNone: break;
        }
        return at(eccentric(angle));
    }
    [[nodiscard]] double eccentricOf(const CVexGePoint2d& point) const
    {
        return notNegativeAngle(std::atan2(point.y / minor, point.x / major));
    }
};

/// The eccentric angles that an arc runs between.
struct Sweep {
    double start;
    double end;
    bool whole;

    /// How many steps of `step` fit, give or take one; not counted by adding up, since a wild angle
    /// does not grow by a step.
    [[nodiscard]] int stepsOf(double step) const
    {
        return std::clamp(truncateSaturated((end - start) / step) + 2, 0, kMostSteps);
    }
};

/// The sweep between two true directions. Where their points coincide the curve is whole: it runs
/// from `closedStart` to `closedEnd`, by full turns and at least one.
Sweep sweepBetween(const Radii& radii, double startAng, double endAng, double closedStart,
                   double closedEnd)
{
    const CVexGePoint2d from = radii.inDirection(startAng);
    const CVexGePoint2d to = radii.inDirection(endAng);
    Sweep sweep{closedStart, closedEnd, from.distanceTo(to) < kGeEllipCacheTol};
    if (!sweep.whole) {
        sweep.start = radii.eccentricOf(from);
        sweep.end = radii.eccentricOf(to);
    }
    if (sweep.end < sweep.start) {
        sweep.start -= kGeTwoPi;
    }
    if (sweep.whole) {
        const double turns = std::round((sweep.end - sweep.start) / kGeTwoPi);
        sweep.end = sweep.start + kGeTwoPi * std::min(std::max(1.0, turns), kMostTurns);
    }
    return sweep;
}

/// Where the ellipse lies: from its own frame to the drawing.
class Placement {
public:
    explicit Placement(const CVexGeEllipArc2d& ellipse)
        : m_center(ellipse.center()), m_along(ellipse.majorAxis().angle())
    {
    }
    [[nodiscard]] CVexGePoint2d operator()(const CVexGePoint2d& p) const
    {
        return {m_center.x + p.x * m_along.x - p.y * m_along.y,
                m_center.y + p.x * m_along.y + p.y * m_along.x};
    }

private:
    CVexGePoint2d m_center;
    CVexGeVector2d m_along; // the unit vector of the major axis
};

bool isNear(double angle, double tol)
{
    constexpr std::array kAxisAngles = {0.0, std::numbers::pi / 2.0, std::numbers::pi,
                                        std::numbers::pi * 1.5, kGeTwoPi};
    return std::any_of(kAxisAngles.begin(), kAxisAngles.end(),
                       [&](double axis) { return std::fabs(angle - axis) <= tol; });
}

class DisplayLine {
public:
    DisplayLine(std::vector<CPoint>& out, double scale) : m_out(out), m_scale(scale)
    {
        m_out.clear();
    }
    void push(const CVexGePoint2d& point)
    {
        m_out.emplace_back(truncateSaturated(point.x * m_scale),
                           truncateSaturated(point.y * m_scale));
    }

private:
    std::vector<CPoint>& m_out;
    double m_scale;
};

} // namespace

CVexGePoint2d CVexGeEllipArc2d::pointAtAngle(double angle, int inWorld, double /*tol*/) const
{
    // The four axis directions need no case of their own, and `tol` does nothing: the general way
    // gives their points to the last bit or two, and it is what files were made with.
    const CVexGePoint2d point = Radii{m_majorRadius, m_minorRadius}.inDirection(angle);
    return inWorld != 0 ? Placement(*this)(point) : point;
}

double CVexGeEllipArc2d::angleAtPoint(CVexGePoint2d point, int fromWorld, double tol) const
{
    if (fromWorld != 0) {
        point -= m_center.asVector();
        point.rotateBy(-m_majorAxis.angle(), CVexGePoint2d::kOrigin);
    }
    const double direction = point.asVector().angle();
    if (isNear(direction, tol)) {
        return direction;
    }
    const double eccentric = Radii{m_majorRadius, m_minorRadius}.eccentric(direction);
    switch (quadrantOf(direction)) {
    case Quadrant::kSecond:
    case Quadrant::kThird: return eccentric + std::numbers::pi;
    default: return eccentric; // negative in the fourth quadrant
    }
}

double CVexGeEllipArc2d::startEllAng() const
{
    return angleAtPoint(startPoint(), 0, kGeEpsilon);
}

double CVexGeEllipArc2d::endEllAng() const
{
    return angleAtPoint(endPoint(), 0, kGeEpsilon);
}

CVexGePoint2d CVexGeEllipArc2d::startPoint() const
{
    return pointAtAngle(m_startAng, 0, kGeEpsilon);
}

CVexGePoint2d CVexGeEllipArc2d::endPoint() const
{
    return pointAtAngle(m_endAng, 0, kGeEpsilon);
}

bool CVexGeEllipArc2d::setGePolyline(int steps)
{
    const Radii radii{m_majorRadius, m_minorRadius};
    const Sweep sweep = sweepBetween(radii, m_startAng, m_endAng, m_startAng, m_endAng);
    const Placement toWorld(*this);
    const double step = kGeTwoPi / steps;
    const CVexGePoint2d first = toWorld(radii.at(sweep.start));
    CVexGePoint2d from = first;
    m_polyline.setSize(kChainSteps / 2 + 1);
    const int most = sweep.stepsOf(step);
    for (int made = 0; steps > 0 && made < most; made += 2) {
        const double middle = sweep.start + step * (made + 1);
        const double far = sweep.start + step * (made + 2);
        if (!(far <= sweep.end + kStepSlack)) {
            // An unfinished pair drops its start as well, so the last arc keeps the bulge of two
            // steps over up to four, and an arc below two steps has its end for all its chain.
            // Lengths of elliptical arcs in drawings were measured so.
            break;
        }
        const CVexGePoint2d to = toWorld(radii.at(far));
        m_polyline.appendVertex(from, CVexGeCircArc2d(from, toWorld(radii.at(middle)), to).bulge());
        from = to;
    }
    m_polyline.appendVertex(sweep.whole ? first : toWorld(endPoint()));
    return true;
}

void CVexGeEllipArc2d::getGrVertexArray(std::vector<CPoint>& out, int steps, double scale) const
{
    const Radii radii{m_majorRadius, m_minorRadius};
    const Placement toWorld(*this);
    DisplayLine line(out, scale);
    const int last = std::min(steps, kMostSteps);
    for (int i = 0; last > 0 && i <= last; ++i) {
        line.push(toWorld(radii.at(i * kGeTwoPi / last)));
    }
}

void CVexGeEllipArc2d::getGrVertexArray_Arc(std::vector<CPoint>& out, int steps, double scale) const
{
    // The lengths of the axis vectors stand for the radii, so an arc whose axes are unit vectors
    // is drawn with radius 1. The entity sets axes as long as its radii, and its grips lie there.
    const Radii radii{m_majorAxis.length(), m_minorAxis.length()};
    const Sweep sweep = sweepBetween(radii, m_startAng, m_endAng, startEllAng(), endEllAng());
    const Placement toWorld(*this);
    DisplayLine line(out, scale);
    // A running sum, as the vertices of drawings on disk were made: a whole turn in 100 steps ends
    // a rounding error below the end and gets one vertex more, the same as the last.
    const double step = kGeTwoPi / steps;
    const int most = sweep.stepsOf(step);
    double angle = sweep.start;
    for (int made = 0; step > 0.0 && angle < sweep.end && made < most; ++made) {
        line.push(toWorld(radii.at(angle)));
        angle += step;
    }
    line.push(toWorld(radii.at(sweep.end)));
}
