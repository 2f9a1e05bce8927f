#include "vexge/geentity2d/vexgepolyline2d_index.h"

#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgepolyline2d_walk.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

namespace {

constexpr double kFar = std::numeric_limits<double>::infinity();
/// Apart from every box: its sides are the wrong way round.
constexpr VexGeBox kNowhere{kFar, kFar, -kFar, -kFar};
/// Of a segment whose coordinates make no sense: nothing is ruled out by them.
constexpr VexGeBox kEverywhere{-kFar, -kFar, kFar, kFar};
/// What coordinates of a hit may be off by, as a share of their size.
constexpr double kRounding = 1e-12;

VexGeBox boxOf(const CVexGePoint2d& a, const CVexGePoint2d& b)
{
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

/// Both coordinates of a point at once: a minimum or maximum of the two is one instruction.
using Pair [[gnu::vector_size(2 * sizeof(double))]] = double;

/// The box of the points from `point` to `end` exclusive, of which there is at least one. One that
/// is not a number is passed over, unless it is the first: then nothing is ruled out.
VexGeBox boxOfPoints(const CVexGePoint2d* point, const CVexGePoint2d* end)
{
    Pair low{point->x, point->y};
    Pair high = low;
    while (++point != end) {
        const Pair here{point->x, point->y};
        low = here < low ? here : low;
        high = high < here ? here : high;
    }
    return {low[0], low[1], high[0], high[1]};
}

/// The box of an arc with 0.001 radians beyond each end, and 0.001 around: ends that near are the
/// same to arcs that touch. An arc may sweep the whole circle before it reaches its sides, so the
/// bulge tells how far it leaves the chord and, beyond a half circle, the circle's box is taken.
VexGeBox arcBox(const CVexGePoint2d& a, const CVexGePoint2d& b, double bulge)
{
    const CVexGeVector2d chord = b - a;
    const double length = chord.length();
    const double radius = length * (1.0 + bulge * bulge) / (4.0 * std::fabs(bulge));
    const double slack = kGeTol + 1.1 * kGeAngleTol * radius;
    if (std::fabs(bulge) > 1.0) {
        const CVexGePoint2d centre =
            a + chord * 0.5 + chord.perpVector() * ((1.0 - bulge * bulge) / (4.0 * bulge));
        return boxOf(centre, centre).grownBy(radius + slack);
    }
    const CVexGeVector2d rise = chord.perpVector() * (-bulge / 2.0);
    VexGeBox box = boxOf(a, b);
    box.include(boxOf(a + rise, b + rise)); // the arc lies in the rectangle on its chord
    return box.grownBy(slack);
}

} // namespace

bool isStraight(const std::vector<double>& bulges)
{
    // Nearly all chains have bulges of plain zero; without an early end the loops run on several
    // at a time.
    std::uint64_t bits = 0;
    for (const double bulge : bulges) {
        bits |= std::bit_cast<std::uint64_t>(bulge);
    }
    if (bits == 0) {
        return true;
    }
    std::int64_t bent = 0;
    for (const double bulge : bulges) {
        bent |= std::fabs(bulge) <= kGeStraightBulge ? 0 : 1;
    }
    return bent == 0;
}

VexGeBox segmentBox(const CVexGePolyline2d& chain, unsigned index)
{
    const CVexGePolyline2d::SegType kind = chain.segType(index);
    if (kind != CVexGePolyline2d::kLine && kind != CVexGePolyline2d::kArc) {
        return kNowhere;
    }
    const auto& vertices = chain.vertices();
    const CVexGePoint2d& start = vertices[index];
    const CVexGePoint2d& end = index + 1 < vertices.size() ? vertices[index + 1] : vertices[0];
    const VexGeBox box = kind == CVexGePolyline2d::kLine
                             ? boxOf(start, end)
                             : arcBox(start, end, chain.getBulgeAt(index));
    if (!(box.left <= box.right && box.bottom <= box.top)) {
        return kEverywhere;
    }
    const double size = std::max(std::max(std::fabs(box.left), std::fabs(box.right)),
                                 std::max(std::fabs(box.bottom), std::fabs(box.top)));
    return box.grownBy(size * kRounding);
}

VexGeSegmentIndex::VexGeSegmentIndex(const CVexGePolyline2d& chain)
    : m_vertices(chain.numVerts()), m_leaves(chain.numVerts())
{
    if (m_leaves > 0 && !chain.isClosed()) {
        --m_leaves; // the last vertex of an open chain starts no segment
    }
    if (isStraight(chain.bulges())) {
        m_points = chain.vertices().data();
    } else {
        m_leafBoxes.reserve(m_leaves);
        for (unsigned i = 0; i < m_leaves; ++i) {
            m_leafBoxes.push_back(segmentBox(chain, i));
        }
    }
    build();
}

VexGeSegmentIndex::VexGeSegmentIndex(std::vector<VexGeBox> boxes)
    : m_leaves(boxes.size()), m_leafBoxes(std::move(boxes))
{
    build();
}

VexGeBox VexGeSegmentIndex::boxOf(std::size_t from, std::size_t to) const
{
    if (m_points == nullptr) {
        VexGeBox all = m_leafBoxes[from];
        for (std::size_t i = from + 1; i < to; ++i) {
            all.include(m_leafBoxes[i]);
        }
        return all;
    }
    // A vertex that is not a number may be passed over: its segments have no hits.
    const std::size_t last = std::min(to, m_vertices - 1);
    VexGeBox all = boxOfPoints(m_points + from, m_points + last + 1);
    if (last < to) {
        all.include(box(to - 1)); // the closing segment
    }
    return all;
}

void VexGeSegmentIndex::build()
{
    if (m_leaves == 0) {
        return;
    }
    VexGeBox all;
    if (m_leaves <= kTreeFrom) {
        all = boxOf(0, m_leaves);
    } else {
        m_nodes.reserve(m_leaves / (kFan - 1) + kMostLevels);
        std::size_t below = m_leaves;
        for (std::size_t start = 0; m_levelCount == 0 || below > kFan;) {
            const Level level{m_nodes.size(), (below + kFan - 1) / kFan,
                              m_levelCount == 0 ? kFan : m_levels[m_levelCount - 1].span * kFan};
            for (std::size_t from = 0; from < below; from += kFan) {
                const std::size_t to = std::min(from + kFan, below);
                VexGeBox node = m_levelCount == 0 ? boxOf(from, to) : m_nodes[start + from];
                for (std::size_t i = from + 1; m_levelCount > 0 && i < to; ++i) {
                    node.include(m_nodes[start + i]);
                }
                m_nodes.push_back(node);
            }
            start = level.offset;
            below = level.count;
            m_levels[m_levelCount++] = level;
        }
        const Level& top = m_levels[m_levelCount - 1];
        all = m_nodes[top.offset];
        for (std::size_t i = 1; i < top.count; ++i) {
            all.include(m_nodes[top.offset + i]);
        }
    }
    m_rounding = kRounding * std::max(std::max(std::fabs(all.left), std::fabs(all.right)),
                                      std::max(std::fabs(all.bottom), std::fabs(all.top)));
}
