#pragma once

#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <cmath>
#include <numbers>

/// The unit direction of travel at the start or end of a segment, from the kernel's own curves.
inline CVexGeVector2d directionOf(const CVexGePolyline2d& chain, unsigned index, bool atEnd)
{
    CVexGeLine2d line;
    if (chain.getLineSegAt(index, line)) {
        return line.direction();
    }
    CVexGeCircArc2d arc;
    chain.getArcSegAt(index, arc);
    const unsigned vertex = atEnd ? (index + 1) % chain.numVerts() : index;
    const CVexGeVector2d spoke = chain.vertices()[vertex] - arc.center();
    const double side = chain.getBulgeAt(index) > 0.0 ? 1.0 : -1.0;
    return spoke.perpVector() * (side / spoke.length());
}

/// The angle, in radians, between the ends of the two segments that meet at vertex `index`.
inline double kinkAt(const CVexGePolyline2d& chain, unsigned index)
{
    const unsigned before = index > 0 ? index - 1 : chain.numVerts() - 1;
    const CVexGeVector2d in = directionOf(chain, before, true);
    const CVexGeVector2d out = directionOf(chain, index, false);
    return std::fabs(std::atan2(in.x * out.y - in.y * out.x, in.dotProduct(out)));
}

inline bool isSegment(const CVexGePolyline2d& chain, unsigned index)
{
    const CVexGePolyline2d::SegType type = chain.segType(index);
    return type == CVexGePolyline2d::kLine || type == CVexGePolyline2d::kArc;
}
