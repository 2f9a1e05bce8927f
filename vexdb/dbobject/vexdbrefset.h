#pragma once

#include "vexdb/dbobject/vexdbidset.h"

class CVexDbEntSetIterator;

/// The entities that refer to a record: what stops it from being removed. Erased ones count.
class VEXDB_EXPORT CVexDbRefSet {
public:
    // They give the number of entities afterwards.
    int addRefEntity(const CVexDbObjectId& id)
    {
        m_entities.insert(id);
        return getNumEntity();
    }
    int addRefEntities(std::span<CVexDbObject* const> entities)
    {
        m_entities.append(entities);
        return getNumEntity();
    }
    int removeRefEntity(const CVexDbObjectId& id)
    {
        m_entities.erase(id);
        return getNumEntity();
    }
    [[nodiscard]] int getNumEntity() const { return static_cast<int>(m_entities.size()); }
    [[nodiscard]] const CVexDbIdSet& entitySet() const { return m_entities; }
    /// False, with no iterator, when there is no entity; else the caller owns it.
    bool newIterator(CVexDbEntSetIterator*& out, bool start) const;

protected:
    CVexDbRefSet() = default;
    ~CVexDbRefSet() = default;

private:
    CVexDbIdSet m_entities;
};

// Put an entity among a record's users, or take it out; false for no record.
inline bool addUser(CVexDbRefSet* record, const CVexDbObjectId& entity)
{
    if (record != nullptr) {
        record->addRefEntity(entity);
    }
    return record != nullptr;
}
inline bool removeUser(CVexDbRefSet* record, const CVexDbObjectId& entity)
{
    if (record != nullptr) {
        record->removeRefEntity(entity);
    }
    return record != nullptr;
}

/// The same for a record that layers refer to as well.
class VEXDB_EXPORT CVexDbLayerRefSet : public CVexDbRefSet {
public:
    int addLayerId(const CVexDbObjectId& id);
    int removeLayerId(const CVexDbObjectId& id);
    [[nodiscard]] int getNumLayer() const { return static_cast<int>(m_layers.size()); }
    [[nodiscard]] const CVexDbIdSet& layerSet() const { return m_layers; }
    /// The entities; with `viaLayers` those of its layers too.
    void getEntitySet(CVexDbIdSet& set, bool viaLayers) const;

protected:
    CVexDbLayerRefSet() = default;
    ~CVexDbLayerRefSet() = default;

private:
    CVexDbIdSet m_layers;
};
