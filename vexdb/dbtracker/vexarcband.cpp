#include "vexdb/dbtracker/vexarcband.h"

#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/gemath/vexgetol.h"

#include <cmath>
#include <numbers>

namespace {

/// The arc that stands for a straight continuation.
constexpr double kNearlyStraightBulge = 0.001;

/// What an arc starts out from: where the normal passes through, and the way along the tangent.
struct Departure {
    CVexGePoint2d through;
    CVexGeVector2d tangent; // of length 1
};

/// Out of an arc beyond the end that lies at `start`.
Departure departureFrom(const CVexDbArc& arc, const CVexGePoint2d& start)
{
    const double inward = start.angleTo(arc.Center());
    const double quarter = std::numbers::pi / 2.0;
    const bool fromEnd = arc.EndPoint().distanceTo(start) <= kGeTol;
    return {start, CVexGeVector2d(fromEnd ? inward - quarter : inward + quarter)};
}

/// Beyond the end of what was drawn before; along x when that was neither an arc nor a line. The
/// normal of a line stands on its end, even where the new arc starts elsewhere and so leaves no
/// tangent. A last point that was set by other means continues by this, as it always has.
Departure departureFrom(const CVexDbEntity* previous, const CVexGePoint2d& start)
{
    if (previous != nullptr && previous->classType() == VexDb::kArc) {
        return departureFrom(static_cast<const CVexDbArc&>(*previous), start);
    }
    if (previous != nullptr && previous->classType() == VexDb::kLine) {
        const auto& line = static_cast<const CVexDbLine&>(*previous);
        return {line.EndPoint(), CVexGeVector2d(line.StartPoint().angleTo(line.EndPoint()))};
    }
    return {start, CVexGeVector2d::kXAxis};
}

} // namespace

bool areOnOneLine(const CVexGePoint2d& first, const CVexGePoint2d& second,
                  const CVexGePoint2d& third)
{
    constexpr double kLeastSine = 1e-12;
    const CVexGeVector2d there = second - first;
    const CVexGeVector2d on = third - second;
    const double cross = there.x * on.y - there.y * on.x;
    return !(std::fabs(cross) > kLeastSine * there.length() * on.length());
}

void VexArcBand::shape(CVexDbArc& arc) const
{
    switch (way) {
    case kThreePoints: arc.set(start, second, end); break;
    case kEndAngle:
    case kEndAngleByRadius: arc.setEndAngle((end - start).angle()); break;
    case kTangent: continueTangent(arc); break;
    default: break;
    }
}

/// Leaves the start along the tangent: the centre is where the normal meets the perpendicular
/// bisector of the chord.
void VexArcBand::continueTangent(CVexDbArc& arc) const
{
    const Departure from = departureFrom(previous, start);
    const CVexGeVector2d chord = end - start;
    // Both by a direction and not by a long perpendicular line: what is on the tangent but for the
    // last bit has to count as parallel.
    const CVexGeLine2d normal(from.through, from.tangent.perpVector());
    const CVexGeLine2d bisector(start + chord * 0.5, chord.perpVector());
    CVexGePoint2d centre;
    if (!bisector.intersectWith(normal, centre, CVexGeEntity2d::kExtendBoth, kGeEpsilon)) {
        arc.set(start, end, kNearlyStraightBulge);
        return;
    }
    const double atStart = centre.angleTo(start);
    const double atEnd = centre.angleTo(end);
    // An arc runs counter-clockwise: one that bends to the right is stored from its end.
    const double turn = notNegativeAngle(chord.angle() - from.tangent.angle());
    const bool bendsLeft = turn < std::numbers::pi;
    arc.set(centre, centre.distanceTo(start), bendsLeft ? atStart : atEnd,
            bendsLeft ? atEnd : atStart);
}
