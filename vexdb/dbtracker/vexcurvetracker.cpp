#include "vexdb/dbtracker/vexcurvetracker.h"

#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbtracker/vextransformedit.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/geentity2d/vexgeline2d.h"

int CVexCurveTracker::TrackHandle(CWnd* window, CPoint device, int grip)
{
    if (!m_createMode && grip < 0 && m_transform == VexDb::TransFormNone) {
        return InputCancel; // the click was not on a grip
    }
    return runDrag(*window, device, grip);
}

bool CVexCurveTracker::showsBand(int grip) const
{
    return m_transform != VexDb::TransFormNone || grip >= 0;
}

void CVexCurveTracker::MoveEntity(CVexDbEntity* entity)
{
    entity->TranslateBy(bandVector());
}

void CVexCurveTracker::RotateEntity(CVexDbEntity* entity)
{
    entity->RotateBy(bandVector().angle(), startPoint());
}

void CVexCurveTracker::MirrorEntity(CVexDbEntity* entity)
{
    if (!isWithoutWay()) { // a line without length mirrors nothing
        entity->Mirror(CVexGeLine2d(startPoint(), endPoint()));
    }
}

void CVexCurveTracker::ScaleEntity(CVexDbEntity* entity)
{
    entity->ScaleBy(bandVector().length() / scalePercent(), startPoint());
}

CVexDbEntity* CVexCurveTracker::CopyEntity(CVexDbEntity* entity)
{
    return entity->CopyEntity(true);
}

void CVexCurveTracker::DrawOrgEntity()
{
    UndrawOrigin();
}

bool CVexCurveTracker::ControlEnd(int grip)
{
    if (m_entity == nullptr || m_current == nullptr || m_database == nullptr) {
        return false;
    }
    settlePosition();
    // The last move and the rounding shape the copy together.
    followMove(grip);
    // A place that was typed for a grip counts even where the press was: that met the grip nearly.
    const bool isTypedForGrip = m_positionGiven && m_transform == VexDb::TransFormNone;
    if (isTypedForGrip || !isWithoutWay()) {
        const VexUndoGroup step(m_database->undoHandler());
        if (!m_createMode && m_entity->IsDbEntity()) {
            record(grip);
        }
        takeOver();
    }
    if (m_gripsShown) {
        eraseCurrent(); // the entity shows by its grips again
    }
    m_database->setLastPoint(m_exact);
    return true;
}

void CVexCurveTracker::record(int grip)
{
    tagUndoEditEntity edit = transformEdit(m_transform, *m_entity, startPoint(), bandVector(),
                                           bandVector().length() / scalePercent());
    const bool changes = m_transform != VexDb::TransFormNone || recordGrip(grip, edit);
    if (changes && !(edit.editType == kUndoMove && isWithoutWay())) {
        m_database->undoHandler().AddUndo(&edit);
    }
}

void CVexCurveTracker::takeOver()
{
    const bool shown = m_gripsShown;
    if (shown) {
        eraseCurrent();
        UnDrawGripBox();
    }
    *m_entity = *m_current;
    m_entity->setGripPoints();
    if (shown) {
        DrawGripBox(false);
    }
}
