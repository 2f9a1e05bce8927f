#include "tests/vexge/geasserts.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <variant>

namespace {

constexpr double kPi = std::numbers::pi;

struct FilletablePair {
    const char* name;
    CVexGeLine2d first;
    CVexGeLine2d second;
    bool fits;
    int code;
};

void PrintTo(const FilletablePair& row, std::ostream* out)
{
    *out << row.name;
}

const CVexGePoint2d kCorner(10, 0);
const FilletablePair kPairs[] = {
    {"EndToStart", {{0, 0}, kCorner}, {kCorner, CVexGePoint2d(10, 10)}, true, 0},
    {"EndToEnd", {{0, 0}, kCorner}, {CVexGePoint2d(10, 10), kCorner}, true, 1},
    {"StartToStart", {kCorner, CVexGePoint2d(0, 0)}, {kCorner, CVexGePoint2d(10, 10)}, true, 2},
    {"StartToEnd", {kCorner, CVexGePoint2d(0, 0)}, {CVexGePoint2d(10, 10), kCorner}, true, 3},
    {"Apart", {{0, 0}, kCorner}, {CVexGePoint2d(10, 0.01), CVexGePoint2d(10, 10)}, false, 0},
    {"Straight", {{0, 0}, kCorner}, {kCorner, CVexGePoint2d(20, 0)}, false, 0},
    {"Back", {{0, 0}, kCorner}, {kCorner, CVexGePoint2d(5, 0.01)}, false, 0},
    {"TooShort", {{0, 0}, kCorner}, {kCorner, CVexGePoint2d(10, 1.9)}, false, 0},
};

class IsFilletableTest : public testing::TestWithParam<FilletablePair> {};

TEST_P(IsFilletableTest, TellsTheEndsThatMeetAndTheRound)
{
    const FilletablePair& row = GetParam();
    CVexGeCircArc2d round({7, 7}, 7);
    int code = -1;
    EXPECT_EQ(row.fits, CVexDbPolyline::IsFilletable(row.first, row.second, 2, round, code));
    EXPECT_EQ(row.code, code);
    if (row.fits) { // always a quarter about 8,2, stored counter-clockwise from below to the right
        EXPECT_POINT_NEAR(8, 2, round.center(), 1e-9);
        EXPECT_POINT_NEAR(8, 0, round.startPoint(), 1e-9);
        EXPECT_POINT_NEAR(10, 2, round.endPoint(), 1e-9);
    } else {
        EXPECT_POINT(7, 7, round.center());
    }
}

INSTANTIATE_TEST_SUITE_P(Pairs, IsFilletableTest, testing::ValuesIn(kPairs),
                         [](const auto& row) { return std::string(row.param.name); });

using Curve = std::variant<CVexGeLine2d, CVexGeCircArc2d>;

struct FilletableArcPair {
    const char* name;
    Curve first;
    Curve second;
    int code;
    CVexGePoint2d center; // of a round of radius 1
};

void PrintTo(const FilletableArcPair& row, std::ostream* out)
{
    *out << row.name;
}

const CVexGePoint2d kOrigin;
const CVexGePoint2d kLeft(-20, 0);
const CVexGeLine2d kArrives(kLeft, kOrigin);
const CVexGeLine2d kLeaves(kOrigin, kLeft);
// Half circles of 10 that pass through the origin upright and level.
const CVexGeCircArc2d kFallsTo({10, 0}, 10, 0.0, kPi);
const CVexGeCircArc2d kFallsFrom({10, 0}, 10, kPi, 2.0 * kPi);
const CVexGeCircArc2d kGoesLeft({0, -10}, 10, kPi / 2.0, 3.0 * kPi / 2.0);
const CVexGeCircArc2d kComesFromRight({0, -10}, 10, -kPi / 2.0, kPi / 2.0);
// A round beside the line stands 1 off it, and 11 from the centre of the circle.
const double kBesideLine = 10.0 - std::sqrt(120.0);
// Between two circles it stands 9 from the centre of one that it lies in, 11 of one that it lies
// outside of: on the line of symmetry where both are alike, otherwise with x + y = 2 or -2.
const double kOutside = (std::sqrt(568.0) - 20.0) / 4.0;
const double kInside = (20.0 - std::sqrt(248.0)) / 4.0;
const double kFar = 6.0 - std::sqrt(392.0) / 4.0;
const double kNear = std::sqrt(392.0) / 4.0 - 4.0;

const FilletableArcPair kArcPairs[] = {
    {"LineEndArcStart", kArrives, kFallsFrom, 0, {kBesideLine, -1}},
    {"LineEndArcEnd", kArrives, kFallsTo, 1, {kBesideLine, 1}},
    {"LineStartArcStart", kLeaves, kFallsFrom, 2, {kBesideLine, -1}},
    {"LineStartArcEnd", kLeaves, kFallsTo, 3, {kBesideLine, 1}},
    {"ArcEndLineStart", kFallsTo, kLeaves, 0, {kBesideLine, 1}},
    {"ArcEndLineEnd", kFallsTo, kArrives, 1, {kBesideLine, 1}},
    {"ArcStartLineStart", kFallsFrom, kLeaves, 2, {kBesideLine, -1}},
    {"ArcStartLineEnd", kFallsFrom, kArrives, 3, {kBesideLine, -1}},
    {"OutsideBoth", kFallsTo, kGoesLeft, 0, {-kOutside, kOutside}},
    {"WithinTheFirst", kFallsTo, kComesFromRight, 1, {kFar, kNear}},
    {"WithinTheSecond", kFallsFrom, kGoesLeft, 2, {-kNear, -kFar}},
    {"WithinBoth", kFallsFrom, kComesFromRight, 3, {kInside, -kInside}},
};

class IsFilletableArcTest : public testing::TestWithParam<FilletableArcPair> {};

TEST_P(IsFilletableArcTest, RoundStandsBesideBothInTheCorner)
{
    const FilletableArcPair& row = GetParam();
    CVexGeCircArc2d round({7, 7}, 7);
    int code = -1;
    const auto ask = [&](const auto& first, const auto& second) {
        return CVexDbPolyline::IsFilletable(first, second, 1, round, code);
    };
    ASSERT_TRUE(std::visit(ask, row.first, row.second));
    EXPECT_EQ(row.code, code);
    EXPECT_POINT_NEAR(row.center.x, row.center.y, round.center(), 1e-9);
    EXPECT_NEAR(1.0, round.radius(), 1e-12);
}

TEST_P(IsFilletableArcTest, RadiusOfNoRoundIsRefusedAndLeavesTheArcAlone)
{
    const FilletableArcPair& row = GetParam();
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    for (const double radius : {0.0, -1.0, kNan, std::numeric_limits<double>::infinity()}) {
        CVexGeCircArc2d round({7, 7}, 7);
        int code = -1;
        const auto ask = [&](const auto& first, const auto& second) {
            return CVexDbPolyline::IsFilletable(first, second, radius, round, code);
        };
        EXPECT_FALSE(std::visit(ask, row.first, row.second)) << radius;
        EXPECT_EQ(row.code, code) << radius;
        EXPECT_POINT(7, 7, round.center());
    }
}

INSTANTIATE_TEST_SUITE_P(Pairs, IsFilletableArcTest, testing::ValuesIn(kArcPairs),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(IsFilletableSizeTest, RoundBesideALineGrowsUntilTheLineIsTooShort)
{
    // About x,r and r + 10 from 10,0: x = 10 - sqrt(100 + 20 r), which the line reaches at r = 40.
    CVexGeCircArc2d round;
    int code = -1;
    ASSERT_TRUE(CVexDbPolyline::IsFilletable(kArrives, kFallsTo, 39.999, round, code));
    EXPECT_POINT_NEAR(10.0 - std::sqrt(899.98), 39.999, round.center(), 1e-9);
    EXPECT_FALSE(CVexDbPolyline::IsFilletable(kArrives, kFallsTo, 40.001, round, code));
}

TEST(IsFilletableCuspTest, RoundStandsBetweenTheArcs)
{
    // It rises from the origin, to which the other one falls.
    const CVexGeCircArc2d beside({-10, 0}, 10, 0.0, kPi);
    CVexGeCircArc2d round;
    int code = -1;
    ASSERT_TRUE(CVexDbPolyline::IsFilletable(kFallsTo, beside, 2, round, code));
    EXPECT_EQ(0, code);
    EXPECT_POINT_NEAR(0, std::sqrt(44.0), round.center(), 1e-9);
}

} // namespace
