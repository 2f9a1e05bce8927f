#pragma once

#include "vexdb/dbobject/vexdbltypetablerecord.h"
#include "vexdb/dbobject/vexdbtypedtable.h"

/// The linetypes of a drawing.
class VEXDB_EXPORT CVexDbLTypeTable : public CVexDbTableWithCurrent<CVexDbLTypeTableRecord> {
public:
    explicit CVexDbLTypeTable(CVexDbDatabase* database);
    ~CVexDbLTypeTable() override;
    void initLinetypeTable();
    // For the linetype of the entity that `id` stands for.
    bool addRefEntity(const CVexDbObjectId& id);
    bool removeEntity(const CVexDbObjectId& id);

protected:
    /// Refuses the three that every drawing has, and one with entities or layers.
    [[nodiscard]] bool mayRemove(const CVexDbTableRecord& record) override;
    void replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after) override;
};
