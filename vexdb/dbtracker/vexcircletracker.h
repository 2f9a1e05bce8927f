#pragma once

#include "vexdb/dbtracker/vexradialtracker.h"

class CVexDbCircle;

/// Draws a circle from its centre, moves it by the centre, sizes it by any other grip.
class VEXDB_EXPORT CVexCircleTracker
    : public CVexTrackerOf<CVexDbCircle, CVexDbEntityTracker::TrackerCircle, CVexRadialTracker> {
public:
    using CVexTrackerOf::CVexTrackerOf;
    void UpdateEntity(CVexDbEntity* copy, int grip) override;
    void CheckCreateOption(CVexDbEntity* copy, CPoint& position) override;

protected:
    bool recordGrip(int grip, tagUndoEditEntity& edit) override;
    [[nodiscard]] bool canDivide() const override { return true; }
    CVexDbEntity* makeDivided(int count) override;
};
