#include "vexdb/dbobject/dbentity/vexdbcuts.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbobject/dbentity/vexdbpolylinechain.h"
#include "vexdb/dbobject/dbentity/vexdbpolylinerecords.h"
#include "vexdb/dbobject/dbentity/vexdbpolylinesegment.h"

#include <limits>
#include <memory>
#include <optional>

namespace {

/// Opens a closed chain at its start, which is repeated at the end; the shape stays.
void openAtStart(CVexGePolyline2d& chain, const VexPolylineRecords& records)
{
    const unsigned count = chain.numVerts();
    const double closing = chain.getBulgeAt(count - 1);
    const CVexGePoint2d start = chain.vertices().front();
    records.bulge(count - 1, closing);
    records.opened();
    chain.setClosed(false);
    chain.setBulgeAt(count - 1, closing); // opening has computed another one
    chain.appendVertex(start);
    records.added(count);
}

/// Takes what lies before `cut` off the chain. A part that is new has no records.
void cutHeadOff(CVexGePolyline2d& chain, const VexPolylineCut& cut,
                const VexPolylineRecords* records)
{
    const unsigned first = cut.segment;
    const auto segment = VexPolylineSegment::of(chain, first);
    const CVexGePoint2d before = chain.vertices()[first];
    if (records != nullptr) {
        for (unsigned i = 0; i < first; ++i) {
            records->removed(0, chain, i);
        }
        records->moved(0, before);
    }
    if (first > 0) {
        chain.removeVertexAt(0, static_cast<int>(first) - 1);
    }
    if (segment && segment->isArc()) {
        if (records != nullptr) {
            records->bulge(0, segment->bulge());
        }
        chain.setBulgeAt(0, segment->bulgeOf(segment->length() - cut.along));
    }
    chain.setPointAt(0, cut.point);
}

/// Takes what lies behind `cut` off the chain.
void cutTailOff(CVexGePolyline2d& chain, const VexPolylineCut& cut,
                const VexPolylineRecords& records)
{
    const unsigned last = cut.isVertex ? cut.segment : cut.segment + 1;
    const auto segment = VexPolylineSegment::of(chain, last - 1);
    const unsigned count = chain.numVerts();
    for (unsigned i = count; i-- > last + 1;) {
        records.removed(i, chain, i);
    }
    if (last + 1 < count) {
        chain.removeVertexAt(static_cast<int>(last) + 1, static_cast<int>(count) - 1);
    }
    records.moved(last, chain.vertices()[last]);
    if (segment && segment->isArc()) {
        records.bulge(last - 1, segment->bulge());
        chain.setBulgeAt(last - 1, segment->bulgeOf(cut.isVertex ? segment->length() : cut.along));
    }
    chain.setPointAt(last, cut.point);
}

/// The point nearest to `pick` where one of `boundaries` meets the extension of `segment`, an end
/// segment of `chain`, beyond its free end.
std::optional<CVexGePoint2d> targetOf(const CVexGePolyline2d& chain,
                                      const VexPolylineSegment& segment, bool start,
                                      const CVexGePoint2d& pick,
                                      const std::vector<CVexDbEntity*>& boundaries, double tol)
{
    std::optional<CVexGePoint2d> target;
    double distance = std::numeric_limits<double>::infinity();
    CVexDbEntity::PointList hits;
    for (const CVexDbEntity* boundary : boundaries) {
        hitsOfSegment(segment, *boundary, hits, CVexGeEntity2d::kExtendThis, tol);
        for (const CVexGePoint2d& hit : hits) {
            // What lies on the polyline does not lengthen it.
            const bool counts = pick.distanceTo(hit) < distance &&
                                segment.beyond(hit, start) > 0.0 && chain.isOn(hit, tol) == 0;
            if (counts) {
                target = hit;
                distance = pick.distanceTo(hit);
            }
        }
    }
    return target;
}

} // namespace

CVexDbEntity* CVexDbPolyline::Trim(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& cutters,
                                   double tol)
{
    VexPolylineChain chain(m_geometry);
    for (const CVexDbEntity* cutter : cutters) {
        if (cutter != this) {
            chain.cutBy(*cutter, tol);
        }
    }
    const VexPolylineChain::Piece piece = chain.pieceAt(pick);
    if (piece.before == nullptr && piece.behind == nullptr) {
        return nullptr;
    }
    const VexPolylineRecords records(*this);
    if (m_geometry.isClosed()) {
        openAtStart(m_geometry, records);
    }
    std::unique_ptr<CVexDbPolyline> rest;
    if (piece.before != nullptr && piece.behind != nullptr) {
        rest = std::make_unique<CVexDbPolyline>(*this);
        rest->detach();
        cutHeadOff(rest->m_geometry, *piece.behind, nullptr);
        rest->changed();
    }
    if (piece.before != nullptr) {
        cutTailOff(m_geometry, *piece.before, records);
    } else {
        cutHeadOff(m_geometry, *piece.behind, &records);
    }
    changed();
    return rest.release();
}

bool CVexDbPolyline::Extend(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& boundaries, double tol)
{
    const unsigned count = NumVerts();
    if (m_geometry.isClosed() || count < 2) {
        return false;
    }
    const bool start = VexPolylineChain(m_geometry).isNearerStart(pick);
    const unsigned index = start ? 0 : count - 2;
    const unsigned vertex = start ? 0 : count - 1;
    const auto segment = VexPolylineSegment::of(m_geometry, index);
    if (!segment) {
        return false; // it has no direction
    }
    const auto target = targetOf(m_geometry, *segment, start, pick, boundaries, tol);
    if (!target) {
        return false;
    }
    const VexPolylineRecords records(*this);
    records.moved(vertex, m_geometry.vertices()[vertex]);
    if (segment->isArc()) {
        records.bulge(index, segment->bulge());
        const double length = segment->length() + segment->beyond(*target, start);
        m_geometry.setBulgeAt(index, segment->bulgeOf(length));
    }
    m_geometry.setPointAt(vertex, *target);
    changed();
    return true;
}
