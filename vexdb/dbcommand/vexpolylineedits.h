#pragma once

#include "platform/base/vexexport.h"
#include "vexge/gemath/vexgepoint2d.h"

class CVexDbPolyline;

// Edits of a polyline of the drawing as the commands and the popup menu do them: recorded for undo,
// each a step of its own unless a group is open. They answer whether anything was changed; the
// caller refreshes grips and screen.

/// Closes one of at least 3 vertices that is not closed.
VEXDB_EXPORT bool closeRecorded(CVexDbPolyline& polyline);
VEXDB_EXPORT bool openRecorded(CVexDbPolyline& polyline);
VEXDB_EXPORT bool reverseRecorded(CVexDbPolyline& polyline);
/// Makes `vertex` the first; of an open polyline only the last can be, which reverses it.
VEXDB_EXPORT bool changeStartRecorded(CVexDbPolyline& polyline, unsigned vertex);
/// Puts a straight vertex without widths before vertex `before`; the count of vertices appends.
VEXDB_EXPORT bool insertRecorded(CVexDbPolyline& polyline, unsigned before,
                                 const CVexGePoint2d& point);
/// Two vertices stay.
VEXDB_EXPORT bool removeRecorded(CVexDbPolyline& polyline, unsigned vertex);
/// Makes an arc segment straight, and a straight one a shallow arc.
VEXDB_EXPORT bool flipRecorded(CVexDbPolyline& polyline, unsigned segment);
