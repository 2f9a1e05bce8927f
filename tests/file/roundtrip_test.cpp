#include "tests/file/sampledrawing.h"
#include "tests/platform/scratchfolder.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

namespace {

using RoundTripTest = FileTest;

std::vector<std::string> namesOf(const CVexDbTable& table)
{
    std::vector<std::string> names;
    for (const auto& [name, record] : table.records()) {
        names.push_back(name.utf8());
    }
    return names;
}

TEST_F(RoundTripTest, FreshDrawingComesBackWithTheSameTables)
{
    CVexDbDatabase drawing(true);
    CVexDbDatabase again(false);
    ASSERT_TRUE(read(again, saved(drawing)));
    EXPECT_EQ(namesOf(drawing.colors()), namesOf(again.colors()));
    EXPECT_EQ(namesOf(drawing.layers()), namesOf(again.layers()));
    EXPECT_EQ(namesOf(drawing.linetypes()), namesOf(again.linetypes()));
    EXPECT_EQ(namesOf(drawing.textStyles()), namesOf(again.textStyles()));
    EXPECT_EQ(namesOf(drawing.blocks()), namesOf(again.blocks()));
    EXPECT_WHOLE(again);
}

TEST_F(RoundTripTest, SavingWhatWasReadGivesTheSameBytes)
{
    CVexDbDatabase drawing(true);
    fillSample(drawing);
    EXPECT_WHOLE(drawing);
    const std::vector<std::byte> first = saved(drawing);
    ASSERT_FALSE(first.empty());
    CVexDbDatabase again(false);
    ASSERT_TRUE(read(again, first));
    EXPECT_WHOLE(again);
    EXPECT_SAME_BYTES(first, saved(again));
}

TEST_F(RoundTripTest, TwoSavesInARowGiveTheSameBytes)
{
    CVexDbDatabase drawing(true);
    fillSample(drawing);
    const std::vector<std::byte> first = saved(drawing);
    EXPECT_SAME_BYTES(first, saved(drawing));
}

TEST_F(RoundTripTest, ObjectsKeepTheirNumbersAndSoTheirOrder)
{
    CVexDbDatabase drawing(true);
    fillSample(drawing);
    std::vector<std::uint64_t> before;
    for (CVexDbEntity* entity : entitiesOf(drawing)) {
        if (!entity->isErased()) {
            before.push_back(entity->getCreatedTime());
        }
    }
    CVexDbDatabase again(false);
    ASSERT_TRUE(read(again, saved(drawing)));
    std::vector<std::uint64_t> after;
    for (CVexDbEntity* entity : entitiesOf(again)) {
        after.push_back(entity->getCreatedTime());
    }
    EXPECT_EQ(before, after);
    EXPECT_EQ(numberOf(drawing.layers(), L"0"), numberOf(again.layers(), L"0"));
}

TEST_F(RoundTripTest, ErasedEntitiesAreLeftOut)
{
    CVexDbDatabase drawing(false);
    addTo(drawing, new CVexDbLine({0.0, 0.0}, {1.0, 0.0}))->setErased();
    auto* kept = addTo(drawing, new CVexDbLine({0.0, 0.0}, {2.0, 0.0}));
    CVexDbDatabase again(false);
    ASSERT_TRUE(read(again, saved(drawing)));
    ASSERT_EQ(1u, entitiesOf(again).size());
    EXPECT_EQ(kept->getCreatedTime(), entitiesOf(again)[0]->getCreatedTime());
    EXPECT_EQ(2u, entitiesOf(drawing).size()); // where undo can still bring it back
}

TEST_F(RoundTripTest, ErasedEntitiesOfALargeDrawingAreNotCountedThoughTheCountIsLongWritten)
{
    CVexDbDatabase drawing(false);
    constexpr int kLines = 4000; // 83 bytes each: more than a file's buffer
    for (int i = 0; i < kLines; ++i) {
        auto* line = addTo(drawing, new CVexDbLine({0.0, 0.0}, {1.0 + i, 0.0}));
        if (i % 1000 == 999) {
            line->setErased();
        }
    }
    const CScratchFolder folder;
    ASSERT_TRUE(drawing.SaveAs(wide(folder / "plan.zpl")));
    CVexDbDatabase again(false);
    CFile file;
    ASSERT_TRUE(file.Open(wide(folder / "plan.zpl"), CFile::modeRead));
    CArchive archive(&file, CArchive::load);
    EXPECT_TRUE(again.Read(archive));
    EXPECT_EQ(3996u, entitiesOf(again).size());
}

TEST_F(RoundTripTest, RelativePathStillGivesTheFolderInTheFile)
{
    const CScratchFolder folder;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder / ".");
    const std::filesystem::path here = std::filesystem::current_path();
    CVexDbDatabase drawing(false);
    const bool stands = drawing.SaveAs(L"plan.zpl");
    std::filesystem::current_path(before);
    EXPECT_TRUE(stands);
    EXPECT_EQ(here.string(), drawing.FilePath().utf8());
    EXPECT_STREQ(L"plan", drawing.FileInfo()->m_szTitle);
}

TEST_F(RoundTripTest, ErasedRecordsAreLeftOutAndNotCounted)
{
    CVexDbDatabase drawing(false);
    CVexDbTableRecord* record = nullptr;
    ASSERT_TRUE(drawing.layers().CVexDbTable::getRecord(L"WeldNum", record, false));
    const std::size_t whole = saved(drawing).size();
    record->setErased();
    EXPECT_EQ(whole - (13 + 162 + 22), saved(drawing).size());
}

TEST_F(RoundTripTest, AuthorOfTheFirstSaveStaysAndTheDateIsOfTheLast)
{
    CVexDbDatabase drawing(false);
    ASSERT_FALSE(saved(drawing).empty());
    machine.user = L"jonas";
    machine.computer = L"DESK-8";
    machine.clock = {2027, 12, 5, 1, 2, 3, 4};
    ASSERT_FALSE(saved(drawing).empty());
    EXPECT_EQ(L"mara", drawing.Author());
    EXPECT_STREQ(L"DESK-7", drawing.FileInfo()->m_szComputer);
    EXPECT_EQ(L"2027-12-05", drawing.Date());
}

struct PathRow {
    const char* name;
    const wchar_t* path;
    const wchar_t* folder;
    const wchar_t* title;
};

class PathTest : public FileTest, public testing::WithParamInterface<PathRow> {};

TEST_P(PathTest, GivesFolderAndTitle)
{
    CVexDbDatabase drawing(false);
    ASSERT_FALSE(saved(drawing, GetParam().path).empty());
    EXPECT_EQ(GetParam().folder, drawing.FilePath());
    EXPECT_STREQ(GetParam().title, drawing.FileInfo()->m_szTitle);
}

INSTANTIATE_TEST_SUITE_P(
    All, PathTest,
    testing::Values(PathRow{"Slashes", L"/a/b/plan.zpl", L"/a/b", L"plan"},
                    PathRow{"Backslashes", L"C:\\a\\plan.zpl", L"C:\\a", L"plan"},
                    PathRow{"Mixed", L"/a/b\\plan.zpl", L"/a/b", L"plan"},
                    PathRow{"NoFolder", L"plan.zpl", L"", L"plan"},
                    PathRow{"Root", L"/plan.zpl", L"", L"plan"},
                    PathRow{"NoPoint", L"/a/plan", L"/a", L"plan"},
                    PathRow{"PointInFolder", L"/a.b/plan", L"/a.b", L"plan"},
                    PathRow{"TwoPoints", L"/a/plan.v2.zpl", L"/a", L"plan.v2"},
                    PathRow{"LongTitle", L"/a/0123456789012345678901234567890123.zpl", L"/a",
                            L"01234567890123456789012345678901"},
                    // 31 units and a character of two: it does not fit, and is not torn.
                    PathRow{"TornCharacter", L"/a/0123456789012345678901234567890\U0001f600.zpl",
                            L"/a", L"0123456789012345678901234567890"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(RoundTripTest, NamesSortBySixteenBitUnits)
{
    CVexDbDatabase drawing(false);
    // U+1F600 is d83d de00 in 16-bit units, below U+FF21 although it is the larger character.
    for (const wchar_t* name : {L"z\xff21", L"z\x1f600", L"z"}) {
        auto* layer = new CVexDbLayerTableRecord(&drawing);
        layer->setName(CString(name));
        drawing.layers().add(layer);
    }
    const std::vector<std::byte> bytes = saved(drawing);
    const auto positionOf = [&](std::initializer_list<unsigned> units) {
        Bytes name;
        for (const unsigned unit : units) {
            name.u16(unit);
        }
        name.zeros(100);
        const auto& wanted = name.all();
        return std::search(bytes.begin(), bytes.end(), wanted.begin(), wanted.end()) -
               bytes.begin();
    };
    EXPECT_LT(positionOf({'z', 0xd83d, 0xde00}), positionOf({'z', 0xff21}));
    CVexDbDatabase again(false);
    ASSERT_TRUE(read(again, bytes));
    EXPECT_SAME_BYTES(bytes, saved(again));
}

// The space that a file asks for: of it, of the fresh drawing that reads it, or of neither.
using SpaceCase = std::tuple<int, bool, bool>;

class SpaceTest : public FileTest, public testing::WithParamInterface<SpaceCase> {};

TEST_P(SpaceTest, IsSelectedWhenItIsThere)
{
    const auto [space, fileHasPaper, readerHasPaper] = GetParam();
    CVexDbDatabase drawing(fileHasPaper);
    drawing.settings().m_nCurrentSpace = static_cast<std::uint16_t>(space);
    CVexDbDatabase again(readerHasPaper);
    ASSERT_TRUE(read(again, saved(drawing)));
    // Blocks come in key order, so the block read last is the paper space if there is one.
    CString expected = fileHasPaper ? L"PAPER_SPACE" : L"MODEL_SPACE";
    if (space == 0) {
        expected = L"MODEL_SPACE";
    } else if (space == 1 && readerHasPaper) {
        expected = L"PAPER_SPACE";
    }
    EXPECT_EQ(expected, again.blocks().getCurrentRecord()->getName());
    EXPECT_EQ(expected, again.displays().getCurrentRecord()->getName());
}

INSTANTIATE_TEST_SUITE_P(All, SpaceTest,
                         testing::Combine(testing::Values(0, 1, 2, 65535), testing::Bool(),
                                          testing::Bool()));

TEST_F(RoundTripTest, CurrentRecordsComeBack)
{
    CVexDbDatabase drawing(false);
    const auto idOf = [](CVexDbTable& table, const wchar_t* name) {
        CVexDbObjectId id;
        table.getAt(name, id, false);
        return id;
    };
    drawing.setCurrentLayer(idOf(drawing.layers(), L"PipeLine"));
    drawing.setCurrentLinetype(idOf(drawing.linetypes(), L"Hidden"));
    drawing.setCurrentColor(idOf(drawing.colors(), L"4"));
    CVexDbDatabase again(false);
    ASSERT_TRUE(read(again, saved(drawing)));
    EXPECT_EQ(again.currentLayer(), idOf(again.layers(), L"PipeLine"));
    EXPECT_EQ(L"PipeLine", again.layers().getCurrentRecord()->getName());
    EXPECT_EQ(again.currentLinetype(), idOf(again.linetypes(), L"Hidden"));
    EXPECT_EQ(again.currentColor(), idOf(again.colors(), L"4"));
    EXPECT_EQ(again.currentTextStyle(), idOf(again.textStyles(), L"STANDARD"));
}

// Overwrites part of the settings block of a saved drawing.
void patch(std::vector<std::byte>& file, std::size_t offset, const Bytes& bytes)
{
    std::copy(bytes.all().begin(), bytes.all().end(),
              file.begin() + static_cast<std::ptrdiff_t>(0x543e + offset));
}

TEST_F(RoundTripTest, UnknownCurrentNamesLeaveTheDefaults)
{
    CVexDbDatabase drawing(false);
    std::vector<std::byte> file = saved(drawing);
    patch(file, 0x0c0, Bytes().u16(99));
    patch(file, 0x0c8, Bytes().text("gone", 81));
    patch(file, 0x16a, Bytes().text("gone", 81));
    CVexDbDatabase again(false);
    EXPECT_TRUE(read(again, file));
    EXPECT_EQ(256, again.colors().getCurrentRecord()->colorIndex());
    EXPECT_EQ(L"0", again.layers().getCurrentRecord()->getName());
    EXPECT_EQ(L"ByLayer", again.linetypes().getCurrentRecord()->getName());
    EXPECT_WHOLE(again);
}

TEST_F(RoundTripTest, DefaultsThatTheFileLacksStay)
{
    CVexDbDatabase drawing(false);
    ASSERT_TRUE(drawing.layers().removeRecord(L"WeldNum"));
    CVexDbDatabase again(false);
    ASSERT_TRUE(read(again, saved(drawing)));
    EXPECT_TRUE(again.layers().has(L"WeldNum"));
    EXPECT_WHOLE(again);
}

TEST_F(RoundTripTest, ProjectTextsComeBackAndProjectRecordsDoNot)
{
    CVexDbDatabase drawing(false);
    drawing.projectInfos().setFirstText(L"Plant 4");
    drawing.projectInfos().setSecondText(L"Steam");
    auto* info = new CVexDbProjectInfoTableRecord(&drawing);
    info->setName(CString(L"*S0"));
    drawing.projectInfos().add(info);
    auto* revision = new CVexDbRevisionTableRecord(&drawing);
    revision->setName(CString(L"*S0"));
    drawing.revisions().add(revision);
    CVexDbDatabase again(false);
    ASSERT_TRUE(read(again, saved(drawing)));
    EXPECT_EQ(L"Plant 4", again.projectInfos().firstText());
    EXPECT_EQ(L"Steam", again.projectInfos().secondText());
    EXPECT_EQ(0, again.projectInfos().size());
    EXPECT_EQ(0, again.revisions().size());
    EXPECT_EQ(drawing.projectInfos().GetNextName(), again.projectInfos().GetNextName());
    EXPECT_EQ(drawing.revisions().GetNextName(), again.revisions().GetNextName());
}

TEST_F(RoundTripTest, EachViewStartsAtTheSavedWindow)
{
    CVexDbDatabase drawing(true);
    drawing.settings().m_ptViewMin.set(10.0, 20.0);
    drawing.settings().m_ptViewMax.set(110.0, 95.0);
    CVexDbDatabase again(false);
    ASSERT_TRUE(read(again, saved(drawing)));
    for (const wchar_t* space : {L"MODEL_SPACE", L"PAPER_SPACE"}) {
        CVexDbDisplayTableRecord* view = nullptr;
        ASSERT_TRUE(again.displays().getRecord(space, view, false));
        EXPECT_EQ(CRect(10, 20, 110, 95), view->displayWindow());
        EXPECT_EQ(CRect(1000, 2000, 11000, 9500), view->window());
    }
}

TEST_F(RoundTripTest, FreeBytesBehindTheSignatureAreNotLookedAt)
{
    CVexDbDatabase drawing(false);
    std::vector<std::byte> file = saved(drawing);
    const std::vector<std::byte> clean = file;
    std::fill(file.begin() + 12, file.begin() + 24, std::byte{0xcd});
    CVexDbDatabase again(false);
    ASSERT_TRUE(read(again, file));
    EXPECT_SAME_BYTES(clean, saved(again));
}

TEST_F(RoundTripTest, NoVersionIsRefused)
{
    CVexDbDatabase drawing(false);
    std::vector<std::byte> file = saved(drawing);
    std::fill(file.begin(), file.begin() + 24, std::byte{0});
    CVexDbDatabase again(false);
    EXPECT_TRUE(read(again, file));
}

} // namespace
