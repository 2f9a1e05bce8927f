#include "commandfixture.h"
#include "vexdb/dbcommand/vexarrowkeys.h"
#include "vexdb/dbcommand/vexgridsnap.h"

#include <cmath>
#include <limits>

namespace {

class ArrowKeysTest : public CommandTest {
protected:
    VexVerdict send(unsigned kind, unsigned key)
    {
        return moveKey(*database, display, {&display, kind, key, 0, {}}, moved);
    }
    bool moved = false;
};

TEST_F(ArrowKeysTest, APressMovesThePointerByAPixelAndTellsTheWindow)
{
    backend.setCursorPosition({100, 50});
    EXPECT_EQ(VexVerdict::kSwallow, send(WM_KEYDOWN, VK_LEFT));
    EXPECT_EQ(CPoint(99, 50), backend.cursorPosition());
    send(WM_KEYDOWN, VK_UP);
    EXPECT_EQ(CPoint(99, 49), backend.cursorPosition());
    send(WM_KEYDOWN, VK_RIGHT);
    send(WM_KEYDOWN, VK_RIGHT);
    send(WM_KEYDOWN, VK_DOWN);
    EXPECT_EQ(CPoint(101, 50), backend.cursorPosition());
    const MSG& told = display.received().back();
    EXPECT_EQ(unsigned{WM_MOUSEMOVE}, told.message);
    EXPECT_EQ(1u, told.wParam);
    EXPECT_EQ(CPoint(101, 50), pointOfLParam(told.lParam));
    EXPECT_FALSE(moved);
}

TEST_F(ArrowKeysTest, TheReleaseMarksTheMove)
{
    EXPECT_EQ(VexVerdict::kSwallow, send(WM_KEYUP, VK_LEFT));
    EXPECT_TRUE(moved);
    EXPECT_TRUE(display.received().empty() || display.received().back().message != WM_MOUSEMOVE);
}

TEST_F(ArrowKeysTest, OtherKeysAreToBeDispatched)
{
    EXPECT_EQ(VexVerdict::kDispatch, send(WM_KEYUP, 'A'));
    EXPECT_EQ(VexVerdict::kDispatch, send(WM_KEYDOWN, VK_HOME));
    EXPECT_FALSE(moved);
}

TEST_F(ArrowKeysTest, WithGridSnapTheStepIsTheGridStepInWholePixels)
{
    settings().m_bGridSnap = true;
    settings().m_dGridStep = 7.9; // one pixel is one unit
    backend.setCursorPosition({100, 50});
    send(WM_KEYDOWN, VK_RIGHT);
    EXPECT_EQ(CPoint(107, 50), backend.cursorPosition());
    settings().m_dGridStep = 0.2;
    send(WM_KEYDOWN, VK_RIGHT);
    EXPECT_EQ(CPoint(108, 50), backend.cursorPosition());
}

TEST_F(ArrowKeysTest, TheMoveComesBeforeAnyLaterKey)
{
    display.SetCapture();
    press('A');
    send(WM_KEYDOWN, VK_RIGHT);
    MSG next;
    GetMessageW(&next, nullptr, 0, 0);
    EXPECT_EQ(unsigned{WM_MOUSEMOVE}, next.message);
    EXPECT_EQ(&display, next.hwnd);
    ReleaseCapture();
}

TEST(GridTest, RoundingSendsHalvesTowardsZeroOnBothSides)
{
    EXPECT_POINT(1, 2, roundedToGrid({1.5, 2.4}, 1.0));
    EXPECT_POINT(-2, 0, roundedToGrid({-1.6, 0.0}, 1.0));
    EXPECT_POINT(-1, -3, roundedToGrid({-1.5, -2.75}, 1.0));
    EXPECT_POINT(7.5, 10, roundedToGrid({8.75, 8.76}, 2.5));
}

TEST(GridTest, GridPointsAreCutTowardsZeroBelowZero)
{
    EXPECT_POINT(0, 1, gridPointAt({-0.9, 0.9}, 1.0).value());
    EXPECT_POINT(-1, 1, gridPointAt({-1.9, 1.5}, 1.0).value());
    EXPECT_POINT(2, -2, gridPointAt({1.51, -2.51}, 1.0).value());
}

// The step comes with the drawing, whoever wrote that.
TEST(GridTest, AStepThatDividesNothingRoundsNothing)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const double step : {0.0, -1.0, kInfinity, std::nan(""), 1e-310}) {
        EXPECT_POINT(1.3, 2.4, roundedToGrid({1.3, 2.4}, step));
        EXPECT_FALSE(gridPointAt({1.3, 2.4}, step)) << step;
    }
}

} // namespace
