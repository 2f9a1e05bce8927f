#include "vexge/geentity2d/vexgepolyline2d_offset_clip.h"

#include "vexge/geentity2d/vexgepolyline2d_hitlist.h"
#include "vexge/geentity2d/vexgepolyline2d_hits.h"

#include <algorithm>
#include <utility>

namespace {

using Walk = CVexGePolylineWalk;

CVexGePolyline2d polylineOf(const std::vector<CVexGePoint2d>& points,
                            const std::vector<double>& bulges)
{
    CVexGePolyline2d chain;
    chain.set(points, bulges);
    return chain;
}

/// A hit of a chain with itself: on which segment, and how far along it.
struct SelfHit {
    unsigned segment = 0;
    double along = 0.0;
    CVexGePoint2d point;
    double param = 0.0;
};

/// Finds whether a chain has a vertex near a point.
class VertexIndex {
public:
    explicit VertexIndex(const CVexGePolyline2d& chain)
        : m_vertices(chain.vertices()), m_index(boxesOf(chain))
    {
    }
    [[nodiscard]] bool hasNear(const CVexGePoint2d& point, double tol) const
    {
        const VexGeBox box = VexGeBox{point.x, point.y, point.x, point.y}.grownBy(tol);
        return m_index.search(box,
                              [&](std::size_t i) { return m_vertices[i].isEqualTo(point, tol); });
    }

private:
    static std::vector<VexGeBox> boxesOf(const CVexGePolyline2d& chain)
    {
        std::vector<VexGeBox> boxes;
        boxes.reserve(chain.vertices().size());
        for (const CVexGePoint2d& vertex : chain.vertices()) {
            boxes.push_back({vertex.x, vertex.y, vertex.x, vertex.y});
        }
        return boxes;
    }

    const std::vector<CVexGePoint2d>& m_vertices;
    VexGeSegmentIndex m_index;
};

/// The parameters of the vertices of an open chain; that of the last is 1.
std::vector<double> vertexParams(const CVexGePolyline2d& chain)
{
    VexGeRunningLengths lengths(chain);
    for (double& upTo : lengths.upTo) {
        upTo /= lengths.total;
    }
    lengths.upTo.back() = 1.0;
    return std::move(lengths.upTo);
}

bool isLine(const CVexGePolyline2d& chain, std::size_t segment)
{
    return chain.segType(static_cast<unsigned>(segment)) == CVexGePolyline2d::kLine;
}

constexpr auto isHitOfBoth = [](const auto& a, const auto& b, const CVexGePoint2d& hit) {
    return isBetweenEnds(a, hit) && isBetweenEnds(b, hit);
};

/// Finds what the segments of a chain hit on the chain itself.
class SelfHitFinder {
public:
    explicit SelfHitFinder(const CVexGePolyline2d& chain)
        : m_chain(chain), m_index(chain), m_segments(chain)
    {
    }
    [[nodiscard]] std::size_t size() const { return m_index.size(); }

    /// Appends the hits of segment `i`, but for its joints with neighbouring lines: those are
    /// vertices, which are no cuts.
    void find(std::size_t i, std::vector<SelfHit>& hits)
    {
        const auto own = static_cast<unsigned>(i);
        m_segments.at(own, [&](const auto& segment) {
            gather(i, segment, false);
            if (m_points.size() > 1) {
                // Of two that are visibly one the first stays; what counts as the next one in the
                // list depends on the joints, too.
                gather(i, segment, true);
                m_chain.CheckSameIntPoints(m_points);
            }
            for (const CVexGePoint2d& hit : m_points) {
                const double along = alongSegment(segment, m_chain.getBulgeAt(own), hit);
                hits.push_back({own, along, hit, 0.0});
            }
            return false;
        });
    }

private:
    /// As isBetweenEnds(); a look at the vertices spares nearly all hits, which are joints, the
    /// search for their angle.
    [[nodiscard]] bool isOn(std::size_t i, const auto& segment, const CVexGePoint2d& hit) const
    {
        const auto& points = m_chain.vertices();
        return hit.isEqualTo(points[i], kGeTol) || hit.isEqualTo(points[i + 1], kGeTol) ||
               isBetweenEnds(segment, hit);
    }
    void gather(std::size_t i, const auto& segment, bool withJoints)
    {
        m_points.clear();
        const VexGeBox reach = m_index.box(i).grownBy(2.0 * kGeEpsilon + m_index.rounding());
        m_index.search(reach, [&](std::size_t k) {
            const bool neighbours = i + 1 == k || k + 1 == i;
            const bool isJoint = neighbours && isLine(m_chain, i) && isLine(m_chain, k);
            if (!withJoints && (i == k || isJoint)) {
                return false;
            }
            return m_segments.at(static_cast<unsigned>(k), [&](const auto& receiver) {
                for (const CVexGePoint2d& hit :
                     hitsOf(receiver, segment, CVexGeEntity2d::kExtendNone, kGeEpsilon)) {
                    if (isOn(i, segment, hit) && isOn(k, receiver, hit)) {
                        m_points.push_back(hit);
                    }
                }
                return false;
            });
        });
    }

    const CVexGePolyline2d& m_chain;
    const VexGeSegmentIndex m_index;
    const VexGeSegmentCache m_segments;
    std::vector<CVexGePoint2d> m_points; // kept, so that a segment does not allocate
};

/// The hits of a chain with itself by parameter, as its own intersection gives them.
std::vector<SelfHit> selfCrossings(const CVexGePolyline2d& chain)
{
    SelfHitFinder finder(chain);
    std::vector<SelfHit> hits;
    for (std::size_t i = 0; i < finder.size(); ++i) {
        finder.find(i, hits);
    }
    if (!hits.empty()) {
        const VexGeRunningLengths lengths(chain);
        for (SelfHit& hit : hits) {
            hit.param = lengths.key(hit.segment, hit.along);
        }
    }
    // As in a map: of hits with one parameter the first stays.
    const auto lower = [](const SelfHit& a, const SelfHit& b) { return a.param < b.param; };
    if (!std::is_sorted(hits.begin(), hits.end(), lower)) {
        std::stable_sort(hits.begin(), hits.end(), lower);
    }
    const auto same = [](const SelfHit& a, const SelfHit& b) { return a.param == b.param; };
    hits.erase(std::unique(hits.begin(), hits.end(), same), hits.end());
    return hits;
}

} // namespace

int CVexGePolyline2d::clipOffsetPoly(const std::vector<CVexGePoint2d>& points,
                                     const std::vector<double>& bulges,
                                     const std::vector<CVexGePoint2d>& otherPoints,
                                     const std::vector<double>& otherBulges, double dist,
                                     PolylineList& out) const
{
    return VexGeOffsetClipper(*this, dist)
        .clip(polylineOf(points, bulges), polylineOf(otherPoints, otherBulges), out);
}

int VexGeOffsetClipper::clip(CVexGePolyline2d chain, const CVexGePolyline2d& other,
                             PolylineList& out)
{
    m_budget += kStepsPerSegment * chain.numVerts();
    const CutMap cuts = whereToCut(chain, other);
    if (cuts.empty()) {
        m_candidates.push_back(std::move(chain));
    } else {
        sortPieces(cutAt(chain, cuts));
        trimAtContacts();
    }
    trimNearApproaches(out);
    return static_cast<int>(out.size());
}

VexGeOffsetClipper::CutMap VexGeOffsetClipper::whereToCut(const CVexGePolyline2d& chain,
                                                          const CVexGePolyline2d& other) const
{
    CutMap cuts;
    const VexGeRunningLengths lengths(chain);
    const auto take = [&](unsigned i, const auto& segment, const std::vector<CVexGePoint2d>& hits) {
        for (const CVexGePoint2d& hit : hits) {
            const double along = alongSegment(segment, chain.getBulgeAt(i), hit);
            cuts.emplace(lengths.key(i, along), hit);
        }
    };
    eachHitList(chain, other, CVexGeEntity2d::kExtendNone, kGeEpsilon, take, isHitOfBoth);
    std::optional<VertexIndex> vertices;
    for (const SelfHit& hit : selfCrossings(chain)) {
        const auto& points = chain.vertices();
        if (hit.point.isEqualTo(points[hit.segment], kOffsetVertexTol) ||
            hit.point.isEqualTo(points[hit.segment + 1], kOffsetVertexTol)) {
            continue; // a joint, as nearly all are
        }
        if (!vertices) {
            vertices.emplace(chain);
        }
        if (!vertices->hasNear(hit.point, kOffsetVertexTol)) {
            cuts.emplace(hit.param, hit.point);
        }
    }
    return cuts;
}

std::vector<CVexGePolyline2d> VexGeOffsetClipper::cutAt(const CVexGePolyline2d& chain,
                                                        const CutMap& cuts)
{
    const std::vector<double> params = vertexParams(chain);
    const auto& vertices = chain.vertices();
    std::vector<CVexGePolyline2d> pieces;
    CVexGePolyline2d piece;
    unsigned next = 0; // the first vertex that is not in a piece yet
    for (const auto& [param, cut] : cuts) {
        for (; next < vertices.size() && params[next] < param; ++next) {
            piece.appendVertex(vertices[next], chain.getBulgeAt(next));
        }
        VexGeSplitBulge parts;
        if (piece.numVerts() > 0) {
            const unsigned last = piece.numVerts() - 1;
            if (next < vertices.size()) {
                // The piece's last vertex may itself be a cut: then its bulge is what was left.
                parts =
                    splitBulge(piece.vertices()[last], vertices[next], piece.getBulgeAt(last), cut);
            }
            piece.setBulgeAt(last, parts.before);
        }
        piece.appendVertex(cut);
        pieces.push_back(std::move(piece));
        piece = CVexGePolyline2d();
        piece.appendVertex(cut, parts.after);
    }
    for (; next < vertices.size(); ++next) {
        piece.appendVertex(vertices[next], chain.getBulgeAt(next));
    }
    pieces.push_back(std::move(piece));
    return pieces;
}

void VexGeOffsetClipper::sortPieces(std::vector<CVexGePolyline2d> pieces)
{
    for (CVexGePolyline2d& piece : pieces) {
        if (piece.numVerts() < 2) {
            continue;
        }
        if (!contact(piece, 0)) {
            m_candidates.push_back(std::move(piece));
        } else if (liesOnSource(piece)) {
            m_touching.push_back(std::move(piece));
        }
    }
}

std::optional<CVexGePoint2d> VexGeOffsetClipper::contact(const CVexGePolyline2d& chain,
                                                         std::size_t first) const
{
    std::optional<CVexGePoint2d> found;
    for (std::size_t i = first; i < chain.numVerts() && !found; ++i) {
        const auto index = static_cast<unsigned>(i);
        const VexGeBox reach = segmentBox(chain, index).grownBy(2.0 * kGeEpsilon);
        Walk::at(chain, index, [&](const auto& segment) {
            return m_sourceIndex.search(reach, [&](std::size_t s) {
                return m_sourceSegments.at(static_cast<unsigned>(s), [&](const auto& receiver) {
                    for (const CVexGePoint2d& hit :
                         hitsOf(receiver, segment, CVexGeEntity2d::kExtendNone, kGeEpsilon)) {
                        if (!found && isHitOfBoth(segment, receiver, hit)) {
                            found = hit;
                        }
                    }
                    return found.has_value();
                });
            });
        });
    }
    return found;
}

bool VexGeOffsetClipper::liesOnSource(const CVexGePolyline2d& chain) const
{
    return std::all_of(
        chain.vertices().begin(), chain.vertices().end(),
        [&](const CVexGePoint2d& vertex) { return m_source.isOn(vertex, kGeEpsilon) != 0; });
}
