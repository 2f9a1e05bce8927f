#include "vexdb/dbcommand/vexprimitive.h"

#include "platform/window/cwnd.h"
#include "vexdb/dbcommand/vexarrowkeys.h"
#include "vexdb/dbcommand/vexcommandhandler.h"

VexPrimitive::VexPrimitive(CVexCommandHandler& handler, CWnd& window, int result)
    : m_handler(handler), m_window(window), m_result(result)
{
}

VexVerdict VexPrimitive::onMessage(const MSG& message)
{
    if (isArrowKey(message)) {
        bool movedByKeys = false; // only a tracker asks for it
        return moveKey(database(), m_window, message, movedByKeys);
    }
    if (message.message == WM_CHAR) {
        return onCharacter(message);
    }
    if (message.message != WM_KEYDOWN) {
        return onOther(message);
    }
    const auto key = static_cast<unsigned>(message.wParam);
    if (key == VK_ESCAPE || key == VK_CANCEL) {
        answer(InputCancel);
        return VexVerdict::kSwallow;
    }
    return onKey(key);
}

void VexPrimitive::answer(int result)
{
    m_result = result;
    finish();
}

bool VexPrimitive::isInside(const MSG& mouse) const
{
    CRect client;
    m_window.GetClientRect(client);
    return client.PtInRect(pointOfLParam(mouse.lParam));
}

CVexDbDatabase& VexPrimitive::database() const
{
    return *m_handler.database();
}

bool isEndKey(unsigned key)
{
    return key == VK_RETURN || key == VK_SPACE;
}

bool isPress(const MSG& message)
{
    return message.message == WM_LBUTTONDOWN || message.message == WM_LBUTTONDBLCLK;
}
