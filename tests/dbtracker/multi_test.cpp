#include "trackerfixture.h"
#include "vexdb/dbobject/dbentity/vexdbpoint.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/dbtracker/vexmultientitytracker.h"

#include <numbers>

namespace {

using Multi = CVexMultiEntityTracker;

/// Two lines and a point of the drawing, transformed together from (10, 10).
class MultiTest : public TrackerTest {
protected:
    CVexDbLine* first = addLine({10, 10}, {12, 10});
    CVexDbLine* second = addLine({10, 20}, {14, 20});
    const VexBusyScope busy{handler()};
    std::vector<CVexDbObjectId> ids{first->objectId(), second->objectId()};

    std::unique_ptr<Multi> make(VexDb::TransFormOption option)
    {
        auto made = std::make_unique<Multi>(&display, &ids, option);
        made->SetStartPoint({10, 10}, false);
        return made;
    }
    int track(Multi& tracker) { return tracker.Track(&display, {0, 0}); }
    int track(VexDb::TransFormOption option) { return track(*make(option)); }
    [[nodiscard]] std::size_t records() { return undo().undoStack().size(); }
    [[nodiscard]] int entities() { return database->blocks().getCurrentRecord()->getNumEntity(); }
    void expectUntouched()
    {
        EXPECT_LINE(10.0, 10.0, 12.0, 10.0, *first);
        EXPECT_LINE(10.0, 20.0, 14.0, 20.0, *second);
        EXPECT_EQ(0u, records());
        EXPECT_EQ(2, entities());
    }
    /// The capture is back, and the view shows the drawing with no band on it.
    void expectEnded()
    {
        EXPECT_EQ(nullptr, GetCapture());
        EXPECT_EQ(R2_COPYPEN, dc.GetROP2());
        EXPECT_FALSE(isBandShown());
    }
    /// Whether the last picture that went to the view has the band.
    [[nodiscard]] bool isBandShown() const
    {
        const auto& strokes = dc.strokes();
        const auto picture =
            std::find_if(strokes.rbegin(), strokes.rend(), [](const VexStroke& stroke) {
                return stroke.kind == VexStroke::Kind::kBlit && stroke.points[0] == CPoint(0, 0);
            });
        return std::any_of(picture.base(), strokes.end(),
                           [](const VexStroke& stroke) { return stroke.color == kBand; });
    }
    [[nodiscard]] int blocks() const
    {
        return static_cast<int>(
            std::ranges::count(dc.strokes(), VexStroke::Kind::kBlit, &VexStroke::kind));
    }
    /// Where the last picture on the view shows the copies: their strokes, in device pixels.
    [[nodiscard]] std::vector<std::vector<CPoint>> shown() const
    {
        std::vector<std::vector<CPoint>> lines;
        const auto& strokes = dc.strokes();
        for (auto at = strokes.rbegin(); at != strokes.rend(); ++at) {
            if (at->kind == VexStroke::Kind::kLine && at->color == kBand) {
                break; // the band is painted first
            }
            if (at->kind == VexStroke::Kind::kLine) {
                lines.insert(lines.begin(), at->points);
            }
        }
        return lines;
    }
};

TEST_F(MultiTest, EachTransformIsCommittedWholeAndRecordedAsOneStep)
{
    struct Row {
        VexDb::TransFormOption option;
        CVexGePoint2d firstEnd;
        CVexGePoint2d secondStart;
        int editType;
        CVexGeVector2d vector;
    };
    const Row rows[] = {
        {VexDb::TransFormMove, {12, 14}, {10, 24}, kUndoMove, {0, 4}},
        {VexDb::TransFormCopy, {12, 14}, {10, 24}, kUndoMove, {0, 4}},
        {VexDb::TransFormRotate, {10, 12}, {0, 10}, kUndoRotate, {0, 4}},
        {VexDb::TransFormMirror, {8, 10}, {10, 20}, kUndoMirror, {0, 4}},
        {VexDb::TransFormScale, {10.08, 10}, {10, 10.4}, kUndoScale, {0.04, 0.04}},
    };
    for (const Row& row : rows) {
        moveAt(17, 12);
        moveAt(13, 25);
        clickAt(10, 14);
        EXPECT_EQ(InputPoint, track(row.option)) << row.option;
        EXPECT_NEAR(row.firstEnd.x, first->EndPoint().x, 1e-9) << row.option;
        EXPECT_NEAR(row.firstEnd.y, first->EndPoint().y, 1e-9) << row.option;
        EXPECT_NEAR(row.secondStart.x, second->StartPoint().x, 1e-9) << row.option;
        EXPECT_NEAR(row.secondStart.y, second->StartPoint().y, 1e-9) << row.option;
        ASSERT_EQ(2u, records());
        for (const tagUndoEditEntity& edit : undo().undoStack()) {
            EXPECT_EQ(row.editType, edit.editType);
            EXPECT_NEAR(row.vector.x, edit.vector.x, 1e-12);
            EXPECT_NEAR(row.vector.y, edit.vector.y, 1e-12);
            EXPECT_POINT(10.0, 10.0, edit.point);
        }
        EXPECT_TRUE(undo().undoStack()[0].continues);
        EXPECT_FALSE(undo().undoStack()[1].continues);
        EXPECT_POINT(10.0, 14.0, lastPoint());
        handler().leave(); // undo waits for the end of what runs
        EXPECT_TRUE(undo().Undo());
        handler().enter();
        EXPECT_NEAR(12.0, first->EndPoint().x, 1e-9);
        EXPECT_NEAR(20.0, second->StartPoint().y, 1e-9);
        EXPECT_EQ(0u, records());
        first->set({10, 10}, {12, 10});
        second->set({10, 20}, {14, 20});
    }
}

TEST_F(MultiTest, WithoutATransformItReturnsAtOnce)
{
    clickAt(10, 14);
    EXPECT_EQ(InputCancel, track(VexDb::TransFormNone));
    EXPECT_EQ(1u, backend.queued());
    expectUntouched();
}

TEST_F(MultiTest, TheCopiesFollowTheMouse)
{
    auto tracker = make(VexDb::TransFormMove);
    moveAt(13, 10);
    moveAt(10, 15);
    whileWaiting([this] {
        EXPECT_EQ(
            (std::vector<std::vector<CPoint>>{{{100, 250}, {120, 250}}, {{100, 150}, {140, 150}}}),
            shown());
        expectUntouched();
    });
    rightClick();
    EXPECT_EQ(InputCancel, track(*tracker));
    expectUntouched();
    expectEnded();
}

TEST_F(MultiTest, TheCopiesTurnMirrorAndScaleFromWhereTheyStand)
{
    struct Row {
        VexDb::TransFormOption option;
        std::vector<CPoint> firstLine;
    };
    const Row rows[] = {{VexDb::TransFormRotate, {{100, 300}, {100, 280}}},
                        {VexDb::TransFormMirror, {{100, 300}, {80, 300}}},
                        {VexDb::TransFormScale, {{100, 300}, {102, 300}}}};
    for (const Row& row : rows) {
        moveAt(20, 10);
        moveAt(16, 13);
        moveAt(10, 20);
        whileWaiting([&] {
            ASSERT_EQ(2u, shown().size());
            EXPECT_EQ(row.firstLine, shown()[0]) << row.option;
        });
        press(VK_ESCAPE);
        EXPECT_EQ(InputCancel, track(row.option));
    }
    expectUntouched();
}

TEST_F(MultiTest, ScalingStartsAnewAfterAFactorOfNothing)
{
    moveAt(20, 10);
    moveAt(10, 10); // the copies have no size now
    moveAt(35, 10);
    whileWaiting([this] {
        ASSERT_EQ(2u, shown().size());
        EXPECT_EQ((std::vector{CPoint(100, 300), CPoint(105, 300)}), shown()[0]);
    });
    clickAt(35, 10);
    EXPECT_EQ(InputPoint, track(VexDb::TransFormScale));
    EXPECT_LINE(10.0, 10.0, 10.5, 10.0, *first);
}

TEST_F(MultiTest, ScalingThroughTheStartCollapsesAndUndoBringsBack)
{
    moveAt(20, 10);
    clickAt(10, 10);
    EXPECT_EQ(InputPoint, track(VexDb::TransFormScale));
    EXPECT_LINE(10.0, 10.0, 10.0, 10.0, *first);
    EXPECT_LINE(10.0, 10.0, 10.0, 10.0, *second);
    EXPECT_EQ(0.0, newest().vector.x);
    handler().leave();
    EXPECT_TRUE(undo().Undo());
    handler().enter();
    EXPECT_LINE(10.0, 10.0, 12.0, 10.0, *first);
    EXPECT_LINE(10.0, 20.0, 14.0, 20.0, *second);
}

TEST_F(MultiTest, AMirrorIsTheSameOnTheFirstMoveAndAfterMoves)
{
    clickAt(17, 15);
    EXPECT_EQ(InputPoint, track(VexDb::TransFormMirror));
    const CVexGePoint2d once = second->EndPoint();
    handler().leave();
    undo().Undo();
    handler().enter();
    second->set({10, 20}, {14, 20});
    first->set({10, 10}, {12, 10});
    moveAt(30, 12);
    moveAt(10, 10);
    moveAt(11, 38);
    clickAt(17, 15);
    EXPECT_EQ(InputPoint, track(VexDb::TransFormMirror));
    EXPECT_NEAR(once.x, second->EndPoint().x, 1e-12);
    EXPECT_NEAR(once.y, second->EndPoint().y, 1e-12);
}

TEST_F(MultiTest, WithoutAWayNothingIsDoneOrRecorded)
{
    for (const auto option :
         {VexDb::TransFormMove, VexDb::TransFormRotate, VexDb::TransFormMirror}) {
        clickAt(10, 10);
        EXPECT_EQ(InputPoint, track(option));
        expectUntouched();
    }
}

TEST_F(MultiTest, KeepingTheOriginAddsTheCopies)
{
    auto tracker = make(VexDb::TransFormCopy);
    tracker->SetKeepOrigin(true);
    moveAt(20, 20);
    clickAt(13, 14);
    EXPECT_EQ(InputPoint, track(*tracker));
    tracker.reset();
    EXPECT_EQ(4, entities());
    EXPECT_LINE(10.0, 10.0, 12.0, 10.0, *first);
    EXPECT_LINE(13.0, 24.0, 17.0, 24.0, static_cast<CVexDbLine&>(*database->lastEntity()));
    ASSERT_EQ(2u, records());
    EXPECT_EQ(kUndoCreate, newest().editType);
    EXPECT_EQ(database->lastEntity()->objectId(), newest().entity);
    EXPECT_TRUE(newest().continues);
    EXPECT_FALSE(undo().undoStack()[1].continues);
    EXPECT_TRUE(database->selfCheck().empty());
}

TEST_F(MultiTest, AMirrorThatKeepsTheOriginAddsTheImages)
{
    auto tracker = make(VexDb::TransFormMirror);
    tracker->SetKeepOrigin(true);
    clickAt(10, 14);
    track(*tracker);
    EXPECT_EQ(4, entities());
    EXPECT_LINE(10.0, 20.0, 6.0, 20.0, static_cast<CVexDbLine&>(*database->lastEntity()));
}

TEST_F(MultiTest, ALineWithoutLengthHasNoImageThoughACopyMayLieOnItsSource)
{
    for (const auto& [option, expected] :
         {std::pair(VexDb::TransFormMirror, 2), std::pair(VexDb::TransFormCopy, 4)}) {
        auto tracker = make(option);
        tracker->SetKeepOrigin(true);
        moveAt(20, 20);
        clickAt(10, 10);
        EXPECT_EQ(InputPoint, track(*tracker));
        EXPECT_EQ(expected, entities());
    }
}

TEST_F(MultiTest, ACancelledCopyLeavesNothingBehind)
{
    const std::vector<std::pair<int, std::function<void()>>> ways = {
        {InputCancel, [this] { press(VK_ESCAPE); }}, {InputCancel, [this] { rightClick(); }},
        {InputCancel, [this] { type(L"\n"); }},      {InputNumber, [this] { type(L"9\n"); }},
        {InputString, [this] { type(L"x\n"); }},     {InputLost, [] {}},
    };
    for (const auto& [result, leave] : ways) {
        auto tracker = make(VexDb::TransFormCopy);
        tracker->SetKeepOrigin(true);
        moveAt(20, 20);
        leave();
        EXPECT_EQ(result, track(*tracker));
        expectUntouched();
        expectEnded();
    }
}

TEST_F(MultiTest, ATypedTargetWaitsForTheCommandToTakeIt)
{
    auto tracker = make(VexDb::TransFormMove);
    moveAt(20, 20);
    type(L"10.125,13.0625\n");
    EXPECT_EQ(InputTypedPoint, track(*tracker));
    expectUntouched();
    expectEnded();
    // What a command does with it.
    settings().m_bGridSnap = true; // which rounds no typed point
    tracker->SetPos(lastPoint());
    tracker->CopyOriginToCurrent();
    tracker->TransForm();
    EXPECT_TRUE(tracker->ControlEnd(0));
    EXPECT_EQ(10.125, first->StartPoint().x);
    EXPECT_EQ(13.0625, first->StartPoint().y);
    EXPECT_EQ(3.0625, newest().vector.y);
    EXPECT_EQ(2u, records());
    EXPECT_EQ(13.0625, lastPoint().y);
}

TEST_F(MultiTest, EnterBehindArrowKeysIsAClick)
{
    moveAt(20, 20);
    moveAt(10, 14);
    arrow(VK_UP);
    type(L"\n");
    EXPECT_EQ(InputPoint, track(VexDb::TransFormMove));
    EXPECT_NEAR(14.1, first->StartPoint().y, 1e-12);
    EXPECT_EQ(2u, records());
}

TEST_F(MultiTest, ASnappedTargetIsMetExactly)
{
    addLine({30.0123456, 20.0654321}, {35, 25});
    settings().m_bGripSnap = true;
    moveAt(20, 20);
    clickAt(30, 20.1);
    track(VexDb::TransFormMove);
    EXPECT_EQ(30.0123456, first->StartPoint().x);
    EXPECT_EQ(20.0654321, first->StartPoint().y);
    EXPECT_EQ(30.0123456, lastPoint().x);
}

TEST_F(MultiTest, TheClickIsRoundedToTheGrid)
{
    settings().m_bGridSnap = true;
    moveAt(20, 20);
    clickAt(10.3, 14.4);
    track(VexDb::TransFormMove);
    EXPECT_LINE(10.0, 14.0, 12.0, 14.0, *first);
}

TEST_F(MultiTest, SourcesOutsideTheDrawingAreTransformedUnrecorded)
{
    CVexDbLine loose(CVexGePoint2d(1, 1), CVexGePoint2d(2, 1));
    loose.setDatabase(database.get());
    ids = {loose.objectId(), first->objectId()};
    clickAt(10, 14);
    track(VexDb::TransFormMove);
    EXPECT_LINE(1.0, 5.0, 2.0, 5.0, loose);
    ASSERT_EQ(1u, records());
    EXPECT_EQ(first->objectId(), newest().entity);
    EXPECT_FALSE(newest().continues);
}

TEST_F(MultiTest, KindsWithoutAClassForUndoMoveToo)
{
    auto* const point = new CVexDbPoint(database.get());
    point->SetPosition({5, 5});
    auto* const rect = new CVexDbRect(database.get());
    rect->setLeftTop({1, 1});
    rect->setRightBottom({3, 2});
    CVexDbObjectId id;
    database->addEntity(point, id);
    database->addEntity(rect, id);
    ids = {point->objectId(), rect->objectId()};
    clickAt(10, 14);
    EXPECT_EQ(InputPoint, track(VexDb::TransFormMove));
    EXPECT_POINT(5.0, 9.0, point->Position());
    EXPECT_POINT(1.0, 5.0, rect->LeftTop());
    ASSERT_EQ(1u, records()) << "points do not classify";
    EXPECT_FALSE(newest().continues) << "the step ends with the record that is there";
}

TEST_F(MultiTest, TheCopiesBecomeTheSourcesOfANextTransform)
{
    auto tracker = make(VexDb::TransFormCopy);
    tracker->SetKeepOrigin(true);
    clickAt(10, 14);
    track(*tracker);
    auto& copy = static_cast<CVexDbLine&>(*database->lastEntity());
    tracker->SetCurrentToOrigin();
    tracker->SetKeepOrigin(false);
    tracker->SetTransOpt(VexDb::TransFormRotate);
    tracker->SetStartPoint(lastPoint(), false);
    clickAt(10, 20);
    EXPECT_EQ(InputPoint, track(*tracker));
    EXPECT_LINE(0.0, 14.0, 0.0, 18.0, copy);
    EXPECT_LINE(10.0, 20.0, 14.0, 20.0, *second);
    EXPECT_EQ(4, entities());
    EXPECT_EQ(4u, records());
}

TEST_F(MultiTest, CopiesThatNobodyTookAreFreedAsSourcesToo)
{
    auto tracker = make(VexDb::TransFormCopy);
    moveAt(20, 20);
    rightClick();
    track(*tracker);
    tracker->SetCurrentToOrigin();
    tracker->SetCurrentToOrigin();
    tracker.reset(); // the address checker sees to it
    expectUntouched();
}

TEST_F(MultiTest, OriginAndCopiesCanBeStrokedAsTheBandIs)
{
    auto tracker = make(VexDb::TransFormMove);
    tracker->UndrawOrigin();
    EXPECT_EQ(2u, leftOver().size());
    tracker->UndrawOrigin();
    EXPECT_TRUE(leftOver().empty());
    tracker->DrawCurrent();
    EXPECT_TRUE(leftOver().empty()) << "no copies yet";
}

TEST_F(MultiTest, ARepaintFindsTheDrawingAlone)
{
    moveAt(20, 20);
    whileWaiting([this] {
        EXPECT_TRUE(isBandShown());
        display.setHandler([this](const MSG& sent) {
            if (sent.message == WM_PAINT) {
                EXPECT_FALSE(isBandShown());
                EXPECT_EQ(R2_COPYPEN, dc.GetROP2());
                database->Draw();
            } else if (sent.message == WM_TIMER) {
                EXPECT_TRUE(isBandShown());
            }
            return LRESULT(0);
        });
    });
    post(WM_PAINT);
    post(WM_TIMER);
    rightClick();
    EXPECT_EQ(InputCancel, track(VexDb::TransFormMove));
    expectEnded();
}

TEST_F(MultiTest, EachMoveGoesToTheViewInOneBlock)
{
    database->Draw();
    moveAt(20, 20);
    whileWaiting([this] {
        dc.clear();
        EXPECT_EQ(0, blocks());
    });
    moveAt(21, 20);
    moveAt(22, 20);
    whileWaiting([this] { EXPECT_EQ(2 * 2, blocks()) << "the picture and, in it, the drawing"; });
    press(VK_ESCAPE);
    track(VexDb::TransFormMove);
    expectEnded();
}

TEST_F(MultiTest, WithoutMemoryTheDrawingShowsBelowTheCopies)
{
    dc.refuseBitmaps(true);
    CVexDbLine* const other = addLine({30, 30}, {35, 30});
    moveAt(20, 20);
    whileWaiting([&] {
        // Behind the last clearing of the view: the drawing's lines, the band, the copies.
        const auto& strokes = dc.strokes();
        const auto cleared =
            std::find_if(strokes.rbegin(), strokes.rend(), [](const VexStroke& stroke) {
                return stroke.kind == VexStroke::Kind::kFill;
            });
        ASSERT_EQ(6, std::distance(strokes.rbegin(), cleared));
        EXPECT_TRUE(std::any_of(strokes.rbegin(), cleared, [&](const VexStroke& stroke) {
            return stroke.points.front() == px(other->StartPoint().x, other->StartPoint().y);
        }));
    });
    press(VK_ESCAPE);
    track(VexDb::TransFormMove);
}

TEST_F(MultiTest, WithoutMemoryForABufferTheViewIsDrawnItself)
{
    dc.refuseBitmaps(true);
    moveAt(20, 20);
    clickAt(10, 14);
    EXPECT_EQ(InputPoint, track(VexDb::TransFormMove));
    EXPECT_LINE(10.0, 14.0, 12.0, 14.0, *first);
    moveAt(20, 20);
    press(VK_ESCAPE);
    EXPECT_EQ(InputCancel, track(VexDb::TransFormMove));
    EXPECT_NE(kBand, dc.strokes().back().color);
    EXPECT_EQ(R2_COPYPEN, dc.GetROP2());
}

TEST_F(MultiTest, ASnapMarkerShowsOnTopOfThePicture)
{
    addLine({30, 20}, {35, 25});
    settings().m_bGripSnap = true;
    moveAt(30, 20.1);
    whileWaiting([this] {
        EXPECT_TRUE(handler().isBlipDrawn());
        EXPECT_EQ(R2_XORPEN, dc.strokes().back().rop) << "drawn again behind the block";
    });
    press(VK_ESCAPE);
    track(VexDb::TransFormMove);
    EXPECT_FALSE(handler().isBlipDrawn());
}

TEST_F(MultiTest, NothingToTransformIsNoReasonToFail)
{
    ids.clear();
    Multi none(&display, &ids, VexDb::TransFormMove);
    EXPECT_EQ(InputCancel, none.Track(&display, {0, 0}));
    Multi null(&display, nullptr, VexDb::TransFormMove);
    EXPECT_EQ(CVexDbEntityTracker::TrackerMulti, null.TrackType());
    null.ClearCopyedArray();
    EXPECT_FALSE(null.ControlEnd(0));
}

} // namespace
