#pragma once

#include "vexdb/dbobject/vexdblayertablerecord.h"
#include "vexdb/dbobject/vexdbtypedtable.h"

/// The layers of a drawing.
class VEXDB_EXPORT CVexDbLayerTable : public CVexDbTableWithCurrent<CVexDbLayerTableRecord> {
public:
    explicit CVexDbLayerTable(CVexDbDatabase* database);
    ~CVexDbLayerTable() override;
    void initLayerTable();
    // For the layer of the entity that `id` stands for.
    bool addRefEntity(const CVexDbObjectId& id);
    bool removeEntity(const CVexDbObjectId& id);

protected:
    /// The base layer is refused with a message box; one with entities without.
    [[nodiscard]] bool mayRemove(const CVexDbTableRecord& record) override;
    void replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after) override;
    /// A copy of a layer enters its linetype's layers only here, and one that was away, or made for
    /// another drawing, is bound to the records of this one.
    void onAdded(CVexDbTableRecord& record) override;
    void detach(CVexDbTableRecord& record) override;

private:
    void addDefault(const wchar_t* name, const wchar_t* color);
};
