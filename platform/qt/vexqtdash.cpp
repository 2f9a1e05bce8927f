#include "platform/qt/vexqtdash.h"

#include "platform/qt/vexqtpixelrow.h"

#include <algorithm>
#include <cmath>

namespace {

/// Follows a pattern along a line.
class DashWalk {
public:
    DashWalk(const QList<qreal>& pattern, double start) : m_pattern(pattern), m_at(start)
    {
        double total = 0.0;
        for (const qreal length : pattern) {
            total += length;
        }
        m_left = pattern[0] - std::fmod(start, total);
        skip();
    }

    /// Goes on to `at`, a length from the chain's start; true when a dash is there or was passed.
    bool advanceTo(double at)
    {
        m_left -= std::max(0.0, at - m_at);
        m_at = std::max(at, m_at);
        return skip() || isDash();
    }

private:
    [[nodiscard]] bool isDash() const { return m_index % 2 == 0; }

    /// Leaves the parts that end here or before; true when a dash began.
    bool skip()
    {
        bool met = false;
        while (m_left <= 0.0) {
            m_index = m_index + 1 < m_pattern.size() ? m_index + 1 : 0;
            m_left += m_pattern[m_index];
            met = met || isDash();
        }
        return met;
    }

    const QList<qreal>& m_pattern;
    double m_at;
    double m_left = 0.0; // of the part that m_index names
    qsizetype m_index = 0;
};

/// Along which axis a line moves by a whole pixel at each step.
struct Axes {
    bool upright;
    [[nodiscard]] double major(QPointF p) const { return upright ? p.y() : p.x(); }
    [[nodiscard]] double minor(QPointF p) const { return upright ? p.x() : p.y(); }
    [[nodiscard]] QPoint pixel(int major, int minor) const
    {
        return upright ? QPoint(minor, major) : QPoint(major, minor);
    }
};

/// One segment's pixels, from `from` to `to` whichever way that is.
class SegmentPixels {
public:
    SegmentPixels(QPointF from, QPointF to, VexQtChainEnd end, const QRect& device)
        : m_axes{std::abs(to.x() - from.x()) < std::abs(to.y() - from.y())},
          m_from(m_axes.major(from)), m_turned(m_axes.major(to) < m_from),
          m_length(std::hypot(to.x() - from.x(), to.y() - from.y())),
          m_perPixel(m_length / std::abs(m_axes.major(to) - m_from))
    {
        if (m_length > 0.0 && cutToDevice(from, to, device)) {
            m_row = m_turned ? rowOf(to, from) : rowOf(from, to);
            m_count = m_row.count - (end == VexQtChainEnd::kLeftOut ? 1 : 0);
        }
    }

    [[nodiscard]] int count() const { return m_count; }
    [[nodiscard]] double length() const { return m_length; }
    [[nodiscard]] QPoint pixel(int i) const
    {
        const int index = m_turned ? m_row.count - 1 - i : i;
        return m_axes.pixel(m_row.first + index, m_row.acrossAt(index));
    }
    /// Length from the segment's start to the middle of a pixel.
    [[nodiscard]] double lengthTo(int i) const
    {
        const int index = m_turned ? m_row.count - 1 - i : i;
        const double steps = m_row.first + index - m_from;
        return ((m_turned ? -steps : steps) + 0.5) * m_perPixel;
    }

private:
    [[nodiscard]] VexQtPixelRow rowOf(QPointF from, QPointF to) const
    {
        return pixelRowBetween(toSixtyFourths(m_axes.major(from)),
                               toSixtyFourths(m_axes.minor(from)), toSixtyFourths(m_axes.major(to)),
                               toSixtyFourths(m_axes.minor(to)));
    }

    Axes m_axes;
    double m_from;
    bool m_turned;
    double m_length;
    double m_perPixel;
    VexQtPixelRow m_row;
    int m_count = 0; // without the pixel of the end, when that is left out
};

} // namespace

void appendDashPixels(std::span<const QPointF> chain, double start, VexQtChainEnd end,
                      const QList<qreal>& pattern, const QRect& device, QList<QPoint>& pixels)
{
    DashWalk walk(pattern, start);
    double length = start;
    for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
        const bool last = i + 2 == chain.size();
        const SegmentPixels segment(chain[i], chain[i + 1], last ? end : VexQtChainEnd::kLeftOut,
                                    device);
        for (int k = 0; k < segment.count(); ++k) {
            if (walk.advanceTo(length + segment.lengthTo(k))) {
                pixels.append(segment.pixel(k));
            }
        }
        length += segment.length();
    }
    if (length == start && end == VexQtChainEnd::kDrawn && !chain.empty() &&
        walk.advanceTo(start)) {
        pixels.append(QPoint(static_cast<int>(std::floor(chain[0].x())),
                             static_cast<int>(std::floor(chain[0].y()))));
    }
}
