#include "vexdb/dbtracker/vexselectiontracker.h"

#include "platform/device/cdc.h"
#include "platform/window/cwnd.h"
#include "vexdb/dbcommand/vexarrowkeys.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexfoldedkey.h"
#include "vexdb/dbcommand/vexinputscope.h"
#include "vexdb/dbcommand/vexpump.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/geentity2d/vexgeline2d.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

VexCursor _cursorSelect = VexCursor::kPickBox;

namespace {

constexpr COLORREF kBandColor = 0x00ffff;
constexpr std::size_t kLeastCorners = 3;

CVexGePoint2d drawing(CPoint logical)
{
    return CVexGePoint2d(logical) / _dDispScale;
}

/// Keeps the pointer in the client area for a scope.
class ClipScope {
public:
    ClipScope(const CWnd& window, const CRect& client)
    {
        const CRect screen(window.ClientToScreen(client.TopLeft()),
                           window.ClientToScreen(client.BottomRight()));
        ClipCursor(&screen);
    }
    ~ClipScope() { ClipCursor(nullptr); }
    ClipScope(const ClipScope&) = delete;
    ClipScope& operator=(const ClipScope&) = delete;
};

} // namespace

/// One pick, as it waits in the pump.
class CVexDbSelectionTracker::Pick : public VexInput {
public:
    Pick(CVexDbSelectionTracker& tracker, CWnd& window) : m_tracker(tracker), m_window(window) {}

    VexVerdict onMessage(const MSG& message) override
    {
        if (isArrowKey(message)) {
            bool ignored = false; // no answer here depends on how the pointer came
            return moveKey(*m_tracker.m_database, m_window, message, ignored);
        }
        switch (message.message) {
        case WM_MOUSEMOVE:
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK: // the second press of a double click is one more press
            if (follow(pointOfLParam(message.lParam)) && message.message != WM_MOUSEMOVE) {
                press();
            }
            return VexVerdict::kSwallow;
        case WM_KEYDOWN: return onKeyDown(message.wParam);
        case WM_CHAR: onChar(static_cast<wchar_t>(message.wParam)); return VexVerdict::kSwallow;
        default: return VexVerdict::kDispatch;
        }
    }

    void takeOff() override
    {
        m_shown = m_tracker.m_bandDrawn;
        m_tracker.eraseBand();
        if (m_tracker.m_dc != nullptr) {
            m_tracker.m_dc->SetROP2(R2_COPYPEN);
        }
    }

    void putBack() override
    {
        if (m_tracker.m_dc != nullptr) {
            m_tracker.m_dc->SetROP2(R2_XORPEN);
        }
        if (m_shown) {
            m_tracker.showBand();
        }
    }

private:
    bool follow(CPoint device)
    {
        CVexDbSelectionTracker& t = m_tracker;
        t.m_previous = t.m_end;
        if (!t.IsValidPos(device)) {
            return false;
        }
        CPoint cursor = device;
        if (t.m_dc != nullptr) {
            t.m_dc->DPtoLP(&cursor);
        }
        CPoint start = t.m_start;
        m_window.SendMessage(WM_VEX_COORDINATE, reinterpret_cast<WPARAM>(&start),
                             reinterpret_cast<LPARAM>(&cursor));
        t.m_cursor = cursor;
        if (t.m_firstCornerSet && cursor != t.m_end) {
            t.eraseBand();
            t.m_end = cursor;
            if (t.m_mode == kAutomatic) {
                t.usePen(t.m_end.x < t.m_start.x ? t.m_dottedPen : t.m_solidPen);
            }
            t.showBand();
        }
        return true;
    }

    void press()
    {
        if (!m_tracker.m_firstCornerSet) {
            pressFirst();
        } else if (m_tracker.m_mode == kPolygon) {
            m_tracker.eraseBand(); // as it was drawn, without the new corner
            m_tracker.m_polygon.push_back(m_tracker.m_cursor);
        } else {
            m_tracker.SelectEntity(false);
            end();
        }
    }

    void pressFirst()
    {
        m_tracker.m_polygon.clear();
        if (m_tracker.m_mode == kAutomatic && m_tracker.SelectEntity(true) > 0) {
            end();
            return;
        }
        m_tracker.SetStartPoint(m_tracker.m_cursor);
        if (m_tracker.m_mode == kPolygon) {
            m_tracker.m_polygon.push_back(m_tracker.m_cursor);
        }
    }

    VexVerdict onKeyDown(WPARAM key)
    {
        switch (key) {
        case VK_CANCEL:
        case VK_ESCAPE:
            m_tracker.m_selected.clear();
            m_tracker.m_cancelled = true;
            end();
            return VexVerdict::kSwallow;
        case VK_RETURN:
        case VK_SPACE: end(); return VexVerdict::kSwallow;
        default: return VexVerdict::kTranslate;
        }
    }

    void onChar(wchar_t character)
    {
        const wchar_t key = foldedKey(character);
        if (m_tracker.m_keywords.Find(key) < 0) {
            return;
        }
        // The letter of the crossing mode closes a polygon; every other way out of one drops it.
        if (m_tracker.m_mode == kPolygon && key == kCrossing) {
            m_tracker.SelectEntity(false);
            end();
            return;
        }
        m_tracker.eraseBand();
        m_tracker.m_mode = key;
        m_tracker.usePen(key == kCrossing || key == kFence ? m_tracker.m_dottedPen
                                                           : m_tracker.m_solidPen);
        m_tracker.forgetCorners();
    }

    void end()
    {
        m_tracker.eraseBand();
        finish();
    }

    CVexDbSelectionTracker& m_tracker;
    CWnd& m_window;
    bool m_shown = false;
};

CVexDbSelectionTracker::CVexDbSelectionTracker(CWnd* window, CVexDbDatabase* database, wchar_t mode)
    : m_solidPen(PS_SOLID, 0, kBandColor), m_dottedPen(PS_DOT, 1, kBandColor), m_pen(&m_solidPen),
      m_keywords(L"WCFP"), m_mode(mode), m_database(database), m_window(window)
{
    if (const CVexDbDisplayTableRecord* view = database->displays().getCurrentRecord();
        view != nullptr) {
        m_dc = view->GetCurrentDC();
    }
    if (mode == kCrossing || mode == kFence) {
        m_pen = &m_dottedPen;
    }
    VexDbDrawingSettings_tag& settings = database->settings();
    m_savedOrtho = std::exchange(settings.m_bOrtho, false);
    m_savedGridSnap = std::exchange(settings.m_bGridSnap, false);
}

CVexDbSelectionTracker::~CVexDbSelectionTracker()
{
    m_database->settings().m_bOrtho = m_savedOrtho;
    m_database->settings().m_bGridSnap = m_savedGridSnap;
}

VexEntitySet* CVexDbSelectionTracker::Track(CWnd* window, CPoint device)
{
    m_selected.clear();
    const VexCursor before = SetCursor(_cursorSelect);
    const int count = TrackHandle(window, device);
    SetCursor(before);
    return count > 0 ? &m_selected : nullptr;
}

int CVexDbSelectionTracker::TrackHandle(CWnd* window, CPoint device)
{
    CVexCommandHandler& handler = m_database->commandHandler();
    m_cancelled = false;
    window->GetClientRect(m_validRect);
    if (handler.isInputLost() || !IsValidPos(device)) {
        m_cancelled = handler.isInputLost();
        return 0;
    }
    const ClipScope clip(*window, m_validRect);
    VexInputScope scope(handler, *window);
    scope.setRaster(m_dc, R2_XORPEN);
    scope.selectPen(m_dc, m_pen);
    m_bandDrawn = false;
    Pick pick(*this, *window);
    if (!runPump(handler, *window, pick)) {
        eraseBand();
        m_cancelled = true;
    }
    forgetCorners();
    return static_cast<int>(m_selected.size());
}

void CVexDbSelectionTracker::forgetCorners()
{
    m_firstCornerSet = false;
    m_polygon.clear(); // or the key that closes would pick by the last one again
}

bool CVexDbSelectionTracker::IsValidPos(CPoint device) const
{
    return m_validRect.IsRectEmpty() || m_validRect.PtInRect(device);
}

void CVexDbSelectionTracker::SetStartPoint(const CVexGePoint2d& point, bool alsoEnd)
{
    m_start = toLogical(point);
    if (alsoEnd) {
        m_end = m_start;
    }
}

void CVexDbSelectionTracker::SetStartPoint(CPoint logical)
{
    m_start = m_end = m_cursor = logical;
    m_firstCornerSet = true;
}

void CVexDbSelectionTracker::DrawRect(CPoint from, CPoint to)
{
    if (m_dc == nullptr) {
        return;
    }
    m_dc->MoveTo(from);
    m_dc->LineTo(to.x, from.y);
    m_dc->LineTo(to);
    m_dc->LineTo(from.x, to.y);
    m_dc->LineTo(from);
}

void CVexDbSelectionTracker::DrawRubber()
{
    if (m_dc == nullptr) {
        return;
    }
    if (m_mode == kFence) {
        m_dc->MoveTo(m_start);
        m_dc->LineTo(m_end);
    } else if (m_mode == kPolygon) {
        std::vector<CPoint> outline(m_polygon);
        outline.push_back(m_end);
        m_dc->Polyline(outline);
    } else {
        DrawRect(m_start, m_end);
    }
}

void CVexDbSelectionTracker::showBand()
{
    if (!m_bandDrawn) {
        DrawRubber();
        m_bandDrawn = true;
    }
}

void CVexDbSelectionTracker::eraseBand()
{
    if (m_bandDrawn) {
        DrawRubber();
        m_bandDrawn = false;
    }
}

void CVexDbSelectionTracker::usePen(const CPen& pen)
{
    m_pen = &pen;
    if (m_dc != nullptr) {
        m_dc->SelectObject(m_pen);
    }
}

int CVexDbSelectionTracker::SelectEntity(bool singleClick)
{
    CVexDbDisplayTableRecord* const view = m_database->displays().getCurrentRecord();
    if (view == nullptr) {
        return 0;
    }
    const CVexGePoint2d from = drawing(m_start);
    const CVexGePoint2d to = drawing(m_end);
    CVexDbIdSet found;
    if (singleClick) {
        CVexDbObjectId hit;
        if (view->selectEntity(drawing(m_cursor), hit)) {
            m_selected.insert(static_cast<CVexDbEntity*>(hit.getPObject()));
        }
    } else if (m_mode == kFence) {
        selectByFence();
    } else if (m_mode == kPolygon) {
        selectByPolygon();
    } else if (m_mode == kWindow || (m_mode == kAutomatic && !(to.x < from.x))) {
        view->selectEntityByWin(from, to, found);
    } else {
        view->selectEntityByCross(from, to, found);
    }
    insertAll(found);
    return static_cast<int>(m_selected.size());
}

void CVexDbSelectionTracker::insertAll(const CVexDbIdSet& found)
{
    for (auto at = found.begin(); at != found.end(); ++at) {
        m_selected.insert(static_cast<CVexDbEntity*>(at.object()));
    }
}

void CVexDbSelectionTracker::selectByFence()
{
    CVexGeLine2d fence(drawing(m_start), drawing(m_end));
    const CVexGeVector2d run = fence.endPoint() - fence.startPoint();
    if (run.x == 0.0 && run.y == 0.0) {
        return; // a point touches nothing
    }
    const double half = std::max(std::fabs(run.x), std::fabs(run.y)) / 2.0;
    const CVexGeVector2d toCorner(half, half);
    CVexDbIdSet candidates;
    m_database->displays().getCurrentRecord()->selectEntityByCross(
        fence.midPoint() - toCorner, fence.midPoint() + toCorner, candidates);
    for (auto at = candidates.begin(); at != candidates.end(); ++at) {
        auto* const entity = static_cast<CVexDbEntity*>(at.object());
        if (entity->IntersectWith(fence, kGeEpsilon)) {
            m_selected.insert(entity);
        }
    }
}

void CVexDbSelectionTracker::selectByPolygon()
{
    if (m_polygon.size() < kLeastCorners) {
        return; // it encloses nothing
    }
    std::vector<CVexGePoint2d> corners;
    std::ranges::transform(m_polygon, std::back_inserter(corners), drawing);
    const auto [left, right] = std::ranges::minmax(corners, {}, &CVexGePoint2d::x);
    const auto [low, high] = std::ranges::minmax(corners, {}, &CVexGePoint2d::y);
    CVexDbIdSet candidates;
    m_database->displays().getCurrentRecord()->selectEntityByCross(
        CVexGePoint2d(left.x, low.y), CVexGePoint2d(right.x, high.y), candidates);
    for (auto at = candidates.begin(); at != candidates.end(); ++at) {
        auto* const entity = static_cast<CVexDbEntity*>(at.object());
        std::vector<CVexGePoint2d>* grips = nullptr;
        // What has no grips counts as inside by what its box said.
        const bool inside =
            !entity->getGripPointVec(grips) || std::ranges::all_of(*grips, [&](const auto& grip) {
                return entity->IsInsidePolygon(corners.data(), grip,
                                               static_cast<int>(corners.size()));
            });
        if (inside) {
            m_selected.insert(entity);
        }
    }
}
