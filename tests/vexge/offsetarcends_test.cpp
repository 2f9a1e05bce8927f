#include "tests/vexge/geasserts.h"
#include "tests/vexge/offsetshapes.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

// Offsets of flat arcs. An arc forgives 0.001 radians beyond its ends, which is 0.3 at a radius of
// 300: far more than an offset forgives. What is found there is on no chain, and whole runs were
// lost over it.

namespace {

using shapes::beside;
using shapes::chain;
using PolylineList = CVexGePolyline2d::PolylineList;

// All arcs have the radius 300. From the level line to the origin an arc about (180,-240) rises at
// a slope of 3 to 4, to its top, and one about (-180,-240) falls at this slope.
const double kRising = -std::tan(std::asin(0.6) / 4.0);
const double kFalling = -std::tan(std::acos(0.6) / 4.0);

CVexGePolyline2d lineAndRise()
{
    return chain({{-100, 0}, {0, 0, kRising}, {180, 60}}, false);
}

CVexGePolyline2d lineAndFall()
{
    return chain({{-100, 0}, {0, 0, kFalling}, {120, -240}}, false);
}

// The same arcs with their mirror images in the y axis.
CVexGePolyline2d valley()
{
    return chain({{-180, 60, kRising}, {0, 0, kRising}, {180, 60}}, false);
}

CVexGePolyline2d peak()
{
    return chain({{-120, -240, kFalling}, {0, 0, kFalling}, {120, -240}}, false);
}

CVexGePolyline2d reversed(CVexGePolyline2d polyline)
{
    polyline.reverse();
    return polyline;
}

constexpr double kDist = 0.5;

/// The one chain that an offset downwards gives; empty for none or several.
CVexGePolyline2d below(const CVexGePolyline2d& source)
{
    const bool toTheLeft = source.vertices().front().x > source.vertices().back().x;
    PolylineList out;
    return source.offset(beside(source, 0, toTheLeft), kDist, out, false) == 1 ? *out.front()
                                                                               : CVexGePolyline2d();
}

struct CornerRow {
    const char* name;
    CVexGePolyline2d source;
    std::vector<CVexGePoint2d> expected;
};

void PrintTo(const CornerRow& row, std::ostream* out)
{
    *out << row.name;
}

// The moved line is at y = -0.5 and the circles have the radius 299.5. They cross 0.167 off x = 0,
// at 180 - sqrt(299.5^2 - 239.5^2); two circles at y = sqrt(299.5^2 - 180^2) - 240.
std::vector<CornerRow> cornerRows()
{
    const double x = 180.0 - std::sqrt(32340.0);
    const double y = std::sqrt(57300.25) - 240.0;
    const double low = -kDist;
    return {
        {"LineToArcOutside", lineAndRise(), {{-100, low}, {x, low}, {180, 59.5}}},
        {"ArcToLineOutside", reversed(lineAndRise()), {{180, 59.5}, {x, low}, {-100, low}}},
        {"ArcToArcOutside", valley(), {{-180, 59.5}, {0, y}, {180, 59.5}}},
        {"LineToArcInside", lineAndFall(), {{-100, low}, {-x, low}, {119.5, -240}}},
        {"ArcToLineInside", reversed(lineAndFall()), {{119.5, -240}, {-x, low}, {-100, low}}},
        {"ArcToArcInside", peak(), {{-119.5, -240}, {0, y}, {119.5, -240}}},
    };
}

class OffsetFlatCornerTest : public testing::TestWithParam<CornerRow> {};

TEST_P(OffsetFlatCornerTest, KeepsBothSegmentsUpToTheirCrossing)
{
    const CornerRow& row = GetParam();
    const CVexGePolyline2d moved = below(row.source);
    ASSERT_EQ(3U, moved.numVerts());
    for (unsigned i = 0; i < 3; ++i) {
        EXPECT_POINT_NEAR(row.expected[i].x, row.expected[i].y, moved.vertices()[i], 1e-9);
    }
    const unsigned arcs = row.source.segType(0) == CVexGePolyline2d::kArc ? 0 : 1;
    CVexGeCircArc2d arc;
    ASSERT_TRUE(moved.getArcSegAt(arcs, arc));
    EXPECT_NEAR(300.0 - kDist, arc.radius(), 1e-6);
}

INSTANTIATE_TEST_SUITE_P(Corners, OffsetFlatCornerTest, testing::ValuesIn(cornerRows()),
                         [](const auto& one) { return std::string(one.param.name); });

class Clipped : public CVexGePolyline2d {
public:
    explicit Clipped(const CVexGePolyline2d& source) : CVexGePolyline2d(source) {}
    [[nodiscard]] PolylineList pieces(const CVexGePolyline2d& raw, const CVexGePolyline2d& other,
                                      double dist) const
    {
        PolylineList out;
        clipOffsetPoly(raw.vertices(), raw.bulges(), other.vertices(), other.bulges(), dist, out);
        return out;
    }
};

} // namespace

TEST(OffsetArcEndsTest, OtherSideCutsUpToTheEndOfItsArcOnly)
{
    // A quarter of radius 1000 comes straight down at (50,y). Where it ends 0.2 above the chain its
    // circle goes on to cross it, 0.0002 radians beyond the end; where it ends below it cuts.
    const Clipped source(chain({{0, 0}, {100, 0}}, false));
    const CVexGePolyline2d raw = chain({{0, 1}, {100, 1}}, false);
    const double quarter = std::tan(std::atan(1.0) / 2.0);
    const auto post = [&](double y) { return chain({{1050, y + 1000, quarter}, {50, y}}, false); };
    const PolylineList whole = source.pieces(raw, post(1.2), 1.0);
    ASSERT_EQ(1U, whole.size());
    EXPECT_POINT_NEAR(100, 1, whole[0]->vertices()[1], 0.0);
    const PolylineList cut = source.pieces(raw, post(0.5), 1.0);
    ASSERT_EQ(2U, cut.size());
    EXPECT_NEAR(50.0, cut[0]->vertices()[1].x, 0.001);
}

TEST(OffsetArcEndsTest, CutsNearTheStartOfAnArcStayApart)
{
    // Two posts cut an arc of radius 1000 at 0.3 and 0.6 from its start, where distances along an
    // arc count as none.
    const Clipped source(chain({{0, 0}, {100, 0}}, false));
    const double quarter = std::tan(std::atan(1.0) / 2.0);
    const CVexGePolyline2d raw = chain({{0, 1000, quarter}, {-1000, 2000}}, false);
    const CVexGePolyline2d posts =
        chain({{-5, 1000.3}, {5, 1000.3}, {5, 1000.6}, {-5, 1000.6}}, false);
    const PolylineList pieces = source.pieces(raw, posts, 1.0);
    ASSERT_EQ(3U, pieces.size());
    EXPECT_NEAR(1000.3, pieces[0]->vertices()[1].y, 1e-6);
    EXPECT_NEAR(1000.6, pieces[1]->vertices()[1].y, 1e-6);
}

TEST(OffsetArcEndsTest, NoPieceHoldsANumberThatIsNotFinite)
{
    const double far = 1e300;
    const std::vector<CVexGePolyline2d> absurd{
        chain({{0, 0}, {far, 0}, {far, far}, {0, far}}, true),
        chain({{0, 0, 0.5}, {far, far, -0.5}, {2 * far, 0}}, false),
        chain({{0, 0, far}, {10, 0, 1}, {10, 10}}, false),
        chain({{0, 0}, {10, 0, far}, {20, 5}, {30, -far}}, false),
    };
    const auto isFinite = [](const std::unique_ptr<CVexGePolyline2d>& piece) {
        return std::ranges::all_of(
                   piece->vertices(),
                   [](const auto& at) { return std::isfinite(at.x) && std::isfinite(at.y); }) &&
               std::ranges::all_of(piece->bulges(), [](double b) { return std::isfinite(b); });
    };
    for (const CVexGePolyline2d& source : absurd) {
        for (const double dist : {1.0, 1e150, 1e299, far}) {
            PolylineList out;
            source.offset({5, 1}, dist, out, true);
            EXPECT_TRUE(std::ranges::all_of(out, isFinite));
        }
    }
}
