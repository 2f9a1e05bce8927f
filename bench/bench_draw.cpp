#include "bench/growth.h"
#include "platform/headless/vexrecordingdc.h"
#include "platform/qt/vexqtimagedc.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbpagemapping.h"

#include <QImage>
#include <QPainter>

#include <cmath>
#include <memory>
#include <numbers>
#include <random>
#include <vector>

// A drawing into 1920 by 1080 pixels, beside a bare loop of the same strokes with one pen; and the
// display vertices of arcs, beside the loop of sines and cosines that defines them.

namespace {

constexpr CSize kScreen{1920, 1080};
constexpr double kLineLength = 20.0; // drawing units, as a pixel is one unit here

std::unique_ptr<CVexDbDatabase> filled(std::size_t count)
{
    auto database = std::make_unique<CVexDbDatabase>(false);
    std::mt19937 random(11);
    std::uniform_real_distribution<double> x(20.0, 1900.0);
    std::uniform_real_distribution<double> y(20.0, 1060.0);
    std::uniform_real_distribution<double> along(-kLineLength, kLineLength);
    const wchar_t* const layers[] = {L"PipeLine", L"WeldNum", L"Dimension", L"0"};
    for (std::size_t i = 0; i < count; ++i) {
        const CVexGePoint2d start(x(random), y(random));
        auto line = std::make_unique<CVexDbLine>(database.get());
        line->set(start, CVexGePoint2d(start.x + along(random), start.y + along(random)));
        line->setLayer(CString(layers[i / 64 % 4]));
        CVexDbObjectId id;
        database->addEntity(line.release(), id);
    }
    return database;
}

std::vector<QLine> deviceLines(CVexDbDatabase& database, const CDC& dc)
{
    std::vector<QLine> lines;
    const CVexDbIdSet& shown = *database.displays().getCurrentRecord()->displayedIdSet();
    for (auto at = shown.begin(); at != shown.end(); ++at) {
        const auto& line = *static_cast<CVexDbLine*>(at.object());
        CPoint ends[2] = {toLogical(line.StartPoint()), toLogical(line.EndPoint())};
        dc.LPtoDP(ends, 2);
        lines.emplace_back(ends[0].x, ends[0].y, ends[1].x, ends[1].y);
    }
    return lines;
}

/// Polylines of ten vertices, every other segment a bend of a quarter turn.
std::unique_ptr<CVexDbDatabase> filledWithBends(std::size_t count)
{
    constexpr int kVertices = 10;
    constexpr double kQuarterBulge = 0.41421356237309503;
    auto database = std::make_unique<CVexDbDatabase>(false);
    std::mt19937 random(12);
    std::uniform_real_distribution<double> x(20.0, 1800.0);
    std::uniform_real_distribution<double> y(20.0, 960.0);
    std::uniform_real_distribution<double> along(2.0, kLineLength);
    for (std::size_t i = 0; i < count; ++i) {
        CVexGePoint2d at(x(random), y(random));
        CVexGePolyline2d chain;
        chain.setSize(kVertices);
        for (int k = 0; k < kVertices; ++k) { // right, round, up, round, right
            chain.appendVertex(at, k % 4 == 1 ? kQuarterBulge : k % 4 == 3 ? -kQuarterBulge : 0.0);
            const double step = along(random);
            at = at + CVexGeVector2d(k % 4 == 2 ? 0.0 : step, k % 4 == 0 ? 0.0 : step);
        }
        auto polyline = std::make_unique<CVexDbPolyline>(0, database.get());
        polyline->SetGeometry(chain);
        CVexDbObjectId id;
        database->addEntity(polyline.release(), id);
    }
    return database;
}

/// Keeps the device lines of what is drawn.
class LineListDC : public CVexRecordingDC {
public:
    std::vector<QLine> lines;

protected:
    void deviceLine(CPoint from, CPoint to) override
    {
        lines.emplace_back(from.x, from.y, to.x, to.y);
    }
};

void drawPolylines(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const auto database = filledWithBends(count);
    QImage image(kScreen.cx, kScreen.cy, QImage::Format_RGB32);
    image.fill(Qt::black);
    CVexQtImageDC dc(image);
    LineListDC list;
    for (CDC* target : {static_cast<CDC*>(&dc), static_cast<CDC*>(&list)}) {
        target->SetBkColor(RGB(0, 0, 0));
        target->SetMapMode(MM_ISOTROPIC);
        setWindowMapping(*target, CRect(0, 0, 192000, 108000), CRect(0, 0, kScreen.cx, kScreen.cy));
    }
    CVexDbDisplayTableRecord& view = *database->displays().getCurrentRecord();
    view.DrawEntities(&list);
    QImage bare(kScreen.cx, kScreen.cy, QImage::Format_RGB32);
    bare.fill(Qt::black);
    Comparison comparison(state, "draw polylines", static_cast<double>(count));
    for ([[maybe_unused]] auto turn : state) {
        const double plain = secondsOf([&] {
            QPainter painter(&bare);
            painter.setPen(QPen(Qt::white, 0));
            for (const QLine& line : list.lines) {
                painter.drawLine(line);
            }
        });
        comparison.round(secondsOf([&] { view.DrawEntities(&dc); }), plain);
    }
    state.counters["strokes_each"] =
        static_cast<double>(list.lines.size()) / static_cast<double>(count);
}

void drawLines(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const auto database = filled(count);
    QImage image(kScreen.cx, kScreen.cy, QImage::Format_RGB32);
    image.fill(Qt::black);
    CVexQtImageDC dc(image);
    dc.SetBkColor(RGB(0, 0, 0));
    dc.SetMapMode(MM_ISOTROPIC);
    setWindowMapping(dc, CRect(0, 0, 192000, 108000), CRect(0, 0, kScreen.cx, kScreen.cy));
    const std::vector<QLine> lines = deviceLines(*database, dc);
    CVexDbDisplayTableRecord& view = *database->displays().getCurrentRecord();
    QImage bare(kScreen.cx, kScreen.cy, QImage::Format_RGB32);
    bare.fill(Qt::black);
    Comparison comparison(state, "draw", static_cast<double>(count));
    for ([[maybe_unused]] auto turn : state) {
        const double plain = secondsOf([&] {
            QPainter painter(&bare);
            painter.setPen(QPen(Qt::red, 0));
            for (const QLine& line : lines) {
                painter.drawLine(line);
            }
        });
        comparison.round(secondsOf([&] { view.DrawEntities(&dc); }), plain);
    }
}

BENCHMARK(drawPolylines)->Arg(1000)->Arg(10000)->Arg(100000)->UseManualTime()->Iterations(5);
BENCHMARK(drawLines)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime()->Iterations(5);

std::vector<CVexGeCircArc2d> randomArcs(std::size_t count)
{
    std::mt19937 random(13);
    std::uniform_real_distribution<double> place(0.0, 2000.0);
    std::uniform_real_distribution<double> size(0.5, 200.0);
    std::uniform_real_distribution<double> angle(0.0, 2.0 * std::numbers::pi);
    std::vector<CVexGeCircArc2d> arcs;
    for (std::size_t i = 0; i < count; ++i) {
        const CVexGePoint2d centre(place(random), place(random));
        const double radius = size(random);
        const double start = angle(random);
        arcs.emplace_back(centre, radius, start, angle(random));
    }
    return arcs;
}

void plainVertices(const CVexGeCircArc2d& arc, std::vector<CPoint>& vertices)
{
    const auto push = [&](double angle) {
        vertices.emplace_back(toLogical(arc.center().x + arc.radius() * std::cos(angle)),
                              toLogical(arc.center().y + arc.radius() * std::sin(angle)));
    };
    vertices.clear();
    const double turn = 2.0 * std::numbers::pi;
    double angle = arc.startAng() - (arc.endAng() < arc.startAng() ? turn : 0.0);
    for (; angle < arc.endAng(); angle += turn / _wArcRes) {
        push(angle);
    }
    push(arc.endAng());
}

/// Of each arc its vertices, by the kernel and plainly; the run fails if one integer differs.
void arcVertices(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::vector<CVexGeCircArc2d> arcs = randomArcs(count);
    std::vector<CPoint> ours;
    std::vector<CPoint> plain;
    for (const CVexGeCircArc2d& arc : arcs) {
        arc.getGrVertexArray(ours, _wArcRes, _dDispScale);
        plainVertices(arc, plain);
        if (ours != plain) {
            state.SkipWithError("another vertex than the plain loop's");
        }
    }
    Comparison comparison(state, "arc vertices", static_cast<double>(count));
    for ([[maybe_unused]] auto turn : state) {
        const double plainTime = secondsOf([&] {
            for (const CVexGeCircArc2d& arc : arcs) {
                plainVertices(arc, plain);
                benchmark::DoNotOptimize(plain.data());
            }
        });
        const double time = secondsOf([&] {
            for (const CVexGeCircArc2d& arc : arcs) {
                arc.getGrVertexArray(ours, _wArcRes, _dDispScale);
                benchmark::DoNotOptimize(ours.data());
            }
        });
        comparison.round(time, plainTime);
    }
}

BENCHMARK(arcVertices)->Arg(1000)->Arg(10000)->Arg(100000)->UseManualTime()->Iterations(7);

} // namespace
