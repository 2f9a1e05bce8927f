#pragma once

#include <cstddef>

/// Counts what `new` hands out in this test program while a watch is alive, one watch at a time.
class CAllocationWatch {
public:
    CAllocationWatch();
    ~CAllocationWatch();
    CAllocationWatch(const CAllocationWatch&) = delete;
    CAllocationWatch& operator=(const CAllocationWatch&) = delete;
    /// The most that was held at one time since the watch began, bytes.
    [[nodiscard]] static std::size_t peak();
};
