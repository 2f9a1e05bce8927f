#include "tests/vexdb/entityfixture.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbpoint.h"

namespace {

constexpr double kTol = 1e-6;

/// A line from (0, 0) to (10, 0) in the drawing, and lines upright at given x.
class TrimTest : public EntityTest {
protected:
    CVexDbEntity* upright(double x)
    {
        m_others.push_back(std::make_unique<CVexDbLine>(CVexGePoint2d(x, -5), CVexGePoint2d(x, 5)));
        return m_others.back().get();
    }
    std::unique_ptr<CVexDbLine> trim(double pickX, std::vector<CVexDbEntity*> cutters)
    {
        CVexGePoint2d pick(pickX, 0);
        return std::unique_ptr<CVexDbLine>(
            static_cast<CVexDbLine*>(line->Trim(pick, cutters, kTol)));
    }
    bool extend(double pickX, std::vector<CVexDbEntity*> boundaries)
    {
        CVexGePoint2d pick(pickX, 0);
        return line->Extend(pick, boundaries, kTol);
    }
    /// The newest undo record: that `end` moved along x.
    void expectUndo(int end, double displacement)
    {
        ASSERT_EQ(1u, undoStack().size());
        const tagUndoEditEntity& edit = undoStack().front();
        EXPECT_FALSE(edit.continues);
        EXPECT_EQ(18, edit.editType);
        EXPECT_TRUE(edit.entity == line->objectId());
        EXPECT_EQ(end, edit.index);
        EXPECT_POINT_NEAR(displacement, 0, edit.vector, 1e-9);
    }
    const std::deque<tagUndoEditEntity>& undoStack() { return drawing.undoHandler().undoStack(); }

    CVexDbLine* line = addLine({0, 0}, {10, 0});

private:
    std::vector<std::unique_ptr<CVexDbLine>> m_others;
};

TEST_F(TrimTest, PickBeforeTheCutLosesTheStart)
{
    EXPECT_EQ(nullptr, trim(2, {upright(4)}));
    EXPECT_POINT_NEAR(4, 0, line->StartPoint(), 1e-9);
    EXPECT_POINT(10, 0, line->EndPoint());
    expectUndo(0, 4);
}

TEST_F(TrimTest, PickBehindTheCutLosesTheEnd)
{
    EXPECT_EQ(nullptr, trim(8, {upright(4)}));
    EXPECT_POINT(0, 0, line->StartPoint());
    EXPECT_POINT_NEAR(4, 0, line->EndPoint(), 1e-9);
    expectUndo(1, -6);
}

TEST_F(TrimTest, PickOnTheOnlyCutLosesTheStart)
{
    EXPECT_EQ(nullptr, trim(4, {upright(4)}));
    EXPECT_POINT_NEAR(4, 0, line->StartPoint(), 1e-9);
    EXPECT_POINT(10, 0, line->EndPoint());
}

TEST_F(TrimTest, PickBetweenTwoCutsGivesTheRestAsASecondLine)
{
    line->setLayer(CString(L"PipeLine"));
    line->setColor(5, false);
    line->setLineType(CString(L"Hidden"), false);
    const auto rest = trim(5, {upright(7), upright(2), upright(9), upright(4)});
    ASSERT_NE(nullptr, rest);
    EXPECT_POINT(0, 0, line->StartPoint());
    EXPECT_POINT_NEAR(4, 0, line->EndPoint(), 1e-9);
    EXPECT_POINT_NEAR(7, 0, rest->StartPoint(), 1e-9);
    EXPECT_POINT(10, 0, rest->EndPoint());
    EXPECT_TRUE(rest->LayerId() == line->LayerId() && rest->ColorId() == line->ColorId());
    EXPECT_TRUE(rest->LineTypeId() == line->LineTypeId());
    expectUndo(1, -6);
}

TEST_F(TrimTest, PickOnAMiddleCutLosesThePiecesOnBothSidesOfIt)
{
    // The cut under the pick is neither before nor behind it: the pieces that meet there both go.
    const auto rest = trim(4, {upright(2), upright(4), upright(6)});
    ASSERT_NE(nullptr, rest);
    EXPECT_POINT_NEAR(2, 0, line->EndPoint(), 1e-9);
    EXPECT_POINT_NEAR(6, 0, rest->StartPoint(), 1e-9);
    expectUndo(1, -8);
}

TEST_F(TrimTest, PickBesideTheLineCountsAtItsFoot)
{
    CVexGePoint2d pick(2, 3);
    std::vector<CVexDbEntity*> cutters = {upright(4)};
    EXPECT_EQ(nullptr, line->Trim(pick, cutters, kTol));
    EXPECT_POINT_NEAR(4, 0, line->StartPoint(), 1e-9);
}

TEST_F(TrimTest, TheRestIsAThingOfItsOwnOutsideTheDrawing)
{
    const auto rest = trim(5, {upright(4), upright(6)});
    ASSERT_NE(nullptr, rest);
    EXPECT_TRUE(rest->objectId() == rest.get());
    EXPECT_GT(rest->getCreatedTime(), line->getCreatedTime());
    EXPECT_TRUE(rest->ownerId().isNull());
    EXPECT_FALSE(rest->IsDbEntity());
    EXPECT_EQ(CRect(600, 0, 1000, 0), *rest->GetEntityRect());
}

TEST_F(TrimTest, BoxCutsTwice)
{
    CVexDbBox box({4, -1}, {2, 2});
    const auto rest = trim(5, {&box});
    ASSERT_NE(nullptr, rest);
    EXPECT_POINT_NEAR(4, 0, line->EndPoint(), 1e-9);
    EXPECT_POINT_NEAR(6, 0, rest->StartPoint(), 1e-9);
}

TEST_F(TrimTest, WithoutACutNothingIsTouched)
{
    EXPECT_EQ(nullptr, trim(5, {upright(20)}));
    EXPECT_EQ(nullptr, trim(5, {}));
    EXPECT_POINT(10, 0, line->EndPoint());
    EXPECT_TRUE(undoStack().empty());
}

TEST_F(TrimTest, RecordsInTheLinesOwnDrawing)
{
    CVexDbDatabase active(false);
    _gpDatabase = &active;
    trim(2, {upright(4)});
    EXPECT_EQ(1u, undoStack().size());
    EXPECT_TRUE(active.undoHandler().undoStack().empty());
}

TEST_F(TrimTest, ExtendMovesTheEndNearestThePick)
{
    EXPECT_TRUE(extend(8, {upright(15)}));
    EXPECT_POINT_NEAR(15, 0, line->EndPoint(), 1e-9);
    EXPECT_POINT(0, 0, line->StartPoint());
    expectUndo(1, 5);
}

TEST_F(TrimTest, ExtendAtTheMiddleMovesTheEnd)
{
    EXPECT_TRUE(extend(5, {upright(-5)})); // even though the boundary lies beyond the start
    EXPECT_POINT(0, 0, line->StartPoint());
    EXPECT_POINT_NEAR(-5, 0, line->EndPoint(), 1e-9);
    expectUndo(1, -15);
}

TEST_F(TrimTest, ExtendBelowTheMiddleMovesTheStart)
{
    EXPECT_TRUE(extend(4, {upright(-5)}));
    EXPECT_POINT_NEAR(-5, 0, line->StartPoint(), 1e-9);
    expectUndo(0, -5);
}

TEST_F(TrimTest, ExtendTakesTheCrossingNearestThePick)
{
    EXPECT_TRUE(extend(9, {upright(30), upright(12), upright(20)}));
    EXPECT_POINT_NEAR(12, 0, line->EndPoint(), 1e-9);
}

TEST_F(TrimTest, ExtendMovesTheNearEndAlsoPastTheOtherOne)
{
    EXPECT_TRUE(extend(2, {upright(15)})); // nearest the pick is the start; it turns the line round
    EXPECT_POINT_NEAR(15, 0, line->StartPoint(), 1e-9);
    EXPECT_POINT(10, 0, line->EndPoint());
    expectUndo(0, 15);
}

TEST_F(TrimTest, PointsAndRectanglesNeitherCutNorBound)
{
    CVexDbPoint point(CVexGePoint2d(4, 0));
    CVexDbRect rect(CVexGePoint2d(4, -1), CVexGePoint2d(15, 1));
    EXPECT_EQ(nullptr, trim(8, {&point, &rect}));
    EXPECT_FALSE(extend(8, {&point, &rect}));
    EXPECT_TRUE(extend(8, {upright(12), &point}));
    EXPECT_POINT_NEAR(12, 0, line->EndPoint(), 1e-9);
}

TEST_F(TrimTest, ExtendIgnoresWhatLiesOnTheLineAndWhatItCannotReach)
{
    CVexDbLine above(CVexGePoint2d(15, 1), CVexGePoint2d(15, 5));
    EXPECT_FALSE(extend(8, {upright(4), upright(10), &above}));
    EXPECT_POINT(10, 0, line->EndPoint());
    EXPECT_TRUE(undoStack().empty());
}

TEST_F(TrimTest, NoDrawingAtAllStillTrims)
{
    _gpDatabase = nullptr;
    CVexDbLine homeless({0, 0}, {10, 0});
    CVexGePoint2d pick(2, 0);
    std::vector<CVexDbEntity*> cutters = {upright(4)};
    EXPECT_EQ(nullptr, homeless.Trim(pick, cutters, kTol));
    EXPECT_POINT_NEAR(4, 0, homeless.StartPoint(), 1e-9);
    EXPECT_TRUE(undoStack().empty());
}

} // namespace
