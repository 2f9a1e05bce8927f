#include "vexge/geentity2d/vexgeline2d.h"

#include "platform/base/vexfields.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <cmath>
#include <numbers>

constinit const CVexGeLine2d CVexGeLine2d::kXAxis(CVexGePoint2d(0.0, 0.0), CVexGePoint2d(1.0, 0.0));
constinit const CVexGeLine2d CVexGeLine2d::kYAxis(CVexGePoint2d(0.0, 0.0), CVexGePoint2d(0.0, 1.0));

CVexGeLine2d& CVexGeLine2d::set(const CVexGePoint2d& start, const CVexGePoint2d& end)
{
    m_start = start;
    m_end = end;
    return *this;
}

CVexGeLine2d& CVexGeLine2d::set(const CVexGePoint2d& start, const CVexGeVector2d& along)
{
    return set(start, start + along);
}

void CVexGeLine2d::getPoints(CVexGePoint2d& start, CVexGePoint2d& end) const
{
    start = m_start;
    end = m_end;
}

CVexGePoint2d CVexGeLine2d::midPoint() const
{
    return {(m_start.x + m_end.x) / 2.0, (m_start.y + m_end.y) / 2.0};
}

CVexGeVector2d CVexGeLine2d::direction() const
{
    return (m_end - m_start) / length();
}

void CVexGeLine2d::save(CFile* file) const
{
    // The points' own fields, without their virtual calls: drawings have lines by the million.
    CVexFieldWriter{*file}(m_start.x, m_start.y, m_start.tag, m_end.x, m_end.y, m_end.tag);
}

void CVexGeLine2d::read(CFile* file)
{
    CVexFieldReader{*file}(m_start.x, m_start.y, m_start.tag, m_end.x, m_end.y, m_end.tag);
}

bool CVexGeLine2d::isEqualTo(const CVexGeEntity2d& other, const double& tol) const
{
    return other.isKindOf(VexGe::kGeLine2d) &&
           isEqualTo(static_cast<const CVexGeLine2d&>(other), tol);
}

bool CVexGeLine2d::isEqualTo(const CVexGeLine2d& other, const double& tol) const
{
    return std::fabs(m_start.x - other.m_start.x) <= tol &&
           std::fabs(m_start.y - other.m_start.y) <= tol &&
           std::fabs(m_end.x - other.m_end.x) <= tol && std::fabs(m_end.y - other.m_end.y) <= tol;
}

bool CVexGeLine2d::operator==(const CVexGeLine2d& other) const
{
    return m_start == other.m_start && m_end == other.m_end;
}

bool CVexGeLine2d::operator!=(const CVexGeLine2d& other) const
{
    return m_start != other.m_start || m_end != other.m_end;
}

bool CVexGeLine2d::isParallelTo(const CVexGeLine2d& other, double tol) const
{
    return (m_end - m_start).isParallelTo(other.m_end - other.m_start, tol);
}

bool CVexGeLine2d::isColinearTo(const CVexGeLine2d& other, double tol) const
{
    // True for lines that run in opposite directions, wherever they lie. overlap() pairs the ends
    // of two segments on this promise, so the same direction and the position must stay out of it.
    return (m_end - m_start).isCodirectionalTo(other.m_end - other.m_start, tol);
}

bool CVexGeLine2d::isPerpendicularTo(const CVexGeLine2d& other, double tol) const
{
    return (m_end - m_start).isPerpendicularTo(other.m_end - other.m_start, tol);
}

int CVexGeLine2d::isOn(const CVexGePoint2d& point, const double& tol) const
{
    return distanceTo(point, kGeEpsilon) < tol ? 1 : 0;
}

CVexGeLine2d& CVexGeLine2d::scaleBy(double fx, double fy, const CVexGePoint2d& centre)
{
    const CVexGePoint2d fixed(centre.x, centre.y); // may be one of the ends
    m_start.scaleBy(fx, fy, fixed);
    m_end.scaleBy(fx, fy, fixed);
    return *this;
}

CVexGeLine2d& CVexGeLine2d::scaleBy(double factor, const CVexGePoint2d& centre)
{
    return CVexGeLine2d::scaleBy(factor, factor, centre);
}

CVexGeLine2d& CVexGeLine2d::mirror(const CVexGeLine2d& line)
{
    const CVexGeLine2d axis(line.m_start, line.m_end); // the receiver may be mirrored in itself
    m_start.mirror(axis);
    m_end.mirror(axis);
    return *this;
}

CVexGeLine2d& CVexGeLine2d::rotateBy(double angle, const CVexGePoint2d& centre)
{
    const CVexGePoint2d pivot(centre.x, centre.y); // may be one of the ends
    m_start.rotateBy(angle, pivot);
    m_end.rotateBy(angle, pivot);
    return *this;
}

CVexGeLine2d& CVexGeLine2d::translateBy(const CVexGeVector2d& vector)
{
    m_start.translateBy(vector);
    m_end.translateBy(vector);
    return *this;
}

CVexGeLine2d& CVexGeLine2d::transformBy(const CVexGeMatrix2d& matrix)
{
    m_start.transformBy(matrix);
    m_end.transformBy(matrix);
    return *this;
}

double CVexGeLine2d::length() const
{
    return m_start.distanceTo(m_end);
}

double CVexGeLine2d::length(double fromParam, double toParam, double tol) const
{
    const auto outside = [](double param) { return param < 0.0 || param > 1.0; };
    if (std::fabs(fromParam - toParam) < tol || outside(fromParam) || outside(toParam)) {
        return 0.0;
    }
    return pointAtParam(fromParam).distanceTo(pointAtParam(toParam));
}

double CVexGeLine2d::paramAtDist(double fromParam, double dist, bool forward, double /*tol*/) const
{
    if (forward) {
        const double param = fromParam + dist / length();
        return param > 1.0 ? 1.0 : param;
    }
    const double param = fromParam - dist / length();
    return param < 0.0 ? 0.0 : param;
}

double CVexGeLine2d::paramAtPoint(CVexGePoint2d point, double tol) const
{
    if (isOn(point, tol) == 0) {
        return -1.0;
    }
    return paramAtDist(0.0, m_start.distanceTo(point), true, kGeEpsilon);
}

double CVexGeLine2d::distAtParam(double param) const
{
    return length() * param;
}

double CVexGeLine2d::distAtPoint(CVexGePoint2d point, double /*tol*/) const
{
    return m_start.distanceTo(point);
}

CVexGePoint2d CVexGeLine2d::pointAtDist(double dist) const
{
    return pointAtParam(paramAtDist(0.0, dist, true, kGeEpsilon));
}

CVexGePoint2d CVexGeLine2d::pointAtParam(double param) const
{
    return {m_start.x + (m_end.x - m_start.x) * param, m_start.y + (m_end.y - m_start.y) * param};
}

CVexGeVector2d CVexGeLine2d::normalAtParam(double /*param*/) const
{
    return CVexGeVector2d(std::atan2(m_end.y - m_start.y, m_end.x - m_start.x) -
                          std::numbers::pi / 2.0);
}

CVexGeVector2d CVexGeLine2d::normalAtPoint(CVexGePoint2d /*point*/, double /*tol*/) const
{
    return normalAtParam(0.0);
}

double CVexGeLine2d::curvatureAtParam(double /*param*/) const
{
    return 0.0;
}

double CVexGeLine2d::curvatureAtPoint(CVexGePoint2d /*point*/, double /*tol*/) const
{
    return 0.0;
}

void CVexGeLine2d::getPerpLine(const CVexGePoint2d& point, CVexGeLine2d& out) const
{
    const CVexGeVector2d reach = (m_end - m_start).perpVector() * kGePerpHalfLength;
    out.set(point - reach, point + reach);
}

bool CVexGeLine2d::offset(const CVexGePoint2d& side, double dist)
{
    const double way = dist == 0.0 ? distanceTo(side, kGeEpsilon) : dist;
    CVexGeLine2d across;
    getPerpLine(side, across);
    CVexGePoint2d foot = side; // nothing moves when a line without length has no foot
    intersectWith(across, foot, kExtendBoth, kGeEpsilon);
    translateBy((side - foot).normalize(kGeTol) * way);
    return true;
}
