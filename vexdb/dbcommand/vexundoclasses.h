#pragma once

#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/vexdbclasstype.h"

class CVexDbEntity;

/// What undo knows of the entities whose class numbers run from `first` to `last`. A new class
/// joins with a row in vexundoclasses.cpp.
struct VexUndoClass {
    VexDb::ClassType first = VexDb::kEntity;
    VexDb::ClassType last = VexDb::kEntity;
    /// Sorts the current record among the edits of all entities or those of the class.
    bool (CVexUndoHandler::*make)() = nullptr;
    /// Applies the current record, an edit of the class, and turns it into its inverse.
    bool (CVexUndoHandler::*apply)(bool redo) = nullptr;
    /// The class's handler also moves, mirrors, turns and scales, in place of the virtual
    /// operations.
    bool ownTransforms = false;
    /// The shape of now, for a record whose opposite edit would not bring it back; null where it
    /// would, and with no function it always does.
    std::shared_ptr<VexUndoData> (*keepShape)(CVexDbEntity&, const tagUndoEditEntity&) = nullptr;
};

/// The row of a class; null for one whose edits are not recorded.
const VexUndoClass* undoClass(int classType);
inline const VexUndoClass* undoClass(VexDb::ClassType type)
{
    return undoClass(static_cast<int>(type));
}
