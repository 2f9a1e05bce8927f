#include "bench/growth.h"
#include "platform/qt/vexqtimagedc.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbpagemapping.h"

#include <QImage>
#include <QPainter>

#include <memory>
#include <random>

// A drawing into 1920 by 1080 pixels, beside a bare loop of the same strokes with one pen.

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

BENCHMARK(drawLines)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime()->Iterations(5);

} // namespace
