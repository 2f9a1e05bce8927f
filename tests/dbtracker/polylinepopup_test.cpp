#include "platform/window/cmenu.h"
#include "shapefixture.h"
#include "tests/vexdb/polylinewords.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"

namespace {

/// A selected polyline of the drawing and its menu.
class PolylinePopupTest : public ShapeTrackerTest {
protected:
    PolylinePopupTest() { CVexDbEntityTracker::m_Menu = makePopupMenus(); }
    ~PolylinePopupTest() override { CVexDbEntityTracker::m_Menu = CMenu(); }

    CVexDbPolyline& put(std::initializer_list<Corner> corners, bool closed = false)
    {
        auto* const made = new CVexDbPolyline(0, database.get());
        setCorners(*made, corners, closed);
        polyline = select(made);
        start = bytes();
        return *made;
    }
    /// Chooses a row at a grip; what the menu answers.
    int choose(unsigned id, CVexGePoint2d at)
    {
        backend.chooseNext(id);
        return tracker().TrackMenu(&display, px(at.x, at.y));
    }
    /// The same, for an action after which the tracker stays: what has become of the polyline.
    std::string after(unsigned id, CVexGePoint2d at)
    {
        EXPECT_EQ(static_cast<int>(id), choose(id, at));
        EXPECT_TRUE(tracker().gripsShown());
        return wordsOf(*polyline);
    }
    /// One undo takes all of it back to the byte, and one redo does it again.
    void expectOneStep()
    {
        const auto end = bytes();
        EXPECT_FALSE(start == end);
        EXPECT_TRUE(undo().Undo());
        EXPECT_TRUE(undo().undoStack().empty());
        EXPECT_TRUE(start == bytes());
        EXPECT_TRUE(undo().Redo());
        EXPECT_TRUE(end == bytes());
    }
    void expectUntouched()
    {
        EXPECT_TRUE(start == bytes());
        EXPECT_TRUE(undo().undoStack().empty());
    }
    std::vector<std::string> polylines() { return visiblePolylines(*view->displayedIdSet()); }
    CVexDbPolyline* polyline = nullptr;
    std::vector<std::byte> start;
};

TEST_F(PolylinePopupTest, ChangeStartTurnsAClosedOne)
{
    put({{10, 10}, {20, 10, 1}, {20, 20}, {10, 20, 0.5}}, true);
    EXPECT_EQ("20,20 10,20 b0.5 10,10 20,10 b1 closed", after(kPopupChangeStart, {20, 20}));
    EXPECT_EQ(std::vector<int>{kUndoChangeStart}, newestStep());
    expectOneStep();
}

TEST_F(PolylinePopupTest, ChangeStartToTheLastVertexReverses)
{
    put({{10, 10}, {20, 10, 1}, {20, 20}});
    EXPECT_EQ("20,20 b-1 20,10 10,10", after(kPopupChangeStart, {20, 20}));
    expectOneStep();
}

TEST_F(PolylinePopupTest, ChangeStartElsewhereDoesNothing)
{
    put({{10, 10}, {20, 10, 1}, {20, 20}, {10, 20}});
    after(kPopupChangeStart, {10, 10}); // the first it is
    after(kPopupChangeStart, {20, 10}); // nowhere to turn to
    after(kPopupChangeStart, {25, 15}); // the middle of an arc
    expectUntouched();
}

TEST_F(PolylinePopupTest, ReverseTurnsTheDirection)
{
    put({{10, 10}, {20, 10, 1}, {20, 20}});
    EXPECT_EQ("20,20 b-1 20,10 10,10", after(kPopupReverse, {20, 10}));
    EXPECT_EQ(std::vector<int>{kUndoReverse}, newestStep());
    expectOneStep();
}

TEST_F(PolylinePopupTest, DivideCutsTheSegmentOfTheGrip)
{
    put({{10, 10}, {20, 10}, {20, 20}});
    backend.answerTextNext(CString(L"2"));
    EXPECT_EQ("10,10 15,10 20,10 20,20", after(kPopupDivide, {10, 10}));
    EXPECT_EQ(std::vector<CString>{L"Number of Divide:"}, backend.askedTexts());
    expectOneStep();
    backend.answerTextNext(CString(L"2"));
    EXPECT_EQ("10,10 15,10 20,10 20,15 20,20", after(kPopupDivide, {20, 10}));
}

TEST_F(PolylinePopupTest, DivideAtTheMiddleOfAnArcCutsThatArc)
{
    put({{10, 10}, {20, 10, 1}, {20, 20}});
    backend.answerTextNext(CString(L"2"));
    EXPECT_EQ("10,10 20,10 b0.414214 25,15 b0.414214 20,20", after(kPopupDivide, {25, 15}));
    expectOneStep();
}

TEST_F(PolylinePopupTest, DivideByLessThan2OrByNothingOrAtTheEndDoesNothing)
{
    put({{10, 10}, {20, 10}, {20, 20}});
    for (const auto& answer : {std::optional(CString(L"0")), std::optional(CString(L"1")),
                               std::optional(CString(L"x")), std::optional<CString>()}) {
        backend.answerTextNext(answer);
        after(kPopupDivide, {10, 10});
    }
    backend.answerTextNext(CString(L"3"));
    after(kPopupDivide, {20, 20});
    expectUntouched();
}

TEST_F(PolylinePopupTest, DivideOfWhatHasGoneWhileItAskedDoesNothing)
{
    struct Eraser : CVexHeadlessBackend {
        bool askText(CWnd*, const CString&, CString& text) override
        {
            victim->setErased();
            text = L"2";
            return true;
        }
        CVexDbEntity* victim = nullptr;
    } eraser;
    CVexBackend::install(&eraser);
    for (CVexDbEntity* const gone : {static_cast<CVexDbEntity*>(&put({{10, 10}, {20, 10}})),
                                     static_cast<CVexDbEntity*>(selectLine({10, 30}, {20, 30}))}) {
        eraser.victim = gone;
        eraser.chooseNext(kPopupDivide);
        const CVexGePoint2d grip = gone->getGripPoint(0);
        handler().trackers().front()->TrackMenu(&display, px(grip.x, grip.y));
        EXPECT_TRUE(undo().undoStack().empty());
    }
    CVexBackend::install(&backend);
}

TEST_F(PolylinePopupTest, BreakMakesTwoOfIt)
{
    put({{10, 10}, {20, 10}, {20, 20}, {30, 20}});
    EXPECT_EQ("10,10 20,10", after(kPopupBreak, {20, 10}));
    EXPECT_EQ((std::vector<std::string>{"10,10 20,10", "20,10 20,20 30,20"}), polylines());
    expectOneStep();
}

TEST_F(PolylinePopupTest, BreakAtAnEndOrAnArcsMiddleDoesNothing)
{
    put({{10, 10}, {20, 10, 1}, {20, 20}});
    after(kPopupBreak, {10, 10});
    after(kPopupBreak, {20, 20});
    after(kPopupBreak, {25, 15});
    expectUntouched();
}

TEST_F(PolylinePopupTest, JoinAsksWhatAndTakesItIn)
{
    put({{10, 10}, {20, 10}, {20, 20}});
    addLine({20, 20}, {30, 20});
    start = bytes();
    whileWaiting([this] { EXPECT_EQ(L"P35: ", line()); });
    clickAt(26, 20);
    type(L"\n");
    EXPECT_EQ("10,10 20,10 20,20 30,20", after(kPopupJoin, {20, 10}));
    expectOneStep();
}

TEST_F(PolylinePopupTest, JoinRefusesAClosedOne)
{
    put({{10, 10}, {20, 10}, {20, 20}}, true);
    after(kPopupJoin, {20, 10});
    ASSERT_EQ(1u, backend.shownMessages().size());
    EXPECT_EQ(L"Can not join with Closed Polyline", backend.shownMessages()[0].text);
    expectUntouched();
}

TEST_F(PolylinePopupTest, AVertexIsInsertedBeforeThatOfTheGrip)
{
    put({{10, 10}, {20, 10}, {20, 20}});
    whileWaiting([this] { EXPECT_EQ(L"P2: ", line()); });
    clickAt(15, 5);
    EXPECT_EQ("10,10 15,5 20,10 20,20", after(kPopupInsertVertex, {20, 10}));
    EXPECT_EQ(std::vector<int>{kUndoAddVertex}, newestStep());
    expectOneStep();
    type(L"5,10\n");
    EXPECT_EQ("5,10 10,10 15,5 20,10 20,20", after(kPopupInsertVertex, {10, 10}));
}

TEST_F(PolylinePopupTest, AtTheMiddleOfAnArcItGoesIntoTheArc)
{
    put({{10, 10}, {20, 10, 1}, {20, 20}});
    type(L"30,15\n");
    EXPECT_EQ("10,10 20,10 b1 30,15 20,20", after(kPopupInsertVertex, {25, 15}));
}

TEST_F(PolylinePopupTest, ACancelledInsertDoesNothing)
{
    put({{10, 10}, {20, 10}, {20, 20}});
    for (const unsigned key : {VK_ESCAPE, VK_RETURN}) {
        press(key);
        after(kPopupInsertVertex, {20, 10});
    }
    database->setLastPoint({0, 0});
    expectUntouched();
}

TEST_F(PolylinePopupTest, DeleteVertexTakesItOut)
{
    put({{10, 10}, {20, 10, 0.5}, {20, 20}, {30, 20}});
    EXPECT_EQ("10,10 20,20 30,20", after(kPopupDeleteVertex, {20, 10}));
    expectOneStep();
    EXPECT_EQ("20,20 30,20", after(kPopupDeleteVertex, {10, 10}));
    EXPECT_EQ("20,20 30,20", after(kPopupDeleteVertex, {20, 20})); // two stay
}

TEST_F(PolylinePopupTest, LineArcFlipsTheSegmentOfTheGrip)
{
    put({{10, 10}, {20, 10, -1}, {20, 20}});
    EXPECT_EQ("10,10 b0.01 20,10 b-1 20,20", after(kPopupLineArc, {10, 10}));
    EXPECT_EQ(std::vector<int>{kUndoChangeBulge}, newestStep());
    expectOneStep();
    EXPECT_EQ("10,10 b0.01 20,10 20,20", after(kPopupLineArc, {15, 15})); // by the arc's middle
    EXPECT_EQ("10,10 20,10 20,20", after(kPopupLineArc, {10, 10}));
    const auto records = undo().undoStack().size();
    after(kPopupLineArc, {20, 20}); // from the last vertex of an open one nothing leaves
    EXPECT_EQ(records, undo().undoStack().size());
}

TEST_F(PolylinePopupTest, ExplodeLeavesLinesAndArcsAndLetsTheTrackerGo)
{
    put({{10, 10}, {20, 10, 1}, {20, 20}});
    EXPECT_EQ(-1, choose(kPopupExplode, {20, 10}));
    EXPECT_TRUE(polyline->isErased());
    EXPECT_TRUE(handler().trackers().empty());
    EXPECT_EQ(3u, database->blocks().getCurrentRecord()->getNumEntity());
    EXPECT_EQ(VexDb::kArc, database->lastEntity()->classType());
    EXPECT_EQ((std::vector<int>{kUndoErase, kUndoCreate, kUndoCreate}), newestStep());
    expectOneStep();
}

TEST_F(PolylinePopupTest, OutsideTheDrawingAPolylineCanOnlyBeLetGo)
{
    CVexDbPolyline loose(0, database.get());
    setCorners(loose, {{10, 10}, {20, 10}});
    const std::unique_ptr<CVexDbEntityTracker> grips(
        handler().CreateTracker(&display, &loose, VexDb::TransFormNone, false));
    grips->TrackMenu(&display, px(10, 10));
    for (const CMenu::Item& item : backend.shownMenus()[0].items()) {
        EXPECT_EQ(item.id == kPopupUnSelect, item.id != 0 && item.enabled) << item.id;
    }
}

TEST_F(PolylinePopupTest, TypedAnswersOfTheCommonActionsStandForClicks)
{
    put({{10, 10}, {20, 10}});
    type(L"12,13\n");
    EXPECT_EQ("12,13 22,13", after(kPopupMove, {10, 10}));
    type(L"5\n"); // to the right
    EXPECT_EQ("17,13 27,13", after(kPopupMove, {12, 13}));
    type(L"90\n");
    EXPECT_EQ("17,13 17,23", after(kPopupRotate, {17, 13}));
    type(L"2\n");
    EXPECT_EQ("17,13 17,33", after(kPopupScale, {17, 13}));
    type(L"20,13\n");
    after(kPopupCopy, {17, 13});
    EXPECT_EQ((std::vector<std::string>{"17,13 17,33", "20,13 20,33"}), polylines());
    EXPECT_EQ(5u, undo().undoStack().size());
}

/// What other kinds become by "Divide".
class DividePopupTest : public PolylinePopupTest {
protected:
    std::vector<std::string> divided(CVexDbEntity* entity, CVexGePoint2d grip, const wchar_t* count)
    {
        CVexDbObjectId id;
        database->addEntity(entity, id);
        handler().DoDragEntity(entity, {});
        start = bytes();
        backend.answerTextNext(CString(count));
        EXPECT_EQ(-1, choose(kPopupDivide, grip));
        EXPECT_TRUE(entity->isErased());
        EXPECT_EQ(1u, handler().trackers().size());
        return polylines();
    }
};

TEST_F(DividePopupTest, ALineBecomesAPolylineOfEqualParts)
{
    auto* const line = new CVexDbLine({10, 10}, {20, 10});
    EXPECT_EQ((std::vector<std::string>{"10,10 12.5,10 15,10 17.5,10 20,10"}),
              divided(line, {15, 10}, L"4"));
    EXPECT_EQ((std::vector<int>{kUndoErase, kUndoCreate}), newestStep());
    EXPECT_EQ(VexDb::kPolyline, tracker().GetEntity()->classType());
    expectOneStep();
}

TEST_F(DividePopupTest, AnArcIsCutIntoEqualArcs)
{
    auto* const arc = new CVexDbArc({20, 20}, 10.0, 0.0, kPi);
    EXPECT_EQ((std::vector<std::string>{"30,20 b0.414214 20,30 b0.414214 10,20"}),
              divided(arc, {20, 20}, L"2"));
    expectOneStep();
}

TEST_F(DividePopupTest, ACircleIsCutFromItsRight)
{
    EXPECT_EQ((std::vector<std::string>{
                  "30,20 b0.414214 20,30 b0.414214 10,20 b0.414214 20,10 b0.414214 closed"}),
              divided(new CVexDbCircle({20, 20}, 10.0), {20, 20}, L"4"));
    expectOneStep();
}

TEST_F(DividePopupTest, ByOneALineIsMerelyConverted)
{
    EXPECT_EQ((std::vector<std::string>{"10,10 20,10"}),
              divided(new CVexDbLine({10, 10}, {20, 10}), {15, 10}, L"1"));
}

} // namespace
