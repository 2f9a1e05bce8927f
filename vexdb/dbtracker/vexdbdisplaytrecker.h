#pragma once

#include "platform/base/crect.h"
#include "platform/base/vexexport.h"
#include "platform/device/vexdeviceobjects.h"
#include "platform/window/vexmessage.h"

class CDC;
class CVexDbDatabase;
class CVexDbDisplayTableRecord;
class CWnd;

/// The rubber band of window zoom ('W') and pan ('P'), and the pan that moves the picture while the
/// mouse moves ('R'). It works on the database's current view and runs its own message pump.
class VEXDB_EXPORT CVexDbDisplayTrecker {
public:
    /// Neither pointer is owned.
    CVexDbDisplayTrecker(CWnd* window, CVexDbDatabase* database, wchar_t mode);
    CVexDbDisplayTrecker(const CVexDbDisplayTrecker&) = delete;
    CVexDbDisplayTrecker& operator=(const CVexDbDisplayTrecker&) = delete;

    /// Puts both ends of the band at a device point; the end gets one logical unit more.
    void SetStartPoint(CPoint device);
    /// Where the mouse counts, device pixels; sides in any order.
    void SetValidRect(const CRect& rect);
    /// An empty valid rectangle accepts everything.
    [[nodiscard]] bool IsValidPos(CPoint device) const;
    /// Follows the mouse over `window` from the device point `p` until a click, a key or the loss
    /// of the capture. True when a click changed the view. The band, the capture and the raster
    /// operation are given back whichever way it ends.
    bool Track(CWnd* window, CPoint p);
    bool TrackHandle(CWnd* window, CPoint p);
    /// Strokes the band's rectangle, or the band of the mode, with the pen and raster operation in
    /// force; a second time takes it off.
    void DrawRect();
    void DrawRubber();
    /// Shows what the band says.
    void ChangeDisplay();

private:
    enum class Verdict { kGoOn, kEnd, kChanged };

    [[nodiscard]] CVexDbDisplayTableRecord* view() const;
    Verdict pump(CWnd& window);
    Verdict onMessage(CWnd& window, const MSG& message);
    void onMouseMove(CWnd& window, CPoint device);
    void panTo(CPoint device);
    void dispatch(CWnd& window, const MSG& message);
    void changeUnbanded();
    void showBand();
    void takeBandOff();
    [[nodiscard]] CPoint logicalAt(CPoint device) const;

    CWnd* m_window;
    CDC* m_context;
    CVexDbDatabase* m_database;
    CPoint m_current;  // device
    CPoint m_previous; // device
    const CPen m_pen;
    wchar_t m_mode;
    bool m_rubberShown = false;
    CRect m_validRect;
    CPoint m_rubberStart; // logical
    CPoint m_rubberEnd;   // logical
};
