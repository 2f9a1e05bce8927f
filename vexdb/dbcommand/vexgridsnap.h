#pragma once

#include "platform/base/vexexport.h"
#include "vexge/gemath/vexgepoint2d.h"

#include <optional>

/// `point` (drawing units) with each coordinate at the multiple of `step` that lies nearest; what
/// lies exactly half way goes towards zero. A step that is not above 0, or not
/// finite, changes nothing.
VEXDB_EXPORT CVexGePoint2d roundedToGrid(const CVexGePoint2d& point, double step);

/// The point of the grid that catches the cursor. Only upwards is it the nearest one: below zero
/// the coordinates are cut towards zero. None for a step that is not above 0, or not finite.
VEXDB_EXPORT std::optional<CVexGePoint2d> gridPointAt(const CVexGePoint2d& cursor, double step);
