#include "vexge/geentity3d/vexgeplane.h"

#include "platform/base/vexfields.h"

#include <cmath>

constinit const CVexGePlane CVexGePlane::kXYPlane(0.0, 0.0, 1.0, 0.0);
constinit const CVexGePlane CVexGePlane::kYZPlane(1.0, 0.0, 0.0, 0.0);
constinit const CVexGePlane CVexGePlane::kZXPlane(0.0, 1.0, 0.0, 0.0);
constinit const CVexGePlane CVexGePlane::kSWPlane(-1.0, -1.0, 1.0, 0.0);
constinit const CVexGePlane CVexGePlane::kSEPlane(1.0, -1.0, 1.0, 0.0);
constinit const CVexGePlane CVexGePlane::kNWPlane(-1.0, 1.0, 1.0, 0.0);
constinit const CVexGePlane CVexGePlane::kNEPlane(1.0, 1.0, 1.0, 0.0);

void CVexGePlane::save(CFile* file) const
{
    CVexFieldWriter{*file}(a, b, c, d);
}

void CVexGePlane::read(CFile* file)
{
    CVexFieldReader{*file}(a, b, c, d);
}

CVexGePlane& CVexGePlane::set(const CVexGePoint3d& point, const CVexGeVector3d& normal)
{
    return set(normal.x, normal.y, normal.z, -normal.dotProduct(point.asVector()));
}

CVexGePlane& CVexGePlane::set(const CVexGePoint3d& point, const CVexGeVector3d& u,
                              const CVexGeVector3d& v)
{
    return set(point, u.crossProduct(v));
}

CVexGePlane& CVexGePlane::set(const CVexGePoint3d& p1, const CVexGePoint3d& p2,
                              const CVexGePoint3d& p3)
{
    return set(p2, p1 - p2, p3 - p2);
}

CVexGeVector3d CVexGePlane::getNorm() const
{
    return CVexGeVector3d(a, b, c).normal(kGeTol);
}

double CVexGePlane::signedDistanceTo(const CVexGePoint3d& point) const
{
    return (a * point.x + b * point.y + c * point.z + d) / std::sqrt(a * a + b * b + c * c);
}
