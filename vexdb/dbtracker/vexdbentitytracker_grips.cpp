#include "platform/device/cdc.h"
#include "platform/device/vexdeviceobjects.h"
#include "platform/window/cwnd.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"
#include "vexdb/dbtracker/vexropscope.h"
#include "vexdb/vexdbdatabase.h"

namespace {

CRect boxAround(const CVexGePoint2d& grip, CSize handle, double pixelScale)
{
    const double width = handle.cx * pixelScale;
    const double height = handle.cy * pixelScale;
    const int left = truncateSaturated(grip.x * _dDispScale - width / 2.0);
    const int top = truncateSaturated(grip.y * _dDispScale - height / 2.0);
    return {left, top, truncateSaturated(left + width), truncateSaturated(top + height)};
}

} // namespace

CRect CVexDbEntityTracker::gripBox(const CVexGePoint2d& grip) const
{
    return boxAround(grip, m_handleSize, m_pixelScale);
}

bool CVexDbEntityTracker::refreshGrips()
{
    return m_entity != nullptr && m_entity->getGripPointVec(m_gripPoints);
}

int CVexDbEntityTracker::HitTest(CPoint device)
{
    if (m_dc == nullptr || m_entity == nullptr || m_gripPoints == nullptr || !refreshGrips()) {
        return -1;
    }
    CPoint logical = device;
    m_dc->DPtoLP(&logical);
    for (std::size_t at = 0; at < m_gripPoints->size(); ++at) {
        if (gripBox((*m_gripPoints)[at]).PtInRect(logical)) {
            return static_cast<int>(at);
        }
    }
    return -1;
}

bool CVexDbEntityTracker::DrawBoxis()
{
    if (m_dc == nullptr || m_database == nullptr || m_gripPoints == nullptr) {
        return false;
    }
    if (const CVexDbDisplayTableRecord* view = m_database->displays().getCurrentRecord();
        view != nullptr) {
        m_pixelScale = view->xScale();
    }
    const CPen pen(PS_SOLID, m_penWidth, m_handleColor);
    const CPen* const before = m_dc->SelectObject(&pen);
    for (const CVexGePoint2d& grip : *m_gripPoints) {
        const CRect box = gripBox(grip);
        m_dc->MoveTo(box.left, box.top);
        m_dc->LineTo(box.right, box.top);
        m_dc->LineTo(box.right, box.bottom);
        m_dc->LineTo(box.left, box.bottom);
        m_dc->LineTo(box.left, box.top);
    }
    m_dc->SelectObject(before);
    return true;
}

void CVexDbEntityTracker::DrawGripBox(bool erase)
{
    if (m_dc == nullptr || !refreshGrips()) {
        return;
    }
    if (erase) {
        m_entity->UnDraw(m_dc);
    }
    const VexRopScope xorPen(m_dc, R2_XORPEN);
    m_entity->HighlightDraw(m_dc);
    m_gripsShown = DrawBoxis();
}

void CVexDbEntityTracker::UnDrawGripBox()
{
    if (!m_gripsShown || m_dc == nullptr) {
        return;
    }
    {
        const VexRopScope xorPen(m_dc, R2_XORPEN);
        DrawBoxis();
        if (m_entity != nullptr) {
            m_entity->HighlightDraw(m_dc);
        }
    }
    if (m_entity != nullptr && m_highlightNeedsRedraw) {
        const VexRopScope copying(m_dc, R2_COPYPEN);
        m_entity->Draw(m_dc);
    }
    m_gripsShown = false;
}

void CVexDbEntityTracker::UndrawOrigin()
{
    if (m_dc != nullptr && m_entity != nullptr) {
        const VexRopScope asBand(m_dc, bandRaster(*m_dc));
        m_entity->Draw(m_dc);
    }
}

void CVexDbEntityTracker::strokeCurrent()
{
    if (m_dc != nullptr && m_current != nullptr) {
        const VexRopScope asBand(m_dc, bandRaster(*m_dc));
        m_current->Draw(m_dc);
    }
}

void CVexDbEntityTracker::DrawCurrent()
{
    strokeCurrent();
}

int CVexDbEntityTracker::SetCursor(CWnd* window, unsigned hitTest)
{
    if (window == nullptr || hitTest != HTCLIENT) {
        return -1;
    }
    CPoint screen;
    GetCursorPos(&screen);
    const int grip = HitTest(window->ScreenToClient(screen));
    if (grip < 0) {
        return -1;
    }
    ::SetCursor(grip == 0 ? VexCursor::kMove : VexCursor::kResize);
    return 0;
}
