#pragma once

#include "vexdb/dbobject/dbentity/vexdbcurve.h"

/// What all entities around one geometry of the kernel share: they hold it, write and read it
/// behind the entity record, and hand intersections on to it. The members are compiled once, in
/// vexdbcurveof.cpp, which names the geometries.
template <class Geometry>
class VEXDB_EXPORT CVexDbCurveOf : public CVexDbCurve {
public:
    ~CVexDbCurveOf() override;
    /// Takes the properties over, and the geometry of an entity of the same class.
    CVexDbCurveOf& operator=(const CVexDbEntity& other) override;
    bool save() override;
    bool read() override;
    bool intersectWith(CVexDbEntity& other, int& count, PointList& points, Intersect kind,
                       double tol) const override;
    bool intersectWith(const CVexGeEllipArc2d& other, int& count, PointList& points, Intersect kind,
                       double tol) const override;
    bool intersectWith(const CVexGeCircArc2d& other, int& count, PointList& points, Intersect kind,
                       double tol) const override;
    bool intersectWith(const CVexGeLine2d& other, int& count, PointList& points, Intersect kind,
                       double tol) const override;
    /// A new entity of the class, in no block, whose geometry moves to the side of `side`.
    bool getOffset(CVexGePoint2d& side, CVexDbEntity*& result, double distance) override;

protected:
    /// In `database`, or in none, with its current properties and the geometry's own default.
    CVexDbCurveOf(CVexDbDatabase* database, VexDb::ClassType type, int statusBits);
    /// With a geometry, whose screen rectangle is computed at once.
    CVexDbCurveOf(CVexDbDatabase* database, const Geometry& geometry, VexDb::ClassType type,
                  int statusBits);
    /// A plain copy: the identity stays the source's until detach().
    CVexDbCurveOf(const CVexDbCurveOf& other);
    /// Takes the entity's properties and the geometry over, and refreshes the grips.
    CVexDbCurveOf& operator=(const CVexDbCurveOf& other);
    /// What every setter ends with: grips and rectangle anew, and no display vertices.
    void geometryChanged();
    /// Whether one of the sides of the rectangle with the corners `a` and `b` meets the geometry.
    [[nodiscard]] bool isCrossedByRect(const CVexGePoint2d& a, const CVexGePoint2d& b) const;

    Geometry m_geometry;
};
