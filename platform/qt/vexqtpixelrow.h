#pragma once

#include <QPointF>
#include <QRect>

#include <algorithm>
#include <cstdint>

/// The pixels of a solid line one pixel wide in the order of its major axis, along which it moves
/// by a whole pixel at each step: pixel i is at first + i, and across at the whole part of across +
/// i * step, both of which have 16 fractional bits.
struct VexQtPixelRow {
    int first = 0;
    int count = 0;
    std::int64_t across = 0;
    std::int64_t step = 0;

    [[nodiscard]] int acrossAt(int i) const { return static_cast<int>((across + i * step) >> 16); }
};

/// The raster painter's own arithmetic for lines of one pixel, so that what is put down pixel by
/// pixel covers what the painter's line would: 6 fractional bits at the ends (all arguments are
/// 64ths of a pixel), 16 at the steps, half a pixel more at each end. Along the major axis `start`
/// lies before `stop`; where they are one there are no pixels.
inline VexQtPixelRow pixelRowBetween(int start, int startAcross, int stop, int stopAcross)
{
    constexpr int kHalf = 32;
    VexQtPixelRow row;
    if (start == stop) {
        return row;
    }
    row.step = (std::int64_t{stopAcross} - startAcross) * 65536 / (stop - start);
    row.first = start >> 6;
    row.count = std::max(0, ((stop + 2 * kHalf) >> 6) - row.first);
    const int round = row.step > 0 ? kHalf : 0;
    const int begin = start - kHalf;
    row.across = std::int64_t{startAcross} * 1024 - (row.step >> 1) +
                 (((std::int64_t{row.first} * 64 + round - begin) * row.step) >> 6);
    return row;
}

inline int toSixtyFourths(double value)
{
    return static_cast<int>(value * 64.0);
}

/// Cuts a line to the device and the pixel beside it, as the painter does before it counts pixels;
/// false when nothing is left.
bool cutToDevice(QPointF& from, QPointF& to, const QRect& device);
