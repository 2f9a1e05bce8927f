#include "commandfixture.h"

namespace {

class GetRealTest : public CommandTest {
protected:
    int ask(wchar_t key = L'\0') { return handler().GetReal(9, key, value); }
    double value = 5.0;
};

TEST_F(GetRealTest, ATypedNumberEndsWithReturnOrSpace)
{
    type(L"2.5\n");
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(2.5, value);
    type(L"12 ");
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(12.0, value);
    expectReleased();
}

TEST_F(GetRealTest, WhatIsNotAboveZeroGivesOne)
{
    for (const wchar_t* typed : {L"0\n", L"-3\n", L"\n", L"wide\n"}) {
        value = 5.0;
        type(typed);
        EXPECT_EQ(InputPoint, ask());
        EXPECT_EQ(1.0, value);
    }
}

TEST_F(GetRealTest, CharactersAreDispatchedAsTheyCome)
{
    type(L"2.5\n");
    ask();
    EXPECT_EQ(L"P9: 2.5", line());
    EXPECT_EQ(3, received(WM_CHAR)); // Return leaves none
    EXPECT_EQ(0, received(WM_KEYDOWN));
}

TEST_F(GetRealTest, KeysWithoutAWindowGoToTheOneThatWaits)
{
    for (const unsigned key : {unsigned{'7'}, unsigned{VK_RETURN}}) {
        backend.postMessage({nullptr, WM_KEYDOWN, key, 0, {}});
    }
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(7.0, value);
    EXPECT_EQ(L"P9: 7", line());
}

TEST_F(GetRealTest, BackspaceTakesTheLastOneAndNeverEatsThePrompt)
{
    type(L"29\b\b\b\b4\n");
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(4.0, value);
    EXPECT_EQ(L"P9: 4", line());
}

TEST_F(GetRealTest, TheKeyIsMetAsItGoesDown)
{
    type(L"7a");
    EXPECT_EQ(InputKeyword, ask(L'A'));
    EXPECT_EQ(5.0, value);
    EXPECT_EQ(L"P9: 7", line()); // the key makes no character
    expectReleased();
}

TEST_F(GetRealTest, WithoutAKeyLettersAreText)
{
    type(L"7a\n");
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(7.0, value);
}

TEST_F(GetRealTest, EscapeAndBreakCancel)
{
    type(L"7");
    press(VK_ESCAPE);
    EXPECT_EQ(InputCancel, ask());
    press(VK_CANCEL);
    EXPECT_EQ(InputCancel, ask());
    EXPECT_EQ(5.0, value);
    expectReleased();
}

TEST_F(GetRealTest, MouseAndAllElseGoToTheWindow)
{
    moveTo({5, 5});
    click({5, 5});
    mouse(WM_RBUTTONDOWN, {5, 5});
    type(L"2\n");
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(1, received(WM_MOUSEMOVE));
    EXPECT_EQ(1, received(WM_LBUTTONDOWN));
    EXPECT_EQ(1, received(WM_RBUTTONDOWN));
}

TEST_F(GetRealTest, TheBufferStopsAtSixtyThreeCharacters)
{
    type(std::wstring(62, L'0') + L"45\n");
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(4.0, value);
    EXPECT_EQ(std::wstring(L"P9: ") + std::wstring(62, L'0') + L"4", line());
}

TEST_F(GetRealTest, ALostCaptureLeavesTheValue)
{
    type(L"2");
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(5.0, value);
    expectReleased();
}

TEST_F(GetRealTest, AnEmptyWindowCancels)
{
    map({0, 0});
    type(L"2\n");
    EXPECT_EQ(InputCancel, ask());
    EXPECT_EQ(2u, backend.queued());
}

class GetStringTest : public CommandTest {
protected:
    int ask() { return handler().GetString(29, text); }
    CString text = L"before";
};

TEST_F(GetStringTest, ATextEndsWithReturnAndMayBeEmpty)
{
    type(L"Pump-7\n");
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(L"Pump-7", text.str());
    type(L"\n");
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(L"", text.str());
}

TEST_F(GetStringTest, SpaceEndsItTooUnderTheFreeTextPrompt)
{
    type(L"two words\n");
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(L"two", text.str());
}

TEST_F(GetStringTest, EscapeCancelsAndKeepsTheText)
{
    type(L"two");
    press(VK_ESCAPE);
    EXPECT_EQ(InputCancel, ask());
    EXPECT_EQ(L"before", text.str());
}

TEST_F(GetStringTest, TheBufferStopsAt287Characters)
{
    type(std::wstring(300, L'x') + L"\n");
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(287, text.GetLength());
    EXPECT_EQ(287u + 5u, line().size());
}

TEST_F(GetStringTest, BackspaceWorksOnTheText)
{
    type(L"ab\bc\n");
    ask();
    EXPECT_EQ(L"ac", text.str());
}

class GetKeyWordTest : public CommandTest {
protected:
    int ask(const wchar_t* keys = L"YN")
    {
        key = 0;
        return handler().GetKeyWord(47, keys, key);
    }
    wchar_t key = 0;
};

TEST_F(GetKeyWordTest, AKeyOfTheListIsFoldedAndEndsIt)
{
    type(L"n");
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(L'N', key);
    expectReleased();
}

TEST_F(GetKeyWordTest, ARefusedKeyStaysInTheVariable)
{
    type(L"q\n");
    EXPECT_EQ(InputCancel, ask());
    EXPECT_EQ(L'Q', key);
}

TEST_F(GetKeyWordTest, ReturnSpaceEscapeAndBreakAllGiveZero)
{
    for (const unsigned end : {VK_RETURN, VK_SPACE, VK_ESCAPE, VK_CANCEL}) {
        press(end);
        EXPECT_EQ(InputCancel, ask());
        EXPECT_EQ(0, static_cast<int>(key));
    }
    expectReleased();
}

TEST_F(GetKeyWordTest, ItsWindowSeesEveryMessageFirst)
{
    wchar_t keyWhenDispatched = L'?';
    display.setHandler([&](const MSG& sent) {
        if (sent.message == WM_CHAR) {
            keyWhenDispatched = key;
        }
        return LRESULT(0);
    });
    moveTo({5, 5});
    type(L"y");
    EXPECT_EQ(InputPoint, ask());
    EXPECT_EQ(0, static_cast<int>(keyWhenDispatched));
    EXPECT_EQ(1, received(WM_MOUSEMOVE));
    EXPECT_EQ(1, received(WM_KEYDOWN));
    EXPECT_EQ(1, received(WM_CHAR));
}

TEST_F(GetKeyWordTest, CodesAboveTheLettersAreFoldedToo)
{
    type(L"{");
    EXPECT_EQ(InputPoint, ask(L"["));
    EXPECT_EQ(L'[', key);
}

TEST_F(GetKeyWordTest, ALostCaptureIsNoKey)
{
    EXPECT_EQ(InputCancel, ask());
    EXPECT_EQ(0, static_cast<int>(key));
    expectReleased();
}

} // namespace
