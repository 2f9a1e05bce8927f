#include "tests/vexge/geasserts.h"
#include "tests/vexge/gebytes.h"
#include "tests/vexge/offsetshapes.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <cmath>
#include <memory>
#include <numbers>
#include <sstream>
#include <string>

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kExact = 1e-12;
using shapes::chain;

/// Three vertices with bulges 0.5, -0.25, 0 and widths 1/2, 3/4, 5/6.
CVexGePolyline2d tapered()
{
    CVexGePolyline2d result;
    result.appendVertex({0, 0}, 0.5, 1, 2);
    result.appendVertex({10, 0}, -0.25, 3, 4);
    result.appendVertex({10, 10}, 0.0, 5, 6);
    return result;
}

std::string text(const CVexGePolyline2d& polyline)
{
    std::ostringstream out;
    for (unsigned i = 0; i < polyline.numVerts(); ++i) {
        double startWidth = 0.0;
        double endWidth = 0.0;
        polyline.getWidthsAt(i, startWidth, endWidth);
        out << (i > 0 ? " " : "") << polyline.vertices()[i].x << ',' << polyline.vertices()[i].y
            << ':' << polyline.getBulgeAt(i) << ':' << startWidth << '/' << endWidth;
    }
    return out.str();
}

} // namespace

TEST(PolylineTest, DefaultIsEmptyAndOpen)
{
    const CVexGePolyline2d empty;
    EXPECT_EQ(0U, empty.numVerts());
    EXPECT_FALSE(empty.isClosed());
    EXPECT_FALSE(empty.closed());
    EXPECT_EQ(CVexGePolyline2d::kEmpty, empty.segType(0));
    EXPECT_TRUE(empty.isKindOf(VexGe::kGePolyline2d));
}

TEST(PolylineTest, PointsAloneHaveNoBulgesAndNoWidths)
{
    const CVexGePolyline2d line({{0, 0}, {1, 2}});
    EXPECT_EQ("0,0:0:-1/-1 1,2:0:-1/-1", text(line));
    CVexGePolyline2d bent;
    bent.set({{0, 0}, {1, 2}}, {0.5, 0.25});
    EXPECT_EQ("0,0:0.5:-1/-1 1,2:0.25:-1/-1", text(bent));
}

TEST(PolylineTest, SettingTheSizeEmpties)
{
    CVexGePolyline2d some = tapered();
    some.setSize(7);
    EXPECT_EQ(0U, some.numVerts());
}

TEST(PolylineTest, VertexIsInsertedInAllListsAndAtTheCountAppended)
{
    CVexGePolyline2d some = tapered();
    EXPECT_TRUE(some.addVertexAt(1, {5, 5}, 0.75, 7, 8));
    EXPECT_TRUE(some.addVertexAt(4, {9, 9}));
    EXPECT_FALSE(some.addVertexAt(6, {1, 1}));
    EXPECT_EQ("0,0:0.5:1/2 5,5:0.75:7/8 10,0:-0.25:3/4 10,10:0:5/6 9,9:0:-1/-1", text(some));
}

TEST(PolylineTest, RemovalOfARangeAndOfOneVertex)
{
    CVexGePolyline2d five({{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}});
    EXPECT_FALSE(five.removeVertexAt(3, 2));
    EXPECT_FALSE(five.removeVertexAt(5, 0));
    EXPECT_FALSE(five.removeVertexAt(5, 9));
    EXPECT_FALSE(five.removeVertexAt(-1, 2));
    EXPECT_TRUE(five.removeVertexAt(3, 0)); // a last of 0 stands for the first
    EXPECT_TRUE(five.removeVertexAt(1, 2));
    EXPECT_EQ("0,0:0:-1/-1 4,0:0:-1/-1", text(five));
    EXPECT_TRUE(five.removeVertexAt(1, 9));
    EXPECT_EQ(1U, five.numVerts());
}

TEST(PolylineTest, SettersAndReadersRefuseABadIndex)
{
    CVexGePolyline2d some = tapered();
    CVexGePoint2d point(7, 7);
    double bulge = 7.0, start = 7.0, end = 7.0;
    EXPECT_FALSE(some.setPointAt(3, {}) || some.setBulgeAt(3, 1) || some.setWidthsAt(3, 1, 1));
    EXPECT_FALSE(some.getPointAt(3, point) || some.getBulgeAt(3, bulge) ||
                 some.getWidthsAt(3, start, end));
    EXPECT_POINT(7, 7, point);
    EXPECT_EQ(7.0 * 3, bulge + start + end);
    EXPECT_EQ(text(tapered()), text(some));
}

TEST(PolylineTest, SettersSet)
{
    CVexGePolyline2d some = tapered();
    EXPECT_TRUE(some.setPointAt(2, {8, 9}) && some.setBulgeAt(2, 0.75) &&
                some.setWidthsAt(2, 1, 0));
    EXPECT_EQ("0,0:0.5:1/2 10,0:-0.25:3/4 8,9:0.75:1/0", text(some));
    double bulge = 0.0;
    EXPECT_TRUE(some.getBulgeAt(2, bulge));
    EXPECT_EQ(0.75, bulge);
}

// Reversing leaves the widths in their places: whoever turns a tapered chain sets them anew.
TEST(PolylineTest, ReverseTurnsVerticesAndBulgesAndLeavesTheWidths)
{
    CVexGePolyline2d some = tapered();
    some.setBulgeAt(2, 0.125);
    some.reverse();
    EXPECT_EQ("10,10:0.25:1/2 10,0:-0.5:3/4 0,0:-0.125:5/6", text(some));
}

TEST(PolylineTest, ReverseTwiceRestoresAndAZeroBulgeStaysPositive)
{
    CVexGePolyline2d some = tapered();
    some.reverse();
    EXPECT_FALSE(std::signbit(some.getBulgeAt(2)));
    some.reverse();
    EXPECT_EQ(text(tapered()), text(some));
    EXPECT_FALSE(std::signbit(some.getBulgeAt(2)));
}

TEST(PolylineTest, StartOfAFlaggedChainRotatesVerticesAndBulges)
{
    CVexGePolyline2d square = chain({{0, 0, 0.1}, {4, 0, 0.2}, {4, 4, 0.3}, {0, 4, 0.4}}, true);
    square.setWidthsAt(0, 9, 9);
    EXPECT_TRUE(square.changeStart(2));
    EXPECT_EQ("4,4:0.3:9/9 0,4:0.4:-1/-1 0,0:0.1:-1/-1 4,0:0.2:-1/-1", text(square));
}

TEST(PolylineTest, StartOfAReturningChainRepeatsTheNewStart)
{
    CVexGePolyline2d square =
        chain({{0, 0, 0.1}, {4, 0, 0.2}, {4, 4, 0.3}, {0, 4, 0.4}, {0, 0.001, 0.5}}, false);
    EXPECT_TRUE(square.changeStart(2));
    EXPECT_EQ("4,4:0.3:-1/-1 0,4:0.4:-1/-1 0,0:0.1:-1/-1 4,0:0.2:-1/-1 4,4:0.3:-1/-1",
              text(square));
}

TEST(PolylineTest, StartOfAnOpenChainCanOnlyBeItsLastVertex)
{
    CVexGePolyline2d some = tapered();
    EXPECT_FALSE(some.changeStart(1));
    EXPECT_FALSE(some.changeStart(3));
    EXPECT_FALSE(some.changeStart(-1));
    EXPECT_EQ(text(tapered()), text(some));
    EXPECT_TRUE(some.changeStart(2));
    EXPECT_POINT(10, 10, some.vertices()[0]);
}

TEST(PolylineTest, LastVertexReversesAClosedChainToo)
{
    CVexGePolyline2d square = shapes::rectangle(4, 2);
    EXPECT_TRUE(square.changeStart(3));
    EXPECT_POINT(0, 2, square.vertices()[0]);
    EXPECT_POINT(4, 2, square.vertices()[1]);
}

TEST(PolylineTest, ClosingNeedsTwoVertices)
{
    CVexGePolyline2d one({{1, 1}});
    one.setClosed(true);
    EXPECT_FALSE(one.isClosed());
}

TEST(PolylineTest, ClosingAfterAStraightSegmentIsStraight)
{
    CVexGePolyline2d some = chain({{0, 0, 0.5}, {10, 0}, {10, 10, 0.75}}, false);
    some.setClosed(true);
    EXPECT_TRUE(some.isClosed());
    EXPECT_EQ(0.75, some.getBulgeAt(2));
}

// A half circle from (0,0) to (10,0) leaves (10,0) upwards; the way back to (0,0) that continues it
// smoothly is the other half, also when the flag is cleared.
TEST(PolylineTest, ClosingAfterAnArcContinuesItForEitherFlag)
{
    for (const bool flag : {true, false}) {
        CVexGePolyline2d half = chain({{0, 0, 1.0}, {10, 0}}, false);
        half.setClosed(flag);
        EXPECT_EQ(flag, half.isClosed());
        EXPECT_NEAR(1.0, half.getBulgeAt(1), 1e-6);
    }
}

TEST(PolylineTest, ClosingArcTurnsTheOtherWayWhereTheTangentDoes)
{
    // An S: the second arc, clockwise, arrives at (20,0) going down; smoothly back to the start
    // from there is clockwise again, half a circle of radius 10.
    CVexGePolyline2d s = chain({{0, 0, 1.0}, {10, 0, -1.0}, {20, 0}}, false);
    s.setClosed(true);
    EXPECT_NEAR(-1.0, s.getBulgeAt(2), 1e-6);
}

TEST(PolylineTest, ClosingWithNoArcThatContinuesIsNearlyStraight)
{
    // The first vertex lies straight ahead of the last arc's end.
    CVexGePolyline2d hook = chain({{10, 10}, {0, -10, 1.0}, {0, 10}}, false);
    hook.setPointAt(0, {-10, 10});
    hook.setClosed(true);
    EXPECT_NEAR(0.001, std::fabs(hook.getBulgeAt(2)), 1e-6);
}

// Without an absolute value, a clockwise chain has no bulges, so closing bends nothing.
TEST(PolylineTest, ClosingAClockwiseChainBendsNothing)
{
    CVexGePolyline2d half = chain({{0, 0, -1.0}, {10, 0}}, false);
    half.setClosed(true);
    EXPECT_EQ(0.0, half.getBulgeAt(1));
}

TEST(PolylineTest, AppendsLastToFirst)
{
    CVexGePolyline2d some = chain({{0, 0, 0.5}, {10, 0, 0.25}}, false);
    CVexGePolyline2d other = tapered();
    other.translateBy({10, 0.0005});
    int index = 7;
    ASSERT_TRUE(some.appendPolyline(&other, index));
    EXPECT_EQ(2, index);
    EXPECT_EQ("0,0:0.5:-1/-1 10,0:0.5:-1/-1 20,0.0005:-0.25:3/4 20,10.0005:0:5/6", text(some));
}

TEST(PolylineTest, AppendsLastToLastWithBulgesNegatedAndWidthsExchanged)
{
    CVexGePolyline2d some = chain({{0, 10, 0.5}, {10, 10, 0.75}}, false);
    const CVexGePolyline2d other = tapered();
    int index = 7;
    ASSERT_TRUE(some.appendPolyline(&other, index));
    EXPECT_EQ(2, index);
    // The last one has no predecessor there and repeats the bulge before it.
    EXPECT_EQ("0,10:0.5:-1/-1 10,10:0.25:-1/-1 10,0:-0.5:4/3 0,0:-0.5:2/1", text(some));
}

TEST(PolylineTest, InsertsFirstToFirstWithWidthsAsStored)
{
    CVexGePolyline2d some = chain({{0, 0, 0.75}, {-5, 0}}, false);
    const CVexGePolyline2d other = tapered();
    int index = 7;
    ASSERT_TRUE(some.appendPolyline(&other, index));
    EXPECT_EQ(0, index);
    EXPECT_EQ("10,10:0.25:5/6 10,0:-0.5:3/4 0,0:0.75:-1/-1 -5,0:0:-1/-1", text(some));
}

TEST(PolylineTest, InsertsFirstToLastWithWidthsExchanged)
{
    CVexGePolyline2d some = chain({{10, 10, 0.75}, {-5, 0}}, false);
    const CVexGePolyline2d other = tapered();
    int index = 7;
    ASSERT_TRUE(some.appendPolyline(&other, index));
    EXPECT_EQ(0, index);
    EXPECT_EQ("0,0:0.5:2/1 10,0:-0.25:4/3 10,10:0.75:-1/-1 -5,0:0:-1/-1", text(some));
}

TEST(PolylineTest, AppendingRefusesClosedChainsAndEndsApart)
{
    CVexGePolyline2d some = tapered();
    const CVexGePolyline2d apart({{50, 50}, {60, 60}});
    CVexGePolyline2d closed({{10, 10}, {20, 10}, {20, 20}});
    closed.setClosed(true);
    int index = 7;
    EXPECT_FALSE(some.appendPolyline(&apart, index));
    EXPECT_FALSE(some.appendPolyline(&closed, index));
    EXPECT_FALSE(closed.appendPolyline(&some, index));
    EXPECT_EQ(7, index);
}

TEST(PolylineTest, AppendsALineAtEitherEnd)
{
    CVexGePolyline2d some = chain({{0, 0, 0.5}, {10, 0, 0.25}}, false);
    const CVexGeLine2d onward({20, 0}, CVexGePoint2d(10, 0)), before({-5, 0}, CVexGePoint2d(0, 0));
    int index = 7;
    ASSERT_TRUE(some.appendPolyline(&onward, index));
    EXPECT_EQ(2, index);
    ASSERT_TRUE(some.appendPolyline(&before, index));
    EXPECT_EQ(0, index);
    EXPECT_EQ("-5,0:0:-1/-1 0,0:0.5:-1/-1 10,0:0:-1/-1 20,0:0:-1/-1", text(some));
}

// Lines and arcs are joined without regard to the closed flag, chains are not.
TEST(PolylineTest, AppendsAnArcByEitherEndEvenToAClosedChain)
{
    const CVexGeCircArc2d quarter({10, 0}, {20, 0}, 0.5, true);
    CVexGePolyline2d some = chain({{0, 0}, {10, 0}}, true);
    int index = 7;
    ASSERT_TRUE(some.appendPolyline(&quarter, index));
    EXPECT_NEAR(0.5, some.getBulgeAt(1), kExact);
    CVexGePolyline2d back = chain({{30, 0}, {20, 0}}, false);
    ASSERT_TRUE(back.appendPolyline(&quarter, index));
    EXPECT_NEAR(-0.5, back.getBulgeAt(1), kExact);
    EXPECT_POINT_NEAR(10, 0, back.vertices()[2], kExact);
    CVexGePolyline2d first = chain({{10, 0}, {0, 0}}, false);
    ASSERT_TRUE(first.appendPolyline(&quarter, index));
    EXPECT_NEAR(-0.5, first.getBulgeAt(0), kExact);
    EXPECT_POINT_NEAR(20, 0, first.vertices()[0], kExact);
}

TEST(PolylineTest, TakesTheFormOfAnArc)
{
    CVexGePolyline2d some = tapered();
    some = CVexGeCircArc2d({0, 0}, {10, 0}, 0.5, true);
    ASSERT_EQ(2U, some.numVerts());
    EXPECT_NEAR(0.5, some.getBulgeAt(0), kExact);
    EXPECT_FALSE(some.isClosed());
}

TEST(PolylineTest, EditsMoveTheVerticesAndKeepBulgesAndWidths)
{
    CVexGePolyline2d some = tapered();
    some.scaleBy(2.0, 3.0, {0, 0});
    EXPECT_EQ("0,0:0.5:1/2 20,0:-0.25:3/4 20,30:0:5/6", text(some));
    some.translateBy({1, 1});
    EXPECT_POINT(21, 31, some.vertices()[2]);
    some.scaleBy(2.0, {1, 1});
    EXPECT_POINT(41, 61, some.vertices()[2]);
    some.rotateBy(kPi / 2.0, {1, 1});
    EXPECT_POINT_NEAR(-59, 41, some.vertices()[2], kExact * 100);
}

TEST(PolylineTest, MirrorTurnsTheBulges)
{
    CVexGePolyline2d some = tapered();
    some.mirror(CVexGeLine2d({0, 0}, CVexGePoint2d(1, 0)));
    EXPECT_POINT(10, -10, some.vertices()[2]);
    EXPECT_EQ(-0.5, some.getBulgeAt(0));
    EXPECT_EQ(0.25, some.getBulgeAt(1));
}

TEST(PolylineTest, EqualWithinAToleranceOrExactly)
{
    CVexGePolyline2d other = tapered();
    other.setBulgeAt(0, 0.5005);
    EXPECT_TRUE(tapered().isEqualTo(other, 0.001));
    EXPECT_TRUE(tapered() != other);
    EXPECT_FALSE(tapered().isEqualTo(CVexGeLine2d(), 0.001));
    other = tapered();
    other.setPointAt(0, {1e-7, 0});
    EXPECT_TRUE(tapered() == other);
    other.setWidthsAt(0, 1, 2.5);
    EXPECT_FALSE(tapered() == other || tapered().isEqualTo(other, 0.001));
    other = tapered();
    other.setClosed(true);
    EXPECT_FALSE(tapered().isEqualTo(other, 99.0));
}

TEST(PolylineTest, CopyIsAPolylineOfItsOwn)
{
    const CVexGePolyline2d some = tapered();
    const std::unique_ptr<CVexGeEntity2d> copy(some.copy());
    ASSERT_TRUE(copy->isKindOf(VexGe::kGePolyline2d));
    EXPECT_EQ(text(some), text(static_cast<const CVexGePolyline2d&>(*copy)));
}

TEST(PolylineTest, FileHoldsCountFlagAndEachVertexWithItsBulgeAndWidths)
{
    CVexGePolyline2d some;
    some.appendVertex({1, 2}, 0.5, 3, 4);
    EXPECT_EQ("01000000"
              "00"
              "000000000000f03f"
              "0000000000000040"
              "00000000"
              "000000000000e03f"
              "0000000000000840"
              "0000000000001040",
              savedHex(some));
    CVexGePolyline2d closed = tapered();
    closed.setClosed(true);
    EXPECT_EQ(2U * (5 + 3 * 44), savedHex(closed).size());
    CVexGePolyline2d back;
    ASSERT_TRUE(readHex(back, savedHex(closed)));
    EXPECT_TRUE(back == closed);
}

TEST(PolylineTest, CountBeyondTheFileIsRefusedBeforeItIsReserved)
{
    CVexGePolyline2d some = tapered();
    EXPECT_FALSE(readHex(some, "ffffffff01000000"));
    EXPECT_EQ(0U, some.numVerts());
}
