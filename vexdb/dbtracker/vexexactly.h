#pragma once

#include "vexge/gemath/vexgepoint2d.h"
#include "vexge/gemath/vexgevector2d.h"

// To the last bit: the points' own == forgives what a drawing must keep.

inline bool isSame(const CVexGePoint2d& a, const CVexGePoint2d& b)
{
    return a.x == b.x && a.y == b.y;
}

inline bool isZero(const CVexGeVector2d& way)
{
    return way.x == 0.0 && way.y == 0.0;
}
