// Each kind of curve trimmed and extended at each kind that exists, picked on every side of the
// cuts.

#include "tests/vexdb/trimfixture.h"

namespace {

class CutPairsTest : public CutTest {
protected:
    struct Named {
        const char* name;
        Entities entities;
    };
    /// What meets the x axis at 6 and 12.
    std::vector<Named> acrossTheAxis()
    {
        return {
            {"lines", {upright(12), upright(6)}},
            {"circle", {makeCircle({9, 0}, 3)}},
            {"arc over zero", {makeArc({9, 0}, 3, 350, 190)}},
            {"arc beyond half a turn", {makeArc({9, 0}, 3, 170, 10)}},
            {"box", {make<CVexDbBox>(CVexGePoint2d(6, -1), CVexGeVector2d(6, 4))}},
            {"turned box", {make<CVexDbBox>(CVexGePoint2d(12, 2), 6, 4, std::numbers::pi)}},
            {"two arcs", {makeArc({6, 2}, 2, 200, 340), makeArc({12, -5}, 5, 80, 100)}},
            {"line and box", {upright(6), make<CVexDbBox>(CVexGePoint2d(12, -9), 50, 20, 0)}},
        };
    }
    /// What meets the circle of radius 10 about the origin at 30 and 330 degrees: (8.66, +-5).
    std::vector<Named> acrossTheCircle()
    {
        const double x = 10 * std::sqrt(0.75);
        const double radius = std::hypot(20 - x, 5);
        return {
            {"line", {makeLine({x, -8}, {x, 8})}},
            {"lines", {spoke(30), spoke(330)}},
            {"circle", {makeCircle({20, 0}, radius)}},
            {"arc", {makeArc({20, 0}, radius, 90, 270)}},
            {"arc over zero", {makeArc({x, 0}, 5, 260, 100)}},
            {"box", {make<CVexDbBox>(CVexGePoint2d(x, -8), CVexGeVector2d(5, 16))}},
            {"turned box", {make<CVexDbBox>(CVexGePoint2d(x, 8), 16, 5, -std::numbers::pi / 2)}},
        };
    }
    /// Kinds that nothing meets.
    Entities strangers()
    {
        return {make<CVexDbPoint>(CVexGePoint2d(6, 0)), make<CVexDbPoint>(CVexGePoint2d(10, 0)),
                make<CVexDbRect>(CVexGePoint2d(6, -6), CVexGePoint2d(12, 6))};
    }
};

TEST_F(CutPairsTest, LineAtEachKind)
{
    for (const Named& cutters : acrossTheAxis()) {
        SCOPED_TRACE(cutters.name);
        const auto left = [&](double pickX) {
            return leftBy(*addLine({0, 0}, {20, 0}), {pickX, 0}, cutters.entities);
        };
        EXPECT_EQ("line 6,0 20,0", left(3));
        EXPECT_EQ("line 6,0 20,0", left(5.99));
        EXPECT_EQ("line 0,0 6,0 and line 12,0 20,0", left(6.01));
        EXPECT_EQ("line 0,0 6,0 and line 12,0 20,0", left(11.99));
        EXPECT_EQ("line 0,0 12,0", left(12.01));
        EXPECT_EQ("line 0,0 12,0", left(17));
    }
}

TEST_F(CutPairsTest, ArcOverAngleZeroAtEachKind)
{
    for (const Named& cutters : acrossTheCircle()) {
        SCOPED_TRACE(cutters.name);
        const auto left = [&](double pick) {
            return leftBy(*addArc(10, 270, 90), polar(10, pick), cutters.entities);
        };
        EXPECT_EQ("arc 0,0 r10 from 330 to 90", left(300));
        EXPECT_EQ("arc 0,0 r10 from 330 to 90", left(329.9));
        EXPECT_EQ("arc 0,0 r10 from 270 to 330 and arc 0,0 r10 from 30 to 90", left(330.1));
        EXPECT_EQ("arc 0,0 r10 from 270 to 330 and arc 0,0 r10 from 30 to 90", left(0));
        EXPECT_EQ("arc 0,0 r10 from 270 to 330 and arc 0,0 r10 from 30 to 90", left(29.9));
        EXPECT_EQ("arc 0,0 r10 from 270 to 30", left(30.1));
        EXPECT_EQ("arc 0,0 r10 from 270 to 30", left(60));
    }
}

TEST_F(CutPairsTest, ArcBeyondHalfATurnAtEachKind)
{
    for (const Named& cutters : acrossTheCircle()) {
        SCOPED_TRACE(cutters.name);
        const auto left = [&](double pick) {
            return leftBy(*addArc(10, 20, 340), polar(10, pick), cutters.entities);
        };
        EXPECT_EQ("arc 0,0 r10 from 30 to 340", left(25));
        EXPECT_EQ("arc 0,0 r10 from 20 to 30 and arc 0,0 r10 from 330 to 340", left(180));
        EXPECT_EQ("arc 0,0 r10 from 20 to 330", left(335));
    }
}

TEST_F(CutPairsTest, CircleAtEachKind)
{
    for (const Named& cutters : acrossTheCircle()) {
        SCOPED_TRACE(cutters.name);
        const auto left = [&](double pick) {
            return leftBy(*addCircle(10), polar(10, pick), cutters.entities);
        };
        EXPECT_EQ("arc 0,0 r10 from 30 to 330", left(0));
        EXPECT_EQ("arc 0,0 r10 from 30 to 330", left(29.9));
        EXPECT_EQ("arc 0,0 r10 from 330 to 30", left(30.1));
        EXPECT_EQ("arc 0,0 r10 from 330 to 30", left(180));
        EXPECT_EQ("arc 0,0 r10 from 330 to 30", left(329.9));
        EXPECT_EQ("arc 0,0 r10 from 30 to 330", left(330.1));
    }
}

TEST_F(CutPairsTest, LineExtendedToEachKind)
{
    for (const Named& boundaries : acrossTheAxis()) {
        SCOPED_TRACE(boundaries.name);
        CVexDbLine* before = addLine({0, 0}, {4, 0});
        EXPECT_TRUE(extend(*before, {3, 0}, boundaries.entities));
        EXPECT_EQ("line 0,0 6,0", shapeOf(*before));
        CVexDbLine* behind = addLine({14, 0}, {20, 0});
        EXPECT_TRUE(extend(*behind, {15, 0}, boundaries.entities));
        EXPECT_EQ("line 12,0 20,0", shapeOf(*behind));
        CVexDbLine* between = addLine({8, 0}, {9, 0});
        EXPECT_TRUE(extend(*between, {8.1, 0}, boundaries.entities));
        EXPECT_EQ("line 6,0 9,0", shapeOf(*between));
        EXPECT_TRUE(extend(*between, {8.9, 0}, boundaries.entities));
        EXPECT_EQ("line 6,0 12,0", shapeOf(*between));
    }
}

TEST_F(CutPairsTest, ArcExtendedToEachKind)
{
    for (const Named& boundaries : acrossTheCircle()) {
        SCOPED_TRACE(boundaries.name);
        CVexDbArc* overZero = addArc(10, 350, 10);
        EXPECT_TRUE(extend(*overZero, polar(10, 352), boundaries.entities));
        EXPECT_EQ("arc 0,0 r10 from 330 to 10", shapeOf(*overZero));
        EXPECT_TRUE(extend(*overZero, polar(10, 8), boundaries.entities));
        EXPECT_EQ("arc 0,0 r10 from 330 to 30", shapeOf(*overZero));
        CVexDbArc* opposite = addArc(10, 100, 260);
        EXPECT_TRUE(extend(*opposite, polar(10, 110), boundaries.entities));
        EXPECT_EQ("arc 0,0 r10 from 30 to 260", shapeOf(*opposite));
        EXPECT_TRUE(extend(*opposite, polar(10, 250), boundaries.entities));
        EXPECT_EQ("arc 0,0 r10 from 30 to 330", shapeOf(*opposite));
    }
}

TEST_F(CutPairsTest, PointsAndRectanglesNeitherCutNorBound)
{
    EXPECT_EQ("line 0,0 20,0", leftBy(*addLine({0, 0}, {20, 0}), {9, 0}, strangers()));
    EXPECT_EQ("arc 0,0 r10 from 270 to 90", leftBy(*addArc(10, 270, 90), {10, 0}, strangers()));
    EXPECT_EQ("circle 0,0 r10", leftBy(*addCircle(10), {10, 0}, strangers()));
    EXPECT_FALSE(extend(*addLine({0, 0}, {4, 0}), {3, 0}, strangers()));
    EXPECT_FALSE(extend(*addArc(10, 100, 260), polar(10, 110), strangers()));
    EXPECT_TRUE(undoStack().empty());
}

TEST_F(CutPairsTest, BoxesRectanglesAndPointsAreNeitherTrimmedNorExtended)
{
    CVexDbBox* box = add(new CVexDbBox(CVexGePoint2d(0, -1), CVexGeVector2d(20, 2)));
    CVexDbRect* rect = add(new CVexDbRect(CVexGePoint2d(0, -1), CVexGePoint2d(20, 1)));
    CVexDbPoint* point = add(new CVexDbPoint(CVexGePoint2d(6, 0)));
    for (CVexDbEntity* entity : Entities{box, rect, point}) {
        EXPECT_EQ(nullptr, trim(*entity, {9, 1}, {upright(6), upright(12)}));
        EXPECT_FALSE(extend(*entity, {9, 1}, {upright(30)}));
    }
    EXPECT_TRUE(undoStack().empty());
}

} // namespace
