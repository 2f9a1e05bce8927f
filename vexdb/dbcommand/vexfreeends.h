#pragma once

#include "vexdb/dbobject/dbentity/vexdbentityset.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

class CVexDbPolyline;
class CVexGePoint2d;

/// The lines, arcs and polylines of a selection by where their ends are: of thousands that are to
/// be joined a step asks only those that lie at the polyline's ends. It owns nothing.
class VexFreeEnds {
public:
    /// Places in the order of the selection.
    using Places = std::vector<std::size_t>;

    explicit VexFreeEnds(const VexEntitySet& entities);
    /// The entity at a place; null when it was taken.
    [[nodiscard]] CVexDbEntity* at(std::size_t place) const { return m_entities[place]; }
    /// Gives the entity at a place, which is empty from then on.
    CVexDbEntity* take(std::size_t place) { return std::exchange(m_entities[place], nullptr); }
    /// The places not before `from`, ascending, with an end that may meet one of the polyline's;
    /// some do not quite, and the joining itself tells. The polyline has a vertex.
    [[nodiscard]] Places near(const CVexDbPolyline& polyline, std::size_t from) const;

private:
    using Cell = std::uint64_t;

    static Cell cellOf(const CVexGePoint2d& point, int byX, int byY);
    void add(const CVexGePoint2d& end, std::size_t place);
    void addNear(const CVexGePoint2d& end, std::size_t from, Places& places) const;

    std::vector<CVexDbEntity*> m_entities;
    std::unordered_multimap<Cell, std::size_t> m_places;
};
