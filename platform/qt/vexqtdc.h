#pragma once

#include "platform/device/cdc.h"
#include "platform/qt/vexqtclip.h"
#include "platform/qt/vexqtdash.h"
#include "platform/qt/vexqtpen.h"
#include "platform/qt/vexqtthinline.h"

#include <QPainter>
#include <QPolygon>
#include <QSize>

#include <vector>

/// A device context that draws with a painter. On a raster nothing is smoothed and the raster
/// operations act on each bit of a pixel; on a page (PDF, SVG, printer) lines are smooth and every
/// operation copies. The painter must paint untransformed, and nobody else change its state.
class VEXQT_EXPORT CVexQtDC : public CDC {
public:
    enum class Form { kRaster, kPage };

    /// Draws with `painter`, which is not owned and must be active as long as this context draws.
    /// `size` is in device units.
    CVexQtDC(QPainter& painter, QSize size, Form form);
    ~CVexQtDC() override;

    using CDC::SelectObject;
    [[nodiscard]] int GetDeviceCaps(int index) const override;
    /// A memory context of a raster; null on a page, where a copy of pixels would not be sharp.
    [[nodiscard]] std::unique_ptr<CDC> CreateCompatibleDC() override;
    [[nodiscard]] std::unique_ptr<CBitmap> CreateCompatibleBitmap(int width, int height) override;

protected:
    /// A raster context with nothing to draw on yet.
    CVexQtDC();
    /// Draws with another painter from now on; null draws nothing. `pixels` are those of the image
    /// that it paints on, for as long as it does.
    void setPainter(QPainter* painter, QSize size, VexQtPixels pixels = {});
    [[nodiscard]] QSize size() const { return m_size; }

    void deviceLine(CPoint from, CPoint to) override;
    void devicePolyline(std::span<const CPoint> points) override;
    void devicePolygon(std::span<const CPoint> points) override;
    void deviceRectangle(const CRect& rect) override;
    void deviceEllipse(const CRect& rect) override;
    void deviceFill(const CRect& rect, COLORREF color) override;
    void devicePixel(CPoint point, COLORREF color) override;
    [[nodiscard]] COLORREF devicePixelAt(CPoint point) const override;
    bool deviceBlit(const CRect& target, CDC& source, CPoint from, DWORD operation) override;

private:
    [[nodiscard]] bool isNear(CPoint point) const;
    [[nodiscard]] bool allNear(std::span<const CPoint> points) const;
    [[nodiscard]] bool missesAll(CPoint from, CPoint to) const;
    [[nodiscard]] QRectF nearBox() const;
    const QPolygon& gathered(std::span<const CPoint> points);
    bool beginStroke();
    void useBrush();
    void useOperation(int operation);
    void strokeFar(const QPolygonF& chain);
    void strokeRuns(std::span<const VexQtRun> runs, VexQtChainEnd end);
    void dashThinly(std::span<const QPointF> chain, VexQtChainEnd end);
    void collectDashes(std::span<const QPointF> chain, double start, VexQtChainEnd end);
    void drawCollected(bool mayRepeat);
    void paintArea(const QPolygonF& area);
    void hatch(const QPolygonF& area);
    void areaFar(QPolygonF area);
    void areaWithThinDashes(QPolygonF area);

    QPainter* m_painter = nullptr;
    QSize m_size;
    VexQtPixels m_targetPixels;
    Form m_form = Form::kRaster;
    double m_thinnest = 1.0;
    CVexQtPenCache m_pens;
    QPolygon m_points; // kept, so that polylines do not allocate each time
    QList<QPoint> m_pixels;

    // What the painter has been given; stamp 0 stands for something else.
    std::uint64_t m_penStamp = 0;
    VexQtPenSetting m_penSetting;
    const VexQtPen* m_pen = nullptr;
    std::uint64_t m_brushStamp = 0;
    int m_operation = R2_COPYPEN;
    // Strokes inside these bounds go to the painter as they are: the device and a wide margin.
    int m_left = 0, m_top = 0, m_right = 0, m_bottom = 0;
};
