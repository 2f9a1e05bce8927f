#include "platform/qt/vexqtthinline.h"

#include "platform/device/vexdevicetypes.h"
#include "platform/qt/vexqtpixelrow.h"

#include <QPointF>
#include <QRect>

#include <cstdint>
#include <cstdlib>
#include <utility>

namespace {

constexpr QRgb kColorBits = 0x00ffffff; // the rest is always set in RGB32

/// Which way a line goes a whole pixel at each step.
bool isUpright(CPoint from, CPoint to)
{
    return std::abs(std::int64_t{to.x} - from.x) < std::abs(std::int64_t{to.y} - from.y);
}

/// Gives `put` each pixel of a line whose ends lie on the image.
template <class Put>
void visitOnImage(const VexQtPixels& pixels, CPoint from, CPoint to, Put put)
{
    const bool upright = isUpright(from, to);
    if (upright ? to.y < from.y : to.x < from.x) {
        std::swap(from, to);
    }
    constexpr int kParts = 64;
    const VexQtPixelRow row =
        upright ? pixelRowBetween(from.y * kParts, from.x * kParts, to.y * kParts, to.x * kParts)
                : pixelRowBetween(from.x * kParts, from.y * kParts, to.x * kParts, to.y * kParts);
    const qsizetype alongStep = upright ? pixels.rowLength : 1;
    const qsizetype acrossStep = upright ? 1 : pixels.rowLength;
    QRgb* along = pixels.first + row.first * alongStep;
    std::int64_t across = row.across;
    for (int i = 0; i < row.count; ++i) {
        put(along[(across >> 16) * acrossStep]);
        along += alongStep;
        across += row.step;
    }
}

/// Gives `put` those pixels of any line that lie on the image.
template <class Put>
void visitCut(const VexQtPixels& pixels, CPoint from, CPoint to, Put put)
{
    const bool upright = isUpright(from, to);
    if (upright ? to.y < from.y : to.x < from.x) {
        std::swap(from, to);
    }
    const QRect image(QPoint(0, 0), pixels.size);
    QPointF a(from.x, from.y);
    QPointF b(to.x, to.y);
    if (!cutToDevice(a, b, image)) {
        return;
    }
    const int ax = toSixtyFourths(a.x()), ay = toSixtyFourths(a.y());
    const int bx = toSixtyFourths(b.x()), by = toSixtyFourths(b.y());
    const VexQtPixelRow row =
        upright ? pixelRowBetween(ay, ax, by, bx) : pixelRowBetween(ax, ay, bx, by);
    for (int i = 0; i < row.count; ++i) {
        const int along = row.first + i, across = row.acrossAt(i);
        const QPoint at = upright ? QPoint(across, along) : QPoint(along, across);
        if (image.contains(at)) {
            put(pixels.first[at.y() * pixels.rowLength + at.x()]);
        }
    }
}

template <class Put>
void visitPixels(const VexQtPixels& pixels, CPoint from, CPoint to, Put put)
{
    const auto isOnImage = [&](CPoint point) {
        return point.x >= 0 && point.x < pixels.size.width() && point.y >= 0 &&
               point.y < pixels.size.height();
    };
    if (!isOnImage(from) || !isOnImage(to)) {
        visitCut(pixels, from, to, put);
    } else if (from == to) { // a row of pixels has no direction then
        put(pixels.first[from.y * pixels.rowLength + from.x]);
    } else {
        visitOnImage(pixels, from, to, put);
    }
}

} // namespace

void strokeThinLine(const VexQtPixels& pixels, CPoint from, CPoint to, QRgb color, int operation)
{
    const QRgb bits = color & kColorBits;
    switch (operation) {
    case R2_MASKNOTPEN:
        return visitPixels(pixels, from, to, [bits](QRgb& pixel) { pixel &= ~bits; });
    case R2_XORPEN: return visitPixels(pixels, from, to, [bits](QRgb& pixel) { pixel ^= bits; });
    case R2_NOTXORPEN:
        return visitPixels(pixels, from, to, [bits](QRgb& pixel) { pixel ^= bits ^ kColorBits; });
    default: return visitPixels(pixels, from, to, [color](QRgb& pixel) { pixel = color; });
    }
}
