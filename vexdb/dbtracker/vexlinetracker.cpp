#include "vexdb/dbtracker/vexlinetracker.h"

#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbtracker/vexdivided.h"
#include "vexdb/dbtracker/vexexactly.h"

namespace {

constexpr int kMiddle = 0; // the grips, in their order
constexpr int kStart = 1;
constexpr int kEnd = 2;

CVexGePoint2d endOf(const CVexDbLine& line, int grip)
{
    return grip == kStart ? line.StartPoint() : line.EndPoint();
}

} // namespace

void CVexLineTracker::UpdateEntity(CVexDbEntity* copy, int grip)
{
    switch (grip) {
    case kMiddle: MoveEntity(copy); break;
    case kStart: shapeOf(copy).setStartPoint(endPoint()); break;
    case kEnd: shapeOf(copy).setEndPoint(endPoint()); break;
    default: break;
    }
}

void CVexLineTracker::CheckCreateOption(CVexDbEntity* copy, CPoint& position)
{
    shapeOf(copy).setEndPoint(exactAt(position));
}

bool CVexLineTracker::recordGrip(int grip, tagUndoEditEntity& edit)
{
    if (grip == kMiddle) {
        return true; // moved by the band, as it is filled in already
    }
    // The way of the end and not of the band: the press need not have met the grip's centre.
    edit.editType = kUndoMovePoint;
    edit.index = grip == kStart ? 0 : 1;
    edit.point = endOf(shapeOf(m_entity), grip);
    edit.vector = endOf(shapeOf(m_current), grip) - edit.point;
    return !isZero(edit.vector);
}

CVexDbEntity* CVexLineTracker::makeDivided(int count)
{
    return dividedInto(count, shapeOf(m_entity));
}
