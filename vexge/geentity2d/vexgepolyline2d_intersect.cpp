#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/geentity2d/vexgepolyline2d_hits.h"
#include "vexge/geentity2d/vexgepolyline2d_index.h"
#include "vexge/geentity2d/vexgepolyline2d_walk.h"

#include <cmath>
#include <cstddef>
#include <utility>

namespace {

using Walk = CVexGePolylineWalk;
using Intersect = CVexGeEntity2d::Intersect;

/// What a distance from a line may be off by, as a share of the coordinates.
constexpr double kRounding = 1e-12;

/// Calls `take(index, segment, hit)` for each hit of the segments with a line or arc, in order.
template <class Curve, class Take>
void eachHit(const CVexGePolyline2d& chain, const Curve& curve, Intersect kind, double tol,
             const Take& take)
{
    Walk::each(chain, [&](unsigned index, const auto& segment) {
        for (const CVexGePoint2d& hit : hitsOf(segment, curve, kind, tol)) {
            take(index, segment, hit);
        }
        return false;
    });
}

/// As above for a line. Where the line or both are bounded, a straight segment all on one side of
/// the line's carrier is passed over: it cannot have a hit within the tolerance.
template <class Take>
void eachHitWithLine(const CVexGePolyline2d& chain, const CVexGeLine2d& line, Intersect kind,
                     double tol, const Take& take)
{
    const CVexGeVector2d run = line.endPoint() - line.startPoint();
    const double length = run.length();
    if ((kind != CVexGeEntity2d::kExtendNone && kind != CVexGeEntity2d::kExtendArg) ||
        !(length > 0.0)) {
        eachHit(chain, line, kind, tol, take);
        return;
    }
    const auto& vertices = chain.vertices();
    const auto& bulges = chain.bulges();
    const CVexGePoint2d& start = line.startPoint();
    const auto across = [&](const CVexGePoint2d& point) {
        return run.x * (point.y - start.y) - run.y * (point.x - start.x);
    };
    const double size = std::fabs(start.x) + std::fabs(start.y) + length;
    const double margin = length * (3.0 * tol + kRounding * size);
    const unsigned count = chain.numVerts();
    double here = count > 0 ? across(vertices[0]) : 0.0;
    for (unsigned i = 0; i < count; ++i) {
        const double next = across(vertices[i + 1 < count ? i + 1 : 0]);
        const bool oneSide = (here > margin && next > margin) || (here < -margin && next < -margin);
        here = next;
        if (oneSide && std::fabs(bulges[i]) <= kGeStraightBulge) {
            continue;
        }
        Walk::at(chain, i, [&](const auto& segment) {
            for (const CVexGePoint2d& hit : hitsOf(segment, line, kind, tol)) {
                take(i, segment, hit);
            }
            return true;
        });
    }
}

/// Calls `take(index, segment, hits)` for each segment of `chain` with the list of its hits with
/// `other`, adjacent equal ones reduced. `take` may change the list.
template <class Take>
void eachHitList(const CVexGePolyline2d& chain, const CVexGePolyline2d& other, Intersect kind,
                 double tol, const Take& take)
{
    std::vector<CVexGePoint2d> hits;
    const auto gather = [&](const VexGeSegmentIndex* index) {
        Walk::each(chain, [&](unsigned i, const auto& segment) {
            hits.clear();
            const VexGeBox reach =
                index != nullptr ? segmentBox(chain, i).grownBy(2.0 * tol) : VexGeBox{};
            eachHitWith(other, index, reach, segment, kind, tol,
                        [&](const CVexGePoint2d& hit) { hits.push_back(hit); });
            if (!hits.empty()) {
                chain.CheckSameIntPoints(hits);
                take(i, segment, hits);
            }
            return false;
        });
    };
    if (kind == CVexGeEntity2d::kExtendNone && tol <= kGeTol) {
        const VexGeSegmentIndex index(other);
        gather(&index);
    } else {
        gather(nullptr); // an extended curve, or a wide tolerance, reaches beyond the boxes
    }
}

} // namespace

int CVexGePolyline2d::CheckSameIntPoints(std::vector<CVexGePoint2d>& points) const
{
    if (points.size() < 2) {
        return static_cast<int>(points.size());
    }
    // After an equal point is taken out the walk goes on beyond the next one, so of three equal
    // points two stay. The inside test counts a ray's hits at a vertex by exactly this.
    std::size_t kept = 0;
    for (std::size_t next = 1; next < points.size(); ++next) {
        if (points[kept].isEqualTo(points[next], kGeTol) && ++next == points.size()) {
            break;
        }
        points[++kept] = points[next];
    }
    points.resize(kept + 1);
    return static_cast<int>(points.size());
}

bool CVexGePolyline2d::intersectWith(const CVexGeLine2d& line, int& count,
                                     std::vector<CVexGePoint2d>& out, Intersect kind,
                                     double tol) const
{
    eachHitWithLine(*this, line, kind, tol,
                    [&](unsigned, const auto&, const CVexGePoint2d& hit) { out.push_back(hit); });
    count = CheckSameIntPoints(out);
    return !out.empty();
}

bool CVexGePolyline2d::intersectWith(const CVexGeCircArc2d& arc, int& count,
                                     std::vector<CVexGePoint2d>& out, Intersect kind,
                                     double tol) const
{
    eachHit(*this, arc, kind, tol,
            [&](unsigned, const auto&, const CVexGePoint2d& hit) { out.push_back(hit); });
    count = CheckSameIntPoints(out);
    return !out.empty();
}

bool CVexGePolyline2d::intersectWith(const CVexGePolyline2d& other, int& count,
                                     std::vector<CVexGePoint2d>& out, Intersect kind,
                                     double tol) const
{
    eachHitList(*this, other, kind, tol,
                [&](unsigned, const auto&, const std::vector<CVexGePoint2d>& hits) {
                    out.insert(out.end(), hits.begin(), hits.end());
                });
    count = CheckSameIntPoints(out);
    return !out.empty();
}

bool CVexGePolyline2d::intersectWith(const CVexGeLine2d& line, int& count, ParamMap& out,
                                     Intersect kind, double tol) const
{
    // On an arc of negative bulge the distance counts from the arc's own start, against the
    // travel, here and for an arc. Trimming by lines and arcs reads these keys in that sense.
    const VexGeRunningLengths lengths(*this);
    eachHit(*this, line, kind, tol, [&](unsigned i, const auto& segment, const CVexGePoint2d& hit) {
        out.emplace(lengths.key(i, segment.distAtPoint(hit, tol)), hit);
    });
    count = static_cast<int>(out.size());
    return !out.empty();
}

bool CVexGePolyline2d::intersectWith(const CVexGeCircArc2d& arc, int& count, ParamMap& out,
                                     Intersect kind, double tol) const
{
    const VexGeRunningLengths lengths(*this);
    eachHit(*this, arc, kind, tol, [&](unsigned i, const auto& segment, const CVexGePoint2d& hit) {
        out.emplace(lengths.key(i, segment.distAtPoint(hit, tol)), hit);
    });
    count = static_cast<int>(out.size());
    return !out.empty();
}

bool CVexGePolyline2d::intersectWith(const CVexGePolyline2d& other, int& count, ParamMap& out,
                                     Intersect kind, double tol) const
{
    const VexGeRunningLengths lengths(*this);
    eachHitList(*this, other, kind, tol,
                [&](unsigned i, const auto& segment, const std::vector<CVexGePoint2d>& hits) {
                    for (const CVexGePoint2d& hit : hits) {
                        const double along = segment.distAtPoint(hit, tol);
                        out.emplace(lengths.key(i, travelled(segment, m_bulges[i], along)), hit);
                    }
                });
    count = static_cast<int>(out.size());
    return !out.empty();
}
