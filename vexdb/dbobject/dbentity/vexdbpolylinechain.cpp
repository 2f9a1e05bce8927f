#include "vexdb/dbobject/dbentity/vexdbpolylinechain.h"

#include "vexdb/dbobject/dbentity/vexdbcurvevisit.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

namespace {

/// How far `point` lies from the segment.
double gapTo(const VexPolylineSegment& segment, const CVexGePoint2d& point)
{
    const double along = std::clamp(segment.along(point), 0.0, segment.length());
    return point.distanceTo(segment.pointAt(along));
}

} // namespace

void hitsOfSegment(const VexPolylineSegment& segment, const CVexDbEntity& other,
                   CVexDbEntity::PointList& hits, CVexDbEntity::Intersect kind, double tol)
{
    hits.clear();
    visitCurve(other, [&](const auto& curve) {
        return segment.visit([&](const auto& own) {
            int count = 0;
            return intersectionOf(own, curve, count, hits, kind, tol);
        });
    });
}

VexPolylineChain::VexPolylineChain(const CVexGePolyline2d& polyline) : m_polyline(polyline)
{
    m_upTo.reserve(polyline.numVerts() + 1);
    m_upTo.push_back(0.0);
    for (unsigned i = 0; i < polyline.numVerts(); ++i) {
        const auto segment = VexPolylineSegment::of(polyline, i);
        m_upTo.push_back(m_upTo.back() + (segment ? segment->length() : 0.0));
    }
}

void VexPolylineChain::cutBy(const CVexDbEntity& cutter, double tol)
{
    visitCurve(cutter, [&](const auto& curve) {
        if constexpr (std::is_same_v<std::decay_t<decltype(curve)>, CVexGePolyline2d>) {
            cutByPolyline(curve, tol);
        } else {
            cutByCurve(curve, tol);
        }
        return true;
    });
}

template <class Curve>
void VexPolylineChain::cutByCurve(const Curve& curve, double tol)
{
    // A segment at a time: the kernel's list of hits by parameter counts against the travel on
    // clockwise arcs, and of two vertices that such an arc joins it drops one.
    CVexDbEntity::PointList hits;
    int count = 0;
    for (unsigned i = 0; i < m_polyline.numVerts(); ++i) {
        const auto segment = VexPolylineSegment::of(m_polyline, i);
        const bool isHit = segment && segment->visit([&](const auto& own) {
            return intersectionOf(own, curve, count, hits, CVexGeEntity2d::kExtendNone, tol);
        });
        for (std::size_t k = 0; isHit && k < hits.size(); ++k) {
            add(i, hits[k], tol);
        }
    }
}

void VexPolylineChain::cutByPolyline(const CVexGePolyline2d& other, double tol)
{
    // Here the parameters follow the travel, and pairs of segments are found by their boxes.
    CVexGePolyline2d::ParamMap hits;
    int count = 0;
    m_polyline.intersectWith(other, count, hits, CVexGeEntity2d::kExtendNone, tol);
    for (const auto& [param, hit] : hits) {
        add(segmentOf(param, hit), hit, tol);
    }
}

/// The segment that holds a hit. Parameters are cut to steps, so that around a vertex the hit
/// decides which segment it belongs to.
unsigned VexPolylineChain::segmentOf(double param, const CVexGePoint2d& hit) const
{
    const double step = length() / kGeSortKeySteps;
    const double place = length() * param;
    const auto first = std::ranges::lower_bound(m_upTo, place - step);
    auto i = static_cast<unsigned>(first - m_upTo.begin());
    i = i > 0 ? i - 1 : 0;
    unsigned nearest = i;
    double gap = std::numeric_limits<double>::infinity();
    for (; i < m_polyline.numVerts() && m_upTo[i] <= place + 2.0 * step; ++i) {
        const auto segment = VexPolylineSegment::of(m_polyline, i);
        if (segment && gapTo(*segment, hit) < gap) {
            gap = gapTo(*segment, hit);
            nearest = i;
        }
    }
    return nearest;
}

void VexPolylineChain::add(unsigned index, const CVexGePoint2d& hit, double tol)
{
    const auto segment = VexPolylineSegment::of(m_polyline, index);
    if (!segment) {
        return;
    }
    if (!(gapTo(*segment, hit) <= std::max(tol, kGeTol))) {
        return; // the kernel's arcs forgive an angle at their ends, which is much on a large one
    }
    const double along = segment->along(hit);
    const bool atStart = along <= 0.0 || hit.isEqualTo(segment->from());
    const bool atEnd = along >= segment->length() || hit.isEqualTo(segment->to());
    if (atStart || atEnd) {
        const unsigned vertex = atStart ? index : index + 1;
        const CVexGePoint2d& point = atStart ? segment->from() : segment->to();
        keep(m_upTo[vertex], {point, vertex, 0.0, true});
    } else {
        keep(m_upTo[index] + along, {hit, index, along, false});
    }
}

void VexPolylineChain::keep(double place, const VexPolylineCut& cut)
{
    const auto isApart = [place](double end) { return std::fabs(place - end) > kGeTol; };
    if (isApart(0.0) && isApart(length())) {
        addCut(m_cuts, place, cut, kGeTol);
    }
}

/// How far along the polyline its point nearest to `pick` lies; of equal ones the first.
double VexPolylineChain::placeOf(const CVexGePoint2d& pick) const
{
    double place = 0.0;
    double gap = std::numeric_limits<double>::infinity();
    for (unsigned i = 0; i < m_polyline.numVerts(); ++i) {
        const auto segment = VexPolylineSegment::of(m_polyline, i);
        if (segment && gapTo(*segment, pick) < gap) {
            gap = gapTo(*segment, pick);
            place = m_upTo[i] + std::clamp(segment->along(pick), 0.0, segment->length());
        }
    }
    return snappedToCut(m_cuts, place);
}

bool VexPolylineChain::isNearerStart(const CVexGePoint2d& pick) const
{
    return placeOf(pick) + kGeEpsilon < length() / 2.0;
}

VexPolylineChain::Piece VexPolylineChain::pieceAt(const CVexGePoint2d& pick) const
{
    return openPieceOf(m_cuts, placeOf(pick));
}
