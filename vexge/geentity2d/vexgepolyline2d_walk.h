#pragma once

#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <cmath>

/// Bulges up to this are straight.
inline constexpr double kGeStraightBulge = 0.001;

/// Makes the segments of a polyline on the stack, one at a time.
struct CVexGePolylineWalk {
    /// Calls `visit` with the line or arc of segment `index` and returns its answer; false, with no
    /// call, for a segment of another kind.
    template <class Visit>
    static bool at(const CVexGePolyline2d& chain, unsigned index, const Visit& visit)
    {
        const CVexGePolyline2d::SegType kind = chain.segType(index);
        if (kind != CVexGePolyline2d::kLine && kind != CVexGePolyline2d::kArc) {
            return false;
        }
        const CVexGePoint2d& start = chain.m_vertices[index];
        const CVexGePoint2d& end = chain.m_vertices[chain.nextIndex(index)];
        if (kind == CVexGePolyline2d::kLine) {
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
