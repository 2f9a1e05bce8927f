#include "tests/vexdb/trimfixture.h"

namespace {

/// A line from (0, 0) to (10, 0) in the drawing.
class TrimLineTest : public CutTest {
protected:
    CVexDbLine* line = addLine({0, 0}, {10, 0});
};

TEST_F(TrimLineTest, CutAtAnEndIsNone)
{
    EXPECT_EQ("line 0,0 10,0", leftBy(*line, {5, 0}, {upright(0), upright(10)}));
    EXPECT_EQ("line 0,0 10,0", leftBy(*line, {5, 0}, {upright(0.0009), upright(9.9991)}));
    EXPECT_EQ("line 0,0 10,0", leftBy(*line, {0.0005, 0}, {upright(0.0009)}));
    EXPECT_TRUE(undoStack().empty());
}

TEST_F(TrimLineTest, CutFartherThanTheToleranceFromAnEndCounts)
{
    EXPECT_EQ("line 0.0011,0 10,0", leftBy(*line, {0, 0}, {upright(0.0011)}));
    EXPECT_EQ("line 0.0011,0 0.0025,0", leftBy(*line, {5, 0}, {upright(0.0025)}));
}

TEST_F(TrimLineTest, CutAtAnEndDoesNotMakeAPickLieBetweenCuts)
{
    EXPECT_EQ("line 4,0 10,0", leftBy(*line, {2, 0}, {upright(0), upright(4), upright(10)}));
    EXPECT_EQ(1u, undoStack().size());
    EXPECT_EQ(0, undoStack().front().index);
}

TEST_F(TrimLineTest, CutsAsNearAsTheToleranceAreOneAndTheFirstOfThemStays)
{
    // A pick between the two would else leave all but a speck, in two lines.
    EXPECT_EQ("line 4,0 10,0", leftBy(*line, {2, 0}, {upright(4), upright(4.0008)}));
    EXPECT_EQ("line 4,0 7.0008,0", leftBy(*line, {9, 0}, {upright(7.0008), upright(7)}));
}

TEST_F(TrimLineTest, PickOnACutThatIsHalfADigitOffIsOnIt)
{
    const CVexGePoint2d pick(4 + 1e-12, 0);
    EXPECT_EQ("line 4,0 10,0", leftBy(*line, pick, {upright(4)}));
}

TEST_F(TrimLineTest, EndIsTheIntersectionItself)
{
    auto* slanted = addLine({0.1, 0.2}, {9.7, 7.3});
    auto* first = makeLine({3.3, 0}, {2.9, 9});
    auto* second = makeLine({6.1, 0}, {5.7, 9});
    CVexGePoint2d crossings[2];
    ASSERT_TRUE(slanted->geLine().intersectWith(first->geLine(), crossings[0],
                                                CVexGeEntity2d::kExtendNone, kGeEpsilon));
    ASSERT_TRUE(slanted->geLine().intersectWith(second->geLine(), crossings[1],
                                                CVexGeEntity2d::kExtendNone, kGeEpsilon));
    const auto* rest = static_cast<CVexDbLine*>(trim(*slanted, {4.6, 3.5}, {second, first}));
    ASSERT_NE(nullptr, rest);
    EXPECT_POINT(crossings[0].x, crossings[0].y, slanted->EndPoint());
    EXPECT_POINT(crossings[1].x, crossings[1].y, rest->StartPoint());
    EXPECT_POINT(9.7, 7.3, rest->EndPoint());
}

TEST_F(TrimLineTest, RestHasDrawingPropertiesBoundaryAndExtendedDataOfTheSource)
{
    line->setLayer(CString(L"PipeLine"));
    line->setColor(5, false);
    line->setLineType(CString(L"Hidden"), false);
    line->setLineWeight(static_cast<VexDb::LineWeight>(35), false);
    line->SetBoundary(7);
    auto* rest = static_cast<CVexDbLine*>(trim(*line, {5, 0}, {upright(4), upright(6)}));
    ASSERT_NE(nullptr, rest);
    EXPECT_EQ(&drawing, rest->database());
    EXPECT_EQ(line->Layer(), rest->Layer());
    EXPECT_EQ(5, rest->ColorIndex());
    EXPECT_EQ(CString(L"Hidden"), rest->LineType());
    EXPECT_EQ(35, rest->LineWeight());
    EXPECT_EQ(7, rest->IsBoundary());
    EXPECT_FALSE(rest->IsDbEntity());
}

TEST_F(TrimLineTest, LineWithoutLengthIsLeftAlone)
{
    auto* speck = addLine({4, 0}, {4, 0});
    EXPECT_EQ("line 4,0 4,0", leftBy(*speck, {4, 0}, {upright(4), line}));
    EXPECT_FALSE(extend(*speck, {4, 0}, {upright(9)}));
}

TEST_F(TrimLineTest, OverlappingLineAndOneselfCutNothing)
{
    EXPECT_EQ("line 0,0 10,0", leftBy(*line, {5, 0}, {makeLine({2, 0}, {6, 0}), line}));
    EXPECT_FALSE(extend(*line, {9, 0}, {makeLine({12, 0}, {16, 0})}));
}

TEST_F(TrimLineTest, CutterThatEndsOnTheLineCuts)
{
    EXPECT_EQ("line 4,0 10,0", leftBy(*line, {2, 0}, {makeLine({4, 0}, {4, 3})}));
    EXPECT_EQ("line 4,0 8,0", leftBy(*line, {9, 0}, {makeArc({8, 2}, 2, 180, 270)}));
}

TEST_F(TrimLineTest, CircleThatTouchesCutsOnce)
{
    EXPECT_EQ("line 4,0 10,0", leftBy(*line, {2, 0}, {makeCircle({4, 3}, 3)}));
    EXPECT_EQ("line 4,0 10,0", leftBy(*line, {5, 0}, {makeCircle({7, 3.1}, 3)}));
}

TEST_F(TrimLineTest, ExtensionMeetsItsBoundaryExactly)
{
    auto* slanted = addLine({0, 0}, {1, 0.3});
    auto* boundary = makeLine({20, -3}, {19, 30});
    CVexGePoint2d crossing;
    ASSERT_TRUE(slanted->geLine().intersectWith(boundary->geLine(), crossing,
                                                CVexGeEntity2d::kExtendThis, kGeEpsilon));
    EXPECT_TRUE(extend(*slanted, {1, 0.3}, {boundary}));
    EXPECT_POINT(crossing.x, crossing.y, slanted->EndPoint());
}

TEST_F(TrimLineTest, ExtensionAcrossToTheOtherEndIsRefused)
{
    EXPECT_FALSE(extend(*line, {2, 0}, {upright(10.0005)})); // the start would meet the end
    EXPECT_TRUE(extend(*line, {8, 0}, {upright(10.0005)}));
    EXPECT_EQ("line 0,0 10.0005,0", shapeOf(*line));
}

TEST_F(TrimLineTest, PickInTheMiddleOfASlantedLineMovesItsEnd)
{
    for (const double rise : {0.1, 0.3, 0.7, 1.1, 1.3, 1.7}) {
        auto* slanted = addLine({0.1, 0.2}, {9.7, 0.2 + rise});
        EXPECT_TRUE(extend(*slanted, slanted->geLine().midPoint(), {upright(30)}));
        EXPECT_POINT(0.1, 0.2, slanted->StartPoint());
        EXPECT_NEAR(30, slanted->EndPoint().x, 1e-9);
    }
}

TEST_F(TrimLineTest, BoundaryAsideOfTheLineIsOutOfReach)
{
    EXPECT_FALSE(extend(
        *line, {9, 0},
        {makeLine({20, 0.01}, {20, 5}), makeCircle({30, 8}, 7.9), makeArc({20, 0}, 4, 20, 160)}));
    EXPECT_TRUE(extend(*line, {9, 0}, {makeCircle({30, 8}, 8)})); // touches
    EXPECT_EQ("line 0,0 30,0", shapeOf(*line));
}

} // namespace
