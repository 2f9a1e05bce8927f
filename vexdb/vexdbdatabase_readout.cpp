#include "platform/window/cwnd.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbviewprocess.h"

#include <cmath>
#include <numbers>

namespace {

/// `value` brought to a multiple of `step`: its own truncated multiple, or the one beyond when
/// `moved` is more than half a step. A step of 0 does not round.
double rounded(double value, double moved, double step)
{
    if (step == 0.0) {
        return value;
    }
    const double below = truncateSaturated(value / step) * step;
    return std::fabs(moved) > step / 2.0 ? below + std::copysign(step, moved) : below;
}

/// The part of `value` beyond its truncated multiple of `step`.
double beyondMultiple(double value, double step)
{
    return step == 0.0 ? 0.0 : value - truncateSaturated(value / step) * step;
}

/// Nearest instead of truncated: what was a logical integer comes back as the same integer.
int nearestLogical(double coordinate)
{
    const double logical = coordinate * _dDispScale;
    return truncateSaturated(logical + std::copysign(0.5, logical));
}

CString coordinateText(const CVexGePoint2d& point)
{
    CString text;
    text.Format(L"%.6f, %.6f", point.x, point.y);
    return text;
}

CString polarText(const CVexGePoint2d& base, const CVexGePoint2d& point)
{
    double degrees = base.angleTo(point) * 180.0 / std::numbers::pi;
    if (degrees < 0.0) {
        degrees += 360.0;
    }
    CString text;
    text.Format(L"%.6f < %.6f", base.distanceTo(point), degrees);
    return text;
}

/// Upright when the way is more up than across; else level, also for a way of exactly 45 degrees.
void holdToAxis(CVexGePoint2d& point, const CVexGePoint2d& base)
{
    if (std::fabs(point.y - base.y) > std::fabs(point.x - base.x)) {
        point.x = base.x;
    } else {
        point.y = base.y;
    }
}

/// A plain mouse movement: rounds by how far the pointer came since the last value shown.
CString plainReadout(const VexDbDrawingSettings_tag& settings, CVexGePoint2d point, double step)
{
    CVexGePoint2d& last = CVexDbViewProcess::current().lastReadout;
    if (settings.m_bGridSnap) {
        point.set(rounded(point.x, point.x - last.x, step),
                  rounded(point.y, point.y - last.y, step));
    }
    last = point;
    return coordinateText(point);
}

/// A movement from `base`: grid snap and ortho hold `logical` too, which is how they reach the
/// tracker that asked.
CString heldReadout(const VexDbDrawingSettings_tag& settings, CPoint& logical, CPoint baseLogical,
                    double step)
{
    CVexGePoint2d point = toDrawing(logical);
    const CVexGePoint2d base = toDrawing(baseLogical);
    if (settings.m_bGridSnap) {
        point.set(rounded(point.x, beyondMultiple(point.x, step), step),
                  rounded(point.y, beyondMultiple(point.y, step), step));
    }
    if (settings.m_bOrtho) {
        holdToAxis(point, base);
    }
    if (settings.m_bGridSnap || settings.m_bOrtho) {
        logical = {nearestLogical(point.x), nearestLogical(point.y)};
    }
    return settings.m_bPolarReadout ? polarText(base, point) : coordinateText(point);
}

} // namespace

void CVexDbDatabase::SetCoordinate(CWnd* /*view*/, CWnd* text, CPoint* point, CPoint* base)
{
    const CVexDbDisplayTableRecord* display = m_displays.getCurrentRecord();
    if (point == nullptr || (base == nullptr && display == nullptr)) {
        return;
    }
    // Whether there is a grid step decides, not how large it is: a read-out rounds to whole units.
    const double step = m_settings.m_dGridStep != 0.0 ? 1.0 : 0.0;
    const CString readout = base == nullptr
                                ? plainReadout(m_settings, display->GetLogicalPoint(*point), step)
                                : heldReadout(m_settings, *point, *base, step);
    if (text != nullptr) {
        text->SetWindowText(readout);
    }
}
