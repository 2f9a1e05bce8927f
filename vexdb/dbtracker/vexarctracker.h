#pragma once

#include "vexdb/dbtracker/vexradialtracker.h"

class CVexDbArc;

/// Draws an arc in one of four ways, told by the option word, and drags its angles and radius.
class VEXDB_EXPORT CVexArcTracker
    : public CVexTrackerOf<CVexDbArc, CVexDbEntityTracker::TrackerArc, CVexRadialTracker> {
public:
    // The ways of drawing: what the band and its end mean for the arc.
    static constexpr unsigned long kThreePoints = 100; // from first over second to the position
    static constexpr unsigned long kEndAngle = 200;    // from the centre, which is the band's start
    static constexpr unsigned long kEndAngleByRadius = 300; // the same
    static constexpr unsigned long kTangent = 400;          // on from the previous entity

    using CVexTrackerOf::CVexTrackerOf;
    /// The second point of a three-point arc, drawing units.
    void SetArcPoint(const CVexGePoint2d& point) { m_arcPoint = point; }
    void UpdateEntity(CVexDbEntity* copy, int grip) override;
    void CheckCreateOption(CVexDbEntity* copy, CPoint& position) override;

protected:
    bool recordGrip(int grip, tagUndoEditEntity& edit) override;

private:
    void continueTangent(CVexDbArc& arc, const CVexGePoint2d& to) const;

    CVexGePoint2d m_arcPoint;
};
