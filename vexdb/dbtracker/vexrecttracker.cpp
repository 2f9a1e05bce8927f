#include "vexdb/dbtracker/vexrecttracker.h"

#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/dbentity/vexdbpenframe.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/dbtracker/vexexactly.h"
#include "vexdb/dbtracker/vexropscope.h"

#include <algorithm>
#include <array>

namespace {

constexpr int kMiddle = 0; // the grip that moves
constexpr int kFirstCorner = 5;
constexpr int kGripCount = 9;

/// The sides that a grip drags: -1 for left or top, 1 for right or bottom, 0 for neither.
struct Pull {
    int across;
    int down;
};
constexpr std::array<Pull, kGripCount> kPulls = {{
    {0, 0},
    {0, 1},
    {1, 0},
    {0, -1},
    {-1, 0}, // middle, then the sides
    {-1, 1},
    {1, 1},
    {1, -1},
    {-1, -1}, // the corners
}};

/// A scaling about the side or corner opposite, by the new extent over the old one. The sides go
/// where the point is instead of being multiplied, so that a snapped one meets its target exactly
/// and one without extent can be pulled open.
void scaleTo(CVexDbRect& rect, int grip, const CVexGePoint2d& point)
{
    if (grip < 0 || grip >= kGripCount) {
        return;
    }
    const Pull pull = kPulls[static_cast<std::size_t>(grip)];
    CVexGePoint2d leftTop = rect.LeftTop();
    CVexGePoint2d rightBottom = rect.RightBottom();
    if (pull.across != 0) {
        (pull.across < 0 ? leftTop : rightBottom).x = point.x;
    }
    if (pull.down != 0) {
        (pull.down < 0 ? leftTop : rightBottom).y = point.y;
    }
    rect.setLeftTop(leftTop);
    rect.setRightBottom(rightBottom);
}

} // namespace

void CVexRectTracker::UpdateEntity(CVexDbEntity* copy, int grip)
{
    if (grip == kMiddle) {
        MoveEntity(copy);
    } else if (grip < kFirstCorner) {
        scaleTo(shapeOf(copy), grip, endPoint());
    } else {
        ScaleEntity(copy, grip);
    }
}

void CVexRectTracker::ScaleEntity(CVexDbEntity* copy, int grip)
{
    scaleTo(shapeOf(copy), grip, endPoint());
}

void CVexRectTracker::CheckCreateOption(CVexDbEntity* copy, CPoint& /*position*/)
{
    const CVexGePoint2d from = startPoint();
    const CVexGePoint2d to = endPoint();
    CVexDbRect& rect = shapeOf(copy);
    rect.setLeftTop({std::min(from.x, to.x), std::min(from.y, to.y)});
    rect.setRightBottom({std::max(from.x, to.x), std::max(from.y, to.y)});
}

void CVexRectTracker::DrawCurrent()
{
    if (m_dc == nullptr || m_current == nullptr) {
        return;
    }
    m_frame.setSize(4); // empties it
    shapeOf(m_current).getPolyline(m_frame);
    std::vector<CPoint> outline;
    for (const CVexGePoint2d& corner : m_frame.vertices()) {
        outline.push_back(toLogical(corner));
    }
    outline.push_back(outline.front());
    const VexRopScope asBand(m_dc, bandRaster(*m_dc));
    if (const CVexDbPenFrame pen(*m_current, m_dc); pen) {
        m_dc->Polyline(outline); // in one stroke: two that meet in XOR leave a hole
    }
}

bool CVexRectTracker::recordGrip(int grip, tagUndoEditEntity& edit)
{
    if (grip == kMiddle) {
        return true; // moved by the band, as it is filled in already
    }
    const CVexDbRect& before = shapeOf(m_entity);
    const CVexDbRect& after = shapeOf(m_current);
    edit.editType = kUndoChangeSize;
    edit.point = before.LeftTop();
    edit.vector = before.RightBottom().asVector();
    return !isSame(before.LeftTop(), after.LeftTop()) ||
           !isSame(before.RightBottom(), after.RightBottom());
}
