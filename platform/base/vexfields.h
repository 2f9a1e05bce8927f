#pragma once

#include "platform/base/cfile.h"
#include "platform/base/vextext.h"

#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

// Numbers in files are little-endian and unaligned; texts are fixed arrays of 16-bit units, filled
// with zeros. A record lists its fields once, for a writer or a reader: `fields(a, b, c)`.

template <class T>
concept VexFieldNumber = (std::integral<T> || std::floating_point<T> ||
                          std::is_enum_v<T>)&&!std::same_as<T, wchar_t>;

/// Stores `value` little-endian at `at`; a bool is one byte, 0 or 1.
template <VexFieldNumber T>
void storeLittle(std::byte* at, T value)
{
    std::memcpy(at, &value, sizeof value);
    if constexpr (std::endian::native == std::endian::big) {
        for (std::size_t i = 0; i < sizeof value / 2; ++i) {
            std::swap(at[i], at[sizeof value - 1 - i]);
        }
    }
}

/// The little-endian value at `at`; any non-zero byte is a true bool.
template <VexFieldNumber T>
T loadLittle(const std::byte* at)
{
    if constexpr (std::same_as<T, bool>) {
        return *at != std::byte{0};
    } else {
        T value;
        std::memcpy(&value, at, sizeof value);
        if constexpr (std::endian::native == std::endian::big) {
            auto* bytes = reinterpret_cast<std::byte*>(&value);
            for (std::size_t i = 0; i < sizeof value / 2; ++i) {
                std::swap(bytes[i], bytes[sizeof value - 1 - i]);
            }
        }
        return value;
    }
}

/// Puts a NUL-terminated text into `units` 16-bit units at `at`, the rest zeros.
VEXPLATFORM_EXPORT void storeText(std::byte* at, std::size_t units, const wchar_t* text);
/// Takes the text up to its first NUL, at most `units` - 1 units, from `at` into `array`, which has
/// room for `units` characters; the rest becomes NUL.
VEXPLATFORM_EXPORT void loadText(const std::byte* at, std::size_t units, wchar_t* array);

/// Writes fields one after the other to a file.
class CVexFieldWriter {
public:
    explicit CVexFieldWriter(CFile& file) : m_file(file) {}
    template <class... T>
    void operator()(const T&... fields)
    {
        if constexpr ((VexFieldNumber<T> && ...)) {
            std::byte* at = m_file.give((sizeof(T) + ...)); // room for all at once
            ((storeLittle(at, fields), at += sizeof(T)), ...);
        } else {
            (put(fields), ...);
        }
    }

private:
    template <VexFieldNumber T>
    void put(const T& value)
    {
        storeLittle(m_file.give(sizeof(T)), value);
    }
    template <std::size_t N>
    void put(const wchar_t (&text)[N])
    {
        storeText(m_file.give(2 * N), N, text);
    }
    template <class T>
    requires requires(T& t, CFile* f) { t.save(f); }
    void put(const T& value) { const_cast<T&>(value).save(&m_file); }
    CFile& m_file;
};

/// Reads fields one after the other from a file; once the file has failed, fields stay as they are.
class CVexFieldReader {
public:
    explicit CVexFieldReader(CFile& file) : m_file(file) {}
    template <class... T>
    void operator()(T&... fields)
    {
        if constexpr ((VexFieldNumber<T> && ...)) {
            if (const std::byte* at = m_file.takeHeld((sizeof(T) + ...))) { // all at once
                ((fields = loadLittle<T>(at), at += sizeof(T)), ...);
                return;
            }
        }
        (get(fields), ...);
    }
    [[nodiscard]] bool failed() const { return m_file.failed(); }

private:
    template <VexFieldNumber T>
    void get(T& value)
    {
        if (const std::byte* at = m_file.take(sizeof(T))) {
            value = loadLittle<T>(at);
        }
    }
    template <std::size_t N>
    void get(wchar_t (&text)[N])
    {
        if (const std::byte* at = m_file.take(2 * N)) {
            loadText(at, N, text);
        }
    }
    template <class T>
    requires requires(T& t, CFile* f) { t.read(f); }
    void get(T& value) { value.read(&m_file); }
    CFile& m_file;
};
