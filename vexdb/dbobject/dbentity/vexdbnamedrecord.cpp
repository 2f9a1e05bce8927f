#include "vexdb/dbobject/dbentity/vexdbnamedrecord.h"

#include "vexdb/dbobject/vexdbtable.h"

#include <algorithm>

CVexDbObjectId namedRecord(const CVexDbTable& table, const wchar_t* name)
{
    CVexDbObjectId id;
    if (table.getAt(name, id, false)) {
        return id;
    }
    const auto found = std::ranges::find_if(
        table.records(), [&](const auto& entry) { return entry.second->getName() == name; });
    return found == table.records().end() ? CVexDbObjectId() : found->second->objectId();
}
