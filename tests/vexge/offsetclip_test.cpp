#include "tests/vexge/offsetshapes.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

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
        PolylineList out;
        clipOffsetPoly(chain, std::vector<double>(chain.size()), other,
                       std::vector<double>(other.size()), dist, out);
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
