#pragma once

#include "vexdb/dbobject/vexdbprojectinfotablerecord.h"
#include "vexdb/dbobject/vexdbtypedtable.h"

#include <cstdint>

/// Free information about the project of a drawing. A file gives back the two texts and the next
/// number, but none of the records: they are read and dropped.
class VEXDB_EXPORT CVexDbProjectInfoTable : public CVexDbTypedTable<CVexDbProjectInfoTableRecord> {
public:
    explicit CVexDbProjectInfoTable(CVexDbDatabase* database);
    ~CVexDbProjectInfoTable() override;
    [[nodiscard]] CString firstText() const { return CString(m_firstText); }
    void setFirstText(const wchar_t* text);
    [[nodiscard]] CString secondText() const { return CString(m_secondText); }
    void setSecondText(const wchar_t* text);
    /// Kept in memory only.
    [[nodiscard]] std::int32_t value() const { return m_value; }
    void setValue(std::int32_t value) { m_value = value; }
    [[nodiscard]] std::uint32_t GetNextName() const { return m_nextName; }

protected:
    void saveHead(CFile& file) override;
    void readHead(CFile& file) override;
    void saveTail(CFile& file) override;
    void readTail(CFile& file) override;
    [[nodiscard]] bool keepsWhatItReads() const override { return false; }
    void onAdded(CVexDbTableRecord& record) override;
    void replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after) override;

private:
    wchar_t m_firstText[81] = {};
    wchar_t m_secondText[81] = {};
    std::int32_t m_value = 0;
    std::uint32_t m_nextName = 0;
};
