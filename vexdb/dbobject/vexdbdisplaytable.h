#pragma once

#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/dbobject/vexdbtypedtable.h"

/// The views of a drawing, one a block, named as the block. They are not in files.
class VEXDB_EXPORT CVexDbDisplayTable : public CVexDbTypedTable<CVexDbDisplayTableRecord> {
public:
    explicit CVexDbDisplayTable(CVexDbDatabase* database);
    ~CVexDbDisplayTable() override;
    /// The present one becomes the previous one. A view without a window takes over the previous
    /// one's.
    void setCurrentRecord(CVexDbDisplayTableRecord* record);
    bool setCurrentRecord(const wchar_t* name);
    [[nodiscard]] CVexDbDisplayTableRecord* getCurrentRecord() const { return m_current; }
    [[nodiscard]] CVexDbDisplayTableRecord* getPreviewRecord() const { return m_previous; }
    /// Enters the entity in the current view; true.
    bool addEntity(const CVexDbObjectId& id);
    /// Makes the one view "MODEL_SPACE" over the drawing limits.
    void initDisplayTable();

protected:
    /// Refuses the current view and the views of the two spaces.
    [[nodiscard]] bool mayRemove(const CVexDbTableRecord& record) override;
    void replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after) override;
    void detach(CVexDbTableRecord& record) override;

private:
    CVexDbDisplayTableRecord* m_current = nullptr;
    CVexDbDisplayTableRecord* m_previous = nullptr;
};
