#include "tests/vexge/offsetshapes.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <cmath>
#include <numbers>
#include <vector>

// The clipping by itself, on raw chains laid out by hand: chains that run from one place of the
// source to another, which whole offsets seldom give.

namespace {

using PolylineList = CVexGePolyline2d::PolylineList;
using Points = std::vector<CVexGePoint2d>;

class Clipped : public CVexGePolyline2d {
public:
    explicit Clipped(const CVexGePolyline2d& source) : CVexGePolyline2d(source) {}
    [[nodiscard]] PolylineList pieces(const Points& chain, const Points& other, double dist) const
    {
        return pieces(chain, std::vector<double>(chain.size()), other, dist);
    }
    [[nodiscard]] PolylineList pieces(const Points& chain, const std::vector<double>& bulges,
                                      const Points& other, double dist) const
    {
        PolylineList out;
        clipOffsetPoly(chain, bulges, other, std::vector<double>(other.size()), dist, out);
        return out;
    }
};

/// Slopes of 45 degrees that cross the x axis at 5, 15 and 25.
const Clipped& slopes()
{
    static const Clipped source(shapes::chain({{0, -5}, {10, 5}, {20, -5}, {30, 5}}, false));
    return source;
}

const Points kCutAtFifteen{{15, -1}, {15, 1}};
const Points kFarAway{{50, 90}, {60, 90}};

/// What is left of a chain above the top of a post that ends at (5,0), at distance 2.
PolylineList leftAbovePost(const Points& chain)
{
    return Clipped(shapes::chain({{5, 0}, {5, -10}}, false)).pieces(chain, kFarAway, 2.0);
}

} // namespace

TEST(OffsetClipTest, PieceFromContactToContactIsTrimmedAtBothEnds)
{
    // The first piece runs from 5 to 15, its ends on the source. Circles of 3 about them leave 8 to
    // 12, of which the near approaches to the slopes leave what is 3 off them, less 0.002: the
    // distance at x is (x - 5) / sqrt(2), and 3 at 9.243.
    const PolylineList pieces = slopes().pieces({{5, 0}, {25, 0}}, kCutAtFifteen, 3.0);
    ASSERT_EQ(2U, pieces.size());
    EXPECT_EQ(2U, pieces[0]->numVerts());
    EXPECT_NEAR(9.241, pieces[0]->vertices()[0].x, 0.003);
    EXPECT_NEAR(10.759, pieces[0]->vertices()[1].x, 0.003);
    EXPECT_NEAR(19.241, pieces[1]->vertices()[0].x, 0.003);
}

TEST(OffsetClipTest, PieceBetweenContactsNearerThanTheDistanceIsGivenUp)
{
    // Circles of 6 about 5 and 15 overlap: nothing is left between them.
    EXPECT_TRUE(slopes().pieces({{5, 0}, {25, 0}}, kCutAtFifteen, 6.0).empty());
}

TEST(OffsetClipTest, TouchingPieceWithAVertexOffTheSourceIsGivenUp)
{
    // The second piece ends at 22, beside the source, and touches it at 15.
    const PolylineList pieces = slopes().pieces({{5, 0}, {22, 0}}, kCutAtFifteen, 3.0);
    ASSERT_EQ(1U, pieces.size());
    EXPECT_NEAR(9.241, pieces[0]->vertices()[0].x, 0.003);
}

TEST(OffsetClipTest, ContactIsNotLookedForWithoutACut)
{
    // Without a cut the chain goes straight to the near approaches, which take the same off it.
    const PolylineList pieces = slopes().pieces({{5, 0}, {15, 0}}, {{15, 1}, {15, 2}}, 3.0);
    ASSERT_EQ(1U, pieces.size());
    EXPECT_NEAR(9.241, pieces[0]->vertices()[0].x, 0.003);
    EXPECT_NEAR(10.759, pieces[0]->vertices()[1].x, 0.003);
}

TEST(OffsetClipTest, PieceMayComeNearerByTwoThousandths)
{
    const Clipped source(shapes::chain({{0, 0}, {10, 0}}, false));
    const PolylineList kept = source.pieces({{0, 1.9981}, {10, 1.9981}}, kFarAway, 2.0);
    ASSERT_EQ(1U, kept.size());
    EXPECT_EQ(10.0, kept[0]->length());
    EXPECT_TRUE(source.pieces({{0, 1.9979}, {10, 1.9979}}, kFarAway, 2.0).empty());
}

TEST(OffsetClipTest, NearApproachLeavesTheTailAndThenTheHead)
{
    // The circle of 2 about (5,0) meets y = 1 at 5 - sqrt(3) and 5 + sqrt(3). The head is a new
    // candidate behind the one in hand.
    const PolylineList pieces = leftAbovePost({{0, 1}, {10, 1}});
    ASSERT_EQ(2U, pieces.size());
    EXPECT_NEAR(5.0 + std::numbers::sqrt3, pieces[0]->vertices().front().x, 1e-9);
    EXPECT_EQ(10.0, pieces[0]->vertices().back().x);
    EXPECT_EQ(0.0, pieces[1]->vertices().front().x);
    EXPECT_NEAR(5.0 - std::numbers::sqrt3, pieces[1]->vertices().back().x, 1e-9);
}

TEST(OffsetClipTest, HeadOfTwoThousandthsOrLessIsGivenUp)
{
    // The cut lies at 3.26795.
    EXPECT_TRUE(leftAbovePost({{3.2664, 1}, {3.7664, 1}}).empty());
    const PolylineList longer = leftAbovePost({{3.2645, 1}, {3.7645, 1}});
    ASSERT_EQ(1U, longer.size());
    EXPECT_NEAR(0.00345, longer[0]->length(), 1e-5);
}

TEST(OffsetClipTest, CutSharesTheSweepOfAnArcInTheDirectionOfTravel)
{
    // A clockwise half circle about (5,0) from (0,0), cut an eighth of a turn after its start.
    const Clipped source(shapes::chain({{0, 50}, {1, 50}}, false));
    const double x = 5.0 - 5.0 * std::cos(std::numbers::pi / 4.0);
    const PolylineList pieces =
        source.pieces({{0, 0}, {10, 0}}, {-1.0, 0.0}, {{x, 3}, {x, 4}}, 2.0);
    ASSERT_EQ(2U, pieces.size());
    EXPECT_NEAR(-std::tan(std::numbers::pi / 16.0), pieces[0]->getBulgeAt(0), 1e-9);
    EXPECT_EQ(0.0, pieces[0]->getBulgeAt(1));
    EXPECT_NEAR(x, pieces[1]->vertices().front().x, 1e-9);
    EXPECT_NEAR(-std::tan(3.0 * std::numbers::pi / 16.0), pieces[1]->getBulgeAt(0), 1e-9);
}
