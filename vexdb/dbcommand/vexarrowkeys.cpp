#include "vexdb/dbcommand/vexarrowkeys.h"

#include "platform/window/cwnd.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/gemath/vextruncate.h"

#include <algorithm>

namespace {

constexpr WPARAM kMovedByKeys = 1; // what the window is told beside the position

bool isArrow(WPARAM key)
{
    return key >= VK_LEFT && key <= VK_DOWN;
}

/// Pixels that one press goes: a pixel, or a step of the grid, but never beyond the window.
int stepOf(CVexDbDatabase& database, const CWnd& window)
{
    const CVexDbDisplayTableRecord* view = database.displays().getCurrentRecord();
    const VexDbDrawingSettings_tag& settings = database.settings();
    if (!settings.m_bGridSnap || view == nullptr || view->xScale() == 0.0) {
        return 1;
    }
    CRect client;
    window.GetClientRect(client);
    const int most = std::max({1, client.Width(), client.Height()});
    const double pixels = settings.m_dGridStep * _dDispScale / view->xScale();
    return std::clamp(truncateSaturated(pixels), 1, most);
}

CPoint movedBy(CPoint screen, WPARAM key, int step)
{
    switch (key) {
    case VK_LEFT: return {screen.x - step, screen.y};
    case VK_UP: return {screen.x, screen.y - step};
    case VK_RIGHT: return {screen.x + step, screen.y};
    default: return {screen.x, screen.y + step};
    }
}

} // namespace

bool isArrowKey(const MSG& message)
{
    return (message.message == WM_KEYDOWN || message.message == WM_KEYUP) &&
           isArrow(message.wParam);
}

VexVerdict moveKey(CVexDbDatabase& database, CWnd& window, const MSG& message, bool& movedByKeys)
{
    if (!isArrowKey(message)) {
        return VexVerdict::kDispatch;
    }
    if (message.message == WM_KEYUP) {
        movedByKeys = true;
        return VexVerdict::kSwallow;
    }
    CPoint screen;
    GetCursorPos(&screen);
    screen = movedBy(screen, message.wParam, stepOf(database, window));
    const CPoint client = window.ScreenToClient(screen);
    window.SendMessage(WM_MOUSEMOVE, kMovedByKeys, MAKELPARAM(client.x, client.y));
    SetCursorPos(screen.x, screen.y);
    return VexVerdict::kSwallow;
}
