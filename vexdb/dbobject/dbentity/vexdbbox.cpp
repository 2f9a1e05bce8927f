#include "vexdb/dbobject/dbentity/vexdbbox.h"

#include "platform/base/cfile.h"
#include "vexdb/dbobject/dbentity/vexdbcurvevisit.h"
#include "vexdb/dbobject/dbentity/vexdbextents.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/dbentity/vexdbpenframe.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"

#include <algorithm>

CVexDbBox::CVexDbBox(CVexDbDatabase* database) : CVexDbCurve(database)
{
    setClassInfo();
}

CVexDbBox::CVexDbBox(const CVexDbBox& other) : CVexDbCurve(other), m_rect(other.m_rect)
{
    setClassInfo();
}

CVexDbBox::CVexDbBox(const CVexGePoint2d& base, const CVexGeVector2d& size, double rotation)
    : CVexDbCurve(nullptr), m_rect(base, size, rotation)
{
    setClassInfo();
    renewGrips();
}

CVexDbBox::CVexDbBox(const CVexGePoint2d& base, double width, double height, double rotation)
    : CVexDbCurve(nullptr), m_rect(base, width, height, rotation)
{
    setClassInfo();
    renewGrips();
}

CVexDbBox::~CVexDbBox() = default;

void CVexDbBox::setClassInfo()
{
    CVexDbCurve::setClassInfo(VexDb::kBox, kStatusEntity, &m_rect);
}

CVexDbBox& CVexDbBox::operator=(const CVexDbBox& other)
{
    CVexDbCurve::operator=(other);
    m_rect = other.m_rect;
    renewGrips();
    return *this;
}

CVexDbBox& CVexDbBox::operator=(const CVexDbEntity& other)
{
    if (other.classType() == classType()) {
        *this = static_cast<const CVexDbBox&>(other);
    }
    CopyEntProperties(other);
    return *this;
}

bool CVexDbBox::save()
{
    return saveRecord([this](CFile& out) { m_rect.save(&out); });
}

bool CVexDbBox::read()
{
    return readRecord([this](CFile& in) { m_rect.read(&in); });
}

std::array<CVexGePoint2d, 4> CVexDbBox::corners() const
{
    PointList vertices;
    m_rect.getVertex(vertices);
    return {vertices[0], vertices[1], vertices[2], vertices[3]};
}

void CVexDbBox::setGripPoints()
{
    const auto vertices = corners();
    PointList& grips = beginGrips();
    grips.reserve(2 * vertices.size());
    for (std::size_t i = 0; i < vertices.size(); ++i) {
        grips.push_back(vertices[i]);
        grips.push_back(CVexGeLine2d(vertices[i], vertices[(i + 1) % vertices.size()]).midPoint());
    }
    storeEntityRect();
}

CVexDbRect CVexDbBox::GetOutRect()
{
    return boundsOf(corners()); // the grips between the corners cannot lie outside of them
}

bool CVexDbBox::trueExtents(CVexGePoint2d& min, CVexGePoint2d& max) const
{
    return extentsOf(corners(), min, max);
}

void CVexDbBox::Draw(CDC* dc)
{
    const CVexDbPenFrame frame(*this, dc);
    if (!frame) {
        return;
    }
    const auto vertices = corners();
    dc->MoveTo(toLogical(vertices[0]));
    for (const std::size_t i : {1U, 2U, 3U, 0U}) {
        dc->LineTo(toLogical(vertices[i]));
    }
}

void CVexDbBox::makeProperty()
{
    CVexDbCurve::makeProperty();
    addShapeRow(L"X Base", m_rect.basePoint().x);
    addShapeRow(L"Y Base", m_rect.basePoint().y);
    addShapeRow(L"Width", m_rect.width());
    addShapeRow(L"Height", m_rect.height());
    addShapeRow(L"Rotation", m_rect.rotation());
}

bool CVexDbBox::checkInsideOrCross(CVexGePoint2d& a, CVexGePoint2d& b)
{
    return std::ranges::any_of(
        corners(), [&](const CVexGePoint2d& corner) { return IsInsideRect(a, b, corner); });
}

bool CVexDbBox::checkInside(CVexGePoint2d& a, CVexGePoint2d& b)
{
    return std::ranges::all_of(
        corners(), [&](const CVexGePoint2d& corner) { return IsInsideRect(a, b, corner); });
}

CVexGePolyline2d CVexDbBox::outline() const
{
    CVexGePolyline2d polyline;
    GetPolyline(polyline);
    return polyline;
}

bool CVexDbBox::intersectWith(CVexDbEntity& other, int& count, PointList& points, Intersect kind,
                              double tol) const
{
    return visitCurve(other, [&](const auto& curve) {
        return intersectionOf(outline(), curve, count, points, kind, tol);
    });
}

bool CVexDbBox::intersectWith(const CVexGeEllipArc2d& other, int& count, PointList& points,
                              Intersect kind, double tol) const
{
    return intersectionOf(outline(), other, count, points, kind, tol);
}

bool CVexDbBox::intersectWith(const CVexGeCircArc2d& other, int& count, PointList& points,
                              Intersect kind, double tol) const
{
    return intersectionOf(outline(), other, count, points, kind, tol);
}

bool CVexDbBox::intersectWith(const CVexGeLine2d& other, int& count, PointList& points,
                              Intersect kind, double tol) const
{
    return intersectionOf(outline(), other, count, points, kind, tol);
}

bool CVexDbBox::getOffset(CVexGePoint2d& side, CVexDbEntity*& result, double distance)
{
    return makeOffset(*this, result,
                      [&](CVexDbBox& moved) { return moved.m_rect.offset(side, distance); });
}

void CVexDbBox::Set(const CVexGePoint2d& base, const CVexGeVector2d& size, double rotation)
{
    m_rect.set(base, size, rotation);
    renewGrips();
}

void CVexDbBox::Set(const CVexGePoint2d& base, double width, double height, double rotation)
{
    m_rect.set(base, width, height, rotation);
    renewGrips();
}

void CVexDbBox::SetBasePoint(const CVexGePoint2d& point)
{
    m_rect.setBasePoint(point);
    renewGrips();
}

void CVexDbBox::SetDiagonalPoint(const CVexGePoint2d& point)
{
    Set(BasePoint(), point - BasePoint(), Rotation());
}

void CVexDbBox::SetWidth(double width)
{
    m_rect.setWidth(width);
    renewGrips();
}

void CVexDbBox::SetHeight(double height)
{
    m_rect.setHeight(height);
    renewGrips();
}

void CVexDbBox::SetRotation(double rotation)
{
    m_rect.setRotation(rotation);
    renewGrips();
}

void CVexDbBox::GetPolyline(CVexGePolyline2d& out) const
{
    m_rect.getPolyline(out);
}
