#include "vexdb/dbtracker/vexarctracker.h"

#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/gemath/vexgetol.h"

#include <numbers>

namespace {

constexpr int kCentre = 0; // the grips, in their order
constexpr int kStart = 1;
constexpr int kMiddle = 2;
constexpr int kEnd = 3;

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

void CVexArcTracker::UpdateEntity(CVexDbEntity* copy, int grip)
{
    CVexDbArc& arc = shapeOf(copy);
    switch (grip) {
    case kCentre: MoveEntity(copy); break;
    case kStart: arc.setStartAngle(arc.Center().angleTo(endPoint())); break;
    case kMiddle: arc.setRadius(arc.Center().distanceTo(endPoint())); break;
    case kEnd: arc.setEndAngle(arc.Center().angleTo(endPoint())); break;
    default: break;
    }
}

void CVexArcTracker::CheckCreateOption(CVexDbEntity* copy, CPoint& position)
{
    CVexDbArc& arc = shapeOf(copy);
    const CVexGePoint2d to = exactAt(position);
    switch (m_option) {
    case kThreePoints: arc.set(startPoint(), m_arcPoint, to); break;
    case kEndAngle:
    case kEndAngleByRadius: arc.setEndAngle((to - startPoint()).angle()); break;
    case kTangent: continueTangent(arc, to); break;
    default: break;
    }
}

/// Leaves the start along the tangent: the centre is where the normal meets the perpendicular
/// bisector of the chord.
void CVexArcTracker::continueTangent(CVexDbArc& arc, const CVexGePoint2d& to) const
{
    const Departure from = departureFrom(m_previousEntity, startPoint());
    const CVexGeVector2d chord = to - startPoint();
    // Both by a direction and not by a long perpendicular line: what is on the tangent but for the
    // last bit has to count as parallel.
    const CVexGeLine2d normal(from.through, from.tangent.perpVector());
    const CVexGeLine2d bisector(startPoint() + chord * 0.5, chord.perpVector());
    CVexGePoint2d centre;
    if (!bisector.intersectWith(normal, centre, CVexGeEntity2d::kExtendBoth, kGeEpsilon)) {
        arc.set(startPoint(), to, kNearlyStraightBulge);
        return;
    }
    const double atStart = centre.angleTo(startPoint());
    const double atEnd = centre.angleTo(to);
    // An arc runs counter-clockwise: one that bends to the right is stored from its end.
    const double turn = notNegativeAngle(chord.angle() - from.tangent.angle());
    const bool bendsLeft = turn < std::numbers::pi;
    arc.set(centre, centre.distanceTo(startPoint()), bendsLeft ? atStart : atEnd,
            bendsLeft ? atEnd : atStart);
}

bool CVexArcTracker::recordGrip(int grip, tagUndoEditEntity& edit)
{
    const CVexDbArc& before = shapeOf(m_entity);
    const CVexDbArc& after = shapeOf(m_current);
    switch (grip) {
    case kStart:
    case kEnd: {
        const double angle = grip == kStart ? before.StartAngle() : before.EndAngle();
        edit.editType = kUndoChangeAngle;
        edit.index = grip == kStart ? 0 : 1;
        edit.vector = CVexGeVector2d(angle);
        edit.point = CVexGePoint2d(angle, 0.0); // to the bit, which a direction does not keep
        return angle != (grip == kStart ? after.StartAngle() : after.EndAngle());
    }
    case kMiddle:
        edit.editType = kUndoChangeSize;
        edit.vector = CVexGeVector2d(before.Radius(), 0.0);
        return before.Radius() != after.Radius();
    default: return true; // moved by the band, as it is filled in already
    }
}
