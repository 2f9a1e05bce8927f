#include "vexdb/dbtracker/vexlinetracker.h"

#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"

namespace {

constexpr int kMiddle = 0; // the grips, in their order
constexpr int kStart = 1;
constexpr int kEnd = 2;

CVexGePoint2d endOf(const CVexDbEntity* line, int grip)
{
    const auto* of = static_cast<const CVexDbLine*>(line);
    return grip == kStart ? of->StartPoint() : of->EndPoint();
}

} // namespace

CVexLineTracker::CVexLineTracker(CWnd* window, CVexDbEntity* line, VexDb::TransFormOption option,
                                 bool createMode)
    : CVexCurveTracker(window, line, option, createMode)
{
    m_type = TrackerLine;
}

void CVexLineTracker::UpdateEntity(CVexDbEntity* copy, int grip)
{
    auto* const line = static_cast<CVexDbLine*>(copy);
    switch (grip) {
    case kMiddle: MoveEntity(copy); break;
    case kStart: line->setStartPoint(endPoint()); break;
    case kEnd: line->setEndPoint(endPoint()); break;
    default: break;
    }
}

void CVexLineTracker::CheckCreateOption(CVexDbEntity* copy, CPoint& /*position*/)
{
    static_cast<CVexDbLine*>(copy)->setEndPoint(endPoint());
}

void CVexLineTracker::recordGrip(int grip, tagUndoEditEntity& edit)
{
    if (grip == kMiddle) {
        return; // moved by the band, as it is filled in already
    }
    // The way of the end and not of the band: the press need not have met the grip's centre.
    edit.editType = kUndoMovePoint;
    edit.index = grip == kStart ? 0 : 1;
    edit.vector = endOf(m_current, grip) - endOf(m_entity, grip);
}
