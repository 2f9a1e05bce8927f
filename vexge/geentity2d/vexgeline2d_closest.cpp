#include "vexge/geentity2d/vexgeline2d.h"

double CVexGeLine2d::footParam(const CVexGePoint2d& point) const
{
    const CVexGeVector2d run = m_end - m_start;
    return (point - m_start).dotProduct(run) / run.lengthSqrd();
}

bool CVexGeLine2d::closestPoint(const CVexGePoint2d& point, CVexGePoint2d& out) const
{
    const double param = footParam(point);
    if (!(param >= 0.0 && param <= 1.0)) {
        return false;
    }
    out = CVexGeLine2d::pointAtParam(param);
    return true;
}

CVexGePoint2d CVexGeLine2d::closestPointTo(const CVexGePoint2d& point, double /*tol*/) const
{
    CVexGePoint2d foot;
    if (CVexGeLine2d::closestPoint(point, foot)) {
        return foot;
    }
    return point.distanceTo(m_end) < point.distanceTo(m_start) ? m_end : m_start;
}

double CVexGeLine2d::distanceTo(const CVexGePoint2d& point, double tol) const
{
    return point.distanceTo(closestPointTo(point, tol));
}

double CVexGeLine2d::distanceTo(const CVexGeLine2d& line, double tol) const
{
    CVexGePoint2d onLine;
    const CVexGePoint2d here = closestPointTo(line, onLine, tol);
    return here.distanceTo(onLine);
}

namespace {

/// Keeps the nearest of the pairs it is shown; of equal distances the first stays.
struct NearestPair {
    CVexGePoint2d here;
    CVexGePoint2d there;
    double distance = 0.0;
    bool found = false;

    void offer(const CVexGePoint2d& atHere, const CVexGePoint2d& atThere)
    {
        const double gap = atHere.distanceTo(atThere);
        if (!found || gap < distance) {
            *this = {atHere, atThere, gap, true};
        }
    }
};

} // namespace

CVexGePoint2d CVexGeLine2d::closestPointTo(const CVexGeLine2d& line, CVexGePoint2d& onLine,
                                           double /*tol*/) const
{
    CVexGePoint2d foot;
    if (intersectWith(line, foot, kExtendNone, kGeEpsilon)) {
        onLine = foot;
        return foot;
    }
    NearestPair nearest;
    for (const CVexGePoint2d* end : {&line.m_start, &line.m_end}) {
        if (closestPoint(*end, foot)) {
            nearest.offer(foot, *end);
        }
    }
    for (const CVexGePoint2d* end : {&m_start, &m_end}) {
        if (line.closestPoint(*end, foot)) {
            nearest.offer(*end, foot);
        }
    }
    for (const CVexGePoint2d* here : {&m_start, &m_end}) {
        for (const CVexGePoint2d* there : {&line.m_start, &line.m_end}) {
            nearest.offer(*here, *there);
        }
    }
    onLine = nearest.there;
    return nearest.here;
}

bool CVexGeLine2d::perpVecFromPoint(const CVexGePoint2d& point, CVexGeVector2d& out,
                                    double tol) const
{
    const CVexGeLine2d across(point, (m_end - m_start).perpVector());
    CVexGePoint2d foot;
    if (intersectWith(across, foot, kExtendArg, tol) ||
        intersectWith(across, foot, kExtendBoth, tol)) {
        out = point - foot;
        return true;
    }
    return false;
}
