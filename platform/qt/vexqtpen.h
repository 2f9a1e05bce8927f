#pragma once

#include "platform/base/vexexport.h"
#include "platform/device/vexdeviceobjects.h"

#include <QColor>
#include <QList>
#include <QPen>
#include <QRgb>

#include <array>
#include <cstdint>

VEXQT_EXPORT QColor toQColor(COLORREF color);

/// What pens are made for.
struct VexQtPenSetting {
    double scale = 1.0;      // device units a logical unit
    double thinnest = 1.0;   // device units that a pen of width 0 draws
    bool wholePixels = true; // widths are rounded to pixels, as on a raster

    friend bool operator==(const VexQtPenSetting&, const VexQtPenSetting&) = default;
};

/// A pen as the painter takes it. The dashes of a pen that is one pixel wide are not the painter's:
/// its quick way of drawing thin lines measures dashes along x or y only, and any other way draws
/// two pixels across. `pen` is solid then, and `pattern` says where it is put down.
struct VexQtPen {
    QPen pen;
    double width = 1.0;       // device units, also the unit of the dash offset
    QList<qreal> pattern{};   // device units, drawn and skipped by turns; empty for solid
    double patternLength = 0; // their sum
    [[nodiscard]] bool patterned() const { return !pattern.isEmpty(); }
    /// Dashes that are put down pixel by pixel.
    bool thinDashes = false;
    /// Without dashes and one pixel wide on a raster: lines are put down pixel by pixel too.
    bool thinSolid = false;
    QRgb pixel = 0; // what it puts down
};

/// Makes the painter's pen for `pen`. Dashes keep their true length in any direction; the first
/// part of each pair draws at least the thinnest dot, at the cost of the gap after it. A pattern
/// shorter than that dot, or than a thousandth of the pen's width, is solid: it would be a grey
/// line that takes ages to paint.
VEXQT_EXPORT VexQtPen makeQtPen(const CPen& pen, const VexQtPenSetting& setting);

/// The pens made last, found by stamp without a search.
class VEXQT_EXPORT CVexQtPenCache {
public:
    const VexQtPen& find(const CPen& pen, const VexQtPenSetting& setting);

private:
    struct Slot {
        std::uint64_t stamp = 0;
        VexQtPenSetting setting;
        VexQtPen made;
    };
    std::array<Slot, 64> m_slots;
};
