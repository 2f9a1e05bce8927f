#include "editingfixture.h"
#include "tests/vexdb/polylinewords.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"

#include <numbers>

namespace {

/// An angled polyline (5, 30), (15, 30), (15, 36), (25, 36) beside the two lines.
class PolylineEditCommandTest : public EditingTest {
protected:
    PolylineEditCommandTest()
    {
        angled = put({{5, 30}, {15, 30}, {15, 36}, {25, 36}});
        start = bytes();
    }

    CVexDbPolyline* put(std::initializer_list<Corner> corners, bool closed = false)
    {
        auto* const polyline = add(new CVexDbPolyline(0, database.get()));
        setCorners(*polyline, corners, closed);
        return polyline;
    }
    /// A square of 10 units from (25, 20), whose last side but one is a half circle.
    CVexDbPolyline* putClosed()
    {
        CVexDbPolyline* const made = put({{25, 20}, {35, 20}, {35, 30, 1}, {25, 30, 0.5}}, true);
        start = bytes();
        return made;
    }
    CVexDbPolyline* edit()
    {
        unsigned long step = 5;
        auto* const edited =
            static_cast<CVexDbPolyline*>(handler().DoCommand(VexDb::CmdPolylineEdit, step));
        EXPECT_EQ(5u, step);
        expectReleased();
        return edited;
    }
    /// Picks at a point and answers by `typed`, where Escape stands as '#'.
    CVexDbPolyline* edit(CVexGePoint2d pick, std::wstring_view typed)
    {
        clickAt(pick.x, pick.y);
        answer(typed);
        return edit();
    }
    void answer(std::wstring_view typed)
    {
        for (const wchar_t character : typed) {
            if (character == L'#') {
                press(VK_ESCAPE);
            } else {
                type({&character, 1});
            }
        }
    }
    std::vector<std::string> polylines() { return visiblePolylines(*view->displayedIdSet()); }
    [[nodiscard]] std::vector<std::wstring> boxes() const
    {
        std::vector<std::wstring> texts;
        for (const VexShownMessage& shown : backend.shownMessages()) {
            texts.push_back(shown.text.str());
        }
        return texts;
    }

    CVexDbPolyline* angled = nullptr;
};

// What is picked.

TEST_F(PolylineEditCommandTest, TheDialogueAsksForAPolylineAndWhatToDo)
{
    EXPECT_EQ(angled, edit({10, 30}, L"c"));
    EXPECT_EQ(L"P35: ", told());
    type(L"\n");
    EXPECT_EQ(nullptr, edit());
    EXPECT_EQ(L"P35: ", line());
}

TEST_F(PolylineEditCommandTest, WithoutAPickNothingHappens)
{
    type(L"\n");
    EXPECT_EQ(nullptr, edit());
    press(VK_ESCAPE);
    EXPECT_EQ(nullptr, edit());
    EXPECT_EQ(nullptr, edit()); // lost
    clickAt(10, 30);
    EXPECT_EQ(angled, edit()); // lost at the key
    expectUntouched();
}

TEST_F(PolylineEditCommandTest, EveryWayOutOfEveryQuestionChangesNothing)
{
    for (const wchar_t* const asked : {L"b", L"j", L"f", L"f2\n"}) {
        EXPECT_EQ(angled, edit({10, 30}, asked)); // lost
        expectUntouched();
        EXPECT_EQ(angled, edit({10, 30}, std::wstring(asked) + L"#"));
        expectUntouched();
        clickAt(10, 30);
        type(asked);
        mouse(WM_RBUTTONDOWN, {5, 5});
        EXPECT_EQ(angled, edit());
        expectUntouched();
        EXPECT_EQ(0u, backend.queued()) << asked;
    }
}

TEST_F(PolylineEditCommandTest, ACommandInsideAQuestionGivesNull)
{
    CVexDbEntity* inner = first;
    unsigned long step = 0;
    clickAt(10, 30);
    type(L"b");
    whileWaiting([&] { inner = handler().DoCommand(VexDb::CmdPolylineEdit, step); });
    press(VK_ESCAPE);
    EXPECT_EQ(angled, edit());
    EXPECT_EQ(nullptr, inner);
    expectUntouched();
}

TEST_F(PolylineEditCommandTest, TheSelectionIsDropped)
{
    select(angled);
    press(VK_ESCAPE);
    edit();
    EXPECT_TRUE(handler().trackers().empty());
    EXPECT_TRUE(handler().selectedEntities().empty());
}

TEST_F(PolylineEditCommandTest, ALineIsConvertedUnlessTheAnswerIsNo)
{
    for (const wchar_t* const yes : {L"y", L"Y", L"\n", L"#"}) {
        CVexDbPolyline* const made = edit({11, 10}, std::wstring(yes) + L"##");
        ASSERT_NE(nullptr, made) << yes;
        EXPECT_EQ("10,10 12,10", wordsOf(*made));
        EXPECT_TRUE(first->isErased() && made->IsDbEntity());
        EXPECT_EQ((Records{{kUndoErase, false}, {kUndoCreate, true}}), records());
        undo().Undo();
        EXPECT_TRUE(!first->isErased() && made->isErased());
        undo().clear();
    }
    EXPECT_EQ(nullptr, edit({11, 10}, L"n"));
    EXPECT_FALSE(first->isErased());
    EXPECT_TRUE(undo().undoStack().empty());
}

TEST_F(PolylineEditCommandTest, AnArcIsConvertedWithItsBulgeAndItsProperties)
{
    auto* const arc = add(new CVexDbArc({30, 10}, 4.0, 0.0, std::numbers::pi / 2.0));
    arc->setColor(3, true);
    start = bytes();
    CVexDbPolyline* const made = edit({32.83, 12.83}, L"\n##");
    ASSERT_NE(nullptr, made);
    EXPECT_EQ("34,10 b0.414214 30,14", wordsOf(*made));
    EXPECT_EQ(3, made->ColorIndex());
    expectExactUndo();
}

TEST_F(PolylineEditCommandTest, AnythingElseIsRefused)
{
    add(new CVexDbCircle({30, 10}, 4.0));
    add(new CVexDbBox({18, 3}, 4.0, 4.0, 0.0));
    start = bytes();
    EXPECT_EQ(nullptr, edit({34, 10}, L""));
    EXPECT_EQ(nullptr, edit({20, 3}, L""));
    EXPECT_EQ(std::vector<std::wstring>(2, L"Select Polyline, Line, Arc, Sprial, Spline"), boxes());
    expectUntouched();
}

// Close and open.

TEST_F(PolylineEditCommandTest, CCloses)
{
    edit({10, 30}, L"c");
    EXPECT_TRUE(angled->IsClosed());
    EXPECT_EQ((Records{{kUndoClose, false}}), records());
    EXPECT_EQ(angled, edit({10, 30}, L"C")); // once is enough
    EXPECT_EQ(1u, records().size());
    expectExactUndo();
}

TEST_F(PolylineEditCommandTest, CNeedsThreeVertices)
{
    CVexDbPolyline* const two = put({{30, 10}, {35, 10}});
    start = bytes();
    EXPECT_EQ(two, edit({32, 10}, L"c"));
    expectUntouched();
}

TEST_F(PolylineEditCommandTest, OOpensAndUndoBringsTheClosingArcBack)
{
    CVexDbPolyline* const closed = putClosed();
    edit({30, 20}, L"o");
    EXPECT_FALSE(closed->IsClosed());
    EXPECT_EQ((Records{{kUndoOpen, false}}), records());
    edit({30, 20}, L"o");
    EXPECT_EQ(1u, records().size());
    expectExactUndo();
    undo().Undo();
    EXPECT_EQ("25,20 35,20 35,30 b1 25,30 b0.5 closed", wordsOf(*closed));
}

// Break.

TEST_F(PolylineEditCommandTest, BBreaksAtAVertex)
{
    angled->setColor(3, true);
    start = bytes();
    undo().clear();
    edit({10, 30}, L"b15,30\n");
    EXPECT_EQ((std::vector<std::string>{"5,30 15,30", "15,30 15,36 25,36"}), polylines());
    EXPECT_EQ(3, database->lastEntity()->ColorIndex());
    EXPECT_EQ((Records{{kUndoChangeBulge, false}, // two for each vertex that goes, and the tail
                       {kUndoRemoveVertex, true},
                       {kUndoChangeBulge, true},
                       {kUndoRemoveVertex, true},
                       {kUndoCreate, true}}),
              records());
    EXPECT_TRUE(undo().Undo());
    EXPECT_EQ((std::vector<std::string>{"5,30 15,30 15,36 25,36"}), polylines());
    undo().Redo();
    expectExactUndo();
}

TEST_F(PolylineEditCommandTest, NoKeyAtAllMeansBreak)
{
    for (const wchar_t* const none : {L"\n", L"#", L"x\n"}) {
        edit({10, 30}, std::wstring(none) + L"15,36\n");
        EXPECT_EQ((std::vector<std::string>{"5,30 15,30 15,36", "15,36 25,36"}), polylines());
        undo().Undo();
    }
}

TEST_F(PolylineEditCommandTest, GripSnapIsOnForThePickAlone)
{
    bool during = false;
    clickAt(10, 30);
    type(L"b");
    whileWaiting([&] { during = settings().m_bGripSnap; });
    clickAt(15.1, 30.1);
    settings().m_bGripSnap = false;
    edit();
    EXPECT_TRUE(during);
    EXPECT_FALSE(settings().m_bGripSnap);
    EXPECT_EQ((std::vector<std::string>{"5,30 15,30", "15,30 15,36 25,36"}), polylines());
}

TEST_F(PolylineEditCommandTest, AnEndOrNoVertexBreaksNothing)
{
    for (const wchar_t* const at : {L"5,30\n", L"25,36\n", L"12,30\n", L"15.002,30\n", L"#"}) {
        edit({10, 30}, std::wstring(L"b") + at);
        expectUntouched();
    }
}

TEST_F(PolylineEditCommandTest, AClosedOneIsOpenedFirstAndKeepsEverySegment)
{
    CVexDbPolyline* const closed = putClosed();
    closed->SetWidthsAt(0, -1, 2);
    closed->SetWidthsAt(3, -1, 4);
    edit({30, 20}, L"b35,30\n");
    EXPECT_EQ((std::vector<std::string>{"5,30 15,30 15,36 25,36", "25,20 35,20 35,30",
                                        "35,30 b1 25,30 b0.5 25,20"}),
              polylines());
    double width = 0.0;
    double endWidth = 0.0;
    const auto& tail = static_cast<const CVexDbPolyline&>(*database->lastEntity());
    EXPECT_TRUE(tail.GetWidthsAt(1, width, endWidth) && endWidth == 4.0);
    EXPECT_TRUE(tail.GetWidthsAt(2, width, endWidth) && endWidth == 2.0);
}

TEST_F(PolylineEditCommandTest, ABreakOfAClosedOneIsUndoneToTheByte)
{
    putClosed();
    edit({30, 20}, L"b35,30\n");
    EXPECT_TRUE(undo().Undo());
    EXPECT_TRUE(undo().undoStack().empty());
    EXPECT_TRUE(start == bytes());
    undo().Redo();
    expectExactUndo();
}

TEST_F(PolylineEditCommandTest, ItsStartIsNoPlaceToBreakAtButItsLastVertexIs)
{
    putClosed();
    edit({30, 20}, L"b25,20\n");
    expectUntouched();
    edit({30, 20}, L"b25,30\n");
    EXPECT_EQ("25,30 b0.5 25,20", polylines().back());
}

// Join.

TEST_F(PolylineEditCommandTest, JTakesLinesArcsAndPolylinesInAtBothEnds)
{
    addLine({25, 36}, {30, 36});
    add(new CVexDbArc({30, 34}, 2.0, 0.0, std::numbers::pi / 2.0)); // (32, 34) to (30, 36)
    put({{5, 25}, {5, 28, 0.25}, {5, 30}});
    start = bytes();
    clickAt(10, 30);
    type(L"j");
    clickAt(27, 36);
    clickAt(31.41, 35.41);
    clickAt(5, 26);
    type(L"\n");
    EXPECT_EQ(angled, edit());
    EXPECT_EQ(
        (std::vector<std::string>{"5,25 5,28 b0.25 5,30 15,30 15,36 25,36 30,36 b-0.414214 32,34"}),
        polylines());
    EXPECT_EQ(1, std::ranges::count(records(), std::pair<int, bool>(kUndoErase, false)));
    EXPECT_EQ(2u, lines().size());
    EXPECT_TRUE(undo().Undo());
    EXPECT_TRUE(undo().undoStack().empty());
    undo().Redo();
    expectExactUndo();
}

TEST_F(PolylineEditCommandTest, WhatReachesAnEndThroughAnotherJoinsWhateverTheOrder)
{
    addLine({30, 36}, {35, 36}); // reaches it through the next one
    addLine({25, 36}, {30, 36});
    start = bytes();
    clickAt(10, 30);
    type(L"j");
    clickAt(33, 36);
    clickAt(27, 36);
    type(L"\n");
    edit();
    EXPECT_EQ("5,30 15,30 15,36 25,36 30,36 35,36", wordsOf(*angled));
    expectExactUndo();
}

TEST_F(PolylineEditCommandTest, AJoinRecordsTheErasureEachVertexAndTheOldEnd)
{
    addLine({25, 36}, {30, 36});
    clickAt(10, 30);
    type(L"j");
    clickAt(27, 36);
    type(L"\n");
    edit();
    EXPECT_EQ((Records{{kUndoErase, false},
                       {kUndoChangeBulge, true},
                       {kUndoAddVertex, true},
                       {kUndoChangeBulge, true}}),
              records());
    EXPECT_EQ(4, newest().index);
}

TEST_F(PolylineEditCommandTest, WhatTouchesNoEndStaysInTheDrawingAndInTheSet)
{
    VexEntitySet set{first, angled};
    EXPECT_EQ(InputPoint, handler().CommandJoinPolyline(angled, set, false));
    EXPECT_EQ((VexEntitySet{first, angled}), set);
    EXPECT_FALSE(first->isErased());
    expectUntouched();
    CVexDbLine* const meets = addLine({25, 36}, {30, 36});
    set = {first, meets};
    handler().CommandJoinPolyline(angled, set, false);
    EXPECT_EQ((VexEntitySet{first}), set);
    EXPECT_TRUE(meets->isErased());
}

TEST_F(PolylineEditCommandTest, ACircleIsPassedOver)
{
    CVexDbCircle* const circle = add(new CVexDbCircle({28, 36}, 3.0)); // through the end
    VexEntitySet set{circle};
    handler().CommandJoinPolyline(angled, set, false);
    EXPECT_FALSE(circle->isErased());
    EXPECT_EQ(4u, angled->NumVerts());
}

TEST_F(PolylineEditCommandTest, AClosedOneJoinsNothing)
{
    putClosed();
    edit({30, 20}, L"j");
    EXPECT_EQ(std::vector<std::wstring>{L"Can not join with Closed Polyline"}, boxes());
    expectUntouched();
}

TEST_F(PolylineEditCommandTest, ThePiecesOfABreakJoinToWhatTheyWere)
{
    put({{5, 2, 0.5}, {10, 2, -1}, {15, 2}, {20, 5, 2}, {25, 2}});
    for (const int at : {1, 2, 3}) {
        auto* const whole = static_cast<CVexDbPolyline*>(database->lastEntity());
        const std::string before = wordsOf(*whole);
        CVexDbPolyline* const tail = handler().CommandBreakPolyline(whole, at, false);
        ASSERT_NE(nullptr, tail);
        add(tail);
        VexEntitySet set{tail};
        handler().CommandJoinPolyline(whole, set, false);
        EXPECT_EQ(before, wordsOf(*whole)) << at;
        EXPECT_TRUE(tail->isErased());
        database->setLastEntity(whole);
    }
}

TEST_F(PolylineEditCommandTest, WhatWasExplodedJoinsToWhatItWas)
{
    CVexDbPolyline* const whole = put({{5, 2, 0.5}, {10, 2, -1}, {15, 2}, {20, 5, 2}, {25, 2}});
    const std::string before = wordsOf(*whole);
    select(whole);
    run(VexDb::CmdExplode);
    EXPECT_TRUE(whole->isErased());
    CVexDbPolyline* const piece = edit({17.5, 3.5}, L"y##"); // the straight one
    ASSERT_NE(nullptr, piece);
    VexEntitySet pieces;
    for (const CVexDbObjectId& id : *view->displayedIdSet()) {
        auto* const entity = static_cast<CVexDbEntity*>(id.getPObject());
        if (entity->isVisiable()) {
            pieces.insert(entity);
        }
    }
    handler().CommandJoinPolyline(piece, pieces, false);
    EXPECT_EQ(before, wordsOf(*piece));
}

TEST_F(PolylineEditCommandTest, ABreakBeyondTheVerticesGivesNull)
{
    for (const int at : {-1, 0, 3, 4, 1000}) {
        EXPECT_EQ(nullptr, handler().CommandBreakPolyline(angled, at, false)) << at;
    }
    expectUntouched();
}

// Fillet.

TEST_F(PolylineEditCommandTest, FRoundsTheCornerNextToEachPick)
{
    clickAt(10, 30);
    type(L"f2\n");
    clickAt(14, 30);
    clickAt(15, 35);
    press(VK_ESCAPE);
    edit();
    EXPECT_EQ("5,30 13,30 b0.414214 15,32 15,34 b-0.414214 17,36 25,36", wordsOf(*angled));
    EXPECT_EQ(2, received(WM_PAINT));
    undo().Undo(); // each pick is a step
    EXPECT_EQ("5,30 13,30 b0.414214 15,32 15,36 25,36", wordsOf(*angled));
    undo().Redo();
    expectExactUndo();
}

TEST_F(PolylineEditCommandTest, TheNearerEndOfTheSegmentIsTheCorner)
{
    clickAt(10, 30);
    type(L"f1\n");
    clickAt(15, 32);
    press(VK_ESCAPE);
    edit();
    EXPECT_EQ("5,30 14,30 b0.414214 15,31 15,36 25,36", wordsOf(*angled));
}

TEST_F(PolylineEditCommandTest, TheMiddleOfASegmentCountsToItsEnd)
{
    clickAt(10, 30);
    type(L"f1\n");
    clickAt(15, 33);
    press(VK_ESCAPE);
    edit();
    EXPECT_EQ("5,30 15,30 15,35 b-0.414214 16,36 25,36", wordsOf(*angled));
}

TEST_F(PolylineEditCommandTest, TheClosingSegmentLeadsToTheFirstCorner)
{
    CVexDbPolyline* const square = put({{25, 20}, {35, 20}, {35, 30}, {25, 30}}, true);
    start = bytes();
    clickAt(30, 20);
    type(L"f2\n");
    clickAt(25, 21);
    press(VK_ESCAPE);
    edit();
    EXPECT_EQ("25,22 b0.414214 27,20 35,20 35,30 25,30 closed", wordsOf(*square));
    expectExactUndo();
}

TEST_F(PolylineEditCommandTest, AlongAnArcOfNegativeBulgeTooTheNearerEndCounts)
{
    CVexDbPolyline* const bent = put({{20, 10}, {25, 10, -1}, {35, 10}, {39, 10}});
    const std::string before = wordsOf(*bent);
    for (const auto& [pick, corner] :
         {std::pair(CVexGePoint2d(26, 13), 1), std::pair(CVexGePoint2d(34, 13), 2)}) {
        clickAt(22, 10);
        type(L"f0.5\n");
        clickAt(pick.x, pick.y);
        press(VK_ESCAPE);
        edit();
        CVexGePoint2d moved;
        bent->GetPointAt(static_cast<unsigned>(corner), moved);
        EXPECT_NE(before, wordsOf(*bent)) << corner;
        EXPECT_NEAR(corner == 1 ? 25.0 : 35.0, moved.x, 1.0) << corner;
        undo().Undo();
        EXPECT_EQ(before, wordsOf(*bent));
    }
}

TEST_F(PolylineEditCommandTest, ARadiusByAClickIsMeasuredFromTheCornerNextToThePick)
{
    clickAt(14, 30);
    type(L"f");
    clickAt(15, 32); // 2 away from (15, 30)
    clickAt(14, 30);
    press(VK_ESCAPE);
    edit();
    EXPECT_EQ("5,30 13,30 b0.414214 15,32 15,36 25,36", wordsOf(*angled));
}

TEST_F(PolylineEditCommandTest, ARoundsAllCornersAsOneStep)
{
    clickAt(10, 30);
    type(L"f2\na");
    edit();
    EXPECT_EQ("5,30 13,30 b0.414214 15,32 15,34 b-0.414214 17,36 25,36", wordsOf(*angled));
    EXPECT_TRUE(undo().Undo());
    EXPECT_TRUE(undo().undoStack().empty());
    EXPECT_TRUE(start == bytes());
}

// The pick box is not divided by the hundred of the logical units: 50 drawing units here.
TEST_F(PolylineEditCommandTest, APickFarFromThePolylineEndsIt)
{
    clickAt(10, 30);
    type(L"f2\n15,85\n"); // 49 beside it
    type(L"200,200\n");
    edit();
    EXPECT_EQ("5,30 15,30 15,34 b-0.414214 17,36 25,36", wordsOf(*angled));
    EXPECT_EQ(0u, backend.queued());
}

TEST_F(PolylineEditCommandTest, EnterAtAPickRoundsTheCornerNextToTheLastPoint)
{
    database->setLastPoint({14, 30});
    edit({10, 30}, L"f2\n\n#");
    EXPECT_EQ("5,30 13,30 b0.414214 15,32 15,36 25,36", wordsOf(*angled));
    EXPECT_EQ(0u, backend.queued()); // Escape ended it, Enter did not
}

TEST_F(PolylineEditCommandTest, WithoutARadiusOrACornerNothingIsAsked)
{
    for (const wchar_t* const radius : {L"0\n", L"0.001\n", L"-1\n", L"#"}) {
        edit({10, 30}, std::wstring(L"f") + radius);
        EXPECT_EQ(0u, backend.queued());
        expectUntouched();
    }
    put({{30, 10}, {35, 10}});
    start = bytes();
    edit({32, 10}, L"f");
    EXPECT_EQ(0u, backend.queued());
    expectUntouched();
}

TEST_F(PolylineEditCommandTest, TheCursorsTellWhatIsAsked)
{
    handler().SetCrossCursor(VexCursor::kHand);
    std::vector<VexCursor> seen;
    const auto watch = [&] { whileWaiting([&] { seen.push_back(backend.cursor()); }); };
    clickAt(10, 30);
    type(L"f");
    watch();
    type(L"2\n");
    watch();
    press(VK_ESCAPE);
    edit();
    EXPECT_EQ((std::vector{VexCursor::kHand, VexCursor::kPickBox}), seen);
    watch();
    press(VK_ESCAPE);
    CVexGePoint2d point;
    handler().GetGePoint(VexDb::PromptStartPoint, point);
    EXPECT_EQ(VexCursor::kHand, seen.back()); // the handler's is back
}

} // namespace
