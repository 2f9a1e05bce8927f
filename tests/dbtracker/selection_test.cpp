#include "tests/dbcommand/probeentity.h"
#include "trackerfixture.h"
#include "vexdb/dbtracker/vexselectiontracker.h"

namespace {

using Selection = CVexDbSelectionTracker;

/// Three lines: one low, one in the middle, one high, each ten units long.
class SelectionTest : public TrackerTest {
protected:
    CVexDbLine* low = addLine({10, 5}, {20, 5});
    CVexDbLine* middle = addLine({10, 15}, {20, 15});
    CVexDbLine* high = addLine({10, 25}, {20, 25});
    const VexBusyScope busy{handler()};

    VexEntitySet pick(wchar_t mode)
    {
        Selection picker(&display, database.get(), mode);
        return pick(picker);
    }
    VexEntitySet pick(Selection& picker)
    {
        const VexEntitySet* found = picker.Track(&display, {0, 0});
        return found == nullptr ? VexEntitySet() : *found;
    }
    void expectEnded()
    {
        EXPECT_TRUE(leftOver().empty()) << leftOver().front();
        EXPECT_EQ(nullptr, GetCapture());
        EXPECT_EQ(R2_COPYPEN, dc.GetROP2());
        EXPECT_NE(kBand, dc.GetCurrentPen()->color());
        EXPECT_FALSE(backend.clip().has_value());
        EXPECT_EQ(VexCursor::kArrow, backend.cursor());
    }
};

TEST_F(SelectionTest, AClickOnAnEntityPicksItAtOnce)
{
    clickAt(15, 15);
    clickAt(15, 25);
    EXPECT_EQ(VexEntitySet{middle}, pick(Selection::kAutomatic));
    EXPECT_EQ(1u, backend.queued());
    expectEnded();
}

TEST_F(SelectionTest, AClickOnNothingBeginsAWindow)
{
    clickAt(5, 10);
    moveAt(15, 20);
    whileWaiting([this] {
        ASSERT_EQ(4u, leftOver().size());
        EXPECT_EQ((std::vector{CPoint(50, 300), CPoint(150, 300)}), leftOver()[0].points);
        EXPECT_EQ(PS_SOLID, leftOver()[0].penStyle);
        EXPECT_EQ(kBand, leftOver()[0].color);
    });
    clickAt(30, 30);
    EXPECT_EQ((VexEntitySet{middle, high}), pick(Selection::kAutomatic));
    expectEnded();
}

TEST_F(SelectionTest, ToTheRightOnlyWhatLiesInsideIsTaken)
{
    clickAt(15, 10);
    clickAt(30, 30);
    EXPECT_TRUE(pick(Selection::kAutomatic).empty());
    expectEnded();
}

TEST_F(SelectionTest, ToTheLeftWhatIsTouchedIsTakenAndTheBandIsDotted)
{
    clickAt(30, 10);
    moveAt(32, 20);
    whileWaiting([this] { EXPECT_EQ(PS_SOLID, leftOver()[0].penStyle); });
    moveAt(16, 20);
    whileWaiting([this] { EXPECT_EQ(PS_DOT, leftOver()[0].penStyle); });
    clickAt(15, 30);
    EXPECT_EQ((VexEntitySet{middle, high}), pick(Selection::kAutomatic));
    expectEnded();
}

TEST_F(SelectionTest, AWindowWithoutWidthIsAWindow)
{
    clickAt(16, 10);
    moveAt(16, 20);
    whileWaiting([this] { EXPECT_EQ(PS_SOLID, leftOver()[0].penStyle); });
    clickAt(16, 20);
    EXPECT_TRUE(pick(Selection::kAutomatic).empty());
}

TEST_F(SelectionTest, WindowAndCrossingGoByTheirModeWhateverTheWay)
{
    clickAt(30, 30); // leftwards
    moveAt(20, 20);
    whileWaiting([this] { EXPECT_EQ(PS_SOLID, leftOver()[0].penStyle); });
    clickAt(5, 10);
    EXPECT_EQ((VexEntitySet{middle, high}), pick(Selection::kWindow));
    clickAt(15, 10); // rightwards
    moveAt(20, 20);
    whileWaiting([this] { EXPECT_EQ(PS_DOT, leftOver()[0].penStyle); });
    clickAt(30, 30);
    EXPECT_EQ((VexEntitySet{middle, high}), pick(Selection::kCrossing));
    expectEnded();
}

TEST_F(SelectionTest, AFenceTakesWhatItsLineTouches)
{
    clickAt(12, 2);
    moveAt(13, 10);
    whileWaiting([this] {
        ASSERT_EQ(1u, leftOver().size());
        EXPECT_EQ(PS_DOT, leftOver()[0].penStyle);
    });
    clickAt(14, 17);
    EXPECT_EQ((VexEntitySet{low, middle}), pick(Selection::kFence));
    expectEnded();
}

TEST_F(SelectionTest, AFenceWithoutLengthTakesNothing)
{
    clickAt(15, 15);
    clickAt(15, 15);
    EXPECT_TRUE(pick(Selection::kFence).empty());
}

TEST_F(SelectionTest, APolygonTakesWhatHasAllGripsInside)
{
    for (const auto& [x, y] : {std::pair(5, 10), std::pair(30, 10), std::pair(18, 32)}) {
        clickAt(x, y);
    }
    moveAt(9, 20);
    whileWaiting([this] {
        ASSERT_EQ(1u, leftOver().size());
        EXPECT_EQ(
            (std::vector{CPoint(50, 300), CPoint(300, 300), CPoint(180, 80), CPoint(90, 200)}),
            leftOver()[0].points);
        EXPECT_EQ(PS_SOLID, leftOver()[0].penStyle);
    });
    type(L"c");
    // The high line's left end lies outside of the slanted side.
    EXPECT_EQ(VexEntitySet{middle}, pick(Selection::kPolygon));
    EXPECT_EQ(0u, backend.queued());
    expectEnded();
}

TEST_F(SelectionTest, WhatHasNoGripsIsInsideAPolygonByItsBox)
{
    auto* const probe = new ProbeEntity(database.get(), VexDb::kImage, {6, 26});
    CVexDbObjectId id;
    database->addEntity(probe, id);
    for (const auto& [x, y] : {std::pair(5, 10), std::pair(30, 10), std::pair(18, 32)}) {
        clickAt(x, y);
    }
    type(L"c");
    EXPECT_EQ((VexEntitySet{middle, probe}), pick(Selection::kPolygon));
}

TEST_F(SelectionTest, APolygonOfTwoCornersEnclosesNothing)
{
    clickAt(5, 10);
    clickAt(30, 30);
    type(L"c");
    EXPECT_TRUE(pick(Selection::kPolygon).empty());
    expectEnded();
}

TEST_F(SelectionTest, ThePolygonOfThePickBeforeIsGone)
{
    const auto outline = [this] {
        for (const auto& [x, y] : {std::pair(5, 10), std::pair(30, 10), std::pair(18, 32)}) {
            clickAt(x, y);
        }
    };
    Selection picker(&display, database.get(), Selection::kPolygon);
    outline();
    type(L"c");
    EXPECT_EQ(VexEntitySet{middle}, pick(picker));
    type(L"c"); // closes nothing
    EXPECT_TRUE(pick(picker).empty());
    outline();
    type(L"wpc"); // another mode has dropped the corners
    EXPECT_TRUE(pick(picker).empty());
    EXPECT_EQ(0u, backend.queued());
}

TEST_F(SelectionTest, AKeyChangesTheModeAndForgetsTheFirstCorner)
{
    clickAt(30, 2);
    moveAt(20, 20);
    type(L"c"); // a window no more
    whileWaiting([this] { EXPECT_TRUE(leftOver().empty()); });
    clickAt(15, 10);
    clickAt(30, 20);
    EXPECT_EQ(VexEntitySet{middle}, pick(Selection::kAutomatic));
    expectEnded();
}

TEST_F(SelectionTest, OtherLettersAreIgnored)
{
    type(L"xq7");
    clickAt(15, 15);
    EXPECT_EQ(VexEntitySet{middle}, pick(Selection::kAutomatic));
    EXPECT_EQ(0, received(WM_CHAR));
    EXPECT_EQ(0, received(WM_KEYDOWN));
}

TEST_F(SelectionTest, EscapeEmptiesTheSetAndIsTold)
{
    for (const unsigned key : {VK_ESCAPE, VK_CANCEL}) {
        Selection picker(&display, database.get(), Selection::kAutomatic);
        clickAt(5, 10);
        moveAt(30, 30);
        press(key);
        EXPECT_TRUE(pick(picker).empty());
        EXPECT_TRUE(picker.wasCancelled());
        expectEnded();
    }
}

TEST_F(SelectionTest, EnterKeepsNothingNew)
{
    for (const wchar_t* const end : {L"\n", L" "}) {
        Selection picker(&display, database.get(), Selection::kAutomatic);
        clickAt(5, 10);
        moveAt(30, 30);
        type(end);
        EXPECT_TRUE(pick(picker).empty());
        EXPECT_FALSE(picker.wasCancelled());
        EXPECT_EQ(0u, backend.queued());
        expectEnded();
    }
}

TEST_F(SelectionTest, ALostCaptureTakesTheBandOff)
{
    Selection picker(&display, database.get(), Selection::kAutomatic);
    clickAt(5, 10);
    moveAt(30, 30);
    EXPECT_TRUE(pick(picker).empty());
    EXPECT_TRUE(picker.wasCancelled());
    expectEnded();
    clickAt(15, 15);
    EXPECT_TRUE(pick(picker).empty()) << "the command ends, and picks nothing more";
    EXPECT_EQ(1u, backend.queued());
}

TEST_F(SelectionTest, ARightClickAndAllElseGoToTheWindow)
{
    rightClick();
    post(WM_TIMER);
    post(WM_KEYUP, 'X');
    clickAt(15, 15);
    EXPECT_EQ(VexEntitySet{middle}, pick(Selection::kAutomatic));
    EXPECT_EQ(1, received(WM_RBUTTONDOWN));
    EXPECT_EQ(1, received(WM_TIMER));
    EXPECT_EQ(1, received(WM_KEYUP));
    EXPECT_EQ(0, received(WM_LBUTTONDOWN));
}

TEST_F(SelectionTest, ArrowKeysMoveTheBand)
{
    clickAt(5, 10);
    moveAt(30, 20);
    arrow(VK_RIGHT);
    whileWaiting([this] {
        ASSERT_EQ(4u, leftOver().size());
        EXPECT_EQ((std::vector{CPoint(50, 300), CPoint(301, 300)}), leftOver()[0].points);
    });
    press(VK_ESCAPE);
    pick(Selection::kAutomatic);
    EXPECT_EQ(0, received(WM_KEYUP));
    expectEnded();
}

TEST_F(SelectionTest, PointsOutsideTheWindowAreIgnored)
{
    click({500, 20});
    clickAt(5, 10);
    click({-1, 20});
    clickAt(30, 20);
    EXPECT_EQ(VexEntitySet{middle}, pick(Selection::kAutomatic));
    Selection picker(&display, database.get(), Selection::kAutomatic);
    clickAt(15, 15);
    EXPECT_EQ(nullptr, picker.Track(&display, {400, 0}));
    EXPECT_EQ(1u, backend.queued());
}

TEST_F(SelectionTest, TheMouseIsKeptInTheWindowUnderItsOwnCursor)
{
    _cursorSelect = VexCursor::kHand;
    whileWaiting([this] {
        EXPECT_EQ(VexCursor::kHand, backend.cursor());
        EXPECT_EQ(CRect(0, 0, 400, 400), *backend.clip());
        EXPECT_EQ(&display, GetCapture());
        EXPECT_EQ(R2_XORPEN, dc.GetROP2());
    });
    press(VK_ESCAPE);
    pick(Selection::kAutomatic);
    _cursorSelect = VexCursor::kPickBox;
    expectEnded();
}

TEST_F(SelectionTest, OrthoAndGridSnapAreOffAsLongAsItLives)
{
    settings().m_bOrtho = true;
    settings().m_bGridSnap = true;
    {
        Selection picker(&display, database.get(), Selection::kAutomatic);
        EXPECT_FALSE(settings().m_bOrtho);
        EXPECT_FALSE(settings().m_bGridSnap);
    }
    EXPECT_TRUE(settings().m_bOrtho);
    EXPECT_TRUE(settings().m_bGridSnap);
}

TEST_F(SelectionTest, TheHostHearsTheCornersOfEachMove)
{
    std::vector<CPoint> heard;
    display.setHandler([&](const MSG& sent) {
        if (sent.message == WM_VEX_COORDINATE) {
            heard.push_back(*reinterpret_cast<const CPoint*>(sent.wParam));
            heard.push_back(*reinterpret_cast<const CPoint*>(sent.lParam));
        }
        return LRESULT(0);
    });
    clickAt(5, 10);
    moveAt(30, 30);
    press(VK_ESCAPE);
    pick(Selection::kAutomatic);
    EXPECT_EQ((std::vector{CPoint(0, 0), CPoint(500, 1000), CPoint(500, 1000), CPoint(3000, 3000)}),
              heard);
}

TEST_F(SelectionTest, AFirstCornerMayBeGiven)
{
    Selection picker(&display, database.get(), Selection::kAutomatic);
    picker.SetStartPoint(CPoint(500, 1000));
    clickAt(30, 20);
    EXPECT_EQ(VexEntitySet{middle}, pick(picker));
    clickAt(15, 25);
    EXPECT_EQ(VexEntitySet{high}, pick(picker)) << "and counts for one pick";
}

TEST_F(SelectionTest, EachPickBeginsWithAnEmptySetAndTheModeStays)
{
    Selection picker(&display, database.get(), Selection::kAutomatic);
    clickAt(15, 15);
    EXPECT_EQ(VexEntitySet{middle}, pick(picker));
    type(L"f");
    clickAt(12, 2);
    clickAt(12, 7);
    EXPECT_EQ(VexEntitySet{low}, pick(picker));
    clickAt(12, 22);
    clickAt(12, 27);
    EXPECT_EQ(VexEntitySet{high}, pick(picker));
}

TEST_F(SelectionTest, ARepaintFindsNoBand)
{
    clickAt(5, 10);
    moveAt(30, 30);
    whileWaiting([this] {
        display.setHandler([this](const MSG& sent) {
            if (sent.message == WM_PAINT) {
                EXPECT_TRUE(leftOver().empty());
                EXPECT_EQ(R2_COPYPEN, dc.GetROP2());
            }
            return LRESULT(0);
        });
    });
    post(WM_PAINT);
    moveAt(31, 30);
    press(VK_ESCAPE);
    pick(Selection::kAutomatic);
    expectEnded();
}

TEST_F(SelectionTest, InvisibleEntitiesAreNotPicked)
{
    middle->setErased();
    clickAt(15, 15);
    clickAt(30, 30);
    EXPECT_TRUE(pick(Selection::kAutomatic).empty()); // became the first corner, then a window
    clickAt(5, 2);
    clickAt(30, 30);
    EXPECT_EQ((VexEntitySet{low, high}), pick(Selection::kAutomatic));
}

} // namespace
