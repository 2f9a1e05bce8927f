#include "platform/qt/vexqtcursor.h"

#include <QPainter>
#include <QPixmap>

namespace {

constexpr int kSide = 33; // odd: the lines cross on a pixel
constexpr int kMiddle = kSide / 2;
constexpr int kPickHalf = 5;

QPixmap clearPixmap(double ratio)
{
    QPixmap pixmap(QSize(kSide, kSide) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    return pixmap;
}

/// Paints light lines over broader dark ones.
template <class Lines>
QCursor edged(double ratio, Lines lines)
{
    QPixmap pixmap = clearPixmap(ratio);
    QPainter painter(&pixmap);
    for (const QPen& pen : {QPen(QColor(0, 0, 0, 140), 3), QPen(Qt::white, 1)}) {
        painter.setPen(pen);
        lines(painter);
    }
    painter.end();
    return QCursor(pixmap, kMiddle, kMiddle);
}

QCursor crossCursor(double ratio)
{
    return edged(ratio, [](QPainter& painter) {
        painter.drawLine(1, kMiddle, kSide - 2, kMiddle);
        painter.drawLine(kMiddle, 1, kMiddle, kSide - 2);
    });
}

QCursor pickBoxCursor(double ratio)
{
    return edged(ratio, [](QPainter& painter) {
        painter.drawRect(kMiddle - kPickHalf, kMiddle - kPickHalf, 2 * kPickHalf, 2 * kPickHalf);
    });
}

} // namespace

QCursor makeQtCursor(VexCursor cursor, double ratio)
{
    switch (cursor) {
    case VexCursor::kCross: return crossCursor(ratio);
    case VexCursor::kPickBox: return pickBoxCursor(ratio);
    case VexCursor::kMove: return Qt::SizeAllCursor;
    case VexCursor::kResize: return Qt::SizeBDiagCursor;
    case VexCursor::kHand: return Qt::OpenHandCursor;
    case VexCursor::kWait: return Qt::WaitCursor;
    default: return Qt::ArrowCursor;
    }
}
