#include "bench/growth.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <malloc.h>
#include <memory>
#include <random>
#include <string>
#include <vector>

// The edits of one polyline of growing size: pipe runs with a bend at every other segment. Each
// works through the whole polyline once, so that the time must grow as the size does. The plain
// forms do the arithmetic and the copying of the same edit over a bare vector of vertices, and for
// an explosion the adding of as many entities.

namespace {

constexpr double kStep = 10.0;
constexpr double kBend = 0.3; // the bulge of the bends

void require(bool holds, const char* what)
{
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::abort();
    }
}

struct PlainVertex {
    double x = 0.0;
    double y = 0.0;
    double bulge = 0.0;
    double startWidth = -1.0;
    double endWidth = -1.0;
};

/// A run of teeth to the right: up, down, up, every other segment an arc.
std::vector<PlainVertex> plainRun(std::size_t count, double bend)
{
    std::vector<PlainVertex> run(count);
    for (std::size_t i = 0; i < count; ++i) {
        run[i].x = kStep * static_cast<double>(i);
        run[i].y = i % 2 == 0 ? 0.0 : kStep;
        run[i].bulge = i % 2 == 0 ? 0.0 : bend;
    }
    return run;
}

struct Bench {
    explicit Bench(benchmark::State& state, double bend = kBend)
        : count(static_cast<std::size_t>(state.range(0))), run(plainRun(count, bend))
    {
        geometry.setSize(static_cast<unsigned>(count));
        for (const PlainVertex& vertex : run) {
            geometry.appendVertex({vertex.x, vertex.y}, vertex.bulge);
        }
        polyline = new CVexDbPolyline(0, database.get());
        CVexDbObjectId id;
        database->addEntity(polyline, id);
        reset();
    }
    void reset() const
    {
        database->undoHandler().clear();
        polyline->SetGeometry(geometry);
    }
    [[nodiscard]] double width() const { return kStep * static_cast<double>(count - 1); }

    std::unique_ptr<CVexDbDatabase> database = std::make_unique<CVexDbDatabase>(false);
    std::size_t count;
    std::vector<PlainVertex> run;
    CVexGePolyline2d geometry;
    CVexDbPolyline* polyline = nullptr; // the drawing's
};

/// The crossing of the segment from `a` to `b` with the upright line at `x`, as a share; -1 for
/// none.
double plainCrossing(const PlainVertex& a, const PlainVertex& b, double x)
{
    const double share = (x - a.x) / (b.x - a.x);
    return share >= 0.0 && share <= 1.0 ? share : -1.0;
}

// As a trim must: every segment against both cutters and the pick, then what goes is noted down and
// both rests are copied.
std::size_t plainTrim(const std::vector<PlainVertex>& run, double first, double second, double pick)
{
    std::vector<std::size_t> cuts;
    double nearest = 1e300;
    double passed = 0.0;
    double place = 0.0;
    for (std::size_t i = 0; i + 1 < run.size(); ++i) {
        const double length = std::hypot(run[i + 1].x - run[i].x, run[i + 1].y - run[i].y) *
                              (run[i].bulge == 0.0 ? 1.0 : std::atan(run[i].bulge) / kBend);
        for (const double x : {first, second}) {
            if (plainCrossing(run[i], run[i + 1], x) >= 0.0) {
                cuts.push_back(i);
            }
        }
        const double gap = std::hypot(run[i].x - pick, run[i].y);
        if (gap < nearest) {
            nearest = gap;
            place = passed;
        }
        passed += length;
    }
    const auto from = static_cast<std::ptrdiff_t>(cuts.front()) + 1;
    const auto to = static_cast<std::ptrdiff_t>(cuts.back()) + 1;
    const std::vector<PlainVertex> head(run.begin(), run.begin() + from);
    const std::vector<PlainVertex> tail(run.begin() + to, run.end());
    std::vector<tagUndoEditEntity> records;
    for (auto gone = run.begin() + from; gone != run.end(); ++gone) {
        records.resize(records.size() + (gone->bulge != 0.0 ? 2 : 1));
    }
    benchmark::DoNotOptimize(place);
    return head.size() + tail.size() + records.size();
}

void trim(benchmark::State& state)
{
    const Bench bench(state);
    const double first = 0.25 * bench.width() + 3.0;
    const double second = 0.75 * bench.width() + 3.0;
    CVexDbLine left({first, -50}, CVexGePoint2d(first, 50));
    CVexDbLine right({second, -50}, CVexGePoint2d(second, 50));
    std::vector<CVexDbEntity*> cutters = {&left, &right};
    CVexGePoint2d pick(0.5 * bench.width(), 5);
    Comparison comparison(state, "trim", static_cast<double>(bench.count));
    for ([[maybe_unused]] auto turn : state) {
        bench.reset();
        std::unique_ptr<CVexDbEntity> rest;
        const double ours =
            cpuSecondsOf([&] { rest.reset(bench.polyline->Trim(pick, cutters, kGeEpsilon)); });
        require(rest != nullptr, "the trim leaves two polylines");
        comparison.round(ours, cpuSecondsOf([&] {
                             benchmark::DoNotOptimize(plainTrim(bench.run, first, second, pick.x));
                         }));
    }
}

void extend(benchmark::State& state)
{
    const Bench bench(state);
    const double beyond = bench.width() + 5.0;
    CVexDbLine boundary({beyond, -500}, CVexGePoint2d(beyond, 500));
    std::vector<CVexDbEntity*> boundaries = {&boundary};
    CVexGePoint2d pick(bench.width(), 8);
    Comparison comparison(state, "extend", static_cast<double>(bench.count));
    for ([[maybe_unused]] auto turn : state) {
        bench.reset();
        bool extended = false;
        const double ours =
            cpuSecondsOf([&] { extended = bench.polyline->Extend(pick, boundaries, kGeEpsilon); });
        require(extended, "the end reaches the boundary");
        comparison.round(ours, cpuSecondsOf([&] {
                             // The way to the pick, over all segments.
                             double length = 0.0;
                             double nearest = 1e300;
                             for (std::size_t i = 0; i + 1 < bench.run.size(); ++i) {
                                 const PlainVertex& a = bench.run[i];
                                 const PlainVertex& b = bench.run[i + 1];
                                 length += std::hypot(b.x - a.x, b.y - a.y) *
                                           (a.bulge == 0.0 ? 1.0 : std::atan(a.bulge) / kBend);
                                 nearest =
                                     std::min(nearest, std::hypot(a.x - pick.x, a.y - pick.y));
                             }
                             benchmark::DoNotOptimize(length + nearest);
                         }));
    }
}

// Straight corners, each by its half angle, into a second vector, noted down as the edit has to be.
std::size_t plainFillet(const std::vector<PlainVertex>& run, double radius)
{
    std::vector<PlainVertex> rounded;
    std::vector<tagUndoEditEntity> records;
    rounded.reserve(2 * run.size());
    rounded.push_back(run.front());
    for (std::size_t i = 1; i + 1 < run.size(); ++i) {
        const double inX = run[i].x - run[i - 1].x, inY = run[i].y - run[i - 1].y;
        const double outX = run[i + 1].x - run[i].x, outY = run[i + 1].y - run[i].y;
        const double in = std::hypot(inX, inY), out = std::hypot(outX, outY);
        const double turn = std::atan2(inX * outY - inY * outX, inX * outX + inY * outY);
        const double cut = radius * std::tan(std::fabs(turn) / 2.0);
        rounded.push_back({run[i].x - inX / in * cut, run[i].y - inY / in * cut,
                           std::tan(turn / 4.0), -1.0, -1.0});
        rounded.push_back({run[i].x + outX / out * cut, run[i].y + outY / out * cut, 0.0, -1, -1});
        records.resize(records.size() + 3);
    }
    rounded.push_back(run.back());
    return rounded.size() + records.size();
}

void filletAll(benchmark::State& state, const char* name, double bend)
{
    const Bench bench(state, bend);
    Comparison comparison(state, name, static_cast<double>(bench.count));
    for ([[maybe_unused]] auto turn : state) {
        bench.reset();
        const double ours = cpuSecondsOf([&] { bench.polyline->Fillet(1.0); });
        require(bench.polyline->NumVerts() == 2 * bench.count - 2, "every corner is rounded");
        comparison.round(
            ours, cpuSecondsOf([&] { benchmark::DoNotOptimize(plainFillet(bench.run, 1.0)); }));
    }
}

void filletLines(benchmark::State& state)
{
    filletAll(state, "fillet of lines", 0.0);
}

void filletArcs(benchmark::State& state)
{
    filletAll(state, "fillet of lines and arcs", kBend);
}

void explode(benchmark::State& state)
{
    const Bench bench(state, 0.0);
    Comparison comparison(state, "explode", static_cast<double>(bench.count));
    for ([[maybe_unused]] auto turn : state) {
        bench.database->undoHandler().clear();
        const Bench plain(state, 0.0);
        const Bench fresh(state, 0.0);
        comparison.round(cpuSecondsOf([&] { fresh.polyline->Explode(); }), cpuSecondsOf([&] {
                             CVexDbObjectId id;
                             for (std::size_t i = 0; i + 1 < plain.run.size(); ++i) {
                                 const PlainVertex& a = plain.run[i];
                                 const PlainVertex& b = plain.run[i + 1];
                                 auto line = std::make_unique<CVexDbLine>(plain.database.get());
                                 line->set({a.x, a.y}, {b.x, b.y});
                                 plain.database->addEntity(line.release(), id);
                             }
                         }));
        require(fresh.database->undoHandler().undoStack().size() == fresh.count - 1,
                "every segment becomes an entity");
    }
}

// A step of as many records as the polyline has vertices, there and back. The plain form moves the
// records from stack to stack and copies the vertices of both shapes.
double plainStep(const Bench& bench, std::deque<tagUndoEditEntity> records)
{
    return cpuSecondsOf([&] {
        std::deque<tagUndoEditEntity> moved;
        std::vector<PlainVertex> vertices;
        for (; !records.empty(); records.pop_front()) {
            moved.push_front(records.front());
        }
        for (const PlainVertex& vertex : bench.run) {
            vertices.push_back(vertex);
        }
        benchmark::DoNotOptimize(vertices.data());
        benchmark::DoNotOptimize(moved);
    });
}

/// Undo and redo of `edit`, each a comparison of its own.
template <class Edit>
void undoStep(benchmark::State& state, const std::string& name, bool redo, const Edit& edit)
{
    const Bench bench(state);
    CVexUndoHandler& undo = bench.database->undoHandler();
    bench.reset();
    edit(bench);
    const std::size_t records = undo.undoStack().size();
    const CVexGePolyline2d edited = bench.polyline->gePolyline();
    Comparison comparison(state, (redo ? "redo of " : "undo of ") + name,
                          static_cast<double>(bench.count));
    for ([[maybe_unused]] auto turn : state) {
        const double plain = plainStep(bench, undo.undoStack());
        const double back = cpuSecondsOf([&] { undo.Undo(); });
        require(bench.polyline->gePolyline() == bench.geometry, "undo gives the shape back");
        const double forth = cpuSecondsOf([&] { undo.Redo(); });
        require(bench.polyline->gePolyline() == edited, "redo gives the edited shape back");
        require(undo.undoStack().size() == records, "all of it is one step");
        comparison.round(redo ? forth : back, plain);
    }
    state.counters["records"] = static_cast<double>(records);
}

// Almost all of it goes, behind the cut or before it: then every vertex returns to the front.
void trimTail(const Bench& bench)
{
    CVexDbLine cutter({0.02 * bench.width(), -50}, CVexGePoint2d(0.02 * bench.width(), 50));
    std::vector<CVexDbEntity*> cutters = {&cutter};
    CVexGePoint2d pick(bench.width(), 0);
    bench.polyline->Trim(pick, cutters, kGeEpsilon);
}

void trimHead(const Bench& bench)
{
    CVexDbLine cutter({0.98 * bench.width(), -50}, CVexGePoint2d(0.98 * bench.width(), 50));
    std::vector<CVexDbEntity*> cutters = {&cutter};
    CVexGePoint2d pick(0, 0);
    bench.polyline->Trim(pick, cutters, kGeEpsilon);
}

void breakApart(const Bench& bench)
{
    const VexUndoGroup step(bench.database->undoHandler());
    const std::unique_ptr<CVexDbPolyline> rest(
        bench.database->commandHandler().CommandBreakPolyline(
            bench.polyline, static_cast<int>(bench.count / 50), true));
}

void filletCorners(const Bench& bench)
{
    bench.polyline->Fillet(1.0);
}

/// Every segment in two, from the last to the first.
void divideAll(const Bench& bench)
{
    const VexUndoGroup step(bench.database->undoHandler());
    for (auto segment = static_cast<int>(bench.count) - 1; segment-- > 0;) {
        bench.polyline->DivideSegment(2, segment, false);
    }
}

/// The pieces of the run as lines, in the drawing and in a set, some of them in disorder.
struct Pieces {
    Pieces(const Bench& bench, bool shuffled, bool backwards)
    {
        std::vector<std::size_t> order;
        for (std::size_t i = 1; i + 1 < bench.count; ++i) {
            order.push_back(backwards ? bench.count - 1 - i : i);
        }
        if (shuffled) {
            std::shuffle(order.begin(), order.end(), std::mt19937(31));
        }
        for (const std::size_t i : order) {
            auto line = std::make_unique<CVexDbLine>(bench.database.get());
            line->set({bench.run[i].x, bench.run[i].y}, {bench.run[i + 1].x, bench.run[i + 1].y});
            CVexDbLine* const added = line.get();
            CVexDbObjectId id;
            bench.database->addEntity(line.release(), id);
            set.insert(added);
        }
    }
    VexEntitySet set;
};

/// A polyline of the first (or last) segment joins all others, which are lines of the drawing.
void joinPieces(benchmark::State& state, const char* name, bool shuffled, bool backwards)
{
    Comparison comparison(state, name, static_cast<double>(state.range(0)));
    double back = 0.0;
    double forth = 0.0;
    for ([[maybe_unused]] auto turn : state) {
        const Bench bench(state, 0.0);
        CVexUndoHandler& undo = bench.database->undoHandler();
        Pieces pieces(bench, shuffled, backwards);
        const std::size_t seed = backwards ? bench.count - 2 : 0;
        const auto pointOf = [&](std::size_t i) {
            return CVexGePoint2d(bench.run[i].x, bench.run[i].y);
        };
        bench.polyline->SetVertexes({pointOf(seed), pointOf(seed + 1)}, false);
        if (backwards) { // the first piece is the one that the polyline is
            CVexDbLine* const first = new CVexDbLine(bench.database.get());
            first->set(pointOf(0), pointOf(1));
            CVexDbObjectId id;
            bench.database->addEntity(first, id);
            pieces.set.insert(first);
            std::erase_if(pieces.set, [&](CVexDbEntity* piece) {
                return static_cast<CVexDbLine*>(piece)->StartPoint() == pointOf(seed);
            });
        }
        undo.clear();
        const double ours = cpuSecondsOf([&] {
            bench.database->commandHandler().CommandJoinPolyline(bench.polyline, pieces.set, true);
        });
        require(bench.polyline->NumVerts() == bench.count, "every piece is joined");
        comparison.round(ours, plainStep(bench, undo.undoStack()));
        back = cpuSecondsOf([&] { undo.Undo(); });
        require(bench.polyline->NumVerts() == 2, "the pieces are back");
        forth = cpuSecondsOf([&] { undo.Redo(); });
        require(bench.polyline->NumVerts() == bench.count, "they are joined again");
    }
    const auto items = static_cast<double>(state.range(0));
    state.counters["undo_ns_each"] = back * 1e9 / items;
    state.counters["redo_ns_each"] = forth * 1e9 / items;
}

void undoExplode(benchmark::State& state)
{
    Comparison comparison(state, "undo of explode", static_cast<double>(state.range(0)));
    for ([[maybe_unused]] auto turn : state) {
        const Bench bench(state, 0.0);
        CVexUndoHandler& undo = bench.database->undoHandler();
        bench.polyline->Explode();
        const double plain = plainStep(bench, undo.undoStack());
        const double back = cpuSecondsOf([&] { undo.Undo(); });
        require(undo.undoStack().empty(), "it is one step");
        comparison.round(back, plain);
        const double forth = cpuSecondsOf([&] { undo.Redo(); });
        state.counters["redo_ns_each"] = forth * 1e9 / static_cast<double>(bench.count);
    }
}

/// What a polyline of ten vertices takes, as its drawing keeps it and as a file does.
void memory(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::vector<PlainVertex> run = plainRun(10, kBend);
    CVexGePolyline2d chain;
    chain.setSize(10);
    for (const PlainVertex& vertex : run) {
        chain.appendVertex({vertex.x, vertex.y}, vertex.bulge);
    }
    for ([[maybe_unused]] auto turn : state) {
        CVexDbDatabase database(false);
        const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        for (std::size_t i = 0; i < count; ++i) {
            auto polyline = std::make_unique<CVexDbPolyline>(0, &database);
            polyline->SetGeometry(chain);
            CVexDbObjectId id;
            database.addEntity(polyline.release(), id);
        }
        const std::size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
        state.counters["heap_bytes_each"] =
            static_cast<double>(after - before) / static_cast<double>(count);
    }
    state.counters["object_bytes"] = static_cast<double>(sizeof(CVexDbPolyline));
    state.counters["vertex_bytes"] =
        static_cast<double>(sizeof(CVexGePoint2d) + 3 * sizeof(double));
}

void sizes(benchmark::internal::Benchmark* bench)
{
    bench->Arg(1000)->Arg(10000)->Arg(100000)->UseManualTime()->Iterations(9);
}

BENCHMARK(trim)->Apply(sizes);
BENCHMARK(extend)->Apply(sizes);
BENCHMARK(filletLines)->Apply(sizes);
BENCHMARK(filletArcs)->Apply(sizes);
BENCHMARK(explode)->Apply(sizes);
BENCHMARK_CAPTURE(undoStep, undoTrimTail, "a trim of the tail", false, trimTail)->Apply(sizes);
BENCHMARK_CAPTURE(undoStep, redoTrimTail, "a trim of the tail", true, trimTail)->Apply(sizes);
BENCHMARK_CAPTURE(undoStep, undoTrimHead, "a trim of the head", false, trimHead)->Apply(sizes);
BENCHMARK_CAPTURE(undoStep, redoTrimHead, "a trim of the head", true, trimHead)->Apply(sizes);
BENCHMARK_CAPTURE(undoStep, undoBreak, "a break", false, breakApart)->Apply(sizes);
BENCHMARK_CAPTURE(undoStep, redoBreak, "a break", true, breakApart)->Apply(sizes);
BENCHMARK_CAPTURE(undoStep, undoFillet, "a fillet", false, filletCorners)->Apply(sizes);
BENCHMARK_CAPTURE(undoStep, redoFillet, "a fillet", true, filletCorners)->Apply(sizes);
BENCHMARK_CAPTURE(undoStep, undoDivide, "a division", false, divideAll)
    ->Arg(1000)
    ->Arg(10000)
    ->UseManualTime()
    ->Iterations(5);
BENCHMARK(undoExplode)->Apply(sizes);
BENCHMARK_CAPTURE(joinPieces, inOrder, "join in order", false, false)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->UseManualTime()
    ->Iterations(2);
BENCHMARK_CAPTURE(joinPieces, atTheFront, "join at the front", false, true)
    ->Arg(1000)
    ->Arg(10000)
    ->UseManualTime()
    ->Iterations(2);
BENCHMARK_CAPTURE(joinPieces, inDisorder, "join in disorder", true, false)
    ->Arg(1000)
    ->Arg(10000)
    ->UseManualTime()
    ->Iterations(1);
BENCHMARK(memory)->Arg(10000)->Iterations(1);

} // namespace
