#pragma once

#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"
#include "vexdb/dbobject/vexdbclasstype.h"

#include <array>

/// The weights that every list offers, in its order: the special ones, then hundredths of a
/// millimetre.
extern VEXDB_EXPORT const std::array<VexDb::LineWeight, 26> kLineWeights;

/// The text of a weight that is given as its number: "Default", "ByBlock", "ByLayer" or "0.25 mm".
VEXDB_EXPORT CString _getStrWeight(CString weight);
