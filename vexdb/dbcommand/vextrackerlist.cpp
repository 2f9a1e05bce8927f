#include "vexdb/dbcommand/vextrackerlist.h"

#include "vexdb/dbtracker/vexdbentitytracker.h"

#include <algorithm>
#include <utility>

void VexTrackerList::add(CVexDbEntityTracker& tracker)
{
    m_places.emplace(tracker.GetEntity(), m_trackers.size());
    m_trackers.push_back(&tracker);
}

/// Whether the place is no gap and its tracker still has the entity that it came with.
bool VexTrackerList::holds(std::size_t place, const CVexDbEntity* entity) const
{
    return m_trackers[place] != nullptr && m_trackers[place]->GetEntity() == entity;
}

CVexDbEntityTracker* VexTrackerList::takeOf(const CVexDbEntity* entity)
{
    const auto [begin, end] = m_places.equal_range(entity);
    auto first = end;
    for (auto at = begin; at != end; ++at) {
        if (holds(at->second, entity) && (first == end || at->second < first->second)) {
            first = at;
        }
    }
    if (first == end) {
        return nullptr;
    }
    CVexDbEntityTracker* const tracker = std::exchange(m_trackers[first->second], nullptr);
    m_places.erase(first);
    ++m_gaps;
    return tracker;
}

bool VexTrackerList::take(const CVexDbEntityTracker* tracker)
{
    const auto found = std::ranges::find(m_trackers, tracker);
    if (tracker == nullptr || found == m_trackers.end()) {
        return false;
    }
    *found = nullptr; // its entry in m_places leads to a gap from here on
    ++m_gaps;
    return true;
}

std::vector<CVexDbEntityTracker*> VexTrackerList::takeAll()
{
    closeGaps();
    m_places.clear();
    return std::exchange(m_trackers, {});
}

const std::vector<CVexDbEntityTracker*>& VexTrackerList::all() const
{
    closeGaps();
    return m_trackers;
}

void VexTrackerList::closeGaps() const
{
    if (m_gaps == 0) {
        return;
    }
    std::erase(m_trackers, nullptr);
    m_gaps = 0;
    m_places.clear();
    for (std::size_t place = 0; place < m_trackers.size(); ++place) {
        m_places.emplace(m_trackers[place]->GetEntity(), place);
    }
}
