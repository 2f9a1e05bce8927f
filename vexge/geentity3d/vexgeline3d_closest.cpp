#include "vexge/geentity3d/vexgeline3d.h"
#include "vexge/geentity3d/vexgeplane.h"

#include <cmath>

bool CVexGeLine3d::closestPoint(const CVexGePoint3d& point, CVexGePoint3d& out, double tol) const
{
    const CVexGeVector3d along = direction();
    const double way = (point - m_start).dotProduct(along);
    if (!(way >= -tol && way <= length() + tol)) {
        return false;
    }
    out = m_start + along * way;
    return true;
}

CVexGePoint3d CVexGeLine3d::closestPointTo(const CVexGePoint3d& point, double tol) const
{
    CVexGePoint3d foot;
    if (closestPoint(point, foot, tol)) {
        return foot;
    }
    return (point - m_start).dotProduct(direction()) > 0.0 ? m_end : m_start;
}

double CVexGeLine3d::distanceTo(const CVexGePoint3d& point, double tol) const
{
    return point.distanceTo(closestPointTo(point, tol));
}

double CVexGeLine3d::distanceTo(const CVexGeLine3d& line, double tol) const
{
    CVexGePoint3d onLine;
    const CVexGePoint3d here = closestPointTo(line, onLine, tol);
    return here.distanceTo(onLine);
}

bool CVexGeLine3d::closestCrossing(const CVexGeLine3d& line, CVexGePoint3d& here,
                                   CVexGePoint3d& there) const
{
    // The shortest way between two lines, after P. Bourke, with the plane's absolute threshold.
    const CVexGeVector3d p13 = m_start - line.m_start;
    const CVexGeVector3d p43 = line.m_end - line.m_start;
    const CVexGeVector3d p21 = m_end - m_start;
    const double d4321 = p43.dotProduct(p21);
    const double d4343 = p43.lengthSqrd();
    const double denominator = p21.lengthSqrd() * d4343 - d4321 * d4321;
    if (!(std::fabs(denominator) > kGeParallelDenominator)) {
        return false;
    }
    const double param = (p13.dotProduct(p43) * d4321 - p13.dotProduct(p21) * d4343) / denominator;
    const double otherParam = (p13.dotProduct(p43) + d4321 * param) / d4343;
    if (param < 0.0 || param > 1.0 || otherParam < 0.0 || otherParam > 1.0) {
        return false;
    }
    here = pointAtParam(param);
    there = line.pointAtParam(otherParam);
    return true;
}

CVexGePoint3d CVexGeLine3d::closestPointTo(const CVexGeLine3d& line, CVexGePoint3d& onLine,
                                           double tol) const
{
    CVexGePoint3d here;
    if (closestCrossing(line, here, onLine)) {
        return here;
    }
    // Otherwise one of the two points is an end.
    here = closestPointTo(line.m_start, tol);
    onLine = line.m_start;
    const auto offer = [&](const CVexGePoint3d& atHere, const CVexGePoint3d& atLine) {
        if (atHere.distanceTo(atLine) < here.distanceTo(onLine)) {
            here = atHere;
            onLine = atLine;
        }
    };
    offer(closestPointTo(line.m_end, tol), line.m_end);
    offer(m_start, line.closestPointTo(m_start, tol));
    offer(m_end, line.closestPointTo(m_end, tol));
    return here;
}

bool CVexGeLine3d::perpVecFromPoint(const CVexGePoint3d& point, CVexGeVector3d& out,
                                    double /*tol*/) const
{
    const CVexGeVector3d run = m_end - m_start;
    if (run.lengthSqrd() == 0.0) {
        return false;
    }
    const CVexGeVector3d arm = point - m_start;
    out = arm - run * (arm.dotProduct(run) / run.lengthSqrd());
    return true;
}

bool CVexGeLine3d::intersectWith(const CVexGePlane& plane, CVexGePoint3d& point, Intersect kind,
                                 double tol) const
{
    if (!plane.intersectWith(*this, point, tol)) {
        return false;
    }
    return kind == kExtendThis || isOn(point, kGeTol);
}

void CVexGeLine3d::getPerpLine(const CVexGePoint3d& point, CVexGeLine3d& out) const
{
    const CVexGeVector3d run = m_end - m_start;
    CVexGeVector3d across;
    perpVecFromPoint(point, across, kGeEpsilon);
    if (across.isZeroLength(kGeEpsilon)) {
        const bool upright = std::fabs(run.x) < std::fabs(run.z);
        across = run.crossProduct(upright ? CVexGeVector3d::kXAxis : CVexGeVector3d::kZAxis);
    }
    const CVexGeVector3d reach = across.normal(0.0) * (run.length() * kGePerpHalfLength);
    out.set(point - reach, point + reach);
}

void CVexGeLine3d::getPerpPlane(const CVexGePoint3d& point, CVexGePlane& out) const
{
    out.set(point, direction());
}
