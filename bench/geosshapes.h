#pragma once

#include "vexge/geentity2d/vexgepolyline2d.h"

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
