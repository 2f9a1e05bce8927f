#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbtracker/vexlinetracker.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/gemath/vexgevector2d.h"

CVexDbEntity* CVexCommandHandler::CommandLine(unsigned long& step)
{
    // A step other than 0 chains: the new line starts where the last one ended.
    CVexGePoint2d start = m_database->lastPoint();
    if (step == 0 && (GetGePoint(VexDb::PromptStartPoint, start) != InputPoint || isInputLost())) {
        return nullptr;
    }
    m_database->setLastPoint(start);
    auto line = std::make_unique<CVexDbLine>(m_database);
    line->setStartPoint(start);
    line->setEndPoint(start + CVexGeVector2d(1.0, 1.0)); // not degenerate until the first move
    CVexLineTracker tracker(m_display, line.get(), VexDb::TransFormNone, true);
    const int result = trackFrom(tracker, start, VexDb::PromptEndPoint);
    if (result == InputCancel || result == InputLost) {
        return nullptr;
    }
    if (result == InputNumber) {
        noteAnswer(InputString); // a number alone names no end point
    }
    if (result == InputTypedPoint) {
        line->setEndPoint(m_database->lastPoint());
        tracker.DrawOrgEntity();
    }
    setLastEntity(line.get());
    return line.release();
}
