#include "vexdb/dbobject/dbentity/vexdbrect.h"

#include "platform/base/vexfields.h"
#include "vexdb/dbobject/dbentity/vexdbcurvevisit.h"
#include "vexdb/dbobject/dbentity/vexdbextents.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/dbentity/vexdbpenframe.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

/// Left bottom, right bottom, right top, left top: the order of grips and of inside tests.
std::array<CVexGePoint2d, 4> cornersOf(const CVexDbRect& rect)
{
    return {rect.LeftBottom(), rect.RightBottom(), rect.RightTop(), rect.LeftTop()};
}

} // namespace

CVexDbRect::CVexDbRect(CVexDbDatabase* database) : CVexDbEntity(database)
{
    setClassType(VexDb::kRectangle);
}

CVexDbRect::CVexDbRect(const CVexGePoint2d& leftTop, const CVexGePoint2d& rightBottom)
    : CVexDbRect(nullptr)
{
    setSides(leftTop, rightBottom);
    renewGrips();
}

CVexDbRect::CVexDbRect(const CVexDbRect& other) = default;

CVexDbRect::~CVexDbRect() = default;

CVexDbRect& CVexDbRect::operator=(const CVexDbRect& other)
{
    CVexDbEntity::operator=(other);
    setSides(other.LeftTop(), other.RightBottom());
    renewGrips();
    return *this;
}

CVexDbRect& CVexDbRect::operator=(const CVexDbEntity& other)
{
    if (other.classType() == classType()) {
        *this = static_cast<const CVexDbRect&>(other);
    }
    CopyEntProperties(other);
    return *this;
}

template <class Rect, class Archive>
void CVexDbRect::walkFields(Rect& rect, Archive&& archive)
{
    archive(rect.m_top, rect.m_bottom, rect.m_left, rect.m_right);
}

bool CVexDbRect::save()
{
    return saveRecord([this](CFile& out) { walkFields(*this, CVexFieldWriter(out)); });
}

bool CVexDbRect::read()
{
    return readRecord([this](CFile& in) { walkFields(*this, CVexFieldReader(in)); });
}

void CVexDbRect::setGripPoints()
{
    const CVexGePoint2d middle = centre();
    PointList& grips = beginGrips();
    grips = {
        middle, {middle.x, m_bottom}, {m_right, middle.y}, {middle.x, m_top}, {m_left, middle.y}};
    std::ranges::copy(cornersOf(*this), std::back_inserter(grips));
    storeEntityRect();
}

CRect CVexDbRect::computeEntityRect()
{
    // From the sides and not through GetOutRect, whose result is a rectangle with extents of its
    // own to compute: that would never end.
    return CRect(*this);
}

CVexDbRect CVexDbRect::GetOutRect()
{
    return {LeftTop(), RightBottom()};
}

bool CVexDbRect::trueExtents(CVexGePoint2d& min, CVexGePoint2d& max) const
{
    return extentsOf(cornersOf(*this), min, max);
}

void CVexDbRect::Draw(CDC* dc)
{
    const CVexDbPenFrame frame(*this, dc);
    if (!frame) {
        return;
    }
    const CVexDbBrushFrame hollow(*dc, BS_HOLLOW, 0);
    dc->Rectangle(CRect(*this));
}

void CVexDbRect::makeProperty()
{
    CVexDbEntity::makeProperty();
    addShapeRow(L"Top", m_top);
    addShapeRow(L"Bottom", m_bottom);
    addShapeRow(L"Left", m_left);
    addShapeRow(L"Right", m_right);
}

int CVexDbRect::isOn(const CVexGePoint2d& point, const double& tol) const
{
    const auto corners = cornersOf(*this);
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const CVexGeLine2d side(corners[i], corners[(i + 1) % corners.size()]);
        if (side.isOn(point, tol) != 0) {
            return 1;
        }
    }
    return 0;
}

bool CVexDbRect::checkInsideOrCross(CVexGePoint2d& a, CVexGePoint2d& b)
{
    return std::ranges::any_of(
        cornersOf(*this), [&](const CVexGePoint2d& corner) { return IsInsideRect(a, b, corner); });
}

bool CVexDbRect::checkInside(CVexGePoint2d& a, CVexGePoint2d& b)
{
    return std::ranges::all_of(
        cornersOf(*this), [&](const CVexGePoint2d& corner) { return IsInsideRect(a, b, corner); });
}

CVexGePolyline2d CVexDbRect::outline() const
{
    CVexGePolyline2d polyline;
    getPolyline(polyline);
    return polyline;
}

bool CVexDbRect::intersectWith(CVexDbEntity& other, int& count, PointList& points, Intersect kind,
                               double tol) const
{
    // A box has no meaning as a cutter of rectangles: the one class that a rectangle meets without
    // seeing it, although every other curve does.
    return other.classType() != VexDb::kBox && visitCurve(other, [&](const auto& curve) {
               return intersectionOf(outline(), curve, count, points, kind, tol);
           });
}

bool CVexDbRect::intersectWith(const CVexGeEllipArc2d& other, int& count, PointList& points,
                               Intersect kind, double tol) const
{
    return intersectionOf(outline(), other, count, points, kind, tol);
}

bool CVexDbRect::intersectWith(const CVexGeCircArc2d& other, int& count, PointList& points,
                               Intersect kind, double tol) const
{
    return intersectionOf(outline(), other, count, points, kind, tol);
}

bool CVexDbRect::intersectWith(const CVexGeLine2d& other, int& count, PointList& points,
                               Intersect kind, double tol) const
{
    return intersectionOf(outline(), other, count, points, kind, tol);
}

void CVexDbRect::setSides(const CVexGePoint2d& leftTop, const CVexGePoint2d& rightBottom)
{
    m_left = leftTop.x;
    m_top = leftTop.y;
    m_right = rightBottom.x;
    m_bottom = rightBottom.y;
    markGripsStale();
}

void CVexDbRect::setLeftTop(const CVexGePoint2d& point)
{
    setSides(point, RightBottom());
    renewGrips();
}

void CVexDbRect::setRightBottom(const CVexGePoint2d& point)
{
    setSides(LeftTop(), point);
    renewGrips();
}

double CVexDbRect::Width() const
{
    return std::abs(m_right - m_left);
}

double CVexDbRect::Height() const
{
    return std::abs(m_bottom - m_top);
}

CVexGePoint2d CVexDbRect::centre() const
{
    return {(m_left + m_right) / 2.0, (m_top + m_bottom) / 2.0};
}

bool CVexDbRect::isPtInRect(const CVexGePoint2d& point) const
{
    return IsInsidePolygon(cornersOf(*this).data(), point, 4);
}

CVexDbRect::operator CRect() const
{
    return {toLogical(m_left), toLogical(m_top), toLogical(m_right), toLogical(m_bottom)};
}

void CVexDbRect::getPolyline(CVexGePolyline2d& polyline) const
{
    for (const CVexGePoint2d& corner : {LeftTop(), RightTop(), RightBottom(), LeftBottom()}) {
        polyline.appendVertex(corner);
    }
    polyline.setClosed(true);
}

CVexDbRect& CVexDbRect::translateBy(const CVexGeVector2d& vector)
{
    setSides(LeftTop() + vector, RightBottom() + vector);
    return *this;
}

CVexDbRect& CVexDbRect::rotateBy(double angle, const CVexGePoint2d& base)
{
    // The sides stay parallel to the axes whatever the angle: this is also the type of extents,
    // and those of a turned drawing are moved, never tilted.
    const CVexGePoint2d before = centre();
    CVexGePoint2d after = before;
    after.rotateBy(angle, base);
    return translateBy(after - before);
}

CVexDbRect& CVexDbRect::scaleBy(double factor, const CVexGePoint2d& base)
{
    return scaleBy(factor, factor, base);
}

CVexDbRect& CVexDbRect::scaleBy(double fx, double fy, const CVexGePoint2d& base)
{
    setSides(LeftTop().scaleBy(fx, fy, base), RightBottom().scaleBy(fx, fy, base));
    return *this;
}

CVexDbRect& CVexDbRect::mirror(const CVexGeLine2d& line)
{
    setSides(LeftTop().mirror(line), RightBottom().mirror(line));
    return *this;
}

CVexDbRect boundsOf(std::span<const CVexGePoint2d> points)
{
    if (points.empty()) {
        return {CVexGePoint2d(), CVexGePoint2d()};
    }
    CVexGePoint2d min = points.front();
    CVexGePoint2d max = min;
    for (const CVexGePoint2d& point : points) {
        min.set(std::fmin(min.x, point.x), std::fmin(min.y, point.y));
        max.set(std::fmax(max.x, point.x), std::fmax(max.y, point.y));
    }
    return {min, max};
}

CVexDbRect CVexGePolyline2d::getOutRect() const
{
    return boundsOf(vertices());
}
