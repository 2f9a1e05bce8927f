#include "vexge/geentity3d/vexgeplane.h"
#include "vexge/geentity3d/vexgepolyline3d.h"

CVexGePoint3d CVexGePolyline3d::closestPointTo(const CVexGePoint3d& point, double tol) const
{
    int segment = 0;
    return closestPointTo(point, segment, tol);
}

CVexGePoint3d CVexGePolyline3d::closestPointTo(const CVexGePoint3d& point, int& segment,
                                               double tol) const
{
    CVexGePoint3d closest;
    segment = -1;
    CVexGeLine3d line;
    for (unsigned i = 0; i < numSegments(); ++i) {
        if (!getLineSegAt(i, line)) {
            continue;
        }
        const CVexGePoint3d candidate = line.closestPointTo(point, tol);
        if (segment < 0 || candidate.distanceTo(point) < closest.distanceTo(point)) {
            closest = candidate;
            segment = static_cast<int>(i);
        }
    }
    return closest;
}

CVexGePoint3d CVexGePolyline3d::closestPointTo(const CVexGeLine3d& line, CVexGePoint3d& onLine,
                                               double tol) const
{
    CVexGePoint3d closest;
    bool found = false;
    CVexGeLine3d segment;
    for (unsigned i = 0; i < numSegments(); ++i) {
        if (!getLineSegAt(i, segment)) {
            continue;
        }
        CVexGePoint3d there;
        const CVexGePoint3d here = segment.closestPointTo(line, there, tol);
        if (!found || here.distanceTo(there) < closest.distanceTo(onLine)) {
            closest = here;
            onLine = there;
            found = true;
        }
    }
    return closest;
}

double CVexGePolyline3d::distanceTo(const CVexGePoint3d& point, double tol) const
{
    return point.distanceTo(closestPointTo(point, tol));
}

double CVexGePolyline3d::distanceTo(const CVexGeLine3d& line, double tol) const
{
    CVexGePoint3d onLine;
    const CVexGePoint3d here = closestPointTo(line, onLine, tol);
    return here.distanceTo(onLine);
}

bool CVexGePolyline3d::perpVecFromPoint(const CVexGePoint3d& point, CVexGeVector3d& out,
                                        double tol) const
{
    bool found = false;
    bool footFound = false;
    CVexGeLine3d segment;
    for (unsigned i = 0; i < numSegments(); ++i) {
        CVexGeVector3d across;
        if (!getLineSegAt(i, segment) || !segment.perpVecFromPoint(point, across, tol)) {
            continue;
        }
        const bool foot = isOn(point - across, kGeEpsilon);
        const bool shorter = !found || across.length() < out.length();
        if ((foot && !footFound) || (foot == footFound && shorter)) {
            out = across;
            footFound = foot;
        }
        found = true;
    }
    return found;
}

bool CVexGePolyline3d::intersectWith(const CVexGePlane& plane, int& count,
                                     std::vector<CVexGePoint3d>& points, Intersect kind,
                                     double tol) const
{
    CVexGeLine3d segment;
    for (unsigned i = 0; i < numSegments(); ++i) {
        if (!getLineSegAt(i, segment)) {
            continue;
        }
        CVexGePoint3d hit = segment.start(); // what a segment within the plane answers with
        if (segment.intersectWith(plane, hit, kind, tol) &&
            (points.empty() || !points.back().isEqualTo(hit, kGeTol))) {
            points.push_back(hit);
        }
    }
    count = static_cast<int>(points.size());
    return count != 0;
}
