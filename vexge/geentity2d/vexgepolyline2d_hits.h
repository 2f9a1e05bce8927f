#pragma once

#include "vexge/geentity2d/vexgepolyline2d_walk.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

/// The hits of one segment, the receiver, with a line or arc: at most two.
struct VexGeHits {
    CVexGePoint2d points[2];
    int count = 0;

    [[nodiscard]] const CVexGePoint2d* begin() const { return points; }
    [[nodiscard]] const CVexGePoint2d* end() const { return points + count; }
};

inline VexGeHits hitsOf(const CVexGeLine2d& segment, const CVexGeLine2d& line,
                        CVexGeEntity2d::Intersect kind, double tol)
{
    VexGeHits hits;
    hits.count = segment.intersectWith(line, hits.points[0], kind, tol) ? 1 : 0;
    return hits;
}

inline VexGeHits hitsOf(const CVexGeLine2d& segment, const CVexGeCircArc2d& arc,
                        CVexGeEntity2d::Intersect kind, double tol)
{
    VexGeHits hits;
    arc.intersectWith(segment, hits.count, hits.points[0], hits.points[1],
                      CVexGeEntity2d::exchanged(kind), tol);
    return hits;
}

template <class Curve>
VexGeHits hitsOf(const CVexGeCircArc2d& segment, const Curve& curve, CVexGeEntity2d::Intersect kind,
                 double tol)
{
    VexGeHits hits;
    segment.intersectWith(curve, hits.count, hits.points[0], hits.points[1], kind, tol);
    return hits;
}

// A distance along a segment's own line or arc, in the direction of travel.
inline double travelled(const CVexGeLine2d& /*line*/, double /*bulge*/, double along)
{
    return along;
}

inline double travelled(const CVexGeCircArc2d& arc, double bulge, double along)
{
    return bulge < 0.0 ? arc.length() - along : along;
}

/// The lengths of a chain up to each of its segments, and its whole length.
struct VexGeRunningLengths {
    std::vector<double> upTo;
    double total = 0.0;

    explicit VexGeRunningLengths(const CVexGePolyline2d& chain) : upTo(chain.numVerts(), 0.0)
    {
        for (unsigned i = 0; i < chain.numVerts(); ++i) {
            upTo[i] = total;
            CVexGePolylineWalk::at(chain, i, [&](const auto& segment) {
                total += segment.length();
                return true;
            });
        }
    }
    /// The key in a map of hits for a point `along` a segment: its parameter on the chain, cut.
    [[nodiscard]] double key(unsigned segment, double along) const
    {
        const double param = std::clamp((upTo[segment] + along) / total, 0.0, 1.0);
        return std::trunc(param * kGeSortKeySteps) / kGeSortKeySteps;
    }
};
