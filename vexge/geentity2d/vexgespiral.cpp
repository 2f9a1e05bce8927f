#include "vexge/geentity2d/vexgespiral.h"

#include "platform/base/vexfields.h"
#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <cmath>

namespace {

/// The most steps that a spiral is walked: pitches next to nothing do not reach the radius.
constexpr int kMostSteps = 1'000'000;

} // namespace

CVexGeSpiral& CVexGeSpiral::operator=(const CVexGeSpiral& other)
{
    m_maxRadius = other.m_maxRadius;
    m_minRadius = other.m_minRadius;
    m_offsetDist = other.m_offsetDist;
    m_startAng = other.m_startAng;
    m_divNum = other.m_divNum;
    m_center = other.m_center;
    m_polyline = other.m_polyline;
    m_ratio = other.m_ratio;
    return *this;
}

void CVexGeSpiral::set(int divNum, const CVexGePoint2d& center, double maxRadius, double minRadius,
                       double startAng, double offsetDist, double ratio)
{
    m_divNum = divNum;
    m_center = center;
    m_maxRadius = maxRadius;
    m_minRadius = minRadius;
    m_startAng = startAng;
    m_offsetDist = offsetDist;
    m_ratio = ratio;
    rebuild();
}

bool CVexGeSpiral::setMaxRadius(double radius)
{
    if (!(m_minRadius < radius)) {
        return false;
    }
    m_maxRadius = radius;
    return true;
}

bool CVexGeSpiral::setMinRadius(double radius)
{
    if (!(radius < m_maxRadius)) {
        return false;
    }
    m_minRadius = radius;
    return true;
}

bool CVexGeSpiral::setOffsetDist(double dist)
{
    if (!(dist < m_maxRadius - m_minRadius)) {
        return false;
    }
    m_offsetDist = dist;
    return true;
}

bool CVexGeSpiral::getGePolyline(CVexGePolyline2d& out)
{
    rebuild();
    out = m_polyline;
    return out.numVerts() > 0;
}

void CVexGeSpiral::rebuild()
{
    m_polyline.setSize(0);
    if (!hasEnd()) {
        return;
    }
    layOut();
    if (m_polyline.numVerts() > 0) {
        // The outer end goes to the start angle, so another radius turns the inner windings along:
        // whoever drags a radius keeps the end under the angle that was typed.
        const CVexGePoint2d last = m_polyline.vertices().back();
        m_polyline.rotateBy(m_startAng - m_center.angleTo(last), m_center);
    }
}

bool CVexGeSpiral::hasEnd() const
{
    // Without pitch the radius stays 0 and passes no greatest radius; without divisions there is no
    // step. The commands refuse both, a damaged file may hold them.
    return m_divNum != 0 && m_offsetDist != 0.0;
}

void CVexGeSpiral::layOut()
{
    double pitch = m_offsetDist;
    double pitchOfTurn = pitch;
    double growth = 0.0;
    double former = 0.0;
    for (int step = 0; step < kMostSteps;) {
        const double turns = static_cast<double>(step) / m_divNum;
        const double radius = pitch * turns;
        if (!(radius >= former && radius <= m_maxRadius)) {
            return;
        }
        former = radius;
        if (radius >= m_minRadius) {
            m_polyline.appendVertex(m_center + CVexGeVector2d(kGeTwoPi * turns) * radius, 0.0, -1.0,
                                    -1.0);
        }
        ++step;
        if (m_ratio != 1.0) {
            if (step % m_divNum == 0) {
                growth = (pitch * m_ratio - pitchOfTurn) / m_divNum;
                pitchOfTurn = pitch * m_ratio;
            }
            pitch += growth;
        }
    }
}

bool CVexGeSpiral::isEqualTo(const CVexGeEntity2d& other, const double& tol) const
{
    if (!other.isKindOf(VexGe::kGeSpiral)) {
        return false;
    }
    // The ratio is left out, since a file does not keep it: a spiral that was saved and read has to
    // be equal to the one in memory. The operator == does compare it.
    const auto& spiral = static_cast<const CVexGeSpiral&>(other);
    const auto near = [tol](double a, double b) { return std::fabs(a - b) <= tol; };
    return near(m_maxRadius, spiral.m_maxRadius) && near(m_minRadius, spiral.m_minRadius) &&
           near(m_offsetDist, spiral.m_offsetDist) && near(m_startAng, spiral.m_startAng) &&
           m_divNum == spiral.m_divNum && m_center.isEqualTo(spiral.m_center, tol);
}

bool CVexGeSpiral::operator==(const CVexGeSpiral& other) const
{
    return m_maxRadius == other.m_maxRadius && m_minRadius == other.m_minRadius &&
           m_offsetDist == other.m_offsetDist && m_startAng == other.m_startAng &&
           m_divNum == other.m_divNum && m_ratio == other.m_ratio && m_center == other.m_center;
}

CVexGeSpiral& CVexGeSpiral::scaleBy(double fx, double fy, const CVexGePoint2d& centre)
{
    return transformBy(CVexGeMatrix2d::scaling(fx, fy, centre));
}

CVexGeSpiral& CVexGeSpiral::scaleBy(double factor, const CVexGePoint2d& centre)
{
    return transformBy(CVexGeMatrix2d::scaling(factor, centre));
}

CVexGeSpiral& CVexGeSpiral::mirror(const CVexGeLine2d& line)
{
    return transformBy(CVexGeMatrix2d::mirroring(line));
}

CVexGeSpiral& CVexGeSpiral::rotateBy(double angle, const CVexGePoint2d& centre)
{
    return transformBy(CVexGeMatrix2d::rotation(angle, centre));
}

CVexGeSpiral& CVexGeSpiral::translateBy(const CVexGeVector2d& vector)
{
    m_center.translateBy(vector);
    rebuild();
    return *this;
}

CVexGeSpiral& CVexGeSpiral::transformBy(const CVexGeMatrix2d& matrix)
{
    // A spiral stays round under any matrix, and winds counter-clockwise also when mirrored: the
    // lengths are those that the matrix gives to lengths along x.
    const CVexGePoint2d centre = CVexGePoint2d(m_center).transformBy(matrix);
    const auto moved = [&](const CVexGeVector2d& fromCentre) {
        return (m_center + fromCentre).transformBy(matrix);
    };
    const auto stretched = [&](double length) {
        return centre.distanceTo(moved(CVexGeVector2d(length, 0.0)));
    };
    const double maxRadius = stretched(m_maxRadius);
    const double minRadius = stretched(m_minRadius);
    const double offsetDist = stretched(m_offsetDist);
    m_startAng = centre.angleTo(moved(CVexGeVector2d(m_startAng)));
    m_maxRadius = maxRadius;
    m_minRadius = minRadius;
    m_offsetDist = offsetDist;
    m_center.set(centre.x, centre.y);
    rebuild();
    return *this;
}

bool CVexGeSpiral::isInsidePoint(const CVexGePoint2d& point) const
{
    return m_polyline.isInsidePoint(point);
}

double CVexGeSpiral::curvatureAtParam(double /*param*/) const
{
    return 0.0;
}

double CVexGeSpiral::curvatureAtPoint(CVexGePoint2d /*point*/, double /*tol*/) const
{
    return 0.0;
}

void CVexGeSpiral::save(CFile* file) const
{
    // The ratio has no place in the file: a spiral that was read keeps its shape in the chain until
    // something makes that anew, and is of constant pitch from then on.
    CVexFieldWriter{*file}(m_maxRadius, m_minRadius, m_offsetDist, m_startAng, m_divNum, m_center,
                           m_polyline);
}

void CVexGeSpiral::read(CFile* file)
{
    CVexFieldReader{*file}(m_maxRadius, m_minRadius, m_offsetDist, m_startAng, m_divNum, m_center,
                           m_polyline);
}
