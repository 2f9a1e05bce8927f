#pragma once

#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbtracker/vexarcband.h"
#include "vexdb/dbtracker/vexcurvetracker.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

/// Draws a polyline segment by segment on bands, lines or arcs, that a command swaps; draws regular
/// polygons; drags vertices and the middles of arcs, and marks the vertex that a property panel
/// shows.
///
/// What is typed counts as a click: a point, or a number as a distance to the right of the start. A
/// number for a rotation or a scaling stays one.
class VEXDB_EXPORT CVexPolylineTracker
    : public CVexTrackerOf<CVexDbPolyline, CVexDbEntityTracker::TrackerPolyline> {
public:
    // Option words of an arc band; other ways of an arc are those of VexArcBand, too.
    static constexpr unsigned long kSecondPoint = 0; // its second point is asked for
    static constexpr unsigned long kThreePoints = VexArcBand::kThreePoints;
    static constexpr unsigned long kTangent = VexArcBand::kTangent;
    // Those of a polyline: a regular polygon, to which the count of sides is added.
    static constexpr unsigned long kByEdge = 10000;        // the band is a side
    static constexpr unsigned long kInscribed = 20000;     // the band goes from centre to corner
    static constexpr unsigned long kCircumscribed = 30000; // to the middle of a side
    static constexpr int kMostSides = 9999;

    /// Segments that a command has accepted and not put into the drawing yet.
    using Segments = std::vector<std::unique_ptr<CVexDbEntity>>;

    using CVexTrackerOf::CVexTrackerOf;
    /// Takes the mark off.
    ~CVexPolylineTracker() override;
    /// The second point of a three-point arc, drawing units.
    void SetArcPoint(const CVexGePoint2d& point) { m_arcPoint = point; }
    /// What stays on screen behind the band, null for nothing; not owned.
    void SetBackground(const Segments* segments) { m_background = segments; }
    void DrawGripBox(bool erase) override;
    void UnDrawGripBox() override;
    void DrawCurrent() override;
    /// Strokes the mark of the current vertex in XOR: a second time takes it off.
    void DrawSelBoxByProperty();
    /// Moves the mark to `vertex`, -1 for none.
    void DrawSelBoxByProperty(int vertex);
    [[nodiscard]] int currentVertex() const { return m_vertex; }
    void UpdateEntity(CVexDbEntity* copy, int grip) override;
    void CheckCreateOption(CVexDbEntity* copy, CPoint& position) override;

protected:
    [[nodiscard]] bool showsBand(int grip) const override;
    void strokeBackground() override;
    void beginPicture(int grip) override;
    void followPointer(int grip) override;
    [[nodiscard]] int settleAnswer(int result, int grip) override;
    bool recordGrip(int grip, tagUndoEditEntity& edit) override;
    [[nodiscard]] bool canDivide() const override { return true; }
    [[nodiscard]] PopupAction ownAction(unsigned id) const override;

private:
    /// What a grip stands for: a vertex, or the middle of the arc that leaves it.
    struct Spot {
        unsigned vertex;
        bool isMiddle;
    };
    [[nodiscard]] static std::optional<Spot> spotOf(const CVexDbPolyline& polyline, int grip);
    void bend(CVexDbPolyline& polyline, unsigned segment) const;
    void shapePolygon(CVexDbPolyline& polyline, const CVexGePoint2d& to) const;
    [[nodiscard]] bool asksSecondPoint() const;
    [[nodiscard]] bool wantsNumber() const;
    void strokeMark(const CRect& box) const;
    bool strokeAround(const Spot& spot);

    // The rows of the popup menu.
    PopupEnd explode(CWnd& window, CPoint device, int grip);
    PopupEnd changeStart(CWnd& window, CPoint device, int grip);
    PopupEnd reverse(CWnd& window, CPoint device, int grip);
    PopupEnd divide(CWnd& window, CPoint device, int grip);
    PopupEnd breakApart(CWnd& window, CPoint device, int grip);
    PopupEnd join(CWnd& window, CPoint device, int grip);
    PopupEnd insertVertex(CWnd& window, CPoint device, int grip);
    PopupEnd deleteVertex(CWnd& window, CPoint device, int grip);
    PopupEnd flipSegment(CWnd& window, CPoint device, int grip);
    PopupEnd edit(CWnd& window, const std::function<void(CVexDbPolyline&)>& change);
    PopupEnd editVertex(CWnd& window, int grip,
                        const std::function<void(CVexDbPolyline&, unsigned)>& change);
    [[nodiscard]] CVexDbPolyline& polyline() const { return shapeOf(m_entity); }

    CVexGePoint2d m_arcPoint;
    const Segments* m_background = nullptr;
    int m_vertex = -1;
    std::optional<Spot> m_dragged; // what a drag reshapes, but for the first vertex
    std::optional<CRect> m_mark;   // where it stands on screen, logical units
};
