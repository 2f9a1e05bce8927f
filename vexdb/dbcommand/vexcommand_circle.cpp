#include "vexdb/dbcommand/vexcreation.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbtracker/vexcircletracker.h"
#include "vexdb/vexdbdatabase.h"

CVexDbEntity* CVexCommandHandler::CommandCircle(unsigned long& /*step*/)
{
    CVexGePoint2d center;
    if (!askPoint(VexDb::PromptCenterPoint, center)) {
        return nullptr;
    }
    Creation<CVexDbCircle, CVexCircleTracker> circle(*this);
    circle->setCenter(center);
    circle->setRadius(1.0);
    const int result = circle.track(center, VexDb::PromptRadius);
    if (result == InputCancel) {
        return nullptr;
    }
    // The prompt asks for a length: a point typed in its place says nothing of one, nor does a
    // number that is not above 0, and the circle keeps the radius that it began with. Who types
    // means a radius; through a point goes a circle by a click or a snap.
    const double radius = circle.typedNumber(result).value_or(0.0);
    if (radius > 0.0) {
        circle->setRadius(radius);
        circle.showAnew();
    } else if (result != InputPoint && result != InputString) { // a text is refused by its prompt
        countRefusal();
    }
    setMsg();
    return circle.handOver();
}
