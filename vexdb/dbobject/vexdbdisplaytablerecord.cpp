#include "vexdb/dbobject/vexdbdisplaytablerecord.h"

#include "platform/window/cwnd.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/vexdbentsetiterator.h"
#include "vexdb/dbobject/vexdbviewunits.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbspatialindex.h"

namespace {

CRect wholeUnits(const VexXY& min, const VexXY& max)
{
    return {truncateSaturated(min.x), truncateSaturated(min.y), truncateSaturated(max.x),
            truncateSaturated(max.y)};
}

// With fewer entities a walk over all is as quick.
constexpr std::size_t kLeastIndexed = 64;

} // namespace

CVexDbDisplayTableRecord::CVexDbDisplayTableRecord(CVexDbDatabase* owner) : CVexDbTableRecord(owner)
{
    // Not the view record's own number: hosts know views by the block record's.
    setClassType(VexDb::kBlockTableRecord);
    if (database() != nullptr) {
        const VexDbDrawingSettings_tag& settings = database()->settings();
        m_mapping.displayWindow = wholeUnits(settings.m_ptLimitsMin, settings.m_ptLimitsMax);
        m_mapping.window = logicalOf(m_mapping.displayWindow);
    }
}

CVexDbDisplayTableRecord::~CVexDbDisplayTableRecord() = default;

void CVexDbDisplayTableRecord::setView(CView* view, CDC* dc)
{
    m_view = view;
    m_dc = dc;
}

bool CVexDbDisplayTableRecord::getView(CView*& view, CDC*& dc) const
{
    view = m_view;
    dc = m_dc;
    return m_view != nullptr;
}

void CVexDbDisplayTableRecord::SetCurDispWin(const CVexGePoint2d& min, const CVexGePoint2d& max)
{
    const CRect area = wholeUnits({min.x, min.y}, {max.x, max.y});
    if (!area.IsRectEmpty()) {
        // The window goes along: the next mapping is made from it, and the saved view would be
        // lost.
        m_mapping.displayWindow = area;
        m_mapping.window = logicalOf(area);
    }
}

void CVexDbDisplayTableRecord::setLimits(const CVexGePoint2d& min, const CVexGePoint2d& max)
{
    m_limitsMin = min;
    m_limitsMax = max;
}

void CVexDbDisplayTableRecord::getLimits(CVexGePoint2d& min, CVexGePoint2d& max) const
{
    min = m_limitsMin;
    max = m_limitsMax;
}

/// One change of the set: the index follows it if it was up to date before, and if it cannot, the
/// next query builds it anew.
template <class Follow>
void CVexDbDisplayTableRecord::followInIndex(Follow&& follow)
{
    if (m_index != nullptr && m_indexRevision + 1 == m_displayed.revision()) {
        m_indexRevision += follow(*m_index) ? 1 : 0;
    }
}

CVexDbSpatialIndex* CVexDbDisplayTableRecord::index()
{
    if (m_displayed.size() < kLeastIndexed || database() == nullptr) {
        m_index.reset();
        return nullptr;
    }
    if (m_index == nullptr) {
        m_index = std::make_unique<CVexDbSpatialIndex>(database()->spatialIndexes());
        m_indexRevision = m_displayed.revision() - 1;
    }
    if (m_indexRevision != m_displayed.revision() || m_index->isOutgrown()) {
        m_index->rebuild(m_displayed);
        m_indexRevision = m_displayed.revision();
    }
    database()->spatialIndexes().settle();
    return m_index.get();
}

void CVexDbDisplayTableRecord::addEntity(const CVexDbObjectId& id)
{
    if (!id.isNull() && m_displayed.insert(id).second) {
        followInIndex([&](CVexDbSpatialIndex& index) {
            index.insert(*static_cast<CVexDbEntity*>(id.getPObject()));
            return true;
        });
    }
}

void CVexDbDisplayTableRecord::addEntities(std::span<CVexDbObject* const> entities)
{
    m_displayed.append(entities); // the index is built anew when somebody asks
}

void CVexDbDisplayTableRecord::removeEntity(const CVexDbObjectId& id)
{
    if (!id.isNull() && m_displayed.erase(id) != 0) {
        followInIndex([&](CVexDbSpatialIndex& index) {
            return index.erase(*static_cast<CVexDbEntity*>(id.getPObject()));
        });
    }
}

void CVexDbDisplayTableRecord::setEntityToMem(const CVexDbIdSet& set)
{
    if (&set == &m_displayed) {
        return;
    }
    m_displayed.clear();
    for (const CVexDbObjectId& id : set) {
        m_displayed.insert(id);
    }
}

void CVexDbDisplayTableRecord::ClearDisplayedIdSet()
{
    m_displayed.clear();
}

bool CVexDbDisplayTableRecord::newIterator(CVexDbEntSetIterator*& out, bool /*start*/)
{
    return newEntSetIterator(m_displayed, out);
}
