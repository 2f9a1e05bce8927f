#include "vexge/geentity2d/vexgeelliparc2d.h"

#include "platform/base/vexfields.h"
#include "vexge/geentity2d/vexgeangle.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <cmath>

namespace {

/// The unit vector along `axis`, turned round for a negative radius.
CVexGeVector2d directionOf(const CVexGeVector2d& axis, double radius)
{
    const CVexGeVector2d unit = axis.normal(kGeTol);
    return radius < 0.0 ? -unit : unit;
}

} // namespace

CVexGeEllipArc2d::CVexGeEllipArc2d() : CVexGeChainCurve2d(VexGe::kGeEllipArc2d)
{
    setGePolyline(kChainSteps);
}

CVexGeEllipArc2d::CVexGeEllipArc2d(const CVexGeCircArc2d& arc)
    : CVexGeChainCurve2d(VexGe::kGeEllipArc2d), m_center(arc.center()), m_minorRadius(arc.radius()),
      m_majorRadius(arc.radius()), m_startAng(arc.startAng()), m_endAng(arc.endAng())
{
    setGePolyline(kChainSteps);
}

CVexGeEllipArc2d::CVexGeEllipArc2d(const CVexGePoint2d& center, const CVexGeVector2d& majorAxis,
                                   const CVexGeVector2d& minorAxis, double majorRadius,
                                   double minorRadius)
    : CVexGeChainCurve2d(VexGe::kGeEllipArc2d), m_center(center),
      m_minorAxis(directionOf(minorAxis, minorRadius)),
      m_majorAxis(directionOf(majorAxis, majorRadius)), m_minorRadius(std::fabs(minorRadius)),
      m_majorRadius(std::fabs(majorRadius)), m_startAng(majorAxis.angle()), m_endAng(m_startAng)
{
    // Equal angles, those of the given axis, and not 0 to 2 pi: such an ellipse reports one and
    // the same point as its start and its end, and is drawn whole through their coincidence.
    setGePolyline(kChainSteps);
}

CVexGeEllipArc2d::CVexGeEllipArc2d(const CVexGePoint2d& center, const CVexGeVector2d& majorAxis,
                                   const CVexGeVector2d& minorAxis, double majorRadius,
                                   double minorRadius, double startAng, double endAng)
    : CVexGeChainCurve2d(VexGe::kGeEllipArc2d), m_center(center),
      m_minorAxis(minorAxis.normal(kGeTol)), m_majorAxis(majorAxis.normal(kGeTol)),
      m_minorRadius(minorRadius), m_majorRadius(majorRadius), m_startAng(startAng), m_endAng(endAng)
{
    setGePolyline(kChainSteps);
}

CVexGeEllipArc2d& CVexGeEllipArc2d::operator=(const CVexGeEllipArc2d& other)
{
    m_center = other.m_center;
    m_minorAxis = other.m_minorAxis;
    m_majorAxis = other.m_majorAxis;
    m_minorRadius = other.m_minorRadius;
    m_majorRadius = other.m_majorRadius;
    m_startAng = other.m_startAng;
    m_endAng = other.m_endAng;
    m_clockwise = other.m_clockwise;
    m_polyline = other.m_polyline;
    return *this;
}

CVexGeEllipArc2d& CVexGeEllipArc2d::operator=(const CVexGeCircArc2d& arc)
{
    return set(arc);
}

CVexGeEllipArc2d& CVexGeEllipArc2d::set(const CVexGePoint2d& center,
                                        const CVexGeVector2d& majorAxis,
                                        const CVexGeVector2d& minorAxis, double majorRadius,
                                        double minorRadius)
{
    return set(center, majorAxis, minorAxis, majorRadius, minorRadius, m_startAng, m_endAng);
}

CVexGeEllipArc2d& CVexGeEllipArc2d::set(const CVexGePoint2d& center,
                                        const CVexGeVector2d& majorAxis,
                                        const CVexGeVector2d& minorAxis, double majorRadius,
                                        double minorRadius, double startAng, double endAng)
{
    // The axes keep their lengths, unlike in the constructors: the entity puts its radii there, and
    // the display vertices of an arc are measured by them.
    m_center = center;
    m_majorAxis = majorAxis;
    m_minorAxis = minorAxis;
    m_majorRadius = majorRadius;
    m_minorRadius = minorRadius;
    m_startAng = startAng;
    m_endAng = endAng;
    setGePolyline(kChainSteps);
    return *this;
}

CVexGeEllipArc2d& CVexGeEllipArc2d::set(const CVexGeCircArc2d& arc)
{
    // Flagged clockwise although arcs run counter-clockwise, and although the constructor from an
    // arc leaves the flag clear: ellipses set from an arc carry it in files, and compare by it.
    m_clockwise = true;
    return set(arc.center(), CVexGeVector2d::kXAxis, CVexGeVector2d::kYAxis, arc.radius(),
               arc.radius(), arc.startAng(), arc.endAng());
}

void CVexGeEllipArc2d::setCenter(const CVexGePoint2d& center)
{
    m_center = center;
    setGePolyline(kChainSteps);
}

void CVexGeEllipArc2d::setMinorRadius(double radius)
{
    m_minorRadius = radius;
    setGePolyline(kChainSteps);
}

void CVexGeEllipArc2d::setMajorRadius(double radius)
{
    m_majorRadius = radius;
    setGePolyline(kChainSteps);
}

void CVexGeEllipArc2d::setAxes(const CVexGeVector2d& majorAxis, const CVexGeVector2d& minorAxis)
{
    m_majorAxis = majorAxis;
    m_minorAxis = minorAxis;
    setGePolyline(kChainSteps);
}

void CVexGeEllipArc2d::setAngles(double startAng, double endAng)
{
    m_startAng = startAng;
    m_endAng = endAng;
    setGePolyline(kChainSteps);
}

bool CVexGeEllipArc2d::isCircular(double tol) const
{
    return std::fabs(m_majorRadius - m_minorRadius) < tol;
}

bool CVexGeEllipArc2d::getGePolyline(CVexGePolyline2d& out)
{
    setGePolyline(kChainSteps);
    out = m_polyline;
    return out.numVerts() > 0;
}

void CVexGeEllipArc2d::save(CFile* file) const
{
    CVexFieldWriter{*file}(m_center, m_minorAxis, m_majorAxis, m_majorRadius, m_minorRadius,
                           m_startAng, m_endAng, m_clockwise);
}

void CVexGeEllipArc2d::read(CFile* file)
{
    CVexFieldReader{*file}(m_center, m_minorAxis, m_majorAxis, m_majorRadius, m_minorRadius,
                           m_startAng, m_endAng, m_clockwise);
    setGePolyline(kChainSteps);
}

bool CVexGeEllipArc2d::isEqualTo(const CVexGeEntity2d& other, const double& tol) const
{
    return other.isKindOf(VexGe::kGeEllipArc2d) &&
           isEqualTo(static_cast<const CVexGeEllipArc2d&>(other), tol);
}

bool CVexGeEllipArc2d::isEqualTo(const CVexGeEllipArc2d& other, const double& tol) const
{
    const auto near = [tol](double a, double b) { return std::fabs(a - b) <= tol; };
    return near(m_center.x, other.m_center.x) && near(m_center.y, other.m_center.y) &&
           near(m_majorRadius, other.m_majorRadius) && near(m_minorRadius, other.m_minorRadius) &&
           near(m_startAng, other.m_startAng) && near(m_endAng, other.m_endAng) &&
           m_majorAxis.isEqualTo(other.m_majorAxis, tol) &&
           m_minorAxis.isEqualTo(other.m_minorAxis, tol) && m_clockwise == other.m_clockwise;
}

bool CVexGeEllipArc2d::operator==(const CVexGeEllipArc2d& other) const
{
    return !(m_center != other.m_center) && !(m_majorAxis != other.m_majorAxis) &&
           !(m_minorAxis != other.m_minorAxis) && m_majorRadius == other.m_majorRadius &&
           m_minorRadius == other.m_minorRadius && m_startAng == other.m_startAng &&
           m_endAng == other.m_endAng && m_clockwise == other.m_clockwise;
}

CVexGeEllipArc2d& CVexGeEllipArc2d::scaleBy(double fx, double fy, const CVexGePoint2d& centre)
{
    // The factors go to the radii by name, not by where the axes point: an ellipse that stands
    // upright grows the other way. Scaled copies in drawings have their radii by this.
    m_center.scaleBy(fx, fy, CVexGePoint2d(centre));
    m_majorRadius *= fx;
    m_minorRadius *= fy;
    setGePolyline(kChainSteps);
    return *this;
}

CVexGeEllipArc2d& CVexGeEllipArc2d::scaleBy(double factor, const CVexGePoint2d& centre)
{
    return scaleBy(factor, factor, centre);
}

CVexGeEllipArc2d& CVexGeEllipArc2d::mirror(const CVexGeLine2d& line)
{
    const CVexGeVector2d along = line.endPoint() - line.startPoint();
    m_center.mirror(line);
    m_majorAxis.mirror(along);
    m_minorAxis.mirror(along);
    // The chain of a whole ellipse stays where it was until the next edit or getGePolyline, though
    // the centre has moved. A mirrored copy is drawn from the conic and asks for the chain anew.
    const double run = m_endAng - m_startAng;
    if (std::fabs(run) <= kGeAngleTol || std::fabs(run - kGeTwoPi) <= kGeAngleTol) {
        return *this;
    }
    const double formerStart = m_startAng;
    m_startAng = -m_endAng;
    m_endAng = -formerStart;
    setGePolyline(kChainSteps);
    return *this;
}

CVexGeEllipArc2d& CVexGeEllipArc2d::rotateBy(double angle, const CVexGePoint2d& centre)
{
    m_center.rotateBy(angle, CVexGePoint2d(centre));
    m_majorAxis.rotateBy(angle);
    m_minorAxis.rotateBy(angle);
    setGePolyline(kChainSteps);
    return *this;
}

CVexGeEllipArc2d& CVexGeEllipArc2d::translateBy(const CVexGeVector2d& vector)
{
    m_center.translateBy(vector);
    setGePolyline(kChainSteps);
    return *this;
}

CVexGeEllipArc2d& CVexGeEllipArc2d::transformBy(const CVexGeMatrix2d& matrix)
{
    // A vector takes a matrix's translation too, so a matrix that moves also bends the axes. To
    // move or turn an ellipse there are translateBy and rotateBy; this form is for a linear matrix.
    m_center.transformBy(matrix);
    m_majorAxis.transformBy(matrix);
    m_minorAxis.transformBy(matrix);
    setGePolyline(kChainSteps);
    return *this;
}
