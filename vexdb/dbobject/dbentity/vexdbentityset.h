#pragma once

#include "platform/base/vexexport.h"

#include <set>

class CVexDbEntity;

/// Orders entities by creation, never by address, so that what goes over a selection goes in the
/// order of drawing.
struct VEXDB_EXPORT VexByCreation {
    bool operator()(const CVexDbEntity* a, const CVexDbEntity* b) const;
};

/// A selection. It owns nothing.
using VexEntitySet = std::set<CVexDbEntity*, VexByCreation>;
