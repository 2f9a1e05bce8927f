#include "bench/growth.h"
#include "bench/qtwindow.h"
#include "platform/headless/vexheadless.h"
#include "platform/qt/vexqteventbackend.h"
#include "platform/qt/vexqtimagedc.h"
#include "platform/qt/vexqtview.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/vexdbdatabase.h"

#include <QImage>

#include <algorithm>
#include <array>
#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <cmath>
#include <memory>
#include <random>
#include <utility>
#include <vector>

// What a person at the screen waits for, in drawings of growing size: a pick, a window selection, a
// redraw of a part, an edit, the band and the snap under the moving pointer. The plain form is a
// walk over the whole drawing, or an R-tree of boost over the same boxes.

namespace {

constexpr CSize kScreen{1920, 1080};
constexpr double kPick = 2.5; // half the pick box at one drawing unit a pixel

namespace bg = boost::geometry;
using TreePoint = bg::model::point<double, 2, bg::cs::cartesian>;
using TreeBox = bg::model::box<TreePoint>;
using TreeItem = std::pair<TreeBox, std::uint32_t>;
using Tree = bg::index::rtree<TreeItem, bg::index::rstar<16>>;

/// Lines of 1 to 20 units at a constant density, so that the sheet grows with their number.
struct Sheet {
    explicit Sheet(std::size_t count)
        : side(4.0 * std::sqrt(static_cast<double>(count))), view(kScreen),
          image(kScreen.cx, kScreen.cy, QImage::Format_RGB32), dc(image)
    {
        std::mt19937 random(17);
        std::uniform_real_distribution<double> place(0.0, side);
        std::uniform_real_distribution<double> along(-20.0, 20.0);
        lines.reserve(count);
        for (std::size_t i = 0; i < count; ++i) {
            const CVexGePoint2d start(place(random), place(random));
            auto line = std::make_unique<CVexDbLine>(&database);
            line->set(start, CVexGePoint2d(start.x + along(random), start.y + along(random)));
            lines.push_back(line.get());
            CVexDbObjectId id;
            database.addEntity(line.release(), id);
        }
        record = database.displays().getCurrentRecord();
        record->setView(&view, &dc);
        show({0.0, 0.0}, {side, side});
    }
    void show(CVexGePoint2d min, CVexGePoint2d max)
    {
        record->SetCurDispWin(min, max);
        record->MakeUpDisplayWindow(&dc);
    }

    CVexDbDatabase database{false};
    double side; // drawing units
    CVexMemoryWindow view;
    QImage image;
    CVexQtImageDC dc;
    std::vector<CVexDbLine*> lines;
    CVexDbDisplayTableRecord* record = nullptr;
};

std::vector<CVexGePoint2d> placesOn(const Sheet& sheet, std::size_t count)
{
    std::mt19937 random(29);
    std::uniform_real_distribution<double> place(0.0, sheet.side);
    std::vector<CVexGePoint2d> places;
    for (std::size_t i = 0; i < count; ++i) {
        const double x = place(random);
        places.emplace_back(x, place(random));
    }
    return places;
}

std::size_t countOf(const benchmark::State& state)
{
    return static_cast<std::size_t>(state.range(0));
}

void pick(benchmark::State& state)
{
    constexpr std::size_t kPicks = 1000;
    constexpr std::size_t kWalks = 5;
    Sheet sheet(countOf(state));
    sheet.show({0.0, 0.0}, {1920.0, 1080.0}); // a pixel a unit
    const std::vector<CVexGePoint2d> places = placesOn(sheet, kPicks);
    CVexDbObjectId id;
    sheet.record->selectEntity(places.front(), id);
    for ([[maybe_unused]] auto turn : state) {
        const double ours = cpuSecondsOf([&] {
            for (const CVexGePoint2d& place : places) {
                benchmark::DoNotOptimize(sheet.record->selectEntity(place, id));
            }
        });
        const double walks = cpuSecondsOf([&] {
            for (std::size_t i = 0; i < kWalks; ++i) {
                const auto hit = std::ranges::find_if(sheet.lines, [&](const CVexDbLine* line) {
                    return line->isVisiable() && line->isOn(places[i], kPick) != 0;
                });
                benchmark::DoNotOptimize(hit);
            }
        });
        state.SetIterationTime(ours);
        state.counters["us_each"] = ours * 1e6 / kPicks;
        state.counters["walk_us_each"] = walks * 1e6 / kWalks;
    }
}

void windowOfOnePercent(benchmark::State& state)
{
    constexpr int kWindows = 20;
    Sheet sheet(countOf(state));
    std::vector<TreeItem> items;
    for (std::uint32_t i = 0; i < sheet.lines.size(); ++i) {
        const CVexGePoint2d a = sheet.lines[i]->StartPoint();
        const CVexGePoint2d b = sheet.lines[i]->EndPoint();
        items.emplace_back(TreeBox({std::min(a.x, b.x), std::min(a.y, b.y)},
                                   {std::max(a.x, b.x), std::max(a.y, b.y)}),
                           i);
    }
    const Tree tree(items.begin(), items.end()); // packed
    const double width = sheet.side / 10.0;
    const std::vector<CVexGePoint2d> corners = placesOn(sheet, kWindows);
    CVexDbIdSet found;
    sheet.record->selectEntityByWin(CVexGePoint2d(0.0, 0.0), CVexGePoint2d(1.0, 1.0), found);
    Comparison comparison(state, "window", static_cast<double>(countOf(state)));
    for ([[maybe_unused]] auto turn : state) {
        const double ours = cpuSecondsOf([&] {
            for (const CVexGePoint2d& corner : corners) {
                sheet.record->selectEntityByWin(
                    corner, CVexGePoint2d(corner.x + width, corner.y + width), found);
            }
        });
        const double plain = cpuSecondsOf([&] {
            for (const CVexGePoint2d& corner : corners) {
                std::vector<TreeItem> hits;
                const TreeBox window({corner.x, corner.y}, {corner.x + width, corner.y + width});
                tree.query(bg::index::intersects(window), std::back_inserter(hits));
                std::ranges::sort(hits, {}, &TreeItem::second);
                CVexDbIdSet set;
                for (const TreeItem& hit : hits) {
                    CVexGePoint2d a(corner);
                    CVexGePoint2d b(corner.x + width, corner.y + width);
                    CVexDbLine* const line = sheet.lines[hit.second];
                    if (line->isVisiable() && line->checkInside(a, b)) {
                        set.insert(line->objectId());
                    }
                }
                benchmark::DoNotOptimize(set.size());
            }
        });
        comparison.round(ours, plain);
    }
    state.counters["found"] = static_cast<double>(found.size());
}

void redrawOfOnePercent(benchmark::State& state)
{
    Sheet sheet(countOf(state));
    // A hundredth of the sheet, in the shape of the screen.
    const double aspect = std::sqrt(static_cast<double>(kScreen.cx) / kScreen.cy);
    const CVexGePoint2d part(sheet.side / 10.0 * aspect, sheet.side / 10.0 / aspect);
    Comparison comparison(state, "redraw", static_cast<double>(countOf(state)));
    for ([[maybe_unused]] auto turn : state) {
        sheet.show({0.0, 0.0}, {sheet.side, sheet.side});
        const double full = cpuSecondsOf([&] { sheet.record->DrawEntities(&sheet.dc); });
        sheet.show({0.0, 0.0}, part);
        comparison.round(cpuSecondsOf([&] { sheet.record->DrawEntities(&sheet.dc); }), full);
    }
}

void moveOneAndPick(benchmark::State& state)
{
    constexpr std::size_t kMoves = 1000;
    Sheet sheet(countOf(state));
    const std::vector<CVexGePoint2d> places = placesOn(sheet, kMoves);
    CVexDbObjectId id;
    sheet.record->selectEntity(places.front(), id);
    for ([[maybe_unused]] auto turn : state) {
        const double ours = cpuSecondsOf([&] {
            for (std::size_t i = 0; i < kMoves; ++i) {
                CVexDbLine& line = *sheet.lines[i * 7919 % sheet.lines.size()];
                line.TranslateBy(CVexGeVector2d(places[i].x - line.StartPoint().x,
                                                places[i].y - line.StartPoint().y));
                sheet.record->selectEntity(places[i], id);
            }
        });
        state.SetIterationTime(ours);
        state.counters["us_each"] = ours * 1e6 / kMoves;
    }
}

// ---- the pointer ----

constexpr int kPointerMoves = 2000;

/// Where the pointer is at a step of its way: another pixel each time, all over the window.
CPoint onTheWay(int step)
{
    return {10 + step * 37 % (kScreen.cx - 20), 10 + step * 53 % (kScreen.cy - 20)};
}

void reportMoves(benchmark::State& state, const char* name, double seconds)
{
    state.counters["ms_each"] = seconds * 1e3 / kPointerMoves;
    state.counters["of_smallest"] = timesSmallest(name, seconds);
}

void switchSnapsOn(CVexDbDatabase& database)
{
    VexDbDrawingSettings_tag& settings = database.settings();
    settings.m_bGripSnap = true;
    settings.m_bSnapIntersection = true;
    settings.m_bSnapNearest = true;
}

/// LINE as it is played without a screen: from the message to the stroke in the image, with the
/// search for grips that goes along.
void bandHeadless(benchmark::State& state)
{
    CVexHeadlessBackend backend;
    CVexBackend::install(&backend);
    {
        Sheet sheet(countOf(state));
        sheet.show({0.0, 0.0}, {1920.0, 1080.0});
        sheet.database.settings().m_bGripSnap = true;
        CVexCommandHandler& handler = sheet.database.commandHandler();
        handler.SetDispWindow(&sheet.view);
        CVexDbObjectId id;
        sheet.record->selectEntity(CVexGePoint2d(), id); // makes the index
        double best = 0.0;
        for ([[maybe_unused]] auto turn : state) {
            const auto post = [&](unsigned kind, WPARAM key, CPoint at) {
                backend.postMessage({&sheet.view, kind, key, MAKELPARAM(at.x, at.y), {}});
            };
            post(WM_LBUTTONDOWN, 0, onTheWay(0));
            for (int step = 1; step <= kPointerMoves; ++step) {
                post(WM_MOUSEMOVE, 0, onTheWay(step));
            }
            post(WM_KEYDOWN, VK_ESCAPE, {});
            unsigned long variant = 0;
            const double seconds = cpuSecondsOf([&] {
                const std::unique_ptr<CVexDbEntity> made(
                    handler.DoCommand(VexDb::CmdLine, variant));
            });
            state.SetIterationTime(seconds);
            best = best == 0.0 ? seconds : std::min(best, seconds);
        }
        reportMoves(state, "band", best);
    }
    CVexBackend::install(nullptr);
}

/// The same in the window: from Qt's mouse event to the end of the paint event that shows the band.
void bandInWindow(benchmark::State& state)
{
    startApplication();
    CVexQtEventBackend backend;
    CVexBackend::install(&backend);
    {
        Sheet sheet(countOf(state));
        QWidget window;
        CVexQtView view(backend, &window);
        window.resize(kScreen.cx, kScreen.cy);
        view.widget()->resize(window.size());
        window.show();
        QCoreApplication::processEvents();
        sheet.record->setView(&view, view.GetDC());
        sheet.record->SetCurDispWin({0.0, 0.0}, {1920.0, 1080.0});
        sheet.record->MakeUpDisplayWindow(view.GetDC());
        sheet.record->Draw(view.GetDC());
        sheet.database.settings().m_bGripSnap = true;
        CVexCommandHandler& handler = sheet.database.commandHandler();
        handler.SetDispWindow(&view);
        QCoreApplication::processEvents();
        double best = 0.0;
        for ([[maybe_unused]] auto turn : state) {
            unsigned long variant = 0;
            const double seconds = secondsOf([&] {
                Hand hand(*view.widget(), [&](int step) {
                    if (step <= kPointerMoves) {
                        hand.post(QEvent::MouseMove, Qt::NoButton, onTheWay(step));
                    } else {
                        hand.press(Qt::Key_Escape);
                    }
                    return step <= kPointerMoves;
                });
                hand.post(QEvent::MouseButtonPress, Qt::LeftButton, onTheWay(0));
                hand.takeStep();
                const std::unique_ptr<CVexDbEntity> made(
                    handler.DoCommand(VexDb::CmdLine, variant));
            });
            state.SetIterationTime(seconds);
            best = best == 0.0 ? seconds : std::min(best, seconds);
        }
        reportMoves(state, "windowband", best);
        sheet.record->setView(nullptr, nullptr);
        handler.SetDispWindow(nullptr);
    }
    CVexBackend::install(nullptr);
}

/// All kinds of snap at once, near the ends of lines.
void snap(benchmark::State& state)
{
    constexpr std::size_t kSnaps = 1000;
    Sheet sheet(countOf(state));
    sheet.show({0.0, 0.0}, {1920.0, 1080.0});
    sheet.dc.SetROP2(R2_XORPEN);
    switchSnapsOn(sheet.database);
    CVexCommandHandler& handler = sheet.database.commandHandler();
    CVexGePoint2d blip;
    CVexGePoint2d found;
    handler.CheckSnapPoint(blip, CVexGePoint2d(), found);
    std::size_t snapped = 0;
    double best = 0.0;
    for ([[maybe_unused]] auto turn : state) {
        snapped = 0;
        const double seconds = cpuSecondsOf([&] {
            for (std::size_t i = 0; i < kSnaps; ++i) {
                const CVexGePoint2d end = sheet.lines[i * 7919 % sheet.lines.size()]->EndPoint();
                const CVexGePoint2d cursor(end.x + 2.0, end.y - 1.0);
                snapped += handler.CheckSnapPoint(blip, cursor, found) ? 1 : 0;
            }
        });
        state.SetIterationTime(seconds);
        best = best == 0.0 ? seconds : std::min(best, seconds);
    }
    state.counters["us_each"] = best * 1e6 / kSnaps;
    state.counters["of_smallest"] = timesSmallest("snap", best);
    state.counters["snapped"] = static_cast<double>(snapped) / kSnaps;
}

} // namespace

BENCHMARK(pick)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime()->Iterations(5);
BENCHMARK(windowOfOnePercent)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->UseManualTime()
    ->Iterations(5);
BENCHMARK(redrawOfOnePercent)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->UseManualTime()
    ->Iterations(3);
BENCHMARK(moveOneAndPick)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime()->Iterations(5);
BENCHMARK(bandHeadless)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime()->Iterations(5);
BENCHMARK(bandInWindow)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime()->Iterations(3);
BENCHMARK(snap)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime()->Iterations(5);
