#pragma once

#include "platform/base/vexexport.h"
#include "platform/device/vexdeviceobjects.h"

#include <cstddef>
#include <memory>
#include <span>
#include <unordered_map>

/// Pens by style, width, colour and dashes, made once and kept: a pass over a million entities
/// makes as many pens as differ. The pens belong to the cache and live as long as it, so no edit
/// of a layer, a linetype or a scale can leave a wrong one: it merely asks for another.
class VEXDB_EXPORT CVexDbPenCache {
public:
    CVexDbPenCache();
    ~CVexDbPenCache();
    CVexDbPenCache(const CVexDbPenCache&) = delete;
    CVexDbPenCache& operator=(const CVexDbPenCache&) = delete;

    /// The geometric pen for these, never null. `dashes` are lengths in logical units without
    /// signs, even entries drawn, at most CPen::kMostDashes used; fewer than two, or a total of 0,
    /// is solid.
    const CPen* pen(COLORREF color, int widthLogical, std::span<const int> dashes);
    /// The thin dotted pen that highlights.
    const CPen* highlightPen(COLORREF color);
    /// Frees every pen: none may be selected any more.
    void clear();
    [[nodiscard]] std::size_t size() const { return m_pens.size(); }

private:
    struct Wanted;
    static bool matches(const CPen& pen, const Wanted& wanted);
    static std::size_t hashOf(const Wanted& wanted);
    const CPen* find(const Wanted& wanted);

    std::unordered_multimap<std::size_t, std::unique_ptr<CPen>> m_pens; // by hash
    const CPen* m_last = nullptr; // neighbours in a drawing mostly share their pen
};
