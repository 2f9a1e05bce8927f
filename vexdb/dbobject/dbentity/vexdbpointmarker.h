#pragma once

#include "platform/base/cpoint.h"
#include "platform/base/crect.h"

class CDC;

/// Draws shape 0 to 14 of a point in `box` (logical units) with the selected pen and brush; shape 0
/// is one pixel at `position`. Nothing for another number. A filled shape has no strokes inside.
void drawPointMarker(CDC& dc, int shape, CPoint position, const CRect& box, bool filled);
