#pragma once

#include "platform/base/vexexport.h"
#include "vexge/geentity3d/vexgeentity3d.h"
#include "vexge/geentity3d/vexgeline3d.h"

#include <vector>

class CVexGePlane;

/// A chain of straight segments in space. An open chain of n vertices has n - 1 segments, a closed
/// one n. The parameter is a share of the whole length.
class VEXGE_EXPORT CVexGePolyline3d : public CVexGeEntity3d {
public:
    CVexGePolyline3d() : CVexGeEntity3d(VexGe::kGePolyline3d) {}
    CVexGePolyline3d(const CVexGePolyline3d&) = default;
    explicit CVexGePolyline3d(const std::vector<CVexGePoint3d>& points);
    CVexGePolyline3d& operator=(const CVexGePolyline3d& other);

    /// Removes all vertices and makes room for `n`; the closed flag stays.
    void setSize(unsigned n);
    /// Always true.
    bool appendVertex(const CVexGePoint3d& point);
    /// Inserts before `index`; the count of vertices appends, a greater one is refused.
    bool addVertexAt(unsigned index, const CVexGePoint3d& point);
    /// Removes the vertices `first` to `last`; a `last` of 0 stands for `first`. False when `last`
    /// is below `first` or nothing of the range exists.
    bool removeVertexAt(int first, int last = 0);
    void reverse();
    /// Makes vertex `index` the first of a closed() chain. The last vertex of any chain reverses
    /// it. False for another vertex of an open chain, and for an index beyond the last.
    bool changeStart(int index);
    void setClosed(bool flag) { m_closedFlag = flag; }
    /// Joins `other` at the first of the ends that meet within 0.001: last to first, last to last,
    /// first to first, first to last. `index` becomes the count of `other` less 1 for a join at
    /// the end, 0 for one at the front. False when no ends meet or one of the two is closed.
    bool appendPolyline(const CVexGePolyline3d* other, int& index);
    /// As above for a line, without regard to the closed flag; `index` becomes this chain's count
    /// less 1, or 0.
    bool appendPolyline(const CVexGeLine3d* line, int& index);

    [[nodiscard]] unsigned numVerts() const { return static_cast<unsigned>(m_vertices.size()); }
    // False, with the output as it was, for an index beyond the last vertex or segment.
    bool getPointAt(unsigned index, CVexGePoint3d& out) const;
    /// False for a segment whose ends are within 0.001 too.
    bool getLineSegAt(unsigned index, CVexGeLine3d& out) const;
    /// Whether the segment holds `point`; `param` becomes its share of the segment.
    bool onSegAt(unsigned index, const CVexGePoint3d& point, double& param,
                 double tol = kGeEpsilon) const;
    /// The flag alone.
    [[nodiscard]] bool isClosed() const { return m_closedFlag; }
    /// The flag, or ends nearer than `tol`.
    [[nodiscard]] bool closed(double tol = kGeClosedTol) const;
    [[nodiscard]] bool isOn(const CVexGePoint3d& point, double tol = kGeEpsilon) const;
    /// The first segment that holds `point`, -1 for none.
    [[nodiscard]] int isOnSegAt(const CVexGePoint3d& point, double tol = kGeEpsilon) const;

    bool isEqualTo(const CVexGeEntity3d& other, double tol = kGeTol) const override;
    /// Same flag and count; coordinates each differ by at most `tol`.
    bool isEqualTo(const CVexGePolyline3d& other, double tol = kGeTol) const;
    /// Same flag and count, no vertex != .
    bool operator==(const CVexGePolyline3d& other) const;
    bool operator!=(const CVexGePolyline3d& other) const { return !(*this == other); }

    CVexGePolyline3d& translateBy(const CVexGeVector3d& vector);
    CVexGePolyline3d& scaleBy(double factor, const CVexGePoint3d& centre);
    CVexGePolyline3d& scaleBy(double fx, double fy, double fz, const CVexGePoint3d& centre);
    /// Turns by `angle` radians, right-handed, about the carrier of `axis`.
    CVexGePolyline3d& rotateBy(double angle, const CVexGeLine3d& axis);
    /// CVexGePoint3d::mirror of every vertex.
    CVexGePolyline3d& mirror(const CVexGePlane& plane);

    [[nodiscard]] double length() const;
    /// 0 when the parameters are nearer than `tol` or fall, or the first lies outside [0, 1].
    [[nodiscard]] double length(double fromParam, double toParam, double tol = kGeEpsilon) const;
    /// Held within [0, 1].
    [[nodiscard]] double paramAtDist(double fromParam, double dist, bool forward,
                                     double tol = kGeEpsilon) const;
    /// -1.0 when `point` is off the chain.
    [[nodiscard]] double paramAtPoint(const CVexGePoint3d& point, double tol = kGeEpsilon) const;
    [[nodiscard]] double distAtParam(double param) const;
    [[nodiscard]] double distAtPoint(const CVexGePoint3d& point, double tol = kGeEpsilon) const;
    [[nodiscard]] CVexGePoint3d pointAtDist(double dist) const;
    /// Within `tol` of 1 the end of the last segment; the origin for a parameter that none holds.
    [[nodiscard]] CVexGePoint3d pointAtParam(double param, double tol = kGeTol) const;
    // The unit normal within `plane`, as CVexGeLine3d::normalAtPlane; zero without a segment.
    [[nodiscard]] CVexGeVector3d normalAtSegment(unsigned index, const CVexGePlane& plane) const;
    [[nodiscard]] CVexGeVector3d normalAtParam(double param, const CVexGePlane& plane) const;
    [[nodiscard]] CVexGeVector3d normalAtPoint(const CVexGePoint3d& point, const CVexGePlane& plane,
                                               double tol = kGeEpsilon) const;
    /// The chain's parameter for parameter `param` of a segment; -1.0 without such a segment.
    [[nodiscard]] double paramAtSegParam(int segment, double param) const;
    /// The first segment that holds the point at `param`, within 0.01, and the parameter on it;
    /// -1.0, with `segment` at the count of segments, for none.
    double segParamAtParam(double param, int& segment) const;

    [[nodiscard]] CVexGePoint3d closestPointTo(const CVexGePoint3d& point,
                                               double tol = kGeEpsilon) const;
    /// As above; `segment` gets the index of the segment it lies on, -1 without any.
    CVexGePoint3d closestPointTo(const CVexGePoint3d& point, int& segment,
                                 double tol = kGeEpsilon) const;
    CVexGePoint3d closestPointTo(const CVexGeLine3d& line, CVexGePoint3d& onLine,
                                 double tol = kGeEpsilon) const;
    [[nodiscard]] double distanceTo(const CVexGePoint3d& point, double tol = kGeEpsilon) const;
    [[nodiscard]] double distanceTo(const CVexGeLine3d& line, double tol = kGeEpsilon) const;
    /// The shortest of the segments' perpendiculars whose foot lies on the chain, or of all when
    /// none does; false without a segment.
    bool perpVecFromPoint(const CVexGePoint3d& point, CVexGeVector3d& out,
                          double tol = kGeEpsilon) const;
    /// Appends the crossing of each segment with `plane`, but for one that equals the one before
    /// within 0.001; `count` becomes the size of `points`. True when it then holds a point.
    bool intersectWith(const CVexGePlane& plane, int& count, std::vector<CVexGePoint3d>& points,
                       Intersect kind, double tol = kGeEpsilon) const;

    /// Writes count, flag and the vertices: 5 + 24 n bytes.
    void save(CFile* file) const override;
    /// A count that the file cannot hold fails the file and leaves no vertices.
    void read(CFile* file) override;

private:
    struct Place; // a segment and the parameter on it
    [[nodiscard]] unsigned numSegments() const;
    [[nodiscard]] Place placeAt(double param) const;

    std::vector<CVexGePoint3d> m_vertices;
    bool m_closedFlag = false;
};
