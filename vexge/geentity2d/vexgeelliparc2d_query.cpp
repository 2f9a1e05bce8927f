#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"

#include <algorithm>
#include <cmath>

bool CVexGeEllipArc2d::isInsidePoint(const CVexGePoint2d& point) const
{
    CVexGeEllipArc2d fresh(*this); // the chain may be of other steps, or that before a mirroring
    fresh.setGePolyline(kChainSteps);
    return fresh.m_polyline.isInsidePoint(point);
}

double CVexGeEllipArc2d::length(double fromParam, double toParam, double tol) const
{
    if (std::fabs(fromParam - toParam) < tol || fromParam < 0.0 || fromParam > 1.0) {
        return 0.0;
    }
    return std::fabs(length() * (toParam - fromParam));
}

CVexGePoint2d CVexGeEllipArc2d::pointAtParam(double param) const
{
    return pointAtDist(distAtParam(param));
}

CVexGePoint2d CVexGeEllipArc2d::closestPointTo(const CVexGeCircArc2d& /*arc*/,
                                               CVexGePoint2d& /*onOther*/, double /*tol*/) const
{
    // Not answered: the origin stands for "none", and `onOther` keeps what the caller put there.
    // A caller that needs the pair asks chain(), which does answer for an arc.
    return {};
}

bool CVexGeEllipArc2d::intersectWith(const CVexGeLine2d& line, int& count, CVexGePoint2d& p1,
                                     CVexGePoint2d& p2, Intersect kind, double tol) const
{
    // The count is that of all hits, of which a line along many flat arcs has more than two. Only
    // the first two are given, as for the other curves that a line meets twice at most.
    std::vector<CVexGePoint2d> hits;
    count = 0;
    m_polyline.intersectWith(line, count, hits, kind, tol);
    if (!hits.empty()) {
        p1 = hits[0];
    }
    if (hits.size() > 1) {
        p2 = hits[1];
    }
    return count > 0;
}

bool CVexGeEllipArc2d::intersectWith(const CVexGeEllipArc2d& other, int& count,
                                     std::vector<CVexGePoint2d>& out, Intersect kind,
                                     double tol) const
{
    return m_polyline.intersectWith(other.m_polyline, count, out, kind, tol);
}

bool CVexGeEllipArc2d::tangent(const CVexGePoint2d& point, CVexGeLine2d& out, double tol) const
{
    if (isOn(point, tol) == 0) {
        return false;
    }
    // Neither centre nor axes take part: right for an ellipse about the origin along the axes of
    // the drawing, and only there. A caller brings ellipse and point there first.
    const double u = point.x / (m_majorRadius * m_majorRadius);
    const double v = point.y / (m_minorRadius * m_minorRadius);
    out.set(CVexGePoint2d(1.0 / u, 0.0), CVexGePoint2d(0.0, 1.0 / v));
    return true;
}

bool CVexGeEllipArc2d::offset(CVexGePoint2d& side, double dist)
{
    // The turned point stays with the caller, also on failure: it is the side in the ellipse's own
    // frame, and a caller that offsets again has to begin with a fresh copy of what was picked.
    side.rotateBy(-m_majorAxis.angle(), m_center);
    const CVexGeVector2d way = side - m_center;
    const double ratio = m_minorRadius / m_majorRadius;
    const double reach = std::sqrt(way.y * way.y + way.x * way.x * ratio * ratio);
    const double step = dist == 0.0 ? std::fabs(m_minorRadius - reach) : dist;
    const bool outward = reach > m_minorRadius;
    if (!outward && !(step < m_minorRadius)) {
        return false;
    }
    m_majorRadius += outward ? step : -step;
    m_minorRadius += outward ? step : -step;
    setGePolyline(kChainSteps);
    return true;
}

bool CVexGeEllipArc2d::isInside(const CVexGePoint2d& point, double tol) const
{
    const CVexGeVector2d way = point - m_center;
    CVexGePoint2d inFrame(way.x, way.y);
    inFrame.rotateBy(-m_majorAxis.angle(), CVexGePoint2d::kOrigin);
    const double focus =
        std::sqrt(std::fabs(m_majorRadius * m_majorRadius - m_minorRadius * m_minorRadius));
    const bool upright = m_minorRadius > m_majorRadius; // then the foci lie on the minor axis
    const CVexGePoint2d first(upright ? 0.0 : focus, upright ? focus : 0.0);
    const CVexGePoint2d second(-first.x, -first.y);
    const double sum = inFrame.distanceTo(first) + inFrame.distanceTo(second);
    if (2.0 * std::max(m_majorRadius, m_minorRadius) + tol < sum) {
        return false;
    }
    // The direction counts from the x axis of the drawing while the angles count from the major
    // axis, so the sector of a turned ellipse is off by its turn. A hit test asks isInsidePoint
    // instead.
    const double direction = way.angle();
    return m_startAng - tol < direction && direction < m_endAng + tol;
}
