#pragma once

#include "platform/base/crect.h"
#include "platform/base/vexexport.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

class CVexDbEntity;
class CVexDbIdSet;
class CVexDbSpatialIndexes;

/// Where the entities of one view lie, so that a pick, a selection or a redraw looks only at what
/// is near. It finds candidates by their boxes, never too few; the caller's own test then decides,
/// so that the answer is that of a walk over the whole drawing.
///
/// Inside are grids of growing cells. An entity stands in one cell of the finest grid whose cells
/// are at least twice its size, by the left top corner of its box. No grid is finer than the
/// drawing is dense: where a cell holds next to nothing, finding the cells takes longer than
/// looking.
class VEXDB_EXPORT CVexDbSpatialIndex {
public:
    explicit CVexDbSpatialIndex(CVexDbSpatialIndexes& family);
    ~CVexDbSpatialIndex();
    CVexDbSpatialIndex(const CVexDbSpatialIndex&) = delete;
    CVexDbSpatialIndex& operator=(const CVexDbSpatialIndex&) = delete;

    /// Holds exactly the entities of `set` from here on.
    void rebuild(const CVexDbIdSet& set);
    void insert(CVexDbEntity& entity);
    /// False when it was not there.
    bool erase(CVexDbEntity& entity);
    /// Fills `found` with the entities whose box meets `area` (logical units, right and bottom
    /// inside), in order of creation. False, with nothing of use in it, as soon as there are more
    /// than `most`.
    bool collect(const CRect& area, std::size_t most, std::vector<CVexDbEntity*>& found) const;
    [[nodiscard]] std::size_t size() const { return m_size; }
    /// True when so much has come since the rebuild that its grids are too coarse.
    [[nodiscard]] bool isOutgrown() const { return m_size > m_sizeBuilt * kGrowthUntilRebuilt; }
    /// The widest own line weight among them so far, logical units.
    [[nodiscard]] int widestPen() const { return m_widestPen; }

private:
    friend class CVexDbSpatialIndexes;
    struct Item {
        CRect box;
        CVexDbEntity* entity = nullptr;
        std::uint64_t number = 0; // of creation
    };
    struct CellHash {
        std::size_t operator()(std::uint64_t cell) const;
    };
    using Cells = std::unordered_map<std::uint64_t, std::vector<Item>, CellHash>;
    struct Query;

    static constexpr std::size_t kGrowthUntilRebuilt = 8;
    static constexpr int kLevels = 23;
    static constexpr int kFinestShift = 7; // the finest cells have 2^7 logical units
    static constexpr int kShiftStep = 1;   // each level's cells are twice those below
    static constexpr int kReachShift = 1;  // and twice what stands in them

    [[nodiscard]] int levelOf(const CRect& box) const;
    static void settleBox(CVexDbEntity& entity);
    static int levelForDensity(const CVexDbIdSet& set);
    static int shiftOf(int level) { return kFinestShift + kShiftStep * level; }
    static std::uint64_t cellAt(std::int64_t column, std::int64_t row);
    void put(CVexDbEntity& entity, const CRect& box);
    bool take(const CVexDbEntity& entity, const CRect& box);

    CVexDbSpatialIndexes& m_family;
    std::array<Cells, kLevels> m_levels;
    std::vector<Item> m_everywhere; // what no grid can place
    int m_finest = 0;               // no entity stands in a level below
    std::size_t m_size = 0;
    std::size_t m_sizeBuilt = 0;
    int m_widestPen = 0;
};

/// The indexes of one drawing, and the entities that have moved since they last looked: an edit
/// costs one entry, and the next query puts it right in all of them.
class VEXDB_EXPORT CVexDbSpatialIndexes {
public:
    void noteMoved(CVexDbEntity& entity) { m_moved.push_back(&entity); }
    /// An entity dies.
    void forget(const CVexDbEntity& entity);
    /// Brings every index up to date.
    void settle();

private:
    friend class CVexDbSpatialIndex;
    std::vector<CVexDbSpatialIndex*> m_indexes; // not owned
    std::vector<CVexDbEntity*> m_moved;
};
