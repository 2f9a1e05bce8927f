#pragma once

#include "platform/base/cpoint.h"
#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"
#include "platform/device/vexdevicetypes.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// Something that is selected into a device context. `stamp` differs for every object ever made, so
/// that a backend can keep what it derived from one without fearing a new one at its address. A
/// copy looks the same and shares it.
class VEXPLATFORM_EXPORT CVexDeviceObject {
public:
    [[nodiscard]] std::uint64_t stamp() const { return m_stamp; }

protected:
    CVexDeviceObject();

private:
    std::uint64_t m_stamp;
};

/// A brush: solid in a colour, hatched with lines of it, or hollow.
class VEXPLATFORM_EXPORT CBrush : public CVexDeviceObject {
public:
    explicit CBrush(COLORREF color) : m_color(color) {}
    CBrush(BrushStyle style, COLORREF color) : m_style(style), m_color(color) {}
    /// Hatched; a style that does not exist makes the brush hollow.
    CBrush(HatchStyle hatch, COLORREF color)
        : m_style(hatch >= HS_HORIZONTAL && hatch <= HS_DIAGCROSS ? BS_HATCHED : BS_HOLLOW),
          m_hatch(hatch), m_color(color)
    {
    }
    [[nodiscard]] BrushStyle style() const { return m_style; }
    /// The lines of a hatched brush.
    [[nodiscard]] HatchStyle hatch() const { return m_hatch; }
    [[nodiscard]] COLORREF color() const { return m_color; }

private:
    BrushStyle m_style = BS_SOLID;
    HatchStyle m_hatch = HS_HORIZONTAL;
    COLORREF m_color;
};

/// A pen. Width and dashes are logical units; a width of 0 or less draws one pixel.
class VEXPLATFORM_EXPORT CPen : public CVexDeviceObject {
public:
    static constexpr std::size_t kMostDashes = 32;

    CPen(int style, int width, COLORREF color) : m_style(style), m_width(width), m_color(color) {}
    /// A geometric pen with dashes: even entries draw, odd ones skip. The dashes are copied, at
    /// most kMostDashes of them; a negative one counts as 0, and a total of 0 draws solid.
    CPen(int style, int width, const CBrush& brush, std::span<const int> dashes);

    [[nodiscard]] int style() const { return m_style; }
    [[nodiscard]] int width() const { return m_width; }
    [[nodiscard]] COLORREF color() const { return m_color; }
    [[nodiscard]] const std::vector<int>& dashes() const { return m_dashes; }

private:
    int m_style;
    int m_width;
    COLORREF m_color;
    std::vector<int> m_dashes;
};

/// A system font.
class VEXPLATFORM_EXPORT CFont : public CVexDeviceObject {
public:
    CFont(const CString& face, int heightLogical, bool bold, bool italic)
        : m_face(face), m_heightLogical(heightLogical), m_bold(bold), m_italic(italic)
    {
    }
    [[nodiscard]] const CString& face() const { return m_face; }
    [[nodiscard]] int heightLogical() const { return m_heightLogical; }
    [[nodiscard]] bool bold() const { return m_bold; }
    [[nodiscard]] bool italic() const { return m_italic; }

private:
    CString m_face;
    int m_heightLogical;
    bool m_bold;
    bool m_italic;
};

/// Pixels that a memory context draws into once it is selected there. A backend makes it.
class VEXPLATFORM_EXPORT CBitmap : public CVexDeviceObject {
public:
    virtual ~CBitmap() = default;
    [[nodiscard]] virtual CSize size() const = 0;
    /// The colour of a pixel, row 0 on top; outside the bitmap, 0xffffffff.
    [[nodiscard]] virtual COLORREF pixel(CPoint at) const = 0;
};
