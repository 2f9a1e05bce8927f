// What each class of entity does with its own edits.

#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbcommand/vexundotransform.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"

namespace {

constexpr int kFirstPoint = 0; // the index of a line's start and of a rectangle's left top

} // namespace

bool CVexUndoHandler::MakeUndoLine()
{
    return classifyAs(VexDb::kLine);
}

bool CVexUndoHandler::UndoLine(bool /*redo*/)
{
    auto& line = subject<CVexDbLine>();
    if (m_current.editType == kUndoMovePoint) {
        const bool isStart = m_current.index == kFirstPoint;
        CVexGePoint2d end = isStart ? line.StartPoint() : line.EndPoint();
        end -= m_current.vector;
        isStart ? line.setStartPoint(end) : line.setEndPoint(end);
        m_current.vector.negate();
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
