#pragma once

#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <cmath>
#include <optional>
#include <utility>
#include <vector>

/// Bulges up to this are straight.
inline constexpr double kGeStraightBulge = 0.001;

/// Makes the segments of a polyline on the stack, one at a time.
struct CVexGePolylineWalk {
    /// The square of a length that is above kGeTol whatever rounding does.
    static constexpr double kSurelyApartSqrd = 1.001 * kGeTol * kGeTol;

    /// Calls `visit` with the line or arc of segment `index` and returns its answer; false, with no
    /// call, for a segment of another kind.
    template <class Visit>
    static bool at(const CVexGePolyline2d& chain, unsigned index, const Visit& visit)
    {
        const unsigned count = chain.numVerts();
        if (index >= count) {
            return false;
        }
        const bool last = index + 1 == count;
        const CVexGePoint2d& start = chain.m_vertices[index];
        const CVexGePoint2d& end = chain.m_vertices[last ? 0 : index + 1];
        // A look at the square spares nearly all segments the root.
        if (!((end - start).lengthSqrd() > kSurelyApartSqrd && (!last || chain.m_closedFlag))) {
            const CVexGePolyline2d::SegType kind = chain.segType(index);
            if (kind != CVexGePolyline2d::kLine && kind != CVexGePolyline2d::kArc) {
                return false;
            }
        }
        if (std::fabs(chain.m_bulges[index]) <= kGeStraightBulge) {
            return visit(CVexGeLine2d(start, end));
        }
        return visit(CVexGeCircArc2d(start, end, chain.m_bulges[index], true));
    }

    /// Calls `visit(index, segment)` for the lines and arcs in order until it answers true;
    /// whether it did.
    template <class Visit>
    static bool each(const CVexGePolyline2d& chain, const Visit& visit)
    {
        for (unsigned i = 0; i < chain.numVerts(); ++i) {
            if (at(chain, i, [&](const auto& segment) { return visit(i, segment); })) {
                return true;
            }
        }
        return false;
    }

    /// A chain of straight segments without widths that takes `points` over.
    static CVexGePolyline2d straight(std::vector<CVexGePoint2d>&& points)
    {
        CVexGePolyline2d chain;
        chain.m_bulges.assign(points.size(), 0.0);
        chain.m_startWidths.assign(points.size(), -1.0);
        chain.m_endWidths = chain.m_startWidths;
        chain.m_vertices = std::move(points);
        return chain;
    }

    static constexpr double param(const CVexGeLine2d&, double /*bulge*/, double along)
    {
        return along;
    }
    /// A share of travel as the arc's own parameter, and back: turned round for a negative bulge.
    static constexpr double param(const CVexGeCircArc2d&, double bulge, double along)
    {
        return bulge < 0.0 ? 1.0 - along : along;
    }
};

/// The segments of a chain, its arcs made once: for work that asks for each many times. It looks
/// into the chain, which has to outlive it and to stay as it is.
class VexGeSegmentCache {
public:
    explicit VexGeSegmentCache(const CVexGePolyline2d& chain) : m_chain(chain)
    {
        for (unsigned i = 0; i < chain.numVerts(); ++i) {
            if (!(std::fabs(chain.getBulgeAt(i)) > kGeStraightBulge)) {
                continue;
            }
            m_arcs.resize(chain.numVerts());
            CVexGePolylineWalk::at(chain, i, [&](const auto& segment) { return keep(i, segment); });
        }
    }
    /// As CVexGePolylineWalk::at.
    template <class Visit>
    bool at(unsigned index, const Visit& visit) const
    {
        if (index < m_arcs.size() && m_arcs[index]) {
            return visit(*m_arcs[index]);
        }
        return CVexGePolylineWalk::at(m_chain, index, visit);
    }

private:
    bool keep(unsigned index, const CVexGeCircArc2d& arc)
    {
        m_arcs[index].emplace(arc);
        return true;
    }
    bool keep(unsigned /*index*/, const CVexGeLine2d& /*line*/) { return true; }

    const CVexGePolyline2d& m_chain;
    std::vector<std::optional<CVexGeCircArc2d>> m_arcs; // none for a chain of straight segments
};
