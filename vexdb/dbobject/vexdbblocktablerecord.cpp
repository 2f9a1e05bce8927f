#include "vexdb/dbobject/vexdbblocktablerecord.h"

#include "platform/window/cwnd.h"
#include "vexdb/dbobject/dbentity/vexdbcurve.h"
#include "vexdb/dbobject/vexdbentsetiterator.h"
#include "vexdb/vexdbdatabase.h"

#include <memory>

CVexDbBlockTableRecord::CVexDbBlockTableRecord(CVexDbDatabase* database)
    : CVexDbTableRecord(database)
{
    setClassType(VexDb::kBlockTableRecord);
    setInVisable();
}

// Entities go with their block.
CVexDbBlockTableRecord::~CVexDbBlockTableRecord()
{
    if (database() != nullptr && !database()->isClosing()) {
        leaveDrawing(); // a block that came into no table
    }
    for (const CVexDbIdSet* set : {&m_entities, &m_attribDefinitions}) {
        for (auto at = set->begin(); at != set->end(); ++at) {
            delete at.object();
        }
    }
}

void CVexDbBlockTableRecord::leaveDrawing()
{
    for (const CVexDbIdSet* set : {&m_entities, &m_attribDefinitions}) {
        for (auto at = set->begin(); at != set->end(); ++at) {
            auto* entity = static_cast<CVexDbEntity*>(at.object());
            if (entity->IsDbEntity()) {
                database()->forgetEntity(entity);
            }
            if (m_display != nullptr) {
                m_display->removeEntity(*at);
            }
        }
    }
    m_display = nullptr;
}

void CVexDbBlockTableRecord::setDatabase(CVexDbDatabase* database)
{
    if (this->database() != nullptr && this->database() != database) {
        leaveDrawing();
    }
    CVexDbTableRecord::setDatabase(database);
    for (const CVexDbIdSet* set : {&m_entities, &m_attribDefinitions}) {
        for (auto at = set->begin(); at != set->end(); ++at) {
            at.object()->setDatabase(database);
        }
    }
}

void CVexDbBlockTableRecord::setName(wchar_t* name)
{
    CVexDbTableRecord::setName(name);
    if (m_display != nullptr) {
        std::wstring viewName(m_name);
        database()->displays().reName(m_display, viewName.data());
    }
}

CVexDbBlockTableRecord& CVexDbBlockTableRecord::operator=(const CVexDbBlockTableRecord& other)
{
    if (this == &other || database() == nullptr) {
        return *this;
    }
    assignName(other);
    ClearEntity();
    for (const CVexDbObjectId id : other.m_entities) {
        std::unique_ptr<CVexDbEntity> copy(
            static_cast<CVexDbEntity*>(id.getPObject())->CopyEntity(true));
        if (copy) {
            CVexDbObjectId copyId;
            database()->addEntityTo(*this, copy.release(), copyId);
        }
    }
    return *this;
}

CVexDbIdSet& CVexDbBlockTableRecord::setFor(const CVexDbObjectId& id)
{
    return id.getPObject()->classType() == VexDb::kAttribDefinition ? m_attribDefinitions
                                                                    : m_entities;
}

int CVexDbBlockTableRecord::addEntity(const CVexDbObjectId& id)
{
    setFor(id).insert(id);
    id.getPObject()->setOwnerId(objectId());
    if (m_display != nullptr) {
        m_display->addEntity(id);
    }
    return getNumEntity();
}

int CVexDbBlockTableRecord::addEntities(std::span<CVexDbObject* const> entities)
{
    for (CVexDbObject* entity : entities) {
        entity->setOwnerId(objectId());
    }
    m_entities.append(entities);
    if (m_display != nullptr) {
        m_display->addEntities(entities);
    }
    return getNumEntity();
}

int CVexDbBlockTableRecord::removeEntity(const CVexDbObjectId& id)
{
    if (!contains(id)) {
        return getNumEntity();
    }
    setFor(id).erase(id);
    id.getPObject()->setOwnerId(CVexDbObjectId::kNULL);
    if (m_display != nullptr) {
        m_display->removeEntity(id);
    }
    return getNumEntity();
}

bool CVexDbBlockTableRecord::contains(const CVexDbObjectId& id) const
{
    for (const CVexDbIdSet* set : {&m_entities, &m_attribDefinitions}) {
        const auto at = set->find(id);
        if (at != set->end() && at.object() == id.getPObject()) {
            return true;
        }
    }
    return false;
}

int CVexDbBlockTableRecord::addReference(const CVexDbObjectId& id)
{
    m_references.insert(id);
    return static_cast<int>(m_references.size());
}

int CVexDbBlockTableRecord::removeReference(const CVexDbObjectId& id)
{
    m_references.erase(id);
    return static_cast<int>(m_references.size());
}

bool CVexDbBlockTableRecord::newIterator(CVexDbEntSetIterator*& out, bool /*start*/)
{
    return newEntSetIterator(m_entities, out);
}

int CVexDbBlockTableRecord::ClearEntity()
{
    if (m_entities.empty()) {
        return -1;
    }
    const CVexDbIdSet all = m_entities; // a copy, because each one leaves the set
    for (auto at = all.begin(); at != all.end(); ++at) {
        database()->removeEntity(static_cast<CVexDbEntity*>(at.object()));
    }
    return 0;
}

int CVexDbBlockTableRecord::ClearReferenceSet()
{
    m_references.clear();
    return 0;
}

void CVexDbBlockTableRecord::initDisplayRec()
{
    CVexDbDisplayTable& displays = database()->displays();
    if (displays.getRecord(m_name, m_display, false)) {
        displays.setCurrentRecord(m_display);
        return;
    }
    m_display = new CVexDbDisplayTableRecord(database());
    m_display->setName(getName());
    displays.add(m_display);
    showEntities();
    const CString name = getName();
    if (name == CVexDbBlockTable::kModelSpace || name.Find(CVexDbBlockTable::kPaperSpace) == 0) {
        displays.setCurrentRecord(m_display);
    }
}

void CVexDbBlockTableRecord::showEntities()
{
    for (const CVexDbIdSet* set : {&m_entities, &m_attribDefinitions}) {
        for (const CVexDbObjectId id : *set) {
            m_display->addEntity(id);
        }
    }
}

void CVexDbBlockTableRecord::OnCurveChanged(CVexDbCurve* curve, int mode)
{
    CVexDbEntityTableRecord* hatches = nullptr;
    if (mode != 1 || !database()->entities().getRecord(L"HATCH", hatches, false)) {
        return;
    }
    for (const CVexDbObjectId id : hatches->entitySet()) {
        if (!static_cast<CVexDbEntity*>(id.getPObject())->OnBoundaryChanged(curve)) {
            continue;
        }
        if (m_display != nullptr && m_display->getView() != nullptr) {
            m_display->getView()->Invalidate();
        }
        return;
    }
}

void CVexDbBlockTableRecord::GetTextTable(std::vector<CVexDbEntity*>& tables)
{
    for (auto at = m_entities.begin(); at != m_entities.end(); ++at) {
        if (at.object()->classType() == VexDb::kTextTable) {
            tables.push_back(static_cast<CVexDbEntity*>(at.object()));
        }
    }
}

CVexDbEntity* CVexDbBlockTableRecord::GetTextTable(const CString& name)
{
    std::vector<CVexDbEntity*> tables;
    GetTextTable(tables);
    for (CVexDbEntity* table : tables) {
        if (table->recordName() == name) {
            return table;
        }
    }
    return nullptr;
}
