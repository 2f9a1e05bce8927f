#include "vexdb/dbobject/vexdbsymboltable.h"

#include "platform/base/vexfields.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/vexdbautoname.h"

CVexDbSymbolTable::CVexDbSymbolTable(CVexDbDatabase* database) : CVexDbTypedTable(database)
{
    setClassType(VexDb::kSymbolTable);
}

CVexDbSymbolTable::~CVexDbSymbolTable() = default;

void CVexDbSymbolTable::initSymbolTable()
{
    while (size() > 0) {
        removeRecord(CString(records().begin()->first));
    }
    m_last = nullptr;
}

CVexDbObjectId CVexDbSymbolTable::GetLastName(wchar_t* buffer) const
{
    // Of an empty table this is the name of the largest number: it must name no record.
    formatAutoName(buffer, m_nextName - 1);
    CVexDbSymbolTableRecord* record = nullptr;
    getRecord(buffer, record, false);
    return CVexDbObjectId(record);
}

CVexDbSymbolTableRecord* CVexDbSymbolTable::recordOf(const CVexDbObjectId& symbol) const
{
    CVexDbSymbolTableRecord* record = nullptr;
    if (!symbol.isNull()) {
        getRecord(static_cast<CVexDbEntity*>(symbol.getPObject())->recordName(), record, false);
    }
    return record;
}

bool CVexDbSymbolTable::addRefEntity(const CVexDbObjectId& id)
{
    return addUser(recordOf(id), id);
}

bool CVexDbSymbolTable::removeEntity(const CVexDbObjectId& id)
{
    return removeUser(recordOf(id), id);
}

void CVexDbSymbolTable::saveTail(CFile& file)
{
    CVexFieldWriter{file}(m_nextName);
}

void CVexDbSymbolTable::readTail(CFile& file)
{
    CVexFieldReader{file}(m_nextName);
}

void CVexDbSymbolTable::onAdded(CVexDbTableRecord& record)
{
    m_last = static_cast<CVexDbSymbolTableRecord*>(&record);
    ++m_nextName;
}

// Symbol entities look their record up by its name, so the name's new holder needs only the set.
void CVexDbSymbolTable::replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after)
{
    for (const CVexDbObjectId user : static_cast<CVexDbSymbolTableRecord*>(before)->entitySet()) {
        static_cast<CVexDbSymbolTableRecord*>(after)->addRefEntity(user);
    }
}

void CVexDbSymbolTable::detach(CVexDbTableRecord& record)
{
    if (m_last == &record) {
        m_last = nullptr;
    }
}
