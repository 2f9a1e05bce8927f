#pragma once

#include "vexdb/dbobject/dbentity/vexdbcurve.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"
#include "vexge/geentity2d/vexgerect2d.h"

/// The geometry behind a curve entity, as the kind that its class holds.
template <class Geometry>
const Geometry& geometryOf(const CVexDbEntity& entity)
{
    return static_cast<const Geometry&>(*static_cast<const CVexDbCurve&>(entity).geCurve());
}

/// What stands for a geometry where it meets others: itself, for a rectangle its closed polyline.
template <class Geometry>
const Geometry& shapeOf(const Geometry& geometry)
{
    return geometry;
}
inline CVexGePolyline2d shapeOf(const CVexGeRect2d& rect)
{
    CVexGePolyline2d outline;
    rect.getPolyline(outline);
    return outline;
}

/// Calls `visit` with the kernel curve that stands for `entity` (a box lends a polyline made for
/// the call) and returns its answer; false, with no call, for a class that nothing intersects. The
/// only switch over class types; a new kind of curve joins with its line here.
template <class Visit>
bool visitCurve(const CVexDbEntity& entity, Visit&& visit)
{
    switch (entity.classType()) {
    case VexDb::kArc:
    case VexDb::kCircle: return visit(geometryOf<CVexGeCircArc2d>(entity));
    case VexDb::kLine: return visit(geometryOf<CVexGeLine2d>(entity));
    case VexDb::kPolyline: return visit(geometryOf<CVexGePolyline2d>(entity));
    case VexDb::kBox: return visit(shapeOf(geometryOf<CVexGeRect2d>(entity)));
    default: return false;
    }
}

/// The kernel's intersection of two curves, `a` the receiver: `points` holds its `count` points,
/// none when it answers false.
template <class A, class B>
bool intersectionOf(const A& a, const B& b, int& count, CVexDbEntity::PointList& points,
                    CVexDbEntity::Intersect kind, double tol)
{
    count = 0;
    points.clear();
    if constexpr (requires { a.intersectWith(b, count, points, kind, tol); }) {
        return a.intersectWith(b, count, points, kind, tol);
    } else { // an arc gives its hits with a line or an arc as two points
        CVexGePoint2d hits[2];
        if (!a.intersectWith(b, count, hits[0], hits[1], kind, tol)) {
            return false;
        }
        points.assign(hits, hits + count);
        return true;
    }
}
