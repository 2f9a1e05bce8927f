#include "tests/vexge/geasserts.h"
#include "tests/vexge/offsetshapes.h"
#include "tests/vexge/offsetsvg.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <sstream>
#include <string>

namespace {

using shapes::beside;
using shapes::chain;
using shapes::rectangle;
using PolylineList = CVexGePolyline2d::PolylineList;

/// The steps of an offset one by one.
class Steps : public CVexGePolyline2d {
public:
    explicit Steps(const CVexGePolyline2d& source) : CVexGePolyline2d(source) {}
    [[nodiscard]] CVexGePolyline2d repaired(double dist, int side) const
    {
        std::vector<CVexGePoint2d> points = vertices();
        std::vector<double> bent = bulges();
        checkLocalSelfIntersect(points, bent, dist, side);
        return made(points, bent);
    }
    [[nodiscard]] CVexGePolyline2d rawChain(double dist, int side) const
    {
        std::vector<CVexGePoint2d> points = vertices();
        std::vector<double> bent = bulges();
        getOffsetPoly(points, bent, dist, side);
        return made(points, bent);
    }

private:
    static CVexGePolyline2d made(const std::vector<CVexGePoint2d>& points,
                                 const std::vector<double>& bent)
    {
        CVexGePolyline2d result;
        result.set(points, bent);
        return result;
    }
};

/// Vertices and bulges, rounded to three decimals.
std::string text(const CVexGePolyline2d& polyline)
{
    std::ostringstream out;
    const auto rounded = [](double value) { return std::round(value * 1000.0) / 1000.0 + 0.0; };
    for (unsigned i = 0; i < polyline.numVerts(); ++i) {
        const CVexGePoint2d& at = polyline.vertices()[i];
        out << (i > 0 ? " " : "") << rounded(at.x) << ',' << rounded(at.y);
        if (const double bulge = rounded(polyline.getBulgeAt(i)); bulge != 0.0) {
            out << ':' << bulge;
        }
    }
    return out.str();
}

std::string offsetText(CVexGePolyline2d source, const CVexGePoint2d& side, double dist)
{
    return source.offset(side, dist) ? text(source) : "none";
}

std::string rawText(const CVexGePolyline2d& source, double dist, int side)
{
    return text(Steps(source).rawChain(dist, side));
}

const double kQuarter = std::tan(std::numbers::pi / 8.0);

} // namespace

TEST(OffsetTest, RectangleOutwardHasFourSharpCorners)
{
    EXPECT_EQ("-2,-2 22,-2 22,12 -2,12 -2,-2", offsetText(rectangle(20, 10), {10, -3}, 2));
    CVexGePolyline2d clockwise = rectangle(20, 10);
    clockwise.reverse();
    EXPECT_EQ("-2,12 22,12 22,-2 -2,-2 -2,12", offsetText(clockwise, {10, -3}, 2));
}

TEST(OffsetTest, RectangleInwardShrinksUntilNothingIsLeft)
{
    EXPECT_EQ("2,2 18,2 18,8 2,8 2,2", offsetText(rectangle(20, 10), {10, 3}, 2));
    CVexGePolyline2d tooDeep = rectangle(20, 10);
    EXPECT_FALSE(tooDeep.offset({10, 3}, 6));
    EXPECT_EQ("0,0 20,0 20,10 0,10", text(tooDeep)); // unchanged
}

// The side alone chooses the direction; commands pass on what was typed.
TEST(OffsetTest, NegativeDistanceCountsByItsSize)
{
    EXPECT_EQ("-2,-2 22,-2 22,12 -2,12 -2,-2", offsetText(rectangle(20, 10), {10, -3}, -2));
    EXPECT_EQ("2,2 18,2 18,8 2,8 2,2", offsetText(rectangle(20, 10), {10, 3}, -2));
}

TEST(OffsetTest, ClosedFlagOfTheSourceIsRestored)
{
    CVexGePolyline2d flagged = rectangle(20, 10);
    CVexGePolyline2d returning = chain({{0, 0}, {20, 0}, {20, 10}, {0, 10}, {0, 0.004}}, false);
    ASSERT_TRUE(flagged.offset({10, 3}, 2) && returning.offset({10, 3}, 2));
    EXPECT_TRUE(flagged.isClosed());
    EXPECT_FALSE(returning.isClosed());
    // Ends within 0.005 make a loop: the corner at the start is resolved like any other.
    EXPECT_TRUE(returning.closed());
    EXPECT_EQ("2,2 18,2 18,8 2,8 2,2", text(returning));
}

TEST(OffsetTest, EndsWithinFiveThousandthsMakeALoop)
{
    const auto returning = [](double gap) {
        return chain({{0, 0}, {20, 0}, {20, 10}, {0, 10}, {0, gap}}, false);
    };
    EXPECT_EQ("2,2 18,2 18,8 2,8 2,2", rawText(returning(0.004), 2, 1));
    EXPECT_EQ("0,2 18,2 18,8 2,8 2,0.006", rawText(returning(0.006), 2, 1));
}

TEST(OffsetTest, DirectionIsLeftOrRightOfTheNearestSegment)
{
    EXPECT_EQ(1, rectangle(20, 10).getoffsetDirection({10, 3}, 2));
    EXPECT_EQ(-1, rectangle(20, 10).getoffsetDirection({10, -3}, 2));
    const CVexGePolyline2d turning = chain({{0, 0, 1.0}, {0, 10, -1.0}, {0, 20}}, false);
    EXPECT_EQ(1, turning.getoffsetDirection({4, 5}, 1)); // within the counter-clockwise half
    EXPECT_EQ(-1, turning.getoffsetDirection({6, 5}, 1));
    EXPECT_EQ(-1, turning.getoffsetDirection({-4, 15}, 1)); // within the clockwise half
    EXPECT_EQ(1, turning.getoffsetDirection({-6, 15}, 1));
    EXPECT_EQ(-1, CVexGePolyline2d({{1, 1}}).getoffsetDirection({5, 5}, 1));
}

// The winding is taken from the foot on the carrier to the end of the segment: a point beside the
// carrier beyond that end counts for the other side. Sides are picked beside the segments.
TEST(OffsetTest, DirectionBeyondTheEndOfTheNearestSegmentIsTheOther)
{
    const CVexGePolyline2d line({{0, 0}, {10, 0}});
    EXPECT_EQ(1, line.getoffsetDirection({-2, 3}, 1));
    EXPECT_EQ(1, line.getoffsetDirection({8, 3}, 1));
    EXPECT_EQ(-1, line.getoffsetDirection({12, 3}, 1));
    EXPECT_EQ(1, line.getoffsetDirection({12, -3}, 1));
}

TEST(OffsetTest, VerticesNearerThanATwentiethAreDroppedBefore)
{
    const Steps near(chain({{0, 0}, {5, 0}, {5.04, 0}, {10, 0}}, false));
    EXPECT_EQ("0,0 5,0 10,0", text(near.repaired(1, 1)));
    const Steps apart(chain({{0, 0}, {5, 0}, {5.06, 0}, {10, 0}}, false));
    EXPECT_EQ("0,0 5,0 5.06,0 10,0", text(apart.repaired(1, 1)));
    const Steps creeping(chain({{0, 0}, {0.04, 0}, {0.08, 0}, {10, 0}}, false));
    EXPECT_EQ("0,0 0.08,0 10,0", text(creeping.repaired(1, 1)));
}

TEST(OffsetTest, ArcsTooTightForTheDistanceBecomeTheirChords)
{
    // Radius 5; both arcs, not only the first, and the closing one too.
    const Steps both(chain({{0, 0, 1.0}, {0, 10}, {-20, 10, 1.0}, {-20, 0}}, false));
    EXPECT_EQ("0,0 0,10 -20,10 -20,0", text(both.repaired(6, 1)));
    EXPECT_EQ("0,0 0,10 -20,10 -20,0", text(both.repaired(5, 1)));
    EXPECT_EQ("0,0:1 0,10 -20,10:1 -20,0", text(both.repaired(6, -1))); // away from the centre
    const Steps closing(chain({{0, 0}, {20, 0, 1.0}, {20, 10}, {0, 10, 1.0}}, true));
    EXPECT_EQ("0,0 20,0 20,10 0,10", text(closing.repaired(6, 1)));
    const Steps clockwise(chain({{0, 0, -1.0}, {0, 10}}, false));
    EXPECT_EQ("0,0 0,10", text(clockwise.repaired(6, -1)));
}

TEST(OffsetTest, ArcThatItsNextSegmentCrossesIsSplitBehindTheCrossing)
{
    // Three quarters of a circle about (0,0) from (0,-1) to (-1,0), then a line that crosses it at
    // (1,0), a third along. The new vertex lies at two thirds, (0,1).
    const double threeQuarters = std::tan(3.0 * std::numbers::pi / 8.0);
    const Steps hook(chain({{0, -1, threeQuarters}, {-1, 0}, {5, 0}}, false));
    EXPECT_EQ("0,-1:1 0,1:0.414 -1,0 5,0", text(hook.repaired(0.1, 1)));
    const Steps turned(chain({{0, 1, -threeQuarters}, {-1, 0}, {5, 0}}, false));
    EXPECT_EQ("0,1:-1 0,-1:-0.414 -1,0 5,0", text(turned.repaired(0.1, 1)));
}

TEST(OffsetTest, LineThatItsNextArcCrossesIsSplitBehindTheCrossing)
{
    // The circle about (10,-3) through (8,0) meets the line a second time at (12,0), beyond it; the
    // one about (6,3) at (4,0): half of the line, so the new vertex lies at three quarters.
    const CVexGeCircArc2d back({6, 3}, std::sqrt(13.0));
    const double sweep = 2.0 * std::numbers::pi - 2.0 * std::atan2(2.0, 3.0) - 0.2;
    const double start = back.center().angleTo({8, 0});
    CVexGePoint2d end = back.center() + CVexGeVector2d(start + sweep + 0.4) * back.radius();
    const Steps looped(
        chain({{0, 0}, {8, 0, std::tan((sweep + 0.4) / 4.0)}, {end.x, end.y}}, false));
    const CVexGePolyline2d repaired = looped.repaired(0.1, 1);
    ASSERT_EQ(4U, repaired.numVerts());
    EXPECT_POINT_NEAR(6, 0, repaired.vertices()[1], 1e-6);
}

TEST(OffsetTest, NeighbouringArcsThatOnlyJoinAreNotSplit)
{
    const Steps wave(chain({{0, 0, 0.5}, {10, 0, -0.5}, {20, 0, 0.5}, {30, 0}}, false));
    EXPECT_EQ(4U, wave.repaired(0.1, 1).numVerts());
}

TEST(OffsetTest, NeighbouringArcsThatCrossAgainAreSplit)
{
    // The second arc comes back over the first one, about half-way along it.
    const Steps knot(chain({{0, 0, 1.0}, {20, 0, 0.9}, {8, -16}}, false));
    EXPECT_EQ(4U, knot.repaired(0.1, 1).numVerts());
}

TEST(OffsetTest, RawCornerOfTwoLinesIsSharpOutsideAndCutInside)
{
    const CVexGePolyline2d corner({{0, 0}, {10, 0}, {10, 10}});
    EXPECT_EQ("0,-2 12,-2 12,10", rawText(corner, 2, -1));
    EXPECT_EQ("0,2 8,2 8,10", rawText(corner, 2, 1));
}

TEST(OffsetTest, RawCornerOfLinesInOneDirectionIsTheEndOfTheFirst)
{
    EXPECT_EQ("0,2 5,2 10,2", rawText(CVexGePolyline2d({{0, 0}, {5, 0}, {10, 0}}), 2, 1));
}

TEST(OffsetTest, RawCornerOfLinesThatTurnBackIsLeftOut)
{
    EXPECT_EQ("0,2 4,-2", rawText(CVexGePolyline2d({{0, 0}, {10, 0}, {4, 0}}), 2, 1));
}

TEST(OffsetTest, RawCornerWithAShortSegmentKeepsBothEnds)
{
    // The step of 1 is shorter than the distance: its first crossing lies beyond its end.
    EXPECT_EQ("0,2 5,2 3,0 3,3 10,3",
              rawText(CVexGePolyline2d({{0, 0}, {5, 0}, {5, 1}, {10, 1}}), 2, 1));
}

TEST(OffsetTest, TangentJointOfLineAndArcIsNotTrimmed)
{
    const CVexGePolyline2d bend = chain({{0, 0}, {6, 0, kQuarter}, {12, 6}, {12, 12}}, false);
    EXPECT_EQ("0,2 6,2:0.414 10,6 10,12", rawText(bend, 2, 1));
    EXPECT_EQ("0,-2 6,-2:0.414 14,6 14,12", rawText(bend, 2, -1));
}

TEST(OffsetTest, RawCornersOfLineAndArcThatCrossAreTrimmedToTheCrossing)
{
    // A half circle of radius 5 about (5,0) over a level line: inside, radius 4 and height 1.
    const CVexGePolyline2d dome = chain({{-5, 0}, {0, 0, -1.0}, {10, 0}, {15, 0}}, false);
    const double x = std::sqrt(35.0);
    const std::string above = rawText(dome, 1, 1);
    std::ostringstream expected;
    const double sweep = std::numbers::pi - 2.0 * std::asin(1.0 / 6.0);
    const auto rounded = [](double value) { return std::round(value * 1000.0) / 1000.0; };
    expected << "-5,1 " << rounded(5 - x) << ",1:" << rounded(-std::tan(sweep / 4.0)) << ' '
             << rounded(5 + x) << ",1 15,1";
    EXPECT_EQ(expected.str(), above);
}

TEST(OffsetTest, RawCornersOfLineAndArcThatMissEachOtherAreFilletsAboutTheVertex)
{
    // The circle, drawn in to radius 1, stays below the line moved up by 4: a corner arc of the
    // distance about (10,0), from above it to its left, joins them.
    const CVexGePolyline2d hook = chain({{0, 0}, {10, 0, 1.0}, {0, 0.5}}, false);
    const CVexGePolyline2d raw = Steps(hook).rawChain(4, 1);
    ASSERT_EQ(4U, raw.numVerts());
    EXPECT_POINT_NEAR(10, 4, raw.vertices()[1], 1e-9);
    EXPECT_NEAR(4.0, CVexGePoint2d(10, 0).distanceTo(raw.vertices()[2]), 1e-9);
    EXPECT_NEAR(1.0, raw.getBulgeAt(2), 1e-9);
}

TEST(OffsetTest, RawCornerOfArcsIsTrimmedOrFilleted)
{
    const CVexGePolyline2d scallops = chain({{0, 0, -0.5}, {10, 0, -0.5}, {20, 0}}, false);
    const CVexGePolyline2d outside = Steps(scallops).rawChain(1, 1);
    ASSERT_EQ(3U, outside.numVerts());
    EXPECT_NEAR(10.0, outside.vertices()[1].x, 1e-9);
    EXPECT_GT(outside.vertices()[1].y, 0.5);
    // On the other side the arcs part: their circles, of radius 5.25, cross beyond both.
    const CVexGePolyline2d inside = Steps(scallops).rawChain(1, -1);
    ASSERT_EQ(3U, inside.numVerts());
    EXPECT_LT(inside.vertices()[1].y, 0.0);
}

TEST(OffsetTest, RawCornerOfArcsThatDoNotReachEachOtherIsAFillet)
{
    // Two half circles of radius 2, drawn in to 1: their circles are 2 apart.
    const CVexGePolyline2d humps = chain({{0, 0, -1.0}, {4, 0, -1.0}, {8, 0}}, false);
    EXPECT_EQ("1,0:-1 3,0:1 5,0:-1 7,0", rawText(humps, 1, -1));
}

// The turn of such a fillet is read off a third point on the next arc. One that bends back by more
// than the corner turns has that point on the wrong side: the fillet keeps to the short way there,
// for the long way round crosses the source and the clipping would drop the whole chain.
TEST(OffsetTest, FilletKeepsToTheShortWayWhereTheNextArcBendsBack)
{
    // The first half circle, of radius 1500, comes to the origin from below; the second leaves it
    // 0.000015 radians to the right and bends left. Moved by 1000 to the left their circles count
    // as touching, so that a fillet joins the two ends: too small a turn for a bulge.
    const double turn = 0.000015;
    const double across = std::cos(turn);
    const double up = std::sin(turn);
    const CVexGePolyline2d bends =
        chain({{3000, 0, -1.0}, {0, 0, 1.0}, {-3000 * across, 3000 * up}}, false);
    const CVexGePolyline2d raw = Steps(bends).rawChain(1000, 1);
    ASSERT_EQ(4U, raw.numVerts());
    EXPECT_POINT_NEAR(-1000, 0, raw.vertices()[1], 1e-9);
    EXPECT_EQ(0.0, raw.getBulgeAt(1));
    EXPECT_POINT_NEAR(-1000 * across, 1000 * up, raw.vertices()[2], 1e-9);
}

TEST(OffsetTest, RingOfArcsWhoseJointsAreNotSmoothStaysWhole)
{
    for (const int count : {60, 300, 600, 1000}) {
        const double bulge = count == 60 ? -0.1 : 0.1;
        const CVexGePolyline2d ring = shapes::wavyCircle(count, 300, 9, 3, bulge);
        for (const bool left : {true, false}) {
            PolylineList pieces;
            EXPECT_TRUE(ring.getOffset(beside(ring, 0, left), 2, pieces, false));
            double length = 0.0;
            for (const auto& piece : pieces) {
                length += piece->length();
            }
            EXPECT_NEAR(ring.length(), length, 0.02 * ring.length()) << count;
        }
    }
}

TEST(OffsetTest, ArcThatCannotBeOffsetIsBridgedByTheNextCorner)
{
    EXPECT_EQ("-2,-2 22,-2 22,12 -2,12 -2,-2",
              offsetText(shapes::roundedRectangle(20, 10, 1), {10, -3}, 2));
    // A side of which no segment can be offset has no chain.
    EXPECT_EQ("", rawText(chain({{0, 0, 1.0}, {0, 4}}, false), 3, -1));
}

TEST(OffsetTest, SegmentsAreTakenInOrderAfterAFirstThatCannotBeOffset)
{
    // Starts with the tight round, and closes over it.
    CVexGePolyline2d rounded = shapes::roundedRectangle(20, 10, 1);
    rounded.changeStart(1);
    EXPECT_EQ("22,-2 22,12 -2,12 -2,-2 22,-2", offsetText(rounded, {10, -3}, 2));
    const CVexGePolyline2d open = chain({{4, 4, 1.0}, {4, 8}, {14, 8}, {14, 24}}, false);
    EXPECT_EQ("4,6 16,6 16,24", rawText(open, 2, -1));
}

// An arc that opens the chain after one that cannot be offset takes its side from vertex 0 and the
// bulge there; files hold chains made so.
TEST(OffsetTest, OpeningArcAfterATightOneTakesItsSideFromTheFirstVertex)
{
    // Segment 0: radius 1, counter-clockwise. Segment 1: clockwise, radius 10, about (12, 0); it is
    // moved by 2 to the right, away from... its own side would shrink it to 8.
    const CVexGePolyline2d s = chain({{0, 0, 1.0}, {2, 0, -1.0}, {22, 0}}, false);
    const CVexGePolyline2d raw = Steps(s).rawChain(2, -1);
    ASSERT_EQ(2U, raw.numVerts());
    EXPECT_EQ(1.0, raw.getBulgeAt(0)); // the input's bulge of vertex 0
    const double radius = CVexGePoint2d(12, 0).distanceTo(raw.vertices()[0]);
    EXPECT_NEAR(12.0, radius, 1e-9); // vertex 0 less w lies outside the circle
}

TEST(OffsetTest, SlotShrinksAndGrowsWithItsRounds)
{
    EXPECT_EQ("0,-6 10,-6:1 10,6 0,6:1 0,-6", offsetText(shapes::slot(10, 4), {5, -5}, 2));
    EXPECT_EQ("0,-2 10,-2:1 10,2 0,2:1 0,-2", offsetText(shapes::slot(10, 4), {5, -3}, 2));
}

TEST(OffsetTest, CircleOfTwoArcsKeepsItsCentre)
{
    const CVexGePolyline2d circle = chain({{-5, 0, 1.0}, {5, 0, 1.0}}, true);
    EXPECT_EQ("-7,0:1 7,0:1 -7,0:1", offsetText(circle, {0, -9}, 2));
    EXPECT_EQ("-3,0:1 3,0:1 -3,0:1", offsetText(circle, {0, -2}, 2));
}

TEST(OffsetTest, BothSidesGiveBothChains)
{
    PolylineList out;
    const CVexGePolyline2d square = rectangle(20, 10);
    EXPECT_EQ(2, square.offset({10, 3}, 2, out, true));
    ASSERT_EQ(2U, out.size());
    EXPECT_EQ("2,2 18,2 18,8 2,8 2,2", text(*out[0])); // the side of the point first
    EXPECT_EQ("-2,-2 22,-2 22,12 -2,12 -2,-2", text(*out[1]));
    PolylineList same;
    EXPECT_EQ(2, square.getOffsetPolylines({10, 3}, 2, same, true));
    EXPECT_EQ(text(*out[1]), text(*same[1]));
}

TEST(OffsetTest, PiecesReplaceWhatTheListHeld)
{
    PolylineList pieces;
    pieces.push_back(std::make_unique<CVexGePolyline2d>());
    EXPECT_TRUE(rectangle(20, 10).getOffset({10, 3}, 2, pieces, false));
    EXPECT_EQ(1U, pieces.size());
    EXPECT_FALSE(rectangle(20, 10).getOffset({10, 3}, 6, pieces, false));
    EXPECT_TRUE(pieces.empty());
}

TEST(OffsetTest, NarrowNeckSplitsTheInside)
{
    PolylineList out;
    ASSERT_EQ(2, shapes::dumbbell().offset({5, 1}, 2, out, false));
    EXPECT_EQ("2,2 8,2 8,6.3 9,6.3 9,8 2,8 2,2", text(*out[0]));
    EXPECT_EQ("21,6.3 22,6.3 22,2 28,2 28,8 21,8 21,6.3", text(*out[1]));
}

TEST(OffsetTest, ChainWithTheMostVerticesIsKept)
{
    CVexGePolyline2d dumbbell = shapes::dumbbell(); // its right room gets one corner more
    ASSERT_TRUE(dumbbell.setPointAt(5, {30, 2}) && dumbbell.addVertexAt(5, {28, 0}));
    ASSERT_TRUE(dumbbell.offset({5, 1}, 2));
    EXPECT_EQ(8U, dumbbell.numVerts());
    EXPECT_EQ("21,6.3", text(dumbbell).substr(0, 6));
    CVexGePolyline2d even = shapes::dumbbell();
    ASSERT_TRUE(even.offset({5, 1}, 2));
    EXPECT_EQ("2,2 ", text(even).substr(0, 4)); // the first of equal ones
}

TEST(OffsetTest, ShortSegmentsOnTheInnerSideDisappear)
{
    // The tooth is thinner than the distance: its chains cross the ones beside it and are cut off.
    const CVexGePolyline2d tooth =
        chain({{0, 0}, {20, 0}, {20, 3}, {21, 3}, {21, -1}, {40, -1}}, false);
    EXPECT_EQ("0,-2 19,-2 19,-3 40,-3", offsetText(tooth, {5, -1}, 2));
}

// A crossing that falls on a vertex of the raw chain is no cut: where a tooth's two sides end on
// one line, the chain stays whole, crosses the source and is given up.
TEST(OffsetTest, CrossingAtAVertexOfTheRawChainIsNoCut)
{
    CVexGePolyline2d tooth = chain({{0, 0}, {20, 0}, {20, 3}, {21, 3}, {21, 0}, {40, 0}}, false);
    EXPECT_FALSE(tooth.offset({5, -1}, 2));
}

TEST(OffsetTest, DamagedInputGivesNothing)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    PolylineList out;
    EXPECT_EQ(0, rectangle(20, 10).offset({10, 3}, nan, out, true));
    EXPECT_EQ(0, chain({{0, 0}, {nan, 0}, {5, 5}}, false).offset({1, 1}, 1, out, true));
    EXPECT_EQ(0, chain({{0, 0, nan}, {5, 5}}, false).offset({1, 1}, 1, out, true));
    EXPECT_EQ(0, CVexGePolyline2d({{1, 1}}).offset({1, 2}, 1, out, true));
    EXPECT_EQ(0, CVexGePolyline2d({{1, 1}, {1, 1}, {1, 1}}).offset({1, 2}, 1, out, true));
}

class OffsetCaseTest : public testing::TestWithParam<shapes::Case> {};

/// Draws each case, and holds that no place of a result comes nearer to the source than the
/// distance, a hundredth forgiven.
TEST_P(OffsetCaseTest, ResultKeepsItsDistance)
{
    const shapes::Case& given = GetParam();
    PolylineList out;
    given.source.offset(given.side, given.dist, out, false);
    OffsetPicture picture(given.name);
    picture.add(given.source, "black");
    for (const auto& chain : out) {
        picture.add(*chain, "red");
        double nearest = given.dist;
        for (double param = 0.0; param < 1.0; param += 0.001) {
            nearest = std::min(nearest, given.source.distanceTo(chain->pointAtParam(param)));
        }
        EXPECT_GT(nearest, given.dist - 0.01);
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, OffsetCaseTest, testing::ValuesIn(shapes::allCases()),
                         [](const auto& one) {
                             std::string name = one.param.name;
                             std::erase(name, '-');
                             return name;
                         });
