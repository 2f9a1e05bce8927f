#pragma once

#include "host/vexdraft/draftstart.h"
#include "host/vexdraft/mainwindow.h"
#include "vexge/gemath/vexgepoint2d.h"

#include <QImage>
#include <QPoint>
#include <QString>
#include <QTemporaryDir>

#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

class CVexCommandHandler;
class CVexDbLine;
class QMenu;

/// A person before the program's window: what he does is queued, and each act comes when the
/// program has dealt with the one before, also while a command waits inside it.
class GuiTest : public testing::Test {
public:
    GuiTest();
    ~GuiTest() override;

    // What a person does. Positions are drawing units.
    GuiTest& then(std::function<void()> act);
    GuiTest& types(const QString& text);
    GuiTest& presses(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// The text and Enter.
    GuiTest& enters(const QString& line);
    GuiTest& moves(double x, double y);
    GuiTest& clicks(double x, double y, Qt::MouseButton button = Qt::LeftButton);
    GuiTest& holds(double x, double y);
    GuiTest& releases(double x, double y);
    GuiTest& turnsWheel(double x, double y, int notches);
    /// Picks a row of the popup menu that is open then.
    GuiTest& chooses(const QString& label);
    /// Answers the message box that is open then by the button of that text.
    GuiTest& answers(const QString& button);
    /// Does all of it, until nothing waits. Fails the test when that takes too long.
    void run();

    // What he sees.
    [[nodiscard]] MainWindow& window() { return *m_window; }
    [[nodiscard]] QImage picture();
    /// The picture drawn anew, without anything that was there by chance.
    [[nodiscard]] QImage freshPicture();
    [[nodiscard]] QColor colorAt(double x, double y);
    [[nodiscard]] QString line();
    [[nodiscard]] QString history();
    // What the program has.
    [[nodiscard]] CVexCommandHandler& handler();
    [[nodiscard]] std::vector<CVexDbLine*> lines();
    /// Adds a line as a finished command would, without an undo record.
    CVexDbLine* addLine(const CVexGePoint2d& from, const CVexGePoint2d& to);
    /// Drawing units at a pixel of the view and back.
    [[nodiscard]] CVexGePoint2d drawingAt(QPoint at);
    [[nodiscard]] QPoint pixelAt(double x, double y);
    [[nodiscard]] QString inFolder(const QString& name) const { return m_folder.filePath(name); }
    [[nodiscard]] DraftStart& start() { return m_start; }

    /// The default of the view, so that literal positions mean the same in each test: 100 pixels
    /// are 2 units, and (0, 0) is 100 pixels from the left and lower edges.
    void showStandardView();

private:
    void next();
    void moveTo(double x, double y);
    /// Where keys go: the message line when nothing has the focus.
    [[nodiscard]] QWidget* focus();
    [[nodiscard]] bool isReady();
    [[nodiscard]] QWidget* canvas();

    QTemporaryDir m_folder;
    DraftStart m_start;
    std::unique_ptr<MainWindow> m_window;
    std::deque<std::function<void()>> m_acts;
    bool m_stuck = false;
    bool m_holding = false; // the left button
    int m_running = 0;
};

/// The number of pixels in which two pictures differ; all of them when they differ in size.
int differingPixels(const QImage& a, const QImage& b);

/// A point by its coordinates, to the last bit.
#define EXPECT_AT(expectedX, expectedY, point)                                                     \
    do {                                                                                           \
        const CVexGePoint2d actualPoint = (point);                                                 \
        EXPECT_DOUBLE_EQ(expectedX, actualPoint.x);                                                \
        EXPECT_DOUBLE_EQ(expectedY, actualPoint.y);                                                \
    } while (false)
