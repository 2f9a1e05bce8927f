#pragma once

#include "platform/base/vexexport.h"
#include "vexge/gemath/vexgetol.h"
#include "vexge/gemath/vexgevector2d.h"

class CVexGeLine2d;
class CVexGePoint2d;

/// A 3 by 3 matrix, row by row, for column vectors (x, y, 1): the linear part stands in rows and
/// columns 0 and 1, the translation in column 2. A product applies its right operand first.
class VEXGE_EXPORT CVexGeMatrix2d {
public:
    static const CVexGeMatrix2d kIdentity;

    double m[3][3] = {};

    /// The identity, or all zeros.
    explicit constexpr CVexGeMatrix2d(bool identity)
    {
        if (identity) {
            m[0][0] = m[1][1] = m[2][2] = 1.0;
        }
    }

    constexpr double operator()(int row, int column) const { return m[row][column]; }
    constexpr double& operator()(int row, int column) { return m[row][column]; }
    CVexGeMatrix2d& setToIdentity();

    CVexGeMatrix2d operator*(const CVexGeMatrix2d& right) const;
    /// this = this * right, so `right` is applied before what the matrix holds.
    CVexGeMatrix2d& operator*=(const CVexGeMatrix2d& right);
    /// The same as *=.
    CVexGeMatrix2d& postMultBy(const CVexGeMatrix2d& right);
    /// this = left * this.
    CVexGeMatrix2d& preMultBy(const CVexGeMatrix2d& left);
    /// this = a * b.
    CVexGeMatrix2d& setToProduct(const CVexGeMatrix2d& a, const CVexGeMatrix2d& b);

    /// The inverse, or all zeros for a matrix that has none.
    [[nodiscard]] CVexGeMatrix2d inverse() const;
    /// Becomes its inverse, or all zeros.
    CVexGeMatrix2d& invert();
    /// A transposed copy.
    [[nodiscard]] CVexGeMatrix2d transpose() const;
    CVexGeMatrix2d& transposeIt();
    /// The determinant of a matrix whose bottom row begins with 0; see the source for others.
    [[nodiscard]] double det() const;
    /// |det()| <= tol.
    [[nodiscard]] bool isSingular(double tol = kGeTol) const;
    /// Every element differs by less than `tol`.
    [[nodiscard]] bool isEqualTo(const CVexGeMatrix2d& other, double tol = kGeTol) const;
    bool operator==(const CVexGeMatrix2d& other) const { return isEqualTo(other); }
    bool operator!=(const CVexGeMatrix2d& other) const { return !isEqualTo(other); }
    /// The greater stretch of the two axes.
    [[nodiscard]] double scale() const;

    /// Stores x at (0, 2) and y at (1, 1): a pair with translation() below, no mover of points.
    CVexGeMatrix2d& setTranslation(const CVexGeVector2d& vector);
    /// What setTranslation stored.
    [[nodiscard]] CVexGeVector2d translation() const;
    /// Makes the columns: the images of the axes and of the origin.
    CVexGeMatrix2d& setCoordSystem(const CVexGePoint2d& origin, const CVexGeVector2d& xAxis,
                                   const CVexGeVector2d& yAxis);
    void getCoordSystem(CVexGePoint2d& origin, CVexGeVector2d& xAxis, CVexGeVector2d& yAxis) const;
    /// m00 m01 + m01 m11 <= tol: not the columns' dot product, and without its absolute value.
    [[nodiscard]] bool isScaledOrtho(double tol = kGeTol) const;
    /// The same answer as isScaledOrtho; the stretch of the axes is not part of it.
    [[nodiscard]] bool isUniScaledOrtho(double tol = kGeTol) const;

    // Each puts its operation behind what the matrix already does: this = operation * this.
    CVexGeMatrix2d& setToTranslation(const CVexGeVector2d& vector);
    CVexGeMatrix2d& setToRotation(double angle, const CVexGePoint2d& centre);
    CVexGeMatrix2d& setToScaling(double factor, const CVexGePoint2d& centre);
    CVexGeMatrix2d& setToScaling(double fx, double fy, const CVexGePoint2d& centre);
    CVexGeMatrix2d& setToMirroring(const CVexGePoint2d& point);
    CVexGeMatrix2d& setToMirroring(const CVexGeLine2d& line);
    CVexGeMatrix2d& setToSlant(double angle, const CVexGePoint2d& point,
                               const CVexGeVector2d& direction);

    static CVexGeMatrix2d translation(const CVexGeVector2d& vector);
    /// Turns by `angle` radians, counter-clockwise.
    static CVexGeMatrix2d rotation(double angle, const CVexGePoint2d& centre);
    static CVexGeMatrix2d scaling(double factor, const CVexGePoint2d& centre);
    static CVexGeMatrix2d scaling(double fx, double fy, const CVexGePoint2d& centre);
    /// Half a turn about `point`.
    static CVexGeMatrix2d mirroring(const CVexGePoint2d& point);
    /// A line whose ends are less than 0.001 apart in x counts as vertical, through its end.
    static CVexGeMatrix2d mirroring(const CVexGeLine2d& line);
    /// Shears along `direction` with `point` fixed, by tan(angle) a unit; the identity for an
    /// `angle` that is not strictly between -pi/2 and pi/2.
    static CVexGeMatrix2d slant(double angle, const CVexGePoint2d& point,
                                const CVexGeVector2d& direction);

protected:
    /// Crout's method with implicit row scaling; `index` gets the row exchanges. False when
    /// singular: then `a` is spoilt.
    static bool LU_Decompose(double a[3][3], int index[3]);
    /// Solves for the right side `b`, in place, with what LU_Decompose left.
    static void LU_Backsub(const double a[3][3], const int index[3], double b[3]);
};
