#include "vexdb/dbcommand/vexundoclasses.h"

#include "vexdb/dbcommand/vexundopolyline.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"

#include <algorithm>
#include <array>
#include <utility>

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
std::shared_ptr<VexUndoData> shapeOfBox(CVexDbEntity& entity, const tagUndoEditEntity& edit)
{
    const bool isLost =
        edit.editType == kUndoMirror || edit.editType == kUndoRotate ||
        (edit.editType == kUndoScale && !isPlain(static_cast<const CVexDbBox&>(entity).geRect()));
    return isLost ? VexUndoGeometry::of(entity) : nullptr;
}

/// The shape of an arc, without the display vertices that a copy of it would take along.
struct ArcShape : VexUndoData {
    explicit ArcShape(const CVexGeCircArc2d& arc) : shape(arc) {}
    void swapWith(CVexDbEntity& entity) override
    {
        auto& arc = static_cast<CVexDbArc&>(entity);
        const CVexGeCircArc2d present = arc.geArc();
        arc.set(shape.center(), shape.radius(), shape.startAng(), shape.endAng());
        shape = present;
    }

    CVexGeCircArc2d shape;
};

struct CircleCenter : VexUndoData {
    explicit CircleCenter(const CVexGePoint2d& point) : center(point) {}
    void swapWith(CVexDbEntity& entity) override
    {
        auto& circle = static_cast<CVexDbCircle&>(entity);
        const CVexGePoint2d present = circle.Center();
        circle.setCenter(center);
        center = present;
    }

    CVexGePoint2d center;
};

// An arc is mirrored and turned by measuring its angles anew, or adding to them: twice does not
// bring their bits back, nor a whole turn that was taken off.
std::shared_ptr<VexUndoData> shapeOfArc(CVexDbEntity& entity, const tagUndoEditEntity& edit)
{
    const bool isLost = edit.editType == kUndoMirror || edit.editType == kUndoRotate;
    return isLost ? std::make_shared<ArcShape>(static_cast<const CVexDbArc&>(entity).geArc())
                  : nullptr;
}

// Round things are mirrored by a matrix, whose sines and cosines cost bits even in an axis. Turning
// takes no more from a circle than from a line, whose ends are not kept either.
std::shared_ptr<VexUndoData> centerOfCircle(CVexDbEntity& entity, const tagUndoEditEntity& edit)
{
    return edit.editType != kUndoMirror
               ? nullptr
               : std::make_shared<CircleCenter>(static_cast<const CVexDbCircle&>(entity).Center());
}

struct PolylineShape : VexUndoData {
    explicit PolylineShape(const CVexGePolyline2d& geometry) : chain(geometry) {}
    void swapWith(CVexDbEntity& entity) override
    {
        auto& polyline = static_cast<CVexDbPolyline&>(entity);
        CVexGePolyline2d present = polyline.gePolyline();
        polyline.SetGeometry(chain);
        chain = std::move(present);
    }

    CVexGePolyline2d chain;
};

// Mirrored by a matrix, too. What else it loses is a matter of its vertices.
std::shared_ptr<VexUndoData> shapeOfPolyline(CVexDbEntity& entity, const tagUndoEditEntity& edit)
{
    return edit.editType != kUndoMirror
               ? keptOfPolyline(entity, edit)
               : std::make_shared<PolylineShape>(
                     static_cast<const CVexDbPolyline&>(entity).gePolyline());
}

using Undo = CVexUndoHandler;

// Points and images are not here: their edits are not recorded.
constexpr std::array kClasses = {
    VexUndoClass{VexDb::kArc, VexDb::kArc, &Undo::MakeUndoArc, &Undo::UndoArc, false, &shapeOfArc},
    VexUndoClass{VexDb::kCircle, VexDb::kCircle, &Undo::MakeUndoCircle, &Undo::UndoCircle, false,
                 &centerOfCircle},
    VexUndoClass{VexDb::kLine, VexDb::kLine, &Undo::MakeUndoLine, &Undo::UndoLine, false, nullptr},
    VexUndoClass{VexDb::kPolyline, VexDb::kPolyline, &Undo::MakeUndoPolyline, &Undo::UndoPolyline,
                 false, &shapeOfPolyline},
    VexUndoClass{VexDb::kRectangle, VexDb::kRectangle, &Undo::MakeUndoRect, &Undo::UndoRect, true,
                 nullptr},
    VexUndoClass{VexDb::kBox, VexDb::kBox, &Undo::MakeUndoBox, &Undo::UndoBox, false, &shapeOfBox},
};

} // namespace

const VexUndoClass* undoClass(int classType)
{
    const auto found = std::ranges::find_if(kClasses, [classType](const VexUndoClass& row) {
        return static_cast<int>(row.first) <= classType && classType <= static_cast<int>(row.last);
    });
    return found == kClasses.end() ? nullptr : &*found;
}
