#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgepolyline2d_offset.h"
#include "vexge/geentity2d/vexgepolyline2d_walk.h"

#include <cmath>
#include <cstddef>
#include <utility>

namespace {

/// The share of an arc whose chord tells the direction at its start, and the shares of one that
/// tell where it leaves to.
constexpr double kStartChordParam = 0.05;
constexpr double kThirdParam = 0.2;
constexpr double kThirdParamClockwise = 0.8;

double sweepOf(const CVexGeCircArc2d& arc)
{
    return notNegativeAngle(arc.endAng() - arc.startAng());
}

} // namespace

std::optional<VexGeOffsetSegment> VexGeOffsetSegment::make(const CVexGePoint2d& start,
                                                           const CVexGePoint2d& end, double bulge,
                                                           double dist, int side)
{
    VexGeOffsetSegment segment;
    if (std::fabs(bulge) <= kGeStraightBulge) {
        const CVexGeVector2d run = end - start;
        const double length = run.length();
        if (!(length > 0.0)) {
            return std::nullopt;
        }
        const CVexGeVector2d way = run.perpVector() * (dist * side / length);
        segment.m_line.set(start + way, end + way);
        return segment;
    }
    segment.m_isArc = true;
    segment.m_clockwise = bulge < 0.0;
    segment.m_arc.set(start, end, bulge, true);
    const double radius = segment.m_arc.radius();
    if (!(dist < radius)) {
        return std::nullopt;
    }
    const bool towardsCentre = (bulge > 0.0) == (side > 0);
    segment.m_arc.setRadius(towardsCentre ? radius - dist : radius + dist);
    return segment;
}

std::optional<VexGeOffsetSegment> VexGeOffsetSegment::makeTowards(const CVexGeCircArc2d& arc,
                                                                  const CVexGePoint2d& sidePoint,
                                                                  double dist, bool clockwise)
{
    VexGeOffsetSegment segment;
    segment.m_isArc = true;
    segment.m_clockwise = clockwise;
    segment.m_arc = arc;
    if (!segment.m_arc.offset(sidePoint, dist)) {
        return std::nullopt;
    }
    return segment;
}

CVexGePoint2d VexGeOffsetSegment::start() const
{
    return !m_isArc ? m_line.startPoint() : m_clockwise ? m_arc.endPoint() : m_arc.startPoint();
}

CVexGePoint2d VexGeOffsetSegment::end() const
{
    return !m_isArc ? m_line.endPoint() : m_clockwise ? m_arc.startPoint() : m_arc.endPoint();
}

CVexGePoint2d VexGeOffsetSegment::thirdPoint() const
{
    return m_isArc ? m_arc.pointAtParam(m_clockwise ? kThirdParamClockwise : kThirdParam)
                   : m_line.endPoint();
}

double VexGeOffsetSegment::signedBulge() const
{
    return !m_isArc ? 0.0 : m_clockwise ? -m_arc.bulge() : m_arc.bulge();
}

bool VexGeOffsetSegment::holds(const CVexGePoint2d& point, double tol) const
{
    return m_isArc ? m_arc.isOn(point, tol) != 0 && isBetweenEnds(m_arc, point)
                   : m_line.isOn(point, tol) != 0;
}

void VexGeOffsetSegment::setAngle(bool startAngle, const CVexGePoint2d& point, bool shorten)
{
    const double before = sweepOf(m_arc);
    const double angle = m_arc.center().angleTo(point);
    if (startAngle) {
        m_arc.setStartAngle(angle);
    } else {
        m_arc.setEndAngle(angle);
    }
    if (shorten && sweepOf(m_arc) > before + 2.0 * kGeAngleTol) {
        m_arc.setAngles(angle, angle);
    }
}

void VexGeOffsetSegment::setStart(const CVexGePoint2d& point, bool shorten)
{
    setAngle(!m_clockwise, point, shorten);
}

void VexGeOffsetSegment::setEnd(const CVexGePoint2d& point, bool shorten)
{
    setAngle(m_clockwise, point, shorten);
}

double travelAngle(const CVexGeCircArc2d& arc, double bulge, const CVexGePoint2d& point)
{
    const double sweep = sweepOf(arc);
    const double angle = arc.center().angleTo(point);
    const double run =
        notNegativeAngle(bulge < 0.0 ? arc.endAng() - angle : angle - arc.startAng());
    if (run <= sweep) {
        return run;
    }
    return run - sweep > kGeTwoPi - run ? 0.0 : sweep;
}

CVexGePoint2d heldWithin(const CVexGeCircArc2d& arc, const CVexGePoint2d& point)
{
    const double sweep = sweepOf(arc);
    const double run = notNegativeAngle(arc.center().angleTo(point) - arc.startAng());
    if (run <= sweep) {
        return point;
    }
    return run - sweep > kGeTwoPi - run ? arc.startPoint() : arc.endPoint();
}

double alongSegment(const CVexGeLine2d& line, double /*bulge*/, const CVexGePoint2d& point)
{
    return line.startPoint().distanceTo(point);
}

double alongSegment(const CVexGeCircArc2d& arc, double bulge, const CVexGePoint2d& point)
{
    return arc.radius() * travelAngle(arc, bulge, point);
}

VexGeSplitBulge splitBulge(const CVexGePoint2d& start, const CVexGePoint2d& end, double bulge,
                           const CVexGePoint2d& cut)
{
    if (std::fabs(bulge) <= kGeStraightBulge) {
        return {};
    }
    const CVexGeCircArc2d arc(start, end, bulge, true);
    const double run = travelAngle(arc, bulge, cut);
    const auto bulgeOf = [bulge](double angle) {
        return angle <= kGeAngleTol ? 0.0 : std::copysign(std::tan(angle / 4.0), bulge);
    };
    return {bulgeOf(run), bulgeOf(sweepOf(arc) - run)};
}

namespace {

/// Moves each segment of a working copy sideways and joins them by their corners.
class RawChain {
public:
    RawChain(const VexGeOffsetChain& source, double dist, int side)
        : m_source(source), m_dist(dist), m_side(side),
          m_loop(source.points.size() > 2 &&
                 source.points.front().isEqualTo(source.points.back(), kOffsetJoinTol))
    {
    }

    VexGeOffsetChain build()
    {
        const std::size_t segments = m_source.points.size() - 1;
        std::size_t first = 0;
        std::optional<VexGeOffsetSegment> opening;
        while (first < segments && !(opening = openingSegment(first))) {
            ++first;
        }
        if (!opening) {
            return {};
        }
        m_out.push(opening->start(), opening->isArc() ? m_source.bulges.front() : 0.0);
        m_prev = *opening;
        bool several = false;
        for (std::size_t j = first + 1; j < segments; ++j) {
            if (auto cur = segment(j)) {
                resolveCorner(*cur, j);
                several = true;
            }
        }
        if (m_loop && several) {
            resolveCorner(*opening, first);
            closeLoop();
        } else {
            m_out.push(m_prev.end(), 0.0);
        }
        return std::move(m_out);
    }

private:
    [[nodiscard]] std::optional<VexGeOffsetSegment> segment(std::size_t j) const
    {
        return VexGeOffsetSegment::make(m_source.points[j], m_source.points[j + 1],
                                        m_source.bulges[j], m_dist, m_side);
    }

    /// The first segment that can be moved. An arc beyond segment 0 takes its side from vertex 0
    /// and the bulge there, as the arc before it that could not be moved: chains that open with a
    /// tight round are drawn that way on file, and the clipping removes what lies wrong.
    [[nodiscard]] std::optional<VexGeOffsetSegment> openingSegment(std::size_t i) const
    {
        const double bulge = m_source.bulges[i];
        if (i == 0 || std::fabs(bulge) <= kGeStraightBulge) {
            return segment(i);
        }
        const CVexGeCircArc2d arc(m_source.points[i], m_source.points[i + 1], bulge, true);
        const CVexGeVector2d chord = arc.pointAtParam(kStartChordParam) - arc.pointAtParam(0.0);
        const CVexGeVector2d across = chord.perpVector() * (m_dist / chord.length());
        const CVexGePoint2d sidePoint = m_source.bulges.front() > 0.0
                                            ? m_source.points.front() + across * m_side
                                            : arc.startPoint() - across * m_side;
        return VexGeOffsetSegment::makeTowards(arc, sidePoint, m_dist, bulge < 0.0);
    }

    void resolveCorner(const VexGeOffsetSegment& next, std::size_t vertex)
    {
        VexGeOffsetSegment cur = next;
        VexGeOffsetCorner(m_out, m_prev, cur, m_source.points[vertex], m_source.bulges[vertex],
                          m_dist)
            .resolve();
        m_prev = cur;
    }

    /// The last point, which the corner at the start gave, becomes the first one too.
    void closeLoop()
    {
        const CVexGePoint2d& last = m_out.points.back();
        if (m_out.bulges.front() != 0.0 && m_out.points.size() > 1) {
            const double bulge = m_out.bulges.front();
            const CVexGeCircArc2d arc(m_out.points[0], m_out.points[1], bulge, true);
            CVexGeCircArc2d trimmed(arc);
            const double angle = arc.center().angleTo(last);
            if (bulge > 0.0) {
                trimmed.setStartAngle(angle);
            } else {
                trimmed.setEndAngle(angle);
            }
            m_out.bulges.front() = std::copysign(trimmed.bulge(), bulge);
        }
        m_out.points.front() = last;
    }

    const VexGeOffsetChain& m_source;
    double m_dist;
    int m_side;
    bool m_loop;
    VexGeOffsetSegment m_prev;
    VexGeOffsetChain m_out;
};

} // namespace

void CVexGePolyline2d::getOffsetPoly(std::vector<CVexGePoint2d>& points,
                                     std::vector<double>& bulges, double dist, int side) const
{
    if (points.size() < 2) {
        return;
    }
    VexGeOffsetChain source{std::move(points), std::move(bulges)};
    if (m_closedFlag) {
        source.push(CVexGePoint2d(source.points.front()), 0.0);
    }
    const std::size_t count = source.points.size();
    if (source.points[count - 2].isEqualTo(source.points[count - 1], kOffsetJoinTol)) {
        source.points.pop_back();
        source.bulges.pop_back();
    }
    VexGeOffsetChain chain;
    if (source.points.size() > 1) {
        chain = RawChain(source, dist, side).build();
    }
    points = std::move(chain.points);
    bulges = std::move(chain.bulges);
}
