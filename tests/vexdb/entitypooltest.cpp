#include "dbfixture.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbpoint.h"

#include <algorithm>
#include <memory>
#include <random>

namespace {

bool areApart(std::vector<std::unique_ptr<CVexDbEntity>>& entities)
{
    std::vector<std::pair<const char*, std::size_t>> places;
    for (const auto& entity : entities) {
        const bool isLine = entity->classType() == VexDb::kLine;
        places.emplace_back(reinterpret_cast<const char*>(entity.get()),
                            isLine ? sizeof(CVexDbLine) : sizeof(CVexDbPoint));
    }
    std::ranges::sort(places);
    return std::ranges::adjacent_find(places, [](const auto& a, const auto& b) {
               return a.first + a.second > b.first;
           }) == places.end();
}

} // namespace

TEST(EntityPoolTest, EntitiesThatComeAndGoNeverShareMemory)
{
    std::mt19937 random(5);
    std::vector<std::unique_ptr<CVexDbEntity>> living;
    for (int step = 0; step < 20000; ++step) {
        if (living.empty() || random() % 5 < 3) {
            const double place = step;
            if (random() % 2 == 0) {
                living.push_back(
                    std::make_unique<CVexDbLine>(CVexGePoint2d(place, 0), CVexGePoint2d(0, place)));
            } else {
                living.push_back(std::make_unique<CVexDbPoint>(nullptr));
            }
        } else {
            std::swap(living[random() % living.size()], living.back());
            living.pop_back();
        }
    }
    EXPECT_GT(living.size(), 3000u);
    EXPECT_TRUE(areApart(living));
}

TEST(EntityPoolTest, AnEntityKeepsWhatItHoldsWhenAllOthersAreGone)
{
    std::vector<std::unique_ptr<CVexDbLine>> lines;
    for (int i = 0; i < 10000; ++i) {
        lines.push_back(std::make_unique<CVexDbLine>(CVexGePoint2d(i, 1), CVexGePoint2d(2, i)));
    }
    const std::unique_ptr<CVexDbLine> kept = std::move(lines[7000]);
    lines.clear();
    for (int i = 0; i < 10000; ++i) {
        lines.push_back(std::make_unique<CVexDbLine>(CVexGePoint2d(-i, 3), CVexGePoint2d(4, i)));
    }
    EXPECT_EQ(7000.0, kept->StartPoint().x);
    EXPECT_EQ(7000.0, kept->EndPoint().y);
    EXPECT_EQ(-9999.0, lines.back()->StartPoint().x);
}

TEST(EntityPoolTest, AfterTheLastOneItBeginsAnew)
{
    for (int round = 0; round < 3; ++round) {
        std::vector<std::unique_ptr<CVexDbLine>> lines;
        for (int i = 0; i < 5000; ++i) {
            lines.push_back(
                std::make_unique<CVexDbLine>(CVexGePoint2d(i, round), CVexGePoint2d(1, 1)));
        }
        EXPECT_TRUE(std::ranges::all_of(lines, [&](const auto& line) {
            return line->StartPoint().y == round && line->EndPoint().x == 1.0;
        }));
    }
}
