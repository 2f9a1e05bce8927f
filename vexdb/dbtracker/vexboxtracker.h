#pragma once

#include "vexdb/dbtracker/vexcurvetracker.h"

class CVexDbBox;

/// Draws a box from corner to corner, turns it in a second stage, and drags sides and rotation.
/// Width and height take their signs from the way of the drag.
class VEXDB_EXPORT CVexBoxTracker
    : public CVexTrackerOf<CVexDbBox, CVexDbEntityTracker::TrackerBox> {
public:
    using CVexTrackerOf::CVexTrackerOf;
    /// 1 for the second stage of creation: the drag turns the box that the first one has sized, and
    /// Enter passes through as InputEnter for the command to keep it unturned.
    void SetRotating(int rotating) { m_rotating = rotating; }
    [[nodiscard]] int isRotating() const { return m_rotating; }
    /// Each grip reshapes along the box's own axes: 0 moves, 1 the bottom, 2 turns, 3 right, 4
    /// right and top, 5 top, 6 left and top, 7 left.
    void UpdateEntity(CVexDbEntity* copy, int grip) override;
    void CheckCreateOption(CVexDbEntity* copy, CPoint& position) override;

protected:
    void placeStart(CPoint device, int grip) override;
    void endPicture(int result) override;
    [[nodiscard]] int enterResult() const override;
    bool recordGrip(int grip, tagUndoEditEntity& edit) override;

private:
    void pullSides(CVexDbBox& box, int grip) const;
    void turn(CVexDbBox& box) const;
    void takeTypedCorner();
    bool recordTurn(tagUndoEditEntity& edit) const;
    bool recordPull(tagUndoEditEntity& edit) const;

    int m_rotating = 0;
};
