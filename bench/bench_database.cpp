#include "bench/growth.h"
#include "platform/base/carchive.h"
#include "platform/base/vexfields.h"
#include "platform/headless/vexheadless.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <malloc.h>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <unistd.h>
#include <vector>

// Adding, saving and loading lines, each beside the plainest code for the same work, and the memory
// that a line takes with all its indexes.

namespace {

// The heap keeps what it once had, so that a round measures the work and not the system clearing
// pages for the first time; it holds for both sides of each comparison.
const bool heapIsKept =
    mallopt(M_MMAP_THRESHOLD, 1 << 30) == 1 && mallopt(M_TRIM_THRESHOLD, 1 << 30) == 1;

std::unique_ptr<CVexDbLine> makeLine(std::mt19937& random, CVexDbDatabase& database)
{
    std::uniform_real_distribution<double> place(0.0, 4000.0);
    const CVexGePoint2d start(place(random), place(random));
    auto line = std::make_unique<CVexDbLine>(&database);
    line->set(start, CVexGePoint2d(start.x + 10.0, start.y + 5.0));
    return line;
}

std::unique_ptr<CVexDbDatabase> filled(std::size_t count)
{
    auto database = std::make_unique<CVexDbDatabase>(false);
    std::mt19937 random(7);
    for (std::size_t i = 0; i < count; ++i) {
        CVexDbObjectId id;
        database->addEntity(makeLine(random, *database).release(), id);
    }
    return database;
}

// Every turn begins without the memory of the one before: else the smallest drawing alone would
// find its pages there already, and what is larger would seem to grow faster than it does.
void giveMemoryBack()
{
    malloc_trim(0);
}

// Makes `count` lines, a batch at a time, and gives the seconds that `take` needs for them: lines
// are taken while they are warm from being made, as a command's are.
template <class Take>
double secondsToTake(std::size_t count, CVexDbDatabase& database, Take&& take)
{
    constexpr std::size_t kBatch = 1000;
    std::mt19937 random(7);
    std::vector<CVexDbLine*> lines(kBatch);
    double seconds = 0.0;
    for (std::size_t done = 0; done < count; done += kBatch) {
        for (CVexDbLine*& line : lines) {
            line = makeLine(random, database).release();
        }
        seconds += cpuSecondsOf([&] {
            for (CVexDbLine* line : lines) {
                take(line);
            }
        });
    }
    return seconds;
}

void addToDrawing(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    Comparison comparison(state, "add", static_cast<double>(count));
    for ([[maybe_unused]] auto turn : state) {
        auto database = std::make_unique<CVexDbDatabase>(false);
        giveMemoryBack();
        const double ours = secondsToTake(count, *database, [&](CVexDbLine* line) {
            CVexDbObjectId id;
            database->addEntity(line, id);
        });
        std::set<CVexDbObjectId> sets[6];
        std::vector<std::unique_ptr<CVexDbLine>> owner;
        owner.reserve(count);
        giveMemoryBack();
        const double plain = secondsToTake(count, *database, [&](CVexDbLine* line) {
            for (auto& set : sets) {
                set.insert(line->objectId());
            }
            owner.emplace_back(line);
        });
        comparison.round(ours, plain);
        for (auto& set : sets) {
            set.clear(); // before the objects whose numbers order them
        }
    }
}

std::string scratchFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "vexbench-XXXXXX").string();
    return mkdtemp(pattern.data()) == nullptr ? std::string() : pattern;
}

// One write of the bytes with what a careful program does around it: beside, synced, renamed, and
// the folder synced, so that both sides promise the same when they are done.
void writeBare(const std::string& folder, const std::string& name,
               const std::vector<std::byte>& bytes)
{
    const std::string path = folder + name;
    const std::string beside = path + ".tmp";
    const int handle = open(beside.c_str(), O_CREAT | O_TRUNC | O_WRONLY, 0644);
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t wrote = write(handle, bytes.data() + done, bytes.size() - done);
        done += wrote > 0 ? static_cast<std::size_t>(wrote) : 0;
    }
    fsync(handle);
    close(handle);
    std::rename(beside.c_str(), path.c_str());
    const int folderHandle = open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    fsync(folderHandle);
    close(folderHandle);
}

std::vector<std::byte> bytesOf(CVexDbDatabase& database)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    database.Save(archive);
    file.Close();
    return file.bytes();
}

void saveDrawing(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const auto database = filled(count);
    const std::vector<std::byte> bytes = bytesOf(*database);
    const std::string folder = scratchFolder();
    Comparison comparison(state, "save", static_cast<double>(count));
    for ([[maybe_unused]] auto turn : state) {
        sync(); // neither side waits for what the other has left to do
        const double plain = secondsOf([&] { writeBare(folder, "/bare.zpl", bytes); });
        sync();
        const double ours =
            secondsOf([&] { database->SaveAs(CString::fromUtf8(folder + "/drawing.zpl")); });
        comparison.round(ours, plain);
    }
    for (const char* name : {"/bare.zpl", "/drawing.zpl", "/drawing.bak"}) {
        unlink((folder + name).c_str());
    }
    rmdir(folder.c_str());
}

// The fields of a line's record, as the plainest loader would keep them.
struct PlainLine {
    std::uint32_t tag, classType;
    std::uint64_t number, layer, linetype;
    std::uint8_t status;
    std::int32_t color, weight, startTag, endTag;
    std::uint16_t xdata;
    double startX, startY, endX, endY;
};

void loadPlain(CFile& file, std::size_t count, std::vector<std::unique_ptr<PlainLine>>& lines)
{
    CVexFieldReader in(file);
    for (std::size_t i = 0; i < count; ++i) {
        auto line = std::make_unique<PlainLine>();
        in(line->tag, line->number, line->classType, line->status, line->layer, line->linetype,
           line->color, line->weight, line->xdata, line->startX, line->startY, line->startTag,
           line->endX, line->endY, line->endTag);
        lines.push_back(std::move(line));
    }
}

void loadDrawing(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::vector<std::byte> bytes = bytesOf(*filled(count));
    const std::size_t recordSize = 4 + 13 + 26 + 40;
    const std::size_t start =
        bytes.size() - count * recordSize - 6; // definitions' count, final zero
    Comparison comparison(state, "load", static_cast<double>(count));
    for ([[maybe_unused]] auto turn : state) {
        std::vector<std::unique_ptr<PlainLine>> lines;
        CMemFile plainFile({bytes.begin() + static_cast<std::ptrdiff_t>(start), bytes.end()});
        giveMemoryBack();
        const double plain = cpuSecondsOf([&] { loadPlain(plainFile, count, lines); });
        CVexDbDatabase database(false);
        CMemFile file(bytes);
        CArchive archive(&file, CArchive::load);
        bool whole = false;
        giveMemoryBack();
        const double ours = cpuSecondsOf([&] { whole = database.Read(archive); });
        if (!whole) {
            state.SkipWithError("the drawing did not come back whole");
            break;
        }
        comparison.round(ours, plain);
    }
}

void memoryOfALine(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    for ([[maybe_unused]] auto turn : state) {
        const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
        const auto database = filled(count);
        const std::size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
        state.counters["bytes_each"] =
            static_cast<double>(after - before) / static_cast<double>(count);
        state.SetIterationTime(1e-9);
    }
}

// Every second identifier of a full set goes and comes back, in random order: each step is a change
// in the middle.
void changeIdSetInTheMiddle(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    const auto database = filled(count);
    CVexDbIdSet set = *database->blocks().getCurrentRecord()->entitySet();
    std::vector<CVexDbObjectId> changed;
    std::set<CVexDbObjectId> plainSet;
    for (auto at = set.begin(); at != set.end(); ++at) {
        plainSet.insert(plainSet.end(), *at);
        if (changed.size() * 2 < plainSet.size()) {
            changed.push_back(*at);
        }
    }
    std::shuffle(changed.begin(), changed.end(), std::mt19937(3));
    Comparison comparison(state, "idset", static_cast<double>(changed.size()) * 2.0);
    const auto change = [&](auto& any) {
        for (const CVexDbObjectId& id : changed) {
            any.erase(id);
        }
        for (const CVexDbObjectId& id : changed) {
            any.insert(id);
        }
    };
    for ([[maybe_unused]] auto turn : state) {
        const double plain = cpuSecondsOf([&] { change(plainSet); });
        comparison.round(cpuSecondsOf([&] { change(set); }), plain);
    }
}

// First, while nothing that was freed is at hand.
BENCHMARK(memoryOfALine)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime()->Iterations(1);
BENCHMARK(addToDrawing)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime()->Iterations(5);
// More rounds than the others: a disk has other work now and then, and the best round counts.
BENCHMARK(saveDrawing)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime()->Iterations(15);
BENCHMARK(loadDrawing)->Arg(10000)->Arg(100000)->Arg(1000000)->UseManualTime()->Iterations(5);
BENCHMARK(changeIdSetInTheMiddle)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->UseManualTime()
    ->Iterations(5);

} // namespace
