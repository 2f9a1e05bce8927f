#include "vexdb/dbobject/vexdbrevisiontable.h"

#include "platform/base/vexfields.h"

CVexDbRevisionTable::CVexDbRevisionTable(CVexDbDatabase* database)
    : CVexDbTableWithCurrent(database)
{
    // Not the revision table's own number: hosts know this table by the block table's.
    setClassType(VexDb::kBlockTable);
}

CVexDbRevisionTable::~CVexDbRevisionTable() = default;

void CVexDbRevisionTable::saveTail(CFile& file)
{
    CVexFieldWriter{file}(m_nextName);
}

void CVexDbRevisionTable::readTail(CFile& file)
{
    CVexFieldReader{file}(m_nextName);
}

void CVexDbRevisionTable::onAdded(CVexDbTableRecord&)
{
    ++m_nextName;
}
