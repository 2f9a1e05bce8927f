#include "platform/headless/vexrecordingdc.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>

namespace {

using Points = std::vector<CPoint>;
using Kind = VexStroke::Kind;

TEST(RecordingTest, LinesHoldDevicePointsAndWhatWasInForce)
{
    CVexRecordingDC dc;
    dc.SetMapMode(MM_ISOTROPIC);
    dc.SetWindowExt(1000, 1000);
    dc.SetViewportOrg(0, 100);
    dc.SetViewportExt(100, -100);
    const std::array dashes{500, 250};
    const CPen pen(PS_GEOMETRIC_USERSTYLE, 25, CBrush(RGB(255, 0, 0)), dashes);
    dc.SelectObject(&pen);
    dc.SetROP2(R2_XORPEN);
    dc.MoveTo(100, 100);
    dc.LineTo(500, 300);
    dc.LineTo(500, 0);
    ASSERT_EQ(2U, dc.strokes().size());
    EXPECT_EQ((VexStroke{Kind::kLine,
                         {{10, 90}, {50, 70}},
                         R2_XORPEN,
                         PS_GEOMETRIC_USERSTYLE,
                         25,
                         RGB(255, 0, 0),
                         {500, 250},
                         BS_SOLID,
                         RGB(255, 255, 255)}),
              dc.strokes()[0]);
    EXPECT_EQ((Points{{50, 70}, {50, 100}}), dc.strokes()[1].points);
}

TEST(RecordingTest, EveryKindOfStrokeIsTold)
{
    CVexRecordingDC dc;
    const CBrush green(RGB(0, 255, 0));
    const Points corners{{1, 2}, {3, 4}, {5, 0}};
    dc.Polyline(corners);
    dc.Polygon(corners);
    dc.Rectangle(9, 8, 1, 2);
    dc.Ellipse(1, 2, 9, 8);
    dc.FillRect(CRect(0, 0, 4, 4), &green);
    EXPECT_EQ(RGB(0, 0, 255), dc.SetPixel(7, 7, RGB(0, 0, 255)));
    const std::array kinds{Kind::kPolyline, Kind::kPolygon, Kind::kRectangle,
                           Kind::kEllipse,  Kind::kFill,    Kind::kPixel};
    ASSERT_EQ(kinds.size(), dc.strokes().size());
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        EXPECT_EQ(kinds[i], dc.strokes()[i].kind) << i;
    }
    EXPECT_EQ((Points{{1, 2}, {9, 8}}), dc.strokes()[2].points) << "corners come sorted";
    EXPECT_EQ(RGB(0, 255, 0), dc.strokes()[4].color);
    EXPECT_EQ(RGB(0, 0, 255), dc.strokes()[5].color);
}

TEST(AngleArcTest, WholeTurnIsTheOutlineOfAnEllipseBehindAStrokeToItsStart)
{
    CVexRecordingDC dc;
    const CBrush brush(RGB(1, 2, 3));
    dc.SelectObject(&brush);
    dc.MoveTo(110, 50);
    dc.AngleArc(100, 50, 10, 0.0F, 360.0F);
    dc.AngleArc(CPoint(0, 0), 20, 90.0F, -400.0F);
    ASSERT_EQ(3U, dc.strokes().size());
    EXPECT_EQ(Kind::kEllipse, dc.strokes()[0].kind);
    EXPECT_EQ((Points{{90, 40}, {110, 60}}), dc.strokes()[0].points);
    EXPECT_EQ(BS_HOLLOW, dc.strokes()[0].brushStyle);
    EXPECT_EQ(&brush, dc.GetCurrentBrush());
    EXPECT_EQ((Points{{110, 50}, {0, 20}}), dc.strokes()[1].points);
    EXPECT_EQ((Points{{-20, -20}, {20, 20}}), dc.strokes()[2].points);
}

TEST(AngleArcTest, PartOfATurnIsAChainThatEndsWhereTheNextStrokeBegins)
{
    CVexRecordingDC dc;
    dc.MoveTo(100, 0);
    dc.AngleArc(0, 0, 100, 0.0F, 90.0F);
    dc.LineTo(5, 5);
    ASSERT_EQ(2U, dc.strokes().size());
    const Points& chain = dc.strokes()[0].points;
    EXPECT_EQ(Kind::kPolyline, dc.strokes()[0].kind);
    EXPECT_EQ(CPoint(100, 0), chain.front());
    EXPECT_EQ(CPoint(0, 100), chain.back());
    EXPECT_LT(8U, chain.size());
    for (const CPoint& point : chain) {
        EXPECT_NEAR(100.0, std::hypot(point.x, point.y), 0.71) << point.x << ' ' << point.y;
    }
    EXPECT_EQ((Points{{0, 100}, {5, 5}}), dc.strokes()[1].points);
}

TEST(AngleArcTest, NegativeSweepRunsTheOtherWayAndYUpTurnsBoth)
{
    CVexRecordingDC dc;
    dc.MoveTo(0, 0);
    dc.AngleArc(0, 0, 100, 0.0F, -90.0F);
    EXPECT_EQ((Points{{0, 0}, {100, 0}}), dc.strokes()[0].points);
    EXPECT_EQ(CPoint(0, -100), dc.strokes()[1].points.back());
    dc.SetMapMode(MM_ISOTROPIC);
    dc.SetWindowExt(100, 100);
    dc.SetViewportExt(200, -200);
    dc.MoveTo(100, 0);
    dc.AngleArc(0, 0, 100, 0.0F, 90.0F);
    EXPECT_EQ((Points{{0, -200}}), (Points{dc.strokes()[2].points.back()}));
}

TEST(AngleArcTest, FarthestCirclesStayWithinTheCoordinates)
{
    CVexRecordingDC dc;
    dc.AngleArc(1000000000, -1000000000, 1000000000, 0.0F, 360.0F);
    dc.AngleArc(0, 0, 1000000000, 0.0F, 45.0F);
    for (const VexStroke& stroke : dc.strokes()) {
        for (const CPoint& point : stroke.points) {
            EXPECT_LE(std::abs(point.x), 1000000000);
            EXPECT_LE(std::abs(point.y), 1000000000);
        }
    }
    EXPECT_GT(600U, dc.strokes().back().points.size());
}

TEST(RecordingTest, ChainOfOnePointAndHollowFillDrawNothing)
{
    CVexRecordingDC dc;
    const CBrush hollow(BS_HOLLOW, 0);
    dc.Polyline(Points{{1, 1}});
    dc.Polygon(Points{{1, 1}});
    dc.FillRect(CRect(0, 0, 4, 4), &hollow);
    dc.FillRect(CRect(0, 0, 4, 4), nullptr);
    EXPECT_TRUE(dc.strokes().empty());
}

TEST(RecordingTest, BlitRecordsItselfAndBringsTheStrokesOfItsSource)
{
    CVexRecordingDC dc;
    const auto memory = dc.CreateCompatibleDC();
    const auto bitmap = dc.CreateCompatibleBitmap(100, 100);
    ASSERT_NE(nullptr, bitmap);
    EXPECT_EQ(nullptr, memory->SelectObject(bitmap.get()));
    memory->MoveTo(10, 10);
    memory->LineTo(20, 20);
    EXPECT_TRUE(dc.BitBlt(5, 7, 50, 50, memory.get(), 0, 0, SRCPAINT));
    ASSERT_EQ(2U, dc.strokes().size());
    EXPECT_EQ(Kind::kBlit, dc.strokes()[0].kind);
    EXPECT_EQ(static_cast<int>(SRCPAINT), dc.strokes()[0].rop);
    EXPECT_EQ((Points{{5, 7}, {55, 57}}), dc.strokes()[0].points);
    EXPECT_EQ((Points{{15, 17}, {25, 27}}), dc.strokes()[1].points);
    EXPECT_EQ(bitmap.get(), memory->SelectObject(static_cast<CBitmap*>(nullptr)));
}

TEST(RecordingTest, BlitWithYUpFitsBlocksByTheirUpperCorners)
{
    CVexRecordingDC dc;
    dc.SetMapMode(MM_ISOTROPIC);
    dc.SetViewportOrg(0, 100);
    dc.SetViewportExt(1, -1);
    const auto memory = dc.CreateCompatibleDC();
    memory->copyMapping(dc);
    memory->MoveTo(0, 0);
    memory->LineTo(10, 10);
    EXPECT_TRUE(dc.BitBlt(0, 0, 100, 100, memory.get(), 0, 0, SRCCOPY));
    EXPECT_EQ((Points{{0, 0}, {100, 100}}), dc.strokes()[0].points);
    EXPECT_EQ((Points{{0, 100}, {10, 90}}), dc.strokes()[1].points);
}

TEST(RecordingTest, BlitRefusesNoSourceAndOtherOperations)
{
    CVexRecordingDC dc, source;
    EXPECT_FALSE(dc.BitBlt(0, 0, 1, 1, nullptr, 0, 0, SRCCOPY));
    EXPECT_FALSE(dc.BitBlt(0, 0, 1, 1, &source, 0, 0, 0x00550009));
    EXPECT_TRUE(dc.strokes().empty());
}

TEST(RecordingTest, BitmapsAreRefusedOnRequestAndOutsideMemoryContexts)
{
    CVexRecordingDC dc;
    const auto bitmap = dc.CreateCompatibleBitmap(10, 20);
    EXPECT_EQ(CSize(10, 20), bitmap->size());
    EXPECT_EQ(0xffffffffU, bitmap->pixel({0, 0}));
    EXPECT_EQ(nullptr, dc.CreateCompatibleBitmap(0, 20));
    dc.SelectObject(bitmap.get());
    EXPECT_EQ(nullptr, dc.SelectObject(static_cast<CBitmap*>(nullptr))) << "never went in";
    dc.refuseBitmaps(true);
    EXPECT_EQ(nullptr, dc.CreateCompatibleBitmap(10, 20));
    EXPECT_EQ(nullptr, dc.CreateCompatibleDC()->CreateCompatibleBitmap(10, 20));
}

TEST(RecordingTest, DeviceCapsFollowTheSizeUnlessTheyAreSet)
{
    CVexRecordingDC dc(CSize(960, 480));
    EXPECT_EQ(960, dc.GetDeviceCaps(HORZRES));
    EXPECT_EQ(254, dc.GetDeviceCaps(HORZSIZE));
    EXPECT_EQ(127, dc.GetDeviceCaps(VERTSIZE));
    dc.setDeviceCap(HORZSIZE, 210);
    dc.setDeviceCap(HORZSIZE, 297);
    EXPECT_EQ(297, dc.GetDeviceCaps(HORZSIZE));
    EXPECT_FALSE(dc.IsPrinting());
    dc.setPrinting(true);
    EXPECT_TRUE(dc.IsPrinting());
    EXPECT_EQ(0xffffffffU, dc.GetPixel({1, 1}));
}

} // namespace
