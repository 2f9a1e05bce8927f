#include "platform/base/cstring.h"

#include <clocale>
#include <gtest/gtest.h>
#include <limits>
#include <locale>
#include <string>

namespace {

template <class... Args>
std::wstring formatted(const wchar_t* format, const Args&... args)
{
    CString text(L"what stood before");
    text.Format(format, args...);
    return text.str();
}

TEST(FormatTest, IntegersWithFlagsWidthAndPrecision)
{
    EXPECT_EQ(L"-7|+7| 7|7", formatted(L"%d|%+d|% d|%d", -7, 7, 7, 7));
    EXPECT_EQ(L"|   42|42   |00042|-0042|", formatted(L"|%5d|%-5d|%05d|%05d|", 42, 42, 42, -42));
    EXPECT_EQ(L"007|  007|00042", formatted(L"%.3d|%05.3d|%.5u", 7, 7, 42u));
    EXPECT_EQ(L"ff FF 4096", formatted(L"%x %X %u", 255, 255, 4096));
    EXPECT_EQ(L"-9223372036854775808 18446744073709551615",
              formatted(L"%lld %llu", std::numeric_limits<std::int64_t>::min(),
                        std::numeric_limits<std::uint64_t>::max()));
}

TEST(FormatTest, NumbersWithPointFixedShortAndScientific)
{
    EXPECT_EQ(L"0.250000|0.25|2.50|3", formatted(L"%f|%g|%.2f|%.0f", 0.25, 0.25, 2.5, 3.25));
    EXPECT_EQ(L"+1.5|001.5|1.5  |", formatted(L"%+.1f|%05.1f|%-5.1f|", 1.5, 1.5, 1.5));
    EXPECT_EQ(L"1.500e+10|1E-05|-0.0", formatted(L"%.3e|%G|%.1f", 1.5e10, 1e-5, -0.0));
    EXPECT_EQ(L"0.13 mm", formatted(L"%.2f mm", 13 / 100.0));
}

TEST(FormatTest, InfinityAndNanAreNeverFilledWithZeros)
{
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(L"  inf|-inf|  nan", formatted(L"%05.1f|%f|%05f", infinity, -infinity,
                                             std::numeric_limits<double>::quiet_NaN()));
}

TEST(FormatTest, TextsAndCharacters)
{
    const CString name(L"Hidden");
    const std::wstring layer(L"0");
    EXPECT_EQ(L"Hidden 0 x", formatted(L"%s %s %s", name, layer, L"x"));
    EXPECT_EQ(L"|  ab|ab  |a|", formatted(L"|%4s|%-4s|%.1s|", L"ab", L"ab", L"ab"));
    EXPECT_EQ(L"A|B|\U0001f600", formatted(L"%c|%c|%c", L'A', 66, 0x1f600));
    EXPECT_EQ(L"100%", formatted(L"%d%%", 100));
}

TEST(FormatTest, AnArgumentThatDoesNotFitPrintsAsItsOwnKind)
{
    EXPECT_EQ(L"1.500000|3|-1|ab", formatted(L"%d|%f|%x|%d", 1.5, 3, -1, L"ab"));
    EXPECT_EQ(L"-5|7|x", formatted(L"%s|%s|%u", -5, 7, L'x'));
}

TEST(FormatTest, MissingArgumentsAndStrangeConversionsAreHarmless)
{
    EXPECT_EQ(L"a  b", formatted(L"a %s %db"));
    EXPECT_EQ(L"%n%p|7", formatted(L"%n%p|%d", 7));
    EXPECT_EQ(L"50%", formatted(L"50%"));
    EXPECT_EQ(L"%-05", formatted(L"%-05", 1));
    EXPECT_EQ(L"", formatted(nullptr));
    EXPECT_EQ(L"[]", formatted(L"[%s]", static_cast<const wchar_t*>(nullptr)));
}

TEST(FormatTest, FormatsThatAreCutOffOrAskForTheArgumentsThemselvesStandAsTheyAre)
{
    struct Row {
        const wchar_t* format;
        const wchar_t* expected;
    };
    for (const Row& row : {Row{L"%", L"%"}, Row{L"%l", L"%l"}, Row{L"%5.", L"%5."},
                           Row{L"%*d", L"%*d"}, Row{L"%1$d", L"%1$d"}, Row{L"%-+ 0d", L"+7"},
                           Row{L"%hhd%lld", L"7"}, Row{L"%%%%", L"%%"}, Row{L"%.0d", L"7"}}) {
        EXPECT_EQ(row.expected, formatted(row.format, 7));
    }
}

TEST(FormatTest, WidthAndPrecisionHaveABound)
{
    EXPECT_EQ(512u, formatted(L"%999999999999d", 1).size());
    EXPECT_EQ(514u, formatted(L"%.2147483648f", 1.0).size());
    EXPECT_EQ(309u + 1 + 512, formatted(L"%.600f", std::numeric_limits<double>::max()).size());
}

TEST(FormatTest, TheReceiverMayBeItsOwnArgumentAndFormat)
{
    CString text(L"%s!");
    text.Format(text, text);
    EXPECT_EQ(text, L"%s!!");
}

class CommaPoint : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};
class WideCommaPoint : public std::numpunct<wchar_t> {
    wchar_t do_decimal_point() const override { return L','; }
};

// Sets decimal commas wherever this machine has them: always in C++, in C when such a locale is
// installed.
class CommaLocale {
public:
    CommaLocale() : m_cxx(std::locale()), m_c(std::setlocale(LC_ALL, nullptr))
    {
        std::locale::global(
            std::locale(std::locale(std::locale::classic(), new CommaPoint), new WideCommaPoint));
        for (const char* name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "pl_PL.UTF-8"}) {
            if (std::setlocale(LC_ALL, name) != nullptr) {
                break;
            }
        }
    }
    ~CommaLocale()
    {
        std::locale::global(m_cxx);
        std::setlocale(LC_ALL, m_c.c_str());
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

private:
    std::locale m_cxx;
    std::string m_c;
};

TEST(FormatTest, ThePointIsAPointInEveryLocale)
{
    const CommaLocale locale;
    EXPECT_EQ(L"1.50 1234567", formatted(L"%.2f %d", 1.5, 1234567));
}

} // namespace
