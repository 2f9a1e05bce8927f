// What the popup menu of a polyline does. Each action is one undo step, which the menu opens.

#include "platform/base/vextext.h"
#include "platform/window/cwnd.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexentityedits.h"
#include "vexdb/dbcommand/vexpolylineedits.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbtracker/vexdivided.h"
#include "vexdb/dbtracker/vexpolylinetracker.h"
#include "vexdb/dbtracker/vexpopupmenu.h"

#include <algorithm>
#include <array>

CVexDbEntityTracker::PopupAction CVexPolylineTracker::ownAction(unsigned id) const
{
    struct Row {
        PopupId id;
        PopupEnd (CVexPolylineTracker::*act)(CWnd&, CPoint, int);
    };
    static constexpr std::array kRows = {
        Row{kPopupExplode, &CVexPolylineTracker::explode},
        Row{kPopupChangeStart, &CVexPolylineTracker::changeStart},
        Row{kPopupReverse, &CVexPolylineTracker::reverse},
        Row{kPopupDivide, &CVexPolylineTracker::divide},
        Row{kPopupBreak, &CVexPolylineTracker::breakApart},
        Row{kPopupJoin, &CVexPolylineTracker::join},
        Row{kPopupInsertVertex, &CVexPolylineTracker::insertVertex},
        Row{kPopupDeleteVertex, &CVexPolylineTracker::deleteVertex},
        Row{kPopupLineArc, &CVexPolylineTracker::flipSegment},
    };
    const auto* const row = std::ranges::find(kRows, id, &Row::id);
    const bool acts = row != kRows.end() && m_entity != nullptr && m_entity->IsDbEntity();
    return acts ? static_cast<PopupAction>(row->act) : nullptr;
}

/// Changes the polyline in place; the change records itself.
CVexDbEntityTracker::PopupEnd
CVexPolylineTracker::edit(CWnd& window, const std::function<void(CVexDbPolyline&)>& change)
{
    changeEntity(window, [&](CVexDbEntity& entity) { change(shapeOf(&entity)); });
    return PopupEnd::kStay;
}

/// The same at the vertex of a grip; nothing at the middle of an arc.
CVexDbEntityTracker::PopupEnd
CVexPolylineTracker::editVertex(CWnd& window, int grip,
                                const std::function<void(CVexDbPolyline&, unsigned)>& change)
{
    const auto spot = spotOf(polyline(), grip);
    if (!spot || spot->isMiddle) {
        return PopupEnd::kStay;
    }
    return edit(window, [&](CVexDbPolyline& shape) { change(shape, spot->vertex); });
}

CVexDbEntityTracker::PopupEnd CVexPolylineTracker::explode(CWnd& window, CPoint device, int grip)
{
    polyline().Explode();
    return popupErase(window, device, grip);
}

CVexDbEntityTracker::PopupEnd CVexPolylineTracker::changeStart(CWnd& window, CPoint, int grip)
{
    return editVertex(window, grip, changeStartRecorded);
}

CVexDbEntityTracker::PopupEnd CVexPolylineTracker::reverse(CWnd& window, CPoint, int)
{
    return edit(window, reverseRecorded);
}

CVexDbEntityTracker::PopupEnd CVexPolylineTracker::divide(CWnd& window, CPoint, int grip)
{
    const std::optional<int> parts = askParts(window);
    const auto spot = parts ? spotOf(polyline(), grip) : std::nullopt;
    if (!spot) {
        return PopupEnd::kStay;
    }
    return edit(window, [&](CVexDbPolyline& shape) {
        shape.DivideSegment(std::min(*parts, kMostParts), static_cast<int>(spot->vertex), false);
    });
}

CVexDbEntityTracker::PopupEnd CVexPolylineTracker::breakApart(CWnd& window, CPoint, int grip)
{
    return editVertex(window, grip, [this](CVexDbPolyline& shape, unsigned vertex) {
        addRecorded(m_handler->CommandBreakPolyline(&shape, static_cast<int>(vertex), true));
    });
}

CVexDbEntityTracker::PopupEnd CVexPolylineTracker::join(CWnd& window, CPoint, int)
{
    if (polyline().IsClosed()) {
        MessageBoxW(L"Can not join with Closed Polyline", L"", MB_OK);
        return PopupEnd::kStay;
    }
    VexEntitySet entities;
    const bool any = m_handler->GetEntities(VexDb::PromptSelectEntities, &entities) == InputPoint;
    if (!any || m_entity == nullptr) { // the host may end it while the question waits
        window.Invalidate();
        return PopupEnd::kStay;
    }
    return edit(window, [&](CVexDbPolyline& shape) {
        m_handler->CommandJoinPolyline(&shape, entities, true);
    });
}

CVexDbEntityTracker::PopupEnd CVexPolylineTracker::insertVertex(CWnd& window, CPoint, int grip)
{
    CVexGePoint2d point;
    const int result =
        m_handler->GetGePoint(VexDb::PromptEdgeEnd, point, m_entity->getGripPoint(grip), L'\0');
    const bool placed = isPlaced(result) && m_entity != nullptr;
    const auto spot = placed ? spotOf(polyline(), grip) : std::nullopt;
    if (!spot) {
        return PopupEnd::kStay;
    }
    // Before the grip's vertex; into its arc where the grip is the middle of one.
    const unsigned before = spot->isMiddle ? spot->vertex + 1 : spot->vertex;
    return edit(window, [&](CVexDbPolyline& shape) { insertRecorded(shape, before, point); });
}

CVexDbEntityTracker::PopupEnd CVexPolylineTracker::deleteVertex(CWnd& window, CPoint, int grip)
{
    return editVertex(window, grip, removeRecorded);
}

CVexDbEntityTracker::PopupEnd CVexPolylineTracker::flipSegment(CWnd& window, CPoint, int grip)
{
    const auto spot = spotOf(polyline(), grip);
    if (!spot) {
        return PopupEnd::kStay;
    }
    return edit(window, [&](CVexDbPolyline& shape) { flipRecorded(shape, spot->vertex); });
}
