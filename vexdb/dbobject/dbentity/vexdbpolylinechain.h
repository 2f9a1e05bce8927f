#pragma once

#include "vexdb/dbobject/dbentity/vexdbcutplaces.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdbpolylinesegment.h"

#include <vector>

/// The points where the segment, extended or not as `kind` says, meets `other`; `hits` is cleared
/// first.
void hitsOfSegment(const VexPolylineSegment& segment, const CVexDbEntity& other,
                   CVexDbEntity::PointList& hits, CVexDbEntity::Intersect kind, double tol);

/// A place where a polyline is cut.
struct VexPolylineCut {
    CVexGePoint2d point;
    unsigned segment = 0; // that holds the point; of a cut at a vertex the one that starts there
    double along = 0.0;   // the segment, drawing units
    bool isVertex = false;
};

/// A polyline as a way from its start to its end, with the cuts on it. It looks into the polyline,
/// which has to stay as it is.
class VexPolylineChain {
public:
    /// The cuts live as long as the chain.
    using Piece = VexDbCutPiece<VexPolylineCut>;

    explicit VexPolylineChain(const CVexGePolyline2d& polyline);
    /// Adds the places where `cutter` meets the polyline. Of cuts that lie on one another the first
    /// stays, and one at the start or end takes nothing off.
    void cutBy(const CVexDbEntity& cutter, double tol);
    [[nodiscard]] Piece pieceAt(const CVexGePoint2d& pick) const;
    /// Whether `pick` means the first half; in the middle it does not.
    [[nodiscard]] bool isNearerStart(const CVexGePoint2d& pick) const;

private:
    template <class Curve>
    void cutByCurve(const Curve& curve, double tol);
    void cutByPolyline(const CVexGePolyline2d& other, double tol);
    void add(unsigned segment, const CVexGePoint2d& hit, double tol);
    void keep(double place, const VexPolylineCut& cut);
    [[nodiscard]] unsigned segmentOf(double param, const CVexGePoint2d& hit) const;
    [[nodiscard]] double placeOf(const CVexGePoint2d& pick) const;
    [[nodiscard]] double length() const { return m_upTo.back(); }

    const CVexGePolyline2d& m_polyline;
    std::vector<double> m_upTo; // the length up to each vertex, and over all
    VexDbCutPlaces<VexPolylineCut> m_cuts;
};
