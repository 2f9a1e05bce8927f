#include "tests/dbcommand/probeentity.h"
#include "trackerfixture.h"

namespace {

class GripsTest : public TrackerTest {};

TEST_F(GripsTest, TheBoxesAreEightPixelsAroundTheGrips)
{
    selectLine({10, 10}, {20, 10});
    struct Row {
        CPoint device;
        int grip;
    };
    // The middle of the line is at pixel (150, 300); y grows downwards on the device.
    const Row rows[] = {{{150, 300}, 0},  {{146, 304}, 0},  {{153, 297}, 0},  {{154, 300}, -1},
                        {{145, 300}, -1}, {{150, 296}, -1}, {{150, 305}, -1}, {{100, 300}, 1},
                        {{200, 300}, 2},  {{120, 300}, -1}};
    for (const Row& row : rows) {
        EXPECT_EQ(row.grip, tracker().HitTest(row.device)) << row.device;
    }
}

TEST_F(GripsTest, OfGripsUponEachOtherTheFirstIsHit)
{
    selectLine({10, 10}, {10.2, 10});
    EXPECT_EQ(0, tracker().HitTest(px(10, 10)));
}

TEST_F(GripsTest, ASelectedLineShowsDottedWithItsBoxes)
{
    CVexDbLine* const line = addLine({10, 10}, {20, 10});
    line->Draw(&dc);
    dc.clear();
    handler().DoDragEntity(line, {});
    EXPECT_EQ(R2_COPYPEN, dc.strokes()[0].rop);
    EXPECT_EQ(0x000000u, dc.strokes()[0].color)
        << "its own picture goes in the background's colour";
    EXPECT_EQ(12u, strokesOf(kHandle).size()) << "four sides each of three boxes";
    EXPECT_EQ((std::vector{CPoint(146, 304), CPoint(154, 304)}), strokesOf(kHandle)[0].points);
    EXPECT_EQ(13u, leftOver().size());
    EXPECT_EQ(PS_DOT, leftOver()[0].penStyle);
}

TEST_F(GripsTest, ADeselectedLineShowsAsBefore)
{
    CVexDbLine* const line = selectLine({10, 10}, {20, 10});
    dc.clear();
    handler().DeleteTracker(line);
    EXPECT_EQ(13u, leftOver().size()) << "the second time takes boxes and dots off";
    EXPECT_EQ(R2_COPYPEN, dc.strokes().back().rop);
    EXPECT_EQ((std::vector{CPoint(100, 300), CPoint(200, 300)}), dc.strokes().back().points);
}

TEST_F(GripsTest, ACreationShowsNoGripsAndItsEndDrawsNothing)
{
    CVexDbLine line(database.get());
    {
        CVexLineTracker drawer(&display, &line, VexDb::TransFormNone, true);
        EXPECT_FALSE(drawer.gripsShown());
    }
    EXPECT_TRUE(dc.strokes().empty());
}

TEST_F(GripsTest, SizeAndColourCanBeChosen)
{
    selectLine({10, 10}, {20, 10});
    tracker().UnDrawGripBox();
    dc.clear();
    tracker().SetHandleSize({4, 4});
    tracker().SetHandleColor(0x0000ff);
    tracker().DrawGripBox(true);
    EXPECT_EQ(12u, strokesOf(0x0000ff).size());
    EXPECT_EQ((std::vector{CPoint(148, 302), CPoint(152, 302)}), strokesOf(0x0000ff)[0].points);
    EXPECT_EQ(-1, tracker().HitTest({147, 300}));
    EXPECT_EQ(R2_COPYPEN, dc.strokes()[0].rop) << "the picture is taken off first";
}

TEST_F(GripsTest, BoxesThatAreNotShownAreNotTakenOff)
{
    selectLine({10, 10}, {20, 10});
    tracker().UnDrawGripBox();
    dc.clear();
    tracker().UnDrawGripBox();
    EXPECT_TRUE(dc.strokes().empty());
    EXPECT_FALSE(tracker().gripsShown());
}

TEST_F(GripsTest, TheCursorTellsTheGripUnderIt)
{
    selectLine({10, 10}, {20, 10});
    const std::pair<CPoint, VexCursor> rows[] = {{px(15, 10), VexCursor::kMove},
                                                 {px(10, 10), VexCursor::kResize},
                                                 {px(20, 10), VexCursor::kResize}};
    for (const auto& [at, cursor] : rows) {
        SetCursor(VexCursor::kArrow);
        SetCursorPos(at.x, at.y);
        EXPECT_EQ(0, handler().SetTrackerCursor(&display, HTCLIENT)) << at;
        EXPECT_EQ(cursor, backend.cursor()) << at;
        EXPECT_EQ(-1, handler().SetTrackerCursor(&display, HTCLIENT + 1)) << at;
    }
    SetCursorPos(1, 1);
    EXPECT_EQ(-1, handler().SetTrackerCursor(&display, HTCLIENT));
}

TEST_F(GripsTest, ARepaintDrawsTheGripsOfTheWholeSelection)
{
    selectLine({10, 10}, {20, 10});
    selectLine({10, 20}, {20, 20});
    CVexRecordingDC page({400, 400});
    page.copyMapping(dc);
    handler().TrackerDraw(&page);
    EXPECT_EQ(2u * (1 + 1 + 12), page.strokes().size()) << "undrawn, dotted, boxes";
    EXPECT_EQ(&dc, tracker().getDC());
}

TEST_F(GripsTest, ATrackerIsMadeForKindsThatHaveOne)
{
    CVexDbLine line(database.get());
    const std::unique_ptr<CVexDbEntityTracker> made(
        handler().CreateTracker(&display, &line, VexDb::TransFormMove, true));
    ASSERT_NE(nullptr, made);
    EXPECT_EQ(CVexDbEntityTracker::TrackerLine, made->TrackType());
    EXPECT_EQ(VexDb::TransFormMove, made->transOpt());
    for (const auto type : {VexDb::kPoint, VexDb::kImage, VexDb::kSymbol, VexDb::kEntity}) {
        ProbeEntity probe(database.get(), type, {1, 1});
        EXPECT_EQ(nullptr, handler().CreateTracker(&display, &probe, VexDb::TransFormNone, false));
        handler().DoDragEntity(&probe, {});
    }
    EXPECT_EQ(nullptr, handler().CreateTracker(&display, nullptr, VexDb::TransFormNone, false));
    EXPECT_TRUE(handler().trackers().empty());
}

TEST_F(GripsTest, AnEntityIsSelectedOnce)
{
    CVexDbLine* const line = selectLine({10, 10}, {20, 10});
    handler().DoDragEntity(line, px(1, 1));
    handler().DoDragEntity(nullptr, {});
    EXPECT_EQ(1u, handler().trackers().size());
    VexEntitySet selected;
    handler().GetSelectedEntity(selected);
    EXPECT_EQ((VexEntitySet{line}), selected);
}

TEST_F(GripsTest, OnePressDragsOneTrackerThoughTwoAreHit)
{
    CVexDbLine* const first = selectLine({10, 10}, {20, 10});
    CVexDbLine* const second = selectLine({10, 10}, {20, 20});
    releaseAt(5, 5);
    releaseAt(6, 6);
    handler().TrackTracker(&display, px(10, 10));
    EXPECT_LINE(5.0, 5.0, 20.0, 10.0, *first);
    EXPECT_LINE(10.0, 10.0, 20.0, 20.0, *second);
    EXPECT_EQ(1u, backend.queued());
}

TEST_F(GripsTest, WhileSomethingRunsNoGripIsDragged)
{
    CVexDbLine* const line = selectLine({10, 10}, {20, 10});
    const VexBusyScope busy(handler());
    releaseAt(5, 5);
    handler().TrackTracker(&display, px(10, 10));
    EXPECT_LINE(10.0, 10.0, 20.0, 10.0, *line);
    EXPECT_EQ(1u, backend.queued());
}

/// The display erases `line` when it hears `kind`.
class DoomedTest : public TrackerTest {
protected:
    CVexDbLine* line = selectLine({10, 10}, {20, 10});

    void eraseOn(unsigned kind)
    {
        display.setHandler([this, kind](const MSG& sent) {
            if (sent.message == kind && !line->isErased()) {
                line->Erase();
            }
            return LRESULT(0);
        });
    }
    void expectCancelled()
    {
        EXPECT_TRUE(handler().trackers().empty());
        EXPECT_LINE(10.0, 10.0, 20.0, 10.0, *line);
        EXPECT_TRUE(undo().undoStack().empty());
        EXPECT_POINT(3.0, 3.0, lastPoint());
        EXPECT_EQ(nullptr, GetCapture());
        EXPECT_TRUE(std::ranges::none_of(
            leftOver(), [](const VexStroke& stroke) { return stroke.color == kBand; }));
    }
};

TEST_F(DoomedTest, AnEntityErasedInTheMiddleOfItsDragCancelsItAtOnce)
{
    database->setLastPoint({3, 3});
    eraseOn(WM_TIMER);
    moveAt(21, 11);
    post(WM_TIMER);
    releaseAt(22, 12);
    handler().TrackTracker(&display, px(20, 10));
    expectCancelled();
    EXPECT_EQ(1u, backend.queued()) << "what comes behind it is not the drag's";
}

TEST_F(DoomedTest, AnEntityErasedByWhoHearsOfThePositionIsNotChanged)
{
    database->setLastPoint({3, 3});
    eraseOn(WM_VEX_COORDINATE);
    releaseAt(22, 12);
    EXPECT_EQ(InputCancel, tracker().Track(&display, px(20, 10)));
    expectCancelled();
}

/// A tracker whose highlight damages the picture below it.
class RedrawingTracker : public CVexLineTracker {
public:
    RedrawingTracker(CWnd* window, CVexDbEntity* line)
        : CVexLineTracker(window, line, VexDb::TransFormNone, false)
    {
        m_highlightNeedsRedraw = true;
    }
};

TEST_F(GripsTest, AHighlightThatDamagesThePictureHasItRedrawnAsItIs)
{
    RedrawingTracker grips(&display, addLine({10, 10}, {20, 10}));
    dc.clear();
    grips.UnDrawGripBox();
    EXPECT_EQ(R2_COPYPEN, dc.strokes().back().rop);
    EXPECT_EQ((std::vector{CPoint(100, 300), CPoint(200, 300)}), dc.strokes().back().points);
}

TEST_F(GripsTest, HooksForClientsDoNothingByThemselves)
{
    CVexDbEntityTracker plain(&display, database.get(), true);
    plain.DrawCurrentMark();
    plain.SetCurrentStitch(1);
    plain.SetMultiEntity(nullptr);
    EXPECT_FALSE(plain.SelectStitchByWin({1, 1}));
    EXPECT_EQ(nullptr, plain.CopyEntity(nullptr));
    EXPECT_FALSE(plain.ControlEnd(0));
    EXPECT_FALSE(plain.DrawBoxis());
}

} // namespace
