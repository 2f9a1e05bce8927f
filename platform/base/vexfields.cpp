#include "platform/base/vexfields.h"

#include <algorithm>
#include <string>

namespace {

// How many of `units` fit into `most`, never ending between the halves of one character.
std::size_t wholeCharacters(const std::u16string& units, std::size_t most)
{
    if (units.size() <= most) {
        return units.size();
    }
    const bool highLast = most > 0 && units[most - 1] >= 0xd800 && units[most - 1] <= 0xdbff;
    const bool lowNext = units[most] >= 0xdc00 && units[most] <= 0xdfff;
    return highLast && lowNext ? most - 1 : most;
}

} // namespace

void storeText(std::byte* at, std::size_t units, const wchar_t* text)
{
    if (units == 0) {
        return;
    }
    // A text that is longer is cut, so that a NUL always ends it: no more of it need be looked at.
    std::wstring_view source;
    if (text != nullptr) {
        source = {text, static_cast<std::size_t>(std::find(text, text + units, L'\0') - text)};
    }
    const std::u16string taken = toUtf16(source);
    const std::size_t kept = wholeCharacters(taken, units - 1);
    for (std::size_t i = 0; i < kept; ++i, at += 2) {
        storeLittle(at, static_cast<std::uint16_t>(taken[i]));
    }
    std::fill(at, at + 2 * (units - kept), std::byte{0});
}

void loadText(const std::byte* at, std::size_t units, wchar_t* array)
{
    if (units == 0) {
        return;
    }
    std::u16string taken;
    for (; taken.size() < units - 1; at += 2) {
        const auto unit = loadLittle<std::uint16_t>(at);
        if (unit == 0) {
            break;
        }
        taken += static_cast<char16_t>(unit);
    }
    const std::wstring text = fromUtf16(taken); // never longer than its units
    std::copy(text.begin(), text.end(), array);
    std::fill(array + text.size(), array + units, L'\0');
}
