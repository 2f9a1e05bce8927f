#include "vexdb/dbobject/vexdbtableiterator.h"

CVexDbTableIterator::CVexDbTableIterator(CVexDbTable* table) : m_table(table)
{
    start(true);
}

CVexDbTableIterator::~CVexDbTableIterator() = default;

void CVexDbTableIterator::start(bool first)
{
    if (first) {
        moveTo(m_table->records().begin());
    }
}

void CVexDbTableIterator::moveTo(CVexDbTable::Records::const_iterator at) const
{
    m_place = at == m_table->records().end() ? Place::kBehind : Place::kAt;
    if (m_place == Place::kAt) {
        m_key = at->first;
    }
}

void CVexDbTableIterator::step(bool forward)
{
    const CVexDbTable::Records& records = m_table->records();
    if (m_place == Place::kBefore) {
        if (forward) {
            moveTo(records.begin());
        }
        return;
    }
    if (forward) {
        if (m_place == Place::kAt) {
            moveTo(records.upper_bound(m_key));
        }
        return;
    }
    auto at = m_place == Place::kAt ? records.lower_bound(m_key) : records.end();
    if (at == records.begin()) {
        m_place = Place::kBefore;
    } else {
        moveTo(--at);
    }
}

bool CVexDbTableIterator::done() const
{
    return m_place != Place::kAt ||
           m_table->records().lower_bound(m_key) == m_table->records().end();
}

CVexDbTableRecord* CVexDbTableIterator::current() const
{
    if (m_place != Place::kAt) {
        return nullptr;
    }
    const auto at = m_table->records().lower_bound(m_key);
    moveTo(at);
    return m_place == Place::kAt ? at->second.get() : nullptr;
}

bool CVexDbTableIterator::getRecordId(CVexDbObjectId& id) const
{
    id.setPObject(current());
    return !id.isNull();
}

bool CVexDbTableIterator::getRecord(CVexDbTableRecord*& record, bool includeErased) const
{
    record = current();
    if (record != nullptr && record->isErased() && !includeErased) {
        record = nullptr;
    }
    return record != nullptr;
}

bool CVexDbTableIterator::seek(const CVexDbObjectId& id)
{
    for (start(true); !done(); step(true)) {
        if (id == current()) {
            return true;
        }
    }
    return false;
}

bool CVexDbTableIterator::seek(const CVexDbTableRecord* record)
{
    return seek(CVexDbObjectId(record));
}
