#pragma once

#include "vexdb/dbobject/vexdbtable.h"

/// Walks the records of a table in key order. A new one stands at the first record. It survives
/// insertion, removal and renaming: it keeps the key that it stands at and, when that has gone, the
/// place between its neighbours.
class VEXDB_EXPORT CVexDbTableIterator {
public:
    explicit CVexDbTableIterator(CVexDbTable* table);
    virtual ~CVexDbTableIterator();
    /// True positions at the first record; false leaves the position alone.
    void start(bool first);
    /// Forward, or back; behind the last record, or before the first, the walk is done, and a step
    /// the other way resumes it.
    void step(bool forward);
    [[nodiscard]] bool done() const;
    /// Null and false when done.
    bool getRecordId(CVexDbObjectId& id) const;
    /// Null and false when done, or for an erased record unless `includeErased`.
    bool getRecord(CVexDbTableRecord*& record, bool includeErased) const;
    /// Walks from the first record to this one; true when it is there.
    bool seek(const CVexDbObjectId& id);
    bool seek(const CVexDbTableRecord* record);

private:
    enum class Place { kBefore, kAt, kBehind };
    void moveTo(CVexDbTable::Records::const_iterator at) const;
    [[nodiscard]] CVexDbTableRecord* current() const;

    CVexDbTable* m_table;
    mutable CString m_key;
    mutable Place m_place = Place::kBefore;
};

/// The same for the records of one class; never gives an erased one.
template <class Record>
class CVexDbTypedTableIterator : public CVexDbTableIterator {
public:
    using CVexDbTableIterator::CVexDbTableIterator;
    using CVexDbTableIterator::getRecord;
    using CVexDbTableIterator::seek;
    bool getRecord(Record*& record) const
    {
        CVexDbTableRecord* found = nullptr;
        const bool given = CVexDbTableIterator::getRecord(found, false);
        record = static_cast<Record*>(found);
        return given;
    }
    bool seek(const Record* record) { return CVexDbTableIterator::seek(record); }
};

class CVexDbBlockTableRecord;
class CVexDbColorTableRecord;
class CVexDbDisplayTableRecord;
class CVexDbEntityTableRecord;
class CVexDbLayerTableRecord;
class CVexDbLTypeTableRecord;
class CVexDbProjectInfoTableRecord;
class CVexDbRevisionTableRecord;
class CVexDbSymbolTableRecord;
class CVexDbTextStyleTableRecord;

using CVexDbBlockTableIterator = CVexDbTypedTableIterator<CVexDbBlockTableRecord>;
using CVexDbColorTableIterator = CVexDbTypedTableIterator<CVexDbColorTableRecord>;
using CVexDbDisplayTableIterator = CVexDbTypedTableIterator<CVexDbDisplayTableRecord>;
using CVexDbEntityTableIterator = CVexDbTypedTableIterator<CVexDbEntityTableRecord>;
using CVexDbLayerTableIterator = CVexDbTypedTableIterator<CVexDbLayerTableRecord>;
using CVexDbLTypeTableIterator = CVexDbTypedTableIterator<CVexDbLTypeTableRecord>;
using CVexDbProjectInfoTableIterator = CVexDbTypedTableIterator<CVexDbProjectInfoTableRecord>;
using CVexDbRevisionTableIterator = CVexDbTypedTableIterator<CVexDbRevisionTableRecord>;
using CVexDbSymbolTableIterator = CVexDbTypedTableIterator<CVexDbSymbolTableRecord>;
using CVexDbTextStyleTableIterator = CVexDbTypedTableIterator<CVexDbTextStyleTableRecord>;
