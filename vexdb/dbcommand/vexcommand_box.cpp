#include "vexdb/dbcommand/vexcreation.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbtracker/vexboxtracker.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/gemath/vexgevector2d.h"

#include <numbers>

namespace {

constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;

/// The second stage of a creation: its tracker turns a box that has its size.
class TurningScope {
public:
    TurningScope(CVexBoxTracker& tracker, CVexDbBox& box) : m_tracker(tracker)
    {
        m_tracker.SetCreateMode(false);
        m_tracker.SetEntity(&box);
        m_tracker.SetTransOpt(VexDb::TransFormRotate);
        m_tracker.SetRotating(1);
    }
    /// The box is no entity of the drawing yet, which the tracker's end would draw there.
    ~TurningScope() { m_tracker.SetCreateMode(true); }
    TurningScope(const TurningScope&) = delete;
    TurningScope& operator=(const TurningScope&) = delete;

private:
    CVexBoxTracker& m_tracker;
};

} // namespace

CVexDbEntity* CVexCommandHandler::CommandBox(unsigned long& /*step*/)
{
    CVexGePoint2d corner;
    if (!askPoint(VexDb::PromptCornerOne, corner)) {
        return nullptr;
    }
    Creation<CVexDbBox, CVexBoxTracker> box(*this);
    box->Set(corner, CVexGeVector2d(1.0, 1.0));
    const int sized = box.track(corner, VexDb::PromptOtherCorner);
    switch (sized) {
    case InputCancel: return nullptr;
    case InputPoint: box.tracker().DrawOrgEntity(); break; // off the screen: the turning shows it
    case InputTypedPoint: box->SetDiagonalPoint(m_database->lastPoint()); break;
    case InputNumber: noteAnswer(InputString); break; // a number alone names no corner
    default: break;
    }
    const TurningScope turning(box.tracker(), box.entity());
    const CVexDbBox asSized(box.entity());
    const int turned = box.track(corner, VexDb::PromptStartRotation);
    if (turned == InputCancel) {
        return nullptr;
    }
    if (turned == InputEnter) {
        box.entity() = asSized; // whatever the pointer did meanwhile
    } else if (turned == InputTypedPoint) {
        box->RotateBy((m_database->lastPoint() - corner).angle(), corner);
    } else if (const auto degrees = box.typedNumber(turned); degrees) {
        box->RotateBy(*degrees * kRadiansPerDegree, corner);
    }
    box.showAnew();
    setMsg();
    return box.handOver();
}
