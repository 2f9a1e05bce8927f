#include "vexdb/dbobject/vexdbautoname.h"

#include "platform/base/vextext.h"

void formatAutoName(wchar_t* buffer, std::uint32_t number)
{
    CString name;
    name.Format(L"*S%u", number);
    copyText(buffer, CVexDbTableRecord::kNameCapacity, name);
}
