#include "platform/base/cstring.h"

#include "platform/base/vextext.h"

#include <algorithm>
#include <optional>

namespace {

wchar_t upperLatin(wchar_t letter)
{
    return letter >= L'a' && letter <= L'z' ? static_cast<wchar_t>(letter - L'a' + L'A') : letter;
}

wchar_t lowerLatin(wchar_t letter)
{
    return letter >= L'A' && letter <= L'Z' ? static_cast<wchar_t>(letter - L'A' + L'a') : letter;
}

unsigned byteAt(std::string_view text, std::size_t at)
{
    return at < text.size() ? static_cast<unsigned char>(text[at]) : 0u;
}

// What the first byte of a UTF-8 sequence says of it.
struct Utf8Lead {
    std::size_t length;
    char32_t bits;
    char32_t least; // a smaller character has a shorter form, which alone is right
};

std::optional<Utf8Lead> leadOf(unsigned byte)
{
    if (byte < 0x80) {
        return Utf8Lead{1, byte, 0};
    }
    if (byte >= 0xc2 && byte <= 0xdf) {
        return Utf8Lead{2, byte & 0x1f, 0x80};
    }
    if (byte >= 0xe0 && byte <= 0xef) {
        return Utf8Lead{3, byte & 0x0f, 0x800};
    }
    if (byte >= 0xf0 && byte <= 0xf4) {
        return Utf8Lead{4, byte & 0x07, 0x10000};
    }
    return std::nullopt;
}

// The character at `at`, which moves behind it; a byte that begins none is passed over alone.
char32_t nextUtf8(std::string_view text, std::size_t& at)
{
    constexpr char32_t kReplacement = 0xfffd;
    const std::optional<Utf8Lead> lead = leadOf(byteAt(text, at));
    if (!lead) {
        ++at;
        return kReplacement;
    }
    char32_t character = lead->bits;
    for (std::size_t i = 1; i < lead->length; ++i) {
        const unsigned next = byteAt(text, at + i);
        if ((next & 0xc0) != 0x80) {
            ++at;
            return kReplacement;
        }
        character = (character << 6) | (next & 0x3f);
    }
    const bool half = character >= 0xd800 && character <= 0xdfff;
    if (character < lead->least || character > 0x10ffff || half) {
        ++at;
        return kReplacement;
    }
    at += lead->length;
    return character;
}

void appendUtf8(std::string& text, char32_t character)
{
    const auto put = [&](char32_t byte) { text += static_cast<char>(byte); };
    const auto follow = [&](int shift) { put(0x80 | ((character >> shift) & 0x3f)); };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xc0 | (character >> 6));
        follow(0);
    } else if (character < 0x10000) {
        put(0xe0 | (character >> 12));
        follow(6);
        follow(0);
    } else {
        put(0xf0 | (character >> 18));
        follow(12);
        follow(6);
        follow(0);
    }
}

} // namespace

CString CString::fromUtf8(std::string_view text)
{
    std::wstring wide;
    wide.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const char32_t character = nextUtf8(text, at);
        if (sizeof(wchar_t) > 2 || character < 0x10000) {
            wide += static_cast<wchar_t>(character);
        } else {
            wide += static_cast<wchar_t>(0xd7c0 + (character >> 10));
            wide += static_cast<wchar_t>(0xdc00 + (character & 0x3ff));
        }
    }
    return CString(std::move(wide));
}

std::string CString::utf8() const
{
    std::string bytes;
    bytes.reserve(m_text.size());
    const std::u16string units = toUtf16(m_text);
    for (std::size_t i = 0; i < units.size(); ++i) {
        char32_t character = units[i];
        const char32_t next = i + 1 < units.size() ? units[i + 1] : 0;
        if (character >= 0xd800 && character <= 0xdbff && next >= 0xdc00 && next <= 0xdfff) {
            character = 0x10000 + ((character - 0xd800) << 10) + (next - 0xdc00);
            ++i;
        } else if (character >= 0xd800 && character <= 0xdfff) {
            character = 0xfffd; // half a character has no form in UTF-8
        }
        appendUtf8(bytes, character);
    }
    return bytes;
}

wchar_t CString::GetAt(int index) const
{
    return index >= 0 && index < GetLength() ? m_text[static_cast<std::size_t>(index)] : L'\0';
}

void CString::SetAt(int index, wchar_t character)
{
    if (index >= 0 && index < GetLength()) {
        m_text[static_cast<std::size_t>(index)] = character;
    }
}

namespace {

int indexOf(std::size_t found)
{
    return found == std::wstring::npos ? -1 : static_cast<int>(found);
}

std::size_t positionOf(int index)
{
    return static_cast<std::size_t>(std::max(index, 0));
}

} // namespace

int CString::Find(wchar_t character, int start) const
{
    return indexOf(m_text.find(character, positionOf(start)));
}

int CString::Find(const wchar_t* text, int start) const
{
    return text == nullptr ? -1 : indexOf(m_text.find(text, positionOf(start)));
}

int CString::ReverseFind(wchar_t character) const
{
    return indexOf(m_text.rfind(character));
}

CString CString::Left(int count) const
{
    return Mid(0, count);
}

CString CString::Right(int count) const
{
    return count >= GetLength() ? *this : Mid(GetLength() - std::max(count, 0));
}

CString CString::Mid(int first) const
{
    return Mid(first, GetLength());
}

CString CString::Mid(int first, int count) const
{
    const std::size_t from = std::min(positionOf(first), m_text.size());
    return CString(m_text.substr(from, positionOf(count)));
}

CString& CString::Trim()
{
    return TrimRight().TrimLeft();
}

CString& CString::TrimLeft()
{
    m_text.erase(m_text.begin(), std::find_if_not(m_text.begin(), m_text.end(), isWhiteSpace));
    return *this;
}

CString& CString::TrimRight()
{
    m_text.erase(std::find_if_not(m_text.rbegin(), m_text.rend(), isWhiteSpace).base(),
                 m_text.end());
    return *this;
}

CString& CString::MakeUpper()
{
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), upperLatin);
    return *this;
}

CString& CString::MakeLower()
{
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), lowerLatin);
    return *this;
}

int CString::CompareNoCase(const wchar_t* other) const
{
    const std::strong_ordering order =
        compareUnits(CString(*this).MakeLower().m_text, CString(other).MakeLower().m_text);
    return std::is_lt(order) ? -1 : static_cast<int>(std::is_gt(order));
}

int CString::Replace(const wchar_t* from, const wchar_t* to)
{
    const std::wstring_view old(from == nullptr ? L"" : from);
    if (old.empty()) {
        return 0;
    }
    const std::wstring fresh(to == nullptr ? L"" : to);
    std::wstring result;
    int count = 0;
    std::size_t behind = 0;
    for (std::size_t at = m_text.find(old); at != std::wstring::npos;
         at = m_text.find(old, behind)) {
        result.append(m_text, behind, at - behind).append(fresh);
        behind = at + old.size();
        ++count;
    }
    if (count > 0) {
        m_text = result.append(m_text, behind);
    }
    return count;
}

CString& CString::operator+=(const CString& other)
{
    m_text += other.m_text;
    return *this;
}

CString& CString::operator+=(wchar_t character)
{
    m_text += character;
    return *this;
}

std::strong_ordering CString::compareUnits(std::wstring_view a, std::wstring_view b)
{
    const auto [atA, atB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (atA == a.end() || atB == b.end()) {
        return a.size() <=> b.size();
    }
    const auto codeA = static_cast<char32_t>(*atA);
    const auto codeB = static_cast<char32_t>(*atB);
    if ((codeA < 0x10000) == (codeB < 0x10000)) {
        return codeA <=> codeB;
    }
    // A character beyond the first 65536 is two units, of which the first is below U+E000.
    return toUtf16(a.substr(static_cast<std::size_t>(atA - a.begin()))) <=>
           toUtf16(b.substr(static_cast<std::size_t>(atB - b.begin())));
}
