#include "platform/base/cstdiofile.h"

#include "platform/base/vexmachine.h"
#include "platform/base/vextext.h"

#include <algorithm>
#include <initializer_list>
#include <new>
#include <string_view>
#include <utility>

namespace {

/// Bytes in memory for a byte of a file: itself and its wide character.
constexpr std::size_t kMostGrowth = 1 + sizeof(wchar_t);

unsigned valueAt(const std::vector<std::byte>& bytes, std::size_t at)
{
    return at < bytes.size() ? std::to_integer<unsigned>(bytes[at]) : 0x100u; // no byte has it
}

bool beginsWith(const std::vector<std::byte>& bytes, std::initializer_list<unsigned> mark)
{
    std::size_t at = 0;
    for (const unsigned value : mark) {
        if (valueAt(bytes, at++) != value) {
            return false;
        }
    }
    return true;
}

// The text behind a 2-byte mark; `high` tells which byte of a pair is the high one. A last odd byte
// is no character.
std::wstring fromPairs(const std::vector<std::byte>& bytes, std::size_t high)
{
    std::u16string units;
    units.reserve(bytes.size() / 2);
    for (std::size_t at = 2; at + 1 < bytes.size(); at += 2) {
        units +=
            static_cast<char16_t>((valueAt(bytes, at + high) << 8) | valueAt(bytes, at + 1 - high));
    }
    if (bytes.size() % 2 != 0) {
        units += u'\xfffd';
    }
    return fromUtf16(units);
}

std::wstring decoded(const std::vector<std::byte>& bytes)
{
    if (beginsWith(bytes, {0xff, 0xfe})) {
        return fromPairs(bytes, 1);
    }
    if (beginsWith(bytes, {0xfe, 0xff})) {
        return fromPairs(bytes, 0);
    }
    std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (beginsWith(bytes, {0xef, 0xbb, 0xbf})) {
        text.remove_prefix(3);
    }
    return CString::fromUtf8(text).str();
}

} // namespace

bool CStdioFile::Open(const CString& path)
{
    Close();
    CFile file;
    if (!file.Open(path, CFile::modeRead) || file.GetLength() > kMostBytes) {
        return false;
    }
    const auto length = static_cast<std::size_t>(file.GetLength());
    if (!CVexMachine::current().mayAllocate(length * kMostGrowth)) {
        return false;
    }
    try {
        std::vector<std::byte> bytes(length);
        const bool whole = file.Read(bytes.data(), length) == length;
        return file.Close() && whole && OpenText(std::move(bytes));
    } catch (const std::bad_alloc&) {
        return false;
    }
}

bool CStdioFile::OpenText(std::vector<std::byte> bytes)
{
    Close();
    if (bytes.size() > kMostBytes) {
        return false;
    }
    try {
        m_text = decoded(bytes);
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

bool CStdioFile::ReadString(CString& line)
{
    if (m_next >= m_text.size()) {
        return false;
    }
    const std::size_t end = std::min(m_text.find_first_of(L"\r\n", m_next), m_text.size());
    line = CString(m_text.substr(m_next, end - m_next));
    const bool pair = m_text.compare(end, 2, L"\r\n") == 0;
    m_next = end + (pair ? 2 : 1);
    ++m_lineNumber;
    return true;
}

void CStdioFile::Close()
{
    m_text.clear();
    m_next = 0;
    m_lineNumber = 0;
}
