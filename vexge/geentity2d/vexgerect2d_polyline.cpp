#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/geentity2d/vexgerect2d.h"

// What a rectangle answers through a closed polyline that is made for the call.

CVexGePolyline2d CVexGeRect2d::polyline() const
{
    CVexGePolyline2d result;
    getPolyline(result);
    return result;
}

bool CVexGeRect2d::isInsidePoint(const CVexGePoint2d& point) const
{
    return polyline().isInsidePoint(point);
}

double CVexGeRect2d::length() const
{
    return polyline().length();
}

double CVexGeRect2d::length(double fromParam, double toParam, double tol) const
{
    return polyline().length(fromParam, toParam, tol);
}

double CVexGeRect2d::paramAtDist(double fromParam, double dist, bool forward, double tol) const
{
    return polyline().paramAtDist(fromParam, dist, forward, tol);
}

double CVexGeRect2d::paramAtPoint(CVexGePoint2d point, double tol) const
{
    return polyline().paramAtPoint(point, tol);
}

double CVexGeRect2d::distAtParam(double param) const
{
    return polyline().distAtParam(param);
}

double CVexGeRect2d::distAtPoint(CVexGePoint2d point, double tol) const
{
    return polyline().distAtPoint(point, tol);
}

CVexGePoint2d CVexGeRect2d::pointAtDist(double dist) const
{
    return polyline().pointAtDist(dist);
}

CVexGePoint2d CVexGeRect2d::pointAtParam(double param) const
{
    return polyline().pointAtParam(param);
}

CVexGeVector2d CVexGeRect2d::normalAtParam(double param) const
{
    return polyline().normalAtParam(param);
}

CVexGeVector2d CVexGeRect2d::normalAtPoint(CVexGePoint2d point, double tol) const
{
    return polyline().normalAtPoint(point, tol);
}

double CVexGeRect2d::curvatureAtParam(double /*param*/) const
{
    return 0.0;
}

double CVexGeRect2d::curvatureAtPoint(CVexGePoint2d /*point*/, double /*tol*/) const
{
    return 0.0;
}

bool CVexGeRect2d::perpVecFromPoint(const CVexGePoint2d& point, CVexGeVector2d& out,
                                    double tol) const
{
    return polyline().perpVecFromPoint(point, out, tol);
}

bool CVexGeRect2d::intersectWith(const CVexGeLine2d& line, int& count,
                                 std::vector<CVexGePoint2d>& out, Intersect kind, double tol) const
{
    return polyline().intersectWith(line, count, out, kind, tol);
}

bool CVexGeRect2d::intersectWith(const CVexGeCircArc2d& arc, int& count,
                                 std::vector<CVexGePoint2d>& out, Intersect kind, double tol) const
{
    return polyline().intersectWith(arc, count, out, kind, tol);
}

bool CVexGeRect2d::intersectWith(const CVexGeEllipArc2d& ellipse, int& count,
                                 std::vector<CVexGePoint2d>& out, Intersect kind, double tol) const
{
    return polyline().intersectWith(ellipse, count, out, kind, tol);
}

bool CVexGeRect2d::intersectWith(const CVexGePolyline2d& /*polyline*/, int& count,
                                 std::vector<CVexGePoint2d>& out, Intersect /*kind*/,
                                 double /*tol*/) const
{
    // A polyline that crosses the rectangle is not reported, on purpose: trimming and snapping
    // between the two go through the polyline's side, and would count each hit twice.
    count = 0;
    out.clear();
    return false;
}
