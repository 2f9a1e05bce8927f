#include "dbfixture.h"
#include "vexdb/dbobject/vexdbentsetiterator.h"

#include <memory>
#include <random>
#include <rapidcheck/gtest.h>
#include <set>

namespace {

class Numbered : public CVexDbObject {
public:
    explicit Numbered(std::uint64_t number) : CVexDbObject(nullptr) { setCreatedTime(number); }
    void makeProperty() override {}
};

/// Objects numbered 1, 2, ... in a set.
class IdSetTest : public ::testing::Test {
protected:
    void fill(std::uint64_t count)
    {
        for (std::uint64_t number = 1; number <= count; ++number) {
            objects.push_back(std::make_unique<Numbered>(number));
            set.insert(id(number));
        }
    }
    CVexDbObjectId id(std::uint64_t number) { return CVexDbObjectId(objects[number - 1].get()); }

    std::vector<std::unique_ptr<Numbered>> objects;
    CVexDbIdSet set;
};

std::vector<std::uint64_t> numbersOf(const CVexDbIdSet& set)
{
    std::vector<std::uint64_t> numbers;
    for (const CVexDbObjectId id : set) {
        numbers.push_back(id.getPObject()->getCreatedTime());
    }
    return numbers;
}

std::uint64_t numberAt(const CVexDbEntSetIterator& iterator)
{
    CVexDbObjectId id;
    return iterator.getEntityId(id) ? id.getPObject()->getCreatedTime() : 0;
}

} // namespace

TEST_F(IdSetTest, AppendingARunOverManyBlocksIsInsertingOneByOne)
{
    fill(3000);
    for (const std::size_t run : {std::size_t{1}, std::size_t{128}, std::size_t{700}}) {
        CVexDbIdSet appended;
        std::vector<CVexDbObject*> part;
        for (const auto& object : objects) {
            part.push_back(object.get());
            if (part.size() == run || object == objects.back()) {
                appended.append(part);
                part.clear();
            }
        }
        EXPECT_TRUE(appended.isSound()) << run;
        EXPECT_EQ(set, appended) << run;
        EXPECT_EQ(set.revision(), appended.revision()) << run;
    }
}

TEST_F(IdSetTest, AppendingWhatDoesNotAscendPutsEachAtItsPlace)
{
    Numbered nine(9), five(5), seven(7), otherSeven(7);
    set.append(std::vector<CVexDbObject*>{&nine, &seven});
    set.append(std::vector<CVexDbObject*>{&five, &otherSeven});
    set.append({});
    EXPECT_TRUE(set.isSound());
    EXPECT_EQ((std::vector<std::uint64_t>{5, 7, 9}), numbersOf(set));
    EXPECT_EQ(&seven, set.find(CVexDbObjectId(&otherSeven)).object());
}

TEST_F(IdSetTest, InsertKeepsCreationOrderAndTheFirstOfEqualNumbers)
{
    Numbered nine(9), five(5), otherFive(5);
    EXPECT_TRUE(set.insert(CVexDbObjectId(&nine)).second);
    EXPECT_TRUE(set.insert(CVexDbObjectId(&five)).second);
    const auto [at, entered] = set.insert(CVexDbObjectId(&otherFive));
    EXPECT_FALSE(entered);
    EXPECT_EQ(&five, at.object());
    EXPECT_EQ((std::vector<std::uint64_t>{5, 9}), numbersOf(set));
}

TEST_F(IdSetTest, BoundsFindTheirPlaceAcrossBlocks)
{
    fill(2000);
    for (std::uint64_t number = 100; number <= 1900; ++number) {
        set.erase(id(number));
    }
    EXPECT_EQ(99u, set.lower_bound(99).object()->getCreatedTime());
    EXPECT_EQ(1901u, set.lower_bound(100).object()->getCreatedTime());
    EXPECT_EQ(1901u, set.upper_bound(99).object()->getCreatedTime());
    EXPECT_TRUE(set.upper_bound(2000) == set.end());
    EXPECT_EQ(1u, set.lower_bound(0).object()->getCreatedTime());
}

TEST_F(IdSetTest, EraseAtAPlaceGivesTheNextOne)
{
    fill(513); // the last one stands in a block of its own
    auto at = set.erase(set.find(id(512)));
    EXPECT_EQ(513u, at.object()->getCreatedTime());
    at = set.erase(at);
    EXPECT_TRUE(at == set.end());
    EXPECT_EQ(511u, set.size());
    EXPECT_TRUE(set.isSound());
}

TEST_F(IdSetTest, CopyMoveAndSwapLeaveSoundSets)
{
    fill(700);
    CVexDbIdSet copy(set);
    EXPECT_TRUE(copy == set);
    copy.erase(id(350));
    EXPECT_FALSE(copy == set);
    CVexDbIdSet taken(std::move(copy));
    EXPECT_EQ(699u, taken.size());
    taken.swap(set);
    EXPECT_EQ(699u, set.size());
    EXPECT_EQ(700u, taken.size());
    EXPECT_TRUE(taken.isSound() && set.isSound());
}

TEST_F(IdSetTest, ReverseWalkCrossesBlocks)
{
    fill(1100);
    auto at = set.end();
    for (std::uint64_t number = 1100; number > 0; --number) {
        --at;
        ASSERT_EQ(number, at.object()->getCreatedTime());
    }
    EXPECT_TRUE(at == set.begin());
}

TEST_F(IdSetTest, MiddleEditsAtAMillionCostABlockNotTheSet)
{
    fill(1'000'000);
    const std::uint64_t before = set.revision();
    for (std::uint64_t number = 2; number <= 1'000'000; number += 50) {
        ASSERT_EQ(1u, set.erase(id(number)));
    }
    for (std::uint64_t number = 2; number <= 1'000'000; number += 50) {
        ASSERT_TRUE(set.insert(id(number)).second);
    }
    EXPECT_EQ(1'000'000u, set.size());
    EXPECT_EQ(before + 40'000u, set.revision());
    EXPECT_TRUE(set.isSound());
}

namespace {

std::vector<std::unique_ptr<Numbered>> numberedObjects(std::uint64_t most)
{
    std::vector<std::unique_ptr<Numbered>> objects;
    for (std::uint64_t number = 0; number <= most; ++number) {
        objects.push_back(std::make_unique<Numbered>(number));
    }
    return objects;
}

} // namespace

RC_GTEST_PROP(IdSetProperty, AnswersAsAnOrderedSetThroughRandomEdits, ())
{
    constexpr std::uint64_t kMost = 3000;
    static const std::vector<std::unique_ptr<Numbered>> objects = numberedObjects(kMost);
    std::mt19937_64 random(*rc::gen::arbitrary<std::uint32_t>());
    const auto insertShare = *rc::gen::inRange(20, 80);
    CVexDbIdSet set;
    std::set<std::uint64_t> model;
    for (int step = 0; step < 6000; ++step) {
        const std::uint64_t number = random() % (kMost + 1);
        const CVexDbObjectId id(objects[number].get());
        if (static_cast<int>(random() % 100) < insertShare) {
            RC_ASSERT(set.insert(id).second == model.insert(number).second);
        } else {
            RC_ASSERT(set.erase(id) == model.erase(number));
        }
        const auto bound = model.lower_bound(number);
        const auto at = set.lower_bound(number);
        RC_ASSERT((at == set.end()) == (bound == model.end()));
        // An if, because the macro evaluates both sides of an "or".
        if (bound != model.end()) {
            RC_ASSERT(at.object()->getCreatedTime() == *bound);
        }
    }
    RC_ASSERT(numbersOf(set) == std::vector<std::uint64_t>(model.begin(), model.end()));
    RC_ASSERT(set.isSound());
}

TEST_F(IdSetTest, NewIteratorStandsAtTheFirst)
{
    fill(3);
    CVexDbEntSetIterator iterator(&set);
    EXPECT_EQ(1u, numberAt(iterator));
    iterator.step(true);
    iterator.start(false);
    EXPECT_EQ(2u, numberAt(iterator)) << "start(false) leaves the position alone";
    iterator.start(true);
    EXPECT_EQ(1u, numberAt(iterator));
}

TEST_F(IdSetTest, DoneIteratorGivesNullAndComesBack)
{
    fill(2);
    CVexDbEntSetIterator iterator(&set);
    iterator.step(true);
    iterator.step(true);
    CVexDbObjectId id(objects[0].get());
    EXPECT_TRUE(iterator.done());
    EXPECT_FALSE(iterator.getEntityId(id));
    EXPECT_TRUE(id.isNull());
    iterator.step(false);
    EXPECT_EQ(2u, numberAt(iterator));
    iterator.step(false);
    iterator.step(false);
    EXPECT_TRUE(iterator.done());
    iterator.step(true);
    EXPECT_EQ(1u, numberAt(iterator));
}

TEST_F(IdSetTest, ErasingTheCurrentOneSkipsAndRepeatsNothing)
{
    fill(1200);
    std::vector<std::uint64_t> seen;
    for (CVexDbEntSetIterator iterator(&set); !iterator.done(); iterator.step(true)) {
        seen.push_back(numberAt(iterator));
        if (seen.back() % 2 == 0) {
            set.erase(id(seen.back()));
        }
    }
    EXPECT_EQ(1200u, seen.size());
    EXPECT_EQ(600u, set.size());
}

TEST_F(IdSetTest, WithoutAStepTheErasedOnesSuccessorIsCurrent)
{
    fill(3);
    CVexDbEntSetIterator iterator(&set);
    iterator.step(true);
    set.erase(id(2));
    EXPECT_EQ(3u, numberAt(iterator));
    set.erase(id(3));
    EXPECT_TRUE(iterator.done());
    iterator.step(false);
    EXPECT_EQ(1u, numberAt(iterator));
}

TEST_F(IdSetTest, InsertedNeighboursAreMetOnlyAhead)
{
    Numbered ten(10), twenty(20), thirty(30), behind(5), ahead(25);
    for (Numbered* object : {&ten, &twenty, &thirty}) {
        set.insert(CVexDbObjectId(object));
    }
    CVexDbEntSetIterator iterator(&set);
    iterator.step(true);
    set.insert(CVexDbObjectId(&behind));
    set.insert(CVexDbObjectId(&ahead));
    EXPECT_EQ(20u, numberAt(iterator));
    iterator.step(true);
    EXPECT_EQ(25u, numberAt(iterator));
}

TEST_F(IdSetTest, ClearingOrReplacingTheSetEndsTheWalkSafely)
{
    fill(600);
    CVexDbEntSetIterator iterator(&set);
    iterator.step(true);
    set.clear();
    EXPECT_TRUE(iterator.done());
    EXPECT_EQ(0u, numberAt(iterator));
    CVexDbIdSet other;
    other.insert(id(1));
    set.insert(id(1));
    iterator.start(true);
    set = other; // as many edits as the set has seen must not pass for none
    EXPECT_EQ(1u, numberAt(iterator));
}

TEST_F(IdSetTest, SeekGoesByTheObjectItself)
{
    fill(3);
    CVexDbEntSetIterator iterator(&set);
    EXPECT_TRUE(iterator.seek(id(3)));
    EXPECT_EQ(3u, numberAt(iterator));
    Numbered sameNumber(2);
    EXPECT_FALSE(iterator.seek(CVexDbObjectId(&sameNumber)));
    EXPECT_TRUE(iterator.done());
    EXPECT_FALSE(iterator.seek(CVexDbObjectId::kNULL));
}

TEST(EntSetIteratorTest, ErasedEntitiesAreGivenOnlyOnRequest)
{
    CVexDbDatabase drawing(false);
    CVexDbLine* line = addLine(drawing);
    line->setErased();
    const CVexDbEntSetIterator iterator(drawing.blocks().getCurrentRecord()->entitySet());
    CVexDbEntity* entity = line;
    EXPECT_FALSE(iterator.getEntity(entity, false));
    EXPECT_EQ(nullptr, entity);
    EXPECT_TRUE(iterator.getEntity(entity, true));
    EXPECT_EQ(line, entity);
}
