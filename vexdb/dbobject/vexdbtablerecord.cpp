#include "vexdb/dbobject/vexdbtablerecord.h"

#include "platform/base/vexfields.h"
#include "platform/base/vextext.h"

#include <algorithm>
#include <iterator>

CVexDbTableRecord::CVexDbTableRecord(CVexDbDatabase* database) : CVexDbObject(database)
{
    setObjectStatus(0); // says that records start without a flag
}

CVexDbTableRecord::CVexDbTableRecord(const CVexDbTableRecord& other) : CVexDbObject(other)
{
    takeFreshIdentity(); // a record is copied for use, never as a second look at its source
    assignName(other);
}

CVexDbTableRecord::~CVexDbTableRecord() = default;

bool CVexDbTableRecord::save()
{
    if (!CVexDbObject::save()) {
        return false;
    }
    CVexFieldWriter{*file()}(m_name);
    return !file()->failed();
}

bool CVexDbTableRecord::read()
{
    if (!CVexDbObject::read()) {
        return false;
    }
    CVexFieldReader{*file()}(m_name);
    return !file()->failed();
}

void CVexDbTableRecord::setName(wchar_t* name)
{
    // Copies first: a name may be this record's own array. The caller's text is cut too, since it
    // goes on as the key of a table.
    wchar_t cut[kNameCapacity];
    if (!copyText(cut, name)) {
        name[std::wstring_view(cut).size()] = L'\0';
    }
    std::copy(std::begin(cut), std::end(cut), m_name);
}

void CVexDbTableRecord::setName(const CString& name)
{
    std::wstring text = name.str();
    setName(text.data());
}

void CVexDbTableRecord::assignName(const CVexDbTableRecord& other)
{
    if (m_table != nullptr) {
        return; // the table's key must go on finding it
    }
    std::copy(std::begin(other.m_name), std::end(other.m_name), m_name);
}
