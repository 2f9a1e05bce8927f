#pragma once

#include "vexge/gemath/vexgepoint2d.h"

#include <algorithm>
#include <cmath>
#include <span>

/// The box of some points; false when one is not finite, for then nothing can be said.
inline bool extentsOf(std::span<const CVexGePoint2d> points, CVexGePoint2d& min, CVexGePoint2d& max)
{
    if (points.empty()) {
        return false;
    }
    min = max = points.front();
    for (const CVexGePoint2d& point : points) {
        if (!std::isfinite(point.x) || !std::isfinite(point.y)) {
            return false;
        }
        min.set(std::min(min.x, point.x), std::min(min.y, point.y));
        max.set(std::max(max.x, point.x), std::max(max.y, point.y));
    }
    return true;
}
