#include "tests/vexdb/trimfixture.h"

namespace {

using TrimCircleTest = CutTest;

TEST_F(TrimCircleTest, NeedsTwoCuts)
{
    CVexDbCircle* circle = addCircle(10);
    EXPECT_EQ("circle 0,0 r10", leftBy(*circle, {0, 10}, {}));
    EXPECT_EQ("circle 0,0 r10", leftBy(*circle, {0, 10}, {spoke(90)}));
    EXPECT_EQ("circle 0,0 r10", leftBy(*circle, {0, 10}, {makeLine({-20, 10}, {20, 10})}));
    EXPECT_EQ("circle 0,0 r10", leftBy(*circle, {0, 10}, {makeCircle({0, 6}, 4)}));
    EXPECT_FALSE(circle->isErased());
    EXPECT_TRUE(undoStack().empty());
}

TEST_F(TrimCircleTest, BecomesTheArcFromTheCutBehindThePickToTheOneBeforeIt)
{
    struct Row {
        const char* name;
        std::vector<double> cuts;
        double pick;
        const char* left;
    };
    const Row rows[] = {
        {"between two", {60, 120}, 90, "arc 0,0 r10 from 120 to 60"},
        {"behind the last, over zero", {60, 120}, 200, "arc 0,0 r10 from 60 to 120"},
        {"before the first, over zero", {60, 120}, 30, "arc 0,0 r10 from 60 to 120"},
        {"at angle zero", {60, 300}, 0, "arc 0,0 r10 from 60 to 300"},
        {"a cut at zero, pick behind it", {0, 90}, 45, "arc 0,0 r10 from 90 to 0"},
        {"a cut at zero, pick before it", {0, 90}, 350, "arc 0,0 r10 from 0 to 90"},
        {"of four cuts the neighbours", {10, 80, 190, 280}, 100, "arc 0,0 r10 from 190 to 80"},
        {"of four cuts over zero", {10, 80, 190, 280}, 5, "arc 0,0 r10 from 10 to 280"},
        {"pick on the first cut takes the piece before",
         {60, 120},
         60,
         "arc 0,0 r10 from 60 to 120"},
        {"pick on the last cut takes the piece before",
         {60, 120},
         120,
         "arc 0,0 r10 from 120 to 60"},
        {"pick on a middle cut takes both pieces",
         {60, 120, 200},
         120,
         "arc 0,0 r10 from 200 to 60"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Entities cutters;
        for (const double cut : row.cuts) {
            cutters.push_back(spoke(cut));
        }
        EXPECT_EQ(row.left, leftBy(*addCircle(10), polar(10, row.pick), cutters));
    }
}

TEST_F(TrimCircleTest, StaysErasedInTheDrawingAndIsRecordedAsThat)
{
    CVexDbCircle* circle = addCircle(10);
    trim(*circle, {0, 10}, {spoke(60), spoke(120)});
    EXPECT_TRUE(circle->isErased());
    EXPECT_TRUE(circle->IsDbEntity());
    EXPECT_EQ(1, drawing.blocks().getCurrentRecord()->getNumEntity());
    ASSERT_EQ(1u, undoStack().size());
    EXPECT_EQ(7, undoStack().front().editType);
    EXPECT_EQ(0, undoStack().front().classType);
    EXPECT_FALSE(undoStack().front().continues);
    EXPECT_TRUE(undoStack().front().entity == circle->objectId());
    drawing.undoHandler().Undo();
    EXPECT_FALSE(circle->isErased());
    EXPECT_EQ("circle 0,0 r10", shapeOf(*circle));
}

TEST_F(TrimCircleTest, ArcHasDrawingAndPropertiesOfTheCircle)
{
    CVexDbCircle* circle = addCircle(10);
    circle->setLayer(CString(L"PipeLine"));
    circle->setColor(5, false);
    circle->setLineType(CString(L"Hidden"), false);
    circle->setLineWeight(static_cast<VexDb::LineWeight>(35), false);
    circle->SetBoundary(7);
    auto* arc = static_cast<CVexDbArc*>(trim(*circle, {0, 10}, {spoke(60), spoke(120)}));
    ASSERT_NE(nullptr, arc);
    EXPECT_EQ(&drawing, arc->database());
    EXPECT_EQ(circle->Layer(), arc->Layer());
    EXPECT_EQ(5, arc->ColorIndex());
    EXPECT_EQ(CString(L"Hidden"), arc->LineType());
    EXPECT_EQ(35, arc->LineWeight());
    EXPECT_EQ(7, arc->IsBoundary());
    EXPECT_FALSE(arc->IsDbEntity());
    EXPECT_FALSE(arc->isErased());
}

TEST_F(TrimCircleTest, CutsTooNearForAnArcToBeTakenOutAreOne)
{
    EXPECT_EQ("circle 0,0 r10", leftBy(*addCircle(10), {0, 10}, {spoke(90), spoke(90.05)}));
    EXPECT_EQ("circle 0,0 r10", leftBy(*addCircle(10), {0, -10}, {spoke(90), spoke(90.05)}));
    EXPECT_EQ("circle 0,0 r10", leftBy(*addCircle(10), {0, 10}, {spoke(0.02), spoke(359.98)}));
    EXPECT_EQ("arc 0,0 r10 from 90.06 to 90",
              leftBy(*addCircle(10), polar(10, 90.03), {spoke(90), spoke(90.06)}));
    EXPECT_EQ("circle 0,0 r0.01", leftBy(*addCircle(0.01), {0, 10},
                                         {makeLine({0, 0}, {1, 0}), makeLine({0, 0}, {1, 0.05})}));
}

TEST_F(TrimCircleTest, TwoCuttersAtOnePlaceAreOneCut)
{
    EXPECT_EQ("circle 0,0 r10", leftBy(*addCircle(10), {0, 10}, {spoke(90), spoke(90, 20)}));
    EXPECT_EQ("circle 0,0 r10", leftBy(*addCircle(10), {0, 10}, {spoke(0), spoke(360, 20)}));
}

// The kernel lets touching arcs meet where ends do, within a thousandth of a unit: such a point
// may lie off the circle by more than a point of it may.
TEST_F(TrimCircleTest, TouchThatLiesAHairOffTheCircleIsACutWhereItLies)
{
    CVexDbArc* touching = makeArc({8, 0}, 3, 90, 180 + 0.0003 / kDegree);
    CVexDbCircle* circle = addCircle(5);
    ASSERT_EQ(-1.0, circle->paramAtPoint(touching->EndPoint(), kGeEpsilon));
    auto* arc = static_cast<CVexDbArc*>(trim(*circle, polar(5, 45), {touching, spoke(90)}));
    ASSERT_NE(nullptr, arc);
    EXPECT_NEAR(90 * kDegree, arc->StartAngle(), 1e-12);
    EXPECT_NEAR(-0.0009 / 5, arc->EndAngle() - 2 * std::numbers::pi, 1e-9);
}

TEST_F(TrimCircleTest, PickInTheCentreCountsAtAngleZero)
{
    EXPECT_EQ("arc 0,0 r10 from 60 to 300",
              leftBy(*addCircle(10), {0, 0}, {spoke(60), spoke(300)}));
}

TEST_F(TrimCircleTest, ConcentricAndEqualCirclesCutNothing)
{
    CVexDbCircle* circle = addCircle(10);
    EXPECT_EQ("circle 0,0 r10",
              leftBy(*circle, {0, 10}, {circle, makeCircle({0, 0}, 10), makeCircle({0, 0}, 4)}));
}

TEST_F(TrimCircleTest, MirroredTurnedAndMovedCircleIsWhole)
{
    CVexDbCircle* circle = addCircle(10);
    circle->Mirror(CVexGeLine2d(CVexGePoint2d(20, -3), CVexGePoint2d(21, 7)));
    circle->Mirror(CVexGeLine2d(CVexGePoint2d(20, -3), CVexGePoint2d(21, 7)));
    circle->RotateBy(1.0, circle->Center());
    circle->TranslateBy({-circle->Center().x, -circle->Center().y});
    EXPECT_EQ(0.0, circle->geCircle().startAng());
    EXPECT_EQ(2 * std::numbers::pi, circle->geCircle().endAng());
    EXPECT_NEAR(20 * std::numbers::pi, circle->length(), 1e-9);
    EXPECT_EQ("arc 0,0 r10 from 120 to 60", leftBy(*circle, {0, 10}, {spoke(60), spoke(120)}));
}

TEST_F(TrimCircleTest, IsNotExtended)
{
    EXPECT_FALSE(extend(*addCircle(10), {0, 10}, {spoke(60), upright(3)}));
    EXPECT_TRUE(undoStack().empty());
}

} // namespace
