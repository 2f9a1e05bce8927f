#include "trackerfixture.h"

#include <array>

namespace {

/// A plain band from (5, 5).
class BandTest : public TrackerTest {
protected:
    int track(CPoint at = {0, 0}) { return band.Track(&display, at); }

    CVexDbEntityTracker band{&display, database.get(), true};
    const VexBusyScope busy{handler()}; // as inside a command

    BandTest() { band.SetStartPoint({5, 5}, true); }
    void expectEnded()
    {
        EXPECT_TRUE(leftOver().empty()) << leftOver().front();
        EXPECT_EQ(nullptr, GetCapture());
        EXPECT_EQ(R2_COPYPEN, dc.GetROP2());
        EXPECT_EQ(nullptr, database->activeTracker());
        EXPECT_FALSE(handler().isBlipDrawn());
    }
};

TEST_F(BandTest, AClickAnswersWithThePointAndTakesTheBandOff)
{
    moveAt(10, 5);
    clickAt(12, 7);
    EXPECT_EQ(InputPoint, track());
    EXPECT_POINT(12.0, 7.0, lastPoint());
    EXPECT_POINT(12.0, 7.0, band.GetPos());
    expectEnded();
}

TEST_F(BandTest, TheBandIsDrawnAtOnceAndFollowsTheMouse)
{
    moveAt(10, 5);
    whileWaiting([this] {
        EXPECT_EQ(database->activeTracker(), &band);
        ASSERT_EQ(1u, leftOver().size());
        EXPECT_EQ((std::vector{CPoint(50, 350), CPoint(100, 350)}), leftOver()[0].points);
    });
    clickAt(12, 7);
    track();
    const std::vector<VexStroke> strokes = strokesOf(kBand);
    ASSERT_EQ(6u, strokes.size()); // at the start, at the move, at the click: on and off
    EXPECT_EQ((std::vector{CPoint(50, 350), CPoint(50, 350)}), strokes[0].points);
    EXPECT_EQ((std::vector{CPoint(50, 350), CPoint(120, 330)}), strokes[4].points);
    EXPECT_EQ(R2_XORPEN, strokes[0].rop);
}

TEST_F(BandTest, APositionThatStaysIsNotDrawnAgain)
{
    moveAt(10, 5);
    moveAt(10, 5);
    clickAt(10, 5);
    EXPECT_EQ(InputPoint, track());
    EXPECT_EQ(4u, strokesOf(kBand).size());
}

TEST_F(BandTest, OnWhiteTheBandIsStrokedSoThatItShows)
{
    dc.SetBkColor(0xffffff);
    moveAt(10, 5);
    clickAt(12, 7);
    track();
    ASSERT_EQ(6u, strokesOf(kBand).size());
    for (const VexStroke& stroke : strokesOf(kBand)) {
        EXPECT_EQ(R2_NOTXORPEN, stroke.rop);
    }
    expectEnded();
}

TEST_F(BandTest, ARightClickCancels)
{
    database->setLastPoint({3, 3});
    moveAt(10, 5);
    rightClick();
    EXPECT_EQ(InputCancel, track());
    EXPECT_POINT(3.0, 3.0, lastPoint());
    expectEnded();
}

TEST_F(BandTest, EscapeAndCtrlBreakCancel)
{
    for (const unsigned key : {VK_ESCAPE, VK_CANCEL}) {
        moveAt(10, 5);
        press(key);
        EXPECT_EQ(InputCancel, track()) << key;
        expectEnded();
    }
}

TEST_F(BandTest, ALostCaptureIsTold)
{
    moveAt(10, 5);
    EXPECT_EQ(InputLost, track());
    EXPECT_TRUE(handler().isInputLost());
    expectEnded();
}

TEST_F(BandTest, AfterALossTheNextBandIsCancelledWithoutCapturing)
{
    track();
    dc.clear();
    clickAt(12, 7);
    EXPECT_EQ(InputCancel, track());
    EXPECT_EQ(1u, backend.queued());
    EXPECT_TRUE(dc.strokes().empty());
}

TEST_F(BandTest, OutsideOfCreateModeNothingHappens)
{
    band.SetCreateMode(false);
    clickAt(12, 7);
    EXPECT_EQ(InputCancel, track());
    EXPECT_EQ(1u, backend.queued());
}

TEST_F(BandTest, AStartOutsideTheWindowIsRefused)
{
    clickAt(12, 7);
    EXPECT_EQ(InputCancel, track({400, 10}));
    EXPECT_EQ(1u, backend.queued());
    EXPECT_FALSE(band.IsValidPos({-1, 10}));
    band.SetValidRect({});
    EXPECT_TRUE(band.IsValidPos({-1, 10})) << "an empty rectangle accepts all";
}

TEST_F(BandTest, PositionsOutsideTheWindowAreIgnored)
{
    moveAt(10, 5);
    moveTo({-1, 20});
    click({400, 20});
    press(VK_F4);
    clickAt(12, 7);
    EXPECT_EQ(InputPoint, track());
    EXPECT_POINT(12.0, 7.0, lastPoint());
    EXPECT_EQ(1, received(WM_MOUSEMOVE)) << "what was not looked at goes to the window";
    EXPECT_EQ(1, received(WM_LBUTTONDOWN));
}

TEST_F(BandTest, WhatItConsumesReachesNoWindow)
{
    moveAt(10, 5);
    press(VK_F4);
    post(WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    post(WM_TIMER);
    post(WM_KEYUP, 'X');
    type(L"7\n");
    EXPECT_EQ(InputNumber, track());
    EXPECT_EQ(0, received(WM_MOUSEMOVE));
    EXPECT_EQ(1, received(WM_KEYDOWN)) << "the digit alone, not F4 and Return";
    EXPECT_EQ(1, received(WM_CHAR));
    EXPECT_EQ(1, received(WM_LBUTTONUP));
    EXPECT_EQ(1, received(WM_TIMER));
    EXPECT_EQ(1, received(WM_KEYUP));
    EXPECT_EQ(0u, backend.queued()) << "Return leaves no character behind";
}

TEST_F(BandTest, ADoubleClickIsOneMorePress)
{
    mouse(WM_LBUTTONDBLCLK, px(12, 7));
    EXPECT_EQ(InputPoint, track());
    EXPECT_POINT(12.0, 7.0, lastPoint());
}

TEST_F(BandTest, F4TogglesTheGripSnap)
{
    press(VK_F4);
    whileWaiting([this] { EXPECT_TRUE(settings().m_bGripSnap); });
    press(VK_F4);
    rightClick();
    track();
    EXPECT_FALSE(settings().m_bGripSnap);
}

TEST_F(BandTest, TheKeyHeldAtTheClickIsKept)
{
    struct Row {
        std::vector<unsigned> down;
        VexModifier modifier;
    };
    const Row rows[] = {{{}, VexModifier::kNone},
                        {{VK_CONTROL, VK_SHIFT, VK_MENU}, VexModifier::kCtrl},
                        {{VK_SHIFT, VK_MENU}, VexModifier::kShift},
                        {{VK_MENU}, VexModifier::kAlt}};
    for (const Row& row : rows) {
        for (const unsigned key : {VK_CONTROL, VK_SHIFT, VK_MENU}) {
            backend.setKeyState(key, std::ranges::count(row.down, key) > 0 ? 0x8000 : 0);
        }
        clickAt(12, 7);
        track();
        EXPECT_EQ(row.modifier, handler().modifier()) << row.down.size();
    }
}

TEST_F(BandTest, TheHostHearsBothPointsAndMayHoldThePosition)
{
    std::vector<CPoint> heard;
    display.setHandler([&](const MSG& sent) {
        if (sent.message == WM_VEX_COORDINATE) {
            heard.push_back(*reinterpret_cast<const CPoint*>(sent.wParam));
            auto& position = *reinterpret_cast<CPoint*>(sent.lParam);
            heard.push_back(position);
            position.y = heard.front().y; // ortho
        }
        return LRESULT(0);
    });
    clickAt(12, 7);
    track();
    EXPECT_EQ((std::vector{CPoint(500, 500), CPoint(1200, 700)}), heard);
    EXPECT_POINT(12.0, 5.0, lastPoint());
}

TEST_F(BandTest, GridSnapRoundsTheClickToTheGridItself)
{
    settings().m_bGridSnap = true;
    clickAt(1.5, 2.4);
    track();
    EXPECT_POINT(1.0, 2.0, lastPoint());
    settings().m_dGridStep = 0.125;
    clickAt(1.3, 2.1);
    track();
    EXPECT_EQ(1.25, lastPoint().x); // not the 1.25 or 2.12 of logical units
    EXPECT_EQ(2.125, lastPoint().y);
    expectEnded();
}

TEST_F(BandTest, AnObjectSnapGoesBeforeTheGridAndIsExact)
{
    addLine({20.1234567, 10.7654321}, {30, 10});
    settings().m_bGridSnap = true;
    settings().m_bGripSnap = true;
    clickAt(20.1, 10.8);
    EXPECT_EQ(InputPoint, track());
    EXPECT_EQ(20.1234567, lastPoint().x);
    EXPECT_EQ(10.7654321, lastPoint().y);
    expectEnded();
}

TEST_F(BandTest, ASnapThatMovesLessThanALogicalUnitCountsToo)
{
    addLine({20.1004567, 10.8004321}, {30, 10});
    moveAt(20.1, 10.8);
    press(VK_F4);
    clickAt(20.1, 10.8);
    track();
    EXPECT_EQ(20.1004567, lastPoint().x);
    EXPECT_EQ(10.8004321, lastPoint().y);
}

TEST_F(BandTest, SnapKeysHoldForOneInput)
{
    type(L"c");
    whileWaiting([this] { EXPECT_TRUE(settings().m_bSnapCenter); });
    clickAt(12, 7);
    track();
    EXPECT_FALSE(settings().m_bSnapCenter);
}

TEST_F(BandTest, AWindowThatRepaintsFindsNoBand)
{
    moveAt(10, 5);
    whileWaiting([this] {
        display.setHandler([this](const MSG& sent) {
            if (sent.message == WM_PAINT || sent.message == WM_MOUSEWHEEL) {
                EXPECT_TRUE(leftOver().empty()) << sent.message;
                EXPECT_EQ(R2_COPYPEN, dc.GetROP2()) << sent.message;
            }
            return LRESULT(0);
        });
    });
    post(WM_PAINT);
    post(WM_MOUSEWHEEL);
    moveAt(11, 5);
    rightClick();
    EXPECT_EQ(InputCancel, track());
    EXPECT_EQ(10u, strokesOf(kBand).size()) << "start, move, twice lifted and put back, move";
    expectEnded();
}

TEST_F(BandTest, AWindowThatRepaintsFindsNoSnapMarker)
{
    addLine({20.1234567, 10.7654321}, {30, 10});
    settings().m_bGripSnap = true;
    display.setHandler([this](const MSG& sent) {
        if (sent.message == WM_PAINT || sent.message == WM_TIMER) {
            EXPECT_EQ(sent.message == WM_TIMER, handler().isBlipDrawn());
        }
        return LRESULT(0);
    });
    moveAt(20.1, 10.8);
    post(WM_PAINT);
    post(WM_TIMER); // it is back
    arrow(VK_RIGHT);
    type(L"\n");
    EXPECT_EQ(InputPoint, track());
    EXPECT_EQ(20.1234567, lastPoint().x);
    expectEnded();
}

TEST_F(BandTest, ArrowKeysMoveThePositionByAPixelAndEnterTakesIt)
{
    moveAt(10, 5);
    arrow(VK_RIGHT);
    arrow(VK_UP);
    arrow(VK_UP);
    type(L"\n");
    EXPECT_EQ(InputPoint, track());
    EXPECT_POINT(10.1, 5.2, lastPoint());
    EXPECT_POINT(10.1, 5.2, band.GetPos());
    EXPECT_EQ(3, received(WM_MOUSEMOVE)) << "the window is told of each step";
    EXPECT_EQ(0, received(WM_KEYUP));
    expectEnded();
}

TEST_F(BandTest, TheMouseTakesOverFromTheKeys)
{
    moveAt(10, 5);
    arrow(VK_LEFT);
    moveAt(11, 5);
    type(L"\n");
    EXPECT_EQ(InputCancel, track()) << "Enter with nothing typed and no key since the mouse";
}

TEST_F(BandTest, WithGridSnapAnArrowGoesAGridStep)
{
    settings().m_bGridSnap = true;
    settings().m_dGridStep = 2.0;
    moveAt(10, 6);
    arrow(VK_LEFT);
    arrow(VK_DOWN);
    type(L"\n");
    EXPECT_EQ(InputPoint, track());
    EXPECT_POINT(8.0, 4.0, lastPoint());
}

TEST_F(BandTest, AWindowAloneMakesATrackerThatOnlyMeasures)
{
    CVexDbEntityTracker plain(&display);
    EXPECT_EQ(InputCancel, plain.Track(&display, {0, 0}));
    EXPECT_EQ(-1, plain.HitTest({0, 0}));
    plain.SetStartPoint({1, 2}, false);
    EXPECT_POINT(0.0, 0.0, plain.GetPos());
    plain.SetPos({3.5, 4.5});
    EXPECT_POINT(3.5, 4.5, plain.GetPos());
}

TEST_F(BandTest, DefaultsAreThoseOfAFreshTracker)
{
    EXPECT_EQ(CVexDbEntityTracker::TrackerPlain, band.TrackType());
    EXPECT_EQ(0ul, band.GetOption());
    band.SetOption(200);
    band.SetTransOpt(VexDb::TransFormScale);
    band.SetDefault();
    EXPECT_EQ(0ul, band.GetOption());
    EXPECT_EQ(VexDb::TransFormNone, band.transOpt());
    EXPECT_FALSE(band.isCreateMode());
    EXPECT_EQ(nullptr, band.GetEntity());
}

} // namespace
