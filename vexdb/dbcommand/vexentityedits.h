#pragma once

#include "platform/base/vexexport.h"

class CVexCommandHandler;
class CVexDbEntity;

// What commands share that change the drawing by themselves.

/// Puts a new entity into its drawing, which owns it then, and records that; nothing for null.
VEXDB_EXPORT void addRecorded(CVexDbEntity* entity);
/// Sets the erased bit, and records that.
VEXDB_EXPORT void eraseRecorded(CVexDbEntity& entity);

/// Has the display window painted with one of the next messages; nothing without one.
void repaintSoon(const CVexCommandHandler& handler);
/// Has it painted at once, for a command that goes on asking.
void repaintNow(const CVexCommandHandler& handler);
