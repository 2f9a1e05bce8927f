#include "guifixture.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/vexdbdatabase.h"

#include <QAction>
#include <QTest>

namespace {

class SelectionInTheWindow : public GuiTest {
protected:
    CVexDbLine* drawn = addLine({1.0, 1.0}, {5.0, 3.0}); // its middle is (3, 2)
};

TEST_F(SelectionInTheWindow, TakesTheLineUnderAClickAndShowsItsGrips)
{
    const QImage before = picture();
    clicks(2.0, 1.5).run();
    EXPECT_EQ(1u, handler().selectedEntities().size());
    EXPECT_LT(60, differingPixels(before, picture()));
    EXPECT_TRUE(window().action(kHostClearSelection)->isEnabled());

    presses(Qt::Key_Escape).run();
    EXPECT_TRUE(handler().selectedEntities().empty());
    EXPECT_EQ(0, differingPixels(before, picture()));
}

TEST_F(SelectionInTheWindow, TakesWhatLiesInAWindow)
{
    addLine({0.0, 6.0}, {8.0, 6.0});
    clicks(0.5, 0.5).clicks(6.0, 4.0).run();
    EXPECT_EQ(1u, handler().selectedEntities().size());
    clicks(8.0, 8.0).clicks(0.2, 0.2).run(); // from right to left: a crossing
    EXPECT_EQ(2u, handler().selectedEntities().size());
    EXPECT_EQ(0, differingPixels(picture(), freshPicture()));
}

TEST_F(SelectionInTheWindow, DragsAnEndByItsGrip)
{
    clicks(2.0, 1.5).holds(5.0, 3.0).moves(6.0, 4.0).moves(7.0, 2.0).releases(7.0, 2.0).run();
    EXPECT_AT(1.0, 1.0, drawn->StartPoint());
    EXPECT_AT(7.0, 2.0, drawn->EndPoint());
    EXPECT_EQ(0, differingPixels(picture(), freshPicture()));

    presses(Qt::Key_Z, Qt::ControlModifier).run();
    EXPECT_AT(5.0, 3.0, drawn->EndPoint());
}

TEST_F(SelectionInTheWindow, MovesALineByItsMiddleGrip)
{
    clicks(2.0, 1.5).holds(3.0, 2.0).moves(4.0, 4.0).releases(4.0, 4.0).run();
    EXPECT_AT(2.0, 3.0, drawn->StartPoint());
    EXPECT_AT(6.0, 5.0, drawn->EndPoint());
}

TEST_F(SelectionInTheWindow, EndsADragWhereItWasValidLastWhenTheButtonGoesUpOutside)
{
    clicks(2.0, 1.5).holds(5.0, 3.0).moves(6.0, 4.0).then([&] {
        QTest::mouseRelease(window().view().widget(), Qt::LeftButton, {}, QPoint(-50, 200));
    });
    run();
    EXPECT_AT(6.0, 4.0, drawn->EndPoint());
    EXPECT_FALSE(handler().isBusy());
}

TEST_F(SelectionInTheWindow, GivesUpADragWhenAnotherWindowTakesTheFocus)
{
    clicks(2.0, 1.5).holds(5.0, 3.0).moves(6.0, 4.0).then([&] {
        QEvent away(QEvent::WindowDeactivate);
        QCoreApplication::sendEvent(&window(), &away);
    });
    run();
    EXPECT_AT(5.0, 3.0, drawn->EndPoint());
    EXPECT_FALSE(handler().isBusy());
}

TEST_F(SelectionInTheWindow, MovesFromThePopupMenuOfAGrip)
{
    clicks(2.0, 1.5).clicks(3.0, 2.0, Qt::RightButton).chooses("Move").clicks(4.0, 5.0).run();
    EXPECT_AT(2.0, 4.0, drawn->StartPoint());
    EXPECT_AT(6.0, 6.0, drawn->EndPoint());
    EXPECT_EQ(0, differingPixels(picture(), freshPicture()));

    presses(Qt::Key_Z, Qt::ControlModifier).run();
    EXPECT_AT(1.0, 1.0, drawn->StartPoint());
}

TEST_F(SelectionInTheWindow, CopiesFromThePopupMenu)
{
    clicks(2.0, 1.5).clicks(3.0, 2.0, Qt::RightButton).chooses("Copy").clicks(3.0, 6.0).run();
    ASSERT_EQ(2u, lines().size());
    EXPECT_AT(1.0, 5.0, lines()[1]->StartPoint());
    EXPECT_AT(5.0, 7.0, lines()[1]->EndPoint());
}

TEST_F(SelectionInTheWindow, ErasesByTheDeleteKeyInOneStep)
{
    addLine({0.0, 6.0}, {8.0, 6.0});
    presses(Qt::Key_A, Qt::ControlModifier).presses(Qt::Key_Delete).run();
    EXPECT_TRUE(lines().empty());
    presses(Qt::Key_Z, Qt::ControlModifier).run();
    EXPECT_EQ(2u, lines().size());
    EXPECT_EQ(0, differingPixels(picture(), freshPicture()));
}

TEST_F(SelectionInTheWindow, KeepsTheDeleteKeyForATextThatIsTyped)
{
    clicks(2.0, 1.5).types("LINES").presses(Qt::Key_Left).presses(Qt::Key_Delete).run();
    EXPECT_EQ("LINE", line());
    EXPECT_EQ(1u, lines().size());
}

} // namespace
