#include "tests/vexdb/dbfixture.h"

#include <cstddef>
#include <vector>

// What the tables write into a file, and what they make of one.

namespace {

class TableFileTest : public ::testing::Test {
protected:
    CVexDbDatabase drawing{false};
    HeadlessScope headless;
};

} // namespace

TEST_F(TableFileTest, FreshTablesHaveTheirFramesInAFile)
{
    EXPECT_EQ(1804u, savedBytes(drawing, drawing.colors()).size());
    EXPECT_EQ(1440u, savedBytes(drawing, drawing.linetypes()).size());
    EXPECT_EQ(792u, savedBytes(drawing, drawing.layers()).size());
    EXPECT_EQ(708u, savedBytes(drawing, drawing.textStyles()).size());
    EXPECT_EQ(std::vector<std::byte>(8), savedBytes(drawing, drawing.symbols()));
    EXPECT_EQ(std::vector<std::byte>(332), savedBytes(drawing, drawing.projectInfos()));
    EXPECT_EQ(std::vector<std::byte>(8), savedBytes(drawing, drawing.revisions()));
}

TEST_F(TableFileTest, ErasedRecordIsNeitherCountedNorWritten)
{
    recordNamed(drawing.layers(), L"WeldNum")->setErased();
    const std::vector<std::byte> bytes = savedBytes(drawing, drawing.layers());
    EXPECT_EQ(792u - 197u, bytes.size());
    EXPECT_EQ(std::byte{3}, bytes[0]);
}

TEST_F(TableFileTest, ReadTablesReplaceTheFreshOnesAndWriteTheSameBytes)
{
    addRecord(drawing.layers(), L"Walls")->setColorId(drawing.currentColor());
    const auto colors = savedBytes(drawing, drawing.colors());
    const auto linetypes = savedBytes(drawing, drawing.linetypes());
    const auto layers = savedBytes(drawing, drawing.layers());
    CVexDbDatabase other(false);
    ASSERT_TRUE(readBytes(other, other.colors(), colors));
    ASSERT_TRUE(readBytes(other, other.linetypes(), linetypes));
    ASSERT_TRUE(readBytes(other, other.layers(), layers));
    EXPECT_EQ(colors, savedBytes(other, other.colors()));
    EXPECT_EQ(linetypes, savedBytes(other, other.linetypes()));
    EXPECT_EQ(layers, savedBytes(other, other.layers()));
    EXPECT_TRUE(other.currentColor() == recordNamed(other.colors(), L"256"));
}

TEST_F(TableFileTest, MissingEndWordAndSenselessCountFail)
{
    std::vector<std::byte> bytes = savedBytes(drawing, drawing.textStyles());
    bytes.back() = std::byte{1};
    EXPECT_FALSE(readBytes(drawing, drawing.textStyles(), bytes));
    bytes = savedBytes(drawing, drawing.textStyles());
    bytes[1] = std::byte{0xff};
    EXPECT_FALSE(readBytes(drawing, drawing.textStyles(), bytes));
    EXPECT_EQ(1, drawing.textStyles().size());
}

TEST_F(TableFileTest, RecordOfAnotherClassFails)
{
    std::vector<std::byte> bytes = savedBytes(drawing, drawing.textStyles());
    bytes[2 + 8] = std::byte{48};
    auto* before = drawing.textStyles().getCurrentRecord();
    EXPECT_FALSE(readBytes(drawing, drawing.textStyles(), bytes));
    EXPECT_EQ(before, drawing.textStyles().getCurrentRecord());
}

TEST_F(TableFileTest, EveryTruncationOfALayerTableKeepsTheWholeRecords)
{
    const std::vector<std::byte> whole = savedBytes(drawing, drawing.layers());
    for (std::size_t length = 0; length < whole.size(); length += 7) {
        CVexDbDatabase other(false);
        other.layers().removeRecord(L"WeldNum");
        const std::vector<std::byte> cut(whole.begin(),
                                         whole.begin() + static_cast<std::ptrdiff_t>(length));
        ASSERT_FALSE(readBytes(other, other.layers(), cut)) << length;
        ASSERT_TRUE(other.selfCheck().empty()) << length;
    }
}

TEST_F(TableFileTest, ProjectInfoAndRevisionRecordsAreReadButNotKept)
{
    addRecord(drawing.projectInfos(), L"Client");
    drawing.projectInfos().setFirstText(L"Plant 7");
    addRecord(drawing.revisions(), L"A");
    CVexDbDatabase other(false);
    ASSERT_TRUE(
        readBytes(other, other.projectInfos(), savedBytes(drawing, drawing.projectInfos())));
    ASSERT_TRUE(readBytes(other, other.revisions(), savedBytes(drawing, drawing.revisions())));
    EXPECT_EQ(0, other.projectInfos().size());
    EXPECT_EQ(CString(L"Plant 7"), other.projectInfos().firstText());
    EXPECT_EQ(1u, other.projectInfos().GetNextName());
    EXPECT_EQ(0, other.revisions().size());
    EXPECT_EQ(1u, other.revisions().GetNextName());
}
