#pragma once

#include "vexdb/dbobject/dbentity/vexdbentity.h"

/// An entity of a kind that a test chooses: a disc around its centre, which also tells where it
/// crosses itself and others.
class ProbeEntity : public CVexDbEntity {
public:
    ProbeEntity(CVexDbDatabase* database, VexDb::ClassType type, const CVexGePoint2d& center)
        : CVexDbEntity(database), m_center(center)
    {
        setClassType(type);
    }
    using CVexDbEntity::Draw;
    using CVexDbEntity::operator=;
    [[nodiscard]] bool centerPoint(CVexGePoint2d& center) const override
    {
        center = hasCenter ? m_center : center;
        return hasCenter;
    }
    [[nodiscard]] int isOn(const CVexGePoint2d& point, const double&) const override
    {
        return point.distanceTo(m_center) < 30.0 ? 1 : 0;
    }
    bool checkInsideOrCross(CVexGePoint2d& a, CVexGePoint2d& b) override
    {
        return IsInsideRect(a, b, m_center);
    }
    bool checkInside(CVexGePoint2d& a, CVexGePoint2d& b) override
    {
        return IsInsideRect(a, b, m_center);
    }
    bool intersectWith(CVexDbEntity& other, int& count, PointList& points, Intersect kind,
                       double tol) const override
    {
        met = &other;
        usedKind = kind;
        usedTol = tol;
        points = crossings;
        count = static_cast<int>(crossings.size());
        return !crossings.empty();
    }
    bool intersectWith(const CVexGeEllipArc2d&, int&, PointList&, Intersect, double) const override
    {
        return false;
    }
    bool intersectWith(const CVexGeCircArc2d&, int&, PointList&, Intersect, double) const override
    {
        return false;
    }
    bool intersectWith(const CVexGeLine2d&, int&, PointList&, Intersect, double) const override
    {
        return false;
    }

    bool hasCenter = false;
    PointList crossings;
    mutable CVexDbEntity* met = nullptr;
    mutable Intersect usedKind = CVexGeEntity2d::kExtendBoth;
    mutable double usedTol = 0.0;

private:
    CVexGePoint2d m_center;
};
