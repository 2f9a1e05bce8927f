#pragma once

#include "vexge/geentity2d/vexgepolyline2d.h"

// The offset by plain search: each segment is held against every other, with no box, no bound and
// no short way for chains that keep clear of themselves. The kernel finds its candidates by boxes
// and must give the same pieces in the same order, to the bit.

namespace plainwalk {

/// The pieces of an offset before they are joined, as CVexGePolyline2d::getOffset gives them.
CVexGePolyline2d::PolylineList offsetPieces(const CVexGePolyline2d& source,
                                            const CVexGePoint2d& side, double dist, bool bothSides);

} // namespace plainwalk
