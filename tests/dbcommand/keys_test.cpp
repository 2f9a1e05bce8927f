#include "commandfixture.h"

namespace {

class KeysTest : public CommandTest {
protected:
    KeysTest() { handler().addCommand(L"100 LINE L"); }
    bool down(unsigned key) { return handler().onKeyDown(key, 1, 0); }
    [[nodiscard]] std::vector<WPARAM> commands() const
    {
        std::vector<WPARAM> numbers;
        for (const MSG& sent : display.received()) {
            if (sent.message == WM_COMMAND) {
                numbers.push_back(sent.wParam);
            }
        }
        return numbers;
    }
};

TEST_F(KeysTest, OtherKeysAreTheEditControls)
{
    message.SetWindowText(L"LIN");
    EXPECT_FALSE(down('E'));
    EXPECT_FALSE(down(VK_BACK));
    EXPECT_FALSE(down(VK_CANCEL));
    EXPECT_EQ(L"LIN", line());
}

TEST_F(KeysTest, ATypedNameReachesTheHostAsItsNumberAndIsLogged)
{
    message.SetWindowText(L" line ");
    EXPECT_TRUE(down(VK_RETURN));
    EXPECT_EQ(std::vector<WPARAM>{100}, commands());
    EXPECT_EQ(L" line ", told());
    EXPECT_EQ(L"", line());
    EXPECT_EQ(100u, handler().lastCommand());
}

TEST_F(KeysTest, SpaceEndsANameLikeReturn)
{
    message.SetWindowText(L"L");
    EXPECT_TRUE(down(VK_SPACE));
    EXPECT_EQ(std::vector<WPARAM>{100}, commands());
}

TEST_F(KeysTest, AnEmptyLineRepeatsTheLastCommand)
{
    handler().SetLastCommand(42);
    EXPECT_TRUE(down(VK_RETURN));
    message.SetWindowText(L"   ");
    EXPECT_TRUE(down(VK_SPACE));
    EXPECT_EQ((std::vector<WPARAM>{42, 42}), commands());
}

TEST_F(KeysTest, AnEmptyLineWithoutALastCommandSendsNothing)
{
    EXPECT_TRUE(down(VK_RETURN));
    EXPECT_TRUE(commands().empty());
}

TEST_F(KeysTest, RunningNumberZeroSendsNothingAndForgetsNothing)
{
    EXPECT_TRUE(handler().RunCommand(7));
    EXPECT_TRUE(handler().RunCommand(0));
    EXPECT_EQ(std::vector<WPARAM>{7}, commands());
    EXPECT_EQ(7u, handler().lastCommand());
}

TEST_F(KeysTest, WithoutADisplayTheNumberIsKept)
{
    handler().SetDispWindow(nullptr);
    EXPECT_TRUE(handler().RunCommand(7));
    EXPECT_EQ(7u, handler().lastCommand());
}

TEST_F(KeysTest, EscapeOnAnEmptyLineLogsCancel)
{
    EXPECT_TRUE(down(VK_ESCAPE));
    EXPECT_EQ(L"Cancel", told());
    EXPECT_EQ(L"", line());
}

TEST_F(KeysTest, EscapeLogsWhatWasTypedAndCancelBehindIt)
{
    handler().SetPrompt(3);
    message.SetWindowText(L"LIN ");
    EXPECT_TRUE(down(VK_ESCAPE)); // valid: no prompt is current any more
    EXPECT_EQ(L"LIN Cancel", told());
    EXPECT_EQ(0, handler().currentPrompt());
}

TEST_F(KeysTest, SpaceOfAFreeTextStaysInTheEditControl)
{
    handler().SetPrompt(VexDb::PromptTextString);
    message.SetWindowText(L"P29: two");
    EXPECT_TRUE(down(VK_SPACE));
    EXPECT_EQ(L"P29: two", line());
    EXPECT_EQ(L"", told());
}

TEST_F(KeysTest, AnUnknownNameWipesTheHistoryToOneLine)
{
    history.SetWindowText(L"one\ntwo\n");
    message.SetWindowText(L"LIME");
    EXPECT_TRUE(down(VK_RETURN));
    EXPECT_EQ(L"Unknown command: LIME", told());
    EXPECT_EQ(L"Unknown command: LIME", handler().getStrings().str());
    EXPECT_EQ(L"", line());
    EXPECT_TRUE(commands().empty());
    EXPECT_EQ(1u, handler().refusals());
}

TEST_F(KeysTest, WhileACommandRunsNoKeyIsConsumed)
{
    const VexBusyScope busy(handler());
    message.SetWindowText(L"LINE");
    EXPECT_FALSE(down(VK_RETURN));
    EXPECT_FALSE(down(VK_ESCAPE));
    EXPECT_EQ(L"LINE", line());
}

TEST_F(KeysTest, CharactersReachTheLineByTheWindowItself)
{
    handler().onChar('A', 1, 0);
    EXPECT_EQ(L"", line());
}

TEST_F(KeysTest, AFinishedCompositionIsAppendedToTheLine)
{
    handler().SetPrompt(29);
    backend.setComposition(L"\u914d\u7ba1");
    handler().OnComposition(0, 0x800);
    EXPECT_EQ(L"P29: \u914d\u7ba1", line());
    handler().OnComposition(0, 0x8); // still composing
    EXPECT_EQ(L"P29: \u914d\u7ba1", line());
}

TEST_F(KeysTest, ACompositionIsCutToItsBuffer)
{
    backend.setComposition(CString(std::wstring(300, L'x')));
    handler().OnComposition(0, 0x800);
    EXPECT_EQ(255u, line().size());
}

TEST_F(KeysTest, TheCompositionsBufferCountsSixteenBitUnits)
{
    backend.setComposition(CString(std::wstring(200, L'\U0001f4d0'))); // two units each
    handler().OnComposition(0, 0x800);
    EXPECT_EQ(std::wstring(127, L'\U0001f4d0'), line());
}

TEST_F(KeysTest, ACompositionWithoutWindowsGoesNowhere)
{
    backend.setComposition(L"text");
    handler().SetDispWindow(nullptr);
    handler().OnComposition(0, 0x800);
    EXPECT_EQ(L"", line());
    handler().SetDispWindow(&display);
    handler().SetMsgWindow(nullptr);
    handler().OnComposition(0, 0x800);
    EXPECT_EQ(L"", line());
}

} // namespace
