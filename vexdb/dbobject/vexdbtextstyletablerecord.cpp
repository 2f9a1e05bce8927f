#include "vexdb/dbobject/vexdbtextstyletablerecord.h"

#include "platform/base/vexfields.h"
#include "platform/base/vextext.h"
#include "vexdb/dbobject/vexdbvectorfont.h"

CVexDbTextStyleTableRecord::CVexDbTextStyleTableRecord(CVexDbDatabase* database)
    : CVexDbTableRecord(database)
{
    setClassType(VexDb::kTextStyleTableRecord);
}

CVexDbTextStyleTableRecord::CVexDbTextStyleTableRecord(const CVexDbTextStyleTableRecord& other)
    // NOLINTNEXTLINE(bugprone-copy-constructor-init): nothing refers to a copy
    : CVexDbTableRecord(other), CVexDbRefSet()
{
    *this = other;
}

CVexDbTextStyleTableRecord::~CVexDbTextStyleTableRecord() = default;

CVexDbTextStyleTableRecord&
CVexDbTextStyleTableRecord::operator=(const CVexDbTextStyleTableRecord& other)
{
    if (this == &other) {
        return *this;
    }
    assignName(other);
    m_flags = other.m_flags;
    m_textSize = other.m_textSize;
    m_widthFactor = other.m_widthFactor;
    m_obliquingAngle = other.m_obliquingAngle;
    m_priorSize = other.m_priorSize;
    copyText(m_fileName, other.m_fileName);
    copyText(m_bigFileName, other.m_bigFileName);
    setFont(other.m_faceName, other.m_bold, other.m_italic, other.m_charset,
            other.m_pitchAndFamily);
    return *this;
}

void CVexDbTextStyleTableRecord::walkFields(auto& archive)
{
    archive(m_flags, m_textSize, m_widthFactor, m_obliquingAngle, m_priorSize, m_fileName,
            m_bigFileName);
    archive(m_faceName, m_bold, m_italic, m_charset, m_pitchAndFamily);
}

bool CVexDbTextStyleTableRecord::save()
{
    if (!CVexDbTableRecord::save()) {
        return false;
    }
    CVexFieldWriter fields(*file());
    walkFields(fields);
    return !file()->failed();
}

bool CVexDbTextStyleTableRecord::read()
{
    if (!CVexDbTableRecord::read()) {
        return false;
    }
    CVexFieldReader fields(*file());
    walkFields(fields);
    return !file()->failed();
}

void CVexDbTextStyleTableRecord::setFileName(const wchar_t* name)
{
    copyText(m_fileName, name);
    setFlag(kVerticalFont, isNormalVertical(fileName()) || isBigVertical(bigFileName()));
}

void CVexDbTextStyleTableRecord::setBigFileName(const wchar_t* name)
{
    copyText(m_bigFileName, name);
    setFlag(kVerticalFont, isNormalVertical(fileName()) || isBigVertical(bigFileName()));
}

void CVexDbTextStyleTableRecord::font(wchar_t*& face, bool& bold, bool& italic, int& charset,
                                      int& pitchAndFamily)
{
    face = m_faceName;
    bold = m_bold;
    italic = m_italic;
    charset = m_charset;
    pitchAndFamily = m_pitchAndFamily;
}

void CVexDbTextStyleTableRecord::setFont(const wchar_t* face, bool bold, bool italic, int charset,
                                         int pitchAndFamily)
{
    copyText(m_faceName, face);
    m_bold = bold;
    m_italic = italic;
    m_charset = charset;
    m_pitchAndFamily = pitchAndFamily;
}
