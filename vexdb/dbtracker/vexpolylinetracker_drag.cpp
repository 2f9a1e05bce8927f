// The drag of a vertex or of the middle of an arc: a move strokes the segments that change, off and
// on, and leaves the rest of the picture and of the working copy alone.

#include "platform/device/cdc.h"
#include "vexdb/dbtracker/vexpolylinetracker.h"
#include "vexdb/dbtracker/vexropscope.h"

void CVexPolylineTracker::beginPicture(int grip)
{
    CVexCurveTracker::beginPicture(grip);
    const bool isDrag = !m_createMode && m_transform == VexDb::TransFormNone && grip > 0;
    m_dragged = isDrag && m_current != nullptr ? spotOf(shapeOf(m_current), grip) : std::nullopt;
}

void CVexPolylineTracker::followPointer(int grip)
{
    // The copy has nothing but the last move that the entity has not; the end of the drag shapes it
    // from the entity once more.
    if (!m_dragged || !m_currentShown || !strokeAround(*m_dragged)) {
        CVexCurveTracker::followPointer(grip);
        return;
    }
    CVexDbPolyline& copy = shapeOf(m_current);
    if (m_dragged->isMiddle) {
        bend(copy, m_dragged->vertex);
    } else {
        copy.SetPointAt(m_dragged->vertex, endPoint());
    }
    strokeAround(*m_dragged);
}

/// Strokes of the copy what a change at `spot` changes, as the band is stroked. False when that
/// cannot be told from the rest.
bool CVexPolylineTracker::strokeAround(const Spot& spot)
{
    if (m_dc == nullptr) {
        return false;
    }
    // A straight segment begins where the pen was left by an arc before it: the one behind the
    // changed segments counts, too.
    const unsigned first = spot.isMiddle || spot.vertex == 0 ? spot.vertex : spot.vertex - 1;
    const VexRopScope asBand(m_dc, bandRaster(*m_dc));
    return shapeOf(m_current).DrawSegments(m_dc, first, spot.vertex + 1);
}
