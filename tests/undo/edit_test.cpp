#include "tests/undo/undofixture.h"

#include <limits>
#include <numbers>
#include <vector>

namespace {

constexpr double kPi = std::numbers::pi;

using UndoEditTest = UndoTest;

TEST_F(UndoEditTest, CreatedEntityIsErasedNotDeletedAndComesBack)
{
    const std::vector<std::byte> before = bytes();
    CVexDbLine* line = addLine();
    record(line, kUndoCreate);
    const std::vector<std::byte> after = bytes();
    undo.Undo();
    EXPECT_TRUE(line->isErased());
    EXPECT_EQ(1, drawing.blocks().getCurrentRecord()->getNumEntity());
    EXPECT_EQ(kUndoErase, undo.redoStack().front().editType);
    EXPECT_EQ(before, bytes());
    undo.Redo();
    EXPECT_FALSE(line->isErased());
    EXPECT_EQ(kUndoCreate, undo.undoStack().front().editType);
    EXPECT_EQ(after, bytes());
}

TEST_F(UndoEditTest, ErasedEntityComesBackAndGoesAgain)
{
    CVexDbLine* line = addLine();
    const std::vector<std::byte> before = bytes();
    erase(line);
    undo.Undo();
    EXPECT_TRUE(line->isVisiable());
    EXPECT_EQ(before, bytes());
    undo.Redo();
    EXPECT_TRUE(line->isErased());
    EXPECT_WHOLE(drawing);
}

TEST_F(UndoEditTest, ErasureOfAnEntityThatLeftItsBlockPutsItBackIntoThatBlock)
{
    auto* valve = new CVexDbBlockTableRecord(&drawing);
    valve->setName(CString(L"VALVE"));
    drawing.blocks().add(valve);
    valve->initDisplayRec();
    auto* line = new CVexDbLine({0, 0}, {1, 0});
    CVexDbObjectId id;
    drawing.addEntityTo(*valve, line, id);
    const std::vector<std::byte> before = bytes();
    record(line, kUndoErase);
    line->Erase();
    ASSERT_EQ(0, valve->getNumEntity());
    undo.Undo();
    EXPECT_TRUE(line->isVisiable());
    EXPECT_TRUE(line->ownerId() == valve->objectId());
    EXPECT_EQ(before, bytes());
    undo.Redo();
    EXPECT_TRUE(line->isErased());
    undo.Undo();
    EXPECT_EQ(before, bytes());
    EXPECT_WHOLE(drawing);
}

TEST_F(UndoEditTest, EntityOfABlockThatIsGoneStaysOutOfTheDrawing)
{
    auto* valve = new CVexDbBlockTableRecord(&drawing);
    valve->setName(CString(L"VALVE"));
    drawing.blocks().add(valve);
    valve->initDisplayRec();
    auto* line = new CVexDbLine({0, 0}, {1, 0});
    CVexDbObjectId id;
    drawing.addEntityTo(*valve, line, id);
    record(line, kUndoErase);
    line->Erase();
    ASSERT_TRUE(drawing.blocks().removeRecord(L"VALVE"));
    EXPECT_TRUE(undo.Undo());
    EXPECT_FALSE(line->IsDbEntity());
    EXPECT_WHOLE(drawing);
}

TEST_F(UndoEditTest, AddingToAnOwnerIsTakenBackAndDoneAgain)
{
    CVexDbLine* first = addLine();
    CVexDbLine* line = addLine({5, 5}, {6, 6});
    CVexDbLine* last = addLine();
    record(line, kUndoAddToOwner);
    const std::vector<std::byte> with = bytes();
    undo.Undo();
    EXPECT_TRUE(line->isErased());
    EXPECT_TRUE(line->ownerId().isNull());
    EXPECT_EQ(2, drawing.blocks().getCurrentRecord()->getNumEntity());
    EXPECT_EQ(kUndoRemoveFromOwner, undo.redoStack().front().editType);
    EXPECT_WHOLE(drawing);
    undo.Redo();
    EXPECT_EQ((std::vector<CVexDbEntity*>{first, line, last}), entitiesOf(drawing));
    EXPECT_EQ(with, bytes());
}

TEST_F(UndoEditTest, RemovalFromTheOwnerIsTakenBackAndDoneAgain)
{
    CVexDbLine* line = addLine();
    const std::vector<std::byte> with = bytes();
    tagUndoEditEntity removal = edit(line, kUndoRemoveFromOwner);
    removal.other = line->ownerId();
    line->Erase();
    undo.AddUndo(&removal);
    undo.Undo();
    EXPECT_EQ(with, bytes());
    EXPECT_EQ(kUndoAddToOwner, undo.redoStack().front().editType);
    undo.Redo();
    EXPECT_TRUE(line->isErased());
    EXPECT_FALSE(line->IsDbEntity());
    EXPECT_WHOLE(drawing);
}

TEST_F(UndoEditTest, MoveGoesBackAndForthAndTheGripsFollow)
{
    CVexDbLine* line = addLine({1, 2}, {3, 4});
    move(line, {10, -20});
    undo.Undo();
    EXPECT_LINE(1, 2, 3, 4, line);
    EXPECT_POINT(2, 3, line->getGripPoint(0));
    EXPECT_EQ(CRect(100, 200, 300, 400), *line->GetEntityRect());
    undo.Redo();
    EXPECT_LINE(11, -18, 13, -16, line);
    EXPECT_POINT(12, -17, line->getGripPoint(0));
}

TEST_F(UndoEditTest, MirrorIsItsOwnInverse)
{
    CVexDbLine* line = addLine({1, 2}, {3, 4});
    mirror(line, {5, 0}, {0, 100});
    EXPECT_LINE(9, 2, 7, 4, line);
    undo.Undo();
    EXPECT_LINE(1, 2, 3, 4, line);
    undo.Redo();
    EXPECT_LINE(9, 2, 7, 4, line);
    EXPECT_EQ(kUndoMirror, undo.undoStack().front().editType);
}

TEST_F(UndoEditTest, RotationGoesByTheAngleOfItsVector)
{
    CVexDbLine* line = addLine({2, 1}, {4, 1});
    rotate(line, {1, 1}, kPi / 2);
    undo.Undo();
    EXPECT_POINT_NEAR(2, 1, line->StartPoint(), 1e-12);
    EXPECT_POINT_NEAR(4, 1, line->EndPoint(), 1e-12);
    undo.Redo();
    EXPECT_POINT_NEAR(1, 2, line->StartPoint(), 1e-12);
    EXPECT_POINT_NEAR(1, 4, line->EndPoint(), 1e-12);
}

TEST_F(UndoEditTest, ScaleByTwoIsTakenBackByAHalf)
{
    CVexDbLine* line = addLine({2, 1}, {4, 3});
    tagUndoEditEntity done = edit(line, kUndoScale);
    done.vector.set(2, 2);
    undo.AddUndo(&done); // as if the line had been half as large
    undo.Undo();
    EXPECT_LINE(1, 0.5, 2, 1.5, line);
    EXPECT_EQ(nullptr, undo.redoStack().front().data);
    undo.Redo();
    EXPECT_LINE(2, 1, 4, 3, line);
}

TEST_F(UndoEditTest, ScaleTakesEachAxisByItsOwnFactor)
{
    CVexDbLine* line = addLine({2, 1}, {4, 3});
    scale(line, {1, 1}, 4, 0.5);
    EXPECT_LINE(5, 1, 13, 2, line);
    undo.Undo();
    EXPECT_LINE(2, 1, 4, 3, line);
    undo.Redo();
    EXPECT_LINE(5, 1, 13, 2, line);
}

TEST_F(UndoEditTest, ScaleByZeroKeepsTheShapeForTheWayBack)
{
    CVexDbLine* line = addLine({2, 1}, {4, 3});
    line->setLayer(CString(L"PipeLine"));
    scale(line, {1, 1}, 0, 0);
    EXPECT_LINE(1, 1, 1, 1, line);
    line->setLayer(CString(L"Dimension")); // no part of what was recorded
    undo.Undo();
    EXPECT_LINE(2, 1, 4, 3, line);
    EXPECT_EQ(CString(L"Dimension"), line->Layer());
    undo.Redo();
    EXPECT_LINE(1, 1, 1, 1, line);
    undo.Undo();
    EXPECT_LINE(2, 1, 4, 3, line);
    EXPECT_WHOLE(drawing);
}

TEST_F(UndoEditTest, FactorsThatLeaveNoDigitsKeepTheShapeToo)
{
    for (const double factor : {1e-9, -1e-300, 1e200, std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN()}) {
        CVexDbLine* line = addLine({2.125, 1}, {4, 3});
        scale(line, {1, 1}, 1, factor);
        undo.Undo();
        EXPECT_LINE(2.125, 1, 4, 3, line);
    }
}

TEST_F(UndoEditTest, PropertiesAreSwappedAndTheRecordsListTheEntityRightly)
{
    CVexDbLine* line = addLine();
    const std::vector<std::byte> before = bytes();
    tagUndoEditEntity layer = edit(line, kUndoChangeLayer);
    layer.other = line->LayerId();
    tagUndoEditEntity linetype = edit(line, kUndoChangeLinetype, true);
    linetype.other = line->LineTypeId();
    tagUndoEditEntity color = edit(line, kUndoChangeColor, true);
    color.other = line->ColorId();
    tagUndoEditEntity weight = edit(line, kUndoChangeWeight, true);
    weight.weight = line->LineWeight();
    line->setLayer(named(drawing.layers(), L"WeldNum"));
    line->setLineType(named(drawing.linetypes(), L"Hidden"), true);
    line->setColor(named(drawing.colors(), L"3"), true);
    line->setLineWeight(static_cast<VexDb::LineWeight>(25), true);
    const std::vector<std::byte> after = bytes();
    for (const tagUndoEditEntity& record : {layer, linetype, color, weight}) {
        undo.AddUndo(&record);
    }
    undo.Undo();
    EXPECT_EQ(before, bytes());
    EXPECT_WHOLE(drawing);
    undo.Redo();
    EXPECT_EQ(after, bytes());
    EXPECT_EQ(CString(L"WeldNum"), line->Layer());
    EXPECT_EQ(25, line->LineWeight());
    EXPECT_WHOLE(drawing);
}

TEST_F(UndoEditTest, LayerThatIsGoneIsReplacedByItsNameOrTheBaseLayer)
{
    CVexDbLine* line = addLine();
    auto* drains = new CVexDbLayerTableRecord(&drawing);
    drains->setName(CString(L"DRAINS"));
    drawing.layers().add(drains);
    tagUndoEditEntity change = edit(line, kUndoChangeLayer);
    change.other = drains->objectId();
    undo.AddUndo(&change);
    ASSERT_TRUE(drawing.layers().removeRecord(L"DRAINS"));
    undo.Undo();
    EXPECT_EQ(CString(L"0"), line->Layer());
    EXPECT_WHOLE(drawing);
}

TEST_F(UndoEditTest, EndsOfALineGoBackByTheirDisplacement)
{
    CVexDbLine* line = addLine({0, 0}, {10, 0});
    CVexGePoint2d pick(5, 0);
    CVexDbLine left({2, -5}, {2, 5});
    CVexDbLine right({7, -5}, {7, 5});
    std::vector<CVexDbEntity*> cutters{&left, &right};
    std::unique_ptr<CVexDbEntity> rest(line->Trim(pick, cutters, 1e-6));
    ASSERT_NE(nullptr, rest);
    EXPECT_LINE(0, 0, 2, 0, line);
    undo.Undo();
    EXPECT_LINE(0, 0, 10, 0, line);
    EXPECT_POINT(8, 0, undo.redoStack().front().vector);
    undo.Redo();
    EXPECT_LINE(0, 0, 2, 0, line);
    EXPECT_POINT(-8, 0, undo.undoStack().front().vector);
}

TEST_F(UndoEditTest, IndexZeroIsTheStartAndAnyOtherTheEnd)
{
    CVexDbLine* line = addLine({3, 3}, {10, 3});
    for (const int index : {0, 1, -1}) {
        tagUndoEditEntity moved = edit(line, kUndoMovePoint);
        moved.index = index;
        moved.vector.set(1, 2);
        undo.AddUndo(&moved);
    }
    undo.Undo();
    EXPECT_LINE(3, 3, 9, 1, line);
    undo.Undo();
    EXPECT_LINE(3, 3, 8, -1, line);
    undo.Undo();
    EXPECT_LINE(2, 1, 8, -1, line);
}

TEST_F(UndoEditTest, BoxSwapsWidthAndHeight)
{
    auto* box = addTo(drawing, new CVexDbBox({1, 1}, 4, 3, kPi / 2));
    tagUndoEditEntity sized = edit(box, kUndoMovePoint);
    sized.vector.set(8, 2);
    undo.AddUndo(&sized);
    undo.Undo();
    EXPECT_EQ(8, box->Width());
    EXPECT_EQ(2, box->Height());
    EXPECT_POINT_NEAR(-1, 9, box->getGripPoint(4), 1e-12); // the turned corner, not an upright one
    undo.Redo();
    EXPECT_EQ(4, box->Width());
    EXPECT_EQ(3, box->Height());
    EXPECT_POINT_NEAR(-2, 5, box->getGripPoint(4), 1e-12);
}

/// Corners, sides and rotation of a box, to the bit.
std::vector<double> shapeOf(CVexDbBox& box)
{
    std::vector<double> numbers{box.Width(), box.Height(), box.Rotation()};
    for (const int corner : {0, 2, 4, 6}) {
        const CVexGePoint2d at = box.getGripPoint(corner);
        numbers.insert(numbers.end(), {at.x, at.y});
    }
    return numbers;
}

// A box that was turned loses its shape by being scaled, and by being mirrored the bits of its
// rotation: the opposite edit does not bring them back.
TEST_F(UndoEditTest, TurnedMirroredAndScaledBoxGetsItsShapeBackToTheBit)
{
    auto* box = addTo(drawing, new CVexDbBox({1, 1}, 4, 3, 0));
    const std::vector<double> upright = shapeOf(*box);
    mirror(box, {5, 0}, {0, 100});
    const std::vector<double> mirrored = shapeOf(*box);
    rotate(box, {7, 7}, 0.3);
    const std::vector<double> turned = shapeOf(*box);
    scale(box, {2, 0}, 2, 3);
    const std::vector<double> scaled = shapeOf(*box);
    for (const std::vector<double>& expected : {turned, mirrored, upright}) {
        undo.Undo();
        EXPECT_EQ(expected, shapeOf(*box));
    }
    for (const std::vector<double>& expected : {mirrored, turned, scaled}) {
        undo.Redo();
        EXPECT_EQ(expected, shapeOf(*box));
    }
}

TEST_F(UndoEditTest, UprightBoxIsScaledBackByNumbersAlone)
{
    auto* box = addTo(drawing, new CVexDbBox({1, 1}, 4, 3, 0));
    scale(box, {0, 0}, 2, 4);
    move(box, {1, 0});
    EXPECT_EQ(nullptr, undo.undoStack()[0].data);
    EXPECT_EQ(nullptr, undo.undoStack()[1].data);
    undo.Undo();
    undo.Undo();
    EXPECT_POINT(1, 1, box->BasePoint());
    EXPECT_EQ(4, box->Width());
    EXPECT_EQ(3, box->Height());
}

TEST_F(UndoEditTest, RectangleSwapsSidesAndCorners)
{
    auto* rect = addTo(drawing, new CVexDbRect({1, 2}, {5, 8}));
    tagUndoEditEntity sides = edit(rect, kUndoChangeSize);
    sides.point.set(0, 1);
    sides.vector.set(9, 7);
    undo.AddUndo(&sides);
    undo.Undo();
    EXPECT_POINT(0, 1, rect->LeftTop());
    EXPECT_POINT(9, 7, rect->RightBottom());
    undo.Redo();
    EXPECT_POINT(1, 2, rect->LeftTop());
    EXPECT_POINT(5, 8, rect->RightBottom());
    for (const int index : {0, 1}) {
        tagUndoEditEntity corner = edit(rect, kUndoMovePoint);
        corner.index = index;
        corner.point.set(20, 30);
        undo.AddUndo(&corner);
        undo.Undo();
        EXPECT_POINT(20, 30, index == 0 ? rect->LeftTop() : rect->RightBottom());
        undo.Redo();
    }
    EXPECT_POINT(1, 2, rect->LeftTop());
    EXPECT_POINT(5, 8, rect->RightBottom());
}

TEST_F(UndoEditTest, RectangleIsTransformedByItsOwnOperations)
{
    auto* rect = addTo(drawing, new CVexDbRect({1, 2}, {5, 8}));
    move(rect, {10, 0});
    mirror(rect, {0, 0}, {0, 100});
    scale(rect, {1, 1}, 2, 0.5);
    rotate(rect, {0, 0}, kPi);
    for (int i = 0; i < 4; ++i) {
        undo.Undo();
    }
    EXPECT_POINT_NEAR(1, 2, rect->LeftTop(), 1e-12);
    EXPECT_POINT_NEAR(5, 8, rect->RightBottom(), 1e-12);
    EXPECT_POINT_NEAR(3, 5, rect->getGripPoint(0), 1e-12);
    for (int i = 0; i < 3; ++i) {
        undo.Redo();
    }
    EXPECT_POINT_NEAR(-23, 1.5, rect->LeftTop(), 1e-12);
    EXPECT_POINT_NEAR(-31, 4.5, rect->RightBottom(), 1e-12);
}

TEST_F(UndoEditTest, OwnDataOfATransformIsSwappedInPlaceOfTheNumbers)
{
    CVexDbLine* line = addLine();
    tagUndoEditEntity own = edit(line, kUndoMove);
    const auto data = std::make_shared<CountedData>();
    own.vector.set(1, 1);
    own.data = data;
    undo.AddUndo(&own);
    undo.Undo();
    undo.Redo();
    EXPECT_EQ(2, data->swaps);
    EXPECT_LINE(0, 0, 10, 0, line);
}

TEST_F(UndoEditTest, ShapeKeptWithARecordHoldsNoPlaceInTheDrawing)
{
    CVexDbLine* line = addLine();
    scale(line, {0, 0}, 0, 0);
    EXPECT_EQ(1, drawing.blocks().getCurrentRecord()->getNumEntity());
    EXPECT_WHOLE(drawing);
    undo.Undo();
    EXPECT_EQ(line, entitiesOf(drawing)[0]);
    EXPECT_WHOLE(drawing);
}

} // namespace
