#include "vexge/gemath/vexgepoint2d.h"

#include "platform/base/vexfields.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/gemath/vexgematrix2d.h"
#include "vexge/gemath/vextruncate.h"

constinit const CVexGePoint2d CVexGePoint2d::kOrigin;

void CVexGePoint2d::save(CFile* file) const
{
    CVexFieldWriter{*file}(x, y, tag);
}

void CVexGePoint2d::read(CFile* file)
{
    CVexFieldReader{*file}(x, y, tag);
}

CPoint CVexGePoint2d::asCPoint() const
{
    // Truncation after adding a half rounds -0.7 to 0 and -1.5 to -1, unlike a rounding that is
    // the same on both sides of zero. The conversion to device pixels places strokes by it.
    return {truncateSaturated(x + 0.5), truncateSaturated(y + 0.5)};
}

CVexGePoint2d CVexGePoint2d::setToProduct(const CVexGeMatrix2d& matrix,
                                          const CVexGePoint2d& point) const
{
    // The receiver is only the handle by which the product is asked; callers use the result and
    // count on the receiver keeping its place.
    return CVexGePoint2d(point).transformBy(matrix);
}

double& CVexGePoint2d::operator[](int index)
{
    static double homogeneous = 1.0;
    return index == 0 ? x : index == 1 ? y : homogeneous;
}

CVexGePoint2d& CVexGePoint2d::transformBy(const CVexGeMatrix2d& matrix)
{
    const auto& m = matrix.m;
    return set(x * m[0][0] + y * m[0][1] + m[0][2], x * m[1][0] + y * m[1][1] + m[1][2]);
}

CVexGePoint2d& CVexGePoint2d::rotateBy(double angle, const CVexGePoint2d& centre)
{
    if (*this == centre) {
        return *this;
    }
    return transformBy(CVexGeMatrix2d::rotation(angle, centre));
}

CVexGePoint2d& CVexGePoint2d::mirror(const CVexGeLine2d& line)
{
    const CVexGeVector2d start = line.startPoint().asVector();
    // Along an axis without a turn, whose sine and cosine would cost the last bits: mirroring twice
    // then gives the point itself, which an undo relies on.
    if (line.endPoint().y == start.y) {
        return set(x, start.y - (y - start.y));
    }
    if (line.endPoint().x == start.x) {
        return set(start.x - (x - start.x), y);
    }
    const double angle = line.startPoint().angleTo(line.endPoint());
    *this -= start;
    rotateBy(-angle, kOrigin);
    y = -y;
    rotateBy(angle, kOrigin);
    return *this += start;
}

CVexGePoint2d& CVexGePoint2d::scaleBy(double factor, const CVexGePoint2d& centre)
{
    return transformBy(CVexGeMatrix2d::scaling(factor, centre));
}

CVexGePoint2d& CVexGePoint2d::scaleBy(double fx, double fy, const CVexGePoint2d& centre)
{
    return transformBy(CVexGeMatrix2d::scaling(fx, fy, centre));
}

CVexGePoint2d& CVexGePoint2d::slantBy(const CVexGeLine2d& line, double angle, bool flag)
{
    CVexGeVector2d way;
    line.perpVecFromPoint(*this, way, kGeEpsilon);
    way.rotateBy(angle);
    if (flag) {
        const double length = way.length() / std::cos(angle);
        way.normalize(kGeTol) *= length;
    }
    return *this += way;
}
