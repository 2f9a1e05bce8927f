#include "platform/window/cwnd.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexcommandsession.h"
#include "vexdb/dbcommand/vexinputscope.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbcommand/vexpump.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"
#include "vexdb/dbtracker/vexselectiontracker.h"
#include "vexdb/vexdbdatabase.h"

namespace {

constexpr int kUnselected = -1; // what a popup answers when its tracker is to go

CVexDbEntityTracker* trackerAt(const CVexCommandHandler& handler, CPoint device)
{
    for (CVexDbEntityTracker* tracker : handler.trackers()) {
        if (tracker->HitTest(device) >= 0) {
            return tracker;
        }
    }
    return nullptr;
}

int wheelTurn(WPARAM wParam)
{
    return pointOfLParam(static_cast<LPARAM>(wParam)).y; // the high half, with its sign
}

/// With the middle button held the picture follows the mouse.
class PanInput : public VexInput {
public:
    PanInput(CVexDbDisplayTableRecord& view, CPoint from) : m_view(view), m_at(from) {}
    VexVerdict onMessage(const MSG& message) override
    {
        switch (message.message) {
        case WM_MOUSEMOVE: panTo(pointOfLParam(message.lParam)); return VexVerdict::kSwallow;
        case WM_MBUTTONUP:
        case WM_LBUTTONDOWN:
        case WM_KEYDOWN: finish(); return VexVerdict::kSwallow;
        default: return VexVerdict::kDispatch;
        }
    }

private:
    void panTo(CPoint to)
    {
        // Device y grows downwards, logical y upwards.
        m_view.RealPanWindow(m_view.GetCurrentDC(),
                             truncateSaturated((m_at.x - to.x) * m_view.xScale()),
                             truncateSaturated((to.y - m_at.y) * m_view.yScale()));
        m_at = to;
    }

    CVexDbDisplayTableRecord& m_view;
    CPoint m_at; // device
};

} // namespace

void CVexCommandSession::readOut(const MSG& message)
{
    auto* const first = reinterpret_cast<CPoint*>(message.wParam);
    auto* const second = reinterpret_cast<CPoint*>(message.lParam);
    if (second == nullptr) {
        m_database.SetCoordinate(m_windows.display, m_windows.coordinates, first, nullptr);
    } else {
        m_database.SetCoordinate(m_windows.display, m_windows.coordinates, second, first);
    }
}

void CVexCommandSession::hover(CPoint device)
{
    m_database.SetCoordinate(m_windows.display, m_windows.coordinates, &device, nullptr);
    if (handler().SetTrackerCursor(m_windows.display, HTCLIENT) < 0) {
        SetCursor(VexCursor::kArrow);
    }
}

void CVexCommandSession::press(CPoint device)
{
    if (trackerAt(handler(), device) != nullptr) {
        handler().TrackTracker(m_windows.display, device);
        finish();
        return;
    }
    CVexDbDisplayTableRecord* const view = m_database.displays().getCurrentRecord();
    CVexDbObjectId hit;
    if (view == nullptr) {
        return;
    }
    if (view->selectEntity(device, hit)) {
        handler().DoDragEntity(static_cast<CVexDbEntity*>(hit.getPObject()), device);
    } else {
        selectFrom(device);
    }
    finish();
}

// The press on empty space is the first corner of a window or crossing.
void CVexCommandSession::selectFrom(CPoint device)
{
    VexEntitySet found;
    {
        const VexBusyScope busy(handler());
        handler().SetPrompt(VexDb::PromptOtherCorner);
        CVexDbSelectionTracker tracker(m_windows.display, &m_database,
                                       CVexDbSelectionTracker::kAutomatic);
        tracker.SetStartPoint(
            toLogical(m_database.displays().getCurrentRecord()->GetLogicalPoint(device)));
        if (const VexEntitySet* selected = tracker.Track(m_windows.display, device);
            selected != nullptr) {
            found = *selected;
        }
    }
    for (CVexDbEntity* entity : found) {
        handler().DoDragEntity(entity, device);
    }
}

void CVexCommandSession::popup(CPoint device)
{
    CVexDbEntityTracker* const tracker = trackerAt(handler(), device);
    if (tracker == nullptr) {
        return;
    }
    // By its address only: the action may have ended the tracker already.
    if (tracker->TrackMenu(m_windows.display, device) == kUnselected) {
        handler().RemoveTracker(tracker);
    }
    finish();
}

void CVexCommandSession::wheel(const MSG& message)
{
    CVexDbDisplayTableRecord* const view = m_database.displays().getCurrentRecord();
    const int turn = wheelTurn(message.wParam);
    if (view == nullptr || m_viewTracking || turn == 0) {
        return;
    }
    const double step = m_database.settings().m_dZoomStep;
    const double factor = turn > 0 ? 1.0 - step : 1.0 + step;
    view->ScaleUpDown(view->GetCurrentDC(), pointOfLParam(message.lParam), factor, false);
}

// Also while a command waits, which has its capture back afterwards.
void CVexCommandSession::pan(CPoint device)
{
    CVexDbDisplayTableRecord* const view = m_database.displays().getCurrentRecord();
    if (view == nullptr || m_viewTracking || m_windows.display == nullptr) {
        return;
    }
    CWnd* const captured = GetCapture();
    m_viewTracking = true;
    {
        const VexBusyScope busy(handler());
        const VexInputScope scope(handler(), *m_windows.display);
        PanInput input(*view, device);
        runPump(handler(), *m_windows.display, input);
    }
    m_viewTracking = false;
    if (captured != nullptr && !handler().isInputLost()) {
        captured->SetCapture();
    }
}
