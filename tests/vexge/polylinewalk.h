#pragma once

#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <vector>

// The plain walk over all pairs of segments: what intersecting two polylines is defined as. The
// kernel finds its candidates by boxes and must give the same points in the same order, to the bit.

namespace plainwalk {

using Points = std::vector<CVexGePoint2d>;

/// The hits of a line or arc with the segments of `other`, which are the receivers.
template <class Curve>
Points hitsOfCurve(const CVexGePolyline2d& other, const Curve& curve,
                   CVexGeEntity2d::Intersect kind, double tol)
{
    Points all;
    for (unsigned k = 0; k < other.numVerts(); ++k) {
        CVexGeLine2d line;
        CVexGeCircArc2d arc;
        int count = 0;
        CVexGePoint2d pair[2];
        Points hits;
        if (other.getLineSegAt(k, line)) {
            line.intersectWith(curve, count, hits, kind, tol);
        } else if (other.getArcSegAt(k, arc)) {
            arc.intersectWith(curve, count, pair[0], pair[1], kind, tol);
            hits.assign(pair, pair + count);
        }
        all.insert(all.end(), hits.begin(), hits.end());
    }
    other.CheckSameIntPoints(all);
    return all;
}

inline Points hits(const CVexGePolyline2d& chain, const CVexGePolyline2d& other,
                   CVexGeEntity2d::Intersect kind, double tol)
{
    Points all;
    const auto fromOther = CVexGeEntity2d::exchanged(kind);
    for (unsigned i = 0; i < chain.numVerts(); ++i) {
        CVexGeLine2d line;
        CVexGeCircArc2d arc;
        Points some;
        if (chain.getLineSegAt(i, line)) {
            some = hitsOfCurve(other, line, fromOther, tol);
        } else if (chain.getArcSegAt(i, arc)) {
            some = hitsOfCurve(other, arc, fromOther, tol);
        }
        all.insert(all.end(), some.begin(), some.end());
    }
    chain.CheckSameIntPoints(all);
    return all;
}

/// The closest point by a look at each segment; segment 0 sets the first best, or the origin does.
inline CVexGePoint2d closest(const CVexGePolyline2d& chain, const CVexGePoint2d& point,
                             int& segment)
{
    CVexGePoint2d best;
    segment = 0;
    for (unsigned i = 0; i < chain.numVerts(); ++i) {
        CVexGeLine2d line;
        CVexGeCircArc2d arc;
        CVexGePoint2d here;
        if (chain.getLineSegAt(i, line)) {
            here = line.closestPointTo(point);
        } else if (chain.getArcSegAt(i, arc)) {
            here = arc.closestPointTo(point);
        } else {
            continue;
        }
        if (i == 0 || point.distanceTo(here) < point.distanceTo(best)) {
            best = here;
            segment = static_cast<int>(i);
        }
    }
    return best;
}

} // namespace plainwalk
