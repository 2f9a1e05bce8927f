#include "platform/device/vexdeviceobjects.h"
#include "platform/window/cwnd.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbcommand/vexarrowkeys.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexgridsnap.h"
#include "vexdb/dbcommand/vexinputscope.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"
#include "vexdb/dbtracker/vexexactly.h"
#include "vexdb/dbtracker/vexropscope.h"
#include "vexdb/vexdbdatabase.h"

#include <cmath>

namespace {

constexpr int kKeyIsDown = 0x8000;
constexpr COLORREF kWhite = 0xffffff;
constexpr double kUsualScalePercent = 100.0;

bool isKeyDown(unsigned virtualKey)
{
    return (GetKeyState(virtualKey) & kKeyIsDown) != 0;
}

VexModifier heldModifier()
{
    if (isKeyDown(VK_CONTROL)) {
        return VexModifier::kCtrl;
    }
    if (isKeyDown(VK_SHIFT)) {
        return VexModifier::kShift;
    }
    return isKeyDown(VK_MENU) ? VexModifier::kAlt : VexModifier::kNone;
}

} // namespace

/// A band, a creation, a transform or the drag of a grip, as it waits in the pump.
class CVexDbEntityTracker::Drag : public VexInput {
public:
    Drag(CVexDbEntityTracker& tracker, CWnd& window, CPoint press, int grip)
        : m_tracker(tracker), m_window(window), m_press(press), m_grip(grip)
    {
        m_tracker.m_drag = this;
    }
    ~Drag() override { m_tracker.m_drag = nullptr; }
    Drag(const Drag&) = delete;
    Drag& operator=(const Drag&) = delete;
    [[nodiscard]] int result() const { return m_result; }
    void cancel()
    {
        end(InputCancel);
        finish();
    }

    VexVerdict onMessage(const MSG& message) override
    {
        m_tracker.m_consumed = false;
        if (message.message == WM_MOUSEMOVE || isFinish(message.message)) {
            onPointer(message);
        } else if (isArrowKey(message)) {
            m_tracker.m_consumed =
                m_tracker.MoveKeyHandle(&m_window, message) == VexVerdict::kSwallow;
        } else if (message.message == WM_KEYDOWN) {
            onKeyDown(message);
        } else if (message.message == WM_CHAR) {
            m_result = m_tracker.CharHandle(message) ? InputKeyword : m_result;
        } else if (message.message == WM_RBUTTONDOWN) {
            end(InputCancel);
        }
        if (m_tracker.m_done) {
            finish();
        }
        return m_tracker.m_consumed ? VexVerdict::kSwallow : VexVerdict::kDispatch;
    }

    void takeOff() override
    {
        m_blipShown = m_tracker.m_handler->isBlipDrawn();
        m_tracker.m_handler->CheckBlipDraw(m_tracker.m_blip);
        m_bandShown = m_tracker.m_bandDrawn;
        m_copyShown = m_tracker.m_currentShown;
        m_tracker.liftPicture();
        m_tracker.strokeBackground();
        if (m_tracker.m_dc != nullptr) {
            m_tracker.m_dc->SetROP2(R2_COPYPEN); // who paints now knows nothing of a band
        }
    }

    void putBack() override
    {
        if (m_tracker.m_dc != nullptr) {
            m_tracker.m_dc->SetROP2(bandRaster(*m_tracker.m_dc));
        }
        m_tracker.strokeBackground();
        m_tracker.restorePicture(m_bandShown, m_copyShown);
        if (m_blipShown) {
            CVexGePoint2d snapped; // for the marker alone: the position stays
            m_tracker.m_handler->CheckSnapPoint(m_tracker.m_blip, m_tracker.m_logicalPoint,
                                                snapped);
        }
    }

private:
    [[nodiscard]] bool isFinish(unsigned message) const
    {
        // The second press of a double click is one more press.
        return message == m_tracker.m_finishMessage ||
               (message == WM_LBUTTONDBLCLK && m_tracker.m_finishMessage == WM_LBUTTONDOWN);
    }

    void end(int result)
    {
        m_result = result;
        m_tracker.m_done = true;
    }

    void onPointer(const MSG& message)
    {
        const CPoint device = pointOfLParam(message.lParam);
        const bool valid = m_tracker.IsValidPos(device);
        // A button that goes up outside ends the drag where it was valid last.
        if (!valid && message.message != WM_LBUTTONUP) {
            return;
        }
        m_tracker.m_consumed = true;
        m_leftPress = m_leftPress || (valid && device != m_press);
        if (valid) {
            follow(device);
        }
        if (isFinish(message.message) && !isDone()) {
            m_tracker.m_handler->setModifier(heldModifier());
            takeHere();
            end(InputPoint);
        }
    }

    /// A press on a grip that goes nowhere drags nothing, though a snap or the grid may lie beside
    /// it: who only touches a grip must not shift the entity.
    [[nodiscard]] bool onlyTouches() const { return m_grip >= 0 && !m_leftPress; }

    void follow(CPoint device)
    {
        m_tracker.m_movedByKeys = false;
        // The host hears of the position, and may end the entity for it.
        if (!onlyTouches() && m_tracker.takePosition(m_window, device) && !isDone()) {
            m_tracker.followPointer(m_grip);
        }
    }

    void takeHere()
    {
        if (onlyTouches()) {
            m_tracker.liftPicture();
        } else {
            m_tracker.endAt(m_grip);
        }
    }

    void onKeyDown(const MSG& message)
    {
        m_result = m_tracker.KeyDownHandle(message, m_grip);
        if (m_tracker.m_done) {
            m_result = m_tracker.settleAnswer(m_result, m_grip);
        }
    }

    CVexDbEntityTracker& m_tracker;
    CWnd& m_window;
    CPoint m_press; // device
    int m_grip;
    int m_result = InputPoint;
    bool m_leftPress = false;
    bool m_blipShown = false;
    bool m_bandShown = false;
    bool m_copyShown = false;
};

int CVexDbEntityTracker::Track(CWnd* window, CPoint device)
{
    return Track(window, device, HitTest(device));
}

int CVexDbEntityTracker::Track(CWnd* window, CPoint device, int grip)
{
    if (window == nullptr || m_handler == nullptr || m_database == nullptr) {
        return InputCancel;
    }
    const VexBusyScope busy(*m_handler); // its end may free this tracker
    m_database->setActiveTracker(this);
    const int result = TrackHandle(window, device, grip);
    m_database->setActiveTracker(nullptr);
    m_handler->noteAnswer(result);
    if (m_entity != nullptr && result != InputCancel) {
        m_entity->OnCurveChanged();
    }
    return result;
}

int CVexDbEntityTracker::TrackHandle(CWnd* window, CPoint device, int grip)
{
    return m_createMode ? runDrag(*window, device, grip) : static_cast<int>(InputCancel);
}

int CVexDbEntityTracker::runDrag(CWnd& window, CPoint device, int grip)
{
    window.GetClientRect(m_validRect);
    if (m_handler == nullptr || m_handler->isInputLost() || !IsValidPos(device)) {
        return InputCancel;
    }
    placeStart(device, grip);
    m_finishMessage = grip >= 0 ? WM_LBUTTONUP : WM_LBUTTONDOWN;
    m_done = m_consumed = m_movedByKeys = m_snapped = m_positionGiven = false;
    m_typed = {};
    m_typedLength = 0;
    m_result = Return_Struct();

    const CPen pen(PS_SOLID, m_penWidth, m_rubberColor);
    VexInputScope scope(*m_handler, window);
    scope.clearSnaps();
    if (m_dc != nullptr) {
        scope.setRaster(m_dc, bandRaster(*m_dc));
        scope.selectPen(m_dc, &pen);
    }
    beginPicture(grip);
    Drag drag(*this, window, device, grip);
    const bool answered = runPump(*m_handler, window, drag);
    const int result = answered ? drag.result() : static_cast<int>(InputLost);
    if (!CWnd::isLiving(&window)) {
        m_dc = nullptr; // its context went with it
    }
    m_handler->CheckBlipDraw(m_blip);
    endPicture(result);
    dropCurrent();
    return result;
}

void CVexDbEntityTracker::endPicture(int result)
{
    if (result != InputPoint) {
        liftPicture();
    }
}

int CVexDbEntityTracker::enterResult() const
{
    return m_movedByKeys ? InputPoint : InputCancel;
}

int CVexDbEntityTracker::settleAnswer(int result, int /*grip*/)
{
    return result == InputEnter ? enterResult() : result;
}

CVexGePoint2d CVexDbEntityTracker::exactAt(const CPoint& position) const
{
    return position == m_end ? m_exact : CVexGePoint2d(position) / _dDispScale;
}

void CVexDbEntityTracker::abandon()
{
    if (m_drag != nullptr) {
        eraseBand();
        eraseCurrent();
        m_drag->cancel();
    }
    m_dc = nullptr;
    m_entity = nullptr;
    m_gripPoints = nullptr;
    m_gripsShown = false;
    m_bandDrawn = false;
    m_currentShown = false;
}

void CVexDbEntityTracker::placeStart(CPoint device, int grip)
{
    if (grip >= 0) {
        m_start = logicalAt(device);
        m_exactStart = CVexGePoint2d(m_start) / _dDispScale;
    }
    m_end = m_position = m_start;
    m_exact = m_exactStart;
}

void CVexDbEntityTracker::beginPicture(int grip)
{
    m_bandDrawn = false;
    if (showsBand(grip)) {
        showBand();
    }
    dropCurrent();
    m_current = m_entity != nullptr ? CopyEntity(m_entity) : nullptr;
    showCurrent();
}

bool CVexDbEntityTracker::takePosition(CWnd& window, CPoint device)
{
    m_previous = m_end;
    CPoint position = logicalAt(device);
    m_logicalPoint = CVexGePoint2d(position) / _dDispScale;
    CPoint start = m_start; // a copy: only the position may be held to an axis or the grid
    window.SendMessage(WM_VEX_COORDINATE, reinterpret_cast<WPARAM>(&start),
                       reinterpret_cast<LPARAM>(&position));
    m_snapped = m_handler->CheckSnapPoint(m_blip, m_logicalPoint, m_snappedPoint);
    m_positionGiven = false;
    const CVexGePoint2d exact = m_snapped ? m_snappedPoint : CVexGePoint2d(position) / _dDispScale;
    m_position = m_snapped ? toLogical(m_snappedPoint) : position;
    // A snap may change the exact position alone, and the drawing gets that one.
    if (m_position == m_end && isSame(exact, m_exact)) {
        return false;
    }
    const bool band = m_bandDrawn;
    eraseBand();
    m_end = m_position;
    m_exact = exact;
    if (band) {
        showBand();
    }
    return true;
}

void CVexDbEntityTracker::followMove(int grip)
{
    eraseCurrent();
    reshape(grip);
    showCurrent();
}

void CVexDbEntityTracker::reshape(int grip)
{
    if (m_current == nullptr || m_entity == nullptr) {
        return;
    }
    *m_current = *m_entity;
    if (m_createMode) {
        CPoint position = m_end;
        CheckCreateOption(m_current, position);
    } else if (m_transform != VexDb::TransFormNone) {
        TransFormEntity(m_current);
    } else {
        UpdateEntity(m_current, grip);
    }
}

void CVexDbEntityTracker::endAt(int grip)
{
    if (!ControlEnd(grip)) {
        settlePosition();
        if (m_database != nullptr) {
            m_database->setLastPoint(m_exact);
        }
    }
}

void CVexDbEntityTracker::settlePosition()
{
    if (m_handler != nullptr) {
        m_handler->CheckBlipDraw(m_blip);
    }
    eraseBand(); // before the rounding: it stands at the end as it was
    CheckSnap();
}

void CVexDbEntityTracker::CheckSnap()
{
    if (m_database == nullptr || m_snapped || m_positionGiven) {
        return;
    }
    const VexDbDrawingSettings_tag& settings = m_database->settings();
    if (settings.m_bGridSnap) {
        m_exact = roundedToGrid(m_exact, settings.m_dGridStep);
        m_position = m_end = toLogical(m_exact);
    }
}

void CVexDbEntityTracker::TransFormEntity(CVexDbEntity* entity)
{
    switch (m_transform) {
    case VexDb::TransFormCopy:
    case VexDb::TransFormMove: MoveEntity(entity); break;
    case VexDb::TransFormRotate: RotateEntity(entity); break;
    case VexDb::TransFormMirror: MirrorEntity(entity); break;
    case VexDb::TransFormScale: ScaleEntity(entity); break;
    case VexDb::TransFormNone: break;
    }
}

bool CVexDbEntityTracker::isWithoutWay() const
{
    return !m_createMode && m_transform != VexDb::TransFormScale && isSame(m_exact, m_exactStart);
}

double CVexDbEntityTracker::scalePercent() const
{
    const double percent = m_database != nullptr ? m_database->settings().m_dScalePercent : 0.0;
    return std::isfinite(percent) && percent > 0.0 ? percent : kUsualScalePercent;
}

void CVexDbEntityTracker::SetStartPoint(const CVexGePoint2d& point, bool alsoEnd)
{
    m_exactStart = point;
    m_start = toLogical(point);
    if (alsoEnd) {
        m_exact = point;
        m_end = m_position = m_start;
    }
}

void CVexDbEntityTracker::SetPos(const CVexGePoint2d& point)
{
    m_exact = point;
    m_end = m_position = toLogical(point);
    m_positionGiven = true;
}

CPoint CVexDbEntityTracker::logicalAt(CPoint device) const
{
    CPoint logical = device;
    if (m_dc != nullptr) {
        m_dc->DPtoLP(&logical);
    }
    return logical;
}

int CVexDbEntityTracker::bandRaster(const CDC& dc)
{
    // On white an XOR pen shows in its opposite, and a black one not at all.
    return dc.GetBkColor() == kWhite ? R2_NOTXORPEN : R2_XORPEN;
}

void CVexDbEntityTracker::DrawRubber()
{
    if (m_dc != nullptr) {
        m_dc->MoveTo(m_start);
        m_dc->LineTo(m_end);
    }
}

void CVexDbEntityTracker::showBand()
{
    if (!m_bandDrawn) {
        DrawRubber();
        m_bandDrawn = true;
    }
}

void CVexDbEntityTracker::eraseBand()
{
    if (m_bandDrawn) {
        DrawRubber();
        m_bandDrawn = false;
    }
}

void CVexDbEntityTracker::showCurrent()
{
    if (m_current != nullptr && !m_currentShown) {
        DrawCurrent();
        m_currentShown = true;
    }
}

void CVexDbEntityTracker::eraseCurrent()
{
    if (m_currentShown) {
        DrawCurrent();
        m_currentShown = false;
    }
}

void CVexDbEntityTracker::liftPicture()
{
    eraseBand();
    eraseCurrent();
}

void CVexDbEntityTracker::restorePicture(bool band, bool copy)
{
    if (band) {
        showBand();
    }
    if (copy) {
        showCurrent();
    }
}
