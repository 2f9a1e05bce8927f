#include "vexdb/dbtracker/vexdbdisplaytrecker.h"

#include "platform/device/cdc.h"
#include "platform/window/cwnd.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/dbtracker/vexropscope.h"
#include "vexdb/vexdbdatabase.h"

namespace {

constexpr COLORREF kBandColor = 0x00ffff;
constexpr wchar_t kWindowZoom = L'W';
constexpr wchar_t kRealTimePan = L'R';

/// The mouse for a scope. A capture that somebody else took meanwhile is left to him.
class CaptureScope {
public:
    explicit CaptureScope(CWnd& window) : m_window(window) { m_window.SetCapture(); }
    ~CaptureScope()
    {
        if (GetCapture() == &m_window) {
            ReleaseCapture();
        }
    }
    CaptureScope(const CaptureScope&) = delete;
    CaptureScope& operator=(const CaptureScope&) = delete;

private:
    CWnd& m_window;
};

bool endsTracking(WPARAM key)
{
    return key == VK_ESCAPE || key == VK_CANCEL || key == VK_RETURN || key == VK_SPACE;
}

} // namespace

CVexDbDisplayTrecker::CVexDbDisplayTrecker(CWnd* window, CVexDbDatabase* database, wchar_t mode)
    : m_window(window), m_context(nullptr), m_database(database), m_pen(PS_SOLID, 0, kBandColor),
      m_mode(mode)
{
    if (const CVexDbDisplayTableRecord* record = view(); record != nullptr) {
        m_context = record->GetCurrentDC();
    }
    if (m_context == nullptr && m_window != nullptr) {
        m_context = m_window->GetDC();
    }
}

CVexDbDisplayTableRecord* CVexDbDisplayTrecker::view() const
{
    return m_database != nullptr ? m_database->displays().getCurrentRecord() : nullptr;
}

CPoint CVexDbDisplayTrecker::logicalAt(CPoint device) const
{
    const CVexDbDisplayTableRecord* record = view();
    return record != nullptr ? toLogical(record->GetLogicalPoint(device)) : CPoint();
}

void CVexDbDisplayTrecker::SetStartPoint(CPoint device)
{
    m_rubberStart = logicalAt(device);
    m_rubberEnd = m_rubberStart + CPoint(1, 1);
}

void CVexDbDisplayTrecker::SetValidRect(const CRect& rect)
{
    m_validRect = rect;
    m_validRect.NormalizeRect();
}

bool CVexDbDisplayTrecker::IsValidPos(CPoint device) const
{
    return m_validRect.IsRectEmpty() || m_validRect.PtInRect(device);
}

bool CVexDbDisplayTrecker::Track(CWnd* window, CPoint p)
{
    return TrackHandle(window, p);
}

bool CVexDbDisplayTrecker::TrackHandle(CWnd* window, CPoint p)
{
    if (window == nullptr || view() == nullptr) {
        return false;
    }
    CRect client;
    window->GetClientRect(client);
    SetValidRect(client);
    if (!IsValidPos(p)) {
        return false;
    }
    const CaptureScope capture(*window);
    const VexRopScope xorPen(m_context, R2_XORPEN);
    m_current = p;
    m_previous = p;
    SetStartPoint(p);
    const Verdict verdict = pump(*window);
    takeBandOff();
    return verdict == Verdict::kChanged;
}

CVexDbDisplayTrecker::Verdict CVexDbDisplayTrecker::pump(CWnd& window)
{
    for (;;) {
        MSG message;
        if (!GetMessageW(&message, nullptr, 0, 0)) {
            CVexBackend::current().postMessage(message); // the program's own loop ends by it too
            return Verdict::kEnd;
        }
        if (message.hwnd != &window && GetCapture() != &window) {
            return Verdict::kEnd;
        }
        const Verdict verdict = onMessage(window, message);
        if (verdict != Verdict::kGoOn) {
            return verdict;
        }
    }
}

CVexDbDisplayTrecker::Verdict CVexDbDisplayTrecker::onMessage(CWnd& window, const MSG& message)
{
    switch (message.message) {
    case WM_MOUSEMOVE: onMouseMove(window, pointOfLParam(message.lParam)); return Verdict::kGoOn;
    case WM_LBUTTONDOWN: changeUnbanded(); return Verdict::kChanged;
    case WM_MBUTTONUP: return Verdict::kEnd;
    case WM_KEYDOWN:
        if (endsTracking(message.wParam)) {
            return Verdict::kEnd;
        }
        break;
    default: break;
    }
    dispatch(window, message);
    return Verdict::kGoOn;
}

void CVexDbDisplayTrecker::dispatch(CWnd& window, const MSG& message)
{
    if (message.message != WM_PAINT || message.hwnd != &window) {
        DispatchMessageW(&message);
        return;
    }
    // The window paints over the band: without a lift the next stroke would put it on, not off.
    const bool shown = m_rubberShown;
    takeBandOff();
    {
        const VexRopScope copyPen(m_context, R2_COPYPEN);
        DispatchMessageW(&message);
    }
    if (shown) {
        showBand();
    }
}

void CVexDbDisplayTrecker::onMouseMove(CWnd& window, CPoint device)
{
    if (!IsValidPos(device)) {
        return;
    }
    if (m_mode == kRealTimePan) {
        panTo(device);
        return;
    }
    m_current = device;
    CPoint logical = logicalAt(device);
    // Copies go out: the answer may hold its point to an axis or to the grid, which is meant for
    // drawing; the band follows the mouse.
    CPoint start = m_rubberStart;
    CPoint shown = logical;
    window.SendMessage(WM_VEX_COORDINATE, reinterpret_cast<WPARAM>(&start),
                       reinterpret_cast<LPARAM>(&shown));
    takeBandOff();
    m_rubberEnd = logical;
    showBand();
}

void CVexDbDisplayTrecker::panTo(CPoint device)
{
    m_current = device;
    if (m_current == m_previous) {
        return;
    }
    const VexRopScope copyPen(m_context, R2_COPYPEN);
    ChangeDisplay();
    m_previous = m_current;
    SetStartPoint(m_previous);
}

void CVexDbDisplayTrecker::changeUnbanded()
{
    takeBandOff();
    const VexRopScope copyPen(m_context, R2_COPYPEN);
    ChangeDisplay();
}

void CVexDbDisplayTrecker::showBand()
{
    DrawRubber();
    m_rubberShown = true;
}

void CVexDbDisplayTrecker::takeBandOff()
{
    if (m_rubberShown) {
        DrawRubber();
        m_rubberShown = false;
    }
}

void CVexDbDisplayTrecker::DrawRect()
{
    if (m_context == nullptr) {
        return;
    }
    m_context->MoveTo(m_rubberStart);
    m_context->LineTo(m_rubberEnd.x, m_rubberStart.y);
    m_context->LineTo(m_rubberEnd);
    m_context->LineTo(m_rubberStart.x, m_rubberEnd.y);
    m_context->LineTo(m_rubberStart);
}

void CVexDbDisplayTrecker::DrawRubber()
{
    if (m_context == nullptr) {
        return;
    }
    const CPen* const before = m_context->SelectObject(&m_pen);
    if (m_mode == kWindowZoom) {
        DrawRect();
    } else {
        m_context->MoveTo(m_rubberStart);
        m_context->LineTo(m_rubberEnd);
    }
    m_context->SelectObject(before);
}

void CVexDbDisplayTrecker::ChangeDisplay()
{
    CVexDbDisplayTableRecord* const record = view();
    if (record == nullptr) {
        return;
    }
    if (m_mode == kWindowZoom) {
        CRect area(m_rubberStart, m_rubberEnd);
        area.NormalizeRect();
        record->ZoomWindow(m_context, area);
    } else if (m_mode == kRealTimePan) {
        // Pixels go to the logical window as they stand: the picture follows the mouse at the pace
        // of one logical unit a pixel, whatever the zoom, and upside down.
        record->RealPanWindow(m_context, m_previous.x - m_current.x, m_previous.y - m_current.y);
    } else {
        record->PanWindow(m_context, m_rubberStart.x - m_rubberEnd.x,
                          m_rubberStart.y - m_rubberEnd.y);
    }
}
