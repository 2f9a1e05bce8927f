#include "tests/vexge/geallocations.h"
#include "tests/vexge/geasserts.h"
#include "tests/vexge/offsetshapes.h"
#include "tests/vexge/offsetwalk.h"

#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <numbers>
#include <random>

// Chains of straight segments made to mislead the short way of the offset, which takes the raw
// chain for the result when it proves that the strips beside the segments meet nothing.

namespace {

using Chain = CVexGePolyline2d;

/// How many chains are tried; a longer run sets VEX_OFFSET_CHAINS.
int chainCount()
{
    const char* wish = std::getenv("VEX_OFFSET_CHAINS");
    return wish != nullptr ? std::atoi(wish) : 1500;
}

class HostileChains {
public:
    explicit HostileChains(unsigned seed) : m_random(seed) {}

    double between(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(m_random);
    }
    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }

    Chain next(double dist)
    {
        static constexpr double kOrigins[] = {0.0, 0.0, 1e3, -9e5, 2e6};
        const double at = kOrigins[pick(5)];
        const double step = dist * between(0.5, 6.0);
        const double turn = between(0.0, 1.7);
        double angle = between(0.0, 6.3);
        std::vector<shapes::Corner> corners{{at, at}};
        const int count = 3 + pick(20);
        for (int i = 1; i < count; ++i) {
            angle += turnOf(turn);
            const double length = pick(12) == 0 ? dist * between(0.0, 0.2) : step;
            const shapes::Corner& last = corners.back();
            corners.push_back(
                {last.x + length * std::cos(angle), last.y + length * std::sin(angle)});
        }
        return shapes::chain(pick(4) == 0 ? back(corners, dist) : corners, pick(2) == 0);
    }

private:
    /// Mostly a turn of one handedness, so that chains curl up; at times a sharp one or none.
    double turnOf(double most)
    {
        switch (pick(20)) {
        case 0: return 0.0;
        case 1: return between(-3.1, 3.1);
        case 2: return std::numbers::pi; // straight back
        default: return between(-0.3, 1.0) * most;
        }
    }

    /// The chain with its way back beside it, about twice the distance off.
    std::vector<shapes::Corner> back(const std::vector<shapes::Corner>& corners, double dist)
    {
        static constexpr double kGaps[] = {1.0, 1.999, 2.0, 2.001, 2.83, 2.85, 3.0};
        const double gap = dist * kGaps[pick(7)];
        std::vector<shapes::Corner> both = corners;
        for (auto corner = corners.rbegin(); corner != corners.rend(); ++corner) {
            both.push_back({corner->x, corner->y + gap});
        }
        return both;
    }

    std::mt19937 m_random;
};

bool sameBits(const Chain::PolylineList& a, const Chain::PolylineList& b)
{
    bool same = a.size() == b.size();
    for (std::size_t i = 0; same && i < a.size(); ++i) {
        same = a[i]->numVerts() == b[i]->numVerts() && a[i]->bulges() == b[i]->bulges();
        for (std::size_t k = 0; same && k < a[i]->numVerts(); ++k) {
            const CVexGePoint2d& here = a[i]->vertices()[k];
            const CVexGePoint2d& there = b[i]->vertices()[k];
            same = here.x == there.x && here.y == there.y;
        }
    }
    return same;
}

std::size_t allocationsOfOffset(int count)
{
    const Chain ring = shapes::wavyCircle(count, 100.0, 0.0, 1);
    const std::size_t before = allocationCount();
    Chain::PolylineList pieces;
    ring.getOffset({0, 0}, 2.0, pieces, false);
    return allocationCount() - before;
}

} // namespace

TEST(OffsetFreeTest, HostileChainsGetThePiecesOfThePlainWalk)
{
    constexpr double kDistances[] = {0.02, 0.3, 1.0, 2.0, 40.0};
    HostileChains chains(20);
    for (int i = 0; i < chainCount(); ++i) {
        const double dist = kDistances[chains.pick(5)];
        const Chain source = chains.next(dist);
        const CVexGePoint2d side =
            shapes::beside(source, static_cast<unsigned>(chains.pick(2)), chains.pick(2) == 0);
        Chain::PolylineList pieces;
        source.getOffset(side, dist, pieces, true);
        ASSERT_TRUE(sameBits(plainwalk::offsetPieces(source, side, dist, true), pieces))
            << "chain " << i << ", distance " << dist;
    }
}

TEST(OffsetFreeTest, NoSegmentCostsAnAllocationOfItsOwn)
{
    const std::size_t ofTen = allocationsOfOffset(10);
    EXPECT_GT(ofTen, 0U); // the count does count
    EXPECT_LE(ofTen, 16U);
    EXPECT_EQ(ofTen, allocationsOfOffset(20));
}
