#include "tests/file/sampledrawing.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"

#include <functional>
#include <memory>
#include <string>

namespace {

// One way to break a whole drawing, and a part of what the check must say.
struct BreakRow {
    const char* name;
    std::function<void(CVexDbDatabase&)> breakIt;
    const char* says;
};

CVexDbEntity& firstOf(CVexDbDatabase& drawing)
{
    return *entitiesOf(drawing).front();
}

template <class Record, class Table>
Record& recordOf(Table& table, const wchar_t* name)
{
    return static_cast<Record&>(*table.records().at(CString(name)));
}

CVexDbLayerTableRecord& baseLayer(CVexDbDatabase& drawing)
{
    return recordOf<CVexDbLayerTableRecord>(drawing.layers(), L"0");
}

const BreakRow kBreaks[] = {
    {"EntityOwner", [](CVexDbDatabase& d) { firstOf(d).setOwnerId(CVexDbObjectId()); },
     "its owner is not its block"},
    {"EntityOutside", [](CVexDbDatabase& d) { firstOf(d).SetDbEntity(false); },
     "it does not belong to the database"},
    {"EntityIdentity",
     [](CVexDbDatabase& d) { firstOf(d).setObjectId(entitiesOf(d)[1]->objectId()); },
     "it identifies another object"},
    {"SetOutOfOrder", [](CVexDbDatabase& d) { firstOf(d).setCreatedTime(~0ULL >> 1); },
     "a set is out of order"},
    {"NotInItsLayer",
     [](CVexDbDatabase& d) { baseLayer(d).removeRefEntity(entitiesOf(d)[1]->objectId()); },
     "it does not count the entity"},
    {"StrangerInLayer", [](CVexDbDatabase& d) { baseLayer(d).addRefEntity(firstOf(d).objectId()); },
     "it counts an entity that names another"},
    {"NotInBlock",
     [](CVexDbDatabase& d) {
         CVexDbEntity& entity = firstOf(d);
         d.blocks().getCurrentRecord()->entitySet()->erase(entity.objectId());
         d.retire(std::unique_ptr<CVexDbObject>(&entity)); // somebody must free it
     },
     "a set holds what stands in no block"},
    {"NotShown",
     [](CVexDbDatabase& d) {
         d.displays().getCurrentRecord()->displayedIdSet()->erase(firstOf(d).objectId());
     },
     "its view does not show all of it"},
    {"ShownElsewhere",
     [](CVexDbDatabase& d) {
         const CVexDbObjectId stranger = entitiesOf(d, L"Valve")[0]->objectId();
         d.displays().getCurrentRecord()->displayedIdSet()->insert(stranger);
     },
     "its view shows what is not its own"},
    {"RecordOwner", [](CVexDbDatabase& d) { baseLayer(d).setOwnerId(CVexDbObjectId()); },
     "the record has another owner"},
    {"RecordName",
     [](CVexDbDatabase& d) {
         recordOf<CVexDbLayerTableRecord>(d.layers(), L"PipeLine").setName(CString(L"Pipe"));
     },
     "the record has another name"},
    {"RecordDatabase", [](CVexDbDatabase& d) { baseLayer(d).CVexDbObject::setDatabase(nullptr); },
     "the record belongs to another database"},
    {"LayerColor", [](CVexDbDatabase& d) { baseLayer(d).setColorId(CVexDbObjectId(&firstOf(d))); },
     "its colour is not in the table"},
    {"LinetypeForgetsLayer",
     [](CVexDbDatabase& d) {
         auto& linetype = recordOf<CVexDbLTypeTableRecord>(d.linetypes(), L"CONTINUOUS");
         linetype.removeLayerId(baseLayer(d).objectId());
     },
     "it is not among the layers of its linetype"},
    {"CurrentBlock", [](CVexDbDatabase& d) { d.blocks().setCurrentRecord(nullptr); },
     "current block: it is not in the table"},
};

class SelfCheckTest : public FileTest, public testing::WithParamInterface<BreakRow> {};

TEST_P(SelfCheckTest, FindsWhatIsBroken)
{
    CVexDbDatabase drawing(true);
    fillSample(drawing);
    ASSERT_EQ("", toText(drawing.selfCheck()));
    GetParam().breakIt(drawing);
    const std::string said = toText(drawing.selfCheck());
    EXPECT_NE(std::string::npos, said.find(GetParam().says)) << said;
}

INSTANTIATE_TEST_SUITE_P(All, SelfCheckTest, testing::ValuesIn(kBreaks),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(FileTest, RenamedBaseLayerIsWholeThoughItsKeyHasMoved)
{
    CVexDbDatabase drawing(false);
    wchar_t name[] = L"Base";
    drawing.layers().reName(&baseLayer(drawing), name);
    EXPECT_WHOLE(drawing);
}

TEST_F(FileTest, ForeignEntityOnAnUnknownLayerGoesToTheBaseLayerWhateverItsKey)
{
    CVexDbDatabase drawing(false);
    wchar_t name[] = L"Base";
    drawing.layers().reName(&baseLayer(drawing), name);
    CVexDbDatabase other(false);
    auto* steel = new CVexDbLayerTableRecord(&other);
    steel->setName(CString(L"Steel"));
    other.layers().add(steel);
    auto* line = new CVexDbLine(&other);
    line->setLayer(CString(L"Steel"));
    addTo(drawing, line);
    EXPECT_TRUE(line->LayerId() ==
                recordOf<CVexDbLayerTableRecord>(drawing.layers(), L"Base").objectId());
    EXPECT_EQ(L"0", line->Layer()); // the base layer's own name never changes
    EXPECT_WHOLE(drawing);
}

} // namespace
