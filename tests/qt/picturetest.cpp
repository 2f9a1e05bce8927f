#include "platform/device/cdc.h"
#include "platform/qt/vexqtpagedc.h"
#include "platform/qt/vexqtpicture.h"

#include <QBuffer>
#include <QImage>
#include <QPageLayout>
#include <QPdfWriter>

#include <gtest/gtest.h>
#include <limits>

namespace {

/// A level line 100 mm long, 20 mm from the left, 30 mm from the top, pen 0.5 mm wide.
QByteArray pageWithLine(VexQtPictureFormat format)
{
    QByteArray bytes;
    const auto picture =
        CVexQtPicture::create({.format = format, .size = {210, 297}, .title = "one line"});
    if (picture != nullptr) {
        const CPen pen(PS_GEOMETRIC, 50, RGB(255, 0, 0));
        picture->dc()->SelectObject(&pen);
        picture->dc()->MoveTo(2000, 3000);
        picture->dc()->LineTo(12000, 3000);
        picture->finish(bytes);
    }
    return bytes;
}

/// The drawing instructions of a PDF of one page.
QByteArray pdfContent(const QByteArray& pdf)
{
    const qsizetype from = pdf.indexOf("stream\n") + 7;
    const QByteArray packed = pdf.mid(from, pdf.indexOf("endstream") - from);
    return qUncompress(QByteArray("\x00\x00\xff\xff", 4) +
                       packed); // a guess at the size goes first
}

TEST(PictureTest, PngHasTheSizeTheBackgroundAndTheLine)
{
    const auto picture = CVexQtPicture::create({.size = {120, 80}, .background = RGB(10, 20, 30)});
    ASSERT_NE(nullptr, picture);
    EXPECT_EQ(RGB(10, 20, 30), picture->dc()->GetBkColor());
    const CPen pen(PS_SOLID, 0, RGB(255, 255, 0));
    picture->dc()->SelectObject(&pen);
    picture->dc()->MoveTo(10, 40);
    picture->dc()->LineTo(100, 40);
    QByteArray bytes;
    ASSERT_TRUE(picture->finish(bytes));
    const QImage decoded = QImage::fromData(bytes, "PNG");
    EXPECT_EQ(QSize(120, 80), decoded.size());
    EXPECT_EQ(qRgb(10, 20, 30), decoded.pixel(119, 79));
    EXPECT_EQ(qRgb(255, 255, 0), decoded.pixel(50, 40));
}

TEST(PictureTest, SvgTellsMillimetresAndTheLineInHundredths)
{
    const QByteArray svg = pageWithLine(VexQtPictureFormat::kSvg);
    EXPECT_TRUE(svg.contains("width=\"210mm\" height=\"297mm\"")) << svg.toStdString();
    EXPECT_TRUE(svg.contains("viewBox=\"0 0 21000 29700\"")) << svg.toStdString();
    EXPECT_TRUE(svg.contains("points=\"2000,3000 12000,3000 \"")) << svg.toStdString();
    EXPECT_TRUE(svg.contains("stroke-width=\"50\"")) << svg.toStdString();
    EXPECT_TRUE(svg.contains("<title>one line</title>")) << svg.toStdString();
}

TEST(PictureTest, PdfPageIsA4AndAHundredMillimetresAreAHundredMillimetres)
{
    const QByteArray pdf = pageWithLine(VexQtPictureFormat::kPdf);
    EXPECT_TRUE(pdf.startsWith("%PDF-"));
    EXPECT_TRUE(pdf.contains("/MediaBox [0 0 595.000000 842.000000]")) << pdf.toStdString();
    const QByteArray content = pdfContent(pdf);
    // One unit is 72 / 2540 = 0.028346456 points, with y turned round.
    EXPECT_TRUE(content.contains("0.028346456 0 0 -0.028346456 0 842 cm")) << content.toStdString();
    EXPECT_TRUE(content.contains("2000 3000 m\n12000 3000 l")) << content.toStdString();
}

TEST(PictureTest, SameStrokesGiveTheSameBytesWithoutADate)
{
    for (const auto format : {VexQtPictureFormat::kPdf, VexQtPictureFormat::kSvg}) {
        const QByteArray first = pageWithLine(format);
        EXPECT_EQ(first, pageWithLine(format));
        EXPECT_FALSE(first.contains("CreationDate"));
    }
    EXPECT_TRUE(pageWithLine(VexQtPictureFormat::kPdf).contains("%%EOF"));
}

TEST(PictureTest, FinishEndsThePictureOnce)
{
    for (const auto format :
         {VexQtPictureFormat::kPng, VexQtPictureFormat::kPdf, VexQtPictureFormat::kSvg}) {
        const auto picture = CVexQtPicture::create({.format = format, .size = {50, 40}});
        ASSERT_NE(nullptr, picture);
        QByteArray bytes;
        EXPECT_TRUE(picture->finish(bytes));
        EXPECT_FALSE(bytes.isEmpty());
        EXPECT_EQ(nullptr, picture->dc());
        EXPECT_FALSE(picture->finish(bytes));
        EXPECT_TRUE(bytes.isEmpty());
    }
}

TEST(PictureTest, PictureThatIsDroppedUnfinishedLeavesNothingBehind)
{
    for (const auto format : {VexQtPictureFormat::kPdf, VexQtPictureFormat::kSvg}) {
        auto picture = CVexQtPicture::create({.format = format, .size = {50, 40}});
        ASSERT_NE(nullptr, picture);
        picture->dc()->LineTo(10, 10);
        picture.reset();
    }
}

TEST(PictureTest, SizesThatCannotBeMadeAreRefused)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const auto format :
         {VexQtPictureFormat::kPng, VexQtPictureFormat::kPdf, VexQtPictureFormat::kSvg}) {
        for (const QSizeF size :
             {QSizeF(0, 10), QSizeF(10, -1), QSizeF(10, 1e6), QSizeF(nan, 10)}) {
            EXPECT_EQ(nullptr, CVexQtPicture::create({.format = format, .size = size}));
        }
    }
}

TEST(PageTest, RasterOperationsCopyAndPixelsAreNotToBeHad)
{
    const auto picture =
        CVexQtPicture::create({.format = VexQtPictureFormat::kSvg, .size = {50, 40}});
    picture->dc()->SetROP2(R2_XORPEN);
    picture->dc()->LineTo(1000, 1000);
    EXPECT_EQ(0xffffffffU, picture->dc()->GetPixel({0, 0}));
    EXPECT_EQ(nullptr, picture->dc()->CreateCompatibleDC());
    EXPECT_EQ(nullptr, picture->dc()->CreateCompatibleBitmap(10, 10));
    EXPECT_FALSE(picture->dc()->IsPrinting());
    QByteArray bytes;
    ASSERT_TRUE(picture->finish(bytes));
    EXPECT_TRUE(bytes.contains("points=\"0,0 1000,1000 \"")) << bytes.toStdString();
}

TEST(PageTest, PrinterAnswersFromTheMetricsOfItsPage)
{
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    QPdfWriter writer(&file);
    writer.setResolution(254); // a dot is 1/10 millimetre
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(10, 20, 10, 20), QPageLayout::Millimeter);
    QPainter painter(&writer);
    const CVexQtPageDC dc(painter, writer, CVexQtPageDC::Use::kPrinter);
    EXPECT_TRUE(dc.IsPrinting());
    EXPECT_NEAR(2100, dc.GetDeviceCaps(PHYSICALWIDTH), 2);
    EXPECT_NEAR(2970, dc.GetDeviceCaps(PHYSICALHEIGHT), 2);
    EXPECT_NEAR(100, dc.GetDeviceCaps(PHYSICALOFFSETX), 2);
    EXPECT_NEAR(200, dc.GetDeviceCaps(PHYSICALOFFSETY), 2);
    EXPECT_NEAR(190, dc.GetDeviceCaps(HORZSIZE), 1);
    EXPECT_NEAR(257, dc.GetDeviceCaps(VERTSIZE), 1);
    EXPECT_EQ(254, dc.GetDeviceCaps(LOGPIXELSX));
}

} // namespace
