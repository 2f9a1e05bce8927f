#pragma once

#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <algorithm>
#include <cmath>
#include <geos_c.h>
#include <vector>

/// A GEOS geometry, freed with its holder.
class GeosShape {
public:
    GeosShape(GEOSContextHandle_t context, GEOSGeometry* shape) : m_context(context), m_shape(shape)
    {
    }
    ~GeosShape() { GEOSGeom_destroy_r(m_context, m_shape); }
    GeosShape(const GeosShape&) = delete;
    GeosShape& operator=(const GeosShape&) = delete;
    [[nodiscard]] const GEOSGeometry* get() const { return m_shape; }

private:
    GEOSContextHandle_t m_context;
    GEOSGeometry* m_shape;
};

/// The chain with its arcs replaced by chords that leave them by at most `flatness`.
inline CVexGePolyline2d flattened(const CVexGePolyline2d& chain, double flatness)
{
    CVexGePolyline2d result;
    for (unsigned i = 0; i < chain.numVerts(); ++i) {
        result.appendVertex(chain.vertices()[i]);
        CVexGeCircArc2d arc;
        if (!chain.getArcSegAt(i, arc)) {
            continue;
        }
        const double bulge = chain.getBulgeAt(i);
        const double sweep = 4.0 * std::atan(std::fabs(bulge));
        const double step = 2.0 * std::acos(1.0 - std::min(flatness / arc.radius(), 1.0));
        const int chords = static_cast<int>(std::ceil(sweep / step));
        for (int k = 1; k < chords; ++k) {
            const double along = static_cast<double>(k) / chords;
            result.appendVertex(arc.pointAtParam(bulge < 0.0 ? 1.0 - along : along));
        }
    }
    result.setClosed(chain.isClosed());
    return result;
}

/// The vertices of a chain of straight segments as GEOS keeps them.
inline GEOSCoordSequence* sequenceOf(GEOSContextHandle_t context, const CVexGePolyline2d& chain)
{
    const auto& vertices = chain.vertices();
    const auto count = static_cast<unsigned>(vertices.size() + (chain.isClosed() ? 1 : 0));
    GEOSCoordSequence* sequence = GEOSCoordSeq_create_r(context, count, 2);
    for (unsigned i = 0; i < count; ++i) {
        const CVexGePoint2d& vertex = vertices[i % vertices.size()];
        GEOSCoordSeq_setXY_r(context, sequence, i, vertex.x, vertex.y);
    }
    return sequence;
}

inline GEOSGeometry* lineOf(GEOSContextHandle_t context, const CVexGePolyline2d& chain)
{
    return GEOSGeom_createLineString_r(context, sequenceOf(context, chain));
}

inline GEOSGeometry* areaOf(GEOSContextHandle_t context, const CVexGePolyline2d& chain)
{
    return GEOSGeom_createPolygon_r(
        context, GEOSGeom_createLinearRing_r(context, sequenceOf(context, chain)), nullptr, 0);
}
