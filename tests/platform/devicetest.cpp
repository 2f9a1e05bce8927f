#include "platform/headless/vexrecordingdc.h"

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <ostream>

// Beside the type that it prints, where GoogleTest looks for it.
static void PrintTo(const CPoint& point, std::ostream* out)
{
    *out << '(' << point.x << ", " << point.y << ')';
}

namespace {

CPoint toDevice(const CDC& dc, CPoint point)
{
    dc.LPtoDP(&point);
    return point;
}

CPoint toLogical(const CDC& dc, CPoint point)
{
    dc.DPtoLP(&point);
    return point;
}

/// The view of (0, 0) to (192, 108) drawing units on a client of 1920 by 1080 pixels, y up.
void mapView(CDC& dc)
{
    dc.SetMapMode(MM_ISOTROPIC);
    dc.SetWindowOrg(0, 0);
    dc.SetViewportOrg(0, 1080);
    dc.SetWindowExt(19200, 10800);
    dc.SetViewportExt(1920, -1080);
}

TEST(DeviceMappingTest, TextModeMovesByTheOriginsAndIgnoresExtents)
{
    CVexRecordingDC dc;
    dc.SetWindowOrg(10, 20);
    dc.SetViewportOrg(1, 2);
    dc.SetWindowExt(100, 100);
    dc.SetViewportExt(7, 7);
    EXPECT_EQ(CPoint(-4, -8), toDevice(dc, {5, 10}));
    EXPECT_EQ(CPoint(5, 10), toLogical(dc, {-4, -8}));
    EXPECT_EQ(1.0, dc.xScale());
}

TEST(DeviceMappingTest, NegativeViewportHeightTurnsYUp)
{
    CVexRecordingDC dc;
    mapView(dc);
    EXPECT_EQ(CPoint(0, 1080), toDevice(dc, {0, 0}));
    EXPECT_EQ(CPoint(1920, 0), toDevice(dc, {19200, 10800}));
    EXPECT_EQ(CPoint(100, 980), toDevice(dc, {1000, 1000}));
    EXPECT_EQ(CPoint(1000, 1000), toLogical(dc, {100, 980}));
    EXPECT_DOUBLE_EQ(0.1, dc.xScale());
    EXPECT_DOUBLE_EQ(0.1, dc.yScale());
}

TEST(DeviceMappingTest, HalvesGoUpOnBothSidesOfZero)
{
    CVexRecordingDC dc;
    dc.SetMapMode(MM_ISOTROPIC);
    dc.SetWindowExt(2, 2);
    dc.SetViewportExt(1, 1);
    const std::array<CPoint, 4> logical{CPoint(1, -1), CPoint(3, -3), CPoint(2, -2), CPoint(5, -5)};
    const std::array<CPoint, 4> device{CPoint(1, 0), CPoint(2, -1), CPoint(1, -1), CPoint(3, -2)};
    for (std::size_t i = 0; i < logical.size(); ++i) {
        EXPECT_EQ(device[i], toDevice(dc, logical[i])) << i;
    }
}

struct IsotropicRow {
    const char* name;
    CSize window, asked, kept;
};

TEST(DeviceMappingTest, IsotropicShrinksTheLargerScaleAndKeepsSigns)
{
    const IsotropicRow rows[] = {
        {"fits already", {100, 50}, {200, 100}, {200, 100}},
        {"too wide", {100, 100}, {300, 200}, {200, 200}},
        {"too high", {100, 100}, {300, -400}, {300, -300}},
        {"left hand", {100, -50}, {-400, 100}, {-200, 100}},
        {"rounds", {3, 2}, {100, 100}, {100, 67}},
        {"never to nothing", {1000, 1}, {10, 10}, {10, 1}},
    };
    for (const IsotropicRow& row : rows) {
        CVexRecordingDC dc;
        dc.SetMapMode(MM_ISOTROPIC);
        dc.SetWindowExt(row.window);
        dc.SetViewportExt(row.asked);
        EXPECT_EQ(row.kept, dc.GetViewportExt()) << row.name;
    }
}

TEST(DeviceMappingTest, SettersGiveTheValueBeforeAndRefuseNonsense)
{
    CVexRecordingDC dc;
    EXPECT_EQ(MM_TEXT, dc.SetMapMode(MM_ISOTROPIC));
    EXPECT_EQ(MM_ISOTROPIC, dc.SetMapMode(99));
    EXPECT_EQ(MM_ISOTROPIC, dc.GetMapMode());
    EXPECT_EQ(CSize(1, 1), dc.SetWindowExt(0, 5));
    EXPECT_EQ(CSize(1, 1), dc.GetWindowExt());
    EXPECT_EQ(CSize(1, 1), dc.SetViewportExt(5, 0));
    EXPECT_EQ(CSize(1, 1), dc.GetViewportExt());
    EXPECT_EQ(R2_COPYPEN, dc.SetROP2(R2_XORPEN));
    EXPECT_EQ(R2_XORPEN, dc.SetROP2(R2_COPYPEN));
}

TEST(DeviceMappingTest, CoordinatesSaturateAtAThousandMillion)
{
    CVexRecordingDC dc;
    dc.SetMapMode(MM_ISOTROPIC);
    dc.SetWindowExt(1, 1);
    dc.SetViewportExt(1000, -1000);
    constexpr int kMost = std::numeric_limits<int>::max();
    constexpr int kLeast = std::numeric_limits<int>::min();
    EXPECT_EQ(CPoint(1000000000, -1000000000), toDevice(dc, {kMost, kMost}));
    EXPECT_EQ(CPoint(-1000000000, 1000000000), toDevice(dc, {kLeast, kLeast}));
    EXPECT_EQ(CPoint(999999000, -999999000), toDevice(dc, {999999, 999999}));
    dc.SetMapMode(MM_TEXT);
    dc.SetWindowOrg(kLeast, kMost);
    EXPECT_EQ(CPoint(1000000000, -1000000000), toDevice(dc, {kMost, kLeast}));
}

TEST(DeviceMappingTest, CopyTakesTheMappingAsItStands)
{
    CVexRecordingDC from, to;
    mapView(from);
    to.copyMapping(from);
    EXPECT_EQ(MM_ISOTROPIC, to.GetMapMode());
    EXPECT_EQ(CPoint(0, 1080), to.GetViewportOrg());
    EXPECT_EQ(CSize(1920, -1080), to.GetViewportExt());
    EXPECT_EQ(CPoint(100, 980), toDevice(to, {1000, 1000}));
}

TEST(DeviceSelectionTest, SelectingGivesTheObjectBeforeAndNullTheStockObject)
{
    CVexRecordingDC dc;
    const CPen pen(PS_SOLID, 5, RGB(255, 0, 0));
    const CBrush brush(BS_HOLLOW, 0);
    const CPen* stockPen = dc.SelectObject(&pen);
    const CBrush* stockBrush = dc.SelectObject(&brush);
    ASSERT_NE(nullptr, stockPen);
    EXPECT_EQ(0, stockPen->width());
    EXPECT_EQ(RGB(0, 0, 0), stockPen->color());
    ASSERT_NE(nullptr, stockBrush);
    EXPECT_EQ(RGB(255, 255, 255), stockBrush->color());
    EXPECT_EQ(&pen, dc.SelectObject(static_cast<const CPen*>(nullptr)));
    EXPECT_EQ(stockPen, dc.GetCurrentPen());
    EXPECT_EQ(&brush, dc.SelectObject(static_cast<const CBrush*>(nullptr)));
    EXPECT_EQ(stockBrush, dc.GetCurrentBrush());
}

TEST(DeviceObjectTest, EveryObjectHasAStampOfItsOwn)
{
    const CPen first(PS_SOLID, 0, 0);
    const CPen second(PS_SOLID, 0, 0);
    const CBrush brush(0);
    EXPECT_NE(first.stamp(), second.stamp());
    EXPECT_NE(second.stamp(), brush.stamp());
    EXPECT_NE(0U, first.stamp());
}

TEST(DeviceObjectTest, PenKeepsAtMostThirtyTwoDashesAndNoNegativeOne)
{
    const std::vector<int> many(40, 7);
    EXPECT_EQ(std::vector<int>(32, 7), CPen(PS_GEOMETRIC_USERSTYLE, 0, CBrush(0), many).dashes());
    const std::vector<int> negative{-5, 3};
    EXPECT_EQ((std::vector<int>{0, 3}),
              CPen(PS_GEOMETRIC_USERSTYLE, 0, CBrush(0), negative).dashes());
    const std::vector<int> nothing{0, -1, 0, 0};
    EXPECT_TRUE(CPen(PS_GEOMETRIC_USERSTYLE, 0, CBrush(0), nothing).dashes().empty());
    EXPECT_EQ(RGB(1, 2, 3), CPen(PS_GEOMETRIC_USERSTYLE, 0, CBrush(RGB(1, 2, 3)), many).color());
}

} // namespace
