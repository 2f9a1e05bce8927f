#include "vexge/gemath/vexgevector3d.h"

#include "platform/base/vexfields.h"
#include "vexge/geentity3d/vexgeplane.h"
#include "vexge/gemath/vexgevector2d.h"

constinit const CVexGeVector3d CVexGeVector3d::kIdentity;
constinit const CVexGeVector3d CVexGeVector3d::kXAxis(1.0, 0.0, 0.0);
constinit const CVexGeVector3d CVexGeVector3d::kYAxis(0.0, 1.0, 0.0);
constinit const CVexGeVector3d CVexGeVector3d::kZAxis(0.0, 0.0, 1.0);

void CVexGeVector3d::save(CFile* file) const
{
    CVexFieldWriter{*file}(x, y, z);
}

void CVexGeVector3d::read(CFile* file)
{
    CVexFieldReader{*file}(x, y, z);
}

CVexGeVector3d& CVexGeVector3d::set(const CVexGePlane& plane, const CVexGeVector2d& vector)
{
    // The rise follows the length alone, as if every vector ran straight up the plane's slope.
    // Hosts lift their outlines with it and expect one height for one distance.
    const double upright = plane.getNorm().dotProduct(kZAxis);
    return set(vector.x, vector.y, vector.length() * std::sqrt(1.0 - upright * upright) / upright);
}

CVexGeVector2d CVexGeVector3d::convert2d(const CVexGePlane& plane) const
{
    const CVexGeVector3d normal = plane.getNorm();
    const CVexGeVector3d inPlane = orthoProject(normal);
    const double downward = normal.dotProduct(-kZAxis);
    const double y2d = inPlane.z / std::sqrt(1.0 - downward * downward);
    const double rest = inPlane.lengthSqrd() - y2d * y2d;
    return {std::sqrt(rest < 0.0 ? 0.0 : rest), y2d}; // straight up the slope it may round below 0
}

CVexGeVector3d CVexGeVector3d::orthoProject(const CVexGeVector3d& unitVector) const
{
    return *this - unitVector * dotProduct(unitVector);
}

CVexGeVector3d& CVexGeVector3d::mirror(const CVexGePlane& plane)
{
    // A length has no sign, so a vector that already points away from the normal comes back as
    // itself. Hosts mirror what stands on the plane, where the two agree.
    const CVexGeVector3d normal = plane.getNorm();
    const CVexGeVector3d inPlane = orthoProject(normal);
    return *this = inPlane - normal * (*this - inPlane).length();
}

int CVexGeVector3d::largestElement() const
{
    // z is held against y and not against the largest so far, so (5, 1, 2) gives 2. Callers that
    // drop an axis by this index keep getting the same one.
    const int index = y > x ? 1 : 0;
    return z > y ? 2 : index;
}

double CVexGeVector3d::angleTo(const CVexGeVector3d& other) const
{
    const double lengths = length() * other.length();
    if (lengths == 0.0) {
        return 0.0;
    }
    // As in the plane: a cosine that rounding pushed past 1 gives 0 on both sides, never pi.
    const double cosine = dotProduct(other) / lengths;
    return std::fabs(cosine) > 1.0 ? 0.0 : std::acos(cosine);
}

CVexGeVector3d& CVexGeVector3d::rotateBy(double angle, const CVexGeVector3d& axis)
{
    if (axis.length() == 0.0) {
        return *this;
    }
    // Rodrigues' rotation formula.
    const CVexGeVector3d unit = axis / axis.length();
    const double cosine = std::cos(angle);
    return *this = *this * cosine + unit.crossProduct(*this) * std::sin(angle) +
                   unit * (unit.dotProduct(*this) * (1.0 - cosine));
}

bool CVexGeVector3d::isEqualTo(const CVexGeVector3d& other, double /*tol*/) const
{
    // The argument is not consulted, as with vectors of the plane.
    return (*this - other).length() <= kGeTol;
}

bool CVexGeVector3d::isParallelTo(const CVexGeVector3d& other, double tol) const
{
    // The same way only, as with vectors of the plane.
    return (normal(kGeTol) - other.normal(kGeTol)).length() <= tol;
}

bool CVexGeVector3d::isCodirectionalTo(const CVexGeVector3d& other, double tol) const
{
    // Opposite only, as with vectors of the plane.
    return (normal(kGeTol) + other.normal(kGeTol)).length() <= tol;
}

bool CVexGeVector3d::isPerpendicularTo(const CVexGeVector3d& other, double tol) const
{
    return std::fabs(dotProduct(other)) <= tol;
}
