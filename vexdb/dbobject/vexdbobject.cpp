#include "vexdb/dbobject/vexdbobject.h"

#include "platform/base/vexfields.h"
#include "platform/base/vexmachine.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbloadcontext.h"

CVexDbDatabase* _gpDatabase = nullptr;
std::uint64_t CVexDbObject::NextHardID = 0;

namespace {

std::uint64_t drawHardId()
{
    if (CVexDbObject::NextHardID == 0) {
        CVexDbObject::NextHardID = CVexMachine::current().identifierSeed();
    }
    return CVexDbObject::NextHardID++;
}

} // namespace

CVexDbObject::CVexDbObject(CVexDbDatabase* database)
    : m_database(database != nullptr ? database : _gpDatabase), m_objectId(this),
      m_createdTime(drawHardId())
{
}

// A plain copy goes on identifying its source until someone gives it an identity: sets of
// identifiers hold it and its source for the same object, and commands that compare a working copy
// with its original rely on that.
CVexDbObject::CVexDbObject(const CVexDbObject& other)
    : m_database(other.m_database), m_objectId(other.m_objectId), m_hardId(other.m_hardId),
      m_ownerId(other.m_ownerId), m_attribId(other.m_attribId), m_createdTime(other.m_createdTime),
      m_classType(other.m_classType), m_status(other.m_status)
{
}

CVexDbObject::~CVexDbObject() = default;

CVexDbObject& CVexDbObject::operator=(const CVexDbObject& other)
{
    if (this == &other) {
        return *this;
    }
    m_database = other.m_database;
    m_objectId = other.m_objectId;
    m_hardId = other.m_hardId;
    m_ownerId = other.m_ownerId;
    m_attribId = other.m_attribId;
    m_createdTime = other.m_createdTime;
    m_classType = other.m_classType;
    m_status = other.m_status;
    m_propertyMaps =
        other.m_propertyMaps ? std::make_unique<PropertyMaps>(*other.m_propertyMaps) : nullptr;
    return *this;
}

void CVexDbObject::takeFreshIdentity()
{
    m_objectId = this;
    m_hardId = 0;
    m_ownerId = nullptr;
    m_createdTime = drawHardId();
    resetObjectStatus(kStatusErased);
}

CFile* CVexDbObject::file() const
{
    return m_database == nullptr ? nullptr : m_database->file();
}

bool CVexDbObject::save()
{
    CFile* target = file();
    if (target == nullptr) {
        return false;
    }
    setHardId();
    CVexFieldWriter{*target}(m_hardId, m_classType, m_status);
    return !target->failed();
}

bool CVexDbObject::read()
{
    CFile* source = file();
    if (source == nullptr) {
        return false;
    }
    CVexFieldReader{*source}(m_hardId, m_classType, m_status);
    if (source->failed()) {
        return false;
    }
    setCreatedTime(m_hardId);
    if (CVexDbLoadContext* loading = m_database->loading()) {
        loading->acceptNumber(*this);
    }
    return true;
}

bool CVexDbObject::isVisiable() const
{
    return (m_status & (kStatusErased | kStatusInvisible)) == 0;
}

void CVexDbObject::setDatabase(CVexDbDatabase* database)
{
    m_database = database;
}

std::uint64_t CVexDbObject::hardObjectId()
{
    if (m_createdTime == 0) {
        m_createdTime = m_hardId;
    }
    return m_createdTime;
}

// A tracker shows and edits its entity, so it ends with it. The sets and indexes keep the entity:
// erasing by the bit alone is what an undo takes back.
void CVexDbObject::beforeErasedBit()
{
    if (isEntity()) {
        static_cast<CVexDbEntity*>(this)->OnErased();
    }
}

CVexDbObject::PropertyMaps& CVexDbObject::propertyMaps()
{
    if (!m_propertyMaps) {
        m_propertyMaps = std::make_unique<PropertyMaps>();
    }
    return *m_propertyMaps;
}

VexPropertyGroups& CVexDbObject::properties()
{
    return propertyMaps().properties;
}

VexPropertyMap CVexDbObject::getProperty()
{
    PropertyMaps& maps = propertyMaps();
    _deleteProperty(maps.propertyMap, maps.properties);
    makeProperty();
    makePropertyMap();
    return maps.propertyMap;
}

void CVexDbObject::makePropertyMap()
{
    PropertyMaps& maps = propertyMaps();
    maps.propertyMap[static_cast<int>(m_classType)] = maps.properties;
}
