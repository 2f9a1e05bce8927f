#include "vexdb/dbobject/vexdbcolortable.h"

#include <algorithm>

namespace {

// The hue circle has 24 steps of 15 degrees. A channel's level on it, in quarters: full for 8
// steps, down in 4, none for 8, up in 4.
constexpr int quartersAt(int step)
{
    const int at = (step % 24 + 24) % 24;
    if (at <= 4 || at >= 20) {
        return 4;
    }
    if (at < 8) {
        return 8 - at;
    }
    return at <= 16 ? 0 : at - 16;
}

// One channel of a shade: `tenths` is the shade's top level; a pale shade lies halfway between the
// full one and its top level. All in whole numbers, truncated once.
constexpr unsigned channel(int quarters, int tenths, bool pale)
{
    return static_cast<unsigned>(pale ? 255 * tenths * (quarters + 4) / 80
                                      : 255 * tenths * quarters / 40);
}

constexpr COLORREF shade(int hue, int index)
{
    constexpr int kTenths[] = {10, 8, 6, 5, 3};
    const int tenths = kTenths[index / 2];
    const bool pale = index % 2 != 0;
    return RGB(channel(quartersAt(hue), tenths, pale), channel(quartersAt(hue - 8), tenths, pale),
               channel(quartersAt(hue - 16), tenths, pale));
}

constexpr std::array<COLORREF, kPaletteSize> makePalette()
{
    constexpr COLORREF kFirst[] = {0xffffff, 0x0000ff, 0x00ffff, 0x00ff00, 0xffff00,
                                   0xff0000, 0xff00ff, 0xffffff, 0x808080, 0xc0c0c0};
    constexpr COLORREF kGreys[] = {0x333333, 0x5b5b5b, 0x848484, 0xadadad, 0xd6d6d6, 0x000000};
    std::array<COLORREF, kPaletteSize> palette = {};
    std::copy(std::begin(kFirst), std::end(kFirst), palette.begin());
    for (int index = 0; index < 240; ++index) {
        palette[static_cast<std::size_t>(index) + 10] = shade(index / 10, index % 10);
    }
    std::copy(std::begin(kGreys), std::end(kGreys), palette.begin() + 250);
    palette[256] = 0xffffff;
    palette[257] = 0x000000;
    return palette;
}

} // namespace

constinit const std::array<COLORREF, kPaletteSize> _dwColorIndex = makePalette();

COLORREF _getColorValueByIndex(int index)
{
    const bool inside = index >= 0 && index < kPaletteSize;
    return inside ? _dwColorIndex[static_cast<std::size_t>(index)] : _dwColorIndex.back();
}

int _getColorIndexByValue(COLORREF color)
{
    const auto end = _dwColorIndex.begin() + 257;
    const auto found = std::find(_dwColorIndex.begin(), end, color);
    return found == end ? 0 : static_cast<int>(found - _dwColorIndex.begin());
}

COLORREF getColor(const CVexDbObjectId& id)
{
    constexpr std::size_t kContrast = 7;
    return id.isNull() ? _dwColorIndex[kContrast]
                       : static_cast<const CVexDbColorTableRecord*>(id.getPObject())->getColor();
}
