#include "vexdb/dbtracker/vexboxtracker.h"

#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbtracker/vexexactly.h"
#include "vexdb/vexdbdatabase.h"
#include "vexge/gemath/vexgetol.h"

#include <array>
#include <numbers>

namespace {

constexpr int kBase = 0; // the grips that pull no side
constexpr int kTurn = 2;

/// The sides that a grip pulls along the box's own axes: -1 for the one at the base, 1 for the one
/// opposite, 0 for neither.
struct Pull {
    int across;
    int up;
};
constexpr std::array kPulls = {
    Pull{0, 0},              // moves
    Pull{0, -1}, Pull{0, 0}, // turns
    Pull{1, 0},  Pull{1, 1}, Pull{0, 1}, Pull{-1, 1}, Pull{-1, 0},
};

/// Width and height as the box shows, from its diagonal. Those that it keeps tell another shape
/// after a mirroring, which leaves their signs, and in a turned box from a file, whose diagonal
/// stands upright.
CVexGeVector2d shownSize(const CVexDbBox& box)
{
    const CVexGeVector2d kept(box.Width(), box.Height());
    CVexGePoint2d diagonal;
    box.GetDiagonPoint(diagonal);
    const CVexGeVector2d shown = (diagonal - box.BasePoint()).rotateBy(-box.Rotation());
    return shown.isEqualTo(kept) ? kept : shown;
}

bool isKeptAsShown(const CVexDbBox& box)
{
    return shownSize(box).isEqualTo(CVexGeVector2d(box.Width(), box.Height()));
}

} // namespace

void CVexBoxTracker::UpdateEntity(CVexDbEntity* copy, int grip)
{
    switch (grip) {
    case kBase: MoveEntity(copy); break;
    case kTurn: turn(shapeOf(copy)); break;
    default: pullSides(shapeOf(copy), grip); break;
    }
}

/// A side at the base takes the base along and gives up what it goes; the one opposite adds it.
void CVexBoxTracker::pullSides(CVexDbBox& box, int grip) const
{
    if (grip < 0 || grip >= static_cast<int>(kPulls.size())) {
        return;
    }
    const Pull pull = kPulls[static_cast<std::size_t>(grip)];
    const CVexGeVector2d way = bandVector().rotateBy(-box.Rotation());
    const CVexGeVector2d growth(pull.across * way.x, pull.up * way.y);
    CVexGeVector2d shift(pull.across < 0 ? way.x : 0.0, pull.up < 0 ? way.y : 0.0);
    box.Set(box.BasePoint() + shift.rotateBy(box.Rotation()), shownSize(box) + growth,
            box.Rotation());
}

/// The side that starts at the base points along the band; one with a negative width lies behind
/// the base, and its corner follows the pointer all the same.
void CVexBoxTracker::turn(CVexDbBox& box) const
{
    const CVexGeVector2d along = bandVector();
    box.SetRotation((shownSize(box).x < 0.0 ? -along : along).angle());
}

void CVexBoxTracker::CheckCreateOption(CVexDbEntity* copy, CPoint& /*position*/)
{
    CVexDbBox& box = shapeOf(copy);
    box.Set(box.BasePoint(), bandVector(), box.Rotation());
}

void CVexBoxTracker::placeStart(CPoint device, int grip)
{
    CVexCurveTracker::placeStart(device, grip);
    if (grip == kTurn && m_entity != nullptr) {
        SetStartPoint(m_entity->getGripPoint(kBase), true);
    }
}

void CVexBoxTracker::endPicture(int result)
{
    CVexCurveTracker::endPicture(result);
    // After arrow keys the tracker does not take a typed corner, and the entity stays as
    // provisional as it was made. The command sizes it then, as it does with other shapes' corners.
    if (result == InputTypedPoint && m_createMode && !m_movedByKeys && m_rotating == 0) {
        takeTypedCorner();
    }
}

/// The typed corner sizes the box as a click there does. The band goes there and off again: what
/// was shown is off the screen after a typed answer.
void CVexBoxTracker::takeTypedCorner()
{
    if (m_entity == nullptr || m_current == nullptr || m_database == nullptr) {
        return;
    }
    const CVexGePoint2d corner = m_database->lastPoint();
    SetPos(corner);
    showBand();
    shapeOf(m_current).SetDiagonalPoint(corner);
    *m_entity = *m_current;
    eraseBand();
}

int CVexBoxTracker::enterResult() const
{
    const bool passes = m_rotating != 0 && !m_movedByKeys;
    return passes ? static_cast<int>(InputEnter) : CVexCurveTracker::enterResult();
}

bool CVexBoxTracker::recordGrip(int grip, tagUndoEditEntity& edit)
{
    switch (grip) {
    case kBase: return true; // moved by the band, as it is filled in already
    case kTurn: return recordTurn(edit);
    default: return recordPull(edit);
    }
}

bool CVexBoxTracker::recordTurn(tagUndoEditEntity& edit) const
{
    const double turned = shapeOf(m_current).Rotation() - shapeOf(m_entity).Rotation();
    edit.editType = kUndoRotate;
    edit.point = shapeOf(m_entity).BasePoint();
    edit.vector = CVexGeVector2d(turned);
    return turned != 0.0;
}

/// The way of the base, where that has moved, and the size before.
bool CVexBoxTracker::recordPull(tagUndoEditEntity& edit) const
{
    const CVexDbBox& before = shapeOf(m_entity);
    const CVexDbBox& after = shapeOf(m_current);
    edit.vector = after.BasePoint() - before.BasePoint();
    const bool moved = !isZero(edit.vector);
    if (!moved && isZero(shownSize(after) - shownSize(before))) {
        return false; // pulled along its own side
    }
    if (!isKeptAsShown(before)) {
        edit.data = VexUndoGeometry::of(*m_entity); // no size brings this shape back
        return true;
    }
    if (moved) {
        m_database->undoHandler().AddUndo(&edit);
    }
    edit.editType = kUndoMovePoint;
    edit.vector = CVexGeVector2d(before.Width(), before.Height());
    return true;
}
