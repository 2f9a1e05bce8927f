#include "platform/device/cdc.h"
#include "platform/window/cwnd.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/dbobject/vexdbviewunits.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbspatialindex.h"
#include "vexdb/vexmemdc.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace {

constexpr COLORREF kGridColor = 0x646464;
constexpr COLORREF kAxisColor = 0x0000b4;
/// Grid lines closer than this blur into a grey area.
constexpr double kLeastGridPixels = 2.0;
/// A pen of a pixel, and rounding.
constexpr int kSlackPixels = 2;
constexpr CRect kEverywhere(-1000000000, -1000000000, 1000000000, 1000000000);
/// More lines than any screen has columns: the context's mapping is not the view's.
constexpr std::int64_t kMostGridLines = 20000;

/// Calls `visit` for the objects of `set` as it stands now, though a visit may insert or remove.
/// Nothing is copied: a new object has a greater number than the last one of now, and where the set
/// has changed the walk goes on behind the number it stood at.
template <class Visit>
void visitAsItStands(const CVexDbIdSet& set, Visit visit)
{
    if (set.empty()) {
        return;
    }
    auto end = set.end();
    const std::uint64_t lastNumber = (--set.end()).object()->getCreatedTime();
    std::uint64_t revision = set.revision();
    for (auto at = set.begin(); at != end;) {
        auto* entity = static_cast<CVexDbEntity*>(at.object());
        const std::uint64_t number = entity->getCreatedTime();
        if (number > lastNumber) {
            return;
        }
        visit(*entity);
        if (set.revision() == revision) {
            ++at;
        } else {
            revision = set.revision();
            at = set.upper_bound(number);
            end = set.end();
        }
    }
}

/// A pen and the copying raster operation for a scope.
class GridPenFrame {
public:
    GridPenFrame(CDC& dc, COLORREF color)
        : m_dc(dc), m_pen(PS_DOT, 0, color), m_before(dc.SelectObject(&m_pen)),
          m_ropBefore(dc.SetROP2(R2_COPYPEN))
    {
    }
    ~GridPenFrame()
    {
        m_dc.SetROP2(m_ropBefore);
        m_dc.SelectObject(m_before);
    }
    GridPenFrame(const GridPenFrame&) = delete;
    GridPenFrame& operator=(const GridPenFrame&) = delete;

private:
    CDC& m_dc;
    const CPen m_pen;
    const CPen* m_before;
    int m_ropBefore;
};

void drawLine(CDC& dc, CPoint from, CPoint to)
{
    dc.MoveTo(from);
    dc.LineTo(to);
}

void drawGridLines(CDC& dc, const CRect& area, std::int64_t step)
{
    const GridPenFrame frame(dc, kGridColor);
    // Integer division falls towards zero: left of the origin the first line lies inside the
    // window.
    for (std::int64_t x = area.left / step * step; x <= area.right; x += step) {
        const int at = static_cast<int>(x);
        drawLine(dc, {at, area.top}, {at, area.bottom});
    }
    for (std::int64_t y = area.top / step * step; y <= area.bottom; y += step) {
        const int at = static_cast<int>(y);
        drawLine(dc, {area.left, at}, {area.right, at});
    }
}

void drawAxes(CDC& dc, const CRect& area)
{
    const GridPenFrame frame(dc, kAxisColor);
    if (area.left <= 0 && area.right >= 0) {
        drawLine(dc, {0, area.top}, {0, area.bottom});
    }
    if (area.top <= 0 && area.bottom >= 0) {
        drawLine(dc, {area.left, 0}, {area.right, 0});
    }
}

bool gridCanBeRead(const CDC& dc, const CRect& area, std::int64_t step)
{
    return step >= 1 && static_cast<double>(step) * dc.xScale() >= kLeastGridPixels &&
           area.Width() / step <= kMostGridLines && area.Height() / step <= kMostGridLines;
}

} // namespace

/// Logical: the window on a screen; on paper the whole sheet, whoever made the page's mapping.
CRect CVexDbDisplayTableRecord::shownArea(const CDC& dc) const
{
    if (!dc.IsPrinting()) {
        return m_mapping.window;
    }
    CPoint corners[] = {{0, 0},
                        {dc.GetDeviceCaps(PHYSICALWIDTH), dc.GetDeviceCaps(PHYSICALHEIGHT)}};
    dc.DPtoLP(corners, 2);
    CRect sheet(corners[0], corners[1]);
    sheet.NormalizeRect();
    return sheet;
}

void CVexDbDisplayTableRecord::Draw(CDC* dc)
{
    if (dc == nullptr || database() == nullptr) {
        return;
    }
    if (dc->IsPrinting()) {
        const CBrush background(dc->GetBkColor());
        dc->FillRect(shownArea(*dc), &background);
        DrawEntities(dc);
        return;
    }
    if (m_view == nullptr) {
        return;
    }
    database()->setBuffer(nullptr); // the old bitmap goes before the new one is made
    database()->setBuffer(std::make_unique<CVexBuffDC>(*dc, m_view));
    CVexBuffDC& buffer = *database()->buffer();
    CDC* memory = buffer.GetDC();
    memory->SetBkColor(dc->GetBkColor());
    DrawEntities(memory);
    database()->commandHandler().TrackerDraw(memory);
    buffer.VexBitBlt(dc, SRCCOPY);
}

CVexDbIdSet CVexDbDisplayTableRecord::crossedBy(const CRect& window)
{
    CVexDbIdSet crossed;
    selectEntityByCross(toDrawing(window.TopLeft()), toDrawing(window.BottomRight()), crossed);
    return crossed;
}

const CVexDbIdSet& CVexDbDisplayTableRecord::setForPass(const CDC& dc, CVexDbIdSet& working)
{
    if (!m_visibleOnly) {
        return m_displayed;
    }
    // What this view draws stays whole: an entity that the window leaves comes back with the next.
    working = crossedBy(shownArea(dc));
    return working;
}

void CVexDbDisplayTableRecord::DrawEntities(CDC* dc)
{
    if (dc == nullptr || database() == nullptr) {
        return;
    }
    // An override that the program has set for this pass holds on paper as on a screen.
    std::optional<int> colorIndex = database()->drawPass().colorIndex;
    if (dc->IsPrinting() && !colorIndex) {
        colorIndex = kPrintedColorIndex;
    }
    const CVexDbDrawPassScope colors(database()->drawPass(), colorIndex);
    const auto draw = [dc](CVexDbEntity& entity) {
        if (entity.isVisiable()) {
            entity.Draw(dc);
        }
    };
    CVexDbIdSet working;
    if (!m_visibleOnly && index() != nullptr && findNear(paintedArea(*dc))) {
        // An entity's drawing may ask this view something: the list is the pass's meanwhile.
        std::vector<CVexDbEntity*> near = std::move(m_near);
        visitFetched(near, [&](CVexDbEntity& entity) {
            draw(entity);
            return true;
        });
        m_near = std::move(near);
    } else {
        visitAsItStands(setForPass(*dc, working), draw);
    }
    DrawGrid(dc);
}

CRect CVexDbDisplayTableRecord::paintedArea(const CDC& dc) const
{
    // The whole surface of `dc`, whose mapping need not be this view's: pictures have their own.
    const bool paper = dc.IsPrinting();
    const CPoint end(dc.GetDeviceCaps(paper ? PHYSICALWIDTH : HORZRES),
                     dc.GetDeviceCaps(paper ? PHYSICALHEIGHT : VERTRES));
    if (end.x <= 0 || end.y <= 0) {
        return kEverywhere; // it does not tell
    }
    CPoint corners[] = {{0, 0}, end};
    dc.DPtoLP(corners, 2);
    CRect area(corners[0], corners[1]);
    area.NormalizeRect();
    int widest = m_index != nullptr ? m_index->widestPen() : 0;
    for (const auto& [name, record] : database()->layers().records()) {
        widest = std::max<int>(
            widest, static_cast<const CVexDbLayerTableRecord*>(record.get())->getLineWeight());
    }
    const VexDbDrawingSettings_tag& settings = database()->settings();
    const double pixel = std::max(1.0, 1.0 / dc.xScale()); // logical units
    const double marker = settings.m_nPointSize * m_mapping.scaleX;
    const double reach = 2.0 * widest + marker + kSlackPixels * pixel;
    return {truncateSaturated(area.left - reach), truncateSaturated(area.top - reach),
            truncateSaturated(area.right + reach), truncateSaturated(area.bottom + reach)};
}

void CVexDbDisplayTableRecord::DrawEntity(CVexDbObject*& object)
{
    if (object != nullptr && object->isEntity() && object->isVisiable() && m_dc != nullptr) {
        static_cast<CVexDbEntity*>(object)->Draw(m_dc);
    }
}

void CVexDbDisplayTableRecord::DrawGrid(CDC* dc)
{
    if (dc == nullptr || database() == nullptr || !database()->settings().m_bGridVisible) {
        return;
    }
    const VexDbDrawingSettings_tag& settings = database()->settings();
    const CRect area = shownArea(*dc);
    const std::int64_t step =
        static_cast<std::int64_t>(toLogical(settings.m_dGridStep)) * settings.m_nGridDivisions;
    if (gridCanBeRead(*dc, area, step)) {
        drawGridLines(*dc, area, step);
    }
    drawAxes(*dc, area);
}

void CVexDbDisplayTableRecord::HighlightDraw(CDC* dc)
{
    if (dc == nullptr || m_view == nullptr) {
        return;
    }
    const CVexMemDC memory(*dc, m_view);
    memory.GetDC()->SetBkColor(dc->GetBkColor());
    CVexDbIdSet working;
    visitAsItStands(setForPass(*dc, working),
                    [&memory](CVexDbEntity& entity) { entity.HighlightDraw(memory.GetDC()); });
}
