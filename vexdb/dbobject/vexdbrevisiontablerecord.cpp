#include "vexdb/dbobject/vexdbrevisiontablerecord.h"

#include "platform/base/vexfields.h"
#include "platform/base/vextext.h"
#include "vexdb/dbobject/vexdbautoname.h"
#include "vexdb/vexdbdatabase.h"

CVexDbRevisionTableRecord::CVexDbRevisionTableRecord(CVexDbDatabase* database)
    : CVexDbTableRecord(database)
{
    setClassType(VexDb::kRevisionTableRecord);
    setInVisable();
}

CVexDbRevisionTableRecord::~CVexDbRevisionTableRecord() = default;

CVexDbRevisionTableRecord&
CVexDbRevisionTableRecord::operator=(const CVexDbRevisionTableRecord& other)
{
    if (this != &other) {
        assignName(other);
        m_value = other.m_value;
        copyText(m_firstText, other.m_firstText);
        copyText(m_secondText, other.m_secondText);
        copyText(m_thirdText, other.m_thirdText);
    }
    return *this;
}

bool CVexDbRevisionTableRecord::save()
{
    if (!CVexDbTableRecord::save()) {
        return false;
    }
    CVexFieldWriter{*file()}(m_value, m_firstText, m_secondText, m_thirdText);
    return !file()->failed();
}

bool CVexDbRevisionTableRecord::read()
{
    if (!CVexDbTableRecord::read()) {
        return false;
    }
    CVexFieldReader{*file()}(m_value, m_firstText, m_secondText, m_thirdText);
    return !file()->failed();
}

void CVexDbRevisionTableRecord::SetAutoName(wchar_t* buffer)
{
    formatAutoName(buffer, database()->revisions().GetNextName());
    setName(buffer);
}

void CVexDbRevisionTableRecord::setFirstText(const wchar_t* text)
{
    copyText(m_firstText, text);
}

void CVexDbRevisionTableRecord::setSecondText(const wchar_t* text)
{
    copyText(m_secondText, text);
}

void CVexDbRevisionTableRecord::setThirdText(const wchar_t* text)
{
    copyText(m_thirdText, text);
}
