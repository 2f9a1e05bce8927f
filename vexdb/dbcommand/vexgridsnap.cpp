#include "vexdb/dbcommand/vexgridsnap.h"

#include <cmath>

namespace {

double roundedTo(double coordinate, double step)
{
    const double below = std::trunc(coordinate / step) * step;
    const double rest = coordinate - below;
    return std::fabs(rest) > step / 2.0 ? below + std::copysign(step, rest) : below;
}

double gridLineAt(double coordinate, double step)
{
    // The rest keeps its sign: at -0.9 with step 1 the line is 0, not -1. Draughtsmen's drawings
    // rely on the picks that come of it, so the sides stay unequal.
    double line = std::trunc(coordinate / step);
    if (coordinate - line * step > step / 2.0) {
        line += 1.0;
    }
    return line * step;
}

// The step comes from the drawing's file: any number may stand there.
bool divides(double step, const CVexGePoint2d& point)
{
    return step > 0.0 && std::isfinite(step) && std::isfinite(point.x / step) &&
           std::isfinite(point.y / step);
}

} // namespace

CVexGePoint2d roundedToGrid(const CVexGePoint2d& point, double step)
{
    return divides(step, point) ? CVexGePoint2d(roundedTo(point.x, step), roundedTo(point.y, step))
                                : point;
}

std::optional<CVexGePoint2d> gridPointAt(const CVexGePoint2d& cursor, double step)
{
    return divides(step, cursor) ? std::optional(CVexGePoint2d(gridLineAt(cursor.x, step),
                                                               gridLineAt(cursor.y, step)))
                                 : std::nullopt;
}
