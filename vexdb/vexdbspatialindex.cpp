#include "vexdb/vexdbspatialindex.h"

#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/vexdbidset.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <numeric>
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

/// The bits of the two in turn: without its last two it is the code of the cell twice as large.
std::uint64_t mortonCode(int column, int row)
{
    const auto spread = [](int value) {
        auto bits = static_cast<std::uint64_t>(static_cast<std::uint32_t>(value) ^ 0x80000000U);
        bits = (bits | (bits << 16)) & 0x0000ffff0000ffffULL;
        bits = (bits | (bits << 8)) & 0x00ff00ff00ff00ffULL;
        bits = (bits | (bits << 4)) & 0x0f0f0f0f0f0f0f0fULL;
        bits = (bits | (bits << 2)) & 0x3333333333333333ULL;
        return (bits | (bits << 1)) & 0x5555555555555555ULL;
    };
    return spread(column) | (spread(row) << 1);
}

using Found = std::vector<std::pair<std::uint64_t, CVexDbEntity*>>;

/// Brings entities into the order of their numbers. Many go by the digits of the numbers, from the
/// last to the first: a drawing's numbers lie close together, so that takes two or three rounds.
void sortByNumber(Found& found)
{
    constexpr std::size_t kFewest = 256;
    constexpr int kDigitBits = 11;
    constexpr int kMostDigits = 3;
    if (found.size() < kFewest) {
        std::ranges::sort(found, {}, &Found::value_type::first);
        return;
    }
    const auto [least, most] = std::ranges::minmax(found, {}, &Found::value_type::first);
    const std::uint64_t base = least.first;
    const auto bits = static_cast<int>(std::bit_width(most.first - base));
    if (bits > kMostDigits * kDigitBits) {
        std::ranges::sort(found, {}, &Found::value_type::first);
        return;
    }
    Found sorted(found.size());
    for (int shift = 0; shift < bits; shift += kDigitBits) {
        std::array<std::size_t, (std::size_t{1} << kDigitBits) + 1> place{};
        const auto digit = [&](const Found::value_type& item) {
            return ((item.first - base) >> shift) & ((std::uint64_t{1} << kDigitBits) - 1);
        };
        for (const auto& item : found) {
            ++place[digit(item) + 1];
        }
        std::partial_sum(place.begin(), place.end(), place.begin());
        for (const auto& item : found) {
            sorted[place[digit(item)]++] = item;
        }
        found.swap(sorted);
    }
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

int CVexDbSpatialIndex::levelOf(const CRect& box) const
{
    const std::int64_t extent =
        std::max(std::int64_t{box.right} - box.left, std::int64_t{box.bottom} - box.top);
    int level = m_finest;
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
    set.visitObjects([](CVexDbObject& object) {
        settleBox(static_cast<CVexDbEntity&>(object));
        return true;
    });
    m_finest = levelForDensity(set);
    m_sizeBuilt = set.size();
    set.visitObjects([this](CVexDbObject& object) {
        insert(static_cast<CVexDbEntity&>(object));
        return true;
    });
}

/// The finest level whose cells hold some dozens of the entities, those cells left out that hold
/// none: what lies far away alone does not count for more than itself.
int CVexDbSpatialIndex::levelForDensity(const CVexDbIdSet& set)
{
    constexpr double kEntitiesInCell = 32.0;
    constexpr std::size_t kSample = std::size_t{1} << 16;
    const std::size_t stride = set.size() / kSample + 1;
    std::vector<std::uint64_t> cells;
    std::size_t seen = 0;
    set.visitObjects([&](CVexDbObject& object) {
        const CRect& box = static_cast<CVexDbEntity&>(object).m_indexBox;
        if (seen++ % stride == 0 && !isEverywhere(box)) {
            cells.push_back(mortonCode(box.left >> kFinestShift, box.top >> kFinestShift));
        }
        return true;
    });
    std::ranges::sort(cells);
    // Of a cell with that many the sample has fewer, and it misses cells.
    const double sampled = kEntitiesInCell / static_cast<double>(stride);
    const double wanted = sampled / (1.0 - std::exp(-sampled));
    const auto count = static_cast<double>(cells.size());
    int level = 0;
    for (; level + 1 < kLevels; ++level) {
        cells.erase(std::unique(cells.begin(), cells.end()), cells.end());
        if (cells.size() < 2 || count >= wanted * static_cast<double>(cells.size())) {
            break;
        }
        std::ranges::for_each(cells, [](std::uint64_t& cell) { cell >>= 2 * kShiftStep; });
    }
    return level;
}

void CVexDbSpatialIndex::insert(CVexDbEntity& entity)
{
    if (entity.m_moved) {
        m_family.settle(); // all indexes have an entity at one place
    }
    settleBox(entity);
    put(entity, entity.m_indexBox);
}

void CVexDbSpatialIndex::settleBox(CVexDbEntity& entity)
{
    if (!entity.m_indexed) {
        entity.m_indexBox = boxOf(entity);
        entity.m_indexed = true;
    }
}

bool CVexDbSpatialIndex::erase(CVexDbEntity& entity)
{
    return entity.m_indexed && take(entity, entity.m_indexBox);
}

bool CVexDbSpatialIndex::collect(const CRect& area, std::size_t most,
                                 std::vector<CVexDbEntity*>& found) const
{
    constexpr std::size_t kUsuallyFound = 256;
    found.clear();
    Query query{area, most, {}};
    query.found.reserve(kUsuallyFound);
    if (!query.look(m_everywhere, true)) {
        return false;
    }
    for (int level = 0; level < kLevels; ++level) {
        if (!query.look(m_levels[static_cast<std::size_t>(level)], shiftOf(level))) {
            return false;
        }
    }
    sortByNumber(query.found);
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
