#include "tests/vexge/geasserts.h"
#include "vexge/geentity2d/vexgecircarc2d.h"

#include <cmath>
#include <numbers>
#include <random>
#include <vector>

// The display vertices of arcs against the plain loop that defines them: a running angle, its sine
// and cosine, and the integer towards zero.

namespace {

constexpr double kPi = std::numbers::pi;
constexpr int kMostLogical = 1'000'000'000;

int towardsZero(double value)
{
    return std::fabs(value) >= kMostLogical ? (value < 0.0 ? -kMostLogical : kMostLogical)
                                            : static_cast<int>(value);
}

std::vector<CPoint> plainVertices(const CVexGeCircArc2d& arc, int segments, double scale)
{
    std::vector<CPoint> vertices;
    const auto push = [&](double angle) {
        vertices.emplace_back(
            towardsZero((arc.center().x + arc.radius() * std::cos(angle)) * scale),
            towardsZero((arc.center().y + arc.radius() * std::sin(angle)) * scale));
    };
    const auto positive = [](double angle) { return angle < 0.0 ? angle + 2.0 * kPi : angle; };
    const double end = positive(arc.endAng());
    double angle = positive(arc.startAng());
    angle -= end < angle ? 2.0 * kPi : 0.0;
    for (; angle < end; angle += 2.0 * kPi / segments) {
        push(angle);
    }
    push(end);
    return vertices;
}

void expectPlain(const CVexGeCircArc2d& arc, int segments, double scale, const char* what)
{
    std::vector<CPoint> vertices;
    arc.getGrVertexArray(vertices, segments, scale);
    ASSERT_EQ(plainVertices(arc, segments, scale), vertices)
        << what << ": centre " << arc.center().x << ' ' << arc.center().y << ", radius "
        << arc.radius() << ", from " << arc.startAng() << " to " << arc.endAng() << ", segments "
        << segments;
}

class RandomArcs {
public:
    double between(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(m_random);
    }
    CVexGeCircArc2d arc(double startAng, double endAng, bool onGrid)
    {
        const double radius = std::min(std::pow(10.0, between(-3.0, 7.2)), 1e7);
        const CVexGePoint2d centre(between(-1e6, 1e6), between(-1e6, 1e6));
        if (!onGrid) {
            return {centre, radius, startAng, endAng};
        }
        return {{std::floor(centre.x), std::floor(centre.y)},
                std::floor(radius) + 1.0,
                startAng,
                endAng};
    }

private:
    std::mt19937 m_random{2024};
};

} // namespace

TEST(ArcDisplayTest, RandomArcsHaveTheVerticesOfThePlainLoop)
{
    RandomArcs random;
    for (int i = 0; i < 20000; ++i) {
        const double start = random.between(-2.0 * kPi, 2.0 * kPi);
        const double end = random.between(-2.0 * kPi, 2.0 * kPi);
        expectPlain(random.arc(start, end, i % 2 == 0), 100, 100.0, "random");
    }
}

// Where a coordinate is next to an integer, turning would tell the wrong one every second time.
TEST(ArcDisplayTest, ArcsBetweenAxesHaveTheVerticesOfThePlainLoop)
{
    RandomArcs random;
    for (int i = 0; i < 64 * 64; ++i) {
        const double start = (i / 64 - 32) * kPi / 16.0;
        const double end = (i % 64 - 32) * kPi / 16.0;
        expectPlain(random.arc(start, end, true), 100, 100.0, "of sixteenths");
    }
}

TEST(ArcDisplayTest, AnyNumberOfSegmentsHasTheVerticesOfThePlainLoop)
{
    RandomArcs random;
    for (int segments = 1; segments <= 700; ++segments) {
        const double start = random.between(0.0, 6.0);
        expectPlain(random.arc(0.0, 2.0 * kPi, true), segments, 100.0, "whole");
        expectPlain(random.arc(start, start - 0.1, false), segments, 1.0, "nearly whole");
    }
}

struct DisplayRow {
    const char* name;
    CVexGeCircArc2d arc;
};

TEST(ArcDisplayTest, UnusualArcsHaveTheVerticesOfThePlainLoop)
{
    const DisplayRow rows[] = {
        {"three turns", {{1.25, -7.0}, 3.5, 0.0, 6.0 * kPi}},
        {"angles far out", {{0.0, 0.0}, 100.0, 1000.0, 1001.5}},
        {"equal angles", {{5.0, 5.0}, 10.0, 1.0, 1.0}},
        {"no radius", {{5.0, 5.0}, 0.0, 0.0, kPi}},
        {"turned inside out", {{5.0, 5.0}, -10.0, 0.0, kPi}},
        {"less than a step", {{5.0, 5.0}, 10.0, 1.0, 1.01}},
        {"whole, on the origin", {{0.0, 0.0}, 1000.0, 0.0, 2.0 * kPi}},
        {"partly beyond all screens", {{0.0, 0.0}, 1.5e7, 0.0, 2.0 * kPi}},
        {"wholly beyond", {{5e7, 5e7}, 1.0, 0.0, 2.0 * kPi}},
        {"radius beyond numbers", {{5.0, 5.0}, 1e300, 0.1, 3.0}},
    };
    for (const DisplayRow& row : rows) {
        expectPlain(row.arc, 100, 100.0, row.name);
    }
}

TEST(ArcDisplayTest, NotANumberIsAtTheOrigin)
{
    std::vector<CPoint> vertices;
    CVexGeCircArc2d({1.0, 2.0}, std::nan(""), 0.0, kPi).getGrVertexArray(vertices, 4, 100.0);
    EXPECT_EQ((std::vector<CPoint>{{0, 0}, {0, 0}, {0, 0}}), vertices);
    CVexGeCircArc2d({1.0, 2.0}, 3.0, std::nan(""), kPi).getGrVertexArray(vertices, 4, 100.0);
    EXPECT_EQ((std::vector<CPoint>{{-200, 200}}), vertices); // the end alone
}

TEST(ArcDisplayTest, RoomIsMadeForTheVerticesAlone)
{
    std::vector<CPoint> vertices;
    CVexGeCircArc2d({1.0, 2.0}, 3.0, 1.0, 2.0).getGrVertexArray(vertices, 100, 100.0);
    EXPECT_EQ(17U, vertices.size()); // 1 radian is 15.9 steps, and the end
    EXPECT_EQ(17U, vertices.capacity());
}
