#pragma once

#include "platform/base/cpoint.h"
#include "platform/base/crect.h"
#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"
#include "platform/device/vexdevicetypes.h"
#include "platform/window/cmenu.h"
#include "platform/window/vexmessage.h"
#include "vexdb/dbcommand/vexinputresult.h"
#include "vexdb/dbcommand/vexpump.h"
#include "vexdb/dbobject/dbentity/vexdbxdata.h"
#include "vexge/gemath/vexgepoint2d.h"
#include "vexge/gemath/vexgevector2d.h"

#include <array>
#include <functional>
#include <optional>
#include <vector>

class CDC;
class CVexCommandHandler;
class CVexDbDatabase;
class CVexDbEntity;
class CVexDbObjectId;
class CWnd;
struct tagUndoEditEntity;

namespace VexDb {

/// What a selected-mode track does.
enum TransFormOption : int {
    TransFormNone = 0, // grip editing or creation
    TransFormCopy = 1,
    TransFormMove = 2,
    TransFormRotate = 3,
    TransFormMirror = 4,
    TransFormScale = 5,
};

} // namespace VexDb

/// Shows one entity while it is drawn or changed by mouse and keys. In create mode a command gives
/// it a fresh entity; in selected mode it stays with a selected entity, shows its grips and follows
/// a drag of one. Without an entity it is a rubber band from a base point.
///
/// Positions are logical integers; a snapped or typed position is kept in drawing units as well,
/// and that one goes into the drawing.
class VEXDB_EXPORT CVexDbEntityTracker {
public:
    enum TrackerType : int {
        TrackerPlain = 0,
        TrackerMulti = 1,
        TrackerArc = 2,
        TrackerBox = 3,
        TrackerCircle = 4,
        TrackerEllipseArc = 5,
        TrackerEllipse = 6,
        TrackerLine = 7,
        TrackerPolyline = 8,
        TrackerRect = 9,
        TrackerSpline = 10,
        TrackerCSpline = 11,
        TrackerText = 12,
        TrackerBlockInsert = 14,
        TrackerSpiral = 15,
        TrackerCobweb = 16,
        TrackerDimension = 17,
        TrackerHatch = 18,
    };

    /// The popup menus of all trackers, by index; the host loads them (see vexpopupmenu.h).
    static CMenu m_Menu;

    // Windows, databases and entities are not owned.
    explicit CVexDbEntityTracker(CWnd* window);
    /// A plain band on the database's view.
    CVexDbEntityTracker(CWnd* window, CVexDbDatabase* database, bool createMode);
    /// Out of create mode the entity shows as selected from here on.
    CVexDbEntityTracker(CWnd* window, CVexDbEntity* entity, VexDb::TransFormOption option,
                        bool createMode);
    /// For many entities; the database is that of the first.
    CVexDbEntityTracker(CWnd* window, const std::vector<CVexDbObjectId>* entities,
                        VexDb::TransFormOption option);
    /// Takes the grips off and, out of create mode, draws the entity as it is.
    virtual ~CVexDbEntityTracker();
    CVexDbEntityTracker(const CVexDbEntityTracker&) = delete;
    CVexDbEntityTracker& operator=(const CVexDbEntityTracker&) = delete;

    /// Strokes the grip boxes in the raster operation in force.
    virtual bool DrawBoxis();
    /// Shows the entity as selected; `erase` takes its normal picture off first.
    virtual void DrawGripBox(bool erase);
    virtual void UnDrawGripBox();
    // Hooks for trackers of a client's own; no tracker of the system fills these three.
    virtual void DrawCurrentMark() {}
    virtual void SetCurrentStitch(int) {}
    virtual bool SelectStitchByWin(CPoint) { return false; }
    virtual void SetMultiEntity(std::vector<CVexDbObjectId>*) {}
    /// Strokes the entity, or the working copy, in XOR.
    virtual void UndrawOrigin();
    virtual void DrawCurrent();
    /// The cursor of the grip under the pointer and 0; -1 for none.
    virtual int SetCursor(CWnd* window, unsigned hitTest);
    /// Rounds the position to the grid when grid snap is on and no object snap took effect.
    virtual void CheckSnap();
    virtual int TrackMenuHandle(CWnd* window, CPoint point, int grip);
    virtual int TrackHandle(CWnd* window, CPoint point, int grip);
    // What a concrete tracker does to the working copy.
    virtual void UpdateEntity(CVexDbEntity*, int /*grip*/) {}
    virtual void MoveEntity(CVexDbEntity*) {}
    virtual void RotateEntity(CVexDbEntity*) {}
    virtual void MirrorEntity(CVexDbEntity*) {}
    virtual void ScaleEntity(CVexDbEntity*) {}
    virtual void CheckCreateOption(CVexDbEntity*, CPoint&) {}
    /// A working copy, the caller's.
    virtual CVexDbEntity* CopyEntity(CVexDbEntity*) { return nullptr; }
    /// Takes the result over into the entity and records it.
    virtual bool ControlEnd(int /*grip*/) { return false; }

    /// Everything back to how a fresh tracker is.
    void SetDefault();
    /// The band starts at a drawing point; `alsoEnd` puts its end there too.
    void SetStartPoint(const CVexGePoint2d& point, bool alsoEnd);
    /// Puts the band's end at a drawing point.
    void SetPos(const CVexGePoint2d& point);
    void SetEntity(CVexDbEntity* entity) { m_entity = entity; }
    void SetKeyWords(const wchar_t* keys);
    void SetOption(unsigned long option) { m_option = option; }
    [[nodiscard]] unsigned long GetOption() const { return m_option; }
    void SetCreateMode(bool createMode) { m_createMode = createMode; }
    /// The entity that a command keeps drawn as background.
    void SetPrevEntity(CVexDbEntity* entity) { m_previousEntity = entity; }
    void SetTransOpt(VexDb::TransFormOption option) { m_transform = option; }
    [[nodiscard]] VexDb::TransFormOption transOpt() const { return m_transform; }
    /// Where positions count, device pixels; an empty one accepts all.
    void SetValidRect(const CRect& rect) { m_validRect = rect; }
    [[nodiscard]] bool IsValidPos(CPoint device) const;
    void SetHandleSize(CSize pixels) { m_handleSize = pixels; }
    void SetHandleColor(COLORREF color) { m_handleColor = color; }
    /// The entity's grip list has moved or is gone: it is asked for anew.
    void clearGripPoints() { m_gripPoints = nullptr; }
    /// What was typed or pressed, after a track.
    [[nodiscard]] const Return_Struct& resBuffer() const { return m_result; }
    /// The number of a track's typed answer; nothing for an answer that was not typed.
    [[nodiscard]] std::optional<double> typedNumber(int result) const;
    [[nodiscard]] CVexDbEntity* GetEntity() const { return m_entity; }
    /// The position in drawing units: exact where it was snapped or typed.
    [[nodiscard]] CVexGePoint2d GetPos() const { return m_exact; }
    [[nodiscard]] CDC* getDC() const { return m_dc; }
    void setDC(CDC* dc) { m_dc = dc; }
    [[nodiscard]] TrackerType TrackType() const { return m_type; }
    [[nodiscard]] bool isCreateMode() const { return m_createMode; }
    [[nodiscard]] bool gripsShown() const { return m_gripsShown; }
    /// The grip whose box holds a device point; -1 for none.
    [[nodiscard]] int HitTest(CPoint device);
    /// Strokes the band in the raster operation in force.
    void DrawRubber();
    /// Runs until a click, a typed value, a key or the loss of the capture ends it.
    int Track(CWnd* window, CPoint device);
    int Track(CWnd* window, CPoint device, int grip);
    /// The popup menu of the grip at a device point; off any grip nothing, and 0.
    int TrackMenu(CWnd* window, CPoint device);
    /// Does to `entity` what the transform option says.
    void TransFormEntity(CVexDbEntity* entity);
    VexVerdict MoveKeyHandle(CWnd* window, const MSG& message);
    /// A key-down; gives an InputResult and sets done and consumed.
    int KeyDownHandle(const MSG& message, int grip);
    /// A character; true for a keyword.
    bool CharHandle(const MSG& message);

    /// The tracker ends without drawing anything any more: its entity or its view is gone. A drag
    /// that runs takes off what it has drawn, and is cancelled.
    void abandon();

protected:
    class Drag; // what waits in the pump
    friend class Drag;
    static constexpr std::size_t kMostTyped = 255;
    /// Whether the tracker outlives an action of its popup menu.
    enum class PopupEnd { kStay, kGone };
    using PopupAction = PopupEnd (CVexDbEntityTracker::*)(CWnd& window, CPoint device, int grip);
    struct PopupRow;

    /// The band or drag of this tracker: create, transform or grip.
    int runDrag(CWnd& window, CPoint device, int grip);
    // What a kind does differently in it.
    /// Whether the band is drawn; the picture of a creation may be band enough.
    [[nodiscard]] virtual bool showsBand(int /*grip*/) const { return true; }
    /// Where the band stands before the first move: that of a dragged grip at the press.
    virtual void placeStart(CPoint device, int grip);
    /// Makes and draws what is on screen before the first move.
    virtual void beginPicture(int grip);
    /// Called after each accepted move: takes the picture of the old position off, reshapes, and
    /// puts that of the new one on.
    virtual void followMove(int grip);
    /// The same while the pointer moves on and the track has not ended: a kind may do it by parts.
    virtual void followPointer(int grip) { followMove(grip); }
    /// Takes off the screen what the track has drawn there.
    virtual void liftPicture();
    /// Puts back what was lifted: the band, the working copy, where they were shown.
    virtual void restorePicture(bool band, bool copy);
    /// Called once with the InputResult of the track, while band and copy can still be drawn: what
    /// does not stay is taken off, which after a point is nothing.
    virtual void endPicture(int result);
    /// Strokes in XOR what stands behind the band and is in no drawing yet, which takes it off or
    /// puts it on again around a repaint.
    virtual void strokeBackground() {}
    /// What Enter on an empty line answers: after arrow keys a point, otherwise a cancel.
    [[nodiscard]] virtual int enterResult() const;
    /// What the track answers when a key has ended it with `result`; a kind may take a typed answer
    /// as a position here.
    [[nodiscard]] virtual int settleAnswer(int result, int grip);

    /// The position is taken: ControlEnd, or for a band without entity the last point alone.
    void endAt(int grip);
    /// A position of the mouse, snapped, in force from here on; true when it differs.
    bool takePosition(CWnd& window, CPoint device);
    /// Reshapes the working copy for the position: create option, transform or grip.
    void reshape(int grip);
    /// Takes blip and band off and rounds to the grid what no snap and no typing has fixed.
    void settlePosition();
    /// The end of a typed line: gives the InputResult and fills the result.
    int takeTyped(int grip);
    int parseTyped();
    /// A way back to where it started, which no transform but a scaling turns into a change.
    [[nodiscard]] bool isWithoutWay() const;
    void eraseBand();
    void showBand();
    void showCurrent();
    void eraseCurrent();
    /// Strokes the working copy as the band is stroked, which puts it on or takes it off.
    void strokeCurrent();
    void dropCurrent();
    [[nodiscard]] CPoint logicalAt(CPoint device) const;
    /// Start and end of the band in drawing units, exact where known.
    [[nodiscard]] CVexGePoint2d startPoint() const { return m_exactStart; }
    [[nodiscard]] CVexGePoint2d endPoint() const { return m_exact; }
    [[nodiscard]] CVexGeVector2d bandVector() const { return m_exact - m_exactStart; }
    /// A logical position in drawing units: exact where it is the band's end.
    [[nodiscard]] CVexGePoint2d exactAt(const CPoint& position) const;
    /// What a length is divided by to make a factor: the drawing's scale percent, above 0.
    [[nodiscard]] double scalePercent() const;
    bool refreshGrips();
    /// The box of a grip, logical units.
    [[nodiscard]] CRect gripBox(const CVexGePoint2d& grip) const;
    /// The raster operation in which a band shows on the background of `dc`.
    [[nodiscard]] static int bandRaster(const CDC& dc);

    // The popup menu.
    [[nodiscard]] static const PopupRow* popupRow(unsigned id);
    /// What a kind does for a row in its own way; null where it has none.
    [[nodiscard]] virtual PopupAction ownAction(unsigned /*id*/) const { return nullptr; }
    [[nodiscard]] PopupAction actionOf(const PopupRow& row) const;
    [[nodiscard]] bool canAct(const PopupRow& row) const;
    PopupEnd popupUnSelect(CWnd& window, CPoint device, int grip);
    PopupEnd popupCopy(CWnd& window, CPoint device, int grip);
    PopupEnd popupMove(CWnd& window, CPoint device, int grip);
    PopupEnd popupRotate(CWnd& window, CPoint device, int grip);
    PopupEnd popupScale(CWnd& window, CPoint device, int grip);
    PopupEnd popupMirrorX(CWnd& window, CPoint device, int grip);
    PopupEnd popupMirrorY(CWnd& window, CPoint device, int grip);
    PopupEnd popupMirrorLine(CWnd& window, CPoint device, int grip);
    PopupEnd popupErase(CWnd& window, CPoint device, int grip);
    PopupEnd popupDivide(CWnd& window, CPoint device, int grip);
    PopupEnd mirrorAlong(CWnd& window, CPoint direction, int grip);
    /// Tracks a transform of the entity from `base`; a typed target counts as a click there.
    int trackFrom(CWnd& window, CPoint device, const CVexGePoint2d& base,
                  VexDb::TransFormOption option, int prompt);
    /// Ends a transform at a point that was not clicked.
    void commitAt(const CVexGePoint2d& point);
    /// Changes the entity in place and shows the selection as it is then.
    void changeEntity(CWnd& window, const std::function<void(CVexDbEntity&)>& change);
    /// The same for a change that `edit` records.
    void changeEntity(CWnd& window, const tagUndoEditEntity& edit,
                      const std::function<void(CVexDbEntity&)>& change);
    /// Into how many parts to divide, 1 or more; nothing on a cancel, and when the entity has gone
    /// while the question stood.
    std::optional<int> askParts(CWnd& window) const;
    /// Whether the entity can be divided into equal parts, and a new entity, the caller's, that is
    /// the old one in `count` parts; null when it cannot.
    [[nodiscard]] virtual bool canDivide() const { return false; }
    virtual CVexDbEntity* makeDivided(int /*count*/) { return nullptr; }

    // The state of a track.
    CMenu* m_popup = nullptr; // the submenu shown by TrackMenuHandle
    bool m_gripsShown = false;
    bool m_bandDrawn = false;
    bool m_currentShown = false;
    bool m_snapped = false;
    bool m_positionGiven = false; // typed or set: no rounding to the grid
    bool m_highlightNeedsRedraw = false;
    TrackerType m_type = TrackerPlain;
    unsigned m_finishMessage = WM_LBUTTONDOWN;
    CVexCommandHandler* m_handler = nullptr;
    CVexGePoint2d m_blip;
    CVexGePoint2d m_snappedPoint;
    CVexGePoint2d m_logicalPoint;
    CPoint m_position; // logical
    std::array<wchar_t, kMostTyped + 1> m_typed = {};
    std::size_t m_typedLength = 0;
    bool m_consumed = false;
    bool m_done = false;
    bool m_movedByKeys = false;
    Return_Struct m_result;
    unsigned long m_option = 0;
    CString m_keywords;
    CVexDbDatabase* m_database = nullptr;
    CDC* m_dc = nullptr;
    CWnd* m_window = nullptr;
    CPoint m_previous; // logical
    VexDb::TransFormOption m_transform = VexDb::TransFormNone;
    CPoint m_start; // logical
    CPoint m_end;   // logical
    CVexGePoint2d m_exactStart;
    CVexGePoint2d m_exact;
    bool m_createMode = false;
    bool m_multiMode = false;
    COLORREF m_rubberColor = 0x00ffff;
    CSize m_handleSize{8, 8}; // pixels
    COLORREF m_handleColor = 0xffff00;
    CRect m_validRect;
    int m_penWidth = 1;
    double m_pixelScale = 1.0;
    CVexDbEntity* m_entity = nullptr;
    CVexDbEntity* m_current = nullptr; // owned during a track
    CVexDbEntity* m_previousEntity = nullptr;
    std::vector<CVexGePoint2d>* m_gripPoints = nullptr; // the entity's own
    Drag* m_drag = nullptr;                             // while it waits; not owned
};
