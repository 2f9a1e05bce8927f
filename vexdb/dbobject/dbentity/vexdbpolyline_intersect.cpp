// Intersections by their parameter; those in a list are every curve's.

#include "vexdb/dbobject/dbentity/vexdbcurvevisit.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"

namespace {

template <class Curve>
bool addHits(const CVexGePolyline2d& chain, const Curve& curve, int& count,
             CVexDbPolyline::PointMap& points, CVexDbEntity::Intersect kind, double tol)
{
    return chain.intersectWith(curve, count, points, kind, tol);
}

} // namespace

bool CVexDbPolyline::intersectWith(CVexDbEntity& other, int& count, PointMap& points,
                                   Intersect kind, double tol) const
{
    count = static_cast<int>(points.size());
    visitCurve(other, [&](const auto& curve) {
        return addHits(m_geometry, curve, count, points, kind, tol);
    });
    return count > 0;
}

bool CVexDbPolyline::intersectWith(const CVexGeEllipArc2d& other, int& count, PointMap& points,
                                   Intersect kind, double tol) const
{
    return addHits(m_geometry, other, count, points, kind, tol);
}

bool CVexDbPolyline::intersectWith(const CVexGeCircArc2d& other, int& count, PointMap& points,
                                   Intersect kind, double tol) const
{
    return addHits(m_geometry, other, count, points, kind, tol);
}

bool CVexDbPolyline::intersectWith(const CVexGeLine2d& other, int& count, PointMap& points,
                                   Intersect kind, double tol) const
{
    return addHits(m_geometry, other, count, points, kind, tol);
}
