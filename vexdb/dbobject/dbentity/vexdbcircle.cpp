#include "vexdb/dbobject/dbentity/vexdbcircle.h"

#include "vexdb/dbobject/dbentity/vexdbextents.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/dbentity/vexdbpenframe.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexge/gemath/vexgevector2d.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t kFirstGripOnCircle = 1; // behind the centre

std::array<CVexGePoint2d, 5> gripsOf(const CVexGeCircArc2d& circle)
{
    const CVexGePoint2d& centre = circle.center();
    const CVexGeVector2d right(circle.radius(), 0.0);
    const CVexGeVector2d up(0.0, circle.radius());
    return {centre, centre + right, centre + up, centre - right, centre - up};
}

} // namespace

CVexDbCircle::CVexDbCircle(CVexDbDatabase* database)
    : CVexDbCurveOf(database, VexDb::kCircle, kStatusEntity)
{
}

CVexDbCircle::CVexDbCircle(const CVexDbCircle& other) = default;

CVexDbCircle::CVexDbCircle(const CVexGePoint2d& center, double radius)
    : CVexDbCurveOf(nullptr, CVexGeCircArc2d(center, radius), VexDb::kCircle, kStatusEntity)
{
    geometryChanged();
}

CVexDbCircle::~CVexDbCircle() = default;

CVexDbCircle& CVexDbCircle::operator=(const CVexDbCircle& other) = default;

CVexDbCircle& CVexDbCircle::operator=(const CVexDbEntity& other)
{
    CVexDbCurveOf::operator=(other);
    return *this;
}

void CVexDbCircle::setGripPoints()
{
    const auto grips = gripsOf(m_geometry);
    beginGrips().assign(grips.begin(), grips.end());
    storeEntityRect();
}

CVexDbRect CVexDbCircle::GetOutRect()
{
    return boundsOf(gripsOf(m_geometry));
}

bool CVexDbCircle::trueExtents(CVexGePoint2d& min, CVexGePoint2d& max) const
{
    return extentsOf(gripsOf(m_geometry), min, max);
}

void CVexDbCircle::Draw(CDC* dc)
{
    const CVexDbPenFrame frame(*this, dc);
    if (!frame) {
        return;
    }
    dc->MoveTo(toLogical(StartPoint()));
    dc->AngleArc(toLogical(Center()), toLogical(Radius()), 0.0F, 360.0F);
}

void CVexDbCircle::makeProperty()
{
    CVexDbCurve::makeProperty();
    addShapeRow(L"X Center", m_geometry.center().x);
    addShapeRow(L"Y Center", m_geometry.center().y);
    addShapeRow(L"Radius", m_geometry.radius());
}

bool CVexDbCircle::checkInsideOrCross(CVexGePoint2d& a, CVexGePoint2d& b)
{
    const auto grips = gripsOf(m_geometry);
    return std::any_of(grips.begin() + kFirstGripOnCircle, grips.end(),
                       [&](const CVexGePoint2d& grip) { return IsInsideRect(a, b, grip); }) ||
           isCrossedByRect(a, b);
}

bool CVexDbCircle::checkInside(CVexGePoint2d& a, CVexGePoint2d& b)
{
    const auto grips = gripsOf(m_geometry);
    return std::all_of(grips.begin() + kFirstGripOnCircle, grips.end(),
                       [&](const CVexGePoint2d& grip) { return IsInsideRect(a, b, grip); });
}

bool CVexDbCircle::centerPoint(CVexGePoint2d& center) const
{
    center = m_geometry.center();
    return true;
}

void CVexDbCircle::setCenter(const CVexGePoint2d& center)
{
    m_geometry.setCenter(center);
    geometryChanged();
}

void CVexDbCircle::setRadius(double radius)
{
    m_geometry.setRadius(radius);
    geometryChanged();
}
