#include "platform/device/cdc.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/dbobject/vexdbviewunits.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbpagemapping.h"

#include <algorithm>
#include <cmath>

namespace {

/// A window smaller than this is not zoomed into, one larger than the other not out of; drawing
/// units.
constexpr double kSmallestZoomed = 1.0;
constexpr double kLargestZoomed = 10000000.0;
/// Extents that even an empty drawing has.
constexpr VexXY kLeastExtent{29.0, 21.0};

CRect withinLimits(const CRect& rect)
{
    return {truncateSaturated(rect.left), truncateSaturated(rect.top),
            truncateSaturated(rect.right), truncateSaturated(rect.bottom)};
}

bool withinLimit(double value)
{
    return std::fabs(value) <= kTruncateLimit;
}

void widen(double& min, double& max, double coordinate)
{
    if (std::isfinite(coordinate)) {
        min = std::min(min, coordinate);
        max = std::max(max, coordinate);
    }
}

} // namespace

bool CVexDbDisplayTableRecord::canZoom(const CDC* dc) const
{
    CRect client;
    return dc != nullptr && database() != nullptr && clientOfView(client) &&
           m_mapping.scaleX != 0.0 && m_mapping.scaleY != 0.0;
}

bool CVexDbDisplayTableRecord::takeWindow(double left, double top, double right, double bottom)
{
    const CRect window(truncateSaturated(left), truncateSaturated(top), truncateSaturated(right),
                       truncateSaturated(bottom));
    if (window.IsRectEmpty()) {
        return false;
    }
    m_mapping.window = window;
    return true;
}

bool CVexDbDisplayTableRecord::moveWindow(double dx, double dy)
{
    const CRect& from = m_mapping.window;
    const double left = from.left + dx;
    const double top = from.top + dy;
    const double right = from.right + dx;
    const double bottom = from.bottom + dy;
    // A side held at the end of the coordinates would change the scale: the pan stops there.
    return withinLimit(left) && withinLimit(top) && withinLimit(right) && withinLimit(bottom) &&
           takeWindow(left, top, right, bottom);
}

void CVexDbDisplayTableRecord::showWindow(CDC* dc)
{
    MakeUpDisplayWindow(dc);
    Draw(dc);
}

void CVexDbDisplayTableRecord::ScaleUpDown(CDC* dc, CPoint p, double factor, bool)
{
    if (!canZoom(dc)) {
        return;
    }
    const CRect before = m_mapping.window;
    const double width = before.Width() / _dDispScale;
    const double height = before.Height() / _dDispScale;
    if (factor < 1.0 && (width < kSmallestZoomed || height < kSmallestZoomed)) {
        return;
    }
    if (factor > 1.0 && (width > kLargestZoomed || height > kLargestZoomed)) {
        return;
    }
    const double cx = truncateSaturated(before.left + p.x * m_mapping.scaleX);
    const double cy = truncateSaturated(before.bottom - p.y * m_mapping.scaleY);
    if (takeWindow(cx + (before.left - cx) * factor, cy + (before.top - cy) * factor,
                   cx + (before.right - cx) * factor, cy + (before.bottom - cy) * factor)) {
        m_previousWindow = before;
        showWindow(dc);
    }
}

void CVexDbDisplayTableRecord::ZoomIn(CDC* dc)
{
    if (canZoom(dc)) {
        ScaleUpDown(dc, m_mapping.centre, 1.0 - database()->settings().m_dZoomStep, false);
        Draw(dc);
    }
}

void CVexDbDisplayTableRecord::ZoomOut(CDC* dc)
{
    if (canZoom(dc)) {
        ScaleUpDown(dc, m_mapping.centre, 1.0 + database()->settings().m_dZoomStep, false);
        Draw(dc);
    }
}

void CVexDbDisplayTableRecord::ZoomPrev(CDC* dc)
{
    if (!canZoom(dc) || m_previousWindow.IsRectEmpty()) {
        return;
    }
    m_mapping.window = m_previousWindow;
    // Scaling by 1 about whatever point keeps the window and makes it its own predecessor: going
    // back twice shows what going back once does, and does not toggle.
    const CRect& window = m_mapping.window;
    const CPoint about((window.top + window.bottom) / 2, window.right / 2 + window.left);
    ScaleUpDown(dc, about, 1.0, false);
    Draw(dc);
}

void CVexDbDisplayTableRecord::ZoomWindow(CDC* dc, CRect rect)
{
    rect = withinLimits(rect);
    rect.NormalizeRect();
    if (!canZoom(dc) || (rect.Width() == 0 && rect.Height() == 0)) {
        return;
    }
    const int least = truncateSaturated(database()->settings().m_nPickBox * _dDispScale);
    if (rect.Width() < least && rect.Height() < least) {
        return;
    }
    m_previousWindow = m_mapping.window;
    m_mapping.window = rect;
    showWindow(dc);
}

void CVexDbDisplayTableRecord::ZoomExt()
{
    if (m_view == nullptr || database() == nullptr) {
        return;
    }
    getExtend();
    const VexXY min = database()->settings().m_ptExtentsMin;
    const VexXY max = database()->settings().m_ptExtentsMax;
    if (takeWindow(min.x * _dDispScale, min.y * _dDispScale, max.x * _dDispScale,
                   max.y * _dDispScale)) {
        m_previousWindow = m_mapping.window;
    }
}

void CVexDbDisplayTableRecord::ZoomAll()
{
    if (m_view == nullptr || database() == nullptr) {
        return;
    }
    const VexXY min = database()->settings().m_ptLimitsMin;
    const VexXY max = database()->settings().m_ptLimitsMax;
    if (takeWindow(min.x * _dDispScale, min.y * _dDispScale, max.x * _dDispScale,
                   max.y * _dDispScale)) {
        m_previousWindow = m_mapping.window;
    }
}

void CVexDbDisplayTableRecord::getExtend()
{
    if (database() == nullptr) {
        return;
    }
    // This box is inside every answer, so a small drawing near the origin does not fill the screen.
    VexXY min{0.0, 0.0};
    VexXY max = kLeastExtent;
    for (auto at = m_displayed.begin(), end = m_displayed.end(); at != end; ++at) {
        auto* entity = static_cast<CVexDbEntity*>(at.object());
        CVexDbEntity::PointList* grips = nullptr;
        if (entity->isVisiable() && entity->getGripPointVec(grips) && grips != nullptr) {
            for (const CVexGePoint2d& grip : *grips) {
                widen(min.x, max.x, grip.x);
                widen(min.y, max.y, grip.y);
            }
        }
    }
    database()->settings().m_ptExtentsMin = min;
    database()->settings().m_ptExtentsMax = max;
}

void CVexDbDisplayTableRecord::MoveWindow(CDC* dc, CPoint p)
{
    if (!canZoom(dc)) {
        return;
    }
    // The y way keeps the sign of the device, where y grows downwards: a point below the centre
    // moves the window up, away from it. Hosts' scroll commands count on that direction.
    const double dx = (static_cast<double>(p.x) - m_mapping.centre.x) * m_mapping.scaleX;
    const double dy = (static_cast<double>(p.y) - m_mapping.centre.y) * m_mapping.scaleY;
    if (moveWindow(dx, dy)) {
        showWindow(dc);
    }
}

void CVexDbDisplayTableRecord::PanWindow(CDC* dc, int dx, int dy)
{
    if (canZoom(dc) && moveWindow(dx, dy)) {
        showWindow(dc);
    }
}

void CVexDbDisplayTableRecord::PanWindow(CDC* dc, const CVexGeVector2d& vector)
{
    const CRect& shown = m_mapping.displayWindow;
    if (vector.x != 0.0) {
        PanWindow(dc, truncateSaturated(shown.Width() * 0.01 * vector.x), 0);
    } else if (vector.y != 0.0) {
        PanWindow(dc, 0, truncateSaturated(shown.Height() * 0.01 * vector.y));
    }
}

void CVexDbDisplayTableRecord::RealPanWindow(CDC* dc, int dx, int dy)
{
    if (!canZoom(dc) || !moveWindow(dx, dy)) {
        return;
    }
    m_mapping.displayWindow = unitsOf(m_mapping.window);
    publishWindow();
    m_mapping.centre = m_mapping.client.CenterPoint();
    setWindowMapping(*dc, m_mapping.window, m_mapping.client);
    Draw(dc);
}
