#include "platform/qt/vexqtpen.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

/// Pattern lengths that a pen may be wide. The strokes of a wider one begin so far outside the
/// device that their dashes would never end.
constexpr double kWidestForPattern = 1000.0;

/// A style whose dots and dashes are pixels, not lengths of the drawing.
bool isCosmeticPattern(int style)
{
    return style == PS_DOT || style == PS_DASH;
}

double widthOf(const CPen& pen, const VexQtPenSetting& setting)
{
    if (pen.width() <= 0 || isCosmeticPattern(pen.style())) {
        return setting.thinnest;
    }
    const double width = pen.width() * setting.scale;
    return std::max(1.0, setting.wholePixels ? std::round(width) : width);
}

/// Lengths in device units, an even number of them; empty for solid.
QList<qreal> patternOf(const CPen& pen, const VexQtPenSetting& setting)
{
    if (isCosmeticPattern(pen.style())) {
        const double unit = setting.thinnest;
        return pen.style() == PS_DOT ? QList<qreal>{unit, 2 * unit} : QList{4 * unit, 2 * unit};
    }
    QList<qreal> pattern;
    for (const int dash : pen.dashes()) {
        pattern.append(dash * setting.scale);
    }
    if (pattern.size() % 2 != 0) {
        pattern += QList<qreal>(pattern); // what drew in the first round skips in the second
    }
    if (std::accumulate(pattern.begin(), pattern.end(), 0.0) < setting.thinnest) {
        return {};
    }
    for (qsizetype i = 0; i + 1 < pattern.size(); i += 2) {
        const double lacking = std::max(0.0, setting.thinnest - pattern[i]);
        pattern[i] += lacking;
        pattern[i + 1] = std::max(0.0, pattern[i + 1] - lacking);
    }
    return pattern;
}

} // namespace

QColor toQColor(COLORREF color)
{
    return QColor(static_cast<int>(GetRValue(color)), static_cast<int>(GetGValue(color)),
                  static_cast<int>(GetBValue(color)));
}

VexQtPen makeQtPen(const CPen& pen, const VexQtPenSetting& setting)
{
    if (pen.style() == PS_NULL) {
        return {QPen(Qt::NoPen)};
    }
    VexQtPen made;
    made.width = widthOf(pen, setting);
    made.pattern = patternOf(pen, setting);
    made.patternLength = std::accumulate(made.pattern.begin(), made.pattern.end(), 0.0);
    if (made.width > kWidestForPattern * made.patternLength) {
        made.pattern.clear();
    }
    const bool thin = setting.wholePixels && made.width <= 1.0;
    made.thinDashes = thin && made.patterned();
    made.thinSolid = thin && !made.patterned();
    made.pixel = toQColor(pen.color()).rgb();
    made.pen =
        QPen(toQColor(pen.color()), made.width, Qt::SolidLine,
             made.patterned() && !made.thinDashes ? Qt::FlatCap : Qt::RoundCap, Qt::RoundJoin);
    made.pen.setCosmetic(setting.wholePixels);
    if (made.patterned() && !made.thinDashes) {
        QList<qreal> inWidths = made.pattern;
        for (qreal& length : inWidths) {
            length /= made.width;
        }
        made.pen.setDashPattern(inWidths);
    }
    return made;
}

const VexQtPen& CVexQtPenCache::find(const CPen& pen, const VexQtPenSetting& setting)
{
    Slot& slot = m_slots[pen.stamp() % m_slots.size()];
    if (slot.stamp != pen.stamp() || !(slot.setting == setting)) {
        slot = {pen.stamp(), setting, makeQtPen(pen, setting)};
    }
    return slot.made;
}
