#include "vexdb/dbobject/vexdbtable.h"

#include "platform/base/vextext.h"
#include "vexdb/dbobject/vexdbtableiterator.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>

CVexDbTable::CVexDbTable(CVexDbDatabase* database) : CVexDbObject(database)
{
    setObjectStatus(0); // says that tables start without a flag
}

CVexDbTable::~CVexDbTable() = default;

void CVexDbTable::setDatabase(CVexDbDatabase* database)
{
    CVexDbObject::setDatabase(database);
    for (const auto& [name, record] : m_records) {
        record->setDatabase(database);
    }
}

bool CVexDbTable::getAt(std::uint64_t hardId, CVexDbObjectId& id, bool) const
{
    for (const auto& [name, record] : m_records) {
        id = record->objectId();
        if (id == hardId) {
            return true;
        }
    }
    return false;
}

bool CVexDbTable::getAt(const wchar_t* name, CVexDbObjectId& id, bool) const
{
    auto found = m_records.find(CString(name));
    // A handle that is set already keeps its record unless the name fits exactly: a caller that
    // looks a default up before the wanted name gets the default for a mere difference in case.
    if (found == m_records.end() && id.isNull()) {
        found = m_records.find(CString(name).MakeUpper());
        if (found == m_records.end()) {
            found = m_records.find(CString(name).MakeLower());
        }
    }
    if (found == m_records.end()) {
        return false;
    }
    id = found->second->objectId();
    return true;
}

bool CVexDbTable::getRecord(const wchar_t* name, CVexDbTableRecord*& record, bool) const
{
    const auto found = m_records.find(CString(name));
    if (found == m_records.end()) {
        return false;
    }
    record = found->second.get();
    return true;
}

bool CVexDbTable::has(const wchar_t* name) const
{
    return m_records.contains(CString(name));
}

bool CVexDbTable::has(const CVexDbObjectId& id) const
{
    for (const auto& [name, record] : m_records) {
        if (id == record.get()) {
            return true;
        }
    }
    return false;
}

bool CVexDbTable::add(CVexDbTableRecord* record)
{
    CVexDbObjectId id;
    return add(id, record);
}

bool CVexDbTable::add(CVexDbObjectId& id, CVexDbTableRecord* record)
{
    const CString name = record->getName();
    if (name.IsEmpty()) {
        return false;
    }
    std::unique_ptr<CVexDbTableRecord>* place = nullptr;
    if (const auto found = m_records.find(name); found != m_records.end()) {
        if (found->second.get() == record) {
            id = record->objectId();
            return true;
        }
        place = &found->second;
    }
    if (record->table() != nullptr) {
        return false;
    }
    if (CVexDbDatabase* keeper = database()) {
        keeper->reclaim(*record); // the table owns it from here on
    }
    if (record->objectId() != record) {
        record->takeFreshIdentity(); // a plain copy still calls itself its source
    }
    if (record->database() != database()) {
        record->setDatabase(database());
    }
    record->setOwnerId(objectId());
    record->m_table = this;
    id = record->objectId();
    if (place == nullptr) {
        m_records.emplace(name, record);
    } else {
        std::unique_ptr<CVexDbTableRecord> before(record);
        before.swap(*place);
        replaceReferences(before.get(), record);
        retire(std::move(before));
    }
    onAdded(*record);
    return true;
}

void CVexDbTable::retire(std::unique_ptr<CVexDbTableRecord> record)
{
    detach(*record);
    record->m_table = nullptr;
    if (CVexDbDatabase* keeper = database()) {
        keeper->retire(std::move(record));
    }
}

bool CVexDbTable::newIterator(CVexDbTableIterator*& out, bool start)
{
    out = new CVexDbTableIterator(this);
    if (start) {
        out->start(true);
    }
    return true;
}

// Names are compared as the record would cut them: two records of one name would come back from a
// file as one.
bool CVexDbTable::isTaken(const wchar_t* name, const CVexDbTableRecord& taker) const
{
    wchar_t cut[CVexDbTableRecord::kNameCapacity];
    copyText(cut, name);
    const CString wanted(cut);
    return m_records.contains(CString(name)) ||
           std::any_of(m_records.begin(), m_records.end(), [&](const auto& entry) {
               return entry.second.get() != &taker && entry.second->getName() == wanted;
           });
}

void CVexDbTable::reName(CVexDbTableRecord* record, wchar_t* name)
{
    auto found = m_records.find(record->getName());
    if (found == m_records.end() || found->second.get() != record) {
        // Its key is not its name: a base layer renamed before.
        found = std::find_if(m_records.begin(), m_records.end(),
                             [record](const auto& entry) { return entry.second.get() == record; });
    }
    if (found == m_records.end() || *name == L'\0' || isTaken(name, *record) ||
        !mayRename(*record, name)) {
        return;
    }
    auto node = m_records.extract(found);
    // The key is the name that was asked for even where the record refused it: the base layer "0"
    // keeps its name while the table finds it under the new one.
    const CString key(name);
    record->setName(name);
    node.key() = key;
    m_records.insert(std::move(node));
}

bool CVexDbTable::removeRecord(const wchar_t* name)
{
    const auto found = m_records.find(CString(name));
    if (found == m_records.end() || !mayRemove(*found->second)) {
        return false;
    }
    std::unique_ptr<CVexDbTableRecord> record = std::move(found->second);
    m_records.erase(found);
    retire(std::move(record));
    return true;
}

bool CVexDbTable::mayRename(const CVexDbTableRecord&, const wchar_t*) const
{
    return true;
}

bool CVexDbTable::mayRemove(const CVexDbTableRecord&)
{
    return true;
}

void CVexDbTable::onAdded(CVexDbTableRecord&)
{
}

void CVexDbTable::detach(CVexDbTableRecord&)
{
}

std::size_t CVexDbTable::liveCount() const
{
    std::size_t count = 0;
    for (const auto& [name, record] : m_records) {
        count += record->isErased() ? 0 : 1;
    }
    return count;
}
