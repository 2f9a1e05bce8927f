#include "tests/vexge/offsetshapes.h"
#include "tests/vexge/polylinewalk.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <cmath>
#include <cstddef>
#include <rapidcheck/gtest.h>
#include <utility>

namespace {

using Kind = CVexGeEntity2d::Intersect;

double coordinate()
{
    return *rc::gen::inRange(-1000, 1001) / 10.0;
}

CVexGePoint2d point()
{
    const double x = coordinate();
    return {x, coordinate()};
}

double bulge()
{
    return *rc::gen::element(0.0, 0.0, 0.25, -0.25, 1.0, -1.0, 3.0, -0.6);
}

CVexGePolyline2d chainOf(int count)
{
    CVexGePolyline2d chain;
    for (int i = 0; i < count; ++i) {
        const CVexGePoint2d at = point();
        chain.appendVertex(at, bulge());
    }
    if (*rc::gen::arbitrary<bool>()) {
        const double last = chain.getBulgeAt(chain.numVerts() - 1);
        chain.setClosed(true);
        chain.setBulgeAt(chain.numVerts() - 1, last);
    }
    return chain;
}

CVexGePolyline2d anyChain()
{
    return chainOf(*rc::gen::inRange(2, 90));
}

bool sameBits(const plainwalk::Points& a, const plainwalk::Points& b)
{
    bool same = a.size() == b.size();
    for (std::size_t i = 0; same && i < a.size(); ++i) {
        same = a[i].x == b[i].x && a[i].y == b[i].y;
    }
    return same;
}

} // namespace

RC_GTEST_PROP(PolylineProperty, HitsAreThoseOfThePlainWalk, ())
{
    const CVexGePolyline2d a = anyChain(), b = anyChain();
    const auto kind = static_cast<Kind>(*rc::gen::inRange(0, 4));
    plainwalk::Points found;
    int count = 0;
    a.intersectWith(b, count, found, kind);
    RC_ASSERT(sameBits(plainwalk::hits(a, b, kind, kGeEpsilon), found));
}

RC_GTEST_PROP(PolylineProperty, HitsOfAChainOfManyWithItselfAreThoseOfThePlainWalk, ())
{
    const CVexGePolyline2d a =
        shapes::wavyCircle(*rc::gen::inRange(60, 400), 50, *rc::gen::inRange(0, 30),
                           *rc::gen::inRange(1, 40), *rc::gen::element(0.0, 0.3, -0.8, 1.7));
    plainwalk::Points found;
    int count = 0;
    a.intersectWith(a, count, found, CVexGeEntity2d::kExtendNone);
    RC_ASSERT(sameBits(plainwalk::hits(a, a, CVexGeEntity2d::kExtendNone, kGeEpsilon), found));
}

RC_GTEST_PROP(PolylineProperty, HitsWithALineAndClosestPointAreThoseOfThePlainWalk, ())
{
    const CVexGePolyline2d chain = anyChain();
    const CVexGePoint2d start = *rc::gen::arbitrary<bool>() ? chain.vertices()[0] : point();
    const CVexGeLine2d line(start, point());
    const auto kind = static_cast<Kind>(*rc::gen::inRange(0, 4));
    plainwalk::Points found;
    int count = 0;
    chain.intersectWith(line, count, found, kind);
    RC_ASSERT(sameBits(plainwalk::hitsOfCurve(chain, line, kind, kGeEpsilon), found));
    int segment = 0;
    int plainSegment = 0;
    const CVexGePoint2d at = chain.closestPointTo(start, segment);
    const CVexGePoint2d plainAt = plainwalk::closest(chain, start, plainSegment);
    RC_ASSERT(sameBits({plainAt}, {at}) && plainSegment == segment);
}

RC_GTEST_PROP(PolylineProperty, AHitLiesOnBothChains, ())
{
    const CVexGePolyline2d a = anyChain(), b = anyChain();
    plainwalk::Points found;
    int count = 0;
    a.intersectWith(b, count, found, CVexGeEntity2d::kExtendNone);
    for (const CVexGePoint2d& hit : found) {
        RC_ASSERT(a.isOn(hit, 2 * kGeEpsilon) != 0 && b.isOn(hit, 2 * kGeEpsilon) != 0);
    }
}

RC_GTEST_PROP(PolylineProperty, ReverseTwiceIsTheIdentity, ())
{
    const CVexGePolyline2d chain = anyChain();
    CVexGePolyline2d turned = chain;
    turned.reverse();
    turned.reverse();
    RC_ASSERT(turned == chain);
}

RC_GTEST_PROP(PolylineProperty, RigidEditsKeepLengthsAndDistances, ())
{
    // Straight segments: an arc forgives 0.001 radians at its ends, but not across angle zero, so
    // its distances may change that much when it turns.
    CVexGePolyline2d chain = anyChain();
    const bool straight = *rc::gen::arbitrary<bool>();
    for (unsigned i = 0; straight && i < chain.numVerts(); ++i) {
        chain.setBulgeAt(i, 0.0);
    }
    RC_PRE(chain.segType(0) == CVexGePolyline2d::kLine ||
           chain.segType(0) == CVexGePolyline2d::kArc);
    CVexGePolyline2d moved = chain;
    CVexGePoint2d at = point();
    const double distance = chain.distanceTo(at);
    const double angle = *rc::gen::inRange(-700, 700) / 100.0;
    const CVexGePoint2d centre = point();
    moved.rotateBy(angle, centre).translateBy({3, -4});
    at.rotateBy(angle, centre).translateBy({3, -4});
    RC_ASSERT(std::fabs(moved.length() - chain.length()) < 1e-7);
    RC_ASSERT(!straight || std::fabs(moved.distanceTo(at) - distance) < 1e-7);
}

RC_GTEST_PROP(PolylineProperty, MirrorKeepsLengths, ())
{
    const CVexGePolyline2d chain = anyChain();
    CVexGePolyline2d moved = chain;
    const CVexGePoint2d start = point();
    moved.mirror(CVexGeLine2d(start, start + CVexGeVector2d(5, *rc::gen::inRange(-9, 9))));
    RC_ASSERT(std::fabs(moved.length() - chain.length()) < 1e-7);
}

RC_GTEST_PROP(PolylineProperty, PointAndParameterAnswerEachOther, ())
{
    // A spiral of arcs and lines that does not meet itself: a parameter is the first place.
    CVexGePolyline2d chain;
    const int count = *rc::gen::inRange(3, 60);
    for (int i = 0; i < count; ++i) {
        const double radius = 10.0 + 2.0 * i;
        chain.appendVertex({radius * std::cos(i), radius * std::sin(i)}, i % 3 == 0 ? 0.2 : 0.0);
    }
    const double param = *rc::gen::inRange(0, 998) / 1000.0;
    const CVexGePoint2d at = chain.pointAtParam(param);
    const double back = chain.paramAtPoint(at, kGeEpsilon);
    // An arc takes a point within 0.001 radians of its start for the start.
    RC_ASSERT(chain.pointAtParam(back).distanceTo(at) < 0.001 * (10.0 + 2.0 * count));
    RC_ASSERT(back >= 0.0);
}

RC_GTEST_PROP(ArcProperty, RigidEditsKeepLengthsAndDistances, ())
{
    CVexGeCircArc2d arc(point(), 1.0 + std::fabs(coordinate()));
    const double start = *rc::gen::inRange(0, 600) / 100.0;
    arc.setAngles(start, start + *rc::gen::inRange(1, 28) / 100.0);
    CVexGeCircArc2d moved = arc;
    CVexGePoint2d at = point();
    const double distance = arc.distanceTo(at);
    const CVexGePoint2d centre = point();
    moved.rotateBy(1.25, centre).translateBy({3, -4});
    at.rotateBy(1.25, centre).translateBy({3, -4});
    RC_ASSERT(std::fabs(moved.length() - arc.length()) < 1e-8);
    RC_ASSERT(std::fabs(moved.distanceTo(at) - distance) < 0.0011 * arc.radius());
}

RC_GTEST_PROP(ArcProperty, PointAndParameterAnswerEachOther, ())
{
    const CVexGePoint2d first = point();
    const CVexGeCircArc2d arc(first, first + CVexGeVector2d(7, coordinate()), 0.25, true);
    const CVexGePoint2d at = arc.pointAtParam(*rc::gen::inRange(0, 1001) / 1000.0);
    const double param = arc.paramAtPoint(at, kGeEpsilon);
    RC_ASSERT(param >= 0.0);
    RC_ASSERT(arc.pointAtParam(param).distanceTo(at) < 0.0011 * arc.radius());
}

RC_GTEST_PROP(ArcProperty, AHitLiesOnBothCurves, ())
{
    const CVexGePoint2d first = point();
    const CVexGeCircArc2d arc(first, point(), 0.7, true);
    const CVexGeLine2d line(point(), point());
    int count = 0;
    CVexGePoint2d hits[2];
    arc.intersectWith(line, count, hits[0], hits[1], CVexGeEntity2d::kExtendNone, kGeEpsilon);
    for (int i = 0; i < count; ++i) {
        RC_ASSERT(arc.isOn(hits[i], kGeEpsilon) != 0 && line.isOn(hits[i], kGeEpsilon) != 0);
    }
}
