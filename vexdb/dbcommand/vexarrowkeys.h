#pragma once

#include "platform/base/vexexport.h"
#include "platform/window/vexmessage.h"
#include "vexdb/dbcommand/vexpump.h"

class CVexDbDatabase;
class CWnd;

/// Whether a message is the press or the release of an arrow key.
VEXDB_EXPORT bool isArrowKey(const MSG& message);

/// What every pump does with the arrow keys: a press moves the pointer by one pixel, or by the grid
/// step while grid snap is on, and tells `window` so in client coordinates; a release sets
/// `movedByKeys`. Swallows both; any other message is to be dispatched, with nothing done.
VEXDB_EXPORT VexVerdict moveKey(CVexDbDatabase& database, CWnd& window, const MSG& message,
                                bool& movedByKeys);
