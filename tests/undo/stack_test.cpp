#include "platform/headless/vexheadless.h"
#include "tests/undo/undofixture.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"

namespace {

/// Records a move of itself whenever its grips are made, as setters of some entities do.
class RecordingLine : public CVexDbLine {
public:
    using CVexDbLine::CVexDbLine;
    using CVexDbLine::operator=;
    void setGripPoints() override
    {
        CVexDbLine::setGripPoints();
        tagUndoEditEntity edit;
        edit.editType = kUndoMove;
        edit.entity = objectId();
        answers.push_back(database()->undoHandler().AddUndo(&edit));
    }

    std::vector<int> answers;
};

using UndoStackTest = UndoTest;

TEST_F(UndoStackTest, EmptyStacksGiveFalse)
{
    EXPECT_FALSE(undo.Undo());
    EXPECT_FALSE(undo.Redo());
    EXPECT_EQ(0, undo.UndoPop());
}

TEST_F(UndoStackTest, NewestStandsInFrontAndTheSizeIsAnswered)
{
    const CVexDbLine* line = addLine();
    EXPECT_EQ(1, record(line, kUndoCreate));
    EXPECT_EQ(2, record(line, kUndoErase));
    EXPECT_EQ(kUndoErase, undo.undoStack().front().editType);
    EXPECT_EQ(kUndoCreate, undo.undoStack().back().editType);
}

TEST_F(UndoStackTest, WhatClassifiesNowherePushesNothingAndGivesTheSize)
{
    record(addLine(), kUndoCreate);
    const tagUndoEditEntity nobody;
    EXPECT_EQ(1, undo.AddUndo(&nobody));
    EXPECT_EQ(1, undo.AddUndo(nullptr));
    EXPECT_EQ(1, record(addTo(drawing, new CVexDbPoint(CVexGePoint2d(1, 2))), kUndoMove));
    tagUndoEditEntity ofALayer;
    ofALayer.entity = drawing.currentLayer();
    EXPECT_EQ(1, undo.AddUndo(&ofALayer));
    EXPECT_EQ(0, undo.AddRedo());
}

// The class number tells the road of a record: 0 for what all entities share, else the class.
TEST_F(UndoStackTest, CommonEditsGoToClassZeroAndOthersKeepTheirClass)
{
    const CVexDbLine* line = addLine();
    for (int type = 0; type <= 34; ++type) {
        record(line, type);
        const bool common = (type >= 4 && type <= 11) || (type >= 22 && type <= 25);
        EXPECT_EQ(common ? 0 : 6, undo.undoStack().front().classType) << "edit type " << type;
    }
    tagUndoEditEntity marked = edit(line, kUndoMovePoint);
    marked.classType = VexDb::kEntity;
    undo.AddUndo(&marked);
    EXPECT_EQ(0, undo.undoStack().front().classType);
    record(addTo(drawing, new CVexDbBox({0, 0}, 4, 3, 0)), kUndoMovePoint);
    EXPECT_EQ(26, undo.undoStack().front().classType);
    record(addTo(drawing, new CVexDbRect({0, 0}, {4, 3})), kUndoMovePoint);
    EXPECT_EQ(16, undo.undoStack().front().classType);
}

TEST_F(UndoStackTest, SettersThatRecordStayQuietWhileUndoingAndRedoing)
{
    auto* line = new RecordingLine({0, 0}, {10, 0});
    addTo(drawing, line);
    move(addLine(), {1, 1});
    move(line, {5, 0});
    line->answers.clear();
    EXPECT_TRUE(undo.Undo());
    EXPECT_EQ(std::vector<int>{0}, line->answers); // 0 and nothing pushed
    EXPECT_EQ(1u, undo.undoStack().size());
    line->answers.clear();
    EXPECT_TRUE(undo.Redo());
    EXPECT_EQ(std::vector<int>{1}, line->answers); // the size before the record comes back
    EXPECT_EQ(2u, undo.undoStack().size());
    EXPECT_LINE(5, 0, 15, 0, line);
}

TEST_F(UndoStackTest, NewEditAfterAnUndoEmptiesTheRedoStackAndFreesItsData)
{
    CVexDbLine* line = addLine();
    {
        tagUndoEditEntity withData = edit(line, kUndoChangeText);
        withData.data = std::make_shared<CountedData>();
        undo.AddUndo(&withData);
    }
    undo.Undo();
    ASSERT_EQ(1u, undo.redoStack().size());
    EXPECT_EQ(1, CountedData::living);
    move(line, {1, 0});
    EXPECT_TRUE(undo.redoStack().empty());
    EXPECT_EQ(0, CountedData::living);
    EXPECT_FALSE(undo.Redo());
}

// The entity has changed, recorded or not: the old road forwards is gone.
TEST_F(UndoStackTest, NewEditOfAnEntityThatDoesNotClassifyEmptiesTheRedoStackToo)
{
    move(addLine(), {1, 0});
    undo.Undo();
    record(addTo(drawing, new CVexDbPoint(CVexGePoint2d(1, 2))), kUndoMove);
    EXPECT_TRUE(undo.redoStack().empty());
}

TEST_F(UndoStackTest, DataIsFreedWithDroppedRecordsAndWithTheDrawing)
{
    auto own = std::make_unique<CVexDbDatabase>(false);
    CVexDbLine* line = addTo(*own, new CVexDbLine({0, 0}, {1, 0}));
    for (const int type : {kUndoStop, kUndoChangeText, kUndoChangeText, kUndoStop}) {
        tagUndoEditEntity withData = edit(line, type);
        withData.data = std::make_shared<CountedData>();
        own->undoHandler().AddUndo(&withData);
    }
    EXPECT_EQ(4, CountedData::living);
    own->undoHandler().UndoPop();
    EXPECT_EQ(3, CountedData::living);
    own->undoHandler().Undo();
    EXPECT_EQ(3, CountedData::living);
    own.reset();
    EXPECT_EQ(0, CountedData::living);
}

TEST_F(UndoStackTest, PopDropsUpToTheStopAndAppliesNothing)
{
    CVexDbLine* line = addLine();
    move(line, {1, 0});
    record(line, kUndoStop);
    move(line, {2, 0});
    move(line, {3, 0});
    EXPECT_EQ(3, undo.UndoPop());
    EXPECT_EQ(1u, undo.undoStack().size());
    EXPECT_LINE(6, 0, 16, 0, line);
    EXPECT_TRUE(undo.redoStack().empty());
}

TEST_F(UndoStackTest, PopWithoutAStopEmptiesTheStack)
{
    CVexDbLine* line = addLine();
    for (int i = 0; i < 5; ++i) {
        move(line, {1, 0});
    }
    EXPECT_EQ(5, undo.UndoPop());
    EXPECT_TRUE(undo.undoStack().empty());
    EXPECT_FALSE(undo.Undo());
}

TEST_F(UndoStackTest, MarksAndStopsAreMovedAcrossWithoutEffect)
{
    CVexDbLine* line = addLine();
    for (const int type : {0, 3, 21, 29, 33, 99}) {
        record(line, type);
        EXPECT_TRUE(undo.Undo()) << "edit type " << type;
        EXPECT_EQ(type, undo.redoStack().front().editType);
        EXPECT_TRUE(undo.Redo());
        EXPECT_EQ(type, undo.undoStack().front().editType);
    }
    EXPECT_LINE(0, 0, 10, 0, line);
}

TEST_F(UndoStackTest, NothingIsUndoneWhileACommandOfTheDrawingRuns)
{
    CVexDbLine* line = addLine();
    move(line, {1, 0});
    {
        const VexBusyScope busy(drawing.commandHandler());
        EXPECT_FALSE(undo.Undo());
    }
    EXPECT_LINE(1, 0, 11, 0, line);
    EXPECT_TRUE(undo.Undo());
    const VexBusyScope busy(drawing.commandHandler());
    EXPECT_FALSE(undo.Redo());
    EXPECT_EQ(1u, undo.redoStack().size());
}

TEST_F(UndoStackTest, ViewIsRepaintedOnceAStep)
{
    CVexMemoryWindow window;
    undo.setView(&window);
    CVexDbLine* line = addLine();
    move(line, {1, 0});
    move(line, {1, 0}, true);
    undo.Undo();
    EXPECT_EQ(1, window.invalidations());
    undo.Redo();
    EXPECT_EQ(2, window.invalidations());
    undo.Redo(); // nothing there, nothing to paint
    EXPECT_EQ(2, window.invalidations());
}

TEST_F(UndoStackTest, ViewThatIsGoneIsLeftAlone)
{
    auto window = std::make_unique<CVexMemoryWindow>();
    undo.setView(window.get());
    move(addLine(), {1, 0});
    window.reset();
    EXPECT_TRUE(undo.Undo());
}

TEST_F(UndoStackTest, SelectionLosesWhatAStepMakesInvisible)
{
    CVexDbLine* line = addLine();
    CVexDbLine* other = addLine();
    CVexDbLayerTableRecord* off = nullptr;
    ASSERT_TRUE(drawing.layers().getRecord(L"WeldNum", off, false));
    off->setIsOff(true);
    tagUndoEditEntity shown = edit(line, kUndoChangeLayer);
    shown.other = off->objectId(); // where the line was before it came to layer "0"
    undo.AddUndo(&shown);
    for (CVexDbEntity* entity : {line, other}) {
        drawing.commandHandler().AddTracker(
            new CVexDbEntityTracker(nullptr, entity, VexDb::TransFormNone, false));
    }
    undo.Undo();
    EXPECT_EQ(1u, drawing.commandHandler().selectedEntities().size());
    EXPECT_TRUE(drawing.commandHandler().selectedEntities().contains(other));
}

} // namespace
