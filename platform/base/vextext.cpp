#include "platform/base/vextext.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <system_error>

namespace {

constexpr char32_t kReplacement = 0xfffd;
constexpr char32_t kFirstBeyondBase = 0x10000;
constexpr char32_t kLastCharacter = 0x10ffff;

bool isHigh(char32_t unit)
{
    return unit >= 0xd800 && unit <= 0xdbff;
}

bool isLow(char32_t unit)
{
    return unit >= 0xdc00 && unit <= 0xdfff;
}

char32_t joined(char32_t high, char32_t low)
{
    return kFirstBeyondBase + ((high - 0xd800) << 10) + (low - 0xdc00);
}

// The character at `at`, which moves behind it. Two halves that stand side by side are one
// character, whatever the size of wchar_t; a lone half is itself.
template <class View>
char32_t nextCharacter(View text, std::size_t& at)
{
    using Unit = std::make_unsigned_t<
        std::conditional_t<sizeof(typename View::value_type) == 2, std::uint16_t, std::uint32_t>>;
    const auto unit = [&](std::size_t index) {
        return static_cast<char32_t>(static_cast<Unit>(text[index]));
    };
    const char32_t first = unit(at++);
    if (isHigh(first) && at < text.size() && isLow(unit(at))) {
        return joined(first, unit(at++));
    }
    return first <= kLastCharacter ? first : kReplacement;
}

std::size_t unitsOf(char32_t character)
{
    return character < kFirstBeyondBase ? 1 : 2;
}

template <class Text>
void appendUnits(Text& units, char32_t character)
{
    using Unit = typename Text::value_type;
    if (unitsOf(character) == 1) {
        units += static_cast<Unit>(character);
        return;
    }
    const char32_t above = character - kFirstBeyondBase;
    units += static_cast<Unit>(0xd800 + (above >> 10));
    units += static_cast<Unit>(0xdc00 + (above & 0x3ff));
}

void appendWide(std::wstring& text, char32_t character)
{
    if constexpr (sizeof(wchar_t) == 2) {
        appendUnits(text, character);
    } else {
        text += static_cast<wchar_t>(character);
    }
}

} // namespace

std::u16string toUtf16(std::wstring_view text)
{
    std::u16string units;
    units.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        appendUnits(units, nextCharacter(text, at));
    }
    return units;
}

std::wstring fromUtf16(std::u16string_view units)
{
    std::wstring text;
    text.reserve(units.size());
    for (std::size_t at = 0; at < units.size();) {
        appendWide(text, nextCharacter(units, at));
    }
    return text;
}

std::size_t utf16Length(std::wstring_view text)
{
    std::size_t length = 0;
    for (std::size_t at = 0; at < text.size();) {
        length += unitsOf(nextCharacter(text, at));
    }
    return length;
}

bool copyText(wchar_t* array, std::size_t capacity, const wchar_t* text)
{
    const std::wstring_view source(text == nullptr ? L"" : text);
    if (capacity == 0) {
        return source.empty();
    }
    std::size_t kept = 0;
    std::size_t units = 0;
    for (std::size_t at = 0; at < source.size(); kept = at) {
        units += unitsOf(nextCharacter(source, at));
        if (units > capacity - 1) {
            break;
        }
    }
    const bool whole = kept == source.size();
    // The text may stand in the array itself.
    std::char_traits<wchar_t>::move(array, source.data(), kept);
    std::fill(array + kept, array + capacity, L'\0');
    return whole;
}

bool isWhiteSpace(wchar_t character)
{
    const auto code = static_cast<char32_t>(character);
    return (code >= 0x09 && code <= 0x0d) || code == 0x20 || code == 0x85 || code == 0xa0 ||
           code == 0x1680 || (code >= 0x2000 && code <= 0x200a) || code == 0x2028 ||
           code == 0x2029 || code == 0x202f || code == 0x205f || code == 0x3000;
}

namespace {

bool isDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

std::wstring_view withoutLeadingSpace(std::wstring_view text)
{
    while (!text.empty() && isWhiteSpace(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

// True, and the sign off `text`, when it begins with a minus; a plus only goes.
bool takeMinus(std::wstring_view& text)
{
    const bool minus = !text.empty() && text.front() == L'-';
    if (minus || (!text.empty() && text.front() == L'+')) {
        text.remove_prefix(1);
    }
    return minus;
}

void takeDigits(std::wstring_view& text, std::string& digits)
{
    for (; !text.empty() && isDigit(text.front()); text.remove_prefix(1)) {
        digits += static_cast<char>(text.front());
    }
}

int exponentAt(std::wstring_view text)
{
    if (text.empty() || (text.front() != L'e' && text.front() != L'E')) {
        return 0;
    }
    text.remove_prefix(1);
    const bool signedDigit =
        text.size() > 1 && (text[0] == L'-' || text[0] == L'+') && isDigit(text[1]);
    return signedDigit || (!text.empty() && isDigit(text[0])) ? toInteger(text) : 0;
}

// What stands for a decimal number that no double can hold: the largest one, or 0 for one that is
// too small to tell from it.
double outOfRange(const std::string& whole, const std::string& fraction, int exponent)
{
    const std::size_t leading = whole.find_first_not_of('0');
    const std::size_t zeros = std::min(fraction.find_first_not_of('0'), fraction.size());
    const double power = leading != std::string::npos ? static_cast<double>(whole.size() - leading)
                                                      : -static_cast<double>(zeros);
    return power + exponent > 0 ? std::numeric_limits<double>::max() : 0.0;
}

} // namespace

double toNumber(std::wstring_view text)
{
    text = withoutLeadingSpace(text);
    const bool minus = takeMinus(text);
    std::string whole;
    std::string fraction;
    takeDigits(text, whole);
    if (!text.empty() && text.front() == L'.') {
        text.remove_prefix(1);
        takeDigits(text, fraction);
    }
    if (whole.empty() && fraction.empty()) {
        return 0.0;
    }
    const int exponent = exponentAt(text);
    const std::string plain = whole + "." + fraction + "e" + std::to_string(exponent);
    double value = 0.0;
    const auto parsed = std::from_chars(plain.data(), plain.data() + plain.size(), value);
    if (parsed.ec == std::errc::result_out_of_range) {
        value = outOfRange(whole, fraction, exponent);
    }
    return minus ? -value : value;
}

int toInteger(std::wstring_view text)
{
    text = withoutLeadingSpace(text);
    const bool minus = takeMinus(text);
    std::int64_t value = 0;
    constexpr std::int64_t kMost = std::numeric_limits<int>::max();
    for (; !text.empty() && isDigit(text.front()); text.remove_prefix(1)) {
        value = std::min(value * 10 + (text.front() - L'0'), kMost + 1);
    }
    return static_cast<int>(minus ? -value : std::min(value, kMost));
}
