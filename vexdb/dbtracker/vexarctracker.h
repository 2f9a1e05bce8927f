#pragma once

#include "vexdb/dbtracker/vexarcband.h"
#include "vexdb/dbtracker/vexradialtracker.h"

class CVexDbArc;

/// Draws an arc in one of four ways, told by the option word, and drags its angles and radius.
class VEXDB_EXPORT CVexArcTracker
    : public CVexTrackerOf<CVexDbArc, CVexDbEntityTracker::TrackerArc, CVexRadialTracker> {
public:
    // The ways of drawing: what the band and its end mean for the arc.
    static constexpr unsigned long kThreePoints = VexArcBand::kThreePoints;
    static constexpr unsigned long kEndAngle = VexArcBand::kEndAngle;
    static constexpr unsigned long kEndAngleByRadius = VexArcBand::kEndAngleByRadius;
    static constexpr unsigned long kTangent = VexArcBand::kTangent;

    using CVexTrackerOf::CVexTrackerOf;
    /// The second point of a three-point arc, drawing units.
    void SetArcPoint(const CVexGePoint2d& point) { m_arcPoint = point; }
    void UpdateEntity(CVexDbEntity* copy, int grip) override;
    void CheckCreateOption(CVexDbEntity* copy, CPoint& position) override;

protected:
    bool recordGrip(int grip, tagUndoEditEntity& edit) override;
    [[nodiscard]] bool canDivide() const override { return true; }
    CVexDbEntity* makeDivided(int count) override;

private:
    CVexGePoint2d m_arcPoint;
};
