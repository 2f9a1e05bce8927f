#include "vexdb/dbobject/dbentity/vexdbcurveof.h"

#include "platform/base/cfile.h"
#include "vexdb/dbobject/dbentity/vexdbcurvevisit.h"
#include "vexdb/dbobject/dbentity/vexdbentitykinds.h"

#include <iterator>
#include <memory>

template <class Geometry>
CVexDbCurveOf<Geometry>::CVexDbCurveOf(CVexDbDatabase* database, VexDb::ClassType type,
                                       int statusBits)
    : CVexDbCurve(database)
{
    setClassInfo(type, statusBits, &m_geometry);
}

template <class Geometry>
CVexDbCurveOf<Geometry>::CVexDbCurveOf(CVexDbDatabase* database, const Geometry& geometry,
                                       VexDb::ClassType type, int statusBits)
    : CVexDbCurve(database), m_geometry(geometry)
{
    setClassInfo(type, statusBits, &m_geometry);
}

template <class Geometry>
CVexDbCurveOf<Geometry>::CVexDbCurveOf(const CVexDbCurveOf& other)
    : CVexDbCurve(other), m_geometry(other.m_geometry)
{
    setClassInfo(other.classType(), other.status(), &m_geometry);
    clearVertexCache();
}

template <class Geometry>
CVexDbCurveOf<Geometry>::~CVexDbCurveOf() = default;

template <class Geometry>
CVexDbCurveOf<Geometry>& CVexDbCurveOf<Geometry>::operator=(const CVexDbCurveOf& other)
{
    CVexDbCurve::operator=(other);
    m_geometry = other.m_geometry;
    geometryChanged();
    return *this;
}

template <class Geometry>
CVexDbCurveOf<Geometry>& CVexDbCurveOf<Geometry>::operator=(const CVexDbEntity& other)
{
    if (other.classType() == classType()) {
        *this = static_cast<const CVexDbCurveOf&>(other);
    }
    CopyEntProperties(other);
    return *this;
}

template <class Geometry>
bool CVexDbCurveOf<Geometry>::save()
{
    return saveRecord([this](CFile& out) { m_geometry.save(&out); });
}

template <class Geometry>
bool CVexDbCurveOf<Geometry>::read()
{
    clearVertexCache();
    return readRecord([this](CFile& in) { m_geometry.read(&in); });
}

template <class Geometry>
void CVexDbCurveOf<Geometry>::geometryChanged()
{
    renewGrips();
    clearVertexCache();
}

template <class Geometry>
bool CVexDbCurveOf<Geometry>::isCrossedByRect(const CVexGePoint2d& a, const CVexGePoint2d& b) const
{
    const CVexGePoint2d corners[] = {a, {a.x, b.y}, b, {b.x, a.y}, a};
    PointList points;
    int count = 0;
    for (std::size_t i = 0; i + 1 < std::size(corners); ++i) {
        const CVexGeLine2d side(corners[i], corners[i + 1]);
        if (intersectionOf(shapeOf(m_geometry), side, count, points, CVexGeEntity2d::kExtendNone,
                           kGeEpsilon)) {
            return true;
        }
    }
    return false;
}

template <class Geometry>
bool CVexDbCurveOf<Geometry>::intersectWith(CVexDbEntity& other, int& count, PointList& points,
                                            Intersect kind, double tol) const
{
    count = 0; // also for a class that nothing intersects
    points.clear();
    return visitCurve(other, [&](const auto& curve) {
        return intersectionOf(shapeOf(m_geometry), curve, count, points, kind, tol);
    });
}

template <class Geometry>
bool CVexDbCurveOf<Geometry>::intersectWith(const CVexGeEllipArc2d& other, int& count,
                                            PointList& points, Intersect kind, double tol) const
{
    return intersectionOf(shapeOf(m_geometry), other, count, points, kind, tol);
}

template <class Geometry>
bool CVexDbCurveOf<Geometry>::intersectWith(const CVexGeCircArc2d& other, int& count,
                                            PointList& points, Intersect kind, double tol) const
{
    return intersectionOf(shapeOf(m_geometry), other, count, points, kind, tol);
}

template <class Geometry>
bool CVexDbCurveOf<Geometry>::intersectWith(const CVexGeLine2d& other, int& count,
                                            PointList& points, Intersect kind, double tol) const
{
    return intersectionOf(shapeOf(m_geometry), other, count, points, kind, tol);
}

template <class Geometry>
bool CVexDbCurveOf<Geometry>::getOffset(CVexGePoint2d& side, CVexDbEntity*& result, double distance)
{
    result = nullptr;
    std::unique_ptr<CVexDbEntity> made(makeEntityOfClass(classType(), database()));
    *made = *this; // by the class's own assignment, which knows all its fields
    auto& moved = static_cast<CVexDbCurveOf&>(*made);
    if (!moved.m_geometry.offset(side, distance)) {
        return false;
    }
    moved.geometryChanged();
    result = made.release();
    return true;
}

// A further kind of curve names its geometry here.
template class CVexDbCurveOf<CVexGeLine2d>;
template class CVexDbCurveOf<CVexGeCircArc2d>;
template class CVexDbCurveOf<CVexGeRect2d>;
template class CVexDbCurveOf<CVexGePolyline2d>;
