#pragma once

#include "vexge/gemath/vexgepoint2d.h"

#include <algorithm>
#include <cstddef>
#include <vector>

class CVexGePolyline2d;

/// A box whose sides stand at the coordinates. One with a NaN side overlaps every other, so that
/// nothing is ruled out by a coordinate that makes no sense.
struct VexGeBox {
    double left = 0.0;
    double bottom = 0.0;
    double right = 0.0;
    double top = 0.0;

    [[nodiscard]] bool apartFrom(const VexGeBox& other) const
    {
        return right < other.left || other.right < left || top < other.bottom || other.top < bottom;
    }
    [[nodiscard]] VexGeBox grownBy(double by) const
    {
        return {left - by, bottom - by, right + by, top + by};
    }
    void include(const VexGeBox& other);
};

/// The boxes of the segments of a chain, in the chain's order, under a tree of boxes over runs of
/// neighbours. Segments that follow each other lie near each other, so nothing is sorted, and
/// candidates come in the order of the segments.
///
/// A segment's box holds all that its own intersections and closest points may answer with: an arc
/// forgives 0.001 radians beyond its ends.
class VexGeSegmentIndex {
public:
    explicit VexGeSegmentIndex(const CVexGePolyline2d& chain);
    /// The same over any boxes, found by their place in the list.
    explicit VexGeSegmentIndex(std::vector<VexGeBox> boxes);

    [[nodiscard]] const VexGeBox& box(std::size_t segment) const { return m_boxes[segment]; }
    /// Segments, those without a line or arc included (their boxes are apart from all others).
    [[nodiscard]] std::size_t size() const { return m_leaves; }

    /// Calls `visit(segment)` in rising order from `first` for each whose box is not apart from
    /// `box`, until it answers true; whether it did.
    template <class Visit>
    bool search(const VexGeBox& box, std::size_t first, const Visit& visit) const
    {
        if (m_levels.empty()) {
            for (std::size_t i = first; i < m_leaves; ++i) {
                if (!m_boxes[i].apartFrom(box) && visit(i)) {
                    return true;
                }
            }
            return false;
        }
        return searchLevel(m_levels.size() - 1, 0, m_levels.back().count, box, first, visit);
    }
    template <class Visit>
    bool search(const VexGeBox& box, const Visit& visit) const
    {
        return search(box, 0, visit);
    }

private:
    static constexpr std::size_t kFan = 8;
    /// Below this many segments a look at each box is as fast as a tree.
    static constexpr std::size_t kTreeFrom = 50;

    struct Level {
        std::size_t offset = 0; // of its boxes in m_boxes
        std::size_t count = 0;
        std::size_t span = 1; // leaves under a full node
    };

    void addLevels();

    template <class Visit>
    bool searchLevel(std::size_t level, std::size_t from, std::size_t to, const VexGeBox& box,
                     std::size_t first, const Visit& visit) const
    {
        const Level& here = m_levels[level];
        for (std::size_t i = from; i < to; ++i) {
            if ((i + 1) * here.span <= first || m_boxes[here.offset + i].apartFrom(box)) {
                continue;
            }
            if (level == 0) {
                if (visit(i)) {
                    return true;
                }
                continue;
            }
            const std::size_t end = std::min((i + 1) * kFan, m_levels[level - 1].count);
            if (searchLevel(level - 1, i * kFan, end, box, first, visit)) {
                return true;
            }
        }
        return false;
    }

    std::vector<VexGeBox> m_boxes; // level 0, then the levels above it
    std::vector<Level> m_levels;   // empty when there is no tree
    std::size_t m_leaves = 0;
};

/// The box of one segment as described above.
VexGeBox segmentBox(const CVexGePolyline2d& chain, unsigned index);
