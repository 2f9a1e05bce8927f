#include "tests/file/golden.h"

namespace {

// Numbers that a file gives its objects, and what stands in the drawing afterwards.
class HardNumberTest : public FileTest {
protected:
    Bytes line(std::uint64_t number, double length)
    {
        Bytes record = goldenEntity(drawing, number, 6);
        return record.point(0.0, 0.0).point(length, 0.0);
    }
    /// Reads the lines; the lengths of what comes back, in drawing order.
    std::vector<double> lengths(std::uint32_t count, const Bytes& entities)
    {
        EXPECT_TRUE(read(again, goldenDrawing(drawing, count, entities)));
        EXPECT_WHOLE(again);
        std::vector<double> found;
        for (CVexDbEntity* entity : entitiesOf(again)) {
            found.push_back(static_cast<CVexDbLine*>(entity)->EndPoint().x);
        }
        return found;
    }

    CVexDbDatabase drawing{false};
    CVexDbDatabase again{false};
};

TEST_F(HardNumberTest, CounterStandsAboveEveryNumberRead)
{
    EXPECT_EQ((std::vector{1.0}), lengths(1, line(0x7000000000000000, 1.0)));
    EXPECT_EQ(0x7000000000000001u, CVexDbObject::NextHardID);
    EXPECT_EQ(0u, again.lastReport().numbersReplaced);
    CVexDbLine later(&again);
    EXPECT_EQ(0x7000000000000001u, later.getCreatedTime());
}

TEST_F(HardNumberTest, CounterIsNotPutBack)
{
    const std::uint64_t before = CVexDbObject::NextHardID;
    lengths(1, line(0x10, 1.0));
    EXPECT_GT(CVexDbObject::NextHardID, before);
}

TEST_F(HardNumberTest, RepeatedNumberIsReplacedAndItsEntityComesLast)
{
    Bytes entities = line(0x50000, 1.0);
    entities << line(0x50000, 2.0) << line(0x50001, 3.0);
    EXPECT_EQ((std::vector{1.0, 3.0, 2.0}), lengths(3, entities));
    EXPECT_EQ(1u, again.lastReport().numbersReplaced);
    EXPECT_EQ(0x50000u, entitiesOf(again)[0]->getCreatedTime());
    EXPECT_EQ(0x50002u, entitiesOf(again)[2]->getCreatedTime());
}

TEST_F(HardNumberTest, ZeroAndNumbersBeyondTheSignAreReplaced)
{
    Bytes entities = line(0, 1.0);
    entities << line(0x8000000000000000, 2.0) << line(0xffffffffffffffff, 3.0);
    entities << line(0x7000, 4.0);
    EXPECT_EQ((std::vector{4.0, 1.0, 2.0, 3.0}), lengths(4, entities));
    EXPECT_EQ(3u, again.lastReport().numbersReplaced);
    EXPECT_LT(CVexDbObject::NextHardID, 0x8000000000000000u);
}

TEST_F(HardNumberTest, NumbersOutOfOrderKeepTheirEntitiesInNumberOrder)
{
    Bytes entities = line(0x50002, 1.0);
    entities << line(0x50000, 2.0) << line(0x50001, 3.0);
    EXPECT_EQ((std::vector{2.0, 3.0, 1.0}), lengths(3, entities));
    EXPECT_EQ(0u, again.lastReport().numbersReplaced);
}

TEST_F(HardNumberTest, NumberRepeatedInAnotherBlockIsReplacedToo)
{
    // The sets of users of layers, linetypes and colours span all blocks.
    Bytes file;
    file << goldenHead() << goldenTables(drawing);
    file.u16(2).object(0x40000, 42, 1).text("A", 81).u32(1) << line(0x50000, 1.0);
    file.u32(0).object(0x40001, 42, 1).text("MODEL_SPACE", 81).u32(1) << line(0x50000, 2.0);
    file.u32(0).u16(0);
    ASSERT_TRUE(read(again, file.all()));
    EXPECT_WHOLE(again);
    EXPECT_EQ(1u, again.lastReport().numbersReplaced);
    ASSERT_EQ(1u, entitiesOf(again).size());
    ASSERT_EQ(1u, entitiesOf(again, L"A").size());
    EXPECT_EQ(0x50000u, entitiesOf(again, L"A")[0]->getCreatedTime());
}

TEST_F(HardNumberTest, ReferencesGoToTheFirstHolderOfARecordsNumber)
{
    Bytes file;
    file << goldenHead().u16(2);
    file.object(77, 45, 0).text("1", 81).zeros(20).u32(0x0000ff).u8(0);
    file.object(77, 45, 0).text("2", 81).zeros(20).u32(0x00ffff).u8(0);
    file.u16(0).u16(1);
    file.object(0x9000000000000000, 47, 0).text("CONTINUOUS", 81).u32(0).f64(0).text("", 81);
    file.u16(0).u16(1);
    file.object(5, 46, 0).text("0", 81).u16(0).u64(77).u64(0x9000000000000000).i32(0);
    file.u16(0).u16(0).u16(0).u16(0).u32(0).u16(0).zeros(324).u16(0).u32(0).u16(0);
    file.u16(0).u32(0).u16(0).u16(0).u16(0);
    ASSERT_TRUE(read(again, file.all()));
    EXPECT_WHOLE(again);
    EXPECT_EQ(2u, again.lastReport().numbersReplaced);
    const auto& layer = *again.layers().getCurrentRecord();
    EXPECT_EQ(5u, layer.getCreatedTime());
    EXPECT_EQ(L"1", static_cast<CVexDbTableRecord*>(layer.getColorId().getPObject())->getName());
    EXPECT_EQ(L"CONTINUOUS",
              static_cast<CVexDbTableRecord*>(layer.getLinetypeId().getPObject())->getName());
}

TEST_F(HardNumberTest, DefaultThatStaysGivesWayToTheFilesNumber)
{
    // The file's layer has the number that the fresh drawing gave to its own layer "WeldNum".
    const std::uint64_t number = numberOf(again.layers(), L"WeldNum");
    Bytes file;
    file << goldenHead().u16(0).u16(0).u16(0).u16(0).u16(1);
    file.object(number, 46, 0).text("Steam", 81).u16(0).u64(0).u64(0).i32(0);
    file.u16(0).u16(0).u16(0).u16(0).u32(0).u16(0).zeros(324).u16(0).u32(0).u16(0);
    file.u16(0).u32(0).u16(0).u16(0).u16(0);
    ASSERT_TRUE(read(again, file.all()));
    EXPECT_WHOLE(again);
    EXPECT_EQ(number, numberOf(again.layers(), L"Steam"));
    EXPECT_NE(number, numberOf(again.layers(), L"WeldNum"));
}

} // namespace
