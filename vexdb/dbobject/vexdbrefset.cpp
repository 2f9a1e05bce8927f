#include "vexdb/dbobject/vexdbrefset.h"

#include "vexdb/dbobject/vexdbentsetiterator.h"
#include "vexdb/dbobject/vexdblayertablerecord.h"

bool CVexDbRefSet::newIterator(CVexDbEntSetIterator*& out, bool /*start*/) const
{
    return newEntSetIterator(m_entities, out);
}

int CVexDbLayerRefSet::addLayerId(const CVexDbObjectId& id)
{
    m_layers.insert(id);
    return getNumLayer();
}

int CVexDbLayerRefSet::removeLayerId(const CVexDbObjectId& id)
{
    // By its address: a layer read beside the one that it replaces has that one's number.
    const auto at = m_layers.find(id);
    if (at != m_layers.end() && at.object() == id.getPObject()) {
        m_layers.erase(at);
    }
    return getNumLayer();
}

void CVexDbLayerRefSet::getEntitySet(CVexDbIdSet& set, bool viaLayers) const
{
    set = entitySet();
    if (!viaLayers) {
        return;
    }
    for (const CVexDbObjectId layer : m_layers) {
        for (const CVexDbObjectId entity :
             static_cast<const CVexDbLayerTableRecord*>(layer.getPObject())->entitySet()) {
            set.insert(entity);
        }
    }
}
