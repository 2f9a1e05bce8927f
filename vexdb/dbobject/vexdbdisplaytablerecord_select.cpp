#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/dbobject/vexdbviewunits.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbspatialindex.h"

#include <algorithm>
#include <cmath>

namespace {

// What the tests of entities allow beyond a corner, and how far truncation moves one.
constexpr double kSlack = 1.0; // drawing units

/// The area of two corners in any order, logical units.
CRect areaOf(const CVexGePoint2d& p, const CVexGePoint2d& q, double margin = kSlack)
{
    return {toLogical(std::min(p.x, q.x) - margin), toLogical(std::min(p.y, q.y) - margin),
            toLogical(std::max(p.x, q.x) + margin), toLogical(std::max(p.y, q.y) + margin)};
}

constexpr CRect kEverywhere(-1000000000, -1000000000, 1000000000, 1000000000);

bool isFinite(const CVexGePoint2d& point)
{
    return std::isfinite(point.x) && std::isfinite(point.y);
}

/// Where a selection by two corners looks.
CRect searched(const CVexGePoint2d& p, const CVexGePoint2d& q)
{
    return isFinite(p) && isFinite(q) ? areaOf(p, q) : kEverywhere;
}

} // namespace

bool CVexDbDisplayTableRecord::findNear(const CRect& area)
{
    constexpr std::size_t kShareWorthSorting = 4; // more than a quarter: the walk is as quick
    const CVexDbSpatialIndex* const index = this->index();
    return index != nullptr && index->collect(area, index->size() / kShareWorthSorting, m_near);
}

template <class Accept>
bool CVexDbDisplayTableRecord::collectVisible(const CRect& area, CVexDbIdSet& out, Accept&& accept)
{
    CVexDbIdSet found; // `out` may be what the view draws
    const auto look = [&](CVexDbObject& object) {
        auto& entity = static_cast<CVexDbEntity&>(object);
        if (entity.isVisiable() && accept(entity)) {
            found.insert(CVexDbObjectId(&entity));
        }
        return true;
    };
    if (findNear(area)) {
        visitFetched(m_near, look);
    } else {
        m_displayed.visitObjects(look);
    }
    out.swap(found);
    return !out.empty();
}

bool CVexDbDisplayTableRecord::selectEntity(const CVexGePoint2d& /*p*/, const CVexGePoint2d& /*q*/,
                                            CVexDbIdSet& set, bool)
{
    return collectVisible(kEverywhere, set, [](CVexDbEntity&) { return true; });
}

bool CVexDbDisplayTableRecord::selectEntity(const CVexGePoint2d& p, CVexDbObjectId& id)
{
    if (m_mapping.scaleX == 0.0 || database() == nullptr) {
        return false;
    }
    const double box = database()->settings().m_nPickBox * m_mapping.scaleX / _dDispScale;
    const auto isPicked = [&](const CVexDbEntity& entity) {
        return entity.isVisiable() && entity.isOn(p, box / 2.0) != 0;
    };
    if (isFinite(p) && findNear(areaOf(p, p, box / 2.0 + kSlack))) {
        const auto first = std::ranges::find_if(
            m_near, [&](const CVexDbEntity* entity) { return isPicked(*entity); });
        if (first != m_near.end()) {
            id = CVexDbObjectId(*first);
            return true;
        }
        return false;
    }
    return !m_displayed.visitObjects([&](CVexDbObject& object) {
        const bool picked = isPicked(static_cast<const CVexDbEntity&>(object));
        if (picked) {
            id = CVexDbObjectId(&object);
        }
        return !picked;
    });
}

bool CVexDbDisplayTableRecord::selectEntity(CPoint p, CVexDbObjectId& id)
{
    return selectEntity(GetLogicalPoint(p), id);
}

bool CVexDbDisplayTableRecord::selectEntityByWin(CVexGePoint2d p, CVexGePoint2d q, CVexDbIdSet& set)
{
    // The tests sort their corners in place: each entity gets the corners as they were given.
    return collectVisible(searched(p, q), set, [&](CVexDbEntity& entity) {
        CVexGePoint2d a(p);
        CVexGePoint2d b(q);
        return entity.checkInside(a, b);
    });
}

bool CVexDbDisplayTableRecord::selectEntityByWin(CPoint p, CPoint q, CVexDbIdSet& set)
{
    return selectEntityByWin(GetLogicalPoint(p), GetLogicalPoint(q), set);
}

bool CVexDbDisplayTableRecord::selectEntityByCross(CVexGePoint2d p, CVexGePoint2d q,
                                                   CVexDbIdSet& set)
{
    return collectVisible(searched(p, q), set, [&](CVexDbEntity& entity) {
        CVexGePoint2d a(p);
        CVexGePoint2d b(q);
        return entity.checkInsideOrCross(a, b);
    });
}

bool CVexDbDisplayTableRecord::selectEntityByCross(CPoint p, CPoint q, CVexDbIdSet& set)
{
    return selectEntityByCross(GetLogicalPoint(p), GetLogicalPoint(q), set);
}
