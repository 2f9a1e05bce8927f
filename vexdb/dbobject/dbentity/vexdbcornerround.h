#pragma once

#include "vexdb/dbobject/dbentity/vexdbpolylinesegment.h"

#include <optional>

/// A round arc in the corner of two segments, tangent to both in their direction of travel.
struct VexCornerRound {
    CVexGePoint2d start;     // on the first segment
    CVexGePoint2d end;       // on the second
    double bulge = 0.0;      // in the direction of travel
    double firstRest = 0.0;  // what the round leaves of the first segment, drawing units
    double secondRest = 0.0; // and of the second
    CVexGeCircArc2d arc;
};

/// The round of `radius` where `first` ends and `second` starts. None for a corner without an
/// angle, for segments that are too short, and where no circle touches both.
std::optional<VexCornerRound> roundCorner(const VexPolylineSegment& first,
                                          const VexPolylineSegment& second, double radius);
