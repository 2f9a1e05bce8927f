#include "tests/undo/undofixture.h"

namespace {

/// A line whose start tells which of its moves, by powers of two along x, are done.
class UndoGroupTest : public UndoTest {
protected:
    void step(double along, bool continues) { move(line, {along, 0}, continues); }
    void mark(int type, bool continues = false) { record(line, type, continues); }
    double done() const { return line->StartPoint().x; }
    /// The `continues` of the undo stack, oldest first: '.' for false, '+' for true.
    std::string chain() const
    {
        std::string text;
        for (const tagUndoEditEntity& edit : undo.undoStack()) {
            text.insert(text.begin(), edit.continues ? '+' : '.');
        }
        return text;
    }

    CVexDbLine* line = addLine({0, 0}, {0, 10});
};

TEST_F(UndoGroupTest, RecordsThatContinueGoWithTheOlderOneInOneStep)
{
    step(1, false);
    step(2, true);
    step(4, true);
    EXPECT_TRUE(undo.Undo());
    EXPECT_EQ(0, done());
    EXPECT_EQ(3u, undo.redoStack().size());
    EXPECT_TRUE(undo.Redo());
    EXPECT_EQ(7, done());
    EXPECT_EQ(".++", chain());
}

// Forwards it is the next record's own mark that says whether it belongs to the step.
TEST_F(UndoGroupTest, RedoEndsBeforeTheRecordThatDoesNotContinue)
{
    step(1, false);
    step(2, true);
    step(4, false);
    step(8, true);
    undo.Undo();
    EXPECT_EQ(3, done());
    undo.Undo();
    EXPECT_EQ(0, done());
    undo.Redo();
    EXPECT_EQ(3, done());
    undo.Redo();
    EXPECT_EQ(15, done());
}

TEST_F(UndoGroupTest, OldestRecordEndsAStepAlsoWhenItContinues)
{
    step(1, true);
    step(2, true);
    EXPECT_TRUE(undo.Undo());
    EXPECT_EQ(0, done());
    EXPECT_TRUE(undo.Redo());
    EXPECT_EQ(3, done());
}

TEST_F(UndoGroupTest, BlockGoesInOneStepWhateverItsRecordsSay)
{
    step(64, false);
    mark(kUndoBlockBegin);
    for (const double along : {1, 2, 4, 8}) {
        step(along, false);
    }
    mark(kUndoBlockEnd);
    EXPECT_TRUE(undo.Undo());
    EXPECT_EQ(64, done());
    EXPECT_EQ(6u, undo.redoStack().size());
    EXPECT_TRUE(undo.Redo());
    EXPECT_EQ(79, done());
    EXPECT_TRUE(undo.redoStack().empty());
}

TEST_F(UndoGroupTest, RedoOfABlockStopsBehindItsEnd)
{
    mark(kUndoBlockBegin);
    step(1, false);
    step(2, false);
    mark(kUndoBlockEnd);
    step(4, false);
    undo.Undo();
    undo.Undo();
    EXPECT_EQ(0, done());
    undo.Redo();
    EXPECT_EQ(3, done());
    undo.Redo();
    EXPECT_EQ(7, done());
}

TEST_F(UndoGroupTest, BlockWhoseBeginContinuesTakesTheOlderStepAlong)
{
    step(1, false);
    mark(kUndoBlockBegin, true);
    step(2, false);
    mark(kUndoBlockEnd);
    undo.Undo();
    EXPECT_EQ(0, done());
    undo.Redo();
    EXPECT_EQ(3, done());
}

TEST_F(UndoGroupTest, GroupHelperEndsTheStepAtItsFirstRecordWhateverTheRecordsSay)
{
    step(1, false);
    {
        const VexUndoGroup group(undo);
        step(2, true);
        step(4, false);
        step(8, false);
    }
    step(16, true); // outside again the record's own word counts
    EXPECT_EQ("..+++", chain());
}

TEST_F(UndoGroupTest, GroupInsideAGroupStartsNoStep)
{
    {
        const VexUndoGroup outer(undo);
        step(1, false);
        {
            const VexUndoGroup inner(undo);
            step(2, false);
        }
        step(4, false);
    }
    EXPECT_EQ(".++", chain());
    const VexUndoGroup next(undo);
    step(8, true);
    EXPECT_EQ(".++.", chain());
}

TEST_F(UndoGroupTest, FirstRecordReallyPushedEndsTheStepOfAGroup)
{
    const CVexDbEntity* point = addTo(drawing, new CVexDbPoint(CVexGePoint2d(0, 0)));
    const VexUndoGroup group(undo);
    record(point, kUndoMove);
    step(1, true);
    record(point, kUndoMove);
    step(2, true);
    EXPECT_EQ(".+", chain());
}

TEST_F(UndoGroupTest, DroppedRecordHandsItsFalseToTheNextOne)
{
    const CVexDbEntity* point = addTo(drawing, new CVexDbPoint(CVexGePoint2d(0, 0)));
    step(1, false);
    record(point, kUndoMove, false);
    record(point, kUndoMove, true);
    step(2, true);
    step(4, true);
    EXPECT_EQ("..+", chain());
    record(point, kUndoMove, true); // has none to hand on
    step(8, true);
    EXPECT_EQ("..++", chain());
}

TEST_F(UndoGroupTest, PoppedRecordsAreNoFirstRecordOfAGroup)
{
    step(1, false);
    const VexUndoGroup group(undo);
    mark(kUndoStop);
    step(2, false);
    EXPECT_EQ(2, undo.UndoPop());
    step(4, true);
    EXPECT_EQ("..", chain());
}

TEST_F(UndoGroupTest, UndoInAnOpenGroupLeavesANewStepBehind)
{
    step(1, false);
    const VexUndoGroup group(undo);
    step(2, false);
    undo.Undo();
    EXPECT_EQ(1, done());
    step(4, true);
    EXPECT_EQ("..", chain());
}

} // namespace
