#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbspatialindex.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

/// Short lines in a drawing, and an index of some of them.
class IndexGridTest : public testing::Test {
protected:
    CVexDbLine* addLine(CVexGePoint2d at)
    {
        auto* line = new CVexDbLine(&database);
        line->set(at, CVexGePoint2d(at.x + 1.0, at.y + 2.0));
        CVexDbObjectId id;
        database.addEntity(line, id);
        lines.push_back(line);
        set.insert(id);
        return line;
    }
    void scatter(std::size_t count, double side)
    {
        std::uniform_real_distribution<double> place(0.0, side);
        for (std::size_t i = 0; i < count; ++i) {
            const double x = place(random);
            addLine({x, place(random)});
        }
    }
    /// Those that a walk finds in the square from (0, 0) to (side, side).
    [[nodiscard]] std::vector<CVexDbEntity*> walked(double side) const
    {
        std::vector<CVexDbEntity*> found;
        std::ranges::copy_if(lines, std::back_inserter(found), [side](const CVexDbLine* line) {
            return line->StartPoint().x <= side && line->StartPoint().y <= side;
        });
        return found;
    }
    /// Of what the index gives for it, those that lie in it.
    [[nodiscard]] std::vector<CVexDbEntity*> collected(double side) const
    {
        std::vector<CVexDbEntity*> found;
        const int edge = static_cast<int>(side * 100.0);
        EXPECT_TRUE(index.collect(CRect(0, 0, edge, edge), lines.size(), found));
        std::erase_if(found, [side](const CVexDbEntity* entity) {
            const CVexGePoint2d at = static_cast<const CVexDbLine*>(entity)->StartPoint();
            return at.x > side || at.y > side;
        });
        return found;
    }

    CVexDbDatabase database{false};
    std::mt19937 random{31};
    std::vector<CVexDbLine*> lines; // in order of creation
    CVexDbIdSet set;
    CVexDbSpatialIndex index{database.spatialIndexes()};
};

TEST_F(IndexGridTest, ThousandsComeInOrderOfCreationHoweverTheyWereEntered)
{
    scatter(5000, 300.0);
    std::vector<CVexDbLine*> shuffled = lines;
    std::ranges::shuffle(shuffled, random);
    for (CVexDbLine* line : shuffled) {
        index.insert(*line);
    }
    for (const double side : {40.0, 120.0, 300.0}) {
        EXPECT_EQ(walked(side), collected(side)) << side;
    }
}

TEST_F(IndexGridTest, NumbersFarApartKeepTheirOrderToo)
{
    scatter(600, 100.0);
    CVexDbObject::NextHardID += std::uint64_t{1} << 40;
    scatter(600, 100.0);
    index.rebuild(set);
    EXPECT_EQ(walked(100.0), collected(100.0));
}

TEST_F(IndexGridTest, WhatLiesFarAwayAloneHidesNothing)
{
    scatter(3000, 200.0);
    addLine({4.0e6, -4.0e6});
    addLine({-8.0e6, 8.0e6});
    addLine({-50.0, -50.0});
    index.rebuild(set);
    EXPECT_EQ(3003u, index.size());
    EXPECT_EQ(walked(60.0).size() - 1, collected(60.0).size()); // one lies left of the square
}

TEST_F(IndexGridTest, AnIndexThatHasGrownManifoldIsOutgrownButRight)
{
    scatter(100, 1000.0);
    index.rebuild(set);
    EXPECT_FALSE(index.isOutgrown());
    for (int i = 0; i < 800; ++i) {
        scatter(1, 100.0);
        index.insert(*lines.back());
    }
    EXPECT_TRUE(index.isOutgrown());
    EXPECT_EQ(walked(80.0), collected(80.0));
    index.rebuild(set);
    EXPECT_FALSE(index.isOutgrown());
    EXPECT_EQ(walked(80.0), collected(80.0));
}

} // namespace
