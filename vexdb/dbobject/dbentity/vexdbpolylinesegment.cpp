#include "vexdb/dbobject/dbentity/vexdbpolylinesegment.h"

#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgepolyline2d_walk.h"

#include <cmath>

VexPolylineSegment::VexPolylineSegment(const CVexGePoint2d& from, const CVexGePoint2d& to,
                                       double bulge)
    : m_from(from), m_to(to), m_bulge(bulge)
{
    const CVexGeVector2d chord = to - from;
    if (!(std::fabs(bulge) > kGeStraightBulge)) {
        m_length = chord.length();
        m_direction = chord / m_length;
        return;
    }
    m_turn = bulge < 0.0 ? -1.0 : 1.0;
    m_center = from + chord * 0.5 + chord.perpVector() * ((1.0 - bulge * bulge) / (4.0 * bulge));
    m_radius = chord.length() * (1.0 + bulge * bulge) / (4.0 * std::fabs(bulge));
    m_length = m_radius * 4.0 * std::atan(std::fabs(bulge));
}

std::optional<VexPolylineSegment> VexPolylineSegment::of(const CVexGePolyline2d& chain,
                                                         unsigned index)
{
    const CVexGePolyline2d::SegType type = chain.segType(index);
    if (type != CVexGePolyline2d::kLine && type != CVexGePolyline2d::kArc) {
        return std::nullopt;
    }
    const std::vector<CVexGePoint2d>& vertices = chain.vertices();
    const unsigned next = index + 1 < chain.numVerts() ? index + 1 : 0;
    const VexPolylineSegment segment(vertices[index], vertices[next], chain.getBulgeAt(index));
    return std::isfinite(segment.length()) ? std::optional(segment) : std::nullopt;
}

double VexPolylineSegment::sweptTo(const CVexGePoint2d& point) const
{
    const CVexGeVector2d start = m_from - m_center;
    const CVexGeVector2d here = point - m_center;
    const double across = start.x * here.y - start.y * here.x;
    return notNegativeAngle(std::atan2(m_turn * across, start.dotProduct(here)));
}

double VexPolylineSegment::along(const CVexGePoint2d& point) const
{
    if (!isArc()) {
        return (point - m_from).dotProduct(m_direction);
    }
    const double there = m_radius * sweptTo(point);
    const double circle = m_radius * kGeTwoPi;
    const bool isBefore = there > m_length && circle - there < there - m_length;
    return isBefore ? there - circle : there;
}

double VexPolylineSegment::beyond(const CVexGePoint2d& point, bool start) const
{
    if (!isArc()) {
        return start ? -along(point) : along(point) - m_length;
    }
    const double there = m_radius * sweptTo(point);
    if (!(there > m_length)) {
        return 0.0;
    }
    return start ? m_radius * kGeTwoPi - there : there - m_length;
}

CVexGeVector2d VexPolylineSegment::spokeAt(double along) const
{
    return (m_from - m_center).rotateBy(m_turn * along / m_radius);
}

CVexGePoint2d VexPolylineSegment::pointAt(double along) const
{
    if (!isArc()) {
        return m_from + m_direction * along;
    }
    return m_center + spokeAt(along);
}

CVexGeVector2d VexPolylineSegment::directionAt(double along) const
{
    return isArc() ? spokeAt(along).perpVector() * (m_turn / m_radius) : m_direction;
}

double VexPolylineSegment::bulgeOf(double length) const
{
    if (!isArc() || length == m_length) {
        return m_bulge;
    }
    return m_turn * std::tan(length / (4.0 * m_radius));
}
