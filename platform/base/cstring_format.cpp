#include "platform/base/cstring.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>

namespace {

// More than any text of a drawing needs, and far less than what would hurt.
constexpr int kMostWidth = 512;

// One conversion between the percent sign and its letter.
struct Conversion {
    bool left = false;
    bool zeros = false;
    bool plus = false;
    bool space = false;
    int width = 0;
    int precision = -1; // none given
    wchar_t letter = L'\0';

    [[nodiscard]] bool isOneOf(const wchar_t* letters) const
    {
        return std::wstring_view(letters).find(letter) != std::wstring_view::npos;
    }
};

bool takeFlag(wchar_t character, Conversion& conversion)
{
    switch (character) {
    case L'-': return conversion.left = true;
    case L'0': return conversion.zeros = true;
    case L'+': return conversion.plus = true;
    case L' ': return conversion.space = true;
    default: return false;
    }
}

int takeNumber(const wchar_t*& at)
{
    int number = 0;
    for (; *at >= L'0' && *at <= L'9'; ++at) {
        number = std::min(number * 10 + static_cast<int>(*at - L'0'), kMostWidth);
    }
    return number;
}

// Reads from behind the percent sign up to and including the letter. The letters that tell a size
// are passed over: an argument knows its own.
Conversion takeConversion(const wchar_t*& at)
{
    Conversion conversion;
    while (takeFlag(*at, conversion)) {
        ++at;
    }
    conversion.width = takeNumber(at);
    if (*at == L'.') {
        ++at;
        conversion.precision = takeNumber(at);
    }
    while (*at == L'l' || *at == L'h' || *at == L'z') {
        ++at;
    }
    conversion.letter = *at;
    if (*at != L'\0') {
        ++at;
    }
    return conversion;
}

std::wstring padded(const Conversion& conversion, std::wstring sign, std::wstring body, bool zeros)
{
    const std::size_t length = sign.size() + body.size();
    const auto width = static_cast<std::size_t>(conversion.width);
    const std::size_t missing = width > length ? width - length : 0;
    if (conversion.left) {
        return sign + body + std::wstring(missing, L' ');
    }
    if (zeros) {
        return sign + std::wstring(missing, L'0') + body;
    }
    return std::wstring(missing, L' ') + sign + body;
}

std::wstring signOf(const Conversion& conversion, bool negative)
{
    if (negative) {
        return L"-";
    }
    if (conversion.plus) {
        return L"+";
    }
    return conversion.space ? L" " : L"";
}

std::wstring upperIf(bool upper, std::wstring text)
{
    return upper ? CString(std::move(text)).MakeUpper().str() : text;
}

std::wstring integerText(Conversion conversion, std::uint64_t magnitude, bool negative)
{
    const bool hexadecimal = conversion.isOneOf(L"xX");
    std::array<char, 24> digits = {};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), magnitude,
                                   hexadecimal ? 16 : 10);
    std::wstring body(digits.data(), end.ptr);
    const auto least = static_cast<std::size_t>(std::max(conversion.precision, 0));
    if (body.size() < least) {
        body.insert(0, least - body.size(), L'0');
    }
    // A sign belongs to the signed conversions; a given precision overrules the zeros.
    const bool withSign = negative || conversion.isOneOf(L"di");
    return padded(conversion, withSign ? signOf(conversion, negative) : std::wstring(),
                  upperIf(conversion.letter == L'X', std::move(body)),
                  conversion.zeros && conversion.precision < 0);
}

std::chars_format notationOf(const Conversion& conversion)
{
    if (conversion.isOneOf(L"eE")) {
        return std::chars_format::scientific;
    }
    return conversion.isOneOf(L"gG") ? std::chars_format::general : std::chars_format::fixed;
}

std::wstring numberText(const Conversion& conversion, double number)
{
    constexpr int kUsualPrecision = 6;
    const bool negative = std::signbit(number);
    const int precision = conversion.precision < 0 ? kUsualPrecision : conversion.precision;
    std::array<char, 310 + kMostWidth + 2> digits =
        {}; // the largest double has 309 before the point
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                   negative ? -number : number, notationOf(conversion), precision);
    return padded(conversion, signOf(conversion, negative),
                  upperIf(conversion.isOneOf(L"EFG"), std::wstring(digits.data(), end.ptr)),
                  conversion.zeros && std::isfinite(number));
}

std::wstring wideText(const Conversion& conversion, const wchar_t* text)
{
    std::wstring body(text == nullptr ? L"" : text);
    if (conversion.precision >= 0) {
        body.resize(std::min(body.size(), static_cast<std::size_t>(conversion.precision)));
    }
    return padded(conversion, L"", std::move(body), false);
}

std::wstring characterText(const Conversion& conversion, std::uint64_t code)
{
    constexpr std::uint64_t kMost = sizeof(wchar_t) == 2 ? 0xffff : 0x10ffff;
    const std::wstring body(code == 0 ? 0 : 1, static_cast<wchar_t>(code <= kMost ? code : 0xfffd));
    return padded(conversion, L"", body, false);
}

// An argument under its conversion; one that does not fit keeps width and flags and prints as its
// own kind does.
struct Printer {
    Conversion conversion;

    [[nodiscard]] Conversion as(wchar_t letter) const
    {
        Conversion own = conversion;
        own.letter = letter;
        own.precision = -1;
        return own;
    }
    std::wstring operator()(std::int64_t number) const
    {
        if (number >= 0 && !conversion.isOneOf(L"di")) {
            return (*this)(static_cast<std::uint64_t>(number));
        }
        const auto bits = static_cast<std::uint64_t>(number);
        const bool fits = conversion.isOneOf(L"di");
        return integerText(fits ? conversion : as(L'd'), number < 0 ? 0 - bits : bits, number < 0);
    }
    std::wstring operator()(std::uint64_t number) const
    {
        if (conversion.letter == L'c') {
            return characterText(conversion, number);
        }
        return integerText(conversion.isOneOf(L"diuxX") ? conversion : as(L'd'), number, false);
    }
    std::wstring operator()(double number) const
    {
        return numberText(conversion.isOneOf(L"feEgFG") ? conversion : as(L'f'), number);
    }
    std::wstring operator()(const wchar_t* text) const
    {
        return wideText(conversion.letter == L's' ? conversion : as(L's'), text);
    }
    std::wstring operator()(wchar_t character) const
    {
        return characterText(conversion, static_cast<char32_t>(character));
    }
};

} // namespace

void CString::formatText(const wchar_t* format, std::span<const Argument> arguments)
{
    std::wstring result; // apart from m_text, which may be an argument or the format itself
    std::size_t used = 0;
    for (const wchar_t* at = format == nullptr ? L"" : format; *at != L'\0';) {
        const wchar_t* const start = at++;
        if (*start != L'%') {
            result += *start;
            continue;
        }
        const Conversion conversion = takeConversion(at);
        if (conversion.letter == L'%') {
            result += L'%';
        } else if (conversion.letter == L'\0' || !conversion.isOneOf(L"diuxXfFeEgGsc")) {
            result.append(start, at);
        } else if (used < arguments.size()) {
            result += std::visit(Printer{conversion}, arguments[used++].value);
        }
    }
    m_text = std::move(result);
}
