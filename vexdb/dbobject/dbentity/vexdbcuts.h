#pragma once

#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbcutplaces.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"

#include <memory>
#include <vector>

// What trimming and extending share, whatever the kind of curve: where others meet it, in which
// order these cuts lie along it, and which piece a pick means.

/// The ends of an open curve, as undo records number them.
enum VexDbCurveEnd : int { kCurveStart = 0, kCurveEnd = 1 };

/// A curve as a way from its start to its end, in drawing units. A parameter of the kernel is -1
/// for a point that lies a hair off the curve; this has a place for each point.
class VexDbWay {
public:
    virtual ~VexDbWay();
    /// How far along the curve its point nearest to `point` lies.
    [[nodiscard]] virtual double along(const CVexGePoint2d& point) const = 0;
    /// Whether `point` is nearer to the start, along the curve; in the middle it is not.
    [[nodiscard]] bool isNearerStart(const CVexGePoint2d& point) const;
    [[nodiscard]] double length() const { return m_length; }
    /// Cuts not farther apart than this are one, and no cut so near to an end of an open curve.
    [[nodiscard]] double spacing() const { return m_spacing; }

protected:
    VexDbWay(double length, double spacing) : m_length(length), m_spacing(spacing) {}

private:
    double m_length;
    double m_spacing;
};

class VexDbLineWay : public VexDbWay {
public:
    explicit VexDbLineWay(const CVexGeLine2d& line);
    [[nodiscard]] double along(const CVexGePoint2d& point) const override;

private:
    CVexGePoint2d m_start;
    CVexGeVector2d m_direction;
};

/// Counter-clockwise along an arc, or once round a circle.
class VexDbArcWay : public VexDbWay {
public:
    explicit VexDbArcWay(const CVexGeCircArc2d& arc);
    [[nodiscard]] double along(const CVexGePoint2d& point) const override;

private:
    CVexGePoint2d m_center;
    double m_radius;
    double m_start; // radians
    double m_sweep;
};

/// The points of `curve` where `others` meet it, in their order. Those that keep away from all
/// of it are passed over unasked.
CVexDbEntity::PointList hitsOf(const CVexDbEntity& curve, const std::vector<CVexDbEntity*>& others,
                               CVexDbEntity::Intersect kind, double tol);

/// The cuts of one curve in their order along it.
class VexDbCuts {
public:
    /// The points live as long as the cuts.
    using Piece = VexDbCutPiece<CVexGePoint2d>;

    /// Gathers the cuts of `curve` by `cutters`; `way` is its own. Of two that are one the first
    /// stays.
    VexDbCuts(const CVexDbEntity& curve, const VexDbWay& way,
              const std::vector<CVexDbEntity*>& cutters, double tol);
    /// The piece of an open curve at `pick`: a pick on the first cut takes the start side. A cut
    /// that would leave no more than `shortest` of the curve beyond the piece counts as none.
    [[nodiscard]] Piece openPieceAt(const CVexGePoint2d& pick, double shortest = 0.0);
    /// The piece of a closed curve at `pick`, from cut to cut over its start if need be; none with
    /// fewer than two cuts.
    [[nodiscard]] Piece closedPieceAt(const CVexGePoint2d& pick) const;

private:
    void add(const CVexGePoint2d& point, bool closed);
    [[nodiscard]] double placeOf(const CVexGePoint2d& pick) const;
    void dropStubs(double at, double shortest);

    const VexDbWay& m_way;
    VexDbCutPlaces<CVexGePoint2d> m_cuts;
};

/// A record about `entity` that ends a step, for the caller to give its numbers.
tagUndoEditEntity undoEditOf(const CVexDbEntity& entity, UndoEditType type);
/// Records an edit of `entity` in its drawing, the active one when it has none.
void recordEdit(const CVexDbEntity& entity, const tagUndoEditEntity& edit);

/// Takes a piece out of an open curve: what is left of it at the start, or else at the end, is
/// `curve`, a part beyond the piece is a new entity, the caller's. `moveEnd` records and does,
/// `setStart` only does.
template <class Curve>
CVexDbEntity* takeOut(Curve& curve, const VexDbCuts::Piece& piece,
                      void (*moveEnd)(Curve&, VexDbCurveEnd, const CVexGePoint2d&),
                      void (*setStart)(Curve&, const CVexGePoint2d&))
{
    std::unique_ptr<Curve> rest;
    if (piece.before != nullptr && piece.behind != nullptr) {
        rest.reset(static_cast<Curve*>(curve.CopyEntity(true))); // drawing and properties, too
        setStart(*rest, *piece.behind);
    }
    if (piece.before != nullptr) {
        moveEnd(curve, kCurveEnd, *piece.before);
    } else if (piece.behind != nullptr) {
        moveEnd(curve, kCurveStart, *piece.behind);
    }
    return rest.release();
}
