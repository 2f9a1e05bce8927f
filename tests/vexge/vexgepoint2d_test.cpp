#include "tests/vexge/geasserts.h"
#include "tests/vexge/gebytes.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/gemath/vexgematrix2d.h"
#include "vexge/gemath/vexgepoint2d.h"

#include <limits>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

CVexGePoint2d tagged(double x, double y, std::int32_t tag)
{
    CVexGePoint2d point(x, y);
    point.tag = tag;
    return point;
}

/// Built while other translation units may still wait for their static values.
const CVexGePoint2d earlyOrigin = CVexGePoint2d::kOrigin;

} // namespace

TEST(XYTest, PairStartsAtZeroAndTakesItsValues)
{
    VexXY pair;
    EXPECT_EQ(0.0, pair.x);
    EXPECT_EQ(0.0, pair.y);
    pair.set(1.5, -2.5);
    const VexXY other = pair;
    EXPECT_EQ(1.5, other.x);
    EXPECT_EQ(-2.5, other.y);
}

TEST(Point2dTest, EachSourceGivesItsCoordinatesAndNoTag)
{
    EXPECT_POINT(0, 0, CVexGePoint2d());
    EXPECT_POINT(3, -4, CVexGePoint2d(CPoint(3, -4)));
    EXPECT_POINT(0.5, 0.25, CVexGePoint2d(VexXY(0.5, 0.25)));
    EXPECT_POINT(0, 0, earlyOrigin);
    EXPECT_EQ(0, CVexGePoint2d(CPoint(3, -4)).tag);
}

TEST(Point2dTest, CopiesAndEditsKeepTheTagAndAPairZeroesIt)
{
    CVexGePoint2d point(tagged(1, 2, 7));
    CVexGePoint2d assigned;
    assigned = point;
    EXPECT_EQ(7, assigned.tag);
    point.set(5, 6).translateBy({1, 1}).rotateBy(1.0, CVexGePoint2d::kOrigin);
    EXPECT_EQ(7, point.tag);
    point = VexXY(8, 9);
    EXPECT_POINT(8, 9, point);
    EXPECT_EQ(0, point.tag);
}

TEST(Point2dTest, ArithmeticActsOnBothCoordinates)
{
    CVexGePoint2d point(6, -8);
    EXPECT_POINT(12, -16, point * 2.0);
    EXPECT_POINT(3, -4, point / 2.0);
    EXPECT_POINT(7, -6, point + CVexGeVector2d(1, 2));
    EXPECT_POINT(5, -10, point - CVexGeVector2d(1, 2));
    EXPECT_POINT(5, -9, point - CVexGePoint2d(1, 1));
    ((point *= 3.0) /= 2.0) += CVexGeVector2d(1, 1);
    EXPECT_POINT(10, -11, point);
    EXPECT_POINT(9, -13, point -= CVexGeVector2d(1, 2));
    EXPECT_POINT(9, -13, point.asVector());
}

TEST(Point2dTest, SumSetsTheReceiverButProductLeavesIt)
{
    CVexGePoint2d point(1, 1);
    EXPECT_POINT(5, 7, point.setToSum({2, 3}, {3, 4}));
    EXPECT_POINT(5, 7, point);
    // The product is only asked through the receiver, which callers expect to stay in its place.
    const CVexGeMatrix2d shift = CVexGeMatrix2d::translation({10, 20});
    EXPECT_POINT(12, 23, point.setToProduct(shift, {2, 3}));
    EXPECT_POINT(5, 7, point);
    EXPECT_EQ(9, point.setToProduct(shift, tagged(2, 3, 9)).tag);
}

TEST(Point2dTest, IndexTwoIsOneSharedOne)
{
    const CVexGePoint2d fixed(4, 5);
    EXPECT_EQ(4.0, fixed[0]);
    EXPECT_EQ(5.0, fixed[1]);
    EXPECT_EQ(1.0, fixed[2]);
    CVexGePoint2d a(1, 2), b(3, 4);
    EXPECT_EQ(&a[2], &b[2]);
    EXPECT_EQ(1.0, a[2]);
    a[0] = 7;
    a[1] = 8;
    EXPECT_POINT(7, 8, a);
}

namespace {

struct RoundingRow {
    const char* name;
    double x, y;
    CPoint expected;
};

class PointRoundingTest : public testing::TestWithParam<RoundingRow> {};

} // namespace

TEST_P(PointRoundingTest, AddsAHalfAndDropsTheFraction)
{
    const RoundingRow& row = GetParam();
    EXPECT_EQ(row.expected, CVexGePoint2d(row.x, row.y).asCPoint());
}

INSTANTIATE_TEST_SUITE_P(Table, PointRoundingTest,
                         testing::Values(RoundingRow{"MixedSigns", -0.7, 0.7, {0, 1}},
                                         RoundingRow{"NegativeHalves", -1.5, -2.5, {-1, -2}},
                                         RoundingRow{"BelowNegativeHalf", -1.6, -2.4, {-1, -1}},
                                         RoundingRow{"PositiveHalves", 0.5, 1.4999, {1, 1}},
                                         RoundingRow{
                                             "TooLarge", 1e300, -1e300, {1000000000, -1000000000}},
                                         RoundingRow{"NoNumber", kNaN, 2.0, {0, 2}}),
                         [](const auto& row) { return row.param.name; });

TEST(Point2dTest, TransformIgnoresTheThirdRow)
{
    CVexGeMatrix2d matrix(true);
    matrix(0, 0) = 2;
    matrix(0, 1) = 3;
    matrix(0, 2) = 5;
    matrix(1, 0) = 7;
    matrix(1, 2) = 11;
    matrix(2, 0) = 100;
    matrix(2, 2) = 100;
    EXPECT_POINT(13, 20, CVexGePoint2d(1, 2).transformBy(matrix));
}

TEST(Point2dTest, RotationAboutAnEqualCentreKeepsTheBits)
{
    CVexGePoint2d quarter(3, 1);
    EXPECT_POINT_NEAR(1, 3, quarter.rotateBy(kPi / 2, {1, 1}), 1e-15);
    CVexGePoint2d still(1.0000005, 1);
    EXPECT_POINT(1.0000005, 1, still.rotateBy(kPi, {1, 1}));
}

TEST(Point2dTest, MirrorsInALineThatMissesTheOrigin)
{
    const CVexGeLine2d diagonal(CVexGePoint2d(1, 0), CVexGePoint2d(3, 2)); // y = x - 1
    EXPECT_POINT_NEAR(6, 4, CVexGePoint2d(5, 5).mirror(diagonal), 1e-14);
    const CVexGeLine2d upright(CVexGePoint2d(2, 0), CVexGePoint2d(2, 1));
    EXPECT_POINT_NEAR(-1, 7, CVexGePoint2d(5, 7).mirror(upright), 1e-14);
}

TEST(Point2dTest, MirrorInALineAlongAnAxisIsExact)
{
    const CVexGeLine2d upright(CVexGePoint2d(2.5, 0), CVexGePoint2d(2.5, 100));
    EXPECT_POINT(-996, 1234.0009765625, CVexGePoint2d(1001, 1234.0009765625).mirror(upright));
    const CVexGeLine2d level(CVexGePoint2d(100, 0.25), CVexGePoint2d(-100, 0.25));
    EXPECT_POINT(1001, -6.5, CVexGePoint2d(1001, 7).mirror(level));
    const CVexGeLine2d dot(CVexGePoint2d(0, 1), CVexGePoint2d(0, 1)); // counts as level
    EXPECT_POINT(3, -2, CVexGePoint2d(3, 4).mirror(dot));
}

TEST(Point2dTest, ScalesAboutTheCentre)
{
    EXPECT_POINT(5, -3, CVexGePoint2d(3, -1).scaleBy(2.0, {1, 1}));
    EXPECT_POINT(5, -5, CVexGePoint2d(3, -1).scaleBy(2.0, 3.0, {1, 1}));
}

TEST(Point2dTest, SlantMovesByTheTurnedPerpendicular)
{
    const CVexGeLine2d level(CVexGePoint2d(0, 0), CVexGePoint2d(10, 0));
    const double half = std::sqrt(0.5);
    // The perpendicular (0, 2), turned by 45 degrees, is (-2 half, 2 half).
    EXPECT_POINT_NEAR(4 - 2 * half, 2 + 2 * half,
                      CVexGePoint2d(4, 2).slantBy(level, kPi / 4, false), 1e-12);
    // Stretched by 1 / cos(45 degrees) it is (-2, 2).
    EXPECT_POINT_NEAR(2, 4, CVexGePoint2d(4, 2).slantBy(level, kPi / 4, true), 1e-12);
}

TEST(Point2dTest, SlantFromALineWithoutLengthMovesNothing)
{
    const CVexGeLine2d nothing;
    EXPECT_POINT(4, 2, CVexGePoint2d(4, 2).slantBy(nothing, 1.0, true));
}

TEST(Point2dTest, DistanceAndDirection)
{
    EXPECT_EQ(5.0, CVexGePoint2d(1, 1).distanceTo({4, 5}));
    EXPECT_EQ(0.0, CVexGePoint2d(1, 1).angleTo({1, 1}));
    EXPECT_NEAR(1.5 * kPi, CVexGePoint2d(1, 1).angleTo({1, -3}), 1e-15);
}

TEST(Point2dTest, EqualityExcludesItsOwnBoundOnBothSides)
{
    // The reader expects != to be the opposite of ==. At exactly 1e-6 both are false, and curves
    // that compare ends by one or the other keep their answers.
    const CVexGePoint2d origin, atBound(1e-6, 0), inside(0.9e-6, 0), outside(1.1e-6, 0);
    EXPECT_FALSE(origin == atBound);
    EXPECT_FALSE(origin != atBound);
    EXPECT_TRUE(origin == inside && !(origin != inside));
    EXPECT_TRUE(origin != outside && !(origin == outside));
}

TEST(Point2dTest, ToleranceTestsIncludeTheirBound)
{
    const CVexGePoint2d origin, quarter(0.25, 0);
    EXPECT_TRUE(origin.isEqualTo(quarter, 0.25));
    EXPECT_FALSE(origin.isEqualTo(quarter, 0.2499));
    EXPECT_TRUE(origin.isOn(quarter, 0.25));
    EXPECT_FALSE(origin.isOn(quarter, 0.2499));
}

TEST(Point2dTest, FileFormIsTwentyLittleEndianBytesWithTheTag)
{
    const std::string hex = savedHex(tagged(1.0, -2.5, 0x01020304));
    EXPECT_EQ("000000000000f03f"
              "00000000000004c0"
              "04030201",
              hex);
    CVexGePoint2d point;
    readHex(point, hex);
    EXPECT_POINT(1.0, -2.5, point);
    EXPECT_EQ(0x01020304, point.tag);
}

TEST(Point2dTest, AShortFileLeavesWhatItCannotFill)
{
    CVexGePoint2d point = tagged(3, 4, 5);
    readHex(point, "000000000000f03f");
    EXPECT_POINT(1.0, 4.0, point);
    EXPECT_EQ(5, point.tag);
}
