#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

namespace {

/// The curve's own intersection with a line, two points at most, as a list.
template <class Curve>
bool listHits(const CVexGeLine2d& line, const Curve& curve, int& count,
              std::vector<CVexGePoint2d>& out, CVexGeEntity2d::Intersect kind, double tol)
{
    out.clear();
    CVexGePoint2d first, second;
    const bool hit =
        curve.intersectWith(line, count, first, second, CVexGeEntity2d::exchanged(kind), tol);
    if (hit) {
        out.push_back(first);
        if (count > 1) {
            out.push_back(second);
        }
        count = static_cast<int>(out.size()); // an ellipse may count hits beyond the two it gives
    }
    return hit;
}

/// Keeps the point that lies nearest to a segment; of equal distances the first stays.
class NearestToSegment {
public:
    explicit NearestToSegment(const CVexGeLine2d& segment) : m_segment(segment) {}
    void offer(const CVexGePoint2d& point)
    {
        const double distance = m_segment.distanceTo(point, kGeEpsilon);
        if (!m_found || distance < m_distance) {
            m_point = point;
            m_distance = distance;
            m_found = true;
        }
    }
    void offerHits(const CVexGeCircArc2d& arc, const CVexGeLine2d& ray)
    {
        int count = 0;
        CVexGePoint2d first, second;
        if (arc.intersectWith(ray, count, first, second, CVexGeEntity2d::kExtendNone, kGeEpsilon)) {
            offer(first);
            if (count > 1) {
                offer(second);
            }
        }
    }
    [[nodiscard]] const CVexGePoint2d& point() const { return m_point; }

private:
    const CVexGeLine2d& m_segment;
    CVexGePoint2d m_point;
    double m_distance = 0.0;
    bool m_found = false;
};

} // namespace

bool CVexGeLine2d::intersectWith(const CVexGeCircArc2d& arc, int& count,
                                 std::vector<CVexGePoint2d>& out, Intersect kind, double tol) const
{
    return listHits(*this, arc, count, out, kind, tol);
}

bool CVexGeLine2d::intersectWith(const CVexGeEllipArc2d& ellipse, int& count,
                                 std::vector<CVexGePoint2d>& out, Intersect kind, double tol) const
{
    return listHits(*this, ellipse, count, out, kind, tol);
}

bool CVexGeLine2d::intersectWith(const CVexGePolyline2d& polyline, int& count,
                                 std::vector<CVexGePoint2d>& out, Intersect kind, double tol) const
{
    out.clear();
    return polyline.intersectWith(*this, count, out, exchanged(kind), tol);
}

CVexGePoint2d CVexGeLine2d::closestPointTo(const CVexGeCircArc2d& arc, CVexGePoint2d& onArc,
                                           double tol) const
{
    int count = 0;
    CVexGePoint2d first, second;
    if (arc.intersectWith(*this, count, first, second, kExtendNone, kGeEpsilon)) {
        onArc = first;
        return first;
    }
    const CVexGePoint2d& centre = arc.center();
    CVexGeVector2d fromFoot;
    perpVecFromPoint(centre, fromFoot, kGeEpsilon);
    // The rays end at the segment. From outside a circle they meet its near side; from within none
    // reaches it, and only the arc's own ends are left, which may not be the nearest points.
    NearestToSegment nearest(*this);
    nearest.offerHits(arc, CVexGeLine2d(centre, -fromFoot));
    nearest.offerHits(arc, CVexGeLine2d(centre, m_start));
    nearest.offerHits(arc, CVexGeLine2d(centre, m_end));
    nearest.offer(arc.startPoint());
    nearest.offer(arc.endPoint());
    onArc = nearest.point();
    return closestPointTo(onArc, tol);
}
