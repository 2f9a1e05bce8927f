#include "platform/device/cdc.h"
#include "platform/headless/vexheadless.h"

#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <string>

namespace {

class HeadlessTest : public testing::Test {
protected:
    HeadlessTest() { m_before = CVexBackend::install(&backend); }
    ~HeadlessTest() override { CVexBackend::install(m_before); }

    MSG next()
    {
        MSG message;
        EXPECT_TRUE(GetMessageW(&message, nullptr, 0, 0));
        return message;
    }
    // What a pressed key types; NUL for a key that only acts.
    wchar_t typed(unsigned key)
    {
        const MSG down{&window, WM_KEYDOWN, key, 0, {}};
        TranslateMessage(&down);
        return backend.queued() == 0 ? L'\0' : static_cast<wchar_t>(next().wParam);
    }

    CVexHeadlessBackend backend;
    CVexMemoryWindow window{{800, 600}};

private:
    CVexBackend* m_before;
};

TEST_F(HeadlessTest, PostedMessagesComeInOrderAndAreDispatchedToTheirWindow)
{
    window.PostMessage(WM_KEYDOWN, VK_RETURN, 0);
    window.PostMessage(WM_USER, 1, 2);
    const MSG first = next();
    EXPECT_EQ(static_cast<unsigned>(WM_KEYDOWN), first.message);
    const MSG second = next();
    window.setHandler([](const MSG& message) { return static_cast<LRESULT>(message.wParam + 41); });
    EXPECT_EQ(42, DispatchMessageW(&second));
    ASSERT_EQ(1u, window.received().size());
    EXPECT_EQ(2, window.received()[0].lParam);
}

TEST_F(HeadlessTest, ADryQueueTakesTheCaptureAwaySoThatEveryPumpEnds)
{
    window.SetCapture();
    window.PostMessage(WM_USER, 0, 0);
    int rounds = 0;
    for (; GetCapture() == &window; ++rounds) {
        ASSERT_LT(rounds, 10);
        next();
    }
    EXPECT_EQ(2, rounds);
    const MSG message = next();
    EXPECT_EQ(0u, message.message);
    EXPECT_EQ(nullptr, message.hwnd);
    EXPECT_EQ(0, DispatchMessageW(&message));
}

TEST_F(HeadlessTest, AScriptMayGoOnWhenTheQueueIsDry)
{
    int asked = 0;
    backend.setWhenDry([&] {
        if (++asked == 1) {
            window.PostMessage(WM_USER + 1, 0, 0);
        }
    });
    window.SetCapture();
    EXPECT_EQ(WM_USER + 1u, next().message);
    EXPECT_EQ(&window, GetCapture());
    EXPECT_EQ(0u, next().message);
    EXPECT_EQ(nullptr, GetCapture());
    EXPECT_EQ(2, asked);
}

TEST_F(HeadlessTest, QuitEndsThePumpAndTheCapture)
{
    window.SetCapture();
    window.PostMessage(WM_QUIT, 0, 0);
    MSG message;
    EXPECT_FALSE(GetMessageW(&message, nullptr, 0, 0));
    EXPECT_EQ(static_cast<unsigned>(WM_QUIT), message.message);
    EXPECT_EQ(nullptr, GetCapture());
}

TEST_F(HeadlessTest, AWindowThatDiesGivesBackTheCaptureAndItsMessages)
{
    auto dying = std::make_unique<CVexMemoryWindow>();
    dying->SetCapture();
    dying->PostMessage(WM_USER, 0, 0);
    window.PostMessage(WM_USER, 7, 0);
    dying.reset();
    EXPECT_EQ(nullptr, GetCapture());
    EXPECT_EQ(1u, backend.queued());
    EXPECT_EQ(&window, next().hwnd);
}

TEST_F(HeadlessTest, AMessageTakenBeforeItsWindowDiedGoesNowhere)
{
    auto dying = std::make_unique<CVexMemoryWindow>();
    dying->PostMessage(WM_KEYDOWN, 'L', 0);
    const MSG taken = next();
    EXPECT_TRUE(CWnd::isLiving(taken.hwnd));
    dying.reset();
    EXPECT_FALSE(CWnd::isLiving(taken.hwnd));
    EXPECT_TRUE(TranslateMessage(&taken)) << "it is a key message all the same";
    EXPECT_EQ(0u, backend.queued());
    EXPECT_EQ(0, DispatchMessageW(&taken));
}

TEST_F(HeadlessTest, AWindowThatDiesUnderAnotherBackendIsPassedOver)
{
    auto dying = std::make_unique<CVexMemoryWindow>();
    dying->SetCapture();
    dying->PostMessage(WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    window.PostMessage(WM_USER, 7, 0);
    CVexHeadlessBackend other;
    CVexBackend* const before = CVexBackend::install(&other);
    dying.reset();
    CVexBackend::install(before);
    EXPECT_EQ(&window, next().hwnd);
    EXPECT_EQ(nullptr, GetCapture());
}

TEST_F(HeadlessTest, AWindowMayEndItselfWhileItAnswers)
{
    auto dying = std::make_unique<CVexMemoryWindow>();
    int answered = 0;
    dying->setHandler([&](const MSG&) {
        dying.reset();
        return LRESULT{++answered};
    });
    dying->PostMessage(WM_USER, 0, 0);
    const MSG taken = next();
    EXPECT_EQ(1, DispatchMessageW(&taken));
    EXPECT_EQ(0, DispatchMessageW(&taken));
    EXPECT_EQ(1, answered);
}

TEST_F(HeadlessTest, ACaptureThatAnotherWindowTookIsLost)
{
    CVexMemoryWindow other;
    window.SetCapture();
    other.SetCapture();
    EXPECT_EQ(&other, GetCapture());
    backend.postMessage({nullptr, WM_MOUSEMOVE, 0, MAKELPARAM(1, 2), {}});
    EXPECT_EQ(&other, next().hwnd);
}

TEST_F(HeadlessTest, ClipsOfTheWholeRangeDoNotOverflow)
{
    constexpr int kMost = std::numeric_limits<int>::max();
    const CRect all(-kMost - 1, -kMost - 1, kMost, kMost);
    ClipCursor(&all);
    SetCursorPos(-2000000000, 2000000000);
    EXPECT_EQ(CPoint(-2000000000, 2000000000), backend.cursorPosition());
    EXPECT_EQ(CPoint(0, 0), all.CenterPoint());
}

TEST_F(HeadlessTest, AnotherWindowsEndLeavesTheCapture)
{
    window.SetCapture();
    std::make_unique<CVexMemoryWindow>().reset();
    EXPECT_EQ(&window, GetCapture());
    ReleaseCapture();
    EXPECT_EQ(nullptr, GetCapture());
}

TEST_F(HeadlessTest, MouseMessagesMoveThePointer)
{
    window.PostMessage(WM_MOUSEMOVE, 0, MAKELPARAM(30, -4));
    const MSG message = next();
    EXPECT_EQ(CPoint(30, -4), message.pt);
    CPoint pointer;
    GetCursorPos(&pointer);
    EXPECT_EQ(CPoint(30, -4), pointer);
}

TEST_F(HeadlessTest, AMouseMessageWithoutAWindowGoesToTheCapture)
{
    window.SetCapture();
    backend.postMessage({nullptr, WM_LBUTTONDOWN, 0, MAKELPARAM(1, 2), {}});
    EXPECT_EQ(&window, next().hwnd);
}

TEST_F(HeadlessTest, ThePointerStaysInItsClip)
{
    const CRect clip(10, 20, 30, 40);
    ClipCursor(&clip);
    SetCursorPos(100, 0);
    EXPECT_EQ(CPoint(29, 20), backend.cursorPosition());
    ClipCursor(nullptr);
    SetCursorPos(100, 0);
    EXPECT_EQ(CPoint(100, 0), backend.cursorPosition());
    EXPECT_FALSE(backend.clip().has_value());
}

TEST_F(HeadlessTest, ACapturingWindowSeesThePointerMoveBeforeWhatIsQueued)
{
    window.SetCapture();
    window.PostMessage(WM_KEYUP, VK_LEFT, 0);
    SetCursorPos(30, 40);
    EXPECT_EQ(CPoint(30, 40), backend.cursorPosition());
    const MSG moved = next();
    EXPECT_EQ(static_cast<unsigned>(WM_MOUSEMOVE), moved.message);
    EXPECT_EQ(&window, moved.hwnd);
    EXPECT_EQ(CPoint(30, 40), pointOfLParam(moved.lParam));
    EXPECT_EQ(static_cast<unsigned>(WM_KEYUP), next().message);
}

TEST_F(HeadlessTest, NobodyIsToldOfAPointerThatStaysOrThatNobodyHasCaptured)
{
    SetCursorPos(30, 40);
    EXPECT_EQ(0u, backend.queued());
    window.SetCapture();
    SetCursorPos(30, 40);
    EXPECT_EQ(0u, backend.queued());
}

TEST_F(HeadlessTest, MessageBoxesAreRecordedAndAnsweredFromTheList)
{
    backend.answerNext(IDNO);
    EXPECT_EQ(IDNO, MessageBoxW(L"Save?", L"Vex", MB_YESNOCANCEL));
    EXPECT_EQ(IDYES, MessageBoxW(L"Save?", L"Vex", MB_YESNOCANCEL));
    EXPECT_EQ(IDYES, MessageBoxW(L"Save?", L"Vex", MB_YESNO | 0x20)); // with an icon
    EXPECT_EQ(IDOK, MessageBoxW(L"Done.", L"Vex", MB_OKCANCEL));
    ASSERT_EQ(4u, backend.shownMessages().size());
    EXPECT_EQ(backend.shownMessages()[0].text, L"Save?");
    EXPECT_EQ(IDNO, backend.shownMessages()[0].answer);
    EXPECT_EQ(backend.shownMessages()[3].caption, L"Vex");
}

TEST_F(HeadlessTest, KeyStateIsWhatTheScriptSets)
{
    EXPECT_EQ(0, GetKeyState(VK_SHIFT));
    backend.setKeyState(VK_SHIFT, 0x8000);
    EXPECT_EQ(0x8000, GetKeyState(VK_SHIFT));
    backend.setKeyState(VK_SHIFT, 1);
    EXPECT_EQ(1, GetKeyState(VK_SHIFT));
}

TEST_F(HeadlessTest, KeysTypeTheirCharactersInFrontOfTheQueue)
{
    window.PostMessage(WM_USER, 0, 0);
    const MSG down{&window, WM_KEYDOWN, 'L', 3, {}};
    EXPECT_TRUE(TranslateMessage(&down));
    const MSG character = next();
    EXPECT_EQ(static_cast<unsigned>(WM_CHAR), character.message);
    EXPECT_EQ(static_cast<WPARAM>('l'), character.wParam);
    EXPECT_EQ(3, character.lParam);
    EXPECT_EQ(&window, character.hwnd);
    EXPECT_EQ(static_cast<unsigned>(WM_USER), next().message);
}

TEST_F(HeadlessTest, CoordinatesCanBeTyped)
{
    std::wstring text;
    for (const unsigned key : {0x32u, 0xbcu, 0xbdu, 0x61u, 0x6eu, 0x35u, unsigned{VK_SPACE}}) {
        text += typed(key);
    }
    EXPECT_EQ(L"2,-1.5 ", text);
    EXPECT_EQ(L'\r', typed(VK_RETURN));
    EXPECT_EQ(L'\x1b', typed(VK_ESCAPE));
    EXPECT_EQ(L'\b', typed(VK_BACK));
}

TEST_F(HeadlessTest, ShiftControlAndAltChangeWhatAKeyTypes)
{
    backend.setKeyState(VK_SHIFT, 0x8000);
    EXPECT_EQ(L'L', typed('L'));
    EXPECT_EQ(L'@', typed('2'));
    EXPECT_EQ(L'<', typed(0xbc));
    backend.setKeyState(VK_SHIFT, 0);
    backend.setKeyState(VK_CONTROL, 0x8000);
    EXPECT_EQ(L'\x1a', typed('Z'));
    backend.setKeyState(VK_CONTROL, 0);
    backend.setKeyState(VK_MENU, 0x8000);
    EXPECT_EQ(L'\0', typed('L'));
}

TEST_F(HeadlessTest, KeysThatOnlyActTypeNothing)
{
    for (const unsigned key : {VK_DELETE, VK_LEFT, VK_END, VK_F1, VK_SHIFT}) {
        EXPECT_EQ(L'\0', typed(key)) << key;
    }
    const MSG up{&window, WM_KEYUP, 'L', 0, {}};
    EXPECT_TRUE(TranslateMessage(&up));
    EXPECT_EQ(0u, backend.queued());
    EXPECT_FALSE(TranslateMessage(nullptr));
}

TEST_F(HeadlessTest, AMemoryWindowHasItsClientAreaAndTellsItsSize)
{
    CRect client;
    window.GetClientRect(client);
    EXPECT_EQ(CRect(0, 0, 800, 600), client);
    window.resize({1024, 768});
    window.GetClientRect(client);
    EXPECT_EQ(CRect(0, 0, 1024, 768), client);
    ASSERT_EQ(1u, window.received().size());
    EXPECT_EQ(CPoint(1024, 768), pointOfLParam(window.received()[0].lParam));
    EXPECT_EQ(1024, window.GetDC()->GetDeviceCaps(HORZRES));
}

TEST_F(HeadlessTest, WindowsKeepTextAndRepaintRequests)
{
    window.SetWindowText(L"Command: ");
    EXPECT_EQ(window.GetWindowText(), L"Command: ");
    window.Invalidate();
    window.Invalidate();
    EXPECT_EQ(2, window.invalidations());
    SetCursor(VexCursor::kPickBox);
    EXPECT_EQ(VexCursor::kPickBox, backend.cursor());
    EXPECT_EQ(nullptr, backend.createImageDC({10, 10}));
}

TEST(BackendTest, WithNoneInstalledTheHeadlessOneAnswers)
{
    CVexBackend* const before = CVexBackend::install(nullptr);
    EXPECT_NE(nullptr, dynamic_cast<CVexHeadlessBackend*>(&CVexBackend::current()));
    MSG message;
    EXPECT_TRUE(GetMessageW(&message, nullptr, 0, 0));
    EXPECT_EQ(0u, message.message);
    CVexBackend::install(before);
}

TEST(BackendTest, ABackendThatDiesInForceIsNotAskedAgain)
{
    CVexBackend* const before = CVexBackend::install(nullptr);
    CVexBackend& usual = CVexBackend::current();
    {
        CVexHeadlessBackend dying;
        CVexBackend::install(&dying);
        EXPECT_EQ(&dying, &CVexBackend::current());
    }
    EXPECT_EQ(&usual, &CVexBackend::current());
    CVexBackend::install(before);
}

TEST(MessageTest, PositionsKeepTheirSign)
{
    EXPECT_EQ(CPoint(-1, -32768), pointOfLParam(MAKELPARAM(-1, -32768)));
    EXPECT_EQ(CPoint(32767, 5), pointOfLParam(MAKELPARAM(32767, 5)));
}

} // namespace
