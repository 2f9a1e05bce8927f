#pragma once

#include "vexge/gemath/vexgepoint2d.h"

/// Twice the signed area of the triangle: positive when it runs counter-clockwise.
constexpr double doubledArea(const CVexGePoint2d& a, const CVexGePoint2d& b, const CVexGePoint2d& c)
{
    const CVexGeVector2d first = b - a;
    const CVexGeVector2d second = c - b;
    return first.x * second.y - first.y * second.x;
}

/// 1 when the triangle runs counter-clockwise, else 0: also for three points on one line.
constexpr int winding(const CVexGePoint2d& a, const CVexGePoint2d& b, const CVexGePoint2d& c)
{
    return doubledArea(a, b, c) > 0.0 ? 1 : 0;
}
