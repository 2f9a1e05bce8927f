#pragma once

#include "vexdb/dbobject/vexdbentitytablerecord.h"
#include "vexdb/dbobject/vexdbtypedtable.h"

#include <array>

/// Index of a drawing's entities by kind, made anew at each load.
class VEXDB_EXPORT CVexDbEntityTable : public CVexDbTableWithCurrent<CVexDbEntityTableRecord> {
public:
    /// Wide characters that a key takes at most, with its NUL.
    static constexpr int kKeyCapacity = 33;

    explicit CVexDbEntityTable(CVexDbDatabase* database);
    ~CVexDbEntityTable() override;
    /// Writes the key of the class into `key`, then looks it up. A class without a key (cobwebs,
    /// everything that is no entity) leaves the buffer as it was.
    bool has(VexDb::ClassType type, wchar_t* key, CVexDbEntityTableRecord*& record) const;
    using CVexDbTable::has;
    /// Enters an entity in its kind's record, which is made if need be; false for a kind without a
    /// key.
    bool addEntity(const CVexDbObjectId& id);
    /// The same for many of one class.
    bool addEntities(VexDb::ClassType type, std::span<CVexDbObject* const> entities);
    bool removeEntity(const CVexDbObjectId& id);

protected:
    [[nodiscard]] bool mayRemove(const CVexDbTableRecord& record) override;
    void replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after) override;
    void detach(CVexDbTableRecord& record) override;

private:
    static constexpr std::size_t kEntityClasses = 32;
    CVexDbEntityTableRecord* recordFor(VexDb::ClassType type);

    // By class, so that adding an entity looks no name up; null until the first one is added.
    std::array<CVexDbEntityTableRecord*, kEntityClasses> m_byClass = {};
};
