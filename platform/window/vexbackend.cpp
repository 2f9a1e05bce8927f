#include "platform/window/vexbackend.h"

#include "platform/device/cdc.h"
#include "platform/headless/vexheadless.h"
#include "platform/window/cmenu.h"
#include "platform/window/cwnd.h"

#include <algorithm>

namespace {

CVexBackend* installedBackend = nullptr;

// Never destroyed: a window that outlives main still gives its capture back.
CVexBackend& headlessBackend()
{
    static CVexBackend* const backend = new CVexHeadlessBackend;
    return *backend;
}

} // namespace

CVexBackend::~CVexBackend()
{
    if (installedBackend == this) {
        installedBackend = nullptr;
    }
}

void CVexBackend::forget(CWnd* window)
{
    if (capture() == window) {
        setCapture(nullptr);
    }
}

unsigned CVexBackend::chooseFrom(const CMenu& menu, CPoint screen, CWnd* window)
{
    if (m_scriptedMenu == nullptr) {
        return trackPopupMenu(menu, screen, window);
    }
    const auto row = std::ranges::find_if(menu.items(), [this](const CMenu::Item& item) {
        return item.id != 0 && item.enabled && item.label.CompareNoCase(m_scriptedMenu->row) == 0;
    });
    m_scriptedMenu->isChosen = row != menu.items().end();
    return m_scriptedMenu->isChosen ? row->id : 0;
}

bool CVexBackend::askForText(CWnd* window, const CString& label, CString& text)
{
    if (m_scriptedMenu == nullptr) {
        return askText(window, label, text);
    }
    text = m_scriptedMenu->text.value_or(text);
    return m_scriptedMenu->text.has_value();
}

CVexBackend& CVexBackend::current()
{
    return installedBackend != nullptr ? *installedBackend : headlessBackend();
}

CVexBackend* CVexBackend::install(CVexBackend* backend)
{
    CVexBackend* const before = installedBackend;
    installedBackend = backend;
    return before;
}

bool GetMessageW(MSG* message, CWnd*, unsigned, unsigned)
{
    MSG taken;
    const bool goesOn = CVexBackend::current().getMessage(taken);
    if (message != nullptr) {
        *message = taken;
    }
    return goesOn;
}

bool TranslateMessage(const MSG* message)
{
    if (message == nullptr || (message->message != WM_KEYDOWN && message->message != WM_KEYUP)) {
        return false;
    }
    if (message->hwnd == nullptr || CWnd::isLiving(message->hwnd)) {
        CVexBackend::current().translateMessage(*message);
    }
    return true;
}

LRESULT DispatchMessageW(const MSG* message)
{
    return message == nullptr || !CWnd::isLiving(message->hwnd)
               ? 0
               : CVexBackend::current().dispatchMessage(*message);
}

CWnd* GetCapture()
{
    return CVexBackend::current().capture();
}

void ReleaseCapture()
{
    CVexBackend::current().setCapture(nullptr);
}

VexCursor SetCursor(VexCursor cursor)
{
    CVexBackend& backend = CVexBackend::current();
    const VexCursor before = backend.cursor();
    backend.setCursor(cursor);
    return before;
}

void GetCursorPos(CPoint* screen)
{
    if (screen != nullptr) {
        *screen = CVexBackend::current().cursorPosition();
    }
}

void SetCursorPos(int x, int y)
{
    CVexBackend::current().setCursorPosition({x, y});
}

void ClipCursor(const CRect* screen)
{
    CVexBackend::current().clipCursor(screen);
}

int GetKeyState(unsigned virtualKey)
{
    return CVexBackend::current().keyState(virtualKey);
}

int MessageBoxW(const CString& text, const CString& caption, unsigned type)
{
    return CVexBackend::current().messageBox(text, caption, type);
}
