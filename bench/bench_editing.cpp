#include "bench/growth.h"
#include "bench/imagewindow.h"
#include "platform/headless/vexheadless.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexcommandsession.h"
#include "vexdb/dbcommand/vexprompthandler.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbviewprocess.h"

#include <QImage>
#include <QPainter>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <string_view>
#include <vector>

// Editing commands on selections of growing size, typed as a person types them, and what a drag of
// a selection costs a frame in drawings of growing size. The plain forms do the same to the same
// entities in a bare loop.

namespace {

constexpr CSize kScreen{1920, 1080};
constexpr std::size_t kLines = 100000;

std::size_t countOf(const benchmark::State& state)
{
    return static_cast<std::size_t>(state.range(0));
}

void require(bool holds, const char* what)
{
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::abort();
    }
}

/// A drawing of lines of up to 20 units on a sheet of a pixel a unit, and a person before it.
struct Desk {
    explicit Desk(std::size_t count)
    {
        CVexBackend::install(&backend);
        CVexDbViewProcess::current().reset();
        static CVexPromptHandler prompts(L"");
        _hPROMPT = &prompts;
        database = std::make_unique<CVexDbDatabase>(false);
        session = std::make_unique<CVexCommandSession>(
            *database, CVexCommandSession::Windows{&view, &message, &history, nullptr});
        session->setRedraws(false);
        view.setHandler([this](const MSG& sent) { return session->onDisplayMessage(sent); });
        CVexDbDisplayTableRecord& record = *database->displays().getCurrentRecord();
        record.SetCurDispWin(CVexGePoint2d(0.0, 0.0), CVexGePoint2d(kScreen.cx, kScreen.cy));
        record.MakeUpDisplayWindow(view.GetDC());
        fill(count);
    }
    ~Desk()
    {
        session.reset();
        database.reset();
        CVexBackend::install(nullptr);
    }
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    void fill(std::size_t count)
    {
        std::mt19937 random(17);
        std::uniform_real_distribution<double> x(20.0, kScreen.cx - 20.0);
        std::uniform_real_distribution<double> y(20.0, kScreen.cy - 20.0);
        std::uniform_real_distribution<double> along(-20.0, 20.0);
        lines.reserve(count);
        for (std::size_t i = 0; i < count; ++i) {
            const CVexGePoint2d start(x(random), y(random));
            auto line = std::make_unique<CVexDbLine>(database.get());
            line->set(start, CVexGePoint2d(start.x + along(random), start.y + along(random)));
            lines.push_back(line.get());
            CVexDbObjectId id;
            database->addEntity(line.release(), id);
        }
    }
    void select(std::size_t count)
    {
        handler().ClearTracker(false);
        for (std::size_t i = 0; i < count; ++i) {
            handler().DoDragEntity(lines[i], {});
        }
    }
    void type(std::string_view text)
    {
        for (const char character : text) {
            const bool isEnter = character == '\n';
            const bool isDigit = character >= '0' && character <= '9';
            const unsigned key = isEnter ? unsigned{VK_RETURN} : 0xe7u;
            view.PostMessage(WM_KEYDOWN, isDigit ? static_cast<unsigned>(character) : key,
                             keyLParam(static_cast<wchar_t>(isEnter ? '\r' : character)));
        }
    }
    void run(VexDb::CommandID id)
    {
        unsigned long step = 0;
        handler().DoCommand(id, step);
        require(backend.queued() == 0, "the command took all that was typed");
    }
    CVexCommandHandler& handler() { return database->commandHandler(); }
    CVexUndoHandler& undo() { return database->undoHandler(); }

    CVexHeadlessBackend backend;
    ImageWindow view{kScreen};
    CVexMemoryWindow message{{400, 20}};
    CVexMemoryWindow history{{400, 100}};
    std::vector<CVexDbLine*> lines;
    std::unique_ptr<CVexDbDatabase> database;
    std::unique_ptr<CVexCommandSession> session;
};

void moveSelected(benchmark::State& state)
{
    const std::size_t count = countOf(state);
    Desk desk(kLines);
    desk.select(count);
    const CVexGePoint2d before = desk.lines.front()->StartPoint();
    Comparison comparison(state, "move", static_cast<double>(count));
    for ([[maybe_unused]] auto turn : state) {
        const double plain = secondsOf([&] {
            for (std::size_t i = 0; i < count; ++i) {
                desk.lines[i]->TranslateBy(CVexGeVector2d(1.0, 2.0));
            }
        });
        for (std::size_t i = 0; i < count; ++i) {
            desk.lines[i]->TranslateBy(CVexGeVector2d(-1.0, -2.0));
        }
        desk.type("0,0\n1,2\n");
        comparison.round(secondsOf([&] { desk.run(VexDb::CmdMove); }), plain);
        require(desk.undo().undoStack().size() == count, "each entity has its record");
        desk.undo().Undo();
        require(desk.lines.front()->StartPoint().distanceTo(before) < 1e-6, "it came back");
    }
}

void undoOfAMove(benchmark::State& state)
{
    const std::size_t count = countOf(state);
    Desk desk(kLines);
    desk.select(count);
    desk.type("0,0\n1,2\n");
    desk.run(VexDb::CmdMove);
    Comparison comparison(state, "undo of a move", static_cast<double>(count));
    for ([[maybe_unused]] auto turn : state) {
        const double plain = secondsOf([&] {
            for (std::size_t i = 0; i < count; ++i) {
                desk.lines[i]->TranslateBy(CVexGeVector2d(1.0, 2.0));
            }
        });
        for (std::size_t i = 0; i < count; ++i) {
            desk.lines[i]->TranslateBy(CVexGeVector2d(-1.0, -2.0));
        }
        comparison.round(secondsOf([&] { desk.undo().Undo(); }), plain);
        desk.undo().Redo();
        require(desk.undo().undoStack().size() == count, "it is done again");
    }
}

// The plain form draws each once and sets its bit, as the command does.
void eraseSelected(benchmark::State& state)
{
    const std::size_t count = countOf(state);
    Desk desk(kLines);
    CDC& dc = *desk.view.GetDC();
    Comparison comparison(state, "erase", static_cast<double>(count));
    for ([[maybe_unused]] auto turn : state) {
        const double plain = secondsOf([&] {
            dc.SetROP2(R2_MASKNOTPEN);
            for (std::size_t i = 0; i < count; ++i) {
                desk.lines[i]->Draw(&dc);
                desk.lines[i]->setErased();
            }
            dc.SetROP2(R2_COPYPEN);
        });
        for (std::size_t i = 0; i < count; ++i) {
            desk.lines[i]->resetObjectStatus(kStatusErased);
        }
        desk.select(count);
        comparison.round(secondsOf([&] { desk.run(VexDb::CmdErase); }), plain);
        require(desk.lines[count - 1]->isErased(), "the last one is erased");
        desk.undo().Undo();
    }
}

// What takes entities out of a selection one by one: an erasure by undo of those that are selected.
void undoOfSelectedCopies(benchmark::State& state)
{
    const std::size_t count = countOf(state);
    Desk desk(kLines);
    Comparison comparison(state, "undo of what is selected", static_cast<double>(count));
    for ([[maybe_unused]] auto turn : state) {
        desk.select(count);
        const double plain = secondsOf([&] { desk.handler().ClearTracker(true); });
        desk.select(count);
        desk.type("0,0\n0,500\n\n");
        desk.run(VexDb::CmdCopy);
        desk.handler().ClearTracker(true);
        for (const tagUndoEditEntity& edit : desk.undo().undoStack()) {
            desk.handler().DoDragEntity(static_cast<CVexDbEntity*>(edit.entity.getPObject()), {});
        }
        comparison.round(secondsOf([&] { desk.undo().Undo(); }), plain);
        require(desk.handler().trackers().empty(), "what is gone is not selected");
        desk.undo().clear();
    }
}

/// The drawing's image with bare strokes on it, shown in one block.
double plainFrame(Desk& desk, const QImage& drawing, std::size_t count, CVexGeVector2d way)
{
    QImage screen(drawing.size(), drawing.format());
    screen.fill(Qt::black);
    return secondsOf([&] {
        QImage picture = drawing.copy();
        QPainter painter(&picture);
        painter.setPen(QPen(Qt::red, 0));
        for (std::size_t i = 0; i < count; ++i) {
            const CVexGePoint2d a = desk.lines[i]->StartPoint() + way;
            const CVexGePoint2d b = desk.lines[i]->EndPoint() + way;
            painter.drawLine(static_cast<int>(a.x), static_cast<int>(a.y), static_cast<int>(b.x),
                             static_cast<int>(b.y));
        }
        painter.end();
        QPainter(&screen).drawImage(0, 0, picture);
    });
}

void dragFrame(benchmark::State& state)
{
    constexpr std::size_t kSelected = 1000;
    constexpr int kFrames = 50;
    Desk desk(countOf(state));
    desk.session->setRedraws(true);
    desk.session->redraw(); // makes the buffer that the frames start from
    desk.session->setRedraws(false);
    const QImage drawing = desk.view.image().copy();
    desk.select(kSelected);
    Comparison comparison(state, "drag", static_cast<double>(countOf(state)));
    for ([[maybe_unused]] auto turn : state) {
        desk.type("0,0\n");
        for (int frame = 0; frame < kFrames; ++frame) {
            desk.view.PostMessage(WM_MOUSEMOVE, 0, MAKELPARAM(100 + frame, 900 - 3 * frame));
        }
        desk.view.PostMessage(WM_KEYDOWN, VK_ESCAPE, 0);
        const double ours = secondsOf([&] { desk.run(VexDb::CmdMove); }) / kFrames;
        comparison.round(ours, plainFrame(desk, drawing, kSelected, {10.0, 20.0}));
        state.counters["ms_a_frame"] = ours * 1e3;
    }
}

/// Upright boundaries across a long level line.
struct Fence {
    explicit Fence(std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i) {
            const double x = 1.0 + static_cast<double>(i);
            posts.push_back(
                std::make_unique<CVexDbLine>(CVexGePoint2d(x, -5.0), CVexGePoint2d(x, 5.0)));
            boundaries.push_back(posts.back().get());
        }
        length = static_cast<double>(count) + 1.0;
    }

    std::vector<std::unique_ptr<CVexDbLine>> posts;
    std::vector<CVexDbEntity*> boundaries;
    double length = 0.0;
};

/// Intersects the line with each boundary and does nothing with it.
double plainCuts(const CVexDbLine& line, const Fence& fence)
{
    return secondsOf([&] {
        for (const auto& post : fence.posts) {
            CVexGePoint2d crossing;
            benchmark::DoNotOptimize(line.geLine().intersectWith(
                post->geLine(), crossing, CVexGeEntity2d::kExtendNone, kGeEpsilon));
        }
    });
}

void trimAtBoundaries(benchmark::State& state)
{
    CVexDbDatabase drawing(false);
    Fence fence(countOf(state));
    Comparison comparison(state, "trim", static_cast<double>(countOf(state)));
    for ([[maybe_unused]] auto turn : state) {
        CVexDbLine line(CVexGePoint2d(0.0, 0.0), CVexGePoint2d(fence.length, 0.0));
        line.setDatabase(&drawing);
        CVexGePoint2d pick(fence.length / 2.0 + 0.25, 0.0);
        const double plain = plainCuts(line, fence);
        std::unique_ptr<CVexDbEntity> rest;
        comparison.round(
            secondsOf([&] { rest.reset(line.Trim(pick, fence.boundaries, kGeEpsilon)); }), plain);
        require(rest != nullptr, "the line was split");
        drawing.undoHandler().clear();
    }
}

void extendToBoundaries(benchmark::State& state)
{
    CVexDbDatabase drawing(false);
    Fence fence(countOf(state));
    Comparison comparison(state, "extend", static_cast<double>(countOf(state)));
    for ([[maybe_unused]] auto turn : state) {
        CVexDbLine line(CVexGePoint2d(-2.0, 0.0), CVexGePoint2d(-1.0, 0.0));
        line.setDatabase(&drawing);
        CVexGePoint2d pick(-1.1, 0.0);
        const double plain = plainCuts(line, fence);
        bool extended = false;
        comparison.round(
            secondsOf([&] { extended = line.Extend(pick, fence.boundaries, kGeEpsilon); }), plain);
        require(extended, "the line was extended");
        drawing.undoHandler().clear();
    }
}

BENCHMARK(moveSelected)->Arg(1000)->Arg(10000)->Arg(100000)->UseManualTime()->Iterations(5);
BENCHMARK(undoOfAMove)->Arg(1000)->Arg(10000)->Arg(100000)->UseManualTime()->Iterations(5);
BENCHMARK(eraseSelected)->Arg(1000)->Arg(10000)->Arg(100000)->UseManualTime()->Iterations(5);
BENCHMARK(undoOfSelectedCopies)->Arg(1000)->Arg(10000)->Arg(100000)->UseManualTime()->Iterations(3);
BENCHMARK(dragFrame)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime()->Iterations(3);
BENCHMARK(trimAtBoundaries)->Arg(100)->Arg(1000)->Arg(10000)->UseManualTime()->Iterations(20);
BENCHMARK(extendToBoundaries)->Arg(100)->Arg(1000)->Arg(10000)->UseManualTime()->Iterations(20);

} // namespace
