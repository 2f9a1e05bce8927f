#pragma once

#include "vexdb/dbobject/vexdbrevisiontablerecord.h"
#include "vexdb/dbobject/vexdbtypedtable.h"

#include <cstdint>

/// The revisions of a drawing. A file gives back the next number, but none of the records: they are
/// read and dropped.
class VEXDB_EXPORT CVexDbRevisionTable : public CVexDbTableWithCurrent<CVexDbRevisionTableRecord> {
public:
    explicit CVexDbRevisionTable(CVexDbDatabase* database);
    ~CVexDbRevisionTable() override;
    [[nodiscard]] std::uint32_t GetNextName() const { return m_nextName; }

protected:
    void saveTail(CFile& file) override;
    void readTail(CFile& file) override;
    [[nodiscard]] bool keepsWhatItReads() const override { return false; }
    void onAdded(CVexDbTableRecord& record) override;

private:
    std::uint32_t m_nextName = 0;
};
