#include "platform/device/vexdevicetypes.h"
#include "platform/qt/vexqtimagedc.h"
#include "tests/qt/qtstrokes.h"

#include <gtest/gtest.h>
#include <random>

namespace {

constexpr int kSide = 64;
constexpr COLORREF kColor = RGB(0x0f, 0xaa, 0x3c);

struct OperationRow {
    const char* name;
    int operation;
    QPainter::CompositionMode mode;
};

constexpr OperationRow kOperations[] = {
    {"D and not P", R2_MASKNOTPEN, QPainter::RasterOp_NotSourceAndDestination},
    {"D xor P", R2_XORPEN, QPainter::RasterOp_SourceXorDestination},
    {"not (D xor P)", R2_NOTXORPEN, QPainter::RasterOp_NotSourceXorDestination},
    {"P", R2_COPYPEN, QPainter::CompositionMode_SourceOver},
};

/// What a raster painter makes of the line by itself.
QImage painted(QPoint from, QPoint to, QPainter::CompositionMode mode)
{
    QImage image = motley(kSide, kSide);
    QPainter painter(&image);
    QPen pen(toQColor(kColor), 1.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.setCompositionMode(mode);
    painter.drawLine(from, to);
    painter.end();
    return image;
}

QImage drawn(QPoint from, QPoint to, int operation)
{
    QImage image = motley(kSide, kSide);
    CVexQtImageDC dc(image);
    const CPen pen(PS_SOLID, 0, kColor);
    dc.SelectObject(&pen);
    dc.SetROP2(operation);
    dc.MoveTo(from.x(), from.y());
    dc.LineTo(to.x(), to.y());
    return image;
}

TEST(ThinLineTest, EveryPixelIsAsThePainterLeavesIt)
{
    std::mt19937 random(23);
    const auto coordinate = [&] { return static_cast<int>(random() % kSide); };
    for (int i = 0; i < 2000; ++i) {
        const QPoint from(coordinate(), coordinate()), to(coordinate(), coordinate());
        for (const OperationRow& row : kOperations) {
            ASSERT_EQ(painted(from, to, row.mode), drawn(from, to, row.operation))
                << row.name << ' ' << from.x() << ' ' << from.y() << " to " << to.x() << ' '
                << to.y();
        }
    }
}

TEST(ThinLineTest, OfALineAcrossTheEdgesThePaintersPixelsAreThere)
{
    std::mt19937 random(24);
    const auto coordinate = [&] { return static_cast<int>(random() % (kSide + 120)) - 60; };
    for (int i = 0; i < 3000; ++i) {
        const QPoint from(coordinate(), coordinate()), to(coordinate(), coordinate());
        ASSERT_EQ(painted(from, to, QPainter::RasterOp_SourceXorDestination),
                  drawn(from, to, R2_XORPEN))
            << from.x() << ' ' << from.y() << " to " << to.x() << ' ' << to.y();
    }
}

TEST(ThinLineTest, EveryShortLineIsThePaintersInEachDirection)
{
    const QPoint from(30, 30);
    for (int x = 20; x <= 40; ++x) {
        for (int y = 20; y <= 40; ++y) {
            ASSERT_EQ(painted(from, {x, y}, QPainter::RasterOp_SourceXorDestination),
                      drawn(from, {x, y}, R2_XORPEN))
                << x << ' ' << y;
        }
    }
}

TEST(ThinLineTest, LinesAtTheEdgeStayOnTheImage)
{
    const QPoint corners[] = {{0, 0}, {kSide - 1, 0}, {kSide - 1, kSide - 1}, {0, kSide - 1}};
    for (const QPoint from : corners) {
        for (const QPoint to : corners) {
            EXPECT_EQ(painted(from, to, QPainter::RasterOp_SourceXorDestination),
                      drawn(from, to, R2_XORPEN));
        }
        EXPECT_EQ(painted(from, from + QPoint(9, -5), QPainter::CompositionMode_SourceOver),
                  drawn(from, from + QPoint(9, -5), R2_COPYPEN));
    }
}

TEST(ThinLineTest, ALineDrawnTwiceInXorLeavesNoTrace)
{
    QImage image = motley(kSide, kSide);
    const QImage before = image;
    {
        CVexQtImageDC dc(image);
        const CPen pen(PS_SOLID, 0, kColor);
        dc.SelectObject(&pen);
        dc.SetROP2(R2_XORPEN);
        for (const CPoint from : {CPoint(3, 60), CPoint(50, 7)}) {
            dc.MoveTo(from);
            dc.LineTo(50, 7); // the second time a point
            EXPECT_NE(before, *dc.image());
            dc.MoveTo(from);
            dc.LineTo(50, 7);
        }
    }
    EXPECT_EQ(before, image);
}

} // namespace
