#include "guifixture.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/vexdbdatabase.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <array>
#include <iostream>
#include <random>
#include <string>

namespace {

constexpr int kEvents = 20000;

/// A person who has lost his mind: any event that a mouse and a keyboard can make, in any order.
class Soak : public GuiTest {
protected:
    void storm(unsigned seed)
    {
        m_random.seed(seed);
        window().resize(500, 450); // small, so that redraws cost little
        m_left = kEvents;
        next();
        while (m_left > 0) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        for (int tries = 0; handler().isBusy() && tries < 1000; ++tries) {
            window().session().cancelWaiting();
            QCoreApplication::processEvents();
        }
    }

private:
    void next()
    {
        if (m_left <= 0) {
            endWhatWaits();
            return;
        }
        --m_left;
        QTimer::singleShot(0, &window(), [this] { next(); });
        if (start().backend().queued() < 20) {
            act();
        }
    }

    void endWhatWaits()
    {
        if (QWidget* const popup = QApplication::activePopupWidget(); popup != nullptr) {
            popup->close();
        }
        if (QWidget* const modal = QApplication::activeModalWidget(); modal != nullptr) {
            modal->close();
        }
        window().session().cancelWaiting();
    }

    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    QPoint anywhere()
    {
        // A few places are met again and again, so that grips and lines are hit.
        if (below(2) == 0) {
            return {50 + 50 * below(8), 50 + 50 * below(4)};
        }
        return {below(600) - 50, below(350) - 50};
    }

    void act()
    {
        QWidget* const canvas = window().view().widget();
        if (QWidget* const popup = QApplication::activePopupWidget(); popup != nullptr) {
            answerMenu(*popup);
            return;
        }
        if (QWidget* const modal = QApplication::activeModalWidget(); modal != nullptr) {
            modal->close();
            return;
        }
        const QPoint at = anywhere();
        switch (below(16)) {
        case 0:
        case 1: QTest::mousePress(canvas, Qt::LeftButton, modifiers(), at); break;
        case 2:
        case 3: QTest::mouseRelease(canvas, Qt::LeftButton, modifiers(), at); break;
        case 4: QTest::mouseClick(canvas, Qt::RightButton, {}, at); break;
        case 5: turnWheel(*canvas, at); break;
        case 6: QTest::mouseDClick(canvas, Qt::LeftButton, {}, at); break;
        case 7: middle(*canvas, at); break;
        case 8: type(); break;
        case 9: pressKey(); break;
        case 10: trigger(); break;
        case 11: rare(); break;
        default: QTest::mouseMove(canvas, at); break;
        }
    }

    Qt::KeyboardModifiers modifiers()
    {
        return below(4) == 0 ? Qt::KeyboardModifiers(Qt::ShiftModifier) : Qt::KeyboardModifiers();
    }

    void answerMenu(QWidget& popup)
    {
        for (int i = below(8); i > 0; --i) {
            QTest::keyClick(&popup, Qt::Key_Down);
        }
        QTest::keyClick(&popup, below(4) == 0 ? Qt::Key_Escape : Qt::Key_Return);
    }

    void turnWheel(QWidget& canvas, QPoint at)
    {
        QWheelEvent turn(at, canvas.mapToGlobal(at), {}, QPoint(0, (below(5) - 2) * 60),
                         Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&canvas, &turn);
    }

    void middle(QWidget& canvas, QPoint at)
    {
        if (below(2) == 0) {
            QTest::mousePress(&canvas, Qt::MiddleButton, {}, at);
        } else {
            QTest::mouseRelease(&canvas, Qt::MiddleButton, {}, at);
        }
    }

    void type()
    {
        static constexpr std::array kTexts = {
            "LINE\r", "L\r", "1,1\r", "5<30\r", "12\r", "abc\r",  "undo\r", "redo ",
            "c",      "i",   "n",     "sa\r",   "zw\r", "move\r", "p\r",    "\r"};
        for (const char* at = kTexts[static_cast<std::size_t>(below(kTexts.size()))]; *at != 0;
             ++at) {
            if (QWidget* const focus = QApplication::focusWidget(); focus != nullptr) {
                QTest::keyClick(focus, *at);
            }
        }
    }

    void pressKey()
    {
        static constexpr std::array kKeys = {
            Qt::Key_Escape, Qt::Key_Escape, Qt::Key_Return, Qt::Key_Space,     Qt::Key_F4,
            Qt::Key_F7,     Qt::Key_F8,     Qt::Key_F9,     Qt::Key_Left,      Qt::Key_Down,
            Qt::Key_Delete, Qt::Key_Tab,    Qt::Key_Shift,  Qt::Key_Backspace, Qt::Key_Alt};
        if (QWidget* const focus = QApplication::focusWidget(); focus != nullptr) {
            QTest::keyClick(focus, kKeys[static_cast<std::size_t>(below(kKeys.size()))]);
        }
    }

    void trigger()
    {
        static constexpr std::array<unsigned long, 12> kNumbers = {
            kHostUndo,        kHostRedo,       kHostSelectAll, kHostClearSelection,
            kHostZoomExtents, kHostZoomWindow, kHostZoomOut,   kHostPan,
            kHostGrid,        kHostOrtho,      kHostRedraw,    hostNumberOf(VexDb::CmdErase)};
        QAction* const action =
            window().action(kNumbers[static_cast<std::size_t>(below(kNumbers.size()))]);
        action->trigger();
    }

    void rare()
    {
        switch (below(6)) {
        case 0: window().resize(400 + below(200), 400 + below(150)); break;
        case 1: start().backend().messageBox(L"x", L"y", MB_OK); break;
        case 2: window().session().cancelWaiting(); break;
        case 3: {
            QEvent away(QEvent::WindowDeactivate);
            QCoreApplication::sendEvent(&window(), &away);
            break;
        }
        default: break;
        }
    }

    std::mt19937 m_random;
    int m_left = 0;
};

TEST_F(Soak, OfRandomEventsLeavesAWholeProgram)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::cout << "seed " << seed << '\n';
    storm(seed);
    EXPECT_FALSE(handler().isBusy());
    EXPECT_TRUE(window().database().selfCheck().empty());
    EXPECT_EQ(0, differingPixels(picture(), freshPicture()));
    presses(Qt::Key_Escape).enters("LINE").enters("1,1").enters("2,2").presses(Qt::Key_Escape);
    const std::size_t before = lines().size();
    run();
    EXPECT_EQ(before + 1, lines().size());
}

} // namespace
