#include "platform/window/cmenu.h"
#include "trackerfixture.h"

#include <map>

namespace {

/// A selected line from (10, 10) to (20, 10), whose menus are loaded.
class PopupTest : public TrackerTest {
protected:
    PopupTest() { CVexDbEntityTracker::m_Menu = makePopupMenus(); }
    ~PopupTest() override { CVexDbEntityTracker::m_Menu = CMenu(); }

    CVexDbLine* line = selectLine({10, 10}, {20, 10});

    /// The menu of the end at (20, 10); `id` is chosen from it.
    int choose(unsigned id, CVexGePoint2d at = {20, 10})
    {
        backend.chooseNext(id);
        return tracker().TrackMenu(&display, px(at.x, at.y));
    }
    CVexDbLine& newestLine() { return static_cast<CVexDbLine&>(*database->lastEntity()); }
    [[nodiscard]] std::size_t records() { return undo().undoStack().size(); }
    static std::vector<unsigned> enabled(const CMenu& menu)
    {
        std::vector<unsigned> ids;
        for (const CMenu::Item& item : menu.items()) {
            if (item.id != 0 && item.enabled) {
                ids.push_back(item.id);
            }
        }
        return ids;
    }
};

TEST_F(PopupTest, TheSixMenusHoldTheirRows)
{
    const std::map<unsigned, std::wstring> labels = {
        {30065, L"UnSelect"},      {30066, L"Copy"},           {30067, L"Move"},
        {30068, L"Rotate"},        {30069, L"Scale"},          {30070, L"Mirror X"},
        {30071, L"Mirror Y"},      {30072, L"Mirror by Line"}, {30073, L"Explode"},
        {30074, L"Erase"},         {30075, L"Change Start"},   {30076, L"Reverse Polyline"},
        {30077, L"Divide"},        {30078, L"Break"},          {30079, L"Join"},
        {30080, L"Insert Vertex"}, {30081, L"Delete Vertex"},  {30082, L"Line/Arc"},
        {30083, L"Change Param"},  {30120, L"Properties.."},   {30121, L"Properties.."}};
    CMenu menus = makePopupMenus();
    ASSERT_EQ(6u, menus.subMenuCount());
    const wchar_t* const names[] = {L"EntityPop", L"Polyline", L"CSpline",
                                    L"Text",      L"Hatch",    L"General"};
    std::map<unsigned, std::wstring> found;
    for (int at = 0; at < 6; ++at) {
        EXPECT_EQ(names[at], menus.GetSubMenu(at)->name().str());
        for (const CMenu::Item& item : menus.GetSubMenu(at)->items()) {
            if (at < kPopupGeneral && item.id != 0) {
                found[item.id] = item.label.str();
            }
        }
    }
    EXPECT_EQ(labels, found);
    EXPECT_EQ(30113u, menus.GetSubMenu(kPopupGeneral)->items().front().id);
    EXPECT_EQ(30118u, menus.GetSubMenu(kPopupGeneral)->items().back().id);
}

TEST_F(PopupTest, OffTheGripsNoMenuIsShown)
{
    EXPECT_EQ(0, choose(kPopupErase, {13, 20}));
    EXPECT_TRUE(backend.shownMenus().empty());
}

TEST_F(PopupTest, WhileSomethingRunsNoMenuIsShown)
{
    const VexBusyScope busy(handler());
    EXPECT_EQ(0, choose(kPopupErase));
    EXPECT_TRUE(backend.shownMenus().empty());
}

TEST_F(PopupTest, WithoutMenusNothingIsShown)
{
    CVexDbEntityTracker::m_Menu = CMenu();
    EXPECT_EQ(0, choose(kPopupErase));
}

TEST_F(PopupTest, ALineOffersWhatCanBeDoneToIt)
{
    EXPECT_EQ(0, choose(0));
    ASSERT_EQ(1u, backend.shownMenus().size());
    EXPECT_EQ(backend.shownMenus()[0].name(), L"EntityPop");
    EXPECT_EQ((std::vector<unsigned>{kPopupUnSelect, kPopupCopy, kPopupMove, kPopupRotate,
                                     kPopupScale, kPopupMirrorX, kPopupMirrorY, kPopupMirrorLine,
                                     kPopupErase, kPopupDivide}),
              enabled(backend.shownMenus()[0]));
    EXPECT_EQ(0u, records());
}

TEST_F(PopupTest, OutsideTheDrawingALineCanOnlyBeLetGo)
{
    CVexDbLine loose(CVexGePoint2d(1, 20), CVexGePoint2d(5, 20));
    loose.setDatabase(database.get());
    CVexLineTracker grips(&display, &loose, VexDb::TransFormNone, false);
    grips.TrackMenu(&display, px(1, 20));
    EXPECT_EQ(std::vector<unsigned>{kPopupUnSelect}, enabled(backend.shownMenus()[0]));
}

TEST_F(PopupTest, UnSelectAsksTheHostToRemoveTheTracker)
{
    EXPECT_EQ(-1, choose(kPopupUnSelect));
    EXPECT_EQ(0u, records());
    handler().RemoveTracker(&tracker());
    EXPECT_TRUE(handler().trackers().empty());
}

TEST_F(PopupTest, MoveGoesFromTheGripToTheClick)
{
    whileWaiting([this] { EXPECT_EQ(L"P11: ", CommandTest::line()); });
    moveAt(25, 12);
    clickAt(23, 14);
    EXPECT_EQ(static_cast<int>(kPopupMove), choose(kPopupMove));
    EXPECT_LINE(13.0, 14.0, 23.0, 14.0, *line);
    ASSERT_EQ(1u, records());
    EXPECT_EQ(kUndoMove, newest().editType);
    EXPECT_FALSE(newest().continues);
    EXPECT_EQ(L"", CommandTest::line());
    EXPECT_EQ(VexDb::TransFormNone, tracker().transOpt());
    EXPECT_GT(display.invalidations(), 0);
}

TEST_F(PopupTest, MoveTakesATypedTargetExactly)
{
    type(L"20.125,13.0625\n");
    choose(kPopupMove);
    EXPECT_EQ(20.125, line->EndPoint().x);
    EXPECT_EQ(13.0625, line->EndPoint().y);
    EXPECT_EQ(0.125, newest().vector.x);
    EXPECT_EQ(1u, records());
    type(L"2<90\n");
    choose(kPopupMove, {20.1, 13.1});
    EXPECT_POINT(20.125, 15.0625, line->EndPoint());
}

TEST_F(PopupTest, ACancelledActionChangesNothingAndIsStillShown)
{
    for (const unsigned id :
         {kPopupCopy, kPopupMove, kPopupRotate, kPopupScale, kPopupMirrorLine}) {
        moveAt(25, 12);
        press(VK_ESCAPE);
        EXPECT_EQ(static_cast<int>(id), choose(id));
        EXPECT_LINE(10.0, 10.0, 20.0, 10.0, *line);
        EXPECT_EQ(0u, records()) << id;
        EXPECT_EQ(1u, database->blocks().getCurrentRecord()->getNumEntity()) << id;
        EXPECT_TRUE(tracker().gripsShown()) << id;
        EXPECT_EQ(nullptr, GetCapture());
    }
}

TEST_F(PopupTest, CopyAddsALineAndRecordsItsCreation)
{
    clickAt(23, 14);
    EXPECT_EQ(static_cast<int>(kPopupCopy), choose(kPopupCopy));
    EXPECT_LINE(10.0, 10.0, 20.0, 10.0, *line);
    EXPECT_LINE(13.0, 14.0, 23.0, 14.0, newestLine());
    ASSERT_EQ(1u, records());
    EXPECT_EQ(kUndoCreate, newest().editType);
    EXPECT_EQ(newestLine().objectId(), newest().entity);
    EXPECT_EQ((VexEntitySet{line}), handler().selectedEntities());
    EXPECT_TRUE(undo().Undo());
    EXPECT_FALSE(newestLine().isVisiable());
}

TEST_F(PopupTest, CopyTakesATypedTarget)
{
    type(L"20,15\n");
    choose(kPopupCopy);
    EXPECT_LINE(10.0, 15.0, 20.0, 15.0, newestLine());
    EXPECT_EQ(1u, records());
}

TEST_F(PopupTest, RotateByAClickOrByDegrees)
{
    clickAt(20, 14);
    choose(kPopupRotate);
    EXPECT_LINE(20.0, 0.0, 20.0, 10.0, *line);
    EXPECT_EQ(kUndoRotate, newest().editType);
    type(L"90\n");
    choose(kPopupRotate);
    EXPECT_LINE(30.0, 10.0, 20.0, 10.0, *line);
    EXPECT_NEAR(0.0, newest().vector.x, 1e-12);
    EXPECT_NEAR(1.0, newest().vector.y, 1e-12);
    EXPECT_POINT(20.0, 10.0, newest().point);
    type(L"c90\n"); // text, and so no number in front
    choose(kPopupRotate);
    EXPECT_EQ(2u, records());
}

TEST_F(PopupTest, ATypedTextBeginsWithItsNumber)
{
    type(L"90deg\n");
    choose(kPopupRotate);
    EXPECT_POINT(20.0, 0.0, line->StartPoint());
}

TEST_F(PopupTest, ScaleByAFactorAboveNothing)
{
    type(L"2\n");
    choose(kPopupScale);
    EXPECT_LINE(0.0, 10.0, 20.0, 10.0, *line);
    EXPECT_EQ(kUndoScale, newest().editType);
    EXPECT_EQ(2.0, newest().vector.x);
    EXPECT_EQ(2.0, newest().vector.y);
    for (const wchar_t* const refused : {L"0\n", L"-1\n", L"x\n"}) {
        type(refused);
        choose(kPopupScale);
        EXPECT_EQ(1u, records());
        EXPECT_LINE(0.0, 10.0, 20.0, 10.0, *line);
    }
    EXPECT_TRUE(undo().Undo());
    EXPECT_LINE(10.0, 10.0, 20.0, 10.0, *line);
}

TEST_F(PopupTest, MirrorXAndYGoAlongTheAxesThroughTheGrip)
{
    line->setStartPoint({12, 6});
    EXPECT_EQ(static_cast<int>(kPopupMirrorX), choose(kPopupMirrorX));
    EXPECT_LINE(12.0, 14.0, 20.0, 10.0, *line);
    EXPECT_EQ(kUndoMirror, newest().editType);
    EXPECT_EQ(1.0, newest().vector.x);
    EXPECT_EQ(0.0, newest().vector.y);
    choose(kPopupMirrorY);
    EXPECT_LINE(28.0, 14.0, 20.0, 10.0, *line);
    EXPECT_EQ(2u, records());
    EXPECT_TRUE(undo().Undo());
    EXPECT_TRUE(undo().Undo());
    EXPECT_LINE(12.0, 6.0, 20.0, 10.0, *line);
}

TEST_F(PopupTest, MirrorByLineTakesAClickOrATypedPoint)
{
    clickAt(20, 20);
    choose(kPopupMirrorLine);
    EXPECT_LINE(30.0, 10.0, 20.0, 10.0, *line);
    type(L"20,20\n");
    choose(kPopupMirrorLine);
    EXPECT_LINE(10.0, 10.0, 20.0, 10.0, *line);
    EXPECT_EQ(2u, records());
}

TEST_F(PopupTest, EraseHidesTheLineAndLetsItsTrackerGo)
{
    EXPECT_EQ(-1, choose(kPopupErase));
    EXPECT_TRUE(line->isErased());
    EXPECT_TRUE(handler().trackers().empty());
    EXPECT_TRUE(handler().selectedEntities().empty());
    ASSERT_EQ(1u, records());
    EXPECT_EQ(kUndoErase, newest().editType);
    EXPECT_FALSE(newest().continues);
    EXPECT_TRUE(leftOver().empty());
    EXPECT_TRUE(undo().Undo());
    EXPECT_FALSE(line->isErased());
}

TEST_F(PopupTest, WhatIsShownStaysPairedThroughEachAction)
{
    for (const unsigned id :
         {kPopupCopy, kPopupMove, kPopupRotate, kPopupScale, kPopupMirrorX, kPopupMirrorLine}) {
        handler().ClearTracker(true);
        dc.clear();
        selectLine({10, 10}, {20, 10});
        moveAt(24, 12);
        clickAt(20, 14);
        EXPECT_EQ(static_cast<int>(id), choose(id));
        handler().ClearTracker(true);
        EXPECT_TRUE(leftOver().empty()) << id << leftOver().front();
    }
}

TEST_F(PopupTest, ATypedTargetIsNoRefusedLine)
{
    for (const unsigned id : {kPopupCopy, kPopupMove, kPopupMirrorLine}) {
        type(L"2<90\n");
        choose(id, line->EndPoint());
        EXPECT_EQ(0ul, handler().refusals()) << id;
    }
    EXPECT_EQ(3u, records());
}

TEST_F(PopupTest, ANumberOrATextNamesNoTargetAndIsRefused)
{
    unsigned long refused = 0;
    for (const unsigned id : {kPopupCopy, kPopupMove, kPopupMirrorLine}) {
        for (const wchar_t* const typed : {L"5\n", L"abx\n"}) {
            type(typed);
            choose(id);
            EXPECT_EQ(++refused, handler().refusals()) << id;
            EXPECT_LINE(10.0, 10.0, 20.0, 10.0, *line);
        }
    }
    EXPECT_EQ(0u, records());
}

TEST_F(PopupTest, DegreesAndFactorsAreNoRefusedLines)
{
    type(L"90\n");
    choose(kPopupRotate);
    type(L"2\n");
    choose(kPopupScale);
    EXPECT_EQ(0ul, handler().refusals());
    EXPECT_LINE(20.0, -10.0, 20.0, 10.0, *line);
}

/// Remembers where its end was when it was last told of a change.
class WatchedLine : public CVexDbLine {
public:
    using CVexDbLine::CVexDbLine;
    using CVexDbLine::operator=;
    void OnCurveChanged() override { told = EndPoint(); }
    CVexGePoint2d told;
};

TEST_F(PopupTest, ATypedTargetTellsTheEntityOfItsChangeToo)
{
    auto* const watched = new WatchedLine(database.get());
    watched->set({10, 30}, {20, 30});
    CVexDbObjectId id;
    database->addEntity(watched, id);
    handler().DoDragEntity(watched, {});
    type(L"25,35\n");
    choose(kPopupMove, {20, 30});
    EXPECT_POINT(25.0, 35.0, watched->told);
}

TEST_F(PopupTest, ATargetFarAwayIsMetExactly)
{
    type(L"1000000000,-1000000000\n");
    choose(kPopupMove);
    EXPECT_EQ(1000000000.0, line->EndPoint().x);
    EXPECT_EQ(-1000000000.0, line->EndPoint().y);
    EXPECT_TRUE(undo().Undo());
    EXPECT_LINE(10.0, 10.0, 20.0, 10.0, *line);
}

TEST_F(PopupTest, AnEntityErasedUnderItsMenuIsNotTurnedByWhatIsTypedNext)
{
    moveAt(25, 12);
    whileWaiting([this] { line->Erase(); });
    type(L"90\n");
    choose(kPopupRotate);
    EXPECT_EQ(3u, backend.queued()) << "the action ended with its entity";
    EXPECT_EQ(nullptr, GetCapture());
    EXPECT_TRUE(handler().trackers().empty());
    EXPECT_LINE(10.0, 10.0, 20.0, 10.0, *line);
    EXPECT_EQ(0u, records());
}

/// A kind of line that comes apart into two lines' worth of one.
class DividingTracker : public CVexLineTracker {
public:
    using CVexLineTracker::CVexLineTracker;
    int asked = 0;

protected:
    [[nodiscard]] bool canDivide() const override { return true; }
    CVexDbEntity* makeDivided(int count) override
    {
        asked = count;
        return new CVexDbLine(CVexGePoint2d(0, 0), CVexGePoint2d(count, 0));
    }
};

TEST_F(PopupTest, DivideAsksForANumberAndPutsTheNewEntityInPlace)
{
    CVexDbLine* const other = addLine({10, 30}, {20, 30});
    handler().AddTracker(new DividingTracker(&display, other, VexDb::TransFormNone, false));
    backend.answerTextNext(CString(L"4"));
    EXPECT_EQ(-1, choose(kPopupDivide, {20, 30}));
    EXPECT_EQ(std::vector<CString>{L"Number of Divide:"}, backend.askedTexts());
    EXPECT_TRUE(other->isErased());
    EXPECT_LINE(0.0, 0.0, 4.0, 0.0, newestLine());
    EXPECT_EQ((VexEntitySet{line, &newestLine()}), handler().selectedEntities());
    ASSERT_EQ(2u, records());
    EXPECT_TRUE(undo().Undo()) << "one step";
    EXPECT_FALSE(other->isErased());
    EXPECT_EQ(0u, records());
}

TEST_F(PopupTest, DivideByLessThanOneOrByNothingDoesNothing)
{
    CVexDbLine* const other = addLine({10, 30}, {20, 30});
    handler().AddTracker(new DividingTracker(&display, other, VexDb::TransFormNone, false));
    for (const auto& answer : {std::optional(CString(L"0")), std::optional(CString(L"-2")),
                               std::optional(CString(L"x")), std::optional<CString>()}) {
        backend.answerTextNext(answer);
        EXPECT_EQ(static_cast<int>(kPopupDivide), choose(kPopupDivide, {20, 30}));
        EXPECT_FALSE(other->isErased());
        EXPECT_EQ(0u, records());
    }
}

} // namespace
