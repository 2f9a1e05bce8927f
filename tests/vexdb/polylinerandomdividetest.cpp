// Random segments divided: the pieces are equal, and the curve stays where it was.

#include "tests/vexdb/polylineeditfixture.h"
#include "tests/vexdb/randompolylines.h"

namespace {

constexpr std::uint64_t kSeed = 20261123;

class PolylineDividePropertyTest : public PolylineEditTest {
protected:
    /// A random polyline, and one of its segments divided into 2 to 9 pieces.
    void divideAny()
    {
        whole = random.chain();
        polyline->SetGeometry(whole);
        const int segments = static_cast<int>(whole.numVerts()) - (whole.isClosed() ? 0 : 1);
        const int picked = random.below(segments);
        segment = static_cast<unsigned>(picked);
        pieces = static_cast<unsigned>(2 + random.below(8));
        // The closing segment has two numbers.
        const bool asCount = whole.isClosed() && picked + 1 == segments && random.below(2) == 0;
        polyline->DivideSegment(static_cast<int>(pieces), asCount ? picked + 1 : picked,
                                random.below(2) == 0);
    }
    [[nodiscard]] const CVexGePolyline2d& now() const { return polyline->gePolyline(); }

    RandomPolylines random{kSeed};
    CVexGePolyline2d whole;
    unsigned segment = 0;
    unsigned pieces = 0;
};

TEST_F(PolylineDividePropertyTest, PiecesAreEqualAndLieOnTheSegment)
{
    put({{0, 0}, {1, 0}});
    for (int turn = 0; turn < 600; ++turn) {
        divideAny();
        SCOPED_TRACE("turn " + std::to_string(turn));
        ASSERT_EQ(whole.numVerts() + pieces - 1, now().numVerts());
        const double each = lengthOfSegment(whole, segment) / pieces;
        // A flat piece counts as straight: its chord is what the kernel measures.
        const double tol = std::fabs(now().getBulgeAt(segment)) > 0.002 ? 1e-6 : 1e-4 * each;
        for (unsigned i = segment; i < segment + pieces; ++i) {
            EXPECT_NEAR(each, lengthOfSegment(now(), i), tol);
            EXPECT_LT(besideSegment(whole, segment, now().vertices()[i]), 1e-6);
            EXPECT_LT(besideSegment(whole, segment, middleOfSegment(now(), i)), 0.05);
            EXPECT_EQ(now().getBulgeAt(segment), now().getBulgeAt(i));
        }
    }
}

TEST_F(PolylineDividePropertyTest, PiecesOfAnArcKeepItsCircleAndItsTurn)
{
    put({{0, 0}, {1, 0}});
    int arcs = 0;
    for (int turn = 0; turn < 900; ++turn) {
        divideAny();
        CVexGeCircArc2d arc;
        CVexGeCircArc2d piece;
        if (!whole.getArcSegAt(segment, arc) || std::fabs(now().getBulgeAt(segment)) < 0.01) {
            continue;
        }
        ++arcs;
        EXPECT_EQ(whole.getBulgeAt(segment) < 0, now().getBulgeAt(segment) < 0);
        for (unsigned i = segment; i < segment + pieces; ++i) {
            ASSERT_TRUE(now().getArcSegAt(i, piece));
            EXPECT_NEAR(arc.radius(), piece.radius(), 1e-6) << "turn " << turn;
            EXPECT_LT(arc.center().distanceTo(piece.center()), 1e-6) << "turn " << turn;
        }
    }
    EXPECT_LT(250, arcs);
}

TEST_F(PolylineDividePropertyTest, WhatIsBesideTheSegmentStays)
{
    put({{0, 0}, {1, 0}});
    for (int turn = 0; turn < 600; ++turn) {
        divideAny();
        for (unsigned i = 0; i < whole.numVerts(); ++i) {
            const unsigned at = i <= segment ? i : i + pieces - 1;
            EXPECT_TRUE(whole.vertices()[i].isEqualTo(now().vertices()[at], 0.0));
            EXPECT_TRUE(i == segment || whole.getBulgeAt(i) == now().getBulgeAt(at));
        }
        EXPECT_EQ(whole.isClosed(), now().isClosed());
    }
}

} // namespace
