#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"

CVexGePoint2d CVexGeCircArc2d::closestPointTo(const CVexGePoint2d& point, double tol) const
{
    const CVexGePoint2d towards = pointAtAngle(m_center.angleTo(point));
    if (isOn(towards, tol) != 0) {
        return towards;
    }
    const CVexGePoint2d start = startPoint();
    const CVexGePoint2d end = endPoint();
    return point.distanceTo(end) < point.distanceTo(start) ? end : start;
}

CVexGePoint2d CVexGeCircArc2d::closestPointTo(const CVexGeLine2d& line, CVexGePoint2d& onLine,
                                              double tol) const
{
    // A line that crosses the arc is not treated apart: the answer lies on the way from the centre
    // to the line. The line's own operation for arcs finds the crossing.
    onLine = line.closestPointTo(m_center, tol);
    const CVexGePoint2d towards = pointAtAngle(m_center.angleTo(onLine));
    if (isOn(towards, tol) != 0) {
        return towards;
    }
    const CVexGePoint2d start = startPoint();
    const CVexGePoint2d end = endPoint();
    const CVexGePoint2d besideStart = line.closestPointTo(start, tol);
    const CVexGePoint2d besideEnd = line.closestPointTo(end, tol);
    const bool atEnd = end.distanceTo(besideEnd) < start.distanceTo(besideStart);
    onLine = atEnd ? besideEnd : besideStart;
    return atEnd ? end : start;
}

CVexGePoint2d CVexGeCircArc2d::closestPointTo(const CVexGeCircArc2d& arc, CVexGePoint2d& onOther,
                                              double tol) const
{
    const double angle = m_center.angleTo(arc.m_center);
    const CVexGePoint2d here = pointAtAngle(angle);
    onOther = arc.pointAtAngle(angle + std::numbers::pi);
    if (isOn(here, tol) != 0 && arc.isOn(onOther, tol) != 0) {
        return here;
    }
    const CVexGePoint2d start = arc.startPoint();
    const CVexGePoint2d end = arc.endPoint();
    const CVexGePoint2d besideStart = closestPointTo(start, tol);
    const CVexGePoint2d besideEnd = closestPointTo(end, tol);
    const bool atEnd = end.distanceTo(besideEnd) < start.distanceTo(besideStart);
    onOther = atEnd ? end : start;
    return atEnd ? besideEnd : besideStart;
}

double CVexGeCircArc2d::distanceTo(const CVexGePoint2d& point, double tol) const
{
    return point.distanceTo(closestPointTo(point, tol));
}

double CVexGeCircArc2d::distanceTo(const CVexGeLine2d& line, double tol) const
{
    CVexGePoint2d onLine;
    const CVexGePoint2d here = closestPointTo(line, onLine, tol);
    return here.distanceTo(onLine);
}

double CVexGeCircArc2d::distanceTo(const CVexGeCircArc2d& arc, double tol) const
{
    CVexGePoint2d onOther;
    const CVexGePoint2d here = closestPointTo(arc, onOther, tol);
    return here.distanceTo(onOther);
}

bool CVexGeCircArc2d::perpVecFromPoint(const CVexGePoint2d& point, CVexGeVector2d& out,
                                       double tol) const
{
    int count = 0;
    CVexGePoint2d foot;
    CVexGePoint2d second;
    const auto hits = [&](const CVexGeLine2d& along, Intersect kind) {
        count = 0;
        intersectWith(along, count, foot, second, kind, tol);
        return count;
    };
    const auto found = [&] {
        out = point - foot;
        return true;
    };
    if (point.distanceTo(m_center) <= m_radius) {
        // Two radii times the way from the centre: short for a point near the centre of a small
        // arc, and then no foot is found. Perpendicular snaps count on feet in sight only.
        const CVexGeVector2d reach = (point - m_center) * (2.0 * m_radius);
        const CVexGeLine2d outward(point, reach);
        if (hits(outward, kExtendNone) == 1 ||
            hits(CVexGeLine2d(point, -reach), kExtendNone) == 1 ||
            hits(outward, kExtendThis) == 1) {
            return found();
        }
        return false;
    }
    const CVexGeLine2d inward(point, m_center);
    const int bounded = hits(inward, kExtendNone);
    return (bounded == 1 || (bounded == 0 && hits(inward, kExtendThis) == 1)) && found();
}
