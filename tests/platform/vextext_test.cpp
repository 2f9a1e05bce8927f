#include "platform/base/vextext.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

TEST(TextTest, CharactersBeyondTheFirstPlaneAreTwoUnits)
{
    EXPECT_EQ(std::u16string(u"a\xd83d\xde00"), toUtf16(L"a\U0001f600"));
    EXPECT_EQ(std::wstring(L"a\U0001f600"), fromUtf16(u"a\xd83d\xde00"));
    EXPECT_EQ(3u, utf16Length(L"a\U0001f600"));
}

TEST(TextTest, LoneHalvesComeBackUnitByUnit)
{
    const std::u16string units = {0xde00, u'a', 0xd83d, u'b', 0xd83d};
    EXPECT_EQ(units, toUtf16(fromUtf16(units)));
    EXPECT_EQ(5u, utf16Length(fromUtf16(units)));
}

TEST(TextTest, WhatIsNoCharacterIsReplaced)
{
    const std::wstring text(1, static_cast<wchar_t>(0x110000));
    EXPECT_EQ(std::u16string(u"\xfffd"), toUtf16(text));
}

TEST(TextTest, CopyFillsTheRestWithNul)
{
    wchar_t array[6] = L"#####";
    EXPECT_TRUE(copyText(array, L"ab"));
    EXPECT_EQ(std::wstring(L"ab\0\0\0\0", 6), std::wstring(array, 6));
    EXPECT_TRUE(copyText(array, nullptr));
    EXPECT_EQ(std::wstring(6, L'\0'), std::wstring(array, 6));
}

TEST(TextTest, CopyCutsByUnitsAndNeverInsideACharacter)
{
    wchar_t array[4];
    EXPECT_FALSE(copyText(array, L"abcd"));
    EXPECT_STREQ(L"abc", array);
    EXPECT_TRUE(copyText(array, L"a\U0001f600"));
    EXPECT_STREQ(L"a\U0001f600", array);
    EXPECT_FALSE(copyText(array, L"ab\U0001f600"));
    EXPECT_STREQ(L"ab", array);
}

TEST(TextTest, CopyTakesATextThatStandsInTheArray)
{
    wchar_t array[5] = L"abcd";
    EXPECT_TRUE(copyText(array, array + 1));
    EXPECT_EQ(std::wstring(L"bcd\0\0", 5), std::wstring(array, 5));
}

struct NumberRow {
    const char* name;
    const wchar_t* text;
    double value;
};

class NumberTest : public testing::TestWithParam<NumberRow> {};

TEST_P(NumberTest, ReadsTheHeadOfTheText)
{
    EXPECT_EQ(GetParam().value, toNumber(GetParam().text));
}

constexpr double kLargest = std::numeric_limits<double>::max();

INSTANTIATE_TEST_SUITE_P(
    All, NumberTest,
    testing::Values(
        NumberRow{"Plain", L"12.5", 12.5}, NumberRow{"Blanks", L" \t-3 m", -3.0},
        NumberRow{"Plus", L"+4", 4.0}, NumberRow{"NoWholePart", L".5", 0.5},
        NumberRow{"NoFraction", L"5.", 5.0}, NumberRow{"Exponent", L"2.5e3", 2500.0},
        NumberRow{"NegativeExponent", L"5E-1", 0.5}, NumberRow{"LetterOnlyAfterIt", L"3exit", 3.0},
        NumberRow{"SignWithoutExponent", L"3e+", 3.0}, NumberRow{"CommaEnds", L"1,5", 1.0},
        NumberRow{"Empty", L"", 0.0}, NumberRow{"PointOnly", L"-.", 0.0},
        NumberRow{"Word", L"inf", 0.0}, NumberRow{"NotANumber", L"nan", 0.0},
        NumberRow{"TwoSigns", L"--1", 0.0}, NumberRow{"TooLarge", L"1e999", kLargest},
        NumberRow{"TooLargeBelow", L"-1e99999999999", -kLargest},
        NumberRow{"TooSmall", L"1e-999", 0.0}, NumberRow{"TooSmallWithZeros", L"0.00001e-400", 0.0},
        NumberRow{"ZeroWithExponent", L"0e999", 0.0}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(TextTest, IntegersSaturate)
{
    EXPECT_EQ(42, toInteger(L"  42mm"));
    EXPECT_EQ(-7, toInteger(L"-7"));
    EXPECT_EQ(0, toInteger(L"x"));
    EXPECT_EQ(std::numeric_limits<int>::max(), toInteger(L"99999999999999999999"));
    EXPECT_EQ(std::numeric_limits<int>::min(), toInteger(L"-99999999999999999999"));
}

} // namespace
