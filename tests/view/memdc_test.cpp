#include "tests/view/viewfixture.h"
#include "vexdb/vexmemdc.h"

using MemDcTest = ViewTest;
using Kind = VexStroke::Kind;

TEST_F(MemDcTest, ABufferStartsClearWithTheTargetsMapping)
{
    show();
    dc.SetBkColor(RGB(9, 8, 7));
    CVexBuffDC buffer(dc, &window);
    ASSERT_TRUE(buffer.ok());
    EXPECT_EQ(CSize(42000, 29700), buffer.GetDC()->GetWindowExt());
    const auto& memory = static_cast<const CVexRecordingDC&>(*buffer.GetDC());
    ASSERT_EQ(1u, memory.strokes().size());
    EXPECT_EQ(RGB(9, 8, 7), memory.strokes()[0].color);
    EXPECT_EQ((std::vector{CPoint(0, 0), CPoint(420, 297)}), memory.strokes()[0].points);
}

TEST_F(MemDcTest, ABlitTakesTheMappingOverOnceMore)
{
    show();
    CVexBuffDC buffer(dc, &window);
    dc.SetWindowOrg(500, 700);
    buffer.VexBitBlt(&dc, SRCPAINT);
    EXPECT_EQ(CPoint(500, 700), buffer.GetDC()->GetWindowOrg());
    ASSERT_FALSE(dc.strokes().empty());
    EXPECT_EQ(static_cast<int>(SRCPAINT), dc.strokes()[0].rop);
    EXPECT_EQ((std::vector{CPoint(0, 0), CPoint(420, 297)}), dc.strokes()[0].points);
}

TEST_F(MemDcTest, ABlitToNoContextIsNone)
{
    show();
    CVexBuffDC buffer(dc, &window);
    buffer.VexBitBlt(nullptr, SRCCOPY);
    EXPECT_TRUE(dc.strokes().empty());
}

TEST_F(MemDcTest, WhereAUnitIsManyPixelsTheLastOnesAreCoveredToo)
{
    showSquare({0, 0, 1, 1}, 101);
    record->ScaleUpDown(&dc, {0, 101}, 0.3, false); // 30 logical units on 101 pixels
    dc.SetViewportOrg(-1, 102);                     // so that the client's edges fall between units
    const CVexBuffDC buffer(dc, &window);
    const auto& memory = static_cast<const CVexRecordingDC&>(*buffer.GetDC());
    const std::vector<CPoint> fill = memory.strokes().at(0).points;
    EXPECT_LE(fill[0].x, 0);
    EXPECT_LE(fill[0].y, 0);
    EXPECT_GE(fill[1].x, 101);
    EXPECT_GE(fill[1].y, 101);
}

TEST_F(MemDcTest, WithoutABitmapTheWorkGoesToTheTarget)
{
    show();
    addLine({10.0, 10.0}, {20.0, 10.0});
    dc.refuseBitmaps(true);
    record->Draw(&dc);
    ASSERT_FALSE(database->buffer()->ok());
    EXPECT_EQ(&dc, database->buffer()->GetDC());
    ASSERT_EQ(2u, dc.strokes().size()); // cleared, the line; no block
    EXPECT_EQ(Kind::kFill, dc.strokes()[0].kind);
    EXPECT_EQ(Kind::kLine, dc.strokes()[1].kind);
}

TEST_F(MemDcTest, WithoutABitmapHighlightsGoStraightOntoThePicture)
{
    show();
    addLine({10.0, 10.0}, {20.0, 10.0});
    dc.refuseBitmaps(true);
    record->HighlightDraw(&dc);
    ASSERT_EQ(1u, dc.strokes().size()); // nothing cleared
    EXPECT_EQ(PS_DOT, dc.strokes()[0].penStyle);
}

TEST_F(MemDcTest, AWindowWithoutAnAreaHasNoBuffer)
{
    show();
    window.resize({0, 0});
    EXPECT_FALSE(CVexBuffDC(dc, &window).ok());
    EXPECT_FALSE(CVexBuffDC(dc, nullptr).ok());
}
