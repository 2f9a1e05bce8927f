#pragma once

#include "vexdb/dbobject/vexdbobject.h"
#include "vexdb/dbobject/vexdbtablerecord.h"

#include <cstdint>
#include <map>
#include <memory>

class CVexDbTableIterator;

/// A table: maps names to records, sorted by 16-bit code units, and owns the records.
class VEXDB_EXPORT CVexDbTable : public CVexDbObject {
public:
    using Records = std::map<CString, std::unique_ptr<CVexDbTableRecord>>;
    /// A file counts records in 16 bits.
    static constexpr std::size_t kMostRecordsInFile = 65535;

    explicit CVexDbTable(CVexDbDatabase* database);
    ~CVexDbTable() override;
    CVexDbTable(const CVexDbTable&) = delete;
    CVexDbTable& operator=(const CVexDbTable&) = delete;
    /// The table's frame in a file, which has no bytes of an object before it: head, count, records
    /// in key order, tail, 16-bit zero. False when the file failed.
    bool save() override;
    /// False when the file failed or makes no sense; the records that were whole are kept.
    bool read() override;
    void setDatabase(CVexDbDatabase* database) override;
    void makeProperty() override {}

    /// Walks in key order for the record of this hard identifier; when there is none, false, and
    /// `id` keeps the last record looked at. The bool of these lookups is not used.
    bool getAt(std::uint64_t hardId, CVexDbObjectId& id, bool) const;
    /// By exact name; when that fails and `id` is null, in upper and then in lower case.
    bool getAt(const wchar_t* name, CVexDbObjectId& id, bool) const;
    /// By exact name only; `record` stays as it was when there is none.
    bool getRecord(const wchar_t* name, CVexDbTableRecord*& record, bool) const;
    [[nodiscard]] bool has(const wchar_t* name) const;
    [[nodiscard]] bool has(const CVexDbObjectId& id) const;
    /// Takes ownership and enters the record under its name; the table becomes its owner. A record
    /// that held the name is retired, and what pointed at it points at the new one. False, and
    /// nothing taken, for an empty name and for a record that stands in a table under another one;
    /// true with nothing done when the record holds the name already.
    bool add(CVexDbTableRecord* record);
    bool add(CVexDbObjectId& id, CVexDbTableRecord* record);
    /// An iterator that the caller deletes; it stands at the first record.
    bool newIterator(CVexDbTableIterator*& out, bool start);
    /// Renames through the record's setName; the key is `name` even where setName has cut or
    /// refused it. A name of another record, or an empty one, changes nothing.
    void reName(CVexDbTableRecord* record, wchar_t* name);
    /// Takes the record out and retires it, by the rules of the table. False, with nothing changed,
    /// for a missing name and for a record that is in use, current or special.
    bool removeRecord(const wchar_t* name);
    [[nodiscard]] int size() const { return static_cast<int>(m_records.size()); }
    [[nodiscard]] const Records& records() const { return m_records; }
    /// Number of records that a file gets: those not erased.
    [[nodiscard]] std::size_t liveCount() const;

protected:
    /// An empty record of the table's class, as its reading begins.
    [[nodiscard]] virtual std::unique_ptr<CVexDbTableRecord> makeRecord() = 0;
    // What a table keeps in its frame besides its records.
    virtual void saveHead(CFile&) {}
    virtual void readHead(CFile&) {}
    virtual void saveTail(CFile&) {}
    virtual void readTail(CFile&) {}
    /// False for a table whose records are read and dropped again.
    [[nodiscard]] virtual bool keepsWhatItReads() const { return true; }
    /// False keeps the record's name; asked once `name` is known to be free.
    [[nodiscard]] virtual bool mayRename(const CVexDbTableRecord& record,
                                         const wchar_t* name) const;
    /// False keeps the record in the table; asked before it is removed.
    [[nodiscard]] virtual bool mayRemove(const CVexDbTableRecord& record);
    /// Called when a record has been entered.
    virtual void onAdded(CVexDbTableRecord& record);
    /// Points whatever refers to `before` at `after`: called when a name is taken over.
    virtual void replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after) = 0;
    /// Takes a record that leaves the table out of every set that it stands in.
    virtual void detach(CVexDbTableRecord& record);

private:
    bool saveRecords(CFile& file);
    bool readRecords(CFile& file);
    bool readRecord();
    [[nodiscard]] bool isTaken(const wchar_t* name, const CVexDbTableRecord& taker) const;
    void retire(std::unique_ptr<CVexDbTableRecord> record);
    bool frameFault(const wchar_t* what);

    Records m_records;
};
