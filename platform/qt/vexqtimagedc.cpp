#include "platform/qt/vexqtimagedc.h"

#include "platform/base/vexassert.h"
#include "platform/base/vexmachine.h"

#include <cstddef>
#include <utility>

namespace {

/// Beyond this the painter's own arithmetic ends.
constexpr int kLongestSide = 32767;
constexpr COLORREF kNoPixel = 0xffffffff;

std::shared_ptr<QImage> whiteImage(QSize size)
{
    if (size.width() < 1 || size.height() < 1 || size.width() > kLongestSide ||
        size.height() > kLongestSide) {
        return nullptr;
    }
    constexpr std::size_t kBytesPerPixel = 4;
    const auto pixels =
        static_cast<std::size_t>(size.width()) * static_cast<std::size_t>(size.height());
    if (!CVexMachine::current().mayAllocate(pixels * kBytesPerPixel)) {
        return nullptr;
    }
    auto image = std::make_shared<QImage>(size, QImage::Format_RGB32);
    if (image->isNull()) {
        return nullptr;
    }
    image->fill(Qt::white);
    return image;
}

COLORREF colorAt(const QImage& image, CPoint at)
{
    if (!image.valid(at.x, at.y)) {
        return kNoPixel;
    }
    const QRgb pixel = image.pixel(at.x, at.y);
    return RGB(static_cast<unsigned>(qRed(pixel)), static_cast<unsigned>(qGreen(pixel)),
               static_cast<unsigned>(qBlue(pixel)));
}

} // namespace

std::unique_ptr<CVexQtBitmap> CVexQtBitmap::create(QSize size)
{
    auto image = whiteImage(size);
    if (image == nullptr) {
        return nullptr;
    }
    return std::unique_ptr<CVexQtBitmap>(new CVexQtBitmap(std::move(image)));
}

CSize CVexQtBitmap::size() const
{
    return {m_image->width(), m_image->height()};
}

COLORREF CVexQtBitmap::pixel(CPoint at) const
{
    return colorAt(*m_image, at);
}

CVexQtImageDC::CVexQtImageDC(QImage& image)
    : CVexQtImageDC(std::shared_ptr<QImage>(&image, [](QImage*) {}), false)
{
}

CVexQtImageDC::CVexQtImageDC(std::shared_ptr<QImage> image, bool memory) : m_memory(memory)
{
    paintOn(std::move(image));
}

CVexQtImageDC::CVexQtImageDC(QSize size)
{
    auto image = whiteImage(size);
    if (image == nullptr) {
        image = std::make_shared<QImage>(1, 1, QImage::Format_RGB32);
        image->fill(Qt::white);
    }
    paintOn(std::move(image));
}

CVexQtImageDC::~CVexQtImageDC()
{
    paintOn(nullptr);
}

std::unique_ptr<CVexQtImageDC> CVexQtImageDC::create(QSize size)
{
    auto image = whiteImage(size);
    if (image == nullptr) {
        return nullptr;
    }
    return std::unique_ptr<CVexQtImageDC>(new CVexQtImageDC(std::move(image), false));
}

std::unique_ptr<CVexQtImageDC> CVexQtImageDC::createMemory()
{
    return std::unique_ptr<CVexQtImageDC>(new CVexQtImageDC(nullptr, true));
}

void CVexQtImageDC::paintOn(std::shared_ptr<QImage> image)
{
    if (m_imagePainter.isActive()) {
        m_imagePainter.end();
    }
    m_image = std::move(image);
    if (m_image == nullptr) {
        setPainter(nullptr, QSize());
        return;
    }
    VEX_ASSERT(m_image->format() == QImage::Format_RGB32, "raster operations need RGB32 pixels");
    const bool begun = m_imagePainter.begin(m_image.get());
    // The painter has made the image its own: from here on its pixels stay where they are.
    const VexQtPixels pixels{reinterpret_cast<QRgb*>(m_image->bits()),
                             m_image->bytesPerLine() / qsizetype{sizeof(QRgb)}, m_image->size()};
    setPainter(begun ? &m_imagePainter : nullptr, m_image->size(), pixels);
}

bool CVexQtImageDC::resize(QSize size)
{
    auto image = m_memory ? nullptr : whiteImage(size);
    if (image == nullptr) {
        return false;
    }
    image->fill(toQColor(GetBkColor()));
    QPainter(image.get()).drawImage(QPoint(0, 0), *m_image);
    paintOn(std::move(image));
    return true;
}

CBitmap* CVexQtImageDC::SelectObject(CBitmap* bitmap)
{
    auto* ours = dynamic_cast<CVexQtBitmap*>(bitmap);
    if (!m_memory || (bitmap != nullptr && ours == nullptr)) {
        return nullptr;
    }
    paintOn(ours != nullptr ? ours->image() : nullptr);
    return std::exchange(m_bitmap, ours);
}

COLORREF CVexQtImageDC::devicePixelAt(CPoint point) const
{
    return m_image != nullptr ? colorAt(*m_image, point) : kNoPixel;
}
