#pragma once

#include "platform/base/cpoint.h"
#include "platform/base/crect.h"
#include "platform/base/vexexport.h"
#include "platform/device/vexdeviceobjects.h"
#include "platform/device/vexdevicetypes.h"

#include <memory>
#include <span>
#include <vector>

/// A device context. The base class owns the mapping from logical to device coordinates and what is
/// selected, so that all backends agree to the pixel; a backend gets device coordinates. Selected
/// objects are not owned and must outlive their selection.
class VEXPLATFORM_EXPORT CDC {
public:
    CDC();
    virtual ~CDC();
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;

    // Mapping. With MM_ISOTROPIC the viewport extent shrinks on one axis until both axes have one
    // scale, each time an extent is set; signs stay. MM_TEXT keeps extents without using them. An
    // extent of 0 and any other mode are refused. Each setter returns the value before.
    int SetMapMode(int mode);
    [[nodiscard]] int GetMapMode() const { return m_mapMode; }
    CPoint SetWindowOrg(CPoint origin);
    CPoint SetWindowOrg(int x, int y) { return SetWindowOrg(CPoint(x, y)); }
    CSize SetWindowExt(CSize extent);
    CSize SetWindowExt(int cx, int cy) { return SetWindowExt(CSize(cx, cy)); }
    CPoint SetViewportOrg(CPoint origin);
    CPoint SetViewportOrg(int x, int y) { return SetViewportOrg(CPoint(x, y)); }
    CSize SetViewportExt(CSize extent);
    CSize SetViewportExt(int cx, int cy) { return SetViewportExt(CSize(cx, cy)); }
    [[nodiscard]] CPoint GetWindowOrg() const { return m_windowOrg; }
    [[nodiscard]] CSize GetWindowExt() const { return m_windowExt; }
    [[nodiscard]] CPoint GetViewportOrg() const { return m_viewportOrg; }
    [[nodiscard]] CSize GetViewportExt() const { return m_viewportExt; }
    /// Takes over mode, origins and extents, exactly as they stand.
    void copyMapping(const CDC& other);
    /// Converts in place, rounded to the nearest integer (halves up), saturated at +-10^9.
    void LPtoDP(CPoint* points, int count = 1) const;
    void DPtoLP(CPoint* points, int count = 1) const;
    /// Device pixels a logical unit, along x and along y, without signs.
    [[nodiscard]] double xScale() const;
    [[nodiscard]] double yScale() const;

    // State; each setter returns the value before.
    int SetROP2(int operation);
    [[nodiscard]] int GetROP2() const { return m_rop; }
    /// ALTERNATE or WINDING, for Polygon; anything else is refused.
    int SetPolyFillMode(int mode);
    [[nodiscard]] int GetPolyFillMode() const { return m_polyFillMode; }
    COLORREF SetBkColor(COLORREF color);
    [[nodiscard]] COLORREF GetBkColor() const { return m_background; }
    int SetBkMode(int mode);
    [[nodiscard]] int GetBkMode() const { return m_backgroundMode; }
    COLORREF SetTextColor(COLORREF color);
    [[nodiscard]] COLORREF GetTextColor() const { return m_textColor; }

    // Selection; a null argument selects the stock object (a black solid pen of width 0, a white
    // brush). The result is what was selected before, never null for pens and brushes.
    const CPen* SelectObject(const CPen* pen);
    const CBrush* SelectObject(const CBrush* brush);
    const CFont* SelectObject(const CFont* font);
    /// Only a memory context takes a bitmap, and only one of its own backend.
    virtual CBitmap* SelectObject(CBitmap* bitmap);
    [[nodiscard]] const CPen* GetCurrentPen() const { return m_pen; }
    [[nodiscard]] const CBrush* GetCurrentBrush() const { return m_brush; }
    [[nodiscard]] const CFont* GetCurrentFont() const { return m_font; }

    // Strokes, in logical coordinates.
    void MoveTo(CPoint point);
    void MoveTo(int x, int y) { MoveTo(CPoint(x, y)); }
    /// A straight stroke of the pen from the current position, which moves along.
    void LineTo(CPoint point);
    void LineTo(int x, int y) { LineTo(CPoint(x, y)); }
    /// Open chain; the current position is left alone.
    void Polyline(std::span<const CPoint> points);
    /// Closed area: brush inside, pen around.
    void Polygon(std::span<const CPoint> points);
    void Rectangle(const CRect& rect);
    void Rectangle(int left, int top, int right, int bottom)
    {
        Rectangle(CRect(left, top, right, bottom));
    }
    void Ellipse(const CRect& rect);
    void Ellipse(int left, int top, int right, int bottom)
    {
        Ellipse(CRect(left, top, right, bottom));
    }
    /// A straight stroke from the current position to where the arc begins, if that is another
    /// pixel, then the arc about `centre`; the current position moves to the arc's end. Degrees; a
    /// positive sweep runs from x to y in logical coordinates. A whole turn or more is the outline
    /// of Ellipse. Pen only.
    void AngleArc(CPoint centre, int radius, float startDegrees, float sweepDegrees);
    void AngleArc(int x, int y, int radius, float startDegrees, float sweepDegrees)
    {
        AngleArc(CPoint(x, y), radius, startDegrees, sweepDegrees);
    }
    /// Fills without the pen and whatever the raster operation is, up to but without the right and
    /// lower device edge; a null or hollow brush fills nothing.
    void FillRect(const CRect& rect, const CBrush* brush);
    /// One device pixel, by the raster operation like any stroke, so that a point that follows the
    /// pointer in XOR leaves no trail. Returns `color`.
    COLORREF SetPixel(CPoint point, COLORREF color);
    COLORREF SetPixel(int x, int y, COLORREF color) { return SetPixel(CPoint(x, y), color); }
    /// The pixel at a logical point; 0xffffffff outside, or where a backend has no pixels.
    [[nodiscard]] COLORREF GetPixel(CPoint point) const;
    /// Copies a block of another context of the same backend; both corners in the logical units of
    /// their own contexts, nothing is stretched. False for a null source, an operation other than
    /// SRCCOPY and SRCPAINT, and where the backend has no pixels.
    bool BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY,
                DWORD operation);

    [[nodiscard]] virtual int GetDeviceCaps(int index) const;
    [[nodiscard]] virtual bool IsPrinting() const { return false; }
    /// A memory context of this backend, with no bitmap selected; null when it cannot be made.
    [[nodiscard]] virtual std::unique_ptr<CDC> CreateCompatibleDC() = 0;
    /// A bitmap for such a context; null when it cannot be made.
    [[nodiscard]] virtual std::unique_ptr<CBitmap> CreateCompatibleBitmap(int width,
                                                                          int height) = 0;

protected:
    // What a backend draws, in device coordinates, with pen(), brush() and GetROP2() in force.
    // Coordinates reach +-10^9; a backend clips before it paints.
    virtual void deviceLine(CPoint from, CPoint to) = 0;
    virtual void devicePolyline(std::span<const CPoint> points) = 0;
    virtual void devicePolygon(std::span<const CPoint> points) = 0;
    virtual void deviceRectangle(const CRect& rect) = 0; // normalised
    virtual void deviceEllipse(const CRect& rect) = 0;   // normalised
    virtual void deviceFill(const CRect& rect, COLORREF color) = 0;
    virtual void devicePixel(CPoint point, COLORREF color) = 0;
    [[nodiscard]] virtual COLORREF devicePixelAt(CPoint point) const = 0;
    virtual bool deviceBlit(const CRect& target, CDC& source, CPoint from, DWORD operation) = 0;

private:
    [[nodiscard]] CPoint toDevice(CPoint logical) const;
    [[nodiscard]] CRect toDevice(const CRect& logical) const; // normalised
    [[nodiscard]] CPoint toLogical(CPoint device) const;
    /// The points in device coordinates, in a buffer that the next call overwrites.
    std::span<const CPoint> allToDevice(std::span<const CPoint> points);
    void fixIsotropic();
    [[nodiscard]] int stepsOfArc(int radius, double sweep) const;

    int m_mapMode = MM_TEXT;
    CPoint m_windowOrg;
    CSize m_windowExt{1, 1};
    CPoint m_viewportOrg;
    CSize m_viewportExt{1, 1};
    CPoint m_position;
    int m_rop = R2_COPYPEN;
    int m_polyFillMode = ALTERNATE;
    COLORREF m_background = 0xffffff;
    int m_backgroundMode = OPAQUE;
    COLORREF m_textColor = 0;
    const CPen* m_pen;
    const CBrush* m_brush;
    const CFont* m_font = nullptr;
    std::vector<CPoint> m_devicePoints; // kept, so that polylines do not allocate each time
};
