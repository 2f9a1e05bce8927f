#include "vexge/geentity2d/vexgepolyline2d_index.h"

#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgepolyline2d_walk.h"

#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr double kFar = std::numeric_limits<double>::infinity();
/// Apart from every box: its sides are the wrong way round.
constexpr VexGeBox kNowhere{kFar, kFar, -kFar, -kFar};
/// What coordinates of a hit may be off by, as a share of their size.
constexpr double kRounding = 1e-12;

VexGeBox boxOf(const CVexGePoint2d& a, const CVexGePoint2d& b)
{
    VexGeBox box{a.x, a.y, a.x, a.y};
    box.include({b.x, b.y, b.x, b.y});
    return box;
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

void VexGeBox::include(const VexGeBox& other)
{
    // A NaN stays: it must win over every number.
    const auto lower = [](double a, double b) { return a < b || a != a ? a : b; };
    const auto upper = [](double a, double b) { return a > b || a != a ? a : b; };
    left = lower(left, other.left);
    bottom = lower(bottom, other.bottom);
    right = upper(right, other.right);
    top = upper(top, other.top);
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
    const double size = std::max(std::max(std::fabs(box.left), std::fabs(box.right)),
                                 std::max(std::fabs(box.bottom), std::fabs(box.top)));
    return box.grownBy(size * kRounding);
}

VexGeSegmentIndex::VexGeSegmentIndex(const CVexGePolyline2d& chain) : m_leaves(chain.numVerts())
{
    m_boxes.reserve(m_leaves + m_leaves / (kFan - 1) + 4);
    for (unsigned i = 0; i < m_leaves; ++i) {
        m_boxes.push_back(segmentBox(chain, i));
    }
    addLevels();
}

VexGeSegmentIndex::VexGeSegmentIndex(std::vector<VexGeBox> boxes)
    : m_boxes(std::move(boxes)), m_leaves(m_boxes.size())
{
    addLevels();
}

void VexGeSegmentIndex::addLevels()
{
    if (m_leaves <= kTreeFrom) {
        return;
    }
    m_levels.push_back({0, m_leaves, 1});
    while (m_levels.back().count > kFan) {
        const Level below = m_levels.back();
        const Level level{m_boxes.size(), (below.count + kFan - 1) / kFan, below.span * kFan};
        for (std::size_t i = 0; i < level.count; ++i) {
            VexGeBox box = kNowhere;
            const std::size_t end = std::min((i + 1) * kFan, below.count);
            for (std::size_t k = i * kFan; k < end; ++k) {
                box.include(m_boxes[below.offset + k]);
            }
            m_boxes.push_back(box);
        }
        m_levels.push_back(level);
    }
}
