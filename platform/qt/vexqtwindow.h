#pragma once

#include "platform/base/crect.h"
#include "platform/base/vexexport.h"
#include "platform/window/cwnd.h"

#include <QPoint>
#include <QPointer>
#include <QSize>
#include <QWidget>

/// What every window over a widget can tell the backend. Client positions are device pixels of the
/// widget; screen positions are device pixels too, counted on from the widget's corner.
class VEXQT_EXPORT CVexQtWindow {
public:
    /// The widget belongs to its parent; null once it is gone.
    explicit CVexQtWindow(QWidget* widget) : m_widget(widget) {}
    virtual ~CVexQtWindow() = default;
    [[nodiscard]] QWidget* widget() const { return m_widget; }

protected:
    [[nodiscard]] CRect clientRect() const;
    [[nodiscard]] CPoint toScreen(CPoint client) const;
    [[nodiscard]] CPoint toClient(CPoint screen) const;
    void repaintNow() const;
    void focus() const;

private:
    QPointer<QWidget> m_widget;
};

/// The client area of a widget in device pixels.
VEXQT_EXPORT QSize devicePixels(const QWidget& widget);
/// The widget behind a window; null for null, for one that is none of these, and for one whose
/// widget is gone.
VEXQT_EXPORT QWidget* widgetOf(const CWnd* window);
/// A screen position of a widget's window as Qt counts it.
VEXQT_EXPORT QPoint globalPoint(const QWidget* widget, CPoint screen);

/// What the windows over ready-made widgets share. WM_PAINT repaints at once.
class VEXQT_EXPORT CVexQtControlWindow : public CWnd, public CVexQtWindow {
public:
    using CVexQtWindow::CVexQtWindow;
    void GetClientRect(CRect& rect) const override { rect = clientRect(); }
    [[nodiscard]] CPoint ClientToScreen(CPoint client) const override { return toScreen(client); }
    [[nodiscard]] CPoint ScreenToClient(CPoint screen) const override { return toClient(screen); }
    /// Controls paint themselves.
    [[nodiscard]] CDC* GetDC() override { return nullptr; }
    void Invalidate() override;
    void SetFocus() override { focus(); }
    LRESULT SendMessage(unsigned message, WPARAM wParam, LPARAM lParam) override;
};
