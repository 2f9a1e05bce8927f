#pragma once

#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>

/// Polylines of lines and arcs by chance; a seed gives the same ones on every machine.
class RandomPolylines {
public:
    explicit RandomPolylines(std::uint64_t seed) : m_random(seed) {}

    /// From 0 to `count` less 1.
    int below(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
    /// By whole numbers: the standard's own distributions differ from library to library.
    double within(double from, double to)
    {
        return from + (to - from) * static_cast<double>(m_random() >> 11) / 9007199254740992.0;
    }
    CVexGePoint2d point() { return {within(-100, 100), within(-100, 100)}; }
    /// Straight in half of the cases, else to either side, up to more than a half circle.
    double bulge() { return below(2) == 0 ? 0.0 : side() * within(0.01, 1.5); }
    double side() { return below(2) == 0 ? 1.0 : -1.0; }
    /// Of 3 to 12 vertices, and of up to 200 in a tenth of the cases.
    int count() { return below(10) == 0 ? 3 + below(198) : 3 + below(10); }
    /// Without widths. A closed one keeps the bulge of its last segment, which closing would bend.
    CVexGePolyline2d chain(int vertices, bool closed)
    {
        CVexGePolyline2d made;
        for (int i = 0; i < vertices; ++i) {
            made.appendVertex(point(), bulge());
        }
        made.setClosed(closed);
        made.setBulgeAt(made.numVerts() - 1, closed ? bulge() : 0.0);
        return made;
    }
    CVexGePolyline2d chain() { return chain(count(), below(2) == 0); }

private:
    std::mt19937_64 m_random;
};

/// The length of a segment by the kernel's own curve; 0 for none.
inline double lengthOfSegment(const CVexGePolyline2d& chain, unsigned index)
{
    CVexGeLine2d line;
    CVexGeCircArc2d arc;
    if (chain.getLineSegAt(index, line)) {
        return line.length();
    }
    return chain.getArcSegAt(index, arc) ? arc.length() : 0.0;
}

/// How far `point` lies from the line or circle that a segment is part of.
inline double besideSegment(const CVexGePolyline2d& chain, unsigned index,
                            const CVexGePoint2d& point)
{
    CVexGeLine2d line;
    CVexGeCircArc2d arc;
    if (chain.getLineSegAt(index, line)) {
        const CVexGeVector2d way = point - line.startPoint();
        const CVexGeVector2d along = line.direction();
        return std::fabs(way.x * along.y - way.y * along.x);
    }
    return chain.getArcSegAt(index, arc) ? std::fabs(arc.center().distanceTo(point) - arc.radius())
                                         : HUGE_VAL;
}

inline CVexGePoint2d middleOfSegment(const CVexGePolyline2d& chain, unsigned index)
{
    CVexGeLine2d line;
    CVexGeCircArc2d arc;
    if (chain.getLineSegAt(index, line)) {
        return line.startPoint() + (line.endPoint() - line.startPoint()) * 0.5;
    }
    chain.getArcSegAt(index, arc);
    return arc.pointAtParam(0.5);
}
