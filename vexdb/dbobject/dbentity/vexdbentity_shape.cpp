// Grips, extents, transforms and the tests of points and lines that all entities share.

#include "vexdb/dbobject/dbentity/vexdbcurve.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdbentitykinds.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/gemath/vexgetol.h"
#include "vexge/gemath/vexgevector2d.h"

#include <algorithm>
#include <cmath>

namespace {

// A grip's box is this many pixels wide.
constexpr double kGripPixels = 10.0;

/// Whether the edge counts for a ray from `point` towards greater x.
bool crossesRay(const CVexGePoint2d& p1, const CVexGePoint2d& p2, const CVexGePoint2d& point)
{
    if (point.y <= std::min(p1.y, p2.y) || point.y > std::max(p1.y, p2.y) ||
        point.x > std::max(p1.x, p2.x) || p1.y == p2.y) {
        return false;
    }
    const double xAtPoint = p1.x + (point.y - p1.y) * (p2.x - p1.x) / (p2.y - p1.y);
    return p1.x == p2.x || point.x <= xAtPoint;
}

/// A longer piece of a steep mirror line: the matrix of a mirroring takes one with too short a run
/// in x for vertical, and what is mirrored by it would part from what is mirrored by the angle.
CVexGeLine2d longEnough(const CVexGeLine2d& line)
{
    constexpr double kNoRun = 1e-12; // of the rise: as good as vertical
    const CVexGeVector2d way = line.endPoint() - line.startPoint();
    const double run = std::fabs(way.x);
    const bool isMistaken = run < kGeVerticalTol && run > kNoRun * std::fabs(way.y);
    return isMistaken ? CVexGeLine2d(line.startPoint(), way * (2.0 * kGeVerticalTol / run)) : line;
}

} // namespace

void CVexDbEntity::SetDbEntity(bool inDatabase)
{
    m_dbEntity = inDatabase;
    if (inDatabase) {
        markGripsStale();
    }
}

void CVexDbEntity::setGripPoints()
{
}

CVexDbEntity::PointList& CVexDbEntity::beginGrips()
{
    m_gripsStale = false;
    m_gripPoints.clear();
    return m_gripPoints;
}

CRect CVexDbEntity::computeEntityRect()
{
    return static_cast<CRect>(GetOutRect());
}

void CVexDbEntity::storeEntityRect()
{
    m_rectStale = false;
    m_entityRect = computeEntityRect();
}

void CVexDbEntity::renewGrips()
{
    markGripsStale();
    storeEntityRect();
}

void CVexDbEntity::refreshGrips()
{
    if (m_gripsStale) {
        setGripPoints();
    }
}

CVexGePoint2d CVexDbEntity::getGripPoint(int index)
{
    refreshGrips();
    const auto at = static_cast<std::size_t>(index);
    return at < m_gripPoints.size() ? m_gripPoints[at] : CVexGePoint2d();
}

bool CVexDbEntity::getGripPointVec(PointList*& grips)
{
    refreshGrips();
    grips = &m_gripPoints;
    return true;
}

int CVexDbEntity::GetGripNumber(CVexGePoint2d point, const double& scale, CVexGePoint2d& out)
{
    if (!m_dbEntity) {
        return -1;
    }
    refreshGrips();
    for (std::size_t i = 0; i < m_gripPoints.size(); ++i) {
        out = m_gripPoints[i];
        const int left = truncateSaturated(out.x * _dDispScale - kGripPixels / 2 * scale);
        const int top = truncateSaturated(out.y * _dDispScale - kGripPixels / 2 * scale);
        const int right = truncateSaturated(left + kGripPixels * scale);
        const int bottom = truncateSaturated(top + kGripPixels * scale);
        if (CRect(left, top, right, bottom).PtInRect(toLogical(point))) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

CRect* CVexDbEntity::GetEntityRect()
{
    if (m_rectStale) {
        renewGrips();
    }
    return &m_entityRect;
}

void CVexDbEntity::TransformBy(const CVexGeMatrix2d& matrix)
{
    transform([&](CVexGeEntity2d& curve) { curve.transformBy(matrix); },
              entityKind(classType()).transforms.transformBy, matrix);
}

void CVexDbEntity::TranslateBy(const CVexGeVector2d& vector)
{
    transform([&](CVexGeEntity2d& curve) { curve.translateBy(vector); },
              entityKind(classType()).transforms.translateBy, vector);
}

void CVexDbEntity::RotateBy(double angle, const CVexGePoint2d& centre)
{
    transform([&](CVexGeEntity2d& curve) { curve.rotateBy(angle, centre); },
              entityKind(classType()).transforms.rotateBy, angle, centre);
}

void CVexDbEntity::ScaleBy(double fx, double fy, const CVexGePoint2d& centre)
{
    transform([&](CVexGeEntity2d& curve) { curve.scaleBy(fx, fy, centre); },
              entityKind(classType()).transforms.scaleByXY, fx, fy, centre);
}

void CVexDbEntity::ScaleBy(double factor, const CVexGePoint2d& centre)
{
    transform([&](CVexGeEntity2d& curve) { curve.scaleBy(factor, centre); },
              entityKind(classType()).transforms.scaleBy, factor, centre);
}

void CVexDbEntity::Mirror(const CVexGeLine2d& line)
{
    const CVexGeLine2d axis = longEnough(line);
    transform([&](CVexGeEntity2d& curve) { curve.mirror(axis); },
              entityKind(classType()).transforms.mirror, axis);
}

/// Transforms a curve's geometry by `ofCurve`, anything else by its kind's own operation.
template <class OfCurve, class OfKind, class... Args>
void CVexDbEntity::transform(OfCurve ofCurve, OfKind ofKind, const Args&... args)
{
    if (IsCurveEntity()) {
        auto& curve = static_cast<CVexDbCurve&>(*this);
        ofCurve(*curve.geCurve());
        curve.clearVertexCache();
    } else if (ofKind != nullptr) {
        ofKind(*this, args...);
    }
    markGripsStale();
}

bool CVexDbEntity::IntersectWith(CVexGeLine2d& line, double tol)
{
    int count = 0;
    PointList scratch;
    return intersectWith(line, count, scratch, CVexGeEntity2d::kExtendNone, tol);
}

bool CVexDbEntity::IsCrossWidth(CVexGeLine2d& line, double width)
{
    int count = 0;
    PointList points;
    if (!intersectWith(line, count, points, CVexGeEntity2d::kExtendNone, kGeEpsilon)) {
        return false;
    }
    return std::ranges::any_of(points, [&](const CVexGePoint2d& point) {
        return point.distanceTo(line.startPoint()) > width ||
               point.distanceTo(line.endPoint()) > width;
    });
}

bool CVexDbEntity::IsInsidePolygon(const CVexGePoint2d* polygon, const CVexGePoint2d& point,
                                   int count) const
{
    bool inside = false;
    for (int i = 1; i <= count; ++i) {
        inside ^= crossesRay(polygon[i - 1], polygon[i % count], point);
    }
    return inside;
}

bool CVexDbEntity::IsInsideRect(CVexGePoint2d a, CVexGePoint2d b, const CVexGePoint2d& point) const
{
    const CVexGePoint2d corners[] = {a, {b.x, a.y}, b, {a.x, b.y}};
    return IsInsidePolygon(corners, point, 4);
}
