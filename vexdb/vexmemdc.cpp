#include "vexdb/vexmemdc.h"

#include "platform/device/cdc.h"
#include "platform/window/cwnd.h"

namespace {

/// Moves `corner` away from `inside` by a logical unit on each axis where its pixel would fall
/// short of `device`: zoomed in far enough, one logical unit is many pixels wide.
CPoint coveringCorner(const CDC& dc, CPoint device, CPoint inside)
{
    CPoint corner = device;
    dc.DPtoLP(&corner);
    CPoint inner = inside;
    dc.DPtoLP(&inner);
    CPoint pixel = corner;
    dc.LPtoDP(&pixel);
    const auto fallsShort = [](int got, int wanted, int from) {
        return from < wanted ? got < wanted : got > wanted;
    };
    if (fallsShort(pixel.x, device.x, inside.x)) {
        corner.x += corner.x < inner.x ? -1 : 1;
    }
    if (fallsShort(pixel.y, device.y, inside.y)) {
        corner.y += corner.y < inner.y ? -1 : 1;
    }
    return corner;
}

} // namespace

CVexOffScreenDC::CVexOffScreenDC(CDC& target, CWnd* view) : m_target(&target)
{
    if (view != nullptr) {
        view->GetClientRect(m_client);
    }
    m_memory = target.CreateCompatibleDC();
    m_bitmap = target.CreateCompatibleBitmap(m_client.Width(), m_client.Height());
    m_ok = m_memory != nullptr && m_bitmap != nullptr;
    if (m_ok) {
        m_oldBitmap = m_memory->SelectObject(m_bitmap.get());
        m_memory->copyMapping(target);
    }
}

CVexOffScreenDC::~CVexOffScreenDC()
{
    if (m_memory != nullptr && m_bitmap != nullptr) {
        m_memory->SelectObject(m_oldBitmap);
    }
}

CRect CVexOffScreenDC::clientOn(const CDC& dc) const
{
    CRect logical(coveringCorner(dc, m_client.TopLeft(), m_client.BottomRight()),
                  coveringCorner(dc, m_client.BottomRight(), m_client.TopLeft()));
    logical.NormalizeRect();
    return logical;
}

bool CVexOffScreenDC::copyClient(CDC& to, CDC& from, DWORD rop) const
{
    const CRect area = clientOn(to);
    return to.BitBlt(area.left, area.top, area.Width(), area.Height(), &from, area.left, area.top,
                     rop);
}

CVexBuffDC::CVexBuffDC(CDC& target, CWnd* view) : CVexOffScreenDC(target, view)
{
    ClearRect();
}

void CVexBuffDC::VexBitBlt(CDC* dc, DWORD rop)
{
    if (dc == nullptr || !ok()) {
        return;
    }
    GetDC()->copyMapping(*dc);
    copyClient(*dc, *GetDC(), rop);
}

void CVexBuffDC::ClearRect()
{
    const CBrush background(target().GetBkColor());
    GetDC()->FillRect(clientOn(*GetDC()), &background);
}

CVexMemDC::CVexMemDC(CDC& target, CWnd* view) : CVexOffScreenDC(target, view)
{
    if (ok() && !copyClient(*GetDC(), target, SRCCOPY)) {
        giveUp();
    }
}

CVexMemDC::~CVexMemDC()
{
    if (ok()) {
        copyClient(target(), *GetDC(), SRCCOPY);
    }
}
