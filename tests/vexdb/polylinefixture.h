#pragma once

#include "tests/vexdb/entityfixture.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"

#include <initializer_list>

/// A vertex as the tests write it down.
struct Corner {
    double x = 0.0;
    double y = 0.0;
    double bulge = 0.0;
    double startWidth = -1.0;
    double endWidth = -1.0;
};

/// Puts the vertices into `polyline` with exactly these bulges, also where it closes.
inline void setCorners(CVexDbPolyline& polyline, std::initializer_list<Corner> corners,
                       bool closed = false)
{
    CVexGePolyline2d chain;
    double lastBulge = 0.0;
    for (const Corner& corner : corners) {
        chain.appendVertex({corner.x, corner.y}, corner.bulge, corner.startWidth, corner.endWidth);
        lastBulge = corner.bulge;
    }
    chain.setClosed(closed);
    chain.setBulgeAt(chain.numVerts() - 1, lastBulge); // closing computes one of its own
    polyline.SetGeometry(chain);
}

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
