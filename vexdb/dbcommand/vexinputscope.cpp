#include "vexdb/dbcommand/vexinputscope.h"

#include "platform/device/cdc.h"
#include "platform/window/cwnd.h"
#include "vexdb/dbcommand/vexcommandhandler.h"

VexInputScope::VexInputScope(CVexCommandHandler& handler, CWnd& window)
    : m_handler(handler), m_window(window)
{
    m_window.SetCapture();
}

VexInputScope::~VexInputScope()
{
    const bool isThere = CWnd::isLiving(&m_window); // else its context has gone with it
    if (m_penDc != nullptr && isThere) {
        m_penDc->SelectObject(m_pen);
    }
    if (m_rasterDc != nullptr && isThere) {
        m_rasterDc->SetROP2(m_raster);
    }
    // A capture that somebody else took meanwhile is left to him.
    if (GetCapture() == &m_window) {
        ReleaseCapture();
    }
    if (m_clearsSnaps) {
        m_handler.clearSnaps();
    }
    if (m_cursor) {
        SetCursor(*m_cursor);
    }
}

void VexInputScope::showCursor(VexCursor cursor)
{
    const VexCursor before = SetCursor(cursor);
    m_cursor = m_cursor.value_or(before);
}

void VexInputScope::setRaster(CDC* dc, int operation)
{
    if (dc != nullptr) {
        const int before = dc->SetROP2(operation);
        m_raster = m_rasterDc == nullptr ? before : m_raster;
        m_rasterDc = dc;
    }
}

void VexInputScope::selectPen(CDC* dc, const CPen* pen)
{
    if (dc != nullptr) {
        const CPen* const before = dc->SelectObject(pen);
        m_pen = m_penDc == nullptr ? before : m_pen;
        m_penDc = dc;
    }
}
