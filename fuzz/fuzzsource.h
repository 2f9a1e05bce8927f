#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

/// Hands out the bytes of an input, up to a number of them; 0 when there are none left.
class CFuzzSource {
public:
    CFuzzSource(const std::uint8_t* data, std::size_t size, std::size_t most)
        : m_at(data), m_end(data + std::min(size, most))
    {
    }
    [[nodiscard]] std::uint8_t byte() { return m_at == m_end ? std::uint8_t{0} : *m_at++; }
    [[nodiscard]] bool empty() const { return m_at == m_end; }
    /// One of a list that is not empty.
    [[nodiscard]] const auto& oneOf(const auto& list) { return list[byte() % list.size()]; }

private:
    const std::uint8_t* m_at;
    const std::uint8_t* m_end;
};
