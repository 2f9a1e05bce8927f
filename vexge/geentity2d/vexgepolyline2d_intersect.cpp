#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/geentity2d/vexgepolyline2d_hitlist.h"
#include "vexge/geentity2d/vexgepolyline2d_hits.h"
#include "vexge/geentity2d/vexgepolyline2d_index.h"
#include "vexge/geentity2d/vexgepolyline2d_walk.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

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

/// Calls `visit(index)` in rising order for the segments that may come within `margin`, a product
/// with the length of `run`, of the line through `start` along `run`.
template <class Visit>
void eachBeside(const CVexGePolyline2d& chain, const CVexGePoint2d& start,
                const CVexGeVector2d& run, double margin, const Visit& visit)
{
    const CVexGePoint2d* const vertices = chain.vertices().data();
    const double* const bulges = chain.bulges().data();
    const unsigned count = chain.numVerts();
    const double offset = run.x * start.y - run.y * start.x;
    const auto across = [&](unsigned i) {
        return run.x * vertices[i].y - run.y * vertices[i].x - offset;
    };
    const auto mayCome = [&](double from, double to, unsigned i) {
        const bool aside = std::min(from, to) > margin || std::max(from, to) < -margin;
        return !aside || std::fabs(bulges[i]) > kGeStraightBulge;
    };
    double here = count > 0 ? across(0) : 0.0;
    const double first = here;
    for (unsigned i = 0; i + 1 < count; ++i) {
        const double next = across(i + 1);
        if (mayCome(here, next, i)) {
            visit(i);
        }
        here = next;
    }
    if (count > 0 && mayCome(here, first, count - 1)) {
        visit(count - 1);
    }
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
    const CVexGePoint2d& start = line.startPoint();
    const double size = std::fabs(start.x) + std::fabs(start.y) + length;
    const double margin = length * (3.0 * tol + kRounding * size);
    eachBeside(chain, start, run, margin, [&](unsigned i) {
        Walk::at(chain, i, [&](const auto& segment) {
            for (const CVexGePoint2d& hit : hitsOf(segment, line, kind, tol)) {
                take(i, segment, hit);
            }
            return true;
        });
    });
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
