#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgepolyline2d_hits.h"
#include "vexge/geentity2d/vexgepolyline2d_offset.h"

#include <cmath>
#include <cstddef>
#include <vector>

namespace {

/// A crossing this near an end of a segment, in its parameter, is its joint with the next one.
constexpr double kJointParam = 0.001;

void removeNearVertices(VexGeOffsetChain& chain)
{
    std::size_t kept = 0;
    for (std::size_t i = 1; i < chain.points.size(); ++i) {
        if (!chain.points[kept].isEqualTo(chain.points[i], kOffsetVertexTol)) {
            ++kept;
            chain.points[kept] = chain.points[i];
            chain.bulges[kept] = chain.bulges[i];
        }
    }
    chain.points.resize(kept + 1);
    chain.bulges.resize(kept + 1);
}

bool isJoint(double param)
{
    return std::fabs(param) <= kJointParam || std::fabs(param - 1.0) <= kJointParam;
}

/// The parameter on `prev` of the crossing that counts, -1.0 for none.
template <class Prev>
double crossingParam(const Prev& prev, const CVexGePoint2d* hits, std::size_t count,
                     double tol = kGeEpsilon)
{
    if (count == 0) {
        return -1.0;
    }
    const double first = prev.paramAtPoint(hits[0], tol);
    return count > 1 && isJoint(first) ? prev.paramAtPoint(hits[1], tol) : first;
}

/// Repairs a working copy so that the offset does not fold where it is smallest: walks the segments
/// with the one before, cuts arcs that the offset cannot follow down to their chords, and splits
/// the one before where it crosses the current one.
class LocalRepair {
public:
    LocalRepair(VexGeOffsetChain& chain, bool closed, double dist, int side)
        : m_chain(chain), m_closed(closed), m_dist(dist), m_side(side)
    {
    }
    void run()
    {
        bool havePrev = false;
        for (std::size_t i = 0; i < segments(); ++i) {
            straightenTightArc(i);
            if (havePrev && splitPrevAtCrossing(i)) {
                ++i;
                havePrev = false;
            } else {
                havePrev = true;
            }
        }
    }

private:
    [[nodiscard]] std::size_t segments() const
    {
        return m_closed ? m_chain.points.size() : m_chain.points.size() - 1;
    }
    [[nodiscard]] const CVexGePoint2d& start(std::size_t i) const { return m_chain.points[i]; }
    [[nodiscard]] const CVexGePoint2d& end(std::size_t i) const
    {
        return m_chain.points[i + 1 < m_chain.points.size() ? i + 1 : 0];
    }
    [[nodiscard]] bool isArc(std::size_t i) const
    {
        return std::fabs(m_chain.bulges[i]) > kGeStraightBulge;
    }
    [[nodiscard]] CVexGeCircArc2d arc(std::size_t i) const
    {
        return {start(i), end(i), m_chain.bulges[i], true};
    }

    /// That of arc(i), without its angles.
    [[nodiscard]] double radius(std::size_t i) const
    {
        const double bulge = m_chain.bulges[i];
        return (end(i) - start(i)).length() * (1.0 + bulge * bulge) / (4.0 * std::fabs(bulge));
    }

    void straightenTightArc(std::size_t i)
    {
        const bool towardsCentre = (m_chain.bulges[i] > 0.0) == (m_side > 0);
        if (isArc(i) && towardsCentre && radius(i) <= m_dist) {
            m_chain.bulges[i] = 0.0;
        }
    }

    /// True when a vertex was inserted at `i`, in the segment before.
    bool splitPrevAtCrossing(std::size_t i)
    {
        if (!isArc(i - 1) && !isArc(i)) {
            return false; // two lines with a common end have no other point in common
        }
        const double param = isArc(i - 1) ? crossingOnArc(i) : crossingOnLine(i);
        if (param < 0.0 || isJoint(param)) {
            return false;
        }
        if (isArc(i - 1)) {
            splitArc(i, param);
        } else {
            insert(i, CVexGeLine2d(start(i - 1), end(i - 1)).pointAtParam((param + 1.0) / 2.0),
                   0.0);
        }
        return true;
    }

    [[nodiscard]] double crossingOnLine(std::size_t i) const
    {
        const CVexGeLine2d prev(start(i - 1), end(i - 1));
        const VexGeHits hits = hitsOf(prev, arc(i), CVexGeEntity2d::kExtendNone, kGeEpsilon);
        return crossingParam(prev, hits.points, static_cast<std::size_t>(hits.count));
    }

    [[nodiscard]] double crossingOnArc(std::size_t i)
    {
        // The arc before is mostly the current one of the step before, with nothing split between.
        const CVexGeCircArc2d prev = m_lastArc && m_lastArcAt == i - 1 ? *m_lastArc : arc(i - 1);
        if (isArc(i)) {
            m_lastArc.emplace(arc(i));
            m_lastArcAt = i;
            const std::vector<CVexGePoint2d> hits = crossingsOfArcs(prev, *m_lastArc);
            return crossingParam(prev, hits.data(), hits.size(), kArcChainError * prev.radius());
        }
        const CVexGeLine2d line(start(i), end(i));
        const VexGeHits hits = hitsOf(line, prev, CVexGeEntity2d::kExtendNone, kGeEpsilon);
        return crossingParam(prev, hits.points, static_cast<std::size_t>(hits.count));
    }

    void splitArc(std::size_t i, double param)
    {
        const bool clockwise = m_chain.bulges[i - 1] < 0.0;
        const CVexGeCircArc2d prev = arc(i - 1);
        const CVexGePoint2d vertex =
            prev.pointAtParam(clockwise ? param / 2.0 : (1.0 + param) / 2.0);
        const VexGeSplitBulge parts =
            splitBulge(start(i - 1), end(i - 1), m_chain.bulges[i - 1], vertex);
        m_chain.bulges[i - 1] = parts.before;
        insert(i, vertex, parts.after);
    }

    void insert(std::size_t i, const CVexGePoint2d& point, double bulge)
    {
        m_lastArc.reset();
        m_chain.points.insert(m_chain.points.begin() + static_cast<std::ptrdiff_t>(i), point);
        m_chain.bulges.insert(m_chain.bulges.begin() + static_cast<std::ptrdiff_t>(i), bulge);
    }

    VexGeOffsetChain& m_chain;
    bool m_closed;
    double m_dist;
    int m_side;
    std::optional<CVexGeCircArc2d> m_lastArc; // made for the segment m_lastArcAt
    std::size_t m_lastArcAt = 0;
};

} // namespace

void CVexGePolyline2d::checkLocalSelfIntersect(std::vector<CVexGePoint2d>& points,
                                               std::vector<double>& bulges, double dist,
                                               int side) const
{
    if (points.size() < 2) {
        return;
    }
    VexGeOffsetChain chain{std::move(points), std::move(bulges)};
    removeNearVertices(chain);
    LocalRepair(chain, m_closedFlag, dist, side).run();
    points = std::move(chain.points);
    bulges = std::move(chain.bulges);
}
