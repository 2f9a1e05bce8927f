#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"
#include "vexdb/dbtracker/vexropscope.h"

#include <algorithm>
#include <iterator>
#include <utility>

void CVexCommandHandler::AddTracker(CVexDbEntityTracker* tracker)
{
    m_trackers.add(*tracker);
    if (tracker->GetEntity() != nullptr) {
        m_selected.insert(tracker->GetEntity());
    }
}

void CVexCommandHandler::RemoveTracker(CVexDbEntityTracker* tracker)
{
    if (m_trackers.take(tracker)) {
        dropTracker(*tracker);
    }
}

void CVexCommandHandler::DeleteTracker(CVexDbEntity* entity)
{
    if (CVexDbEntityTracker* const tracker = m_trackers.takeOf(entity); tracker != nullptr) {
        dropTracker(*tracker);
    }
}

/// Ends a tracker that has left the list.
void CVexCommandHandler::dropTracker(CVexDbEntityTracker& tracker)
{
    if (tracker.GetEntity() != nullptr) { // a plain band selects nothing
        m_selected.erase(tracker.GetEntity());
    }
    if (isBusy()) {
        retireTracker(&tracker); // it may be the one whose track or menu runs
    } else {
        delete &tracker;
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
    const std::vector<CVexDbEntityTracker*> dropped = m_trackers.takeAll();
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
    while (CVexDbEntityTracker* const tracker = m_trackers.takeOf(entity)) {
        tracker->abandon();
        m_abandoned.push_back(tracker);
    }
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
    std::vector<CVexDbEntity*> gone;
    std::ranges::copy_if(m_selected, std::back_inserter(gone),
                         [](const CVexDbEntity* entity) { return !entity->isVisiable(); });
    for (CVexDbEntity* entity : gone) {
        DeleteTracker(entity);
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
    for (CVexDbEntityTracker* tracker : m_trackers.all()) {
        CDC* const before = tracker->getDC();
        tracker->setDC(dc);
        tracker->DrawGripBox(true);
        tracker->setDC(before);
    }
}

int CVexCommandHandler::SetTrackerCursor(CWnd* window, unsigned hitTest)
{
    for (CVexDbEntityTracker* tracker : m_trackers.all()) {
        const int answer = tracker->SetCursor(window, hitTest);
        if (answer >= 0) {
            return answer;
        }
    }
    return -1;
}
