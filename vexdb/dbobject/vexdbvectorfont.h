#pragma once

#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"

/// The folder of the vector fonts: "font" beside the running program.
VEXDB_EXPORT CString _GetVectorFontPath();
/// True when the head of the vector font `name` (without extension) says that it has a vertical
/// form. False for a font that is not there or makes no sense.
VEXDB_EXPORT bool isNormalVertical(const CString& name);
/// The same for a big font.
VEXDB_EXPORT bool isBigVertical(const CString& name);
