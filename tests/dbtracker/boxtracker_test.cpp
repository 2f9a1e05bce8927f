#include "shapefixture.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbtracker/vexboxtracker.h"

namespace {

CVexGePoint2d diagonalOf(const CVexDbBox& box)
{
    CVexGePoint2d diagonal;
    box.GetDiagonPoint(diagonal);
    return diagonal;
}

#define EXPECT_BOX(baseX, baseY, width, height, rotation, box)                                     \
    do {                                                                                           \
        const CVexDbBox& looked = (box);                                                           \
        EXPECT_POINT(baseX, baseY, looked.BasePoint());                                            \
        EXPECT_NEAR(width, looked.Width(), 1e-12);                                                 \
        EXPECT_NEAR(height, looked.Height(), 1e-12);                                               \
        EXPECT_NEAR(rotation, looked.Rotation(), 1e-12);                                           \
    } while (false)

/// A box being drawn from the corner (10, 10), as the command draws it.
class BoxCreationTest : public ShapeCreationTest<CVexDbBox, CVexBoxTracker> {
protected:
    BoxCreationTest() { shape.Set({10, 10}, CVexGeVector2d(1, 1)); }
    /// The second stage, for a box that the first one has sized.
    void beginTurning()
    {
        drawer.SetCreateMode(false);
        drawer.SetEntity(&shape);
        drawer.SetTransOpt(VexDb::TransFormRotate);
        drawer.SetStartPoint({10, 10}, false);
        drawer.SetRotating(1);
    }
    ~BoxCreationTest() override { drawer.SetCreateMode(true); }
};

TEST_F(BoxCreationTest, TheSizeIsTheWayToTheClickWithItsSigns)
{
    const CVexGePoint2d clicks[] = {{18, 17}, {4, 17}, {4, 3}, {18, 3}};
    for (const CVexGePoint2d& at : clicks) {
        drawer.SetStartPoint({10, 10}, true);
        moveAt(12, 12);
        clickAt(at.x, at.y);
        EXPECT_EQ(InputPoint, track());
        EXPECT_BOX(10.0, 10.0, at.x - 10.0, at.y - 10.0, 0.0, shape);
        EXPECT_POINT(at.x, at.y, diagonalOf(shape));
    }
    EXPECT_TRUE(undo().undoStack().empty()) << "who adds the box records it";
}

TEST_F(BoxCreationTest, OneDrawnBackwardsIsSeenSelectedAndGripped)
{
    clickAt(4, 3);
    track();
    auto* const box = select(new CVexDbBox(shape));
    CVexGePoint2d left(3, 2), right(11, 11);
    EXPECT_TRUE(box->checkInside(left, right));
    EXPECT_EQ(1, box->isOn({7, 3}, 0.001));
    dc.clear();
    box->Draw(&dc);
    ASSERT_EQ(4u, dc.strokes().size());
    EXPECT_EQ((std::vector<CPoint>{{100, 300}, {40, 300}}), dc.strokes()[0].points);
    drag({4, 6.5}, {2, 9}); // the middle of the side opposite the base
    EXPECT_BOX(10.0, 10.0, -8.0, -7.0, 0.0, *box);
}

TEST_F(BoxCreationTest, TheBoxIsItsOwnBand)
{
    const std::vector<VexStroke> shown = shownAt(18, 17);
    EXPECT_TRUE(bandsAmong(shown).empty());
    EXPECT_EQ(4u, shown.size());
    EXPECT_TRUE(leftOver().empty());
}

TEST_F(BoxCreationTest, ATypedCornerSizesItAndTheBandFlashesThere)
{
    moveAt(12, 14);
    type(L"18,17\n");
    EXPECT_EQ(InputTypedPoint, track());
    EXPECT_BOX(10.0, 10.0, 8.0, 7.0, 0.0, shape);
    const std::vector<CPoint> band{{100, 300}, {180, 230}};
    EXPECT_EQ((std::vector{band, band}), bandsAmong(strokesOf(kBand)));
    EXPECT_TRUE(leftOver().empty());
    expectReleased();
}

TEST_F(BoxCreationTest, ATypedCornerMayLieAnywhereAndCountsExactly)
{
    type(L"-0.125,3.0625\n");
    EXPECT_EQ(InputTypedPoint, track());
    EXPECT_BOX(10.0, 10.0, -10.125, -6.9375, 0.0, shape);
    EXPECT_POINT(-0.125, 3.0625, lastPoint());
}

TEST_F(BoxCreationTest, AfterArrowKeysATypedCornerIsLeftToTheCommand)
{
    moveAt(12, 14);
    arrow(VK_UP);
    type(L"18,17\n");
    EXPECT_EQ(InputTypedPoint, track());
    EXPECT_BOX(10.0, 10.0, 1.0, 1.0, 0.0, shape);
    EXPECT_POINT(18.0, 17.0, lastPoint());
}

TEST_F(BoxCreationTest, WithTheMarkOfTheSecondStageACornerIsLeftToTheCommandToo)
{
    drawer.SetRotating(1);
    type(L"18,17\n");
    EXPECT_EQ(InputTypedPoint, track());
    EXPECT_BOX(10.0, 10.0, 1.0, 1.0, 0.0, shape);
}

TEST_F(BoxCreationTest, OtherAnswersLeaveTheSize)
{
    const std::pair<const wchar_t*, int> rows[] = {
        {L"7\n", InputNumber}, {L"abc\n", InputString}, {L"\n", InputCancel}};
    for (const auto& [text, result] : rows) {
        type(text);
        EXPECT_EQ(result, track()) << result;
        EXPECT_BOX(10.0, 10.0, 1.0, 1.0, 0.0, shape);
    }
}

TEST_F(BoxCreationTest, TheSecondStageTurnsItByTheBandFromTheCorner)
{
    shape.Set({10, 10}, CVexGeVector2d(8, 7));
    beginTurning();
    moveAt(20, 15);
    clickAt(10, 20);
    EXPECT_EQ(InputPoint, track());
    EXPECT_BOX(10.0, 10.0, 8.0, 7.0, 0.5 * kPi, shape);
    EXPECT_POINT(3.0, 18.0, diagonalOf(shape));
    for (const auto& band : bandsAmong(strokesOf(kBand))) {
        EXPECT_EQ(px(10, 10), band[0]);
    }
    EXPECT_TRUE(undo().undoStack().empty());
}

TEST_F(BoxCreationTest, EnterPassesThroughTheSecondStage)
{
    shape.Set({10, 10}, CVexGeVector2d(8, 7));
    beginTurning();
    moveAt(20, 15);
    type(L"\n");
    EXPECT_EQ(InputEnter, track());
    EXPECT_BOX(10.0, 10.0, 8.0, 7.0, 0.0, shape);
    EXPECT_TRUE(leftOver().empty());
    expectReleased();
}

TEST_F(BoxCreationTest, BehindArrowKeysEnterTurnsItAsAClick)
{
    shape.Set({10, 10}, CVexGeVector2d(8, 7));
    beginTurning();
    moveAt(9.9, 20);
    arrow(VK_RIGHT);
    type(L"\n");
    EXPECT_EQ(InputPoint, track());
    EXPECT_BOX(10.0, 10.0, 8.0, 7.0, 0.5 * kPi, shape);
}

TEST_F(BoxCreationTest, TheSecondStageLeavesOtherAnswersToTheCommand)
{
    shape.Set({10, 10}, CVexGeVector2d(8, 7));
    const std::pair<const wchar_t*, int> rows[] = {{L"30\n", InputNumber},
                                                   {L"10,20\n", InputTypedPoint}};
    for (const auto& [text, result] : rows) {
        beginTurning();
        type(text);
        EXPECT_EQ(result, track());
        EXPECT_BOX(10.0, 10.0, 8.0, 7.0, 0.0, shape);
    }
    beginTurning();
    press(VK_ESCAPE);
    EXPECT_EQ(InputCancel, track());
}

/// A selected box with its base at (10, 10), 10 wide and 6 high.
class BoxGripTest : public ShapeTrackerTest {
protected:
    CVexDbBox* box = select(new CVexDbBox({10, 10}, CVexGeVector2d(10, 6)));
};

struct BoxRow {
    const char* name;
    CVexGePoint2d grip;
    CVexGePoint2d to;
    CVexGePoint2d base;
    CVexGeVector2d size;
    std::vector<int> step; // the newest first
};

TEST_F(BoxGripTest, EachGripPullsItsSides)
{
    const BoxRow rows[] = {
        {"corner moves", {10, 10}, {11, 13}, {11, 13}, {10, 6}, {kUndoMove}},
        {"bottom", {15, 10}, {17, 8}, {10, 8}, {10, 8}, {kUndoMovePoint, kUndoMove}},
        {"right", {20, 13}, {23, 15}, {10, 10}, {13, 6}, {kUndoMovePoint}},
        {"right and top", {20, 16}, {22, 19}, {10, 10}, {12, 9}, {kUndoMovePoint}},
        {"top", {15, 16}, {17, 20}, {10, 10}, {10, 10}, {kUndoMovePoint}},
        {"left and top", {10, 16}, {8, 18}, {8, 10}, {12, 8}, {kUndoMovePoint, kUndoMove}},
        {"left", {10, 13}, {12, 20}, {12, 10}, {8, 6}, {kUndoMovePoint, kUndoMove}},
    };
    for (const BoxRow& row : rows) {
        SCOPED_TRACE(row.name);
        drag(row.grip, row.to);
        EXPECT_BOX(row.base.x, row.base.y, row.size.x, row.size.y, 0.0, *box);
        EXPECT_EQ(row.step, newestStep());
        EXPECT_TRUE(undo().Undo());
        EXPECT_BOX(10.0, 10.0, 10.0, 6.0, 0.0, *box);
        EXPECT_TRUE(undo().undoStack().empty()) << "one step";
    }
}

TEST_F(BoxGripTest, TheRecordsTellSizeAndWay)
{
    drag({10, 16}, {8, 18});
    EXPECT_EQ(10.0, newest().vector.x) << "the size before";
    EXPECT_EQ(6.0, newest().vector.y);
    EXPECT_TRUE(newest().continues);
    const tagUndoEditEntity& move = undo().undoStack()[1];
    EXPECT_EQ(-2.0, move.vector.x);
    EXPECT_EQ(0.0, move.vector.y);
    EXPECT_FALSE(move.continues);
}

TEST_F(BoxGripTest, TheNextCornerTurnsItAboutTheBase)
{
    drag({20, 10}, {10, 17});
    EXPECT_BOX(10.0, 10.0, 10.0, 6.0, 0.5 * kPi, *box);
    EXPECT_POINT(4.0, 20.0, diagonalOf(*box));
    EXPECT_EQ((std::vector<int>{kUndoRotate}), newestStep());
    EXPECT_POINT(10.0, 10.0, newest().point);
    EXPECT_TRUE(undo().Undo());
    EXPECT_EQ(0.0, box->Rotation());
    EXPECT_POINT(20.0, 16.0, diagonalOf(*box));
}

TEST_F(BoxGripTest, ABoxThatRunsBackFromItsBaseTurnsWithThePointerToo)
{
    box->Set({20, 20}, CVexGeVector2d(-8, -4));
    drag({12, 20}, {20, 13});
    EXPECT_BOX(20.0, 20.0, -8.0, -4.0, 0.5 * kPi, *box);
    EXPECT_POINT(20.0, 12.0, box->getGripPoint(2));
}

TEST_F(BoxGripTest, TheBandOfTheTurnStartsAtTheBaseAndThatOfASideAtThePress)
{
    const std::pair<CVexGePoint2d, CPoint> rows[] = {{{20.2, 10.1}, px(10, 10)},
                                                     {{20.2, 13.1}, px(20.2, 13.1)}};
    for (const auto& [at, start] : rows) {
        dc.clear();
        moveAt(18, 18);
        press(VK_ESCAPE);
        handler().TrackTracker(&display, px(at.x, at.y));
        const auto bands = bandsAmong(strokesOf(kBand));
        ASSERT_EQ(4u, bands.size());
        EXPECT_EQ((std::vector<CPoint>{start, start}), bands[0]);
        EXPECT_EQ((std::vector<CPoint>{start, px(18, 18)}), bands[2]);
    }
}

TEST_F(BoxGripTest, SidesGoByTheWayOfTheDragFromWhereverTheGripWasPressed)
{
    drag({20.3, 12.8}, {22.3, 12.8});
    EXPECT_BOX(10.0, 10.0, 12.0, 6.0, 0.0, *box);
}

TEST_F(BoxGripTest, ATurnedBoxIsPulledAlongItsOwnAxes)
{
    const BoxRow rows[] = {
        {"bottom", {20, 15}, {22, 16}, {22, 10}, {10, 8}, {kUndoMovePoint, kUndoMove}},
        {"right", {17, 20}, {18, 23}, {20, 10}, {13, 6}, {kUndoMovePoint}},
        {"right and top", {14, 20}, {12, 21}, {20, 10}, {11, 8}, {kUndoMovePoint}},
        {"top", {14, 15}, {12, 15}, {20, 10}, {10, 8}, {kUndoMovePoint}},
    };
    for (const BoxRow& row : rows) {
        SCOPED_TRACE(row.name);
        box->Set({20, 10}, CVexGeVector2d(10, 6), 0.5 * kPi);
        drag(row.grip, row.to);
        EXPECT_BOX(row.base.x, row.base.y, row.size.x, row.size.y, 0.5 * kPi, *box);
        EXPECT_EQ(row.step.front(), newestStep().front());
        EXPECT_TRUE(undo().Undo());
        EXPECT_BOX(20.0, 10.0, 10.0, 6.0, 0.5 * kPi, *box);
    }
}

TEST_F(BoxGripTest, AMirroredBoxIsPulledFromHowItShows)
{
    box->Mirror(CVexGeLine2d(CVexGePoint2d(0, 20),
                             CVexGePoint2d(30, 20))); // its height stays 6 and shows downwards
    box->setGripPoints();
    EXPECT_POINT(20.0, 24.0, diagonalOf(*box));
    const auto before = bytes();
    drag({15, 24}, {15, 22});
    EXPECT_POINT(10.0, 30.0, box->BasePoint());
    EXPECT_POINT(20.0, 22.0, diagonalOf(*box));
    EXPECT_TRUE(undo().Undo());
    EXPECT_POINT(20.0, 24.0, diagonalOf(*box));
    EXPECT_TRUE(before == bytes());
    EXPECT_TRUE(undo().Redo());
    EXPECT_POINT(20.0, 22.0, diagonalOf(*box));
}

TEST_F(BoxGripTest, APullAlongItsOwnSideIsNoStep)
{
    drag({20, 13}, {20, 18});
    EXPECT_BOX(10.0, 10.0, 10.0, 6.0, 0.0, *box);
    EXPECT_TRUE(undo().undoStack().empty());
    expectNothingLeftOver();
}

TEST_F(BoxGripTest, EachDragIsTakenBackToTheByte)
{
    dragBackAndForth({10, 10}, {11.5, 12.25});
    dragBackAndForth({16.5, 12.25}, {16.5, 9.125});
    dragBackAndForth({21.5, 9.1}, {18.75, 17.3}); // turned: what comes back is kept
    EXPECT_NE(0.0, box->Rotation());
    dragBackAndForth(box->getGripPoint(3), {30, 20});
    expectNothingLeftOver();
}

TEST_F(BoxGripTest, EachTransformDoesAndRecordsWhatItSays)
{
    struct Row {
        VexDb::TransFormOption option;
        CVexGePoint2d base;
        CVexGePoint2d diagonal;
        int editType;
    };
    // From (10, 10) straight up by 2.
    const Row rows[] = {
        {VexDb::TransFormMove, {10, 12}, {20, 18}, kUndoMove},
        {VexDb::TransFormRotate, {10, 10}, {4, 20}, kUndoRotate},
        {VexDb::TransFormMirror, {10, 10}, {0, 16}, kUndoMirror},
        {VexDb::TransFormScale, {10, 10}, {10.2, 10.12}, kUndoScale},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(InputPoint, transform(row.option, 10, 12));
        EXPECT_POINT(row.base.x, row.base.y, box->BasePoint());
        EXPECT_POINT(row.diagonal.x, row.diagonal.y, diagonalOf(*box));
        EXPECT_EQ(row.editType, newest().editType) << row.option;
        EXPECT_TRUE(undo().Undo());
        EXPECT_NEAR(0.0, diagonalOf(*box).distanceTo({20, 16}), 1e-9) << row.option;
    }
}

} // namespace
