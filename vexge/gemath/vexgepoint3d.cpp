#include "vexge/gemath/vexgepoint3d.h"

#include "platform/base/vexfields.h"
#include "vexge/geentity3d/vexgeplane.h"
#include "vexge/gemath/vexgepoint2d.h"

constinit const CVexGePoint3d CVexGePoint3d::kOrigin;

void CVexGePoint3d::save(CFile* file) const
{
    CVexFieldWriter{*file}(x, y, z);
}

void CVexGePoint3d::read(CFile* file)
{
    CVexFieldReader{*file}(x, y, z);
}

CVexGePoint3d& CVexGePoint3d::set(const CVexGePlane& plane, const CVexGePoint2d& point)
{
    return *this = kOrigin + CVexGeVector3d(plane, point.asVector());
}

CVexGePoint2d CVexGePoint3d::convert2d(const CVexGePlane& plane) const
{
    const CVexGePoint3d onAxis(0.0, 0.0, -plane.d / plane.c);
    const CVexGeVector2d inPlane = (orthoProject(plane) - onAxis).convert2d(plane);
    return {inPlane.x, inPlane.y};
}

CVexGePoint3d CVexGePoint3d::orthoProject(const CVexGePlane& plane) const
{
    // The signed distance is added, not taken away, so a point off the plane moves to twice its
    // distance. convert2d drops that part again, and hosts have the doubled way in their data.
    return *this + plane.getNorm() * plane.signedDistanceTo(*this);
}

CVexGePoint3d& CVexGePoint3d::mirror(const CVexGePlane& plane)
{
    return *this = kOrigin + asVector().mirror(plane);
}

CVexGePoint3d& CVexGePoint3d::rotateBy(double angle, const CVexGeVector3d& axis,
                                       const CVexGePoint3d& centre)
{
    return *this = centre + (*this - centre).rotateBy(angle, axis);
}

CVexGePoint3d& CVexGePoint3d::scaleBy(double factor, const CVexGePoint3d& centre)
{
    return scaleBy(factor, factor, factor, centre);
}

CVexGePoint3d& CVexGePoint3d::scaleBy(double fx, double fy, double fz, const CVexGePoint3d& centre)
{
    const CVexGeVector3d arm = *this - centre;
    return set(centre.x + arm.x * fx, centre.y + arm.y * fy, centre.z + arm.z * fz);
}
