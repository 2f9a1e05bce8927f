#include "vexge/geentity3d/vexgeplane.h"
#include "vexge/geentity3d/vexgepolyline3d.h"

#include <algorithm>
#include <cmath>

namespace {

/// How near the point at a parameter must lie to a segment to be found on it.
constexpr double kSegmentSearchTol = 0.01;

} // namespace

struct CVexGePolyline3d::Place {
    unsigned segment = 0;
    double param = 0.0;
    bool found = false;
};

unsigned CVexGePolyline3d::numSegments() const
{
    return m_closedFlag || m_vertices.empty() ? numVerts() : numVerts() - 1;
}

bool CVexGePolyline3d::getLineSegAt(unsigned index, CVexGeLine3d& out) const
{
    if (index >= numSegments()) {
        return false;
    }
    const CVexGeLine3d segment(m_vertices[index], m_vertices[(index + 1) % numVerts()]);
    if (segment.length() < kGeTol) {
        return false;
    }
    out = segment;
    return true;
}

bool CVexGePolyline3d::onSegAt(unsigned index, const CVexGePoint3d& point, double& param,
                               double tol) const
{
    CVexGeLine3d segment;
    if (!getLineSegAt(index, segment) || !segment.isOn(point, tol)) {
        return false;
    }
    param = segment.start().distanceTo(point) / segment.length();
    return true;
}

bool CVexGePolyline3d::isOn(const CVexGePoint3d& point, double tol) const
{
    return isOnSegAt(point, tol) >= 0;
}

int CVexGePolyline3d::isOnSegAt(const CVexGePoint3d& point, double tol) const
{
    double param = 0.0;
    for (unsigned i = 0; i < numSegments(); ++i) {
        if (onSegAt(i, point, param, tol)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

double CVexGePolyline3d::length() const
{
    double sum = 0.0;
    CVexGeLine3d segment;
    for (unsigned i = 0; i < numSegments(); ++i) {
        sum += getLineSegAt(i, segment) ? segment.length() : 0.0;
    }
    return sum;
}

double CVexGePolyline3d::length(double fromParam, double toParam, double tol) const
{
    if (std::fabs(fromParam - toParam) < tol || toParam < fromParam || fromParam < 0.0 ||
        fromParam > 1.0) {
        return 0.0;
    }
    return std::fabs(length() * (toParam - fromParam));
}

double CVexGePolyline3d::paramAtDist(double fromParam, double dist, bool forward,
                                     double /*tol*/) const
{
    const double share = dist / length();
    return std::clamp(forward ? fromParam + share : fromParam - share, 0.0, 1.0);
}

double CVexGePolyline3d::paramAtPoint(const CVexGePoint3d& point, double tol) const
{
    double run = 0.0;
    CVexGeLine3d segment;
    for (unsigned i = 0; i < numSegments(); ++i) {
        if (!getLineSegAt(i, segment)) {
            continue;
        }
        if (segment.isOn(point, tol)) {
            return paramAtDist(0.0, run + segment.start().distanceTo(point), true);
        }
        run += segment.length();
    }
    return -1.0;
}

double CVexGePolyline3d::distAtParam(double param) const
{
    return length() * param;
}

double CVexGePolyline3d::distAtPoint(const CVexGePoint3d& point, double tol) const
{
    return length() * paramAtPoint(point, tol);
}

CVexGePoint3d CVexGePolyline3d::pointAtDist(double dist) const
{
    return pointAtParam(paramAtDist(0.0, dist, true));
}

CVexGePolyline3d::Place CVexGePolyline3d::placeAt(double param) const
{
    const double whole = length();
    double passed = 0.0;
    CVexGeLine3d segment;
    for (unsigned i = 0; i < numSegments(); ++i) {
        if (!getLineSegAt(i, segment)) {
            continue;
        }
        const double share = segment.length() / whole;
        if (passed + share >= param) {
            return {i, (param - passed) / share, true};
        }
        passed += share;
    }
    return {};
}

CVexGePoint3d CVexGePolyline3d::pointAtParam(double param, double tol) const
{
    if (std::fabs(param - 1.0) < tol && numSegments() > 0) {
        return m_vertices[numSegments() % numVerts()];
    }
    const Place place = placeAt(param);
    CVexGeLine3d segment;
    if (!place.found || !getLineSegAt(place.segment, segment)) {
        return CVexGePoint3d::kOrigin;
    }
    return segment.pointAtParam(place.param);
}

CVexGeVector3d CVexGePolyline3d::normalAtSegment(unsigned index, const CVexGePlane& plane) const
{
    CVexGeLine3d segment;
    return getLineSegAt(index, segment) ? segment.normalAtPlane(plane) : CVexGeVector3d::kIdentity;
}

CVexGeVector3d CVexGePolyline3d::normalAtParam(double param, const CVexGePlane& plane) const
{
    const Place place = placeAt(param >= 1.0 ? kGeNormalEndParam : param);
    return place.found ? normalAtSegment(place.segment, plane) : CVexGeVector3d::kIdentity;
}

CVexGeVector3d CVexGePolyline3d::normalAtPoint(const CVexGePoint3d& point, const CVexGePlane& plane,
                                               double tol) const
{
    return normalAtParam(paramAtPoint(point, tol), plane);
}

double CVexGePolyline3d::paramAtSegParam(int segment, double param) const
{
    CVexGeLine3d line;
    if (segment < 0 || !getLineSegAt(static_cast<unsigned>(segment), line)) {
        return -1.0;
    }
    return paramAtPoint(line.pointAtParam(param), kGeEpsilon);
}

double CVexGePolyline3d::segParamAtParam(double param, int& segment) const
{
    const CVexGePoint3d point = pointAtParam(param);
    double segmentParam = -1.0;
    unsigned i = 0;
    while (i < numSegments() && !onSegAt(i, point, segmentParam, kSegmentSearchTol)) {
        ++i;
    }
    segment = static_cast<int>(i);
    return segmentParam;
}
