#include "vexdb/dbcommand/vexcreation.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbtracker/vexlinetracker.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/gemath/vexgevector2d.h"

CVexDbEntity* CVexCommandHandler::CommandLine(unsigned long& step)
{
    // A step other than 0 chains: the new line starts where the last one ended.
    CVexGePoint2d start = m_database->lastPoint();
    if (step == 0 && !askPoint(VexDb::PromptStartPoint, start)) {
        return nullptr;
    }
    m_database->setLastPoint(start);
    Creation<CVexDbLine, CVexLineTracker> line(*this);
    line->setStartPoint(start);
    line->setEndPoint(start + CVexGeVector2d(1.0, 1.0)); // not degenerate until the first move
    if (line.trackPoint(start, VexDb::PromptEndPoint) == InputCancel) {
        return nullptr;
    }
    return line.handOver();
}
