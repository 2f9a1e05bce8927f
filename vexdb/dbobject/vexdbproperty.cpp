#include "vexdb/dbobject/vexdbproperty.h"

void Property::Set(const CString& nameText, const CString& valueText, const CString& changeText,
                   int rowKind, std::uintptr_t dataAddress)
{
    name = nameText;
    value = valueText;
    change = changeText;
    kind = rowKind;
    data = dataAddress;
}

void _makePropertyList(std::vector<Property>& list, const CString& name, const CString& value,
                       std::uintptr_t data, int kind)
{
    list.emplace_back(name, value, L"Change " + name, kind, data);
}

void _deleteProperty(VexPropertyMap& propertyMap, VexPropertyGroups& properties)
{
    properties.clear();
    propertyMap.clear();
}
