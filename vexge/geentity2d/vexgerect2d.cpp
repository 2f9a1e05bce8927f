#include "vexge/geentity2d/vexgerect2d.h"

#include "platform/base/vexfields.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <array>
#include <cmath>

namespace {

using Corners = std::array<CVexGePoint2d, 4>;

Corners cornersOf(const CVexGeRect2d& rect)
{
    const CVexGePoint2d& base = rect.basePoint();
    CVexGePoint2d diagonal;
    rect.getDiagonPoint(diagonal);
    CVexGePoint2d upright = diagonal;
    upright.rotateBy(-rect.rotation(), base);
    CVexGePoint2d second(upright.x, base.y);
    second.rotateBy(rect.rotation(), base);
    CVexGePoint2d fourth(base.x, upright.y);
    fourth.rotateBy(rect.rotation(), base);
    return {base, second, diagonal, fourth};
}

} // namespace

CVexGeRect2d::CVexGeRect2d(const CVexGePoint2d& base, const CVexGeVector2d& size, double rotation)
    : CVexGeRect2d()
{
    set(base, size, rotation);
}

CVexGeRect2d::CVexGeRect2d(const CVexGePoint2d& base, double width, double height, double rotation)
    : CVexGeRect2d()
{
    set(base, CVexGeVector2d(width, height), rotation);
}

CVexGeRect2d& CVexGeRect2d::operator=(const CVexGeRect2d& other)
{
    m_base = other.m_base;
    m_width = other.m_width;
    m_height = other.m_height;
    m_rotation = other.m_rotation;
    m_diagonal = other.m_diagonal;
    return *this;
}

CVexGeRect2d& CVexGeRect2d::set(const CVexGePoint2d& base, const CVexGeVector2d& size,
                                double rotation)
{
    m_base = base;
    m_width = size.x;
    m_height = size.y;
    m_rotation = rotation;
    m_diagonal = base + CVexGeVector2d(size).rotateBy(rotation);
    return *this;
}

CVexGeRect2d& CVexGeRect2d::set(const CVexGePoint2d& base, double width, double height,
                                double rotation)
{
    m_base = base;
    m_width = width;
    m_height = height;
    m_rotation = rotation;
    placeDiagonalUpright();
    return *this;
}

void CVexGeRect2d::placeDiagonalUpright()
{
    // The rotation is left out, so a rotated rectangle loses its shape until it is turned or
    // transformed. Files and the rectangle entity hold diagonals that were placed this way.
    m_diagonal = CVexGePoint2d(m_width + m_base.x, m_height + m_base.y);
}

void CVexGeRect2d::setRotation(double rotation)
{
    m_diagonal.rotateBy(rotation - m_rotation, m_base);
    m_rotation = rotation;
}

void CVexGeRect2d::setBasePoint(const CVexGePoint2d& point)
{
    m_diagonal += point - m_base;
    m_base = point;
}

void CVexGeRect2d::setWidth(double width)
{
    m_width = width;
    placeDiagonalUpright();
}

void CVexGeRect2d::setHeight(double height)
{
    m_height = height;
    placeDiagonalUpright();
}

void CVexGeRect2d::save(CFile* file) const
{
    CVexFieldWriter{*file}(m_base, m_width, m_height, m_rotation);
}

void CVexGeRect2d::read(CFile* file)
{
    CVexFieldReader{*file}(m_base, m_width, m_height, m_rotation);
    placeDiagonalUpright();
}

CVexGePoint2d CVexGeRect2d::centerPoint() const
{
    return {(m_base.x + m_diagonal.x) / 2.0, (m_base.y + m_diagonal.y) / 2.0};
}

int CVexGeRect2d::getVertex(std::vector<CVexGePoint2d>& out) const
{
    const Corners corners = cornersOf(*this);
    out.assign(corners.begin(), corners.end());
    return 4;
}

void CVexGeRect2d::getPolyline(CVexGePolyline2d& out) const
{
    out.setSize(4);
    for (const CVexGePoint2d& corner : cornersOf(*this)) {
        out.appendVertex(corner);
    }
    out.setClosed(true);
}

bool CVexGeRect2d::isEqualTo(const CVexGeEntity2d& other, const double& tol) const
{
    return other.isKindOf(VexGe::kGeRect2d) &&
           isEqualTo(static_cast<const CVexGeRect2d&>(other), tol);
}

bool CVexGeRect2d::isEqualTo(const CVexGeRect2d& other, const double& tol) const
{
    return m_base.distanceTo(other.m_base) <= tol && std::fabs(m_width - other.m_width) <= tol &&
           std::fabs(m_height - other.m_height) <= tol &&
           std::fabs(m_rotation - other.m_rotation) < tol;
}

bool CVexGeRect2d::operator==(const CVexGeRect2d& other) const
{
    return m_base == other.m_base && m_width == other.m_width && m_height == other.m_height &&
           m_rotation == other.m_rotation;
}

int CVexGeRect2d::isOn(const CVexGePoint2d& point, const double& tol) const
{
    const Corners corners = cornersOf(*this);
    for (std::size_t i = 0; i < 4; ++i) {
        if (CVexGeLine2d(corners[i], corners[(i + 1) % 4]).isOn(point, tol) != 0) {
            return 1;
        }
    }
    return 0;
}

CVexGePoint2d CVexGeRect2d::closestPointTo(const CVexGePoint2d& point, double tol) const
{
    // The limit is not lowered from edge to edge: the last edge within it answers, however near an
    // earlier one lies. Grips and dimensions of rectangles keep their points by this; selection
    // asks isOn instead.
    const Corners corners = cornersOf(*this);
    CVexGePoint2d closest;
    for (std::size_t i = 0; i < 4; ++i) {
        const CVexGeLine2d edge(corners[i], corners[(i + 1) % 4]);
        const CVexGePoint2d onEdge = edge.closestPointTo(point, tol);
        if (onEdge.distanceTo(point) < 1.0 / tol) {
            closest = onEdge;
        }
    }
    return closest;
}

CVexGePoint2d CVexGeRect2d::closestPointTo(const CVexGeLine2d& line, CVexGePoint2d& onLine,
                                           double tol) const
{
    const Corners corners = cornersOf(*this); // the last edge within the limit, as for a point
    CVexGePoint2d closest;
    onLine = CVexGePoint2d();
    for (std::size_t i = 0; i < 4; ++i) {
        const CVexGeLine2d edge(corners[i], corners[(i + 1) % 4]);
        CVexGePoint2d across;
        const CVexGePoint2d onEdge = edge.closestPointTo(line, across, tol);
        if (onEdge.distanceTo(across) < 1.0 / tol) {
            closest = onEdge;
            onLine = across;
        }
    }
    return closest;
}

double CVexGeRect2d::distanceTo(const CVexGePoint2d& point, double tol) const
{
    return point.distanceTo(closestPointTo(point, tol));
}

double CVexGeRect2d::distanceTo(const CVexGeLine2d& line, double tol) const
{
    CVexGePoint2d onLine;
    const CVexGePoint2d here = closestPointTo(line, onLine, tol);
    return here.distanceTo(onLine);
}

CVexGeRect2d& CVexGeRect2d::translateBy(const CVexGeVector2d& vector)
{
    m_base += vector;
    m_diagonal += vector;
    return *this;
}

void CVexGeRect2d::takeSizeFromDiagonal()
{
    const CVexGeVector2d size = (m_diagonal - m_base).rotateBy(-m_rotation);
    setWidth(size.x);
    setHeight(size.y);
}

CVexGeRect2d& CVexGeRect2d::transformBy(const CVexGeMatrix2d& matrix)
{
    const double before = (m_diagonal - m_base).angle();
    m_base.transformBy(matrix);
    m_diagonal.transformBy(matrix);
    m_rotation += (m_diagonal - m_base).angle() - before;
    takeSizeFromDiagonal();
    return *this;
}

CVexGeRect2d& CVexGeRect2d::scaleBy(double fx, double fy, const CVexGePoint2d& centre)
{
    const CVexGePoint2d fixed(centre.x, centre.y); // may be the base itself
    m_base.scaleBy(fx, fy, fixed);
    m_diagonal.scaleBy(fx, fy, fixed);
    takeSizeFromDiagonal();
    return *this;
}

CVexGeRect2d& CVexGeRect2d::scaleBy(double factor, const CVexGePoint2d& centre)
{
    return scaleBy(factor, factor, centre);
}

CVexGeRect2d& CVexGeRect2d::rotateBy(double angle, const CVexGePoint2d& centre)
{
    const CVexGePoint2d fixed(centre.x, centre.y);
    const double before = (m_diagonal - m_base).angle();
    m_base.rotateBy(angle, fixed);
    m_diagonal.rotateBy(angle, fixed);
    m_rotation += (m_diagonal - m_base).angle() - before;
    setRotation(m_rotation);
    return *this;
}

CVexGeRect2d& CVexGeRect2d::mirror(const CVexGeLine2d& line)
{
    Corners corners = cornersOf(*this);
    for (std::size_t i = 0; i < 3; ++i) {
        corners[i].mirror(line);
    }
    m_base = corners[0];
    m_diagonal = corners[2];
    m_rotation = m_base.angleTo(corners[1]);
    return *this;
}

bool CVexGeRect2d::offset(const CVexGePoint2d& side, double dist)
{
    // A polyline without an offset stays where it is, and so does the rectangle, with its sides
    // made positive; the answer is true all the same. Callers compare the corners, not the answer.
    CVexGePolyline2d moved = polyline();
    moved.offset(side, dist);
    if (moved.numVerts() < 4) {
        return false;
    }
    const std::vector<CVexGePoint2d>& corners = moved.vertices();
    m_base = corners[0];
    m_diagonal = corners[2];
    m_width = m_base.distanceTo(corners[1]);
    m_height = m_base.distanceTo(corners[3]);
    return true;
}
