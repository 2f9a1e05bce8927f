#pragma once

#include "platform/base/cpoint.h"
#include "platform/base/vexexport.h"
#include "vexge/gemath/vexgepoint2d.h"
#include "vexge/gemath/vextruncate.h"

/// Logical units a drawing unit.
extern VEXDB_EXPORT double _dDispScale;

/// Drawing units to logical units: truncated towards zero, held to +-10^9, NaN is 0.
inline int toLogical(double coordinate)
{
    return truncateSaturated(coordinate * _dDispScale);
}
inline CPoint toLogical(const CVexGePoint2d& point)
{
    return {toLogical(point.x), toLogical(point.y)};
}

/// Logical units back to drawing units.
inline CVexGePoint2d toDrawing(CPoint logical)
{
    return CVexGePoint2d(logical) / _dDispScale;
}
