#pragma once

#include "platform/base/vexexport.h"
#include "vexge/geentity2d/vexgeentity2d.h"

#include <vector>

class CVexGeEllipArc2d;
class CVexGePolyline2d;

/// A curve that answers through a chain of segments made from its own data: ellipses, splines and
/// spirals. Lengths, parameters, closest points and hits are those of the chain. A class adds its
/// data, its edits and what it answers otherwise.
class VEXGE_EXPORT CVexGeChainCurve2d : public CVexGeEntity2d {
public:
    /// The chain as it stands; no vertices when there is none. It lives until the next edit.
    [[nodiscard]] virtual const CVexGePolyline2d& chain() const = 0;

    int isOn(const CVexGePoint2d& point, const double& tol = kGeEpsilon) const override;
    double length() const override;
    double length(double fromParam, double toParam, double tol = kGeEpsilon) const override;
    double paramAtDist(double fromParam, double dist, bool forward,
                       double tol = kGeEpsilon) const override;
    double paramAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    double distAtParam(double param) const override;
    double distAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    CVexGePoint2d pointAtDist(double dist) const override;
    CVexGePoint2d pointAtParam(double param) const override;
    CVexGeVector2d normalAtParam(double param) const override;
    CVexGeVector2d normalAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    CVexGePoint2d closestPointTo(const CVexGePoint2d& point,
                                 double tol = kGeEpsilon) const override;
    CVexGePoint2d closestPointTo(const CVexGeLine2d& line, CVexGePoint2d& onLine,
                                 double tol = kGeEpsilon) const override;
    double distanceTo(const CVexGeLine2d& line, double tol = kGeEpsilon) const override;
    double distanceTo(const CVexGePoint2d& point, double tol = kGeEpsilon) const override;
    double curvatureAtParam(double param) const override;
    double curvatureAtPoint(CVexGePoint2d point, double tol = kGeEpsilon) const override;
    /// False for a chain without length, too.
    bool perpVecFromPoint(const CVexGePoint2d& point, CVexGeVector2d& out,
                          double tol = kGeEpsilon) const override;

    // The chain's hits, appended to `out`; `count` becomes the size of `out`.
    bool intersectWith(const CVexGeLine2d& line, int& count, std::vector<CVexGePoint2d>& out,
                       Intersect kind, double tol = kGeEpsilon) const;
    bool intersectWith(const CVexGeCircArc2d& arc, int& count, std::vector<CVexGePoint2d>& out,
                       Intersect kind, double tol = kGeEpsilon) const;
    bool intersectWith(const CVexGeEllipArc2d& ellipse, int& count, std::vector<CVexGePoint2d>& out,
                       Intersect kind, double tol = kGeEpsilon) const;
    bool intersectWith(const CVexGePolyline2d& polyline, int& count,
                       std::vector<CVexGePoint2d>& out, Intersect kind,
                       double tol = kGeEpsilon) const;
    /// Chain against chain.
    bool intersectWith(const CVexGeChainCurve2d& other, int& count, std::vector<CVexGePoint2d>& out,
                       Intersect kind, double tol = kGeEpsilon) const;

protected:
    explicit constexpr CVexGeChainCurve2d(VexGe::EntityId kind) : CVexGeEntity2d(kind) {}
    constexpr CVexGeChainCurve2d(const CVexGeChainCurve2d&) = default;
    // The base assigns as the concrete class does, so a concrete class must not assign through it.
    CVexGeChainCurve2d& operator=(const CVexGeChainCurve2d&) = delete;
};
