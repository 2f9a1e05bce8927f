#include "platform/qt/vexqteventbackend.h"

#include "platform/device/cdc.h"
#include "platform/qt/vexqtimagedc.h"
#include "platform/qt/vexqttext.h"
#include "platform/qt/vexqtview.h"
#include "platform/qt/vexqtwindow.h"

#include <QApplication>
#include <QCursor>
#include <QEventLoop>
#include <QKeyEvent>

#include <algorithm>
#include <iterator>
#include <utility>

/// Sees every event of the program before its receiver.
class CVexQtEventBackend::Filter : public QObject {
public:
    explicit Filter(CVexQtEventBackend& backend) : m_backend(backend) {}
    bool eventFilter(QObject* object, QEvent* event) override
    {
        return m_backend.filter(object, event);
    }

private:
    CVexQtEventBackend& m_backend;
};

namespace {

constexpr int kKeyIsDown = 0x8000;
/// What the wait for a message ends with; another code comes from a program that quits.
constexpr int kWoken = 0x564d;
constexpr std::size_t kMostWarps = 32;

/// A later one of these takes the place of one that waits.
bool isState(unsigned message)
{
    return message == WM_PAINT || message == WM_SIZE;
}

bool isMouse(unsigned message)
{
    return message >= WM_MOUSEMOVE && message <= WM_MOUSEWHEEL;
}

bool isSameState(const MSG& a, const MSG& b)
{
    return a.message == b.message && a.hwnd == b.hwnd;
}

} // namespace

CVexQtEventBackend::CVexQtEventBackend() : m_filter(std::make_unique<Filter>(*this))
{
    QCoreApplication::instance()->installEventFilter(m_filter.get());
}

CVexQtEventBackend::~CVexQtEventBackend()
{
    m_capture = nullptr;
    wake();
}

bool CVexQtEventBackend::canWait() const
{
    const QWidget* const widget = widgetOf(m_capture);
    return widget != nullptr && widget->isVisible() && !QCoreApplication::closingDown();
}

void CVexQtEventBackend::waitForMessage()
{
    while (m_queue.empty() && canWait()) {
        QEventLoop loop;
        QEventLoop* const outer = std::exchange(m_waiting, &loop);
        const int code = loop.exec();
        m_waiting = outer;
        wake(); // what came meanwhile may concern the wait around this one
        if (code != kWoken) {
            m_queue.push_front({{nullptr, WM_QUIT, 0, 0, m_pointer}, m_modifiers});
        }
    }
}

void CVexQtEventBackend::wake()
{
    if (m_waiting != nullptr) {
        m_waiting->exit(kWoken);
    }
}

bool CVexQtEventBackend::getMessage(MSG& message)
{
    waitForMessage();
    message = MSG();
    message.pt = m_pointer;
    if (m_queue.empty() || !canWait()) {
        loseCapture();
        return true;
    }
    message = take().message;
    if (message.message == WM_QUIT) {
        loseCapture();
    }
    return message.message != WM_QUIT;
}

CVexQtEventBackend::Item CVexQtEventBackend::take()
{
    Item item = std::move(m_queue.front());
    m_queue.pop_front();
    m_modifiers = item.modifiers;
    m_text = item.key != nullptr ? item.key->text() : QString();
    if (isMouse(item.message.message)) {
        m_pointer = item.message.pt;
    }
    if (item.message.message == WM_IME_COMPOSITION) {
        m_composition = toCString(item.composition);
    }
    return item;
}

void CVexQtEventBackend::translateMessage(const MSG& message)
{
    if (message.message != WM_KEYDOWN) {
        return;
    }
    const wchar_t told = characterOfKey(message.lParam);
    const QString text = std::exchange(m_text, {});
    // Alt with a key chooses from a menu; with Ctrl it is how some keyboards reach more characters.
    const bool forMenus =
        m_modifiers.testFlag(Qt::AltModifier) && !m_modifiers.testFlag(Qt::ControlModifier);
    const std::wstring characters = told != 0  ? std::wstring(1, told)
                                    : forMenus ? std::wstring()
                                               : text.toStdWString();
    for (auto at = characters.rbegin(); at != characters.rend(); ++at) {
        m_queue.push_front(
            {{message.hwnd, WM_CHAR, static_cast<WPARAM>(*at), message.lParam, message.pt},
             m_modifiers});
    }
}

LRESULT CVexQtEventBackend::dispatchMessage(const MSG& message)
{
    return message.hwnd == nullptr
               ? 0
               : message.hwnd->SendMessage(message.message, message.wParam, message.lParam);
}

void CVexQtEventBackend::push(Item item)
{
    m_queue.push_back(std::move(item));
    if (m_capture != nullptr) {
        wake();
    } else {
        scheduleDrain();
    }
}

void CVexQtEventBackend::postMessage(const MSG& message)
{
    if (isState(message.message)) {
        const auto waiting = std::ranges::find_if(
            m_queue, [&](const Item& item) { return isSameState(item.message, message); });
        if (waiting != m_queue.end()) {
            waiting->message = message;
            return;
        }
    }
    push({message, m_modifiers});
}

void CVexQtEventBackend::deliver(MSG message, Qt::KeyboardModifiers modifiers)
{
    if (m_capture != nullptr && m_capture != message.hwnd) {
        return;
    }
    const CPoint client = clipped(*message.hwnd, pointOfLParam(message.lParam));
    message.lParam = MAKELPARAM(client.x, client.y);
    message.pt = message.hwnd->ClientToScreen(client);
    if (m_capture == nullptr) {
        m_modifiers = modifiers;
        m_pointer = message.pt;
        DispatchMessageW(&message);
        return;
    }
    // Moves that nobody has looked at yet become one: the band follows the pointer, not its past.
    if (message.message == WM_MOUSEMOVE && !m_queue.empty() &&
        m_queue.back().message.message == WM_MOUSEMOVE) {
        m_queue.back() = {message, modifiers};
        return;
    }
    push({message, modifiers});
}

void CVexQtEventBackend::setCapture(CWnd* window)
{
    m_capture = window;
    if (window == nullptr) {
        wake();
        if (!m_queue.empty()) {
            scheduleDrain();
        }
    }
}

void CVexQtEventBackend::loseCapture()
{
    setCapture(nullptr);
}

void CVexQtEventBackend::forget(CWnd* window)
{
    CVexBackend::forget(window);
    std::erase_if(m_queue, [&](const Item& item) { return item.message.hwnd == window; });
}

void CVexQtEventBackend::scheduleDrain()
{
    if (!std::exchange(m_drainScheduled, true)) {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [this, alive = std::weak_ptr<bool>(m_alive)] {
                if (!alive.expired()) {
                    drain();
                }
            },
            Qt::QueuedConnection);
    }
}

/// Hands out what no pump waits for.
void CVexQtEventBackend::drain()
{
    m_drainScheduled = false;
    while (m_capture == nullptr && !m_queue.empty()) {
        dispatchIdle(take());
    }
}

void CVexQtEventBackend::dispatchIdle(Item item)
{
    if (item.key != nullptr) {
        // Typed ahead for a command that is over: it belongs to whatever has the focus now.
        if (QWidget* const focus = QApplication::focusWidget(); focus != nullptr) {
            QCoreApplication::sendEvent(focus, item.key.get());
        }
    } else if (item.message.message == WM_QUIT) {
        QCoreApplication::quit();
    } else {
        DispatchMessageW(&item.message);
    }
}

void CVexQtEventBackend::addView(CVexQtView* view)
{
    m_views.push_back(view);
    QObject::connect(view->widget(), &QObject::destroyed,
                     [this, alive = std::weak_ptr<bool>(m_alive)] {
                         if (!alive.expired()) {
                             wake(); // a wait for this widget's events looks again
                         }
                     });
    view->showCursor(m_cursor);
}

void CVexQtEventBackend::removeView(CVexQtView* view)
{
    std::erase(m_views, view);
}

void CVexQtEventBackend::setCursor(VexCursor cursor)
{
    if (cursor == m_cursor) {
        return;
    }
    m_cursor = cursor;
    for (CVexQtView* const view : m_views) {
        view->showCursor(cursor);
    }
}

void CVexQtEventBackend::setCursorPosition(CPoint screen)
{
    if (m_clip && !m_clip->IsRectEmpty()) {
        screen.x = std::clamp(screen.x, m_clip->left, m_clip->right - 1);
        screen.y = std::clamp(screen.y, m_clip->top, m_clip->bottom - 1);
    }
    m_pointer = screen;
    const CWnd* const window =
        m_capture != nullptr || m_views.empty() ? m_capture : m_views.front();
    if (m_capture != nullptr) {
        const CPoint client = m_capture->ScreenToClient(screen);
        m_queue.push_front(
            {{m_capture, WM_MOUSEMOVE, 0, MAKELPARAM(client.x, client.y), screen}, m_modifiers});
    }
    if (const QWidget* const widget = widgetOf(window); widget != nullptr) {
        m_warps.push_back(globalPoint(widget, screen));
        if (m_warps.size() > kMostWarps) { // a platform that reports none
            m_warps.pop_front();
        }
        QCursor::setPos(m_warps.back());
    }
}

bool CVexQtEventBackend::isOwnWarp(QPoint global)
{
    const auto warp = std::ranges::find(m_warps, global);
    const bool found = warp != m_warps.end();
    m_warps.erase(m_warps.begin(), found ? std::next(warp) : warp);
    return found;
}

void CVexQtEventBackend::clipCursor(const CRect* screen)
{
    m_clip = screen == nullptr ? std::nullopt : std::optional(*screen);
}

CPoint CVexQtEventBackend::clipped(const CWnd& window, CPoint client) const
{
    if (!m_clip || m_clip->IsRectEmpty()) {
        return client;
    }
    const CPoint screen = window.ClientToScreen(client);
    return window.ScreenToClient({std::clamp(screen.x, m_clip->left, m_clip->right - 1),
                                  std::clamp(screen.y, m_clip->top, m_clip->bottom - 1)});
}

int CVexQtEventBackend::keyState(unsigned virtualKey) const
{
    const auto held = [&](Qt::KeyboardModifier modifier) {
        return m_modifiers.testFlag(modifier) ? kKeyIsDown : 0;
    };
    switch (virtualKey) {
    case VK_SHIFT: return held(Qt::ShiftModifier);
    case VK_CONTROL: return held(Qt::ControlModifier);
    case VK_MENU: return held(Qt::AltModifier);
    default: return m_keysDown.contains(virtualKey) ? kKeyIsDown : 0;
    }
}

std::unique_ptr<CDC> CVexQtEventBackend::createImageDC(CSize size)
{
    return CVexQtImageDC::create(QSize(size.cx, size.cy));
}
