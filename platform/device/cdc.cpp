#include "platform/device/cdc.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace {

/// No coordinate that a backend gets lies farther out.
constexpr double kCoordinateLimit = 1e9;

const CPen& stockPen()
{
    static const CPen pen(PS_SOLID, 0, RGB(0, 0, 0));
    return pen;
}

const CBrush& stockBrush()
{
    static const CBrush brush(RGB(255, 255, 255));
    return brush;
}

const CBrush& hollowBrush()
{
    static const CBrush brush(BS_HOLLOW, 0);
    return brush;
}

/// The nearest integer, halves up, saturated; NaN is 0. Written without a library call, since it
/// runs four times for each line of a picture.
int toCoordinate(double value)
{
    if (std::isnan(value)) {
        return 0;
    }
    const double raised = value + 0.5;
    if (raised >= kCoordinateLimit) {
        return static_cast<int>(kCoordinateLimit);
    }
    if (raised <= -kCoordinateLimit) {
        return static_cast<int>(-kCoordinateLimit);
    }
    const int truncated = static_cast<int>(raised);
    return static_cast<double>(truncated) > raised ? truncated - 1 : truncated;
}

/// Moves `value` from one axis (origin and extent) to another. The product comes before the
/// division: it is exact for every coordinate in use, so that halves are told from their
/// neighbours.
int scaled(int value, int fromOrigin, int fromExtent, int toOrigin, int toExtent)
{
    const double distance = static_cast<double>(value) - fromOrigin;
    return toCoordinate(distance * toExtent / fromExtent + toOrigin);
}

/// Difference of two coordinates far apart, saturated instead of wrapped.
int moved(int value, int fromOrigin, int toOrigin)
{
    return toCoordinate(static_cast<double>(value) - fromOrigin + toOrigin);
}

int withSign(double size, int sign)
{
    const int length = std::max(1, toCoordinate(size));
    return sign < 0 ? -length : length;
}

/// A block by its corner and extents, all logical; sides saturate.
CRect blockAt(int x, int y, int width, int height)
{
    return {x, y, moved(x, 0, width), moved(y, 0, height)};
}

} // namespace

CDC::CDC() : m_pen(&stockPen()), m_brush(&stockBrush())
{
}

CDC::~CDC() = default;

int CDC::SetMapMode(int mode)
{
    const int before = m_mapMode;
    if (mode == MM_TEXT || mode == MM_ISOTROPIC) {
        m_mapMode = mode;
        fixIsotropic();
    }
    return before;
}

CPoint CDC::SetWindowOrg(CPoint origin)
{
    return std::exchange(m_windowOrg, origin);
}

CSize CDC::SetWindowExt(CSize extent)
{
    const CSize before = m_windowExt;
    if (extent.cx != 0 && extent.cy != 0) {
        m_windowExt = extent;
        fixIsotropic();
    }
    return before;
}

CPoint CDC::SetViewportOrg(CPoint origin)
{
    return std::exchange(m_viewportOrg, origin);
}

CSize CDC::SetViewportExt(CSize extent)
{
    const CSize before = m_viewportExt;
    if (extent.cx != 0 && extent.cy != 0) {
        m_viewportExt = extent;
        fixIsotropic();
    }
    return before;
}

void CDC::fixIsotropic()
{
    if (m_mapMode != MM_ISOTROPIC) {
        return;
    }
    const double across = xScale();
    const double up = yScale();
    if (across > up) {
        m_viewportExt.cx =
            withSign(std::abs(static_cast<double>(m_windowExt.cx)) * up, m_viewportExt.cx);
    } else if (up > across) {
        m_viewportExt.cy =
            withSign(std::abs(static_cast<double>(m_windowExt.cy)) * across, m_viewportExt.cy);
    }
}

void CDC::copyMapping(const CDC& other)
{
    m_mapMode = other.m_mapMode;
    m_windowOrg = other.m_windowOrg;
    m_windowExt = other.m_windowExt;
    m_viewportOrg = other.m_viewportOrg;
    m_viewportExt = other.m_viewportExt;
}

CPoint CDC::toDevice(CPoint logical) const
{
    if (m_mapMode == MM_TEXT) {
        return {moved(logical.x, m_windowOrg.x, m_viewportOrg.x),
                moved(logical.y, m_windowOrg.y, m_viewportOrg.y)};
    }
    return {scaled(logical.x, m_windowOrg.x, m_windowExt.cx, m_viewportOrg.x, m_viewportExt.cx),
            scaled(logical.y, m_windowOrg.y, m_windowExt.cy, m_viewportOrg.y, m_viewportExt.cy)};
}

CPoint CDC::toLogical(CPoint device) const
{
    if (m_mapMode == MM_TEXT) {
        return {moved(device.x, m_viewportOrg.x, m_windowOrg.x),
                moved(device.y, m_viewportOrg.y, m_windowOrg.y)};
    }
    return {scaled(device.x, m_viewportOrg.x, m_viewportExt.cx, m_windowOrg.x, m_windowExt.cx),
            scaled(device.y, m_viewportOrg.y, m_viewportExt.cy, m_windowOrg.y, m_windowExt.cy)};
}

CRect CDC::toDevice(const CRect& logical) const
{
    CRect device(toDevice(logical.TopLeft()), toDevice(logical.BottomRight()));
    device.NormalizeRect();
    return device;
}

void CDC::LPtoDP(CPoint* points, int count) const
{
    for (int i = 0; i < count; ++i) {
        points[i] = toDevice(points[i]);
    }
}

void CDC::DPtoLP(CPoint* points, int count) const
{
    for (int i = 0; i < count; ++i) {
        points[i] = toLogical(points[i]);
    }
}

double CDC::xScale() const
{
    return m_mapMode == MM_TEXT ? 1.0
                                : std::abs(static_cast<double>(m_viewportExt.cx) / m_windowExt.cx);
}

double CDC::yScale() const
{
    return m_mapMode == MM_TEXT ? 1.0
                                : std::abs(static_cast<double>(m_viewportExt.cy) / m_windowExt.cy);
}

int CDC::SetROP2(int operation)
{
    return std::exchange(m_rop, operation);
}

int CDC::SetPolyFillMode(int mode)
{
    const int before = m_polyFillMode;
    if (mode == ALTERNATE || mode == WINDING) {
        m_polyFillMode = mode;
    }
    return before;
}

COLORREF CDC::SetBkColor(COLORREF color)
{
    return std::exchange(m_background, color);
}

int CDC::SetBkMode(int mode)
{
    return std::exchange(m_backgroundMode, mode);
}

COLORREF CDC::SetTextColor(COLORREF color)
{
    return std::exchange(m_textColor, color);
}

const CPen* CDC::SelectObject(const CPen* pen)
{
    return std::exchange(m_pen, pen != nullptr ? pen : &stockPen());
}

const CBrush* CDC::SelectObject(const CBrush* brush)
{
    return std::exchange(m_brush, brush != nullptr ? brush : &stockBrush());
}

const CFont* CDC::SelectObject(const CFont* font)
{
    return std::exchange(m_font, font);
}

CBitmap* CDC::SelectObject(CBitmap* /*bitmap*/)
{
    return nullptr;
}

void CDC::MoveTo(CPoint point)
{
    m_position = point;
}

void CDC::LineTo(CPoint point)
{
    const CPoint from = std::exchange(m_position, point);
    deviceLine(toDevice(from), toDevice(point));
}

std::span<const CPoint> CDC::allToDevice(std::span<const CPoint> points)
{
    m_devicePoints.assign(points.begin(), points.end());
    for (CPoint& point : m_devicePoints) {
        point = toDevice(point);
    }
    return m_devicePoints;
}

void CDC::Polyline(std::span<const CPoint> points)
{
    if (points.size() >= 2) {
        devicePolyline(allToDevice(points));
    }
}

void CDC::Polygon(std::span<const CPoint> points)
{
    if (points.size() >= 2) {
        devicePolygon(allToDevice(points));
    }
}

void CDC::Rectangle(const CRect& rect)
{
    deviceRectangle(toDevice(rect));
}

void CDC::Ellipse(const CRect& rect)
{
    deviceEllipse(toDevice(rect));
}

/// How many chords stand for an arc on this device, `sweep` in radians.
int CDC::stepsOfArc(int radius, double sweep) const
{
    constexpr double kFinest = 2.0 * std::numbers::pi / 4096;
    constexpr double kCoarsest = 2.0 * std::numbers::pi / 16;
    constexpr double kSagPixels = 0.25;
    const double pixels = std::abs(static_cast<double>(radius)) * std::max(xScale(), yScale());
    const double step = 2.0 * std::acos(std::max(1.0 - kSagPixels / pixels, 0.0));
    return static_cast<int>(std::ceil(std::abs(sweep) / std::clamp(step, kFinest, kCoarsest)));
}

void CDC::AngleArc(CPoint centre, int radius, float startDegrees, float sweepDegrees)
{
    constexpr double kRadians = std::numbers::pi / 180.0;
    constexpr double kWholeTurn = 360.0;
    const double start = static_cast<double>(startDegrees) * kRadians;
    const double sweep = static_cast<double>(sweepDegrees) * kRadians;
    const auto at = [&](double angle) {
        return CPoint(toCoordinate(centre.x + radius * std::cos(angle)),
                      toCoordinate(centre.y + radius * std::sin(angle)));
    };
    const CPoint begin = at(start);
    if (toDevice(m_position) != toDevice(begin)) { // in XOR a single pixel would be a hole
        LineTo(begin);
    }
    m_position = at(start + sweep);
    if (std::abs(static_cast<double>(sweepDegrees)) >= kWholeTurn) {
        const CBrush* const before = SelectObject(&hollowBrush());
        Ellipse(CRect(moved(centre.x, radius, 0), moved(centre.y, radius, 0),
                      moved(centre.x, 0, radius), moved(centre.y, 0, radius)));
        SelectObject(before);
        return;
    }
    const int steps = stepsOfArc(radius, sweep);
    std::vector<CPoint> chain{begin};
    for (int i = 1; i <= steps; ++i) {
        chain.push_back(at(start + sweep * i / steps));
    }
    Polyline(chain);
}

void CDC::FillRect(const CRect& rect, const CBrush* brush)
{
    if (brush != nullptr && brush->style() == BS_SOLID) {
        deviceFill(toDevice(rect), brush->color());
    }
}

COLORREF CDC::SetPixel(CPoint point, COLORREF color)
{
    devicePixel(toDevice(point), color);
    return color;
}

COLORREF CDC::GetPixel(CPoint point) const
{
    return devicePixelAt(toDevice(point));
}

bool CDC::BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY,
                 DWORD operation)
{
    if (source == nullptr || (operation != SRCCOPY && operation != SRCPAINT)) {
        return false;
    }
    // With y up the named corner is the lower one on the device, in the source as in the target:
    // both blocks are turned alike, and the upper left corners fit each other.
    const CRect target = toDevice(blockAt(x, y, width, height));
    const CRect from = source->toDevice(blockAt(sourceX, sourceY, width, height));
    return deviceBlit(target, *source, from.TopLeft(), operation);
}

int CDC::GetDeviceCaps(int /*index*/) const
{
    return 0;
}
