#include "vexdb/dbcommand/vexundoclasses.h"

#include "vexdb/dbobject/dbentity/vexdbbox.h"

#include <algorithm>
#include <array>

namespace {

// Upright, with the diagonal where width and height have it: the form that scaling leaves alone.
bool isPlain(const CVexGeRect2d& box)
{
    CVexGePoint2d diagonal;
    box.getDiagonPoint(diagonal);
    return box.rotation() == 0.0 &&
           diagonal == box.basePoint() + CVexGeVector2d(box.width(), box.height());
}

// A box keeps its diagonal beside width, height and rotation. Turning or mirroring it twice does
// not bring the rotation's bits back, and scaling puts the diagonal of a turned one upright.
bool boxLosesShape(const CVexDbEntity& entity, const tagUndoEditEntity& edit)
{
    switch (edit.editType) {
    case kUndoMirror:
    case kUndoRotate: return true;
    case kUndoScale: return !isPlain(static_cast<const CVexDbBox&>(entity).geRect());
    default: return false;
    }
}

using Undo = CVexUndoHandler;

// Points and images are not here: their edits are not recorded.
constexpr std::array kClasses = {
    VexUndoClass{VexDb::kLine, VexDb::kLine, &Undo::MakeUndoLine, &Undo::UndoLine, false, nullptr},
    VexUndoClass{VexDb::kRectangle, VexDb::kRectangle, &Undo::MakeUndoRect, &Undo::UndoRect, true,
                 nullptr},
    VexUndoClass{VexDb::kBox, VexDb::kBox, &Undo::MakeUndoBox, &Undo::UndoBox, false,
                 &boxLosesShape},
};

} // namespace

const VexUndoClass* undoClass(int classType)
{
    const auto found = std::ranges::find_if(kClasses, [classType](const VexUndoClass& row) {
        return static_cast<int>(row.first) <= classType && classType <= static_cast<int>(row.last);
    });
    return found == kClasses.end() ? nullptr : &*found;
}
