#pragma once

#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <type_traits>

/// Calls `visit` with the kernel curve that stands for `entity` (a box lends a polyline made for
/// the call) and returns its answer; false, with no call, for a class that nothing intersects. The
/// only switch over class types; a new kind of curve joins here.
template <class Visit>
bool visitCurve(const CVexDbEntity& entity, Visit&& visit)
{
    switch (entity.classType()) {
    case VexDb::kLine: return visit(static_cast<const CVexDbLine&>(entity).geLine());
    case VexDb::kBox: {
        CVexGePolyline2d outline;
        static_cast<const CVexDbBox&>(entity).GetPolyline(outline);
        return visit(outline);
    }
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
    return a.intersectWith(b, count, points, kind, tol);
}
