#include "vexge/geentity3d/vexgeline3d.h"
#include "vexge/geentity3d/vexgeplane.h"

#include <cfloat>
#include <cmath>

bool CVexGePlane::intersectWith(const CVexGeLine3d& line, CVexGePoint3d& point, double tol) const
{
    const CVexGePoint3d& start = line.start();
    const CVexGeVector3d along = line.direction();
    const double slope = getNorm().dotProduct(along);
    // Not divided by the length of (a, b, c), so a plane whose equation is scaled gives a crossing
    // scaled along the line. Hosts keep their planes with normals of length 1.
    const double height = -(a * start.x + b * start.y + c * start.z + d);
    if (std::fabs(slope) < tol) {
        return std::fabs(height) < tol;
    }
    point = start + along * (height / slope);
    return true;
}

bool CVexGePlane::intersectWith(const CVexGePlane& plane, CVexGeLine3d& line, double /*tol*/) const
{
    // The two abscissae are fixed at the ends of single precision. Only the line's direction is of
    // use, and d plays no part in it; hosts ask for no more.
    const auto at = [&](double x) {
        const double y = -((a * plane.c - plane.a * c) / (b * plane.c - plane.b * c)) * x;
        return CVexGePoint3d(x, y, -(a * x + b * y) / c);
    };
    line.set(at(FLT_MIN), at(FLT_MAX));
    const double cosine = getNorm().dotProduct(plane.getNorm());
    return std::fabs(std::fabs(cosine) - 1.0) >= kGeTol;
}
