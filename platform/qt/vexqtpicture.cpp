#include "platform/qt/vexqtpicture.h"

#include "platform/qt/vexqtimagedc.h"
#include "platform/qt/vexqtpagedc.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <cmath>

namespace {

constexpr int kDotsPerInch = 2540; // a dot is 1/100 millimetre
constexpr double kDotsPerMillimetre = 100.0;
constexpr double kLongestPageMillimetres = 20000.0;
constexpr double kLongestImagePixels = 32767.0;

/// Also refuses NaN.
bool fits(QSizeF size, double least, double most)
{
    return size.width() >= least && size.width() <= most && size.height() >= least &&
           size.height() <= most;
}

QSize dotsOf(QSizeF millimetres)
{
    return {static_cast<int>(std::lround(millimetres.width() * kDotsPerMillimetre)),
            static_cast<int>(std::lround(millimetres.height() * kDotsPerMillimetre))};
}

void fillBackground(CDC& dc, COLORREF color)
{
    const CBrush brush(color);
    dc.SetBkColor(color);
    dc.FillRect(CRect(0, 0, dc.GetDeviceCaps(HORZRES), dc.GetDeviceCaps(VERTRES)), &brush);
}

class PngPicture : public CVexQtPicture {
public:
    explicit PngPicture(std::unique_ptr<CVexQtImageDC> dc) : m_dc(std::move(dc)) {}
    [[nodiscard]] CDC* dc() override { return m_dc.get(); }

    bool finish(QByteArray& out) override
    {
        out.clear();
        if (m_dc == nullptr) {
            return false;
        }
        QBuffer file(&out);
        const bool saved = file.open(QIODevice::WriteOnly) && m_dc->image()->save(&file, "PNG");
        m_dc.reset();
        file.close();
        if (!saved) {
            out.clear();
        }
        return saved;
    }

private:
    std::unique_ptr<CVexQtImageDC> m_dc;
};

/// What PDF and SVG share: a painter on a page that writes into a buffer.
class PagePicture : public CVexQtPicture {
public:
    [[nodiscard]] CDC* dc() override { return m_dc.get(); }

    bool finish(QByteArray& out) override
    {
        out.clear();
        if (m_dc == nullptr) {
            return false;
        }
        m_dc.reset();
        const bool ended = m_painter.end();
        m_file.close();
        if (ended) {
            out = settled(m_file.data());
        }
        return ended;
    }

protected:
    PagePicture() { m_file.open(QIODevice::WriteOnly); }
    /// The bytes without what differs from run to run.
    [[nodiscard]] virtual QByteArray settled(const QByteArray& bytes) const { return bytes; }

    QBuffer m_file;
    QPainter m_painter;
    std::unique_ptr<CVexQtDC> m_dc;
};

class PdfPicture : public PagePicture {
public:
    explicit PdfPicture(const VexQtPictureOptions& options) : m_writer(&m_file)
    {
        m_writer.setResolution(kDotsPerInch);
        m_writer.setPageSize(
            QPageSize(options.size, QPageSize::Millimeter, QString(), QPageSize::ExactMatch));
        m_writer.setPageMargins(QMarginsF(0, 0, 0, 0));
        m_writer.setCreator(QStringLiteral("vextool"));
        m_writer.setTitle(options.title);
        if (m_painter.begin(&m_writer)) {
            m_dc = std::make_unique<CVexQtPageDC>(m_painter, m_writer, CVexQtPageDC::Use::kPicture);
        }
    }
    ~PdfPicture() override
    {
        m_dc.reset();
        if (m_painter.isActive()) {
            m_painter.end(); // while the writer still stands
        }
    }

protected:
    /// Blanks the creation date. The length stays, since the file tells where its parts begin.
    [[nodiscard]] QByteArray settled(const QByteArray& bytes) const override
    {
        QByteArray blanked = bytes;
        const qsizetype from = blanked.indexOf("/CreationDate (D:");
        const qsizetype to = from < 0 ? -1 : blanked.indexOf(')', from);
        for (qsizetype i = from; to >= 0 && i <= to; ++i) {
            blanked[i] = ' ';
        }
        return blanked;
    }

private:
    QPdfWriter m_writer;
};

class SvgPicture : public PagePicture {
public:
    explicit SvgPicture(const VexQtPictureOptions& options)
    {
        const QSize dots = dotsOf(options.size);
        m_generator.setOutputDevice(&m_file);
        m_generator.setResolution(kDotsPerInch);
        m_generator.setSize(dots);
        m_generator.setViewBox(QRect(QPoint(0, 0), dots));
        m_generator.setTitle(options.title);
        m_generator.setDescription(QStringLiteral("made by vextool"));
        if (m_painter.begin(&m_generator)) {
            m_dc = std::make_unique<CVexQtDC>(m_painter, dots, CVexQtDC::Form::kPage);
        }
    }
    ~SvgPicture() override
    {
        m_dc.reset();
        if (m_painter.isActive()) {
            m_painter.end(); // while the generator still stands
        }
    }

private:
    QSvgGenerator m_generator;
};

std::unique_ptr<CVexQtPicture> makePng(const VexQtPictureOptions& options)
{
    if (!fits(options.size, 1.0, kLongestImagePixels)) {
        return nullptr;
    }
    auto dc = CVexQtImageDC::create(options.size.toSize());
    return dc != nullptr ? std::make_unique<PngPicture>(std::move(dc)) : nullptr;
}

template <typename Page>
std::unique_ptr<CVexQtPicture> makePage(const VexQtPictureOptions& options)
{
    if (!fits(options.size, 1.0, kLongestPageMillimetres)) {
        return nullptr;
    }
    return std::make_unique<Page>(options);
}

std::unique_ptr<CVexQtPicture> makePicture(const VexQtPictureOptions& options)
{
    switch (options.format) {
    case VexQtPictureFormat::kPng: return makePng(options);
    case VexQtPictureFormat::kPdf: return makePage<PdfPicture>(options);
    case VexQtPictureFormat::kSvg: return makePage<SvgPicture>(options);
    }
    return nullptr;
}

} // namespace

CVexQtPicture::~CVexQtPicture() = default;

std::unique_ptr<CVexQtPicture> CVexQtPicture::create(const VexQtPictureOptions& options)
{
    auto picture = makePicture(options);
    if (picture == nullptr || picture->dc() == nullptr) {
        return nullptr;
    }
    fillBackground(*picture->dc(), options.background);
    return picture;
}
