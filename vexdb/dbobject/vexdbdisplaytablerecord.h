#pragma once

#include "platform/base/crect.h"
#include "vexdb/dbobject/vexdbidset.h"
#include "vexdb/dbobject/vexdbtablerecord.h"
#include "vexge/gemath/vexgepoint2d.h"
#include "vexge/gemath/vexgevector2d.h"

#include <memory>
#include <vector>

class CDC;
class CView;
class CVexDbEntity;
class CVexDbEntSetIterator;
class CVexDbSpatialIndex;

/// A view: what part of a drawing a window shows, and the way between the three coordinate systems.
/// Device is pixels of the client area, y down; logical is integers, 100 a drawing unit, y up.
class VEXDB_EXPORT CVexDbDisplayTableRecord : public CVexDbTableRecord {
public:
    explicit CVexDbDisplayTableRecord(CVexDbDatabase* database);
    ~CVexDbDisplayTableRecord() override;

    /// The window and its context; neither is owned.
    void setView(CView* view, CDC* dc);
    /// True when a window is set.
    bool getView(CView*& view, CDC*& dc) const;
    [[nodiscard]] CView* getView() const { return m_view; }
    [[nodiscard]] CDC* GetCurrentDC() const { return m_dc; }

    /// Shows the area from `min` to `max` (drawing units, truncated); an empty one is ignored.
    void SetCurDispWin(const CVexGePoint2d& min, const CVexGePoint2d& max);
    void setLimits(const CVexGePoint2d& min, const CVexGePoint2d& max);
    void getLimits(CVexGePoint2d& min, CVexGePoint2d& max) const;
    // What this view draws. A null identifier is ignored.
    void addEntity(const CVexDbObjectId& id);
    void addEntities(std::span<CVexDbObject* const> entities);
    void removeEntity(const CVexDbObjectId& id);
    /// Shows exactly `set` from now on.
    void setEntityToMem(const CVexDbIdSet& set);
    void ClearDisplayedIdSet();
    [[nodiscard]] CVexDbIdSet* displayedIdSet() { return &m_displayed; }
    /// False, with no iterator, for an empty view; else the caller owns it.
    bool newIterator(CVexDbEntSetIterator*& out, bool start);

    // Selections answer whether they found something. An output set is replaced; it may be the
    // view's own.
    /// All visible entities of the view; the points play no part yet.
    bool selectEntity(const CVexGePoint2d& p, const CVexGePoint2d& q, CVexDbIdSet& set, bool);
    /// The first visible entity, in drawing order, within half the pick box of `p`. With none, or
    /// without a scale, `id` keeps its value.
    bool selectEntity(const CVexGePoint2d& p, CVexDbObjectId& id);
    bool selectEntity(CPoint p, CVexDbObjectId& id);
    /// Entities wholly inside the rectangle of `p` and `q`.
    bool selectEntityByWin(CVexGePoint2d p, CVexGePoint2d q, CVexDbIdSet& set);
    bool selectEntityByWin(CPoint p, CPoint q, CVexDbIdSet& set);
    /// Entities inside it or crossing it.
    bool selectEntityByCross(CVexGePoint2d p, CVexGePoint2d q, CVexDbIdSet& set);
    bool selectEntityByCross(CPoint p, CPoint q, CVexDbIdSet& set);

    /// Device to drawing units, and back; the way back is (0, 0) for a view without a scale.
    [[nodiscard]] CVexGePoint2d GetLogicalPoint(CPoint device) const;
    [[nodiscard]] CPoint GetDecivePoint(const CVexGePoint2d& point) const;
    /// Recomputes the mapping for the client area and puts it into `dc`. For a printing `dc` it is
    /// the page's mapping that `dc` gets, and the view keeps its own. Nothing without a context, a
    /// window or a client area.
    void MakeUpDisplayWindow(CDC* dc);
    /// Fits the window to the aspect of the client area.
    void InitViewCoordinates();
    /// The client area has a new size in pixels: more or less of the drawing comes into view, at
    /// the scale it had.
    void Onsize(int cx, int cy);

    /// Paints the view through an off-screen buffer: entities, grid, trackers. A printing `dc` gets
    /// entities and grid directly. Nothing without a context or, on a screen, a window.
    void Draw(CDC* dc);
    /// Entities in drawing order as the view holds them when the pass begins, then the grid.
    void DrawEntities(CDC* dc);
    /// Draws one entity on the view's context.
    void DrawEntity(CVexDbObject*& object);
    void DrawGrid(CDC* dc);
    void HighlightDraw(CDC* dc);

    // All of these draw, but for ZoomExt, ZoomAll and getExtend. They change nothing without a
    // context, a window, a client area or a scale.
    void ZoomIn(CDC* dc);
    void ZoomOut(CDC* dc);
    void ZoomPrev(CDC* dc);
    /// `rect` is logical; one smaller than the pick box both ways is refused.
    void ZoomWindow(CDC* dc, CRect rect);
    /// These two only set the window (of a view that has one on screen): MakeUpDisplayWindow and
    /// Draw follow.
    void ZoomExt();
    void ZoomAll();
    /// Scales the window by `factor` about the device point `p`; below 1 zooms in.
    void ScaleUpDown(CDC* dc, CPoint p, double factor, bool);
    /// Shifts the window by the way from the client's centre to the device point `p`.
    void MoveWindow(CDC* dc, CPoint p);
    /// Shifts the window by logical units.
    void PanWindow(CDC* dc, int dx, int dy);
    /// Shifts it along one axis, x before y, by a hundredth of its size (in whole drawing units)
    /// for each 1 of the component, in logical units.
    void PanWindow(CDC* dc, const CVexGeVector2d& vector);
    /// As PanWindow, without fitting the window anew: cheap enough for dragging.
    void RealPanWindow(CDC* dc, int dx, int dy);
    /// Computes the drawing's saved extents from the grips of the visible entities.
    void getExtend();

    [[nodiscard]] bool visibleOnly() const { return m_visibleOnly; }
    void setVisibleOnly(bool visibleOnly) { m_visibleOnly = visibleOnly; }
    [[nodiscard]] const CRect& window() const { return m_mapping.window; }
    [[nodiscard]] const CRect& displayWindow() const { return m_mapping.displayWindow; }
    [[nodiscard]] const CRect& client() const { return m_mapping.client; }
    [[nodiscard]] CPoint centre() const { return m_mapping.centre; }
    /// Logical units a pixel.
    [[nodiscard]] double xScale() const { return m_mapping.scaleX; }
    [[nodiscard]] double yScale() const { return m_mapping.scaleY; }

private:
    /// All that one mapping of a client area sets; printing puts the screen's back as a whole.
    struct Mapping {
        CPoint centre;       // device
        CRect client;        // device
        CRect window;        // logical: top holds the smaller y
        CRect displayWindow; // the window in whole drawing units
        double aspect = 0.0; // client height by client width
        double scaleX = 0.0; // logical units a pixel
        double scaleY = 0.0;
    };

    bool clientOfView(CRect& client) const;
    [[nodiscard]] bool canZoom(const CDC* dc) const;
    void makeUpPage(CDC& dc);
    void finishMapping(CDC& dc);
    void publishWindow();
    void widenToAspect(CRect& area) const;
    void keepScaleOnResize(CRect& area) const;
    bool takeWindow(double left, double top, double right, double bottom);
    bool moveWindow(double dx, double dy);
    void showWindow(CDC* dc);
    [[nodiscard]] CRect shownArea(const CDC& dc) const;
    CVexDbIdSet crossedBy(const CRect& window);
    /// The index over what this view draws, up to date; null while there is too little to be worth
    /// one.
    CVexDbSpatialIndex* index();
    template <class Follow>
    void followInIndex(Follow&& follow);
    /// The entities that may touch the area (logical units), in drawing order, into m_near; false
    /// when a walk over the whole view does as well.
    bool findNear(const CRect& area);
    /// Replaces `out` by the visible entities near the area that `accept` takes; true when there
    /// are any.
    template <class Accept>
    bool collectVisible(const CRect& area, CVexDbIdSet& out, Accept&& accept);
    /// The area that `dc` shows, widened by how far a stroke may reach into it, logical units.
    [[nodiscard]] CRect paintedArea(const CDC& dc) const;
    /// The set that a pass over `dc` draws; `working` holds it when it is made for the pass.
    const CVexDbIdSet& setForPass(const CDC& dc, CVexDbIdSet& working);

    bool m_visibleOnly = false;
    bool m_printing = false;
    Mapping m_mapping;
    CRect m_previousWindow;
    CView* m_view = nullptr;
    CDC* m_dc = nullptr;
    CVexDbIdSet m_displayed;
    std::unique_ptr<CVexDbSpatialIndex> m_index;
    std::uint64_t m_indexRevision = 0; // of m_displayed when the index was brought up to date
    std::vector<CVexDbEntity*> m_near; // kept, so that a pick does not allocate
    CVexGePoint2d m_limitsMin;
    CVexGePoint2d m_limitsMax;
};
