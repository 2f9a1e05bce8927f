#include "vexdb/dbcommand/vexcommandhandler.h"

#include <algorithm>
#include <utility>

CVexCommandHandler::~CVexCommandHandler()
{
    ClearTrackers();
}

void CVexCommandHandler::AddTracker(CVexDbEntityTracker* tracker)
{
    m_trackers.push_back(tracker);
}

void CVexCommandHandler::RemoveTracker(CVexDbEntityTracker* tracker)
{
    const auto found = std::find(m_trackers.begin(), m_trackers.end(), tracker);
    if (found != m_trackers.end()) {
        m_trackers.erase(found);
        delete tracker;
    }
}

void CVexCommandHandler::RemoveTrackersOf(const CVexDbEntity* entity)
{
    const auto first = std::stable_partition(
        m_trackers.begin(), m_trackers.end(),
        [entity](const CVexDbEntityTracker* tracker) { return tracker->GetEntity() != entity; });
    const std::vector<CVexDbEntityTracker*> dropped(first, m_trackers.end());
    m_trackers.erase(first, m_trackers.end());
    for (CVexDbEntityTracker* tracker : dropped) {
        delete tracker;
    }
}

void CVexCommandHandler::ClearTrackers()
{
    // The list is empty before the first one dies: a tracker's end may look at it.
    const std::vector<CVexDbEntityTracker*> dropped = std::exchange(m_trackers, {});
    for (CVexDbEntityTracker* tracker : dropped) {
        delete tracker;
    }
}

void CVexCommandHandler::TrackerDraw(CDC* dc)
{
    if (dc == nullptr) {
        return;
    }
    for (CVexDbEntityTracker* tracker : m_trackers) {
        tracker->Draw(dc);
    }
}
