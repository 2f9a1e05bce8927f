#pragma once

#include "platform/base/vexexport.h"
#include "platform/window/vexbackend.h"

#include <QCursor>

/// The pointer's shape over a view: cross and pick box are thin lines with a dark edge, seen on
/// any ground. `ratio` is the device pixels of the screen a pixel of Qt's.
VEXQT_EXPORT QCursor makeQtCursor(VexCursor cursor, double ratio);
