#include "vexdb/dbobject/dbentity/vexdbline.h"

#include "vexdb/dbobject/dbentity/vexdbextents.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/dbentity/vexdbpenframe.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"

#include <algorithm>

CVexDbLine::CVexDbLine(CVexDbDatabase* database)
    : CVexDbCurveOf(database, VexDb::kLine, kStatusEntity)
{
}

CVexDbLine::CVexDbLine(const CVexDbLine& other) = default;

CVexDbLine::CVexDbLine(const CVexGePoint2d& start, const CVexGePoint2d& end)
    : CVexDbCurveOf(nullptr, CVexGeLine2d(start, end), VexDb::kLine, kStatusEntity)
{
    geometryChanged();
}

CVexDbLine::~CVexDbLine() = default;

CVexDbLine& CVexDbLine::operator=(const CVexDbLine& other) = default;

CVexDbLine& CVexDbLine::operator=(const CVexDbEntity& other)
{
    CVexDbCurveOf::operator=(other);
    return *this;
}

void CVexDbLine::setGripPoints()
{
    beginGrips() = {m_geometry.midPoint(), m_geometry.startPoint(), m_geometry.endPoint()};
    storeEntityRect();
}

CRect CVexDbLine::computeEntityRect()
{
    const CPoint start = toLogical(m_geometry.startPoint());
    const CPoint end = toLogical(m_geometry.endPoint());
    return {std::min(start.x, end.x), std::min(start.y, end.y), std::max(start.x, end.x),
            std::max(start.y, end.y)};
}

CVexDbRect CVexDbLine::GetOutRect()
{
    const CVexGePoint2d ends[] = {m_geometry.startPoint(), m_geometry.endPoint()};
    return boundsOf(ends);
}

bool CVexDbLine::trueExtents(CVexGePoint2d& min, CVexGePoint2d& max) const
{
    const CVexGePoint2d ends[] = {StartPoint(), EndPoint()};
    return extentsOf(ends, min, max);
}

void CVexDbLine::Draw(CDC* dc)
{
    const CVexDbPenFrame frame(*this, dc);
    if (!frame) {
        return;
    }
    dc->MoveTo(toLogical(m_geometry.startPoint()));
    dc->LineTo(toLogical(m_geometry.endPoint()));
}

void CVexDbLine::makeProperty()
{
    CVexDbCurve::makeProperty();
    addShapeRow(L"X Start", m_geometry.startPoint().x);
    addShapeRow(L"Y Start", m_geometry.startPoint().y);
    addShapeRow(L"X End", m_geometry.endPoint().x);
    addShapeRow(L"Y End", m_geometry.endPoint().y);
}

bool CVexDbLine::checkInsideOrCross(CVexGePoint2d& a, CVexGePoint2d& b)
{
    // The end is not asked: a line whose end alone lies inside crosses a side, all but a speck too
    // short to cross anything.
    if (IsInsideRect(a, b, m_geometry.midPoint()) || IsInsideRect(a, b, m_geometry.startPoint())) {
        return true;
    }
    return isCrossedByRect(a, b);
}

bool CVexDbLine::checkInside(CVexGePoint2d& a, CVexGePoint2d& b)
{
    return IsInsideRect(a, b, m_geometry.startPoint()) && IsInsideRect(a, b, m_geometry.endPoint());
}

void CVexDbLine::set(const CVexGePoint2d& start, const CVexGePoint2d& end)
{
    m_geometry.set(start, end);
    markGripsStale();
}

void CVexDbLine::setStartPoint(const CVexGePoint2d& start)
{
    m_geometry.set(start, EndPoint());
    geometryChanged();
}

void CVexDbLine::setEndPoint(const CVexGePoint2d& end)
{
    m_geometry.set(StartPoint(), end);
    geometryChanged();
}
