#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgecspline2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/gemath/vextruncate.h"

#include <algorithm>
#include <cstddef>
#include <utility>

// Edits of a cubic spline's control points by their parameters, joining, and offset.

namespace {

using PointList = CVexGeCSpline2d::PointList;
using OptionList = CVexGeCSpline2d::OptionList;

/// The most points that an offset puts into a span.
constexpr int kMostSpanParts = 6;
/// Control points nearer than this are one to an offset, in drawing units.
constexpr double kNearPoints = 0.5;
/// The turn that each piece of an appended arc covers: 15 degrees.
constexpr double kArcPieceAngle = 0.2617993877991494;
/// Keeps an arc of whole pieces from losing one to rounding.
constexpr double kPieceSlack = 1e-9;
constexpr int kMostArcPieces = 10'000;
constexpr unsigned char kFarEnd = CVexGeCSpline2d::kCorner | CVexGeCSpline2d::kReal;

/// Calls `keep(i)` for each point but those nearer than kNearPoints to the one kept before it, and
/// the last of a `closed` list when it is that near to the first.
template <class Keep>
void eachFarPoint(const PointList& points, bool closed, const Keep& keep)
{
    std::vector<std::size_t> kept;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (kept.empty() || !(points[i].distanceTo(points[kept.back()]) < kNearPoints)) {
            kept.push_back(i);
        }
    }
    if (closed && kept.size() > 1 &&
        points[kept.back()].distanceTo(points[kept.front()]) < kNearPoints) {
        kept.pop_back();
    }
    for (const std::size_t i : kept) {
        keep(i);
    }
}

} // namespace

std::vector<double> CVexGeCSpline2d::controlParams() const
{
    // By their places in the curve: a control point on a loop has the parameter of its own passage
    // and not that of an earlier one.
    const PointList& curve = m_generated.curve;
    const double total = length();
    std::vector<double> params;
    double run = 0.0;
    std::size_t at = 0;
    for (std::size_t i = 0; i < m_ctrlPoints.size(); ++i) {
        for (; at < m_generated.places[i]; ++at) {
            run += curve[at].distanceTo(curve[at + 1]);
        }
        params.push_back(std::clamp(run / total, 0.0, 1.0));
    }
    return params;
}

bool CVexGeCSpline2d::addRealControlPoint(CVexGePoint2d point)
{
    if (!genCurve()) {
        return false;
    }
    // A point off the curve has the parameter -1.0, which every control point exceeds: it becomes
    // the second one. The tracker asks with points of the curve alone.
    const double param = paramAtPoint(point, kGeTol);
    const std::vector<double> params = controlParams();
    const auto beyond =
        std::find_if(params.begin() + 1, params.end(), [param](double at) { return at > param; });
    if (beyond == params.end() && !m_closedFlag) {
        return false;
    }
    return addCtrlPt(static_cast<unsigned>(beyond - params.begin()), point, kReal);
}

bool CVexGeCSpline2d::join(const PointList& points, const OptionList& options, int appended,
                           int& index)
{
    if (m_closedFlag || m_ctrlPoints.empty() || points.empty()) {
        return false;
    }
    const auto meet = [](const CVexGePoint2d& a, const CVexGePoint2d& b) {
        return a.isEqualTo(b, kGeSplineClosedTol);
    };
    const bool atEnd =
        meet(m_ctrlPoints.back(), points.front()) || meet(m_ctrlPoints.back(), points.back());
    const CVexGePoint2d& joint = atEnd ? m_ctrlPoints.back() : m_ctrlPoints.front();
    const bool fromFirst = meet(joint, points.front());
    if (!fromFirst && !meet(joint, points.back())) {
        return false;
    }
    // From the joint outwards, the joint itself left out.
    PointList morePoints(points);
    OptionList moreOptions(options);
    if (fromFirst == !atEnd) {
        std::reverse(morePoints.begin(), morePoints.end());
        std::reverse(moreOptions.begin(), moreOptions.end());
    }
    if (atEnd) {
        m_ctrlPoints.insert(m_ctrlPoints.end(), morePoints.begin() + 1, morePoints.end());
        m_ctrlOptions.insert(m_ctrlOptions.end(), moreOptions.begin() + 1, moreOptions.end());
    } else {
        m_ctrlPoints.insert(m_ctrlPoints.begin(), morePoints.begin(), morePoints.end() - 1);
        m_ctrlOptions.insert(m_ctrlOptions.begin(), moreOptions.begin(), moreOptions.end() - 1);
    }
    index = !atEnd ? 0 : (appended > 0 ? appended : static_cast<int>(numCtrlVerts())) - 1;
    changed();
    return true;
}

bool CVexGeCSpline2d::appendCSpline(const CVexGeCSpline2d* other, int& index)
{
    return !other->m_closedFlag && join(other->m_ctrlPoints, other->m_ctrlOptions,
                                        static_cast<int>(other->numCtrlVerts()), index);
}

bool CVexGeCSpline2d::appendCSpline(const CVexGeLine2d* line, int& index)
{
    return join({line->startPoint(), line->endPoint()}, {kFarEnd, kFarEnd}, 0, index);
}

bool CVexGeCSpline2d::appendCSpline(const CVexGeCircArc2d* arc, int& index)
{
    // The plain difference of the angles counts the pieces, so an arc over angle zero gets only
    // two. Its points lie on the arc all the same, and splines on disk were joined that way.
    const double turn = arc->endAng() - arc->startAng();
    const int pieces =
        std::clamp(truncateSaturated(turn / kArcPieceAngle + kPieceSlack), 2, kMostArcPieces);
    PointList points{arc->startPoint()};
    for (int i = 1; i < pieces; ++i) {
        points.push_back(arc->pointAtParam(static_cast<double>(i) / pieces));
    }
    points.push_back(arc->endPoint());
    OptionList options(points.size(), 0);
    options.front() = options.back() = kFarEnd;
    return join(points, options, 0, index);
}

void CVexGeCSpline2d::appendSpaced(PointList& points, OptionList& options, double from, double to,
                                   double dist) const
{
    const double span = distAtParam(to - from);
    const int parts = std::clamp(truncateSaturated(span / dist) + 1, 1, kMostSpanParts);
    for (int i = 1; i < parts; ++i) {
        points.push_back(pointAtParam(from + (to - from) * i / parts));
        options.push_back(0);
    }
}

void CVexGeCSpline2d::spaceControlPoints(double dist)
{
    const std::vector<double> params = controlParams(); // those of the curve before the change
    PointList points{m_ctrlPoints.front()};
    OptionList options{m_ctrlOptions.front()};
    double from = params.front();
    for (std::size_t i = 1; i < m_ctrlPoints.size(); ++i) {
        if (m_ctrlOptions[i] == 0 && i + 1 < m_ctrlPoints.size()) {
            continue; // generated points give way to evenly spaced ones
        }
        appendSpaced(points, options, from, params[i], dist);
        points.push_back(m_ctrlPoints[i]);
        options.push_back(m_ctrlOptions[i]);
        from = params[i];
    }
    if (m_closedFlag) {
        appendSpaced(points, options, from, 1.0, dist);
    }
    m_ctrlPoints = std::move(points);
    m_ctrlOptions = std::move(options);
}

void CVexGeCSpline2d::dropNearPoints()
{
    PointList points;
    OptionList options;
    eachFarPoint(m_ctrlPoints, m_closedFlag, [&](std::size_t i) {
        points.push_back(m_ctrlPoints[i]);
        options.push_back(m_ctrlOptions[i]);
    });
    m_ctrlPoints = std::move(points);
    m_ctrlOptions = std::move(options);
}

void CVexGeCSpline2d::getOffsetPolyline(CVexGePolyline2d& out, double dist)
{
    if (genCurve()) {
        spaceControlPoints(dist);
        dropNearPoints();
        changed();
    }
    asPolyline(out);
}

bool CVexGeCSpline2d::offset(const CVexGePoint2d& side, double dist)
{
    // The answer does not tell whether the polygon had an offset: without one the spline keeps its
    // spaced control points. Options are not matched to the new points either; corners stay at
    // their index.
    CVexGePolyline2d polygon;
    getOffsetPolyline(polygon, dist);
    polygon.offset(side, dist);
    m_ctrlPoints.clear();
    eachFarPoint(polygon.vertices(), m_closedFlag,
                 [&](std::size_t i) { m_ctrlPoints.push_back(polygon.vertices()[i]); });
    m_ctrlOptions.resize(m_ctrlPoints.size(), 0);
    changed();
    return true;
}
