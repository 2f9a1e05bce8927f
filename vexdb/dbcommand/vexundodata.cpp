#include "vexdb/dbcommand/vexundodata.h"

#include "vexdb/dbobject/dbentity/vexdbentity.h"

#include <utility>

VexUndoData::~VexUndoData() = default;

std::shared_ptr<VexUndoData> VexUndoGeometry::of(CVexDbEntity& entity)
{
    std::unique_ptr<CVexDbEntity> shape(entity.CopyEntity(true));
    return shape == nullptr ? nullptr : std::make_shared<VexUndoGeometry>(std::move(shape));
}

VexUndoGeometry::VexUndoGeometry(std::unique_ptr<CVexDbEntity> shape) : m_shape(std::move(shape))
{
}

VexUndoGeometry::~VexUndoGeometry() = default;

void VexUndoGeometry::swapWith(CVexDbEntity& entity)
{
    std::unique_ptr<CVexDbEntity> present(entity.CopyEntity(true));
    // An assignment takes the properties along, so the copy gets those of the entity first.
    m_shape->CopyEntProperties(entity);
    entity = *m_shape;
    m_shape = std::move(present);
}
