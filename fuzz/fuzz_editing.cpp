#include "fuzz/fuzzsession.h"
#include "fuzz/fuzzsource.h"
#include "vexdb/dbcommand/vexscriptplayer.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbentitykinds.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"

#include <array>
#include <cstdio>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Bytes become a script of command names, keys, numbers, picks and broken text, which is played on
// a drawing that has something to edit. The drawing is checked after each command, and when all is
// undone it must be the one of the start.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr std::size_t kMostBytesRead = 64;
constexpr std::size_t kMostLines = 26;
constexpr int kEchoesACheck = 4;
constexpr double kUndone = 1e-3; // drawing units: as far as turning and scaling back may miss

constexpr std::array<std::string_view, 24> kCommands = {
    "ERASE",  "MOVE",    "COPY", "ROTATE", "COPYROTATE", "SCALE", "MIRROR", "TRIM",
    "EXTEND", "EXPLODE", "LINE", "CIRCLE", "ARC",        "BOX",   "RECT",   "ARRAY",
    "U",      "REDO",    "u",    "SA",     "ORTHO",      "SNAP",  "ZE",     "e"};
constexpr std::array<std::string_view, 24> kAnswers = {
    "",    "",   "",    "10,10", "50,50", "0,0", "80,20", "20,80", "5<90", "30<45", "-7,3", "90",
    "-30", "45", "1.5", "2",     "y",     "n",   "Y",     "c",     "w",    "r",     "abc",  "1,"};
constexpr std::array<std::string_view, 10> kKeys = {"Escape", "Enter", "Space", "Delete", "L",
                                                    "F4",     "Left",  "Up",    "Break",  "I"};
constexpr std::array<std::string_view, 5> kMouse = {"@click", "@move", "@rclick", "@press",
                                                    "@release"};

struct Script {
    std::vector<CString> lines;
    bool isTame = true; // nothing in it takes digits off the coordinates for good
};

/// Where something is, more often than not: the drawing's own lines lie on this grid.
std::string position(CFuzzSource& source)
{
    const int x = source.byte() % 21 * 5;
    const int y = source.byte() % 21 * 5;
    return std::to_string(x) + "," + std::to_string(y);
}

std::string brokenText(CFuzzSource& source)
{
    std::string text;
    for (std::size_t left = source.byte() % 8 + std::size_t{1}; left > 0; --left) {
        const auto character = static_cast<char>(source.byte());
        text += character == '\n' ? ' ' : character;
    }
    return text;
}

Script scriptOf(CFuzzSource& source)
{
    Script script;
    while (!source.empty() && script.lines.size() < kMostLines) {
        const std::uint8_t kind = source.byte();
        std::string line;
        if (kind < 0x50) {
            line = kCommands[kind % kCommands.size()];
            script.isTame = script.isTame && line != "SCALE";
        } else if (kind < 0xa0) {
            line = std::string(source.oneOf(kMouse)) + " " + position(source);
        } else if (kind < 0xd0) {
            line = kAnswers[kind % kAnswers.size()];
        } else if (kind < 0xe0) {
            line = position(source);
        } else if (kind < 0xf4) {
            line = "@key " + std::string(source.oneOf(kKeys));
        } else {
            line = brokenText(source);
            script.isTame = false;
        }
        script.lines.push_back(CString::fromUtf8(line));
    }
    return script;
}

void populate(CVexDbDatabase& drawing)
{
    CVexDbObjectId id;
    for (const double at : {10.0, 50.0, 80.0}) {
        drawing.addEntity(new CVexDbLine({0.0, at}, {100.0, at}), id);
        drawing.addEntity(new CVexDbLine({at, 0.0}, {at, 100.0}), id);
    }
    drawing.addEntity(new CVexDbLine({15.0, 15.0}, {35.0, 40.0}), id);
    drawing.addEntity(new CVexDbBox({20.0, 60.0}, 20.0, 15.0, 0.0), id);
    drawing.addEntity(new CVexDbRect(CVexGePoint2d(60.0, 75.0), CVexGePoint2d(75.0, 60.0)), id);
    // The kinds that a command can make are here, too, as soon as they exist.
    for (const VexDb::ClassType type : {VexDb::kArc, VexDb::kCircle}) {
        if (CVexDbEntity* const entity = makeEntityOfClass(type, &drawing); entity != nullptr) {
            entity->ScaleBy(15.0, {0.0, 0.0});
            entity->TranslateBy(CVexGeVector2d(60.0, type == VexDb::kArc ? 30.0 : 70.0));
            drawing.addEntity(entity, id);
        }
    }
}

/// What can be seen of an entity, and where its grips lie.
struct Look {
    std::string words;
    std::vector<CVexGePoint2d> grips;
};

std::map<std::uint64_t, Look> lookOf(CVexDbDatabase& drawing)
{
    std::map<std::uint64_t, Look> looks;
    for (const CVexDbObjectId& id : *drawing.blocks().getCurrentRecord()->entitySet()) {
        auto& entity = static_cast<CVexDbEntity&>(*id.getPObject());
        if (entity.isErased()) {
            continue;
        }
        CString words;
        words.Format(L"class %d weight %d colour %d ", static_cast<int>(entity.classType()),
                     static_cast<int>(entity.LineWeight()), entity.ColorIndex());
        words += entity.Layer() + L" " + entity.LineType();
        CVexDbEntity::PointList* grips = nullptr;
        entity.getGripPointVec(grips);
        looks[entity.getCreatedTime()] = {words.utf8(), *grips};
    }
    return looks;
}

void requireSame(const std::map<std::uint64_t, Look>& before,
                 const std::map<std::uint64_t, Look>& now, bool places)
{
    require(before.size() == now.size(), "as many entities as before");
    for (const auto& [number, look] : before) {
        const auto found = now.find(number);
        require(found != now.end(), "the entities of before");
        require(found->second.words == look.words, "the properties of before");
        require(found->second.grips.size() == look.grips.size(), "the grips of before");
        for (std::size_t i = 0; places && i < look.grips.size(); ++i) {
            require(found->second.grips[i].distanceTo(look.grips[i]) <= kUndone,
                    "the places of before");
        }
    }
}

void play(CFuzzProgram& program, const Script& script)
{
    CVexScriptPlayer player(*program.session);
    player.setKeepGoing(true);
    // The program checks behind each command, this one in the middle of some.
    int echoed = 0;
    player.setEcho([&](const CString&) {
        if (++echoed % kEchoesACheck == 0) {
            requireWhole(*program.database);
        }
    });
    player.play(script.lines);
    require(player.isOver(), "a script ends");
}

/// All steps back give the start, all forth the end.
void takeBackAndForth(CVexDbDatabase& drawing, const std::map<std::uint64_t, Look>& start,
                      bool places)
{
    CVexUndoHandler& undo = drawing.undoHandler();
    while (undo.Redo()) { // what the script itself has taken back belongs to the end, too
    }
    const std::map<std::uint64_t, Look> end = lookOf(drawing);
    while (undo.Undo()) {
    }
    requireWhole(drawing);
    requireSame(start, lookOf(drawing), places);
    while (undo.Redo()) {
    }
    requireWhole(drawing);
    requireSame(end, lookOf(drawing), places);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CFuzzMachine machine;
    const CVexMachineScope scope(machine);
    CFuzzProgram program;
    populate(*program.database);
    const std::map<std::uint64_t, Look> start = lookOf(*program.database);
    CFuzzSource source(data, size, kMostBytesRead);
    const Script script = scriptOf(source);
    play(program, script);
    require(GetCapture() == nullptr, "the capture is given back");
    if (program.session != nullptr) {
        require(!program.session->handler().isBusy(), "nothing waits any more");
        takeBackAndForth(*program.database, start, script.isTame);
    }
    return 0;
}
