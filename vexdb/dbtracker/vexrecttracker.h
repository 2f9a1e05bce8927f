#pragma once

#include "vexdb/dbtracker/vexcurvetracker.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

class CVexDbRect;

/// Draws a rectangle from corner to corner, moves it by its middle, drags sides and corners.
class VEXDB_EXPORT CVexRectTracker
    : public CVexTrackerOf<CVexDbRect, CVexDbEntityTracker::TrackerRect> {
public:
    using CVexCurveTracker::ScaleEntity;
    using CVexTrackerOf::CVexTrackerOf;
    /// Scales the copy about the corner opposite the corner grip, until that meets the band's end.
    void ScaleEntity(CVexDbEntity* copy, int grip);
    void UpdateEntity(CVexDbEntity* copy, int grip) override;
    /// Sorts the corners, whichever way the drag goes.
    void CheckCreateOption(CVexDbEntity* copy, CPoint& position) override;
    /// Strokes the frame of the working copy in XOR.
    void DrawCurrent() override;

protected:
    [[nodiscard]] bool showsBand(int /*grip*/) const override { return true; }
    bool recordGrip(int grip, tagUndoEditEntity& edit) override;

private:
    CVexGePolyline2d m_frame; // the working copy's four corners
};
