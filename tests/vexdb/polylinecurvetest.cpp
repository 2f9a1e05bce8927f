#include "tests/vexdb/polylinefixture.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbpoint.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"

#include <list>
#include <memory>
#include <sstream>

namespace {

constexpr CVexGeEntity2d::Intersect kNone = CVexGeEntity2d::kExtendNone;
constexpr double kTol = 1e-6;

/// Hits by parameter in words: "0.25:5,0".
std::string inWords(const CVexDbPolyline::PointMap& hits)
{
    std::ostringstream text;
    const char* gap = "";
    for (const auto& [param, point] : hits) {
        text << gap << param << ':' << point.x << ',' << point.y;
        gap = " ";
    }
    return text.str();
}

class PolylineCurveTest : public PolylineTest {
protected:
    bool insideOrCross(CVexGePoint2d a, CVexGePoint2d b)
    {
        return polyline.checkInsideOrCross(a, b);
    }
    bool inside(CVexGePoint2d a, CVexGePoint2d b) { return polyline.checkInside(a, b); }

    int count = -1;
    CVexDbEntity::PointList points;
    CVexDbPolyline::PointMap hits;
};

TEST_F(PolylineCurveTest, OneVertexInsideSelectsByCrossing)
{
    make({{0, 0}, {10, 0}, {20, 50}});
    EXPECT_TRUE(insideOrCross({19, 49}, {21, 51})); // the last, too
    EXPECT_TRUE(insideOrCross({4, -1}, {6, 1}));    // a side is crossed
    EXPECT_FALSE(insideOrCross({0, 10}, {5, 20}));
}

TEST_F(PolylineCurveTest, ArcThatSwellsIntoTheRectangleSelects)
{
    make({{0, 0, 1}, {10, 0}});
    EXPECT_TRUE(insideOrCross({4, -6}, {6, -4}));
    EXPECT_FALSE(insideOrCross({4, -4}, {6, -1})); // between chord and arc
    make({{0, 0}, {10, 0}, {0, 10}}, true);
    EXPECT_TRUE(insideOrCross({-1, 4}, {1, 6})); // the closing segment
}

TEST_F(PolylineCurveTest, WindowWantsEveryVertexAndNoArc)
{
    make({{0, 0, 1}, {10, 0}});
    EXPECT_TRUE(inside({-1, -1}, {11, 1})); // the arc leaves the window, the vertices do not
    EXPECT_FALSE(inside({-1, -1}, {9, 1}));
}

TEST_F(PolylineCurveTest, PointsOnItAreOnIt)
{
    make({{0, 0, 1}, {10, 0}});
    EXPECT_TRUE(polyline.isOn({5, -5}, 1e-9));
    EXPECT_FALSE(polyline.isOn({5, 0}, 1e-9));
    EXPECT_NEAR(0.5, polyline.paramAtPoint({5, -5}, 1e-9), 1e-12);
}

struct OtherRow {
    const char* name;
    std::unique_ptr<CVexDbEntity> other;
    const char* expected;
};

TEST_F(PolylineCurveTest, MeetsEveryKindOfCurve)
{
    make({{0, 0}, {10, 0}, {10, 10}});
    auto chain = std::make_unique<CVexDbPolyline>(0, &drawing);
    setCorners(*chain, {{7, -1}, {7, 1}});
    OtherRow rows[] = {
        {"line", std::make_unique<CVexDbLine>(CVexGePoint2d(5, -1), CVexGePoint2d(5, 1)), "5,0"},
        {"circle", std::make_unique<CVexDbCircle>(CVexGePoint2d(10, 10), 2.0), "10,8"},
        {"arc", std::make_unique<CVexDbArc>(CVexGePoint2d(3, -4), CVexGePoint2d(3, 4), 1.0), "7,0"},
        {"box", std::make_unique<CVexDbBox>(CVexGePoint2d(8, 3), 4.0, 2.0, 0.0), "10,3 10,5"},
        {"polyline", std::move(chain), "7,0"},
        {"point", std::make_unique<CVexDbPoint>(CVexGePoint2d(5, 0)), ""},
    };
    for (OtherRow& row : rows) {
        const bool met = polyline.intersectWith(*row.other, count, points, kNone, kTol);
        EXPECT_EQ(row.expected, ::inWords(points)) << row.name;
        EXPECT_EQ(!points.empty(), met) << row.name;
        points.clear();
        row.other->intersectWith(polyline, count, points, kNone, kTol); // and they meet it
        EXPECT_EQ(std::string(row.expected).empty(), points.empty()) << row.name;
        points.clear();
    }
}

TEST_F(PolylineCurveTest, HitsStandUnderTheirParameter)
{
    make({{0, 0}, {10, 0}, {10, 10}});
    CVexDbLine line({5, -1}, {5, 1});
    EXPECT_TRUE(polyline.intersectWith(line, count, hits, kNone, kTol));
    EXPECT_EQ("0.25:5,0", inWords(hits));
    CVexDbBox box({8, 3}, 4.0, 2.0, 0.0);
    EXPECT_TRUE(polyline.intersectWith(box, count, hits, kNone, kTol)); // added to those before
    EXPECT_EQ("0.25:5,0 0.65:10,3 0.75:10,5", inWords(hits));
    EXPECT_EQ(3, count);
}

TEST_F(PolylineCurveTest, CurvesOfTheKernelGiveTheirHitsByParameterToo)
{
    make({{0, 0}, {10, 0}, {10, 10}});
    EXPECT_TRUE(polyline.intersectWith(CVexGeLine2d({5, -1}, CVexGePoint2d(5, 1)), count, hits,
                                       kNone, kTol));
    EXPECT_TRUE(polyline.intersectWith(CVexGeCircArc2d({10, 10}, 2.0), count, hits, kNone, kTol));
    const CVexGeEllipArc2d ellipse({0, 0}, {1, 0}, {0, 1}, 2.0, 1.0);
    EXPECT_TRUE(polyline.intersectWith(ellipse, count, hits, kNone, kTol));
    ASSERT_EQ(3u, hits.size());
    EXPECT_NEAR(0.1, hits.begin()->first, 1e-6);
    EXPECT_EQ(0.25, std::next(hits.begin())->first);
    EXPECT_EQ(0.9, hits.rbegin()->first);
}

TEST_F(PolylineCurveTest, WhatNothingMeetsLeavesTheHitsAlone)
{
    make({{0, 0}, {10, 0}});
    CVexDbPoint point({5, 0});
    EXPECT_FALSE(polyline.intersectWith(point, count, hits, kNone, kTol));
    EXPECT_EQ(0, count);
    CVexDbLine beyond({20, -1}, {20, 1});
    EXPECT_FALSE(polyline.intersectWith(beyond, count, hits, kNone, kTol));
    EXPECT_TRUE(polyline.intersectWith(beyond, count, hits, CVexGeEntity2d::kExtendThis, kTol));
    EXPECT_POINT(20, 0, hits.begin()->second);
}

TEST_F(PolylineCurveTest, OffsetIsAFreePolylineWithAllItsFields)
{
    make({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true);
    polyline.SetFill(true);
    polyline.SetFillMode(2);
    polyline.setLayer(CString(L"PipeLine"));
    CVexGePoint2d side(5, -3);
    CVexDbEntity* result = nullptr;
    ASSERT_TRUE(polyline.getOffset(side, result, 1.0));
    const std::unique_ptr<CVexDbPolyline> offset(static_cast<CVexDbPolyline*>(result));
    EXPECT_NEAR(48.0, offset->length(), 1e-9);
    EXPECT_TRUE(offset->IsFill());
    EXPECT_EQ(2, offset->FillMode());
    EXPECT_EQ(L"PipeLine", offset->Layer());
    EXPECT_FALSE(offset->IsDbEntity());
    EXPECT_NEAR(40.0, polyline.length(), 1e-12);
}

TEST_F(PolylineCurveTest, OffsetWithoutRoomIsRefused)
{
    make({{0, 0}, {10, 0}, {10, 4}, {0, 4}}, true);
    CVexGePoint2d middle(5, 2);
    CVexDbEntity* result = &polyline;
    EXPECT_FALSE(polyline.getOffset(middle, result, 3.0));
    EXPECT_EQ(nullptr, result);
}

TEST_F(PolylineCurveTest, OffsetsOfBothSidesJoinTheListWithThePropertiesAndNoFill)
{
    make({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true);
    polyline.SetFill(true);
    polyline.setLayer(CString(L"PipeLine"));
    std::list<CVexDbPolyline*> out;
    EXPECT_EQ(1, polyline.Offset({5, -3}, out, 1.0, false));
    EXPECT_EQ(3, polyline.Offset({5, -3}, out, 1.0, true)); // the size of the list
    double lengths[] = {48.0, 48.0, 32.0};
    std::size_t i = 0;
    for (CVexDbPolyline* offset : out) {
        const std::unique_ptr<CVexDbPolyline> owned(offset);
        EXPECT_NEAR(lengths[i++], owned->length(), 1e-9);
        EXPECT_EQ(L"PipeLine", owned->Layer());
        EXPECT_FALSE(owned->IsFill());
        EXPECT_FALSE(owned->IsDbEntity());
    }
    EXPECT_EQ(3u, out.size());
}

TEST_F(PolylineCurveTest, OffsetsOfNothingAreNone)
{
    std::list<CVexDbPolyline*> out;
    EXPECT_EQ(0, polyline.Offset({5, -3}, out, 1.0, true));
    EXPECT_TRUE(out.empty());
}

} // namespace
