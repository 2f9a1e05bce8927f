#include "vexdb/dbobject/dbentity/vexdbcuts.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"

namespace {

CVexGePoint2d endOf(const CVexDbLine& line, VexDbCurveEnd end)
{
    return end == kCurveStart ? line.StartPoint() : line.EndPoint();
}

void setStart(CVexDbLine& line, const CVexGePoint2d& start)
{
    line.setStartPoint(start);
}

/// Moves an end to `target`, recorded for undo.
void moveEnd(CVexDbLine& line, VexDbCurveEnd end, const CVexGePoint2d& target)
{
    tagUndoEditEntity edit = undoEditOf(line, kUndoMovePoint);
    edit.index = end;
    edit.point = endOf(line, end);
    edit.vector = target - edit.point;
    recordEdit(line, edit);
    end == kCurveStart ? line.setStartPoint(target) : line.setEndPoint(target);
}

} // namespace

CVexDbEntity* CVexDbLine::Trim(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& cutters, double tol)
{
    const VexDbLineWay way(geLine());
    VexDbCuts cuts(*this, way, cutters, tol);
    return takeOut(*this, cuts.openPieceAt(pick), &moveEnd, &setStart);
}

bool CVexDbLine::Extend(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& boundaries, double tol)
{
    const VexDbCurveEnd end = VexDbLineWay(geLine()).isNearerStart(pick) ? kCurveStart : kCurveEnd;
    const CVexGePoint2d fixed = endOf(*this, end == kCurveStart ? kCurveEnd : kCurveStart);
    const PointList hits = hitsOf(*this, boundaries, CVexGeEntity2d::kExtendThis, tol);
    const CVexGePoint2d* target = nullptr;
    for (const CVexGePoint2d& hit : hits) {
        // What lies on the line does not lengthen it, and at its other end it would have no length.
        const bool counts = isOn(hit, tol) == 0 && fixed.distanceTo(hit) > kGeTol;
        if (counts && (target == nullptr || pick.distanceTo(hit) < pick.distanceTo(*target))) {
            target = &hit;
        }
    }
    if (target == nullptr) {
        return false;
    }
    moveEnd(*this, end, *target);
    return true;
}
