#include "vexge/geentity2d/vexgecircarc2d.h"

#include "platform/base/vexfields.h"
#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/geentity2d/vexgewinding.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <cmath>

namespace {

/// Points whose turn has a smaller sine lie on one line and have no circle.
constexpr double kCollinearSine = 1e-12;

/// Where the perpendicular bisectors of p1-p2 and p2-p3 meet, into `centre`; parallel ones leave
/// it alone. Written out, because bisectors of finite length lose seven digits on the way.
void findCentre(const CVexGePoint2d& p1, const CVexGePoint2d& p2, const CVexGePoint2d& p3,
                CVexGePoint2d& centre)
{
    const CVexGeVector2d first = p2 - p1;
    const CVexGeVector2d second = p3 - p2;
    const double turn = doubledArea(p1, p2, p3);
    const double scale = first.lengthSqrd() * second.lengthSqrd();
    if (!(turn * turn > kCollinearSine * kCollinearSine * scale)) {
        return;
    }
    const double along = (first + second).dotProduct(second) / (2.0 * turn);
    centre = p1 + first * 0.5 + first.perpVector() * along;
}

} // namespace

CVexGeCircArc2d::CVexGeCircArc2d(const CVexGePoint2d& centre, double radius, double startAng,
                                 double endAng, const CVexGeVector2d& refVec, bool clockwise)
    : CVexGeCircArc2d()
{
    set(centre, radius, startAng, endAng, refVec, clockwise);
}

CVexGeCircArc2d::CVexGeCircArc2d(const CVexGePoint2d& p1, const CVexGePoint2d& p2,
                                 const CVexGePoint2d& p3)
    : CVexGeCircArc2d()
{
    set(p1, p2, p3);
}

CVexGeCircArc2d::CVexGeCircArc2d(const CVexGePoint2d& p1, const CVexGePoint2d& p2, double value,
                                 bool isBulge)
    : CVexGeCircArc2d()
{
    set(p1, p2, value, isBulge);
}

CVexGeCircArc2d& CVexGeCircArc2d::operator=(const CVexGeCircArc2d& other)
{
    m_endAng = other.m_endAng;
    m_startAng = other.m_startAng;
    m_radius = other.m_radius;
    m_center = other.m_center;
    return *this;
}

CVexGeCircArc2d& CVexGeCircArc2d::set(const CVexGePoint2d& centre, double radius)
{
    m_center = centre;
    m_radius = radius;
    return *this;
}

CVexGeCircArc2d& CVexGeCircArc2d::set(const CVexGePoint2d& centre, double radius, double startAng,
                                      double endAng, const CVexGeVector2d& refVec, bool clockwise)
{
    set(centre, radius);
    setAngles(clockwise ? endAng : startAng, clockwise ? startAng : endAng);
    if (refVec != CVexGeVector2d::kXAxis) {
        const double turn = refVec.angle();
        m_startAng -= turn;
        m_endAng -= turn;
    }
    return *this;
}

CVexGeCircArc2d& CVexGeCircArc2d::set(const CVexGePoint2d& p1, const CVexGePoint2d& p2,
                                      const CVexGePoint2d& p3)
{
    findCentre(p1, p2, p3, m_center);
    m_radius = m_center.distanceTo(p1);
    const bool counterClockwise = winding(p1, p2, p3) != 0;
    m_startAng = m_center.angleTo(counterClockwise ? p1 : p3);
    m_endAng = m_center.angleTo(counterClockwise ? p3 : p1);
    return *this;
}

CVexGeCircArc2d& CVexGeCircArc2d::set(const CVexGePoint2d& p1, const CVexGePoint2d& p2,
                                      double value, bool isBulge)
{
    const CVexGeVector2d chord = p2 - p1;
    if (isBulge) {
        // The circle through p1, p2 and the apex beside the chord's middle, without the apex: a
        // chain of arcs comes through here for each of its queries.
        const CVexGePoint2d middle = p1 + chord * 0.5;
        if (std::fabs(value) <= kCollinearSine) {
            return set(p1, middle, p2); // the centre would lie beyond all numbers
        }
        m_center = middle + chord.perpVector() * ((1.0 - value * value) / (4.0 * value));
        m_radius = chord.length() * (1.0 + value * value) / (4.0 * std::fabs(value));
        m_startAng = m_center.angleTo(value > 0.0 ? p1 : p2);
        m_endAng = m_center.angleTo(value > 0.0 ? p2 : p1);
        return *this;
    }
    // The angles are those from the two points towards the centre, half a turn off from those of
    // the points seen from the centre. Callers of this form turn them themselves; chains of
    // segments use the form above.
    const double turn = (std::numbers::pi - 4.0 * std::atan(value)) / 2.0;
    const CVexGeVector2d direction = chord / chord.length();
    const CVexGeVector2d fromFirst = CVexGeVector2d(direction).rotateBy(turn);
    const CVexGeVector2d fromSecond = (-direction).rotateBy(-turn);
    CVexGeLine2d(p1, fromFirst)
        .intersectWith(CVexGeLine2d(p2, fromSecond), m_center, kExtendBoth, kGeEpsilon);
    m_radius = m_center.distanceTo(p1);
    setAngles(fromFirst.angle(), fromSecond.angle());
    return *this;
}

void CVexGeCircArc2d::setAngles(double startAng, double endAng)
{
    m_startAng = startAng;
    m_endAng = endAng;
}

void CVexGeCircArc2d::setStartAngle(double startAng)
{
    m_startAng = notNegativeAngle(startAng);
}

void CVexGeCircArc2d::setEndAngle(double endAng)
{
    m_endAng = notNegativeAngle(endAng);
}

double CVexGeCircArc2d::bulge() const
{
    const double run = notNegativeAngle(m_endAng - m_startAng);
    return std::fabs(run) <= kGeAngleTol ? 0.0 : std::tan(run / 4.0);
}

CVexGePoint2d CVexGeCircArc2d::pointAtAngle(double angle) const
{
    return {m_center.x + m_radius * std::cos(angle), m_center.y + m_radius * std::sin(angle)};
}

double CVexGeCircArc2d::sweep() const
{
    double start = notNegativeAngle(m_startAng);
    const double end = notNegativeAngle(m_endAng);
    if (end < start) {
        start -= kGeTwoPi;
    }
    return notNegativeAngle(end - start);
}

void CVexGeCircArc2d::save(CFile* file) const
{
    CVexFieldWriter{*file}(m_radius, m_startAng, m_endAng, m_center);
}

void CVexGeCircArc2d::read(CFile* file)
{
    CVexFieldReader{*file}(m_radius, m_startAng, m_endAng, m_center);
}

void CVexGeCircArc2d::asPolyline(CVexGePolyline2d& out, int reverse) const
{
    const double sign = reverse != 0 ? -1.0 : 1.0;
    out = CVexGePolyline2d();
    out.setSize(2);
    if (isWhole()) {
        out.appendVertex(pointAtAngle(std::numbers::pi), sign);
        out.appendVertex(pointAtAngle(0.0), sign);
        out.setClosed(true);
        out.setBulgeAt(1, sign); // closing computes it anew, a rounding error off
        return;
    }
    // The order of the points stays in reverse too, so the reversed form is the arc's mirror image
    // in its chord. Whoever draws a clockwise arc asks for it that way and swaps the ends.
    out.appendVertex(startPoint(), sign * bulge());
    out.appendVertex(endPoint(), 0.0);
}

bool CVexGeCircArc2d::isEqualTo(const CVexGeEntity2d& /*other*/, const double& /*tol*/) const
{
    // False for every arc too: through the base, arcs count as equal to nothing. Lists of mixed
    // curves never hold two arcs for the same on the strength of this form.
    return false;
}

bool CVexGeCircArc2d::isEqualTo(const CVexGeCircArc2d& other, const double& tol) const
{
    return std::fabs(m_center.x - other.m_center.x) <= tol &&
           std::fabs(m_center.y - other.m_center.y) <= tol &&
           std::fabs(m_radius - other.m_radius) <= tol &&
           std::fabs(m_startAng - other.m_startAng) <= tol &&
           std::fabs(m_endAng - other.m_endAng) <= tol;
}

bool CVexGeCircArc2d::operator==(const CVexGeCircArc2d& other) const
{
    return !(m_center != other.m_center) && m_radius == other.m_radius &&
           m_startAng == other.m_startAng && m_endAng == other.m_endAng;
}
