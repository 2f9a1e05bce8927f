#pragma once

#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <optional>
#include <vector>

// What the steps of an offset share: vertices and bulges of a chain under work, and the numbers
// that the steps were tuned with, in drawing units.

/// Ends of neighbouring offset segments that are this near meet without trimming; a chain whose
/// ends are this near is a loop.
inline constexpr double kOffsetJoinTol = 0.005;
/// Source vertices nearer than this to the one before are dropped, and self-hits nearer than this
/// to a vertex are the vertex.
inline constexpr double kOffsetVertexTol = 0.05;
/// How much nearer than the distance a piece may come to the source; also the share of a piece's
/// length that counts as its end.
inline constexpr double kOffsetClipTol = 0.002;

/// Vertices and bulges of a chain under work.
struct VexGeOffsetChain {
    std::vector<CVexGePoint2d> points;
    std::vector<double> bulges;

    void push(const CVexGePoint2d& point, double bulge)
    {
        points.push_back(point);
        bulges.push_back(bulge);
    }
};

/// One segment of the source moved sideways, in its direction of travel.
class VexGeOffsetSegment {
public:
    /// The segment from `start` to `end`, `dist` to the left (`side` 1) or right (-1). None for an
    /// arc whose radius is not above `dist` and for a segment without length.
    static std::optional<VexGeOffsetSegment>
    make(const CVexGePoint2d& start, const CVexGePoint2d& end, double bulge, double dist, int side);
    /// An arc that is moved to where `sidePoint` lies, inside or outside its circle.
    static std::optional<VexGeOffsetSegment> makeTowards(const CVexGeCircArc2d& arc,
                                                         const CVexGePoint2d& sidePoint,
                                                         double dist, bool clockwise);

    [[nodiscard]] bool isArc() const { return m_isArc; }
    [[nodiscard]] const CVexGeLine2d& line() const { return m_line; }
    [[nodiscard]] const CVexGeCircArc2d& arc() const { return m_arc; }
    [[nodiscard]] CVexGePoint2d start() const;
    [[nodiscard]] CVexGePoint2d end() const;
    /// A point beyond the start, for telling which way the segment leaves.
    [[nodiscard]] CVexGePoint2d thirdPoint() const;
    /// 0 for a line.
    [[nodiscard]] double signedBulge() const;
    /// Whether the bounded segment holds `point`, within `tol`.
    [[nodiscard]] bool holds(const CVexGePoint2d& point, double tol) const;
    // Moves an end of an arc along its circle to the direction of `point`. An arc that is only cut
    // short never becomes longer: a cut a rounding error beyond its other end leaves nothing.
    void setStart(const CVexGePoint2d& point, bool shorten);
    void setEnd(const CVexGePoint2d& point, bool shorten);

private:
    void setAngle(bool startAngle, const CVexGePoint2d& point, bool shorten);

    CVexGeLine2d m_line;
    CVexGeCircArc2d m_arc;
    bool m_isArc = false;
    bool m_clockwise = false;
};

/// Resolves the corner between two offset segments: puts the vertices between them at the end of
/// the chain, which ends with the start of `prev`.
class VexGeOffsetCorner {
public:
    VexGeOffsetCorner(VexGeOffsetChain& chain, VexGeOffsetSegment& prev, VexGeOffsetSegment& cur,
                      const CVexGePoint2d& vertex, double inputBulge, double dist)
        : m_chain(chain), m_prev(prev), m_cur(cur), m_vertex(vertex), m_inputBulge(inputBulge),
          m_dist(dist)
    {
    }
    void resolve();

private:
    /// A crossing of the two extended segments, and which of the bounded ones hold it.
    struct Crossing {
        CVexGePoint2d point;
        bool onPrev = false;
        bool onCur = false;
        [[nodiscard]] bool onBoth() const { return onPrev && onCur; }
        [[nodiscard]] bool onOne() const { return onPrev != onCur; }
    };

    void lineToLine();
    void lineToArc();
    void arcToLine();
    void arcToArc();
    [[nodiscard]] std::optional<Crossing> crossingWithLine(const CVexGeLine2d& line,
                                                           const CVexGeCircArc2d& arc) const;
    [[nodiscard]] std::optional<Crossing> crossingOfArcs() const;
    void trimPrev(const Crossing& crossing);
    void trimCur(const Crossing& crossing);
    void fillet(double bulgeAtStart);
    [[nodiscard]] bool filletIsClockwise() const;

    VexGeOffsetChain& m_chain;
    VexGeOffsetSegment& m_prev;
    VexGeOffsetSegment& m_cur;
    CVexGePoint2d m_vertex;
    double m_inputBulge;
    double m_dist;
};

/// By how much the chain that stands for an arc as an ellipse leaves its circle near its end, as a
/// share of the radius.
inline constexpr double kArcChainError = 0.01;
/// Where two neighbouring arcs of a chain cross, their joint included, by the chain that stands for
/// `prev` as an ellipse; nothing when the joint is all that they have in common.
std::vector<CVexGePoint2d> crossingsOfArcs(const CVexGeCircArc2d& prev, const CVexGeCircArc2d& cur);

/// The angle, in the direction of travel, from the start of an arc segment of that bulge to the
/// direction of `point`; held within the sweep by the nearer end.
double travelAngle(const CVexGeCircArc2d& arc, double bulge, const CVexGePoint2d& point);

/// The point of a segment that stands for `point`, which lies on its line or circle: itself, or the
/// end that it lies beyond. An arc forgives 0.001 radians beyond its ends, which is a unit of
/// length at a radius of 1000: its hits and closest points may lie off the chain that is under
/// work.
inline const CVexGePoint2d& heldWithin(const CVexGeLine2d& /*line*/, const CVexGePoint2d& point)
{
    return point;
}
CVexGePoint2d heldWithin(const CVexGeCircArc2d& arc, const CVexGePoint2d& point);

/// Whether a hit of a segment is one: whether it lies between its ends, visibly.
template <class Segment>
bool isBetweenEnds(const Segment& segment, const CVexGePoint2d& hit)
{
    return heldWithin(segment, hit).isEqualTo(hit, kGeTol);
}

/// How far along a segment in the direction of travel a point of it lies. Unlike distAtPoint() it
/// tells places apart that are near an end of an arc.
double alongSegment(const CVexGeLine2d& line, double bulge, const CVexGePoint2d& point);
double alongSegment(const CVexGeCircArc2d& arc, double bulge, const CVexGePoint2d& point);

/// The bulges of the two parts of an arc segment, from `start` to `end`, that is cut at `cut`.
struct VexGeSplitBulge {
    double before = 0.0;
    double after = 0.0;
};
VexGeSplitBulge splitBulge(const CVexGePoint2d& start, const CVexGePoint2d& end, double bulge,
                           const CVexGePoint2d& cut);

/// Tries `chain` with each of the list from its start, again from the start after each one that
/// could be joined to it and leaves the list.
void joinOffsetPieces(CVexGePolyline2d& chain, CVexGePolyline2d::PolylineList& list);
