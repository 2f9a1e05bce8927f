// Random edits by hand: what a person types, clicks, drags and chooses, on polylines that stand
// among lines and circles; all of it is taken back and done again by the bytes of the drawing.

#include "tests/session/sessionfixture.h"
#include "tests/vexdb/randompolylines.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"

#include <array>
#include <cstdio>
#include <map>
#include <string>

namespace {

constexpr std::uint64_t kSeed = 20261126;
constexpr double kWidth = 400; // drawing units, of what the window shows
constexpr double kHeight = 280;

class PolylineByHandTest : public SessionTest {
protected:
    PolylineByHandTest()
    {
        addLine(0, 90, kWidth, 110);
        addLine(150, 0, 130, kHeight);
        addLine(300, 0, 280, kHeight);
        CVexDbObjectId id;
        database->addEntity(new CVexDbCircle({200, 140}, 70), id);
    }

    // Where to point.

    CVexGePoint2d place()
    {
        return {std::round(random.within(10, kWidth - 10)),
                std::round(random.within(10, kHeight - 10))};
    }
    CVexGePoint2d near(const CVexGePoint2d& point)
    {
        return {point.x + std::round(random.within(-40, 40)),
                point.y + std::round(random.within(-40, 40))};
    }
    static CString at(const CVexGePoint2d& point)
    {
        std::array<char, 64> text{};
        std::snprintf(text.data(), text.size(), "%.17g,%.17g", point.x, point.y);
        return CString::fromUtf8(text.data());
    }
    static CString click(const CVexGePoint2d& point) { return L"@click " + at(point); }
    CVexGePoint2d anyVertex()
    {
        const auto& vertices = polyline->gePolyline().vertices();
        return vertices[static_cast<std::size_t>(random.below(static_cast<int>(vertices.size())))];
    }
    /// On the polyline, away from its grips where a segment is long enough.
    CVexGePoint2d onIt() { return polyline->gePolyline().pointAtParam(random.within(0.02, 0.98)); }

    // What to do there.

    void plays(std::vector<CString> script)
    {
        CVexScriptPlayer player(*session);
        player.setKeepGoing(true);
        player.play(std::move(script));
        EXPECT_TRUE(player.isOver());
    }
    void edits(const CString& key, std::vector<CString> then)
    {
        std::vector<CString> script = {L"PE", click(onIt()), key};
        script.insert(script.end(), then.begin(), then.end());
        plays(script);
    }
    void popup(unsigned id, const CVexGePoint2d& grip)
    {
        plays({click(onIt())});
        chooses(id, grip.x, grip.y).run();
        plays({L"@key Escape"});
    }
    void drag(const CVexGePoint2d& from, const CVexGePoint2d& to)
    {
        plays({click(onIt()), L"@press " + at(from), L"@move " + at(near(from)), L"@move " + at(to),
               L"@release " + at(to), L"@key Escape"});
    }

    void draw()
    {
        std::vector<CString> script = {L"PL", at(place())};
        for (int left = 2 + random.below(9); left > 0; --left) {
            static constexpr std::array kKeys = {L"A", L"P", L"L", L"U", L"W"};
            if (random.below(3) == 0) {
                script.emplace_back(kKeys[static_cast<std::size_t>(random.below(5))]);
            }
            script.push_back(at(place()));
        }
        script.emplace_back(random.below(2) == 0 ? L"O" : L"");
        plays(script);
    }
    void moveVertex()
    {
        const auto& vertices = polyline->gePolyline().vertices();
        const CVexGePoint2d from = anyVertex();
        // The first grip takes the polyline along, by a way that loses digits.
        if (from.distanceTo(vertices.front()) > 5) {
            drag(from, near(from));
        }
    }
    void bend()
    {
        const CVexGePolyline2d& chain = polyline->gePolyline();
        const auto segment =
            static_cast<unsigned>(random.below(static_cast<int>(chain.numVerts())));
        CVexGeCircArc2d arc;
        if (chain.getArcSegAt(segment, arc)) {
            drag(middleOfSegment(chain, segment), near(middleOfSegment(chain, segment)));
        } else {
            popup(kPopupLineArc, chain.vertices()[segment]);
        }
    }
    void insertVertex()
    {
        plays({click(onIt())});
        const CVexGePoint2d grip = anyVertex();
        const CVexGePoint2d target = near(grip);
        chooses(kPopupInsertVertex, grip.x, grip.y).clicks(target.x, target.y).run();
        plays({L"@key Escape"});
    }
    void deleteVertex() { popup(kPopupDeleteVertex, anyVertex()); }
    void fillet()
    {
        const CString radius = CString::fromUtf8(std::to_string(1 + random.below(15)));
        edits(L"F", {radius, random.below(3) == 0 ? CString(L"A") : click(onIt()), L"@key Escape"});
    }
    void trim() { plays({L"TR", click(onCutter()), L"", click(onIt()), click(onIt()), L""}); }
    void extend()
    {
        const auto& vertices = polyline->gePolyline().vertices();
        const CVexGePoint2d end = random.below(2) == 0 ? vertices.front() : vertices.back();
        plays({L"EX", click(onCutter()), L"", click(end), L""});
    }
    CVexGePoint2d onCutter()
    {
        static constexpr std::array<CVexGePoint2d, 4> kOnCutters = {
            {{20, 91}, {149, 14}, {299, 14}, {200, 210}}};
        return kOnCutters[static_cast<std::size_t>(random.below(4))];
    }
    void breakApart() { edits(L"B", {at(anyVertex())}); }
    /// With what meets an end of it, as after a break, or with anything.
    void join()
    {
        if (random.below(2) == 0) {
            breakApart();
        }
        std::vector<CString> picks;
        const auto& vertices = polyline->gePolyline().vertices();
        for (CVexDbPolyline* other : seen()) {
            const auto& others = other->gePolyline().vertices();
            const bool meets = others.front() == vertices.back() ||
                               others.back() == vertices.front() || random.below(6) == 0;
            if (meets && other != polyline) {
                picks.push_back(click(other->gePolyline().pointAtParam(0.4)));
            }
        }
        picks.emplace_back(L"");
        edits(L"J", picks);
    }
    void close() { edits(L"C", {}); }
    void open() { edits(L"O", {}); }
    void reverse() { popup(kPopupReverse, anyVertex()); }
    void changeStart() { popup(kPopupChangeStart, anyVertex()); }
    void divide()
    {
        backend.answerTextNext(CString::fromUtf8(std::to_string(2 + random.below(3))));
        popup(kPopupDivide, anyVertex());
    }
    void explode() { plays({L"X", click(onIt()), L""}); }

    struct Kind {
        const char* name;
        void (PolylineByHandTest::*edit)();
        int least; // steps that all rounds together give at least
    };
    static constexpr std::size_t kKindCount = 17;
    static const std::array<Kind, kKindCount>& kinds()
    {
        static constexpr std::array<Kind, kKindCount> kKinds = {{
            {"draw", &PolylineByHandTest::draw, 30},
            {"move a vertex", &PolylineByHandTest::moveVertex, 20},
            {"bend a segment", &PolylineByHandTest::bend, 20},
            {"insert a vertex", &PolylineByHandTest::insertVertex, 20},
            {"delete a vertex", &PolylineByHandTest::deleteVertex, 20},
            {"fillet", &PolylineByHandTest::fillet, 15},
            {"trim", &PolylineByHandTest::trim, 10},
            {"extend", &PolylineByHandTest::extend, 5},
            {"break", &PolylineByHandTest::breakApart, 10},
            {"join", &PolylineByHandTest::join, 10},
            {"close", &PolylineByHandTest::close, 10},
            {"open", &PolylineByHandTest::open, 10},
            {"reverse", &PolylineByHandTest::reverse, 20},
            {"change start", &PolylineByHandTest::changeStart, 5},
            {"divide", &PolylineByHandTest::divide, 10},
            {"explode", &PolylineByHandTest::explode, 10},
            {"take back", &PolylineByHandTest::takeBack, 0},
        }};
        return kKinds;
    }
    void takeBack() { plays({L"U", L"U", L"REDO"}); }

    /// One edit of a polyline by chance; counts the step that it is.
    void editOnce()
    {
        const auto kind = static_cast<std::size_t>(random.below(static_cast<int>(kKindCount)));
        polyline = anyPolyline();
        database->settings().m_bOrtho = false;
        const std::size_t before = undo().undoStack().size();
        (this->*kinds()[polyline == nullptr ? 0 : kind].edit)();
        steps[kind] += undo().undoStack().size() > before ? 1 : 0;
        ASSERT_FALSE(handler().isBusy()) << kinds()[kind].name;
    }
    std::vector<CVexDbPolyline*> seen()
    {
        std::vector<CVexDbPolyline*> polylines;
        for (const CVexDbObjectId& id : *view().displayedIdSet()) {
            CVexDbObject* const object = id.getPObject();
            if (object->isVisiable() && object->classType() == VexDb::kPolyline) {
                polylines.push_back(static_cast<CVexDbPolyline*>(object));
            }
        }
        return polylines;
    }
    CVexDbPolyline* anyPolyline()
    {
        const std::vector<CVexDbPolyline*> polylines = seen();
        return polylines.empty() ? nullptr
                                 : polylines[static_cast<std::size_t>(
                                       random.below(static_cast<int>(polylines.size())))];
    }
    std::vector<std::byte> bytes()
    {
        // Commands change these, and undo leaves them: an "O" that nothing asks for is a command.
        database->settings().m_bOrtho = false;
        database->setLastPoint({0, 0});
        return SessionTest::bytes();
    }

    RandomPolylines random{kSeed};
    CVexDbPolyline* polyline = nullptr; // that is edited
    std::array<int, kKindCount> steps{};
};

TEST_F(PolylineByHandTest, FiftyEditsGoBackToTheBytesOfTheStartAndForthAgain)
{
    for (int round = 0; round < 25; ++round) {
        draw();
        draw();
        const std::vector<std::byte> start = bytes();
        undo().clear();
        std::map<std::size_t, std::vector<std::byte>> between; // by the records still to undo
        for (int i = 0; i < 50; ++i) {
            ASSERT_NO_FATAL_FAILURE(editOnce());
            const std::size_t records = undo().undoStack().size();
            between.erase(between.upper_bound(records), between.end()); // what was taken back
            between[records] = bytes();
        }
        while (undo().Redo()) { // what the edits themselves have taken back
        }
        const std::vector<std::byte> end = bytes();
        ASSERT_FALSE(start == end);
        for (int turn = 0; turn < 2; ++turn) {
            while (undo().Undo()) {
                const auto then = between.find(undo().undoStack().size());
                ASSERT_TRUE(then == between.end() || then->second == bytes()) << "round " << round;
            }
            ASSERT_TRUE(start == bytes()) << "round " << round;
            while (undo().Redo()) {
            }
            ASSERT_TRUE(end == bytes()) << "round " << round;
        }
        ASSERT_TRUE(database->selfCheck().empty()) << "round " << round;
        plays({L"SA", L"@key Delete"});
        while (undo().Undo()) { // the next round begins with what this one began with
        }
    }
    for (std::size_t i = 0; i < kKindCount; ++i) {
        EXPECT_GE(steps[i], kinds()[i].least) << kinds()[i].name;
    }
}

} // namespace
