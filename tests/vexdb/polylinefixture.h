#pragma once

#include "tests/vexdb/entityfixture.h"
#include "tests/vexdb/polylinewords.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"

#include <initializer_list>

class PolylineTest : public EntityTest {
protected:
    void make(std::initializer_list<Corner> corners, bool closed = false)
    {
        setCorners(polyline, corners, closed);
    }
    std::string grips()
    {
        CVexDbEntity::PointList* points = nullptr;
        EXPECT_TRUE(polyline.getGripPointVec(points));
        return inWords(*points);
    }
    CVexGePoint2d vertex(unsigned index) const
    {
        CVexGePoint2d point(-99, -99);
        EXPECT_TRUE(polyline.GetPointAt(index, point));
        return point;
    }

    CVexDbPolyline polyline{0, &drawing};
};
