#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgecspline2d.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/geentity2d/vexgerect2d.h"
#include "vexge/geentity2d/vexgespiral.h"
#include "vexge/geentity2d/vexgespline.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <gtest/gtest.h>
#include <limits>
#include <memory>

// Numbers from damaged files and from divisions by nothing, in every place of every kind of curve:
// each answer comes, in bounded time, and a point that is none lies on no curve.

namespace {

using Points = std::vector<CVexGePoint2d>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kWild[] = {kNan, kInf, -kInf, 1e300, 5e-324, 0.0, -1.0};
/// Without those that make a spiral or an ellipse as long as the bounds let it be: all segments of
/// two chains are held against each other when they are extended.
constexpr double kWildOfPairs[] = {kNan, -kInf, 1e300, 3.0};

/// Calls `visit(name, curve)` with a curve of each kind whose numbers are `a` and `b`.
template <class Visit>
void eachKindOf(double a, double b, const Visit& visit)
{
    visit("line", CVexGeLine2d(CVexGePoint2d(a, 1), CVexGePoint2d(b, 2)));
    visit("arc", CVexGeCircArc2d(CVexGePoint2d(a, 0), b, a, b));
    visit("arc of a bulge", CVexGeCircArc2d(CVexGePoint2d(0, 0), CVexGePoint2d(a, 1), b, true));
    visit("ellipse", CVexGeEllipArc2d({a, 0}, {b, 1}, {0, a}, b, 2.0, a, b));
    CVexGePolyline2d chain(Points{{0, 0}, {a, 1}, {3, b}, {4, 0}});
    chain.setBulgeAt(0, b);
    chain.setBulgeAt(1, a);
    visit("polyline", chain);
    chain.setClosed(true);
    visit("closed polyline", chain);
    visit("empty polyline", CVexGePolyline2d());
    CVexGeSpline fit;
    for (const CVexGePoint2d& point : chain.vertices()) {
        fit.appendCtrlPt(point);
    }
    fit.setFitParam(b);
    fit.translateBy({0, 0});
    visit("fit spline", fit);
    CVexGeCSpline2d cubic(1e9);
    cubic.set(chain.vertices(), {0, 3, 2, 1});
    visit("cubic spline", cubic);
    visit("rectangle", CVexGeRect2d(CVexGePoint2d(a, 0), b, a, b));
    CVexGeSpiral spiral;
    spiral.set(4, {a, 0}, 9.0, b, a, 1.0, b);
    visit("spiral", spiral);
}

/// Asks all that needs a point, a parameter or a length.
void askMeasures(const CVexGeEntity2d& curve, double wild)
{
    const CVexGePoint2d at(wild, 1.0);
    CVexGeVector2d way;
    curve.isOn(at, 1e-6);
    curve.isInsidePoint(at);
    curve.paramAtPoint(at, 1e-6);
    curve.distAtPoint(at, 1e-6);
    curve.normalAtPoint(at, 1e-6);
    curve.curvatureAtPoint(at, 1e-6);
    curve.distanceTo(at, 1e-6);
    curve.length(wild, 1.0, 1e-6);
    curve.paramAtDist(0.5, wild, true, 1e-6);
    curve.pointAtDist(wild);
    curve.pointAtParam(wild);
    curve.normalAtParam(wild);
    curve.curvatureAtParam(wild);
    if (curve.length() > 0.0) {
        curve.perpVecFromPoint(at, way, 1e-6);
    }
}

void edit(CVexGeEntity2d& curve, double wild)
{
    curve.translateBy({wild, 1.0});
    curve.rotateBy(wild, {1, wild});
    curve.scaleBy(wild, {0, 0});
    curve.scaleBy(2.0, wild, {wild, 0});
    curve.mirror(CVexGeLine2d(CVexGePoint2d(0, 0), CVexGePoint2d(wild, 0)));
    curve.transformBy(CVexGeMatrix2d::scaling(wild, {0, 1}));
}

template <class A, class B>
std::size_t hitsOf(const A& a, const B& b, CVexGeEntity2d::Intersect kind)
{
    Points out;
    int count = 0;
    CVexGePoint2d first, second;
    if constexpr (requires { a.intersectWith(b, count, out, kind, 1e-6); }) {
        a.intersectWith(b, count, out, kind, 1e-6);
        EXPECT_EQ(count, static_cast<int>(out.size()));
    } else if constexpr (requires { a.intersectWith(b, count, first, second, kind, 1e-6); }) {
        a.intersectWith(b, count, first, second, kind, 1e-6);
        EXPECT_LE(count, 2);
    }
    return out.size();
}

} // namespace

TEST(CurveHostileTest, EveryQueryAndEditOfAWildCurveAnswers)
{
    for (const double a : kWild) {
        for (const double b : kWild) {
            eachKindOf(a, b, [&](const char* name, const auto& curve) {
                SCOPED_TRACE(name);
                askMeasures(curve, b);
                askMeasures(curve, kNan);
                const std::unique_ptr<CVexGeEntity2d> moved(curve.copy());
                edit(*moved, a == 5e-324 ? 0.0 : a);
                EXPECT_EQ(curve.type(), moved->type()) << a << ' ' << b;
            });
        }
    }
}

TEST(CurveHostileTest, EveryPairOfWildCurvesAnswersForEachKind)
{
    for (const double a : kWildOfPairs) {
        for (const double b : kWildOfPairs) {
            eachKindOf(a, b, [&](const char* name, const auto& one) {
                SCOPED_TRACE(name);
                eachKindOf(b, a, [&](const char* otherName, const auto& other) {
                    SCOPED_TRACE(otherName);
                    for (int kind = 0; kind < 5; ++kind) {
                        const auto extended = static_cast<CVexGeEntity2d::Intersect>(kind);
                        EXPECT_GE(20000U, hitsOf(one, other, extended)) << a << ' ' << b;
                    }
                });
            });
        }
    }
}

TEST(CurveHostileTest, APointThatIsNoneLiesOnNoCurve)
{
    const CVexGePoint2d none(kNan, 2.0), beyond(kInf, 2.0);
    eachKindOf(5.0, 3.0, [&](const char* name, const auto& curve) {
        SCOPED_TRACE(name);
        for (const CVexGePoint2d& at : {none, beyond}) {
            EXPECT_EQ(0, curve.isOn(at, 1e-6));
            EXPECT_EQ(-1.0, curve.paramAtPoint(at, 1e-6));
            EXPECT_FALSE(curve.isInsidePoint(at));
        }
        EXPECT_EQ(0U, hitsOf(curve, CVexGeLine2d(none, beyond), CVexGeEntity2d::kExtendNone));
    });
}

TEST(CurveHostileTest, OffsetsOfWildCurvesAnswer)
{
    for (const double a : kWild) {
        for (const double dist : kWild) {
            eachKindOf(a, 3.0, [&](const char* name, const auto& curve) {
                SCOPED_TRACE(name);
                auto moved = curve;
                CVexGePoint2d side(1, dist);
                if constexpr (requires { moved.offset(side, dist); }) { // a spiral has none
                    moved.offset(side, dist);
                }
                EXPECT_EQ(curve.type(), moved.type()) << a << ' ' << dist;
            });
        }
    }
}
