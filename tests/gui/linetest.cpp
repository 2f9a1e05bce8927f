#include "guifixture.h"
#include "host/vexdraft/commandpane.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/vexdbdatabase.h"

#include <QAction>
#include <QApplication>
#include <QInputMethodEvent>
#include <QTest>

namespace {

class LineInTheWindow : public GuiTest {};

// The band is yellow in XOR on the dark ground.
const QColor kGround(0x1c, 0x21, 0x27);
const QColor kBand(0x1c ^ 0xff, 0x21 ^ 0xff, 0x27);

TEST_F(LineInTheWindow, ComesFromTwoClicks)
{
    enters("LINE").clicks(1.0, 1.0).clicks(5.0, 3.0).presses(Qt::Key_Escape).run();
    ASSERT_EQ(1u, lines().size());
    EXPECT_AT(1.0, 1.0, lines()[0]->StartPoint());
    EXPECT_AT(5.0, 3.0, lines()[0]->EndPoint());
    EXPECT_FALSE(handler().isBusy());
}

TEST_F(LineInTheWindow, ComesFromTypedPoints)
{
    enters("line").enters("0,0").enters("10,5").presses(Qt::Key_Escape).run();
    ASSERT_EQ(1u, lines().size());
    EXPECT_AT(0.0, 0.0, lines()[0]->StartPoint());
    EXPECT_AT(10.0, 5.0, lines()[0]->EndPoint());
}

TEST_F(LineInTheWindow, ShowsItsBandWhileThePointerMoves)
{
    QColor before, onBand, afterwards;
    enters("LINE").clicks(1.0, 2.0).moves(7.0, 2.0);
    then([&] { onBand = colorAt(4.0, 2.0); }).moves(7.0, 6.0);
    then([&] { afterwards = colorAt(4.0, 2.0); }).presses(Qt::Key_Escape);
    before = colorAt(4.0, 2.0);
    run();
    EXPECT_EQ(kGround, before);
    EXPECT_NE(kGround, onBand); // band and working copy lie on each other
    EXPECT_EQ(kGround, afterwards);
}

TEST_F(LineInTheWindow, LeavesNoTraceWhenItIsCancelled)
{
    addLine({0.0, 0.0}, {9.0, 6.0});
    const QImage before = picture();
    enters("LINE").clicks(1.0, 1.0).moves(8.0, 2.0).moves(2.0, 5.0).presses(Qt::Key_Escape).run();
    EXPECT_EQ(0, differingPixels(before, picture()));
}

TEST_F(LineInTheWindow, LooksAfterUndoAsBeforeTheCommand)
{
    addLine({0.0, 4.0}, {9.0, 1.0});
    const QImage before = picture();
    enters("LINE").clicks(1.0, 1.0).clicks(6.0, 5.0).presses(Qt::Key_Escape);
    QImage drawn;
    then([&] { drawn = picture(); }).presses(Qt::Key_Z, Qt::ControlModifier).run();
    EXPECT_LT(100, differingPixels(before, drawn));
    EXPECT_EQ(0, differingPixels(before, picture()));

    presses(Qt::Key_Y, Qt::ControlModifier).run();
    EXPECT_EQ(0, differingPixels(drawn, picture()));
    EXPECT_EQ(2u, lines().size());
}

TEST_F(LineInTheWindow, PromptsInTheLineAndKeepsTheHistory)
{
    QString asked;
    enters("LINE").then([&] { asked = line(); }).enters("1,1").presses(Qt::Key_Escape).run();
    EXPECT_EQ("Specify start point: ", asked);
    EXPECT_EQ("", line());
    EXPECT_TRUE(history().contains("LINE\nSpecify start point: 1,1\n")) << history().toStdString();
}

TEST_F(LineInTheWindow, LeavesThePromptToTheBackspaceOnlyWhatWasTyped)
{
    QString left;
    enters("LINE").types("12").presses(Qt::Key_Backspace).presses(Qt::Key_Backspace);
    presses(Qt::Key_Backspace).then([&] { left = line(); }).presses(Qt::Key_Escape).run();
    EXPECT_EQ("Specify start point: ", left);
}

TEST_F(LineInTheWindow, TakesWhatIsTypedOverTheHistory)
{
    then([&] { window().commandPane().history()->setFocus(); });
    enters("LINE").enters("2,2").enters("3,3").presses(Qt::Key_Escape).run();
    ASSERT_EQ(1u, lines().size());
    EXPECT_AT(3.0, 3.0, lines()[0]->EndPoint());
}

TEST_F(LineInTheWindow, TakesFinishedTextFromAnInputMethod)
{
    QString shown;
    enters("LINE").then([] {
        QInputMethodEvent typed;
        typed.setCommitString("4,2");
        QCoreApplication::sendEvent(QApplication::focusWidget(), &typed);
    });
    then([&] { shown = line(); }).presses(Qt::Key_Return).presses(Qt::Key_Escape).run();
    EXPECT_EQ("Specify start point: 4,2", shown);
    EXPECT_AT(4.0, 2.0, window().database().lastPoint());
}

TEST_F(LineInTheWindow, FollowsTheArrowKeysToEnter)
{
    enters("LINE").clicks(1.0, 1.0).moves(3.0, 1.0);
    presses(Qt::Key_Right).presses(Qt::Key_Right).presses(Qt::Key_Up).presses(Qt::Key_Return);
    presses(Qt::Key_Escape).run();
    ASSERT_EQ(1u, lines().size());
    // 50 pixels are a unit: two to the right, one up.
    EXPECT_AT(3.04, 1.02, lines()[0]->EndPoint());
}

TEST_F(LineInTheWindow, MeetsTheGripItSnapsToExactly)
{
    addLine({0.0, 0.0}, {3.1234567, 2.7654321});
    const QImage before = picture();
    QImage marked;
    enters("LINE").presses(Qt::Key_F4).moves(3.1, 2.76).then([&] { marked = picture(); });
    clicks(3.1, 2.76).clicks(6.0, 1.0).presses(Qt::Key_Escape).run();
    EXPECT_LT(4, differingPixels(before, marked));
    ASSERT_EQ(2u, lines().size());
    EXPECT_AT(3.1234567, 2.7654321, lines()[1]->StartPoint());
    EXPECT_EQ(0, differingPixels(picture(), freshPicture()));
}

TEST_F(LineInTheWindow, KeepsNoBandWhenTheWheelZoomsDuringIt)
{
    addLine({0.0, 0.0}, {9.0, 6.0});
    enters("LINE").clicks(1.0, 1.0).moves(6.0, 2.0).turnsWheel(4.0, 4.0, 1).moves(2.0, 5.0);
    turnsWheel(2.0, 2.0, -2).moves(5.0, 3.0).presses(Qt::Key_Escape).run();
    EXPECT_EQ(0, differingPixels(picture(), freshPicture()));
}

TEST_F(LineInTheWindow, KeepsNoBandWhenTheMiddleButtonPansDuringIt)
{
    addLine({0.0, 0.0}, {9.0, 6.0});
    const QPoint origin = pixelAt(0.0, 0.0);
    enters("LINE").clicks(1.0, 1.0).moves(6.0, 2.0).then([&] {
        QTest::mousePress(window().view().widget(), Qt::MiddleButton, {}, QPoint(300, 300));
    });
    then([&] { QTest::mouseMove(window().view().widget(), QPoint(340, 330)); });
    then([&] {
        QTest::mouseRelease(window().view().widget(), Qt::MiddleButton, {}, QPoint(340, 330));
    });
    moves(3.0, 4.0).clicks(5.0, 5.0).presses(Qt::Key_Escape).run();
    EXPECT_EQ(origin + QPoint(40, 30), pixelAt(0.0, 0.0));
    EXPECT_EQ(2u, lines().size()); // the command went on behind the pan
    EXPECT_EQ(0, differingPixels(picture(), freshPicture()));
}

TEST_F(LineInTheWindow, KeepsNoBandWhenTheWindowIsResizedDuringIt)
{
    enters("LINE").clicks(1.0, 1.0).moves(6.0, 2.0).then([&] { window().resize(700, 600); });
    moves(4.0, 3.0).then([&] { window().resize(1100, 900); }).moves(6.0, 5.0);
    presses(Qt::Key_Escape).run();
    EXPECT_EQ(0, differingPixels(picture(), freshPicture()));
    EXPECT_EQ(window().view().widget()->size(), picture().size());
}

TEST_F(LineInTheWindow, SwitchesOrthoByItsKeyWithoutEnding)
{
    enters("LINE").clicks(1.0, 1.0).presses(Qt::Key_F8).clicks(5.0, 1.5);
    presses(Qt::Key_Escape).run();
    ASSERT_EQ(1u, lines().size());
    EXPECT_AT(5.0, 1.0, lines()[0]->EndPoint());
    EXPECT_TRUE(window().action(kHostOrtho)->isChecked());
}

TEST_F(LineInTheWindow, CountsTheSecondPressOfADoubleClick)
{
    enters("LINE").clicks(1.0, 1.0).moves(4.0, 1.0).then([&] {
        QTest::mouseDClick(window().view().widget(), Qt::LeftButton, {}, pixelAt(4.0, 1.0));
    });
    presses(Qt::Key_Escape).run();
    // The two presses end the first segment and a second one of no length.
    ASSERT_LE(1u, lines().size());
    EXPECT_AT(4.0, 1.0, lines()[0]->EndPoint());
    EXPECT_AT(4.0, 1.0, window().database().lastPoint());
}

TEST_F(LineInTheWindow, IsRepeatedByARightClickOnEmptySpace)
{
    enters("LINE").clicks(1.0, 1.0).clicks(2.0, 2.0).presses(Qt::Key_Escape);
    clicks(8.0, 8.0, Qt::RightButton).clicks(3.0, 3.0).clicks(4.0, 3.0);
    clicks(8.0, 8.0, Qt::RightButton).run(); // and ends by one
    EXPECT_EQ(2u, lines().size());
    EXPECT_FALSE(handler().isBusy());
}

} // namespace
