#include "platform/qt/vexqtwindow.h"

#include <cmath>

namespace {

int scaled(int length, double factor)
{
    return static_cast<int>(std::lround(length * factor));
}

QPoint cornerOf(const QWidget& widget)
{
    const QPoint global = widget.mapToGlobal(QPoint(0, 0));
    const double ratio = widget.devicePixelRatioF();
    return {scaled(global.x(), ratio), scaled(global.y(), ratio)};
}

} // namespace

QSize devicePixels(const QWidget& widget)
{
    const double ratio = widget.devicePixelRatioF();
    return {scaled(widget.width(), ratio), scaled(widget.height(), ratio)};
}

QWidget* widgetOf(const CWnd* window)
{
    const auto* const ours = dynamic_cast<const CVexQtWindow*>(window);
    return ours != nullptr ? ours->widget() : nullptr;
}

QPoint globalPoint(const QWidget* widget, CPoint screen)
{
    const double ratio = widget != nullptr ? widget->devicePixelRatioF() : 1.0;
    return {scaled(screen.x, 1.0 / ratio), scaled(screen.y, 1.0 / ratio)};
}

CRect CVexQtWindow::clientRect() const
{
    const QSize size = m_widget.isNull() ? QSize(0, 0) : devicePixels(*m_widget);
    return {0, 0, size.width(), size.height()};
}

CPoint CVexQtWindow::toScreen(CPoint client) const
{
    const QPoint corner = m_widget.isNull() ? QPoint() : cornerOf(*m_widget);
    return {client.x + corner.x(), client.y + corner.y()};
}

CPoint CVexQtWindow::toClient(CPoint screen) const
{
    const QPoint corner = m_widget.isNull() ? QPoint() : cornerOf(*m_widget);
    return {screen.x - corner.x(), screen.y - corner.y()};
}

void CVexQtWindow::repaintNow() const
{
    if (!m_widget.isNull()) {
        m_widget->repaint();
    }
}

void CVexQtWindow::focus() const
{
    if (!m_widget.isNull()) {
        m_widget->setFocus(Qt::OtherFocusReason);
    }
}

void CVexQtControlWindow::Invalidate()
{
    if (QWidget* const shown = widget(); shown != nullptr) {
        shown->update();
    }
}

LRESULT CVexQtControlWindow::SendMessage(unsigned message, WPARAM, LPARAM)
{
    if (message == WM_PAINT) {
        repaintNow();
    }
    return 0;
}
