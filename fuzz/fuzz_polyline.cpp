#include "fuzz/fuzzsession.h"
#include "fuzz/fuzzsource.h"
#include "vexdb/dbcommand/vexscriptplayer.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbtracker/vexpopupmenu.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

// Bytes become polylines that are drawn, gripped and edited by hand: dialogues with their keys,
// drags and rows of the popup menu, most of them as they should be and some broken off anywhere.
// The drawing is checked behind each command, saved and read again at the end, and taken back: by
// the byte, where no edit was one that loses digits.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr std::size_t kMostBytesRead = 32;
constexpr int kMostEdits = 6;
constexpr std::size_t kMostVertices = 400;
constexpr std::size_t kReadsAgain =
    4; // every so many inputs: a second drawing takes as long as six edits
constexpr int kMostSteps = 1000;

constexpr std::array<std::string_view, 16> kVertexAnswers = {
    "A", "P", "L", "U", "W", "O", "", "5<90", "20<45", "30", "A", "P", "L", "U", "0,0", "abc"};
constexpr std::array<std::string_view, 12> kRadii = {"1", "2",   "5",    "10",  "0.0005", "-3",
                                                     "0", "1e9", "0.02", "100", "",       "x"};
constexpr std::array<std::string_view, 8> kParts = {"2", "3", "0", "1", "-5", "7", "", "x"};
constexpr std::array<std::string_view, 6> kBreakers = {"@key Escape", "@key Break", "",
                                                       "@key Enter",  "@key F4",    "@rclick 5,5"};
constexpr std::array<std::string_view, 8> kCommandsBetween = {"U", "REDO", "ORTHO", "SNAP",
                                                              "U", "GS",   "U",     "SA"};
constexpr std::array kRows = {kPopupChangeStart,  kPopupReverse,      kPopupDivide,  kPopupBreak,
                              kPopupInsertVertex, kPopupDeleteVertex, kPopupLineArc, kPopupExplode,
                              kPopupJoin,         kPopupMove,         kPopupErase,   kPopupCopy};

using Lines = std::vector<std::string>;

/// A person who edits polylines as the bytes say.
class Hand {
public:
    Hand(CFuzzProgram& program, CFuzzSource& source) : m_program(program), m_source(source) {}

    void draw()
    {
        Lines lines = {m_source.byte() % 4 == 0 ? "APL" : "PL", place()};
        for (int left = 1 + m_source.byte() % 8; left > 0; --left) {
            const std::uint8_t kind = m_source.byte();
            lines.push_back(kind < 0x60 ? std::string(kVertexAnswers[kind % 16])
                                        : (kind < 0xd0 ? place() : "@click " + place()));
        }
        lines.emplace_back(m_source.byte() % 3 == 0 ? "O" : "");
        play(lines);
    }
    void editOnce()
    {
        m_polyline = pick();
        const std::uint8_t kind = m_source.byte();
        if (m_polyline == nullptr || kind % 16 == 15 || tooLarge()) {
            draw();
            return;
        }
        switch (kind % 16) {
        case 0:
        case 1:
        case 2: popup(); break;
        case 3:
        case 4: drag(); break;
        case 5:
        case 6: fillet(); break;
        case 7: edit("B", {vertex()}); break;
        case 8: edit("J", {onIt(), "@click " + place(), "@click 0,40", ""}); break;
        case 9: edit(m_source.byte() % 2 == 0 ? "C" : "O", {}); break;
        case 10: play({"TR", cutter(), cutter(), "", onIt(), onIt(), ""}); break;
        case 11: play({"EX", cutter(), cutter(), "", onIt(), "@click " + vertex(), ""}); break;
        case 12: play({"X", onIt(), ""}); break;
        case 13: convert(); break;
        default: play({std::string(m_source.oneOf(kCommandsBetween))}); break;
        }
    }

private:
    std::string place()
    {
        const int x = m_source.byte() % 21 * 5;
        const int y = m_source.byte() % 21 * 5;
        return std::to_string(x) + "," + std::to_string(y);
    }
    static std::string textOf(const CVexGePoint2d& point)
    {
        std::array<char, 64> text{};
        std::snprintf(text.data(), text.size(), "%.17g,%.17g", point.x, point.y);
        return text.data();
    }
    CVexGePoint2d vertexPoint()
    {
        const auto& vertices = m_polyline->gePolyline().vertices();
        return vertices.empty() ? CVexGePoint2d() : m_source.oneOf(vertices);
    }
    std::string vertex() { return textOf(vertexPoint()); }
    std::string onIt()
    {
        return "@click " +
               textOf(m_polyline->gePolyline().pointAtParam(m_source.byte() % 64 / 64.0 + 0.005));
    }
    std::string cutter()
    {
        static constexpr std::array<std::string_view, 4> kOnCutters = {
            "@click 3,40", "@click 61,98", "@click 70,30", ""};
        return std::string(m_source.oneOf(kOnCutters));
    }
    /// Where a grip is, of a vertex or the middle of an arc.
    std::string grip()
    {
        CVexDbEntity::PointList* grips = nullptr;
        m_polyline->getGripPointVec(grips);
        return grips->empty() ? std::string("0,0") : textOf(m_source.oneOf(*grips));
    }

    void popup()
    {
        const unsigned row = m_source.oneOf(kRows);
        m_program.backend.chooseNext(row);
        m_program.backend.answerTextNext(
            CString::fromUtf8(std::string(m_source.oneOf(kParts)).c_str()));
        play({onIt(), "@rclick " + grip(), "@click " + place(), "@click " + place(), "",
              "@key Escape"});
    }
    void drag()
    {
        const std::string to = place();
        play({onIt(), "@press " + grip(), "@move " + place(), "@move " + to, "@release " + to,
              "@key Escape"});
    }
    void fillet()
    {
        edit("F", {std::string(m_source.oneOf(kRadii)), m_source.byte() % 3 == 0 ? "A" : onIt(),
                   onIt(), "@key Escape"});
    }
    void convert()
    {
        const bool yes = m_source.byte() % 4 != 0;
        play({"PE", "@click 3,40", yes ? "Y" : "N", "J", onIt(), ""});
    }
    void edit(const char* key, const Lines& answers)
    {
        Lines lines = {"PE", onIt(), key};
        lines.insert(lines.end(), answers.begin(), answers.end());
        play(lines);
    }

    /// Plays the lines; now and then one is replaced by what breaks a dialogue off.
    void play(Lines lines)
    {
        if (m_source.byte() % 8 == 7) {
            lines[m_source.byte() % lines.size()] = m_source.oneOf(kBreakers);
        }
        std::vector<CString> script;
        for (const std::string& line : lines) {
            script.push_back(CString::fromUtf8(line.c_str()));
        }
        CVexScriptPlayer player(*m_program.session);
        player.setKeepGoing(true);
        player.play(script);
        require(player.isOver(), "a script ends");
        require(GetCapture() == nullptr, "the capture is given back");
        require(!m_program.session->handler().isBusy(), "nothing waits any more");
    }

    std::vector<CVexDbPolyline*> seen()
    {
        std::vector<CVexDbPolyline*> polylines;
        for (const CVexDbObjectId& id :
             *m_program.database->displays().getCurrentRecord()->displayedIdSet()) {
            CVexDbObject* const object = id.getPObject();
            if (object->isVisiable() && object->classType() == VexDb::kPolyline) {
                polylines.push_back(static_cast<CVexDbPolyline*>(object));
            }
        }
        return polylines;
    }
    CVexDbPolyline* pick()
    {
        const std::vector<CVexDbPolyline*> polylines = seen();
        return polylines.empty() ? nullptr : m_source.oneOf(polylines);
    }
    /// Divisions multiply; what comes of more is more of the same.
    [[nodiscard]] bool tooLarge() const { return m_polyline->NumVerts() > kMostVertices; }

    CFuzzProgram& m_program;
    CFuzzSource& m_source;
    CVexDbPolyline* m_polyline = nullptr; // the drawing's
};

/// What polylines are cut by and join, on the grid of the places.
void populate(CVexDbDatabase& drawing)
{
    CVexDbObjectId id;
    drawing.addEntity(new CVexDbLine({0.0, 40.0}, {100.0, 40.0}), id);
    drawing.addEntity(new CVexDbLine({60.0, 0.0}, {61.0, 100.0}), id);
    drawing.addEntity(new CVexDbCircle({50.0, 30.0}, 20.0), id);
}

/// Whether undo gives back the bytes: by all but what turns, moves and scales by a number.
bool isExact(const CVexUndoHandler& undo)
{
    return std::ranges::none_of(undo.undoStack(), [](const tagUndoEditEntity& edit) {
        return edit.editType >= kUndoMove && edit.editType <= kUndoScale;
    });
}

/// The records of the entities that are not erased: of the rest of a file, commands change what
/// undo leaves, as the view and the settings.
std::vector<std::byte> recordsOf(CVexDbDatabase& drawing)
{
    CMemFile file;
    drawing.setFile(&file);
    for (const CVexDbObjectId& id : *drawing.blocks().getCurrentRecord()->entitySet()) {
        auto& entity = static_cast<CVexDbEntity&>(*id.getPObject());
        require(entity.isErased() || entity.save(), "an entity can be saved");
    }
    drawing.setFile(nullptr);
    file.Close();
    return file.bytes();
}

void undoAll(CVexUndoHandler& undo)
{
    for (int step = 0; step < kMostSteps && undo.Undo(); ++step) {
    }
}

void redoAll(CVexUndoHandler& undo)
{
    for (int step = 0; step < kMostSteps && undo.Redo(); ++step) {
    }
}

/// What is read from the drawing's file has the records that the drawing has.
void requireReadsTheSame(CVexDbDatabase& drawing)
{
    CVexDbDatabase again(false);
    CMemFile file(savedDrawing(drawing), CString(L"fuzz.zpl"));
    CArchive archive(&file, CArchive::load);
    require(again.Read(archive), "what was saved reads whole");
    requireWhole(again);
    require(recordsOf(again) == recordsOf(drawing), "the entities that were saved");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CFuzzMachine machine;
    const CVexMachineScope scope(machine);
    CFuzzProgram program;
    CVexDbDatabase& drawing = *program.database;
    populate(drawing);
    const std::vector<std::byte> start = recordsOf(drawing);
    CFuzzSource source(data, size, kMostBytesRead);
    Hand hand(program, source);
    hand.draw();
    for (int edits = 0; edits < kMostEdits && !source.empty(); ++edits) {
        hand.editOnce();
    }
    CVexUndoHandler& undo = drawing.undoHandler();
    redoAll(undo); // what was taken back on the way belongs to the end, too
    const bool exact = isExact(undo);
    const std::vector<std::byte> end = recordsOf(drawing);
    if (size % kReadsAgain == 0) {
        requireReadsTheSame(drawing);
    }
    undoAll(undo);
    requireWhole(drawing);
    require(!exact || recordsOf(drawing) == start, "the records of the start");
    redoAll(undo);
    requireWhole(drawing);
    require(!exact || recordsOf(drawing) == end, "the records of the end");
    return 0;
}
