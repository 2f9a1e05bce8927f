#include "platform/base/vexfields.h"
#include "vexdb/dbobject/vexdbtable.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbloadcontext.h"

bool CVexDbTable::save()
{
    CFile* target = file();
    if (target == nullptr || liveCount() > kMostRecordsInFile) {
        return false;
    }
    saveHead(*target);
    if (!saveRecords(*target)) {
        return false;
    }
    saveTail(*target);
    CVexFieldWriter{*target}(std::uint16_t{0});
    return !target->failed();
}

bool CVexDbTable::saveRecords(CFile& target)
{
    CVexFieldWriter{target}(static_cast<std::uint16_t>(liveCount()));
    for (const auto& [name, record] : m_records) {
        if (!record->isErased() && !record->save()) {
            return false;
        }
    }
    return !target.failed();
}

bool CVexDbTable::read()
{
    CFile* source = file();
    if (source == nullptr) {
        return false;
    }
    readHead(*source);
    if (!readRecords(*source)) {
        return false;
    }
    readTail(*source);
    std::uint16_t end = 0;
    CVexFieldReader{*source}(end);
    if (end != 0) {
        return frameFault(L"A table does not end with its zero word.");
    }
    return !source->failed();
}

bool CVexDbTable::readRecords(CFile& source)
{
    std::uint16_t count = 0;
    CVexFieldReader{source}(count);
    if (source.failed()) {
        return false;
    }
    if (std::uint64_t{count} * CVexDbTableRecord::kLeastFileSize > source.remaining()) {
        return frameFault(L"A table counts more records than the file has room for.");
    }
    for (std::uint16_t i = 0; i < count; ++i) {
        if (!readRecord()) {
            return false;
        }
    }
    return true;
}

bool CVexDbTable::readRecord()
{
    std::unique_ptr<CVexDbTableRecord> record = makeRecord();
    const VexDb::ClassType type = record->classType();
    record->setOwnerId(objectId());
    const bool whole = record->read();
    // A block enters itself before its entities, so it may stand here although it did not end well.
    const bool entered = record->table() == this;
    CVexDbTableRecord& held = entered ? *record.release() : *record;
    if (!whole) {
        return false;
    }
    if (held.classType() != type) {
        held.setClassType(type);
        return frameFault(L"A table holds a record of another class.");
    }
    if (entered) {
        return true;
    }
    if (!keepsWhatItReads()) {
        return true;
    }
    if (!add(record.get())) {
        return frameFault(L"A table holds a record without a name.");
    }
    static_cast<void>(record.release()); // the table has it
    return true;
}

bool CVexDbTable::frameFault(const wchar_t* what)
{
    if (CVexDbLoadContext* loading = database()->loading()) {
        loading->fault(what);
    }
    return false;
}
