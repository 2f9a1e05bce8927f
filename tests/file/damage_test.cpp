#include "platform/headless/vexrecordingdc.h"
#include "tests/file/allocationwatch.h"
#include "tests/file/golden.h"
#include "tests/file/sampledrawing.h"

#include <string>
#include <vector>

namespace {

// Where the numbers of a file end and its picture begins and ends.
constexpr std::size_t kThumbnailAt = 0x0506;
constexpr std::size_t kThumbnailEnd = 0x543e;
constexpr std::size_t kTablesAt = 0x59f6;

class DamageTest : public FileTest {
protected:
    DamageTest()
    {
        CVexDbDatabase drawing(true);
        fillSample(drawing);
        whole = saved(drawing);
    }
    /// Uses a drawing as a host does that opens it as a recovered copy.
    void use(CVexDbDatabase& drawing)
    {
        CVexRecordingDC dc;
        CVexGePoint2d a(0.0, 0.0);
        CVexGePoint2d b(100.0, 100.0);
        for (CVexDbEntity* entity : entitiesOf(drawing)) {
            entity->Draw(&dc);
            entity->checkInsideOrCross(a, b);
            entity->getProperty();
        }
        EXPECT_FALSE(saved(drawing).empty());
    }

    std::vector<std::byte> whole;
};

TEST_F(DamageTest, EveryTruncationIsReportedAndLeavesAWholeDatabase)
{
    // Inside the fixed blocks and the picture nothing changes from byte to byte.
    for (std::size_t length = 0; length < whole.size(); length += length < 0x5900 ? 251 : 1) {
        CVexDbDatabase drawing(false);
        machine.reports.clear();
        const std::vector<std::byte> part(whole.begin(),
                                          whole.begin() + static_cast<std::ptrdiff_t>(length));
        ASSERT_FALSE(read(drawing, part)) << length;
        ASSERT_EQ(1u, machine.reports.size()) << length;
        ASSERT_EQ("", toText(drawing.selfCheck())) << length;
        ASSERT_EQ(nullptr, drawing.loading());
    }
}

TEST_F(DamageTest, MessageTellsTheFileThePlaceAndWhatIsKept)
{
    CVexDbDatabase drawing(false);
    whole.resize(whole.size() - 3); // into the count of the last block's attribute definitions
    EXPECT_FALSE(read(drawing, whole));
    const std::string at = std::to_string(whole.size() - 3);
    ASSERT_EQ(1u, machine.reports.size());
    EXPECT_EQ("The drawing '/home/mara/pipes/plan.zpl' is damaged at byte " + at +
                  ": The file ends in the block table. (30 objects were whole)",
              machine.reports[0].utf8());
    // 9 colours, 4 linetypes, 5 layers, a text style, a symbol, 3 blocks, 7 entities.
    EXPECT_EQ(30u, drawing.lastReport().objectsKept);
    EXPECT_EQ(4u, entitiesOf(drawing).size());
}

TEST_F(DamageTest, WholeEntitiesBeforeTheEndAreKept)
{
    CVexDbDatabase one(false);
    auto* line = addTo(one, new CVexDbLine({0.0, 0.0}, {1.0, 0.0}));
    addTo(one, new CVexDbLine({0.0, 0.0}, {2.0, 0.0}));
    std::vector<std::byte> file = saved(one);
    file.resize(file.size() - 20); // the second line lacks its last bytes
    CVexDbDatabase drawing(false);
    EXPECT_FALSE(read(drawing, file));
    ASSERT_EQ(1u, entitiesOf(drawing).size());
    EXPECT_EQ(line->getCreatedTime(), entitiesOf(drawing)[0]->getCreatedTime());
    EXPECT_WHOLE(drawing);
}

TEST_F(DamageTest, BytesBehindTheEndAreReported)
{
    whole.push_back(std::byte{0});
    CVexDbDatabase drawing(false);
    EXPECT_FALSE(read(drawing, whole));
    EXPECT_EQ(whole.size() - 1, drawing.lastReport().faults.at(0).offset);
    EXPECT_EQ(4u, entitiesOf(drawing).size());
    EXPECT_WHOLE(drawing);
}

class FlipTest : public DamageTest, public testing::WithParamInterface<int> {};

TEST_P(FlipTest, NoFlippedByteCrashesHangsOrTakesTooMuchMemory)
{
    const auto flip = static_cast<std::byte>(GetParam());
    const std::size_t bound = (std::size_t{64} << 20) + 40 * whole.size();
    for (std::size_t at = 0; at < whole.size(); ++at) {
        if (at >= kThumbnailAt && at < kThumbnailEnd && at % 997 != 0) {
            continue; // the picture is not looked at
        }
        std::vector<std::byte> damaged = whole;
        damaged[at] ^= flip;
        machine.reports.clear();
        const CAllocationWatch watch;
        CVexDbDatabase drawing(false);
        const bool good = read(drawing, damaged);
        ASSERT_LE(CAllocationWatch::peak(), bound) << at;
        ASSERT_EQ(good ? 0u : 1u, machine.reports.size()) << at;
        ASSERT_EQ("", toText(drawing.selfCheck())) << at;
        use(drawing);
    }
}

INSTANTIATE_TEST_SUITE_P(AllBitsAndTheLowest, FlipTest, testing::Values(0xff, 0x01));

TEST_F(DamageTest, NoLargeAllocationIsMadeWithoutAsking)
{
    machine.mostBytes = 1 << 16;
    CVexDbDatabase drawing(false);
    EXPECT_TRUE(read(drawing, whole));
}

// Hand-made files that say what is not so.

class NonsenseTest : public FileTest {
protected:
    /// Reads a fresh drawing's file with these entities; the first fault in words.
    std::string faultOf(std::uint32_t count, const Bytes& entities)
    {
        const bool good = read(again, goldenDrawing(drawing, count, entities));
        EXPECT_WHOLE(again);
        return good ? "none" : again.lastReport().faults.at(0).what.utf8();
    }
    Bytes line(std::uint64_t number)
    {
        Bytes record = goldenEntity(drawing, number, 6);
        return record.point(0.0, 0.0).point(1.0, 0.0);
    }

    CVexDbDatabase drawing{false};
    CVexDbDatabase again{false};
};

TEST_F(NonsenseTest, CountThatTheFileHasNoRoomForIsRefusedBeforeAnythingIsMade)
{
    EXPECT_EQ("4294967295 entities of block 'MODEL_SPACE' do not fit into the file.",
              faultOf(0xffffffff, Bytes()));
}

TEST_F(NonsenseTest, ClassThatCannotBeMadeTakesNothingAndIsReported)
{
    Bytes entities = line(0x50000);
    entities.u32(11);          // a cobweb's class, and nothing of a cobweb
    entities << line(0x50001); // so the reader is in step again here
    EXPECT_EQ("Entities of class 11 cannot be read.", faultOf(3, entities));
    EXPECT_EQ(2u, entitiesOf(again).size());
    EXPECT_EQ(1u, again.lastReport().faultCount);
}

TEST_F(NonsenseTest, EntityOfAnotherClassThanAnnouncedIsDropped)
{
    Bytes entities;
    entities.u32(6).object(0x50000, 15, 4).u64(0).u64(0).i32(256).i32(-1).u16(0);
    entities.point(0.0, 0.0).point(1.0, 0.0) << line(0x50001);
    EXPECT_EQ("An entity's class differs from the one announced.", faultOf(2, entities));
    ASSERT_EQ(1u, entitiesOf(again).size());
    EXPECT_EQ(0x50001u, entitiesOf(again)[0]->getCreatedTime());
}

TEST_F(NonsenseTest, LineThatCallsItselfADimensionIsMadeALineAgain)
{
    Bytes entities = goldenEntity(drawing, 0x50000, 6, 0x94);
    entities.point(0.0, 0.0).point(1.0, 0.0);
    EXPECT_EQ("An entity's status does not fit its class.", faultOf(1, entities));
    ASSERT_EQ(1u, entitiesOf(again).size());
    EXPECT_FALSE(entitiesOf(again)[0]->isDimension());
    EXPECT_TRUE(entitiesOf(again)[0]->isEntity());
}

TEST_F(NonsenseTest, AttributeDefinitionsEndTheReading)
{
    Bytes file;
    file << goldenHead() << goldenTables(drawing);
    file.u16(1).object(numberOf(drawing.blocks(), L"MODEL_SPACE"), 42, 1).text("MODEL_SPACE", 81);
    file.u32(1) << line(0x50000);
    file.u32(1).u32(15).zeros(100).u16(0); // the class in four bytes, of which a reader takes two
    EXPECT_FALSE(read(again, file.all()));
    EXPECT_EQ("1 attribute definitions of block 'MODEL_SPACE' cannot be read.",
              again.lastReport().faults.at(0).what.utf8());
    EXPECT_EQ(1u, entitiesOf(again).size());
    EXPECT_WHOLE(again);
}

TEST_F(NonsenseTest, BlockOfAnotherClassIsABlockAgainEvenWhenTheReadingEndsInIt)
{
    Bytes file;
    file << goldenHead() << goldenTables(drawing);
    file.u16(1).object(numberOf(drawing.blocks(), L"MODEL_SPACE"), 6, 1).text("MODEL_SPACE", 81);
    file.u32(0).u32(1); // the attribute definition that it counts is not there
    EXPECT_FALSE(read(again, file.all()));
    EXPECT_EQ("A block has the class of something else.",
              again.lastReport().faults.at(0).what.utf8());
    EXPECT_EQ(VexDb::kBlockTableRecord, again.blocks().getCurrentRecord()->classType());
    EXPECT_WHOLE(again);
}

TEST_F(NonsenseTest, UnknownReferencesFallBackAndAreReported)
{
    Bytes entities;
    entities.u32(6).object(0x50000, 6, 4).u64(0xdead).u64(0xbeef).i32(99).i32(-1).u16(0);
    entities.point(0.0, 0.0).point(1.0, 0.0);
    EXPECT_EQ("The file holds no layer with the identifier 57005.", faultOf(1, entities));
    ASSERT_EQ(1u, entitiesOf(again).size());
    CVexDbEntity& entity = *entitiesOf(again)[0];
    EXPECT_EQ(L"0", entity.Layer());
    EXPECT_EQ(L"ByLayer",
              static_cast<CVexDbTableRecord*>(entity.LineTypeId().getPObject())->getName());
    EXPECT_EQ(256, entity.Color()->colorIndex());
    EXPECT_EQ(3u, again.lastReport().faultCount);
}

TEST_F(NonsenseTest, RecordMarkedAsErasedIsReportedAndKept)
{
    // Left erased it would not be saved again, and the layers that refer to it would be torn.
    std::vector<std::byte> file = goldenDrawing(drawing, 0, Bytes());
    file[kTablesAt + 2 + 12] = std::byte{2}; // the status of the first colour
    EXPECT_FALSE(read(again, file));
    EXPECT_EQ("A record is marked as erased.", again.lastReport().faults.at(0).what.utf8());
    CVexDbTableRecord* color = nullptr;
    ASSERT_TRUE(again.colors().CVexDbTable::getRecord(L"0", color, false));
    EXPECT_FALSE(color->isErased());
}

TEST_F(NonsenseTest, NullReferencesFallBackWithoutAFault)
{
    Bytes entities;
    entities.u32(6).object(0x50000, 6, 4).u64(0).u64(0).i32(256).i32(-1).u16(0);
    entities.point(0.0, 0.0).point(1.0, 0.0);
    EXPECT_EQ("none", faultOf(1, entities));
    EXPECT_EQ(L"0", entitiesOf(again).at(0)->Layer());
}

TEST_F(NonsenseTest, ExtendedDataLongerThanTheFileIsRefused)
{
    Bytes entities;
    entities.u32(6).object(0x50000, 6, 4).u64(0).u64(0).i32(256).i32(-1).u16(65535);
    EXPECT_NE("none", faultOf(1, entities));
    EXPECT_EQ(0u, entitiesOf(again).size());
}

TEST_F(NonsenseTest, LongRunsOfNonsenseAreReportedOnce)
{
    Bytes entities;
    for (int i = 0; i < 5000; ++i) {
        entities.u32(99);
    }
    EXPECT_EQ("Entities of class 99 cannot be read.", faultOf(5000, entities));
    EXPECT_EQ(1u, again.lastReport().faultCount);
}

TEST_F(NonsenseTest, FileThatIsNotOpenForReadingIsRefused)
{
    CMemFile file{CString(L"x.zpl")};
    CArchive archive(&file, CArchive::load);
    EXPECT_FALSE(again.Read(archive));
    CArchive none(nullptr, CArchive::load);
    EXPECT_FALSE(again.Read(none));
    EXPECT_EQ(2u, machine.reports.size());
    EXPECT_WHOLE(again);
}

} // namespace
