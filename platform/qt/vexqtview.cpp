#include "platform/qt/vexqtview.h"

#include "platform/qt/vexqtcursor.h"
#include "platform/qt/vexqteventbackend.h"
#include "platform/qt/vexqtimagedc.h"
#include "platform/qt/vexqtpen.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace {

// What wParam of a mouse message tells is held.
constexpr WPARAM kLeftHeld = 0x01;
constexpr WPARAM kRightHeld = 0x02;
constexpr WPARAM kShiftHeld = 0x04;
constexpr WPARAM kControlHeld = 0x08;
constexpr WPARAM kMiddleHeld = 0x10;

WPARAM heldBits(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers)
{
    return (buttons.testFlag(Qt::LeftButton) ? kLeftHeld : 0) |
           (buttons.testFlag(Qt::RightButton) ? kRightHeld : 0) |
           (buttons.testFlag(Qt::MiddleButton) ? kMiddleHeld : 0) |
           (modifiers.testFlag(Qt::ShiftModifier) ? kShiftHeld : 0) |
           (modifiers.testFlag(Qt::ControlModifier) ? kControlHeld : 0);
}

/// The message of a button that goes down or up; 0 for a button that nobody here knows.
unsigned messageOf(Qt::MouseButton button, bool down)
{
    switch (button) {
    case Qt::LeftButton: return down ? WM_LBUTTONDOWN : WM_LBUTTONUP;
    case Qt::RightButton: return down ? WM_RBUTTONDOWN : WM_RBUTTONUP;
    case Qt::MiddleButton: return down ? WM_MBUTTONDOWN : WM_MBUTTONUP;
    default: return 0;
    }
}

QRect boundsOf(std::span<const CPoint> points, int margin)
{
    if (points.empty()) {
        return {};
    }
    const auto [left, right] = std::ranges::minmax(points, {}, &CPoint::x);
    const auto [top, bottom] = std::ranges::minmax(points, {}, &CPoint::y);
    return {QPoint(left.x - margin, top.y - margin), QPoint(right.x + margin, bottom.y + margin)};
}

} // namespace

/// The view's context: it notes which pixels of the image it may have changed.
class CVexQtView::Context : public CVexQtImageDC {
public:
    Context(QSize size, std::function<void(const QRect&)> onPainted)
        : CVexQtImageDC(size), m_onPainted(std::move(onPainted))
    {
    }

protected:
    void deviceLine(CPoint from, CPoint to) override
    {
        CVexQtImageDC::deviceLine(from, to);
        const std::array ends{from, to};
        painted(boundsOf(ends, penMargin()));
    }
    void devicePolyline(std::span<const CPoint> points) override
    {
        CVexQtImageDC::devicePolyline(points);
        painted(boundsOf(points, penMargin()));
    }
    void devicePolygon(std::span<const CPoint> points) override
    {
        CVexQtImageDC::devicePolygon(points);
        painted(boundsOf(points, penMargin()));
    }
    void deviceEllipse(const CRect& rect) override
    {
        CVexQtImageDC::deviceEllipse(rect);
        paintedRect(rect, penMargin());
    }
    void deviceFill(const CRect& rect, COLORREF color) override
    {
        CVexQtImageDC::deviceFill(rect, color);
        paintedRect(rect, 0);
    }
    void devicePixel(CPoint point, COLORREF color) override
    {
        CVexQtImageDC::devicePixel(point, color);
        const std::array one{point};
        painted(boundsOf(one, 0));
    }
    bool deviceBlit(const CRect& target, CDC& source, CPoint from, DWORD operation) override
    {
        const bool done = CVexQtImageDC::deviceBlit(target, source, from, operation);
        paintedRect(target, 0);
        return done;
    }

private:
    /// Half the pen's width and room for its corners, device pixels.
    [[nodiscard]] int penMargin() const
    {
        constexpr double kMost = 1e6;
        return static_cast<int>(std::min(GetCurrentPen()->width() * xScale(), kMost)) + 2;
    }
    void paintedRect(const CRect& rect, int margin)
    {
        const std::array corners{rect.TopLeft(), rect.BottomRight()};
        painted(boundsOf(corners, margin));
    }
    void painted(const QRect& area)
    {
        if (const QRect seen = area & QRect(QPoint(0, 0), size()); !seen.isEmpty()) {
            m_onPainted(seen);
        }
    }

    std::function<void(const QRect&)> m_onPainted;
};

/// The widget: Qt's events in, the picture out.
class CVexQtView::Canvas : public QWidget {
public:
    Canvas(CVexQtView& view, QWidget* parent) : QWidget(parent), m_view(&view)
    {
        setMouseTracking(true);
        setAttribute(Qt::WA_OpaquePaintEvent);
        setContextMenuPolicy(Qt::PreventContextMenu);
        setFocusPolicy(Qt::ClickFocus);
    }
    /// The view is gone; what is shown stays.
    void leave() { m_view = nullptr; }

    /// Marks device pixels for the next repaint. What is marked is one rectangle around them all: a
    /// region of many strokes would cost more than it saves.
    void mark(const QRect& pixels)
    {
        if (m_marked.contains(pixels)) {
            return;
        }
        m_marked |= pixels;
        const double ratio = devicePixelRatioF();
        update(QRectF(m_marked.x() / ratio, m_marked.y() / ratio, m_marked.width() / ratio,
                      m_marked.height() / ratio)
                   .toAlignedRect());
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        m_marked = QRect();
        if (m_view == nullptr) {
            return;
        }
        if (devicePixels(*this) != m_view->picture().size()) {
            resized(); // the window has gone to a screen of another resolution
        }
        QPainter painter(this);
        painter.drawImage(QPointF(0, 0), shownPicture());
    }

    void resizeEvent(QResizeEvent*) override { resized(); }
    void mousePressEvent(QMouseEvent* event) override { button(*event, true); }
    // To a pump the second press of a double click is one more press.
    void mouseDoubleClickEvent(QMouseEvent* event) override { button(*event, true); }
    void mouseReleaseEvent(QMouseEvent* event) override { button(*event, false); }

    void mouseMoveEvent(QMouseEvent* event) override
    {
        if (m_view != nullptr && !m_view->m_backend.isOwnWarp(event->globalPosition().toPoint())) {
            m_view->m_backend.noteButtons(event->buttons());
            send(WM_MOUSEMOVE, heldBits(event->buttons(), event->modifiers()), event->position(),
                 event->modifiers());
        }
    }

    void wheelEvent(QWheelEvent* event) override
    {
        event->accept();
        m_turned += event->angleDelta().y();
        const int notches = m_turned / kWheelNotch;
        m_turned -= notches * kWheelNotch;
        const auto turn = static_cast<std::uint32_t>(notches > 0 ? kWheelNotch : -kWheelNotch);
        for (int notch = 0; notch < std::abs(notches); ++notch) {
            send(WM_MOUSEWHEEL, (turn << 16) | heldBits(event->buttons(), event->modifiers()),
                 event->position(), event->modifiers());
        }
    }

private:
    /// The image without a copy, at the size that it has on the screen.
    [[nodiscard]] QImage shownPicture() const
    {
        const QImage& picture = m_view->picture();
        QImage shown(picture.constBits(), picture.width(), picture.height(), picture.bytesPerLine(),
                     picture.format());
        shown.setDevicePixelRatio(devicePixelRatioF());
        return shown;
    }

    void resized()
    {
        if (m_view != nullptr && m_view->fitImage()) {
            const QSize size = m_view->picture().size();
            m_view->PostMessage(WM_SIZE, 0, MAKELPARAM(size.width(), size.height()));
        }
    }

    void button(const QMouseEvent& event, bool down)
    {
        const unsigned message = messageOf(event.button(), down);
        if (m_view != nullptr && message != 0) {
            m_view->m_backend.noteButtons(event.buttons());
            send(message, heldBits(event.buttons(), event.modifiers()), event.position(),
                 event.modifiers());
        }
    }

    void send(unsigned message, WPARAM wParam, QPointF position, Qt::KeyboardModifiers modifiers)
    {
        if (m_view == nullptr) {
            return;
        }
        const double ratio = devicePixelRatioF();
        const LPARAM at = MAKELPARAM(static_cast<int>(std::floor(position.x() * ratio)),
                                     static_cast<int>(std::floor(position.y() * ratio)));
        m_view->m_backend.deliver({m_view, message, wParam, at, {}}, modifiers);
    }

    CVexQtView* m_view;
    QRect m_marked; // device pixels
    int m_turned = 0;
};

CVexQtView::CVexQtView(CVexQtEventBackend& backend, QWidget* parent)
    : CVexQtWindow(new Canvas(*this, parent)), m_backend(backend)
{
    m_context = std::make_unique<Context>(QSize(1, 1), [this](const QRect& pixels) {
        if (QWidget* const canvas = widget(); canvas != nullptr) {
            static_cast<Canvas*>(canvas)->mark(pixels);
        }
    });
    fitImage();
    m_backend.addView(this);
}

CVexQtView::~CVexQtView()
{
    m_backend.removeView(this);
    if (QWidget* const canvas = widget(); canvas != nullptr) {
        static_cast<Canvas*>(canvas)->leave();
    }
}

void CVexQtView::GetClientRect(CRect& rect) const
{
    const QSize size = widget() != nullptr ? picture().size() : QSize(0, 0);
    rect = CRect(0, 0, size.width(), size.height());
}

CDC* CVexQtView::GetDC()
{
    return m_context.get();
}

const QImage& CVexQtView::picture() const
{
    return *m_context->image();
}

bool CVexQtView::fitImage()
{
    const QWidget* const canvas = widget();
    if (canvas == nullptr) {
        return false;
    }
    const QSize size = devicePixels(*canvas).expandedTo(QSize(1, 1));
    return size != picture().size() && m_context->resize(size);
}

void CVexQtView::Invalidate()
{
    PostMessage(WM_PAINT, 0, 0);
}

void CVexQtView::setBackground(COLORREF color)
{
    m_context->SetBkColor(color);
}

LRESULT CVexQtView::SendMessage(unsigned message, WPARAM wParam, LPARAM lParam)
{
    const std::function<LRESULT(const MSG&)> handler = m_handler; // it may end this view
    const QPointer<QWidget> canvas = widget();
    const MSG sent{this, message, wParam, lParam, m_backend.cursorPosition()};
    const LRESULT answer = handler ? handler(sent) : 0;
    if (message == WM_PAINT && !canvas.isNull()) {
        canvas->repaint();
    }
    return answer;
}

void CVexQtView::showCursor(VexCursor cursor)
{
    if (QWidget* const canvas = widget(); canvas != nullptr) {
        canvas->setCursor(makeQtCursor(cursor, canvas->devicePixelRatioF()));
    }
}
