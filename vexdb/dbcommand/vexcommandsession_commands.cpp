#include "platform/window/cwnd.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexcommandsession.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/dbtracker/vexarctracker.h"
#include "vexdb/dbtracker/vexdbdisplaytrecker.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

/// A host number that runs a drawing command with a mode word of its own.
struct Variant {
    unsigned long number;
    VexDb::CommandID id;
    unsigned long step;
};

constexpr unsigned long kAlignedDimension = 2;
constexpr unsigned long kLastDimension = 10;

constexpr std::array kVariants = {
    Variant{kHostArcContinue, VexDb::CmdArc, CVexArcTracker::kTangent},
    Variant{kHostArcThreePoints, VexDb::CmdArc, CVexArcTracker::kThreePoints},
    Variant{kHostArcCenter, VexDb::CmdArc, CVexArcTracker::kEndAngle},
    Variant{kHostArcRadius, VexDb::CmdArc, CVexArcTracker::kEndAngleByRadius},
    Variant{hostNumberOf(VexDb::CmdDim), VexDb::CmdDim, kAlignedDimension},
};

/// The drawing command of a host number and its mode word; none for the program's own numbers.
std::optional<Variant> drawingOf(unsigned long number)
{
    const auto row = std::ranges::find(kVariants, number, &Variant::number);
    if (row != kVariants.end()) {
        return *row;
    }
    if (number > kHostDimensionFirst && number <= kHostDimensionFirst + kLastDimension) {
        return Variant{number, VexDb::CmdDim, number - kHostDimensionFirst};
    }
    if (number > kHostDrawingFirst && number <= hostNumberOf(VexDb::CmdPolylineEdit)) {
        return Variant{number, static_cast<VexDb::CommandID>(number - kHostDrawingFirst), 0};
    }
    return std::nullopt;
}

/// What may happen while an input waits: the view and the switches change nothing that it holds.
bool isTransparent(unsigned long number)
{
    return (number >= kHostZoomExtents && number <= kHostZoomPrevious) || number == kHostRedraw ||
           (number >= kHostGrid && number <= kHostGripSnap);
}

/// A switch of the drawing's settings.
struct Setting {
    unsigned long number;
    bool VexDbDrawingSettings_tag::*field;
    const wchar_t* name;
};

constexpr std::array kSettings = {
    Setting{kHostGrid, &VexDbDrawingSettings_tag::m_bGridVisible, L"Grid"},
    Setting{kHostGridSnap, &VexDbDrawingSettings_tag::m_bGridSnap, L"Grid snap"},
    Setting{kHostOrtho, &VexDbDrawingSettings_tag::m_bOrtho, L"Ortho"},
    Setting{kHostGripSnap, &VexDbDrawingSettings_tag::m_bGripSnap, L"Grip snap"},
};

} // namespace

void CVexCommandSession::command(unsigned long number)
{
    if (handler().isBusy() && !isTransparent(number)) {
        whenIdle([this, number] { start(number); });
        return;
    }
    if (!run(number)) {
        CString text;
        text.Format(L"Command %u is not available here.", number);
        say(text);
        handler().countRefusal();
    }
}

bool CVexCommandSession::run(unsigned long number)
{
    if (const std::optional<Variant> drawing = drawingOf(number); drawing) {
        return runDrawing(drawing->id, drawing->step);
    }
    m_quitAsked = m_quitAsked || number == kHostQuit;
    return runEdit(number) || toggleSetting(number) || runView(number) ||
           (m_host != nullptr && m_host->onHostCommand(number));
}

bool CVexCommandSession::runDrawing(VexDb::CommandID id, unsigned long step)
{
    if (id == VexDb::CmdErase && eraseSelected()) {
        return true; // what was selected first needs no further question
    }
    if (id == VexDb::CmdLine) {
        drawLines(step);
    } else {
        addResult(handler().DoCommand(id, step));
    }
    finish();
    return true;
}

// One segment behind the other, each begun where the last one ended, until one is cancelled or
// something else wants to run.
void CVexCommandSession::drawLines(unsigned long step)
{
    while (CVexDbEntity* segment = handler().DoCommand(VexDb::CmdLine, step)) {
        addResult(segment);
        flushLine();
        redraw();
        m_database.setLastPoint(static_cast<CVexDbLine*>(segment)->EndPoint());
        if (!m_kept.empty()) {
            return;
        }
        step = 1;
    }
}

void CVexCommandSession::addResult(CVexDbEntity* entity)
{
    // Commands that edit add and record by themselves; what they give back stands there already.
    if (entity == nullptr || entity->IsDbEntity()) {
        return;
    }
    CVexDbObjectId id;
    m_database.addEntity(entity, id);
    tagUndoEditEntity edit;
    edit.continues = false;
    edit.editType = kUndoCreate;
    edit.entity = id;
    m_database.undoHandler().AddUndo(&edit);
}

bool CVexCommandSession::runEdit(unsigned long number)
{
    switch (number) {
    case kHostUndo: undo(); return true;
    case kHostRedo: redo(); return true;
    case kHostSelectAll: selectAll(); return true;
    case kHostClearSelection: clearSelection(); return true;
    case kHostOffset:
        offsetCurves();
        finish();
        return true;
    case kHostFill:
        fillOutlines();
        finish();
        return true;
    default: return false;
    }
}

void CVexCommandSession::undo()
{
    if (handler().isBusy()) {
        return;
    }
    if (!m_database.undoHandler().Undo()) {
        say(L"Nothing to undo.");
    }
    finish();
}

void CVexCommandSession::redo()
{
    if (handler().isBusy()) {
        return;
    }
    if (!m_database.undoHandler().Redo()) {
        say(L"Nothing to redo.");
    }
    finish();
}

bool CVexCommandSession::eraseSelected()
{
    const std::size_t count = handler().selectedEntities().size();
    if (handler().isBusy() || count == 0) {
        return false;
    }
    unsigned long step = 0;
    handler().DoCommand(VexDb::CmdErase, step); // of what is selected, without a question
    CString text;
    text.Format(L"Erased: %u.", count);
    say(text);
    finish();
    return true;
}

void CVexCommandSession::selectAll()
{
    if (handler().isBusy()) {
        return;
    }
    handler().ClearTracker(true);
    for (const CVexDbObjectId& id : *m_database.displays().getCurrentRecord()->displayedIdSet()) {
        if (id.getPObject()->isVisiable()) {
            handler().DoDragEntity(static_cast<CVexDbEntity*>(id.getPObject()), CPoint());
        }
    }
    finish();
}

void CVexCommandSession::clearSelection()
{
    if (handler().isBusy() || handler().trackers().empty()) {
        return;
    }
    handler().ClearTracker(true);
    finish();
}

bool CVexCommandSession::setLayer(const CString& name)
{
    CVexDbLayerTableRecord* layer = nullptr;
    if (!m_database.layers().getRecord(name, layer, false)) {
        return false;
    }
    m_database.setCurrentLayer(layer->objectId());
    if (m_host != nullptr) {
        m_host->onChanged();
    }
    return true;
}

bool CVexCommandSession::toggleSetting(unsigned long number)
{
    const auto row = std::ranges::find(kSettings, number, &Setting::number);
    if (row == kSettings.end()) {
        return false;
    }
    bool& value = m_database.settings().*(row->field);
    value = !value;
    say(CString(row->name) + (value ? L": on" : L": off"));
    if (number == kHostGrid) {
        redraw();
    }
    if (m_host != nullptr) {
        m_host->onChanged();
    }
    return true;
}

bool CVexCommandSession::runView(unsigned long number)
{
    CVexDbDisplayTableRecord* const view = m_database.displays().getCurrentRecord();
    if (view == nullptr || number < kHostZoomExtents || number > kHostRedraw) {
        return false;
    }
    if (number == kHostZoomWindow) {
        trackView(L'W');
    } else if (number == kHostPan) {
        trackView(L'P');
    } else {
        zoomTo(number);
    }
    return true;
}

void CVexCommandSession::zoomTo(unsigned long number)
{
    CVexDbDisplayTableRecord& view = *m_database.displays().getCurrentRecord();
    CDC* const dc = view.GetCurrentDC();
    switch (number) {
    case kHostZoomIn: view.ZoomIn(dc); return;
    case kHostZoomOut: view.ZoomOut(dc); return;
    case kHostZoomPrevious: view.ZoomPrev(dc); return;
    case kHostZoomExtents: view.ZoomExt(); break;
    case kHostZoomAll: view.ZoomAll(); break;
    default: break;
    }
    view.MakeUpDisplayWindow(dc);
    redraw();
}

// A first point by the usual input, then the view's own band to the second.
void CVexCommandSession::trackView(wchar_t mode)
{
    const bool isZoom = mode == L'W';
    const VexBusyScope busy(handler());
    CVexGePoint2d first;
    if (handler().GetGePoint(isZoom ? VexDb::PromptCornerOne : VexDb::PromptBasePoint, first) !=
            InputPoint ||
        handler().isInputLost()) {
        flushLine();
        return;
    }
    handler().SetPrompt(isZoom ? VexDb::PromptOtherCorner : VexDb::PromptNextPoint);
    CVexDbDisplayTrecker tracker(m_windows.display, &m_database, mode);
    m_viewTracking = true;
    tracker.Track(m_windows.display,
                  m_database.displays().getCurrentRecord()->GetDecivePoint(first));
    m_viewTracking = false;
    flushLine();
}
