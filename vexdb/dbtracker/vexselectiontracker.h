#pragma once

#include "platform/base/cpoint.h"
#include "platform/base/crect.h"
#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"
#include "platform/device/vexdeviceobjects.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbobject/dbentity/vexdbentityset.h"
#include "vexge/gemath/vexgepoint2d.h"

#include <vector>

class CDC;
class CVexDbDatabase;
class CVexDbIdSet;
class CWnd;

/// The cursor shown while entities are picked, set by the host.
extern VEXDB_EXPORT VexCursor _cursorSelect;

/// Collects entities by click, window, crossing, fence or polygon. Ortho and grid snap are off as
/// long as it lives, so that picks are not rounded.
class VEXDB_EXPORT CVexDbSelectionTracker {
public:
    static constexpr wchar_t kAutomatic = L' ';
    static constexpr wchar_t kWindow = L'W';
    static constexpr wchar_t kCrossing = L'C';
    static constexpr wchar_t kFence = L'F';
    static constexpr wchar_t kPolygon = L'P';

    /// Neither pointer is owned.
    CVexDbSelectionTracker(CWnd* window, CVexDbDatabase* database, wchar_t mode);
    ~CVexDbSelectionTracker();
    CVexDbSelectionTracker(const CVexDbSelectionTracker&) = delete;
    CVexDbSelectionTracker& operator=(const CVexDbSelectionTracker&) = delete;

    /// The set of one pick, valid until the next; null when nothing was selected.
    VexEntitySet* Track(CWnd* window, CPoint device);
    /// The number of entities selected.
    int TrackHandle(CWnd* window, CPoint device);
    /// True when Escape, or the loss of the capture, ended the last track.
    [[nodiscard]] bool wasCancelled() const { return m_cancelled; }
    void SetStartPoint(const CVexGePoint2d& point, bool alsoEnd);
    /// A logical point becomes the first corner.
    void SetStartPoint(CPoint logical);
    void SetValidRect(const CRect& rect) { m_validRect = rect; }
    [[nodiscard]] bool IsValidPos(CPoint device) const;
    void DrawRect(CPoint from, CPoint to);
    void DrawRubber();
    /// Fills the set by the mode, or by a single click; gives its size.
    int SelectEntity(bool singleClick);

private:
    class Pick; // what waits in the pump
    friend class Pick;

    void insertAll(const CVexDbIdSet& found);
    void selectByFence();
    void selectByPolygon();
    void forgetCorners();
    void eraseBand();
    void showBand();
    void usePen(const CPen& pen);

    CPen m_solidPen;
    CPen m_dottedPen;
    CPoint m_cursor; // logical, as all points here
    bool m_firstCornerSet = false;
    const CPen* m_pen;
    CRect m_validRect;
    CPoint m_start;
    CPoint m_end;
    CString m_keywords;
    wchar_t m_mode;
    bool m_bandDrawn = false;
    bool m_cancelled = false;
    CPoint m_previous;
    CVexDbDatabase* m_database;
    CDC* m_dc = nullptr;
    CWnd* m_window;
    VexEntitySet m_selected;
    std::vector<CPoint> m_polygon;
    bool m_savedOrtho = false;
    bool m_savedGridSnap = false;
};
