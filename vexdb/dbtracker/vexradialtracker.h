#pragma once

#include "vexdb/dbtracker/vexcurvetracker.h"

/// The tracker of a kind whose first grip is its centre: the band of a dragged grip runs from there
/// to the pointer, so that radii and angles can be read from it, and a creation shows it too.
class VEXDB_EXPORT CVexRadialTracker : public CVexCurveTracker {
public:
    using CVexCurveTracker::CVexCurveTracker;

protected:
    [[nodiscard]] bool showsBand(int /*grip*/) const override { return true; }
    void placeStart(CPoint device, int grip) override;
};
