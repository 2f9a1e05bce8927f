#include "vexdb/dbobject/dbentity/vexdbentitypool.h"

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <sys/mman.h>
#include <utility>

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kIsPooled = false;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
constexpr bool kIsPooled = false;
#else
constexpr bool kIsPooled = true;
#endif
#else
constexpr bool kIsPooled = true;
#endif

constexpr std::size_t kStep = alignof(std::max_align_t);
constexpr std::size_t kLargestSlot = 1024; // larger ones are few: they go their own way
constexpr std::size_t kSmallestChunk = std::size_t{1} << 16;
constexpr std::size_t kLargestChunk = std::size_t{1} << 25;
constexpr std::size_t kKept = std::size_t{1} << 18; // of a pool without entities
constexpr std::size_t kGrowth = 4;                  // a new chunk is this part of what there is
constexpr std::size_t kLargePage = std::size_t{1} << 21;

// What is given out next is fetched for writing meanwhile: about an entity at a time.
constexpr std::size_t kCacheLine = 64;
constexpr std::size_t kFetchedAhead = 1024;
constexpr std::size_t kFetchedLines = 5;

struct Slot {
    Slot* next;
};

/// The beginning of a chunk; the slots follow.
struct alignas(kStep) Chunk {
    Chunk* next;
    std::size_t size; // with this
    [[nodiscard]] std::byte* begin() { return reinterpret_cast<std::byte*>(this + 1); }
    [[nodiscard]] std::byte* end() { return reinterpret_cast<std::byte*>(this) + size; }
};

/// Asks for large pages where a chunk has room for them.
void askForLargePages(Chunk& chunk)
{
    void* first = chunk.begin();
    std::size_t room = static_cast<std::size_t>(chunk.end() - chunk.begin());
    if (std::align(kLargePage, kLargePage, first, room) != nullptr) {
        madvise(first, room / kLargePage * kLargePage, MADV_HUGEPAGE);
    }
}

/// The pool of the process. Without a destructor: entities may die at its very end.
struct Pool {
    std::array<Slot*, kLargestSlot / kStep + 1> free{}; // by size
    Chunk* chunks = nullptr;                            // the oldest
    Chunk* current = nullptr;
    std::byte* next = nullptr; // the first byte of the current chunk never given out
    std::size_t total = 0;
    std::size_t live = 0;

    void* takeNew(std::size_t size)
    {
        if (current == nullptr || static_cast<std::size_t>(current->end() - next) < size) {
            goOn();
        }
        for (std::size_t line = 0; line < kFetchedLines; ++line) {
            __builtin_prefetch(next + kFetchedAhead + line * kCacheLine, 1);
        }
        return std::exchange(next, next + size);
    }
    void goOn()
    {
        Chunk*& following = current == nullptr ? chunks : current->next;
        if (following == nullptr) {
            const std::size_t size = std::clamp(total / kGrowth, kSmallestChunk, kLargestChunk);
            following = new (::operator new(size)) Chunk{nullptr, size};
            total += size;
            askForLargePages(*following);
        }
        current = following;
        next = current->begin();
    }
    void beginAnew()
    {
        free.fill(nullptr);
        current = nullptr;
        Chunk** end = &chunks;
        for (total = 0; *end != nullptr && total < kKept; end = &(*end)->next) {
            total += (*end)->size;
        }
        for (Chunk* chunk = std::exchange(*end, nullptr); chunk != nullptr;) {
            ::operator delete(std::exchange(chunk, chunk->next));
        }
    }
};

constinit Pool pool;

constexpr std::size_t roundedUp(std::size_t size)
{
    return (size + kStep - 1) / kStep * kStep;
}

} // namespace

void* CVexDbEntityPool::take(std::size_t size)
{
    if (!kIsPooled || size > kLargestSlot) {
        return ::operator new(size);
    }
    const std::size_t rounded = roundedUp(size);
    Slot*& free = pool.free[rounded / kStep];
    void* const memory = free != nullptr ? std::exchange(free, free->next) : pool.takeNew(rounded);
    ++pool.live;
    return memory;
}

void CVexDbEntityPool::give(void* memory, std::size_t size) noexcept
{
    if (memory == nullptr) {
        return;
    }
    if (!kIsPooled || size > kLargestSlot) {
        ::operator delete(memory);
        return;
    }
    Slot*& free = pool.free[roundedUp(size) / kStep];
    free = new (memory) Slot{free};
    if (--pool.live == 0) {
        pool.beginAnew();
    }
}
