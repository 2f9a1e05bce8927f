#include "platform/window/cmenu.h"
#include "shapefixture.h"
#include "tests/vexdb/polylinewords.h"

#include <tuple>

namespace {

struct Outline {
    const char* name;
    std::vector<Corner> corners;
    bool closed;
};

// Arcs of both directions, one of more than half a circle, and ends of every kind.
const Outline kOutlines[] = {
    {"OpenLines", {{10, 10}, {20, 10}, {20, 20}, {30, 22}}, false},
    {"OpenArcs", {{10, 10, 0.5}, {20, 10, -1.5}, {20, 20}, {30, 22, 0.25}, {32, 30}}, false},
    {"BulgeBehindTheEnd", {{10, 10, 0.5}, {20, 10}, {20, 20, 0.75}}, false},
    {"OneSegment", {{10, 10, 0.5}, {20, 10}}, false},
    {"ClosedLines", {{10, 10}, {20, 10}, {20, 20}, {12, 22}}, true},
    {"ClosedArcs", {{10, 10, 1}, {20, 10, -0.3}, {20, 20, 0.2}}, true},
    {"ClosedMixed", {{10, 10, 0.5}, {20, 10, -0.3}, {20, 20}, {10, 20, 0.75}}, true},
    {"Returning", {{10, 10, 0.5}, {20, 10}, {20, 20, -0.5}, {10, 10, 0.3}}, false},
};

/// A row of the menu, and what is typed behind it.
struct Row {
    const char* name;
    unsigned id;
    const wchar_t* typed;
};

const Row kRows[] = {
    {"Copy", kPopupCopy, L"15,16\n"},
    {"MirrorX", kPopupMirrorX, L""},
    {"MirrorY", kPopupMirrorY, L""},
    {"MirrorLine", kPopupMirrorLine, L"15,16\n"},
    {"Explode", kPopupExplode, L""},
    {"Erase", kPopupErase, L""},
    {"ChangeStart", kPopupChangeStart, L""},
    {"Reverse", kPopupReverse, L""},
    {"Divide", kPopupDivide, L""},
    {"Break", kPopupBreak, L""},
    {"Insert", kPopupInsertVertex, L"15,16\n"},
    {"Delete", kPopupDeleteVertex, L""},
    {"LineArc", kPopupLineArc, L""},
};

/// One row at each grip of one outline.
class PolylineRowTest : public ShapeTrackerTest,
                        public testing::WithParamInterface<std::tuple<Outline, Row>> {
protected:
    PolylineRowTest() { CVexDbEntityTracker::m_Menu = makePopupMenus(); }
    ~PolylineRowTest() override { CVexDbEntityTracker::m_Menu = CMenu(); }

    CVexDbPolyline& put()
    {
        const Outline& outline = std::get<Outline>(GetParam());
        auto* const made = new CVexDbPolyline(0, database.get());
        setCorners(*made, outline.corners, outline.closed);
        undo().clear();
        return *select(made);
    }
    void choose(int grip)
    {
        const Row& row = std::get<Row>(GetParam());
        CVexDbEntityTracker& chosen = tracker();
        backend.chooseNext(row.id);
        backend.answerTextNext(CString(L"3"));
        type(row.typed);
        if (chosen.TrackMenuHandle(&display, {0, 0}, grip) == -1) {
            handler().RemoveTracker(&chosen);
        }
    }
};

TEST_P(PolylineRowTest, OneUndoGivesTheBytesBackAtEachGrip)
{
    for (int grip = 0, grips = 1; grip < grips; ++grip) {
        CVexDbPolyline& polyline = put();
        CVexDbEntity::PointList* points = nullptr;
        polyline.getGripPointVec(points);
        grips = static_cast<int>(points->size());
        const auto before = bytes();
        choose(grip);
        const auto after = bytes();
        const std::string became = wordsOf(polyline);
        EXPECT_EQ(before != after, undo().Undo());
        EXPECT_TRUE(undo().undoStack().empty());
        EXPECT_TRUE(before == bytes()) << grip << ": " << became << " and " << wordsOf(polyline);
        undo().Redo();
        EXPECT_TRUE(after == bytes()) << grip << ": " << became << " and " << wordsOf(polyline);
        polyline.setErased();
    }
    expectNothingLeftOver();
}

INSTANTIATE_TEST_SUITE_P(Menu, PolylineRowTest,
                         testing::Combine(testing::ValuesIn(kOutlines), testing::ValuesIn(kRows)),
                         [](const auto& tested) {
                             return std::string(std::get<0>(tested.param).name) +
                                    std::get<1>(tested.param).name;
                         });

} // namespace
