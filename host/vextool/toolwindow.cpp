#include "host/vextool/toolwindow.h"

#include "platform/window/vexbackend.h"
#include "vexdb/dbcommand/vexcommandsession.h"

LRESULT ToolView::SendMessage(unsigned message, WPARAM wParam, LPARAM lParam)
{
    m_dc.clear(); // a long script would fill the memory with strokes
    const MSG sent{this, message, wParam, lParam, CVexBackend::current().cursorPosition()};
    return m_session == nullptr ? 0 : m_session->onDisplayMessage(sent);
}
