#include "vexdb/dbobject/vexdbprojectinfotablerecord.h"

#include "platform/base/vexfields.h"
#include "platform/base/vextext.h"
#include "vexdb/dbobject/vexdbautoname.h"
#include "vexdb/vexdbdatabase.h"

CVexDbProjectInfoTableRecord::CVexDbProjectInfoTableRecord(CVexDbDatabase* database)
    : CVexDbTableRecord(database)
{
    setClassType(VexDb::kProjectInfoTableRecord);
    setInVisable();
}

CVexDbProjectInfoTableRecord::~CVexDbProjectInfoTableRecord() = default;

CVexDbProjectInfoTableRecord&
CVexDbProjectInfoTableRecord::operator=(const CVexDbProjectInfoTableRecord& other)
{
    if (this != &other) {
        assignName(other);
        m_firstValue = other.m_firstValue;
        m_secondValue = other.m_secondValue;
        copyText(m_text, other.m_text);
    }
    return *this;
}

bool CVexDbProjectInfoTableRecord::save()
{
    if (!CVexDbTableRecord::save()) {
        return false;
    }
    CVexFieldWriter{*file()}(m_firstValue, m_secondValue, m_text);
    return !file()->failed();
}

bool CVexDbProjectInfoTableRecord::read()
{
    if (!CVexDbTableRecord::read()) {
        return false;
    }
    CVexFieldReader{*file()}(m_firstValue, m_secondValue, m_text);
    return !file()->failed();
}

void CVexDbProjectInfoTableRecord::SetAutoName(wchar_t* buffer)
{
    formatAutoName(buffer, database()->projectInfos().GetNextName());
    setName(buffer);
}

void CVexDbProjectInfoTableRecord::setText(const wchar_t* text)
{
    copyText(m_text, text);
}
