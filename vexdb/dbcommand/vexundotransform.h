#pragma once

#include "vexdb/dbcommand/vexundohandler.h"
#include "vexge/geentity2d/vexgeline2d.h"

/// The angle that takes a recorded turn back, or forth again; radians.
inline double undoAngle(const tagUndoEditEntity& edit, bool redo)
{
    return redo ? edit.vector.angle() : -edit.vector.angle();
}

/// The factors that take a recorded scale back, or forth again. One of 0 cannot be taken back and
/// stands for 1 then.
inline CVexGeVector2d undoFactors(const tagUndoEditEntity& edit, bool redo)
{
    const auto factor = [redo](double done) {
        return redo ? done : done == 0.0 ? 1.0 : 1.0 / done;
    };
    return {factor(edit.vector.x), factor(edit.vector.y)};
}

/// Takes a recorded transform back, or forth again, by the entity's own operations and not by the
/// virtual ones: for the classes whose row says so.
template <class Entity>
void undoOwnTransform(Entity& entity, const tagUndoEditEntity& edit, bool redo)
{
    switch (edit.editType) {
    case kUndoMove: entity.translateBy(redo ? edit.vector : -edit.vector); break;
    case kUndoMirror: entity.mirror(CVexGeLine2d(edit.point, edit.vector)); break;
    case kUndoRotate: entity.rotateBy(undoAngle(edit, redo), edit.point); break;
    case kUndoScale: {
        const CVexGeVector2d factors = undoFactors(edit, redo);
        entity.scaleBy(factors.x, factors.y, edit.point);
        break;
    }
    default: break;
    }
}
