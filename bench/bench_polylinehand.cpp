#include "bench/growth.h"
#include "bench/imagewindow.h"
#include "bench/qtwindow.h"
#include "platform/headless/vexheadless.h"
#include "platform/qt/vexqteventbackend.h"
#include "platform/qt/vexqtview.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexprompthandler.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/geentity2d/vexgecircarc2d.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <time.h>
#include <vector>

// What a hand does to one polyline of growing size: a vertex and the middle of an arc are dragged,
// and POLYLINE is clicked point by point. A move must cost what it changes, two segments, however
// many the polyline has. The plain form strokes those two segments off and on again.

namespace {

constexpr CSize kScreen{1920, 1080};
constexpr int kMoves = 100;
constexpr double kBend = 0.3;

void require(bool holds, const char* what)
{
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::abort();
    }
}

double threadSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// Rows of teeth that fill the screen, a drawing unit a pixel, every other segment a bend.
CVexGePolyline2d meander(std::size_t count)
{
    constexpr std::size_t kARow = 180;
    const auto rows = static_cast<double>(count / kARow + 1);
    CVexGePolyline2d chain;
    chain.setSize(static_cast<unsigned>(count));
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t row = i / kARow;
        const std::size_t place = row % 2 == 0 ? i % kARow : kARow - 1 - i % kARow;
        const double y = (static_cast<double>(row) + 0.5) * 1000.0 / rows;
        chain.appendVertex({60.0 + 10.0 * static_cast<double>(place),
                            40.0 + y + (i % 2 == 0 ? 0.0 : 400.0 / rows)},
                           i % 2 == 0 ? 0.0 : kBend);
    }
    return chain;
}

/// A drawing with one polyline before a view of a pixel a unit, and a hand on one of its grips.
struct Desk {
    Desk(CView& window, std::size_t count, bool middle) : view(window)
    {
        static CVexPromptHandler prompts(L"");
        _hPROMPT = &prompts;
        record = database.displays().getCurrentRecord();
        record->setView(&view, view.GetDC());
        record->SetCurDispWin({0.0, 0.0}, {double{kScreen.cx}, double{kScreen.cy}});
        record->MakeUpDisplayWindow(view.GetDC());
        database.settings().m_bGripSnap = true;
        handler().SetDispWindow(&view);
        if (count == 0) {
            return;
        }
        polyline = new CVexDbPolyline(0, &database);
        polyline->SetGeometry(meander(count));
        CVexDbObjectId id;
        database.addEntity(polyline, id);
        record->DrawEntities(view.GetDC());
        CVexDbObjectId hit;
        record->selectEntity(CVexGePoint2d(), hit); // makes the index
        handler().DoDragEntity(polyline, {});
        // Vertices with odd numbers begin a bend, whose middle is the next grip.
        vertex = static_cast<unsigned>(count / 2 | 1);
        grip = static_cast<int>(vertex + vertex / 2) + (middle ? 1 : 0);
    }
    ~Desk()
    {
        handler().ClearTracker(false);
        record->setView(nullptr, nullptr);
        handler().SetDispWindow(nullptr);
    }
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    CVexCommandHandler& handler() { return database.commandHandler(); }
    [[nodiscard]] CPoint gripPixel()
    {
        return record->GetDecivePoint(polyline->getGripPoint(grip));
    }
    /// Where the hand is at a step of a drag: another pixel each time, beside the grip.
    [[nodiscard]] static CPoint onTheWay(CPoint from, int step)
    {
        return {std::clamp(from.x + 25 + step * 7 % 60, 1, kScreen.cx - 2),
                std::clamp(from.y + 15 + step * 11 % 40, 1, kScreen.cy - 2)};
    }
    /// What the window hears of each move.
    LRESULT hear(const MSG& message)
    {
        if (message.message == WM_VEX_COORDINATE) {
            last = now();
            first = first ? first : last;
            ++heard;
        }
        return 0;
    }
    [[nodiscard]] double secondsAMove() const { return (last - *first) / (heard - 1); }
    void begin(double (*clock)())
    {
        now = clock;
        first.reset();
        heard = 0;
    }
    void takeBack()
    {
        require(database.undoHandler().undoStack().size() == 1, "the drag is one record");
        database.undoHandler().Undo();
        database.undoHandler().clear();
    }

    CVexDbDatabase database{false};
    CView& view;
    CVexDbDisplayTableRecord* record = nullptr;
    CVexDbPolyline* polyline = nullptr;
    unsigned vertex = 0;
    int grip = 0;
    double (*now)() = nullptr;
    std::optional<double> first;
    double last = 0.0;
    int heard = 0;
};

/// The two segments at the vertex, off and on, on a bare painter.
double plainMove(const Desk& desk)
{
    QImage image(kScreen.cx, kScreen.cy, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    painter.setPen(QPen(Qt::white, 0));
    const auto& vertices = desk.polyline->gePolyline().vertices();
    const CVexGeCircArc2d bend(vertices[desk.vertex], vertices[desk.vertex + 1], kBend, true);
    std::vector<CPoint> points;
    const double seconds = cpuSecondsOf([&] {
        for (int move = 0; move < 2 * kMoves; ++move) {
            const CVexGePoint2d& a = vertices[desk.vertex - 1];
            const CVexGePoint2d& b = vertices[desk.vertex];
            painter.drawLine(static_cast<int>(a.x), static_cast<int>(a.y), static_cast<int>(b.x),
                             static_cast<int>(b.y));
            bend.getGrVertexArray(points, _wArcRes, 1.0);
            for (std::size_t i = 1; i < points.size(); ++i) {
                painter.drawLine(points[i - 1].x, points[i - 1].y, points[i].x, points[i].y);
            }
        }
    });
    return seconds / kMoves;
}

void report(benchmark::State& state, Comparison& comparison, const Desk& desk, double plain)
{
    comparison.round(desk.secondsAMove(), plain);
    state.counters["ms_a_move"] = desk.secondsAMove() * 1e3;
}

std::size_t countOf(const benchmark::State& state)
{
    return static_cast<std::size_t>(state.range(0));
}

/// From the message of a move to the strokes in the image.
void dragHeadless(benchmark::State& state, const char* name, bool middle)
{
    CVexHeadlessBackend backend;
    CVexBackend::install(&backend);
    {
        ImageWindow view(kScreen);
        Desk desk(view, countOf(state), middle);
        view.setHandler([&desk](const MSG& message) { return desk.hear(message); });
        Comparison comparison(state, name, static_cast<double>(countOf(state)));
        for ([[maybe_unused]] auto turn : state) {
            const CPoint from = desk.gripPixel();
            for (int step = 1; step <= kMoves; ++step) {
                const CPoint at = Desk::onTheWay(from, step);
                backend.postMessage({&view, WM_MOUSEMOVE, 0, MAKELPARAM(at.x, at.y), {}});
            }
            const CPoint end = Desk::onTheWay(from, kMoves);
            backend.postMessage({&view, WM_LBUTTONUP, 0, MAKELPARAM(end.x, end.y), {}});
            desk.begin(&threadSeconds);
            desk.handler().trackers().back()->Track(&view, from, desk.grip);
            report(state, comparison, desk, plainMove(desk));
            desk.takeBack();
        }
    }
    CVexBackend::install(nullptr);
}

double wallSeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

/// From Qt's mouse event to the end of the paint event that shows it.
void dragInWindow(benchmark::State& state, const char* name, bool middle)
{
    startApplication();
    CVexQtEventBackend backend;
    CVexBackend::install(&backend);
    {
        QWidget window;
        CVexQtView view(backend, &window);
        window.resize(kScreen.cx, kScreen.cy);
        view.widget()->resize(window.size());
        window.show();
        QCoreApplication::processEvents();
        Desk desk(view, countOf(state), middle);
        view.setHandler([&desk](const MSG& message) { return desk.hear(message); });
        QCoreApplication::processEvents();
        Comparison comparison(state, name, static_cast<double>(countOf(state)));
        for ([[maybe_unused]] auto turn : state) {
            const CPoint from = desk.gripPixel();
            Hand hand(*view.widget(), [&](int step) {
                const bool moves = step <= kMoves;
                hand.post(moves ? QEvent::MouseMove : QEvent::MouseButtonRelease,
                          moves ? Qt::NoButton : Qt::LeftButton,
                          Desk::onTheWay(from, std::min(step, kMoves)));
                return moves;
            });
            hand.takeStep();
            desk.begin(&wallSeconds);
            desk.handler().trackers().back()->Track(&view, from, desk.grip);
            report(state, comparison, desk, plainMove(desk));
            desk.takeBack();
            QCoreApplication::processEvents();
        }
        view.setHandler(nullptr);
    }
    CVexBackend::install(nullptr);
}

void dragVertex(benchmark::State& state)
{
    dragHeadless(state, "drag of a vertex", false);
}

void dragMiddle(benchmark::State& state)
{
    dragHeadless(state, "drag of a middle", true);
}

void dragVertexInWindow(benchmark::State& state)
{
    dragInWindow(state, "drag of a vertex in the window", false);
}

void dragMiddleInWindow(benchmark::State& state)
{
    dragInWindow(state, "drag of a middle in the window", true);
}

/// POLYLINE, so many points clicked, a move before each, and Enter. The plain form appends the
/// points and keeps a line for each.
void clicks(benchmark::State& state)
{
    CVexHeadlessBackend backend;
    CVexBackend::install(&backend);
    {
        const std::size_t count = countOf(state);
        ImageWindow view(kScreen);
        Desk desk(view, 0, false);
        const CVexGePolyline2d way = meander(count);
        std::vector<CPoint> pixels;
        for (const CVexGePoint2d& vertex : way.vertices()) {
            pixels.push_back(desk.record->GetDecivePoint(vertex));
        }
        Comparison comparison(state, "clicks", static_cast<double>(count));
        for ([[maybe_unused]] auto turn : state) {
            const auto post = [&](unsigned kind, WPARAM key, CPoint at) {
                backend.postMessage({&view, kind, key, MAKELPARAM(at.x, at.y), {}});
            };
            for (const CPoint& at : pixels) {
                post(WM_MOUSEMOVE, 0, at);
                post(WM_LBUTTONDOWN, 0, at);
            }
            post(WM_KEYDOWN, VK_RETURN, {});
            unsigned long step = 0;
            std::unique_ptr<CVexDbEntity> made;
            const double ours = cpuSecondsOf(
                [&] { made.reset(desk.handler().DoCommand(VexDb::CmdPolyline, step)); });
            require(made != nullptr &&
                        static_cast<CVexDbPolyline&>(*made).NumVerts() == pixels.size(),
                    "every click is a vertex");
            made.reset();
            QImage image(kScreen.cx, kScreen.cy, QImage::Format_RGB32);
            QPainter painter(&image);
            painter.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
            painter.setPen(QPen(Qt::white, 0));
            comparison.round(ours, cpuSecondsOf([&] {
                                 CVexGePolyline2d chain;
                                 for (std::size_t i = 0; i < pixels.size(); ++i) {
                                     chain.appendVertex(way.vertices()[i]);
                                     const CPoint& from = pixels[i > 0 ? i - 1 : 0];
                                     painter.drawLine(from.x, from.y, pixels[i].x, pixels[i].y);
                                 }
                                 benchmark::DoNotOptimize(chain);
                             }));
            state.counters["ms_a_click"] = ours * 1e3 / static_cast<double>(count);
        }
    }
    CVexBackend::install(nullptr);
}

void sizes(benchmark::internal::Benchmark* bench)
{
    bench->Arg(100)->Arg(1000)->Arg(10000)->Arg(100000)->UseManualTime()->Iterations(2);
}

BENCHMARK(dragVertex)->Apply(sizes);
BENCHMARK(dragMiddle)->Apply(sizes);
BENCHMARK(dragVertexInWindow)->Apply(sizes);
BENCHMARK(dragMiddleInWindow)->Apply(sizes);
BENCHMARK(clicks)->Arg(100)->Arg(1000)->Arg(10000)->UseManualTime()->Iterations(3);

} // namespace
