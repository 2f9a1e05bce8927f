#include "guifixture.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTest>

namespace {

/// These run in a program of their own, since the scale of a screen is fixed at the start.
class DISABLED_AtTwicePixels : public GuiTest {};

TEST_F(DISABLED_AtTwicePixels, ThePictureHasThePixelsOfTheScreen)
{
    ASSERT_EQ(2.0, window().view().widget()->devicePixelRatioF());
    EXPECT_EQ(window().view().widget()->size() * 2, picture().size());
}

TEST_F(DISABLED_AtTwicePixels, ALineIsOneDevicePixelWide)
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

TEST_F(DISABLED_AtTwicePixels, AClickIsWhereThePointerIs)
{
    enters("LINE").clicks(1.0, 1.0).clicks(5.0, 3.0).presses(Qt::Key_Escape).run();
    ASSERT_EQ(1u, lines().size());
    EXPECT_AT(5.0, 3.0, lines()[0]->EndPoint());
    EXPECT_EQ(0, differingPixels(picture(), freshPicture()));
}

TEST(HighResolution, IsDrawnSharp)
{
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_SCALE_FACTOR", "2");
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(),
                {"--gtest_also_run_disabled_tests", "--gtest_filter=DISABLED_AtTwicePixels.*"});
    ASSERT_TRUE(child.waitForFinished(60000));
    const QByteArray told = child.readAll();
    EXPECT_EQ(0, child.exitCode()) << told.toStdString();
    EXPECT_TRUE(told.contains("3 tests from 1 test suite ran")) << told.toStdString();
}

} // namespace
