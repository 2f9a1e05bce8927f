#include "vexdb/vexdbspatialindex.h"

#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/vexdbidset.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

// Strokes and tests may lie this far beyond the truncated coordinates of a box, logical units.
constexpr double kSlack = 2.0;
// Beyond this the integers saturate, and a box says nothing any more.
constexpr double kFarthest = 9.0e8;

/// A box with its right left of its left: the entity may lie anywhere.
constexpr CRect kEverywhere(0, 0, -1, -1);

bool isEverywhere(const CRect& box)
{
    return box.right < box.left;
}

bool meet(const CRect& a, const CRect& b)
{
    return a.left <= b.right && b.left <= a.right && a.top <= b.bottom && b.top <= a.bottom;
}

CRect boxOf(const CVexDbEntity& entity)
{
    CVexGePoint2d min;
    CVexGePoint2d max;
    if (!entity.trueExtents(min, max)) {
        return kEverywhere;
    }
    const double sides[] = {min.x * _dDispScale - kSlack, min.y * _dDispScale - kSlack,
                            max.x * _dDispScale + kSlack, max.y * _dDispScale + kSlack};
    // Also false for what is not a number.
    const auto isNear = [](double side) { return std::fabs(side) < kFarthest; };
    if (!std::ranges::all_of(sides, isNear)) {
        return kEverywhere;
    }
    return {static_cast<int>(std::floor(sides[0])), static_cast<int>(std::floor(sides[1])),
            static_cast<int>(std::ceil(sides[2])), static_cast<int>(std::ceil(sides[3]))};
}

} // namespace

std::size_t CVexDbSpatialIndex::CellHash::operator()(std::uint64_t cell) const
{
    // The finisher of MurmurHash3 (Austin Appleby): neighbouring cells land far apart.
    cell ^= cell >> 33;
    cell *= 0xff51afd7ed558ccdULL;
    cell ^= cell >> 33;
    cell *= 0xc4ceb9fe1a85ec53ULL;
    return static_cast<std::size_t>(cell ^ (cell >> 33));
}

/// One query while it fills its list.
struct CVexDbSpatialIndex::Query {
    CRect area;
    std::size_t most;
    std::vector<std::pair<std::uint64_t, CVexDbEntity*>> found;

    bool look(const std::vector<Item>& items, bool always = false)
    {
        for (const Item& item : items) {
            if (always || meet(item.box, area)) {
                found.emplace_back(item.number, item.entity);
            }
        }
        return found.size() <= most;
    }
    bool look(const Cells& cells, int shift);
};

bool CVexDbSpatialIndex::Query::look(const Cells& cells, int shift)
{
    if (cells.empty()) {
        return true;
    }
    // An entity reaches at most half a cell beyond the one that it stands in.
    const std::int64_t reach = std::int64_t{1} << (shift - kReachShift);
    const std::int64_t left = (area.left - reach) >> shift;
    const std::int64_t top = (area.top - reach) >> shift;
    const std::int64_t right = std::int64_t{area.right} >> shift;
    const std::int64_t bottom = std::int64_t{area.bottom} >> shift;
    const auto columns = static_cast<double>(right - left + 1);
    if (columns * static_cast<double>(bottom - top + 1) > static_cast<double>(cells.size())) {
        return std::ranges::all_of(cells, [this](const auto& cell) { return look(cell.second); });
    }
    for (std::int64_t row = top; row <= bottom; ++row) {
        for (std::int64_t column = left; column <= right; ++column) {
            const auto cell = cells.find(cellAt(column, row));
            if (cell != cells.end() && !look(cell->second)) {
                return false;
            }
        }
    }
    return true;
}

CVexDbSpatialIndex::CVexDbSpatialIndex(CVexDbSpatialIndexes& family) : m_family(family)
{
    m_family.m_indexes.push_back(this);
}

CVexDbSpatialIndex::~CVexDbSpatialIndex()
{
    std::erase(m_family.m_indexes, this);
}

int CVexDbSpatialIndex::levelOf(const CRect& box)
{
    const std::int64_t extent =
        std::max(std::int64_t{box.right} - box.left, std::int64_t{box.bottom} - box.top);
    int level = 0;
    while (level < kLevels && extent > (std::int64_t{1} << (shiftOf(level) - kReachShift))) {
        ++level;
    }
    return isEverywhere(box) ? kLevels : level;
}

std::uint64_t CVexDbSpatialIndex::cellAt(std::int64_t column, std::int64_t row)
{
    return (static_cast<std::uint64_t>(static_cast<std::uint32_t>(column)) << 32) |
           static_cast<std::uint32_t>(row);
}

void CVexDbSpatialIndex::put(CVexDbEntity& entity, const CRect& box)
{
    const int level = levelOf(box);
    std::vector<Item>& items =
        level == kLevels ? m_everywhere
                         : m_levels[static_cast<std::size_t>(level)]
                                   [cellAt(box.left >> shiftOf(level), box.top >> shiftOf(level))];
    items.push_back({box, &entity, entity.getCreatedTime()});
    m_widestPen = std::max(m_widestPen, static_cast<int>(entity.LineWeight()));
    ++m_size;
}

bool CVexDbSpatialIndex::take(const CVexDbEntity& entity, const CRect& box)
{
    const int level = levelOf(box);
    const bool placed = level < kLevels;
    Cells* const cells = placed ? &m_levels[static_cast<std::size_t>(level)] : nullptr;
    Cells::iterator cell;
    if (placed) {
        cell = cells->find(cellAt(box.left >> shiftOf(level), box.top >> shiftOf(level)));
        if (cell == cells->end()) {
            return false;
        }
    }
    std::vector<Item>& items = placed ? cell->second : m_everywhere;
    const auto item = std::ranges::find(items, &entity, &Item::entity);
    if (item == items.end()) {
        return false;
    }
    *item = items.back();
    items.pop_back();
    if (placed && items.empty()) {
        cells->erase(cell);
    }
    --m_size;
    return true;
}

void CVexDbSpatialIndex::rebuild(const CVexDbIdSet& set)
{
    for (Cells& cells : m_levels) {
        cells.clear();
    }
    m_everywhere.clear();
    m_size = 0;
    m_widestPen = 0;
    m_family.settle();
    set.visitObjects([this](CVexDbObject& object) {
        insert(static_cast<CVexDbEntity&>(object));
        return true;
    });
}

void CVexDbSpatialIndex::insert(CVexDbEntity& entity)
{
    if (entity.m_moved) {
        m_family.settle(); // all indexes have an entity at one place
    }
    if (!entity.m_indexed) {
        entity.m_indexBox = boxOf(entity);
        entity.m_indexed = true;
    }
    put(entity, entity.m_indexBox);
}

bool CVexDbSpatialIndex::erase(CVexDbEntity& entity)
{
    return entity.m_indexed && take(entity, entity.m_indexBox);
}

bool CVexDbSpatialIndex::collect(const CRect& area, std::size_t most,
                                 std::vector<CVexDbEntity*>& found) const
{
    found.clear();
    Query query{area, most, {}};
    if (!query.look(m_everywhere, true)) {
        return false;
    }
    for (int level = 0; level < kLevels; ++level) {
        if (!query.look(m_levels[static_cast<std::size_t>(level)], shiftOf(level))) {
            return false;
        }
    }
    std::ranges::sort(query.found, {}, &std::pair<std::uint64_t, CVexDbEntity*>::first);
    found.reserve(query.found.size());
    for (const auto& [number, entity] : query.found) {
        found.push_back(entity);
    }
    return true;
}

void CVexDbSpatialIndexes::forget(const CVexDbEntity& entity)
{
    std::erase(m_moved, &entity);
}

void CVexDbSpatialIndexes::settle()
{
    for (CVexDbEntity* entity : std::exchange(m_moved, {})) {
        const CRect before = entity->m_indexBox;
        entity->m_moved = false;
        entity->m_indexBox = boxOf(*entity);
        for (CVexDbSpatialIndex* index : m_indexes) {
            if (index->take(*entity, before)) {
                index->put(*entity, entity->m_indexBox);
            }
        }
    }
}
