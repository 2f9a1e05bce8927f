#include "vexdb/dbobject/dbentity/vexdbpoint.h"

#include "platform/base/vexfields.h"
#include "vexdb/dbobject/dbentity/vexdbextents.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/dbentity/vexdbpenframe.h"
#include "vexdb/dbobject/dbentity/vexdbpointmarker.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/vexdbdatabase.h"

#include <utility>

CVexDbPoint::CVexDbPoint(CVexDbDatabase* database) : CVexDbEntity(database)
{
    setClassType(VexDb::kPoint);
}

CVexDbPoint::CVexDbPoint(const CVexGePoint2d& position)
    : CVexDbEntity(nullptr), m_position(position)
{
    setClassType(VexDb::kPoint);
    renewGrips();
}

CVexDbPoint::CVexDbPoint(const CVexDbPoint& other) = default;

CVexDbPoint::~CVexDbPoint() = default;

CVexDbPoint& CVexDbPoint::operator=(const CVexDbPoint& other)
{
    CVexDbEntity::operator=(other);
    m_position = other.m_position;
    m_size = other.m_size;
    m_pdMode = other.m_pdMode;
    m_fill = other.m_fill;
    m_flag = other.m_flag;
    renewGrips();
    return *this;
}

CVexDbPoint& CVexDbPoint::operator=(const CVexDbEntity& other)
{
    if (other.classType() == classType()) {
        *this = static_cast<const CVexDbPoint&>(other);
    }
    CopyEntProperties(other);
    return *this;
}

/// What a point keeps in a file, in file order. The shape is left out on purpose: a point that was
/// read takes the drawing's shape.
template <class Point, class Archive>
void CVexDbPoint::walkFields(Point& point, Archive&& archive)
{
    archive(point.m_size, point.m_fill, point.m_flag, point.m_position);
}

bool CVexDbPoint::save()
{
    return saveRecord([this](CFile& out) { walkFields(*this, CVexFieldWriter(out)); });
}

bool CVexDbPoint::read()
{
    m_pdMode = 0;
    return readRecord([this](CFile& in) { walkFields(*this, CVexFieldReader(in)); });
}

void CVexDbPoint::setGripPoints()
{
    beginGrips().push_back(m_position);
    storeEntityRect();
}

CRect CVexDbPoint::computeEntityRect()
{
    const CPoint at = toLogical(m_position);
    return {at, at};
}

CVexDbRect CVexDbPoint::GetOutRect()
{
    return {m_position, m_position};
}

bool CVexDbPoint::trueExtents(CVexGePoint2d& min, CVexGePoint2d& max) const
{
    const CVexGeVector2d half(std::max(m_size, 0.0), std::max(m_size, 0.0));
    const CVexGePoint2d corners[] = {m_position - half, m_position + half};
    return extentsOf(corners, min, max);
}

void CVexDbPoint::Draw(CDC* dc)
{
    const CVexDbPenFrame frame(*this, dc);
    if (!frame) {
        return;
    }
    const COLORREF color = Color() == nullptr ? COLORREF() : Color()->getColor();
    const CVexDbBrushFrame brush(*dc, m_fill ? BS_SOLID : BS_HOLLOW, color);
    drawPointMarker(*dc, shape(), toLogical(m_position), markerBox(), m_fill);
}

int CVexDbPoint::shape() const
{
    if (m_pdMode != 0 || database() == nullptr) {
        return m_pdMode;
    }
    return database()->settings().m_nPointStyle;
}

int CVexDbPoint::halfSize() const
{
    if (m_size > 0.0) {
        return toLogical(m_size);
    }
    const CVexDbDisplayTableRecord* view =
        database() == nullptr ? nullptr : database()->displays().getCurrentRecord();
    return view == nullptr
               ? 0
               : truncateSaturated(database()->settings().m_nPointSize * view->xScale());
}

CRect CVexDbPoint::markerBox() const
{
    const double x = m_position.x * _dDispScale;
    const double y = m_position.y * _dDispScale;
    const double half = halfSize();
    return {truncateSaturated(x - half), truncateSaturated(y - half), truncateSaturated(x + half),
            truncateSaturated(y + half)};
}

int CVexDbPoint::isOn(const CVexGePoint2d& point, const double& tol) const
{
    return m_position.isOn(point, tol) ? 1 : 0;
}

bool CVexDbPoint::checkInsideOrCross(CVexGePoint2d& a, CVexGePoint2d& b)
{
    return IsInsideRect(a, b, m_position);
}

bool CVexDbPoint::checkInside(CVexGePoint2d& a, CVexGePoint2d& b)
{
    return IsInsideRect(a, b, m_position);
}

bool CVexDbPoint::intersectWith(CVexDbEntity& /*other*/, int& /*count*/, PointList& /*points*/,
                                Intersect /*kind*/, double /*tol*/) const
{
    return false;
}

bool CVexDbPoint::intersectWith(const CVexGeEllipArc2d& /*other*/, int& /*count*/,
                                PointList& /*points*/, Intersect /*kind*/, double /*tol*/) const
{
    return false;
}

bool CVexDbPoint::intersectWith(const CVexGeCircArc2d& /*other*/, int& /*count*/,
                                PointList& /*points*/, Intersect /*kind*/, double /*tol*/) const
{
    return false;
}

bool CVexDbPoint::intersectWith(const CVexGeLine2d& /*other*/, int& /*count*/,
                                PointList& /*points*/, Intersect /*kind*/, double /*tol*/) const
{
    return false;
}

void CVexDbPoint::Set(double x, double y)
{
    m_position.set(x, y);
    renewGrips();
}

void CVexDbPoint::SetPosition(const CVexGePoint2d& position)
{
    m_position = position;
    renewGrips();
}

std::uint8_t CVexDbPoint::SetFlag(const std::uint8_t& flag)
{
    return std::exchange(m_flag, flag);
}

CVexDbPoint& CVexDbPoint::transformBy(const CVexGeMatrix2d& matrix)
{
    m_position.transformBy(matrix);
    markGripsStale();
    return *this;
}

CVexDbPoint& CVexDbPoint::translateBy(const CVexGeVector2d& vector)
{
    m_position.translateBy(vector);
    markGripsStale();
    return *this;
}

CVexDbPoint& CVexDbPoint::rotateBy(double angle, const CVexGePoint2d& centre)
{
    m_position.rotateBy(angle, centre);
    markGripsStale();
    return *this;
}

CVexDbPoint& CVexDbPoint::mirror(const CVexGeLine2d& line)
{
    m_position.mirror(line);
    markGripsStale();
    return *this;
}
