#pragma once

#include "vexdb/dbobject/vexdbsymboltablerecord.h"
#include "vexdb/dbobject/vexdbtypedtable.h"

#include <cstdint>

/// The symbols of a drawing, numbered in the order of creation.
class VEXDB_EXPORT CVexDbSymbolTable : public CVexDbTypedTable<CVexDbSymbolTableRecord> {
public:
    explicit CVexDbSymbolTable(CVexDbDatabase* database);
    ~CVexDbSymbolTable() override;
    /// Retires all symbols.
    void initSymbolTable();
    [[nodiscard]] std::uint32_t GetNextName() const { return m_nextName; }
    /// Puts the name of the number before the next one into `buffer` (81 characters) and gives the
    /// identifier of the record so named, null when there is none.
    CVexDbObjectId GetLastName(wchar_t* buffer) const;
    /// The record added last; null when that was removed.
    [[nodiscard]] CVexDbSymbolTableRecord* getLastRecord() const { return m_last; }
    /// Enters a symbol entity in the record that it names; false for null and an unknown name.
    bool addRefEntity(const CVexDbObjectId& id);
    bool removeEntity(const CVexDbObjectId& id);

protected:
    void saveTail(CFile& file) override;
    void readTail(CFile& file) override;
    void onAdded(CVexDbTableRecord& record) override;
    void replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after) override;
    void detach(CVexDbTableRecord& record) override;

private:
    /// The record that a symbol entity names; null for a null identifier and an unknown name.
    [[nodiscard]] CVexDbSymbolTableRecord* recordOf(const CVexDbObjectId& symbol) const;

    CVexDbSymbolTableRecord* m_last = nullptr;
    std::uint32_t m_nextName = 0;
};
