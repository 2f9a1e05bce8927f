#include "tests/vexdb/trimfixture.h"

namespace {

class TrimArcTest : public CutTest {
protected:
    /// The newest undo record: that `end` turns from `degrees`.
    void expectUndo(const CVexDbEntity* arc, int end, double degrees)
    {
        ASSERT_EQ(1u, undoStack().size());
        const tagUndoEditEntity& edit = undoStack().front();
        EXPECT_FALSE(edit.continues);
        EXPECT_EQ(13, edit.editType);
        EXPECT_EQ(2, edit.classType);
        EXPECT_TRUE(edit.entity == arc->objectId());
        EXPECT_EQ(end, edit.index);
        EXPECT_POINT_NEAR(std::cos(degrees * kDegree), std::sin(degrees * kDegree), edit.vector,
                          1e-12);
    }
};

TEST_F(TrimArcTest, PickBeforeTheCutLosesTheStart)
{
    CVexDbArc* arc = addArc(10, 20, 160);
    EXPECT_EQ("arc 0,0 r10 from 90 to 160", leftBy(*arc, polar(10, 50), {spoke(90)}));
    expectUndo(arc, 0, 20);
}

TEST_F(TrimArcTest, PickBehindTheCutLosesTheEnd)
{
    CVexDbArc* arc = addArc(10, 20, 160);
    EXPECT_EQ("arc 0,0 r10 from 20 to 90", leftBy(*arc, polar(10, 120), {spoke(90)}));
    expectUndo(arc, 1, 160);
}

TEST_F(TrimArcTest, PickOnTheOnlyCutLosesTheStart)
{
    CVexDbArc* arc = addArc(10, 20, 160);
    EXPECT_EQ("arc 0,0 r10 from 90 to 160", leftBy(*arc, {0, 10}, {spoke(90)}));
}

TEST_F(TrimArcTest, PickBetweenTwoCutsGivesTheRestAsASecondArc)
{
    CVexDbArc* arc = addArc(10, 20, 160);
    arc->setLayer(CString(L"PipeLine"));
    arc->setColor(5, false);
    auto* rest = static_cast<CVexDbArc*>(trim(*arc, polar(10, 90), {spoke(120), spoke(60)}));
    ASSERT_NE(nullptr, rest);
    EXPECT_EQ("arc 0,0 r10 from 20 to 60", shapeOf(*arc));
    EXPECT_EQ("arc 0,0 r10 from 120 to 160", shapeOf(*rest));
    EXPECT_EQ(arc->Layer(), rest->Layer());
    EXPECT_EQ(5, rest->ColorIndex());
    EXPECT_EQ(&drawing, rest->database());
    EXPECT_FALSE(rest->IsDbEntity());
    EXPECT_TRUE(rest->objectId() == rest);
    expectUndo(arc, 1, 160);
}

TEST_F(TrimArcTest, PickOnAMiddleCutLosesThePiecesOnBothSidesOfIt)
{
    CVexDbArc* arc = addArc(10, 20, 160);
    EXPECT_EQ("arc 0,0 r10 from 20 to 60 and arc 0,0 r10 from 120 to 160",
              leftBy(*arc, {0, 10}, {spoke(60), spoke(90), spoke(120)}));
}

TEST_F(TrimArcTest, PickBesideTheArcCountsInItsDirectionAndBeyondItAtTheNearerEnd)
{
    EXPECT_EQ("arc 0,0 r10 from 90 to 160",
              leftBy(*addArc(10, 20, 160), polar(3, 50), {spoke(90)}));
    EXPECT_EQ("arc 0,0 r10 from 90 to 160",
              leftBy(*addArc(10, 20, 160), polar(10, 5), {spoke(90)}));
    EXPECT_EQ("arc 0,0 r10 from 20 to 90",
              leftBy(*addArc(10, 20, 160), polar(10, 200), {spoke(90)}));
}

struct Row {
    const char* name;
    double from, to; // of the arc, degrees
    std::vector<double> cuts;
    double pick;
    const char* left;
};

TEST_F(TrimArcTest, ArcsThroughAngleZeroAndBeyondHalfATurn)
{
    const Row rows[] = {
        {"before zero, pick at the start", 270, 90, {330}, 300, "arc 0,0 r10 from 330 to 90"},
        {"before zero, pick at the end", 270, 90, {330}, 40, "arc 0,0 r10 from 270 to 330"},
        {"at zero, pick at the start", 270, 90, {0}, 300, "arc 0,0 r10 from 0 to 90"},
        {"at zero, pick at the end", 270, 90, {0}, 40, "arc 0,0 r10 from 270 to 0"},
        {"behind zero", 270, 90, {45}, 300, "arc 0,0 r10 from 45 to 90"},
        {"between, over zero",
         270,
         90,
         {330, 45},
         0,
         "arc 0,0 r10 from 270 to 330 and arc 0,0 r10 from 45 to 90"},
        {"beyond half a turn, first piece", 30, 330, {100, 260}, 40, "arc 0,0 r10 from 100 to 330"},
        {"beyond half a turn, last piece", 30, 330, {100, 260}, 300, "arc 0,0 r10 from 30 to 260"},
        {"beyond half a turn, middle",
         30,
         330,
         {100, 260},
         180,
         "arc 0,0 r10 from 30 to 100 and arc 0,0 r10 from 260 to 330"},
        {"beyond half a turn and over zero",
         200,
         160,
         {350, 10},
         180.5,
         "arc 0,0 r10 from 350 to 160"},
        {"negative angles", -90, 60, {-30}, -60, "arc 0,0 r10 from 330 to 60"},
        {"negative angles, pick at the end", -90, -10, {-30}, -15, "arc 0,0 r10 from -90 to 330"},
        {"from zero", 0, 90, {30}, 10, "arc 0,0 r10 from 30 to 90"},
        {"to a whole turn", 270, 360, {300}, 350, "arc 0,0 r10 from 270 to 300"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Entities cutters;
        for (const double cut : row.cuts) {
            cutters.push_back(spoke(cut));
        }
        EXPECT_EQ(row.left, leftBy(*addArc(10, row.from, row.to), polar(10, row.pick), cutters));
    }
}

TEST_F(TrimArcTest, CutsAtTheEndsAreNone)
{
    CVexDbArc* arc = addArc(10, 20, 160);
    EXPECT_EQ(nullptr, trim(*arc, {0, 10}, {spoke(20), spoke(160)}));
    EXPECT_EQ(nullptr, trim(*arc, {0, 10}, {spoke(20.005), spoke(159.995)})); // 0.0009 away
    EXPECT_EQ("arc 0,0 r10 from 20 to 160", shapeOf(*arc));
    EXPECT_TRUE(undoStack().empty());
}

// The kernel lets an arc be hit a thousandth of a radian beyond its ends, on a large arc far off.
TEST_F(TrimArcTest, CutBeyondAnEndIsNone)
{
    CVexDbArc* arc = addArc(1000, 20, 160);
    EXPECT_EQ(nullptr, trim(*arc, {0, 1000}, {spoke(19.95, 2000), spoke(160.05, 2000)}));
    EXPECT_EQ("arc 0,0 r1000 from 20 to 160", shapeOf(*arc));
    CVexDbArc* atZero = addArc(1000, 0, 90);
    EXPECT_EQ(nullptr, trim(*atZero, polar(1000, 45), {spoke(-0.01, 2000)}));
    EXPECT_EQ("arc 0,0 r1000 from 0 to 90", shapeOf(*atZero));
}

TEST_F(TrimArcTest, StubOfALargeArcIsCutOffButNotLeft)
{
    // 0.05 degrees are 0.87 units, but an angle that the kernel takes for a whole turn.
    CVexDbArc* arc = addArc(1000, 20, 160);
    EXPECT_EQ(nullptr, trim(*arc, {0, 1000}, {spoke(159.95, 2000)}));
    EXPECT_EQ("arc 0,0 r1000 from 20 to 160", shapeOf(*arc));
    EXPECT_EQ("arc 0,0 r1000 from 20 to 159.95",
              leftBy(*arc, polar(1000, 159.99), {spoke(159.95, 2000)}));
    EXPECT_EQ("arc 0,0 r1000 from 20.05 to 159.95",
              leftBy(*arc, polar(1000, 20.01), {spoke(20.05, 2000)}));
}

TEST_F(TrimArcTest, StubBeyondThePieceGoesWithIt)
{
    CVexDbArc* arc = addArc(1000, 20, 160);
    EXPECT_EQ("arc 0,0 r1000 from 20 to 90",
              leftBy(*arc, polar(1000, 120), {spoke(90, 2000), spoke(159.95, 2000)}));
}

TEST_F(TrimArcTest, NearCutsAreOne)
{
    CVexDbArc* arc = addArc(10, 20, 160);
    EXPECT_EQ("arc 0,0 r10 from 90 to 160",
              leftBy(*arc, polar(10, 50), {spoke(90), spoke(90.005)})); // 0.0009 apart
}

TEST_F(TrimArcTest, LineThatTouchesCutsOnce)
{
    EXPECT_EQ("arc 0,0 r10 from 90 to 160",
              leftBy(*addArc(10, 20, 160), polar(10, 50), {makeLine({-20, 10}, {20, 10})}));
    EXPECT_EQ("arc 0,0 r10 from 20 to 90",
              leftBy(*addArc(10, 20, 160), polar(10, 120), {makeLine({-20, 10}, {20, 10})}));
}

TEST_F(TrimArcTest, CircleThatTouchesFromInsideCutsAndFromOutsideDoesNot)
{
    EXPECT_EQ("arc 0,0 r10 from 90 to 160",
              leftBy(*addArc(10, 20, 160), polar(10, 50), {makeCircle({0, 6}, 4)}));
    EXPECT_EQ("arc 0,0 r10 from 20 to 160",
              leftBy(*addArc(10, 20, 160), polar(10, 50), {makeCircle({0, 14}, 4)}));
}

TEST_F(TrimArcTest, WholeTurnOfAnArcIsCutAtItsEndsToo)
{
    EXPECT_EQ("arc 0,0 r10 from 90 to 360",
              leftBy(*addArc(10, 0, 360), polar(10, 50), {spoke(90)}));
    EXPECT_EQ("arc 0,0 r10 from 0 to 90", leftBy(*addArc(10, 0, 360), polar(10, 120), {spoke(90)}));
    // Not so near to its ends that a whole turn would stay.
    EXPECT_EQ("arc 0,0 r10 from 0 to 360",
              leftBy(*addArc(10, 0, 360), polar(10, 0.01), {spoke(0.05)}));
}

TEST_F(TrimArcTest, ConcentricArcsAndOneselfCutNothing)
{
    CVexDbArc* arc = addArc(10, 20, 160);
    EXPECT_EQ("arc 0,0 r10 from 20 to 160",
              leftBy(*arc, {0, 10}, {arc, makeArc({0, 0}, 10, 60, 120), makeCircle({0, 0}, 4)}));
}

TEST_F(TrimArcTest, ArcWithoutRadiusIsLeftAlone)
{
    CVexDbArc* arc = addArc(0, 20, 160);
    EXPECT_EQ("arc 0,0 r0 from 20 to 160", leftBy(*arc, {0, 0}, {upright(0), spoke(90)}));
    EXPECT_FALSE(extend(*arc, {0, 0}, {upright(0)}));
}

TEST_F(TrimArcTest, AngleIsThatOfTheIntersectionItself)
{
    CVexDbArc* arc = add(new CVexDbArc(CVexGePoint2d(0.1, 0.2), 3.3, 0.3, 2.9));
    auto* cutter = makeLine({-3, 1.7}, {5, 2.9});
    int count = 0;
    CVexGePoint2d first, second;
    ASSERT_TRUE(arc->geArc().intersectWith(cutter->geLine(), count, first, second,
                                           CVexGeEntity2d::kExtendNone, kGeEpsilon));
    ASSERT_EQ(2, count);
    const auto* rest = static_cast<CVexDbArc*>(trim(*arc, {0.5, 3.5}, {cutter}));
    ASSERT_NE(nullptr, rest);
    EXPECT_EQ(arc->Center().angleTo(first), arc->EndAngle());
    EXPECT_EQ(arc->Center().angleTo(second), rest->StartAngle());
    EXPECT_EQ(2.9, rest->EndAngle());
}

} // namespace
