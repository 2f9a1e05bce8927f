#include "platform/qt/vexqtimagedc.h"
#include "tests/qt/qtstrokes.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/vexdbdatabase.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

// Arcs and circles as pixels.

namespace {

constexpr int kSide = 200;

/// A black image with a pixel a drawing unit, y up, the origin in the middle.
struct Picture {
    Picture() : image(kSide, kSide, QImage::Format_RGB32)
    {
        image.fill(Qt::black);
        dc = std::make_unique<CVexQtImageDC>(image);
        dc->SetBkColor(RGB(0, 0, 0));
        dc->SetMapMode(MM_ISOTROPIC);
        dc->SetWindowExt(kSide * 100, kSide * 100);
        dc->SetViewportExt(kSide, -kSide);
        dc->SetViewportOrg(kSide / 2, kSide / 2);
    }
    /// All lit pixels as points of the drawing.
    [[nodiscard]] std::vector<CVexGePoint2d> lit() const
    {
        std::vector<CVexGePoint2d> points;
        for (int y = 0; y < kSide; ++y) {
            for (int x = 0; x < kSide; ++x) {
                if ((image.pixel(x, y) & 0xffffff) != 0) {
                    points.emplace_back(x - kSide / 2, kSide / 2 - y);
                }
            }
        }
        return points;
    }

    QImage image;
    std::unique_ptr<CVexQtImageDC> dc;
};

TEST(ArcPictureTest, CircleIsARingOfPixelsAllAround)
{
    CVexDbDatabase drawing(false);
    CVexDbCircle circle({10.0, 5.0}, 60.0);
    circle.setDatabase(&drawing);
    Picture picture;
    circle.Draw(picture.dc.get());
    std::vector<bool> sectors(180);
    for (const CVexGePoint2d& pixel : picture.lit()) {
        const CVexGePoint2d centre(10.0, 5.0);
        EXPECT_NEAR(60.0, centre.distanceTo(pixel), 1.0);
        sectors[static_cast<std::size_t>(centre.angleTo(pixel) * 90.0 / std::numbers::pi)] = true;
    }
    EXPECT_EQ(0, std::ranges::count(sectors, false));
    EXPECT_GT(600U, picture.lit().size()); // nothing inside
}

TEST(ArcPictureTest, ArcThroughAngleZeroIsOnTheRightAlone)
{
    CVexDbDatabase drawing(false);
    CVexDbArc arc({0.0, 0.0}, 60.0, 1.75 * std::numbers::pi, 0.25 * std::numbers::pi);
    arc.setDatabase(&drawing);
    Picture picture;
    arc.Draw(picture.dc.get());
    const std::vector<CVexGePoint2d> lit = picture.lit();
    EXPECT_LT(80U, lit.size());
    for (const CVexGePoint2d& pixel : lit) {
        EXPECT_NEAR(60.0, std::hypot(pixel.x, pixel.y), 1.2);
        EXPECT_LT(41.0, pixel.x);
    }
    EXPECT_NE(qRgb(0, 0, 0), picture.image.pixel(160, 100));
}

TEST(ArcPictureTest, TwiceInXorLeavesNoTrace)
{
    CVexDbDatabase drawing(false);
    CVexDbCircle circle({0.006, 0.0}, 60.006);
    CVexDbCircle huge({-5000.0, 0.0}, 5050.0); // of which only a piece is near
    CVexDbArc arc({0.0, 0.0}, 40.0, 5.5, 0.75);
    Picture picture;
    const QImage before = picture.image;
    picture.dc->SetROP2(R2_XORPEN);
    for (CVexDbCurve* curve : {static_cast<CVexDbCurve*>(&circle), static_cast<CVexDbCurve*>(&huge),
                               static_cast<CVexDbCurve*>(&arc)}) {
        curve->setDatabase(&drawing);
        curve->Draw(picture.dc.get());
        EXPECT_NE(before, picture.image);
        curve->Draw(picture.dc.get());
        EXPECT_EQ(before, picture.image);
    }
}

} // namespace
