#include "bench/geosshapes.h"
#include "tests/vexge/offsetshapes.h"

#include <cmath>
#include <rapidcheck/gtest.h>

// Areas of offsets beside those of an independent library, which has no arcs: they are flattened
// for it to 0.001.

namespace {

using Chain = CVexGePolyline2d;

constexpr double kFlatness = 0.001;

const GEOSContextHandle_t geos = GEOS_init_r();

/// The area within a chain that ends where it begins: that of its vertices and, with the sign of
/// their bulges, those between arcs and chords.
double areaWithin(const Chain& chain)
{
    double area = 0.0;
    for (unsigned i = 0; i < chain.numVerts(); ++i) {
        const CVexGePoint2d& here = chain.vertices()[i];
        const CVexGePoint2d& next = chain.vertices()[(i + 1) % chain.numVerts()];
        area += (here.x * next.y - here.y * next.x) / 2.0;
        const double bulge = chain.getBulgeAt(i);
        if (bulge != 0.0 && !here.isEqualTo(next)) {
            const double sweep = 4.0 * std::atan(bulge);
            const double radius = here.distanceTo(next) * (1.0 / bulge + bulge) / 4.0;
            area += radius * radius * (sweep - std::sin(sweep)) / 2.0;
        }
    }
    return area;
}

double areaOfOffset(const Chain& source, const CVexGePoint2d& side, double dist)
{
    Chain::PolylineList pieces;
    source.offset(side, dist, pieces, false);
    double area = 0.0;
    for (const auto& piece : pieces) {
        area += std::fabs(areaWithin(*piece));
    }
    return area;
}

/// The area of a buffer whose corners are sharp, as those of an offset are.
double areaOfBuffer(const Chain& source, double dist)
{
    const GeosShape shape(geos, areaOf(geos, flattened(source, kFlatness)));
    const GeosShape buffer(geos, GEOSBufferWithStyle_r(geos, shape.get(), dist, 64,
                                                       GEOSBUF_CAP_ROUND, GEOSBUF_JOIN_MITRE, 100));
    double area = 0.0;
    GEOSArea_r(geos, buffer.get(), &area);
    return area;
}

double number(int from, int to)
{
    return *rc::gen::inRange(from, to) / 100.0;
}

/// Counter-clockwise shapes without a feature smaller than 3.
Chain wellBehaved()
{
    const double width = number(1500, 4000);
    const double height = number(1500, 4000);
    switch (*rc::gen::inRange(0, 6)) {
    case 0: return shapes::rectangle(width, height);
    case 1: return shapes::roundedRectangle(width, height, number(400, 700));
    case 2: return shapes::slot(width, number(500, 900));
    case 3: return shapes::wavyCircle(*rc::gen::inRange(40, 200), 50, number(0, 150), 5);
    case 4: return shapes::smoothWaves(2 * *rc::gen::inRange(5, 15), 50, number(20, 50));
    default:
        return shapes::chain({{0, 0}, {width, 0}, {width, 8}, {8, 8}, {8, height}, {0, height}},
                             true);
    }
}

} // namespace

RC_GTEST_PROP(OffsetAreaProperty, AreasAgreeWithABufferWithinAHundredth, ())
{
    const Chain source = wellBehaved();
    const bool inwards = *rc::gen::arbitrary<bool>();
    const double dist = number(20, 250);
    const double expected = areaOfBuffer(source, inwards ? -dist : dist);
    const double area = areaOfOffset(source, shapes::beside(source, 0, inwards), dist);
    RC_ASSERT(std::fabs(area - expected) <= 0.01 * expected);
}
