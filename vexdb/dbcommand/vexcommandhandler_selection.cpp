#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"
#include "vexdb/dbtracker/vexropscope.h"

#include <algorithm>
#include <utility>

void CVexCommandHandler::AddTracker(CVexDbEntityTracker* tracker)
{
    m_trackers.push_back(tracker);
    if (tracker->GetEntity() != nullptr) {
        m_selected.insert(tracker->GetEntity());
    }
}

void CVexCommandHandler::RemoveTracker(CVexDbEntityTracker* tracker)
{
    dropTracker(std::ranges::find(m_trackers, tracker));
}

void CVexCommandHandler::DeleteTracker(CVexDbEntity* entity)
{
    dropTracker(std::ranges::find(m_trackers, entity, &CVexDbEntityTracker::GetEntity));
}

void CVexCommandHandler::dropTracker(std::vector<CVexDbEntityTracker*>::iterator found)
{
    if (found == m_trackers.end()) {
        return;
    }
    CVexDbEntityTracker* const tracker = *found;
    m_trackers.erase(found);
    if (tracker->GetEntity() != nullptr) { // a plain band selects nothing
        m_selected.erase(tracker->GetEntity());
    }
    if (isBusy()) {
        retireTracker(tracker); // it may be the one whose track or menu runs
    } else {
        delete tracker;
    }
}

/// Does on screen what a tracker's end does, and keeps the tracker itself until nothing runs.
void CVexCommandHandler::retireTracker(CVexDbEntityTracker* tracker)
{
    tracker->UnDrawGripBox();
    if (tracker->GetEntity() != nullptr && tracker->getDC() != nullptr) {
        const VexRopScope copyPen(tracker->getDC(), R2_COPYPEN); // a drag's band may be in XOR
        tracker->GetEntity()->Draw(tracker->getDC());
    }
    tracker->abandon();
    m_abandoned.push_back(tracker);
}

void CVexCommandHandler::ClearTracker(bool deleteThem)
{
    // The lists are empty before the first one dies: a tracker's end may look at them.
    const std::vector<CVexDbEntityTracker*> dropped = std::exchange(m_trackers, {});
    m_selected.clear();
    if (deleteThem && !isBusy()) {
        for (CVexDbEntityTracker* tracker : dropped) {
            delete tracker;
        }
        return;
    }
    for (CVexDbEntityTracker* tracker : dropped) {
        if (deleteThem) {
            retireTracker(tracker);
        } else {
            tracker->abandon();
            m_abandoned.push_back(tracker);
        }
    }
    freeAbandoned();
}

void CVexCommandHandler::forgetEntity(const CVexDbEntity* entity)
{
    const auto first = std::stable_partition(
        m_trackers.begin(), m_trackers.end(),
        [entity](const CVexDbEntityTracker* tracker) { return tracker->GetEntity() != entity; });
    for (auto at = first; at != m_trackers.end(); ++at) {
        (*at)->abandon();
        m_abandoned.push_back(*at);
    }
    m_trackers.erase(first, m_trackers.end());
    m_selected.erase(const_cast<CVexDbEntity*>(entity));
    if (m_lastEntity == entity) {
        setLastEntity(nullptr);
    }
    freeAbandoned();
}

void CVexCommandHandler::freeAbandoned()
{
    if (isBusy()) {
        return;
    }
    for (CVexDbEntityTracker* tracker : std::exchange(m_abandoned, {})) {
        delete tracker;
    }
}

void CVexCommandHandler::dropInvisible()
{
    const VexEntitySet selected = m_selected;
    for (CVexDbEntity* entity : selected) {
        if (!entity->isVisiable()) {
            DeleteTracker(entity);
        }
    }
}

void CVexCommandHandler::GetSelectedEntity(VexEntitySet& entities) const
{
    entities.insert(m_selected.begin(), m_selected.end());
}

void CVexCommandHandler::TrackerDraw(CDC* dc)
{
    if (dc == nullptr) {
        return;
    }
    for (CVexDbEntityTracker* tracker : m_trackers) {
        CDC* const before = tracker->getDC();
        tracker->setDC(dc);
        tracker->DrawGripBox(true);
        tracker->setDC(before);
    }
}

int CVexCommandHandler::SetTrackerCursor(CWnd* window, unsigned hitTest)
{
    for (CVexDbEntityTracker* tracker : m_trackers) {
        const int answer = tracker->SetCursor(window, hitTest);
        if (answer >= 0) {
            return answer;
        }
    }
    return -1;
}
