// The edits that all entities share: presence in the drawing, transforms, properties.

#include "vexdb/dbcommand/vexundoclasses.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbcommand/vexundotransform.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Below this a scale leaves too few digits of a coordinate to be undone to 1e-6, and above its
// reciprocal large drawings overflow.
constexpr double kLeastUndoneFactor = 1e-5;

bool isTransform(int editType)
{
    return editType >= kUndoMove && editType <= kUndoScale;
}

bool isPresence(int editType)
{
    return editType >= kUndoAddToOwner && editType <= kUndoErase;
}

bool isProperty(int editType)
{
    return editType >= kUndoChangeLayer && editType <= kUndoChangeWeight;
}

bool isUndoneFactor(double factor)
{
    return std::abs(factor) >= kLeastUndoneFactor && std::abs(factor) <= 1.0 / kLeastUndoneFactor;
}

bool collapses(const tagUndoEditEntity& edit)
{
    return edit.editType == kUndoScale &&
           !(isUndoneFactor(edit.vector.x) && isUndoneFactor(edit.vector.y));
}

/// Whether base or way are so far off that there and back loses digits of a coordinate.
bool losesDigits(const tagUndoEditEntity& edit)
{
    constexpr double kMostLost = 1e-7; // drawing units
    if (!isTransform(edit.editType)) {
        return false;
    }
    const bool isMove = edit.editType == kUndoMove;
    const double x = isMove ? edit.vector.x : edit.point.x;
    const double y = isMove ? edit.vector.y : edit.point.y;
    const double least = edit.editType == kUndoScale
                             ? std::min({1.0, std::abs(edit.vector.x), std::abs(edit.vector.y)})
                             : 1.0;
    const double reach = std::max(std::abs(x), std::abs(y));
    return !(reach * std::numeric_limits<double>::epsilon() <= kMostLost * least);
}

CVexDbObjectId blockOf(const CVexDbEntity& entity)
{
    if (!entity.ownerId().isNull()) {
        return entity.ownerId();
    }
    CVexDbDatabase* drawing = entity.database(); // it left its block: most likely the current one
    return drawing == nullptr ? CVexDbObjectId()
                              : CVexDbObjectId(drawing->blocks().getCurrentRecord());
}

// A record that left its table since: the entity takes the one of the same name.
void bindAnew(CVexDbEntity& entity, const CVexDbObjectId& record)
{
    if (!record.isNull() &&
        static_cast<const CVexDbTableRecord*>(record.getPObject())->table() == nullptr) {
        entity.SetEntPropertyToThis();
    }
}

} // namespace

bool CVexUndoHandler::MakeUndoEntity()
{
    m_current.classType = VexDb::kEntity;
    return true;
}

/// A record that is marked as a common edit already stays one; any other one gets the class, and
/// the edits that all entities share make it a common one.
bool CVexUndoHandler::classifyAs(int classType)
{
    if (m_current.classType == VexDb::kEntity) {
        return MakeUndoEntity();
    }
    m_current.classType = classType;
    const int edit = m_current.editType;
    return isPresence(edit) || isTransform(edit) || isProperty(edit) ? MakeUndoEntity() : true;
}

/// Completes a new record by what its inverse needs and will not find any more.
void CVexUndoHandler::keepWhatIsLost()
{
    tagUndoEditEntity& edit = m_current;
    auto& entity = subject();
    if (isPresence(edit.editType) && edit.other.isNull()) {
        edit.other = blockOf(entity);
    }
    if (edit.data != nullptr) {
        return;
    }
    const auto keepShape = undoClass(entity.classType())->keepShape;
    if (collapses(edit) || losesDigits(edit)) {
        edit.data = VexUndoGeometry::of(entity);
    } else if (keepShape != nullptr) {
        edit.data = keepShape(entity, edit);
    }
}

bool CVexUndoHandler::UndoEntity(bool redo)
{
    auto& entity = subject();
    if (isTransform(m_current.editType)) {
        transform(entity, redo);
    } else if (isPresence(m_current.editType)) {
        changePresence(entity);
    } else {
        swapProperty(entity);
    }
    entity.setGripPoints();
    return true;
}

void CVexUndoHandler::changePresence(CVexDbEntity& entity)
{
    switch (m_current.editType) {
    case kUndoAddToOwner:
        if (!entity.ownerId().isNull()) {
            m_current.other = entity.ownerId();
        }
        entity.Erase();
        m_current.editType = kUndoRemoveFromOwner;
        break;
    case kUndoRemoveFromOwner:
        putBack(entity);
        m_current.editType = kUndoAddToOwner;
        break;
    case kUndoCreate:
        entity.setErased();
        m_current.editType = kUndoErase;
        break;
    case kUndoErase:
        putBack(entity);
        m_current.editType = kUndoCreate;
        break;
    default: break;
    }
}

/// Ends an erasure. An entity that stands nowhere returns to its block, if the drawing still has
/// that one.
void CVexUndoHandler::putBack(CVexDbEntity& entity) const
{
    entity.resetObjectStatus(kStatusErased);
    CVexDbDatabase* drawing = entity.database();
    auto* block = dynamic_cast<CVexDbBlockTableRecord*>(m_current.other.getPObject());
    if (!entity.ownerId().isNull() || drawing == nullptr || block == nullptr ||
        block->table() != &drawing->blocks()) {
        return;
    }
    CVexDbObjectId id;
    drawing->addEntityTo(*block, &entity, id);
}

void CVexUndoHandler::transform(CVexDbEntity& entity, bool redo)
{
    const tagUndoEditEntity& edit = m_current;
    const VexUndoClass* row = undoClass(entity.classType());
    if (edit.data != nullptr) {
        edit.data->swapWith(entity);
        return;
    }
    if (row != nullptr && row->ownTransforms) {
        (this->*row->apply)(redo);
        return;
    }
    switch (edit.editType) {
    case kUndoMove: entity.TranslateBy(redo ? edit.vector : -edit.vector); break;
    case kUndoMirror: entity.Mirror(CVexGeLine2d(edit.point, edit.vector)); break;
    case kUndoRotate: entity.RotateBy(undoAngle(edit, redo), edit.point); break;
    case kUndoScale: {
        const CVexGeVector2d factors = undoFactors(edit, redo);
        entity.ScaleBy(factors.x, factors.y, edit.point);
        break;
    }
    default: break;
    }
}

void CVexUndoHandler::swapProperty(CVexDbEntity& entity)
{
    const CVexDbObjectId now = m_current.other;
    switch (m_current.editType) {
    case kUndoChangeLayer:
        m_current.other = entity.LayerId();
        entity.setLayer(now);
        break;
    case kUndoChangeLinetype:
        m_current.other = entity.LineTypeId();
        entity.setLineType(now, true);
        break;
    case kUndoChangeColor:
        m_current.other = entity.ColorId();
        entity.setColor(now, true);
        break;
    case kUndoChangeWeight: {
        const VexDb::LineWeight weight = entity.LineWeight();
        entity.setLineWeight(static_cast<VexDb::LineWeight>(m_current.weight), true);
        m_current.weight = weight;
        return;
    }
    default: return;
    }
    bindAnew(entity, now);
}
