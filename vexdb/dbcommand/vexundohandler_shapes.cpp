// What each class of entity does with its own edits.

#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbcommand/vexundotransform.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"

#include <cmath>
#include <numbers>

namespace {

// The index of a line's or arc's start and of a rectangle's left top.
constexpr int kFirstPoint = 0;

/// What a direction loses of its angle by rounding, radians.
constexpr double kAngleRounding = 1e-9;

/// The angle that a record keeps: that of its direction, to the bit and with all its turns where
/// the number itself stands beside it.
double keptAngle(const tagUndoEditEntity& edit)
{
    const double angle = edit.vector.angle();
    const double off = std::remainder(edit.point.x - angle, 2.0 * std::numbers::pi);
    return std::fabs(off) <= kAngleRounding ? edit.point.x : angle;
}

void swapAngle(CVexDbArc& arc, tagUndoEditEntity& edit)
{
    const bool isStart = edit.index == kFirstPoint;
    const double before = keptAngle(edit);
    const double now = isStart ? arc.StartAngle() : arc.EndAngle();
    // Not by the setters of one angle, which add a turn to a negative one.
    arc.set(arc.Center(), arc.Radius(), isStart ? before : arc.StartAngle(),
            isStart ? arc.EndAngle() : before);
    edit.vector = CVexGeVector2d(now);
    edit.point.x = now;
}

template <class Round>
void swapRadius(Round& entity, tagUndoEditEntity& edit)
{
    const double now = entity.Radius();
    entity.setRadius(edit.vector.x);
    edit.vector.x = now;
}

} // namespace

bool CVexUndoHandler::MakeUndoArc()
{
    return classifyAs(VexDb::kArc);
}

bool CVexUndoHandler::UndoArc(bool /*redo*/)
{
    auto& arc = subject<CVexDbArc>();
    switch (m_current.editType) {
    case kUndoChangeAngle: swapAngle(arc, m_current); break;
    case kUndoChangeSize: swapRadius(arc, m_current); break;
    default: break;
    }
    arc.setGripPoints();
    return true;
}

bool CVexUndoHandler::MakeUndoCircle()
{
    return classifyAs(VexDb::kCircle);
}

bool CVexUndoHandler::UndoCircle(bool /*redo*/)
{
    auto& circle = subject<CVexDbCircle>();
    if (m_current.editType == kUndoChangeSize) {
        swapRadius(circle, m_current);
    }
    circle.setGripPoints();
    return true;
}

bool CVexUndoHandler::MakeUndoLine()
{
    return classifyAs(VexDb::kLine);
}

bool CVexUndoHandler::UndoLine(bool /*redo*/)
{
    auto& line = subject<CVexDbLine>();
    if (m_current.editType == kUndoMovePoint) {
        const bool isStart = m_current.index == kFirstPoint;
        const CVexGePoint2d now = isStart ? line.StartPoint() : line.EndPoint();
        CVexGePoint2d before = now - m_current.vector;
        if (before == m_current.point) { // by the points' own test, which forgives rounding
            before = m_current.point;
        }
        isStart ? line.setStartPoint(before) : line.setEndPoint(before);
        m_current.vector.negate();
        m_current.point = now;
    }
    line.setGripPoints();
    return true;
}

bool CVexUndoHandler::MakeUndoBox()
{
    return classifyAs(VexDb::kBox);
}

bool CVexUndoHandler::UndoBox(bool /*redo*/)
{
    auto& box = subject<CVexDbBox>();
    if (m_current.editType == kUndoMovePoint) {
        const CVexGeVector2d size(box.Width(), box.Height());
        // By the diagonal: width and height alone would put that of a turned box upright.
        box.Set(box.BasePoint(), m_current.vector, box.Rotation());
        m_current.vector = size;
    }
    box.setGripPoints();
    return true;
}

bool CVexUndoHandler::MakeUndoRect()
{
    return classifyAs(VexDb::kRectangle);
}

bool CVexUndoHandler::UndoRect(bool redo)
{
    auto& rect = subject<CVexDbRect>();
    const CVexGePoint2d leftTop = rect.LeftTop();
    const CVexGePoint2d rightBottom = rect.RightBottom();
    switch (m_current.editType) {
    case kUndoChangeSize:
        rect.setLeftTop(m_current.point);
        rect.setRightBottom(CVexGePoint2d(m_current.vector.x, m_current.vector.y));
        m_current.point = leftTop;
        m_current.vector = rightBottom.asVector();
        break;
    case kUndoMovePoint:
        if (m_current.index == kFirstPoint) {
            rect.setLeftTop(m_current.point);
            m_current.point = leftTop;
        } else {
            rect.setRightBottom(m_current.point);
            m_current.point = rightBottom;
        }
        break;
    default: undoOwnTransform(rect, m_current, redo); break;
    }
    rect.setGripPoints();
    return true;
}
