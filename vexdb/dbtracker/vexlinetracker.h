#pragma once

#include "vexdb/dbtracker/vexcurvetracker.h"

class CVexDbLine;

/// Draws a line from its start, moves it by its midpoint, drags its ends.
class VEXDB_EXPORT CVexLineTracker
    : public CVexTrackerOf<CVexDbLine, CVexDbEntityTracker::TrackerLine> {
public:
    using CVexTrackerOf::CVexTrackerOf;
    void UpdateEntity(CVexDbEntity* copy, int grip) override;
    void CheckCreateOption(CVexDbEntity* copy, CPoint& position) override;

protected:
    bool recordGrip(int grip, tagUndoEditEntity& edit) override;
    [[nodiscard]] bool canDivide() const override { return true; }
    CVexDbEntity* makeDivided(int count) override;
};
