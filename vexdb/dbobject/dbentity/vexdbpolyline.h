#pragma once

#include "vexdb/dbobject/dbentity/vexdbcurveof.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <list>
#include <span>

class CVexDbArc;
class CVexDbCircle;
class CVexDbLine;

/// A chain of lines and arcs, each vertex with a bulge and two widths; a closed one may be filled.
class VEXDB_EXPORT CVexDbPolyline : public CVexDbCurveOf<CVexGePolyline2d> {
public:
    /// Intersections by their parameter.
    using PointMap = CVexGePolyline2d::ParamMap;

    /// Empty, with room for `reserve` vertices.
    CVexDbPolyline(unsigned long reserve, CVexDbDatabase* database);
    CVexDbPolyline(const CVexDbPolyline& other);
    // In the source's drawing and with its properties. The bools are not used.
    CVexDbPolyline(const CVexDbLine& line, bool);
    CVexDbPolyline(const CVexDbArc& arc, bool);
    CVexDbPolyline(const CVexDbCircle& circle, bool);
    /// The circle in `segments` equal arcs from its right; fewer than 2 count as 2.
    CVexDbPolyline(const CVexDbCircle& circle, int segments, bool);
    ~CVexDbPolyline() override;
    /// Takes properties and geometry over.
    CVexDbPolyline& operator=(const CVexDbPolyline& other);
    CVexDbPolyline& operator=(const CVexDbEntity& other) override;

    bool save() override;
    bool read() override;
    /// The vertices in order, each followed by the middle of its segment where that is an arc.
    void setGripPoints() override;
    /// The box of the vertices, out of which arcs may swell.
    CVexDbRect GetOutRect() override;
    /// Segments that end at a vertex with a start width above 0 are not stroked.
    void Draw(CDC* dc) override;
    /// Strokes the segments `first` to `last`, of those that exist, as Draw strokes them: in XOR it
    /// takes just these off the picture of Draw. False, with nothing done, where their picture
    /// hangs on others: of a filled polyline, and beside segments that are not stroked.
    bool DrawSegments(CDC* dc, unsigned first, unsigned last);
    /// Fills the polygon of `points`, logical units, in the colour of the context's pen and strokes
    /// it with that pen. Nothing unless IsFill.
    void FillArea(CDC* dc, std::span<const CPoint> points) const;
    [[nodiscard]] bool trueExtents(CVexGePoint2d& min, CVexGePoint2d& max) const override;
    /// The rows of vertex 0.
    void makeProperty() override;
    /// The rows of the group "Shape" as they read with `vertex` selected: the count, then that
    /// vertex's bulge, coordinates and widths. The count alone for a vertex that does not exist.
    [[nodiscard]] std::vector<Property> vertexProperties(unsigned vertex) const;
    bool checkInsideOrCross(CVexGePoint2d& a, CVexGePoint2d& b) override;
    bool checkInside(CVexGePoint2d& a, CVexGePoint2d& b) override;
    void Reverse() override;
    using CVexDbEntity::Draw;
    using CVexDbCurveOf<CVexGePolyline2d>::intersectWith;
    // As the forms above, but adding to `points`, each intersection under its parameter; of two
    // with one parameter the first stays. `count` becomes the size of `points`, and the answer is
    // whether there are any.
    bool intersectWith(CVexDbEntity& other, int& count, PointMap& points, Intersect kind,
                       double tol) const;
    bool intersectWith(const CVexGeEllipArc2d& other, int& count, PointMap& points, Intersect kind,
                       double tol) const;
    bool intersectWith(const CVexGeCircArc2d& other, int& count, PointMap& points, Intersect kind,
                       double tol) const;
    bool intersectWith(const CVexGeLine2d& other, int& count, PointMap& points, Intersect kind,
                       double tol) const;
    /// A closed one is opened first, even when it loses one piece only.
    CVexDbEntity* Trim(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& cutters,
                       double tol) override;
    bool Extend(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& boundaries, double tol) override;
    /// All offsets at `distance`, drawing units, on the side of `side`, or on both, in no block and
    /// without fill, appended to `out`; they are the caller's. The size of `out`.
    int Offset(const CVexGePoint2d& side, std::list<CVexDbPolyline*>& out, double distance,
               bool bothSides) const;

    [[nodiscard]] const CVexGePolyline2d& gePolyline() const { return m_geometry; }
    // Edits refresh the grips, whose indices may change; callers must not keep them. They answer
    // false, with nothing changed, for a vertex that does not exist. Bulges are tan(sweep / 4),
    // positive counter-clockwise in the direction of travel; widths are drawing units, -1 for none.
    void SetGeometry(const CVexGePolyline2d& geometry);
    /// Straight segments without widths.
    void SetVertexes(const std::vector<CVexGePoint2d>& points, bool closed);
    bool AppendVertex(const CVexGePoint2d& point, double bulge,
                      double startWidth = CVexGePolyline2d::kNoWidth,
                      double endWidth = CVexGePolyline2d::kNoWidth);
    bool AddVertexAt(unsigned index, const CVexGePoint2d& point, double bulge,
                     double startWidth = CVexGePolyline2d::kNoWidth,
                     double endWidth = CVexGePolyline2d::kNoWidth);
    bool RemoveVertexAt(int index);
    bool RemoveVertexAt(int first, int last);
    bool SetBulgeAt(unsigned index, double bulge);
    bool SetPointAt(unsigned index, const CVexGePoint2d& point);
    bool SetWidthsAt(unsigned index, double startWidth, double endWidth);
    void SetClosed(bool closed);
    bool ChangeStart(int index);
    /// Joins what meets an end; `index` tells where (see the kernel's appendPolyline).
    bool AppendPolyline(const CVexDbPolyline* other, int& index);
    bool AppendPolyline(const CVexDbLine* line, int& index);
    bool AppendPolyline(const CVexDbArc* arc, int& index);

    // Parameters are shares of the length, of the whole or of a segment: -1.0 where none fits.
    // A clockwise arc counts from its far end.
    [[nodiscard]] double SegParamAtParam(double param, int& segment) const;
    [[nodiscard]] double ParamAtSegParam(int segment, double param) const;
    // False, with the output as it was, for what does not exist or is of another kind.
    bool GetArcSegAt(unsigned index, CVexGeCircArc2d& out) const;
    bool GetLineSegAt(unsigned index, CVexGeLine2d& out) const;
    /// 0 for a vertex that does not exist.
    [[nodiscard]] double GetBulgeAt(unsigned index) const;
    bool GetBulgeAt(unsigned index, double& out) const;
    bool GetPointAt(unsigned index, CVexGePoint2d& out) const;
    bool GetWidthsAt(unsigned index, double& startWidth, double& endWidth) const;
    /// Some bulge is above 0.001; those of clockwise arcs do not count.
    [[nodiscard]] bool HasBulge() const;
    [[nodiscard]] bool HasWidth() const;
    /// The flag, which decides drawing, trim, fillet and divide.
    [[nodiscard]] bool IsClosed() const { return m_geometry.isClosed(); }
    /// The flag or ends that meet, which decide fill and boundaries.
    [[nodiscard]] bool Closed() const { return m_geometry.closed(); }
    /// No bulge is above 0.001; here, too, clockwise arcs do not count.
    [[nodiscard]] bool IsOnlyLines() const;
    [[nodiscard]] unsigned NumVerts() const { return m_geometry.numVerts(); }
    bool OnSegAt(unsigned index, const CVexGePoint2d& point, double& param, double tol) const;
    /// 0 a line segment, 1 an arc segment, 2 to 4 what is no segment (see the kernel's SegType).
    [[nodiscard]] int SegType(unsigned index) const;
    /// The first vertex not farther than `tol` from `point`; -1 for none.
    [[nodiscard]] int IsVertex(const CVexGePoint2d& point, double tol) const;

    /// Kept only by a closed polyline; an open one stores false.
    void SetFill(bool fill);
    /// False on an open polyline, whatever is stored.
    [[nodiscard]] bool IsFill() const;
    /// 0 for a solid fill, otherwise the brush's hatch style.
    void SetFillMode(int mode) { m_fillMode = mode; }
    [[nodiscard]] int FillMode() const { return m_fillMode; }

    /// Replaces a segment (0-based; the vertex count less one, or the vertex count, is a closed
    /// one's last) by `n` pieces of equal parameter without widths, recorded for undo. `n` below 2
    /// and the last vertex of an open polyline change nothing. The bool is not used.
    void DivideSegment(int n, int segment, bool);
    /// Rounds every corner between lines and arcs, as one undo block.
    void Fillet(double radius);
    /// Rounds the corner at vertex `index` where both segments are long enough, recorded for undo.
    /// `tol` is how far a segment, as computed, may miss the corner; drawing units, as the radius.
    void Fillet(int index, double radius, double tol);
    /// Whether a round of `radius` fits where two curves share an end: `arc` becomes the round,
    /// untouched when none does. `code` tells the ends that meet: 0 the first's end and the
    /// second's start, 1 both ends, 2 both starts, 3 the first's start and the second's end.
    static bool IsFilletable(const CVexGeLine2d& first, const CVexGeLine2d& second, double radius,
                             CVexGeCircArc2d& arc, int& code);
    static bool IsFilletable(const CVexGeLine2d& first, const CVexGeCircArc2d& second,
                             double radius, CVexGeCircArc2d& arc, int& code);
    static bool IsFilletable(const CVexGeCircArc2d& first, const CVexGeLine2d& second,
                             double radius, CVexGeCircArc2d& arc, int& code);
    static bool IsFilletable(const CVexGeCircArc2d& first, const CVexGeCircArc2d& second,
                             double radius, CVexGeCircArc2d& arc, int& code);
    /// Adds each segment to the drawing as a line or arc with these properties, recorded for undo;
    /// the polyline itself stays for the caller to erase.
    void Explode();

protected:
    CRect computeEntityRect() override;

private:
    /// What every edit ends with: grips and rectangle are computed when someone asks, so that an
    /// edit of one vertex does not cost a walk over all.
    void changed();

    bool m_fill = false;
    std::int32_t m_fillMode = 0;
};
