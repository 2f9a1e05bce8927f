#pragma once

#include "platform/base/vexexport.h"
#include "vexge/geentity2d/vexgeentity2d.h"

#include <map>
#include <memory>
#include <vector>

class CVexDbRect;
class CVexGeCircArc2d;
class CVexGeEllipArc2d;

/// A chain of straight and circular segments: vertices, each with the bulge and the widths of the
/// segment that starts there. A bulge is tan(sweep / 4): 0 is straight, positive bends
/// counter-clockwise in the direction of travel, 1 is a half circle.
///
/// An open chain of n vertices has n - 1 segments, a closed one n. The parameter is a share of the
/// whole length, not a segment's number. Segments are made on the stack for each query; the arc of
/// a negative bulge runs from the far vertex, since arcs are stored counter-clockwise.
class VEXGE_EXPORT CVexGePolyline2d : public CVexGeEntity2d {
public:
    enum SegType : int {
        kLine = 0,
        kArc = 1,
        kCoincident = 2, ///< both ends within 0.001
        kPoint = 3,      ///< the last vertex of an open chain
        kEmpty = 4,      ///< no vertices
    };
    /// The start and end width of a vertex that has none.
    static constexpr double kNoWidth = -1.0;
    /// Polylines that offsets give, owned by the list.
    using PolylineList = std::vector<std::unique_ptr<CVexGePolyline2d>>;
    /// Hits by their parameter on the receiver, which is cut to steps of 1e-8.
    using ParamMap = std::map<double, CVexGePoint2d>;

    /// No vertices, open.
    CVexGePolyline2d() : CVexGeEntity2d(VexGe::kGePolyline2d) {}
    CVexGePolyline2d(const CVexGePolyline2d&) = default;
    CVexGePolyline2d(CVexGePolyline2d&& other) noexcept = default;
    /// Straight segments without widths.
    explicit CVexGePolyline2d(const std::vector<CVexGePoint2d>& points);
    CVexGePolyline2d& operator=(const CVexGePolyline2d& other);
    CVexGePolyline2d& operator=(CVexGePolyline2d&& other) noexcept;
    /// Takes the polyline form of `arc`.
    CVexGePolyline2d& operator=(const CVexGeCircArc2d& arc);

    /// Removes all vertices and makes room for `n`; the closed flag stays.
    void setSize(unsigned n);
    void set(const std::vector<CVexGePoint2d>& points);
    /// One bulge a point; no widths.
    void set(const std::vector<CVexGePoint2d>& points, const std::vector<double>& bulges);
    /// Always true.
    bool appendVertex(const CVexGePoint2d& point, double bulge = 0.0, double startWidth = kNoWidth,
                      double endWidth = kNoWidth);
    /// Inserts before `index`; the count of vertices appends, a greater one is refused.
    bool addVertexAt(unsigned index, const CVexGePoint2d& point, double bulge = 0.0,
                     double startWidth = kNoWidth, double endWidth = kNoWidth);
    /// Removes the vertices `first` to `last`; a `last` of 0 stands for `first`. False when `last`
    /// is below `first` or nothing of the range exists.
    bool removeVertexAt(int first, int last = 0);
    // False, with nothing changed, for an index beyond the last vertex.
    bool setPointAt(unsigned index, const CVexGePoint2d& point);
    bool setBulgeAt(unsigned index, double bulge);
    bool setWidthsAt(unsigned index, double startWidth, double endWidth);
    /// Turns the direction of travel. The widths stay where they are.
    void reverse();
    /// Makes vertex `index` the first of a closed chain; the widths stay where they are. The last
    /// vertex of any chain reverses it. False for another vertex of an open chain.
    bool changeStart(int index);
    /// Sets the flag. When the segment before the last vertex is an arc, the closing bulge becomes
    /// that of an arc which continues it smoothly, for either value of `flag`.
    void setClosed(bool flag);
    /// Joins `other`, which stays as it is, at the first of the ends that meet within 0.001: last
    /// to first, last to last, first to first, first to last. `index` becomes `other`'s count less
    /// 1 for a join at the end (this chain's count less 1 for a line or arc), 0 for one at the
    /// front. False when no ends meet or either polyline is flagged closed.
    bool appendPolyline(const CVexGePolyline2d* other, int& index);
    /// As above, without regard to the closed flag.
    bool appendPolyline(const CVexGeLine2d* line, int& index);
    bool appendPolyline(const CVexGeCircArc2d* arc, int& index);

    [[nodiscard]] unsigned numVerts() const { return static_cast<unsigned>(m_vertices.size()); }
    // False, with the output as it was, for an index beyond the last vertex.
    bool getPointAt(unsigned index, CVexGePoint2d& out) const;
    bool getBulgeAt(unsigned index, double& out) const;
    bool getWidthsAt(unsigned index, double& startWidth, double& endWidth) const;
    /// Unchecked.
    [[nodiscard]] double getBulgeAt(unsigned index) const { return m_bulges[index]; }
    [[nodiscard]] const std::vector<CVexGePoint2d>& vertices() const { return m_vertices; }
    [[nodiscard]] const std::vector<double>& bulges() const { return m_bulges; }
    [[nodiscard]] const std::vector<double>& startWidths() const { return m_startWidths; }
    [[nodiscard]] const std::vector<double>& endWidths() const { return m_endWidths; }
    /// The flag alone.
    [[nodiscard]] bool isClosed() const { return m_closedFlag; }
    /// The flag, or ends nearer than 0.002.
    [[nodiscard]] bool closed() const;
    [[nodiscard]] SegType segType(unsigned index) const;
    // False unless the segment is of that kind.
    bool getLineSegAt(unsigned index, CVexGeLine2d& out) const;
    bool getArcSegAt(unsigned index, CVexGeCircArc2d& out) const;
    /// Whether the segment holds `point`; `param` becomes its share of the segment, which on an
    /// arc of negative bulge counts from the far vertex.
    bool onSegAt(unsigned index, const CVexGePoint2d& point, double& param,
                 const double& tol = kGeEpsilon) const;
    /// The first segment that holds `point`, -1 for none.
    [[nodiscard]] int isOnSegAt(const CVexGePoint2d& point, double tol = kGeEpsilon) const;
    /// The first vertex within `tol` of `point`, -1 for none.
    [[nodiscard]] int isVertex(const CVexGePoint2d& point, double tol = kGeTol) const;
    /// True when no bulge is above 0.001; negative ones do not count.
    [[nodiscard]] bool isOnlyLines() const { return !hasBulges(); }
    /// True when some bulge is above 0.001; negative ones do not count.
    [[nodiscard]] bool hasBulges() const;
    [[nodiscard]] bool hasWidth() const;
    /// Whether the vertices run counter-clockwise; bulges do not count.
    [[nodiscard]] bool isCCW() const;
    /// The box of the vertices: arcs may swell out of it. Both stay as they were when there are no
    /// vertices.
    void getMinMaxpoint(CVexGePoint2d& min, CVexGePoint2d& max) const;
    /// The same box. Defined beside CVexDbRect, in the database's library.
    [[nodiscard]] CVexDbRect getOutRect() const;

    bool isEqualTo(const CVexGeEntity2d& other, const double& tol = kGeTol) const override;
    /// Same flag and count; coordinates, bulges and widths each differ by at most `tol`.
    bool isEqualTo(const CVexGePolyline2d& other, const double& tol = kGeTol) const;
    /// Same flag and count, no vertex !=, bulges and widths exactly equal.
    bool operator==(const CVexGePolyline2d& other) const;
    bool operator!=(const CVexGePolyline2d& other) const { return !(*this == other); }

    int isOn(const CVexGePoint2d& point, const double& tol = kGeEpsilon) const override;
    // The edits act on the vertices: bulges and widths stay, only mirror() turns the bulges.
    CVexGePolyline2d& scaleBy(double fx, double fy, const CVexGePoint2d& centre) override;
    CVexGePolyline2d& scaleBy(double factor, const CVexGePoint2d& centre) override;
    CVexGePolyline2d& mirror(const CVexGeLine2d& line) override;
    CVexGePolyline2d& rotateBy(double angle, const CVexGePoint2d& centre) override;
    CVexGePolyline2d& translateBy(const CVexGeVector2d& vector) override;
    CVexGePolyline2d& transformBy(const CVexGeMatrix2d& matrix) override;
    /// Whether a closed() chain encloses `point`, by the crossings of a ray.
    bool isInsidePoint(const CVexGePoint2d& point) const override;
    double length() const override;
    /// 0 when the parameters are nearer than `tol` or fall, or the first lies outside [0, 1].
    double length(double fromParam, double toParam, double tol = kGeEpsilon) const override;
    /// Held within [0, 1].
    double paramAtDist(double fromParam, double dist, bool forward,
                       double tol = kGeEpsilon) const override;
    double paramAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    double distAtParam(double param) const override;
    double distAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    CVexGePoint2d pointAtDist(double dist) const override;
    /// Within 0.001 of 1 the end itself; the origin for a parameter that no segment holds.
    CVexGePoint2d pointAtParam(double param) const override;
    CVexGeVector2d normalAtParam(double param) const override;
    CVexGeVector2d normalAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    CVexGePoint2d closestPointTo(const CVexGePoint2d& point,
                                 double tol = kGeEpsilon) const override;
    /// As above; `segment` gets the index of the segment it lies on.
    CVexGePoint2d closestPointTo(const CVexGePoint2d& point, int& segment,
                                 double tol = kGeEpsilon) const;
    CVexGePoint2d closestPointTo(const CVexGeLine2d& line, CVexGePoint2d& onLine,
                                 double tol = kGeEpsilon) const override;
    CVexGePoint2d closestPointTo(const CVexGeCircArc2d& arc, CVexGePoint2d& onOther,
                                 double tol = kGeEpsilon) const;
    double distanceTo(const CVexGeLine2d& line, double tol = kGeEpsilon) const override;
    double distanceTo(const CVexGePoint2d& point, double tol = kGeEpsilon) const override;
    /// 0 on a straight segment, the radius on an arc.
    double curvatureAtParam(double param) const override;
    double curvatureAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    /// The shortest of the segments' perpendiculars whose foot lies on the chain; the shortest of
    /// all when none does. The answer is that of the last segment, not of the one that was taken.
    bool perpVecFromPoint(const CVexGePoint2d& point, CVexGeVector2d& out,
                          double tol = kGeEpsilon) const override;
    /// The chain's parameter for parameter `param` of a segment's own line or arc; -1.0 for a
    /// segment without length or index.
    [[nodiscard]] double paramAtSegParam(int segment, double param) const;
    /// The other way: the first segment that holds the point, within 0.01, and the parameter on it;
    /// -1.0, with `segment` at the count, for none.
    double segParamAtParam(double param, int& segment) const;
    /// Writes count, flag, then each vertex with bulge, start width, end width: 5 + 44 n bytes.
    void save(CFile* file) const override;
    void read(CFile* file) override;

    // Hits in the order of the segments, appended to `out`; adjacent equal ones are reduced and
    // `count` becomes the size of `out`. True when `out` then holds a point.
    bool intersectWith(const CVexGeLine2d& line, int& count, std::vector<CVexGePoint2d>& out,
                       Intersect kind, double tol = kGeEpsilon) const;
    bool intersectWith(const CVexGeCircArc2d& arc, int& count, std::vector<CVexGePoint2d>& out,
                       Intersect kind, double tol = kGeEpsilon) const;
    bool intersectWith(const CVexGeEllipArc2d& ellipse, int& count, std::vector<CVexGePoint2d>& out,
                       Intersect kind, double tol = kGeEpsilon) const;
    bool intersectWith(const CVexGePolyline2d& other, int& count, std::vector<CVexGePoint2d>& out,
                       Intersect kind, double tol = kGeEpsilon) const;
    // Hits by parameter; of two with one key the first stays. Only the form for a polyline counts
    // the parameter in the direction of travel on an arc of negative bulge.
    bool intersectWith(const CVexGeLine2d& line, int& count, ParamMap& out, Intersect kind,
                       double tol = kGeEpsilon) const;
    bool intersectWith(const CVexGeCircArc2d& arc, int& count, ParamMap& out, Intersect kind,
                       double tol = kGeEpsilon) const;
    bool intersectWith(const CVexGeEllipArc2d& ellipse, int& count, ParamMap& out, Intersect kind,
                       double tol = kGeEpsilon) const;
    bool intersectWith(const CVexGePolyline2d& other, int& count, ParamMap& out, Intersect kind,
                       double tol = kGeEpsilon) const;
    /// Removes the second of two neighbours that are equal within 0.001, and then looks beyond it,
    /// so that of three equal ones two stay. The remaining size.
    int CheckSameIntPoints(std::vector<CVexGePoint2d>& points) const;

    /// Becomes the joined offset with the most vertices, at `dist` on the side of `side`. False,
    /// with nothing changed, when no piece keeps its distance.
    bool offset(const CVexGePoint2d& side, double dist);
    /// All joined offsets of that side, or of both, appended to `out`; their count.
    int offset(const CVexGePoint2d& side, double dist, PolylineList& out, bool bothSides) const;
    /// The same.
    int getOffsetPolylines(const CVexGePoint2d& side, double dist, PolylineList& out,
                           bool bothSides) const;
    /// The pieces before they are joined, in place of what `out` held; true when there are any.
    bool getOffset(const CVexGePoint2d& side, double dist, PolylineList& out, bool bothSides) const;
    /// 1 when `side` lies to the left of the segment nearest to it, -1 otherwise.
    [[nodiscard]] int getoffsetDirection(const CVexGePoint2d& side, double dist) const;

protected:
    // The steps of an offset on a working copy: vertices and bulges of the chain on one side.
    void checkLocalSelfIntersect(std::vector<CVexGePoint2d>& points, std::vector<double>& bulges,
                                 double dist, int side) const;
    void getOffsetPoly(std::vector<CVexGePoint2d>& points, std::vector<double>& bulges, double dist,
                       int side) const;
    int clipOffsetPoly(const std::vector<CVexGePoint2d>& points, const std::vector<double>& bulges,
                       const std::vector<CVexGePoint2d>& otherPoints,
                       const std::vector<double>& otherBulges, double dist,
                       PolylineList& out) const;

private:
    friend struct CVexGePolylineWalk;

    bool appendSegment(const CVexGePoint2d& start, const CVexGePoint2d& end, double bulge,
                       int& index);
    // How far along a segment `point` lies in the direction of travel.
    static double distOn(const CVexGeLine2d& line, double bulge, const CVexGePoint2d& point,
                         double tol);
    static double distOn(const CVexGeCircArc2d& arc, double bulge, const CVexGePoint2d& point,
                         double tol);
    [[nodiscard]] unsigned nextIndex(unsigned index) const
    {
        return index + 1 < numVerts() ? index + 1 : 0;
    }

    std::vector<CVexGePoint2d> m_vertices;
    std::vector<double> m_bulges;
    std::vector<double> m_endWidths;
    std::vector<double> m_startWidths;
    bool m_closedFlag = false;
};
