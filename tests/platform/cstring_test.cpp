#include "platform/base/cstring.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

namespace {

TEST(CStringTest, OrdersByUnitsOf16BitsNotByCharacters)
{
    const CString replacement(L"\xfffd");
    const CString face(L"\U0001f600"); // d83d de00 as units
    EXPECT_LT(face, replacement);
    EXPECT_GT(replacement, face);
    EXPECT_LT(CString(L"\xd7ff"), face);
    EXPECT_LT(face, CString(L"\U0001f601"));
    EXPECT_LT(CString(L"a\U0001f600z"), CString(L"a\xe000"));
}

TEST(CStringTest, OrderIsCaseSensitiveAndTheShorterTextComesFirst)
{
    std::map<CString, int> table{{L"b", 0}, {L"B", 1}, {L"ab", 2}, {L"a", 3}, {L"", 4}};
    std::wstring order;
    for (const auto& [name, value] : table) {
        order += name.str() + L"|";
    }
    EXPECT_EQ(std::wstring(L"|B|a|ab|b|"), order);
    EXPECT_EQ(CString(L"a"), L"a");
    EXPECT_EQ(CString(), static_cast<const wchar_t*>(nullptr));
}

TEST(CStringTest, Utf8GoesThereAndBack)
{
    const std::string bytes = "a\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80";
    const CString text = CString::fromUtf8(bytes);
    EXPECT_EQ(std::wstring(L"a\u00e4\u20ac\U0001f600"), text.str());
    EXPECT_EQ(bytes, text.utf8());
}

struct Malformed {
    const char* name;
    std::string bytes;
    std::wstring text;
};

class MalformedUtf8Test : public testing::TestWithParam<Malformed> {};

TEST_P(MalformedUtf8Test, EachBadByteBecomesOneReplacement)
{
    EXPECT_EQ(GetParam().text, CString::fromUtf8(GetParam().bytes).str());
}

INSTANTIATE_TEST_SUITE_P(
    All, MalformedUtf8Test,
    testing::Values(Malformed{"LoneFollower", "a\x80z", L"a\xfffdz"},
                    Malformed{"CutAtTheEnd", "a\xe2\x82", L"a\xfffd\xfffd"},
                    Malformed{"LongFormOfSlash", "\xc0\xaf", L"\xfffd\xfffd"},
                    Malformed{"LongFormOfThreeBytes", "\xe0\x80\xaf", L"\xfffd\xfffd\xfffd"},
                    Malformed{"HalfACharacter", "\xed\xa0\x80", L"\xfffd\xfffd\xfffd"},
                    Malformed{"BeyondTheLast", "\xf4\x90\x80\x80", L"\xfffd\xfffd\xfffd\xfffd"},
                    Malformed{"NextIsALetter", "\xc3z", L"\xfffdz"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CStringTest, HalfACharacterLeavesAsReplacementInUtf8)
{
    EXPECT_EQ("a\xef\xbf\xbdz", CString(L"a\xd83dz").utf8());
    EXPECT_EQ("\xef\xbf\xbd", CString(L"\xde00").utf8());
}

TEST(CStringTest, PartsAreCutToTheText)
{
    const CString text(L"pipe");
    EXPECT_EQ(text.Left(2), L"pi");
    EXPECT_EQ(text.Left(-1), L"");
    EXPECT_EQ(text.Right(9), L"pipe");
    EXPECT_EQ(text.Right(-1), L"");
    EXPECT_EQ(text.Mid(1, 2), L"ip");
    EXPECT_EQ(text.Mid(4), L"");
    EXPECT_EQ(text.Mid(-3, 2), L"pi");
    EXPECT_EQ(text.GetAt(4), L'\0');
    EXPECT_EQ(text[-1], L'\0');
}

TEST(CStringTest, FindsForwardAndBackward)
{
    const CString path(L"a/b/c.zpl");
    EXPECT_EQ(1, path.Find(L'/'));
    EXPECT_EQ(3, path.Find(L'/', 2));
    EXPECT_EQ(3, path.ReverseFind(L'/'));
    EXPECT_EQ(5, path.Find(L".zpl"));
    EXPECT_EQ(-1, path.Find(L"\\"));
    EXPECT_EQ(-1, path.Find(L'a', 99));
}

TEST(CStringTest, TrimsEveryKindOfBlankFromTheEndsOnly)
{
    CString text(L" \t\x3000"
                 L"a b\xa0\r\n");
    EXPECT_EQ(text.Trim(), L"a b");
    EXPECT_EQ(CString(L"  a ").TrimLeft(), L"a ");
    EXPECT_EQ(CString(L"  a ").TrimRight(), L"  a");
    EXPECT_EQ(CString(L" \t ").Trim(), L"");
}

TEST(CStringTest, CaseIsOfLatinLettersOnly)
{
    EXPECT_EQ(CString(L"line\u00e4\u0131").MakeUpper(), L"LINE\u00e4\u0131");
    EXPECT_EQ(CString(L"LINE\u00c4").MakeLower(), L"line\u00c4");
    EXPECT_EQ(0, CString(L"ByLayer").CompareNoCase(L"BYLAYER"));
    EXPECT_LT(CString(L"a").CompareNoCase(L"B"), 0);
    EXPECT_GT(CString(L"\u00e4").CompareNoCase(L"\u00c4"), 0);
}

TEST(CStringTest, ReplaceCountsAndDoesNotMeetItsOwnWork)
{
    CString text(L"aaa");
    EXPECT_EQ(3, text.Replace(L"a", L"aa"));
    EXPECT_EQ(text, L"aaaaaa");
    EXPECT_EQ(0, text.Replace(L"", L"x"));
    EXPECT_EQ(3, text.Replace(L"aa", nullptr));
    EXPECT_EQ(text, L"");
}

TEST(CStringTest, AppendsItself)
{
    CString text(L"ab");
    text += text;
    text += L'c';
    EXPECT_EQ(text, L"ababc");
    EXPECT_EQ(L"<" + text + L'>', L"<ababc>");
}

} // namespace
