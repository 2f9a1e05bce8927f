#pragma once

#include "platform/qt/vexqtdc.h"

#include <QImage>

#include <memory>

/// A bitmap of 24-bit pixels. A context that it is selected into keeps the pixels alive.
class VEXQT_EXPORT CVexQtBitmap : public CBitmap {
public:
    /// All pixels white; null for a size below 1, above 32767 a side, or without memory for it.
    [[nodiscard]] static std::unique_ptr<CVexQtBitmap> create(QSize size);
    [[nodiscard]] CSize size() const override;
    [[nodiscard]] COLORREF pixel(CPoint at) const override;
    [[nodiscard]] const std::shared_ptr<QImage>& image() const { return m_image; }

private:
    explicit CVexQtBitmap(std::shared_ptr<QImage> image) : m_image(std::move(image)) {}

    std::shared_ptr<QImage> m_image;
};

/// A raster context over an image: its own, a borrowed one, or as a memory context the pixels of
/// the bitmap that is selected into it (without one, what is drawn goes nowhere).
class VEXQT_EXPORT CVexQtImageDC : public CVexQtDC {
public:
    /// Draws into `image`, of the format RGB32, which must outlive the context.
    explicit CVexQtImageDC(QImage& image);
    /// On an image of its own, white at first; null when that cannot be made.
    [[nodiscard]] static std::unique_ptr<CVexQtImageDC> create(QSize size);
    /// A memory context, with no bitmap selected.
    [[nodiscard]] static std::unique_ptr<CVexQtImageDC> createMemory();
    ~CVexQtImageDC() override;

    /// The pixels; null for a memory context without a bitmap.
    [[nodiscard]] const QImage* image() const { return m_image.get(); }
    CBitmap* SelectObject(CBitmap* bitmap) override;
    using CDC::SelectObject;
    /// Gives a context on an image of its own another size. What fits of the picture stays where it
    /// is, the rest is of the background colour. False, with nothing changed, for a memory context
    /// and where the image cannot be made.
    bool resize(QSize size);

protected:
    /// On an image of its own, white at first; where that cannot be made, on one of one pixel.
    explicit CVexQtImageDC(QSize size);
    [[nodiscard]] COLORREF devicePixelAt(CPoint point) const override;

private:
    CVexQtImageDC(std::shared_ptr<QImage> image, bool memory);
    void paintOn(std::shared_ptr<QImage> image);

    bool m_memory = false;
    CVexQtBitmap* m_bitmap = nullptr;
    std::shared_ptr<QImage> m_image; // lives longer than the painter on it
    QPainter m_imagePainter;
};
