#include "bench/growth.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <random>
#include <vector>

// One trim and one extension with growing numbers of boundaries, beside the plain form: every
// boundary intersected, every hit under its parameter in a map. "Spread" boundaries lie all over
// the drawing, as a selection of everything does, and few of them reach the curve; "crossing" ones
// all do.

namespace {

constexpr double kSide = 4000.0; // of the drawing
constexpr int kTrims = 200;      // a round

using Owners = std::vector<std::unique_ptr<CVexDbEntity>>;

/// Lines, arcs, circles and boxes of the sizes of a plan, all over the drawing.
Owners spread(int count)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> place(0.0, kSide), size(1.0, 40.0), angle(0.0, 6.28);
    Owners made;
    for (int i = 0; i < count; ++i) {
        const CVexGePoint2d at(place(random), place(random));
        switch (i % 4) {
        case 0:
            made.push_back(std::make_unique<CVexDbLine>(at, at + CVexGeVector2d(angle(random)) *
                                                                     size(random)));
            break;
        case 1:
            made.push_back(
                std::make_unique<CVexDbArc>(at, size(random), angle(random), angle(random)));
            break;
        case 2: made.push_back(std::make_unique<CVexDbCircle>(at, size(random))); break;
        default:
            made.push_back(
                std::make_unique<CVexDbBox>(at, size(random), size(random), angle(random)));
            break;
        }
    }
    return made;
}

/// Upright lines in front of each other, which the curves of the benchmarks all meet.
Owners crossing(int count)
{
    Owners made;
    for (int i = 0; i < count; ++i) {
        const double x = kSide * (0.1 + 0.8 * (i + 0.5) / count);
        made.push_back(
            std::make_unique<CVexDbLine>(CVexGePoint2d(x, 0.0), CVexGePoint2d(x, kSide)));
    }
    return made;
}

std::vector<CVexDbEntity*> pointersTo(const Owners& owners)
{
    std::vector<CVexDbEntity*> entities;
    for (const auto& owner : owners) {
        entities.push_back(owner.get());
    }
    return entities;
}

CVexDbLine makeLine()
{
    return {CVexGePoint2d(0.0, 2000.0), CVexGePoint2d(kSide, 2010.0)};
}

CVexDbArc makeArc()
{
    return {CVexGePoint2d(2000.0, -2000.0), 4100.0, 1.0, 2.1};
}

CVexDbCircle makeCircle()
{
    return {CVexGePoint2d(2000.0, 2000.0), 1700.0};
}

/// As many hits as the plain form finds: what a gathering without any thought costs.
template <class Curve>
std::size_t plainHits(Curve& curve, const std::vector<CVexDbEntity*>& others,
                      CVexDbEntity::Intersect kind)
{
    std::map<double, CVexGePoint2d> hits;
    CVexDbEntity::PointList points;
    int count = 0;
    for (CVexDbEntity* other : others) {
        if (curve.intersectWith(*other, count, points, kind, kGeEpsilon)) {
            for (const CVexGePoint2d& point : points) {
                hits.emplace(curve.paramAtPoint(point, kGeEpsilon), point);
            }
        }
    }
    return hits.size();
}

template <class Make, class Act>
void compare(benchmark::State& state, const char* name, const Owners& owners, Make make,
             CVexDbEntity::Intersect kind, Act act)
{
    const std::vector<CVexDbEntity*> others = pointersTo(owners);
    std::vector<CVexDbEntity*> boundaries = others;
    Comparison comparison(state, name, static_cast<double>(others.size()));
    for ([[maybe_unused]] auto turn : state) {
        const double plain = secondsOf([&] {
            for (int i = 0; i < kTrims; ++i) {
                auto curve = make();
                benchmark::DoNotOptimize(plainHits(curve, others, kind));
            }
        });
        const double ours = secondsOf([&] {
            for (int i = 0; i < kTrims; ++i) {
                auto curve = make();
                act(curve, boundaries);
            }
        });
        comparison.round(ours / kTrims, plain / kTrims);
    }
}

void trim(CVexDbEntity& curve, std::vector<CVexDbEntity*>& cutters)
{
    CVexGePoint2d pick(1400.0, 2003.0);
    const std::unique_ptr<CVexDbEntity> rest(curve.Trim(pick, cutters, kGeEpsilon));
    benchmark::DoNotOptimize(rest.get());
}

void extend(CVexDbEntity& curve, std::vector<CVexDbEntity*>& boundaries)
{
    CVexGePoint2d pick(400.0, 2002.0);
    benchmark::DoNotOptimize(curve.Extend(pick, boundaries, kGeEpsilon));
}

int countOf(const benchmark::State& state)
{
    return static_cast<int>(state.range(0));
}

void trimLineSpread(benchmark::State& state)
{
    compare(state, "trim line, spread", spread(countOf(state)), makeLine,
            CVexGeEntity2d::kExtendNone, trim);
}

void trimLineCrossing(benchmark::State& state)
{
    compare(state, "trim line, crossing", crossing(countOf(state)), makeLine,
            CVexGeEntity2d::kExtendNone, trim);
}

void trimArcSpread(benchmark::State& state)
{
    compare(state, "trim arc, spread", spread(countOf(state)), makeArc, CVexGeEntity2d::kExtendNone,
            trim);
}

void trimArcCrossing(benchmark::State& state)
{
    compare(state, "trim arc, crossing", crossing(countOf(state)), makeArc,
            CVexGeEntity2d::kExtendNone, trim);
}

void trimCircleSpread(benchmark::State& state)
{
    compare(state, "trim circle, spread", spread(countOf(state)), makeCircle,
            CVexGeEntity2d::kExtendNone, trim);
}

void trimCircleCrossing(benchmark::State& state)
{
    compare(state, "trim circle, crossing", crossing(countOf(state)), makeCircle,
            CVexGeEntity2d::kExtendNone, trim);
}

void extendLineSpread(benchmark::State& state)
{
    const auto make = [] {
        return CVexDbLine(CVexGePoint2d(300.0, 2000.0), CVexGePoint2d(400.0, 2002.0));
    };
    compare(state, "extend line, spread", spread(countOf(state)), make, CVexGeEntity2d::kExtendThis,
            extend);
}

void extendLineCrossing(benchmark::State& state)
{
    const auto make = [] {
        return CVexDbLine(CVexGePoint2d(300.0, 2000.0), CVexGePoint2d(400.0, 2002.0));
    };
    compare(state, "extend line, crossing", crossing(countOf(state)), make,
            CVexGeEntity2d::kExtendThis, extend);
}

// The plain form of an arc's extension intersects its circle.
void extendArcSpread(benchmark::State& state)
{
    const auto extendArc = [](CVexDbCircle& circle, std::vector<CVexDbEntity*>& boundaries) {
        CVexDbArc arc(circle.Center(), circle.Radius(), 1.0, 1.1);
        extend(arc, boundaries);
    };
    compare(state, "extend arc, spread", spread(countOf(state)), makeCircle,
            CVexGeEntity2d::kExtendNone, extendArc);
}

void extendArcCrossing(benchmark::State& state)
{
    const auto extendArc = [](CVexDbCircle& circle, std::vector<CVexDbEntity*>& boundaries) {
        CVexDbArc arc(circle.Center(), circle.Radius(), 1.0, 1.1);
        extend(arc, boundaries);
    };
    compare(state, "extend arc, crossing", crossing(countOf(state)), makeCircle,
            CVexGeEntity2d::kExtendNone, extendArc);
}

#define VEX_BENCH_CUTS(function)                                                                   \
    BENCHMARK(function)->Arg(10)->Arg(100)->Arg(1000)->UseManualTime()->Iterations(9)

VEX_BENCH_CUTS(trimLineSpread);
VEX_BENCH_CUTS(trimLineCrossing);
VEX_BENCH_CUTS(trimArcSpread);
VEX_BENCH_CUTS(trimArcCrossing);
VEX_BENCH_CUTS(trimCircleSpread);
VEX_BENCH_CUTS(trimCircleCrossing);
VEX_BENCH_CUTS(extendLineSpread);
VEX_BENCH_CUTS(extendLineCrossing);
VEX_BENCH_CUTS(extendArcSpread);
VEX_BENCH_CUTS(extendArcCrossing);

} // namespace
