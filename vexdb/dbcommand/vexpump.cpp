#include "vexdb/dbcommand/vexpump.h"

#include "platform/window/cwnd.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbcommand/vexcommandhandler.h"

namespace {

bool mayRepaint(const MSG& message)
{
    switch (message.message) {
    case WM_PAINT:
    case WM_SIZE:
    case WM_MOUSEWHEEL:
    case WM_MBUTTONDOWN:
    case WM_COMMAND: return true;
    default: return false;
    }
}

void dispatch(const CWnd& window, VexInput& input, const MSG& message)
{
    if (!mayRepaint(message)) {
        DispatchMessageW(&message);
        return;
    }
    input.takeOff();
    DispatchMessageW(&message);
    if (CWnd::isLiving(&window)) { // or there is nothing left to put it on
        input.putBack();
    }
}

bool isLost(CVexCommandHandler& handler, const CWnd& window)
{
    const bool isElsewhere = GetCapture() != &window;
    if (isElsewhere) {
        handler.markInputLost();
    }
    return isElsewhere || handler.isInputLost();
}

} // namespace

bool runPump(CVexCommandHandler& handler, CWnd& window, VexInput& input)
{
    handler.beginInput();
    while (!input.isDone()) {
        if (isLost(handler, window)) {
            return false; // by what was dispatched last: the next message is not this input's
        }
        MSG message;
        if (!GetMessageW(&message, nullptr, 0, 0)) {
            handler.keepQuit(); // the command unwinds first; the host posts it again
        }
        if (isLost(handler, window)) {
            return false;
        }
        const VexVerdict verdict = input.onMessage(message);
        if (verdict == VexVerdict::kTranslate) {
            TranslateMessage(&message);
        } else if (verdict == VexVerdict::kDispatch) {
            dispatch(window, input, message);
        }
    }
    return true;
}
