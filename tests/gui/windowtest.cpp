#include "guifixture.h"
#include "host/vexdraft/exportpicture.h"
#include "host/vexdraft/savemark.h"
#include "platform/qt/vexqttext.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/vexdbdatabase.h"

#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QLabel>

#include <algorithm>

namespace {

class DraftWindow : public GuiTest {
protected:
    /// A drawing of one line at a path of this test.
    QString savedDrawing(const QString& name)
    {
        CVexDbDatabase drawing(false);
        auto* const line = new CVexDbLine(&drawing);
        line->setStartPoint({1.0, 2.0});
        line->setEndPoint({3.0, 4.0});
        CVexDbObjectId id;
        drawing.addEntity(line, id);
        EXPECT_TRUE(drawing.SaveAs(toCString(inFolder(name))));
        return inFolder(name);
    }

    void writeScript(const QString& name, const QByteArray& lines)
    {
        QFile file(inFolder(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(lines);
    }

    /// Runs the program until the script is over.
    void waitForScript()
    {
        const QDeadlineTimer deadline(10000);
        while (window().isPlaying() && !deadline.hasExpired()) {
            QCoreApplication::processEvents();
        }
        EXPECT_FALSE(window().isPlaying());
    }
};

TEST_F(DraftWindow, SavesAndOpensTheDrawingAgain)
{
    enters("LINE").enters("1,1").enters("4,5").presses(Qt::Key_Escape).run();
    EXPECT_TRUE(window().isModified());
    ASSERT_TRUE(window().saveTo(inFolder("a.zpl")));
    EXPECT_FALSE(window().isModified());
    EXPECT_EQ("a.zpl[*]", window().windowTitle());

    window().newDrawing();
    EXPECT_TRUE(lines().empty());
    window().open(inFolder("a.zpl"));
    ASSERT_EQ(1u, lines().size());
    EXPECT_AT(4.0, 5.0, lines()[0]->EndPoint());
    EXPECT_FALSE(window().isModified());
}

TEST_F(DraftWindow, CountsAsUnchangedAgainWhenAllIsUndone)
{
    enters("LINE").enters("1,1").enters("4,5").presses(Qt::Key_Escape).run();
    EXPECT_TRUE(window().isWindowModified());
    presses(Qt::Key_Z, Qt::ControlModifier).run();
    EXPECT_FALSE(window().isWindowModified());
}

TEST_F(DraftWindow, OpensDamagedFilesAsUntitledCopies)
{
    const QString path = savedDrawing("whole.zpl");
    QFile file(path);
    ASSERT_TRUE(file.resize(file.size() - 20));
    then([&] { window().open(path); }).answers("OK").run();
    EXPECT_EQ("", window().path());
    EXPECT_TRUE(window().isModified());
    EXPECT_EQ("whole.zpl (recovered)[*]", window().windowTitle());
}

TEST_F(DraftWindow, KeepsTheDrawingWhenAFileIsNone)
{
    addLine({0.0, 0.0}, {1.0, 1.0});
    writeScript("text.zpl", "no drawing");
    then([&] { window().open(inFolder("text.zpl")); }).answers("OK").run();
    then([&] { window().open(inFolder("nowhere.zpl")); }).answers("OK").run();
    EXPECT_EQ(1u, lines().size());
    EXPECT_EQ(&window().database(), _gpDatabase);
}

TEST_F(DraftWindow, ClosesDuringACommand)
{
    enters("LINE").clicks(1.0, 1.0).then([&] { window().close(); }).run();
    EXPECT_FALSE(window().isVisible());
    EXPECT_FALSE(handler().isBusy());
    EXPECT_TRUE(lines().empty());
}

TEST_F(DraftWindow, ClosesDuringAPopupMenu)
{
    addLine({1.0, 1.0}, {5.0, 3.0});
    clicks(2.0, 1.5).clicks(3.0, 2.0, Qt::RightButton).then([&] { window().close(); }).run();
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(nullptr, QApplication::activePopupWidget());
}

TEST_F(DraftWindow, StaysWhenThePersonThinksBetterOfClosing)
{
    enters("LINE").enters("1,1").enters("4,5").presses(Qt::Key_Escape);
    then([&] { window().close(); }).answers("Cancel").run();
    EXPECT_TRUE(window().isVisible());
    then([&] { window().close(); }).answers("Discard").run();
    EXPECT_FALSE(window().isVisible());
}

TEST_F(DraftWindow, CancelsTheWaitingCommandForAnotherOne)
{
    const QImage before = picture();
    QString asked;
    enters("LINE").clicks(1.0, 1.0).moves(4.0, 4.0);
    then([&] { window().action(hostNumberOf(VexDb::CmdLine))->trigger(); });
    then([&] { asked = line(); }).presses(Qt::Key_Escape).run();
    EXPECT_EQ("Specify start point: ", asked); // the second LINE's, not the first one's end
    EXPECT_FALSE(handler().isBusy());
    EXPECT_EQ(0, differingPixels(before, picture()));
}

TEST_F(DraftWindow, OpensAnotherDrawingDuringACommand)
{
    const QString path = savedDrawing("other.zpl");
    enters("LINE").clicks(1.0, 1.0).moves(4.0, 4.0).then([&] { window().open(path); }).run();
    ASSERT_EQ(1u, lines().size());
    EXPECT_AT(3.0, 4.0, lines()[0]->EndPoint());
    EXPECT_EQ(path, window().path());
    EXPECT_EQ(0, differingPixels(picture(), freshPicture()));
    EXPECT_EQ("", line());
}

TEST_F(DraftWindow, ZoomsAboutThePointer)
{
    const QPoint fixed = pixelAt(4.0, 3.0);
    turnsWheel(4.0, 3.0, 2).run();
    const QPoint now = pixelAt(4.0, 3.0);
    EXPECT_LE((now - fixed).manhattanLength(), 2);
    // Two notches of a fifth each.
    EXPECT_NEAR(50.0 / 0.64, pixelAt(5.0, 3.0).x() - now.x(), 1.5);
}

TEST_F(DraftWindow, ReadsOutThePointer)
{
    moves(2.0, 3.0).run();
    const QList<QLabel*> labels = window().findChildren<QLabel*>();
    EXPECT_TRUE(std::ranges::any_of(
        labels, [](const QLabel* label) { return label->text() == "2.000000, 3.000000"; }));
}

TEST_F(DraftWindow, SwitchesTheGridByItsKey)
{
    const QImage before = picture();
    presses(Qt::Key_F7).run();
    EXPECT_TRUE(window().action(kHostGrid)->isChecked());
    EXPECT_LT(1000, differingPixels(before, picture()));
    presses(Qt::Key_F7).run();
    EXPECT_EQ(0, differingPixels(before, picture()));
}

TEST_F(DraftWindow, PlaysAScriptAsItWasTyped)
{
    writeScript("frame.txt", "; a corner\nLINE\n1,1\n6,1\n6,4\n@key Escape\nLINE\n@click 2,2\n"
                             "@click 4,3\n@key Escape\n");
    window().playScript(inFolder("frame.txt"), {});
    waitForScript();
    ASSERT_EQ(3u, lines().size()) << history().toStdString();
    EXPECT_AT(6.0, 4.0, lines()[1]->EndPoint());
    EXPECT_AT(4.0, 3.0, lines()[2]->EndPoint());
    EXPECT_EQ(0, differingPixels(picture(), freshPicture()));
}

TEST_F(DraftWindow, NamesTheLineThatAScriptIsRefused)
{
    writeScript("bad.txt", "LINE\n1,1\n6,1\n@key Escape\nNOSUCH\nLINE\n");
    window().playScript(inFolder("bad.txt"), {});
    waitForScript();
    EXPECT_EQ(1u, lines().size());
    EXPECT_TRUE(history().contains("Line 5 refused: NOSUCH")) << history().toStdString();
}

TEST_F(DraftWindow, ExportsWhatItShowsOnWhite)
{
    addLine({1.0, 1.0}, {5.0, 3.0});
    for (const char* name : {"p.png", "p.pdf", "p.svg"}) {
        QString message;
        EXPECT_TRUE(exportPicture(window().database(), inFolder(name), message))
            << message.toStdString();
    }
    const QImage exported(inFolder("p.png"));
    EXPECT_EQ(picture().size(), exported.size());
    EXPECT_EQ(QColor(Qt::white), exported.pixelColor(2, 2));
    EXPECT_EQ(QColor(Qt::black), exported.pixelColor(pixelAt(3.0, 2.0)));
    QString message;
    EXPECT_FALSE(exportPicture(window().database(), inFolder("p.txt"), message));
    EXPECT_FALSE(message.isEmpty());
}

TEST_F(DraftWindow, DrawsWhiteLinesBlackOnALightBackground)
{
    addLine({1.0, 1.0}, {5.0, 1.0});
    EXPECT_EQ(QColor(Qt::white), colorAt(2.0, 1.0));
    for (QAction* const each : window().findChildren<QAction*>()) {
        if (each->text() == "Light &Background") {
            each->trigger();
        }
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(QColor(Qt::black), colorAt(2.0, 1.0));
    const QImage before = picture();
    QColor band;
    enters("LINE").clicks(1.0, 3.0).moves(7.0, 3.0).then([&] { band = colorAt(4.0, 3.0); });
    presses(Qt::Key_Escape).run();
    EXPECT_NE(QColor(Qt::white), band);
    EXPECT_EQ(0, differingPixels(before, picture()));
}

TEST(SaveMarkTest, NeverTakesAnotherWayForTheSavedOne)
{
    CVexDbDatabase drawing(false);
    CVexUndoHandler& undo = drawing.undoHandler();
    const auto edit = [&](double dx) {
        auto line = std::make_unique<CVexDbLine>(&drawing);
        line->setEndPoint({dx, 1.0});
        CVexDbObjectId id;
        drawing.addEntity(line.release(), id);
        tagUndoEditEntity made;
        made.continues = false;
        made.editType = kUndoCreate;
        made.entity = id;
        undo.AddUndo(&made);
    };
    SaveMark mark;
    edit(1.0);
    edit(2.0);
    mark.saved(undo);
    EXPECT_FALSE(mark.isModified(undo));
    undo.Undo();
    mark.changed(undo);
    EXPECT_TRUE(mark.isModified(undo));
    undo.Redo();
    mark.changed(undo);
    EXPECT_FALSE(mark.isModified(undo));
    undo.Undo();
    undo.Undo();
    mark.changed(undo);
    edit(3.0);
    mark.changed(undo);
    edit(4.0);
    mark.changed(undo);
    EXPECT_TRUE(mark.isModified(undo)); // as many edits as were saved, but others
}

} // namespace
