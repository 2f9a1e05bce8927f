#include "tests/view/viewfixture.h"

#include <limits>
#include <vector>

namespace {

constexpr COLORREF kGrid = 0x646464;
constexpr COLORREF kAxis = 0x0000b4;

class GridTest : public ViewTest {
protected:
    /// The strokes of one colour that a grid of `step` units leaves.
    std::vector<VexStroke> strokes(double step, COLORREF color)
    {
        settings().m_bGridVisible = true;
        settings().m_dGridStep = step;
        dc.clear();
        record->DrawGrid(&dc);
        std::vector<VexStroke> found;
        for (const VexStroke& stroke : dc.strokes()) {
            if (stroke.color == color) {
                found.push_back(stroke);
            }
        }
        return found;
    }
};

} // namespace

TEST_F(GridTest, LinesStandAtMultiplesOfTheStep)
{
    show();
    const std::vector<VexStroke> lines = strokes(50.0, kGrid);
    ASSERT_EQ(9u + 6u, lines.size()); // 0 to 400 across, 0 to 250 up
    EXPECT_EQ((std::vector{CPoint(50, 297), CPoint(50, 0)}), lines[1].points);
    EXPECT_EQ((std::vector{CPoint(0, 247), CPoint(420, 247)}), lines[10].points);
    EXPECT_EQ(PS_DOT, lines[0].penStyle);
    EXPECT_EQ(0, lines[0].penWidth);
    EXPECT_EQ(R2_COPYPEN, lines[0].rop);
}

TEST_F(GridTest, DivisionsMultiplyTheStep)
{
    show();
    settings().m_nGridDivisions = 4;
    EXPECT_EQ(3u + 2u, strokes(50.0, kGrid).size()); // every 200 units
}

TEST_F(GridTest, TheFirstLineIsCutTowardsZero)
{
    show();
    record->PanWindow(&dc, 1200, 0);
    // Right of the origin the first line lies left of the window; left of it, inside.
    EXPECT_EQ(-12, strokes(50.0, kGrid)[0].points[0].x);
    record->PanWindow(&dc, -1200 - 6200, 0);
    EXPECT_EQ(12, strokes(50.0, kGrid)[0].points[0].x);
}

TEST_F(GridTest, TheAxesRunThroughTheOriginWhenItIsInSight)
{
    show();
    record->PanWindow(&dc, -1000, -2000);
    const std::vector<VexStroke> axes = strokes(50.0, kAxis);
    ASSERT_EQ(2u, axes.size());
    EXPECT_EQ((std::vector{CPoint(10, 297), CPoint(10, 0)}), axes[0].points);
    EXPECT_EQ((std::vector{CPoint(0, 277), CPoint(420, 277)}), axes[1].points);
    record->PanWindow(&dc, 0, 10000);
    EXPECT_EQ(1u, strokes(50.0, kAxis).size());
    record->PanWindow(&dc, 10000, 0);
    EXPECT_TRUE(strokes(50.0, kAxis).empty());
}

TEST_F(GridTest, LinesTooCloseOrWithoutAStepLeaveTheAxesAlone)
{
    show(); // one pixel a unit
    EXPECT_EQ(211u + 149u, strokes(2.0, kGrid).size());
    for (const double step : {1.99, 1.0, 0.009, 0.0, -5.0, std::nan("")}) {
        EXPECT_TRUE(strokes(step, kGrid).empty()) << step;
        EXPECT_EQ(2u, strokes(step, kAxis).size()) << step;
    }
    settings().m_nGridDivisions = 0;
    EXPECT_TRUE(strokes(50.0, kGrid).empty());
}

TEST_F(GridTest, AStepWithoutEndDrawsTheLinesOfTheOrigin)
{
    show();
    settings().m_nGridDivisions = 255;
    EXPECT_EQ(2u, strokes(std::numeric_limits<double>::infinity(), kGrid).size());
}

TEST_F(GridTest, AHiddenGridDrawsNothing)
{
    show();
    settings().m_dGridStep = 50.0;
    record->DrawGrid(&dc);
    EXPECT_TRUE(dc.strokes().empty());
}

TEST_F(GridTest, PenAndRasterOperationAreGivenBack)
{
    show();
    const CPen pen(PS_SOLID, 3, 0x123456);
    dc.SelectObject(&pen);
    dc.SetROP2(R2_XORPEN);
    strokes(50.0, kGrid);
    EXPECT_EQ(&pen, dc.GetCurrentPen());
    EXPECT_EQ(R2_XORPEN, dc.GetROP2());
    dc.SelectObject(static_cast<const CPen*>(nullptr));
}
