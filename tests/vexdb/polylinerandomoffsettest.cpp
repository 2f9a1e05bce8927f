// Random polylines offset to both sides, held against the kernel's own distance.

#include "tests/vexdb/polylineeditfixture.h"
#include "tests/vexdb/polylinetangents.h"
#include "tests/vexdb/randompolylines.h"

#include <list>

namespace {

constexpr std::uint64_t kSeed = 20261127;
constexpr double kOffsetTol = 0.02; // the clipping forgives a half of it
constexpr int kPlacesASegment = 4;
/// How many distances away a sharp corner lies of ways that turn by 1 radian at most, and of rings.
constexpr double kSharpCorner = 1.15;
constexpr double kSharpRingCorner = 2.0;

/// How far `point` lies from a segment, to the last digit: the kernel's own distance takes an arc
/// to be a thousandth of a radian longer than it is.
double distanceTo(const CVexGePolyline2d& chain, unsigned index, const CVexGePoint2d& point)
{
    const CVexGePoint2d& from = chain.vertices()[index];
    const CVexGePoint2d& to = chain.vertices()[(index + 1) % chain.numVerts()];
    const double toEnds = std::min(from.distanceTo(point), to.distanceTo(point));
    CVexGeCircArc2d arc;
    if (!chain.getArcSegAt(index, arc)) {
        const CVexGeVector2d way = to - from;
        const double share = (point - from).dotProduct(way) / way.lengthSqrd();
        return share < 0.0 || share > 1.0 ? toEnds : besideSegment(chain, index, point);
    }
    double turn = arc.center().angleTo(point) - arc.startAng();
    turn -= 2 * std::numbers::pi * std::floor(turn / (2 * std::numbers::pi));
    const double sweep = 4 * std::atan(std::fabs(chain.getBulgeAt(index)));
    return turn > sweep ? toEnds : besideSegment(chain, index, point);
}

double distanceTo(const CVexGePolyline2d& chain, const CVexGePoint2d& point)
{
    double least = HUGE_VAL;
    for (unsigned i = 0; i + (chain.isClosed() ? 0 : 1) < chain.numVerts(); ++i) {
        least = std::min(least, distanceTo(chain, i, point));
    }
    return least;
}

/// The pieces of one side.
using Pieces = std::vector<std::unique_ptr<CVexDbPolyline>>;

class PolylineOffsetPropertyTest : public PolylineEditTest {
protected:
    /// The bulge of a flat arc to either side. One moved to its inner side stays an arc: an arc
    /// that is as flat as 0.001 counts as its chord.
    double bend(double most) { return random.side() * random.within(0.005, most); }
    /// A way that goes on to the right and does not meet itself, of lines and flat arcs.
    void putWay(bool withArcs)
    {
        CVexGePolyline2d chain;
        CVexGePoint2d at(0, 0);
        for (int left = 3 + random.below(20); left > 0; --left) {
            chain.appendVertex(at, withArcs && random.below(2) == 0 ? bend(0.2) : 0.0);
            at += CVexGeVector2d(random.within(-0.5, 0.5)) * random.within(20, 60);
        }
        chain.setBulgeAt(chain.numVerts() - 1, 0.0);
        polyline->SetGeometry(chain);
    }
    /// A ring round the origin, counter-clockwise.
    void putRing(bool withArcs)
    {
        CVexGePolyline2d chain;
        const int count = 5 + random.below(20);
        for (int i = 0; i < count; ++i) {
            const CVexGeVector2d spoke(2 * std::numbers::pi * i / count);
            chain.appendVertex(CVexGePoint2d(0, 0) + spoke * random.within(90, 110),
                               withArcs && random.below(2) == 0 ? bend(0.15) : 0.0);
        }
        const double closing = chain.bulges().back();
        chain.setClosed(true);
        chain.setBulgeAt(chain.numVerts() - 1, closing);
        polyline->SetGeometry(chain);
    }
    [[nodiscard]] unsigned segments() const
    {
        return polyline->NumVerts() - (polyline->IsClosed() ? 0 : 1);
    }
    /// A place on segment `index` and the way to the left of the travel there.
    struct Spot {
        CVexGePoint2d point;
        CVexGeVector2d left;
    };
    [[nodiscard]] Spot spot(unsigned index, double share) const
    {
        const CVexGePolyline2d& chain = polyline->gePolyline();
        CVexGeLine2d line;
        CVexGeCircArc2d arc;
        if (chain.getLineSegAt(index, line)) {
            const CVexGeVector2d way = line.endPoint() - line.startPoint();
            return {line.startPoint() + way * share, line.direction().perpVector()};
        }
        chain.getArcSegAt(index, arc); // counter-clockwise, whichever way the travel goes
        const bool isClockwise = chain.getBulgeAt(index) < 0.0;
        const CVexGePoint2d at = arc.pointAtParam(isClockwise ? 1.0 - share : share);
        const CVexGeVector2d spoke = (at - arc.center()) / arc.radius();
        return {at, isClockwise ? spoke : spoke * -1.0};
    }
    /// Offsets to the left (1), to the right (-1), or from the left to both sides (0).
    Pieces offset(double distance, int side)
    {
        const auto picked = static_cast<unsigned>(random.below(static_cast<int>(segments())));
        const Spot middle = spot(picked, 0.5);
        std::list<CVexDbPolyline*> out;
        const int count = polyline->Offset(middle.point + middle.left * (side < 0 ? -1.0 : 1.0),
                                           out, distance, side == 0);
        Pieces pieces;
        for (CVexDbPolyline* piece : out) {
            pieces.emplace_back(piece);
        }
        EXPECT_EQ(static_cast<std::size_t>(count), pieces.size());
        return pieces;
    }
    /// No place of a piece is nearer to the source than the distance, and none lies farther than a
    /// sharp corner of these polylines reaches.
    void expectDistance(const Pieces& pieces, double distance, double reach)
    {
        for (const auto& piece : pieces) {
            const unsigned places = kPlacesASegment * piece->NumVerts();
            for (unsigned i = 0; i <= places; ++i) {
                const CVexGePoint2d at =
                    piece->gePolyline().pointAtParam(static_cast<double>(i) / places);
                const double gap = distanceTo(polyline->gePolyline(), at);
                EXPECT_GT(gap, distance - kOffsetTol);
                EXPECT_LT(gap, distance * reach + kOffsetTol);
            }
        }
    }
    /// What is as far from the source as it should, opposite to each place of it, is on a piece.
    void expectComplete(const Pieces& pieces, double distance, int side)
    {
        for (unsigned i = 0; i < segments(); ++i) {
            for (int k = 1; k < kPlacesASegment; ++k) {
                const Spot from = spot(i, static_cast<double>(k) / kPlacesASegment);
                const CVexGePoint2d at = from.point + from.left * (distance * side);
                if (distanceTo(polyline->gePolyline(), at) < distance - 1e-6) {
                    continue; // another part of the source is nearer: clipped away
                }
                ++opposite;
                const bool found = std::ranges::any_of(pieces, [&](const auto& piece) {
                    return distanceTo(piece->gePolyline(), at) < kOffsetTol;
                });
                EXPECT_TRUE(found) << "segment " << i << " place " << k << " side " << side;
            }
        }
    }

    RandomPolylines random{kSeed};
    int opposite = 0;
};

TEST_F(PolylineOffsetPropertyTest, StraightWaysHaveAWholeOffsetOnEitherSide)
{
    put({{0, 0}, {1, 0}});
    for (int turn = 0; turn < 150; ++turn) {
        SCOPED_TRACE("turn " + std::to_string(turn));
        putWay(false);
        const double distance = random.within(0.5, 4);
        for (const int side : {1, -1}) {
            const Pieces pieces = offset(distance, side);
            expectDistance(pieces, distance, kSharpCorner);
            expectComplete(pieces, distance, side);
        }
    }
    EXPECT_LT(5000, opposite);
}

TEST_F(PolylineOffsetPropertyTest, StraightRingsHaveAWholeOffsetInsideAndOutside)
{
    put({{0, 0}, {1, 0}});
    for (int turn = 0; turn < 150; ++turn) {
        SCOPED_TRACE("turn " + std::to_string(turn));
        putRing(false);
        const double distance = random.within(0.5, 4);
        for (const int side : {1, -1}) {
            const Pieces pieces = offset(distance, side);
            expectDistance(pieces, distance, kSharpRingCorner);
            expectComplete(pieces, distance, side);
        }
    }
    EXPECT_LT(5000, opposite);
}

TEST_F(PolylineOffsetPropertyTest, WaysAndRingsWithArcsHaveAWholeOffsetOnEitherSide)
{
    put({{0, 0}, {1, 0}});
    for (int turn = 0; turn < 150; ++turn) {
        SCOPED_TRACE("turn " + std::to_string(turn));
        turn % 2 == 0 ? putWay(true) : putRing(true);
        const double distance = random.within(0.5, 4);
        for (const int side : {1, -1}) {
            const Pieces pieces = offset(distance, side);
            expectDistance(pieces, distance, kSharpRingCorner);
            expectComplete(pieces, distance, side);
        }
    }
    EXPECT_LT(10000, opposite);
}

TEST_F(PolylineOffsetPropertyTest, BothSidesAreOneAndTheOther)
{
    put({{0, 0}, {1, 0}});
    for (int turn = 0; turn < 150; ++turn) {
        turn % 2 == 0 ? putWay(true) : putRing(true);
        const double distance = random.within(0.5, 4);
        double each = 0.0;
        for (const int side : {1, -1}) {
            for (const auto& piece : offset(distance, side)) {
                each += piece->length();
            }
        }
        double both = 0.0;
        for (const auto& piece : offset(distance, 0)) {
            both += piece->length();
        }
        EXPECT_NEAR(each, both, 1e-6 * each) << "turn " << turn;
    }
}

} // namespace
