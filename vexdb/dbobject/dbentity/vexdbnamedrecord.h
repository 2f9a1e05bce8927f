#pragma once

#include "vexdb/dbobject/vexdbobjectid.h"

class CVexDbTable;

/// The record of `table` that bears `name`, which every drawing has: by its key, else by the name
/// that the record itself bears, for a base layer keeps its name where its key has been renamed.
CVexDbObjectId namedRecord(const CVexDbTable& table, const wchar_t* name);
