#include "tests/vexdb/polylineeditfixture.h"
#include "tests/vexdb/polylinetangents.h"

#include <numbers>

namespace {

constexpr double kCommandTol = 0.1;
constexpr double kTangent = 1e-6; // radians

using PolylineFilletTest = PolylineEditTest;

TEST_F(PolylineFilletTest, CornerOfTwoLinesBecomesAnArc)
{
    put({{0, 0}, {10, 0}, {10, 10}});
    editThereAndBack([&] {
        polyline->Fillet(1, 2, kCommandTol);
        EXPECT_EQ("0,0 8,0 b0.414214 10,2 10,10", wordsOf(*polyline));
        EXPECT_EQ("26[1] 15[1]=0 18[2]@10,0", records());
    });
}

TEST_F(PolylineFilletTest, CornerToTheRightBecomesAClockwiseArc)
{
    put({{0, 0}, {10, 0}, {10, -10}});
    polyline->Fillet(1, 2, kCommandTol);
    EXPECT_EQ("0,0 8,0 b-0.414214 10,-2 10,-10", wordsOf(*polyline));
}

TEST_F(PolylineFilletTest, SharpCornerTakesATangentLengthBeyondTheRadius)
{
    put({{-20, 0}, {0, 0}, {-10, 17.320508075688775}}); // 60 degrees: the tangents are 2 tan 60
    polyline->Fillet(1, 2, kCommandTol);
    EXPECT_EQ("-20,0 -3.464102,0 b0.57735 -1.732051,3 -10,17.320508", wordsOf(*polyline));
}

TEST_F(PolylineFilletTest, RoundWithinASegmentsEndLeavesNothingOfIt)
{
    put({{0, 0}, {10, 0}, {10, 10}});
    polyline->Fillet(1, 10, kCommandTol);
    EXPECT_EQ("0,0 0,0 b0.414214 10,10 10,10", wordsOf(*polyline));
}

TEST_F(PolylineFilletTest, TangentLengthBeyondASegmentLeavesTheCornerAlone)
{
    put({{0, 0}, {10, 0}, {10, 5}});
    polyline->Fillet(1, 5.001, kCommandTol);
    EXPECT_EQ("0,0 10,0 10,5", wordsOf(*polyline));
    EXPECT_EQ("", records());
}

TEST_F(PolylineFilletTest, WhatIsNoCornerStays)
{
    put({{0, 0}, {10, 0}, {20, 0.05}, {10, 0.1}, {10, 0.1}});
    for (const int index :
         {0, 1, 2, 3, 4, 5, -1}) { // ends, nearly straight, nearly back, no length
        polyline->Fillet(index, 0.01, kCommandTol);
    }
    for (const double radius : {0.0, -1.0, std::nan("")}) {
        polyline->Fillet(1, radius, kCommandTol);
    }
    EXPECT_EQ("0,0 10,0 20,0.05 10,0.1 10,0.1", wordsOf(*polyline));
    EXPECT_EQ("", records());
}

TEST_F(PolylineFilletTest, LineAndArcMeetInARoundThatTouchesBoth)
{
    // Down the y axis to the origin, then along a half circle about 10,0 above it. The round of 1
    // beside the line, at x = 1, touches the circle of 10 from within: |10,0 - 1,y| = 9.
    put({{0, -20}, {0, 0}, {20, 0}});
    polyline->SetBulgeAt(1, -1);
    polyline->Fillet(1, 1, kCommandTol);
    EXPECT_EQ(3u, polyline->NumVerts());  // smooth already: the circle's tangent is the line
    put({{-20, 0}, {0, 0, -1}, {20, 0}}); // from the left: a corner of a right angle
    editThereAndBack([&] {
        polyline->Fillet(1, 1, kCommandTol);
        // Centre at height 1 and 11 from 10,0: x = 10 - sqrt(120). It touches the arc 10 from
        // 10,0 on the line between the two.
        EXPECT_EQ("-20,0 -0.954451,0 b0.387795 0.041408,0.909091 b-0.955488 20,0",
                  wordsOf(*polyline));
        EXPECT_EQ("26[1] 15[1]=0 18[2]@0,0 15[2]=-1", records());
    });
}

TEST_F(PolylineFilletTest, ArcAndLineAreTheSameTheOtherWay)
{
    put({{20, 0, 1}, {0, 0}, {-20, 0}});
    editThereAndBack([&] {
        polyline->Fillet(1, 1, kCommandTol);
        EXPECT_EQ("20,0 b0.955488 0.041408,0.909091 b-0.387795 -0.954451,0 -20,0",
                  wordsOf(*polyline));
        EXPECT_EQ("26[1] 15[1]=0 18[2]@0,0 15[0]=1", records());
    });
}

TEST_F(PolylineFilletTest, TwoArcsMeetInARoundOnTheirLineOfSymmetry)
{
    // Half circles of 5 that stand side by side above the x axis and meet at the origin in a cusp:
    // the round of 1 stands between them, 6 from both centres, at height sqrt(36 - 25).
    put({{-10, 0, -1}, {0, 0, -1}, {10, 0}});
    editThereAndBack([&] {
        polyline->Fillet(1, 1, kCommandTol);
        ASSERT_EQ(4u, polyline->NumVerts());
        CVexGeCircArc2d round;
        ASSERT_TRUE(polyline->GetArcSegAt(1, round));
        EXPECT_POINT_NEAR(0, std::sqrt(11.0), round.center(), 1e-9);
        EXPECT_NEAR(1.0, round.radius(), 1e-9);
        EXPECT_LT(0.0, polyline->GetBulgeAt(1));
        EXPECT_EQ("26[1] 15[1]=0 18[2]@0,0 15[2]=-1 15[0]=-1", records());
    });
}

TEST_F(PolylineFilletTest, WidthsStayWithTheSegmentThatFollowsAndTheRoundHasNone)
{
    put({{0, 0, 0, 1, 2}, {10, 0, 0, 3, 4}, {10, 10, 0, 5, 6}});
    editThereAndBack([&] {
        polyline->Fillet(1, 2, kCommandTol);
        double start = 0;
        double end = 0;
        EXPECT_TRUE(polyline->GetWidthsAt(1, start, end));
        EXPECT_TRUE(start == -1.0 && end == -1.0);
        EXPECT_TRUE(polyline->GetWidthsAt(2, start, end));
        EXPECT_TRUE(start == 3.0 && end == 4.0);
    });
}

TEST_F(PolylineFilletTest, AllCornersOfAClosedOneAreOneBlock)
{
    put({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true);
    editThereAndBack([&] {
        polyline->Fillet(2);
        EXPECT_EQ("0,2 b0.414214 2,0 8,0 b0.414214 10,2 10,8 b0.414214 8,10 2,10 b0.414214 0,8 "
                  "closed",
                  wordsOf(*polyline));
        EXPECT_EQ("1 26[3] 15[3]=0 18[4]@0,10 26[2] 15[2]=0 18[3]@10,10 26[1] 15[1]=0 18[2]@10,0 "
                  "26[0] 15[0]=0 18[1]@0,0 2",
                  records());
    });
}

TEST_F(PolylineFilletTest, AllCornersOfAnOpenOneAreThoseBetweenItsEnds)
{
    put({{0, 0}, {10, 0}, {10, 10}, {0, 10}});
    editThereAndBack([&] {
        polyline->Fillet(2);
        EXPECT_EQ("0,0 8,0 b0.414214 10,2 10,8 b0.414214 8,10 0,10", wordsOf(*polyline));
    });
}

TEST_F(PolylineFilletTest, CornersThatDoNotFitAreLeftOutOfAll)
{
    put({{0, 0}, {10, 0}, {10, 3}, {20, 3}});
    polyline->Fillet(2);
    EXPECT_EQ("0,0 10,0 10,1 b-0.414214 12,3 20,3", wordsOf(*polyline)); // the last comes first
}

TEST_F(PolylineFilletTest, RoundsThatMeetInTheMiddleOfTheSidesMakeACircle)
{
    put({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true);
    polyline->Fillet(5);
    EXPECT_NEAR(10 * std::numbers::pi, polyline->length(), 1e-9);
}

// Every pair of segments, each straight or bent to either side, at corners of every direction: a
// small round fits them all, but where the way turns back so sharply that the arcs leave no room.
TEST_F(PolylineFilletTest, EveryPairOfSegmentsIsRoundedSmoothlyInEveryDirection)
{
    constexpr double kBulges[] = {0.0, 0.3, -0.3, 1.2, -1.2};
    constexpr double kRadius = 0.05;
    int rounded = 0;
    for (const double first : kBulges) {
        for (const double second : kBulges) {
            for (int degrees = -175; degrees <= 180; degrees += 5) {
                const CVexGeVector2d away(degrees * std::numbers::pi / 180.0);
                put({{-10, 0, first}, {0, 0, second}, {8 * away.x, 8 * away.y}});
                const double kink = kinkAt(polyline->gePolyline(), 1);
                polyline->Fillet(1, kRadius, kCommandTol);
                const bool isCorner = kink > 0.02 && kink < std::numbers::pi - 0.5;
                ASSERT_TRUE(!isCorner || polyline->NumVerts() == 4)
                    << first << ' ' << second << ' ' << degrees;
                if (polyline->NumVerts() != 4) {
                    continue;
                }
                ++rounded;
                const CVexGePolyline2d& chain = polyline->gePolyline();
                CVexGeCircArc2d round;
                ASSERT_TRUE(chain.getArcSegAt(1, round));
                EXPECT_NEAR(kRadius, round.radius(), 1e-9);
                EXPECT_LT(kinkAt(chain, 1), kTangent) << first << ' ' << second << ' ' << degrees;
                EXPECT_LT(kinkAt(chain, 2), kTangent) << first << ' ' << second << ' ' << degrees;
            }
        }
    }
    EXPECT_LT(1600, rounded); // of 1800
}

TEST_F(PolylineFilletTest, RoundsBetweenArcsGrowFromTheCornerOut)
{
    // The larger the radius, the more goes of both segments, without a jump to another circle.
    put({{-10, 0, 0.3}, {0, 0, -0.6}, {3, 9}});
    const double before = polyline->length();
    double shorter = before;
    for (double radius = 0.1; radius < 2.0; radius += 0.1) {
        put({{-10, 0, 0.3}, {0, 0, -0.6}, {3, 9}});
        polyline->Fillet(1, radius, kCommandTol);
        ASSERT_EQ(4u, polyline->NumVerts()) << radius;
        EXPECT_LT(polyline->length(), shorter);
        EXPECT_GT(polyline->length(), shorter - 0.2);
        shorter = polyline->length();
    }
}

TEST_F(PolylineFilletTest, FlatRestOfAnArcThatWouldReadAsStraightIsRefused)
{
    // A round that leaves a bulge of at most 0.001 would not touch what then counts as a line.
    put({{0, 0, 0.0011}, {10, 0}, {10, 10}});
    polyline->Fillet(1, 5, kCommandTol);
    EXPECT_EQ("0,0 b0.0011 10,0 10,10", wordsOf(*polyline));
}

} // namespace
