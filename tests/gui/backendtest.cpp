#include "platform/device/cdc.h"
#include "platform/qt/vexqteventbackend.h"
#include "platform/qt/vexqtkeys.h"
#include "platform/qt/vexqtview.h"
#include "platform/window/cmenu.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

/// A window with a view and a line of text, and the pump as the library runs it.
class EventBackend : public testing::Test {
protected:
    EventBackend() : before(CVexBackend::install(&backend)), view(backend, &window)
    {
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(view.widget(), 1);
        layout->addWidget(&text);
        window.resize(400, 300);
        window.show();
        QApplication::setActiveWindow(&window);
        text.setFocus();
        view.setHandler([this](const MSG& message) {
            received.push_back(message.message);
            return 0;
        });
        QCoreApplication::processEvents();
        received.clear();
    }
    ~EventBackend() override { CVexBackend::install(before); }

    /// Takes messages until `last` or the loss of the capture; `acts` come from Qt's loop.
    std::vector<MSG> pump(unsigned last, const std::function<void()>& acts, bool translate = true)
    {
        std::vector<MSG> taken;
        view.SetCapture();
        QTimer::singleShot(0, &window, acts);
        for (;;) {
            MSG message;
            GetMessageW(&message, nullptr, 0, 0);
            if (GetCapture() != &view) {
                lost = true;
                break;
            }
            taken.push_back(message);
            if (translate) {
                TranslateMessage(&message);
            }
            if (message.message == last) {
                break;
            }
        }
        ReleaseCapture();
        return taken;
    }
    static std::vector<unsigned> kinds(const std::vector<MSG>& messages)
    {
        std::vector<unsigned> all;
        for (const MSG& message : messages) {
            all.push_back(message.message);
        }
        return all;
    }
    QWidget* canvas() { return view.widget(); }

    CVexQtEventBackend backend;
    CVexBackend* before;
    QWidget window;
    CVexQtView view;
    QLineEdit text{&window};
    std::vector<unsigned> received;
    bool lost = false;
};

TEST_F(EventBackend, PutsACharacterRightBehindItsKey)
{
    const auto taken = pump(WM_KEYUP, [&] { QTest::keyClick(&text, Qt::Key_L); });
    const std::vector<unsigned> order{WM_KEYDOWN, WM_CHAR, WM_KEYUP};
    EXPECT_EQ(order, kinds(taken));
    EXPECT_EQ(unsigned{'L'}, taken[0].wParam);
    EXPECT_EQ(unsigned{'l'}, taken[1].wParam);
    EXPECT_EQ(&view, taken[0].hwnd);
    EXPECT_EQ("", text.text());
}

TEST_F(EventBackend, LeavesNoCharacterOfAKeyThatThePumpTookItself)
{
    const auto taken = pump(
        WM_KEYUP, [&] { QTest::keyClick(&text, Qt::Key_Return); }, false);
    const std::vector<unsigned> order{WM_KEYDOWN, WM_KEYUP};
    EXPECT_EQ(order, kinds(taken));
    EXPECT_EQ(0u, backend.queued());
}

TEST_F(EventBackend, MakesTheCharacterThatAMessageCarries)
{
    const auto taken = pump(WM_CHAR, [&] { view.PostMessage(WM_KEYDOWN, 'Q', keyLParam(L'ß')); });
    ASSERT_EQ(2u, taken.size());
    EXPECT_EQ(WPARAM{L'ß'}, taken[1].wParam);
}

TEST_F(EventBackend, GivesTheMouseOfTheViewToThePumpAlone)
{
    const auto taken = pump(WM_LBUTTONUP, [&] {
        QTest::mouseMove(canvas(), {10, 20});
        QTest::mousePress(canvas(), Qt::LeftButton, Qt::ShiftModifier, {11, 20});
        QTest::mouseRelease(canvas(), Qt::LeftButton, {}, {-30, 20});
    });
    const std::vector<unsigned> order{WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_LBUTTONUP};
    EXPECT_EQ(order, kinds(taken));
    EXPECT_EQ(CPoint(11, 20), pointOfLParam(taken[1].lParam));
    EXPECT_EQ(CPoint(-30, 20), pointOfLParam(taken[2].lParam));
    EXPECT_TRUE(received.empty());
}

TEST_F(EventBackend, GivesTheMouseToTheViewWhileNobodyCaptures)
{
    QTest::mouseMove(canvas(), {70, 60});
    QTest::mousePress(canvas(), Qt::LeftButton, {}, {70, 60});
    const std::vector<unsigned> order{WM_MOUSEMOVE, WM_LBUTTONDOWN};
    EXPECT_EQ(order, received);
}

TEST_F(EventBackend, MakesOneMoveOfThoseThatNobodyHasLookedAt)
{
    const auto taken = pump(WM_MOUSEMOVE, [&] {
        for (int x = 1; x <= 9; ++x) {
            QTest::mouseMove(canvas(), {x, 5});
        }
    });
    ASSERT_EQ(1u, taken.size());
    EXPECT_EQ(CPoint(9, 5), pointOfLParam(taken[0].lParam));
}

TEST_F(EventBackend, CountsTheSecondPressOfADoubleClickAsOneMore)
{
    const auto taken = pump(WM_KEYDOWN, [&] {
        QTest::mouseClick(canvas(), Qt::LeftButton, {}, {5, 5});
        QTest::mouseDClick(canvas(), Qt::LeftButton, {}, {5, 5});
        QTest::keyPress(&text, Qt::Key_Escape);
    });
    const std::vector<unsigned> order = kinds(taken);
    EXPECT_EQ(2, std::count(order.begin(), order.end(), unsigned{WM_LBUTTONDOWN}));
}

TEST_F(EventBackend, QueuesTheMoveOfTheWarpedPointerBeforeALaterKey)
{
    const CPoint screen = view.ClientToScreen({40, 30});
    const auto taken = pump(WM_KEYDOWN, [&] {
        SetCursorPos(screen.x, screen.y);
        QTest::keyPress(&text, Qt::Key_Left);
    });
    const std::vector<unsigned> order{WM_MOUSEMOVE, WM_KEYDOWN};
    EXPECT_EQ(order, kinds(taken));
    EXPECT_EQ(CPoint(40, 30), pointOfLParam(taken[0].lParam));
    EXPECT_EQ(screen, backend.cursorPosition());
}

TEST_F(EventBackend, HoldsMousePositionsInsideTheClip)
{
    const CRect clip(view.ClientToScreen({0, 0}), view.ClientToScreen({50, 40}));
    ClipCursor(&clip);
    const auto taken = pump(WM_MOUSEMOVE, [&] { QTest::mouseMove(canvas(), {200, 10}); });
    ClipCursor(nullptr);
    ASSERT_EQ(1u, taken.size());
    EXPECT_EQ(CPoint(49, 10), pointOfLParam(taken[0].lParam));
}

TEST_F(EventBackend, TellsTheKeysHeldAtTheMessageAndNotLaterOnes)
{
    view.SetCapture();
    QTest::mousePress(canvas(), Qt::LeftButton, Qt::ControlModifier, {5, 5});
    QTest::mouseRelease(canvas(), Qt::LeftButton, Qt::NoModifier, {5, 5});
    MSG message;
    GetMessageW(&message, nullptr, 0, 0);
    EXPECT_EQ(0x8000, GetKeyState(VK_CONTROL));
    GetMessageW(&message, nullptr, 0, 0);
    EXPECT_EQ(0, GetKeyState(VK_CONTROL));
    ReleaseCapture();
}

TEST_F(EventBackend, EndsTheWaitWhenTheWindowIsHidden)
{
    pump(WM_QUIT, [&] { window.hide(); });
    EXPECT_TRUE(lost);
}

TEST_F(EventBackend, DoesNotWaitForAWindowThatCannotBeSeen)
{
    window.hide();
    pump(WM_QUIT, [] {});
    EXPECT_TRUE(lost);
}

TEST_F(EventBackend, EndsTheWaitWhenTheViewsWidgetDies)
{
    pump(WM_QUIT, [&] { delete view.widget(); });
    EXPECT_TRUE(lost);
    CRect client;
    view.GetClientRect(client);
    EXPECT_TRUE(client.IsRectEmpty());
}

TEST_F(EventBackend, LetsQtRunWhileItWaits)
{
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (++ticks == 3) {
            QTest::keyPress(&text, Qt::Key_Escape);
        }
    });
    timer.start(1);
    pump(WM_KEYDOWN, [] {});
    EXPECT_EQ(3, ticks);
}

TEST_F(EventBackend, DispatchesPostedMessagesWhileNothingWaits)
{
    view.PostMessage(WM_COMMAND, 7, 0);
    view.Invalidate();
    view.Invalidate();
    EXPECT_TRUE(received.empty());
    QCoreApplication::processEvents();
    const std::vector<unsigned> order{WM_COMMAND, WM_PAINT};
    EXPECT_EQ(order, received);
}

TEST_F(EventBackend, GivesKeysThatWereTypedAheadToTheFocusAfterThePump)
{
    pump(
        WM_KEYDOWN,
        [&] {
            QTest::keyPress(&text, Qt::Key_Escape);
            QTest::keyClicks(&text, "ab");
        },
        false);
    QCoreApplication::processEvents();
    EXPECT_EQ("ab", text.text());
}

TEST_F(EventBackend, LeavesItsKeysToAMessageBoxOverThePump)
{
    int answer = 0;
    const auto taken = pump(WM_KEYDOWN, [&] {
        QTimer::singleShot(
            0, &window, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
        answer = MessageBoxW(L"Go on?", L"Test", MB_YESNOCANCEL);
        QTest::keyPress(&text, Qt::Key_A);
    });
    EXPECT_EQ(IDCANCEL, answer);
    ASSERT_EQ(1u, taken.size());
    EXPECT_EQ(unsigned{'A'}, taken[0].wParam);
}

TEST_F(EventBackend, AnswersAPopupMenuByTheIdOfItsRow)
{
    CMenu menu;
    menu.AppendMenu(30067, L"Move & turn");
    menu.appendSeparator();
    menu.AppendMenu(30074, L"Erase");
    QTimer::singleShot(0, &window, [] {
        QWidget* const shown = QApplication::activePopupWidget();
        ASSERT_NE(nullptr, shown);
        EXPECT_EQ("Move && turn", shown->actions()[0]->text());
        QTest::keyClick(shown, Qt::Key_Down);
        QTest::keyClick(shown, Qt::Key_Down);
        QTest::keyClick(shown, Qt::Key_Return);
    });
    EXPECT_EQ(30074u, menu.TrackPopupMenu(view.ClientToScreen({5, 5}), &view));
}

TEST_F(EventBackend, AsksForALineOfText)
{
    QTimer::singleShot(0, &window, [] {
        QWidget* const dialog = QApplication::activeModalWidget();
        ASSERT_NE(nullptr, dialog);
        auto* const edit = dialog->findChild<QLineEdit*>();
        EXPECT_EQ("3", edit->text());
        edit->setText("12");
        QTest::keyClick(edit, Qt::Key_Return);
    });
    CString answer = L"3";
    EXPECT_TRUE(backend.askText(&view, L"Number of Divide:", answer));
    EXPECT_EQ(CString(L"12"), answer);
}

TEST_F(EventBackend, KeepsThePictureThroughAResize)
{
    CDC& dc = *view.GetDC();
    const CPen pen(PS_SOLID, 0, RGB(255, 0, 0));
    dc.SelectObject(&pen);
    dc.MoveTo(5, 5);
    dc.LineTo(50, 5);
    window.resize(500, 400);
    QCoreApplication::processEvents();
    EXPECT_EQ(&dc, view.GetDC());
    EXPECT_EQ(QColor(Qt::red), view.picture().pixelColor(20, 5));
    EXPECT_EQ(canvas()->size(), view.picture().size());
    EXPECT_EQ(std::vector<unsigned>{WM_SIZE}, received);
    dc.SelectObject(static_cast<const CPen*>(nullptr));
}

TEST_F(EventBackend, BringsStrokesToTheScreenAndTakesThemOffInXor)
{
    CDC& dc = *view.GetDC();
    const QImage blank = canvas()->grab().toImage();
    const CPen pen(PS_SOLID, 0, RGB(255, 255, 0));
    dc.SelectObject(&pen);
    dc.SetROP2(R2_XORPEN);
    const auto stroke = [&] {
        dc.MoveTo(10, 10);
        dc.LineTo(90, 70);
    };
    stroke();
    EXPECT_NE(blank, canvas()->grab().toImage());
    stroke();
    EXPECT_EQ(blank, canvas()->grab().toImage());
    dc.SelectObject(static_cast<const CPen*>(nullptr));
}

struct KeyRow {
    const char* name;
    int key;
    Qt::KeyboardModifiers modifiers;
    unsigned code;
};

class VirtualKeys : public testing::TestWithParam<KeyRow> {};

TEST_P(VirtualKeys, AreThoseOfTheInputs)
{
    EXPECT_EQ(GetParam().code, virtualKeyOf(GetParam().key, GetParam().modifiers));
}

// As a number the sign '(' is the code of the arrow down, and '%' that of the arrow to the left.
INSTANTIATE_TEST_SUITE_P(
    Keys, VirtualKeys,
    testing::Values(KeyRow{"Letter", Qt::Key_L, {}, 'L'}, KeyRow{"Digit", Qt::Key_7, {}, '7'},
                    KeyRow{"PadDigit", Qt::Key_7, Qt::KeypadModifier, 0x67},
                    KeyRow{"PadEnter", Qt::Key_Enter, Qt::KeypadModifier, VK_RETURN},
                    KeyRow{"Break", Qt::Key_Pause, Qt::ControlModifier, VK_CANCEL},
                    KeyRow{"F4", Qt::Key_F4, {}, VK_F4}, KeyRow{"Down", Qt::Key_Down, {}, VK_DOWN},
                    KeyRow{"Parenthesis", Qt::Key_ParenLeft, Qt::ShiftModifier, '9'},
                    KeyRow{"Percent", Qt::Key_Percent, Qt::ShiftModifier, '5'},
                    KeyRow{"Comma", Qt::Key_Comma, {}, 0xbc},
                    KeyRow{"Less", Qt::Key_Less, {}, 0xbc},
                    KeyRow{"Umlaut", Qt::Key_Udiaeresis, {}, kUnnamedKey}),
    [](const auto& tested) { return std::string(tested.param.name); });

} // namespace
