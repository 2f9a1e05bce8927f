#include "vexdb/dbtracker/vexcircletracker.h"

#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbtracker/vexdivided.h"

namespace {

constexpr int kCentre = 0; // every other grip is on the circle

} // namespace

void CVexCircleTracker::UpdateEntity(CVexDbEntity* copy, int grip)
{
    if (grip == kCentre) {
        MoveEntity(copy);
        return;
    }
    CVexDbCircle& circle = shapeOf(copy);
    circle.setRadius(circle.Center().distanceTo(endPoint()));
}

void CVexCircleTracker::CheckCreateOption(CVexDbEntity* copy, CPoint& position)
{
    CVexDbCircle& circle = shapeOf(copy);
    circle.setRadius(circle.Center().distanceTo(exactAt(position)));
}

bool CVexCircleTracker::recordGrip(int grip, tagUndoEditEntity& edit)
{
    if (grip == kCentre) {
        return true; // moved by the band, as it is filled in already
    }
    const double before = shapeOf(m_entity).Radius();
    edit.editType = kUndoChangeSize;
    edit.vector = CVexGeVector2d(before, 0.0);
    return shapeOf(m_current).Radius() != before;
}

CVexDbEntity* CVexCircleTracker::makeDivided(int count)
{
    return dividedInto(count, shapeOf(m_entity));
}
