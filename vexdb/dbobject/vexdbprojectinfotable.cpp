#include "vexdb/dbobject/vexdbprojectinfotable.h"

#include "platform/base/vexfields.h"
#include "platform/base/vextext.h"

CVexDbProjectInfoTable::CVexDbProjectInfoTable(CVexDbDatabase* database)
    : CVexDbTypedTable(database)
{
    setClassType(VexDb::kProjectInfoTable);
}

CVexDbProjectInfoTable::~CVexDbProjectInfoTable() = default;

void CVexDbProjectInfoTable::setFirstText(const wchar_t* text)
{
    copyText(m_firstText, text);
}

void CVexDbProjectInfoTable::setSecondText(const wchar_t* text)
{
    copyText(m_secondText, text);
}

void CVexDbProjectInfoTable::saveHead(CFile& file)
{
    CVexFieldWriter{file}(m_firstText, m_secondText);
}

void CVexDbProjectInfoTable::readHead(CFile& file)
{
    CVexFieldReader{file}(m_firstText, m_secondText);
}

void CVexDbProjectInfoTable::saveTail(CFile& file)
{
    CVexFieldWriter{file}(m_nextName);
}

void CVexDbProjectInfoTable::readTail(CFile& file)
{
    CVexFieldReader{file}(m_nextName);
}

void CVexDbProjectInfoTable::onAdded(CVexDbTableRecord&)
{
    ++m_nextName;
}

void CVexDbProjectInfoTable::replaceReferences(CVexDbTableRecord*, CVexDbTableRecord*)
{
    // Nothing refers to a record of this table.
}
