#include "commandfixture.h"

namespace {

class HistoryTest : public CommandTest {
protected:
    /// Shows a prompt with a text typed behind it.
    void answer(int prompt, const wchar_t* typed)
    {
        handler().SetPrompt(prompt);
        message.SetWindowText(message.GetWindowText() + typed);
    }
};

TEST_F(HistoryTest, APromptStandsInTheMessageLineAndIsShownAtOnce)
{
    handler().SetPrompt(3);
    EXPECT_EQ(L"Start point: ", line());
    EXPECT_EQ(3, handler().currentPrompt());
    ASSERT_FALSE(message.received().empty());
    EXPECT_EQ(unsigned{WM_PAINT}, message.received().back().message);
}

TEST_F(HistoryTest, EachPromptPushesTheLineBeforeWithItsAnswer)
{
    answer(3, L"1,2");
    handler().SetPrompt(5);
    EXPECT_EQ(L"Start point: 1,2", told());
    message.SetWindowText(L"End point: 3,4");
    EXPECT_TRUE(handler().setMsg());
    EXPECT_EQ(L"Start point: 1,2\nEnd point: 3,4", told());
    EXPECT_EQ(L"Start point: 1,2\nEnd point: 3,4", handler().getStrings().str());
}

TEST_F(HistoryTest, FlushingEmptiesTheLineScrollsAndRedraws)
{
    answer(3, L"1,2");
    const int drawn = history.invalidations();
    handler().setMsg();
    EXPECT_EQ(L"", line());
    EXPECT_EQ(0, handler().currentPrompt());
    EXPECT_EQ(unsigned{WM_VSCROLL}, history.received().back().message);
    EXPECT_EQ(7u, history.received().back().wParam);
    EXPECT_EQ(drawn + 1, history.invalidations());
}

TEST_F(HistoryTest, AHistoryThatEndsInALineBreakGetsNoSecondOne)
{
    history.SetWindowText(L"before\n");
    message.SetWindowText(L"LINE");
    handler().setMsg();
    EXPECT_EQ(L"before\nLINE", told());
}

TEST_F(HistoryTest, AnAnswerOfTheWrongKindGetsTheMessageBehindIt)
{
    answer(3, L"here");
    EXPECT_FALSE(handler().setMsg());
    EXPECT_EQ(L"Start point: here\nInvalid input.", told());
    EXPECT_EQ(1u, handler().refusals());
}

TEST_F(HistoryTest, NothingTypedIsNeverInvalid)
{
    answer(3, L"");
    EXPECT_TRUE(handler().setMsg());
    EXPECT_EQ(L"Start point: ", told());
    EXPECT_EQ(0u, handler().refusals());
}

TEST_F(HistoryTest, TextBehindAPromptWithoutAKindIsInvalidButNoRefusal)
{
    answer(16, L"E");
    EXPECT_FALSE(handler().setMsg());
    EXPECT_EQ(L"P16: E\nInvalid input.", told());
    EXPECT_EQ(0u, handler().refusals());
}

TEST_F(HistoryTest, WithoutThePromptInItTheWholeLineIsLookedAt)
{
    handler().SetPrompt(9);
    message.SetWindowText(L"12.5");
    EXPECT_TRUE(handler().setMsg());
    handler().SetPrompt(9);
    message.SetWindowText(L"wide");
    EXPECT_FALSE(handler().setMsg());
}

struct KindRow {
    const char* name;
    int prompt;
    const wchar_t* typed;
    bool valid;
};

class KindTest : public HistoryTest, public testing::WithParamInterface<KindRow> {};

TEST_P(KindTest, IsValidatedByItsKind)
{
    answer(GetParam().prompt, GetParam().typed);
    EXPECT_EQ(GetParam().valid, handler().setMsg());
}

INSTANTIATE_TEST_SUITE_P(
    Answers, KindTest,
    testing::Values(KindRow{"RealNumber", 9, L"2.5", true},
                    KindRow{"RealBlankIsNumeric", 9, L" ", true},
                    KindRow{"RealWord", 9, L"two", false}, KindRow{"PointPair", 3, L"1,2", true},
                    KindRow{"PointNumber", 3, L"5", false}, KindRow{"PointOddX", 3, L"abc,5", true},
                    KindRow{"IntegerNumber", 15, L"6", true},
                    KindRow{"IntegerWord", 15, L"six", false},
                    KindRow{"TextWord", 29, L"any thing", true},
                    KindRow{"TextBlank", 29, L" ", false}, KindRow{"NoneNumber", 40, L"30", false}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(HistoryTest, ALiteralPromptIsShownAndWhatFollowsIsNotValidated)
{
    answer(3, L"1,2");
    handler().Prompt(L"Length 5.0: ");
    EXPECT_EQ(L"Length 5.0: ", line());
    EXPECT_EQ(L"Start point: 1,2", told());
    message.SetWindowText(L"Length 5.0: anything");
    EXPECT_TRUE(handler().setMsg());
}

TEST_F(HistoryTest, ANegativePromptLeavesTheLine)
{
    handler().Prompt(L"Length 5.0: ");
    handler().SetPrompt(-1);
    EXPECT_EQ(L"Length 5.0: ", line());
    EXPECT_EQ(L"", told());
}

TEST_F(HistoryTest, PromptZeroClearsTheLine)
{
    handler().SetPrompt(3);
    handler().SetPrompt(0);
    EXPECT_EQ(L"", line());
    EXPECT_EQ(0, handler().currentPrompt());
}

TEST_F(HistoryTest, WithoutAMessageWindowNothingHappens)
{
    handler().SetMsgWindow(nullptr);
    handler().SetPrompt(3);
    handler().Prompt(L"literal");
    EXPECT_TRUE(handler().setMsg());
    EXPECT_EQ(0, handler().currentPrompt());
    EXPECT_EQ(L"", told());
}

TEST_F(HistoryTest, WithoutPromptsTheLineIsEmptyAndStillFlushed)
{
    handler().SetPromptHandle(nullptr);
    handler().SetPrompt(3);
    EXPECT_EQ(L"", line());
    EXPECT_EQ(3, handler().currentPrompt());
    message.SetWindowText(L"1,2");
    EXPECT_TRUE(handler().setMsg());
    EXPECT_EQ(L"1,2", told());
}

TEST_F(HistoryTest, WithoutAHistoryWindowTheTextIsKept)
{
    handler().setMsgWindow(nullptr, &message);
    message.SetWindowText(L"LINE");
    handler().setMsg();
    message.SetWindowText(L"ARC");
    handler().setMsg();
    EXPECT_EQ(L"LINE\nARC", handler().getStrings().str());
}

TEST_F(HistoryTest, WindowsThatAreGoneCountAsNone)
{
    auto shortLived = std::make_unique<CVexMemoryWindow>();
    handler().setMsgWindow(&history, shortLived.get());
    shortLived.reset();
    handler().SetPrompt(3);
    EXPECT_EQ(nullptr, handler().messageWindow());
    EXPECT_EQ(0, handler().currentPrompt());
    shortLived = std::make_unique<CVexMemoryWindow>();
    handler().setMsgWindow(shortLived.get(), &message);
    shortLived.reset();
    message.SetWindowText(L"LINE");
    EXPECT_TRUE(handler().setMsg());
    EXPECT_EQ(L"LINE", handler().getStrings().str());
}

TEST_F(HistoryTest, APromptWithoutAColonIsPartOfWhatIsReadBehindIt)
{
    putBytes(folder / "bare.msg", "One;\nTwo;\nStart;\n");
    CVexPromptHandler bare(wide(folder / "bare.msg"));
    handler().SetPromptHandle(&bare);
    answer(3, L"1,2");
    EXPECT_TRUE(handler().setMsg()); // "Start1" before the comma reads as 0
    answer(3, L"");
    EXPECT_TRUE(handler().setMsg());
    EXPECT_EQ(L"Start1,2\nStart", told());
}

TEST_F(HistoryTest, AMenuStartLogsTheTextReadLastAndIsRepeatedByEnter)
{
    message.SetWindowText(L"CIRCLE");
    handler().setMsg();
    message.SetWindowText(L"not read again");
    handler().SetLastCommand(77);
    // The text of the last read goes in once more: the line itself is only emptied.
    EXPECT_EQ(L"CIRCLE\nCIRCLE", told());
    EXPECT_EQ(L"", line());
    EXPECT_EQ(0, handler().currentPrompt());
    EXPECT_EQ(77u, handler().lastCommand());
}

TEST_F(HistoryTest, LinesCanBeAddedWithoutTouchingTheMessageLine)
{
    handler().SetPrompt(3);
    handler().appendHistory(L"3 found");
    EXPECT_EQ(L"Start point: ", line());
    EXPECT_EQ(L"3 found", told());
    EXPECT_EQ(3, handler().currentPrompt());
}

TEST_F(HistoryTest, WhatAnInputTookIsNoRefusalEvenIfTheKindDoesNotKnowIt)
{
    answer(5, L"5<90");
    handler().noteAnswer(InputTypedPoint);
    EXPECT_FALSE(handler().setMsg());
    EXPECT_EQ(0u, handler().refusals());
    answer(5, L"5<90");
    EXPECT_FALSE(handler().setMsg()); // the next line stands for itself
    EXPECT_EQ(1u, handler().refusals());
}

} // namespace
