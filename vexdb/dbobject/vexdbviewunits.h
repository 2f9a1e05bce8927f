#pragma once

#include "platform/base/crect.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"

// A view keeps its window twice, in logical and in whole drawing units. These convert side by side.

/// Whole drawing units, truncated.
inline int toUnits(int logical)
{
    return truncateSaturated(logical / _dDispScale);
}
inline CRect unitsOf(const CRect& logical)
{
    return {toUnits(logical.left), toUnits(logical.top), toUnits(logical.right),
            toUnits(logical.bottom)};
}
inline CRect logicalOf(const CRect& units)
{
    return {toLogical(units.left), toLogical(units.top), toLogical(units.right),
            toLogical(units.bottom)};
}
