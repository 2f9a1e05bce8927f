#include "platform/device/cdc.h"
#include "platform/window/cwnd.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/dbobject/vexdbviewunits.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbpagemapping.h"
#include "vexdb/vexdbviewprocess.h"

#include <cmath>

namespace {

/// A window within this of the client's aspect is shown as it is.
constexpr double kAspectTol = 0.001;
/// Margins of the printing page in drawing units, around a page of one unit a millimetre.
constexpr CRect kPageMargins(1, 2, 2, 5);

/// Whether a mapping can be made: a window may lie flat, for it is widened, but not be a point.
bool canBeShown(const CRect& window)
{
    return window.Width() >= 0 && window.Height() >= 0 &&
           (window.Width() > 0 || window.Height() > 0);
}

/// Half the change of a side that a scale change by `factor` stands for, as it is taken back.
int takenBack(int size, double factor)
{
    const double half = factor < 1.0 ? 0.5 : -0.5;
    return truncateSaturated((size * factor - size) / 2.0 + half);
}

} // namespace

CVexGePoint2d CVexDbDisplayTableRecord::GetLogicalPoint(CPoint device) const
{
    return {(m_mapping.window.left + device.x * m_mapping.scaleX) / _dDispScale,
            (m_mapping.window.bottom - device.y * m_mapping.scaleY) / _dDispScale};
}

CPoint CVexDbDisplayTableRecord::GetDecivePoint(const CVexGePoint2d& point) const
{
    if (m_mapping.scaleX == 0.0 || m_mapping.scaleY == 0.0) {
        return {};
    }
    const double x = (point.x * _dDispScale - m_mapping.window.left) / m_mapping.scaleX;
    const double y = (m_mapping.window.bottom - point.y * _dDispScale) / m_mapping.scaleY;
    return {truncateSaturated(x + 0.5), truncateSaturated(y + 0.5)};
}

bool CVexDbDisplayTableRecord::clientOfView(CRect& client) const
{
    if (m_view == nullptr) {
        return false;
    }
    m_view->GetClientRect(client);
    return !client.IsRectEmpty();
}

void CVexDbDisplayTableRecord::MakeUpDisplayWindow(CDC* dc)
{
    if (dc == nullptr) {
        return;
    }
    if (dc->IsPrinting()) {
        makeUpPage(*dc);
        return;
    }
    CRect client;
    if (!clientOfView(client) || !canBeShown(m_mapping.window)) {
        return;
    }
    m_mapping.client = client;
    m_mapping.aspect = static_cast<double>(client.Height()) / client.Width();
    InitViewCoordinates();
    publishWindow();
    finishMapping(*dc);
}

void CVexDbDisplayTableRecord::makeUpPage(CDC& dc)
{
    const int left = dc.GetDeviceCaps(PHYSICALOFFSETX);
    const int top = dc.GetDeviceCaps(PHYSICALOFFSETY);
    const CRect page(left, top, dc.GetDeviceCaps(PHYSICALWIDTH) - 2 * left,
                     dc.GetDeviceCaps(PHYSICALHEIGHT) - 2 * top);
    if (page.IsRectEmpty()) {
        return;
    }
    const Mapping screen = m_mapping;
    m_printing = true;
    dc.SetBkColor(RGB(255, 255, 255));
    m_mapping.client = page;
    m_mapping.displayWindow =
        CRect(kPageMargins.left, kPageMargins.top, dc.GetDeviceCaps(HORZSIZE) + kPageMargins.right,
              dc.GetDeviceCaps(VERTSIZE) + kPageMargins.bottom);
    m_mapping.aspect = static_cast<double>(page.Height()) / page.Width();
    InitViewCoordinates();
    finishMapping(dc);
    m_printing = false;
    m_mapping = screen; // the screen's view stands as it stood before the print
}

void CVexDbDisplayTableRecord::InitViewCoordinates()
{
    CRect area = m_printing ? logicalOf(m_mapping.displayWindow) : m_mapping.window;
    if (m_mapping.aspect <= 0.0 || m_mapping.client.IsRectEmpty()) {
        return;
    }
    widenToAspect(area);
    keepScaleOnResize(area);
    if (m_view != nullptr) {
        m_view->GetClientRect(CVexDbViewProcess::current().lastClient);
    }
    m_mapping.window = area;
    m_mapping.displayWindow = unitsOf(area);
}

void CVexDbDisplayTableRecord::widenToAspect(CRect& area) const
{
    const double width = area.Width();
    const double height = area.Height();
    const double ratio = height / width;
    if (std::fabs(ratio - m_mapping.aspect) <= kAspectTol) {
        return;
    }
    if (m_mapping.aspect < ratio) {
        const double missing = height / m_mapping.aspect - width;
        area.left = truncateSaturated(area.left - missing / 2.0);
        area.right = truncateSaturated(area.right + missing / 2.0);
        return;
    }
    const double missing = width * m_mapping.aspect - height;
    if (m_printing) {
        // A page grows upwards only: its lower margin is where the drawing begins.
        area.bottom = truncateSaturated(area.bottom + missing);
        return;
    }
    area.top = truncateSaturated(area.top - missing / 2.0);
    area.bottom = truncateSaturated(area.bottom + missing / 2.0);
}

void CVexDbDisplayTableRecord::keepScaleOnResize(CRect& area) const
{
    const CRect& client = m_mapping.client;
    if (m_view == nullptr || m_printing || m_mapping.scaleX == 0.0 ||
        client == CVexDbViewProcess::current().lastClient) {
        return;
    }
    const double factor = static_cast<double>(area.Width()) / client.Width() / m_mapping.scaleX;
    // The sides move by what the scale change would add, which keeps the scale only for small
    // changes; hosts that call Onsize first come here with a factor of 1. From a factor of 2 on the
    // window would turn inside out: such a resize rescales.
    const int dx = takenBack(area.Width(), factor);
    const int dy = takenBack(area.Height(), factor);
    const CRect kept(truncateSaturated(static_cast<double>(area.left) + dx),
                     truncateSaturated(static_cast<double>(area.top) + dy),
                     truncateSaturated(static_cast<double>(area.right) - dx),
                     truncateSaturated(static_cast<double>(area.bottom) - dy));
    if (!kept.IsRectEmpty()) {
        area = kept;
    }
}

void CVexDbDisplayTableRecord::finishMapping(CDC& dc)
{
    const CRect& client = m_mapping.client;
    m_mapping.scaleX = static_cast<double>(m_mapping.window.Width()) / client.Width();
    m_mapping.scaleY = static_cast<double>(m_mapping.window.Height()) / client.Height();
    m_mapping.centre = client.CenterPoint();
    setWindowMapping(dc, m_mapping.window, client);
}

void CVexDbDisplayTableRecord::publishWindow()
{
    const CRect& area = m_mapping.displayWindow;
    if (database() != nullptr) {
        VexDbDrawingSettings_tag& settings = database()->settings();
        settings.m_ptViewMin.x = area.left;
        settings.m_ptViewMin.y = area.top;
        settings.m_ptViewMax.x = area.right;
        settings.m_ptViewMax.y = area.bottom;
    }
    // The first limit takes the larger y, the second the smaller: bottom is the upper side of a
    // rectangle whose y grows upwards, and callers of getLimits expect the pair so.
    setLimits({static_cast<double>(area.left), static_cast<double>(area.bottom)},
              {static_cast<double>(area.right), static_cast<double>(area.top)});
}

void CVexDbDisplayTableRecord::Onsize(int cx, int cy)
{
    CRect ignored;
    if (cx <= 0 || cy <= 0 || !clientOfView(ignored) || m_mapping.scaleX == 0.0 ||
        m_mapping.scaleY == 0.0) {
        return;
    }
    CRect& client = m_mapping.client;
    CRect& window = m_mapping.window;
    const double dx = (static_cast<double>(cx) - client.Width()) * m_mapping.scaleX / 2.0;
    const double dy = (static_cast<double>(cy) - client.Height()) * m_mapping.scaleY / 2.0;
    const CRect sized(truncateSaturated(window.left - dx), truncateSaturated(window.top - dy),
                      truncateSaturated(window.right + dx), truncateSaturated(window.bottom + dy));
    if (!sized.IsRectEmpty()) {
        window = sized;
        // Several sizes may come before the next mapping is made; each counts from the one before.
        client.right = client.left + cx;
        client.bottom = client.top + cy;
    }
}
