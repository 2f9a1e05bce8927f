#include "vexdb/dbobject/vexdblayertable.h"

#include "platform/window/vexbackend.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/vexdbdatabase.h"

namespace {

CVexDbLayerTableRecord* layerOf(const CVexDbObjectId& entity)
{
    return static_cast<CVexDbLayerTableRecord*>(
        static_cast<const CVexDbEntity*>(entity.getPObject())->LayerId().getPObject());
}

} // namespace

CVexDbLayerTable::CVexDbLayerTable(CVexDbDatabase* database) : CVexDbTableWithCurrent(database)
{
    setClassType(VexDb::kLayerTable);
}

CVexDbLayerTable::~CVexDbLayerTable() = default;

void CVexDbLayerTable::initLayerTable()
{
    addDefault(L"PipeLine", L"1");
    addDefault(L"WeldNum", L"7");
    addDefault(L"Dimension", L"3");
    addDefault(CVexDbLayerTableRecord::kBaseLayer, L"7");
    CVexDbLayerTableRecord* base = nullptr;
    getRecord(CVexDbLayerTableRecord::kBaseLayer, base, false);
    setCurrentRecord(base);
}

void CVexDbLayerTable::addDefault(const wchar_t* name, const wchar_t* color)
{
    auto* layer = new CVexDbLayerTableRecord(database());
    layer->setName(CString(name));
    CVexDbObjectId colorId;
    database()->colors().getAt(color, colorId, false);
    layer->setColorId(colorId);
    CVexDbObjectId linetypeId;
    database()->linetypes().getAt(CVexDbLTypeTableRecord::kContinuous, linetypeId, false);
    layer->setLinetypeId(linetypeId);
    add(layer);
}

bool CVexDbLayerTable::addRefEntity(const CVexDbObjectId& id)
{
    return addUser(layerOf(id), id);
}

bool CVexDbLayerTable::removeEntity(const CVexDbObjectId& id)
{
    return removeUser(layerOf(id), id);
}

bool CVexDbLayerTable::mayRemove(const CVexDbTableRecord& record)
{
    if (record.getName() == CVexDbLayerTableRecord::kBaseLayer) {
        MessageBoxW(L"Cannot remove base layer.", CString(), MB_OK);
        return false;
    }
    return !isCurrent(&record) &&
           static_cast<const CVexDbLayerTableRecord&>(record).getNumEntity() == 0;
}

void CVexDbLayerTable::replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after)
{
    CVexDbTableWithCurrent::replaceReferences(before, after);
    // A copy, because each entity leaves the old layer's set.
    const CVexDbIdSet users = static_cast<CVexDbLayerTableRecord*>(before)->entitySet();
    for (const CVexDbObjectId user : users) {
        static_cast<CVexDbEntity*>(user.getPObject())->setLayer(CVexDbObjectId(after));
    }
}

void CVexDbLayerTable::onAdded(CVexDbTableRecord& record)
{
    auto& layer = static_cast<CVexDbLayerTableRecord&>(record);
    layer.bindTo(layer.getColorId().getPObject(), layer.getLinetypeId().getPObject());
}

// The layer keeps its colour and linetype: an undo record may still show what was on it.
void CVexDbLayerTable::detach(CVexDbTableRecord& record)
{
    static_cast<CVexDbLayerTableRecord&>(record).leaveUsers();
}
