#include "tests/vexdb/polylineeditfixture.h"

namespace {

class PolylineExplodeTest : public PolylineEditTest {
protected:
    std::vector<CVexDbEntity*> explode()
    {
        polyline->Explode();
        std::vector<CVexDbEntity*> pieces;
        for (const CVexDbObjectId& id : *drawing.blocks().getCurrentRecord()->entitySet()) {
            auto* entity = static_cast<CVexDbEntity*>(id.getPObject());
            if (entity != polyline) {
                pieces.push_back(entity);
            }
        }
        return pieces;
    }
};

TEST_F(PolylineExplodeTest, SegmentsBecomeLinesAndArcsInOrder)
{
    put({{0, 0}, {10, 0, 1}, {20, 0, -1}, {30, 0}});
    const auto pieces = explode();
    ASSERT_EQ(3u, pieces.size());
    const auto& line = static_cast<CVexDbLine&>(*pieces[0]);
    ASSERT_EQ(VexDb::kLine, line.classType());
    EXPECT_POINT(0, 0, line.StartPoint());
    EXPECT_POINT(10, 0, line.EndPoint());
    for (unsigned i = 1; i < 3; ++i) {
        ASSERT_EQ(VexDb::kArc, pieces[i]->classType());
        CVexGeCircArc2d segment;
        ASSERT_TRUE(polyline->GetArcSegAt(i, segment));
        EXPECT_TRUE(static_cast<CVexDbArc&>(*pieces[i]).geArc() == segment);
    }
}

TEST_F(PolylineExplodeTest, ClosingSegmentCountsAndOneWithoutLengthDoesNot)
{
    put({{0, 0}, {10, 0}, {10, 0}, {10, 10}}, true);
    const auto pieces = explode();
    ASSERT_EQ(3u, pieces.size());
    EXPECT_POINT(10, 10, static_cast<CVexDbLine&>(*pieces[2]).StartPoint());
    EXPECT_POINT(0, 0, static_cast<CVexDbLine&>(*pieces[2]).EndPoint());
}

TEST_F(PolylineExplodeTest, PiecesTakeThePropertiesButNotTheBoundary)
{
    put({{0, 0}, {10, 0, 1}, {20, 0}}).setLayer(CString(L"PipeLine"));
    polyline->setColor(5, false);
    polyline->setLineType(CString(L"Hidden"), false);
    polyline->setLineWeight(VexDb::LineWeight(35), false);
    polyline->SetBoundary(7);
    for (CVexDbEntity* piece : explode()) {
        EXPECT_TRUE(piece->LayerId() == polyline->LayerId());
        EXPECT_TRUE(piece->LineTypeId() == polyline->LineTypeId());
        EXPECT_TRUE(piece->ColorId() == polyline->ColorId());
        EXPECT_EQ(35, piece->LineWeight());
        EXPECT_EQ(0, piece->IsBoundary());
    }
}

TEST_F(PolylineExplodeTest, RecordsMakeOneStepOfCreations)
{
    put({{0, 0}, {10, 0, 1}, {20, 0}});
    const auto pieces = explode();
    const auto& stack = drawing.undoHandler().undoStack();
    ASSERT_EQ(2u, stack.size());
    for (std::size_t i = 0; i < 2; ++i) {
        const tagUndoEditEntity& edit = stack[1 - i]; // the newest comes first
        EXPECT_EQ(kUndoCreate, edit.editType);
        EXPECT_TRUE(edit.entity == pieces[i]->objectId());
        EXPECT_TRUE(edit.other == polyline->ownerId());
        EXPECT_EQ(i > 0, edit.continues);
    }
    EXPECT_TRUE(drawing.undoHandler().Undo());
    EXPECT_TRUE(pieces[0]->isErased() && pieces[1]->isErased());
    EXPECT_FALSE(polyline->isErased()); // erasing it is the caller's
}

TEST_F(PolylineExplodeTest, EmptyOnesGiveNothing)
{
    put({});
    EXPECT_TRUE(explode().empty());
    put({{1, 1}}, true);
    EXPECT_EQ(1u, explode().size()); // the other polyline
    EXPECT_EQ("", records());
}

} // namespace
