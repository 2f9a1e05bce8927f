#include "vexdb/dbobject/vexdbcolortable.h"

#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>

namespace {

CVexDbColorTableRecord* colorOf(const CVexDbObjectId& entity)
{
    return static_cast<CVexDbColorTableRecord*>(
        static_cast<const CVexDbEntity*>(entity.getPObject())->ColorId().getPObject());
}

} // namespace

CVexDbColorTable::CVexDbColorTable(CVexDbDatabase* database) : CVexDbTableWithCurrent(database)
{
    setClassType(VexDb::kColorTable);
}

CVexDbColorTable::~CVexDbColorTable() = default;

void CVexDbColorTable::initColorTable()
{
    for (int index = 0; index < 8; ++index) {
        addDefault(index);
    }
    addDefault(CVexDbColorTableRecord::kByLayerIndex);
    CVexDbColorTableRecord* byLayer = nullptr;
    getRecord(CVexDbColorTableRecord::kByLayer, byLayer, false);
    setCurrentRecord(byLayer);
}

void CVexDbColorTable::addDefault(int index)
{
    CString name;
    name.Format(L"%d", index);
    auto* record = new CVexDbColorTableRecord(database());
    record->setName(name);
    record->setColor(_getColorValueByIndex(index));
    add(record);
}

bool CVexDbColorTable::getRecord(unsigned long color, CVexDbColorTableRecord*& record, bool) const
{
    for (const auto& [name, held] : records()) {
        auto* candidate = static_cast<CVexDbColorTableRecord*>(held.get());
        if (candidate->getColor() == color) {
            record = candidate;
            return true;
        }
    }
    return false;
}

bool CVexDbColorTable::addRefEntity(const CVexDbObjectId& id)
{
    return addUser(colorOf(id), id);
}

bool CVexDbColorTable::removeEntity(const CVexDbObjectId& id)
{
    return removeUser(colorOf(id), id);
}

// A layer does not tell its colour of itself when it is merely given one, so the layers are asked.
bool CVexDbColorTable::mayRemove(const CVexDbTableRecord& record)
{
    const auto& color = static_cast<const CVexDbColorTableRecord&>(record);
    const int index = color.colorIndex();
    const bool isSpecial = index < 8 || index == CVexDbColorTableRecord::kByLayerIndex;
    if (isSpecial || isCurrent(&record) || color.getNumEntity() > 0) {
        return false;
    }
    const auto& layers = database()->layers().records();
    return std::none_of(layers.begin(), layers.end(), [&](const auto& entry) {
        return static_cast<const CVexDbLayerTableRecord*>(entry.second.get())->getColorId() ==
               &record;
    });
}

void CVexDbColorTable::replaceReferences(CVexDbTableRecord* before, CVexDbTableRecord* after)
{
    CVexDbTableWithCurrent::replaceReferences(before, after);
    if (database() == nullptr) {
        return;
    }
    auto* oldColor = static_cast<CVexDbColorTableRecord*>(before);
    auto* newColor = static_cast<CVexDbColorTableRecord*>(after);
    for (const auto& [name, held] : database()->layers().records()) {
        auto* layer = static_cast<CVexDbLayerTableRecord*>(held.get());
        if (layer->getColorId() == before) {
            layer->setColorId(CVexDbObjectId(after));
        }
    }
    const CVexDbIdSet layers = oldColor->layerSet();
    for (const CVexDbObjectId layer : layers) {
        oldColor->removeLayerId(layer);
        newColor->addLayerId(layer);
    }
    const CVexDbIdSet users = oldColor->entitySet();
    for (const CVexDbObjectId user : users) {
        static_cast<CVexDbEntity*>(user.getPObject())->setColor(CVexDbObjectId(after), true);
    }
}
