#include "tests/vexge/geasserts.h"
#include "vexge/geentity2d/vexgeline2d.h"

#include <memory>
#include <numbers>

namespace {

using Line = CVexGeLine2d;
using Entity = CVexGeEntity2d;

Line line(double x1, double y1, double x2, double y2)
{
    return {CVexGePoint2d(x1, y1), CVexGePoint2d(x2, y2)};
}

const Line kLevel = line(0, 0, 10, 0);

} // namespace

TEST(IntersectKindTest, ExchangedSwapsTheRolesAndNothingElse)
{
    EXPECT_EQ(Entity::kExtendNone, Entity::exchanged(Entity::kExtendNone));
    EXPECT_EQ(Entity::kExtendArg, Entity::exchanged(Entity::kExtendThis));
    EXPECT_EQ(Entity::kExtendThis, Entity::exchanged(Entity::kExtendArg));
    EXPECT_EQ(Entity::kExtendBoth, Entity::exchanged(Entity::kExtendBoth));
    const auto outside = static_cast<Entity::Intersect>(4);
    EXPECT_EQ(outside, Entity::exchanged(outside));
    EXPECT_FALSE(Entity::counts(outside, true, true));
}

namespace {

struct KindRow {
    const char* name;
    Line other;
    int kind;
    bool expected;
    double x, y;
};

class LineKindTest : public testing::TestWithParam<KindRow> {};

} // namespace

TEST_P(LineKindTest, CountsByWhichOfTheTwoIsUnbounded)
{
    const KindRow& row = GetParam();
    CVexGePoint2d crossing(-99, -99);
    EXPECT_EQ(row.expected, kLevel.intersectWith(row.other, crossing,
                                                 static_cast<Entity::Intersect>(row.kind), 1e-6));
    EXPECT_POINT(row.x, row.y, crossing); // written whether it counts or not
}

namespace {

const Line kInside = line(4, -5, 4, 5), kBeyondThis = line(20, -5, 20, 5);
const Line kAbove = line(4, 1, 4, 5), kOffBoth = line(20, 1, 20, 5);

} // namespace

INSTANTIATE_TEST_SUITE_P(Table, LineKindTest,
                         testing::Values(KindRow{"BothNone", kInside, 0, true, 4, 0},
                                         KindRow{"BothThis", kInside, 1, true, 4, 0},
                                         KindRow{"BothArg", kInside, 2, true, 4, 0},
                                         KindRow{"BothBoth", kInside, 3, true, 4, 0},
                                         KindRow{"BothUnknown", kInside, 4, false, 4, 0},
                                         KindRow{"BothNegative", kInside, -1, false, 4, 0},
                                         KindRow{"OnlyOnArgNone", kBeyondThis, 0, false, 20, 0},
                                         KindRow{"OnlyOnArgThis", kBeyondThis, 1, true, 20, 0},
                                         KindRow{"OnlyOnArgArg", kBeyondThis, 2, false, 20, 0},
                                         KindRow{"OnlyOnArgBoth", kBeyondThis, 3, true, 20, 0},
                                         KindRow{"OnlyOnThisNone", kAbove, 0, false, 4, 0},
                                         KindRow{"OnlyOnThisThis", kAbove, 1, false, 4, 0},
                                         KindRow{"OnlyOnThisArg", kAbove, 2, true, 4, 0},
                                         KindRow{"OnlyOnThisBoth", kAbove, 3, true, 4, 0},
                                         KindRow{"NeitherNone", kOffBoth, 0, false, 20, 0},
                                         KindRow{"NeitherThis", kOffBoth, 1, false, 20, 0},
                                         KindRow{"NeitherArg", kOffBoth, 2, false, 20, 0},
                                         KindRow{"NeitherBoth", kOffBoth, 3, true, 20, 0}),
                         [](const auto& row) { return row.param.name; });

namespace {

struct RefusedRow {
    const char* name;
    Line a, b;
};

class LineRefusedTest : public testing::TestWithParam<RefusedRow> {};

} // namespace

TEST_P(LineRefusedTest, HasNoCrossingOfAnyKindAndLeavesThePoint)
{
    const RefusedRow& row = GetParam();
    CVexGePoint2d crossing(-99, -98);
    for (const auto kind :
         {Entity::kExtendNone, Entity::kExtendThis, Entity::kExtendArg, Entity::kExtendBoth}) {
        EXPECT_FALSE(row.a.intersectWith(row.b, crossing, kind, 0.001));
        EXPECT_FALSE(row.b.intersectWith(row.a, crossing, kind, 0.001));
    }
    EXPECT_POINT(-99, -98, crossing);
}

INSTANTIATE_TEST_SUITE_P(
    Table, LineRefusedTest,
    testing::Values(RefusedRow{"Identical", kLevel, kLevel},
                    RefusedRow{"Reversed", kLevel, line(10, 0, 0, 0)},
                    RefusedRow{"Contained", kLevel, line(2, 0, 5, 0)},
                    RefusedRow{"ContainedWithinAMillionthAcross", kLevel,
                               line(5, 0.9e-6, 5, -0.9e-6)},
                    RefusedRow{"EndToEnd", kLevel, line(10, 0, 20, 0)},
                    RefusedRow{"OverlappingAtOneEnd", kLevel, line(5, 0, 20, 0)},
                    RefusedRow{"Parallel", kLevel, line(0, 1, 10, 1)},
                    RefusedRow{"WithoutLengthOff", kLevel, line(4, 4, 4, 4)},
                    RefusedRow{"WithoutLengthOn", kLevel, line(4, 0, 4, 0)},
                    RefusedRow{"VeryShortAcross", line(0, 0, 1e-5, 0), line(0, -1e-4, 0, 1e-4)}),
    [](const auto& row) { return row.param.name; });

TEST(LineTest, CrossingBeyondTheEndsIsRefusedButStillGiven)
{
    CVexGePoint2d crossing;
    EXPECT_FALSE(
        kLevel.intersectWith(line(20, -5, 20, 5), crossing, Entity::kExtendNone, kGeEpsilon));
    EXPECT_POINT(20.0, 0.0, crossing); // by coordinate: the point's own == forgives 1e-6
}

TEST(LineTest, SegmentsThatMeetInACornerCrossThere)
{
    CVexGePoint2d corner;
    EXPECT_TRUE(kLevel.intersectWith(line(10, 0, 10, 7), corner, Entity::kExtendNone, kGeEpsilon));
    EXPECT_POINT(10, 0, corner);
}

TEST(LineTest, ListFormAppendsOnSuccessOnly)
{
    std::vector<CVexGePoint2d> points = {{1, 1}};
    int count = 7;
    EXPECT_FALSE(
        kLevel.intersectWith(line(20, -5, 20, 5), count, points, Entity::kExtendNone, kGeEpsilon));
    EXPECT_EQ(7, count);
    EXPECT_EQ(1U, points.size());
    EXPECT_TRUE(
        kLevel.intersectWith(line(4, -5, 4, 5), count, points, Entity::kExtendNone, kGeEpsilon));
    EXPECT_EQ(1, count);
    ASSERT_EQ(2U, points.size());
    EXPECT_POINT(4, 0, points[1]);
}

namespace {

struct NearestRow {
    const char* name;
    Line other;
    CVexGePoint2d here, there;
};

class LineNearestTest : public testing::TestWithParam<NearestRow> {};

} // namespace

TEST_P(LineNearestTest, GivesTheNearestPair)
{
    const NearestRow& row = GetParam();
    CVexGePoint2d there;
    EXPECT_POINT(row.here.x, row.here.y, kLevel.closestPointTo(row.other, there, kGeEpsilon));
    EXPECT_POINT(row.there.x, row.there.y, there);
    EXPECT_EQ(row.here.distanceTo(row.there), kLevel.distanceTo(row.other, kGeEpsilon));
}

INSTANTIATE_TEST_SUITE_P(
    Table, LineNearestTest,
    testing::Values(NearestRow{"Crossing", line(4, -5, 4, 5), {4, 0}, {4, 0}},
                    NearestRow{"FootOfTheOthersStart", line(3, 2, 5, 6), {3, 0}, {3, 2}},
                    NearestRow{"FootOfTheOthersEnd", line(5, 6, 3, 2), {3, 0}, {3, 2}},
                    NearestRow{"FootOfTheStart", line(-2, -4, -2, 4), {0, 0}, {-2, 0}},
                    NearestRow{"FootOfTheEnd", line(12, -4, 12, 4), {10, 0}, {12, 0}},
                    NearestRow{"StartToStart", line(-3, 4, -6, 8), {0, 0}, {-3, 4}},
                    NearestRow{"StartToEnd", line(-6, 8, -3, 4), {0, 0}, {-3, 4}},
                    NearestRow{"EndToStart", line(13, 4, 16, 8), {10, 0}, {13, 4}},
                    NearestRow{"EndToEnd", line(16, 8, 13, 4), {10, 0}, {13, 4}},
                    NearestRow{"ParallelTakesTheFirstRanked", line(2, 3, 8, 3), {2, 0}, {2, 3}},
                    NearestRow{"TieOfTheEndsTakesTheFirst", line(8, 3, -20, 3), {8, 0}, {8, 3}}),
    [](const auto& row) { return row.param.name; });

namespace {

struct OverlapRow {
    const char* name;
    Line other;
    bool expected;
    Line shared;
};

class LineOverlapTest : public testing::TestWithParam<OverlapRow> {};

} // namespace

TEST_P(LineOverlapTest, IsForOppositeDirectionsOnly)
{
    const OverlapRow& row = GetParam();
    CVexGeLine2d* shared = nullptr;
    ASSERT_EQ(row.expected, kLevel.overlap(row.other, shared, 0.001));
    const std::unique_ptr<CVexGeLine2d> owner(shared);
    ASSERT_EQ(row.expected, shared != nullptr);
    if (shared != nullptr) {
        EXPECT_POINT(row.shared.startPoint().x, row.shared.startPoint().y, shared->startPoint());
        EXPECT_POINT(row.shared.endPoint().x, row.shared.endPoint().y, shared->endPoint());
    }
}

INSTANTIATE_TEST_SUITE_P(
    Table, LineOverlapTest,
    testing::Values(
        OverlapRow{"SameDirection", line(2, 0, 5, 0), false, {}},
        OverlapRow{"OneIsTheReverse", line(10, 0, 0, 0), true, kLevel},
        OverlapRow{"TwoOtherInside", line(5, 0, 2, 0), true, line(5, 0, 2, 0)},
        OverlapRow{"ThreeReceiverInside", line(15, 0, -5, 0), true, kLevel},
        OverlapRow{"FourOverTheReceiversStart", line(4, 0, -5, 0), true, line(0, 0, 4, 0)},
        OverlapRow{"FiveOverTheReceiversEnd", line(15, 0, 6, 0), true, line(10, 0, 6, 0)},
        OverlapRow{"OneSharedEnd", line(20, 0, 10, 0), true, line(10, 0, 10, 0)},
        OverlapRow{"Apart", line(20, 0, 12, 0), false, {}},
        OverlapRow{"BesideIt", line(5, 1, 2, 1), false, {}}),
    [](const auto& row) { return row.param.name; });

TEST(LineTest, OverlapLeavesItsOutputOnFailure)
{
    CVexGeLine2d held;
    CVexGeLine2d* shared = &held;
    EXPECT_FALSE(kLevel.overlap(line(2, 0, 5, 0), shared, 0.001));
    EXPECT_EQ(&held, shared);
}

TEST(LineIntersectTest, ParallelLinesMeetForNoKindAtAnyLengthAndAngle)
{
    for (int degrees = 1; degrees < 180; ++degrees) {
        for (const double length : {10.0, 100.0, 1000.0}) {
            const CVexGeVector2d along =
                CVexGeVector2d(degrees * std::numbers::pi / 180.0) * length;
            const CVexGeVector2d aside = along.perpVector() * (7.0 / length);
            const CVexGeLine2d one({3.3, 4.7}, along);
            const CVexGeLine2d other(one.startPoint() + aside, along * 1.7);
            CVexGePoint2d out(9, 9);
            EXPECT_FALSE(one.intersectWith(other, out, CVexGeEntity2d::kExtendArg, kGeEpsilon));
            EXPECT_FALSE(one.intersectWith(other, out, CVexGeEntity2d::kExtendBoth, kGeEpsilon));
        }
    }
}

TEST(LineIntersectTest, LinesThatNearlyRunTogetherCrossWhereTheyDo)
{
    const CVexGePoint2d middle(33.3, 44.7);
    const CVexGeVector2d along(0.6 * 100, 0.8 * 100);
    const CVexGeVector2d turned = CVexGeVector2d(along).rotateBy(1e-5);
    CVexGePoint2d out;
    EXPECT_TRUE(CVexGeLine2d(middle - along * 0.3, along)
                    .intersectWith(CVexGeLine2d(middle - turned * 0.6, turned), out,
                                   CVexGeEntity2d::kExtendNone, kGeEpsilon));
    EXPECT_POINT_NEAR(33.3, 44.7, out, 1e-8);
}
