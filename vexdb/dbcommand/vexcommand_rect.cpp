#include "vexdb/dbcommand/vexcreation.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/dbtracker/vexrecttracker.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/gemath/vexgevector2d.h"

CVexDbEntity* CVexCommandHandler::CommandRect(unsigned long& /*step*/)
{
    CVexGePoint2d corner;
    if (!askPoint(VexDb::PromptCornerOne, corner)) {
        return nullptr;
    }
    Creation<CVexDbRect, CVexRectTracker> rect(*this);
    rect->setLeftTop(corner);
    rect->setRightBottom(corner + CVexGeVector2d(1.0, 1.0));
    if (rect.trackPoint(corner, VexDb::PromptOtherCorner) == InputCancel) {
        return nullptr;
    }
    setMsg();
    return rect.handOver();
}
