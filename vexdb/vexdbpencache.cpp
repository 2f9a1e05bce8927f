#include "vexdb/vexdbpencache.h"

#include <algorithm>

struct CVexDbPenCache::Wanted {
    int style;
    int width;
    COLORREF color;
    std::span<const int> dashes; // empty for a solid pen
};

namespace {

constexpr int kHighlightWidth = 1;

/// The dashes that take part: none of a list that would draw nothing but a solid line.
std::span<const int> effective(std::span<const int> dashes)
{
    dashes = dashes.first(std::min(dashes.size(), CPen::kMostDashes));
    const bool anyLength = std::ranges::any_of(dashes, [](int length) { return length > 0; });
    return dashes.size() >= 2 && anyLength ? dashes : std::span<const int>();
}

} // namespace

CVexDbPenCache::CVexDbPenCache() = default;

CVexDbPenCache::~CVexDbPenCache() = default;

const CPen* CVexDbPenCache::pen(COLORREF color, int widthLogical, std::span<const int> dashes)
{
    const std::span<const int> used = dashes.empty() ? dashes : effective(dashes);
    const int style = used.empty() ? PS_GEOMETRIC : PS_GEOMETRIC_USERSTYLE;
    return find({style, widthLogical, color, used});
}

const CPen* CVexDbPenCache::highlightPen(COLORREF color)
{
    return find({PS_DOT, kHighlightWidth, color, {}});
}

void CVexDbPenCache::clear()
{
    m_pens.clear();
    m_last = nullptr;
}

bool CVexDbPenCache::matches(const CPen& pen, const Wanted& wanted)
{
    const auto asKept = [](int length) { return std::max(length, 0); };
    return pen.color() == wanted.color && pen.width() == wanted.width &&
           pen.style() == wanted.style &&
           std::ranges::equal(pen.dashes(), wanted.dashes, {}, {}, asKept);
}

std::size_t CVexDbPenCache::hashOf(const Wanted& wanted)
{
    constexpr std::size_t kMultiplier = 0x9e3779b97f4a7c15; // spreads neighbouring numbers
    std::size_t hash = wanted.color;
    const auto mix = [&](int number) {
        hash = (hash ^ static_cast<unsigned>(number)) * kMultiplier;
        hash ^= hash >> 32;
    };
    mix(wanted.style);
    mix(wanted.width);
    for (const int length : wanted.dashes) {
        mix(std::max(length, 0));
    }
    return hash;
}

const CPen* CVexDbPenCache::find(const Wanted& wanted)
{
    if (m_last != nullptr && matches(*m_last, wanted)) {
        return m_last;
    }
    const std::size_t hash = hashOf(wanted);
    const auto [first, last] = m_pens.equal_range(hash);
    for (auto held = first; held != last; ++held) {
        if (matches(*held->second, wanted)) {
            return m_last = held->second.get();
        }
    }
    auto made = wanted.dashes.empty()
                    ? std::make_unique<CPen>(wanted.style, wanted.width, wanted.color)
                    : std::make_unique<CPen>(wanted.style, wanted.width, CBrush(wanted.color),
                                             wanted.dashes);
    return m_last = m_pens.emplace(hash, std::move(made))->second.get();
}
