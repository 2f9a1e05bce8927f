#include "tests/vexdb/polylinefixture.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdblogical.h"

#include <cmath>
#include <rapidcheck/gtest.h>

namespace {

double hundredths(int low, int high)
{
    return *rc::gen::inRange(low, high) / 100.0;
}

/// A polyline of up to 40 vertices, of all bulges and with a few widths.
void makeAny(CVexDbPolyline& polyline)
{
    CVexGePolyline2d chain;
    const int count = *rc::gen::inRange(1, 41);
    for (int i = 0; i < count; ++i) {
        const double x = hundredths(-10000, 10001);
        const double bulge =
            *rc::gen::element(0.0, 0.0, 0.3, -0.3, 1.0, -1.0, 0.0005, -2.5, 40.0, -0.002);
        const double width = *rc::gen::element(-1.0, -1.0, -1.0, 0.0, 1.5);
        chain.appendVertex({x, hundredths(-10000, 10001)}, bulge, width, width);
    }
    const double last = chain.getBulgeAt(chain.numVerts() - 1);
    chain.setClosed(*rc::gen::arbitrary<bool>());
    chain.setBulgeAt(chain.numVerts() - 1, last);
    polyline.SetGeometry(chain);
    polyline.SetFill(*rc::gen::arbitrary<bool>());
    polyline.SetFillMode(*rc::gen::inRange(0, 6));
}

/// What a drawn polyline is, told plainly: with an arc entity for each arc segment.
void drawPlainly(CVexDbPolyline& polyline, CDC& dc)
{
    const CVexGePolyline2d& chain = polyline.gePolyline();
    const CVexDbEntity::PointList& vertices = chain.vertices();
    const CPen* const before = polyline.setPen(&dc);
    std::vector<CPoint> area{toLogical(vertices[0])};
    dc.MoveTo(area[0]);
    const std::size_t ends = vertices.size() + (chain.isClosed() ? 1 : 0);
    for (std::size_t i = 1; i < ends; ++i) {
        const std::size_t end = i % vertices.size();
        const double bulge = chain.bulges()[i - 1];
        if (chain.startWidths()[end] > 0.0) {
            continue;
        }
        if (std::fabs(bulge) > 0.001) {
            CVexDbArc arc(vertices[i - 1], vertices[end], bulge);
            arc.InitGrVertexArray();
            const std::vector<CPoint>& display = arc.GrVertexArray();
            dc.MoveTo(display[0]);
            for (std::size_t k = 1; k < display.size(); ++k) {
                dc.LineTo(display[k]);
            }
            if (bulge < 0.0) {
                dc.MoveTo(display[0]);
            }
        } else {
            dc.LineTo(toLogical(vertices[end]));
            if (end != 0) {
                area.push_back(toLogical(vertices[end]));
            }
        }
    }
    polyline.FillArea(&dc, area);
    polyline.RemovePen(&dc, before);
}

RC_GTEST_FIXTURE_PROP(PolylineTest, StrokesAreThoseOfOneArcEntityASegment, ())
{
    makeAny(polyline);
    CVexRecordingDC plain;
    drawPlainly(polyline, plain);
    polyline.Draw(&dc);
    RC_ASSERT(dc.strokes() == plain.strokes());
}

RC_GTEST_FIXTURE_PROP(PolylineTest, TrueExtentsHoldEveryStrokeAndEveryPoint, ())
{
    makeAny(polyline);
    CVexGePoint2d min;
    CVexGePoint2d max;
    RC_ASSERT(polyline.trueExtents(min, max));
    polyline.Draw(&dc);
    const CRect box(toLogical(min) - CPoint(1, 1), toLogical(max) + CPoint(1, 1));
    for (const VexStroke& stroke : dc.strokes()) {
        for (const CPoint& point : stroke.points) {
            RC_ASSERT(point.x >= box.left && point.x <= box.right);
            RC_ASSERT(point.y >= box.top && point.y <= box.bottom);
        }
    }
    for (int i = 0; i <= 50 && polyline.length() > 0.0; ++i) {
        const CVexGePoint2d point = polyline.pointAtParam(i / 50.0);
        RC_ASSERT(point.x >= min.x && point.x <= max.x && point.y >= min.y && point.y <= max.y);
    }
}

RC_GTEST_FIXTURE_PROP(PolylineTest, EveryGripLiesOnTheCurve, ())
{
    makeAny(polyline);
    CVexDbEntity::PointList* grips = nullptr;
    polyline.getGripPointVec(grips);
    unsigned arcs = 0;
    for (unsigned i = 0; i < polyline.NumVerts(); ++i) {
        arcs += polyline.SegType(i) == CVexGePolyline2d::kArc ? 1 : 0;
    }
    RC_ASSERT(grips->size() == polyline.NumVerts() + arcs);
    for (const CVexGePoint2d& grip : *grips) {
        RC_ASSERT(polyline.IsVertex(grip, 0.0) >= 0 || polyline.isOn(grip, 1e-6));
    }
}

RC_GTEST_FIXTURE_PROP(PolylineTest, RecordReadAndSavedAgainIsTheSame, ())
{
    makeAny(polyline);
    const std::vector<std::byte> first = saved(polyline);
    CVexDbPolyline again(0, &drawing);
    RC_ASSERT(reads(again, first));
    RC_ASSERT(difference(first, saved(again)).empty());
    RC_ASSERT(again.gePolyline() == polyline.gePolyline());
}

RC_GTEST_FIXTURE_PROP(PolylineTest, RectangleAboutAnyOfItsPointsSelects, ())
{
    makeAny(polyline);
    RC_PRE(polyline.length() > 1.0);
    CVexGePoint2d at = polyline.pointAtParam(hundredths(0, 101));
    CVexGePoint2d a(at.x - 0.011, at.y - 0.013);
    CVexGePoint2d b(at.x + 0.017, at.y + 0.019);
    RC_ASSERT(polyline.checkInsideOrCross(a, b));
}

} // namespace
