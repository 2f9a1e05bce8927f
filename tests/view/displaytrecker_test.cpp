#include "tests/view/viewfixture.h"
#include "vexdb/dbtracker/vexdbdisplaytrecker.h"

#include <algorithm>
#include <vector>

namespace {

using Kind = VexStroke::Kind;

/// Queues what a person does, tracks from a pixel, and tells what stayed on the screen.
class DisplayTreckerTest : public ViewTest {
protected:
    DisplayTreckerTest() { show(); }

    void moves(CPoint to) { post(WM_MOUSEMOVE, 0, MAKELPARAM(to.x, to.y)); }
    void clicks() { post(WM_LBUTTONDOWN, 0, 0); }
    void presses(unsigned key) { post(WM_KEYDOWN, key, 0); }
    void post(unsigned message, WPARAM wParam, LPARAM lParam)
    {
        backend.postMessage({&window, message, wParam, lParam, {}});
    }
    bool track(wchar_t mode, CPoint from)
    {
        CVexDbDisplayTrecker trecker(&window, database.get(), mode);
        return trecker.Track(&window, from);
    }
    /// Strokes of the band, each of which must stand there twice.
    std::vector<VexStroke> bandStrokes() const
    {
        std::vector<VexStroke> found;
        std::ranges::copy_if(dc.strokes(), std::back_inserter(found),
                             [](const VexStroke& stroke) { return stroke.rop == R2_XORPEN; });
        return found;
    }
    bool bandIsGone() const
    {
        const std::vector<VexStroke> strokes = bandStrokes();
        return std::ranges::all_of(strokes, [&](const VexStroke& stroke) {
            return std::ranges::count(strokes, stroke) % 2 == 0;
        });
    }
    void expectAllGivenBack() const
    {
        EXPECT_EQ(nullptr, backend.capture());
        EXPECT_EQ(R2_COPYPEN, dc.GetROP2());
        EXPECT_EQ(0u, dc.GetCurrentPen()->color()); // the stock pen
        EXPECT_TRUE(bandIsGone());
    }
};

} // namespace

TEST_F(DisplayTreckerTest, TheWindowBandZoomsToItsRectangle)
{
    moves({200, 100});
    moves({310, 180});
    clicks();
    EXPECT_TRUE(track(L'W', {100, 250}));
    // (10000, 4700) to (31000, 11700), widened by 7850 up to the aspect of the client
    EXPECT_EQ(CRect(10000, 775, 31000, 15625), record->window());
    EXPECT_EQ(2u * 2u * 4u, bandStrokes().size());
    expectAllGivenBack();
}

TEST_F(DisplayTreckerTest, TheBandIsAYellowThinLine)
{
    moves({200, 100});
    EXPECT_FALSE(track(L'W', {100, 250}));
    const std::vector<VexStroke> band = bandStrokes();
    ASSERT_EQ(8u, band.size());
    EXPECT_EQ(0x00ffffu, band[0].color);
    EXPECT_EQ(0, band[0].penWidth);
    EXPECT_EQ(PS_SOLID, band[0].penStyle);
    EXPECT_EQ((std::vector{CPoint(100, 250), CPoint(200, 250)}), band[0].points);
    EXPECT_EQ((std::vector{CPoint(200, 250), CPoint(200, 100)}), band[1].points);
}

TEST_F(DisplayTreckerTest, ThePanMovesTheWindowByTheBand)
{
    moves({130, 230});
    clicks();
    EXPECT_TRUE(track(L'P', {100, 250}));
    EXPECT_EQ(CRect(-3000, -2000, 39000, 27700), record->window());
    ASSERT_EQ(2u, bandStrokes().size());
    EXPECT_EQ((std::vector{CPoint(100, 250), CPoint(130, 230)}), bandStrokes()[0].points);
    expectAllGivenBack();
}

TEST_F(DisplayTreckerTest, AClickWithoutAMovePansByTheOneUnitThatTheBandHas)
{
    clicks();
    EXPECT_TRUE(track(L'P', {100, 250}));
    // The band's end starts one logical unit beyond its start, never on it: a band without a
    // length would have no strokes to take off.
    EXPECT_EQ(CRect(-1, -1, 41999, 29699), record->window());
}

TEST_F(DisplayTreckerTest, AWindowWithoutAMoveIsTooSmallToZoomTo)
{
    clicks();
    EXPECT_TRUE(track(L'W', {100, 250}));
    EXPECT_EQ(CRect(0, 0, 42000, 29700), record->window());
}

TEST_F(DisplayTreckerTest, TheRealTimePanMovesByPixelsAsTheyStand)
{
    moves({110, 245});
    moves({110, 245});
    moves({110, 240});
    post(WM_MBUTTONUP, 0, 0);
    EXPECT_FALSE(track(L'R', {100, 250}));
    // One logical unit a pixel whatever the zoom, and a drag upwards (y falls) adds to y: the
    // picture does not stay under the pointer, which hosts with their own scaling rely on.
    EXPECT_EQ(CRect(-10, 10, 41990, 29710), record->window());
    EXPECT_TRUE(bandStrokes().empty());
    EXPECT_EQ(2, std::ranges::count(dc.strokes(), Kind::kBlit, &VexStroke::kind));
    EXPECT_TRUE(window.received().back().message != WM_VEX_COORDINATE);
    expectAllGivenBack();
}

TEST_F(DisplayTreckerTest, AClickEndsTheRealTimePanWhereItIs)
{
    moves({110, 245});
    clicks();
    EXPECT_TRUE(track(L'R', {100, 250}));
    EXPECT_EQ(CRect(-10, 5, 41990, 29705), record->window());
    expectAllGivenBack();
}

TEST_F(DisplayTreckerTest, EveryKeyThatEndsLeavesViewAndScreenAsTheyWere)
{
    for (const wchar_t mode : {L'W', L'P', L'R'}) {
        for (const unsigned key : {VK_ESCAPE, VK_CANCEL, VK_RETURN, VK_SPACE}) {
            moves({100, 250});
            if (mode != L'R') {
                moves({150, 200});
            }
            presses(key);
            EXPECT_FALSE(track(mode, {100, 250})) << static_cast<char>(mode) << " " << key;
            EXPECT_EQ(CRect(0, 0, 42000, 29700), record->window())
                << static_cast<char>(mode) << " " << key;
            expectAllGivenBack();
        }
    }
}

TEST_F(DisplayTreckerTest, MiddleUpEndsAndTakesTheBandOff)
{
    moves({150, 200});
    post(WM_MBUTTONUP, 0, 0);
    clicks();
    EXPECT_FALSE(track(L'W', {100, 250}));
    EXPECT_EQ(1u, backend.queued()); // the click is somebody else's
    expectAllGivenBack();
}

TEST_F(DisplayTreckerTest, ALostCaptureEndsAndTakesTheBandOff)
{
    CVexMemoryWindow thief;
    moves({150, 200});
    backend.postMessage({&thief, WM_TIMER, 0, 0, {}});
    clicks();
    window.setHandler([&](const MSG&) {
        backend.setCapture(&thief);
        return LRESULT(0);
    });
    EXPECT_FALSE(track(L'P', {100, 250}));
    EXPECT_EQ(&thief, backend.capture()); // what the thief took is left to him
    EXPECT_EQ(R2_COPYPEN, dc.GetROP2());
    EXPECT_TRUE(bandIsGone());
    EXPECT_EQ(2u, bandStrokes().size());
    backend.setCapture(nullptr);
}

TEST_F(DisplayTreckerTest, TheWindowsOwnMessagesCountWithoutTheCapture)
{
    window.setHandler([&](const MSG&) {
        backend.setCapture(nullptr);
        return LRESULT(0);
    });
    moves({150, 200});
    clicks();
    // Only a message for another window tells that the mouse has gone: a window that is still
    // spoken to goes on.
    EXPECT_TRUE(track(L'P', {100, 250}));
    EXPECT_EQ(CRect(-5000, -5000, 37000, 24700), record->window());
    expectAllGivenBack();
}

TEST_F(DisplayTreckerTest, MessagesThatRunOutEndIt)
{
    moves({150, 200});
    EXPECT_FALSE(track(L'P', {100, 250}));
    expectAllGivenBack();
}

TEST_F(DisplayTreckerTest, QuittingIsPassedOnToTheProgram)
{
    moves({150, 200});
    post(WM_QUIT, 0, 0);
    EXPECT_FALSE(track(L'W', {100, 250}));
    expectAllGivenBack();
    MSG message;
    EXPECT_FALSE(backend.getMessage(message));
}

TEST_F(DisplayTreckerTest, AStartOutsideTheClientIsRefused)
{
    clicks();
    EXPECT_FALSE(track(L'W', {420, 10})); // the right edge is outside
    EXPECT_FALSE(track(L'W', {10, -1}));
    EXPECT_EQ(1u, backend.queued());
    EXPECT_TRUE(dc.strokes().empty());
}

TEST_F(DisplayTreckerTest, MovesOutsideTheClientAreIgnored)
{
    moves({150, 200});
    moves({150, 297});
    moves({-1, 200});
    clicks();
    EXPECT_TRUE(track(L'P', {100, 250}));
    EXPECT_EQ(CRect(-5000, -5000, 37000, 24700), record->window());
    EXPECT_EQ(2u, bandStrokes().size());
}

TEST_F(DisplayTreckerTest, TheWindowHearsEachMoveWithBothPoints)
{
    std::vector<CPoint> heard;
    window.setHandler([&](const MSG& message) {
        if (message.message == WM_VEX_COORDINATE) {
            heard.push_back(*reinterpret_cast<const CPoint*>(message.wParam));
            heard.push_back(*reinterpret_cast<const CPoint*>(message.lParam));
        }
        return LRESULT(0);
    });
    moves({150, 200});
    track(L'W', {100, 250});
    EXPECT_EQ((std::vector{CPoint(10000, 4700), CPoint(15000, 9700)}), heard);
}

TEST_F(DisplayTreckerTest, AReadOutThatIsHeldToAnAxisDoesNotHoldTheBand)
{
    settings().m_bOrtho = true;
    CVexMemoryWindow text;
    window.setHandler([&](const MSG& message) {
        if (message.message == WM_VEX_COORDINATE) {
            database->SetCoordinate(&window, &text, reinterpret_cast<CPoint*>(message.lParam),
                                    reinterpret_cast<CPoint*>(message.wParam));
        }
        return LRESULT(0);
    });
    moves({150, 180});
    clicks();
    EXPECT_TRUE(track(L'P', {100, 250}));
    EXPECT_EQ("100.000000, 117.000000", text.GetWindowText().utf8());
    EXPECT_EQ(CRect(-5000, -7000, 37000, 22700), record->window());
}

TEST_F(DisplayTreckerTest, OtherMessagesGoWhereTheyBelong)
{
    CVexMemoryWindow other;
    backend.postMessage({&other, WM_TIMER, 7, 0, {}});
    presses('A');
    post(WM_LBUTTONUP, 0, 0);
    presses(VK_ESCAPE);
    EXPECT_FALSE(track(L'W', {100, 250}));
    ASSERT_EQ(1u, other.received().size());
    EXPECT_EQ(7u, other.received()[0].wParam);
    std::vector<unsigned> got;
    for (const MSG& message : window.received()) {
        got.push_back(message.message);
    }
    EXPECT_EQ((std::vector<unsigned>{WM_SIZE, WM_KEYDOWN, WM_LBUTTONUP}), got);
}

TEST_F(DisplayTreckerTest, ARepaintMeetsNoBandAndNoXor)
{
    int seenRop = 0;
    std::size_t strokesBefore = 0;
    window.setHandler([&](const MSG& message) {
        if (message.message == WM_PAINT) {
            seenRop = dc.GetROP2();
            strokesBefore = bandStrokes().size();
        }
        return LRESULT(0);
    });
    moves({150, 200});
    post(WM_PAINT, 0, 0);
    presses(VK_ESCAPE);
    track(L'P', {100, 250});
    EXPECT_EQ(R2_COPYPEN, seenRop);
    EXPECT_EQ(2u, strokesBefore); // on and off again
    EXPECT_EQ(4u, bandStrokes().size());
    expectAllGivenBack();
}

TEST_F(DisplayTreckerTest, AnEmptyValidRectangleAcceptsEverything)
{
    CVexDbDisplayTrecker trecker(&window, database.get(), L'W');
    EXPECT_TRUE(trecker.IsValidPos({-5, 9999}));
    trecker.SetValidRect(CRect(50, 60, 10, 20)); // sides in any order
    EXPECT_TRUE(trecker.IsValidPos({10, 20}));
    EXPECT_FALSE(trecker.IsValidPos({50, 30}));
}

TEST_F(DisplayTreckerTest, WithoutAWindowOrADrawingThereIsNothingToTrack)
{
    CVexDbDisplayTrecker noDrawing(&window, nullptr, L'W');
    EXPECT_FALSE(noDrawing.Track(&window, {5, 5}));
    CVexDbDisplayTrecker noWindow(nullptr, database.get(), L'W');
    EXPECT_FALSE(noWindow.Track(nullptr, {5, 5}));
    EXPECT_EQ(nullptr, backend.capture());
}
