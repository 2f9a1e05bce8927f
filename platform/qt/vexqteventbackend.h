#pragma once

#include "platform/base/vexexport.h"
#include "platform/window/cwnd.h"
#include "platform/window/vexbackend.h"

#include <QPoint>
#include <QString>
#include <Qt>

#include <deque>
#include <memory>
#include <optional>
#include <set>
#include <vector>

class CVexQtView;
class QEvent;
class QEventLoop;
class QKeyEvent;
class QObject;
class QWidget;

/// The windows of a desktop program: the pump over Qt's event loop. While a window holds the
/// capture, its mouse events and all keys of the program become messages of its pump, and Qt runs
/// on for everything else (painting, timers, menus, other windows). Without a capture Qt's events
/// go their own way, and a view's messages go straight to the view.
///
/// A wait ends, with the capture gone, when the window of the capture is closed, hidden or
/// destroyed, when the program quits, and when its top window goes into the background with a mouse
/// button held down, whose release nobody would see.
class VEXQT_EXPORT CVexQtEventBackend : public CVexBackend {
public:
    /// The QApplication exists already and outlives this.
    CVexQtEventBackend();
    ~CVexQtEventBackend() override;
    CVexQtEventBackend(const CVexQtEventBackend&) = delete;
    CVexQtEventBackend& operator=(const CVexQtEventBackend&) = delete;

    bool getMessage(MSG& message) override;
    /// Puts the characters of a key in front of the queue: those that the message carries, else the
    /// text that came with Qt's key event, which exists for the key taken last only.
    void translateMessage(const MSG& message) override;
    LRESULT dispatchMessage(const MSG& message) override;
    /// Without a capture the message is dispatched from Qt's own loop; WM_QUIT then quits. Several
    /// paints, or sizes, of one window become one.
    void postMessage(const MSG& message) override;
    void setCapture(CWnd* window) override;
    [[nodiscard]] CWnd* capture() const override { return m_capture; }
    void forget(CWnd* window) override;
    /// Shown by every view.
    void setCursor(VexCursor cursor) override;
    [[nodiscard]] VexCursor cursor() const override { return m_cursor; }
    /// Where the last mouse message was, or the pointer has been put.
    [[nodiscard]] CPoint cursorPosition() const override { return m_pointer; }
    /// Puts the one WM_MOUSEMOVE of a capture in front of the queue itself, so that it comes before
    /// any later key, also where the pointer cannot be moved.
    void setCursorPosition(CPoint screen) override;
    /// No platform of Qt holds the pointer: the positions of mouse messages are held instead.
    void clipCursor(const CRect* screen) override;
    /// As it was when the message taken last was made.
    [[nodiscard]] int keyState(unsigned virtualKey) const override;
    int messageBox(const CString& text, const CString& caption, unsigned type) override;
    bool chooseFolder(CWnd* parent, const CString& title, const CString& start,
                      CString& chosen) override;
    unsigned trackPopupMenu(const CMenu& menu, CPoint screen, CWnd* window) override;
    bool askText(CWnd* parent, const CString& label, CString& text) override;
    [[nodiscard]] CString compositionResult(CWnd*) override { return m_composition; }
    [[nodiscard]] std::unique_ptr<CDC> createImageDC(CSize size) override;

    [[nodiscard]] std::size_t queued() const { return m_queue.size(); }
    /// True while a pump waits in Qt's loop for its next message.
    [[nodiscard]] bool isWaiting() const { return m_waiting != nullptr; }

private:
    friend class CVexQtView;
    class Filter;

    struct Item {
        MSG message;
        Qt::KeyboardModifiers modifiers;
        QString composition{};            // of WM_IME_COMPOSITION
        std::unique_ptr<QKeyEvent> key{}; // what a key message was made from
    };

    // For the views.
    void addView(CVexQtView* view);
    void removeView(CVexQtView* view);
    /// A mouse event of a view as a message: to the pump of the view's capture, or to the view.
    /// While another window holds the capture nobody gets it.
    void deliver(MSG message, Qt::KeyboardModifiers modifiers);
    void noteButtons(Qt::MouseButtons buttons) { m_buttons = buttons; }
    /// True for the mouse move that Qt reports because the pointer was put there.
    bool isOwnWarp(QPoint global);

    bool filter(QObject* object, QEvent* event);
    [[nodiscard]] bool takesKeys(const QObject* object) const;
    bool takeKey(const QKeyEvent& event);
    bool takeComposition(QObject* object, QEvent* event);
    void watch(const QObject* object, const QEvent& event);
    void noteKey(const QKeyEvent& event);

    void push(Item item);
    Item take();
    [[nodiscard]] bool canWait() const;
    void waitForMessage();
    void wake();
    void loseCapture();
    void scheduleDrain();
    void drain();
    void dispatchIdle(Item item);
    [[nodiscard]] CPoint clipped(const CWnd& window, CPoint client) const;

    std::unique_ptr<Filter> m_filter;
    std::deque<Item> m_queue;
    std::vector<CVexQtView*> m_views;
    CWnd* m_capture = nullptr;
    VexCursor m_cursor = VexCursor::kArrow;
    CPoint m_pointer; // screen
    std::optional<CRect> m_clip;
    std::deque<QPoint> m_warps; // that Qt has not reported yet, oldest first
    Qt::KeyboardModifiers m_modifiers;
    Qt::MouseButtons m_buttons; // held on a view
    std::set<unsigned> m_keysDown;
    QString m_text; // of the key message taken last
    CString m_composition;
    QEventLoop* m_waiting = nullptr;
    bool m_drainScheduled = false;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true); // tells what Qt calls later
};
