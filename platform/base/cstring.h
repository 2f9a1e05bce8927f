#pragma once

#include "platform/base/vexexport.h"

#include <compare>
#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

/// Wide text: a thin class over std::wstring with the operations that the library calls. Lengths
/// that a file fixes count UTF-16 code units and are taken at the file's edge (vextext.h), not
/// here.
class VEXPLATFORM_EXPORT CString {
public:
    CString() = default;
    /// A null pointer gives the empty text.
    CString(const wchar_t* text) : m_text(text == nullptr ? L"" : text) {}
    CString(std::wstring text) : m_text(std::move(text)) {}
    explicit CString(std::wstring_view text) : m_text(text) {}
    /// From UTF-8; a malformed byte becomes U+FFFD.
    static CString fromUtf8(std::string_view text);
    [[nodiscard]] std::string utf8() const;

    [[nodiscard]] int GetLength() const { return static_cast<int>(m_text.size()); }
    [[nodiscard]] bool IsEmpty() const { return m_text.empty(); }
    void Empty() { m_text.clear(); }
    /// The character at `index`; outside the text, NUL.
    [[nodiscard]] wchar_t GetAt(int index) const;
    wchar_t operator[](int index) const { return GetAt(index); }
    void SetAt(int index, wchar_t character);
    [[nodiscard]] const wchar_t* GetString() const { return m_text.c_str(); }
    operator const wchar_t*() const { return m_text.c_str(); }
    [[nodiscard]] const std::wstring& str() const { return m_text; }

    /// Index of the first match at or behind `start`, -1 when there is none.
    [[nodiscard]] int Find(wchar_t character, int start = 0) const;
    [[nodiscard]] int Find(const wchar_t* text, int start = 0) const;
    /// Index of the last match, -1 when there is none.
    [[nodiscard]] int ReverseFind(wchar_t character) const;
    /// Counts outside the text are cut to it.
    [[nodiscard]] CString Left(int count) const;
    [[nodiscard]] CString Right(int count) const;
    [[nodiscard]] CString Mid(int first) const;
    [[nodiscard]] CString Mid(int first, int count) const;
    /// White space off both ends, off the left, off the right; returns the receiver.
    CString& Trim();
    CString& TrimLeft();
    CString& TrimRight();
    /// Letters of the Latin alphabet only, whatever the locale.
    CString& MakeUpper();
    CString& MakeLower();
    [[nodiscard]] int CompareNoCase(const wchar_t* other) const;
    /// Replaces every match; returns how many.
    int Replace(const wchar_t* from, const wchar_t* to);

    /// printf's %d %i %u %x %X %f %e %g %s %c %% with the flags - 0 + and space, width and
    /// precision (both at most 512). The number format is that of the C locale whatever locale the
    /// program has set. Arguments are integers, doubles, wide texts and CStrings; one that does not
    /// fit its conversion (a negative number for %u and %x too) prints as its own kind does, a
    /// missing one as nothing; an unknown conversion stays as it stands.
    template <class... Args>
    void Format(const wchar_t* format, const Args&... args)
    {
        const std::initializer_list<Argument> list{Argument(args)...};
        formatText(format, {list.begin(), list.size()});
    }

    CString& operator+=(const CString& other);
    CString& operator+=(wchar_t character);
    friend CString operator+(const CString& a, const CString& b)
    {
        CString sum(a);
        sum += b;
        return sum;
    }
    friend CString operator+(const CString& a, const wchar_t* b) { return a + CString(b); }
    friend CString operator+(const wchar_t* a, const CString& b) { return CString(a) + b; }
    friend CString operator+(const CString& a, wchar_t b)
    {
        CString sum(a);
        sum += b;
        return sum;
    }

    friend bool operator==(const CString& a, const CString& b) { return a.m_text == b.m_text; }
    friend bool operator==(const CString& a, const wchar_t* b)
    {
        return a.m_text == (b == nullptr ? L"" : b);
    }
    /// Orders by 16-bit code units, as names are sorted in a drawing file.
    friend std::strong_ordering operator<=>(const CString& a, const CString& b)
    {
        return compareUnits(a.m_text, b.m_text);
    }

private:
    struct Argument {
        std::variant<std::int64_t, std::uint64_t, double, const wchar_t*, wchar_t> value;
        template <std::signed_integral T>
        requires(!std::same_as<T, wchar_t>) explicit Argument(T number)
            : value(static_cast<std::int64_t>(number))
        {
        }
        template <std::unsigned_integral T>
        explicit Argument(T number) : value(static_cast<std::uint64_t>(number))
        {
        }
        explicit Argument(double number) : value(number) {}
        explicit Argument(wchar_t character) : value(character) {}
        explicit Argument(const wchar_t* text) : value(text) {}
        explicit Argument(const std::wstring& text) : value(text.c_str()) {}
        explicit Argument(const CString& text) : value(text.GetString()) {}
    };
    void formatText(const wchar_t* format, std::span<const Argument> arguments);
    static std::strong_ordering compareUnits(std::wstring_view a, std::wstring_view b);

    std::wstring m_text;
};
