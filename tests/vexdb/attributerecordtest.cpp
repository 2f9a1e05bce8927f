#include "dbfixture.h"
#include "vexdb/dbobject/vexdbentsetiterator.h"
#include "vexdb/dbobject/vexdblineweight.h"

#include <limits>
#include <memory>

namespace {

class AttributeRecordTest : public ::testing::Test {
protected:
    CVexDbColorTableRecord* color(const wchar_t* name)
    {
        return recordNamed(drawing.colors(), name);
    }
    CVexDbLTypeTableRecord* linetype(const wchar_t* name)
    {
        return recordNamed(drawing.linetypes(), name);
    }
    CVexDbLayerTableRecord* layer(const wchar_t* name)
    {
        return recordNamed(drawing.layers(), name);
    }
    CString naturalName(const wchar_t* name)
    {
        CString text;
        color(name)->getNaturColorName(text);
        return text;
    }

    CVexDbDatabase drawing{false};
};

} // namespace

TEST(PaletteTest, ListedEntriesAreExact)
{
    struct Row {
        int index;
        COLORREF color;
    };
    constexpr Row kRows[] = {{0, 0xffffff},   {1, 0x0000ff},   {2, 0x00ffff},   {3, 0x00ff00},
                             {4, 0xffff00},   {5, 0xff0000},   {6, 0xff00ff},   {7, 0xffffff},
                             {8, 0x808080},   {9, 0xc0c0c0},   {10, 0x0000ff},  {11, 0x7f7fff},
                             {12, 0x0000cc},  {13, 0x6666cc},  {14, 0x000099},  {15, 0x4c4c99},
                             {16, 0x00007f},  {17, 0x3f3f7f},  {18, 0x00004c},  {19, 0x26264c},
                             {250, 0x333333}, {251, 0x5b5b5b}, {252, 0x848484}, {253, 0xadadad},
                             {254, 0xd6d6d6}, {255, 0x000000}, {256, 0xffffff}, {257, 0x000000}};
    for (const Row& row : kRows) {
        EXPECT_EQ(row.color, _getColorValueByIndex(row.index)) << row.index;
    }
}

TEST(PaletteTest, HuesGoRoundTheCircleBy15Degrees)
{
    EXPECT_EQ(RGB(0xff, 0x3f, 0), _getColorValueByIndex(20));
    EXPECT_EQ(RGB(0xff, 0x7f, 0), _getColorValueByIndex(30));
    EXPECT_EQ(RGB(0xff, 0xbf, 0), _getColorValueByIndex(40));
    EXPECT_EQ(RGB(0xff, 0xff, 0), _getColorValueByIndex(50));
    EXPECT_EQ(RGB(0, 0xff, 0), _getColorValueByIndex(90));
    EXPECT_EQ(RGB(0, 0, 0xff), _getColorValueByIndex(170));
    EXPECT_EQ(RGB(0xff, 0, 0x3f), _getColorValueByIndex(240));
    EXPECT_EQ(RGB(0xff, 0x9f, 0x7f), _getColorValueByIndex(21));
    EXPECT_EQ(RGB(0xcc, 0x33, 0), _getColorValueByIndex(22));
    EXPECT_EQ(RGB(0x4c, 0x2f, 0x26), _getColorValueByIndex(29));
}

TEST(PaletteTest, ValueIsLookedUpFromTheFront)
{
    EXPECT_EQ(0, _getColorIndexByValue(0xffffff)) << "not 7, which has the same colour";
    EXPECT_EQ(1, _getColorIndexByValue(0x0000ff));
    EXPECT_EQ(255, _getColorIndexByValue(0x000000));
    EXPECT_EQ(0, _getColorIndexByValue(0x123456));
}

TEST(PaletteTest, IndexOutsideGivesTheEndEntry)
{
    EXPECT_EQ(0u, _getColorValueByIndex(-1));
    EXPECT_EQ(0u, _getColorValueByIndex(100000));
    EXPECT_EQ(0xffffffu, getColor(CVexDbObjectId::kNULL));
}

TEST_F(AttributeRecordTest, NaturalNamesOfTheDefaultColors)
{
    EXPECT_EQ(CString(L"ByBlock"), naturalName(L"0"));
    EXPECT_EQ(CString(L"red"), naturalName(L"1"));
    EXPECT_EQ(CString(L"yellow"), naturalName(L"2"));
    EXPECT_EQ(CString(L"green"), naturalName(L"3"));
    EXPECT_EQ(CString(L"cyan"), naturalName(L"4"));
    EXPECT_EQ(CString(L"blue"), naturalName(L"5"));
    EXPECT_EQ(CString(L"magenta"), naturalName(L"6"));
    EXPECT_EQ(CString(L"white"), naturalName(L"7"));
    EXPECT_EQ(CString(L"ByLayer"), naturalName(L"256"));
}

TEST_F(AttributeRecordTest, NaturalNameIsKeptAndIsTheNumberForOthers)
{
    auto* brown = addRecord(drawing.colors(), L"34");
    brown->setColor(_getColorValueByIndex(34));
    EXPECT_EQ(CString(L"34"), naturalName(L"34"));
    EXPECT_EQ(CString(L"34"), brown->getColorName());
    EXPECT_TRUE(color(L"1")->getColorName().IsEmpty()) << "fresh colours have none";
    brown->setColor(0);
    EXPECT_EQ(CString(L"black"), naturalName(L"34"));
}

TEST_F(AttributeRecordTest, ColorRecordIsFoundByItsColorInKeyOrder)
{
    CVexDbColorTableRecord* found = nullptr;
    EXPECT_TRUE(drawing.colors().getRecord(0x00ff00ul, found, false));
    EXPECT_EQ(color(L"3"), found);
    EXPECT_TRUE(drawing.colors().getRecord(0xfffffful, found, false));
    EXPECT_EQ(color(L"0"), found);
    EXPECT_FALSE(drawing.colors().getRecord(0x123456ul, found, false));
    EXPECT_EQ(256, drawing.colors().getCurrentRecord()->colorIndex());
}

TEST_F(AttributeRecordTest, RedIsTheLowByte)
{
    auto* record = addRecord(drawing.colors(), L"200");
    record->setColor(0x00030201ul);
    EXPECT_EQ(1, record->red());
    EXPECT_EQ(2, record->green());
    EXPECT_EQ(3, record->blue());
}

TEST_F(AttributeRecordTest, ColorsEntitiesIncludeThoseOfItsLayersOnRequest)
{
    CVexDbLine* line = addLine(drawing);
    CVexDbIdSet set;
    color(L"7")->addLayerId(CVexDbObjectId(layer(L"0")));
    color(L"7")->getEntitySet(set, false);
    EXPECT_TRUE(set.empty());
    color(L"7")->getEntitySet(set, true);
    EXPECT_TRUE(set.contains(line->objectId()));
}

TEST_F(AttributeRecordTest, ColorRecordHas25BytesBehindItsName)
{
    const std::vector<std::byte> bytes = savedBytes(drawing, *color(L"5"));
    ASSERT_EQ(200u, bytes.size());
    EXPECT_EQ(std::byte{45}, bytes[8]);
    EXPECT_EQ(std::byte{L'5'}, bytes[13]);
    EXPECT_EQ(std::vector<std::byte>(20),
              std::vector<std::byte>(bytes.begin() + 175, bytes.begin() + 195));
    EXPECT_EQ(std::byte{0xff}, bytes[197]);
    EXPECT_EQ(std::byte{0}, bytes[199]);
}

TEST_F(AttributeRecordTest, FreshLayersAreAsTheyShouldBe)
{
    EXPECT_TRUE(layer(L"PipeLine")->getColorId() == color(L"1"));
    EXPECT_TRUE(layer(L"WeldNum")->getColorId() == color(L"7"));
    EXPECT_TRUE(layer(L"Dimension")->getColorId() == color(L"3"));
    EXPECT_TRUE(layer(L"0")->getColorId() == color(L"7"));
    EXPECT_EQ(0, color(L"7")->getNumLayer()) << "giving a colour tells the colour nothing";
    EXPECT_EQ(4, linetype(L"CONTINUOUS")->getNumLayer());
    EXPECT_EQ(0, layer(L"0")->getLineWeight());
    EXPECT_TRUE(drawing.currentLayer() == layer(L"0"));
    EXPECT_LT(layer(L"PipeLine")->getCreatedTime(), layer(L"0")->getCreatedTime());
}

TEST_F(AttributeRecordTest, LayerBitsAreIndependent)
{
    layer(L"0")->setIsOff(true);
    layer(L"0")->setIsLocked(true);
    layer(L"0")->setIsOff(false);
    EXPECT_FALSE(layer(L"0")->isOff());
    EXPECT_TRUE(layer(L"0")->isLocked());
    EXPECT_EQ(2, layer(L"0")->status());
    EXPECT_EQ(0, static_cast<CVexDbObject*>(layer(L"0"))->status())
        << "the object has its own mask";
    layer(L"0")->resetStatus();
    EXPECT_EQ(0, layer(L"0")->status());
}

TEST_F(AttributeRecordTest, LinetypeSetterMovesTheLayerBetweenTheSets)
{
    layer(L"0")->setLinetypeId(CVexDbObjectId(linetype(L"Hidden")));
    EXPECT_EQ(3, linetype(L"CONTINUOUS")->getNumLayer());
    EXPECT_EQ(1, linetype(L"Hidden")->getNumLayer());
    EXPECT_TRUE(layer(L"0")->getThreadId() == linetype(L"Hidden"));
    layer(L"0")->setLinetypeId(CVexDbObjectId::kNULL);
    EXPECT_EQ(0, linetype(L"Hidden")->getNumLayer());
}

TEST_F(AttributeRecordTest, LayerWithoutAColorShowsWhite)
{
    EXPECT_EQ(0x0000ffu, layer(L"PipeLine")->getColorValue());
    layer(L"PipeLine")->setColorId(CVexDbObjectId::kNULL);
    EXPECT_EQ(0xffffffu, layer(L"PipeLine")->getColorValue());
}

TEST_F(AttributeRecordTest, ReadLayerEntersItsColorAndLinetype)
{
    layer(L"0")->setLinetypeId(CVexDbObjectId(linetype(L"Hidden")));
    layer(L"0")->setLineWeight(static_cast<VexDb::LineWeight>(35));
    const std::vector<std::byte> bytes = savedBytes(drawing, *layer(L"0"));
    ASSERT_EQ(197u, bytes.size());
    auto* record = new CVexDbLayerTableRecord(&drawing);
    ASSERT_TRUE(readBytes(drawing, *record, bytes));
    EXPECT_TRUE(record->getColorId() == color(L"7"));
    EXPECT_TRUE(record->getLinetypeId() == linetype(L"Hidden"));
    EXPECT_EQ(1, color(L"7")->getNumLayer());
    EXPECT_EQ(35, record->getLineWeight());
    drawing.layers().add(record);
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(AttributeRecordTest, UnknownReferenceOfALayerStaysNull)
{
    std::vector<std::byte> bytes = savedBytes(drawing, *layer(L"PipeLine"));
    std::fill(bytes.begin() + 177, bytes.begin() + 193, std::byte{0x11});
    auto* record = new CVexDbLayerTableRecord(&drawing);
    ASSERT_TRUE(readBytes(drawing, *record, bytes));
    EXPECT_TRUE(record->getColorId().isNull());
    EXPECT_TRUE(record->getLinetypeId().isNull());
    drawing.layers().add(record);
    const std::vector<std::byte> again = savedBytes(drawing, *record);
    EXPECT_EQ(std::vector<std::byte>(16),
              std::vector<std::byte>(again.begin() + 177, again.begin() + 193));
}

TEST_F(AttributeRecordTest, AssignedLayerPointsAtTheNamesakesOfItsOwnDrawing)
{
    CVexDbDatabase other(false);
    layer(L"PipeLine")->setIsLocked(true);
    CVexDbLayerTableRecord copy(&other);
    const std::uint64_t number = copy.getCreatedTime();
    copy = *layer(L"PipeLine");
    EXPECT_EQ(CString(L"PipeLine"), copy.getName());
    EXPECT_TRUE(copy.getColorId() == recordNamed(other.colors(), L"1"));
    EXPECT_TRUE(copy.getLinetypeId() == recordNamed(other.linetypes(), L"CONTINUOUS"));
    EXPECT_TRUE(copy.isLocked());
    EXPECT_EQ(number, copy.getCreatedTime());
    EXPECT_EQ(&other, copy.database());
}

TEST_F(AttributeRecordTest, BaseLayerRefusesANameThatItCutsAllTheSame)
{
    std::wstring name(85, L'x');
    layer(L"0")->setName(name.data());
    EXPECT_EQ(CString(L"0"), layer(L"0")->getName());
    EXPECT_EQ(L'\0', name[80]);
}

TEST_F(AttributeRecordTest, FreshLinetypes)
{
    EXPECT_EQ(CString(L"______________________________"),
              linetype(L"CONTINUOUS")->getDescription());
    EXPECT_EQ(CString(), linetype(L"ByLayer")->getDescription());
    EXPECT_EQ(CString(L"- - - - - - - -"), linetype(L"Hidden")->getDescription());
    EXPECT_EQ(1, linetype(L"ByBlock")->numDashes());
    EXPECT_EQ(2, linetype(L"Hidden")->numDashes());
    EXPECT_EQ(-0.5, linetype(L"Hidden")->dashLengthAt(1));
    EXPECT_EQ(1.5, linetype(L"Hidden")->patternLength());
}

TEST_F(AttributeRecordTest, PatternTakesBothScalesAndDropsSigns)
{
    int* pattern = nullptr;
    ASSERT_TRUE(linetype(L"Hidden")->getPattern(pattern, 100.0));
    EXPECT_EQ(100, pattern[0]);
    EXPECT_EQ(50, pattern[1]);
}

TEST_F(AttributeRecordTest, PatternIsFilledOnce)
{
    // A later scale changes nothing until the record is replaced: what is on screen keeps its
    // dashes.
    int* pattern = nullptr;
    linetype(L"Hidden")->getPattern(pattern, 100.0);
    drawing.settings().m_dLinetypeScale = 3.0;
    ASSERT_TRUE(linetype(L"Hidden")->getPattern(pattern, 200.0));
    EXPECT_EQ(100, pattern[0]);
    auto* replacement = new CVexDbLTypeTableRecord(*linetype(L"Hidden"));
    drawing.linetypes().add(replacement);
    ASSERT_TRUE(linetype(L"Hidden")->getPattern(pattern, 200.0));
    EXPECT_EQ(600, pattern[0]);
}

TEST_F(AttributeRecordTest, OneDashIsSolid)
{
    int dummy = 0;
    int* pattern = &dummy;
    EXPECT_FALSE(linetype(L"CONTINUOUS")->getPattern(pattern, 100.0));
    EXPECT_EQ(nullptr, pattern);
}

TEST_F(AttributeRecordTest, PatternOfHostileDashesStaysInItsWorkArea)
{
    auto* wild = addRecord(drawing.linetypes(), L"Wild");
    wild->setNumDashes(40);
    for (int i = 0; i < 40; ++i) {
        wild->setDashLengthAt(i, i == 0 ? std::numeric_limits<double>::quiet_NaN() : 1e300);
    }
    int* pattern = nullptr;
    ASSERT_TRUE(wild->getPattern(pattern, 100.0));
    EXPECT_EQ(0, pattern[0]);
    EXPECT_EQ(1'000'000'000, pattern[31]);
}

TEST_F(AttributeRecordTest, LengthOfZeroIsSummedButNotStored)
{
    auto* dots = addRecord(drawing.linetypes(), L"Dots");
    dots->setNumDashes(2);
    dots->setDashLengthAt(0, 0.25);
    dots->setDashLengthAt(1, -0.5);
    const std::vector<std::byte> before = savedBytes(drawing, *dots);
    EXPECT_EQ(0.75, dots->patternLength());
    EXPECT_EQ(before, savedBytes(drawing, *dots)) << "a question changes nothing that is saved";
    dots->setPatternLength(9.0);
    EXPECT_EQ(9.0, dots->patternLength());
    EXPECT_EQ(0.0, dots->dashLengthAt(2));
    EXPECT_EQ(0.0, dots->dashLengthAt(-1));
}

TEST_F(AttributeRecordTest, DashesAreReadBehindThoseThatAreThere)
{
    const std::vector<std::byte> bytes = savedBytes(drawing, *linetype(L"Hidden"));
    ASSERT_EQ(365u, bytes.size());
    EXPECT_EQ(std::byte{2}, bytes[175]);
    CVexDbLTypeTableRecord record(&drawing);
    record.setNumDashes(1);
    record.setDashLengthAt(0, 7.0);
    ASSERT_TRUE(readBytes(drawing, record, bytes));
    EXPECT_EQ(7.0, record.dashLengthAt(0));
    EXPECT_EQ(1.0, record.dashLengthAt(1));
    EXPECT_EQ(-0.5, record.dashLengthAt(2));
    EXPECT_EQ(2, record.numDashes());
}

TEST_F(AttributeRecordTest, LinetypeThatCountsMoreDashesThanTheFileFails)
{
    std::vector<std::byte> bytes = savedBytes(drawing, *linetype(L"Hidden"));
    std::fill(bytes.begin() + 175, bytes.begin() + 179, std::byte{0x7f});
    CVexDbLTypeTableRecord record(&drawing);
    EXPECT_FALSE(readBytes(drawing, record, bytes));
    EXPECT_EQ(0, record.numDashes());
}

TEST_F(AttributeRecordTest, SetOfUsersIsWalkedByItsIterator)
{
    CVexDbEntSetIterator* made = nullptr;
    EXPECT_FALSE(layer(L"0")->newIterator(made, true));
    EXPECT_EQ(nullptr, made);
    CVexDbLine* line = addLine(drawing);
    ASSERT_TRUE(layer(L"0")->newIterator(made, false));
    const std::unique_ptr<CVexDbEntSetIterator> iterator(made);
    CVexDbEntity* entity = nullptr;
    EXPECT_TRUE(iterator->getEntity(entity, false));
    EXPECT_EQ(line, entity);
}

TEST(LineWeightTest, TextsOfWeights)
{
    EXPECT_EQ(CString(L"0.25 mm"), _getStrWeight(L"25"));
    EXPECT_EQ(CString(L"0.00 mm"), _getStrWeight(L"0"));
    EXPECT_EQ(CString(L"2.11 mm"), _getStrWeight(L"211"));
    EXPECT_EQ(CString(L"ByLayer"), _getStrWeight(L"-1"));
    EXPECT_EQ(CString(L"ByBlock"), _getStrWeight(L"-2"));
    EXPECT_EQ(CString(L"Default"), _getStrWeight(L"-3"));
}

TEST(LineWeightTest, ListBeginsWithTheSpecialOnes)
{
    EXPECT_EQ(26u, kLineWeights.size());
    EXPECT_EQ(VexDb::kLineWeightByLayer, kLineWeights[0]);
    EXPECT_EQ(VexDb::kLineWeightDefault, kLineWeights[2]);
    EXPECT_EQ(0, kLineWeights[3]);
    EXPECT_EQ(158, kLineWeights[23]);
    EXPECT_EQ(211, kLineWeights[25]);
}
