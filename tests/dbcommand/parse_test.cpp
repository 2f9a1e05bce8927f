#include "commandfixture.h"

namespace {

class ParseTest : public CommandTest {
protected:
    void put(const wchar_t* text)
    {
        message.SetWindowText(text);
        handler().takeInputText();
    }
};

TEST_F(ParseTest, TheValueStandsBehindTheFirstColon)
{
    put(L"Start: \t 1:30 ");
    EXPECT_EQ(L"1:30", handler().getInputValue().str());
    put(L"  no colon ");
    EXPECT_EQ(L"no colon", handler().getInputValue().str());
    put(L"");
    EXPECT_EQ(L"", handler().getInputValue().str());
}

TEST_F(ParseTest, IntegersStopAtTheFirstOddCharacter)
{
    int value = 9;
    put(L"P: 12");
    EXPECT_TRUE(handler().getInputValue(value));
    EXPECT_EQ(12, value);
    put(L"P: 3.9");
    EXPECT_TRUE(handler().getInputValue(value));
    EXPECT_EQ(3, value);
    put(L"P: 4x");
    EXPECT_FALSE(handler().getInputValue(value));
    EXPECT_EQ(0, value);
}

TEST_F(ParseTest, NothingIsANumberAndReadsAsZero)
{
    double value = 9.0;
    put(L"P: ");
    EXPECT_TRUE(handler().getInputValue(value));
    EXPECT_EQ(0.0, value);
    put(L"P: 1e3");
    EXPECT_FALSE(handler().getInputValue(value)); // the exponent is a letter
    EXPECT_EQ(0.0, value);
    put(L"P: -2.5");
    EXPECT_TRUE(handler().getInputValue(value));
    EXPECT_EQ(-2.5, value);
}

TEST_F(ParseTest, ATextIsAnythingButNothing)
{
    CString value;
    put(L"P: two words ");
    EXPECT_TRUE(handler().getInputValue(value));
    EXPECT_EQ(L"two words", value.str());
    put(L"P:   ");
    EXPECT_FALSE(handler().getInputValue(value));
}

struct PointRow {
    const char* name;
    const wchar_t* text;
    bool valid;
    double x;
    double y;
};

class PointValueTest : public ParseTest, public testing::WithParamInterface<PointRow> {};

TEST_P(PointValueTest, IsReadFromTheLine)
{
    CVexGePoint2d value(7, 8);
    put(GetParam().text);
    EXPECT_EQ(GetParam().valid, handler().getInputValue(value));
    EXPECT_POINT(GetParam().x, GetParam().y, value);
}

INSTANTIATE_TEST_SUITE_P(Lines, PointValueTest,
                         testing::Values(PointRow{"Pair", L"P: 12,5", true, 12, 5},
                                         PointRow{"Blanks", L"P:  1.5 , -2 ", true, 1.5, -2},
                                         PointRow{"NoComma", L"P: 12", false, 0, 0},
                                         PointRow{"EmptyY", L"P: 12,", false, 0, 0},
                                         PointRow{"WordForX", L"P: abc,5", true, 0, 5},
                                         PointRow{"NumberAndWordForX", L"P: 12abc,5", true, 0, 5},
                                         PointRow{"WordForY", L"P: 5,abc", false, 0, 0},
                                         PointRow{"EmptyX", L"P: ,5", true, 0, 5},
                                         PointRow{"ThreeParts", L"P: 1,2,3", true, 1, 2},
                                         PointRow{"SignsAlone", L"P: -,+", true, 0, 0}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ParseTest, ValidationLooksAtTheLineAndNotAtItsArgument)
{
    handler().SetPrompt(9);
    put(L"P9: 5");
    EXPECT_TRUE(handler().isValidValue(L"five"));
    put(L"P9: five");
    EXPECT_FALSE(handler().isValidValue(L"5"));
}

TEST_F(ParseTest, APromptWithoutAKindTakesNothing)
{
    handler().SetPrompt(40);
    put(L"P40: 5");
    EXPECT_FALSE(handler().isValidValue(L"5"));
}

struct NumericRow {
    const wchar_t* text;
    bool numeric;
};

TEST(NumericTest, OnlyLettersSpoilANumber)
{
    for (const NumericRow& row :
         {NumericRow{L"", true}, NumericRow{L"  ", true}, NumericRow{L"12", true},
          NumericRow{L"-1.5", true}, NumericRow{L"+-,;", true}, NumericRow{L"1e3", false},
          NumericRow{L"5m", false}, NumericRow{L"\u00e4", false}}) {
        EXPECT_EQ(row.numeric, _isNumericValue(row.text)) << CString(row.text).utf8();
    }
}

} // namespace
