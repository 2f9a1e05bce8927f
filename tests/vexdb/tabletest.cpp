#include "dbfixture.h"

#include <memory>
#include <type_traits>

namespace {

class TableTest : public ::testing::Test {
protected:
    CVexDbDatabase drawing{false};
    HeadlessScope headless;
};

std::vector<CString> keysOf(const CVexDbTable& table)
{
    std::vector<CString> keys;
    for (const auto& [key, record] : table.records()) {
        keys.push_back(key);
    }
    return keys;
}

} // namespace

TEST_F(TableTest, RecordsStandInCodeUnitOrder)
{
    EXPECT_EQ((std::vector<CString>{L"0", L"1", L"2", L"256", L"3", L"4", L"5", L"6", L"7"}),
              keysOf(drawing.colors()));
    EXPECT_EQ((std::vector<CString>{L"ByBlock", L"ByLayer", L"CONTINUOUS", L"Hidden"}),
              keysOf(drawing.linetypes()));
}

TEST_F(TableTest, NameOutsideTheBasicPlaneSortsByItsSurrogates)
{
    // U+1F600 is D83D DE00 in 16 bits, so it stands before U+FF41 although its number is larger.
    addRecord(drawing.symbols(), L"\uff41");
    addRecord(drawing.symbols(), L"\U0001f600");
    EXPECT_EQ((std::vector<CString>{L"\U0001f600", L"\uff41"}), keysOf(drawing.symbols()));
}

TEST_F(TableTest, GetAtTriesUpperAndLowerCaseOnlyForANullHandle)
{
    CVexDbObjectId id;
    EXPECT_FALSE(drawing.linetypes().getAt(L"bylayer", id, false));
    EXPECT_TRUE(drawing.textStyles().getAt(L"standard", id, false));
    EXPECT_TRUE(id == drawing.textStyles().getCurrentRecord());
    // A handle that holds a record already keeps it for a mere difference in case.
    const CVexDbObjectId before = drawing.currentLayer();
    id = before;
    EXPECT_FALSE(drawing.textStyles().getAt(L"standard", id, false));
    EXPECT_TRUE(id == before);
}

TEST_F(TableTest, GetRecordIsExactAndLeavesTheRecordAloneOtherwise)
{
    CVexDbTextStyleTableRecord* const untouched = drawing.textStyles().getCurrentRecord();
    CVexDbTextStyleTableRecord* record = untouched;
    EXPECT_FALSE(drawing.textStyles().getRecord(L"standard", record, false));
    EXPECT_EQ(untouched, record);
    EXPECT_TRUE(drawing.textStyles().has(L"STANDARD"));
    EXPECT_FALSE(drawing.textStyles().has(L"standard"));
}

TEST_F(TableTest, GetAtByNumberKeepsTheRecordLookedAtLast)
{
    auto* hidden = recordNamed(drawing.linetypes(), L"Hidden");
    CVexDbObjectId id;
    EXPECT_TRUE(drawing.linetypes().getAt(drawing.currentLinetype().getPObject()->hardObjectId(),
                                          id, false));
    EXPECT_TRUE(id == drawing.currentLinetype());
    EXPECT_FALSE(drawing.linetypes().getAt(std::uint64_t{1}, id, false));
    EXPECT_TRUE(id == hidden);
    EXPECT_TRUE(drawing.linetypes().has(CVexDbObjectId(hidden)));
    EXPECT_FALSE(drawing.linetypes().has(drawing.currentLayer()));
}

TEST_F(TableTest, AddRefusesAnEmptyNameAndLeavesTheRecordToItsCaller)
{
    const auto record = std::make_unique<CVexDbLayerTableRecord>(&drawing);
    CVexDbObjectId id;
    EXPECT_FALSE(drawing.layers().add(id, record.get()));
    EXPECT_TRUE(id.isNull());
    EXPECT_EQ(nullptr, record->table());
    EXPECT_EQ(4, drawing.layers().size());
}

TEST_F(TableTest, AddingTheHolderOfANameAgainDoesNothing)
{
    CVexDbLayerTableRecord* walls = addRecord(drawing.layers(), L"Walls");
    CVexDbObjectId id;
    EXPECT_TRUE(drawing.layers().add(id, walls));
    EXPECT_TRUE(id == walls);
    EXPECT_EQ(walls, recordNamed(drawing.layers(), L"Walls"));
    EXPECT_EQ(5, drawing.layers().size());
}

TEST_F(TableTest, RecordOfOneTableIsNotTakenByAnother)
{
    CVexDbDatabase other(false);
    CVexDbLayerTableRecord* walls = addRecord(drawing.layers(), L"Walls");
    EXPECT_FALSE(other.layers().add(walls));
    EXPECT_FALSE(other.layers().has(L"Walls"));
    EXPECT_EQ(&drawing.layers(), walls->table());
}

TEST_F(TableTest, AddGivesARecordCopyAnIdentityOfItsOwn)
{
    CVexDbLayerTableRecord* walls = addRecord(drawing.layers(), L"Walls");
    auto* copy = new CVexDbLayerTableRecord(*walls);
    copy->setName(CString(L"Doors"));
    EXPECT_TRUE(drawing.layers().add(copy));
    EXPECT_TRUE(copy->objectId() == copy);
    EXPECT_GT(copy->getCreatedTime(), walls->getCreatedTime());
    EXPECT_TRUE(copy->ownerId() == drawing.LayerTable());
}

TEST_F(TableTest, LaterRecordOfANameReplacesTheFirst)
{
    CVexDbLayerTableRecord* first = addRecord(drawing.layers(), L"Walls");
    CVexDbLayerTableRecord* second = addRecord(drawing.layers(), L"Walls");
    EXPECT_EQ(second, recordNamed(drawing.layers(), L"Walls"));
    EXPECT_EQ(5, drawing.layers().size());
    EXPECT_EQ(nullptr, first->table()) << "kept, so that nothing that points at it dangles";
}

TEST_F(TableTest, WhatPointedAtAReplacedLayerPointsAtTheNewOne)
{
    auto* first = addRecord(drawing.layers(), L"Walls");
    drawing.setCurrentLayer(CVexDbObjectId(first));
    CVexDbLine* line = addLine(drawing);
    auto* second = addRecord(drawing.layers(), L"Walls");
    EXPECT_TRUE(line->LayerId() == second);
    EXPECT_TRUE(drawing.currentLayer() == second);
    EXPECT_EQ(second, drawing.layers().getCurrentRecord());
    EXPECT_EQ(1, second->getNumEntity());
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(TableTest, RemovedRecordMayComeBack)
{
    CVexDbLayerTableRecord* walls = addRecord(drawing.layers(), L"Walls");
    walls->setLinetypeId(CVexDbObjectId(recordNamed(drawing.linetypes(), L"Hidden")));
    ASSERT_TRUE(drawing.layers().removeRecord(L"Walls"));
    auto* hidden = addRecord(drawing.linetypes(), L"Hidden");
    EXPECT_TRUE(drawing.layers().add(walls));
    EXPECT_EQ(walls, recordNamed(drawing.layers(), L"Walls"));
    EXPECT_TRUE(walls->getLinetypeId() == hidden) << "the one of today";
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(TableTest, CopyOfAnotherDrawingsLayerIsBoundToThisOne)
{
    CVexDbDatabase other(false);
    auto* copy = new CVexDbLayerTableRecord(*recordNamed(other.layers(), L"PipeLine"));
    copy->setName(CString(L"Pipes"));
    ASSERT_TRUE(drawing.layers().add(copy));
    EXPECT_EQ(&drawing, copy->database());
    EXPECT_TRUE(copy->getColorId() == recordNamed(drawing.colors(), L"1"));
    EXPECT_TRUE(copy->getLinetypeId() == recordNamed(drawing.linetypes(), L"CONTINUOUS"));
    EXPECT_TRUE(drawing.selfCheck().empty());
    EXPECT_TRUE(other.selfCheck().empty());
}

TEST_F(TableTest, LayerThatNoTableTookLeavesNoTrace)
{
    const std::vector<std::byte> bytes = savedBytes(drawing, *recordNamed(drawing.layers(), L"0"));
    {
        CVexDbLayerTableRecord working(&drawing), read(&drawing);
        working = *recordNamed(drawing.layers(), L"PipeLine");
        ASSERT_TRUE(readBytes(drawing, read, bytes));
        read.setColorId(CVexDbObjectId::kNULL);
        EXPECT_EQ(5, recordNamed(drawing.linetypes(), L"CONTINUOUS")->getNumLayer())
            << "the one that was read has the base layer's number";
        EXPECT_EQ(1, recordNamed(drawing.colors(), L"7")->getNumLayer());
    }
    EXPECT_EQ(4, recordNamed(drawing.linetypes(), L"CONTINUOUS")->getNumLayer());
    EXPECT_EQ(0, recordNamed(drawing.colors(), L"7")->getNumLayer());
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(TableTest, WhatPointedAtAReplacedColorPointsAtTheNewOne)
{
    CVexDbLine* line = addLine(drawing);
    auto* byLayer = addRecord(drawing.colors(), L"256");
    auto* white = addRecord(drawing.colors(), L"7");
    EXPECT_TRUE(line->ColorId() == byLayer);
    EXPECT_TRUE(drawing.currentColor() == byLayer);
    EXPECT_EQ(1, byLayer->getNumEntity());
    EXPECT_TRUE(recordNamed(drawing.layers(), L"0")->getColorId() == white);
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(TableTest, WhatPointedAtAReplacedLinetypePointsAtTheNewOne)
{
    CVexDbLine* line = addLine(drawing);
    auto* byLayer = addRecord(drawing.linetypes(), L"ByLayer");
    auto* continuous = addRecord(drawing.linetypes(), L"CONTINUOUS");
    EXPECT_TRUE(line->LineTypeId() == byLayer);
    EXPECT_TRUE(drawing.currentLinetype() == byLayer);
    EXPECT_EQ(4, continuous->getNumLayer());
    EXPECT_TRUE(recordNamed(drawing.layers(), L"Dimension")->getLinetypeId() == continuous);
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(TableTest, LongNameIsCutInTheCallersString)
{
    std::wstring name(81, L'n');
    CVexDbLayerTableRecord record(&drawing);
    record.setName(name.data());
    EXPECT_EQ(L'\0', name[80]);
    EXPECT_EQ(80, record.getName().GetLength());
}

TEST_F(TableTest, RenameMovesTheKey)
{
    CVexDbLayerTableRecord* walls = addRecord(drawing.layers(), L"Walls");
    wchar_t name[] = L"Doors";
    drawing.layers().reName(walls, name);
    EXPECT_EQ(CString(L"Doors"), walls->getName());
    EXPECT_EQ(walls, recordNamed(drawing.layers(), L"Doors"));
    EXPECT_FALSE(drawing.layers().has(L"Walls"));
}

TEST_F(TableTest, RenameToATakenOrEmptyNameChangesNothing)
{
    CVexDbLayerTableRecord* walls = addRecord(drawing.layers(), L"Walls");
    wchar_t taken[] = L"PipeLine";
    wchar_t empty[] = L"";
    drawing.layers().reName(walls, taken);
    drawing.layers().reName(walls, empty);
    EXPECT_EQ(CString(L"Walls"), walls->getName());
    EXPECT_EQ(5, drawing.layers().size());
}

TEST_F(TableTest, RenamingTheBaseLayerMovesOnlyItsKey)
{
    // The record refuses the name while the table finds it under the new one: hosts that list the
    // table's keys show what the user typed, and entities go on naming their layer "0".
    CVexDbLayerTableRecord* base = recordNamed(drawing.layers(), L"0");
    wchar_t name[] = L"Base";
    drawing.layers().reName(base, name);
    EXPECT_EQ(CString(L"0"), base->getName());
    EXPECT_EQ(base, recordNamed(drawing.layers(), L"Base"));
    EXPECT_FALSE(drawing.layers().has(L"0"));
    wchar_t back[] = L"0";
    drawing.layers().reName(base, back);
    EXPECT_TRUE(drawing.layers().has(L"0"));
}

TEST_F(TableTest, KeyIsTheLongNameThatTheRecordWasAskedToTake)
{
    CVexDbLTypeTableRecord* record = addRecord(drawing.linetypes(), L"Dots");
    std::wstring name(90, L'd');
    const std::wstring asked = name;
    drawing.linetypes().reName(record, name.data());
    EXPECT_TRUE(drawing.linetypes().has(asked.c_str()));
    EXPECT_EQ(80, record->getName().GetLength());
}

TEST_F(TableTest, NameThatIsTakenOnceCutIsRefused)
{
    addRecord(drawing.linetypes(), std::wstring(80, L'd').c_str());
    CVexDbLTypeTableRecord* dots = addRecord(drawing.linetypes(), L"Dots");
    std::wstring name(90, L'd');
    drawing.linetypes().reName(dots, name.data());
    EXPECT_EQ(CString(L"Dots"), dots->getName());
    EXPECT_TRUE(drawing.linetypes().has(L"Dots"));
}

TEST_F(TableTest, NameThatTheRenamedBaseLayerKeepsIsTaken)
{
    wchar_t moved[] = L"Base";
    drawing.layers().reName(recordNamed(drawing.layers(), L"0"), moved);
    wchar_t zero[] = L"0";
    drawing.layers().reName(recordNamed(drawing.layers(), L"WeldNum"), zero);
    EXPECT_FALSE(drawing.layers().has(L"0"));
    EXPECT_TRUE(drawing.layers().has(L"WeldNum"));
}

TEST_F(TableTest, BaseLayerStaysWithItsMessage)
{
    EXPECT_FALSE(drawing.layers().removeRecord(L"0"));
    ASSERT_EQ(1u, headless.backend.shownMessages().size());
    EXPECT_EQ(CString(L"Cannot remove base layer."), headless.backend.shownMessages()[0].text);
    EXPECT_TRUE(drawing.layers().has(L"0"));
}

TEST_F(TableTest, LayerInUseStaysWithoutAMessage)
{
    CVexDbLine* line = addLine(drawing);
    auto* walls = addRecord(drawing.layers(), L"Walls");
    line->setLayer(CVexDbObjectId(walls));
    line->setErased(); // what is erased may come back
    EXPECT_FALSE(drawing.layers().removeRecord(L"Walls"));
    EXPECT_FALSE(drawing.layers().removeRecord(L"NoSuch"));
    drawing.setCurrentLayer(CVexDbObjectId(recordNamed(drawing.layers(), L"WeldNum")));
    EXPECT_FALSE(drawing.layers().removeRecord(L"WeldNum")) << "it is the current one";
    EXPECT_TRUE(drawing.layers().removeRecord(L"Dimension"));
    EXPECT_TRUE(headless.backend.shownMessages().empty());
}

TEST_F(TableTest, RemovedLayerIsInNoLinetypesSet)
{
    auto* continuous = recordNamed(drawing.linetypes(), L"CONTINUOUS");
    EXPECT_EQ(4, continuous->getNumLayer());
    ASSERT_TRUE(drawing.layers().removeRecord(L"PipeLine"));
    EXPECT_EQ(3, continuous->getNumLayer());
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(TableTest, LinetypesInUseOrSpecialStay)
{
    EXPECT_FALSE(drawing.linetypes().removeRecord(L"CONTINUOUS"));
    EXPECT_FALSE(drawing.linetypes().removeRecord(L"ByBlock"));
    auto* hidden = recordNamed(drawing.linetypes(), L"Hidden");
    recordNamed(drawing.layers(), L"0")->setLinetypeId(CVexDbObjectId(hidden));
    EXPECT_FALSE(drawing.linetypes().removeRecord(L"Hidden"));
    recordNamed(drawing.layers(), L"0")->setLinetypeId(CVexDbObjectId::kNULL);
    EXPECT_TRUE(drawing.linetypes().removeRecord(L"Hidden"));
    EXPECT_TRUE(headless.backend.shownMessages().empty());
}

TEST_F(TableTest, ColorOfALayerOrEntityStays)
{
    auto* brown = addRecord(drawing.colors(), L"34");
    recordNamed(drawing.layers(), L"0")->setColorId(CVexDbObjectId(brown));
    EXPECT_EQ(0, brown->getNumLayer()) << "a colour is not told of a layer that is given it";
    EXPECT_FALSE(drawing.colors().removeRecord(L"34"));
    recordNamed(drawing.layers(), L"0")->setColorId(CVexDbObjectId::kNULL);
    EXPECT_TRUE(drawing.colors().removeRecord(L"34"));
    EXPECT_FALSE(drawing.colors().removeRecord(L"3"));
}

TEST_F(TableTest, StandardTextStyleStays)
{
    EXPECT_FALSE(drawing.textStyles().removeRecord(L"STANDARD"));
    EXPECT_TRUE(drawing.textStyles().has(L"STANDARD"));
    addRecord(drawing.textStyles(), L"Small");
    EXPECT_TRUE(drawing.textStyles().removeRecord(L"Small"));
}

TEST_F(TableTest, TypedIteratorPassesErasedRecordsBy)
{
    CVexDbLayerTableIterator* made = nullptr;
    ASSERT_TRUE(drawing.layers().newIterator(made, true));
    const std::unique_ptr<CVexDbLayerTableIterator> iterator(made);
    CVexDbLayerTableRecord* record = nullptr;
    ASSERT_TRUE(iterator->getRecord(record));
    EXPECT_EQ(CString(L"0"), record->getName());
    record->setErased();
    EXPECT_FALSE(iterator->getRecord(record));
    EXPECT_EQ(nullptr, record);
    CVexDbTableRecord* erased = nullptr;
    EXPECT_TRUE(iterator->getRecord(erased, true));
}

TEST_F(TableTest, IteratorWalksBothWaysAndEnds)
{
    CVexDbTableIterator iterator(&drawing.layers());
    for (int step = 0; step < 4; ++step) {
        EXPECT_FALSE(iterator.done());
        iterator.step(true);
    }
    CVexDbObjectId id = drawing.currentLayer();
    EXPECT_TRUE(iterator.done());
    EXPECT_FALSE(iterator.getRecordId(id));
    EXPECT_TRUE(id.isNull());
    iterator.step(false);
    EXPECT_TRUE(iterator.getRecordId(id));
    EXPECT_TRUE(id == recordNamed(drawing.layers(), L"WeldNum"));
}

TEST_F(TableTest, IteratorSurvivesRemovalAndInsertion)
{
    CVexDbTableIterator iterator(&drawing.layers());
    EXPECT_TRUE(iterator.seek(recordNamed(drawing.layers(), L"Dimension")));
    drawing.layers().removeRecord(L"Dimension");
    auto* next = addRecord(drawing.layers(), L"Edges");
    iterator.step(true);
    CVexDbObjectId id;
    EXPECT_TRUE(iterator.getRecordId(id));
    EXPECT_TRUE(id == next);
    EXPECT_FALSE(iterator.seek(drawing.currentColor()));
}

TEST_F(TableTest, TablesAndRecordsStoreTheirClasses)
{
    // Not each its own: the revision table has the block table's number, a colour the entity table
    // record's and a view the block record's. These numbers stand in every file ever written.
    struct Row {
        const CVexDbTable& table;
        std::uint32_t tableClass;
        std::unique_ptr<CVexDbTableRecord> record;
        std::uint32_t recordClass;
        int recordStatus;
    };
    const auto make = [this]<class Record>(std::type_identity<Record>) {
        return std::make_unique<Record>(&drawing);
    };
    Row rows[] = {
        {drawing.layers(), 35, make(std::type_identity<CVexDbLayerTableRecord>()), 46, 0},
        {drawing.colors(), 33, make(std::type_identity<CVexDbColorTableRecord>()), 45, 0},
        {drawing.linetypes(), 37, make(std::type_identity<CVexDbLTypeTableRecord>()), 47, 0},
        {drawing.blocks(), 32, make(std::type_identity<CVexDbBlockTableRecord>()), 42, 1},
        {drawing.displays(), 34, make(std::type_identity<CVexDbDisplayTableRecord>()), 42, 0},
        {drawing.textStyles(), 39, make(std::type_identity<CVexDbTextStyleTableRecord>()), 49, 0},
        {drawing.symbols(), 38, make(std::type_identity<CVexDbSymbolTableRecord>()), 48, 1},
        {drawing.entities(), 36, make(std::type_identity<CVexDbEntityTableRecord>()), 45, 0},
        {drawing.projectInfos(), 40, make(std::type_identity<CVexDbProjectInfoTableRecord>()), 50,
         1},
        {drawing.revisions(), 32, make(std::type_identity<CVexDbRevisionTableRecord>()), 51, 1},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.tableClass, row.table.classType());
        EXPECT_EQ(row.recordClass, row.record->classType()) << row.tableClass;
        EXPECT_EQ(row.recordStatus, static_cast<CVexDbObject&>(*row.record).status())
            << row.tableClass;
    }
}
