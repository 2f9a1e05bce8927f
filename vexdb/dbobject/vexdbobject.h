#pragma once

#include "platform/base/vexexport.h"
#include "vexdb/dbobject/vexdbclasstype.h"
#include "vexdb/dbobject/vexdbobjectid.h"
#include "vexdb/dbobject/vexdbproperty.h"

#include <cstdint>
#include <memory>

class CFile;
class CVexDbDatabase;

/// The database of the active document, set by the host: what an object made without one falls back
/// to.
extern VEXDB_EXPORT CVexDbDatabase* _gpDatabase;

/// Anything that lives in a drawing database: a table, a record, an entity.
class VEXDB_EXPORT CVexDbObject {
public:
    /// Source of hard identifiers for the whole process; 0 until the first object seeds it.
    static std::uint64_t NextHardID;

    /// With a null database the object takes `_gpDatabase`. Draws the next hard identifier.
    explicit CVexDbObject(CVexDbDatabase* database);
    /// A plain copy goes on identifying its source: same objectId and same created time. What is
    /// made for use afterwards calls takeFreshIdentity().
    CVexDbObject(const CVexDbObject& other);
    virtual ~CVexDbObject();
    /// Writes or reads the 13 bytes of every object through the database's file. False on failure.
    virtual bool save();
    virtual bool read();
    /// Neither erased nor invisible.
    virtual bool isVisiable() const;
    virtual void setDatabase(CVexDbDatabase* database);
    /// Fills properties() with the rows of the class.
    virtual void makeProperty() = 0;

    /// Copies everything, identity included.
    CVexDbObject& operator=(const CVexDbObject& other);

    void setHardId() { m_hardId = m_createdTime; }
    /// The number that references in files use; from hardId when no created time is set.
    std::uint64_t hardObjectId();
    [[nodiscard]] std::uint64_t getCreatedTime() const { return m_createdTime; }
    void setCreatedTime(std::uint64_t number) { m_createdTime = number; }
    [[nodiscard]] CVexDbObjectId objectId() const { return CVexDbObjectId(m_objectId); }
    [[nodiscard]] CVexDbObjectId ownerId() const { return CVexDbObjectId(m_ownerId); }
    [[nodiscard]] CVexDbObjectId attribId() const { return CVexDbObjectId(m_attribId); }
    void setObjectId(const CVexDbObjectId& id) { m_objectId = id.getPObject(); }
    void setOwnerId(const CVexDbObjectId& id) { m_ownerId = id.getPObject(); }
    void setAttribId(const CVexDbObjectId& id) { m_attribId = id.getPObject(); }
    [[nodiscard]] CVexDbDatabase* database() const { return m_database; }
    [[nodiscard]] VexDb::ClassType classType() const { return m_classType; }
    /// Own objectId, a fresh number, no owner, not erased.
    void takeFreshIdentity();

    void setInVisable() { m_status |= kStatusInvisible; }
    void setVisable() { resetObjectStatus(kStatusInvisible); }
    void setErased() { setObjectStatus(kStatusErased); }
    [[nodiscard]] bool isErased() const { return (m_status & kStatusErased) != 0; }
    [[nodiscard]] bool isEntity() const { return (m_status & kStatusEntity) != 0; }
    [[nodiscard]] bool hasAttribute() const { return (m_status & kStatusHasAttribute) != 0; }
    [[nodiscard]] bool isCompoundObject() const { return (m_status & kStatusCompoundObject) != 0; }
    [[nodiscard]] bool isUseNesting() const { return (m_status & kStatusUseNesting) != 0; }
    [[nodiscard]] bool isAttribute() const { return (m_status & kStatusAttribute) != 0; }
    /// All three bits of a dimension: 0x80 alone does not make one.
    [[nodiscard]] bool isDimension() const
    {
        constexpr int kBits = kStatusDimension | kStatusCompoundObject | kStatusEntity;
        return (m_status & kBits) == kBits;
    }
    [[nodiscard]] std::uint8_t status() const { return m_status; }
    /// Sets the bits of `bits`; always true. The erased bit also drops an entity's tracker.
    bool setObjectStatus(int bits)
    {
        if ((bits & kStatusErased) != 0) {
            beforeErasedBit();
        }
        m_status = static_cast<std::uint8_t>(m_status | bits);
        return true;
    }
    /// Clears the bits of `bits`.
    void resetObjectStatus(int bits) { m_status = static_cast<std::uint8_t>(m_status & ~bits); }

    /// Collects the property rows anew and gives a copy of them, keyed by class type.
    VexPropertyMap getProperty();
    void makePropertyMap();

protected:
    void setClassType(VexDb::ClassType type) { m_classType = type; }
    /// The file of the database's running save or read, afterwards of the last one; null without.
    [[nodiscard]] CFile* file() const;
    /// The working list that makeProperty fills; made on demand.
    VexPropertyGroups& properties();

private:
    struct PropertyMaps {
        VexPropertyMap propertyMap;
        VexPropertyGroups properties;
    };
    PropertyMaps& propertyMaps();
    void beforeErasedBit();

    CVexDbDatabase* m_database;
    CVexDbObject* m_objectId;
    std::uint64_t m_hardId = 0;
    CVexDbObject* m_ownerId = nullptr;
    CVexDbObject* m_attribId = nullptr;
    std::uint64_t m_createdTime;
    std::unique_ptr<PropertyMaps> m_propertyMaps; // none until someone asks
    VexDb::ClassType m_classType = VexDb::kEntity;
    std::uint8_t m_status = 0;
};
