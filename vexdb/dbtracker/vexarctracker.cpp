#include "vexdb/dbtracker/vexarctracker.h"

#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbtracker/vexdivided.h"

namespace {

constexpr int kCentre = 0; // the grips, in their order
constexpr int kStart = 1;
constexpr int kMiddle = 2;
constexpr int kEnd = 3;

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
    VexArcBand{m_option, startPoint(), exactAt(position), m_arcPoint, m_previousEntity}.shape(
        shapeOf(copy));
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

CVexDbEntity* CVexArcTracker::makeDivided(int count)
{
    return dividedInto(count, shapeOf(m_entity));
}
