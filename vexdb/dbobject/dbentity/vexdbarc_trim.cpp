#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbcuts.h"
#include "vexge/geentity2d/vexgeangle.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace {

double angleOf(const CVexDbArc& arc, VexDbCurveEnd end)
{
    return end == kCurveStart ? arc.StartAngle() : arc.EndAngle();
}

/// Turns an end to `angle`, recorded for undo.
void turnEnd(CVexDbArc& arc, VexDbCurveEnd end, double angle)
{
    tagUndoEditEntity edit = undoEditOf(arc, kUndoChangeAngle);
    const double before = angleOf(arc, end);
    edit.index = end;
    edit.vector = CVexGeVector2d(before);
    edit.point.x = before;
    recordEdit(arc, edit);
    end == kCurveStart ? arc.setStartAngle(angle) : arc.setEndAngle(angle);
}

void moveEnd(CVexDbArc& arc, VexDbCurveEnd end, const CVexGePoint2d& target)
{
    turnEnd(arc, end, arc.Center().angleTo(target));
}

void setStart(CVexDbArc& arc, const CVexGePoint2d& start)
{
    arc.setStartAngle(arc.Center().angleTo(start));
}

/// The angle between two directions, at most half a turn.
double angleBetween(double a, double b)
{
    return std::fabs(std::remainder(a - b, kGeTwoPi));
}

/// The directions from the centre to the first and last hit, counted from angle zero.
struct Directions {
    double first = 0.0;
    double last = 0.0;
};

/// Where the whole circle of `arc` meets the boundaries, beyond the arc, off the end at `now` that
/// moves, and not so near to the one at `fixed` that the arc would become a whole turn.
std::optional<Directions> directionsBeyond(const CVexDbArc& arc, double now, double fixed,
                                           const std::vector<CVexDbEntity*>& boundaries, double tol)
{
    const CVexDbCircle turn(arc.Center(), arc.Radius());
    const double least = std::max(kGeAngleTol, kGeTol / arc.Radius());
    std::optional<Directions> found;
    for (const CVexGePoint2d& hit : hitsOf(turn, boundaries, CVexGeEntity2d::kExtendNone, tol)) {
        const double angle = arc.Center().angleTo(hit);
        if (arc.isOn(hit, tol) != 0 || !(angleBetween(angle, fixed) > least) ||
            !(angleBetween(angle, now) > kGeAngleTol)) { // isOn does not look over angle zero
            continue;
        }
        if (!found) {
            found = {angle, angle};
        }
        found = {std::min(found->first, angle), std::max(found->last, angle)};
    }
    return found;
}

} // namespace

CVexDbEntity* CVexDbArc::Trim(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& cutters, double tol)
{
    const VexDbArcWay way(geArc());
    VexDbCuts cuts(*this, way, cutters, tol);
    // An arc of so small an angle is a whole turn to the kernel.
    const double shortest = kGeAngleTol * Radius();
    return takeOut(*this, cuts.openPieceAt(pick, shortest), &moveEnd, &setStart);
}

bool CVexDbArc::Extend(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& boundaries, double tol)
{
    const VexDbCurveEnd end = VexDbArcWay(geArc()).isNearerStart(pick) ? kCurveStart : kCurveEnd;
    const double now = angleOf(*this, end);
    const double fixed = angleOf(*this, end == kCurveStart ? kCurveEnd : kCurveStart);
    const std::optional<Directions> found = directionsBeyond(*this, now, fixed, boundaries, tol);
    if (!found) {
        return false;
    }
    // Of the hits in order from angle zero only the first and the last are looked at, and the
    // nearer of them is taken whichever way round it lies: who picks boundaries for an arc picks
    // the two that it runs between.
    const bool lastIsNearer = angleBetween(found->last, now) < angleBetween(found->first, now);
    turnEnd(*this, end, lastIsNearer ? found->last : found->first);
    return true;
}
