#pragma once

#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/geentity2d/vexgepolyline2d_index.h"
#include "vexge/geentity2d/vexgepolyline2d_offset.h"
#include "vexge/geentity2d/vexgepolyline2d_walk.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <vector>

/// A point of a piece: how far along it lies, and on which segment.
struct VexGePieceHit {
    double run = 0.0;
    std::size_t segment = 0;
    CVexGePoint2d point;
};

/// A piece of a raw offset chain while it is examined. It loses its head step by step, so its
/// vertices stay in place and a mark says where it begins; lengths run from the original start.
class VexGeOffsetPiece {
public:
    explicit VexGeOffsetPiece(CVexGePolyline2d chain);

    [[nodiscard]] std::size_t first() const { return m_first; }
    [[nodiscard]] std::size_t numVerts() const { return m_chain.numVerts() - m_first; }
    [[nodiscard]] std::size_t end() const { return m_chain.numVerts(); }
    [[nodiscard]] const CVexGePolyline2d& chain() const { return m_chain; }
    [[nodiscard]] const CVexGePoint2d& vertex(std::size_t i) const { return m_chain.vertices()[i]; }
    [[nodiscard]] const CVexGePoint2d& startPoint() const { return vertex(m_first); }
    [[nodiscard]] const CVexGePoint2d& endPoint() const { return m_chain.vertices().back(); }
    /// The length from the original start to vertex `i`.
    [[nodiscard]] double runAt(std::size_t i) const { return m_upTo[i]; }
    [[nodiscard]] double param(double run) const
    {
        return (run - m_upTo[m_first]) / (m_upTo.back() - m_upTo[m_first]);
    }
    /// Where `point`, which lies on segment `i`, is on the piece.
    [[nodiscard]] VexGePieceHit at(std::size_t i, const CVexGePoint2d& point) const;
    /// The hits of the bounded segments with a circle: the first and the last of them, or nothing.
    struct Span {
        VexGePieceHit low;
        VexGePieceHit high;
    };
    [[nodiscard]] std::optional<Span> hitsWith(const CVexGeCircArc2d& circle);
    /// The piece from its start to `hit`.
    [[nodiscard]] CVexGePolyline2d head(const VexGePieceHit& hit) const;
    /// Lets the piece begin at `hit`.
    void removeHead(const VexGePieceHit& hit);
    /// What is left, as a polyline; the piece is spent.
    [[nodiscard]] CVexGePolyline2d take();

private:
    CVexGePolyline2d m_chain;
    std::vector<double> m_upTo;
    std::optional<VexGeSegmentIndex> m_index; // made when first wanted
    std::size_t m_first = 0;
};

/// Cuts a raw chain where it crosses itself or the chain of the other side, and lets go of all that
/// comes nearer to the source than the distance.
class VexGeOffsetClipper {
public:
    using PolylineList = CVexGePolyline2d::PolylineList;

    VexGeOffsetClipper(const CVexGePolyline2d& source, double dist)
        : m_source(source), m_sourceIndex(source), m_sourceSegments(source), m_dist(dist),
          m_budget(kStepsPerSegment * (source.numVerts() + 16))
    {
    }
    /// Appends the clean pieces of `chain` to `out`; their number.
    int clip(CVexGePolyline2d chain, const CVexGePolyline2d& other, PolylineList& out);

private:
    /// Trimming ends of itself, in far fewer steps than this a segment; damaged coordinates may
    /// not, and lose what is left then.
    static constexpr std::size_t kStepsPerSegment = 256;

    using CutMap = std::map<double, CVexGePoint2d>;
    [[nodiscard]] CutMap whereToCut(const CVexGePolyline2d& chain,
                                    const CVexGePolyline2d& other) const;
    static std::vector<CVexGePolyline2d> cutAt(const CVexGePolyline2d& chain, const CutMap& cuts);
    void sortPieces(std::vector<CVexGePolyline2d> pieces);
    [[nodiscard]] std::optional<CVexGePoint2d> contact(const CVexGePolyline2d& chain,
                                                       std::size_t first) const;
    [[nodiscard]] bool liesOnSource(const CVexGePolyline2d& chain) const;

    void trimAtContacts();
    /// One step at a contact; false when the piece is given up.
    bool trimAtContact(VexGeOffsetPiece& piece, const CVexGePoint2d& contactPoint);
    [[nodiscard]] bool keepsDistance(const CVexGePoint2d& end, const CVexGePoint2d& cut) const;

    void trimNearApproaches(PolylineList& out);
    /// The point of the source at the piece's first place that is too near to it.
    [[nodiscard]] std::optional<CVexGePoint2d> firstNear(const VexGeOffsetPiece& piece);
    /// The point of a segment of the source that is too near to a vertex.
    [[nodiscard]] std::optional<CVexGePoint2d> nearVertex(const CVexGePoint2d& vertex,
                                                          unsigned sourceSegment) const;
    /// The point of the source, among the segments in m_near, at the first place of a segment that
    /// is too near to it.
    [[nodiscard]] std::optional<CVexGePoint2d> nearSegment(const VexGeOffsetPiece& piece,
                                                           unsigned index) const;
    /// One step at such a place; false when the piece is given up.
    bool trimAtNear(VexGeOffsetPiece& piece, const CVexGePoint2d& sourcePoint);
    [[nodiscard]] bool spendStep() { return m_budget > 0 && m_budget-- > 0; }

    const CVexGePolyline2d& m_source;
    VexGeSegmentIndex m_sourceIndex;
    VexGeSegmentCache m_sourceSegments;
    double m_dist;
    std::size_t m_budget;
    std::vector<unsigned> m_near; // segments of the source near the one that is looked at
    std::deque<CVexGePolyline2d> m_candidates;
    std::deque<CVexGePolyline2d> m_touching;
};
