#include "commandfixture.h"

namespace {

class PointInputTest : public CommandTest {
protected:
    int ask(const wchar_t* keys = L"")
    {
        key = 0;
        return handler().GetGePoint(3, point, keys, key);
    }

    CVexGePoint2d point{7, 8};
    wchar_t key = 0;
};

TEST_F(PointInputTest, AClickGivesItsPointInDrawingUnits)
{
    click({100, 97});
    EXPECT_EQ(InputPoint, ask());
    EXPECT_POINT(100, 200, point);
    expectReleased();
}

TEST_F(PointInputTest, TheSecondPressOfADoubleClickIsOneMorePress)
{
    mouse(WM_LBUTTONDBLCLK, {100, 97});
    EXPECT_EQ(InputPoint, ask());
    EXPECT_POINT(100, 200, point);
}

TEST_F(PointInputTest, WhileItWaitsTheWindowHoldsCaptureCursorAndXor)
{
    handler().SetCrossCursor(VexCursor::kHand);
    CWnd* captured = nullptr;
    VexCursor cursor = VexCursor::kArrow;
    int rop = 0;
    std::wstring shown;
    whileWaiting([&] {
        captured = GetCapture();
        cursor = backend.cursor();
        rop = dc.GetROP2();
        shown = line();
    });
    press(VK_ESCAPE);
    ask();
    EXPECT_EQ(&display, captured);
    EXPECT_EQ(VexCursor::kHand, cursor);
    EXPECT_EQ(R2_XORPEN, rop);
    EXPECT_EQ(L"Start point: ", shown);
    expectReleased();
}

TEST_F(PointInputTest, AnEmptyWindowEndsItAtOnce)
{
    map({0, 0});
    click({0, 0});
    EXPECT_EQ(InputCancel, ask());
    EXPECT_EQ(1u, backend.queued());
    EXPECT_POINT(7, 8, point);
}

TEST_F(PointInputTest, WithoutAWindowItEndsAtOnce)
{
    handler().SetDispWindow(nullptr);
    EXPECT_EQ(InputCancel, ask());
}

TEST_F(PointInputTest, ALostCaptureLeavesThePointAndGivesOne)
{
    whileWaiting([] { ReleaseCapture(); });
    click({100, 97});
    EXPECT_EQ(InputPoint, ask());
    EXPECT_POINT(7, 8, point);
    EXPECT_EQ(1u, backend.queued()); // the click is its window's
    expectReleased();
}

TEST_F(PointInputTest, EachMoveTellsTheReadOutAndIsSwallowed)
{
    std::vector<CPoint> told;
    bool withBase = false;
    display.setHandler([&](const MSG& sent) {
        if (sent.message == WM_VEX_COORDINATE) {
            told.push_back(*reinterpret_cast<CPoint*>(sent.wParam));
            withBase = withBase || sent.lParam != 0;
        }
        return LRESULT(0);
    });
    moveTo({10, 20});
    click({30, 40});
    ask();
    EXPECT_EQ((std::vector<CPoint>{{10, 20}, {30, 40}}), told);
    EXPECT_FALSE(withBase);
    EXPECT_EQ(0, received(WM_MOUSEMOVE));
    EXPECT_EQ(0, received(WM_LBUTTONDOWN));
}

TEST_F(PointInputTest, OutsideTheWindowMouseAndPressDoNotCount)
{
    moveTo({-1, 10});
    click({kWidth, 10});
    press(VK_ESCAPE);
    EXPECT_EQ(InputCancel, ask());
    EXPECT_EQ(0, received(WM_VEX_COORDINATE));
    EXPECT_POINT(7, 8, point);
}

TEST_F(PointInputTest, EscapeBreakAndRightButtonCancel)
{
    press(VK_ESCAPE);
    EXPECT_EQ(InputCancel, ask());
    press(VK_CANCEL);
    EXPECT_EQ(InputCancel, ask());
    mouse(WM_RBUTTONDOWN, {5, 5});
    EXPECT_EQ(InputCancel, ask());
    EXPECT_EQ(0, received(WM_KEYDOWN));
    EXPECT_EQ(0, received(WM_RBUTTONDOWN));
    expectReleased();
}

TEST_F(PointInputTest, ReturnOnAnEmptyLineGivesTheLastPoint)
{
    database->setLastPoint({3, 4});
    press(VK_RETURN);
    EXPECT_EQ(InputPoint, ask());
    EXPECT_POINT(3, 4, point);
    EXPECT_EQ(0u, handler().refusals());
}

TEST_F(PointInputTest, ATypedPairIsThePoint)
{
    type(L"12,5\n");
    EXPECT_EQ(InputPoint, ask());
    EXPECT_POINT(12, 5, point);
    EXPECT_EQ(L"Start point: 12,5", line());
}

TEST_F(PointInputTest, SpaceEndsTheTypedPairToo)
{
    type(L"-1.5,0.25 ");
    EXPECT_EQ(InputPoint, ask());
    EXPECT_POINT(-1.5, 0.25, point);
}

TEST_F(PointInputTest, AWordBeforeTheCommaReadsAsZero)
{
    type(L"abc,5\n");
    EXPECT_EQ(InputPoint, ask());
    EXPECT_POINT(0, 5, point);
}

TEST_F(PointInputTest, ATextThatIsNoPairGivesTheLastPointAndIsRefused)
{
    database->setLastPoint({3, 4});
    type(L"12,\n");
    EXPECT_EQ(InputPoint, ask());
    EXPECT_POINT(3, 4, point);
    EXPECT_FALSE(handler().setMsg());
    EXPECT_EQ(L"Start point: 12,\nInvalid input.", told());
    EXPECT_EQ(1u, handler().refusals());
}

TEST_F(PointInputTest, AKeyOfTheListEndsItAndIsEchoed)
{
    type(L"c");
    EXPECT_EQ(InputKeyword, ask(L"CR"));
    EXPECT_EQ(L'C', key);
    EXPECT_EQ(L"Start point: c", line()); // as it came
    EXPECT_FALSE(settings().m_bSnapCenter);
    handler().setMsg();
    EXPECT_EQ(0u, handler().refusals());
}

TEST_F(PointInputTest, TheShortFormTellsOnlyThatItWasAKey)
{
    type(L"r");
    EXPECT_EQ(InputKeyword, handler().GetGePoint(3, point, L"CR"));
    type(L"r\n");
    EXPECT_EQ(InputPoint, handler().GetGePoint(3, point));
}

TEST_F(PointInputTest, EveryCodeFromSmallAIsFolded)
{
    type(L"{");
    EXPECT_EQ(InputKeyword, ask(L"["));
    EXPECT_EQ(L'[', key);
}

TEST_F(PointInputTest, CharactersAreEchoedOnceAndNotDispatched)
{
    type(L"9");
    press(VK_ESCAPE);
    ask();
    EXPECT_EQ(1, received(WM_CHAR)); // what was sent for the echo
    EXPECT_EQ(L"Start point: 9", line());
}

TEST_F(PointInputTest, ASnapKeyArmsUntilTheInputEnds)
{
    bool armed = false;
    bool stillArmed = false;
    type(L"i");
    whileWaiting([&] { armed = settings().m_bSnapIntersection; });
    moveTo({50, 50}); // nothing under the cursor
    whileWaiting([&] { stillArmed = settings().m_bSnapIntersection; });
    click({60, 60});
    EXPECT_EQ(InputPoint, ask());
    EXPECT_TRUE(armed);
    EXPECT_TRUE(stillArmed);
    expectReleased();
}

TEST_F(PointInputTest, F4TogglesTheGripSnapForGood)
{
    press(VK_F4);
    press(VK_ESCAPE);
    ask();
    EXPECT_TRUE(settings().m_bGripSnap);
    press(VK_F4);
    press(VK_ESCAPE);
    ask();
    EXPECT_FALSE(settings().m_bGripSnap);
}

TEST_F(PointInputTest, WhatItDoesNotKnowGoesToTheWindow)
{
    mouse(WM_LBUTTONUP, {5, 5});
    mouse(WM_MOUSEWHEEL, {5, 5});
    post(WM_KEYUP, 'A');
    post(WM_PAINT);
    press(VK_ESCAPE);
    ask();
    EXPECT_EQ(1, received(WM_LBUTTONUP));
    EXPECT_EQ(1, received(WM_MOUSEWHEEL));
    EXPECT_EQ(1, received(WM_KEYUP));
    EXPECT_EQ(1, received(WM_PAINT));
}

TEST_F(PointInputTest, ArrowKeysMoveThePointerAndTheirMoveComesNext)
{
    moveTo({100, 97});
    press(VK_UP);
    post(WM_KEYUP, VK_UP);
    whileWaiting([&] { EXPECT_POINT(100, 201, point); });
    press(VK_ESCAPE);
    ask();
    EXPECT_EQ(0, received(WM_KEYDOWN) + received(WM_KEYUP));
    EXPECT_EQ(CPoint(100, 96), backend.cursorPosition());
}

TEST_F(PointInputTest, TwoCornersAreTwoInputs)
{
    CVexGePoint2d second;
    press(VK_ESCAPE);
    EXPECT_EQ(InputCancel, handler().GetGePoint(point, second));
    click({10, 197});
    click({60, 247});
    EXPECT_EQ(InputPoint, handler().GetGePoint(point, second));
    EXPECT_POINT(10, 100, point);
    EXPECT_POINT(60, 50, second);
    EXPECT_EQ(L"P12: \nP12: ", told().substr(0, 11));
    EXPECT_EQ(L"P13: ", line());
}

// The window shows (-2, -2) to (2, 2) with 100 pixels a unit.
class GridClickTest : public PointInputTest {
protected:
    GridClickTest()
    {
        showSquare({-2, -2, 2, 2}, 400);
        settings().m_bGridSnap = true;
    }
    static CPoint at(int hundredthsX, int hundredthsY)
    {
        return {200 + hundredthsX, 200 - hundredthsY};
    }
};

TEST_F(GridClickTest, HalvesGoTowardsZero)
{
    click(at(150, 140));
    ask();
    EXPECT_POINT(1, 1, point);
    click(at(-150, 151));
    ask();
    EXPECT_POINT(-1, 2, point);
}

TEST_F(GridClickTest, BothSidesOfZeroRoundAlike)
{
    click(at(-160, 0));
    ask();
    EXPECT_POINT(-2, 0, point);
    click(at(160, 0));
    ask();
    EXPECT_POINT(2, 0, point);
}

TEST_F(GridClickTest, OnlyThePressIsRounded)
{
    CVexGePoint2d moved;
    moveTo(at(130, 70));
    whileWaiting([&] { moved = point; });
    press(VK_ESCAPE);
    ask();
    EXPECT_POINT(1.3, 0.7, moved);
}

TEST_F(GridClickTest, AnObjectSnapIsNotRounded)
{
    addLine({0, 0}, {1.25, 0.75});
    settings().m_bGripSnap = true;
    click(at(124, 76));
    ask();
    EXPECT_POINT(1.25, 0.75, point);
}

TEST_F(GridClickTest, AStepOfZeroRoundsNothing)
{
    settings().m_dGridStep = 0.0;
    click(at(130, 70));
    ask();
    EXPECT_POINT(1.3, 0.7, point);
}

} // namespace
