#include "platform/base/vextext.h"
#include "platform/window/cwnd.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"
#include "vexdb/dbtracker/vexpopupmenu.h"
#include "vexdb/dbtracker/vextransformedit.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <array>
#include <memory>
#include <numbers>

namespace {

constexpr int kTrackerGone = -1;
/// Length of the mirror line along an axis, logical units.
constexpr int kAxisLength = 100;

PopupMenuIndex menuOf(CVexDbEntityTracker::TrackerType type)
{
    switch (type) {
    case CVexDbEntityTracker::TrackerPolyline:
    case CVexDbEntityTracker::TrackerSpline: return kPopupPolyline;
    case CVexDbEntityTracker::TrackerCSpline: return kPopupCSpline;
    case CVexDbEntityTracker::TrackerText: return kPopupText;
    case CVexDbEntityTracker::TrackerHatch: return kPopupHatch;
    default: return kPopupEntity;
    }
}

void recordEdit(CVexDbDatabase& database, const CVexDbEntity& entity, UndoEditType type)
{
    tagUndoEditEntity edit;
    edit.editType = type;
    edit.entity = entity.objectId();
    database.undoHandler().AddUndo(&edit);
}

} // namespace

/// What a row does, and whom it is offered to. A row that only some kinds can act on has no action
/// here: it is theirs, and for all others it stands in the menu, greyed.
struct CVexDbEntityTracker::PopupRow {
    using Rule = bool (*)(const CVexDbEntityTracker&);

    unsigned id;
    PopupAction act;
    Rule allows;

    static bool always(const CVexDbEntityTracker&) { return true; }
    /// A temporary entity is looked at and let go, nothing more.
    static bool inDrawing(const CVexDbEntityTracker& tracker)
    {
        return tracker.m_entity != nullptr && tracker.m_entity->IsDbEntity();
    }
    static bool divides(const CVexDbEntityTracker& tracker)
    {
        const TrackerType type = tracker.m_type;
        const bool ofKind = type == TrackerArc || type == TrackerLine || type == TrackerCircle ||
                            type == TrackerPolyline;
        return ofKind && tracker.canDivide() && inDrawing(tracker);
    }
    static bool explodes(const CVexDbEntityTracker& tracker)
    {
        return menuOf(tracker.m_type) != kPopupEntity || tracker.m_type == TrackerBlockInsert;
    }
    static bool isPolyline(const CVexDbEntityTracker& tracker)
    {
        return tracker.m_type == TrackerPolyline;
    }
    static bool flipsVertex(const CVexDbEntityTracker& tracker)
    {
        return tracker.m_type == TrackerPolyline || tracker.m_type == TrackerCSpline;
    }
    static bool isSpline(const CVexDbEntityTracker& tracker)
    {
        return tracker.m_type == TrackerSpline;
    }
};

const CVexDbEntityTracker::PopupRow* CVexDbEntityTracker::popupRow(unsigned id)
{
    static constexpr std::array kRows = {
        PopupRow{kPopupUnSelect, &CVexDbEntityTracker::popupUnSelect, &PopupRow::always},
        PopupRow{kPopupCopy, &CVexDbEntityTracker::popupCopy, &PopupRow::inDrawing},
        PopupRow{kPopupMove, &CVexDbEntityTracker::popupMove, &PopupRow::inDrawing},
        PopupRow{kPopupRotate, &CVexDbEntityTracker::popupRotate, &PopupRow::inDrawing},
        PopupRow{kPopupScale, &CVexDbEntityTracker::popupScale, &PopupRow::inDrawing},
        PopupRow{kPopupMirrorX, &CVexDbEntityTracker::popupMirrorX, &PopupRow::inDrawing},
        PopupRow{kPopupMirrorY, &CVexDbEntityTracker::popupMirrorY, &PopupRow::inDrawing},
        PopupRow{kPopupMirrorLine, &CVexDbEntityTracker::popupMirrorLine, &PopupRow::inDrawing},
        PopupRow{kPopupExplode, nullptr, &PopupRow::explodes},
        PopupRow{kPopupErase, &CVexDbEntityTracker::popupErase, &PopupRow::inDrawing},
        PopupRow{kPopupChangeStart, nullptr, &PopupRow::always},
        PopupRow{kPopupReverse, nullptr, &PopupRow::always},
        PopupRow{kPopupDivide, &CVexDbEntityTracker::popupDivide, &PopupRow::divides},
        PopupRow{kPopupBreak, nullptr, &PopupRow::isPolyline},
        PopupRow{kPopupJoin, nullptr, &PopupRow::isPolyline},
        PopupRow{kPopupInsertVertex, nullptr, &PopupRow::always},
        PopupRow{kPopupDeleteVertex, nullptr, &PopupRow::always},
        PopupRow{kPopupLineArc, nullptr, &PopupRow::flipsVertex},
        PopupRow{kPopupChangeParam, nullptr, &PopupRow::isSpline},
        PopupRow{kPopupHatchProperties, nullptr, &PopupRow::always},
        PopupRow{kPopupTextProperties, nullptr, &PopupRow::always},
    };
    const auto* const row = std::ranges::find(kRows, id, &PopupRow::id);
    return row == kRows.end() ? nullptr : row;
}

CVexDbEntityTracker::PopupAction CVexDbEntityTracker::actionOf(const PopupRow& row) const
{
    const PopupAction own = ownAction(row.id);
    return own != nullptr ? own : row.act;
}

bool CVexDbEntityTracker::canAct(const PopupRow& row) const
{
    return actionOf(row) != nullptr && row.allows(*this);
}

int CVexDbEntityTracker::TrackMenu(CWnd* window, CPoint device)
{
    const int grip = HitTest(device);
    if (grip < 0 || window == nullptr || m_handler == nullptr || m_handler->isBusy()) {
        return 0;
    }
    const VexBusyScope busy(*m_handler); // its end may free this tracker
    return TrackMenuHandle(window, device, grip);
}

int CVexDbEntityTracker::TrackMenuHandle(CWnd* window, CPoint point, int grip)
{
    m_popup = m_Menu.GetSubMenu(menuOf(m_type));
    if (m_popup == nullptr || m_database == nullptr) {
        return 0;
    }
    for (const CMenu::Item& item : std::vector(m_popup->items())) {
        const PopupRow* const row = popupRow(item.id);
        m_popup->EnableMenuItem(item.id, row != nullptr && canAct(*row));
    }
    const unsigned id = m_popup->TrackPopupMenu(window->ClientToScreen(point), window);
    const PopupRow* const row = popupRow(id);
    if (row == nullptr || !canAct(*row)) {
        return 0;
    }
    const VexUndoGroup step(m_database->undoHandler());
    if ((this->*actionOf(*row))(*window, point, grip) == PopupEnd::kGone) {
        return kTrackerGone;
    }
    m_handler->SetPrompt(VexDb::PromptNone);
    return static_cast<int>(id);
}

CVexDbEntityTracker::PopupEnd CVexDbEntityTracker::popupUnSelect(CWnd&, CPoint, int)
{
    return PopupEnd::kGone; // the host removes the tracker
}

int CVexDbEntityTracker::trackFrom(CWnd& window, CPoint device, const CVexGePoint2d& base,
                                   VexDb::TransFormOption option, int prompt)
{
    m_transform = option;
    SetStartPoint(base, true);
    m_handler->SetPrompt(prompt);
    const int result = Track(&window, device, -1);
    if (result == InputTypedPoint) {
        commitAt(m_result.value.point);
    }
    const bool byNumber = option == VexDb::TransFormRotate || option == VexDb::TransFormScale;
    if (result == InputNumber && !byNumber) {
        m_handler->noteAnswer(InputString); // a number alone names no target
    }
    m_transform = VexDb::TransFormNone;
    window.Invalidate();
    return result;
}

void CVexDbEntityTracker::commitAt(const CVexGePoint2d& point)
{
    SetPos(point);
    dropCurrent();
    m_current = m_entity != nullptr ? CopyEntity(m_entity) : nullptr;
    if (ControlEnd(-1)) {
        m_entity->OnCurveChanged();
    }
    eraseCurrent();
    dropCurrent();
}

std::optional<double> CVexDbEntityTracker::typedNumber(int result) const
{
    switch (result) {
    case InputNumber: return m_result.value.number;
    case InputString: return toNumber(m_result.value.text);
    default: return std::nullopt;
    }
}

void CVexDbEntityTracker::changeEntity(CWnd& window, const tagUndoEditEntity& edit,
                                       const std::function<void(CVexDbEntity&)>& change)
{
    changeEntity(window, [&](CVexDbEntity& entity) {
        m_database->undoHandler().AddUndo(&edit);
        change(entity);
    });
}

void CVexDbEntityTracker::changeEntity(CWnd& window,
                                       const std::function<void(CVexDbEntity&)>& change)
{
    const bool shown = m_gripsShown;
    UnDrawGripBox();
    change(*m_entity);
    m_entity->setGripPoints();
    m_entity->OnCurveChanged();
    if (shown) {
        DrawGripBox(false);
    }
    window.Invalidate();
}

CVexDbEntityTracker::PopupEnd CVexDbEntityTracker::popupCopy(CWnd& window, CPoint device, int grip)
{
    const CVexGePoint2d base = m_entity->getGripPoint(grip);
    std::unique_ptr<CVexDbEntity> copy(CopyEntity(m_entity));
    std::unique_ptr<CVexDbEntityTracker> follower(
        m_handler->CreateTracker(&window, copy.get(), VexDb::TransFormCopy, false));
    if (follower == nullptr) {
        return PopupEnd::kStay;
    }
    const int result =
        follower->trackFrom(window, device, base, VexDb::TransFormCopy, VexDb::PromptNextPoint);
    follower.reset();
    if (result == InputPoint || result == InputTypedPoint) {
        CVexDbObjectId id;
        m_database->addEntity(copy.get(), id);
        recordEdit(*m_database, *copy.release(), kUndoCreate);
    }
    window.Invalidate();
    return PopupEnd::kStay;
}

CVexDbEntityTracker::PopupEnd CVexDbEntityTracker::popupMove(CWnd& window, CPoint device, int grip)
{
    trackFrom(window, device, m_entity->getGripPoint(grip), VexDb::TransFormMove,
              VexDb::PromptNextPoint);
    return PopupEnd::kStay;
}

CVexDbEntityTracker::PopupEnd CVexDbEntityTracker::popupRotate(CWnd& window, CPoint device,
                                                               int grip)
{
    const CVexGePoint2d base = m_entity->getGripPoint(grip);
    const auto degrees =
        typedNumber(trackFrom(window, device, base, VexDb::TransFormRotate, VexDb::PromptRotation));
    if (degrees && *degrees != 0.0) {
        const CVexGeVector2d direction(*degrees * std::numbers::pi / 180.0);
        changeEntity(window, transformEdit(VexDb::TransFormRotate, *m_entity, base, direction, 1.0),
                     [&](CVexDbEntity& entity) { entity.RotateBy(direction.angle(), base); });
    }
    return PopupEnd::kStay;
}

CVexDbEntityTracker::PopupEnd CVexDbEntityTracker::popupScale(CWnd& window, CPoint device, int grip)
{
    const CVexGePoint2d base = m_entity->getGripPoint(grip);
    const auto factor = typedNumber(
        trackFrom(window, device, base, VexDb::TransFormScale, VexDb::PromptScaleFactor));
    if (factor && *factor > 0.0) {
        changeEntity(window, transformEdit(VexDb::TransFormScale, *m_entity, base, {}, *factor),
                     [&](CVexDbEntity& entity) { entity.ScaleBy(*factor, base); });
    }
    return PopupEnd::kStay;
}

CVexDbEntityTracker::PopupEnd CVexDbEntityTracker::mirrorAlong(CWnd& window, CPoint direction,
                                                               int grip)
{
    const CVexGePoint2d base = m_entity->getGripPoint(grip);
    SetStartPoint(base, false);
    SetPos(base + CVexGeVector2d(direction.x / _dDispScale, direction.y / _dDispScale));
    changeEntity(window, transformEdit(VexDb::TransFormMirror, *m_entity, base, bandVector(), 1.0),
                 [this](CVexDbEntity& entity) { MirrorEntity(&entity); });
    return PopupEnd::kStay;
}

CVexDbEntityTracker::PopupEnd CVexDbEntityTracker::popupMirrorX(CWnd& window, CPoint, int grip)
{
    return mirrorAlong(window, {kAxisLength, 0}, grip);
}

CVexDbEntityTracker::PopupEnd CVexDbEntityTracker::popupMirrorY(CWnd& window, CPoint, int grip)
{
    return mirrorAlong(window, {0, kAxisLength}, grip);
}

CVexDbEntityTracker::PopupEnd CVexDbEntityTracker::popupMirrorLine(CWnd& window, CPoint device,
                                                                   int grip)
{
    trackFrom(window, device, m_entity->getGripPoint(grip), VexDb::TransFormMirror,
              VexDb::PromptEdgeEnd);
    return PopupEnd::kStay;
}

CVexDbEntityTracker::PopupEnd CVexDbEntityTracker::popupErase(CWnd& window, CPoint, int)
{
    UnDrawGripBox();
    recordEdit(*m_database, *m_entity, kUndoErase);
    m_entity->setErased(); // takes this tracker out of the selection
    window.Invalidate();
    return PopupEnd::kGone;
}

std::optional<int> CVexDbEntityTracker::askParts(CWnd& window) const
{
    CString text;
    const bool answered = CVexBackend::current().askForText(&window, L"Number of Divide:", text);
    const int parts = toInteger(text.str());
    const bool divides = answered && parts >= 1 && m_entity != nullptr;
    return divides ? std::optional(parts) : std::nullopt;
}

CVexDbEntityTracker::PopupEnd CVexDbEntityTracker::popupDivide(CWnd& window, CPoint, int)
{
    const std::optional<int> parts = askParts(window);
    CVexDbEntity* const divided = parts ? makeDivided(*parts) : nullptr;
    if (divided == nullptr) {
        return PopupEnd::kStay;
    }
    CVexDbObjectId id;
    m_database->addEntity(divided, id);
    recordEdit(*m_database, *divided, kUndoCreate);
    CVexCommandHandler& handler = *m_handler;
    popupErase(window, {}, -1);
    handler.DoDragEntity(divided, {});
    return PopupEnd::kGone;
}
