#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

/// Lays a file out by hand, field by field: little-endian, without gaps.
class Bytes {
public:
    Bytes& u8(unsigned value) { return number(value, 1); }
    Bytes& u16(unsigned value) { return number(value, 2); }
    Bytes& u32(std::uint32_t value) { return number(value, 4); }
    Bytes& i32(std::int32_t value) { return number(static_cast<std::uint32_t>(value), 4); }
    Bytes& u64(std::uint64_t value) { return number(value, 8); }
    Bytes& f64(double value) { return number(std::bit_cast<std::uint64_t>(value), 8); }
    /// Latin letters in a fixed array of 16-bit units, the rest zeros.
    Bytes& text(std::string_view latin, std::size_t units)
    {
        for (std::size_t i = 0; i < units; ++i) {
            u16(i < latin.size() ? static_cast<unsigned char>(latin[i]) : 0u);
        }
        return *this;
    }
    Bytes& zeros(std::size_t count)
    {
        m_bytes.resize(m_bytes.size() + count);
        return *this;
    }
    /// A point of the plane: x, y, tag.
    Bytes& point(double x, double y, std::int32_t tag = 0) { return f64(x).f64(y).i32(tag); }
    /// What every object begins with.
    Bytes& object(std::uint64_t number, std::uint32_t classType, unsigned status)
    {
        return u64(number).u32(classType).u8(status);
    }
    Bytes& operator<<(const Bytes& other)
    {
        m_bytes.insert(m_bytes.end(), other.m_bytes.begin(), other.m_bytes.end());
        return *this;
    }
    [[nodiscard]] const std::vector<std::byte>& all() const { return m_bytes; }
    [[nodiscard]] std::size_t size() const { return m_bytes.size(); }

private:
    Bytes& number(std::uint64_t value, int bytes)
    {
        for (int i = 0; i < bytes; ++i) {
            m_bytes.push_back(static_cast<std::byte>(value >> (8 * i)));
        }
        return *this;
    }

    std::vector<std::byte> m_bytes;
};

/// Where two files differ first, with the bytes around; empty when they are equal.
inline std::string difference(const std::vector<std::byte>& expected,
                              const std::vector<std::byte>& actual)
{
    const auto [left, right] =
        std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
    if (left == expected.end() && right == actual.end()) {
        return {};
    }
    const auto at = static_cast<std::size_t>(left - expected.begin());
    char line[64];
    std::snprintf(line, sizeof line, "byte 0x%zx of 0x%zx and 0x%zx:", at, expected.size(),
                  actual.size());
    std::string text = line;
    for (const auto* file : {&expected, &actual}) {
        text += file == &expected ? "\n  expected " : "\n  actual   ";
        for (std::size_t i = at; i < std::min(at + 16, file->size()); ++i) {
            std::snprintf(line, sizeof line, "%02x ", std::to_integer<unsigned>((*file)[i]));
            text += line;
        }
    }
    return text;
}

#define EXPECT_SAME_BYTES(expected, actual) EXPECT_EQ("", difference(expected, actual))
