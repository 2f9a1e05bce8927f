#include "vexge/geentity2d/vexgepolyline2d_hits.h"
#include "vexge/geentity2d/vexgepolyline2d_offset_clip.h"
#include "vexge/geentity2d/vexgepolyline2d_offset_near.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

using Walk = CVexGePolylineWalk;

/// Hits of a circle nearer together than this, in the parameter of a touching piece, are one.
constexpr double kOneHitParam = 0.001;
/// The tolerance for the arc's part in finding the source point next to a vertex.
constexpr double kNearVertexTol = 0.001;
// Parameters that stand for "before the start" and "beyond the end" of a piece.
constexpr double kBeforeStart = -1.0;
constexpr double kBeyondEndAtContact = 1.1;
constexpr double kBeyondEnd = 1.0000001;

/// False when the piece begins at `hit` already: nothing more can be taken off it.
bool removeHead(VexGeOffsetPiece& piece, const VexGePieceHit& hit)
{
    if (!(hit.run > piece.runAt(piece.first()))) {
        return false;
    }
    piece.removeHead(hit);
    return true;
}

} // namespace

VexGeOffsetPiece::VexGeOffsetPiece(CVexGePolyline2d chain)
    : m_chain(std::move(chain)), m_upTo(VexGeRunningLengths(m_chain).upTo)
{
}

VexGePieceHit VexGeOffsetPiece::at(std::size_t i, const CVexGePoint2d& point) const
{
    double run = m_upTo[i];
    const auto index = static_cast<unsigned>(i);
    Walk::at(m_chain, index, [&](const auto& segment) {
        run += alongSegment(segment, m_chain.getBulgeAt(index), point);
        return true;
    });
    return {run, i, point};
}

std::optional<VexGeOffsetPiece::Span> VexGeOffsetPiece::hitsWith(const CVexGeCircArc2d& circle)
{
    if (!m_index) {
        m_index.emplace(m_chain);
    }
    const CVexGePoint2d& centre = circle.center();
    const VexGeBox reach =
        VexGeBox{centre.x, centre.y, centre.x, centre.y}.grownBy(circle.radius() + kGeTol);
    std::optional<Span> span;
    m_index->search(reach, m_first, [&](std::size_t i) {
        Walk::at(m_chain, static_cast<unsigned>(i), [&](const auto& segment) {
            for (const CVexGePoint2d& point :
                 hitsOf(segment, circle, CVexGeEntity2d::kExtendNone, kGeEpsilon)) {
                if (!isBetweenEnds(segment, point)) {
                    continue;
                }
                const VexGePieceHit hit = at(i, point);
                if (!span) {
                    span = Span{hit, hit};
                } else if (hit.run < span->low.run) {
                    span->low = hit;
                } else if (hit.run > span->high.run) {
                    span->high = hit;
                }
            }
            return true;
        });
        return false;
    });
    return span;
}

CVexGePolyline2d VexGeOffsetPiece::head(const VexGePieceHit& hit) const
{
    CVexGePolyline2d result;
    result.setSize(static_cast<unsigned>(hit.segment - m_first + 2));
    for (std::size_t i = m_first; i < hit.segment; ++i) {
        result.appendVertex(vertex(i), m_chain.bulges()[i]);
    }
    const double bulge = m_chain.bulges()[hit.segment];
    const CVexGePoint2d& from = vertex(hit.segment);
    result.appendVertex(from, splitBulge(from, vertex(hit.segment + 1), bulge, hit.point).before);
    result.appendVertex(hit.point);
    return result;
}

void VexGeOffsetPiece::removeHead(const VexGePieceHit& hit)
{
    const auto index = static_cast<unsigned>(hit.segment);
    const double bulge = m_chain.getBulgeAt(index);
    m_chain.setBulgeAt(index, splitBulge(vertex(index), vertex(index + 1), bulge, hit.point).after);
    m_chain.setPointAt(index, hit.point);
    m_upTo[index] = hit.run;
    m_first = index;
}

CVexGePolyline2d VexGeOffsetPiece::take()
{
    if (m_first > 0) {
        m_chain.removeVertexAt(0, static_cast<int>(m_first) - 1);
    }
    return std::move(m_chain);
}

void VexGeOffsetClipper::trimAtContacts()
{
    for (; !m_touching.empty(); m_touching.pop_front()) {
        VexGeOffsetPiece piece(std::move(m_touching.front()));
        bool kept = true;
        while (kept && piece.numVerts() > 1) {
            const auto point = contact(piece.chain(), piece.first());
            if (!point) {
                m_candidates.push_back(piece.take());
                break;
            }
            kept = spendStep() && trimAtContact(piece, *point);
        }
    }
}

bool VexGeOffsetClipper::keepsDistance(const CVexGePoint2d& end, const CVexGePoint2d& cut) const
{
    const CVexGePoint2d nearest = m_source.closestPointTo(end, kGeEpsilon);
    return m_dist + kOffsetClipTol < nearest.distanceTo(end) ||
           m_dist + kOffsetClipTol < nearest.distanceTo(cut);
}

bool VexGeOffsetClipper::trimAtContact(VexGeOffsetPiece& piece, const CVexGePoint2d& contactPoint)
{
    const CVexGeCircArc2d circle(contactPoint, m_dist);
    const auto span = piece.hitsWith(circle);
    if (!span) {
        return false;
    }
    double low = piece.param(span->low.run);
    double high = piece.param(span->high.run);
    const bool oneHit = std::fabs(low - high) < kOneHitParam;
    const bool nearEnds = low <= kOffsetClipTol && 1.0 - high <= kOffsetClipTol;
    if (nearEnds || (oneHit && (low <= kOffsetClipTol || 1.0 - high <= kOffsetClipTol))) {
        return false;
    }
    if (oneHit) {
        (circle.isInside(piece.startPoint(), kGeEpsilon) ? low : high) =
            circle.isInside(piece.startPoint(), kGeEpsilon) ? kBeforeStart : kBeyondEndAtContact;
    }
    if (low > kOffsetClipTol) {
        if (!keepsDistance(piece.startPoint(), span->low.point)) {
            return false;
        }
        m_touching.push_back(piece.head(span->low));
        if (high > 1.0) {
            return false;
        }
    }
    if (1.0 - high > kOffsetClipTol) {
        if (!keepsDistance(piece.endPoint(), span->high.point)) {
            return false;
        }
        return removeHead(piece, span->high);
    }
    return false;
}

void VexGeOffsetClipper::trimNearApproaches(PolylineList& out)
{
    for (; !m_candidates.empty(); m_candidates.pop_front()) {
        VexGeOffsetPiece piece(std::move(m_candidates.front()));
        bool kept = true;
        while (kept && piece.numVerts() > 1) {
            const auto near = firstNear(piece);
            if (!near) {
                out.push_back(std::make_unique<CVexGePolyline2d>(piece.take()));
                break;
            }
            kept = spendStep() && trimAtNear(piece, *near);
        }
    }
}

std::optional<CVexGePoint2d> VexGeOffsetClipper::nearVertex(const CVexGePoint2d& vertex,
                                                            unsigned sourceSegment) const
{
    const double limit = m_dist - kOffsetClipTol;
    std::optional<CVexGePoint2d> near;
    m_sourceSegments.at(sourceSegment, [&](const auto& segment) {
        if (surelyApart(segment, vertex, limit) || tooShort(segment)) {
            return false;
        }
        CVexGePoint2d foot = segment.closestPointTo(vertex, kNearVertexTol);
        if (foot.distanceTo(vertex) < limit) {
            foot = heldWithin(segment, foot);
            if (foot.distanceTo(vertex) < limit) {
                near = foot;
            }
        }
        return true;
    });
    return near;
}

std::optional<CVexGePoint2d> VexGeOffsetClipper::nearSegment(const VexGeOffsetPiece& piece,
                                                             unsigned index) const
{
    const double limit = m_dist - kOffsetClipTol;
    std::optional<CVexGePoint2d> near;
    double lowest = 0.0;
    const auto offer = [&](const CVexGePoint2d& here, const CVexGePoint2d& there) {
        if (!(here.distanceTo(there) < limit)) {
            return;
        }
        const double run = piece.at(index, here).run;
        if (!near || run < lowest) {
            lowest = run;
            near = there;
        }
    };
    Walk::at(piece.chain(), index, [&](const auto& own) {
        if (tooShort(own)) {
            return false;
        }
        for (const unsigned s : m_near) {
            m_sourceSegments.at(s, [&](const auto& segment) {
                if (!surelyApart(own, segment, limit) && !tooShort(segment)) {
                    CVexGePoint2d there;
                    const CVexGePoint2d here = closestOfPair(own, segment, there);
                    if (here.distanceTo(there) < limit) {
                        const CVexGePoint2d held = heldToEnds(own, segment, here, there);
                        offer(held, there);
                    }
                }
                return false;
            });
        }
        return true;
    });
    return near;
}

std::optional<CVexGePoint2d> VexGeOffsetClipper::firstNear(const VexGeOffsetPiece& piece)
{
    // In the order of the parameter: a vertex comes before what lies on its segment. The last
    // vertex has no segment of its own, but a box at its place.
    const double limit = m_dist - kOffsetClipTol;
    std::optional<CVexGePoint2d> near;
    for (std::size_t i = piece.first(); i < piece.end() && !near; ++i) {
        const auto index = static_cast<unsigned>(i);
        const CVexGePoint2d& vertex = piece.vertex(i);
        VexGeBox box{vertex.x, vertex.y, vertex.x, vertex.y};
        if (i + 1 < piece.end()) {
            box.include(segmentBox(piece.chain(), index));
        }
        m_near.clear();
        m_sourceIndex.searchNear(box, limit + kBoundSlack, [&](std::size_t s) {
            m_near.push_back(static_cast<unsigned>(s));
            near = nearVertex(vertex, m_near.back());
            return near.has_value();
        });
        if (!near) {
            near = nearSegment(piece, index);
        }
    }
    return near;
}

bool VexGeOffsetClipper::trimAtNear(VexGeOffsetPiece& piece, const CVexGePoint2d& sourcePoint)
{
    const CVexGeCircArc2d circle(sourcePoint, m_dist);
    const auto span = piece.hitsWith(circle);
    if (!span) {
        return false;
    }
    double low = piece.param(span->low.run);
    double high = piece.param(span->high.run);
    if (std::fabs(low - high) < kOffsetClipTol) {
        const bool startInside = circle.isInside(piece.startPoint(), kGeEpsilon);
        if (low <= kOffsetClipTol) {
            if (circle.isInside(piece.endPoint(), kGeEpsilon)) {
                return false;
            }
        } else if (1.0 - high <= kOffsetClipTol) {
            if (startInside) {
                return false;
            }
        } else if (startInside) {
            low = kBeforeStart;
        } else {
            high = kBeyondEnd;
        }
    } else if (low <= kOffsetClipTol && 1.0 - high <= kOffsetClipTol) {
        return false;
    }
    const bool hasTail = 1.0 - high > kOffsetClipTol;
    if (low > kOffsetClipTol) {
        CVexGePolyline2d head = piece.head(span->low);
        if (head.length() > kOffsetClipTol) {
            m_candidates.push_back(std::move(head));
        }
    }
    return hasTail && removeHead(piece, span->high);
}
