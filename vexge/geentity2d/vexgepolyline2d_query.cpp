#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/geentity2d/vexgepolyline2d_index.h"
#include "vexge/geentity2d/vexgepolyline2d_walk.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

using Walk = CVexGePolylineWalk;

bool anyAbove(const std::vector<double>& values, double limit)
{
    return std::any_of(values.begin(), values.end(), [limit](double v) { return v > limit; });
}

/// How far an arc, with what it forgives at its ends, may leave the box of its ends. `size` bounds
/// the length of the chord.
double arcReach(double size, double bulge)
{
    const double bend = std::fabs(bulge);
    const double radius = size * (1.0 / bend + bend) / 4.0;
    return (bend > 1.0 ? 2.0 * radius : size * bend / 2.0) + 2.0 * kGeTol * radius;
}

/// A lower bound for the squared distance of a point to a segment, a rounding error given away.
double squaredBound(const CVexGePoint2d& start, const CVexGePoint2d& end, double bulge,
                    const CVexGePoint2d& point)
{
    const double halfWidth = std::fabs(end.x - start.x) / 2.0;
    const double halfHeight = std::fabs(end.y - start.y) / 2.0;
    double dx = std::fabs(point.x - (start.x + end.x) / 2.0) - halfWidth;
    double dy = std::fabs(point.y - (start.y + end.y) / 2.0) - halfHeight;
    if (std::fabs(bulge) > kGeStraightBulge) {
        const double reach = arcReach(2.0 * (halfWidth + halfHeight), bulge);
        dx -= reach;
        dy -= reach;
    }
    dx = std::max(dx, 0.0);
    dy = std::max(dy, 0.0);
    return (dx * dx + dy * dy) * (1.0 - 1e-9) - 1e-18 * (start.x * start.x + start.y * start.y);
}

} // namespace

bool CVexGePolyline2d::closed() const
{
    return m_closedFlag ||
           (!m_vertices.empty() && m_vertices.front().distanceTo(m_vertices.back()) < kGeClosedTol);
}

CVexGePolyline2d::SegType CVexGePolyline2d::segType(unsigned index) const
{
    const unsigned count = numVerts();
    if (count == 0) {
        return kEmpty;
    }
    if (index >= count) {
        return kPoint;
    }
    const CVexGeVector2d chord = m_vertices[nextIndex(index)] - m_vertices[index];
    if (index + 1 < count) {
        if (chord.length() < kGeTol) {
            return kCoincident;
        }
    } else if (!m_closedFlag) {
        return kPoint;
    } else if (chord.length() <= kGeTol) {
        return kCoincident;
    }
    return std::fabs(m_bulges[index]) <= kGeStraightBulge ? kLine : kArc;
}

bool CVexGePolyline2d::getLineSegAt(unsigned index, CVexGeLine2d& out) const
{
    if (segType(index) != kLine) {
        return false;
    }
    out.set(m_vertices[index], m_vertices[nextIndex(index)]);
    return true;
}

bool CVexGePolyline2d::getArcSegAt(unsigned index, CVexGeCircArc2d& out) const
{
    if (segType(index) != kArc) {
        return false;
    }
    out.set(m_vertices[index], m_vertices[nextIndex(index)], m_bulges[index], true);
    return true;
}

bool CVexGePolyline2d::onSegAt(unsigned index, const CVexGePoint2d& point, double& param,
                               const double& tol) const
{
    CVexGeCircArc2d arc;
    if (getArcSegAt(index, arc)) {
        if (arc.isOn(point, tol) == 0) {
            return false;
        }
        param = arc.paramAtPoint(point, tol);
        return true;
    }
    CVexGeLine2d line;
    if (!getLineSegAt(index, line) || line.isOn(point, tol) == 0) {
        return false;
    }
    param = line.startPoint().distanceTo(point) / line.length();
    return true;
}

int CVexGePolyline2d::isOnSegAt(const CVexGePoint2d& point, double tol) const
{
    int found = -1;
    Walk::each(*this, [&](unsigned index, const auto& segment) {
        if (segment.isOn(point, tol) == 0) {
            return false;
        }
        found = static_cast<int>(index);
        return true;
    });
    return found;
}

int CVexGePolyline2d::isOn(const CVexGePoint2d& point, const double& tol) const
{
    return isOnSegAt(point, tol) >= 0 ? 1 : 0;
}

int CVexGePolyline2d::isVertex(const CVexGePoint2d& point, double tol) const
{
    const auto at =
        std::find_if(m_vertices.begin(), m_vertices.end(),
                     [&](const CVexGePoint2d& vertex) { return vertex.isEqualTo(point, tol); });
    return at == m_vertices.end() ? -1 : static_cast<int>(at - m_vertices.begin());
}

bool CVexGePolyline2d::hasBulges() const
{
    // Without an absolute value: a chain of clockwise arcs has no bulges by this test. Closing and
    // the display of chains choose their short way by it, and drawings were made that way.
    return anyAbove(m_bulges, kGeStraightBulge);
}

bool CVexGePolyline2d::hasWidth() const
{
    return anyAbove(m_endWidths, kGeTol) || anyAbove(m_startWidths, kGeTol);
}

bool CVexGePolyline2d::isCCW() const
{
    double sum = 0.0;
    for (unsigned i = 0; i < numVerts(); ++i) {
        const CVexGePoint2d& here = m_vertices[i];
        const CVexGePoint2d& next = m_vertices[nextIndex(i)];
        sum += here.x * next.y - here.y * next.x;
    }
    return sum / 2.0 > 0.0;
}

void CVexGePolyline2d::getMinMaxpoint(CVexGePoint2d& min, CVexGePoint2d& max) const
{
    // Vertices alone: an arc may swell out of this box. Picks and zooms take it for a quick first
    // answer, and the inside test needs only a start that lies below and left of the vertices.
    if (m_vertices.empty()) {
        return;
    }
    // Two boxes in turns: each waits for its own last comparison only.
    const auto boxOf = [](const CVexGePoint2d& at) { return VexGeBox{at.x, at.y, at.x, at.y}; };
    VexGeBox box = boxOf(m_vertices.front());
    VexGeBox other = box;
    const std::size_t count = m_vertices.size();
    for (std::size_t i = 0; i + 1 < count; i += 2) {
        box.include(boxOf(m_vertices[i]));
        other.include(boxOf(m_vertices[i + 1]));
    }
    box.include(other);
    box.include(boxOf(m_vertices.back()));
    min.set(box.left, box.bottom);
    max.set(box.right, box.top);
}

bool CVexGePolyline2d::isInsidePoint(const CVexGePoint2d& point) const
{
    if (!closed()) {
        return false;
    }
    CVexGePoint2d start;
    CVexGePoint2d max;
    getMinMaxpoint(start, max);
    start += CVexGeVector2d(-0.5, -1.0); // off the diagonal, where corners are rare
    std::vector<CVexGePoint2d> hits;
    int count = 0;
    intersectWith(CVexGeLine2d(start, point), count, hits, kExtendNone, kGeTol);
    return count % 2 != 0;
}

CVexGePoint2d CVexGePolyline2d::closestPointTo(const CVexGePoint2d& point, double tol) const
{
    int segment = 0;
    return closestPointTo(point, segment, tol);
}

CVexGePoint2d CVexGePolyline2d::closestPointTo(const CVexGePoint2d& point, int& segment,
                                               double tol) const
{
    // Segment 0 sets the first best. When its ends coincide the best is the default point, so a
    // chain that begins with a doubled vertex answers with the origin for points near the origin.
    CVexGePoint2d best;
    segment = 0;
    double distance = point.distanceTo(best);
    const auto offer = [&](unsigned index) {
        Walk::at(*this, index, [&](const auto& candidate) {
            const CVexGePoint2d here = candidate.closestPointTo(point, tol);
            const double gap = point.distanceTo(here);
            if (index == 0 || gap < distance) {
                best = here;
                distance = gap;
                segment = static_cast<int>(index);
            }
            return true;
        });
    };
    const unsigned count = numVerts();
    for (unsigned i = 0; i < count; ++i) {
        const unsigned next = i + 1 < count ? i + 1 : 0;
        if (i == 0 || !(squaredBound(m_vertices[i], m_vertices[next], m_bulges[i], point) >
                        distance * distance)) {
            offer(i);
        }
    }
    return best;
}

double CVexGePolyline2d::distanceTo(const CVexGePoint2d& point, double tol) const
{
    return point.distanceTo(closestPointTo(point, tol));
}

namespace {

/// The pair of points of `chain` and `curve` with the smallest gap; the first of equal ones.
template <class Curve>
CVexGePoint2d closestPair(const CVexGePolyline2d& chain, const Curve& curve, CVexGePoint2d& onCurve,
                          double tol)
{
    CVexGePoint2d best;
    double distance = 0.0;
    bool found = false;
    Walk::each(chain, [&](unsigned, const auto& segment) {
        CVexGePoint2d there;
        const CVexGePoint2d here = segment.closestPointTo(curve, there, tol);
        const double gap = here.distanceTo(there);
        if (!found || gap < distance) {
            best = here;
            onCurve = there;
            distance = gap;
            found = true;
        }
        return false;
    });
    return best;
}

} // namespace

CVexGePoint2d CVexGePolyline2d::closestPointTo(const CVexGeLine2d& line, CVexGePoint2d& onLine,
                                               double tol) const
{
    return closestPair(*this, line, onLine, tol);
}

CVexGePoint2d CVexGePolyline2d::closestPointTo(const CVexGeCircArc2d& arc, CVexGePoint2d& onOther,
                                               double tol) const
{
    return closestPair(*this, arc, onOther, tol);
}

double CVexGePolyline2d::distanceTo(const CVexGeLine2d& line, double tol) const
{
    CVexGePoint2d onLine;
    const CVexGePoint2d here = closestPointTo(line, onLine, tol);
    return here.distanceTo(onLine);
}

bool CVexGePolyline2d::perpVecFromPoint(const CVexGePoint2d& point, CVexGeVector2d& out,
                                        double tol) const
{
    // A chain without a segment has no foot and answers false.
    bool found = false;
    bool onChain = false;
    bool last = false;
    CVexGeVector2d best;
    Walk::each(*this, [&](unsigned, const auto& segment) {
        CVexGeVector2d way;
        last = segment.perpVecFromPoint(point, way, tol);
        if (!last) {
            return false;
        }
        const bool footOnChain = isOn(point - way, kGeEpsilon) != 0;
        if (!found || (footOnChain && !onChain) || (footOnChain == onChain && way < best)) {
            best = way;
            onChain = footOnChain;
            found = true;
        }
        return false;
    });
    if (found) {
        out = best;
    }
    // The answer of the last segment, not of the one that was taken: snaps try the next curve on
    // false, and what they find for a chain has to stay what it was.
    return last;
}
