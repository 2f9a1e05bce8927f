#include "bench/growth.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

// Undo and redo of single edits in drawings of growing size, beside the plainest code for the same
// inverse: the time of one edit must not know how many lines are open.

namespace {

constexpr int kEdits = 20000;

std::unique_ptr<CVexDbDatabase> filled(std::size_t count, std::vector<CVexDbLine*>& lines)
{
    auto database = std::make_unique<CVexDbDatabase>(false);
    std::mt19937 random(7);
    std::uniform_real_distribution<double> place(0.0, 4000.0);
    for (std::size_t i = 0; i < count; ++i) {
        const CVexGePoint2d start(place(random), place(random));
        auto line = std::make_unique<CVexDbLine>(database.get());
        line->set(start, CVexGePoint2d(start.x + 10.0, start.y + 5.0));
        lines.push_back(line.get());
        CVexDbObjectId id;
        database->addEntity(line.release(), id);
    }
    return database;
}

// The edits fall on lines that were drawn one after the other, as a person's work of an hour does,
// in the middle of the drawing's order: nothing of what they touch is larger in a larger drawing.
std::vector<CVexDbLine*> editedLines(const std::vector<CVexDbLine*>& lines)
{
    constexpr std::ptrdiff_t kLines = 1000;
    const auto first = lines.begin() + static_cast<std::ptrdiff_t>(lines.size() / 2);
    return {first, first + kLines};
}

struct PlainLine {
    double startX = 0.0, startY = 0.0, endX = 0.0, endY = 0.0;
    bool erased = false;
    int layer = 0;

    void move(double x, double y)
    {
        startX += x;
        startY += y;
        endX += x;
        endY += y;
    }
};

struct PlainRecord {
    int type = 0;
    PlainLine* line = nullptr;
    double x = 0.0, y = 0.0;
    int layer = 0;
};

bool undoPlain(std::deque<PlainRecord>& from, std::deque<PlainRecord>& to)
{
    if (from.empty()) {
        return false;
    }
    PlainRecord record = from.front();
    from.pop_front();
    switch (record.type) {
    case kUndoMove:
        record.line->move(-record.x, -record.y);
        record.x = -record.x;
        record.y = -record.y;
        break;
    case kUndoErase: record.line->erased = !record.line->erased; break;
    default: std::swap(record.line->layer, record.layer); break;
    }
    to.push_front(record);
    return true;
}

/// The edit number `turn` of a line. Layers alternate, so that each undo of one is a change.
tagUndoEditEntity recordOf(const CVexDbLine& line, int type, int turn)
{
    CVexDbObjectId other;
    line.database()->layers().getAt(L"WeldNum", other, false);
    tagUndoEditEntity record;
    record.continues = false;
    record.editType = type;
    record.entity = line.objectId();
    record.other = turn % 2 == 0 ? line.LayerId() : other;
    record.vector.set(1.0, 2.0);
    return record;
}

/// Nanoseconds an edit, the ratio to the plain form, and how the time grows with the number of
/// lines open: an exponent of 0 is no growth, and the plain form's tells the machine's share.
void report(benchmark::State& state, const std::string& name, double ours, double plain)
{
    struct Smallest {
        double lines, ours, plain;
    };
    static std::map<std::string, Smallest> smallest;
    const auto lines = static_cast<double>(state.range(0));
    const Smallest& first = smallest.try_emplace(name, Smallest{lines, ours, plain}).first->second;
    state.counters["ns_an_edit"] = ours * 1e9 / (2.0 * kEdits);
    state.counters["plain_ns_an_edit"] = plain * 1e9 / (2.0 * kEdits);
    state.counters["ours/plain"] = ours / plain;
    if (lines > first.lines) {
        const double growth = std::log(lines / first.lines);
        state.counters["exponent"] = std::log(ours / first.ours) / growth;
        state.counters["plain_exponent"] = std::log(plain / first.plain) / growth;
    }
}

// Half of the time goes back, half forth: each edit counts twice.
void undoOneEdit(benchmark::State& state, const char* name, int type)
{
    std::vector<CVexDbLine*> lines;
    const auto database = filled(static_cast<std::size_t>(state.range(0)), lines);
    const std::vector<CVexDbLine*> edited = editedLines(lines);
    CVexUndoHandler& undo = database->undoHandler();
    std::vector<PlainLine> plainLines(lines.size());
    std::deque<PlainRecord> plainUndo, plainRedo;
    for (std::size_t i = 0; i < kEdits; ++i) {
        const std::size_t at = i % edited.size();
        const tagUndoEditEntity record =
            recordOf(*edited[at], type, static_cast<int>(i / edited.size()));
        undo.AddUndo(&record);
        plainUndo.push_front({type, &plainLines[lines.size() / 2 + at], 1.0, 2.0, 1});
    }
    double ours = std::numeric_limits<double>::max();
    double plain = ours;
    for ([[maybe_unused]] auto turn : state) {
        plain = std::min(plain, secondsOf([&] {
                             while (undoPlain(plainUndo, plainRedo)) {
                             }
                             while (undoPlain(plainRedo, plainUndo)) {
                             }
                         }));
        const double seconds = secondsOf([&] {
            while (undo.Undo()) {
            }
            while (undo.Redo()) {
            }
        });
        ours = std::min(ours, seconds);
        state.SetIterationTime(seconds);
    }
    report(state, name, ours, plain);
}

void undoMove(benchmark::State& state)
{
    undoOneEdit(state, "move", kUndoMove);
}

void undoErase(benchmark::State& state)
{
    undoOneEdit(state, "erase", kUndoErase);
}

void undoLayer(benchmark::State& state)
{
    undoOneEdit(state, "layer", kUndoChangeLayer);
}

BENCHMARK(undoMove)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime()->Iterations(5);
BENCHMARK(undoErase)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime()->Iterations(5);
BENCHMARK(undoLayer)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime()->Iterations(5);

} // namespace
