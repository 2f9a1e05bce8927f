#include "vexdb/dbobject/dbentity/vexdbbox.h"

#include "vexdb/dbobject/dbentity/vexdbextents.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/dbentity/vexdbpenframe.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexge/geentity2d/vexgeline2d.h"

#include <algorithm>

CVexDbBox::CVexDbBox(CVexDbDatabase* database) : CVexDbCurveOf(database, VexDb::kBox, kStatusEntity)
{
}

CVexDbBox::CVexDbBox(const CVexDbBox& other) = default;

CVexDbBox::CVexDbBox(const CVexGePoint2d& base, const CVexGeVector2d& size, double rotation)
    : CVexDbCurveOf(nullptr, CVexGeRect2d(base, size, rotation), VexDb::kBox, kStatusEntity)
{
    geometryChanged();
}

CVexDbBox::CVexDbBox(const CVexGePoint2d& base, double width, double height, double rotation)
    : CVexDbCurveOf(nullptr, CVexGeRect2d(base, width, height, rotation), VexDb::kBox,
                    kStatusEntity)
{
    geometryChanged();
}

CVexDbBox::~CVexDbBox() = default;

CVexDbBox& CVexDbBox::operator=(const CVexDbBox& other) = default;

CVexDbBox& CVexDbBox::operator=(const CVexDbEntity& other)
{
    CVexDbCurveOf::operator=(other);
    return *this;
}

std::array<CVexGePoint2d, 4> CVexDbBox::corners() const
{
    PointList vertices;
    m_geometry.getVertex(vertices);
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
    addShapeRow(L"X Base", m_geometry.basePoint().x);
    addShapeRow(L"Y Base", m_geometry.basePoint().y);
    addShapeRow(L"Width", m_geometry.width());
    addShapeRow(L"Height", m_geometry.height());
    addShapeRow(L"Rotation", m_geometry.rotation());
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

void CVexDbBox::Set(const CVexGePoint2d& base, const CVexGeVector2d& size, double rotation)
{
    m_geometry.set(base, size, rotation);
    geometryChanged();
}

void CVexDbBox::Set(const CVexGePoint2d& base, double width, double height, double rotation)
{
    m_geometry.set(base, width, height, rotation);
    geometryChanged();
}

void CVexDbBox::SetBasePoint(const CVexGePoint2d& point)
{
    m_geometry.setBasePoint(point);
    geometryChanged();
}

void CVexDbBox::SetDiagonalPoint(const CVexGePoint2d& point)
{
    Set(BasePoint(), point - BasePoint(), Rotation());
}

void CVexDbBox::SetWidth(double width)
{
    m_geometry.setWidth(width);
    geometryChanged();
}

void CVexDbBox::SetHeight(double height)
{
    m_geometry.setHeight(height);
    geometryChanged();
}

void CVexDbBox::SetRotation(double rotation)
{
    m_geometry.setRotation(rotation);
    geometryChanged();
}

void CVexDbBox::GetPolyline(CVexGePolyline2d& out) const
{
    m_geometry.getPolyline(out);
}

void CVexDbBox::ConvertToPolyline(CVexDbPolyline& polyline) const
{
    polyline.CVexDbEntity::operator=(*this);
    CVexGePolyline2d outline;
    GetPolyline(outline);
    polyline.SetGeometry(outline);
}
