#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <span>

namespace {

// The block that the entity stands in; null for none, and for an entity of a dimension, whose owner
// is that.
CVexDbBlockTableRecord* blockOf(const CVexDbEntity& entity)
{
    CVexDbObject* owner = entity.ownerId().getPObject();
    if (owner == nullptr) {
        return nullptr; // the usual case of an entity that is added
    }
    auto* block = dynamic_cast<CVexDbBlockTableRecord*>(owner);
    // By its address: a plain copy names its source's block and goes by its source's identifier.
    return block != nullptr && block->contains(CVexDbObjectId(&entity)) ? block : nullptr;
}

using Run = std::span<CVexDbObject* const>;

CVexDbEntity& entityOf(CVexDbObject* object)
{
    return *static_cast<CVexDbEntity*>(object);
}

/// Calls `visit` with each run of neighbours that have `key` in common.
template <class Key, class Visit>
void forEachRun(Run all, Key key, Visit visit)
{
    while (!all.empty()) {
        const auto shared = key(all.front());
        const auto end = std::ranges::find_if(
            all, [&](const CVexDbObject* object) { return key(object) != shared; });
        const Run run(all.begin(), end);
        visit(run);
        all = all.subspan(run.size());
    }
}

/// Enters entities in the sets of users of the records that `recordOf` names.
template <class Record>
void listIn(Run all, CVexDbObjectId (CVexDbEntity::*recordOf)() const)
{
    const auto recordBehind = [recordOf](const CVexDbObject* object) {
        const auto& entity = *static_cast<const CVexDbEntity*>(object);
        return static_cast<Record*>((entity.*recordOf)().getPObject());
    };
    forEachRun(all, recordBehind, [&](Run run) {
        if (Record* const record = recordBehind(run.front())) {
            record->addRefEntities(run);
        }
    });
}

bool isHeldBy(const CVexDbTable& table, const CVexDbObjectId& record)
{
    return record.isNull() ||
           static_cast<const CVexDbTableRecord*>(record.getPObject())->table() == &table;
}

} // namespace

void CVexDbDatabase::addEntity(CVexDbEntity* entity, CVexDbObjectId& id)
{
    addEntitySub(entity, id);
}

void CVexDbDatabase::addEntitySub(CVexDbEntity* entity, CVexDbObjectId& id)
{
    addEntityTo(*m_blocks.getCurrentRecord(), entity, id);
}

void CVexDbDatabase::addEntityTo(CVexDbBlockTableRecord& block, CVexDbEntity* entity,
                                 CVexDbObjectId& id)
{
    if (blockOf(*entity) != nullptr) {
        id = entity->objectId();
        return;
    }
    if (m_loading == nullptr) { // what a file gives is new: nobody has retired it
        reclaim(*entity);       // the block owns it from here on
    }
    if (entity->objectId() != entity) {
        entity->takeFreshIdentity(); // a plain copy still calls itself its source
    }
    entity->setDatabase(this);
    const int before = block.getNumEntity();
    if (block.addEntity(entity->objectId()) == before && !block.contains(entity->objectId())) {
        entity->takeFreshIdentity(); // its number is another entity's
        block.addEntity(entity->objectId());
    }
    id = entity->objectId();
    enterEntity(entity);
    m_lastEntity = entity;
}

// False when a record that the entity refers to left its table while the entity was out of the
// drawing.
bool CVexDbDatabase::isBound(const CVexDbEntity& entity) const
{
    return isHeldBy(m_layers, entity.LayerId()) && isHeldBy(m_linetypes, entity.LineTypeId()) &&
           isHeldBy(m_colors, entity.ColorId()) &&
           (entity.classType() != VexDb::kText || isHeldBy(m_textStyles, entity.textStyle()));
}

void CVexDbDatabase::enterEntity(CVexDbEntity* entity)
{
    // Bound before it is indexed: the records that list it must be this drawing's.
    if (!isBound(*entity)) {
        entity->SetEntPropertyToThis();
    }
    entity->SetDbEntity(true);
    const CVexDbObjectId id = entity->objectId();
    m_entities.addEntity(id);
    m_colors.addRefEntity(id);
    m_linetypes.addRefEntity(id);
    m_layers.addRefEntity(id);
    if (entity->classType() == VexDb::kText) {
        m_textStyles.addRefEntity(id);
    }
}

void CVexDbDatabase::addLoadedTo(CVexDbBlockTableRecord& block,
                                 std::span<CVexDbObject* const> entities)
{
    if (entities.empty()) {
        return;
    }
    for (CVexDbObject* object : entities) {
        CVexDbEntity& entity = entityOf(object);
        if (!isBound(entity)) {
            entity.SetEntPropertyToThis();
        }
        entity.SetDbEntity(true);
    }
    block.addEntities(entities);
    forEachRun(
        entities, [](const CVexDbObject* object) { return object->classType(); },
        [this](Run run) { m_entities.addEntities(run.front()->classType(), run); });
    listIn<CVexDbColorTableRecord>(entities, &CVexDbEntity::ColorId);
    listIn<CVexDbLTypeTableRecord>(entities, &CVexDbEntity::LineTypeId);
    listIn<CVexDbLayerTableRecord>(entities, &CVexDbEntity::LayerId);
    m_lastEntity = &entityOf(entities.back());
}

void CVexDbDatabase::removeEntity(CVexDbEntity* entity)
{
    CVexDbBlockTableRecord* block = blockOf(*entity);
    if (block == nullptr || block->database() != this || m_isClosing) {
        return;
    }
    forgetEntity(entity);
    block->removeEntity(entity->objectId());
    retire(std::unique_ptr<CVexDbObject>(entity));
}

void CVexDbDatabase::forgetEntity(CVexDbEntity* entity)
{
    const CVexDbObjectId id = entity->objectId();
    m_commandHandler->forgetEntity(entity);
    entity->SetDbEntity(false);
    m_entities.removeEntity(id);
    m_colors.removeEntity(id);
    m_linetypes.removeEntity(id);
    m_layers.removeEntity(id);
    if (entity->classType() == VexDb::kText) {
        m_textStyles.removeEntity(id);
    }
    if (m_lastEntity == entity) {
        m_lastEntity = nullptr;
    }
}
