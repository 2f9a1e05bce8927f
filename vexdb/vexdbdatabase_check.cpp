#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"
#include "vexdb/vexdbdatabase.h"

#include <unordered_set>

namespace {

/// Walks one database and collects what is wrong with it. An address that another place handed out
/// is looked up among the living objects before anything is asked of it.
class DatabaseChecker {
public:
    explicit DatabaseChecker(CVexDbDatabase& database) : m_database(database) {}
    std::vector<CString> run();

private:
    static constexpr std::size_t kMostFaults = 1000;

    void fault(const CString& where, const wchar_t* what);
    bool isEntity(const CVexDbObject* object) const { return m_entities.contains(object); }
    bool standsIn(const CVexDbTable& table, const CVexDbObjectId& id) const;
    void gatherEntities();
    void checkTable(CVexDbTable& table, const wchar_t* name);
    void checkTables();
    void checkRecord(const CVexDbTable& table, const CString& key, const CVexDbTableRecord& record,
                     const CString& where);
    void checkLayers();
    void checkLayer(const CVexDbLayerTableRecord& layer);
    void checkLayerSet(const CVexDbLayerRefSet& users, const CString& where);
    void checkBlocks();
    void checkBlock(CVexDbBlockTableRecord& block);
    void checkEntity(CVexDbBlockTableRecord& block, const CVexDbEntity& entity);
    void checkView(CVexDbBlockTableRecord& block, const CString& where);
    bool checkSet(const CVexDbIdSet& set, const CString& where);
    template <class Record>
    std::size_t checkUsers(CVexDbTable& table, const wchar_t* name,
                           CVexDbObjectId (CVexDbEntity::*refersTo)() const);
    void checkIndexes();
    void checkKinds();
    template <class Record>
    void checkUser(CVexDbTable& table, const CVexDbObjectId& id, const CVexDbEntity& entity,
                   const wchar_t* what);
    void checkCurrents();
    void checkCurrent(const CVexDbTable& table, const CVexDbObjectId& current, const wchar_t* name);

    CVexDbDatabase& m_database;
    std::vector<CString> m_faults;
    std::unordered_set<const CVexDbObject*> m_entities; // of all blocks
    std::unordered_set<const CVexDbObject*> m_records;  // of all tables
};

CString entityName(const CVexDbEntity& entity)
{
    CString name;
    name.Format(L"entity %u", entity.getCreatedTime());
    return name;
}

std::vector<CString> DatabaseChecker::run()
{
    gatherEntities();
    checkTables(); // gathers the records
    checkLayers();
    checkBlocks();
    checkIndexes();
    checkCurrents();
    return std::move(m_faults);
}

void DatabaseChecker::fault(const CString& where, const wchar_t* what)
{
    if (m_faults.size() < kMostFaults) {
        m_faults.push_back(where + L": " + what);
    }
}

bool DatabaseChecker::standsIn(const CVexDbTable& table, const CVexDbObjectId& id) const
{
    return m_records.contains(id.getPObject()) &&
           static_cast<const CVexDbTableRecord*>(id.getPObject())->table() == &table;
}

void DatabaseChecker::gatherEntities()
{
    for (const auto& [key, record] : m_database.blocks().records()) {
        auto& block = static_cast<CVexDbBlockTableRecord&>(*record);
        for (const CVexDbIdSet* set : {block.entitySet(), block.attribDefinitionSet()}) {
            for (auto at = set->begin(); at != set->end(); ++at) {
                if (!m_entities.insert(at.object()).second) {
                    fault(L"block '" + key + L"'", L"an entity stands in two places");
                }
            }
        }
    }
}

void DatabaseChecker::checkTables()
{
    checkTable(m_database.colors(), L"colour");
    checkTable(m_database.linetypes(), L"linetype");
    checkTable(m_database.layers(), L"layer");
    checkTable(m_database.textStyles(), L"text style");
    checkTable(m_database.symbols(), L"symbol");
    checkTable(m_database.projectInfos(), L"project information");
    checkTable(m_database.revisions(), L"revision");
    checkTable(m_database.blocks(), L"block");
    checkTable(m_database.displays(), L"view");
    checkTable(m_database.entities(), L"entity kind");
}

void DatabaseChecker::checkTable(CVexDbTable& table, const wchar_t* name)
{
    if (table.database() != &m_database || table.objectId() != CVexDbObjectId(&table)) {
        fault(CString(name) + L" table", L"it belongs to another database or names another object");
    }
    for (const auto& [key, record] : table.records()) {
        const CString where = CString(name) + L" '" + key + L"'";
        if (record == nullptr) {
            fault(where, L"there is no record");
        } else {
            m_records.insert(record.get());
            checkRecord(table, key, *record, where);
        }
    }
}

void DatabaseChecker::checkRecord(const CVexDbTable& table, const CString& key,
                                  const CVexDbTableRecord& record, const CString& where)
{
    // Renaming the base layer moves its key, while the record keeps its name.
    const bool isBaseLayer = &table == static_cast<const CVexDbTable*>(&m_database.layers()) &&
                             record.getName() == CVexDbLayerTableRecord::kBaseLayer;
    if (record.getName() != key && !isBaseLayer) {
        fault(where, L"the record has another name");
    }
    if (record.database() != &m_database) {
        fault(where, L"the record belongs to another database");
    }
    if (record.objectId() != CVexDbObjectId(&record)) {
        fault(where, L"the record identifies another object");
    }
    if (record.table() != &table || record.ownerId() != CVexDbObjectId(&table)) {
        fault(where, L"the record has another owner");
    }
}

void DatabaseChecker::checkLayers()
{
    for (const auto& [key, record] : m_database.layers().records()) {
        checkLayer(static_cast<const CVexDbLayerTableRecord&>(*record));
    }
    for (const auto& [key, record] : m_database.linetypes().records()) {
        const auto& linetype = static_cast<const CVexDbLTypeTableRecord&>(*record);
        checkLayerSet(linetype, L"linetype '" + key + L"'");
    }
    for (const auto& [key, record] : m_database.colors().records()) {
        const auto& color = static_cast<const CVexDbColorTableRecord&>(*record);
        checkLayerSet(color, L"colour '" + key + L"'");
    }
}

void DatabaseChecker::checkLayer(const CVexDbLayerTableRecord& layer)
{
    const CString where = L"layer '" + layer.getName() + L"'";
    const CVexDbObjectId color = layer.getColorId();
    if (!color.isNull() && !standsIn(m_database.colors(), color)) {
        fault(where, L"its colour is not in the table");
    }
    const CVexDbObjectId linetype = layer.getLinetypeId();
    if (linetype.isNull()) {
        return;
    }
    if (!standsIn(m_database.linetypes(), linetype)) {
        fault(where, L"its linetype is not in the table");
    } else if (!static_cast<CVexDbLTypeTableRecord*>(linetype.getPObject())
                    ->layerSet()
                    .contains(layer.objectId())) {
        fault(where, L"it is not among the layers of its linetype");
    }
}

// That a layer in a colour's set has that colour is not promised: assigning a colour tells neither.
void DatabaseChecker::checkLayerSet(const CVexDbLayerRefSet& users, const CString& where)
{
    const CVexDbIdSet& set = users.layerSet();
    for (auto at = set.begin(); at != set.end(); ++at) {
        if (!standsIn(m_database.layers(), *at)) {
            fault(where, L"a layer that it counts is not in the table");
            return;
        }
    }
}

void DatabaseChecker::checkBlocks()
{
    for (const auto& [key, record] : m_database.blocks().records()) {
        checkBlock(static_cast<CVexDbBlockTableRecord&>(*record));
    }
}

void DatabaseChecker::checkBlock(CVexDbBlockTableRecord& block)
{
    const CString where = L"block '" + block.getName() + L"'";
    for (const CVexDbIdSet* set : {block.entitySet(), block.attribDefinitionSet()}) {
        checkSet(*set, where);
        for (auto at = set->begin(); at != set->end(); ++at) {
            checkEntity(block, static_cast<const CVexDbEntity&>(*at.object()));
        }
    }
    checkSet(*block.referenceSet(), where);
    checkView(block, where);
}

// True when the set holds living entities only, in ascending order without repetition.
bool DatabaseChecker::checkSet(const CVexDbIdSet& set, const CString& where)
{
    std::size_t count = 0;
    const CVexDbObject* before = nullptr;
    for (auto at = set.begin(); at != set.end(); ++at, ++count) {
        if (!isEntity(at.object())) {
            fault(where, L"a set holds what stands in no block");
            return false;
        }
        if (before != nullptr && before->getCreatedTime() >= at.object()->getCreatedTime()) {
            fault(where, L"a set is out of order");
            return false;
        }
        before = at.object();
    }
    if (count != set.size()) {
        fault(where, L"a set counts wrongly");
    }
    return count == set.size();
}

void DatabaseChecker::checkEntity(CVexDbBlockTableRecord& block, const CVexDbEntity& entity)
{
    if (entity.database() != &m_database || !entity.IsDbEntity()) {
        fault(entityName(entity), L"it does not belong to the database");
    }
    if (entity.objectId() != CVexDbObjectId(&entity)) {
        fault(entityName(entity), L"it identifies another object");
    }
    if (entity.ownerId() != CVexDbObjectId(&block)) {
        fault(entityName(entity), L"its owner is not its block");
    }
    checkUser<CVexDbLayerTableRecord>(m_database.layers(), entity.LayerId(), entity, L"layer");
    checkUser<CVexDbLTypeTableRecord>(m_database.linetypes(), entity.LineTypeId(), entity,
                                      L"linetype");
    checkUser<CVexDbColorTableRecord>(m_database.colors(), entity.ColorId(), entity, L"colour");
    wchar_t key[CVexDbEntityTable::kKeyCapacity] = {};
    CVexDbEntityTableRecord* kind = nullptr;
    m_database.entities().has(entity.classType(), key, kind);
    const bool isIndexed = kind != nullptr && kind->entitySet().contains(entity.objectId());
    if (key[0] != L'\0' && !isIndexed) {
        fault(entityName(entity), L"it is not among the entities of its kind");
    }
}

// The record that an entity names stands in its table and counts the entity.
template <class Record>
void DatabaseChecker::checkUser(CVexDbTable& table, const CVexDbObjectId& id,
                                const CVexDbEntity& entity, const wchar_t* what)
{
    if (!standsIn(table, id)) {
        fault(entityName(entity) + L", " + what, L"it is not in the table");
    } else if (!static_cast<const Record*>(id.getPObject())
                    ->entitySet()
                    .contains(entity.objectId())) {
        fault(entityName(entity) + L", " + what, L"it does not count the entity");
    }
}

void DatabaseChecker::checkView(CVexDbBlockTableRecord& block, const CString& where)
{
    CVexDbDisplayTableRecord* named = nullptr;
    if (!m_database.displays().getRecord(block.name(), named, false) ||
        named != block.displayRecord()) {
        fault(where, L"it has no view of its name");
        return;
    }
    const CVexDbIdSet& shown = *named->displayedIdSet();
    if (!checkSet(shown, where + L", view")) {
        return;
    }
    for (auto at = shown.begin(); at != shown.end(); ++at) {
        if (at.object()->ownerId() != CVexDbObjectId(&block)) {
            fault(where, L"its view shows what is not its own");
            return;
        }
    }
    if (shown.size() != block.entitySet()->size() + block.attribDefinitionSet()->size()) {
        fault(where, L"its view does not show all of it");
    }
}

// Checks the sets of users of a table's records; gives how many entities they hold together.
template <class Record>
std::size_t DatabaseChecker::checkUsers(CVexDbTable& table, const wchar_t* name,
                                        CVexDbObjectId (CVexDbEntity::*refersTo)() const)
{
    std::size_t total = 0;
    for (const auto& [key, record] : table.records()) {
        const CString where = CString(name) + L" '" + key + L"'";
        const CVexDbIdSet& set = static_cast<Record&>(*record).entitySet();
        total += set.size();
        if (!checkSet(set, where)) {
            continue;
        }
        for (auto at = set.begin(); at != set.end(); ++at) {
            const auto& entity = static_cast<const CVexDbEntity&>(*at.object());
            if ((entity.*refersTo)() != CVexDbObjectId(record.get())) {
                fault(where, L"it counts an entity that names another");
                break;
            }
        }
    }
    return total;
}

void DatabaseChecker::checkIndexes()
{
    const std::size_t layers =
        checkUsers<CVexDbLayerTableRecord>(m_database.layers(), L"layer", &CVexDbEntity::LayerId);
    const std::size_t linetypes = checkUsers<CVexDbLTypeTableRecord>(
        m_database.linetypes(), L"linetype", &CVexDbEntity::LineTypeId);
    const std::size_t colors =
        checkUsers<CVexDbColorTableRecord>(m_database.colors(), L"colour", &CVexDbEntity::ColorId);
    const std::size_t all = m_entities.size();
    if (layers != all || linetypes != all || colors != all) {
        fault(L"database", L"the users of layers, linetypes or colours do not add up");
    }
    for (const auto& [key, record] : m_database.textStyles().records()) {
        checkSet(static_cast<CVexDbTextStyleTableRecord&>(*record).entitySet(),
                 L"text style '" + key + L"'");
    }
    for (const auto& [key, record] : m_database.symbols().records()) {
        checkSet(static_cast<CVexDbSymbolTableRecord&>(*record).entitySet(),
                 L"symbol '" + key + L"'");
    }
    checkKinds();
}

void DatabaseChecker::checkKinds()
{
    for (const auto& [name, record] : m_database.entities().records()) {
        const CString where = L"entity kind '" + name + L"'";
        const CVexDbIdSet& set = static_cast<CVexDbEntityTableRecord&>(*record).entitySet();
        if (!checkSet(set, where)) {
            continue;
        }
        for (auto at = set.begin(); at != set.end(); ++at) {
            wchar_t key[CVexDbEntityTable::kKeyCapacity] = {};
            CVexDbEntityTableRecord* kind = nullptr;
            m_database.entities().has(at.object()->classType(), key, kind);
            if (kind != record.get()) {
                fault(where, L"it counts an entity of another kind");
                break;
            }
        }
    }
}

void DatabaseChecker::checkCurrent(const CVexDbTable& table, const CVexDbObjectId& current,
                                   const wchar_t* name)
{
    if (!standsIn(table, current)) {
        fault(CString(L"current ") + name, L"it is not in the table");
    }
}

void DatabaseChecker::checkCurrents()
{
    checkCurrent(m_database.layers(), m_database.currentLayer(), L"layer");
    checkCurrent(m_database.linetypes(), m_database.currentLinetype(), L"linetype");
    checkCurrent(m_database.colors(), m_database.currentColor(), L"colour");
    checkCurrent(m_database.textStyles(), m_database.currentTextStyle(), L"text style");
    CVexDbBlockTableRecord* const block = m_database.blocks().getCurrentRecord();
    checkCurrent(m_database.blocks(), CVexDbObjectId(block), L"block");
    CVexDbDisplayTableRecord* const view = m_database.displays().getCurrentRecord();
    checkCurrent(m_database.displays(), CVexDbObjectId(view), L"view");
    const CVexDbObjectId previous(m_database.displays().getPreviewRecord());
    if (!previous.isNull() && !standsIn(m_database.displays(), previous)) {
        fault(L"previous view", L"it is not in the table");
    }
    const CVexDbEntity* last = m_database.lastEntity();
    if (last != nullptr && !isEntity(last)) {
        fault(L"last entity", L"it stands in no block");
    }
    for (const CVexDbEntityTracker* tracker : m_database.commandHandler().trackers()) {
        if (tracker->GetEntity() != nullptr && !isEntity(tracker->GetEntity())) {
            fault(L"tracker", L"its entity stands in no block");
        }
    }
}

} // namespace

std::vector<CString> CVexDbDatabase::selfCheck()
{
    return DatabaseChecker(*this).run();
}
