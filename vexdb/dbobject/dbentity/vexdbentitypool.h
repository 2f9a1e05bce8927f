#pragma once

#include <cstddef>

/// Memory for entities, all of them side by side. A drawing has millions, and what looks at the few
/// in a window would else wait for the address of each page they are strewn over: the pool's
/// chunks ask for large pages, and taking a slot costs a few instructions. Slots of one size are
/// given out again, last first; when the last entity has died the pool begins anew.
///
/// For one thread, as all of the library. Under the address sanitizer it is plain new and delete,
/// which see every misuse.
class CVexDbEntityPool {
public:
    static void* take(std::size_t size);
    /// `size` as it was taken with; null is ignored.
    static void give(void* memory, std::size_t size) noexcept;
};
