#include "vexdb/dbcommand/vexfreeends.h"

#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexge/gemath/vexgetol.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace {

using Ends = std::pair<CVexGePoint2d, CVexGePoint2d>;

constexpr double kCellSize = 4.0 * kGeTol; // more than what counts as meeting
constexpr double kFarthestCell = 1e18;

/// None for what cannot be joined.
std::optional<Ends> endsOf(const CVexDbEntity& entity)
{
    switch (entity.classType()) {
    case VexDb::kPolyline: {
        const auto& polyline = static_cast<const CVexDbPolyline&>(entity);
        // A lone vertex would join without a segment, and leave its bulge behind.
        if (polyline.IsClosed() || polyline.NumVerts() < 2) {
            return std::nullopt;
        }
        const auto& vertices = polyline.gePolyline().vertices();
        return Ends(vertices.front(), vertices.back());
    }
    case VexDb::kLine: {
        const CVexGeLine2d& line = static_cast<const CVexDbLine&>(entity).geLine();
        return Ends(line.startPoint(), line.endPoint());
    }
    case VexDb::kArc: {
        const CVexGeCircArc2d& arc = static_cast<const CVexDbArc&>(entity).geArc();
        return Ends(arc.startPoint(), arc.endPoint());
    }
    default: return std::nullopt;
    }
}

} // namespace

VexFreeEnds::VexFreeEnds(const VexEntitySet& entities)
    : m_entities(entities.begin(), entities.end())
{
    m_places.reserve(2 * m_entities.size());
    for (std::size_t place = 0; place < m_entities.size(); ++place) {
        if (const std::optional<Ends> ends = endsOf(*m_entities[place])) {
            add(ends->first, place);
            add(ends->second, place);
        }
    }
}

/// The cell of the point, or of a neighbour `byX`, `byY` cells away. Two cells may have the same
/// number, which makes for a place more to ask.
VexFreeEnds::Cell VexFreeEnds::cellOf(const CVexGePoint2d& point, int byX, int byY)
{
    constexpr Cell kSpread = 0x9e3779b97f4a7c15U; // 2^64 by the golden ratio (Knuth, 6.4)
    const auto number = [](double at, int by) {
        const double cell = std::floor(std::clamp(at / kCellSize, -kFarthestCell, kFarthestCell));
        return static_cast<Cell>(static_cast<std::int64_t>(cell) + by);
    };
    return number(point.x, byX) * kSpread ^ number(point.y, byY);
}

void VexFreeEnds::add(const CVexGePoint2d& end, std::size_t place)
{
    if (std::isfinite(end.x) && std::isfinite(end.y)) {
        m_places.emplace(cellOf(end, 0, 0), place);
    }
}

void VexFreeEnds::addNear(const CVexGePoint2d& end, std::size_t from, Places& places) const
{
    if (!std::isfinite(end.x) || !std::isfinite(end.y)) {
        return;
    }
    for (int x = -1; x <= 1; ++x) {
        for (int y = -1; y <= 1; ++y) {
            const auto [first, last] = m_places.equal_range(cellOf(end, x, y));
            for (auto entry = first; entry != last; ++entry) {
                const std::size_t place = entry->second;
                if (place >= from && m_entities[place] != nullptr) {
                    places.push_back(place);
                }
            }
        }
    }
}

VexFreeEnds::Places VexFreeEnds::near(const CVexDbPolyline& polyline, std::size_t from) const
{
    const auto& vertices = polyline.gePolyline().vertices();
    Places places;
    addNear(vertices.front(), from, places);
    addNear(vertices.back(), from, places);
    std::ranges::sort(places);
    return places;
}
