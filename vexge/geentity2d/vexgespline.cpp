#include "vexge/geentity2d/vexgespline.h"

#include "platform/base/vexfields.h"
#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgewinding.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

/// The point of a corner's leg at `dist` from the corner, held at the leg's end; the corner itself
/// on a leg without length.
CVexGePoint2d alongLeg(const CVexGeLine2d& leg, double dist)
{
    return leg.length() > 0.0 ? leg.pointAtDist(dist) : leg.startPoint();
}

/// Where the perpendicular of `first` through `a` meets that of `second` through `b`. Written out,
/// because perpendicular lines of finite length lose seven digits on the way.
CVexGePoint2d meetingOfPerpendiculars(const CVexGeVector2d& first, const CVexGePoint2d& a,
                                      const CVexGeVector2d& second, const CVexGePoint2d& b,
                                      const CVexGePoint2d& corner)
{
    constexpr double kParallelSine = 1e-12;
    const double turn = first.x * second.y - first.y * second.x;
    const double scale = first.lengthSqrd() * second.lengthSqrd();
    if (!(turn * turn > kParallelSine * kParallelSine * scale)) {
        // Legs on one line have no such point, and the origin stands in: the bulge of a straight
        // corner then depends on where the drawing lies. Splines on disk hold such chains, and
        // making one anew has to give the same.
        return {};
    }
    const double alongFirst = (a - corner).dotProduct(first);
    const double alongSecond = (b - corner).dotProduct(second);
    return corner + CVexGeVector2d(alongFirst * second.y - alongSecond * first.y,
                                   first.x * alongSecond - second.x * alongFirst) /
                        turn;
}

} // namespace

CVexGeSpline& CVexGeSpline::operator=(const CVexGeSpline& other)
{
    m_ctrlPoints = other.m_ctrlPoints;
    m_polyline = other.m_polyline;
    m_fitParam = other.m_fitParam;
    return *this;
}

void CVexGeSpline::setSize(unsigned n)
{
    constexpr unsigned kMostReserved = 1'000'000; // a hint only: a wild one must not end in a throw
    m_ctrlPoints.clear();
    m_ctrlPoints.reserve(std::min(n, kMostReserved));
}

bool CVexGeSpline::appendCtrlPt(const CVexGePoint2d& point)
{
    m_ctrlPoints.push_back(point);
    return true;
}

bool CVexGeSpline::AddCtrlPt(unsigned index, const CVexGePoint2d& point)
{
    if (index > numCtrlVerts()) {
        return false;
    }
    m_ctrlPoints.insert(m_ctrlPoints.begin() + index, point);
    return true;
}

bool CVexGeSpline::setPointAt(unsigned index, const CVexGePoint2d& point)
{
    if (index >= numCtrlVerts()) {
        return false;
    }
    m_ctrlPoints[index] = point;
    return true;
}

bool CVexGeSpline::removeCtrlPtAt(unsigned index)
{
    if (index >= numCtrlVerts()) {
        return false;
    }
    m_ctrlPoints.erase(m_ctrlPoints.begin() + index);
    return true;
}

bool CVexGeSpline::getCtrlPtAt(unsigned index, CVexGePoint2d& out) const
{
    if (index >= numCtrlVerts()) {
        return false;
    }
    out = m_ctrlPoints[index];
    return true;
}

bool CVexGeSpline::setFitParam(double fit)
{
    if (fit < 1.0) {
        m_fitParam = fit;
    }
    return true;
}

bool CVexGeSpline::getGePolyline(CVexGePolyline2d& out)
{
    rebuild();
    out = m_polyline;
    return out.numVerts() > 0;
}

void CVexGeSpline::reverse()
{
    m_polyline.reverse();
    std::reverse(m_ctrlPoints.begin(), m_ctrlPoints.end());
}

bool CVexGeSpline::GetPolyVertex(const CVexGePoint2d (&in)[3], CVexGePoint2d (&out)[4],
                                 double& bulge) const
{
    const CVexGePoint2d& corner = in[1];
    const CVexGeLine2d before(corner, in[0]);
    const CVexGeLine2d after(corner, in[2]);
    const bool beforeIsShorter = after.length() > before.length();
    const CVexGePoint2d a = beforeIsShorter ? before.pointAtParam(m_fitParam)
                                            : alongLeg(before, after.length() * m_fitParam);
    const CVexGePoint2d b = beforeIsShorter ? alongLeg(after, before.length() * m_fitParam)
                                            : after.pointAtParam(m_fitParam);
    const CVexGePoint2d centre =
        meetingOfPerpendiculars(in[0] - corner, a, in[2] - corner, b, corner);
    out[0] = in[0];
    out[1] = a;
    out[2] = b;
    out[3] = in[2];
    const bool counterClockwise = winding(in[0], in[1], in[2]) != 0;
    const double turn = centre.angleTo(b) - centre.angleTo(a);
    const double sweep = notNegativeAngle(counterClockwise ? turn : -turn);
    const double size = std::fabs(sweep) > kGeAngleTol ? std::tan(sweep / 4.0) : 0.0;
    bulge = counterClockwise || size == 0.0 ? size : -size;
    return true;
}

void CVexGeSpline::rebuild()
{
    m_polyline.setSize(numCtrlVerts());
    if (m_ctrlPoints.size() < 3) {
        for (const CVexGePoint2d& point : m_ctrlPoints) {
            m_polyline.appendVertex(point);
        }
        return;
    }
    CVexGePoint2d current = m_ctrlPoints.front();
    for (std::size_t i = 0; i + 2 < m_ctrlPoints.size(); ++i) {
        const CVexGePoint2d in[3] = {current, m_ctrlPoints[i + 1], m_ctrlPoints[i + 2]};
        CVexGePoint2d out[4];
        double bulge = 0.0;
        if (!GetPolyVertex(in, out, bulge)) {
            continue;
        }
        if (i == 0) {
            m_polyline.appendVertex(out[0]);
        }
        m_polyline.appendVertex(out[1], bulge);
        m_polyline.appendVertex(out[2]);
        current = out[2];
    }
    m_polyline.appendVertex(m_ctrlPoints.back());
}

bool CVexGeSpline::isEqualTo(const CVexGeEntity2d& other, const double& tol) const
{
    if (!other.isKindOf(VexGe::kGeSpline)) {
        return false;
    }
    const auto& spline = static_cast<const CVexGeSpline&>(other);
    return std::equal(m_ctrlPoints.begin(), m_ctrlPoints.end(), spline.m_ctrlPoints.begin(),
                      spline.m_ctrlPoints.end(),
                      [tol](const CVexGePoint2d& a, const CVexGePoint2d& b) {
                          return a.isEqualTo(b, tol);
                      }) &&
           std::fabs(m_fitParam - spline.m_fitParam) <= tol;
}

bool CVexGeSpline::operator==(const CVexGeSpline& other) const
{
    return m_fitParam == other.m_fitParam &&
           std::equal(m_ctrlPoints.begin(), m_ctrlPoints.end(), other.m_ctrlPoints.begin(),
                      other.m_ctrlPoints.end());
}

CVexGeSpline& CVexGeSpline::scaleBy(double fx, double fy, const CVexGePoint2d& centre)
{
    return transformBy(CVexGeMatrix2d::scaling(fx, fy, centre));
}

CVexGeSpline& CVexGeSpline::scaleBy(double factor, const CVexGePoint2d& centre)
{
    return transformBy(CVexGeMatrix2d::scaling(factor, centre));
}

CVexGeSpline& CVexGeSpline::mirror(const CVexGeLine2d& line)
{
    return transformBy(CVexGeMatrix2d::mirroring(line));
}

CVexGeSpline& CVexGeSpline::rotateBy(double angle, const CVexGePoint2d& centre)
{
    return transformBy(CVexGeMatrix2d::rotation(angle, centre));
}

CVexGeSpline& CVexGeSpline::translateBy(const CVexGeVector2d& vector)
{
    for (CVexGePoint2d& point : m_ctrlPoints) {
        point.translateBy(vector);
    }
    rebuild();
    return *this;
}

CVexGeSpline& CVexGeSpline::transformBy(const CVexGeMatrix2d& matrix)
{
    for (CVexGePoint2d& point : m_ctrlPoints) {
        point.transformBy(matrix);
    }
    rebuild();
    return *this;
}

bool CVexGeSpline::isInsidePoint(const CVexGePoint2d& point) const
{
    return m_polyline.isInsidePoint(point);
}

void CVexGeSpline::save(CFile* file) const
{
    CVexFieldWriter fields{*file};
    fields(m_fitParam, static_cast<std::uint32_t>(numCtrlVerts()));
    for (const CVexGePoint2d& point : m_ctrlPoints) {
        fields(point);
    }
    fields(m_polyline);
}

void CVexGeSpline::read(CFile* file)
{
    constexpr std::uint64_t kPointBytes = 20;
    CVexFieldReader fields{*file};
    std::uint32_t count = 0;
    fields(m_fitParam, count);
    if (count > file->remaining() / kPointBytes) {
        file->fail(); // before anything is allocated for it
        count = 0;
    }
    m_ctrlPoints.assign(count, CVexGePoint2d());
    for (CVexGePoint2d& point : m_ctrlPoints) {
        fields(point);
    }
    fields(m_polyline);
}

bool CVexGeSpline::offset(const CVexGePoint2d& side, double dist)
{
    // The answer is true also when the chain could not be offset and stayed. Either way its
    // vertices, the former ends of the arcs among them, are the control points from now on.
    if (m_polyline.numVerts() == 0) {
        rebuild(); // nobody asked for the chain yet, and its vertices are about to be all there is
    }
    m_polyline.offset(side, dist);
    setGePolylineToCtrlPoint();
    return true;
}

void CVexGeSpline::setGePolylineToCtrlPoint()
{
    m_ctrlPoints = m_polyline.vertices();
}
