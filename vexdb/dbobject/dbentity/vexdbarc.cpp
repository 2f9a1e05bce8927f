#include "vexdb/dbobject/dbentity/vexdbarc.h"

#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbextents.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/dbentity/vexdbpenframe.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/gemath/vexgevector2d.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <numbers>

namespace {

constexpr std::size_t kFirstGripOnArc = 1; // behind the centre

CVexGePoint2d middleOf(const CVexGeCircArc2d& arc)
{
    const double start = notNegativeAngle(arc.startAng());
    double end = notNegativeAngle(arc.endAng());
    if (end < start) {
        end += kGeTwoPi;
    }
    const double middle = (start + end) / 2.0;
    return arc.center() +
           CVexGeVector2d(arc.radius() * std::cos(middle), arc.radius() * std::sin(middle));
}

std::array<CVexGePoint2d, 4> gripsOf(const CVexGeCircArc2d& arc)
{
    return {arc.center(), arc.startPoint(), middleOf(arc), arc.endPoint()};
}

CVexDbRect boxOf(const std::vector<CPoint>& vertices)
{
    const auto [left, right] = std::ranges::minmax_element(vertices, {}, &CPoint::x);
    const auto [top, bottom] = std::ranges::minmax_element(vertices, {}, &CPoint::y);
    return {{left->x / _dDispScale, top->y / _dDispScale},
            {right->x / _dDispScale, bottom->y / _dDispScale}};
}

/// Whether the arc comes through the direction `angle` of [0, 2 pi), the slack included by which
/// its ends still meet other curves.
bool reaches(const CVexGeCircArc2d& arc, double angle)
{
    const auto isOneTurn = [](double value) { return value >= 0.0 && value <= kGeTwoPi; };
    const double start = notNegativeAngle(arc.startAng());
    const double end = notNegativeAngle(arc.endAng());
    if (!isOneTurn(start) || !isOneTurn(end) || std::fabs(end - start) <= kGeAngleTol) {
        return true; // a whole turn, or no telling how many
    }
    const double since = notNegativeAngle(angle - start);
    return since <= notNegativeAngle(end - start) + kGeAngleTol || since >= kGeTwoPi - kGeAngleTol;
}

} // namespace

CVexDbArc::CVexDbArc(CVexDbDatabase* database) : CVexDbCurveOf(database, VexDb::kArc, kStatusEntity)
{
}

CVexDbArc::CVexDbArc(const CVexDbArc& other) = default;

CVexDbArc::CVexDbArc(const CVexDbCircle& circle)
    : CVexDbCurveOf(circle.database(), circle.geCircle(), VexDb::kArc, kStatusEntity)
{
    CopyEntProperties(circle);
    geometryChanged();
}

CVexDbArc::CVexDbArc(const CVexGePoint2d& p1, const CVexGePoint2d& p2, const CVexGePoint2d& p3)
    : CVexDbCurveOf(nullptr, CVexGeCircArc2d(p1, p2, p3), VexDb::kArc, kStatusEntity)
{
    geometryChanged();
}

CVexDbArc::CVexDbArc(const CVexGePoint2d& center, double radius, double startAngle, double endAngle)
    : CVexDbCurveOf(nullptr, CVexGeCircArc2d(center, radius, startAngle, endAngle), VexDb::kArc,
                    kStatusEntity)
{
    geometryChanged();
}

CVexDbArc::CVexDbArc(const CVexGePoint2d& p1, const CVexGePoint2d& p2, double bulge)
    : CVexDbCurveOf(nullptr, CVexGeCircArc2d(p1, p2, bulge, true), VexDb::kArc, kStatusEntity)
{
    geometryChanged();
}

CVexDbArc::~CVexDbArc() = default;

CVexDbArc& CVexDbArc::operator=(const CVexDbArc& other)
{
    CVexDbCurveOf::operator=(other);
    return *this;
}

CVexDbArc& CVexDbArc::operator=(const CVexDbEntity& other)
{
    CVexDbCurveOf::operator=(other);
    return *this;
}

void CVexDbArc::setGripPoints()
{
    const auto grips = gripsOf(m_geometry);
    beginGrips().assign(grips.begin(), grips.end());
    storeEntityRect();
}

void CVexDbArc::InitGrVertexArray()
{
    m_geometry.getGrVertexArray(m_grVertices, _wArcRes, _dDispScale);
    m_grVertexValid = true;
}

CVexDbRect CVexDbArc::GetOutRect()
{
    InitGrVertexArray();
    return boxOf(m_grVertices);
}

// What GetOutRect tells, but an arc that only moved does not keep display vertices for it.
CRect CVexDbArc::computeEntityRect()
{
    std::vector<CPoint> vertices;
    m_geometry.getGrVertexArray(vertices, _wArcRes, _dDispScale);
    return static_cast<CRect>(boxOf(vertices));
}

bool CVexDbArc::trueExtents(CVexGePoint2d& min, CVexGePoint2d& max) const
{
    const CVexGePoint2d ends[] = {m_geometry.startPoint(), m_geometry.endPoint()};
    if (!extentsOf(ends, min, max)) {
        return false;
    }
    const CVexGePoint2d center = m_geometry.center();
    const double radius = m_geometry.radius();
    const double reach = std::fabs(radius);
    const double slack = reach * kGeAngleTol; // an end still counts as on the arc so far beyond it
    min.set(std::max(min.x - slack, center.x - reach), std::max(min.y - slack, center.y - reach));
    max.set(std::min(max.x + slack, center.x + reach), std::min(max.y + slack, center.y + reach));
    const CVexGeVector2d axes[] = {{radius, 0.0}, {0.0, radius}, {-radius, 0.0}, {0.0, -radius}};
    for (std::size_t i = 0; i < std::size(axes); ++i) {
        if (reaches(m_geometry, static_cast<double>(i) * std::numbers::pi / 2.0)) {
            const CVexGePoint2d point = center + axes[i];
            min.set(std::min(min.x, point.x), std::min(min.y, point.y));
            max.set(std::max(max.x, point.x), std::max(max.y, point.y));
        }
    }
    return true;
}

void CVexDbArc::Draw(CDC* dc)
{
    const CVexDbPenFrame frame(*this, dc);
    if (!frame) {
        return;
    }
    InitGrVertexArray();
    dc->Polyline(m_grVertices);
}

void CVexDbArc::makeProperty()
{
    CVexDbCurve::makeProperty();
    addShapeRow(L"X Center", m_geometry.center().x);
    addShapeRow(L"Y Center", m_geometry.center().y);
    addShapeRow(L"Radius", m_geometry.radius());
    addShapeRow(L"Start Angle", m_geometry.startAng());
    addShapeRow(L"End Angle", m_geometry.endAng());
}

bool CVexDbArc::checkInsideOrCross(CVexGePoint2d& a, CVexGePoint2d& b)
{
    const auto grips = gripsOf(m_geometry);
    return std::any_of(grips.begin() + kFirstGripOnArc, grips.end(),
                       [&](const CVexGePoint2d& grip) { return IsInsideRect(a, b, grip); }) ||
           isCrossedByRect(a, b);
}

bool CVexDbArc::checkInside(CVexGePoint2d& a, CVexGePoint2d& b)
{
    const auto grips = gripsOf(m_geometry);
    return std::all_of(grips.begin() + kFirstGripOnArc, grips.end(),
                       [&](const CVexGePoint2d& grip) { return IsInsideRect(a, b, grip); }) &&
           !isCrossedByRect(a, b);
}

bool CVexDbArc::centerPoint(CVexGePoint2d& center) const
{
    center = m_geometry.center();
    return true;
}

void CVexDbArc::set(const CVexGePoint2d& p1, const CVexGePoint2d& p2, const CVexGePoint2d& p3)
{
    m_geometry.set(p1, p2, p3);
    geometryChanged();
}

void CVexDbArc::set(const CVexGePoint2d& center, double radius, double startAngle, double endAngle)
{
    m_geometry.set(center, radius, startAngle, endAngle, CVexGeVector2d::kXAxis, false);
    geometryChanged();
}

void CVexDbArc::set(const CVexGePoint2d& p1, const CVexGePoint2d& p2, double bulge)
{
    m_geometry.set(p1, p2, bulge, true);
    geometryChanged();
}

void CVexDbArc::setCenter(const CVexGePoint2d& center)
{
    m_geometry.setCenter(center);
    geometryChanged();
}

void CVexDbArc::setRadius(double radius)
{
    m_geometry.setRadius(radius);
    geometryChanged();
}

void CVexDbArc::setStartAngle(double angle)
{
    m_geometry.setStartAngle(angle);
    geometryChanged();
}

void CVexDbArc::setEndAngle(double angle)
{
    m_geometry.setEndAngle(angle);
    geometryChanged();
}
