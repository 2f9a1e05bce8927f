#include "vexdb/dbtracker/vextransformedit.h"

#include "vexdb/dbobject/dbentity/vexdbentity.h"

namespace {

UndoEditType editTypeOf(VexDb::TransFormOption option)
{
    switch (option) {
    case VexDb::TransFormRotate: return kUndoRotate;
    case VexDb::TransFormMirror: return kUndoMirror;
    case VexDb::TransFormScale: return kUndoScale;
    default: return kUndoMove;
    }
}

} // namespace

tagUndoEditEntity transformEdit(VexDb::TransFormOption option, CVexDbEntity& entity,
                                const CVexGePoint2d& base, const CVexGeVector2d& vector,
                                double factor)
{
    tagUndoEditEntity edit;
    edit.editType = editTypeOf(option);
    edit.entity = entity.objectId();
    edit.point = base;
    edit.vector = option == VexDb::TransFormScale ? CVexGeVector2d(factor, factor) : vector;
    return edit;
}
