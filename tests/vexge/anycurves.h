#pragma once

#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgecspline2d.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/geentity2d/vexgerect2d.h"
#include "vexge/geentity2d/vexgespiral.h"
#include "vexge/geentity2d/vexgespline.h"

#include <numbers>
#include <rapidcheck.h>

/// A random curve of each kind, within some 40 drawing units of the origin.
namespace anycurves {

/// A number of hundredths.
inline double within(int low, int high)
{
    return *rc::gen::inRange(low, high) / 100.0;
}

inline CVexGePoint2d point()
{
    const double x = within(-2000, 2001);
    return {x, within(-2000, 2001)};
}

inline CVexGeLine2d line()
{
    const CVexGePoint2d start = point();
    return {start, start + CVexGeVector2d(within(0, 628)) * within(100, 3000)};
}

/// Its angles lie within one turn: an arc does not look for itself beyond.
inline CVexGeCircArc2d arc()
{
    CVexGeCircArc2d result(point(), within(100, 2000));
    const double start = within(-300, 600);
    const double end = start + within(10, 600);
    result.setAngles(start, end > 2.0 * std::numbers::pi ? end - 2.0 * std::numbers::pi : end);
    return result;
}

inline CVexGeEllipArc2d ellipse()
{
    const double turn = within(0, 628);
    const double major = within(300, 2000);
    const double start = within(0, 600);
    const double minor = major * within(25, 95);
    return {point(),
            CVexGeVector2d(turn),
            CVexGeVector2d(turn + std::numbers::pi / 2.0),
            major,
            minor,
            start,
            start + within(50, 600)};
}

inline CVexGePolyline2d polyline()
{
    CVexGePolyline2d result;
    const int count = *rc::gen::inRange(2, 7);
    for (int i = 0; i < count; ++i) {
        const CVexGePoint2d at(6.0 * i + within(-2000, 0), within(-1500, 1500));
        result.appendVertex(at, *rc::gen::element(0.0, 0.0, 0.25, -0.4, 1.0, -0.8));
    }
    return result;
}

inline CVexGeSpline fitSpline()
{
    CVexGeSpline result;
    const int count = *rc::gen::inRange(2, 7);
    double x = within(-2000, 0);
    for (int i = 0; i < count; ++i) {
        result.appendCtrlPt({x, within(-1500, 1500)});
        x += within(200, 900);
    }
    CVexGePolyline2d built;
    result.getGePolyline(built);
    return result;
}

/// No span measures whole units along an axis, where a rounding error would change its pieces.
inline CVexGeCSpline2d cubicSpline()
{
    CVexGeCSpline2d result(0.5);
    const int count = *rc::gen::inRange(2, 5);
    int x = *rc::gen::inRange(-20, 0);
    for (int i = 0; i < count; ++i) {
        const double odd = i % 2 == 0 ? 0.0 : 0.3;
        result.appendCtrlPt({x + odd, *rc::gen::inRange(-9, 9) + odd}, 0);
        x += *rc::gen::inRange(2, 9);
    }
    return result;
}

inline CVexGeRect2d rect()
{
    const CVexGePoint2d base = point();
    const double width = within(100, 2000);
    return {base, width, within(100, 2000), within(0, 628)};
}

/// No vertex has just the greatest or the least radius.
inline CVexGeSpiral spiral()
{
    CVexGeSpiral result;
    const double pitch = within(200, 600);
    result.set(*rc::gen::inRange(5, 12), point(), pitch * within(150, 300) + 0.0123456789,
               pitch * within(0, 90) + 0.0123456789, within(0, 628), pitch);
    return result;
}

/// Calls `visit(name, curve)` with a fresh curve of each kind.
template <class Visit>
void each(const Visit& visit)
{
    visit("line", line());
    visit("arc", arc());
    visit("ellipse", ellipse());
    visit("polyline", polyline());
    visit("fit spline", fitSpline());
    visit("cubic spline", cubicSpline());
    visit("rectangle", rect());
    visit("spiral", spiral());
}

} // namespace anycurves
