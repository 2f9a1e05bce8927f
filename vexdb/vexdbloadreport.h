#pragma once

#include "platform/base/cstring.h"

#include <cstdint>
#include <vector>

/// One thing that was wrong with a file, and where.
struct VexDbFault {
    CString what;
    std::uint64_t offset = 0; // in the file
};

/// What a Save or a Read found.
struct VexDbLoadReport {
    std::vector<VexDbFault> faults; // at most kMostFaults of them are kept
    std::uint64_t faultCount = 0;
    std::uint64_t objectsKept = 0;     // records and entities that were whole
    std::uint64_t numbersReplaced = 0; // hard identifiers that were repeated or out of range

    static constexpr std::size_t kMostFaults = 1000;

    void add(const CString& what, std::uint64_t offset)
    {
        ++faultCount;
        if (faults.size() < kMostFaults) {
            faults.push_back({what, offset});
        }
    }
};
