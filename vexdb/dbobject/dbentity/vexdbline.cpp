#include "vexdb/dbobject/dbentity/vexdbline.h"

#include "platform/base/cfile.h"
#include "vexdb/dbobject/dbentity/vexdbcurvevisit.h"
#include "vexdb/dbobject/dbentity/vexdbextents.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/dbentity/vexdbpenframe.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"

#include <algorithm>
#include <memory>

namespace {

constexpr int kStartEnd = 0;
constexpr int kFarEnd = 1;

} // namespace

CVexDbLine::CVexDbLine(CVexDbDatabase* database) : CVexDbCurve(database)
{
    setClassInfo();
}

CVexDbLine::CVexDbLine(const CVexDbLine& other) : CVexDbCurve(other), m_line(other.m_line)
{
    setClassInfo();
}

CVexDbLine::CVexDbLine(const CVexGePoint2d& start, const CVexGePoint2d& end)
    : CVexDbCurve(nullptr), m_line(start, end)
{
    setClassInfo();
    renewGrips();
}

CVexDbLine::~CVexDbLine() = default;

void CVexDbLine::setClassInfo()
{
    CVexDbCurve::setClassInfo(VexDb::kLine, kStatusEntity, &m_line);
}

CVexDbLine& CVexDbLine::operator=(const CVexDbLine& other)
{
    CVexDbCurve::operator=(other);
    m_line = other.m_line;
    renewGrips();
    return *this;
}

CVexDbLine& CVexDbLine::operator=(const CVexDbEntity& other)
{
    if (other.classType() == classType()) {
        *this = static_cast<const CVexDbLine&>(other);
    }
    CopyEntProperties(other);
    return *this;
}

bool CVexDbLine::save()
{
    return saveRecord([this](CFile& out) { m_line.save(&out); });
}

bool CVexDbLine::read()
{
    return readRecord([this](CFile& in) { m_line.read(&in); });
}

void CVexDbLine::setGripPoints()
{
    beginGrips() = {m_line.midPoint(), m_line.startPoint(), m_line.endPoint()};
    storeEntityRect();
}

CRect CVexDbLine::computeEntityRect()
{
    const CPoint start = toLogical(m_line.startPoint());
    const CPoint end = toLogical(m_line.endPoint());
    return {std::min(start.x, end.x), std::min(start.y, end.y), std::max(start.x, end.x),
            std::max(start.y, end.y)};
}

CVexDbRect CVexDbLine::GetOutRect()
{
    const CVexGePoint2d ends[] = {m_line.startPoint(), m_line.endPoint()};
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
    dc->MoveTo(toLogical(m_line.startPoint()));
    dc->LineTo(toLogical(m_line.endPoint()));
}

void CVexDbLine::makeProperty()
{
    CVexDbCurve::makeProperty();
    addShapeRow(L"X Start", m_line.startPoint().x);
    addShapeRow(L"Y Start", m_line.startPoint().y);
    addShapeRow(L"X End", m_line.endPoint().x);
    addShapeRow(L"Y End", m_line.endPoint().y);
}

bool CVexDbLine::checkInsideOrCross(CVexGePoint2d& a, CVexGePoint2d& b)
{
    // The end is not asked: a line whose end alone lies inside crosses a side, all but a speck too
    // short to cross anything.
    if (IsInsideRect(a, b, m_line.midPoint()) || IsInsideRect(a, b, m_line.startPoint())) {
        return true;
    }
    const CVexGePoint2d corners[] = {a, {a.x, b.y}, b, {b.x, a.y}, a};
    CVexGePoint2d crossing;
    for (std::size_t i = 0; i + 1 < std::size(corners); ++i) {
        const CVexGeLine2d side(corners[i], corners[i + 1]);
        if (m_line.intersectWith(side, crossing, CVexGeEntity2d::kExtendNone, kGeEpsilon)) {
            return true;
        }
    }
    return false;
}

bool CVexDbLine::checkInside(CVexGePoint2d& a, CVexGePoint2d& b)
{
    return IsInsideRect(a, b, m_line.startPoint()) && IsInsideRect(a, b, m_line.endPoint());
}

bool CVexDbLine::intersectWith(CVexDbEntity& other, int& count, PointList& points, Intersect kind,
                               double tol) const
{
    return visitCurve(other, [&](const auto& curve) {
        return intersectionOf(m_line, curve, count, points, kind, tol);
    });
}

bool CVexDbLine::intersectWith(const CVexGeEllipArc2d& other, int& count, PointList& points,
                               Intersect kind, double tol) const
{
    return intersectionOf(m_line, other, count, points, kind, tol);
}

bool CVexDbLine::intersectWith(const CVexGeCircArc2d& other, int& count, PointList& points,
                               Intersect kind, double tol) const
{
    return intersectionOf(m_line, other, count, points, kind, tol);
}

bool CVexDbLine::intersectWith(const CVexGeLine2d& other, int& count, PointList& points,
                               Intersect kind, double tol) const
{
    return intersectionOf(m_line, other, count, points, kind, tol);
}

CVexDbLine::Cuts CVexDbLine::cutsBy(const std::vector<CVexDbEntity*>& cutters, double tol) const
{
    Cuts cuts;
    PointList points;
    int count = 0;
    for (CVexDbEntity* cutter : cutters) {
        if (!intersectWith(*cutter, count, points, CVexGeEntity2d::kExtendNone, tol)) {
            continue;
        }
        for (const CVexGePoint2d& point : points) {
            cuts.emplace(m_line.paramAtPoint(point, tol), point);
        }
    }
    return cuts;
}

double CVexDbLine::paramOfPick(const CVexGePoint2d& pick, double tol) const
{
    return m_line.paramAtPoint(m_line.closestPointTo(pick, kGeEpsilon), tol);
}

/// Moves an end to `target`, recorded for undo.
void CVexDbLine::moveEnd(int end, const CVexGePoint2d& target)
{
    recordEndMove(end, target - (end == kStartEnd ? StartPoint() : EndPoint()));
    if (end == kStartEnd) {
        setStartPoint(target);
    } else {
        setEndPoint(target);
    }
}

CVexDbEntity* CVexDbLine::Trim(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& cutters, double tol)
{
    const Cuts cuts = cutsBy(cutters, tol);
    if (cuts.empty()) {
        return nullptr;
    }
    const double pickParam = paramOfPick(pick, tol);
    const auto& [firstParam, firstPoint] = *cuts.begin();
    const auto& [lastParam, lastPoint] = *cuts.rbegin();
    if (!(firstParam < pickParam)) { // a pick on the only cut loses the start side
        moveEnd(kStartEnd, firstPoint);
        return nullptr;
    }
    if (!(lastParam > pickParam)) {
        moveEnd(kFarEnd, lastPoint);
        return nullptr;
    }
    return cutOut(cuts, pickParam);
}

/// Ends this line at the cut before the pick and gives a new one from the cut behind it.
CVexDbEntity* CVexDbLine::cutOut(const Cuts& cuts, double pickParam)
{
    const CVexGePoint2d before = std::prev(cuts.lower_bound(pickParam))->second;
    const CVexGePoint2d behind = m_line.pointAtParam(cuts.upper_bound(pickParam)->first);
    auto rest = std::make_unique<CVexDbLine>(*this);
    rest->detach();
    moveEnd(kFarEnd, before);
    rest->setStartPoint(behind);
    return rest.release();
}

bool CVexDbLine::Extend(CVexGePoint2d& pick, std::vector<CVexDbEntity*>& boundaries, double tol)
{
    std::map<double, CVexGePoint2d> byDistance; // from the pick
    PointList points;
    int count = 0;
    for (CVexDbEntity* boundary : boundaries) {
        if (!intersectWith(*boundary, count, points, CVexGeEntity2d::kExtendThis, tol)) {
            continue;
        }
        for (const CVexGePoint2d& point : points) {
            if (m_line.isOn(point, tol) == 0) { // what lies on the line does not lengthen it
                byDistance.emplace(pick.distanceTo(point), point);
            }
        }
    }
    if (byDistance.empty()) {
        return false;
    }
    constexpr double kMiddle = 0.5;
    const bool startSide = paramOfPick(pick, tol) < kMiddle;
    moveEnd(startSide ? kStartEnd : kFarEnd, byDistance.begin()->second);
    return true;
}

bool CVexDbLine::getOffset(CVexGePoint2d& side, CVexDbEntity*& result, double distance)
{
    return makeOffset(*this, result,
                      [&](CVexDbLine& moved) { return moved.m_line.offset(side, distance); });
}

void CVexDbLine::set(const CVexGePoint2d& start, const CVexGePoint2d& end)
{
    m_line.set(start, end);
    markGripsStale();
}

void CVexDbLine::setStartPoint(const CVexGePoint2d& start)
{
    m_line.set(start, EndPoint());
    renewGrips();
}

void CVexDbLine::setEndPoint(const CVexGePoint2d& end)
{
    m_line.set(StartPoint(), end);
    renewGrips();
}
