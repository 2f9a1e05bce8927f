// What undo knows of arcs and circles beside what all entities share.

#include "tests/undo/undofixture.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"

#include <cmath>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;

class UndoRoundTest : public UndoTest {
protected:
    CVexDbArc* addArc(double from, double to)
    {
        return addTo(drawing, new CVexDbArc(CVexGePoint2d(3, 4), 10, from, to));
    }
    CVexDbCircle* addCircle() { return addTo(drawing, new CVexDbCircle(CVexGePoint2d(3, 4), 10)); }
};

TEST_F(UndoRoundTest, ArcSwapsItsStartOrEndAngle)
{
    CVexDbArc* arc = addArc(1, 2);
    for (const int index : {0, 1, -1}) { // 0 is the start and any other the end
        tagUndoEditEntity turned = edit(arc, kUndoChangeAngle);
        turned.index = index;
        turned.vector.set(0, 1);
        undo.AddUndo(&turned);
        undo.Undo();
        EXPECT_NEAR(index == 0 ? kPi / 2 : 1, arc->StartAngle(), 1e-12);
        EXPECT_NEAR(index == 0 ? 2 : kPi / 2, arc->EndAngle(), 1e-12);
        const double before = index == 0 ? 1 : 2;
        EXPECT_POINT_NEAR(std::cos(before), std::sin(before), undo.redoStack().front().vector,
                          1e-12);
        undo.Redo();
        EXPECT_EQ(1, arc->StartAngle());
        EXPECT_EQ(2, arc->EndAngle());
    }
}

TEST_F(UndoRoundTest, AngleBesideItsDirectionComesBackToTheBitWithItsTurns)
{
    CVexDbArc* arc = addArc(1, 2);
    for (const double before : {0.3, -0.4, 7.1, 2 * kPi, -2 * kPi, 1e-12}) {
        tagUndoEditEntity turned = edit(arc, kUndoChangeAngle);
        turned.index = 0;
        turned.vector = CVexGeVector2d(before);
        turned.point.set(before, 0);
        undo.AddUndo(&turned);
        undo.Undo();
        EXPECT_EQ(before, arc->StartAngle());
        undo.Redo();
        EXPECT_EQ(1, arc->StartAngle());
    }
}

TEST_F(UndoRoundTest, DirectionHoldsWhereTheNumberBesideItIsAnother)
{
    CVexDbArc* arc = addArc(1, 2);
    tagUndoEditEntity turned = edit(arc, kUndoChangeAngle);
    turned.index = 0;
    turned.vector = CVexGeVector2d(0.5);
    turned.point.set(1.7, 0); // a base point, as bands of grips have one
    undo.AddUndo(&turned);
    undo.Undo();
    EXPECT_NEAR(0.5, arc->StartAngle(), 1e-12);
}

TEST_F(UndoRoundTest, ArcAndCircleSwapTheirRadius)
{
    CVexDbArc* arc = addArc(1, 2);
    CVexDbCircle* circle = addCircle();
    for (CVexDbEntity* entity :
         {static_cast<CVexDbEntity*>(arc), static_cast<CVexDbEntity*>(circle)}) {
        tagUndoEditEntity sized = edit(entity, kUndoChangeSize);
        sized.vector.set(2.5, 0);
        undo.AddUndo(&sized);
    }
    undo.Undo();
    EXPECT_EQ(2.5, circle->Radius());
    EXPECT_POINT(5.5, 4, circle->getGripPoint(1)); // the grips follow
    EXPECT_EQ(10, undo.redoStack().front().vector.x);
    undo.Undo();
    EXPECT_EQ(2.5, arc->Radius());
    undo.Redo();
    undo.Redo();
    EXPECT_EQ(10, arc->Radius());
    EXPECT_EQ(10, circle->Radius());
}

TEST_F(UndoRoundTest, RecordsAreOfTheClassesTwoAndThree)
{
    record(addArc(1, 2), kUndoChangeAngle);
    EXPECT_EQ(2, undo.undoStack().front().classType);
    record(addCircle(), kUndoChangeSize);
    EXPECT_EQ(3, undo.undoStack().front().classType);
    record(addCircle(), kUndoMove);
    EXPECT_EQ(0, undo.undoStack().front().classType);
}

TEST_F(UndoRoundTest, MirroredAndTurnedArcGetsItsBytesBack)
{
    CVexDbArc* arc = addArc(6.1, 1.3);
    std::vector<std::vector<std::byte>> stations{bytes()};
    mirror(arc, {0.1, 0.7}, {3, 1});
    stations.push_back(bytes());
    rotate(arc, {7, 7}, 0.7);
    stations.push_back(bytes());
    rotate(arc, {1, 7}, 5.9); // a whole turn goes
    stations.push_back(bytes());
    for (std::size_t i = 3; i-- > 0;) {
        undo.Undo();
        EXPECT_EQ(stations[i], bytes());
    }
    for (std::size_t i = 1; i < stations.size(); ++i) {
        undo.Redo();
        EXPECT_EQ(stations[i], bytes());
    }
}

TEST_F(UndoRoundTest, MirroredCircleIsWholeAndGetsItsBytesBack)
{
    CVexDbCircle* circle = addCircle();
    const std::vector<std::byte> before = bytes();
    mirror(circle, {5, 0}, {0, 10});
    EXPECT_POINT_NEAR(7, 4, circle->Center(), 1e-12);
    EXPECT_EQ(0, circle->geCircle().startAng());
    EXPECT_EQ(2 * kPi, circle->geCircle().endAng());
    const std::vector<std::byte> after = bytes();
    undo.Undo();
    EXPECT_EQ(before, bytes());
    undo.Redo();
    EXPECT_EQ(after, bytes());
}

// A transform of many costs a record each and no copies where its numbers suffice.
TEST_F(UndoRoundTest, MovesScalesAndTurnedCirclesKeepNoShape)
{
    CVexDbArc* arc = addArc(1, 2);
    CVexDbCircle* circle = addCircle();
    const std::vector<std::byte> before = bytes();
    move(arc, {1, 2});
    scale(arc, {1, 1}, 2, 2);
    move(circle, {1, 2});
    scale(circle, {1, 1}, 4, 4);
    while (undo.Undo()) {
        EXPECT_EQ(nullptr, undo.redoStack().front().data);
    }
    EXPECT_EQ(before, bytes());
    rotate(circle, {0, 0}, kPi / 2);
    EXPECT_EQ(nullptr, undo.undoStack().front().data);
    undo.Undo();
    EXPECT_POINT_NEAR(3, 4, circle->Center(), 1e-12);
}

TEST_F(UndoRoundTest, CollapsedArcComesBack)
{
    CVexDbArc* arc = addArc(6.1, 1.3);
    const std::vector<std::byte> before = bytes();
    scale(arc, {7, 7}, 0, 0);
    EXPECT_EQ(0, arc->Radius());
    undo.Undo();
    EXPECT_EQ(before, bytes());
}

TEST_F(UndoRoundTest, EndOfALineBesideItsPlaceOfBeforeComesBackToTheBit)
{
    CVexDbLine* line = addLine({0, 0}, {10, 0});
    const CVexGePoint2d before(0.1, 0.7);
    tagUndoEditEntity moved = edit(line, kUndoMovePoint);
    moved.index = 1;
    moved.point = before;
    moved.vector = CVexGePoint2d(10, 0) - before;
    undo.AddUndo(&moved);
    undo.Undo();
    EXPECT_POINT(0.1, 0.7, line->EndPoint());
    undo.Redo();
    EXPECT_POINT(10, 0, line->EndPoint());
    moved.point.set(77, 3); // another point: the displacement holds
    undo.AddUndo(&moved);
    undo.Undo();
    EXPECT_POINT_NEAR(0.1, 0.7, line->EndPoint(), 1e-12);
}

} // namespace
