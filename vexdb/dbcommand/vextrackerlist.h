#pragma once

#include "platform/base/vexexport.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

class CVexDbEntity;
class CVexDbEntityTracker;

/// The grip trackers of the selection in the order in which they came. A selection may be large and
/// its entities may leave it one by one, so a tracker is found by its entity at once and leaves a
/// gap, and the gaps are closed when the list is looked at. It owns nothing.
class VEXDB_EXPORT VexTrackerList {
public:
    void add(CVexDbEntityTracker& tracker);
    /// Takes out the tracker of `entity`, of several the one that came first; null without one.
    CVexDbEntityTracker* takeOf(const CVexDbEntity* entity);
    /// Takes a tracker out by its address alone: it may be gone already. False when it is not here.
    bool take(const CVexDbEntityTracker* tracker);
    /// Takes all of them out.
    std::vector<CVexDbEntityTracker*> takeAll();
    /// Valid until the next change.
    [[nodiscard]] const std::vector<CVexDbEntityTracker*>& all() const;
    [[nodiscard]] bool empty() const { return m_trackers.size() == m_gaps; }

private:
    void closeGaps() const;
    [[nodiscard]] bool holds(std::size_t place, const CVexDbEntity* entity) const;

    // Closing the gaps changes nothing that can be seen.
    mutable std::vector<CVexDbEntityTracker*> m_trackers; // null: a gap
    mutable std::unordered_multimap<const CVexDbEntity*, std::size_t> m_places;
    mutable std::size_t m_gaps = 0;
};
