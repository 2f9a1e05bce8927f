#include "vexdb/dbtracker/vexradialtracker.h"

#include "vexdb/dbobject/dbentity/vexdbentity.h"

void CVexRadialTracker::placeStart(CPoint device, int grip)
{
    CVexCurveTracker::placeStart(device, grip);
    if (grip >= 0 && m_entity != nullptr) {
        SetStartPoint(m_entity->getGripPoint(0), false); // its end stays at the press
    }
}
