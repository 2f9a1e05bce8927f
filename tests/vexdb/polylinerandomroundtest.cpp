// Rounds in random corners: every pair of kinds, at every vertex of open and closed polylines.

#include "tests/vexdb/polylineeditfixture.h"
#include "tests/vexdb/polylinetangents.h"
#include "tests/vexdb/randompolylines.h"

#include <array>
#include <string>

namespace {

constexpr std::uint64_t kSeed = 20261122;
constexpr double kTangent = 1e-6;
constexpr double kOnCurve = 1e-6;
constexpr double kFilletTol = 0.1; // as the commands pass it

/// The kinds of two segments that meet: 0 straight, 1 counter-clockwise, -1 clockwise.
struct Pair {
    int first;
    int second;
};

constexpr std::array<Pair, 9> kPairs = {
    {{0, 0}, {0, 1}, {0, -1}, {1, 0}, {-1, 0}, {1, 1}, {1, -1}, {-1, 1}, {-1, -1}}};

std::string nameOf(const Pair& pair)
{
    static constexpr const char* kNames[] = {"Clockwise", "Line", "Counter"};
    return std::string(kNames[pair.first + 1]) + kNames[pair.second + 1];
}

unsigned before(const CVexGePolyline2d& chain, unsigned vertex)
{
    return vertex > 0 ? vertex - 1 : chain.numVerts() - 1;
}

class PolylineRoundPropertyTest : public PolylineEditTest,
                                  public testing::WithParamInterface<Pair> {
protected:
    double bulgeOf(int kind) { return kind * random.within(0.05, 1.5); }
    /// A polyline with a corner of the wanted pair, anywhere on it.
    void putCorner()
    {
        const int count = 3 + random.below(5);
        const bool closed = random.below(2) == 0;
        corner = static_cast<unsigned>(closed ? random.below(count) : 1 + random.below(count - 2));
        whole = random.chain(count, closed);
        whole.setBulgeAt(before(whole, corner), bulgeOf(GetParam().first));
        whole.setBulgeAt(corner, bulgeOf(GetParam().second));
        polyline->SetGeometry(whole);
    }
    void round(double radius)
    {
        polyline->Fillet(static_cast<int>(corner), radius, kFilletTol);
        rounded = polyline->NumVerts() == whole.numVerts() + 1;
    }
    /// What the round leaves of a segment lies on it; nothing may be left.
    void expectRest(unsigned wasIndex, unsigned index)
    {
        const CVexGePolyline2d& now = polyline->gePolyline();
        if (isSegment(now, index)) {
            EXPECT_LT(besideSegment(whole, wasIndex, middleOfSegment(now, index)), kOnCurve);
            EXPECT_LE(lengthOfSegment(now, index), lengthOfSegment(whole, wasIndex) + kOnCurve);
        }
    }
    void expectOthersUntouched()
    {
        const CVexGePolyline2d& now = polyline->gePolyline();
        const unsigned last = before(whole, corner);
        for (unsigned i = 0; i < whole.numVerts(); ++i) {
            const unsigned at = i < corner ? i : i + 1;
            EXPECT_TRUE(i == corner || now.vertices()[at].isEqualTo(whole.vertices()[i], 0.0));
            EXPECT_TRUE(i == corner || i == last || now.getBulgeAt(at) == whole.getBulgeAt(i));
        }
        EXPECT_EQ(whole.isClosed(), now.isClosed());
    }

    RandomPolylines random{kSeed};
    CVexGePolyline2d whole;
    unsigned corner = 0;
    bool rounded = false;
};

TEST_P(PolylineRoundPropertyTest, RoundIsTangentAtBothEndsAndLeavesTheRestInPlace)
{
    put({{0, 0}, {1, 0}});
    int count = 0;
    for (int turn = 0; turn < 20000 && count < 300; ++turn) {
        putCorner();
        const double radius = random.within(0.1, 25);
        round(radius);
        if (!rounded) {
            ASSERT_TRUE(polyline->gePolyline() == whole) << "turn " << turn;
            continue;
        }
        ++count;
        SCOPED_TRACE("turn " + std::to_string(turn));
        const CVexGePolyline2d& now = polyline->gePolyline();
        CVexGeCircArc2d arc;
        ASSERT_TRUE(now.getArcSegAt(corner, arc));
        EXPECT_NEAR(radius, arc.radius(), kOnCurve);
        const unsigned first = before(now, corner);
        EXPECT_TRUE(!isSegment(now, first) || kinkAt(now, corner) < kTangent);
        EXPECT_TRUE(!isSegment(now, corner + 1) || kinkAt(now, corner + 1) < kTangent);
        expectRest(before(whole, corner), first);
        expectRest(corner, corner + 1);
        expectOthersUntouched();
    }
    EXPECT_EQ(300, count);
}

TEST_P(PolylineRoundPropertyTest, RoundThatIsSmallInItsCornerAlwaysFits)
{
    put({{0, 0}, {1, 0}});
    int count = 0;
    for (int turn = 0; turn < 1000; ++turn) {
        putCorner();
        const double kink = kinkAt(whole, corner);
        if (kink < 0.1 || kink > std::numbers::pi - 0.5) {
            continue;
        }
        ++count;
        double least =
            HUGE_VAL; // of what the corner offers: lengths, and radii where there are any
        for (const unsigned i : {before(whole, corner), corner}) {
            CVexGeCircArc2d arc;
            least = std::min(least, lengthOfSegment(whole, i));
            least = std::min(least, whole.getArcSegAt(i, arc) ? arc.radius() : least);
        }
        round(0.02 * least);
        EXPECT_TRUE(rounded) << "turn " << turn << " kink " << kink << " least " << least;
    }
    EXPECT_LT(600, count);
}

TEST_P(PolylineRoundPropertyTest, UndoBringsTheCornerBackByteForByte)
{
    put({{0, 0}, {1, 0}});
    int count = 0;
    for (int turn = 0; turn < 600; ++turn) {
        putCorner();
        drawing.undoHandler().clear();
        const std::vector<std::byte> start = saved(*polyline);
        round(random.within(0.1, 10));
        if (rounded) {
            ++count;
            EXPECT_TRUE(drawing.undoHandler().Undo());
            EXPECT_TRUE(start == saved(*polyline)) << "turn " << turn;
        }
    }
    EXPECT_LT(100, count);
}

INSTANTIATE_TEST_SUITE_P(Pairs, PolylineRoundPropertyTest, testing::ValuesIn(kPairs),
                         [](const auto& one) { return nameOf(one.param); });

/// Two curves that share an end, drawn in either direction.
class IsFilletablePropertyTest : public PolylineRoundPropertyTest {
protected:
    template <class First, class Second>
    void expectRound(const First& first, const Second& second, int expectedCode, double radius)
    {
        CVexGeCircArc2d arc;
        int code = -1;
        if (!CVexDbPolyline::IsFilletable(first, second, radius, arc, code)) {
            return;
        }
        ++count;
        EXPECT_EQ(expectedCode, code);
        EXPECT_NEAR(radius, arc.radius(), kOnCurve);
        const CVexGePoint2d ends[] = {arc.startPoint(), arc.endPoint()};
        const unsigned a = before(whole, corner);
        const bool inOrder = besideSegment(whole, a, ends[0]) < kOnCurve &&
                             besideSegment(whole, corner, ends[1]) < kOnCurve;
        const bool turned = besideSegment(whole, a, ends[1]) < kOnCurve &&
                            besideSegment(whole, corner, ends[0]) < kOnCurve;
        EXPECT_TRUE(inOrder || turned);
        EXPECT_LT(touchGap(first, arc), kOnCurve);
        EXPECT_LT(touchGap(second, arc), kOnCurve);
    }
    /// How far the round's circle is from touching the line, or the arc's circle.
    static double touchGap(const CVexGeLine2d& line, const CVexGeCircArc2d& round)
    {
        const CVexGeVector2d way = round.center() - line.startPoint();
        const CVexGeVector2d along = line.direction();
        return std::fabs(std::fabs(way.x * along.y - way.y * along.x) - round.radius());
    }
    static double touchGap(const CVexGeCircArc2d& arc, const CVexGeCircArc2d& round)
    {
        const double centres = arc.center().distanceTo(round.center());
        return std::min(std::fabs(centres - arc.radius() - round.radius()),
                        std::fabs(centres - std::fabs(arc.radius() - round.radius())));
    }
    template <class First>
    void askWithSecond(const First& first, bool firstTurned, double radius)
    {
        CVexGeLine2d line;
        CVexGeCircArc2d arc;
        if (whole.getLineSegAt(corner, line)) {
            const bool turned = random.below(2) == 0;
            const CVexGeLine2d second(turned ? line.endPoint() : line.startPoint(),
                                      turned ? line.startPoint() : line.endPoint());
            expectRound(first, second, codeOf(firstTurned, turned), radius);
        } else if (whole.getArcSegAt(corner, arc)) {
            expectRound(first, arc, codeOf(firstTurned, GetParam().second < 0), radius);
        }
    }
    /// 0 end to start, 1 end to end, 2 start to start, 3 start to end.
    static int codeOf(bool firstTurned, bool secondTurned)
    {
        return (firstTurned ? 2 : 0) + (secondTurned ? 1 : 0);
    }

    int count = 0;
};

TEST_P(IsFilletablePropertyTest, TellsTheEndsAndTheRoundTouchesBothCurves)
{
    put({{0, 0}, {1, 0}});
    for (int turn = 0; turn < 1500; ++turn) {
        putCorner();
        SCOPED_TRACE("turn " + std::to_string(turn));
        const unsigned first = before(whole, corner);
        const double radius = random.within(0.1, 25);
        CVexGeLine2d line;
        CVexGeCircArc2d arc;
        if (whole.getLineSegAt(first, line)) {
            const bool turned = random.below(2) == 0;
            const CVexGeLine2d drawn(turned ? line.endPoint() : line.startPoint(),
                                     turned ? line.startPoint() : line.endPoint());
            askWithSecond(drawn, turned, radius);
        } else if (whole.getArcSegAt(first, arc)) {
            askWithSecond(arc, GetParam().first < 0, radius); // the kernel's run one way
        }
    }
    EXPECT_LT(200, count);
}

INSTANTIATE_TEST_SUITE_P(Pairs, IsFilletablePropertyTest, testing::ValuesIn(kPairs),
                         [](const auto& one) { return nameOf(one.param); });

// For two lines the answer is known: the tangent length, radius times the tangent of half the turn.
TEST(IsFilletableLinesPropertyTest, FitsWhereBothLinesAreAsLongAsTheTangentLength)
{
    RandomPolylines random(kSeed);
    int fitting = 0;
    for (int turn = 0; turn < 3000; ++turn) {
        const CVexGePoint2d corner = random.point();
        const CVexGeLine2d first(random.point(), corner);
        const CVexGeLine2d second(corner, random.point());
        const CVexGeVector2d in = first.direction();
        const CVexGeVector2d out = second.direction();
        const double angle = std::fabs(std::atan2(in.x * out.y - in.y * out.x, in.dotProduct(out)));
        const double radius = random.within(0.1, 100);
        const double tangent = radius * std::tan(angle / 2);
        const double slack = std::min(first.length(), second.length()) - tangent;
        if (angle < 0.02 || angle > std::numbers::pi - 0.02 || std::fabs(slack) < 1e-6) {
            continue;
        }
        CVexGeCircArc2d arc;
        int code = -1;
        ASSERT_EQ(slack > 0, CVexDbPolyline::IsFilletable(first, second, radius, arc, code))
            << "turn " << turn << " radius " << radius << " angle " << angle;
        fitting += slack > 0 ? 1 : 0;
        EXPECT_TRUE(slack < 0 || std::fabs(arc.length() - radius * angle) < 1e-6 * radius);
    }
    EXPECT_LT(1000, fitting);
}

class PolylineCuspPropertyTest : public PolylineEditTest {};

// A cusp: the way comes in straight and goes back along an arc, which leaves room to its own side.
TEST_F(PolylineCuspPropertyTest, RoundOfACuspGoesToTheSideWhereTheArcBends)
{
    RandomPolylines random(kSeed);
    put({{0, 0}, {1, 0}});
    for (int turn = 0; turn < 400; ++turn) {
        const double bulge = random.side() * random.within(0.2, 1.2);
        const CVexGeVector2d chord(std::numbers::pi + 2 * std::atan(bulge));
        CVexGePolyline2d cusp;
        cusp.appendVertex({-10, 0}, 0.0);
        cusp.appendVertex({0, 0}, bulge); // leaves towards the first vertex
        cusp.appendVertex(CVexGePoint2d(0, 0) + chord * random.within(5, 20));
        cusp.rotateBy(random.within(0, 6), {0, 0});
        if (random.below(2) == 0) {
            cusp.reverse();
        }
        polyline->SetGeometry(cusp);
        polyline->Fillet(1, random.within(0.01, 0.1), kFilletTol);
        ASSERT_EQ(4u, polyline->NumVerts()) << "turn " << turn << " bulge " << bulge;
        EXPECT_LT(kinkAt(polyline->gePolyline(), 1), kTangent) << "turn " << turn;
        EXPECT_LT(kinkAt(polyline->gePolyline(), 2), kTangent) << "turn " << turn;
    }
}

} // namespace
