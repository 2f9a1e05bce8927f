#include "platform/base/cfile.h"
#include "tests/session/sessionfixture.h"

#include <filesystem>

namespace {

/// A level line from (10, 10) to (20, 10), selected by a click near its start.
class EditTest : public SessionTest {
protected:
    EditTest() : line(addLine(10, 10, 20, 10)) { clicks(12, 10); }

    CVexDbLine* line;
};

TEST_F(EditTest, AClickSelectsAndEscapeLetsGo)
{
    run();
    EXPECT_EQ(1u, handler().trackers().size());
    EXPECT_EQ(1u, handler().selectedEntities().count(line));
    key(VK_ESCAPE);
    run();
    EXPECT_TRUE(handler().trackers().empty());
}

TEST_F(EditTest, AGripFollowsTheMouseUntilTheButtonIsUp)
{
    moves(20, 10).mouse(WM_LBUTTONDOWN, 20, 10).moves(25, 15).mouse(WM_LBUTTONUP, 30, 20);
    run();
    EXPECT_POINT(10.0, 10.0, line->StartPoint());
    EXPECT_POINT(30.0, 20.0, line->EndPoint());
    ASSERT_EQ(1u, undo().undoStack().size());
    session->undo();
    EXPECT_POINT(20.0, 10.0, line->EndPoint());
    session->redo();
    EXPECT_POINT(30.0, 20.0, line->EndPoint());
}

TEST_F(EditTest, TheMiddleGripMovesTheWhole)
{
    moves(15, 10).mouse(WM_LBUTTONDOWN, 15, 10).mouse(WM_LBUTTONUP, 18, 14);
    run();
    EXPECT_POINT(13.0, 14.0, line->StartPoint());
    EXPECT_POINT(23.0, 14.0, line->EndPoint());
}

TEST_F(EditTest, PopupMoveFollowsAClick)
{
    chooses(kPopupMove, 15, 10).clicks(25, 20);
    run();
    EXPECT_POINT(20.0, 20.0, line->StartPoint());
    session->undo();
    EXPECT_POINT(10.0, 10.0, line->StartPoint());
}

TEST_F(EditTest, PopupCopyAddsASecondLine)
{
    chooses(kPopupCopy, 10, 10).clicks(10, 40);
    run();
    ASSERT_EQ(2u, lines().size());
    EXPECT_POINT(10.0, 10.0, lines()[0]->StartPoint());
    EXPECT_POINT(10.0, 40.0, lines()[1]->StartPoint());
    session->undo();
    EXPECT_EQ(1u, lines().size());
}

TEST_F(EditTest, PopupRotateTakesDegrees)
{
    chooses(kPopupRotate, 10, 10).types(L"90\n");
    run();
    EXPECT_NEAR(10.0, line->EndPoint().x, 1e-9);
    EXPECT_NEAR(20.0, line->EndPoint().y, 1e-9);
    session->undo();
    EXPECT_NEAR(20.0, line->EndPoint().x, 1e-6);
}

TEST_F(EditTest, PopupScaleTakesAFactor)
{
    chooses(kPopupScale, 10, 10).types(L"3\n");
    run();
    EXPECT_POINT(40.0, 10.0, line->EndPoint());
    session->undo();
    EXPECT_NEAR(20.0, line->EndPoint().x, 1e-9);
}

TEST_F(EditTest, PopupMirrorsAboutAxesThroughTheGrip)
{
    chooses(kPopupMirrorY, 20, 10);
    run();
    EXPECT_NEAR(30.0, line->StartPoint().x, 1e-9);
    EXPECT_NEAR(20.0, line->EndPoint().x, 1e-9);
    session->undo();
    EXPECT_NEAR(10.0, line->StartPoint().x, 1e-9);
}

TEST_F(EditTest, PopupEraseTakesTheLineAwayAndUndoBringsItBack)
{
    chooses(kPopupErase, 15, 10);
    run();
    EXPECT_TRUE(lines().empty());
    EXPECT_TRUE(handler().trackers().empty());
    session->undo();
    EXPECT_EQ(1u, lines().size());
}

TEST_F(EditTest, PopupUnSelectLetsGo)
{
    chooses(kPopupUnSelect, 15, 10);
    run();
    EXPECT_TRUE(handler().trackers().empty());
    EXPECT_EQ(1u, lines().size());
}

TEST_F(EditTest, ARightClickOffEveryGripShowsNoMenu)
{
    chooses(kPopupErase, 60, 60);
    run();
    EXPECT_TRUE(backend.shownMenus().empty());
    EXPECT_EQ(1u, lines().size());
}

TEST_F(EditTest, DeleteErasesTheSelectionAsOneStep)
{
    CVexDbLine* const other = addLine(10, 50, 20, 50);
    clicks(12, 50).key(VK_DELETE);
    run();
    EXPECT_TRUE(line->isErased());
    EXPECT_TRUE(other->isErased());
    EXPECT_TRUE(handler().trackers().empty());
    session->undo();
    EXPECT_EQ(2u, lines().size());
    session->redo();
    EXPECT_TRUE(lines().empty());
}

TEST_F(EditTest, EraseByNameTakesWhatIsSelected)
{
    types(L"e\n");
    run();
    EXPECT_TRUE(lines().empty());
    EXPECT_NE(-1, handler().getStrings().Find(L"Erased: 1."));
}

TEST_F(EditTest, UndoOfACreatedLineDropsItFromTheSelection)
{
    types(L"LINE\n1,100\n50,100\n\n").clicks(5, 100);
    run();
    ASSERT_EQ(1u, handler().trackers().size());
    session->undo();
    EXPECT_TRUE(handler().trackers().empty());
}

TEST_F(EditTest, SaveAndReopenKeepsWhatWasDrawn)
{
    types(L"LINE\n1,2\n3,4\n\n");
    run();
    CMemFile file{CString(L"a.zpl")};
    CArchive store(&file, CArchive::store);
    ASSERT_TRUE(database->Save(store) && file.Close());
    close();
    open();
    CMemFile again(file.bytes(), CString(L"a.zpl"));
    CArchive load(&again, CArchive::load);
    ASSERT_TRUE(database->Read(load));
    ASSERT_EQ(2u, lines().size());
    EXPECT_POINT(3.0, 4.0, lines()[1]->EndPoint());
}

TEST_F(SessionTest, AWindowFromLeftToRightTakesWhatLiesInside)
{
    CVexDbLine* const inside = addLine(10, 10, 20, 20);
    addLine(15, 15, 60, 15);
    clicks(5, 5).clicks(30, 30);
    run();
    EXPECT_EQ(1u, handler().selectedEntities().size());
    EXPECT_EQ(1u, handler().selectedEntities().count(inside));
}

TEST_F(SessionTest, ACrossingFromRightToLeftTakesWhatItTouches)
{
    addLine(10, 10, 20, 20);
    addLine(15, 15, 60, 15);
    clicks(30, 30).clicks(5, 5);
    run();
    EXPECT_EQ(2u, handler().selectedEntities().size());
}

TEST_F(SessionTest, EscapeGivesUpAWindow)
{
    addLine(10, 10, 20, 20);
    clicks(5, 5).moves(30, 30).key(VK_ESCAPE);
    run();
    EXPECT_TRUE(handler().selectedEntities().empty());
    EXPECT_EQ(nullptr, GetCapture());
    EXPECT_EQ(std::wstring(), message.GetWindowText().str());
}

TEST_F(SessionTest, SelectAllTakesEveryVisibleLine)
{
    addLine(10, 10, 20, 20);
    addLine(15, 15, 60, 15);
    addLine(1, 1, 2, 2)->setErased();
    session->start(kHostSelectAll);
    EXPECT_EQ(2u, handler().selectedEntities().size());
    session->clearSelection();
    EXPECT_TRUE(handler().selectedEntities().empty());
}

TEST_F(SessionTest, NothingToUndoIsSaid)
{
    types(L"u\n");
    run();
    EXPECT_NE(-1, handler().getStrings().Find(L"Nothing to undo."));
}

TEST_F(SessionTest, ZoomWindowShowsTheAreaBetweenTwoPoints)
{
    types(L"zw\n").clicks(100, 100).clicks(184, 159.5);
    run();
    EXPECT_NEAR(100.0, view().GetLogicalPoint(CPoint(0, 1188)).x, 1.0);
    EXPECT_NEAR(184.0, view().GetLogicalPoint(CPoint(1680, 0)).x, 1.0);
    EXPECT_FALSE(handler().isBusy());
}

TEST_F(SessionTest, ASizeOfTheWindowKeepsTheScale)
{
    display.resize({800, 600});
    EXPECT_NEAR(25.0, view().xScale(), 0.1);
    EXPECT_EQ(800, view().client().Width());
}

} // namespace
