#include "platform/headless/vexheadless.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

constexpr int kKeyIsDown = 0x8000;

bool isMouse(unsigned message)
{
    return message >= WM_MOUSEMOVE && message <= WM_MBUTTONUP;
}

bool isKey(unsigned message)
{
    return message >= WM_KEYDOWN && message <= WM_CHAR;
}

// What a key types: alone and with Shift.
struct KeyCharacters {
    unsigned key;
    wchar_t plain;
    wchar_t shifted;
};

constexpr std::array kKeys = {
    KeyCharacters{VK_CANCEL, 0x03, 0x03}, KeyCharacters{VK_BACK, 0x08, 0x08},
    KeyCharacters{VK_TAB, 0x09, 0x09},    KeyCharacters{VK_RETURN, 0x0d, 0x0d},
    KeyCharacters{VK_ESCAPE, 0x1b, 0x1b}, KeyCharacters{VK_SPACE, L' ', L' '},
    KeyCharacters{'0', L'0', L')'},       KeyCharacters{'1', L'1', L'!'},
    KeyCharacters{'2', L'2', L'@'},       KeyCharacters{'3', L'3', L'#'},
    KeyCharacters{'4', L'4', L'$'},       KeyCharacters{'5', L'5', L'%'},
    KeyCharacters{'6', L'6', L'^'},       KeyCharacters{'7', L'7', L'&'},
    KeyCharacters{'8', L'8', L'*'},       KeyCharacters{'9', L'9', L'('},
    KeyCharacters{0x6a, L'*', L'*'},      KeyCharacters{0x6b, L'+', L'+'}, // number pad
    KeyCharacters{0x6d, L'-', L'-'},      KeyCharacters{0x6e, L'.', L'.'},
    KeyCharacters{0x6f, L'/', L'/'},      KeyCharacters{0xba, L';', L':'},
    KeyCharacters{0xbb, L'=', L'+'},      KeyCharacters{0xbc, L',', L'<'},
    KeyCharacters{0xbd, L'-', L'_'},      KeyCharacters{0xbe, L'.', L'>'},
    KeyCharacters{0xbf, L'/', L'?'},      KeyCharacters{0xc0, L'`', L'~'},
    KeyCharacters{0xdb, L'[', L'{'},      KeyCharacters{0xdc, L'\\', L'|'},
    KeyCharacters{0xdd, L']', L'}'},      KeyCharacters{0xde, L'\'', L'"'},
};

constexpr unsigned kFirstPadDigit = 0x60;
constexpr unsigned kLastPadDigit = 0x69;

wchar_t letterOf(unsigned key, bool shift, bool control)
{
    if (control) {
        return static_cast<wchar_t>(key - 'A' + 1);
    }
    return static_cast<wchar_t>(shift ? key : key - 'A' + 'a');
}

// The character that a key types; none for a key that only acts.
std::optional<wchar_t> characterOf(unsigned key, bool shift, bool control)
{
    if (key >= 'A' && key <= 'Z') {
        return letterOf(key, shift, control);
    }
    if (key >= kFirstPadDigit && key <= kLastPadDigit) {
        return static_cast<wchar_t>(L'0' + static_cast<int>(key - kFirstPadDigit));
    }
    const auto row = std::find_if(kKeys.begin(), kKeys.end(),
                                  [&](const KeyCharacters& keys) { return keys.key == key; });
    if (row == kKeys.end()) {
        return std::nullopt;
    }
    return shift ? row->shifted : row->plain;
}

int firstButton(unsigned type)
{
    constexpr unsigned kButtons = 0x0f; // above them stand icons and default buttons
    const unsigned buttons = type & kButtons;
    return buttons == MB_YESNO || buttons == MB_YESNOCANCEL ? IDYES : IDOK;
}

} // namespace

bool CVexHeadlessBackend::getMessage(MSG& message)
{
    dropDead();
    if (m_queue.empty() && m_whenDry) {
        const std::function<void()> whenDry = m_whenDry; // it may set another in its place
        whenDry();
    }
    message = MSG();
    message.pt = m_pointer;
    if (m_queue.empty()) {
        m_capture = nullptr;
        return true;
    }
    message = m_queue.front();
    m_queue.pop_front();
    if ((isMouse(message.message) || isKey(message.message)) && message.hwnd == nullptr) {
        message.hwnd = m_capture;
    }
    if (isMouse(message.message)) {
        const CPoint client = pointOfLParam(message.lParam);
        m_pointer = message.hwnd != nullptr ? message.hwnd->ClientToScreen(client) : client;
    }
    message.pt = m_pointer;
    if (message.message == WM_QUIT) {
        m_capture = nullptr;
    }
    return message.message != WM_QUIT;
}

// A window that dies while another backend is in force does not tell this one.
void CVexHeadlessBackend::dropDead()
{
    while (!m_queue.empty() && m_queue.front().hwnd != nullptr &&
           !CWnd::isLiving(m_queue.front().hwnd)) {
        m_queue.pop_front();
    }
    m_capture = CWnd::isLiving(m_capture) ? m_capture : nullptr;
}

void CVexHeadlessBackend::translateMessage(const MSG& message)
{
    const bool alt = (keyState(VK_MENU) & kKeyIsDown) != 0;
    if (message.message != WM_KEYDOWN || alt) {
        return;
    }
    const wchar_t told = characterOfKey(message.lParam);
    const std::optional<wchar_t> character =
        told != 0 ? told
                  : characterOf(static_cast<unsigned>(message.wParam),
                                (keyState(VK_SHIFT) & kKeyIsDown) != 0,
                                (keyState(VK_CONTROL) & kKeyIsDown) != 0);
    if (character) {
        m_queue.push_front(
            {message.hwnd, WM_CHAR, static_cast<WPARAM>(*character), message.lParam, message.pt});
    }
}

LRESULT CVexHeadlessBackend::dispatchMessage(const MSG& message)
{
    return message.hwnd == nullptr
               ? 0
               : message.hwnd->SendMessage(message.message, message.wParam, message.lParam);
}

void CVexHeadlessBackend::postMessage(const MSG& message)
{
    m_queue.push_back(message);
}

void CVexHeadlessBackend::setCapture(CWnd* window)
{
    m_capture = window;
}

void CVexHeadlessBackend::forget(CWnd* window)
{
    CVexBackend::forget(window);
    std::erase_if(m_queue, [&](const MSG& message) { return message.hwnd == window; });
}

void CVexHeadlessBackend::setCursorPosition(CPoint screen)
{
    if (m_clip && !m_clip->IsRectEmpty()) {
        screen.x = std::clamp(screen.x, m_clip->left, m_clip->right - 1);
        screen.y = std::clamp(screen.y, m_clip->top, m_clip->bottom - 1);
    }
    if (screen == m_pointer) {
        return;
    }
    m_pointer = screen;
    if (CWnd::isLiving(m_capture)) {
        // In front, so that a key that follows finds the pointer where it went.
        const CPoint client = m_capture->ScreenToClient(screen);
        m_queue.push_front({m_capture, WM_MOUSEMOVE, 0, MAKELPARAM(client.x, client.y), m_pointer});
    }
}

void CVexHeadlessBackend::clipCursor(const CRect* screen)
{
    m_clip = screen == nullptr ? std::nullopt : std::optional(*screen);
    setCursorPosition(m_pointer);
}

int CVexHeadlessBackend::keyState(unsigned virtualKey) const
{
    const auto row = std::find_if(m_keys.begin(), m_keys.end(),
                                  [&](const auto& key) { return key.first == virtualKey; });
    return row == m_keys.end() ? 0 : row->second;
}

void CVexHeadlessBackend::setKeyState(unsigned virtualKey, int state)
{
    std::erase_if(m_keys, [&](const auto& key) { return key.first == virtualKey; });
    m_keys.emplace_back(virtualKey, state);
}

unsigned CVexHeadlessBackend::trackPopupMenu(const CMenu& menu, CPoint, CWnd*)
{
    m_menus.push_back(menu);
    if (m_choices.empty()) {
        return 0;
    }
    const unsigned id = m_choices.front();
    m_choices.pop_front();
    return menu.isEnabled(id) ? id : 0;
}

bool CVexHeadlessBackend::askText(CWnd*, const CString& label, CString& text)
{
    m_asked.push_back(label);
    if (m_texts.empty()) {
        return false;
    }
    const std::optional<CString> answer = m_texts.front();
    m_texts.pop_front();
    if (answer) {
        text = *answer;
    }
    return answer.has_value();
}

int CVexHeadlessBackend::messageBox(const CString& text, const CString& caption, unsigned type)
{
    int answer = firstButton(type);
    if (!m_answers.empty()) {
        answer = m_answers.front();
        m_answers.pop_front();
    }
    m_shown.push_back({text, caption, type, answer});
    return answer;
}

std::unique_ptr<CDC> CVexHeadlessBackend::createImageDC(CSize)
{
    return nullptr;
}

CVexMemoryWindow::CVexMemoryWindow(CSize client) : m_client(client), m_dc(client)
{
}

void CVexMemoryWindow::GetClientRect(CRect& rect) const
{
    rect = CRect(0, 0, m_client.cx, m_client.cy);
}

LRESULT CVexMemoryWindow::SendMessage(unsigned message, WPARAM wParam, LPARAM lParam)
{
    const MSG sent{this, message, wParam, lParam, CVexBackend::current().cursorPosition()};
    m_received.push_back(sent);
    const std::function<LRESULT(const MSG&)> handler = m_handler; // it may end this window
    return handler ? handler(sent) : 0;
}

void CVexMemoryWindow::resize(CSize client)
{
    m_client = client;
    m_dc.setDeviceCap(HORZRES, client.cx);
    m_dc.setDeviceCap(VERTRES, client.cy);
    SendMessage(WM_SIZE, 0, MAKELPARAM(client.cx, client.cy));
}
