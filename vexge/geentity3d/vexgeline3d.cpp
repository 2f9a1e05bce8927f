#include "vexge/geentity3d/vexgeline3d.h"

#include "platform/base/vexfields.h"
#include "vexge/geentity3d/vexgeplane.h"

#include <cmath>

constinit const CVexGeLine3d CVexGeLine3d::kXAxis(CVexGePoint3d(0.0, 0.0, 0.0),
                                                  CVexGePoint3d(1.0, 0.0, 0.0));
constinit const CVexGeLine3d CVexGeLine3d::kYAxis(CVexGePoint3d(0.0, 0.0, 0.0),
                                                  CVexGePoint3d(0.0, 1.0, 0.0));
constinit const CVexGeLine3d CVexGeLine3d::kZAxis(CVexGePoint3d(0.0, 0.0, 0.0),
                                                  CVexGePoint3d(0.0, 0.0, 1.0));

CVexGeLine3d& CVexGeLine3d::set(const CVexGePoint3d& start, const CVexGePoint3d& end)
{
    m_start = start;
    m_end = end;
    return *this;
}

CVexGeLine3d& CVexGeLine3d::set(const CVexGePoint3d& start, const CVexGeVector3d& along)
{
    return set(start, start + along);
}

void CVexGeLine3d::getPoints(CVexGePoint3d& start, CVexGePoint3d& end) const
{
    start = m_start;
    end = m_end;
}

CVexGePoint3d CVexGeLine3d::midPoint() const
{
    return {(m_start.x + m_end.x) / 2.0, (m_start.y + m_end.y) / 2.0, (m_start.z + m_end.z) / 2.0};
}

CVexGeVector3d CVexGeLine3d::direction() const
{
    return (m_end - m_start).normal(kGeTol);
}

void CVexGeLine3d::save(CFile* file) const
{
    CVexFieldWriter{*file}(m_start, m_end);
}

void CVexGeLine3d::read(CFile* file)
{
    CVexFieldReader{*file}(m_start, m_end);
}

bool CVexGeLine3d::isEqualTo(const CVexGeEntity3d& other, double tol) const
{
    return other.isKindOf(VexGe::kGeLine3d) &&
           isEqualTo(static_cast<const CVexGeLine3d&>(other), tol);
}

bool CVexGeLine3d::isEqualTo(const CVexGeLine3d& other, double tol) const
{
    const auto near = [tol](const CVexGePoint3d& a, const CVexGePoint3d& b) {
        return std::fabs(a.x - b.x) <= tol && std::fabs(a.y - b.y) <= tol &&
               std::fabs(a.z - b.z) <= tol;
    };
    return near(m_start, other.m_start) && near(m_end, other.m_end);
}

bool CVexGeLine3d::operator==(const CVexGeLine3d& other) const
{
    return m_start == other.m_start && m_end == other.m_end;
}

bool CVexGeLine3d::operator!=(const CVexGeLine3d& other) const
{
    return m_start != other.m_start || m_end != other.m_end;
}

bool CVexGeLine3d::isParallelTo(const CVexGeLine3d& other, double tol) const
{
    return (m_end - m_start).isParallelTo(other.m_end - other.m_start, tol);
}

bool CVexGeLine3d::isColinearTo(const CVexGeLine3d& other, double tol) const
{
    return (m_end - m_start).isCodirectionalTo(other.m_end - other.m_start, tol);
}

bool CVexGeLine3d::isPerpendicularTo(const CVexGeLine3d& other, double tol) const
{
    return (m_end - m_start).isPerpendicularTo(other.m_end - other.m_start, tol);
}

CVexGeLine3d& CVexGeLine3d::translateBy(const CVexGeVector3d& vector)
{
    m_start.translateBy(vector);
    m_end.translateBy(vector);
    return *this;
}

CVexGeLine3d& CVexGeLine3d::scaleBy(double factor, const CVexGePoint3d& centre)
{
    return scaleBy(factor, factor, factor, centre);
}

CVexGeLine3d& CVexGeLine3d::scaleBy(double fx, double fy, double fz, const CVexGePoint3d& centre)
{
    const CVexGePoint3d fixed(centre.x, centre.y, centre.z); // may be one of the ends
    m_start.scaleBy(fx, fy, fz, fixed);
    m_end.scaleBy(fx, fy, fz, fixed);
    return *this;
}

CVexGeLine3d& CVexGeLine3d::rotateBy(double angle, const CVexGeLine3d& axis)
{
    const CVexGePoint3d centre = axis.m_start;
    const CVexGeVector3d along = axis.m_end - axis.m_start;
    m_start.rotateBy(angle, along, centre);
    m_end.rotateBy(angle, along, centre);
    return *this;
}

CVexGeLine3d& CVexGeLine3d::mirror(const CVexGePlane& plane)
{
    m_start.mirror(plane);
    m_end.mirror(plane);
    return *this;
}

bool CVexGeLine3d::isOn(const CVexGePoint3d& point, double tol) const
{
    return distanceTo(point, kGeEpsilon) < tol;
}

double CVexGeLine3d::length() const
{
    return m_start.distanceTo(m_end);
}

double CVexGeLine3d::length(double fromParam, double toParam, double tol) const
{
    const auto outside = [](double param) { return param < 0.0 || param > 1.0; };
    if (std::fabs(fromParam - toParam) < tol || outside(fromParam) || outside(toParam)) {
        return 0.0;
    }
    return pointAtParam(fromParam).distanceTo(pointAtParam(toParam));
}

double CVexGeLine3d::paramAtDist(double fromParam, double dist, bool forward, double /*tol*/) const
{
    if (forward) {
        const double param = fromParam + dist / length();
        return param > 1.0 ? 1.0 : param;
    }
    const double param = fromParam - dist / length();
    return param < 0.0 ? 0.0 : param;
}

double CVexGeLine3d::paramAtPoint(const CVexGePoint3d& point, double tol) const
{
    return isOn(point, tol) ? paramAtDist(0.0, m_start.distanceTo(point), true) : -1.0;
}

double CVexGeLine3d::distAtParam(double param) const
{
    return length() * param;
}

double CVexGeLine3d::distAtPoint(const CVexGePoint3d& point, double /*tol*/) const
{
    return m_start.distanceTo(point);
}

CVexGePoint3d CVexGeLine3d::pointAtDist(double dist) const
{
    return pointAtParam(paramAtDist(0.0, dist, true));
}

CVexGePoint3d CVexGeLine3d::pointAtParam(double param) const
{
    return m_start + (m_end - m_start) * param;
}

CVexGeVector3d CVexGeLine3d::normalAtPlane(const CVexGePlane& plane) const
{
    return direction().crossProduct(plane.getNorm()).normal(kGeTol);
}
