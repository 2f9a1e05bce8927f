#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/geentity2d/vexgepolyline2d_walk.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

using Walk = CVexGePolylineWalk;

/// Parameters this near the end stand for it.
constexpr double kEndParam = 0.001;
/// How near a segment counts as holding the point of a parameter.
constexpr double kSegParamTol = 0.01;

/// Calls `visit(index, segment, along)` for the segment that holds parameter `param`, `along` being
/// its share of travel there, and returns the answer; false when no segment does. `holds` compares
/// the share of the whole length up to a segment's end with the parameter.
template <class Holds, class Visit>
bool atParam(const CVexGePolyline2d& chain, double param, const Holds& holds, const Visit& visit)
{
    const double total = chain.length();
    double passed = 0.0;
    return Walk::each(chain, [&](unsigned index, const auto& segment) {
        const double share = segment.length() / total;
        if (!holds(passed + share, param)) {
            passed += share;
            return false;
        }
        visit(index, segment, (param - passed) / share);
        return true;
    });
}

constexpr auto kUpTo = [](double end, double param) { return end >= param; };
constexpr auto kBefore = [](double end, double param) { return end > param; };

CVexGeVector2d normalOf(const CVexGeLine2d& line, double /*bulge*/, double /*along*/)
{
    return line.normalAtParam(0.5);
}

CVexGeVector2d normalOf(const CVexGeCircArc2d& arc, double bulge, double along)
{
    const CVexGeVector2d outward = arc.normalAtParam(Walk::param(arc, bulge, along));
    return bulge < 0.0 ? CVexGeVector2d(outward).rotateBy(std::numbers::pi) : outward;
}

} // namespace

double CVexGePolyline2d::length() const
{
    double sum = 0.0;
    Walk::each(*this, [&](unsigned, const auto& segment) {
        sum += segment.length();
        return false;
    });
    return sum;
}

double CVexGePolyline2d::length(double fromParam, double toParam, double tol) const
{
    if (std::fabs(fromParam - toParam) < tol || toParam < fromParam || fromParam < 0.0 ||
        fromParam > 1.0) {
        return 0.0;
    }
    return std::fabs(length() * (toParam - fromParam));
}

double CVexGePolyline2d::paramAtDist(double fromParam, double dist, bool forward,
                                     double /*tol*/) const
{
    const double step = dist / length();
    return std::clamp(forward ? fromParam + step : fromParam - step, 0.0, 1.0);
}

double CVexGePolyline2d::paramAtPoint(CVexGePoint2d point, double tol) const
{
    double run = 0.0;
    const bool found = Walk::each(*this, [&](unsigned index, const auto& segment) {
        if (segment.isOn(point, tol) == 0) {
            run += segment.length();
            return false;
        }
        run += distOn(segment, m_bulges[index], point, tol);
        return true;
    });
    return found ? paramAtDist(0.0, run, true, kGeEpsilon) : -1.0;
}

double CVexGePolyline2d::distOn(const CVexGeLine2d& line, double /*bulge*/,
                                const CVexGePoint2d& point, double /*tol*/)
{
    return line.startPoint().distanceTo(point);
}

double CVexGePolyline2d::distOn(const CVexGeCircArc2d& arc, double bulge,
                                const CVexGePoint2d& point, double tol)
{
    return arc.length() * Walk::param(arc, bulge, arc.paramAtPoint(point, tol));
}

double CVexGePolyline2d::distAtParam(double param) const
{
    return length() * param;
}

double CVexGePolyline2d::distAtPoint(CVexGePoint2d point, double tol) const
{
    return length() * paramAtPoint(point, tol);
}

CVexGePoint2d CVexGePolyline2d::pointAtDist(double dist) const
{
    return pointAtParam(paramAtDist(0.0, dist, true, kGeEpsilon));
}

CVexGePoint2d CVexGePolyline2d::pointAtParam(double param) const
{
    if (m_vertices.empty()) {
        return CVexGePoint2d::kOrigin;
    }
    if (std::fabs(param - 1.0) < kEndParam) {
        return m_closedFlag ? m_vertices.front() : m_vertices.back();
    }
    CVexGePoint2d point = CVexGePoint2d::kOrigin;
    atParam(*this, param, kUpTo, [&](unsigned index, const auto& segment, double along) {
        point = segment.pointAtParam(Walk::param(segment, m_bulges[index], along));
    });
    return point;
}

CVexGeVector2d CVexGePolyline2d::normalAtParam(double param) const
{
    CVexGeVector2d normal = CVexGeVector2d::kIdentity;
    const double within = param >= 1.0 ? kGeNormalEndParam : param;
    atParam(*this, within, kUpTo, [&](unsigned index, const auto& segment, double along) {
        normal = normalOf(segment, m_bulges[index], along);
    });
    return normal;
}

CVexGeVector2d CVexGePolyline2d::normalAtPoint(CVexGePoint2d point, double tol) const
{
    return normalAtParam(paramAtPoint(point, tol));
}

double CVexGePolyline2d::curvatureAtParam(double param) const
{
    double curvature = 0.0;
    atParam(*this, param, kBefore, [&](unsigned, const auto& segment, double along) {
        curvature = segment.curvatureAtParam(along);
    });
    return curvature;
}

double CVexGePolyline2d::curvatureAtPoint(CVexGePoint2d point, double tol) const
{
    const double param = paramAtPoint(point, tol);
    return param < 0.0 ? 0.0 : curvatureAtParam(param);
}

double CVexGePolyline2d::paramAtSegParam(int segment, double param) const
{
    double result = -1.0;
    if (segment >= 0 && segment < static_cast<int>(numVerts())) {
        Walk::at(*this, static_cast<unsigned>(segment), [&](const auto& own) {
            result = paramAtPoint(own.pointAtParam(param), kGeEpsilon);
            return true;
        });
    }
    return result;
}

double CVexGePolyline2d::segParamAtParam(double param, int& segment) const
{
    const int count = static_cast<int>(numVerts()) - (m_closedFlag ? 0 : 1);
    const CVexGePoint2d point = pointAtParam(param);
    double along = -1.0;
    for (segment = 0; segment < count; ++segment) {
        if (onSegAt(static_cast<unsigned>(segment), point, along, kSegParamTol)) {
            return along;
        }
    }
    return -1.0;
}
