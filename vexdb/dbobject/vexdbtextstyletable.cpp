#include "vexdb/dbobject/vexdbtextstyletable.h"

#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/vexdbdatabase.h"

namespace {

CVexDbTextStyleTableRecord* styleOf(const CVexDbObjectId& text)
{
    return static_cast<CVexDbTextStyleTableRecord*>(
        static_cast<const CVexDbEntity*>(text.getPObject())->textStyle().getPObject());
}

} // namespace

CVexDbTextStyleTable::CVexDbTextStyleTable(CVexDbDatabase* database)
    : CVexDbTableWithCurrent(database)
{
    setClassType(VexDb::kTextStyleTable);
}

CVexDbTextStyleTable::~CVexDbTextStyleTable() = default;

void CVexDbTextStyleTable::initTextStyleTable()
{
    auto* standard = new CVexDbTextStyleTableRecord(database());
    standard->setName(CString(CVexDbTextStyleTableRecord::kStandard));
    standard->setFileName(L"KOSDICES");
    standard->setBigFileName(L"KOSDICHS");
    standard->resetFlag();
    add(standard);
    setCurrentRecord(standard);
}

bool CVexDbTextStyleTable::addRefEntity(const CVexDbObjectId& id)
{
    return addUser(styleOf(id), id);
}

bool CVexDbTextStyleTable::removeEntity(const CVexDbObjectId& id)
{
    return removeUser(styleOf(id), id);
}

bool CVexDbTextStyleTable::mayRemove(const CVexDbTableRecord& record)
{
    return record.getName() != CVexDbTextStyleTableRecord::kStandard && !isCurrent(&record) &&
           static_cast<const CVexDbTextStyleTableRecord&>(record).getNumEntity() == 0;
}

void CVexDbTextStyleTable::replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after)
{
    CVexDbTableWithCurrent::replaceReferences(before, after);
    auto* oldStyle = static_cast<CVexDbTextStyleTableRecord*>(before);
    const CVexDbIdSet texts = oldStyle->entitySet();
    for (const CVexDbObjectId text : texts) {
        static_cast<CVexDbEntity*>(text.getPObject())->setTextStyle(CVexDbObjectId(after));
        oldStyle->removeRefEntity(text);
        static_cast<CVexDbTextStyleTableRecord*>(after)->addRefEntity(text);
    }
}
