#include "tests/file/allocationwatch.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::atomic<bool> watching{false};
std::atomic<std::size_t> held{0};
std::atomic<std::size_t> most{0};

void* counted(std::size_t size)
{
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory != nullptr && watching) {
        held += malloc_usable_size(memory);
        most = std::max(most.load(), held.load());
    }
    return memory;
}

void uncounted(void* memory)
{
    if (memory != nullptr && watching) {
        // What was handed out before the watch may come back while it lasts.
        held -= std::min(held.load(), malloc_usable_size(memory));
    }
    std::free(memory);
}

} // namespace

CAllocationWatch::CAllocationWatch()
{
    held = 0;
    most = 0;
    watching = true;
}

CAllocationWatch::~CAllocationWatch()
{
    watching = false;
}

std::size_t CAllocationWatch::peak()
{
    return most;
}

void* operator new(std::size_t size)
{
    if (void* memory = counted(size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return counted(size);
}

void operator delete(void* memory) noexcept
{
    uncounted(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    uncounted(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    uncounted(memory);
}
