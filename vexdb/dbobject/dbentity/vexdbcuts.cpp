#include "vexdb/dbobject/dbentity/vexdbcuts.h"

#include "vexdb/dbobject/dbentity/vexdbcurve.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgerect2d.h"

#include <algorithm>
#include <cmath>

namespace {

/// The box of a circle, whose sides are never in the wrong order.
void boxOfCircle(const CVexGePoint2d& center, double radius, CVexGePoint2d& min, CVexGePoint2d& max)
{
    const double reach = std::fabs(radius);
    min.set(center.x - reach, center.y - reach);
    max.set(center.x + reach, center.y + reach);
}

/// A box that holds a curve, found without sines: it is asked of each boundary and must cost less
/// than the intersection that it saves. An arc's is that of its circle, a rectangle's that of the
/// circle through its corners.
bool roughBoxOf(const CVexDbEntity& entity, CVexGePoint2d& min, CVexGePoint2d& max)
{
    if (!entity.IsCurveEntity()) {
        return false;
    }
    const CVexGeEntity2d* curve = static_cast<const CVexDbCurve&>(entity).geCurve();
    switch (curve->type()) {
    case VexGe::kGeLine2d: {
        const auto& line = static_cast<const CVexGeLine2d&>(*curve);
        const CVexGePoint2d& a = line.startPoint();
        const CVexGePoint2d& b = line.endPoint();
        min.set(std::min(a.x, b.x), std::min(a.y, b.y));
        max.set(std::max(a.x, b.x), std::max(a.y, b.y));
        return true;
    }
    case VexGe::kGeCircArc2d: {
        const auto& arc = static_cast<const CVexGeCircArc2d&>(*curve);
        boxOfCircle(arc.center(), arc.radius(), min, max);
        return true;
    }
    case VexGe::kGeRect2d: {
        const auto& rect = static_cast<const CVexGeRect2d&>(*curve);
        boxOfCircle(rect.centerPoint(), rect.diagonal() / 2.0, min, max);
        return true;
    }
    default: return entity.trueExtents(min, max);
    }
}

/// Where a curve can be hit at all: in its box, for a round one near its circle, too; for an
/// unbounded line along its carrier. Comparisons with what is not a number keep all in reach.
class Reach {
public:
    Reach(const CVexDbEntity& curve, CVexDbEntity::Intersect kind, double tol)
        : m_margin(tol + kGeTol)
    {
        const auto& geometry = *static_cast<const CVexDbCurve&>(curve).geCurve();
        const VexGe::EntityId type = geometry.type();
        if (kind == CVexGeEntity2d::kExtendNone) {
            m_isBox = curve.trueExtents(m_min, m_max);
            m_isRound = m_isBox && type == VexGe::kGeCircArc2d;
        } else if (kind == CVexGeEntity2d::kExtendThis && type == VexGe::kGeLine2d) {
            const auto& line = static_cast<const CVexGeLine2d&>(geometry);
            m_isCarrier = true;
            m_base = line.startPoint();
            m_across = line.direction().perpVector();
        }
        if (m_isRound) {
            const auto& arc = static_cast<const CVexGeCircArc2d&>(geometry);
            m_base = arc.center();
            m_radius = std::fabs(arc.radius());
        }
    }
    [[nodiscard]] bool meets(const CVexDbEntity& other) const
    {
        CVexGePoint2d min, max;
        if (!(m_isBox || m_isCarrier) || !roughBoxOf(other, min, max)) {
            return true;
        }
        if (m_isCarrier) {
            return !isOffCarrier(min, max);
        }
        return !isBeside(min, max) && !(m_isRound && isOffCircle(min, max));
    }

private:
    [[nodiscard]] bool isBeside(const CVexGePoint2d& min, const CVexGePoint2d& max) const
    {
        return max.x < m_min.x - m_margin || min.x > m_max.x + m_margin ||
               max.y < m_min.y - m_margin || min.y > m_max.y + m_margin;
    }
    /// Wholly within the circle or wholly without.
    [[nodiscard]] bool isOffCircle(const CVexGePoint2d& min, const CVexGePoint2d& max) const
    {
        const CVexGeVector2d half = (max - min) * 0.5;
        const CVexGeVector2d way = min + half - m_base;
        const double x = std::fabs(way.x), y = std::fabs(way.y);
        const CVexGeVector2d nearest(std::max(x - half.x, 0.0), std::max(y - half.y, 0.0));
        const CVexGeVector2d farthest(x + half.x, y + half.y);
        const double inner = m_radius - m_margin;
        const double outer = m_radius + m_margin;
        return (inner > 0.0 && farthest.lengthSqrd() < inner * inner) ||
               nearest.lengthSqrd() > outer * outer;
    }
    [[nodiscard]] bool isOffCarrier(const CVexGePoint2d& min, const CVexGePoint2d& max) const
    {
        const CVexGeVector2d half = (max - min) * 0.5;
        const double gap = std::fabs((min + half - m_base).dotProduct(m_across));
        const double reach = std::fabs(half.x * m_across.x) + std::fabs(half.y * m_across.y);
        return gap > reach + m_margin;
    }

    double m_margin; // of two ends that count as one
    bool m_isBox = false;
    bool m_isRound = false;
    bool m_isCarrier = false;
    CVexGePoint2d m_min;
    CVexGePoint2d m_max;
    CVexGePoint2d m_base; // the centre, or a point of the carrier
    double m_radius = 0.0;
    CVexGeVector2d m_across; // the carrier
};

double fullTurns(double angle) // taken off: what is left is of [0, 2 pi]
{
    return notNegativeAngle(std::fmod(angle, kGeTwoPi));
}

} // namespace

VexDbWay::~VexDbWay() = default;

bool VexDbWay::isNearerStart(const CVexGePoint2d& point) const
{
    return along(point) + kGeEpsilon < m_length / 2.0;
}

VexDbLineWay::VexDbLineWay(const CVexGeLine2d& line)
    : VexDbWay(line.length(), kGeTol), m_start(line.startPoint()), m_direction(line.direction())
{
}

double VexDbLineWay::along(const CVexGePoint2d& point) const
{
    return std::clamp((point - m_start).dotProduct(m_direction), 0.0, length());
}

// The kernel takes an arc for a whole turn when its ends are nearer than an angle, and on a large
// arc that is more than a length that nobody sees: a piece taken out of a turn must be longer.
VexDbArcWay::VexDbArcWay(const CVexGeCircArc2d& arc)
    : VexDbWay(arc.length(), arc.length() < arc.radius() * (kGeTwoPi - kGeAngleTol)
                                 ? kGeTol
                                 : std::max(kGeTol, arc.radius() * kGeAngleTol)),
      m_center(arc.center()), m_radius(arc.radius()), m_start(arc.startAng()),
      m_sweep(arc.length() / arc.radius())
{
}

double VexDbArcWay::along(const CVexGePoint2d& point) const
{
    const double swept = fullTurns(m_center.angleTo(point) - m_start);
    if (swept <= m_sweep) {
        return m_radius * swept;
    }
    return swept - m_sweep < kGeTwoPi - swept ? length() : 0.0;
}

CVexDbEntity::PointList hitsOf(const CVexDbEntity& curve, const std::vector<CVexDbEntity*>& others,
                               CVexDbEntity::Intersect kind, double tol)
{
    const Reach reach(curve, kind, tol);
    CVexDbEntity::PointList hits, points;
    int count = 0;
    for (CVexDbEntity* other : others) {
        if (reach.meets(*other) && curve.intersectWith(*other, count, points, kind, tol)) {
            hits.insert(hits.end(), points.begin(), points.end());
        }
    }
    return hits;
}

VexDbCuts::VexDbCuts(const CVexDbEntity& curve, const VexDbWay& way,
                     const std::vector<CVexDbEntity*>& cutters, double tol)
    : m_way(way)
{
    const bool closed = curve.IsClosedCurve();
    for (const CVexGePoint2d& point : hitsOf(curve, cutters, CVexGeEntity2d::kExtendNone, tol)) {
        add(point, closed);
    }
}

void VexDbCuts::add(const CVexGePoint2d& point, bool closed)
{
    const double at = m_way.along(point);
    const double length = m_way.length();
    const auto apart = [&](double a, double b) { return std::fabs(a - b) > m_way.spacing(); };
    if (!std::isfinite(at) || (!closed && !(apart(at, 0.0) && apart(at, length)))) {
        return;
    }
    const bool meetsOverStart =
        closed && !m_cuts.empty() &&
        !(apart(at, m_cuts.rbegin()->first - length) && apart(at, m_cuts.begin()->first + length));
    if (!meetsOverStart) {
        addCut(m_cuts, at, point, m_way.spacing());
    }
}

double VexDbCuts::placeOf(const CVexGePoint2d& pick) const
{
    return snappedToCut(m_cuts, m_way.along(pick));
}

void VexDbCuts::dropStubs(double at, double shortest)
{
    while (!m_cuts.empty() && m_cuts.begin()->first < at && m_cuts.begin()->first <= shortest) {
        m_cuts.erase(m_cuts.begin());
    }
    const double last = m_way.length() - shortest;
    while (!m_cuts.empty() && m_cuts.rbegin()->first >= at && m_cuts.rbegin()->first >= last) {
        m_cuts.erase(std::prev(m_cuts.end()));
    }
}

VexDbCuts::Piece VexDbCuts::openPieceAt(const CVexGePoint2d& pick, double shortest)
{
    const double at = placeOf(pick);
    dropStubs(at, shortest);
    return openPieceOf(m_cuts, at);
}

VexDbCuts::Piece VexDbCuts::closedPieceAt(const CVexGePoint2d& pick) const
{
    if (m_cuts.size() < 2) {
        return {};
    }
    const double at = placeOf(pick);
    const auto notBefore = m_cuts.lower_bound(at);
    if (notBefore == m_cuts.begin() || notBefore == m_cuts.end()) {
        return {&m_cuts.rbegin()->second, &m_cuts.begin()->second};
    }
    // A pick on a cut takes both pieces that meet there, but the one before it when it is the first
    // or the last: between two cuts something must stay.
    const auto behind = m_cuts.upper_bound(at);
    return {&std::prev(notBefore)->second,
            behind == m_cuts.end() ? &notBefore->second : &behind->second};
}

tagUndoEditEntity undoEditOf(const CVexDbEntity& entity, UndoEditType type)
{
    tagUndoEditEntity edit;
    edit.continues = false;
    edit.editType = type;
    edit.entity = entity.objectId();
    return edit;
}

void recordEdit(const CVexDbEntity& entity, const tagUndoEditEntity& edit)
{
    CVexDbDatabase* drawing = entity.database() != nullptr ? entity.database() : _gpDatabase;
    if (drawing != nullptr) {
        drawing->undoHandler().AddUndo(&edit);
    }
}
