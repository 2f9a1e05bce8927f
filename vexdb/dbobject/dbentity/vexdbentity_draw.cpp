#include "platform/device/cdc.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbdrawpass.h"

#include <algorithm>
#include <cwchar>
#include <span>

namespace {

constexpr COLORREF kWhite = 0xffffff;
constexpr COLORREF kBlack = 0x000000;
// From here on an index draws in the layer's colour. That takes in 255, a colour of the palette:
// paper is drawn with index 255 for every entity and so shows the layers' colours.
constexpr int kFirstByLayerIndex = 255;

/// `color`, or its opposite where it could not be told from the background.
COLORREF contrasting(COLORREF color, COLORREF background)
{
    if (color == kWhite && background == kWhite) {
        return kBlack;
    }
    return color == kBlack && background == kBlack ? kWhite : color;
}

/// The linetype's dashes in logical units; none is solid. The record keeps what it computes.
std::span<const int> dashesOf(CVexDbLTypeTableRecord* linetype)
{
    int* dashes = nullptr;
    if (linetype == nullptr || linetype->numDashes() < 2 ||
        !linetype->getPattern(dashes, _dDispScale)) {
        return {};
    }
    const int count = std::min(linetype->numDashes(), CVexDbLTypeTableRecord::kMostPatternDashes);
    return {dashes, static_cast<std::size_t>(count)};
}

/// The linetype itself, or for "ByLayer" that of the layer, which may have none.
CVexDbLTypeTableRecord* resolved(CVexDbLTypeTableRecord* linetype,
                                 const CVexDbLayerTableRecord& layer)
{
    if (std::wcscmp(linetype->name(), CVexDbLTypeTableRecord::kByLayer) != 0) {
        return linetype;
    }
    return static_cast<CVexDbLTypeTableRecord*>(layer.getLinetypeId().getPObject());
}

} // namespace

const CPen* CVexDbEntity::setPen(CDC* dc)
{
    if (dc == nullptr) {
        return nullptr;
    }
    const CPen* pen = m_highlightDrawing ? nullptr : penFor(*dc);
    return pen == nullptr ? dc->GetCurrentPen() : dc->SelectObject(pen);
}

void CVexDbEntity::RemovePen(CDC* dc, const CPen* before)
{
    if (dc != nullptr) {
        dc->SelectObject(before);
    }
}

/// The pen that the entity's properties ask for on `dc`; null where a record is missing.
const CPen* CVexDbEntity::penFor(CDC& dc) const
{
    if (m_layer == nullptr || m_color == nullptr || m_lineType == nullptr) {
        return nullptr;
    }
    CVexDbDatabase* drawing = m_layer->database();
    if (drawing == nullptr) {
        return nullptr;
    }
    return drawing->pens().pen(strokeColor(dc), strokeWidth(dc),
                               dashesOf(resolved(linetypeRecord(), *layerRecord())));
}

COLORREF CVexDbEntity::strokeColor(const CDC& dc) const
{
    if (m_undrawing) {
        return dc.GetBkColor();
    }
    const std::optional<int> imposed = m_layer->database()->drawPass().colorIndex;
    const int index = imposed.value_or(Color()->colorIndex());
    COLORREF color = imposed ? _getColorValueByIndex(index) : Color()->getColor();
    if (index == CVexDbColorTableRecord::kByBlockIndex) {
        color = dc.GetCurrentPen()->color(); // the enclosing insert has selected it
    } else if (index >= kFirstByLayerIndex) {
        color = layerRecord()->getColorValue();
    }
    return contrasting(color, dc.GetBkColor());
}

int CVexDbEntity::strokeWidth(const CDC& dc) const
{
    constexpr double kWeightsPerUnit = 100.0;
    int weight = m_lineWeight;
    if (m_lineWeight == VexDb::kLineWeightByLayer) {
        weight = layerRecord()->getLineWeight();
    } else if (m_lineWeight == VexDb::kLineWeightDefault) {
        weight = dc.GetCurrentPen()->width();
    }
    return toLogical(weight / kWeightsPerUnit);
}

void CVexDbEntity::Draw(CDC* /*dc*/)
{
}

void CVexDbEntity::UnDraw(CDC* dc)
{
    if (isVisiable()) {
        m_undrawing = true;
        Draw(dc);
        m_undrawing = false;
    }
}

void CVexDbEntity::HighlightDraw(CDC* dc)
{
    if (dc == nullptr) {
        return;
    }
    CVexDbDatabase* drawing = m_layer == nullptr ? database() : m_layer->database();
    if (drawing != nullptr) {
        const COLORREF color = m_color == nullptr ? kWhite : Color()->getColor();
        const CPen* before = dc->SelectObject(drawing->pens().highlightPen(color));
        m_highlightDrawing = true;
        Draw(dc);
        m_highlightDrawing = false;
        dc->SelectObject(before);
    }
    m_highlighted = true;
}

void CVexDbEntity::Draw()
{
    if (CVexDbDatabase* drawing = database()) {
        if (const auto* view = drawing->displays().getCurrentRecord()) {
            Draw(view->GetCurrentDC());
        }
    }
}

void CVexDbEntity::HighlightDraw()
{
    if (database() == nullptr || !isVisiable()) {
        return;
    }
    if (const auto* view = database()->displays().getCurrentRecord()) {
        HighlightDraw(view->GetCurrentDC());
    }
    m_highlighted = true;
}

void CVexDbEntity::ReDraw(CDC* dc)
{
    if (m_highlighted) {
        HighlightDraw(dc);
    } else {
        Draw(dc);
    }
}
