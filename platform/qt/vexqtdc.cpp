#include "platform/qt/vexqtdc.h"

#include "platform/qt/vexqtclip.h"
#include "platform/qt/vexqthatch.h"
#include "platform/qt/vexqtimagedc.h"

#include <QPaintDevice>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace {

constexpr int kScreenDotsPerInch = 96;
constexpr double kMillimetresPerInch = 25.4;
/// The thinnest pen of technical drawing; a page's own dot would be too fine to be seen.
constexpr double kThinnestOnPage = 0.13;
/// From one line of a hatched area to the next; a page draws them at this distance on a screen.
constexpr double kHatchPixels = 8.0;
/// Room around the device besides half the pen, device units.
constexpr int kMargin = 64;

QPainter::CompositionMode compositionOf(int operation)
{
    switch (operation) {
    case R2_MASKNOTPEN: return QPainter::RasterOp_NotSourceAndDestination;
    case R2_XORPEN: return QPainter::RasterOp_SourceXorDestination;
    case R2_NOTXORPEN: return QPainter::RasterOp_NotSourceXorDestination;
    default: return QPainter::CompositionMode_SourceOver;
    }
}

QRect toQRect(const CRect& rect)
{
    return {QPoint(rect.left, rect.top), QSize(rect.Width(), rect.Height())};
}

/// True for an operation that takes back the first of two strokes on one pixel.
bool turnsPixels(int operation)
{
    return operation == R2_XORPEN || operation == R2_NOTXORPEN;
}

bool isBefore(QPoint a, QPoint b)
{
    return a.y() != b.y() ? a.y() < b.y() : a.x() < b.x();
}

/// Corners between pixels would light some of them twice.
QPointF wholePixel(QPointF corner)
{
    return {std::round(corner.x()), std::round(corner.y())};
}

/// What of a block, in pixels of its source, lies on the source and lands, moved by `shift`, on the
/// target device. Corners reach +-10^9 and shifts twice that.
QRect blockOnBoth(const CRect& target, CPoint shift, QSize source, QSize device)
{
    const auto side = [](std::int64_t low, std::int64_t high, int move, int most, int room) {
        const std::int64_t from = std::max({low - move, std::int64_t{0}, -std::int64_t{move}});
        const std::int64_t to =
            std::min({high - move, std::int64_t{most}, std::int64_t{room} - move});
        return std::pair(static_cast<int>(std::min<std::int64_t>(from, most)),
                         static_cast<int>(std::max<std::int64_t>(to, 0)));
    };
    const auto [left, right] =
        side(target.left, target.right, shift.x, source.width(), device.width());
    const auto [top, bottom] =
        side(target.top, target.bottom, shift.y, source.height(), device.height());
    return {QPoint(left, top), QPoint(right - 1, bottom - 1)};
}

Qt::FillRule ruleOf(int polyFillMode)
{
    return polyFillMode == WINDING ? Qt::WindingFill : Qt::OddEvenFill;
}

QPolygonF cornersOf(std::span<const CPoint> points)
{
    QPolygonF corners;
    corners.reserve(static_cast<qsizetype>(points.size()) + 1);
    for (const CPoint& point : points) {
        corners.append(QPointF(point.x, point.y));
    }
    return corners;
}

} // namespace

CVexQtDC::CVexQtDC() = default;

CVexQtDC::CVexQtDC(QPainter& painter, QSize size, Form form) : m_form(form)
{
    if (form == Form::kPage) {
        m_thinnest = painter.device()->logicalDpiX() * kThinnestOnPage / kMillimetresPerInch;
    }
    setPainter(&painter, size);
}

CVexQtDC::~CVexQtDC() = default;

void CVexQtDC::setPainter(QPainter* painter, QSize size, VexQtPixels pixels)
{
    m_painter = painter;
    m_size = size;
    m_targetPixels = pixels;
    m_penStamp = 0;
    m_brushStamp = 0;
    m_operation = R2_COPYPEN;
    if (painter != nullptr) {
        painter->setRenderHint(QPainter::Antialiasing, m_form == Form::kPage);
        painter->setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
}

int CVexQtDC::GetDeviceCaps(int index) const
{
    const bool page = m_form == Form::kPage;
    const int dotsPerInch = page ? m_painter->device()->logicalDpiX() : kScreenDotsPerInch;
    const auto millimetres = [&](int dots) {
        return static_cast<int>(std::lround(dots * kMillimetresPerInch / dotsPerInch));
    };
    switch (index) {
    case HORZSIZE: return millimetres(m_size.width());
    case VERTSIZE: return millimetres(m_size.height());
    case HORZRES:
    case PHYSICALWIDTH: return m_size.width();
    case VERTRES:
    case PHYSICALHEIGHT: return m_size.height();
    case LOGPIXELSX:
    case LOGPIXELSY: return dotsPerInch;
    default: return 0;
    }
}

std::unique_ptr<CDC> CVexQtDC::CreateCompatibleDC()
{
    return m_form == Form::kRaster ? CVexQtImageDC::createMemory() : nullptr;
}

std::unique_ptr<CBitmap> CVexQtDC::CreateCompatibleBitmap(int width, int height)
{
    return m_form == Form::kRaster ? CVexQtBitmap::create(QSize(width, height)) : nullptr;
}

/// Brings the pen and the raster operation into force, touching the painter only for what changed.
/// False when there is nothing to draw on.
bool CVexQtDC::beginStroke()
{
    if (m_painter == nullptr) {
        return false;
    }
    useOperation(GetROP2());
    const CPen& pen = *GetCurrentPen();
    const VexQtPenSetting setting{xScale(), m_thinnest, m_form == Form::kRaster};
    if (pen.stamp() == m_penStamp && setting == m_penSetting) {
        return true;
    }
    m_pen = &m_pens.find(pen, setting);
    m_penStamp = pen.stamp();
    m_penSetting = setting;
    m_painter->setPen(m_pen->pen);
    const int margin = kMargin + static_cast<int>(std::min(m_pen->width, 1e8));
    m_left = m_top = -margin;
    m_right = m_size.width() + margin;
    m_bottom = m_size.height() + margin;
    return true;
}

void CVexQtDC::useBrush()
{
    const CBrush& brush = *GetCurrentBrush();
    if (brush.stamp() == m_brushStamp) {
        return;
    }
    m_brushStamp = brush.stamp();
    m_painter->setBrush(brush.style() == BS_SOLID ? QBrush(toQColor(brush.color()))
                                                  : QBrush(Qt::NoBrush));
}

void CVexQtDC::useOperation(int operation)
{
    if (operation != m_operation) {
        m_operation = operation;
        if (m_form == Form::kRaster) {
            m_painter->setCompositionMode(compositionOf(operation));
        }
    }
}

bool CVexQtDC::isNear(CPoint point) const
{
    return point.x >= m_left && point.x <= m_right && point.y >= m_top && point.y <= m_bottom;
}

bool CVexQtDC::allNear(std::span<const CPoint> points) const
{
    return std::ranges::all_of(points, [this](CPoint point) { return isNear(point); });
}

/// True when both ends lie beyond the same side.
bool CVexQtDC::missesAll(CPoint from, CPoint to) const
{
    return std::max(from.x, to.x) < m_left || std::min(from.x, to.x) > m_right ||
           std::max(from.y, to.y) < m_top || std::min(from.y, to.y) > m_bottom;
}

QRectF CVexQtDC::nearBox() const
{
    return {QPointF(m_left, m_top), QPointF(m_right, m_bottom)};
}

const QPolygon& CVexQtDC::gathered(std::span<const CPoint> points)
{
    m_points.resize(static_cast<qsizetype>(points.size()));
    std::ranges::transform(points, m_points.begin(),
                           [](CPoint point) { return QPoint(point.x, point.y); });
    return m_points;
}

void CVexQtDC::collectDashes(std::span<const QPointF> chain, double start, VexQtChainEnd end)
{
    appendDashPixels(chain, start, end, m_pen->pattern, QRect(QPoint(0, 0), m_size), m_pixels);
}

/// Puts down the collected pixels. `mayRepeat` when a pixel may be among them more than once.
void CVexQtDC::drawCollected(bool mayRepeat)
{
    if (mayRepeat && turnsPixels(m_operation)) {
        std::sort(m_pixels.begin(), m_pixels.end(), isBefore);
        m_pixels.erase(std::unique(m_pixels.begin(), m_pixels.end()), m_pixels.end());
    }
    m_painter->drawPoints(m_pixels.constData(), static_cast<int>(m_pixels.size()));
    m_pixels.clear();
}

/// Strokes a chain with the dashes of a pen one pixel wide.
void CVexQtDC::dashThinly(std::span<const QPointF> chain, VexQtChainEnd end)
{
    collectDashes(chain, 0.0, end);
    drawCollected(chain.size() > 2);
}

/// Strokes the pieces of a chain, each with its dashes where the whole would have them.
void CVexQtDC::strokeRuns(std::span<const VexQtRun> runs, VexQtChainEnd end)
{
    if (m_pen->thinDashes) {
        for (const VexQtRun& run : runs) {
            collectDashes(run.points, run.start, end);
        }
        drawCollected(true);
        return;
    }
    for (const VexQtRun& run : runs) {
        if (m_pen->patterned()) {
            QPen shifted = m_pen->pen;
            shifted.setDashOffset(std::fmod(run.start, m_pen->patternLength) / m_pen->width);
            m_painter->setPen(shifted);
        }
        m_painter->drawPolyline(run.points);
    }
    if (m_pen->patterned()) {
        m_painter->setPen(m_pen->pen);
    }
}

void CVexQtDC::strokeFar(const QPolygonF& chain)
{
    strokeRuns(clipChain(chain, nearBox()), VexQtChainEnd::kDrawn);
}

void CVexQtDC::paintArea(const QPolygonF& area)
{
    if (GetCurrentBrush()->style() == BS_SOLID) {
        m_painter->setPen(Qt::NoPen);
        m_painter->drawPolygon(area, ruleOf(GetPolyFillMode()));
        m_painter->setPen(m_pen->pen);
    } else if (GetCurrentBrush()->style() == BS_HATCHED) {
        hatch(area);
    }
}

/// Lines of our own: the painter's patterns turn gaps in some raster operations, and vanish on some
/// pages.
void CVexQtDC::hatch(const QPolygonF& area)
{
    const bool page = m_form == Form::kPage;
    const double dots = page ? m_painter->device()->logicalDpiX() : kScreenDotsPerInch;
    const QRectF device(QPointF(-1.0, -1.0), QPointF(m_size.width() + 1.0, m_size.height() + 1.0));
    QPen pen(toQColor(GetCurrentBrush()->color()), page ? m_thinnest : 1.0);
    pen.setCapStyle(Qt::FlatCap);
    m_painter->setPen(pen);
    m_painter->drawLines(hatchLines(clipArea(area, device), GetCurrentBrush()->hatch(),
                                    static_cast<PolygonFillMode>(GetPolyFillMode()),
                                    kHatchPixels * dots / kScreenDotsPerInch));
    m_painter->setPen(m_pen->pen);
}

/// Fills and strokes what of an area lies near.
void CVexQtDC::areaFar(QPolygonF area)
{
    paintArea(clipArea(area, nearBox()));
    area.append(area.front());
    std::vector<VexQtRun> runs = clipChain(area, nearBox());
    // Two pieces that meet at the first corner are one, so that XOR finds no pixel there twice. A
    // pattern begins anew at that corner; only its own pixel has to be left out.
    if (runs.size() > 1 && !m_pen->patterned() && runs.front().points.front() == area.front() &&
        runs.back().points.back() == area.front()) {
        runs.back().points += runs.front().points.mid(1);
        runs.erase(runs.begin());
    }
    strokeRuns(runs, VexQtChainEnd::kLeftOut);
}

void CVexQtDC::deviceLine(CPoint from, CPoint to)
{
    if (!beginStroke() || missesAll(from, to)) {
        return;
    }
    if (m_pen->thinSolid && m_targetPixels.first != nullptr) {
        strokeThinLine(m_targetPixels, from, to, m_pen->pixel, m_operation);
    } else if (!isNear(from) || !isNear(to)) {
        strokeFar({QPointF(from.x, from.y), QPointF(to.x, to.y)});
    } else if (m_pen->thinDashes) {
        const QPointF ends[] = {QPointF(from.x, from.y), QPointF(to.x, to.y)};
        dashThinly(ends, VexQtChainEnd::kDrawn);
    } else {
        m_painter->drawLine(from.x, from.y, to.x, to.y);
    }
}

void CVexQtDC::devicePolyline(std::span<const CPoint> points)
{
    if (!beginStroke()) {
        return;
    }
    if (!allNear(points)) {
        strokeFar(cornersOf(points));
    } else if (m_pen->thinDashes) {
        dashThinly(cornersOf(points), VexQtChainEnd::kDrawn);
    } else {
        m_painter->drawPolyline(gathered(points));
    }
}

void CVexQtDC::devicePolygon(std::span<const CPoint> points)
{
    if (!beginStroke()) {
        return;
    }
    useBrush();
    if (!allNear(points)) {
        areaFar(cornersOf(points));
    } else if (m_pen->thinDashes) {
        areaWithThinDashes(cornersOf(points));
    } else {
        if (GetCurrentBrush()->style() == BS_HATCHED) {
            hatch(cornersOf(points));
        }
        m_painter->drawPolygon(gathered(points), ruleOf(GetPolyFillMode()));
    }
}

void CVexQtDC::areaWithThinDashes(QPolygonF area)
{
    paintArea(area);
    area.append(area.front());
    dashThinly(area, VexQtChainEnd::kLeftOut);
}

void CVexQtDC::deviceRectangle(const CRect& rect)
{
    const CPoint corners[] = {{rect.left, rect.top},
                              {rect.right, rect.top},
                              {rect.right, rect.bottom},
                              {rect.left, rect.bottom}};
    devicePolygon(corners);
}

void CVexQtDC::deviceEllipse(const CRect& rect)
{
    if (!beginStroke() || missesAll(rect.TopLeft(), rect.BottomRight())) {
        return;
    }
    useBrush();
    const bool plain = !m_pen->thinDashes && GetCurrentBrush()->style() != BS_HATCHED;
    if (plain && isNear(rect.TopLeft()) && isNear(rect.BottomRight())) {
        m_painter->drawEllipse(QRectF(toQRect(rect)));
        return;
    }
    // Sides up to 2 * 10^9 long do not fit an integer, so the rectangle is made from corners.
    QPolygonF outline =
        ellipseOutline({QPointF(rect.left, rect.top), QPointF(rect.right, rect.bottom)}, nearBox());
    if (m_pen->thinDashes) {
        std::ranges::transform(outline, outline.begin(), wholePixel);
    }
    areaFar(std::move(outline));
}

void CVexQtDC::deviceFill(const CRect& rect, COLORREF color)
{
    if (m_painter == nullptr) {
        return;
    }
    const CRect seen(std::max(rect.left, 0), std::max(rect.top, 0),
                     std::min(rect.right, m_size.width()), std::min(rect.bottom, m_size.height()));
    if (!seen.IsRectEmpty()) {
        useOperation(R2_COPYPEN);
        m_painter->fillRect(toQRect(seen), toQColor(color));
    }
}

void CVexQtDC::devicePixel(CPoint point, COLORREF color)
{
    const CRect device(0, 0, m_size.width(), m_size.height());
    if (m_painter == nullptr || !device.PtInRect(point)) {
        return;
    }
    useOperation(GetROP2());
    if (m_form == Form::kRaster) {
        m_painter->fillRect(QRect(point.x, point.y, 1, 1), toQColor(color));
    } else {
        const double half = m_thinnest / 2.0;
        m_painter->fillRect(QRectF(point.x - half, point.y - half, m_thinnest, m_thinnest),
                            toQColor(color));
    }
}

COLORREF CVexQtDC::devicePixelAt(CPoint /*point*/) const
{
    return 0xffffffff;
}

bool CVexQtDC::deviceBlit(const CRect& target, CDC& source, CPoint from, DWORD operation)
{
    const auto* pixels = dynamic_cast<const CVexQtImageDC*>(&source);
    if (m_painter == nullptr || m_form == Form::kPage || pixels == nullptr ||
        pixels->image() == nullptr) {
        return false;
    }
    const CPoint shift = target.TopLeft() - from;
    const QRect block = blockOnBoth(target, shift, pixels->image()->size(), m_size);
    if (block.isEmpty()) {
        return true;
    }
    const QPoint at = block.topLeft() + QPoint(shift.x, shift.y);
    const QImage own = &source == this ? pixels->image()->copy(block) : QImage();
    m_painter->setCompositionMode(operation == SRCPAINT ? QPainter::RasterOp_SourceOrDestination
                                                        : QPainter::CompositionMode_Source);
    if (own.isNull()) {
        m_painter->drawImage(at, *pixels->image(), block);
    } else {
        m_painter->drawImage(at, own);
    }
    m_painter->setCompositionMode(compositionOf(m_operation));
    return true;
}
