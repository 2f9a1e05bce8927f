#pragma once

#include <cstdint>

/// A colour as the drawing keeps it: 0x00bbggrr.
using COLORREF = std::uint32_t;
using DWORD = std::uint32_t;

constexpr COLORREF RGB(unsigned red, unsigned green, unsigned blue)
{
    return (red & 0xff) | ((green & 0xff) << 8) | ((blue & 0xff) << 16);
}
constexpr unsigned GetRValue(COLORREF color)
{
    return color & 0xff;
}
constexpr unsigned GetGValue(COLORREF color)
{
    return (color >> 8) & 0xff;
}
constexpr unsigned GetBValue(COLORREF color)
{
    return (color >> 16) & 0xff;
}

/// How a pen's colour P meets the pixel D below it; the numbers are part of the drawing rules.
enum RasterOperation : int {
    R2_MASKNOTPEN = 3, // D and not P
    R2_XORPEN = 7,     // D xor P: drawing twice restores
    R2_NOTXORPEN = 10, // not (D xor P): drawing twice restores
    R2_COPYPEN = 13,   // P
};

/// How BitBlt joins source and target pixels.
constexpr DWORD SRCCOPY = 0x00cc0020;  // the source
constexpr DWORD SRCPAINT = 0x00ee0086; // source or target, bit by bit

/// One device pixel a unit, y down; or both axes at one scale, y by the signs of the extents.
enum MapMode : int { MM_TEXT = 1, MM_ISOTROPIC = 7 };

/// Pen styles: a cosmetic line style, or geometric with the width in logical units.
enum PenStyle : int {
    PS_SOLID = 0,
    PS_DASH = 1,
    PS_DOT = 2,
    PS_NULL = 5,
    PS_GEOMETRIC = 0x10000,           // geometric, solid
    PS_GEOMETRIC_USERSTYLE = 0x10007, // geometric, dashes from an array of logical lengths
};

enum BrushStyle : int { BS_SOLID = 0, BS_HOLLOW = 1, BS_HATCHED = 2 };

/// The lines of a hatched brush; the numbers stand in drawings. What lies between them stays.
enum HatchStyle : int {
    HS_HORIZONTAL = 0,
    HS_VERTICAL = 1,
    HS_FDIAGONAL = 2, // falling to the right
    HS_BDIAGONAL = 3, // rising to the right
    HS_CROSS = 4,     // horizontal and vertical
    HS_DIAGCROSS = 5, // both diagonals
};

/// What of an area that crosses itself is inside: what a ray leaves an odd number of times, or
/// everything that the outline goes round.
enum PolygonFillMode : int { ALTERNATE = 1, WINDING = 2 };

enum BackgroundMode : int { TRANSPARENT = 1, OPAQUE = 2 };

/// What GetDeviceCaps answers for.
enum DeviceCap : int {
    HORZSIZE = 4,    // width of the printable area, millimetres
    VERTSIZE = 6,    // height of it
    HORZRES = 8,     // width in pixels
    VERTRES = 10,    // height in pixels
    LOGPIXELSX = 88, // pixels an inch
    LOGPIXELSY = 90,
    PHYSICALWIDTH = 110, // whole sheet in pixels
    PHYSICALHEIGHT = 111,
    PHYSICALOFFSETX = 112, // unprintable margin in pixels
    PHYSICALOFFSETY = 113,
};
