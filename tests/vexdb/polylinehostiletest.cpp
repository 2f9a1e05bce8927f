// Shapes that no draughtsman draws but files and hosts may hand over: every edit leaves them finite
// where they were, and goes back to the byte.

#include "tests/vexdb/polylineeditfixture.h"

#include <limits>

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct HostileShape {
    const char* name;
    std::initializer_list<Corner> corners;
};

void PrintTo(const HostileShape& row, std::ostream* out)
{
    *out << row.name;
}

const HostileShape kShapes[] = {
    {"Empty", {}},
    {"LoneVertex", {{1, 2, 1}}},
    {"TwoArcs", {{0, 0, 1}, {10, 0, -1}}},
    {"AllVerticesEqual", {{5, 5, 1}, {5, 5, -1}, {5, 5, 0.5}, {5, 5}}},
    {"DoubledVertices", {{0, 0, 0.5}, {10, 0, 1}, {10, 0, -1}, {10, 10}, {0, 10}, {0, 10}}},
    {"AlmostDoubledVertices",
     {{0, 0}, {0.0011, 0, 1}, {0.0011, 0.0011}, {10, 10, 1}, {10, 10.0005}}},
    {"PointsThatAreNoNumbers", {{0, 0}, {kNan, 5}, {kInfinity, 10}, {20, 0}}},
    {"BulgesThatAreNoNumbers", {{0, 0, kNan}, {10, 0, kInfinity}, {10, 10, -kInfinity}, {20, 0}}},
    {"PointsOfLargeNumbers", {{0, 0, 1}, {1e300, 0, -0.5}, {1e300, 1e300}, {0, 1e300, 2}}},
    {"WholeCircles", {{0, 0, 1e9}, {10, 0, -1e9}, {10, 10, 1e300}, {0, 10, -1e150}}},
    {"HardlyBent",
     {{0, 0, 0.001}, {10, 0, 0.0010000001}, {10, 10, -0.0010000001}, {0, 10, 1e-300}}},
};

/// Whether no coordinate and no bulge is but a number.
bool isFinite(const CVexGePolyline2d& chain)
{
    const auto isNumber = [](double number) { return std::isfinite(number); };
    return std::ranges::all_of(chain.bulges(), isNumber) &&
           std::ranges::all_of(chain.vertices(), [&](const CVexGePoint2d& vertex) {
               return isNumber(vertex.x) && isNumber(vertex.y);
           });
}

class PolylineHostileTest : public PolylineEditTest,
                            public testing::WithParamInterface<HostileShape> {
protected:
    /// Does `edit` to the shape, open and closed, and undoes and redoes it.
    void holdAgainst(const std::function<void()>& edit)
    {
        for (const bool closed : {false, true}) {
            put(GetParam().corners, closed);
            const bool wasFinite = isFinite(polyline->gePolyline());
            const std::vector<std::byte> before = saved(*polyline);
            edit();
            EXPECT_TRUE(!wasFinite || isFinite(polyline->gePolyline())) << wordsOf(*polyline);
            const std::vector<std::byte> after = saved(*polyline);
            while (drawing.undoHandler().Undo()) {
            }
            EXPECT_EQ(before, saved(*polyline));
            while (drawing.undoHandler().Redo()) {
            }
            EXPECT_EQ(after, saved(*polyline));
        }
    }
};

TEST_P(PolylineHostileTest, TrimmedAndExtended)
{
    CVexDbCircle circle(CVexGePoint2d(5, 5), 4);
    CVexDbCircle noCircle(CVexGePoint2d(kNan, 5), 4);
    CVexDbEntity* across = otherPolyline({{5, -20}, {5, 20, 1}, {kNan, -5}, {-5, 20}, {30, 30}});
    for (const CVexGePoint2d& pick :
         {CVexGePoint2d(1, 0), {9, 9}, {kNan, 0}, {1e300, -1e300}, {kInfinity, 0}}) {
        const std::vector<CVexDbEntity*> others = {&circle,  &noCircle,     across,
                                                   level(5), upright(30.0), cutter({5, 5}, {5, 5})};
        holdAgainst([&] { trim(pick, others); });
        holdAgainst([&] { extend(pick, others); });
    }
}

TEST_P(PolylineHostileTest, DividedAndRounded)
{
    for (int index = -1; index < 7; ++index) {
        holdAgainst([&] { polyline->DivideSegment(3, index, false); });
        for (const double radius : {1e-300, 0.001, 2.0, 1e300, kInfinity, kNan, -1.0}) {
            holdAgainst([&] { polyline->Fillet(index, radius, 0.1); });
            holdAgainst([&] { polyline->Fillet(radius); });
        }
    }
}

TEST_P(PolylineHostileTest, DrawnSelectedAndWritten)
{
    put(GetParam().corners, true).SetFill(true);
    polyline->Draw(&dc);
    CVexGePoint2d low(-1, -1);
    CVexGePoint2d high(5, 5);
    polyline->checkInsideOrCross(low, high);
    polyline->trueExtents(low, high);
    CVexDbEntity::PointList* grips = nullptr;
    EXPECT_TRUE(polyline->getGripPointVec(grips));
    EXPECT_LE(polyline->NumVerts(), grips->size());
    CVexDbPolyline again(0, &drawing);
    EXPECT_TRUE(reads(again, saved(*polyline)));
    EXPECT_EQ(polyline->NumVerts(), again.NumVerts());
}

INSTANTIATE_TEST_SUITE_P(Shapes, PolylineHostileTest, testing::ValuesIn(kShapes),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
