#pragma once

#include "platform/headless/vexheadless.h"
#include "platform/qt/vexqtimagedc.h"

#include <QImage>

/// A view that is an image, black at first.
class ImageWindow : public CVexMemoryWindow {
public:
    explicit ImageWindow(CSize size)
        : CVexMemoryWindow(size), m_image(size.cx, size.cy, QImage::Format_RGB32), m_dc(m_image)
    {
        m_image.fill(Qt::black);
        m_dc.SetBkColor(RGB(0, 0, 0));
    }
    [[nodiscard]] CDC* GetDC() override { return &m_dc; }
    [[nodiscard]] QImage& image() { return m_image; }

private:
    QImage m_image;
    CVexQtImageDC m_dc;
};
