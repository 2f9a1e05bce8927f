#pragma once

#include "platform/base/vexexport.h"

#include <Qt>

/// The VirtualKey code of a key; kUnnamedKey for one without a code.
VEXQT_EXPORT unsigned virtualKeyOf(int key, Qt::KeyboardModifiers modifiers);

/// Stands for every key that only counts by the character it types.
constexpr unsigned kUnnamedKey = 0xe7;
