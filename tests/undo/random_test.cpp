#include "tests/undo/randomedits.h"

#include <cmath>
#include <map>
#include <string>

namespace {

constexpr std::uint64_t kSeed = 20261121;

/// What is compared where the last digits may go: structure exactly, coordinates within 1e-6.
struct Look {
    struct Thing {
        std::string words; // number, class, owner, properties
        std::vector<CVexGePoint2d> points;
    };
    std::vector<Thing> things;
};

std::vector<CVexGePoint2d> pointsOf(CVexDbEntity& entity)
{
    CVexDbEntity::PointList* grips = nullptr;
    entity.setGripPoints();
    entity.getGripPointVec(grips);
    std::vector<CVexGePoint2d> points = *grips;
    if (entity.classType() == VexDb::kBox) {
        const auto& box = static_cast<CVexDbBox&>(entity);
        points.emplace_back(box.Width(), box.Height());
        points.emplace_back(std::cos(box.Rotation()), std::sin(box.Rotation()));
    }
    return points;
}

Look lookOf(CVexDbDatabase& drawing)
{
    Look look;
    for (CVexDbEntity* entity : entitiesOf(drawing)) {
        if (entity->isErased()) {
            continue;
        }
        CString words;
        words.Format(L"%u class %d weight %d colour %d ", entity->getCreatedTime(),
                     static_cast<int>(entity->classType()), static_cast<int>(entity->LineWeight()),
                     entity->ColorIndex());
        words += entity->Layer() + L" " + entity->LineType();
        look.things.push_back({words.utf8(), pointsOf(*entity)});
    }
    return look;
}

/// Empty when they agree, else the first difference.
std::string difference(const Look& a, const Look& b)
{
    constexpr double kTolerance = 1e-6;
    if (a.things.size() != b.things.size()) {
        return "other number of entities";
    }
    for (std::size_t i = 0; i < a.things.size(); ++i) {
        if (a.things[i].words != b.things[i].words) {
            return a.things[i].words + " against " + b.things[i].words;
        }
        for (std::size_t k = 0; k < a.things[i].points.size(); ++k) {
            if (!(a.things[i].points[k].distanceTo(b.things[i].points[k]) <= kTolerance)) {
                return a.things[i].words + ": another place";
            }
        }
    }
    return {};
}

class UndoRandomTest : public UndoTest {
protected:
    static constexpr std::size_t kCheckpoint = 9000; // records

    void edit(RandomEdits& edits, int count)
    {
        constexpr int kBetweenChecks = 20000;
        for (int done = 0, next = kBetweenChecks; done < count;) {
            done += edits.step();
            if (done >= next) {
                next += kBetweenChecks;
                EXPECT_WHOLE(drawing);
            }
        }
    }
};

TEST_F(UndoRandomTest, ExactEditsGiveTheBytesOfTheStartAndOfTheEnd)
{
    SCOPED_TRACE("seed " + std::to_string(kSeed));
    ExactEdits edits(drawing, kSeed);
    edits.addAtStart(300);
    addTo(drawing, new CVexDbPoint(CVexGePoint2d(1, 2)));
    const std::vector<std::byte> start = bytes();
    edit(edits, 100000);
    const std::vector<std::byte> end = bytes();
    ASSERT_TRUE(start != end);
    ASSERT_GT(undo.undoStack().size(), 50000u);
    std::map<std::size_t, std::vector<std::byte>> between; // by records still to undo
    std::size_t next = undo.undoStack().size();
    while (undo.Undo()) {
        if (undo.undoStack().size() + kCheckpoint < next) {
            next = undo.undoStack().size();
            between[next] = bytes();
            EXPECT_WHOLE(drawing);
        }
    }
    EXPECT_TRUE(start == bytes());
    EXPECT_WHOLE(drawing);
    ASSERT_GT(between.size(), 3u);
    while (undo.Redo()) {
        const auto at = between.find(undo.undoStack().size());
        EXPECT_TRUE(at == between.end() || at->second == bytes()) << at->first << " records";
    }
    EXPECT_TRUE(end == bytes());
    EXPECT_WHOLE(drawing);
}

TEST_F(UndoRandomTest, FreeEditsGiveTheSameStructureAndPlacesWithinAMillionth)
{
    SCOPED_TRACE("seed " + std::to_string(kSeed));
    FreeEdits edits(drawing, kSeed);
    edits.addAtStart(300);
    const Look start = lookOf(drawing);
    edit(edits, 30000);
    const Look end = lookOf(drawing);
    ASSERT_NE("", difference(start, end));
    for (int round = 0; round < 3; ++round) {
        while (undo.Undo()) {
        }
        EXPECT_EQ("", difference(start, lookOf(drawing)));
        EXPECT_WHOLE(drawing);
        while (undo.Redo()) {
        }
        EXPECT_EQ("", difference(end, lookOf(drawing)));
        EXPECT_WHOLE(drawing);
    }
}

} // namespace
