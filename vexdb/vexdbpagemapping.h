#pragma once

#include "platform/base/crect.h"
#include "platform/base/vexexport.h"
#include "vexge/gemath/vexgepoint2d.h"

class CDC;

/// Maps `window` (logical, `top` the smaller y) onto `client` (device, y down), with y up and
/// both axes at one scale; the context's map mode is set too.
VEXDB_EXPORT void setWindowMapping(CDC& dc, const CRect& window, const CRect& client);

/// Maps the drawing onto paper true to scale: `drawingMin` (drawing units) falls on the lower left
/// of the printable area and a drawing unit takes `millimetresPerUnit` on paper. False, and nothing
/// set, for a scale that is not positive and for a device that does not tell its resolution.
VEXDB_EXPORT bool setPageMapping(CDC& dc, const CVexGePoint2d& drawingMin,
                                 double millimetresPerUnit);
