#include "platform/qt/vexqtimagedc.h"
#include "tests/platform/standinmachine.h"
#include "tests/qt/qtstrokes.h"

#include <gtest/gtest.h>

namespace {

// Each channel of the two meets in all four pairs of a bit of the one and a bit of the other.
constexpr COLORREF kPenBits = RGB(0x0f, 0xaa, 0x3c);
constexpr COLORREF kPixelBits = RGB(0x33, 0xf0, 0x5a);

struct OperationRow {
    const char* name;
    int operation;
    COLORREF expected;
};

/// Worked out by hand from the two colours above, channel by channel.
constexpr OperationRow kOperations[] = {
    {"D and not P", R2_MASKNOTPEN, RGB(0x30, 0x50, 0x42)},
    {"D xor P", R2_XORPEN, RGB(0x3c, 0x5a, 0x66)},
    {"not (D xor P)", R2_NOTXORPEN, RGB(0xc3, 0xa5, 0x99)},
    {"P", R2_COPYPEN, RGB(0x0f, 0xaa, 0x3c)},
};

TEST(RasterOperationTest, EveryBitOfALinePixelFollowsTheTable)
{
    for (const OperationRow& row : kOperations) {
        QImage image(20, 20, QImage::Format_RGB32);
        image.fill(qRgb(0x33, 0xf0, 0x5a));
        CVexQtImageDC dc(image);
        const CPen pen(PS_SOLID, 0, kPenBits);
        dc.SelectObject(&pen);
        dc.SetROP2(row.operation);
        dc.MoveTo(2, 5);
        dc.LineTo(15, 5);
        EXPECT_EQ(row.expected, dc.GetPixel({8, 5})) << row.name;
        EXPECT_EQ(kPixelBits, dc.GetPixel({8, 6})) << row.name;
    }
}

TEST(RasterOperationTest, WidePensBrushesAndPixelsFollowTheSameTable)
{
    for (const OperationRow& row : kOperations) {
        QImage image(60, 60, QImage::Format_RGB32);
        image.fill(qRgb(0x33, 0xf0, 0x5a));
        CVexQtImageDC dc(image);
        const CPen wide(PS_GEOMETRIC, 6, kPenBits);
        const CBrush brush(kPenBits);
        const CPen none(PS_NULL, 0, 0);
        dc.SetROP2(row.operation);
        dc.SelectObject(&wide);
        dc.MoveTo(5, 10);
        dc.LineTo(50, 12);
        dc.SelectObject(&none);
        dc.SelectObject(&brush);
        dc.Ellipse(10, 20, 40, 50);
        dc.SetPixel(55, 55, kPenBits);
        EXPECT_EQ(row.expected, dc.GetPixel({30, 11})) << row.name;
        EXPECT_EQ(row.expected, dc.GetPixel({25, 35})) << row.name;
        EXPECT_EQ(row.expected, dc.GetPixel({55, 55})) << row.name;
    }
}

TEST(RasterOperationTest, FillRectCopiesWhateverTheOperation)
{
    QImage image = motley(20, 20);
    CVexQtImageDC dc(image);
    const CBrush brush(kPenBits);
    dc.SetROP2(R2_XORPEN);
    dc.FillRect(CRect(5, 5, 10, 10), &brush);
    EXPECT_EQ(kPenBits, dc.GetPixel({5, 5}));
    EXPECT_EQ(kPenBits, dc.GetPixel({9, 9}));
    EXPECT_EQ(motley(20, 20).pixel(10, 9), dc.image()->pixel(10, 9)) << "right edge is outside";
    EXPECT_EQ(motley(20, 20).pixel(9, 10), dc.image()->pixel(9, 10)) << "lower edge is outside";
}

TEST(RasterOperationTest, DrawingTwiceInXorOrNotXorRestoresEveryPixel)
{
    for (const int operation : {R2_XORPEN, R2_NOTXORPEN}) {
        for (unsigned seed = 1; seed <= 20; ++seed) {
            QImage image = motley(200, 200);
            CVexQtImageDC dc(image);
            dc.SetROP2(operation);
            const RandomStrokes strokes(seed);
            strokes.draw(dc);
            EXPECT_NE(motley(200, 200), dc.image()->copy()) << "seed " << seed;
            strokes.draw(dc);
            EXPECT_EQ(motley(200, 200), dc.image()->copy()) << "seed " << seed;
        }
    }
}

TEST(BlitTest, CopyIsExactAndPaintIsOrOfEachBit)
{
    const QImage below = motley(64, 64);
    for (const DWORD operation : {SRCCOPY, SRCPAINT}) {
        QImage target = below;
        QImage source(32, 32, QImage::Format_RGB32);
        source.fill(qRgb(0x0f, 0xaa, 0x3c));
        CVexQtImageDC dc(target), from(source);
        ASSERT_TRUE(dc.BitBlt(10, 20, 16, 8, &from, 3, 4, operation));
        const QRgb pen = qRgb(0x0f, 0xaa, 0x3c);
        for (int y = 0; y < 64; ++y) {
            for (int x = 0; x < 64; ++x) {
                const bool inside = x >= 10 && x < 26 && y >= 20 && y < 28;
                const QRgb joined = operation == SRCCOPY ? pen : (pen | below.pixel(x, y));
                ASSERT_EQ(inside ? joined : below.pixel(x, y), dc.image()->pixel(x, y))
                    << x << ' ' << y;
            }
        }
    }
}

TEST(BlitTest, BlockStopsAtTheEdgeOfItsSourceAndTheOperationStays)
{
    QImage target = motley(50, 50);
    CVexQtImageDC dc(target);
    const auto small = CVexQtImageDC::create(QSize(10, 10));
    dc.SetROP2(R2_XORPEN);
    EXPECT_TRUE(dc.BitBlt(0, 0, 40, 40, small.get(), 5, 5, SRCCOPY));
    EXPECT_EQ(0xffffffU, dc.GetPixel({4, 4}));
    EXPECT_EQ(motley(50, 50).pixel(5, 4), dc.image()->pixel(5, 4));
    const COLORREF before = dc.GetPixel({20, 20});
    dc.SetPixel(20, 20, RGB(255, 255, 255));
    EXPECT_EQ(before ^ 0xffffffU, dc.GetPixel({20, 20}));
}

TEST(BlitTest, BlockBetweenMappingsCopiesPixelForPixel)
{
    QImage pixels = motley(50, 50);
    CVexQtImageDC source(pixels);
    const auto target = CVexQtImageDC::create(QSize(80, 80));
    target->SetMapMode(MM_ISOTROPIC);
    target->SetViewportOrg(0, 80);
    target->SetWindowExt(40, 40);
    target->SetViewportExt(80, -80);
    ASSERT_TRUE(target->BitBlt(10, 10, 10, 10, &source, 3, 4, SRCCOPY));
    // Two pixels a unit, y up: columns 20 to 39, rows 40 to 59 of the device.
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(pixels.pixel(3 + i, 4 + i), target->image()->pixel(20 + i, 40 + i)) << i;
    }
    EXPECT_EQ(qRgb(255, 255, 255), target->image()->pixel(19, 40));
    EXPECT_EQ(qRgb(255, 255, 255), target->image()->pixel(40, 59));
}

TEST(BlitTest, BlocksOfTheWholeRangeCopyWhatIsThere)
{
    constexpr int kFar = 1000000000;
    QImage image = motley(50, 50);
    CVexQtImageDC dc(image);
    const auto small = CVexQtImageDC::create(QSize(10, 10));
    EXPECT_TRUE(dc.BitBlt(0, 0, 2 * kFar, 2 * kFar, small.get(), kFar, kFar, SRCCOPY));
    EXPECT_TRUE(dc.BitBlt(kFar, kFar, kFar, kFar, small.get(), -kFar, -kFar, SRCCOPY));
    EXPECT_EQ(motley(50, 50), dc.image()->copy());
    EXPECT_TRUE(dc.BitBlt(-kFar, -kFar, 2 * kFar, 2 * kFar, small.get(), -kFar, -kFar, SRCCOPY));
    EXPECT_EQ(0xffffffU, dc.GetPixel({9, 9}));
    EXPECT_EQ(motley(50, 50).pixel(10, 9), dc.image()->pixel(10, 9));
}

TEST(PixelTest, OutsideTheDeviceNothingIsSetAndNothingFound)
{
    QImage image = motley(20, 20);
    CVexQtImageDC dc(image);
    for (const CPoint& outside : {CPoint(-1, 5), CPoint(5, -1), CPoint(20, 5), CPoint(5, 20),
                                  CPoint(1000000000, -1000000000)}) {
        EXPECT_EQ(RGB(1, 2, 3), dc.SetPixel(outside, RGB(1, 2, 3)));
        EXPECT_EQ(0xffffffffU, dc.GetPixel(outside));
    }
    EXPECT_EQ(motley(20, 20), dc.image()->copy());
}

TEST(BlitTest, BitmapHeldByOneContextIsNotPaintedByASecond)
{
    const auto screen = CVexQtImageDC::create(QSize(40, 40));
    const auto bitmap = screen->CreateCompatibleBitmap(30, 30);
    const auto first = screen->CreateCompatibleDC();
    const auto second = screen->CreateCompatibleDC();
    first->SelectObject(bitmap.get());
    second->SelectObject(bitmap.get());
    second->SetPixel(1, 1, RGB(1, 2, 3));
    EXPECT_EQ(0xffffffU, bitmap->pixel({1, 1}));
    first->SetPixel(1, 1, RGB(4, 5, 6));
    EXPECT_EQ(RGB(4, 5, 6), bitmap->pixel({1, 1}));
}

TEST(BlitTest, MemoryContextDrawsIntoItsBitmapAndNowhereWithoutOne)
{
    const auto screen = CVexQtImageDC::create(QSize(40, 40));
    const auto memory = screen->CreateCompatibleDC();
    memory->SetPixel(1, 1, RGB(1, 2, 3));
    EXPECT_EQ(0xffffffffU, memory->GetPixel({1, 1}));
    EXPECT_FALSE(screen->BitBlt(0, 0, 8, 8, memory.get(), 0, 0, SRCCOPY));
    const auto bitmap = screen->CreateCompatibleBitmap(30, 30);
    EXPECT_EQ(nullptr, memory->SelectObject(bitmap.get()));
    memory->SetPixel(1, 1, RGB(1, 2, 3));
    EXPECT_TRUE(screen->BitBlt(0, 0, 8, 8, memory.get(), 0, 0, SRCCOPY));
    EXPECT_EQ(RGB(1, 2, 3), screen->GetPixel({1, 1}));
    EXPECT_EQ(RGB(1, 2, 3), bitmap->pixel({1, 1}));
    EXPECT_EQ(bitmap.get(), memory->SelectObject(static_cast<CBitmap*>(nullptr)));
}

TEST(BlitTest, BitmapsThatCannotBeMadeAreNull)
{
    const auto dc = CVexQtImageDC::create(QSize(4, 4));
    EXPECT_EQ(nullptr, dc->CreateCompatibleBitmap(0, 10));
    EXPECT_EQ(nullptr, dc->CreateCompatibleBitmap(10, -1));
    EXPECT_EQ(nullptr, dc->CreateCompatibleBitmap(32768, 10));
    EXPECT_EQ(nullptr, CVexQtImageDC::create(QSize(0, 0)));
    CStandInMachine machine;
    machine.mostBytes = 399;
    const CVexMachineScope scope(machine);
    EXPECT_EQ(nullptr, dc->CreateCompatibleBitmap(10, 10));
    EXPECT_NE(nullptr, dc->CreateCompatibleBitmap(9, 11));
}

} // namespace
