#include "platform/headless/vexrecordingdc.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace {

constexpr int kScreenDotsPerInch = 96;
constexpr double kMillimetresPerInch = 25.4;

int millimetres(int pixels)
{
    return static_cast<int>(pixels * kMillimetresPerInch / kScreenDotsPerInch);
}

/// A device coordinate stays within +-10^9 wherever its block lands.
int moved(int value, int shift)
{
    constexpr std::int64_t kLimit = 1'000'000'000;
    return static_cast<int>(std::clamp(std::int64_t{value} + shift, -kLimit, kLimit));
}

/// Stands for the bitmap of a memory context: it has a size and no pixels.
class RecordingBitmap : public CBitmap {
public:
    explicit RecordingBitmap(CSize size) : m_size(size) {}
    [[nodiscard]] CSize size() const override { return m_size; }
    [[nodiscard]] COLORREF pixel(CPoint /*at*/) const override { return 0xffffffff; }

private:
    CSize m_size;
};

std::vector<CPoint> corners(const CRect& rect)
{
    return {rect.TopLeft(), rect.BottomRight()};
}

} // namespace

CVexRecordingDC::CVexRecordingDC(CSize size) : m_size(size)
{
}

void CVexRecordingDC::setDeviceCap(int index, int value)
{
    const auto held = std::ranges::find(m_caps, index, &std::pair<int, int>::first);
    if (held != m_caps.end()) {
        held->second = value;
    } else {
        m_caps.emplace_back(index, value);
    }
}

int CVexRecordingDC::GetDeviceCaps(int index) const
{
    const auto held = std::ranges::find(m_caps, index, &std::pair<int, int>::first);
    if (held != m_caps.end()) {
        return held->second;
    }
    switch (index) {
    case HORZSIZE: return millimetres(m_size.cx);
    case VERTSIZE: return millimetres(m_size.cy);
    case HORZRES:
    case PHYSICALWIDTH: return m_size.cx;
    case VERTRES:
    case PHYSICALHEIGHT: return m_size.cy;
    case LOGPIXELSX:
    case LOGPIXELSY: return kScreenDotsPerInch;
    default: return 0;
    }
}

CBitmap* CVexRecordingDC::SelectObject(CBitmap* bitmap)
{
    const bool ours = bitmap == nullptr || dynamic_cast<RecordingBitmap*>(bitmap) != nullptr;
    return m_memory && ours ? std::exchange(m_bitmap, bitmap) : nullptr;
}

std::unique_ptr<CDC> CVexRecordingDC::CreateCompatibleDC()
{
    auto memory = std::make_unique<CVexRecordingDC>(m_size);
    memory->m_memory = true;
    memory->m_refuseBitmaps = m_refuseBitmaps;
    return memory;
}

std::unique_ptr<CBitmap> CVexRecordingDC::CreateCompatibleBitmap(int width, int height)
{
    if (m_refuseBitmaps || width <= 0 || height <= 0) {
        return nullptr;
    }
    return std::make_unique<RecordingBitmap>(CSize(width, height));
}

VexStroke& CVexRecordingDC::record(VexStroke::Kind kind, std::vector<CPoint> points)
{
    const CPen& pen = *GetCurrentPen();
    const CBrush& brush = *GetCurrentBrush();
    m_strokes.push_back({.kind = kind,
                         .points = std::move(points),
                         .rop = GetROP2(),
                         .penStyle = pen.style(),
                         .penWidth = pen.width(),
                         .color = pen.color(),
                         .dashes = pen.dashes(),
                         .brushStyle = brush.style(),
                         .brushColor = brush.color(),
                         .hatch = brush.style() == BS_HATCHED ? brush.hatch() : HS_HORIZONTAL});
    return m_strokes.back();
}

void CVexRecordingDC::deviceLine(CPoint from, CPoint to)
{
    record(VexStroke::Kind::kLine, {from, to});
}

void CVexRecordingDC::devicePolyline(std::span<const CPoint> points)
{
    record(VexStroke::Kind::kPolyline, {points.begin(), points.end()});
}

void CVexRecordingDC::devicePolygon(std::span<const CPoint> points)
{
    record(VexStroke::Kind::kPolygon, {points.begin(), points.end()}).polyFillMode =
        GetPolyFillMode();
}

void CVexRecordingDC::deviceRectangle(const CRect& rect)
{
    record(VexStroke::Kind::kRectangle, corners(rect));
}

void CVexRecordingDC::deviceEllipse(const CRect& rect)
{
    record(VexStroke::Kind::kEllipse, corners(rect));
}

void CVexRecordingDC::deviceFill(const CRect& rect, COLORREF color)
{
    record(VexStroke::Kind::kFill, corners(rect)).color = color;
}

void CVexRecordingDC::devicePixel(CPoint point, COLORREF color)
{
    record(VexStroke::Kind::kPixel, {point}).color = color;
}

COLORREF CVexRecordingDC::devicePixelAt(CPoint /*point*/) const
{
    return 0xffffffff;
}

bool CVexRecordingDC::deviceBlit(const CRect& target, CDC& source, CPoint from, DWORD operation)
{
    const auto* recording = dynamic_cast<const CVexRecordingDC*>(&source);
    if (recording == nullptr) {
        return false;
    }
    std::vector<VexStroke> brought = recording->m_strokes; // a copy: the source may be this context
    const CPoint shift = target.TopLeft() - from;
    record(VexStroke::Kind::kBlit, corners(target)).rop = static_cast<int>(operation);
    for (VexStroke& stroke : brought) {
        for (CPoint& point : stroke.points) {
            point = {moved(point.x, shift.x), moved(point.y, shift.y)};
        }
        m_strokes.push_back(std::move(stroke));
    }
    return true;
}
