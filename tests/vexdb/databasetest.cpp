#include "dbfixture.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"

#include <algorithm>
#include <memory>

namespace {

class DatabaseTest : public ::testing::Test {
protected:
    CVexDbDatabase drawing{false};
};

class CountingTracker : public CVexDbEntityTracker {
public:
    CountingTracker(CVexDbEntity* entity, int& dropped, int& drawn)
        : CVexDbEntityTracker(nullptr, entity, VexDb::TransFormNone, false), m_dropped(dropped),
          m_drawn(drawn)
    {
    }
    ~CountingTracker() override { ++m_dropped; }
    void DrawGripBox(bool) override { ++m_drawn; }

private:
    int& m_dropped;
    int& m_drawn;
};

} // namespace

TEST(NewDatabaseTest, PaperSpaceIsMadeOnRequestAndModelSpaceIsCurrent)
{
    const CVexDbDatabase plain(false), paper(true);
    const auto& plainBlocks = const_cast<CVexDbDatabase&>(plain).blocks();
    const auto& paperBlocks = const_cast<CVexDbDatabase&>(paper).blocks();
    EXPECT_EQ(1, plainBlocks.size());
    EXPECT_TRUE(plainBlocks.has(L"MODEL_SPACE"));
    EXPECT_EQ(2, paperBlocks.size());
    EXPECT_EQ(CString(L"MODEL_SPACE"), paperBlocks.getCurrentRecord()->getName());
}

TEST_F(DatabaseTest, FreshCurrentsAreTheDefaults)
{
    EXPECT_TRUE(drawing.currentLinetype() == recordNamed(drawing.linetypes(), L"ByLayer"));
    EXPECT_TRUE(drawing.currentColor() == recordNamed(drawing.colors(), L"256"));
    EXPECT_EQ(256, drawing.colors().getCurrentRecord()->colorIndex());
    EXPECT_TRUE(drawing.currentLayer() == recordNamed(drawing.layers(), L"0"));
    EXPECT_TRUE(drawing.currentTextStyle() == recordNamed(drawing.textStyles(), L"STANDARD"));
    EXPECT_EQ(nullptr, drawing.lastEntity());
    EXPECT_EQ(nullptr, drawing.buffer());
    EXPECT_EQ(1.0, drawing.plane().c);
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST(NewDatabaseTest, DefaultRecordsAreMadeInTheirOrder)
{
    CVexDbDatabase paper(true);
    std::vector<std::uint64_t> made;
    for (const wchar_t* name : {L"CONTINUOUS", L"ByLayer", L"ByBlock", L"Hidden"}) {
        made.push_back(recordNamed(paper.linetypes(), name)->getCreatedTime());
    }
    for (const wchar_t* name : {L"0", L"1", L"2", L"3", L"4", L"5", L"6", L"7", L"256"}) {
        made.push_back(recordNamed(paper.colors(), name)->getCreatedTime());
    }
    for (const wchar_t* name : {L"PipeLine", L"WeldNum", L"Dimension", L"0"}) {
        made.push_back(recordNamed(paper.layers(), name)->getCreatedTime());
    }
    made.push_back(recordNamed(paper.textStyles(), L"STANDARD")->getCreatedTime());
    made.push_back(recordNamed(paper.blocks(), L"PAPER_SPACE")->getCreatedTime());
    made.push_back(recordNamed(paper.blocks(), L"MODEL_SPACE")->getCreatedTime());
    EXPECT_TRUE(std::is_sorted(made.begin(), made.end()));
    EXPECT_EQ(20u, made.size());
}

TEST(NewDatabaseTest, OnlyTheFiveTablesWithDefaultsHaveRecords)
{
    CVexDbDatabase fresh(false);
    EXPECT_EQ(9, fresh.colors().size());
    EXPECT_EQ(4, fresh.linetypes().size());
    EXPECT_EQ(4, fresh.layers().size());
    EXPECT_EQ(1, fresh.textStyles().size());
    EXPECT_EQ(0, fresh.symbols().size() + fresh.entities().size() + fresh.projectInfos().size() +
                     fresh.revisions().size());
}

TEST_F(DatabaseTest, InitialisedAgainItIsFreshAgain)
{
    CVexDbLine* line = addLine(drawing);
    drawing.setLastPoint(CVexGePoint2d(3, 4));
    drawing.InitDatabase(false);
    EXPECT_EQ(nullptr, drawing.lastEntity());
    EXPECT_EQ(0.0, drawing.lastPoint().x);
    EXPECT_EQ(0, drawing.blocks().getCurrentRecord()->getNumEntity());
    EXPECT_FALSE(line->IsDbEntity()) << "retired with its block, but alive";
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(DatabaseTest, HeaderTextsAreCutToTheirFields)
{
    drawing.setFilePath(L"/drawings");
    drawing.setAuthor(CString(std::wstring(500, L'a')));
    drawing.setDate(L"2024-05-06");
    drawing.setFileVersion(L"1.001a");
    EXPECT_EQ(CString(L"/drawings"), drawing.FilePath());
    EXPECT_EQ(CString(L"2024-05-06"), drawing.Date());
    EXPECT_EQ(CString(L"1.001a"), drawing.FileVersion());
    EXPECT_EQ(CString(std::wstring(32, L'a')), drawing.Author());
}

TEST_F(DatabaseTest, CurrentHandleAndTheTablesCurrentRecordAreOne)
{
    auto* walls = addRecord(drawing.layers(), L"Walls");
    drawing.layers().setCurrentRecord(walls);
    EXPECT_TRUE(drawing.currentLayer() == walls);
    EXPECT_FALSE(drawing.layers().removeRecord(L"Walls"));
}

TEST_F(DatabaseTest, TablesBelongToTheDatabaseWhateverIsCurrent)
{
    _gpDatabase = &drawing;
    CVexDbDatabase other(false);
    _gpDatabase = nullptr;
    for (const CVexDbObjectId& table :
         {other.LayerTable(), other.BlockTable(), other.LinetypeTable(), other.ColorTable(),
          other.DisplayTable(), other.TextStyleTable(), other.SymbolTable(), other.EntityTable(),
          other.ProjectInfoTable(), other.RevisionTable()}) {
        EXPECT_EQ(&other, table.database());
    }
    EXPECT_EQ(&other, other.layers().getCurrentRecord()->database());
    EXPECT_TRUE(other.selfCheck().empty());
}

TEST_F(DatabaseTest, AddedEntityStandsInEveryIndex)
{
    auto* line = new CVexDbLine(CVexGePoint2d(0, 0), CVexGePoint2d(1, 1));
    CVexDbObjectId id;
    drawing.addEntity(line, id);
    EXPECT_TRUE(id == line);
    EXPECT_TRUE(line->IsDbEntity());
    EXPECT_EQ(line, drawing.lastEntity());
    EXPECT_EQ(1, drawing.layers().getCurrentRecord()->getNumEntity());
    EXPECT_EQ(1, drawing.colors().getCurrentRecord()->getNumEntity());
    EXPECT_EQ(1, drawing.linetypes().getCurrentRecord()->getNumEntity());
    EXPECT_TRUE(recordNamed(drawing.entities(), L"LINE")->entitySet().contains(id));
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(DatabaseTest, RemovedEntityLeavesEveryIndexAndIsNotLast)
{
    CVexDbLine* line = addLine(drawing);
    drawing.removeEntity(line);
    EXPECT_EQ(nullptr, drawing.lastEntity());
    EXPECT_FALSE(line->IsDbEntity());
    EXPECT_TRUE(line->ownerId().isNull());
    EXPECT_EQ(0, drawing.layers().getCurrentRecord()->getNumEntity());
    EXPECT_EQ(0, drawing.colors().getCurrentRecord()->getNumEntity());
    EXPECT_EQ(0, drawing.linetypes().getCurrentRecord()->getNumEntity());
    EXPECT_EQ(0, recordNamed(drawing.entities(), L"LINE")->getNumEntity());
    CVexDbLine* next = addLine(drawing);
    EXPECT_EQ(next, drawing.lastEntity());
}

TEST_F(DatabaseTest, RemovedEntityComesBackOnce)
{
    CVexDbLine* line = addLine(drawing);
    drawing.removeEntity(line);
    drawing.removeEntity(line); // it has no owner any more
    CVexDbObjectId id;
    drawing.addEntity(line, id);
    EXPECT_TRUE(id == line);
    EXPECT_EQ(1, drawing.blocks().getCurrentRecord()->getNumEntity());
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(DatabaseTest, EntityIsRemovedFromItsOwnBlockWhicheverIsCurrent)
{
    CVexDbDatabase paper(true);
    CVexDbLine* line = addLine(paper);
    paper.blocks().SetCurentSpace(L"PAPER_SPACE");
    paper.removeEntity(line);
    EXPECT_EQ(0, recordNamed(paper.blocks(), L"MODEL_SPACE")->getNumEntity());
    EXPECT_TRUE(paper.selfCheck().empty());
}

TEST_F(DatabaseTest, EntityOfABlockIsNotAddedTwice)
{
    CVexDbLine* line = addLine(drawing);
    addLine(drawing);
    CVexDbObjectId id;
    drawing.addEntity(line, id);
    EXPECT_TRUE(id == line);
    EXPECT_EQ(2, drawing.blocks().getCurrentRecord()->getNumEntity());
    EXPECT_NE(line, drawing.lastEntity()) << "only its identifier is asked for";
}

TEST_F(DatabaseTest, PlainCopyGetsAnIdentityWhenItIsAdded)
{
    CVexDbLine* line = addLine(drawing);
    auto* copy = new CVexDbLine(*line); // it names the block of its source as its owner
    drawing.removeEntity(copy);
    EXPECT_EQ(1, drawing.layers().getCurrentRecord()->getNumEntity())
        << "the source is still there";
    CVexDbObjectId id;
    drawing.addEntity(copy, id);
    EXPECT_TRUE(id == copy);
    EXPECT_GT(copy->getCreatedTime(), line->getCreatedTime());
    EXPECT_EQ(2, drawing.blocks().getCurrentRecord()->getNumEntity());
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(DatabaseTest, TakenNumberIsReplacedWhenAnEntityIsAdded)
{
    CVexDbLine* line = addLine(drawing);
    auto* other = new CVexDbLine(CVexGePoint2d(0, 0), CVexGePoint2d(1, 1));
    other->setCreatedTime(line->getCreatedTime());
    CVexDbObjectId id;
    drawing.addEntity(other, id);
    EXPECT_GT(other->getCreatedTime(), line->getCreatedTime());
    EXPECT_EQ(2, drawing.blocks().getCurrentRecord()->getNumEntity());
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(DatabaseTest, EntityOfAnotherDrawingIsBoundByNamesBeforeItIsIndexed)
{
    CVexDbDatabase other(false);
    auto* line = new CVexDbLine(&other);
    line->setLayer(CString(L"PipeLine"));
    line->setColor(3, true);
    CVexDbObjectId id;
    drawing.addEntity(line, id);
    EXPECT_TRUE(line->LayerId() == recordNamed(drawing.layers(), L"PipeLine"));
    EXPECT_TRUE(line->ColorId() == recordNamed(drawing.colors(), L"3"));
    EXPECT_EQ(1, recordNamed(drawing.layers(), L"PipeLine")->getNumEntity());
    EXPECT_EQ(0, recordNamed(other.layers(), L"PipeLine")->getNumEntity());
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(DatabaseTest, EntityThatComesBackIsBoundToTheRecordsOfToday)
{
    CVexDbLine* line = addLine(drawing);
    auto* walls = addRecord(drawing.layers(), L"Walls");
    line->setLayer(CVexDbObjectId(walls));
    drawing.removeEntity(line);
    auto* replacement = addRecord(drawing.layers(), L"Walls");
    EXPECT_TRUE(line->LayerId() == walls) << "retired, but alive";
    CVexDbObjectId id;
    drawing.addEntity(line, id);
    EXPECT_TRUE(line->LayerId() == replacement);
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(DatabaseTest, EntityRemovedFromOneDrawingMayEnterAnother)
{
    auto other = std::make_unique<CVexDbDatabase>(false);
    CVexDbLine* line = addLine(*other);
    other->removeEntity(line);
    CVexDbObjectId id;
    drawing.addEntity(line, id);
    other.reset();
    EXPECT_EQ(0.0, line->StartPoint().x) << "the first drawing did not free it";
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(DatabaseTest, SettersMoveAnEntityBetweenTheIndexes)
{
    CVexDbLine* line = addLine(drawing);
    line->setLayer(CString(L"PipeLine"));
    line->setColor(1, true);
    line->setLineType(CString(L"Hidden"), true);
    EXPECT_EQ(0, recordNamed(drawing.layers(), L"0")->getNumEntity());
    EXPECT_EQ(1, recordNamed(drawing.layers(), L"PipeLine")->getNumEntity());
    EXPECT_EQ(1, recordNamed(drawing.colors(), L"1")->getNumEntity());
    EXPECT_EQ(1, recordNamed(drawing.linetypes(), L"Hidden")->getNumEntity());
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(DatabaseTest, RemovalDropsTheTrackersOfThatEntityOnly)
{
    int dropped = 0;
    int drawn = 0;
    CVexDbLine* line = addLine(drawing);
    CVexDbLine* other = addLine(drawing);
    drawing.commandHandler().AddTracker(new CountingTracker(line, dropped, drawn));
    drawing.commandHandler().AddTracker(new CountingTracker(other, dropped, drawn));
    drawing.removeEntity(line);
    EXPECT_EQ(1, dropped);
    CVexRecordingDC dc;
    drawing.commandHandler().TrackerDraw(&dc);
    drawing.commandHandler().TrackerDraw(nullptr);
    EXPECT_EQ(1, drawn);
    drawing.commandHandler().ClearTracker(false); // the counters end before the drawing does
}

TEST_F(DatabaseTest, TheErasedBitDropsTheTrackerAndKeepsTheIndexes)
{
    int dropped = 0;
    int drawn = 0;
    CVexDbLine* byCall = addLine(drawing);
    CVexDbLine* byStatus = addLine(drawing);
    drawing.commandHandler().AddTracker(new CountingTracker(byCall, dropped, drawn));
    drawing.commandHandler().AddTracker(new CountingTracker(byStatus, dropped, drawn));
    byCall->setErased();
    EXPECT_EQ(1, dropped);
    byStatus->setObjectStatus(kStatusInvisible);
    EXPECT_EQ(1, dropped);
    byStatus->setObjectStatus(kStatusErased | kStatusInvisible);
    EXPECT_EQ(2, dropped);
    EXPECT_EQ(2, recordNamed(drawing.layers(), L"0")->getNumEntity());
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST(DatabaseEndTest, TearDownDropsTrackersUndrawnAndTheCurrentDatabase)
{
    int dropped = 0;
    int drawn = 0;
    auto drawing = std::make_unique<CVexDbDatabase>(false);
    _gpDatabase = drawing.get();
    CVexDbLine* line = addLine(*drawing);
    drawing->commandHandler().AddTracker(new CountingTracker(line, dropped, drawn));
    tagUndoEditEntity edit;
    edit.entity = line->objectId();
    edit.data = VexUndoGeometry::of(*line);
    drawing->undoHandler().AddUndo(&edit);
    drawing->removeEntity(line);
    drawing.reset();
    EXPECT_EQ(1, dropped);
    EXPECT_EQ(0, drawn);
    EXPECT_EQ(nullptr, _gpDatabase);
}

TEST(DatabaseEndTest, AnotherCurrentDatabaseStays)
{
    CVexDbDatabase current(false);
    _gpDatabase = &current;
    {
        const CVexDbDatabase other(false);
    }
    EXPECT_EQ(&current, _gpDatabase);
    _gpDatabase = nullptr;
}

TEST(DatabaseEndTest, CommandThatWaitsInAViewLosesTheCapture)
{
    HeadlessScope headless;
    CVexMemoryWindow window;
    auto drawing = std::make_unique<CVexDbDatabase>(false);
    drawing->displays().getCurrentRecord()->setView(&window, window.GetDC());
    window.SetCapture();
    ASSERT_EQ(&window, GetCapture());
    drawing.reset();
    EXPECT_EQ(nullptr, GetCapture());
}

TEST_F(DatabaseTest, EntitiesOfAClassAreDrawnOnTheActiveContext)
{
    CVexMemoryWindow window;
    addLine(drawing);
    addLine(drawing, 5.0);
    drawing.DrawEntities(VexDb::kLine); // without a context nothing happens
    drawing.setActiveDC(window.GetDC());
    drawing.DrawEntities(VexDb::kArc);
    EXPECT_TRUE(window.recording().strokes().empty());
    drawing.DrawEntities(VexDb::kLine);
    EXPECT_EQ(2u, window.recording().strokes().size());
}

TEST_F(DatabaseTest, DrawNeedsAView)
{
    CVexMemoryWindow window;
    addLine(drawing);
    drawing.Draw();
    drawing.displays().getCurrentRecord()->setView(&window, window.GetDC());
    drawing.displays().getCurrentRecord()->SetCurDispWin(CVexGePoint2d(0, 0),
                                                         CVexGePoint2d(10, 10));
    drawing.displays().getCurrentRecord()->MakeUpDisplayWindow(window.GetDC());
    drawing.Draw();
    EXPECT_FALSE(window.recording().strokes().empty());
}

TEST_F(DatabaseTest, NullIsNoCurrentRecord)
{
    drawing.setCurrentLayer(CVexDbObjectId::kNULL);
    EXPECT_TRUE(drawing.currentLayer() == recordNamed(drawing.layers(), L"0"));
    drawing.setCurrentLayer(CVexDbObjectId(recordNamed(drawing.layers(), L"WeldNum")));
    EXPECT_EQ(CString(L"WeldNum"), drawing.layers().getCurrentRecord()->getName());
}

TEST_F(DatabaseTest, UndoKeepsTheNewestInFrontAndNothingWithoutAnEntity)
{
    tagUndoEditEntity edit;
    EXPECT_EQ(0, drawing.undoHandler().AddUndo(&edit));
    edit.entity = addLine(drawing)->objectId();
    edit.editType = kUndoMove;
    EXPECT_EQ(1, drawing.undoHandler().AddUndo(&edit));
    edit.editType = kUndoErase;
    EXPECT_EQ(2, drawing.undoHandler().AddUndo(&edit));
    EXPECT_EQ(kUndoErase, drawing.undoHandler().undoStack().front().editType);
}

TEST(HelperTest, NumericTexts)
{
    for (const wchar_t* text : {L"1,2", L"-", L"", L" 12.5 ", L"(3)"}) {
        EXPECT_TRUE(_isNumericValue(text)) << CString(text).utf8();
    }
    EXPECT_FALSE(_isNumericValue(L"1e5"));
    EXPECT_FALSE(_isNumericValue(L"1\u00e9"));
    EXPECT_TRUE(_isDigitValue(L" 120 "));
    EXPECT_TRUE(_isDigitValue(L""));
    EXPECT_FALSE(_isDigitValue(L"-1"));
    EXPECT_FALSE(_isDigitValue(L"1.0"));
}

TEST(HelperTest, CodePages)
{
    struct Row {
        unsigned codePage;
        const wchar_t* text;
        const char* bytes;
    };
    constexpr Row kRows[] = {{65001, L"\u00e9", "\xc3\xa9"},
                             {1252, L"a\u00e9", "a\xe9"},
                             {949, L"\uac00", "\xb0\xa1"},
                             {1252, L"\uac00", "?"},
                             {1252, L"", ""}};
    for (const Row& row : kRows) {
        const std::unique_ptr<char[]> converted(_ConvertUnicodeToAnsi(row.text, row.codePage));
        EXPECT_STREQ(row.bytes, converted.get()) << row.codePage;
    }
}

TEST(HelperTest, FolderDialogNeedsAParentAndAPerson)
{
    class Answering : public CVexHeadlessBackend {
    public:
        bool chooseFolder(CWnd*, const CString&, const CString& start, CString& chosen) override
        {
            chosen = start + L"/b";
            return true;
        }
    } backend;
    CVexMemoryWindow window;
    CString chosen;
    EXPECT_EQ(0, _FindFolderDlg(&window, chosen, L"Folder", L"/a"));
    CVexBackend* before = CVexBackend::install(&backend);
    EXPECT_EQ(0, _FindFolderDlg(nullptr, chosen, L"Folder", L"/a"));
    EXPECT_EQ(1, _FindFolderDlg(&window, chosen, L"Folder", L"/a"));
    CVexBackend::install(before);
    EXPECT_EQ(CString(L"/a/b"), chosen);
}

TEST(HelperTest, ProcessWideValuesStartAsEveryDrawingExpects)
{
    EXPECT_EQ(100.0, _dDispScale);
    EXPECT_EQ(100, _wArcRes);
    CString module;
    EXPECT_TRUE(_GetModulePath(module));
    EXPECT_FALSE(module.IsEmpty());
}

TEST(HelperTest, BackgroundPixelIsSearchedColumnByColumnInAHalfOpenSquare)
{
    class Pixels : public CVexRecordingDC {
    public:
        std::vector<CPoint> background;

    protected:
        COLORREF devicePixelAt(CPoint point) const override
        {
            return std::ranges::find(background, point) != background.end() ? GetBkColor() : 1;
        }
    } dc;
    CPoint found(-1, -1);
    EXPECT_FALSE(_getPixelInofo(nullptr, 2, CPoint(10, 10), found));
    dc.background = {CPoint(12, 10), CPoint(10, 12)};
    EXPECT_FALSE(_getPixelInofo(&dc, 2, CPoint(10, 10), found)) << "the far sides are not in it";
    dc.background = {CPoint(11, 8), CPoint(10, 11)};
    EXPECT_TRUE(_getPixelInofo(&dc, 2, CPoint(10, 10), found));
    EXPECT_EQ(CPoint(10, 11), found);
}
