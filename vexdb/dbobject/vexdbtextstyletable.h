#pragma once

#include "vexdb/dbobject/vexdbtextstyletablerecord.h"
#include "vexdb/dbobject/vexdbtypedtable.h"

/// The text styles of a drawing.
class VEXDB_EXPORT CVexDbTextStyleTable
    : public CVexDbTableWithCurrent<CVexDbTextStyleTableRecord> {
public:
    explicit CVexDbTextStyleTable(CVexDbDatabase* database);
    ~CVexDbTextStyleTable() override;
    void initTextStyleTable();
    // For the style of the text that `id` stands for; false for what has none.
    bool addRefEntity(const CVexDbObjectId& id);
    bool removeEntity(const CVexDbObjectId& id);

protected:
    /// Refuses "STANDARD" and a style with entities.
    [[nodiscard]] bool mayRemove(const CVexDbTableRecord& record) override;
    void replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after) override;
};
