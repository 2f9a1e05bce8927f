#pragma once

#include "platform/device/cdc.h"

#include <vector>

/// One stroke as a backend gets it: device points and what was in force.
struct VexStroke {
    enum class Kind { kLine, kPolyline, kPolygon, kRectangle, kEllipse, kFill, kPixel, kBlit };
    Kind kind = Kind::kLine;
    std::vector<CPoint> points; // the corners for rectangles, ellipses, fills and blits
    int rop = R2_COPYPEN;       // of a blit, its SRC code
    int penStyle = PS_SOLID;
    int penWidth = 0;   // logical units
    COLORREF color = 0; // of the pen; of a fill or pixel, its own
    std::vector<int> dashes;
    BrushStyle brushStyle = BS_SOLID;
    COLORREF brushColor = 0;
    HatchStyle hatch = HS_HORIZONTAL; // of a hatched brush
    int polyFillMode = ALTERNATE;     // of a polygon

    friend bool operator==(const VexStroke&, const VexStroke&) = default;
};

/// Keeps the list of strokes instead of painting. It has no pixels: GetPixel gives 0xffffffff. The
/// contexts and bitmaps that it makes record too; a blit from one of them records itself and then
/// appends what the source holds, moved to where the block lands.
class VEXPLATFORM_EXPORT CVexRecordingDC : public CDC {
public:
    explicit CVexRecordingDC(CSize size = {1920, 1080});
    [[nodiscard]] const std::vector<VexStroke>& strokes() const { return m_strokes; }
    void clear() { m_strokes.clear(); }
    /// The size that GetDeviceCaps tells from now on, device pixels.
    void resize(CSize size) { m_size = size; }
    /// Makes the context claim to be a printer's, with these answers to GetDeviceCaps.
    void setPrinting(bool printing) { m_printing = printing; }
    void setDeviceCap(int index, int value);
    /// From now on no compatible bitmap can be made, as on a machine without memory.
    void refuseBitmaps(bool refuse) { m_refuseBitmaps = refuse; }

    CBitmap* SelectObject(CBitmap* bitmap) override;
    using CDC::SelectObject;
    [[nodiscard]] int GetDeviceCaps(int index) const override;
    [[nodiscard]] bool IsPrinting() const override { return m_printing; }
    [[nodiscard]] std::unique_ptr<CDC> CreateCompatibleDC() override;
    [[nodiscard]] std::unique_ptr<CBitmap> CreateCompatibleBitmap(int width, int height) override;

protected:
    void deviceLine(CPoint from, CPoint to) override;
    void devicePolyline(std::span<const CPoint> points) override;
    void devicePolygon(std::span<const CPoint> points) override;
    void deviceRectangle(const CRect& rect) override;
    void deviceEllipse(const CRect& rect) override;
    void deviceFill(const CRect& rect, COLORREF color) override;
    void devicePixel(CPoint point, COLORREF color) override;
    [[nodiscard]] COLORREF devicePixelAt(CPoint point) const override;
    bool deviceBlit(const CRect& target, CDC& source, CPoint from, DWORD operation) override;

private:
    VexStroke& record(VexStroke::Kind kind, std::vector<CPoint> points);

    CSize m_size;
    bool m_memory = false; // made by CreateCompatibleDC: takes a bitmap
    bool m_printing = false;
    bool m_refuseBitmaps = false;
    CBitmap* m_bitmap = nullptr;
    std::vector<std::pair<int, int>> m_caps;
    std::vector<VexStroke> m_strokes;
};
