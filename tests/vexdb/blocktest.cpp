#include "dbfixture.h"
#include "vexdb/dbobject/vexdbentsetiterator.h"

namespace {

/// A line that says it is of another kind: for kinds that the library does not have yet.
class KindLine : public CVexDbLine {
public:
    explicit KindLine(VexDb::ClassType type) : CVexDbLine(CVexGePoint2d(0, 0), CVexGePoint2d(1, 1))
    {
        CVexDbObject::setClassType(type);
    }
    using CVexDbLine::operator=;
    CVexDbObjectId textStyle() const override { return CVexDbObjectId(style); }
    void setTextStyle(const CVexDbObjectId& id) override { style = id.getPObject(); }
    CString recordName() const override { return name; }
    bool OnBoundaryChanged(CVexDbCurve*) override
    {
        ++boundaryCalls;
        return follows;
    }

    CVexDbObject* style = nullptr;
    CString name;
    bool follows = false;
    int boundaryCalls = 0;
};

class BlockTest : public ::testing::Test {
protected:
    CVexDbBlockTableRecord* block(const wchar_t* name)
    {
        return recordNamed(drawing.blocks(), name);
    }
    CVexDbBlockTableRecord* addBlock(const wchar_t* name)
    {
        auto* made = new CVexDbBlockTableRecord(&drawing);
        made->setName(CString(name));
        made->initDisplayRec();
        drawing.blocks().add(made);
        return made;
    }
    CVexDbDisplayTableRecord* view(const wchar_t* name)
    {
        CVexDbDisplayTableRecord* record = nullptr;
        drawing.displays().getRecord(name, record, false);
        return record;
    }
    KindLine* addKind(VexDb::ClassType type)
    {
        auto* entity = new KindLine(type);
        CVexDbObjectId id;
        drawing.addEntity(entity, id);
        return entity;
    }

    CVexDbDatabase drawing{true};
    CVexDbBlockTableRecord& model = *drawing.blocks().getCurrentRecord();
};

} // namespace

TEST_F(BlockTest, EmptyBlockGivesNoIterator)
{
    CVexDbEntSetIterator* iterator = nullptr;
    EXPECT_FALSE(model.newIterator(iterator, true));
    EXPECT_EQ(nullptr, iterator);
    EXPECT_EQ(-1, model.ClearEntity());
}

TEST_F(BlockTest, AddedEntityIsOwnedAndShown)
{
    CVexDbLine* line = addLine(drawing);
    EXPECT_EQ(1, model.getNumEntity());
    EXPECT_TRUE(line->ownerId() == &model);
    EXPECT_TRUE(model.displayRecord()->displayedIdSet()->contains(line->objectId()));
}

TEST_F(BlockTest, OnlyClass29IsAnAttributeDefinition)
{
    addKind(VexDb::kAttribute);
    EXPECT_EQ(1, model.getNumEntity());
    KindLine* definition = addKind(VexDb::kAttribDefinition);
    EXPECT_EQ(1, model.getNumEntity());
    EXPECT_TRUE(model.attribDefinitionSet()->contains(definition->objectId()));
    drawing.removeEntity(definition);
    EXPECT_TRUE(model.attribDefinitionSet()->empty());
}

TEST_F(BlockTest, ClearTakesErasedEntitiesTooAndLeavesNoIndex)
{
    addLine(drawing)->setErased();
    CVexDbLine* line = addLine(drawing);
    EXPECT_EQ(0, model.ClearEntity());
    EXPECT_EQ(0, model.getNumEntity());
    EXPECT_EQ(0, drawing.layers().getCurrentRecord()->getNumEntity());
    EXPECT_TRUE(model.displayRecord()->displayedIdSet()->empty());
    EXPECT_TRUE(line->ownerId().isNull()) << "still alive for whoever holds it";
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(BlockTest, ReferencesAreCounted)
{
    CVexDbLine* line = addLine(drawing);
    EXPECT_EQ(1, model.addReference(line->objectId()));
    EXPECT_EQ(1, model.addReference(line->objectId()));
    EXPECT_EQ(0, model.removeReference(line->objectId()));
    model.addReference(line->objectId());
    EXPECT_EQ(0, model.ClearReferenceSet());
    EXPECT_TRUE(model.referenceSet()->empty());
}

TEST_F(BlockTest, NewViewOfAFilledBlockShowsItsEntities)
{
    auto* valve = new CVexDbBlockTableRecord(&drawing);
    valve->setName(CString(L"Valve"));
    auto* line = new CVexDbLine(CVexGePoint2d(0, 0), CVexGePoint2d(1, 1));
    line->setDatabase(&drawing);
    valve->addEntity(line->objectId());
    drawing.blocks().add(valve);
    EXPECT_EQ(nullptr, valve->displayRecord());
    valve->initDisplayRec();
    EXPECT_EQ(view(L"Valve"), valve->displayRecord());
    EXPECT_TRUE(valve->displayRecord()->displayedIdSet()->contains(line->objectId()));
    EXPECT_NE(valve->displayRecord(), drawing.displays().getCurrentRecord());
    EXPECT_TRUE(line->IsDbEntity()) << "a block's entities are the drawing's";
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(BlockTest, ViewThatIsThereBecomesCurrent)
{
    CVexDbBlockTableRecord* valve = addBlock(L"Valve");
    valve->initDisplayRec();
    EXPECT_EQ(valve->displayRecord(), drawing.displays().getCurrentRecord());
    EXPECT_EQ(view(L"MODEL_SPACE"), drawing.displays().getPreviewRecord());
}

TEST_F(BlockTest, SpaceIsSelectedByItsExactName)
{
    EXPECT_FALSE(drawing.blocks().SetCurentSpace(L""));
    EXPECT_FALSE(drawing.blocks().SetCurentSpace(L"paper_space"));
    EXPECT_EQ(&model, drawing.blocks().getCurrentRecord());
    EXPECT_TRUE(drawing.blocks().SetCurentSpace(L"PAPER_SPACE"));
    EXPECT_EQ(block(L"PAPER_SPACE"), drawing.blocks().getCurrentRecord());
    EXPECT_EQ(view(L"PAPER_SPACE"), drawing.displays().getCurrentRecord());
}

TEST_F(BlockTest, ViewWithoutAWindowTakesOverThePreviousOnes)
{
    CVexMemoryWindow window;
    view(L"MODEL_SPACE")->setView(&window, window.GetDC());
    drawing.blocks().SetCurentSpace(L"PAPER_SPACE");
    EXPECT_EQ(&window, view(L"PAPER_SPACE")->getView());
    EXPECT_EQ(window.GetDC(), view(L"PAPER_SPACE")->GetCurrentDC());
}

TEST_F(BlockTest, ObjectIsFoundByItsNumberInTheCurrentBlockOnly)
{
    CVexDbLine* line = addLine(drawing);
    EXPECT_TRUE(drawing.blocks().getObjectId(line->getCreatedTime()) == line);
    EXPECT_TRUE(drawing.blocks().getObjectId(line->getCreatedTime() + 1).isNull());
    drawing.blocks().SetCurentSpace(L"PAPER_SPACE");
    EXPECT_TRUE(drawing.blocks().getObjectId(line->getCreatedTime()).isNull());
}

TEST_F(BlockTest, RenamedBlockTakesItsViewAlong)
{
    CVexDbBlockTableRecord* valve = addBlock(L"Valve");
    wchar_t name[] = L"Pump";
    drawing.blocks().reName(valve, name);
    EXPECT_EQ(valve, block(L"Pump"));
    EXPECT_EQ(valve->displayRecord(), view(L"Pump"));
    EXPECT_EQ(nullptr, view(L"Valve"));
}

TEST_F(BlockTest, SpacesKeepTheirNames)
{
    wchar_t name[] = L"Other";
    drawing.blocks().reName(&model, name);
    EXPECT_EQ(&model, block(L"MODEL_SPACE"));
    EXPECT_EQ(nullptr, block(L"Other"));
}

TEST_F(BlockTest, SpacesAndCurrentBlocksAreNotRemoved)
{
    CVexDbBlockTableRecord* valve = addBlock(L"Valve");
    EXPECT_FALSE(drawing.blocks().removeRecord(L"PAPER_SPACE"));
    EXPECT_FALSE(drawing.blocks().removeRecord(L"NoSuch"));
    drawing.blocks().setCurrentRecord(valve);
    EXPECT_FALSE(drawing.blocks().removeRecord(L"Valve"));
    drawing.blocks().setCurrentRecord(&model);
    EXPECT_FALSE(drawing.displays().removeRecord(L"MODEL_SPACE"));
    EXPECT_TRUE(drawing.blocks().removeRecord(L"Valve"));
    EXPECT_EQ(nullptr, view(L"Valve"));
}

TEST_F(BlockTest, RemovedBlocksEntitiesLeaveEveryIndex)
{
    CVexDbBlockTableRecord* valve = addBlock(L"Valve");
    auto* line = new CVexDbLine(CVexGePoint2d(0, 0), CVexGePoint2d(1, 1));
    CVexDbObjectId id;
    drawing.addEntityTo(*valve, line, id);
    EXPECT_EQ(line, drawing.lastEntity());
    ASSERT_TRUE(drawing.blocks().removeRecord(L"Valve"));
    EXPECT_EQ(nullptr, drawing.lastEntity());
    EXPECT_EQ(0, drawing.layers().getCurrentRecord()->getNumEntity());
    EXPECT_FALSE(line->IsDbEntity());
    EXPECT_TRUE(valve->entitySet()->contains(id)) << "the retired block keeps it";
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(BlockTest, ReplacedSpaceHandsItsViewOver)
{
    addLine(drawing);
    CVexDbDisplayTableRecord* const modelView = model.displayRecord();
    auto* fresh = new CVexDbBlockTableRecord(&drawing);
    fresh->setName(CString(L"MODEL_SPACE"));
    drawing.blocks().add(fresh);
    EXPECT_EQ(fresh, drawing.blocks().getCurrentRecord());
    EXPECT_EQ(modelView, fresh->displayRecord());
    EXPECT_TRUE(modelView->displayedIdSet()->empty());
    EXPECT_EQ(0, drawing.layers().getCurrentRecord()->getNumEntity());
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(BlockTest, AssignedBlockHasCopiesOfItsOwn)
{
    CVexDbLine* line = addLine(drawing, 5.0);
    CVexDbBlockTableRecord* valve = addBlock(L"Valve");
    *valve = model;
    EXPECT_EQ(CString(L"Valve"), valve->getName())
        << "a record that stands in a table keeps its name";
    ASSERT_EQ(1, valve->getNumEntity());
    auto* copy = static_cast<CVexDbLine*>((*valve->entitySet()->begin()).getPObject());
    EXPECT_NE(line, copy);
    EXPECT_EQ(5.0, copy->StartPoint().x);
    EXPECT_TRUE(copy->IsDbEntity());
    EXPECT_EQ(1, model.getNumEntity());
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(BlockTest, BlockThatNoTableTookLeavesNoTrace)
{
    addLine(drawing);
    {
        CVexDbBlockTableRecord working(&drawing);
        working = model;
        EXPECT_EQ(2, drawing.layers().getCurrentRecord()->getNumEntity());
    }
    EXPECT_EQ(1, drawing.layers().getCurrentRecord()->getNumEntity());
    EXPECT_EQ(1, recordNamed(drawing.entities(), L"LINE")->getNumEntity());
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(BlockTest, BlockMadeForAnotherDrawingMovesWithItsEntities)
{
    CVexDbDatabase other(false);
    addLine(other);
    auto* valve = new CVexDbBlockTableRecord(&other);
    *valve = *other.blocks().getCurrentRecord();
    valve->setName(CString(L"Valve"));
    ASSERT_TRUE(drawing.blocks().add(valve));
    valve->initDisplayRec();
    EXPECT_EQ(1, drawing.layers().getCurrentRecord()->getNumEntity());
    EXPECT_EQ(1, other.layers().getCurrentRecord()->getNumEntity());
    EXPECT_TRUE(drawing.selfCheck().empty());
    EXPECT_TRUE(other.selfCheck().empty());
}

TEST_F(BlockTest, BlockWhoseViewWasRemovedGetsANewOne)
{
    CVexDbBlockTableRecord* valve = addBlock(L"Valve");
    CVexDbObjectId id;
    drawing.addEntityTo(*valve, new CVexDbLine(CVexGePoint2d(0, 0), CVexGePoint2d(1, 1)), id);
    ASSERT_TRUE(drawing.displays().removeRecord(L"Valve"));
    EXPECT_EQ(nullptr, valve->displayRecord());
    drawing.blocks().SetCurentSpace(L"Valve");
    EXPECT_TRUE(valve->displayRecord()->displayedIdSet()->contains(id));
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(BlockTest, DisplayTableTakesEntitiesIntoTheCurrentViewAndKeepsThePreviousOne)
{
    CVexDbLine line(CVexGePoint2d(0, 0), CVexGePoint2d(1, 1));
    EXPECT_TRUE(drawing.displays().addEntity(CVexDbObjectId(&line)));
    EXPECT_TRUE(view(L"MODEL_SPACE")->displayedIdSet()->contains(CVexDbObjectId(&line)));
    view(L"MODEL_SPACE")->removeEntity(CVexDbObjectId(&line));
    EXPECT_FALSE(drawing.displays().setCurrentRecord(L"NoSuch"));
    EXPECT_TRUE(drawing.displays().setCurrentRecord(L"PAPER_SPACE"));
    EXPECT_EQ(view(L"MODEL_SPACE"), drawing.displays().getPreviewRecord());
    EXPECT_EQ(view(L"PAPER_SPACE"), drawing.displays().getCurrentRecord());
}

TEST_F(BlockTest, InitDisplayTableMakesTheOneViewOverTheLimits)
{
    drawing.settings().m_ptLimitsMin = VexXY{-10, -20};
    drawing.settings().m_ptLimitsMax = VexXY{420, 297};
    drawing.displays().initDisplayTable();
    EXPECT_EQ(view(L"MODEL_SPACE"), drawing.displays().getCurrentRecord());
    EXPECT_EQ(nullptr, drawing.displays().getPreviewRecord());
    CVexGePoint2d least, most;
    view(L"MODEL_SPACE")->getLimits(least, most);
    EXPECT_EQ(-20.0, least.y);
    EXPECT_EQ(420.0, most.x);
}

TEST_F(BlockTest, ReplacedViewHandsItsBlockAndWindowOver)
{
    CVexMemoryWindow window;
    view(L"MODEL_SPACE")->setView(&window, window.GetDC());
    CVexDbLine* line = addLine(drawing);
    CVexDbDisplayTableRecord* made = addRecord(drawing.displays(), L"MODEL_SPACE");
    EXPECT_EQ(made, model.displayRecord());
    EXPECT_EQ(&window, made->getView());
    EXPECT_TRUE(made->displayedIdSet()->contains(line->objectId()));
    EXPECT_TRUE(drawing.selfCheck().empty());
}

TEST_F(BlockTest, ChangedCurveIsOfferedUntilAHatchTakesIt)
{
    CVexMemoryWindow window;
    model.displayRecord()->setView(&window, window.GetDC());
    CVexDbLine* line = addLine(drawing);
    KindLine* first = addKind(VexDb::kHatch);
    KindLine* second = addKind(VexDb::kHatch);
    KindLine* third = addKind(VexDb::kHatch);
    second->follows = true;
    model.OnCurveChanged(line, 0);
    EXPECT_EQ(0, first->boundaryCalls);
    model.OnCurveChanged(line, 1);
    EXPECT_EQ(1, first->boundaryCalls);
    EXPECT_EQ(1, second->boundaryCalls);
    EXPECT_EQ(0, third->boundaryCalls);
    EXPECT_EQ(1, window.invalidations());
}

TEST_F(BlockTest, TextTablesAreCollectedAndFoundByName)
{
    addLine(drawing);
    KindLine* parts = addKind(VexDb::kTextTable);
    KindLine* welds = addKind(VexDb::kTextTable);
    parts->name = L"Parts";
    welds->name = L"Welds";
    std::vector<CVexDbEntity*> tables;
    model.GetTextTable(tables);
    EXPECT_EQ((std::vector<CVexDbEntity*>{parts, welds}), tables);
    EXPECT_EQ(welds, model.GetTextTable(CString(L"Welds")));
    EXPECT_EQ(nullptr, model.GetTextTable(CString(L"Valves")));
}

TEST_F(BlockTest, TextsAreListedByTheirStyle)
{
    auto* text = new KindLine(VexDb::kText);
    text->style = drawing.currentTextStyle().getPObject();
    CVexDbObjectId id;
    drawing.addEntity(text, id);
    auto* standard = drawing.textStyles().getCurrentRecord();
    EXPECT_EQ(1, standard->getNumEntity());
    auto* replacement = addRecord(drawing.textStyles(), L"STANDARD");
    EXPECT_EQ(replacement, text->style);
    EXPECT_EQ(1, replacement->getNumEntity());
    EXPECT_TRUE(drawing.currentTextStyle() == replacement);
    drawing.removeEntity(text);
    EXPECT_EQ(0, replacement->getNumEntity());
}

TEST_F(BlockTest, TextThatComesBackTakesTheStyleOfToday)
{
    auto* text = new KindLine(VexDb::kText);
    text->style = drawing.currentTextStyle().getPObject();
    CVexDbObjectId id;
    drawing.addEntity(text, id);
    drawing.removeEntity(text);
    auto* replacement = addRecord(drawing.textStyles(), L"STANDARD");
    drawing.addEntity(text, id);
    EXPECT_EQ(replacement, text->style);
    EXPECT_EQ(1, replacement->getNumEntity());
}

TEST_F(BlockTest, SymbolEntitiesAreListedByTheirRecordsName)
{
    auto* valve = addRecord(drawing.symbols(), L"Valve");
    KindLine* symbol = addKind(VexDb::kSymbol);
    symbol->name = L"Valve";
    EXPECT_TRUE(drawing.symbols().addRefEntity(symbol->objectId()));
    EXPECT_EQ(1, valve->getNumEntity());
    symbol->name = L"Pump";
    EXPECT_FALSE(drawing.symbols().addRefEntity(symbol->objectId()));
}

TEST(EntityTableTest, KeysByClass)
{
    struct Row {
        VexDb::ClassType type;
        const wchar_t* key;
    };
    constexpr Row kRows[] = {{VexDb::kArc, L"ARC"},
                             {VexDb::kCircle, L"CIRCLE"},
                             {VexDb::kEllipse, L"ELLIPSE"},
                             {VexDb::kEllipseArc, L"ELLIPSEARC"},
                             {VexDb::kLine, L"LINE"},
                             {VexDb::kPolyline, L"POLYLINE"},
                             {VexDb::kSpline, L"SPLINE"},
                             {VexDb::kCubicSpline, L"CSPLINE"},
                             {VexDb::kSpiral, L"SPIRAL"},
                             {VexDb::kBlockInsert, L"INSERT"},
                             {VexDb::kHatch, L"HATCH"},
                             {VexDb::kPoint, L"POINT"},
                             {VexDb::kText, L"TEXT"},
                             {VexDb::kRectangle, L"RECT"},
                             {VexDb::kDimension, L"DIMENSION"},
                             {VexDb::kVerticalDim, L"DIMENSION"},
                             {VexDb::kBox, L"BOX"},
                             {VexDb::kImage, L"IMAGE"},
                             {VexDb::kSymbol, L"SYMBOL"},
                             {VexDb::kAttribDefinition, L"ATTDEF"},
                             {VexDb::kAttribute, L"ATTRIB"},
                             {VexDb::kTextTable, L"TEXTTABLE"}};
    CVexDbDatabase drawing(false);
    for (const Row& row : kRows) {
        wchar_t key[33] = {};
        CVexDbEntityTableRecord* record = nullptr;
        EXPECT_FALSE(drawing.entities().has(row.type, key, record));
        EXPECT_EQ(CString(row.key), CString(key)) << row.type;
        EXPECT_EQ(nullptr, record);
    }
}

TEST(EntityTableTest, KindsWithoutAKeyLeaveTheBufferAlone)
{
    CVexDbDatabase drawing(false);
    for (const VexDb::ClassType type :
         {VexDb::kEntity, VexDb::kCurve, VexDb::kCobweb, VexDb::kBlockTable, VexDb::kNotSelected}) {
        wchar_t key[33] = L"before";
        CVexDbEntityTableRecord* record = nullptr;
        EXPECT_FALSE(drawing.entities().has(type, key, record));
        EXPECT_EQ(CString(L"before"), CString(key));
    }
}

TEST_F(BlockTest, EntityTableFollowsTheDrawing)
{
    CVexDbLine* line = addLine(drawing);
    addKind(VexDb::kAlignedDim);
    addKind(VexDb::kRadialDim);
    auto* lines = recordNamed(drawing.entities(), L"LINE");
    auto* dimensions = recordNamed(drawing.entities(), L"DIMENSION");
    EXPECT_EQ(1, lines->getNumEntity());
    EXPECT_EQ(2, dimensions->getNumEntity());
    EXPECT_FALSE(drawing.entities().removeRecord(L"LINE"));
    drawing.removeEntity(line);
    EXPECT_TRUE(drawing.entities().removeRecord(L"LINE"));
    addLine(drawing);
    EXPECT_EQ(1, recordNamed(drawing.entities(), L"LINE")->getNumEntity());
}

TEST_F(BlockTest, CobwebStandsInItsBlockButInNoKindsRecord)
{
    KindLine* cobweb = new KindLine(VexDb::kCobweb);
    CVexDbObjectId id;
    drawing.addEntity(cobweb, id);
    EXPECT_EQ(1, model.getNumEntity());
    EXPECT_EQ(0, drawing.entities().size());
    EXPECT_FALSE(drawing.entities().addEntity(id));
    EXPECT_FALSE(drawing.entities().removeEntity(id));
}
