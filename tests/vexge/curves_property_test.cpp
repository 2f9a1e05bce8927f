#include "tests/vexge/anycurves.h"
#include "tests/vexge/gebytes.h"

#include <cmath>
#include <concepts>
#include <memory>
#include <rapidcheck/gtest.h>
#include <type_traits>

// What every kind of curve promises, held for all of them at once.

namespace {

using Kind = CVexGeEntity2d::Intersect;
using Points = std::vector<CVexGePoint2d>;

constexpr double kTol = 1e-6;
/// Arcs take what lies within 0.001 radians of their ends for their own, and a parameter within
/// 0.001 of 1 is the end.
constexpr double kSlack = 0.0011;

/// The hits by whichever of the two classes answers; `known` becomes false when none does.
template <class A, class B>
Points hitsOf(const A& a, const B& b, Kind kind, bool& known)
{
    Points out;
    int count = 0;
    if constexpr (requires { a.intersectWith(b, count, out, kind, kTol); }) {
        a.intersectWith(b, count, out, kind, kTol);
    } else if constexpr (requires { a.intersectWith(b, count, out[0], out[0], kind, kTol); }) {
        CVexGePoint2d first, second;
        if (a.intersectWith(b, count, first, second, kind, kTol)) {
            out.push_back(first);
            if (count > 1) {
                out.push_back(second);
            }
        }
    } else if constexpr (requires { b.intersectWith(a, count, out, kind, kTol); }) {
        b.intersectWith(a, count, out, CVexGeEntity2d::exchanged(kind), kTol);
    } else {
        known = false;
    }
    return out;
}

bool holds(const Points& points, const CVexGePoint2d& wanted)
{
    const double forgiven = 0.0015 + 1e-5 * wanted.asVector().length();
    for (const CVexGePoint2d& point : points) {
        if (point.distanceTo(wanted) < forgiven) {
            return true;
        }
    }
    return false;
}

/// Whether `others` has each point but those beyond the drawing, where nearly parallel lines meet.
bool holdsAll(const Points& others, const Points& points)
{
    for (const CVexGePoint2d& point : points) {
        if (point.asVector().length() < 1e4 && !holds(others, point)) {
            return false;
        }
    }
    return true;
}

/// A curve as its class makes it from nothing.
template <class Curve>
Curve made()
{
    if constexpr (std::is_default_constructible_v<Curve>) {
        return Curve();
    } else {
        return Curve(3.0);
    }
}

/// A straight segment gives the first two hits of an ellipse; each arc of an extended one may have
/// more, and those are not asked for.
template <class A, class B>
constexpr bool givesTwoAtMost =
    std::same_as<B, CVexGeEllipArc2d> && !std::same_as<A, CVexGeEllipArc2d> &&
    !std::same_as<A, CVexGeCircArc2d>;

} // namespace

RC_GTEST_PROP(CurveProperty, RigidEditsKeepLengthsAndDistances, ())
{
    anycurves::each([](const char* name, const auto& curve) {
        auto moved = curve;
        CVexGePoint2d at = anycurves::point();
        const double distance = curve.distanceTo(at);
        // Quarters: the pieces of a cubic spline are counted by whole units of x and y.
        const double angle = *rc::gen::inRange(-4, 5) * std::numbers::pi / 2.0;
        const CVexGePoint2d centre = anycurves::point();
        const CVexGeVector2d way = anycurves::point().asVector();
        moved.rotateBy(angle, centre).translateBy(way);
        at.rotateBy(angle, centre).translateBy(way);
        RC_LOG() << name << '\n';
        RC_ASSERT(std::fabs(moved.length() - curve.length()) < kTol);
        RC_ASSERT(std::fabs(moved.distanceTo(at) - distance) < kSlack * curve.length());
    });
}

RC_GTEST_PROP(CurveProperty, PointAndParameterAnswerEachOther, ())
{
    anycurves::each([](const char* name, const auto& curve) {
        const double from = anycurves::within(0, 101);
        const CVexGePoint2d on = curve.pointAtParam(from);
        const double param = curve.paramAtPoint(on, kTol);
        RC_LOG() << name << " at " << on.x << ',' << on.y << '\n';
        RC_ASSERT(param >= 0.0 && param <= 1.0);
        const double radii = curve.curvatureAtParam(from) + curve.curvatureAtParam(param);
        RC_ASSERT(curve.pointAtParam(param).distanceTo(on) < kSlack * (radii + curve.length()));
    });
}

RC_GTEST_PROP(CurveProperty, ReverseTwiceIsTheIdentity, ())
{
    anycurves::each([](const char* name, const auto& curve) {
        if constexpr (requires(std::decay_t<decltype(curve)> c) { c.reverse(); }) {
            auto turned = curve;
            turned.reverse();
            RC_LOG() << name << '\n';
            RC_ASSERT(turned.pointAtParam(1.0).distanceTo(curve.pointAtParam(0.0)) < kTol);
            turned.reverse();
            RC_ASSERT(savedHex(turned) == savedHex(curve));
        }
    });
}

RC_GTEST_PROP(CurveProperty, CopiesAndAssignmentsHaveEveryField, ())
{
    anycurves::each([](const char* name, const auto& curve) {
        using Curve = std::decay_t<decltype(curve)>;
        const std::unique_ptr<CVexGeEntity2d> copy(curve.copy());
        RC_LOG() << name << '\n';
        RC_ASSERT(savedHex(*copy) == savedHex(curve));
        RC_ASSERT(copy->length() == curve.length()); // what is not saved, the chain, too
        Curve other = made<Curve>();
        static_cast<CVexGeEntity2d&>(other) = curve;
        RC_ASSERT(savedHex(other) == savedHex(curve));
        RC_ASSERT(other.length() == curve.length());
    });
}

RC_GTEST_PROP(CurveProperty, AHitLiesOnBothCurves, ())
{
    anycurves::each([](const char* name, const auto& a) {
        anycurves::each([&](const char* otherName, const auto& b) {
            bool known = true;
            for (const CVexGePoint2d& hit : hitsOf(a, b, CVexGeEntity2d::kExtendNone, known)) {
                RC_LOG() << name << " with " << otherName << " at " << hit.x << ',' << hit.y
                         << '\n';
                RC_ASSERT(a.isOn(hit, 2.0 * kTol) != 0);
                RC_ASSERT(b.isOn(hit, 2.0 * kTol) != 0);
            }
        });
    });
}

RC_GTEST_PROP(CurveProperty, BothCurvesOfAPairAnswerTheSame, ())
{
    const auto kind = static_cast<Kind>(*rc::gen::inRange(0, 4));
    anycurves::each([&](const char* name, const auto& a) {
        anycurves::each([&](const char* otherName, const auto& source) {
            using A = std::decay_t<decltype(a)>;
            using B = std::decay_t<decltype(source)>;
            B b = source;
            b.rotateBy(0.2345678, {0, 0}); // an odd angle, so that no segments are parallel
            bool known = true;
            const Points here = hitsOf(a, b, kind, known);
            const Points there = hitsOf(b, a, CVexGeEntity2d::exchanged(kind), known);
            RC_LOG() << name << " with " << otherName << ", kind " << kind << '\n';
            const bool bounded = kind == CVexGeEntity2d::kExtendNone;
            RC_ASSERT((!bounded && givesTwoAtMost<B, A>) || holdsAll(there, here));
            RC_ASSERT((!bounded && givesTwoAtMost<A, B>) || holdsAll(here, there));
        });
    });
}
