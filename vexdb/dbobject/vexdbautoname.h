#pragma once

#include "vexdb/dbobject/vexdbtablerecord.h"

#include <cstdint>

/// Puts the name that goes with a table's running number, "*S7", into `buffer` of 81 characters.
void formatAutoName(wchar_t* buffer, std::uint32_t number);
