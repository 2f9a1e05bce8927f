#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <cmath>

bool CVexGeCircArc2d::isWhole() const
{
    const double run = m_endAng - m_startAng;
    return std::fabs(run) <= kGeAngleTol || std::fabs(run - kGeTwoPi) <= kGeAngleTol;
}

int CVexGeCircArc2d::isOn(const CVexGePoint2d& point, const double& tol) const
{
    if (!(std::fabs(m_center.distanceTo(point) - m_radius) <= tol)) {
        return 0;
    }
    const double angle = m_center.angleTo(point);
    const double start = notNegativeAngle(m_startAng);
    const double end = notNegativeAngle(m_endAng);
    // The slack at the ends does not wrap: an arc that starts at angle zero has none before it.
    const bool afterStart = start - kGeAngleTol <= angle;
    const bool beforeEnd = angle <= end + kGeAngleTol;
    return (end <= start ? afterStart || beforeEnd : afterStart && beforeEnd) ? 1 : 0;
}

bool CVexGeCircArc2d::isInside(const CVexGePoint2d& point, double tol) const
{
    const double angle = m_center.angleTo(point);
    return m_startAng - tol <= angle && angle <= m_endAng + tol &&
           m_center.distanceTo(point) - tol <= m_radius;
}

bool CVexGeCircArc2d::isInsidePoint(const CVexGePoint2d& point) const
{
    CVexGePolyline2d shape;
    asPolyline(shape, 0);
    return shape.isInsidePoint(point);
}

CVexGeCircArc2d& CVexGeCircArc2d::scaleBy(double fx, double fy, const CVexGePoint2d& centre)
{
    m_center.scaleBy(fx, fy, centre);
    m_radius *= fx;
    return *this;
}

CVexGeCircArc2d& CVexGeCircArc2d::scaleBy(double factor, const CVexGePoint2d& centre)
{
    m_center.scaleBy(factor, centre);
    m_radius *= factor;
    return *this;
}

CVexGeCircArc2d& CVexGeCircArc2d::mirror(const CVexGeLine2d& line)
{
    const double run = std::fabs(m_endAng - m_startAng);
    transformBy(CVexGeMatrix2d::mirroring(line));
    // The exchange keeps the arc counter-clockwise. An arc whose angles transformBy left alone has
    // none to exchange: a mirrored circle stays whole.
    if (run > kGeAngleTol && std::fabs(run - kGeTwoPi) > kGeAngleTol) {
        setAngles(m_endAng, m_startAng);
    }
    return *this;
}

CVexGeCircArc2d& CVexGeCircArc2d::rotateBy(double angle, const CVexGePoint2d& centre)
{
    m_center.rotateBy(angle, centre);
    if (isWhole()) {
        return *this;
    }
    const auto turned = [angle](double from) {
        const double sum = from + angle;
        if (!(std::fabs(sum) > kGeTwoPi)) {
            return sum;
        }
        const double rest = std::fmod(sum, kGeTwoPi);
        return rest == 0.0 ? std::copysign(kGeTwoPi, sum) : rest; // whole turns keep one
    };
    setAngles(turned(m_startAng), turned(m_endAng));
    return *this;
}

CVexGeCircArc2d& CVexGeCircArc2d::translateBy(const CVexGeVector2d& vector)
{
    m_center.translateBy(vector);
    return *this;
}

CVexGeCircArc2d& CVexGeCircArc2d::transformBy(const CVexGeMatrix2d& matrix)
{
    CVexGePoint2d start = startPoint();
    CVexGePoint2d end = endPoint();
    m_center.transformBy(matrix);
    const double run = std::fabs(m_endAng - m_startAng);
    if (run > kGeAngleTol && std::fabs(run - kGeTwoPi) > kGeAngleTol) {
        setAngles(m_center.angleTo(start.transformBy(matrix)),
                  m_center.angleTo(end.transformBy(matrix)));
    }
    // The radius stays whatever the matrix scales by. Callers that scale use scaleBy, and a matrix
    // that moves, turns or mirrors must not creep by a rounding error at each use.
    return *this;
}

double CVexGeCircArc2d::length() const
{
    if (std::fabs(m_endAng - m_startAng) < kGeAngleTol) {
        return kGeTwoPi * m_radius;
    }
    return m_radius * sweep();
}

double CVexGeCircArc2d::length(double fromParam, double toParam, double tol) const
{
    if (std::fabs(fromParam - toParam) < tol || fromParam < 0.0 || fromParam > 1.0) {
        return 0.0;
    }
    return length() * std::fabs(fromParam - toParam);
}

double CVexGeCircArc2d::paramAtDist(double fromParam, double dist, bool forward, double tol) const
{
    const bool full = std::fabs(std::fabs(sweep()) - kGeTwoPi) < tol;
    const double step = dist / length();
    if (forward) {
        const double param = fromParam + step;
        return param > 1.0 ? (full ? param - 1.0 : 1.0) : param;
    }
    const double param = fromParam - step;
    return param < 0.0 ? (full ? param + 1.0 : 0.0) : param;
}

double CVexGeCircArc2d::paramAtPoint(CVexGePoint2d point, double tol) const
{
    if (isOn(point, tol) == 0) {
        return -1.0;
    }
    double start = notNegativeAngle(m_startAng);
    double angle = m_center.angleTo(point);
    if (std::fabs(start - angle) <= kGeAngleTol) {
        angle = start;
    } else if (angle < start) {
        start -= kGeTwoPi;
    }
    return paramAtDist(0.0, m_radius * notNegativeAngle(angle - start), true, kGeEpsilon);
}

double CVexGeCircArc2d::distAtParam(double param) const
{
    return length() * param;
}

double CVexGeCircArc2d::distAtPoint(CVexGePoint2d point, double tol) const
{
    return length() * paramAtPoint(point, tol);
}

CVexGePoint2d CVexGeCircArc2d::pointAtDist(double dist) const
{
    return pointAtParam(paramAtDist(0.0, dist, true, kGeEpsilon));
}

CVexGePoint2d CVexGeCircArc2d::pointAtParam(double param) const
{
    return pointAtAngle(m_startAng + param * sweep());
}

CVexGeVector2d CVexGeCircArc2d::normalAtParam(double param) const
{
    return normalAtPoint(pointAtParam(param), kGeEpsilon);
}

CVexGeVector2d CVexGeCircArc2d::normalAtPoint(CVexGePoint2d point, double /*tol*/) const
{
    return (point - m_center).normal(kGeTol);
}

double CVexGeCircArc2d::curvatureAtParam(double /*param*/) const
{
    // The radius and not its reciprocal. A chain of segments answers in the same way for its arcs
    // and with 0 for straight ones, so callers read this as "the radius, or none".
    return m_radius;
}

double CVexGeCircArc2d::curvatureAtPoint(CVexGePoint2d /*point*/, double /*tol*/) const
{
    return m_radius;
}

bool CVexGeCircArc2d::tangent(const CVexGePoint2d& point, CVexGeLine2d& out, double tol) const
{
    const double distance = m_center.distanceTo(point);
    const double angle = m_center.angleTo(point);
    const double reach = std::sqrt(distance * distance - m_radius * m_radius);
    const double turn = std::atan(reach / m_radius);
    const CVexGePoint2d left = pointAtAngle(angle + turn);
    const CVexGePoint2d right = pointAtAngle(angle - turn);
    const CVexGePoint2d touch = point.distanceTo(right) < point.distanceTo(left) ? right : left;
    out.set(point, touch);
    return isOn(touch, tol) != 0;
}

bool CVexGeCircArc2d::offset(const CVexGePoint2d& side, double dist)
{
    const double way = dist == 0.0 ? distanceTo(side, kGeEpsilon) : dist;
    // A distance of the radius or more is refused also where the arc would grow. Offsets of chains
    // rely on it: they pass over such an arc and bridge it with the next corner.
    if (!(way < m_radius)) {
        return false;
    }
    m_radius += m_center.distanceTo(side) > m_radius ? way : -way;
    return true;
}
