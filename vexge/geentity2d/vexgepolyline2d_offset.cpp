#include "vexge/geentity2d/vexgepolyline2d_offset.h"

#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgepolyline2d_offset_free.h"
#include "vexge/geentity2d/vexgepolyline2d_walk.h"
#include "vexge/geentity2d/vexgewinding.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace {

using Intersect = CVexGeEntity2d::Intersect;

/// How far a point runs ahead on a circle, as a share of it, to tell left from right.
constexpr double kAhead = 0.05;

bool isFinite(const CVexGePoint2d& point)
{
    return std::isfinite(point.x) && std::isfinite(point.y);
}

bool isFinite(const CVexGePolyline2d& chain)
{
    const auto& points = chain.vertices();
    const auto& bulges = chain.bulges();
    return std::all_of(points.begin(), points.end(),
                       [](const CVexGePoint2d& point) { return isFinite(point); }) &&
           std::all_of(bulges.begin(), bulges.end(),
                       [](double bulge) { return std::isfinite(bulge); });
}

int windingOfSide(const CVexGeLine2d& segment, const CVexGePoint2d& side)
{
    // From the foot on the carrier to the segment's end: a point beside the carrier beyond the end
    // is taken for one on the other side. Picks of a side are made along the segments.
    CVexGeLine2d across;
    segment.getPerpLine(side, across);
    CVexGePoint2d foot;
    segment.intersectWith(across, foot, CVexGeEntity2d::kExtendBoth, kGeEpsilon);
    return winding(side, foot, segment.endPoint());
}

int windingOfSide(const CVexGeCircArc2d& segment, const CVexGePoint2d& side)
{
    int count = 0;
    CVexGePoint2d foot;
    CVexGePoint2d other;
    segment.intersectWith(CVexGeLine2d(segment.center(), side), count, foot, other,
                          CVexGeEntity2d::kExtendBoth, kGeEpsilon);
    if (count > 1 && other.distanceTo(side) < foot.distanceTo(side)) {
        foot = other;
    }
    CVexGeCircArc2d circle(segment);
    circle.setAngles(0.0, kGeTwoPi);
    const double ahead = circle.paramAtPoint(foot, kGeEpsilon) + kAhead;
    return winding(side, foot, circle.pointAtParam(ahead));
}

/// The pieces of a chain whose offset needs no clipping; false, with none, for any other.
bool freeOffset(const CVexGePolyline2d& source, double dist, int direction, bool bothSides,
                CVexGePolyline2d::PolylineList& out)
{
    VexGeFreeOffset offset(source, dist);
    if (!offset.isFree()) {
        return false;
    }
    for (const int side : {direction, -direction}) {
        std::vector<CVexGePoint2d> points = offset.rawChain(side);
        if (points.empty()) {
            out.clear();
            return false;
        }
        out.push_back(
            std::make_unique<CVexGePolyline2d>(CVexGePolylineWalk::straight(std::move(points))));
        if (!bothSides) {
            break;
        }
    }
    return true;
}

} // namespace

int CVexGePolyline2d::getoffsetDirection(const CVexGePoint2d& side, double /*dist*/) const
{
    int segment = 0;
    closestPointTo(side, segment, kGeEpsilon);
    int direction = -1;
    CVexGeLine2d line;
    CVexGeCircArc2d arc;
    const auto index = static_cast<unsigned>(segment);
    if (getLineSegAt(index, line)) {
        direction = 2 * windingOfSide(line, side) - 1;
    } else if (getArcSegAt(index, arc)) {
        direction = 2 * windingOfSide(arc, side) - 1;
        if (m_bulges[index] < 0.0) {
            direction = -direction;
        }
    }
    return direction;
}

bool CVexGePolyline2d::getOffset(const CVexGePoint2d& side, double dist, PolylineList& out,
                                 bool bothSides) const
{
    out.clear();
    if (m_vertices.size() < 2 || !std::isfinite(dist) || !isFinite(*this)) {
        return false;
    }
    const double distance = std::fabs(dist);
    const int direction = getoffsetDirection(side, distance);
    if (freeOffset(*this, distance, direction, bothSides, out)) {
        return true;
    }
    VexGeOffsetChain here{m_vertices, m_bulges};
    VexGeOffsetChain other{m_vertices, m_bulges};
    checkLocalSelfIntersect(here.points, here.bulges, distance, direction);
    checkLocalSelfIntersect(other.points, other.bulges, distance, -direction);
    getOffsetPoly(here.points, here.bulges, distance, direction);
    getOffsetPoly(other.points, other.bulges, distance, -direction);
    clipOffsetPoly(here.points, here.bulges, other.points, other.bulges, distance, out);
    if (bothSides) {
        clipOffsetPoly(other.points, other.bulges, here.points, here.bulges, distance, out);
    }
    // Coordinates near the end of the numbers overflow on the way.
    std::erase_if(out, [](const auto& piece) { return !isFinite(*piece); });
    return !out.empty();
}

void joinOffsetPieces(CVexGePolyline2d& chain, CVexGePolyline2d::PolylineList& list)
{
    for (std::size_t i = 0; i < list.size();) {
        int index = 0;
        if (chain.appendPolyline(list[i].get(), index)) {
            list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
            i = 0;
        } else {
            ++i;
        }
    }
}

int CVexGePolyline2d::offset(const CVexGePoint2d& side, double dist, PolylineList& out,
                             bool bothSides) const
{
    PolylineList pieces;
    getOffset(side, dist, pieces, bothSides);
    int joined = 0;
    while (!pieces.empty()) {
        std::unique_ptr<CVexGePolyline2d> chain = std::move(pieces.front());
        pieces.erase(pieces.begin());
        joinOffsetPieces(*chain, pieces);
        out.push_back(std::move(chain));
        ++joined;
    }
    return joined;
}

int CVexGePolyline2d::getOffsetPolylines(const CVexGePoint2d& side, double dist, PolylineList& out,
                                         bool bothSides) const
{
    return offset(side, dist, out, bothSides);
}

bool CVexGePolyline2d::offset(const CVexGePoint2d& side, double dist)
{
    PolylineList chains;
    if (offset(side, dist, chains, false) == 0) {
        return false;
    }
    const auto longest =
        std::max_element(chains.begin(), chains.end(), [](const auto& a, const auto& b) {
            return a->numVerts() < b->numVerts();
        });
    const bool wasClosed = m_closedFlag;
    *this = std::move(**longest);
    m_closedFlag = wasClosed;
    return true;
}
