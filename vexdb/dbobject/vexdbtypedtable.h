#pragma once

#include "vexdb/dbobject/vexdbtable.h"
#include "vexdb/dbobject/vexdbtableiterator.h"

#include <memory>

/// The typed face of a table: its records are all of one class.
template <class Record>
class VEXDB_EXPORT CVexDbTypedTable : public CVexDbTable {
public:
    using Iterator = CVexDbTypedTableIterator<Record>;

    using CVexDbTable::CVexDbTable;
    /// By exact name only; `record` stays as it was when there is none.
    bool getRecord(const wchar_t* name, Record*& record, bool) const
    {
        CVexDbTableRecord* found = nullptr;
        if (!CVexDbTable::getRecord(name, found, false)) {
            return false;
        }
        record = static_cast<Record*>(found);
        return true;
    }
    bool add(Record* record) { return CVexDbTable::add(record); }
    bool add(CVexDbObjectId& id, Record* record) { return CVexDbTable::add(id, record); }
    /// The caller deletes the iterator, which stands at the first record.
    bool newIterator(Iterator*& out, bool start)
    {
        out = new Iterator(this);
        if (start) {
            out->start(true);
        }
        return true;
    }

protected:
    [[nodiscard]] std::unique_ptr<CVexDbTableRecord> makeRecord() override
    {
        return std::make_unique<Record>(database());
    }
};

/// The same with a current record, the one that new things go by.
template <class Record>
class VEXDB_EXPORT CVexDbTableWithCurrent : public CVexDbTypedTable<Record> {
public:
    using CVexDbTypedTable<Record>::CVexDbTypedTable;
    [[nodiscard]] Record* getCurrentRecord() const { return m_current; }
    void setCurrentRecord(Record* record) { m_current = record; }

protected:
    void replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after) override
    {
        if (m_current == before) {
            m_current = static_cast<Record*>(after);
        }
    }
    /// A record that new things go by is not removed.
    [[nodiscard]] bool isCurrent(const CVexDbTableRecord* record) const
    {
        return record == m_current;
    }

private:
    Record* m_current = nullptr;
};
