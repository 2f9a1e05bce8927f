#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/geentity2d/vexgepolyline2d_hits.h"
#include "vexge/geentity2d/vexgepolyline2d_offset.h"

#include <cmath>

// What arcs and chains have to do with ellipses: the ellipse answers through its own chain of arcs.

namespace {

using Walk = CVexGePolylineWalk;
using Intersect = CVexGeEntity2d::Intersect;

/// The share of the tolerance within which circles surely count as touching.
constexpr double kTouchShare = 0.5;

/// Calls `take(index, segment, hits)` for each segment with the list of its hits with `ellipse`.
template <class Take>
void eachHitList(const CVexGePolyline2d& chain, const CVexGeEllipArc2d& ellipse, Intersect kind,
                 double tol, const Take& take)
{
    Walk::each(chain, [&](unsigned index, const auto& segment) {
        std::vector<CVexGePoint2d> hits;
        int count = 0;
        segment.intersectWith(ellipse, count, hits, kind, tol);
        take(index, segment, hits);
        return false;
    });
}

} // namespace

void CVexGeCircArc2d::getEllipse(CVexGeEllipArc2d& out) const
{
    out.set(m_center, CVexGeVector2d::kXAxis, CVexGeVector2d::kYAxis, m_radius, m_radius,
            m_startAng, m_endAng);
}

bool CVexGeCircArc2d::intersectWith(const CVexGeEllipArc2d& ellipse, int& count,
                                    std::vector<CVexGePoint2d>& out, Intersect kind,
                                    double tol) const
{
    return ellipse.intersectWith(*this, count, out, exchanged(kind), tol);
}

bool CVexGePolyline2d::intersectWith(const CVexGeEllipArc2d& ellipse, int& count,
                                     std::vector<CVexGePoint2d>& out, Intersect kind,
                                     double tol) const
{
    eachHitList(*this, ellipse, kind, tol,
                [&](unsigned, const auto&, const std::vector<CVexGePoint2d>& hits) {
                    out.insert(out.end(), hits.begin(), hits.end());
                });
    count = CheckSameIntPoints(out);
    return !out.empty();
}

bool CVexGePolyline2d::intersectWith(const CVexGeEllipArc2d& ellipse, int& count, ParamMap& out,
                                     Intersect kind, double tol) const
{
    const VexGeRunningLengths lengths(*this);
    eachHitList(*this, ellipse, kind, tol,
                [&](unsigned i, const auto& segment, const std::vector<CVexGePoint2d>& hits) {
                    for (const CVexGePoint2d& hit : hits) {
                        out.emplace(lengths.key(i, segment.distAtPoint(hit, tol)), hit);
                    }
                });
    count = static_cast<int>(out.size());
    return !out.empty();
}

std::vector<CVexGePoint2d> crossingsOfArcs(const CVexGeCircArc2d& prev, const CVexGeCircArc2d& cur)
{
    // Circles that touch from outside count as one only where their points at angle zero meet.
    const CVexGeVector2d way = cur.center() - prev.center();
    const bool touching =
        std::fabs(way.length() - prev.radius() - cur.radius()) < kTouchShare * kGeEpsilon;
    if (touching && (std::fabs(way.x + cur.radius() - prev.radius()) > 2.0 * kGeTol ||
                     std::fabs(way.y) > 2.0 * kGeTol)) {
        return {};
    }
    // An ellipse builds a chain of fifty arcs. It is asked only when the two circles meet a second
    // time on both arcs, or nearly so; a joint alone splits nothing.
    int count = 0;
    CVexGePoint2d circleHits[2];
    CVexGeCircArc2d here(prev);
    CVexGeCircArc2d there(cur);
    here.setAngles(0.0, kGeTwoPi);
    there.setAngles(0.0, kGeTwoPi);
    here.intersectWith(there, count, circleHits[0], circleHits[1], CVexGeEntity2d::kExtendBoth,
                       kGeEpsilon);
    const double slack = kArcChainError * (prev.radius() + cur.radius());
    int shared = 0;
    for (int i = 0; i < count; ++i) {
        const CVexGePoint2d& hit = circleHits[i];
        shared += prev.distanceTo(hit, slack) <= slack && cur.distanceTo(hit, slack) <= slack;
    }
    std::vector<CVexGePoint2d> hits;
    if (shared > 1) {
        CVexGeEllipArc2d ellipse;
        prev.getEllipse(ellipse);
        cur.intersectWith(ellipse, count, hits, CVexGeEntity2d::kExtendNone, kGeEpsilon);
    }
    return hits;
}
