#pragma once

#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"

#include <cstdint>
#include <map>
#include <vector>

/// One row of the property list that a host shows for an object.
struct VEXDB_EXPORT Property {
    CString name;   // label, "Layer"
    CString value;  // current value as text
    CString change; // prompt for changing it, "Change Layer"
    /// 0 text or record, 1 number, 2 read-only count, 3 vertex coordinate, 4 vertex value.
    int kind = 0;
    std::uintptr_t data = 0; // address of the record or of the double shown; 0 when there is none

    Property() = default;
    Property(const CString& nameText, const CString& valueText, const CString& changeText,
             int rowKind, std::uintptr_t dataAddress)
    {
        Set(nameText, valueText, changeText, rowKind, dataAddress);
    }
    void Set(const CString& nameText, const CString& valueText, const CString& changeText,
             int rowKind, std::uintptr_t dataAddress);
};

/// Rows by group ("General", "Shape").
using VexPropertyGroups = std::map<CString, std::vector<Property>>;
/// Groups by class type.
using VexPropertyMap = std::map<int, VexPropertyGroups>;

/// Appends a row whose change text is "Change " and the name.
VEXDB_EXPORT void _makePropertyList(std::vector<Property>& list, const CString& name,
                                    const CString& value, std::uintptr_t data, int kind);
/// Empties both maps.
VEXDB_EXPORT void _deleteProperty(VexPropertyMap& propertyMap, VexPropertyGroups& properties);
