#pragma once

#include "vexge/gemath/vexgepoint2d.h"

class CVexDbArc;
class CVexDbEntity;

/// Whether three points lie on one line, up to what rounding leaves, so that no arc joins them.
bool areOnOneLine(const CVexGePoint2d& first, const CVexGePoint2d& second,
                  const CVexGePoint2d& third);

/// How a band draws an arc, in drawing units; for all trackers that draw one.
struct VexArcBand {
    // The ways of drawing: what the band and its end mean for the arc. Any other leaves it alone.
    static constexpr unsigned long kThreePoints = 100; // from first over second to the position
    static constexpr unsigned long kEndAngle = 200;    // from the centre, which is the band's start
    static constexpr unsigned long kEndAngleByRadius = 300; // the same
    static constexpr unsigned long kTangent = 400;          // on from the previous entity

    unsigned long way;
    CVexGePoint2d start;
    CVexGePoint2d end;
    CVexGePoint2d second;         // of three points
    const CVexDbEntity* previous; // not owned; null for none

    void shape(CVexDbArc& arc) const;

private:
    void continueTangent(CVexDbArc& arc) const;
};
