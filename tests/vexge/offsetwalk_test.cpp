#include "tests/vexge/offsetshapes.h"
#include "tests/vexge/offsetwalk.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <rapidcheck/gtest.h>

namespace {

using Chain = CVexGePolyline2d;

double number(int from, int to)
{
    return *rc::gen::inRange(from, to) / 100.0;
}

/// A walk with gentle or sharp turns, its segments straight or bent, of a length up to 6.
Chain walk(int count, double leastStep, double mostTurn, bool bent)
{
    std::vector<shapes::Corner> corners;
    double x = 0.0;
    double y = 0.0;
    double angle = 0.0;
    for (int i = 0; i < count; ++i) {
        corners.push_back({x, y, bent && i % 2 == 0 ? number(-60, 60) : 0.0});
        angle += mostTurn * number(-100, 100);
        const double step = std::max(leastStep, number(2, 600));
        x += step * std::cos(angle);
        y += step * std::sin(angle);
    }
    return shapes::chain(corners, *rc::gen::arbitrary<bool>());
}

Chain anySource()
{
    switch (*rc::gen::inRange(0, 7)) {
    case 0: return shapes::wavyCircle(*rc::gen::inRange(3, 70), 50, number(0, 1500), 6);
    case 1: return shapes::wavyCircle(*rc::gen::inRange(3, 40), 50, number(0, 900), 6, 0.3);
    case 2: return shapes::comb(*rc::gen::inRange(2, 6), number(100, 500), number(300, 900));
    case 3: return walk(*rc::gen::inRange(2, 40), 0.0, 1.5, false);
    case 4: return walk(*rc::gen::inRange(2, 60), 0.0, 0.3, false);
    case 5: return walk(*rc::gen::inRange(3, 80), 5.0, 0.5, false); // most keep clear of themselves
    default: return walk(*rc::gen::inRange(2, 25), 0.0, 0.8, true);
    }
}

bool sameBits(const Chain& a, const Chain& b)
{
    bool same =
        a.numVerts() == b.numVerts() && a.bulges() == b.bulges() && a.isClosed() == b.isClosed();
    for (std::size_t i = 0; same && i < a.numVerts(); ++i) {
        same = a.vertices()[i].x == b.vertices()[i].x && a.vertices()[i].y == b.vertices()[i].y;
    }
    return same;
}

bool sameBits(const Chain::PolylineList& a, const Chain::PolylineList& b)
{
    bool same = a.size() == b.size();
    for (std::size_t i = 0; same && i < a.size(); ++i) {
        same = sameBits(*a[i], *b[i]);
    }
    return same;
}

} // namespace

RC_GTEST_PROP(OffsetProperty, PiecesAreThoseOfThePlainWalk, ())
{
    const Chain source = anySource();
    const auto segment = *rc::gen::inRange(0U, source.numVerts());
    const CVexGePoint2d side = shapes::beside(source, segment, *rc::gen::arbitrary<bool>());
    const double dist = *rc::gen::arbitrary<bool>() ? number(20, 300) : number(100, 3000);
    Chain::PolylineList pieces;
    source.getOffset(side, dist, pieces, true);
    RC_ASSERT(sameBits(plainwalk::offsetPieces(source, side, dist, true), pieces));
}

TEST(OffsetWalkTest, DrawnCasesAreThoseOfThePlainWalk)
{
    for (const shapes::Case& given : shapes::allCases()) {
        Chain::PolylineList pieces;
        given.source.getOffset(given.side, given.dist, pieces, true);
        EXPECT_TRUE(
            sameBits(plainwalk::offsetPieces(given.source, given.side, given.dist, true), pieces))
            << given.name;
    }
}
