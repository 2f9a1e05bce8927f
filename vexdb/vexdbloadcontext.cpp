#include "vexdb/vexdbloadcontext.h"

#include "platform/base/cfile.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/vexdbblocktablerecord.h"
#include "vexdb/dbobject/vexdbcolortablerecord.h"
#include "vexdb/dbobject/vexdbentitytablerecord.h"
#include "vexdb/dbobject/vexdblayertablerecord.h"
#include "vexdb/dbobject/vexdbltypetablerecord.h"
#include "vexdb/dbobject/vexdbtextstyletablerecord.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <array>
#include <memory>

namespace {

// Entities that are entered at once: they must still be in the nearest cache.
constexpr std::size_t kLongestRun = 128;

// A layer stands in the sets of its colour and linetype by its number, so it leaves them first.
void renumberLayer(CVexDbLayerTableRecord& layer, std::uint64_t number)
{
    const CVexDbObjectId id = layer.objectId();
    auto* color = static_cast<CVexDbColorTableRecord*>(layer.getColorId().getPObject());
    auto* linetype = static_cast<CVexDbLTypeTableRecord*>(layer.getLinetypeId().getPObject());
    // The two sides are not symmetric: a fresh layer is among its linetype's users only.
    const bool inColor = color != nullptr && color->layerSet().contains(id);
    const bool inLinetype = linetype != nullptr && linetype->layerSet().contains(id);
    if (inColor) {
        color->removeLayerId(id);
    }
    if (inLinetype) {
        linetype->removeLayerId(id);
    }
    layer.setCreatedTime(number);
    if (inColor) {
        color->addLayerId(id);
    }
    if (inLinetype) {
        linetype->addLayerId(id);
    }
}

// The tables whose records come back from a file.
std::array<const CVexDbTable*, 6> tablesOf(CVexDbDatabase& database)
{
    return {&database.colors(),     &database.linetypes(), &database.layers(),
            &database.textStyles(), &database.symbols(),   &database.blocks()};
}

} // namespace

CVexDbLoadContext::CVexDbLoadContext(CVexDbDatabase& database, VexDbLoadReport& report)
    : m_database(database), m_report(report), m_colors{database.colors(), L"colour", {}},
      m_linetypes{database.linetypes(), L"linetype", {}}, m_layers{database.layers(), L"layer", {}},
      m_textStyles{database.textStyles(), L"text style", {}}
{
    for (const CVexDbTable* table : tablesOf(database)) {
        for (const auto& [name, record] : table->records()) {
            m_ours.push_back(record.get());
        }
    }
}

CVexDbLoadContext::~CVexDbLoadContext() = default;

CVexDbColorTableRecord* CVexDbLoadContext::colorByHardId(std::uint64_t hardId)
{
    return static_cast<CVexDbColorTableRecord*>(recordByHardId(m_colors, hardId));
}

CVexDbLTypeTableRecord* CVexDbLoadContext::linetypeByHardId(std::uint64_t hardId)
{
    return static_cast<CVexDbLTypeTableRecord*>(recordByHardId(m_linetypes, hardId));
}

CVexDbLayerTableRecord* CVexDbLoadContext::layerByHardId(std::uint64_t hardId)
{
    return static_cast<CVexDbLayerTableRecord*>(recordByHardId(m_layers, hardId));
}

CVexDbTextStyleTableRecord* CVexDbLoadContext::textStyleByHardId(std::uint64_t hardId)
{
    return static_cast<CVexDbTextStyleTableRecord*>(recordByHardId(m_textStyles, hardId));
}

CVexDbTableRecord* CVexDbLoadContext::recordByHardId(Index& index, std::uint64_t hardId)
{
    // Neighbours in a drawing mostly share their records.
    if (index.last != nullptr && index.lastNumber == hardId) {
        return index.last;
    }
    if (!index.made) {
        makeIndex(index);
    }
    const auto found = index.records.find(hardId);
    if (found == index.records.end()) {
        if (hardId != 0) { // which refers to nothing on purpose
            CString what;
            what.Format(L"The file holds no %s with the identifier %u.", index.name, hardId);
            fault(what);
        }
        return nullptr;
    }
    index.lastNumber = hardId;
    index.last = found->second;
    return index.last;
}

void CVexDbLoadContext::makeIndex(Index& index)
{
    for (const auto& [name, record] : index.table.records()) {
        const std::uint64_t number = record->getCreatedTime();
        const auto replaced = m_numberInFile.find(record.get());
        if (replaced != m_numberInFile.end()) {
            index.records.emplace(replaced->second, record.get());
        } else if (!m_freshNumbers.contains(number)) {
            index.records.emplace(number, record.get());
        }
    }
    index.made = true;
}

CVexDbColorTableRecord* CVexDbLoadContext::colorByIndex(int index)
{
    if (m_lastColor != nullptr && m_lastColorIndex == index) {
        return m_lastColor;
    }
    // A drawing has few colours; indexes without a record are not kept, so nothing grows with them.
    const auto known = m_colorsByIndex.find(index);
    CVexDbColorTableRecord* record = known == m_colorsByIndex.end() ? nullptr : known->second;
    if (record == nullptr) {
        CString name;
        name.Format(L"%d", index);
        if (!m_database.colors().getRecord(name, record, false)) {
            fault(L"The file holds no colour '" + name + L"'.");
            return nullptr;
        }
        m_colorsByIndex.emplace(index, record);
    }
    m_lastColorIndex = index;
    m_lastColor = record;
    return record;
}

void CVexDbLoadContext::acceptRareNumber(CVexDbObject& object, std::uint64_t number)
{
    if (!m_inBlock) {
        acceptRecordNumber(object, number);
        return;
    }
    enterRun(); // it is looked up among all
    m_numberRefused = number == 0 || number >= kNumberLimit || entityHolds(number);
    if (m_numberRefused) {
        noteReplaced(number);
    }
}

void CVexDbLoadContext::acceptRecordNumber(CVexDbObject& record, std::uint64_t number)
{
    if (record.isErased()) {
        // No file is written with one, and what refers to it would refer to nothing in the next.
        fault(L"A record is marked as erased.");
        record.resetObjectStatus(kStatusErased);
    }
    const bool first = number != 0 && m_numbersOfTable.insert(number).second;
    const bool usable = first && number < kNumberLimit && !m_freshNumbers.contains(number);
    // The entry of a record that was freed since must not speak for this one at its address.
    m_numberInFile.erase(&record);
    if (usable) {
        makeRoomFor(number);
        m_largestRecord = std::max(m_largestRecord, number);
        return;
    }
    if (first) {
        m_numberInFile.emplace(&record, number); // what the file's references mean by it
    }
    noteReplaced(number);
    const std::uint64_t fresh = freshNumber();
    m_freshNumbers.insert(fresh);
    record.setCreatedTime(fresh);
    record.setHardId();
}

// True when an entity that stands in the drawing already has the number. The entities are looked up
// by class: those sets hold the entities of all blocks, and there are few of them.
bool CVexDbLoadContext::entityHolds(std::uint64_t number)
{
    for (const auto& [name, record] : m_database.entities().records()) {
        const CVexDbIdSet& set = static_cast<CVexDbEntityTableRecord&>(*record).entitySet();
        const auto at = set.lower_bound(number);
        if (at != set.end() && at.object()->getCreatedTime() == number) {
            return true;
        }
    }
    return false;
}

// A default record of the fresh drawing has its number by chance: the file's record keeps its own.
void CVexDbLoadContext::makeRoomFor(std::uint64_t number)
{
    for (CVexDbTableRecord* record : m_ours) {
        if (record->getCreatedTime() != number) {
            continue;
        }
        m_largestRecord = std::max(m_largestRecord, number);
        const std::uint64_t fresh = freshNumber();
        if (auto* layer = dynamic_cast<CVexDbLayerTableRecord*>(record)) {
            renumberLayer(*layer, fresh);
        } else {
            record->setCreatedTime(fresh);
        }
    }
}

std::uint64_t CVexDbLoadContext::freshNumber()
{
    CVexDbObject::NextHardID = std::max(CVexDbObject::NextHardID, largestNumber() + 1);
    return CVexDbObject::NextHardID++;
}

void CVexDbLoadContext::noteReplaced(std::uint64_t number)
{
    ++m_report.numbersReplaced;
    CString what;
    what.Format(L"The identifier %u is taken or out of range and was replaced.", number);
    note(what);
}

void CVexDbLoadContext::fault(const CString& what)
{
    fault(what, m_database.file()->GetPosition());
}

void CVexDbLoadContext::fault(const CString& what, std::uint64_t offset)
{
    if (!m_damaged) {
        m_firstFault = {what, offset};
        m_damaged = true;
    }
    m_report.add(what, offset);
}

void CVexDbLoadContext::note(const CString& what)
{
    m_report.add(what, m_database.file()->GetPosition());
}

void CVexDbLoadContext::enterTable()
{
    m_numbersOfTable.clear();
}

bool CVexDbLoadContext::isOurs(const CVexDbTableRecord* record) const
{
    return std::find(m_ours.begin(), m_ours.end(), record) != m_ours.end();
}

void CVexDbLoadContext::keepEntity(CVexDbBlockTableRecord& block, CVexDbEntity* entity)
{
    ++m_report.objectsKept;
    if (m_numberRefused) {
        m_keptBack.emplace_back(&block, entity);
        return;
    }
    const VexDb::ClassType type = entity->classType();
    if (m_numberAscends && type != VexDb::kText && type != VexDb::kAttribDefinition) {
        m_run.push_back(entity);
        if (m_run.size() == kLongestRun) {
            enterRun();
        }
        return;
    }
    enterRun();
    CVexDbObjectId id;
    m_database.addEntity(entity, id);
}

void CVexDbLoadContext::enterRun()
{
    m_database.addLoadedTo(*m_database.blocks().getCurrentRecord(), m_run);
    m_run.clear();
}

void CVexDbLoadContext::leaveBlock()
{
    enterRun();
    m_inBlock = false;
}

void CVexDbLoadContext::finish()
{
    CVexDbBlockTable& blocks = m_database.blocks();
    CVexDbBlockTableRecord* const current = blocks.getCurrentRecord();
    for (const auto& [block, entity] : m_keptBack) {
        entity->setCreatedTime(freshNumber());
        entity->setHardId();
        if (block->table() == nullptr) { // a later block took its name
            m_database.retire(std::unique_ptr<CVexDbObject>(entity));
            continue;
        }
        blocks.setCurrentRecord(block);
        CVexDbObjectId id;
        m_database.addEntity(entity, id);
    }
    m_keptBack.clear();
    blocks.setCurrentRecord(current);
    CVexDbObject::NextHardID = std::max(CVexDbObject::NextHardID, largestNumber() + 1);
    for (const CVexDbTable* table : tablesOf(m_database)) {
        for (const auto& [name, record] : table->records()) {
            m_report.objectsKept += isOurs(record.get()) ? 0 : 1;
        }
    }
}
