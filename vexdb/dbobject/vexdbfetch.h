#pragma once

#include <cstddef>

// Walks over many objects spend most of their time waiting for memory: so they ask for an object
// some steps before they come to it.

/// How many objects ahead of the walk.
inline constexpr std::size_t kVexFetchedAhead = 8;

/// Fetches the beginning of an object into the cache, and what follows: its geometry.
inline void vexFetch(const void* object)
{
    constexpr std::size_t kCacheLine = 64;
    const auto* bytes = static_cast<const char*>(object);
    __builtin_prefetch(bytes);
    __builtin_prefetch(bytes + kCacheLine);
    __builtin_prefetch(bytes + 2 * kCacheLine);
    __builtin_prefetch(bytes + 3 * kCacheLine);
    __builtin_prefetch(bytes + 4 * kCacheLine);
}

/// Calls `visit` with each object of a list of pointers, until it answers false; true when it never
/// did. The list stays as it is meanwhile.
template <class List, class Visit>
bool visitFetched(const List& list, Visit&& visit)
{
    const std::size_t count = list.size();
    for (std::size_t i = 0; i < count; ++i) {
        vexFetch(list[i + kVexFetchedAhead < count ? i + kVexFetchedAhead : i]);
        if (!visit(*list[i])) {
            return false;
        }
    }
    return true;
}
