#include "vexdb/vexdbpagemapping.h"

#include "platform/device/cdc.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"

#include <cmath>

namespace {

constexpr double kMillimetresPerInch = 25.4;
/// Extents are as large as they may be, so that their ratio holds the scale to eight digits.
constexpr double kLongExtent = 1e8;

} // namespace

void setWindowMapping(CDC& dc, const CRect& window, const CRect& client)
{
    // First of all: another mode ignores extents, and an isotropic one evens them out as they come.
    dc.SetMapMode(MM_ISOTROPIC);
    dc.SetWindowOrg(window.left, window.top);
    dc.SetViewportOrg(client.left, client.bottom);
    dc.SetWindowExt(window.Width(), window.Height());
    // The negative height turns y up.
    dc.SetViewportExt(client.Width(), -client.Height());
}

bool setPageMapping(CDC& dc, const CVexGePoint2d& drawingMin, double millimetresPerUnit)
{
    const int dotsPerInch = dc.GetDeviceCaps(LOGPIXELSY);
    const double pixelsPerLogical =
        millimetresPerUnit / _dDispScale * dotsPerInch / kMillimetresPerInch;
    if (!std::isfinite(pixelsPerLogical) || pixelsPerLogical <= 0.0) {
        return false;
    }
    const bool shrinks = pixelsPerLogical <= 1.0;
    const int window =
        truncateSaturated(shrinks ? kLongExtent : kLongExtent / pixelsPerLogical + 0.5);
    const int page =
        truncateSaturated(shrinks ? kLongExtent * pixelsPerLogical + 0.5 : kLongExtent);
    if (window < 1 || page < 1) {
        return false;
    }
    dc.SetMapMode(MM_ISOTROPIC);
    dc.SetWindowOrg(toLogical(drawingMin));
    dc.SetViewportOrg(0, dc.GetDeviceCaps(VERTRES));
    dc.SetWindowExt(window, window);
    dc.SetViewportExt(page, -page);
    return true;
}
