#include "vexge/gemath/vexgematrix2d.h"

#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/gemath/vexgepoint2d.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

constinit const CVexGeMatrix2d CVexGeMatrix2d::kIdentity(true);

CVexGeMatrix2d& CVexGeMatrix2d::setToIdentity()
{
    return *this = kIdentity;
}

CVexGeMatrix2d CVexGeMatrix2d::operator*(const CVexGeMatrix2d& right) const
{
    CVexGeMatrix2d result(false);
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            for (int k = 0; k < 3; ++k) {
                result.m[i][j] += m[i][k] * right.m[k][j];
            }
        }
    }
    return result;
}

CVexGeMatrix2d& CVexGeMatrix2d::operator*=(const CVexGeMatrix2d& right)
{
    return *this = *this * right;
}

CVexGeMatrix2d& CVexGeMatrix2d::postMultBy(const CVexGeMatrix2d& right)
{
    return *this = *this * right;
}

CVexGeMatrix2d& CVexGeMatrix2d::preMultBy(const CVexGeMatrix2d& left)
{
    return *this = left * *this;
}

CVexGeMatrix2d& CVexGeMatrix2d::setToProduct(const CVexGeMatrix2d& a, const CVexGeMatrix2d& b)
{
    return *this = a * b;
}

CVexGeMatrix2d CVexGeMatrix2d::transpose() const
{
    return CVexGeMatrix2d(*this).transposeIt();
}

CVexGeMatrix2d& CVexGeMatrix2d::transposeIt()
{
    std::swap(m[0][1], m[1][0]);
    std::swap(m[0][2], m[2][0]);
    std::swap(m[1][2], m[2][1]);
    return *this;
}

double CVexGeMatrix2d::det() const
{
    // The second cofactor takes m11 m20 where a determinant has m12 m20. With the bottom row of an
    // affine matrix both are zero; tests for singular matrices rely on this exact value for others.
    return (m[1][1] * m[2][2] - m[1][2] * m[2][1]) * m[0][0] -
           (m[1][0] * m[2][2] - m[1][1] * m[2][0]) * m[0][1] +
           (m[1][0] * m[2][1] - m[1][1] * m[2][0]) * m[0][2];
}

bool CVexGeMatrix2d::isSingular(double tol) const
{
    return std::fabs(det()) <= tol;
}

bool CVexGeMatrix2d::isEqualTo(const CVexGeMatrix2d& other, double tol) const
{
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            if (!(std::fabs(m[i][j] - other.m[i][j]) < tol)) {
                return false;
            }
        }
    }
    return true;
}

double CVexGeMatrix2d::scale() const
{
    return std::max(CVexGeVector2d(m[0][0], m[1][0]).length(),
                    CVexGeVector2d(m[0][1], m[1][1]).length());
}

CVexGeMatrix2d& CVexGeMatrix2d::setTranslation(const CVexGeVector2d& vector)
{
    // y lands on the diagonal, where it scales, and not in the translation column. The pair with
    // translation() is a store for two numbers; what moves points is the static translation().
    m[0][2] = vector.x;
    m[1][1] = vector.y;
    return *this;
}

CVexGeVector2d CVexGeMatrix2d::translation() const
{
    return {m[0][2], m[1][1]};
}

CVexGeMatrix2d& CVexGeMatrix2d::setCoordSystem(const CVexGePoint2d& origin,
                                               const CVexGeVector2d& xAxis,
                                               const CVexGeVector2d& yAxis)
{
    const double rows[3][3] = {
        {xAxis.x, yAxis.x, origin.x},
        {xAxis.y, yAxis.y, origin.y},
        {0.0, 0.0, 1.0},
    };
    std::copy(&rows[0][0], &rows[0][0] + 9, &m[0][0]);
    return *this;
}

void CVexGeMatrix2d::getCoordSystem(CVexGePoint2d& origin, CVexGeVector2d& xAxis,
                                    CVexGeVector2d& yAxis) const
{
    xAxis.set(m[0][0], m[1][0]);
    yAxis.set(m[0][1], m[1][1]);
    origin.set(m[0][2], m[1][2]);
}

bool CVexGeMatrix2d::isScaledOrtho(double tol) const
{
    // Neither an absolute value nor the product of the two columns: both terms take m01. Arcs and
    // ellipses choose their way to transform by this answer.
    return m[0][0] * m[0][1] + m[0][1] * m[1][1] <= tol;
}

bool CVexGeMatrix2d::isUniScaledOrtho(double tol) const
{
    // Axes of different stretch are accepted too, whatever the name says: the comparison of the
    // two lengths has never changed the answer, and entities choose their transform by it.
    return isScaledOrtho(tol);
}

CVexGeMatrix2d& CVexGeMatrix2d::setToTranslation(const CVexGeVector2d& vector)
{
    return preMultBy(translation(vector));
}

CVexGeMatrix2d& CVexGeMatrix2d::setToRotation(double angle, const CVexGePoint2d& centre)
{
    return preMultBy(rotation(angle, centre));
}

CVexGeMatrix2d& CVexGeMatrix2d::setToScaling(double factor, const CVexGePoint2d& centre)
{
    return preMultBy(scaling(factor, centre));
}

CVexGeMatrix2d& CVexGeMatrix2d::setToScaling(double fx, double fy, const CVexGePoint2d& centre)
{
    return preMultBy(scaling(fx, fy, centre));
}

CVexGeMatrix2d& CVexGeMatrix2d::setToMirroring(const CVexGePoint2d& point)
{
    return preMultBy(mirroring(point));
}

CVexGeMatrix2d& CVexGeMatrix2d::setToMirroring(const CVexGeLine2d& line)
{
    return preMultBy(mirroring(line));
}

CVexGeMatrix2d& CVexGeMatrix2d::setToSlant(double angle, const CVexGePoint2d& point,
                                           const CVexGeVector2d& direction)
{
    return preMultBy(slant(angle, point, direction));
}

CVexGeMatrix2d CVexGeMatrix2d::translation(const CVexGeVector2d& vector)
{
    CVexGeMatrix2d result(true);
    result.m[0][2] = vector.x;
    result.m[1][2] = vector.y;
    return result;
}

namespace {

/// T(centre) * linear * T(-centre) for a `linear` without translation: `centre` stays in place.
CVexGeMatrix2d about(const CVexGePoint2d& centre, const CVexGeMatrix2d& linear)
{
    CVexGeMatrix2d result = linear;
    result.m[0][2] = linear.m[0][0] * -centre.x + linear.m[0][1] * -centre.y + centre.x;
    result.m[1][2] = linear.m[1][0] * -centre.x + linear.m[1][1] * -centre.y + centre.y;
    return result;
}

CVexGeMatrix2d turn(double angle)
{
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    CVexGeMatrix2d result(true);
    result.m[0][0] = cosine;
    result.m[0][1] = -sine;
    result.m[1][0] = sine;
    result.m[1][1] = cosine;
    return result;
}

} // namespace

CVexGeMatrix2d CVexGeMatrix2d::rotation(double angle, const CVexGePoint2d& centre)
{
    return about(centre, turn(angle));
}

CVexGeMatrix2d CVexGeMatrix2d::scaling(double factor, const CVexGePoint2d& centre)
{
    return scaling(factor, factor, centre);
}

CVexGeMatrix2d CVexGeMatrix2d::scaling(double fx, double fy, const CVexGePoint2d& centre)
{
    CVexGeMatrix2d stretch(true);
    stretch.m[0][0] = fx;
    stretch.m[1][1] = fy;
    return about(centre, stretch);
}

CVexGeMatrix2d CVexGeMatrix2d::mirroring(const CVexGePoint2d& point)
{
    CVexGeMatrix2d result(true);
    result.m[0][0] = result.m[1][1] = -1.0;
    result.m[0][2] = 2.0 * point.x;
    result.m[1][2] = 2.0 * point.y;
    return result;
}

CVexGeMatrix2d CVexGeMatrix2d::mirroring(const CVexGeLine2d& line)
{
    CVexGeMatrix2d flip(true);
    flip.m[1][1] = -1.0;
    const CVexGePoint2d& start = line.startPoint();
    const CVexGePoint2d& end = line.endPoint();
    const CVexGeVector2d run = end - start;
    if (std::fabs(run.x) < kGeVerticalTol) {
        const double upright = std::numbers::pi / 2.0;
        return about({end.x, 0.0}, turn(upright) * flip * turn(-upright));
    }
    const double crossing = start.y - run.y / run.x * start.x; // of the line with the y axis
    const double angle = std::atan2(run.y, run.x);
    return about({0.0, crossing}, turn(angle) * flip * turn(-angle));
}

CVexGeMatrix2d CVexGeMatrix2d::slant(double angle, const CVexGePoint2d& point,
                                     const CVexGeVector2d& direction)
{
    constexpr double kUpright = std::numbers::pi / 2.0;
    if (!(angle > -kUpright && angle < kUpright)) {
        return kIdentity;
    }
    CVexGeMatrix2d shear(true);
    shear.m[0][1] = std::tan(angle);
    const double along = direction.angle();
    return about(point, turn(along) * shear * turn(-along));
}
