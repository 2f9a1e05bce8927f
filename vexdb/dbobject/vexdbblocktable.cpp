#include "vexdb/dbobject/vexdbblocktable.h"

#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/vexdbdatabase.h"

CVexDbBlockTable::CVexDbBlockTable(CVexDbDatabase* database) : CVexDbTableWithCurrent(database)
{
    setClassType(VexDb::kBlockTable);
}

CVexDbBlockTable::~CVexDbBlockTable() = default;

void CVexDbBlockTable::initBlockTable(bool paperSpace)
{
    if (paperSpace) {
        addSpace(kPaperSpace);
    }
    addSpace(kModelSpace);
    CVexDbBlockTableRecord* model = nullptr;
    getRecord(kModelSpace, model, false);
    setCurrentRecord(model);
}

void CVexDbBlockTable::addSpace(const wchar_t* name)
{
    auto* space = new CVexDbBlockTableRecord(database());
    space->setName(CString(name));
    space->setOwnerId(objectId());
    space->initDisplayRec();
    add(space);
}

bool CVexDbBlockTable::isSpace(const wchar_t* name)
{
    const CString text(name);
    return text == kModelSpace || text == kPaperSpace;
}

bool CVexDbBlockTable::SetCurentSpace(const wchar_t* name)
{
    CVexDbBlockTableRecord* space = nullptr;
    if (!getRecord(name, space, false)) {
        return false;
    }
    setCurrentRecord(space);
    space->initDisplayRec();
    return true;
}

CVexDbObjectId CVexDbBlockTable::getObjectId(std::uint64_t hardId) const
{
    if (getCurrentRecord() == nullptr) {
        return CVexDbObjectId::kNULL;
    }
    // An entity's created time is its hard identifier, and the set is ordered by it.
    const CVexDbIdSet& entities = *getCurrentRecord()->entitySet();
    const auto at = entities.lower_bound(hardId);
    return at != entities.end() && *at == hardId ? *at : CVexDbObjectId::kNULL;
}

bool CVexDbBlockTable::mayRename(const CVexDbTableRecord& record, const wchar_t* name) const
{
    return !isSpace(record.name()) && !database()->displays().has(name);
}

bool CVexDbBlockTable::mayRemove(const CVexDbTableRecord& record)
{
    const auto& block = static_cast<const CVexDbBlockTableRecord&>(record);
    const CVexDbDisplayTableRecord* view = block.displayRecord();
    return !isSpace(record.name()) && !isCurrent(&record) &&
           (view == nullptr || view != database()->displays().getCurrentRecord());
}

void CVexDbBlockTable::onAdded(CVexDbTableRecord& record)
{
    auto& block = static_cast<CVexDbBlockTableRecord&>(record);
    for (const CVexDbIdSet* set : {block.entitySet(), block.attribDefinitionSet()}) {
        for (auto at = set->begin(); at != set->end(); ++at) {
            auto* entity = static_cast<CVexDbEntity*>(at.object());
            if (!entity->IsDbEntity()) {
                database()->enterEntity(entity);
            }
        }
    }
}

void CVexDbBlockTable::replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after)
{
    CVexDbTableWithCurrent::replaceReferences(before, after);
    auto* oldBlock = static_cast<CVexDbBlockTableRecord*>(before);
    auto* newBlock = static_cast<CVexDbBlockTableRecord*>(after);
    // The view is the name's, so it goes over to the name's new holder.
    if (newBlock->displayRecord() == nullptr) {
        newBlock->setDisplayRecord(oldBlock->displayRecord());
    }
    if (newBlock->displayRecord() != nullptr) {
        newBlock->showEntities();
    }
    for (const CVexDbObjectId insert : *oldBlock->referenceSet()) {
        newBlock->addReference(insert);
    }
}

// The block keeps its entities, which are out of the drawing now: an insert that an undo record
// holds may still draw them.
void CVexDbBlockTable::detach(CVexDbTableRecord& record)
{
    static_cast<CVexDbBlockTableRecord&>(record).leaveDrawing();
    if (!has(record.name())) {
        database()->displays().removeRecord(record.name());
    }
}
