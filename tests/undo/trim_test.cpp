// Trimming and extending give the bytes of before back, and those of behind again.

#include "tests/undo/undofixture.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <random>

namespace {

constexpr double kPi = std::numbers::pi;

class UndoTrimTest : public UndoTest {
protected:
    using Entities = std::vector<CVexDbEntity*>;

    CVexDbArc* addArc(double radius, double from, double to)
    {
        return addTo(drawing, new CVexDbArc(CVexGePoint2d(0.1, 0.2), radius, from, to));
    }
    CVexDbCircle* addCircle(double radius)
    {
        return addTo(drawing, new CVexDbCircle(CVexGePoint2d(0.1, 0.2), radius));
    }
    /// As the command does: one step, with what is left over.
    void trim(CVexDbEntity* entity, CVexGePoint2d pick, Entities cutters)
    {
        const VexUndoGroup step(undo);
        if (CVexDbEntity* const rest = entity->Trim(pick, cutters, kGeEpsilon); rest != nullptr) {
            addTo(drawing, rest);
            record(rest, kUndoCreate);
        }
    }
    void extend(CVexDbEntity* entity, CVexGePoint2d pick, Entities boundaries)
    {
        EXPECT_TRUE(entity->Extend(pick, boundaries, kGeEpsilon));
    }
    /// Undoes and redoes twice, by bytes.
    void expectBytesBack(const std::function<void()>& edit)
    {
        const std::vector<std::byte> before = bytes();
        edit();
        const std::vector<std::byte> behind = bytes();
        EXPECT_TRUE(before != behind);
        for (int round = 0; round < 2; ++round) {
            EXPECT_TRUE(undo.Undo());
            EXPECT_TRUE(before == bytes());
            EXPECT_TRUE(undo.undoStack().empty());
            EXPECT_WHOLE(drawing);
            EXPECT_TRUE(undo.Redo());
            EXPECT_TRUE(behind == bytes());
            EXPECT_WHOLE(drawing);
        }
    }

    CVexDbLine upright{{0.3, -50}, {0.7, 50}};
    CVexDbLine level{{-50, 0.9}, {50, 1.3}};
};

TEST_F(UndoTrimTest, StartAndEndOfALine)
{
    CVexDbLine* line = addLine({-7.1, 3.3}, {9.7, 4.9});
    expectBytesBack([&] { trim(line, {-3, 3.7}, {&upright}); });
    undo.clear();
    CVexDbLine* other = addLine({-7.1, 3.3}, {9.7, 4.9});
    expectBytesBack([&] { trim(other, {7, 4.7}, {&upright}); });
}

TEST_F(UndoTrimTest, MiddleOfALineWithTheRestInOneStep)
{
    CVexDbLine* line = addLine({-7.1, 3.3}, {9.7, 4.9});
    CVexDbLine right({3.3, -50}, {3.1, 50});
    expectBytesBack([&] { trim(line, {2, 4.1}, {&upright, &right}); });
    ASSERT_EQ(2u, undo.undoStack().size());
    EXPECT_EQ(kUndoCreate, undo.undoStack()[0].editType);
    EXPECT_TRUE(undo.undoStack()[0].continues);
    EXPECT_EQ(kUndoMovePoint, undo.undoStack()[1].editType);
    EXPECT_FALSE(undo.undoStack()[1].continues);
}

TEST_F(UndoTrimTest, ExtendedLine)
{
    CVexDbLine* line = addLine({-7.1, 3.3}, {-3.7, 4.9});
    expectBytesBack([&] { extend(line, {-4, 4.5}, {&upright}); });
}

TEST_F(UndoTrimTest, ArcsOfAnyAngles)
{
    const double angles[][2] = {
        {0.3, 2.9},        {-0.4, 3.3},      {5.9, 3.1}, {0.0, 2.0 * kPi}, {-2.0 * kPi, -3.0},
        {0.1, 3.3 + 1e-9}, {2.0 * kPi, 3.0}, {0.7, 7.1}, {-6.1, -3.0},     {kPi / 4, 3 * kPi / 4}};
    for (const auto& [from, to] : angles) {
        for (const double pick : {0.8, kPi / 2, 2.4}) {
            SCOPED_TRACE(testing::Message() << from << " to " << to << ", pick " << pick);
            CVexDbArc* arc = addArc(10.3, from, to);
            undo.clear();
            expectBytesBack([&] {
                trim(arc, {10 * std::cos(pick), 10 * std::sin(pick)}, {&upright});
            });
        }
    }
}

TEST_F(UndoTrimTest, MiddleOfAnArcWithTheRestInOneStep)
{
    CVexDbArc* arc = addArc(10.3, -0.4, 3.5);
    expectBytesBack([&] { trim(arc, {1, 10}, {&level}); });
    ASSERT_EQ(2u, undo.undoStack().size());
    EXPECT_EQ(kUndoCreate, undo.undoStack()[0].editType);
    EXPECT_TRUE(undo.undoStack()[0].continues);
    EXPECT_EQ(kUndoChangeAngle, undo.undoStack()[1].editType);
    EXPECT_FALSE(undo.undoStack()[1].continues);
}

TEST_F(UndoTrimTest, ExtendedArcs)
{
    for (const auto& [from, to] : {std::pair{0.3, 1.1}, {-0.4, 0.2}, {5.9, 0.3}, {0.0, 0.7}}) {
        SCOPED_TRACE(testing::Message() << from << " to " << to);
        CVexDbArc* arc = addArc(10.3, from, to);
        const CVexGePoint2d start = arc->StartPoint();
        const CVexGePoint2d end = arc->EndPoint();
        undo.clear();
        expectBytesBack([&] { extend(arc, start, {&upright}); });
        undo.Undo();
        undo.clear();
        expectBytesBack([&] { extend(arc, end, {&upright}); });
    }
}

TEST_F(UndoTrimTest, CircleComesBackAndItsArcGoes)
{
    CVexDbCircle* circle = addCircle(10.3);
    expectBytesBack([&] { trim(circle, {1, 10}, {&level}); });
    EXPECT_TRUE(circle->isErased());
    ASSERT_EQ(2u, undo.undoStack().size());
    EXPECT_EQ(kUndoCreate, undo.undoStack()[0].editType);
    EXPECT_TRUE(undo.undoStack()[0].continues);
    EXPECT_EQ(kUndoErase, undo.undoStack()[1].editType);
    EXPECT_FALSE(undo.undoStack()[1].continues);
    undo.Undo();
    EXPECT_FALSE(circle->isErased());
}

// A drawing is trimmed and extended until little is left of it, at any numbers.
TEST_F(UndoTrimTest, HundredsOfTrimsAndExtensionsGiveTheBytesBack)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> place(-40, 40), size(2, 30), angle(-7, 7);
    Entities all;
    for (int i = 0; i < 20; ++i) {
        const CVexGePoint2d at(place(random), place(random));
        all.push_back(addLine({place(random), place(random)}, {place(random), place(random)}));
        all.push_back(addTo(drawing, new CVexDbCircle(at, size(random))));
        all.push_back(
            addTo(drawing, new CVexDbArc(at, size(random), angle(random), angle(random))));
    }
    const std::vector<std::byte> before = bytes();
    for (int i = 0; i < 1500; ++i) {
        CVexDbEntity* const entity = all[random() % all.size()];
        CVexGePoint2d pick(place(random), place(random));
        if (entity->isErased()) {
            continue;
        }
        const VexUndoGroup step(undo);
        Entities others(8);
        std::ranges::generate(others, [&] { return all[random() % all.size()]; });
        if (i % 3 == 0) {
            entity->Extend(pick, others, kGeEpsilon);
        } else if (CVexDbEntity* rest = entity->Trim(pick, others, kGeEpsilon); rest != nullptr) {
            all.push_back(addTo(drawing, rest));
            record(rest, kUndoCreate);
        }
    }
    const std::vector<std::byte> behind = bytes();
    EXPECT_GT(undo.undoStack().size(), 200u);
    EXPECT_GT(all.size(), 80u);
    while (undo.Undo()) {
    }
    EXPECT_TRUE(before == bytes());
    EXPECT_WHOLE(drawing);
    while (undo.Redo()) {
    }
    EXPECT_TRUE(behind == bytes());
    EXPECT_WHOLE(drawing);
}

} // namespace
