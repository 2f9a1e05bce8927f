#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <cmath>

namespace {

/// Keeps those of two points that count, in `p1` first; their number.
int keepCounted(bool firstCounts, bool secondCounts, CVexGePoint2d& p1, const CVexGePoint2d& p2)
{
    if (!firstCounts && secondCounts) {
        p1 = p2;
    }
    return (firstCounts ? 1 : 0) + (secondCounts ? 1 : 0);
}

/// The carrier of a line as the quadratic of a circle sees it: y over x, or x fixed for a steep
/// line. `discriminant` is that of a x^2 + b x + c, whose `a` is the square of a unit in x; the
/// foot and half chord give the roots without the digits that b^2 - 4ac loses on a steep line.
struct CircleChord {
    CVexGePoint2d foot;
    CVexGeVector2d direction; // of rising x, or of rising y when steep
    double discriminant = 0.0;
    double halfLength = 0.0;

    CircleChord(const CVexGeLine2d& line, const CVexGePoint2d& centre, double radius, double tol)
    {
        const CVexGePoint2d& start = line.startPoint();
        const CVexGeVector2d run = line.endPoint() - start;
        const bool steep = std::fabs(run.x) < tol;
        direction = CVexGeVector2d(0.0, 1.0);
        double squareOfUnit = 1.0;
        if (!steep) {
            direction = run / (run.x < 0.0 ? -run.length() : run.length());
            squareOfUnit = 1.0 / (direction.x * direction.x);
        }
        const double across = (start - centre).dotProduct(direction.perpVector());
        foot = centre + direction.perpVector() * across;
        if (steep) {
            foot.x = start.x;
        }
        const double square = (radius - across) * (radius + across);
        discriminant = 4.0 * squareOfUnit * square;
        halfLength = std::sqrt(square);
    }
};

} // namespace

bool CVexGeCircArc2d::isOnOrWhole(const CVexGePoint2d& point, double tol) const
{
    const double run = std::fabs(m_endAng - m_startAng);
    return std::fabs(run - kGeTwoPi) <= tol || run <= tol || isOn(point, tol) != 0;
}

bool CVexGeCircArc2d::intersectWith(const CVexGeLine2d& line, int& count, CVexGePoint2d& p1,
                                    CVexGePoint2d& p2, Intersect kind, double tol) const
{
    count = 0;
    const CircleChord chord(line, m_center, m_radius, tol);
    if (!(chord.discriminant >= 0.0)) {
        return false;
    }
    const auto accepted = [&](const CVexGePoint2d& point) {
        return kind == kExtendBoth || counts(kind, kind != kExtendThis && isOnOrWhole(point, tol),
                                             kind != kExtendArg && line.isOn(point, tol) != 0);
    };
    if (chord.discriminant < tol) {
        p1 = chord.foot;
        count = accepted(p1) ? 1 : 0;
        return count != 0;
    }
    p1 = chord.foot + chord.direction * chord.halfLength;
    p2 = chord.foot - chord.direction * chord.halfLength;
    count = keepCounted(accepted(p1), accepted(p2), p1, p2);
    return count != 0;
}

bool CVexGeCircArc2d::intersectWith(const CVexGeCircArc2d& arc, int& count, CVexGePoint2d& p1,
                                    CVexGePoint2d& p2, Intersect kind, double tol) const
{
    const double r1 = m_radius;
    const double r2 = arc.m_radius;
    const CVexGeVector2d way = arc.m_center - m_center;
    const double d = way.length();
    // Circles with one centre have no hits here, not even when they coincide. The tolerance goes
    // off this radius only, so a touch from within counts for the outer circle and not for the
    // inner one: which hits two chains have rests on which of them is asked.
    if (r1 + r2 + tol < d || std::fabs(r1 - r2 - tol) > d || d == 0.0) {
        return false;
    }
    if (std::fabs(d - r1 - r2) < tol) {
        // Circles that touch from outside meet only where two ends do: a touch within the arcs is
        // no hit. Chains of arcs joined in an S count on this, since their touch is their joint.
        for (const CVexGePoint2d& end : {arc.startPoint(), arc.endPoint()}) {
            if (startPoint().isEqualTo(end, kGeTol) || endPoint().isEqualTo(end, kGeTol)) {
                count = 1;
                p1 = end;
                return true;
            }
        }
        return false;
    }
    const double a = (r1 * r1 - r2 * r2 + d * d) / (2.0 * d);
    const double h = std::sqrt(std::fabs(r1 * r1 - a * a));
    const CVexGePoint2d middle = m_center + way * (a / d);
    const CVexGeVector2d half = way.perpVector() * (h / d);
    p1 = middle + half;
    p2 = middle - half;
    const auto accepted = [&](const CVexGePoint2d& point) {
        return kind == kExtendBoth || counts(kind, kind != kExtendThis && isOn(point, tol) != 0,
                                             kind != kExtendArg && arc.isOn(point, tol) != 0);
    };
    count = keepCounted(accepted(p1), accepted(p2), p1, p2);
    return count != 0;
}

bool CVexGeCircArc2d::intersectWith(const CVexGePolyline2d& polyline, int& count,
                                    std::vector<CVexGePoint2d>& out, Intersect kind,
                                    double tol) const
{
    return polyline.intersectWith(*this, count, out, exchanged(kind), tol);
}
