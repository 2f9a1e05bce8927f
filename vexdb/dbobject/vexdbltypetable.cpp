#include "vexdb/dbobject/vexdbltypetable.h"

#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/vexdbdatabase.h"

#include <array>

namespace {

CVexDbLTypeTableRecord* linetypeOf(const CVexDbObjectId& entity)
{
    return static_cast<CVexDbLTypeTableRecord*>(
        static_cast<const CVexDbEntity*>(entity.getPObject())->LineTypeId().getPObject());
}

struct DefaultLinetype {
    const wchar_t* name;
    const wchar_t* description;
    std::array<double, 2> dashes;
    int count;
    double length;
};

constexpr std::array kDefaults = {
    DefaultLinetype{
        CVexDbLTypeTableRecord::kContinuous, L"______________________________", {0.0}, 1, 0.0},
    DefaultLinetype{CVexDbLTypeTableRecord::kByLayer, L"", {0.0}, 1, 0.0},
    DefaultLinetype{CVexDbLTypeTableRecord::kByBlock, L"", {0.0}, 1, 0.0},
    DefaultLinetype{L"Hidden", L"- - - - - - - -", {1.0, -0.5}, 2, 1.5},
};

} // namespace

CVexDbLTypeTable::CVexDbLTypeTable(CVexDbDatabase* database) : CVexDbTableWithCurrent(database)
{
    setClassType(VexDb::kLinetypeTable);
}

CVexDbLTypeTable::~CVexDbLTypeTable() = default;

void CVexDbLTypeTable::initLinetypeTable()
{
    for (const DefaultLinetype& made : kDefaults) {
        auto* record = new CVexDbLTypeTableRecord(database());
        record->setName(CString(made.name));
        record->setDescription(made.description);
        record->setNumDashes(made.count);
        for (int i = 0; i < made.count; ++i) {
            record->setDashLengthAt(i, made.dashes[static_cast<std::size_t>(i)]);
        }
        record->setPatternLength(made.length);
        add(record);
    }
    CVexDbLTypeTableRecord* byLayer = nullptr;
    getRecord(CVexDbLTypeTableRecord::kByLayer, byLayer, false);
    setCurrentRecord(byLayer);
}

bool CVexDbLTypeTable::addRefEntity(const CVexDbObjectId& id)
{
    return addUser(linetypeOf(id), id);
}

bool CVexDbLTypeTable::removeEntity(const CVexDbObjectId& id)
{
    return removeUser(linetypeOf(id), id);
}

bool CVexDbLTypeTable::mayRemove(const CVexDbTableRecord& record)
{
    const auto& linetype = static_cast<const CVexDbLTypeTableRecord&>(record);
    const CString name = record.getName();
    const bool isSpecial = name == CVexDbLTypeTableRecord::kContinuous ||
                           name == CVexDbLTypeTableRecord::kByLayer ||
                           name == CVexDbLTypeTableRecord::kByBlock;
    return !isSpecial && !isCurrent(&record) && linetype.getNumEntity() == 0 &&
           linetype.getNumLayer() == 0;
}

void CVexDbLTypeTable::replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after)
{
    CVexDbTableWithCurrent::replaceReferences(before, after);
    // Copies, because each user leaves the old linetype's set.
    auto* linetype = static_cast<CVexDbLTypeTableRecord*>(before);
    const CVexDbIdSet layers = linetype->layerSet();
    for (const CVexDbObjectId layer : layers) {
        static_cast<CVexDbLayerTableRecord*>(layer.getPObject())
            ->setLinetypeId(CVexDbObjectId(after));
    }
    const CVexDbIdSet users = linetype->entitySet();
    for (const CVexDbObjectId user : users) {
        static_cast<CVexDbEntity*>(user.getPObject())->setLineType(CVexDbObjectId(after), true);
    }
}
