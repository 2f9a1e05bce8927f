#include "platform/window/cwnd.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexinputscope.h"
#include "vexdb/dbcommand/vexprimitive.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbtracker/vexselectiontracker.h"
#include "vexdb/vexdbdatabase.h"

namespace {

constexpr unsigned kLastEntityKey = 'L';

/// Waits for a click on an entity, or for the key that names the last one.
class EntityInput : public VexPrimitive {
public:
    EntityInput(CVexCommandHandler& handler, CWnd& window, CVexDbEntity*& entity,
                CVexGePoint2d* pickPoint)
        : VexPrimitive(handler, window, InputPoint), m_entity(entity), m_pickPoint(pickPoint)
    {
    }

protected:
    VexVerdict onKey(unsigned key) override
    {
        if (isEndKey(key)) {
            answer(m_entity == nullptr ? InputCancel : InputPoint);
            return VexVerdict::kSwallow;
        }
        CVexDbEntity* last = database().lastEntity();
        if (key == kLastEntityKey && last != nullptr && last->isVisiable()) {
            m_entity = last;
            answer(InputPoint);
            return VexVerdict::kSwallow;
        }
        return VexVerdict::kDispatch;
    }

    VexVerdict onOther(const MSG& message) override
    {
        if (!isPress(message)) {
            return VexVerdict::kDispatch;
        }
        if (isInside(message)) {
            pick(pointOfLParam(message.lParam));
        }
        return VexVerdict::kSwallow;
    }

private:
    void pick(CPoint device)
    {
        CVexDbDisplayTableRecord* view = database().displays().getCurrentRecord();
        if (view == nullptr) {
            return;
        }
        const CVexGePoint2d at = view->GetLogicalPoint(device);
        if (m_pickPoint != nullptr) {
            *m_pickPoint = at; // of a miss too
        }
        CVexDbObjectId id;
        if (!view->selectEntity(at, id)) {
            return;
        }
        m_entity = static_cast<CVexDbEntity*>(id.getPObject());
        m_entity->HighlightDraw();
        database().setLastEntity(m_entity);
        answer(InputPoint);
    }

    CVexDbEntity*& m_entity;
    CVexGePoint2d* m_pickPoint;
};

} // namespace

int CVexCommandHandler::GetEntity(int prompt, CVexDbEntity*& entity, CVexGePoint2d* pickPoint)
{
    const VexBusyScope busy(*this);
    entity = nullptr;
    if (!canAsk()) {
        return InputCancel;
    }
    EntityInput input(*this, *m_display, entity, pickPoint);
    VexInputScope scope(*this, *m_display);
    SetPrompt(prompt);
    scope.showCursor(m_selectionCursor);
    runPump(*this, *m_display, input);
    noteAnswer(input.result());
    return input.result();
}

int CVexCommandHandler::GetEntities(int prompt, VexEntitySet* entities)
{
    const VexBusyScope busy(*this);
    if (entities == nullptr || !canAsk()) {
        return InputLost;
    }
    CVexDbSelectionTracker tracker(m_display, m_database, CVexDbSelectionTracker::kAutomatic);
    SetPrompt(prompt);
    while (const VexEntitySet* picked = tracker.Track(m_display, CPoint())) {
        for (CVexDbEntity* entity : *picked) {
            entity->HighlightDraw();
        }
        entities->insert(picked->begin(), picked->end());
    }
    noteAnswer(InputPoint);
    if (tracker.wasCancelled()) {
        entities->clear();
    }
    return entities->empty() ? InputLost : InputPoint;
}
