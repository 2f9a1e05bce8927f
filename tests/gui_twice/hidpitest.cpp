#include "tests/gui/guifixture.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"

#include <QTest>

namespace {

// This program has a screen of two pixels a point. The scale is fixed when the application starts,
// so it is set before main.
[[maybe_unused]] const bool kIsScaled = qputenv("QT_SCALE_FACTOR", "2");

class AtTwicePixels : public GuiTest {};

TEST_F(AtTwicePixels, ThePictureHasThePixelsOfTheScreen)
{
    ASSERT_EQ(2.0, window().view().widget()->devicePixelRatioF());
    EXPECT_EQ(window().view().widget()->size() * 2, picture().size());
}

TEST_F(AtTwicePixels, ALineIsOneDevicePixelWide)
{
    addLine({1.0, 1.0}, {5.0, 1.0});
    const QImage shown = window().view().widget()->grab().toImage();
    ASSERT_EQ(picture().size(), shown.size());
    const QPoint on = pixelAt(3.0, 1.0) * 2;
    int lit = 0;
    for (int y = on.y() - 6; y <= on.y() + 6; ++y) {
        lit += shown.pixelColor(on.x(), y) == QColor(Qt::white) ? 1 : 0;
        EXPECT_EQ(picture().pixel(on.x(), y), shown.pixel(on.x(), y)); // nothing was smoothed
    }
    EXPECT_EQ(1, lit);
}

TEST_F(AtTwicePixels, AClickIsWhereThePointerIs)
{
    enters("LINE").clicks(1.0, 1.0).clicks(5.0, 3.0).presses(Qt::Key_Escape).run();
    ASSERT_EQ(1u, lines().size());
    EXPECT_AT(5.0, 3.0, lines()[0]->EndPoint());
    EXPECT_EQ(0, differingPixels(picture(), freshPicture()));
}

} // namespace
