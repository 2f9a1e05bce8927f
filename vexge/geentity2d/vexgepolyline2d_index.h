#pragma once

#include "vexge/gemath/vexgepoint2d.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

class CVexGePolyline2d;

/// A box whose sides stand at the coordinates.
struct VexGeBox {
    double left = 0.0;
    double bottom = 0.0;
    double right = 0.0;
    double top = 0.0;

    [[nodiscard]] bool apartFrom(const VexGeBox& other) const
    {
        return right < other.left || other.right < left || top < other.bottom || other.top < bottom;
    }
    /// The square of the distance between the two; 0 when they meet.
    [[nodiscard]] double gapSqrd(const VexGeBox& other) const
    {
        const double dx = std::max(std::max(other.left - right, left - other.right), 0.0);
        const double dy = std::max(std::max(other.bottom - top, bottom - other.top), 0.0);
        return dx * dx + dy * dy;
    }
    [[nodiscard]] VexGeBox grownBy(double by) const
    {
        return {left - by, bottom - by, right + by, top + by};
    }
    void include(const VexGeBox& other)
    {
        left = std::min(left, other.left);
        bottom = std::min(bottom, other.bottom);
        right = std::max(right, other.right);
        top = std::max(top, other.top);
    }
};

/// The segments of a chain by their boxes, in the chain's order, under a tree of boxes over runs of
/// neighbours. Segments that follow each other lie near each other, so nothing is sorted, and
/// candidates come in the order of the segments. It looks into the chain, which has to outlive it.
///
/// A segment's box holds all that its own intersections and closest points may answer with: an arc
/// forgives 0.001 radians beyond its ends. The boxes of straight segments are read off the vertices
/// as they are wanted; a rounding error is given to the box that is searched for.
class VexGeSegmentIndex {
public:
    explicit VexGeSegmentIndex(const CVexGePolyline2d& chain);
    /// The same over any boxes, found by their place in the list.
    explicit VexGeSegmentIndex(std::vector<VexGeBox> boxes);

    /// Segments, those without a line or arc included.
    [[nodiscard]] std::size_t size() const { return m_leaves; }
    /// The box of one segment, without what rounding may add.
    [[nodiscard]] VexGeBox box(std::size_t segment) const
    {
        if (m_points == nullptr) {
            return m_leafBoxes[segment];
        }
        const CVexGePoint2d& a = m_points[segment];
        const CVexGePoint2d& b = m_points[segment + 1 < m_vertices ? segment + 1 : 0];
        return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
    }
    /// The box of the segments from `from` to `to` exclusive, of which there is at least one.
    [[nodiscard]] VexGeBox boxOf(std::size_t from, std::size_t to) const;
    /// What rounding may move a hit out of a box.
    [[nodiscard]] double rounding() const { return m_rounding; }

    /// Calls `visit(segment)` in rising order from `first` for each whose box is not apart from
    /// `box`, until it answers true; whether it did.
    template <class Visit>
    bool search(const VexGeBox& box, std::size_t first, const Visit& visit) const
    {
        const VexGeBox reach = box.grownBy(m_rounding);
        return searchIf([&](const VexGeBox& other) { return !other.apartFrom(reach); }, first,
                        visit);
    }
    template <class Visit>
    bool search(const VexGeBox& box, const Visit& visit) const
    {
        return search(box, 0, visit);
    }
    /// The same for each whose box is not farther than `distance` from `box`.
    template <class Visit>
    bool searchNear(const VexGeBox& box, double distance, const Visit& visit) const
    {
        const double most = distance + 2.0 * m_rounding;
        return searchIf([&](const VexGeBox& other) { return !(other.gapSqrd(box) > most * most); },
                        0, visit);
    }
    /// Calls `visit(from, to)` in rising order for runs of segments that hold all those from
    /// `first` on for whose boxes `meets` is true, until it answers true; whether it did.
    template <class Meets, class Visit>
    bool searchRuns(const Meets& meets, std::size_t first, const Visit& visit) const
    {
        if (m_levelCount == 0) {
            return m_leaves > first && visit(std::size_t{0}, m_leaves);
        }
        const std::size_t top = m_levelCount - 1;
        return searchLevel(top, 0, m_levels[top].count, meets, first, visit);
    }
    /// Calls `visit(segment)` for those of a run whose box meets, as above.
    template <class Meets, class Visit>
    bool searchRun(const Meets& meets, std::size_t from, std::size_t to, const Visit& visit) const
    {
        for (std::size_t i = from; i < to; ++i) {
            if (meets(box(i)) && visit(i)) {
                return true;
            }
        }
        return false;
    }
    /// Walks down the tree: calls `visit(box, from, to)` in rising order for those runs of segments
    /// for which `enter(box)` is true with each box above their own.
    template <class Enter, class Visit>
    void descend(const Enter& enter, const Visit& visit) const
    {
        if (m_levelCount == 0) {
            if (m_leaves > 0) {
                visit(boxOf(0, m_leaves), std::size_t{0}, m_leaves);
            }
            return;
        }
        const std::size_t top = m_levelCount - 1;
        descendLevel(top, 0, m_levels[top].count, enter, visit);
    }

private:
    /// Boxes under one, and segments under the lowest.
    static constexpr std::size_t kFan = 8;
    /// Below this many segments a look at each box is as fast as a tree.
    static constexpr std::size_t kTreeFrom = 50;
    /// Levels enough for all segments that memory can hold.
    static constexpr std::size_t kMostLevels = 21;

    struct Level {
        std::size_t offset = 0; // of its boxes in m_nodes
        std::size_t count = 0;
        std::size_t span = kFan; // segments under a full node
    };

    void build();

    template <class Meets, class Visit>
    bool searchIf(const Meets& meets, std::size_t first, const Visit& visit) const
    {
        return searchRuns(meets, first, [&](std::size_t from, std::size_t to) {
            return searchRun(meets, std::max(from, first), to, visit);
        });
    }

    template <class Meets, class Visit>
    bool searchLevel(std::size_t level, std::size_t from, std::size_t to, const Meets& meets,
                     std::size_t first, const Visit& visit) const
    {
        const Level& here = m_levels[level];
        const std::size_t below = level == 0 ? m_leaves : m_levels[level - 1].count;
        for (std::size_t i = from; i < to; ++i) {
            if ((i + 1) * here.span <= first || !meets(m_nodes[here.offset + i])) {
                continue;
            }
            const std::size_t end = std::min((i + 1) * kFan, below);
            if (level == 0 ? visit(i * kFan, end)
                           : searchLevel(level - 1, i * kFan, end, meets, first, visit)) {
                return true;
            }
        }
        return false;
    }

    template <class Enter, class Visit>
    void descendLevel(std::size_t level, std::size_t from, std::size_t to, const Enter& enter,
                      const Visit& visit) const
    {
        const std::size_t below = level == 0 ? m_leaves : m_levels[level - 1].count;
        for (std::size_t i = from; i < to; ++i) {
            const VexGeBox& box = m_nodes[m_levels[level].offset + i];
            const std::size_t end = std::min((i + 1) * kFan, below);
            if (level == 0) {
                visit(box, i * kFan, end);
            } else if (enter(box)) {
                descendLevel(level - 1, i * kFan, end, enter, visit);
            }
        }
    }

    const CVexGePoint2d* m_points = nullptr; // of a chain of straight segments
    std::size_t m_vertices = 0;
    std::size_t m_leaves = 0;
    std::vector<VexGeBox> m_leafBoxes; // of any other
    std::vector<VexGeBox> m_nodes;     // the lowest level over the segments first
    std::array<Level, kMostLevels> m_levels;
    std::size_t m_levelCount = 0; // 0 when there is no tree
    double m_rounding = 0.0;
};

/// Whether none of the bulges bends a segment, in either direction.
bool isStraight(const std::vector<double>& bulges);

/// The box of one segment as described above, with a rounding error around.
VexGeBox segmentBox(const CVexGePolyline2d& chain, unsigned index);
