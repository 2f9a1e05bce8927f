#include "bench/geosshapes.h"
#include "bench/growth.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgecspline2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/gemath/vexgematrix2d.h"

#include <cmath>
#include <numbers>
#include <random>
#include <vector>

// The kernel beside GEOS on the same shapes: offsets, hits and the inside test of polylines, and
// the small queries by themselves.
//
// Offsets of straight segments have sharp corners outside, as a buffer with mitred joins has them;
// the plain buffer, with rounds of 8 segments a quarter, is what most programs call. Both are
// peers, `...Mitred` and `...Round`. A buffer moves concave runs by up to a hundredth of the
// distance to save vertices; an offset does not. For chains of arcs GEOS gets them flattened to
// 0.001, and rounds as fine; our result are arcs.

namespace {

constexpr double kBaseRadius = 100.0;
constexpr double kWaveShare = 0.05;

const GEOSContextHandle_t geos = GEOS_init_r();

/// How far flattened arcs may leave the true ones, and rounds of a buffer too.
constexpr double kFlatness = 0.001;
constexpr int kPlainQuarter = 8;

/// Segments of a quarter round of that radius that stay within the flatness.
int segmentsOfQuarter(double radius)
{
    const double step = 2.0 * std::acos(1.0 - kFlatness / radius);
    return static_cast<int>(std::ceil(std::numbers::pi / 2.0 / step));
}

// A closed wavy circle; its size grows with n, so that the vertices stay as far apart as they are.
CVexGePolyline2d wavy(int n, double turn = 0.0, double shift = 0.0)
{
    const double radius = kBaseRadius * n / 100.0;
    CVexGePolyline2d chain;
    chain.setSize(static_cast<unsigned>(n));
    for (int i = 0; i < n; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / n + turn;
        const double r = radius * (1.0 + kWaveShare * std::sin(12.0 * angle));
        chain.appendVertex({shift + r * std::cos(angle), r * std::sin(angle)});
    }
    chain.setClosed(true);
    return chain;
}

// The same of arcs that pass into each other smoothly, swinging about a circle.
CVexGePolyline2d wavyArcs(int n)
{
    const double radius = kBaseRadius * n / 100.0;
    const double turn = std::numbers::pi / n;
    CVexGePolyline2d chain;
    std::vector<double> bulges;
    for (int i = 0; i < n; ++i) {
        const double angle = 2.0 * turn * i;
        bulges.push_back(std::tan((turn + (i % 2 == 0 ? 0.3 : -0.3)) / 2.0));
        chain.appendVertex({radius * std::cos(angle), radius * std::sin(angle)}, bulges.back());
    }
    chain.setClosed(true);
    chain.setBulgeAt(static_cast<unsigned>(n) - 1, bulges.back()); // closing bends it anew
    return chain;
}

double radiusOf(int n)
{
    return kBaseRadius * n / 100.0;
}

/// What GEOS is asked for beside an offset.
struct Buffer {
    int quarterSegments = kPlainQuarter;
    int join = GEOSBUF_JOIN_ROUND;
};
constexpr Buffer kRound{};
constexpr Buffer kMitred{kPlainQuarter, GEOSBUF_JOIN_MITRE};

void offsetBy(benchmark::State& state, const char* name, const CVexGePolyline2d& chain,
              double distance, const CVexGePoint2d& side, const Buffer& peer)
{
    const CVexGePolyline2d flat = flattened(chain, kFlatness);
    const GeosShape area(geos, chain.isClosed() ? areaOf(geos, flat) : lineOf(geos, flat));
    const bool inwards = chain.isClosed() && side.x == 0.0;
    Comparison comparison(state, name, static_cast<double>(chain.numVerts()));
    for ([[maybe_unused]] auto turn : state) {
        CVexGePolyline2d::PolylineList pieces;
        const double ours = secondsOf([&] { chain.offset(side, distance, pieces, false); });
        const double plain = secondsOf([&] {
            const GeosShape buffer(geos, GEOSBufferWithStyle_r(geos, area.get(),
                                                               inwards ? -distance : distance,
                                                               peer.quarterSegments,
                                                               GEOSBUF_CAP_ROUND, peer.join, 5.0));
            benchmark::DoNotOptimize(buffer.get());
        });
        state.counters["pieces"] = static_cast<double>(pieces.size());
        comparison.round(ours, plain);
    }
}

int countOf(const benchmark::State& state)
{
    return static_cast<int>(state.range(0));
}

void offsetInwardsRound(benchmark::State& state)
{
    offsetBy(state, "in round", wavy(countOf(state)), 2.0, {0.0, 0.0}, kRound);
}

void offsetInwardsMitred(benchmark::State& state)
{
    offsetBy(state, "in mitred", wavy(countOf(state)), 2.0, {0.0, 0.0}, kMitred);
}

void offsetOutwardsRound(benchmark::State& state)
{
    const int n = countOf(state);
    offsetBy(state, "out round", wavy(n), 2.0, {3.0 * radiusOf(n), 0.0}, kRound);
}

void offsetOutwardsMitred(benchmark::State& state)
{
    const int n = countOf(state);
    offsetBy(state, "out mitred", wavy(n), 2.0, {3.0 * radiusOf(n), 0.0}, kMitred);
}

void offsetArcsInwards(benchmark::State& state)
{
    offsetBy(state, "arcs in", wavyArcs(countOf(state)), 2.0, {0.0, 0.0},
             {segmentsOfQuarter(2.0), GEOSBUF_JOIN_ROUND});
}

void offsetDeepRound(benchmark::State& state)
{
    const int n = countOf(state);
    offsetBy(state, "deep", wavy(n), radiusOf(n) / 2.0, {0.0, 0.0}, kRound);
}

void offsetOpenRound(benchmark::State& state)
{
    const int n = countOf(state);
    CVexGePolyline2d chain;
    for (int i = 0; i < n; ++i) {
        chain.appendVertex({5.0 * i, 10.0 * std::sin(0.4 * i)});
    }
    offsetBy(state, "open", chain, 2.0, {1.0, 1000.0}, kRound);
}

void hitsOfTwo(benchmark::State& state)
{
    const int n = countOf(state);
    const CVexGePolyline2d a = wavy(n);
    const CVexGePolyline2d b = wavy(n, 0.1, radiusOf(n) / 3.0);
    const GeosShape lineA(geos, lineOf(geos, a));
    const GeosShape lineB(geos, lineOf(geos, b));
    Comparison comparison(state, "hits", n);
    for ([[maybe_unused]] auto turn : state) {
        std::vector<CVexGePoint2d> points;
        int count = 0;
        const double ours =
            secondsOf([&] { a.intersectWith(b, count, points, CVexGeEntity2d::kExtendNone); });
        const double plain = secondsOf([&] {
            const GeosShape hits(geos, GEOSIntersection_r(geos, lineA.get(), lineB.get()));
            benchmark::DoNotOptimize(hits.get());
        });
        comparison.round(ours, plain);
    }
}

std::vector<CVexGePoint2d> scattered(int n, int count)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> place(-1.2 * radiusOf(n), 1.2 * radiusOf(n));
    std::vector<CVexGePoint2d> points;
    for (int i = 0; i < count; ++i) {
        const double x = place(random);
        points.emplace_back(x, place(random));
    }
    return points;
}

void insideTest(benchmark::State& state)
{
    const int n = countOf(state);
    const CVexGePolyline2d chain = wavy(n);
    const GeosShape area(geos, areaOf(geos, chain));
    const std::vector<CVexGePoint2d> points = scattered(n, 100);
    std::vector<GEOSGeometry*> peers;
    for (const CVexGePoint2d& point : points) {
        peers.push_back(GEOSGeom_createPointFromXY_r(geos, point.x, point.y));
    }
    Comparison comparison(state, "inside", 100.0 * n);
    for ([[maybe_unused]] auto turn : state) {
        int inside = 0;
        const double ours = secondsOf([&] {
            for (const CVexGePoint2d& point : points) {
                inside += chain.isInsidePoint(point) ? 1 : 0;
            }
        });
        const double plain = secondsOf([&] {
            for (const GEOSGeometry* point : peers) {
                inside -= GEOSContains_r(geos, area.get(), point) == 1 ? 1 : 0;
            }
        });
        state.counters["differences"] = inside;
        comparison.round(ours, plain);
    }
    for (GEOSGeometry* point : peers) {
        GEOSGeom_destroy_r(geos, point);
    }
}

void closestPoint(benchmark::State& state)
{
    const int n = countOf(state);
    const CVexGePolyline2d chain = wavy(n);
    const GeosShape line(geos, lineOf(geos, chain));
    const std::vector<CVexGePoint2d> points = scattered(n, 100);
    Comparison comparison(state, "closest", 100.0 * n);
    for ([[maybe_unused]] auto turn : state) {
        double sum = 0.0;
        const double ours = secondsOf([&] {
            for (const CVexGePoint2d& point : points) {
                sum += chain.closestPointTo(point).x;
            }
        });
        const double plain = secondsOf([&] {
            for (const CVexGePoint2d& point : points) {
                const GeosShape peer(geos, GEOSGeom_createPointFromXY_r(geos, point.x, point.y));
                double distance = 0.0;
                GEOSDistance_r(geos, line.get(), peer.get(), &distance);
                sum += distance;
            }
        });
        benchmark::DoNotOptimize(sum);
        comparison.round(ours, plain);
    }
}

void lineMeetsLine(benchmark::State& state)
{
    const CVexGeLine2d level({0.0, 0.0}, CVexGePoint2d(10.0, 1.0));
    const CVexGeLine2d upright({4.0, -5.0}, CVexGePoint2d(5.0, 5.0));
    CVexGePoint2d crossing;
    for ([[maybe_unused]] auto turn : state) {
        benchmark::DoNotOptimize(
            level.intersectWith(upright, crossing, CVexGeEntity2d::kExtendNone, kGeEpsilon));
    }
}

void transformOfChain(benchmark::State& state)
{
    CVexGePolyline2d chain = wavy(countOf(state));
    const CVexGeMatrix2d turned = CVexGeMatrix2d::rotation(0.001, CVexGePoint2d::kOrigin);
    for ([[maybe_unused]] auto turn : state) {
        chain.transformBy(turned);
        benchmark::DoNotOptimize(chain.vertices().data());
    }
    state.SetComplexityN(state.range(0));
}

#define VEX_OVER_SIZES(name)                                                                       \
    BENCHMARK(name)->RangeMultiplier(10)->Range(10, 10000)->UseManualTime()->Iterations(20)
VEX_OVER_SIZES(offsetInwardsRound);
VEX_OVER_SIZES(offsetInwardsMitred);
VEX_OVER_SIZES(offsetOutwardsRound);
VEX_OVER_SIZES(offsetOutwardsMitred);
VEX_OVER_SIZES(offsetArcsInwards);
VEX_OVER_SIZES(offsetDeepRound);
VEX_OVER_SIZES(offsetOpenRound);
VEX_OVER_SIZES(hitsOfTwo);
VEX_OVER_SIZES(insideTest);
VEX_OVER_SIZES(closestPoint);
BENCHMARK(lineMeetsLine);
BENCHMARK(transformOfChain)->RangeMultiplier(10)->Range(10, 10000)->Complexity(benchmark::oN);

} // namespace
