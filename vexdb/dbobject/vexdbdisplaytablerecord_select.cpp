#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/dbobject/vexdbviewunits.h"
#include "vexdb/vexdbdatabase.h"

namespace {

/// Replaces `out` by the visible entities of `set` that `accept` takes; `out` may be `set` itself.
template <class Accept>
bool collectVisible(const CVexDbIdSet& set, CVexDbIdSet& out, Accept accept)
{
    CVexDbIdSet found;
    for (auto at = set.begin(), end = set.end(); at != end; ++at) {
        auto* entity = static_cast<CVexDbEntity*>(at.object());
        if (entity->isVisiable() && accept(*entity)) {
            found.insert(*at);
        }
    }
    out.swap(found);
    return !out.empty();
}

} // namespace

bool CVexDbDisplayTableRecord::selectEntity(const CVexGePoint2d& /*p*/, const CVexGePoint2d& /*q*/,
                                            CVexDbIdSet& set, bool)
{
    return collectVisible(m_displayed, set, [](CVexDbEntity&) { return true; });
}

bool CVexDbDisplayTableRecord::selectEntity(const CVexGePoint2d& p, CVexDbObjectId& id)
{
    if (m_mapping.scaleX == 0.0 || database() == nullptr) {
        return false;
    }
    const double box = database()->settings().m_nPickBox * m_mapping.scaleX / _dDispScale;
    for (auto at = m_displayed.begin(), end = m_displayed.end(); at != end; ++at) {
        const auto* entity = static_cast<const CVexDbEntity*>(at.object());
        if (entity->isVisiable() && entity->isOn(p, box / 2.0) != 0) {
            id = *at;
            return true;
        }
    }
    return false;
}

bool CVexDbDisplayTableRecord::selectEntity(CPoint p, CVexDbObjectId& id)
{
    return selectEntity(GetLogicalPoint(p), id);
}

bool CVexDbDisplayTableRecord::selectEntityByWin(CVexGePoint2d p, CVexGePoint2d q, CVexDbIdSet& set)
{
    // The tests sort their corners in place: each entity gets the corners as they were given.
    return collectVisible(m_displayed, set, [&](CVexDbEntity& entity) {
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
    return collectVisible(m_displayed, set, [&](CVexDbEntity& entity) {
        CVexGePoint2d a(p);
        CVexGePoint2d b(q);
        return entity.checkInsideOrCross(a, b);
    });
}

bool CVexDbDisplayTableRecord::selectEntityByCross(CPoint p, CPoint q, CVexDbIdSet& set)
{
    return selectEntityByCross(GetLogicalPoint(p), GetLogicalPoint(q), set);
}
