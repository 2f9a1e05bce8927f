#include "vexge/geentity2d/vexgechaincurve2d.h"

#include "vexge/geentity2d/vexgeelliparc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

int CVexGeChainCurve2d::isOn(const CVexGePoint2d& point, const double& tol) const
{
    return chain().isOn(point, tol);
}

double CVexGeChainCurve2d::length() const
{
    return chain().length();
}

double CVexGeChainCurve2d::length(double fromParam, double toParam, double tol) const
{
    return chain().length(fromParam, toParam, tol);
}

double CVexGeChainCurve2d::paramAtDist(double fromParam, double dist, bool forward,
                                       double tol) const
{
    return chain().paramAtDist(fromParam, dist, forward, tol);
}

double CVexGeChainCurve2d::paramAtPoint(CVexGePoint2d point, double tol) const
{
    return chain().paramAtPoint(point, tol);
}

double CVexGeChainCurve2d::distAtParam(double param) const
{
    return chain().distAtParam(param);
}

double CVexGeChainCurve2d::distAtPoint(CVexGePoint2d point, double tol) const
{
    return chain().distAtPoint(point, tol);
}

CVexGePoint2d CVexGeChainCurve2d::pointAtDist(double dist) const
{
    return chain().pointAtDist(dist);
}

CVexGePoint2d CVexGeChainCurve2d::pointAtParam(double param) const
{
    return chain().pointAtParam(param);
}

CVexGeVector2d CVexGeChainCurve2d::normalAtParam(double param) const
{
    return chain().normalAtParam(param);
}

CVexGeVector2d CVexGeChainCurve2d::normalAtPoint(CVexGePoint2d point, double tol) const
{
    return chain().normalAtPoint(point, tol);
}

CVexGePoint2d CVexGeChainCurve2d::closestPointTo(const CVexGePoint2d& point, double tol) const
{
    return chain().closestPointTo(point, tol);
}

CVexGePoint2d CVexGeChainCurve2d::closestPointTo(const CVexGeLine2d& line, CVexGePoint2d& onLine,
                                                 double tol) const
{
    return chain().closestPointTo(line, onLine, tol);
}

double CVexGeChainCurve2d::distanceTo(const CVexGeLine2d& line, double tol) const
{
    return chain().distanceTo(line, tol);
}

double CVexGeChainCurve2d::distanceTo(const CVexGePoint2d& point, double tol) const
{
    return chain().distanceTo(point, tol);
}

double CVexGeChainCurve2d::curvatureAtParam(double param) const
{
    return chain().curvatureAtParam(param);
}

double CVexGeChainCurve2d::curvatureAtPoint(CVexGePoint2d point, double tol) const
{
    return chain().curvatureAtPoint(point, tol);
}

bool CVexGeChainCurve2d::perpVecFromPoint(const CVexGePoint2d& point, CVexGeVector2d& out,
                                          double tol) const
{
    // The data may make no chain, or one that is nowhere, whose length is no number.
    const CVexGePolyline2d& segments = chain();
    return segments.length() > 0.0 && segments.perpVecFromPoint(point, out, tol);
}

bool CVexGeChainCurve2d::intersectWith(const CVexGeLine2d& line, int& count,
                                       std::vector<CVexGePoint2d>& out, Intersect kind,
                                       double tol) const
{
    return chain().intersectWith(line, count, out, kind, tol);
}

bool CVexGeChainCurve2d::intersectWith(const CVexGeCircArc2d& arc, int& count,
                                       std::vector<CVexGePoint2d>& out, Intersect kind,
                                       double tol) const
{
    return chain().intersectWith(arc, count, out, kind, tol);
}

bool CVexGeChainCurve2d::intersectWith(const CVexGeEllipArc2d& ellipse, int& count,
                                       std::vector<CVexGePoint2d>& out, Intersect kind,
                                       double tol) const
{
    return chain().intersectWith(ellipse, count, out, kind, tol);
}

bool CVexGeChainCurve2d::intersectWith(const CVexGePolyline2d& polyline, int& count,
                                       std::vector<CVexGePoint2d>& out, Intersect kind,
                                       double tol) const
{
    return chain().intersectWith(polyline, count, out, kind, tol);
}

bool CVexGeChainCurve2d::intersectWith(const CVexGeChainCurve2d& other, int& count,
                                       std::vector<CVexGePoint2d>& out, Intersect kind,
                                       double tol) const
{
    return chain().intersectWith(other.chain(), count, out, kind, tol);
}
