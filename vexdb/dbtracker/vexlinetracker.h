#pragma once

#include "vexdb/dbtracker/vexcurvetracker.h"

/// Draws a line from its start, moves it by its midpoint, drags its ends.
class VEXDB_EXPORT CVexLineTracker : public CVexCurveTracker {
public:
    CVexLineTracker(CWnd* window, CVexDbEntity* line, VexDb::TransFormOption option,
                    bool createMode);
    void UpdateEntity(CVexDbEntity* copy, int grip) override;
    void CheckCreateOption(CVexDbEntity* copy, CPoint& position) override;

protected:
    void recordGrip(int grip, tagUndoEditEntity& edit) override;
};
