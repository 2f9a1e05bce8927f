#include "tests/vexdb/polylinefixture.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"

#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;

TEST_F(PolylineTest, IsACompoundCurveOfItsKindAndBeginsEmpty)
{
    EXPECT_EQ(VexDb::kPolyline, polyline.classType());
    EXPECT_EQ(kStatusEntity | kStatusCompoundObject, polyline.status());
    EXPECT_TRUE(polyline.IsCurveEntity());
    EXPECT_EQ(&polyline.gePolyline(), polyline.geCurve());
    EXPECT_EQ(0u, polyline.NumVerts());
    EXPECT_FALSE(polyline.IsFill());
    EXPECT_EQ(0, polyline.FillMode());
}

TEST_F(PolylineTest, RecordIsCountFlagVerticesFillAndMode)
{
    make({{1, 2, 0.5, 3, 4}, {5, 6, -0.25}, {7, 8}}, true);
    polyline.SetFill(true);
    polyline.SetFillMode(5);
    Bytes expected;
    expected.object(polyline.getCreatedTime(), 7, 0x14);
    expected.u64(layer(L"0").getCreatedTime()).u64(linetype(L"ByLayer").getCreatedTime());
    expected.i32(256).i32(-1).u16(0);
    expected.i32(3).u8(1);
    expected.point(1, 2).f64(0.5).f64(3).f64(4);
    expected.point(5, 6).f64(-0.25).f64(-1).f64(-1);
    expected.point(7, 8).f64(0).f64(-1).f64(-1);
    expected.u8(1).i32(5);
    EXPECT_SAME_BYTES(expected.all(), saved(polyline));
}

TEST_F(PolylineTest, ReadsItsRecordAndHasItsGripsAfterwards)
{
    Bytes file;
    file.object(0x77, 7, 0x14).u64(0).u64(0).i32(256).i32(-1).u16(0);
    file.i32(2).u8(1).point(0, 0, 9).f64(1).f64(2).f64(3).point(10, 0).f64(0).f64(-1).f64(-1);
    file.u8(1).i32(-7);
    ASSERT_TRUE(reads(polyline, file.all()));
    EXPECT_EQ("0,0 5,-5 10,0", grips());
    EXPECT_EQ(9, vertex(0).tag);
    double start = 0.0;
    double end = 0.0;
    EXPECT_TRUE(polyline.GetWidthsAt(0, start, end));
    EXPECT_EQ(2.0, start);
    EXPECT_EQ(3.0, end);
    EXPECT_TRUE(polyline.IsClosed());
    EXPECT_TRUE(polyline.IsFill());
    EXPECT_EQ(-7, polyline.FillMode());
}

TEST_F(PolylineTest, CountBeyondTheFileEndsTheReading)
{
    Bytes file;
    file.object(0x77, 7, 0x14).u64(0).u64(0).i32(256).i32(-1).u16(0);
    file.i32(-1).u8(0).point(0, 0).f64(0).f64(-1).f64(-1);
    EXPECT_FALSE(reads(polyline, file.all()));
    EXPECT_EQ(0u, polyline.NumVerts());
}

TEST_F(PolylineTest, GripsAreVerticesEachWithTheMiddleOfItsArc)
{
    make({{0, 0, 1}, {10, 0}, {10, 10, -0.5}, {0, 10}});
    EXPECT_EQ("0,0 5,-5 10,0 10,10 5,7.5 0,10", grips());
    polyline.SetBulgeAt(0, 0.0); // the indices behind an arc move with it
    EXPECT_POINT(10, 0, polyline.getGripPoint(1));
}

TEST_F(PolylineTest, LastVertexHasAMiddleOnlyWhenClosed)
{
    make({{0, 0}, {10, 0}, {10, 10, 1}});
    EXPECT_EQ("0,0 10,0 10,10", grips());
    make({{0, 0}, {10, 0}, {0, 10, -1}}, true); // down the y axis, and clockwise to its right
    EXPECT_EQ("0,0 10,0 0,10 5,5", grips());
}

TEST_F(PolylineTest, OuterRectangleIsOfTheVerticesAlone)
{
    // A reader expects the arc in it. The kernel's box has none, and grips and zooms go by it.
    make({{0, 0, 1}, {10, 0}});
    const CVexDbRect outer = polyline.GetOutRect();
    EXPECT_POINT(0, 0, outer.LeftTop());
    EXPECT_POINT(10, 0, outer.RightBottom());
    EXPECT_EQ(CRect(0, 0, 1000, 0), *polyline.GetEntityRect());
}

TEST_F(PolylineTest, TrueExtentsHoldTheArcsThatSwellOut)
{
    CVexGePoint2d min;
    CVexGePoint2d max;
    make({{0, 0, 1}, {10, 0}}); // a half circle below
    ASSERT_TRUE(polyline.trueExtents(min, max));
    EXPECT_POINT_NEAR(-0.005, -5.005, min, 1e-12); // the ends of an arc forgive 0.001 of its radius
    EXPECT_POINT_NEAR(10.005, 0.005, max, 1e-12);
    make({{0, 0, -2}, {8, 0}}); // radius 5 about (4, 3): more than half
    ASSERT_TRUE(polyline.trueExtents(min, max));
    EXPECT_POINT_NEAR(-1.005, -2.005, min, 1e-12);
    EXPECT_POINT_NEAR(9.005, 8.005, max, 1e-12);
    make({{0, 0}, {8, 0, 1}}); // what an open end would bend to is not drawn
    ASSERT_TRUE(polyline.trueExtents(min, max));
    EXPECT_POINT(0, 0, min);
}

TEST_F(PolylineTest, ExtentsAreUnknownWhereNothingOrNoNumberStands)
{
    CVexGePoint2d min;
    CVexGePoint2d max;
    EXPECT_FALSE(polyline.trueExtents(min, max));
    make({{0, 0}, {std::numeric_limits<double>::quiet_NaN(), 1}});
    EXPECT_FALSE(polyline.trueExtents(min, max));
    make({{0, 0, std::numeric_limits<double>::infinity()}, {10, 0}});
    EXPECT_FALSE(polyline.trueExtents(min, max));
    make({{0, 0, 1e-2}, {1e308, 1e308}});
    EXPECT_FALSE(polyline.trueExtents(min, max));
}

TEST_F(PolylineTest, MadeFromALineHasItsEndsAndProperties)
{
    CVexDbLine line(&drawing);
    line.set({1, 2}, {3, 4});
    line.setLayer(CString(L"PipeLine"));
    line.setLineWeight(static_cast<VexDb::LineWeight>(30), true);
    CVexDbPolyline made(line, false);
    EXPECT_EQ("1,2 3,4", inWords(made.gePolyline().vertices()));
    EXPECT_TRUE(made.IsOnlyLines());
    EXPECT_FALSE(made.HasWidth());
    EXPECT_EQ(L"PipeLine", made.Layer());
    EXPECT_EQ(30, made.LineWeight());
    EXPECT_NE(line.getCreatedTime(), made.getCreatedTime());
}

TEST_F(PolylineTest, MadeFromAnArcHasItsBulge)
{
    const CVexDbArc arc({0, 0}, 5, 0.0, kPi);
    CVexDbPolyline made(arc, true);
    ASSERT_EQ(2u, made.NumVerts());
    EXPECT_FALSE(made.IsClosed());
    EXPECT_NEAR(1.0, made.GetBulgeAt(0), 1e-15);
    EXPECT_POINT_NEAR(0, 5, made.getGripPoint(1), 1e-12);
}

TEST_F(PolylineTest, MadeFromACircleIsTwoHalves)
{
    const CVexDbCircle circle({1, 1}, 5);
    CVexDbPolyline made(circle, false);
    ASSERT_EQ(2u, made.NumVerts());
    EXPECT_TRUE(made.IsClosed());
    EXPECT_EQ(1.0, made.GetBulgeAt(0));
    EXPECT_EQ(1.0, made.GetBulgeAt(1));
    EXPECT_NEAR(10 * kPi, made.length(), 1e-9);
}

TEST_F(PolylineTest, MadeFromACircleInSegmentsKeepsTheCircle)
{
    const CVexDbCircle circle({1, 1}, 5);
    CVexDbPolyline made(circle, 4, false);
    ASSERT_EQ(4u, made.NumVerts());
    EXPECT_POINT_NEAR(6, 1, made.getGripPoint(0), 1e-12);
    EXPECT_POINT_NEAR(1, 6, made.getGripPoint(2), 1e-12);
    EXPECT_NEAR(std::tan(kPi / 8), made.GetBulgeAt(3), 1e-15);
    EXPECT_NEAR(10 * kPi, made.length(), 1e-9);
    EXPECT_EQ(2u, CVexDbPolyline(circle, 1, false).NumVerts());
}

TEST_F(PolylineTest, CopyAndAssignmentTakeGeometryAndFill)
{
    make({{0, 0}, {10, 0}, {0, 10}}, true);
    polyline.SetFill(true);
    polyline.SetFillMode(3);
    const std::unique_ptr<CVexDbEntity> copy(polyline.CopyEntity(false));
    CVexDbPolyline other(0, &drawing);
    static_cast<CVexDbEntity&>(other) = polyline;
    for (const auto* made : {static_cast<CVexDbPolyline*>(copy.get()), &other}) {
        EXPECT_EQ("0,0 10,0 0,10", inWords(made->gePolyline().vertices()));
        EXPECT_TRUE(made->IsFill());
        EXPECT_EQ(3, made->FillMode());
        EXPECT_EQ(&made->gePolyline(), made->geCurve());
        EXPECT_NE(polyline.objectId(), made->objectId());
    }
}

TEST_F(PolylineTest, AssignmentOfAnotherKindTakesThePropertiesAlone)
{
    make({{0, 0}, {10, 0}});
    CVexDbLine line(&drawing);
    line.setLayer(CString(L"WeldNum"));
    line.SetBoundary(4);
    static_cast<CVexDbEntity&>(polyline) = line;
    EXPECT_EQ(L"WeldNum", polyline.Layer());
    EXPECT_EQ(4, polyline.IsBoundary());
    EXPECT_EQ(2u, polyline.NumVerts());
}

TEST_F(PolylineTest, FillOnAnOpenOneIsStoredAsFalse)
{
    make({{0, 0}, {10, 0}, {0, 10}});
    polyline.SetFill(true);
    EXPECT_FALSE(polyline.IsFill());
    polyline.SetClosed(true);
    EXPECT_FALSE(polyline.IsFill()); // nothing was kept that closing could bring back
    polyline.SetFill(true);
    EXPECT_TRUE(polyline.IsFill());
}

TEST_F(PolylineTest, OpeningHidesTheFillAndKeepsIt)
{
    make({{0, 0}, {10, 0}, {0, 10}}, true);
    polyline.SetFill(true);
    polyline.SetClosed(false);
    EXPECT_FALSE(polyline.IsFill());
    polyline.SetClosed(true);
    EXPECT_TRUE(polyline.IsFill());
    polyline.SetFill(false);
    EXPECT_FALSE(polyline.IsFill());
}

TEST_F(PolylineTest, EndsThatMeetCloseItForFillAndBoundariesWithoutTheFlag)
{
    make({{0, 0}, {10, 0}, {0, 10}, {0, 0.0015}});
    EXPECT_FALSE(polyline.IsClosed());
    EXPECT_TRUE(polyline.Closed());
    EXPECT_TRUE(polyline.IsClosedCurve());
    polyline.SetFill(true);
    EXPECT_TRUE(polyline.IsFill());
    polyline.SetPointAt(3, {0, 0.003});
    EXPECT_FALSE(polyline.IsClosedCurve());
    EXPECT_FALSE(polyline.IsFill());
}

TEST_F(PolylineTest, PropertiesAreTheCountAndTheFirstVertex)
{
    make({{1, 2, 0.5, 3, 4}, {5, 6}});
    const auto rows = polyline.getProperty()[VexDb::kPolyline][L"Shape"];
    EXPECT_EQ("Point Count=2\nBulge=0.500000\nPoint X=1.000000\nPoint Y=2.000000\n"
              "Start Width=3.000000\nEnd Width=4.000000\n",
              inWords(rows));
    ASSERT_EQ(6u, rows.size());
    const int kinds[] = {2, 4, 3, 3, 4, 4};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(kinds[i], rows[i].kind) << i;
        EXPECT_EQ(L"Change " + rows[i].name, rows[i].change) << i;
    }
    EXPECT_EQ(0u, rows[0].data);
    polyline.SetPointAt(0, {9, 2});
    EXPECT_EQ(9.0, *reinterpret_cast<const double*>(rows[2].data));
}

TEST_F(PolylineTest, PropertiesOfASelectedVertexAreItsOwn)
{
    make({{1, 2, 0.5}, {5, 6, -0.75, 0.25, 0.5}});
    EXPECT_EQ("Point Count=2\nBulge=-0.750000\nPoint X=5.000000\nPoint Y=6.000000\n"
              "Start Width=0.250000\nEnd Width=0.500000\n",
              inWords(polyline.vertexProperties(1)));
    EXPECT_EQ("Point Count=2\n", inWords(polyline.vertexProperties(2)));
    make({});
    EXPECT_EQ("Point Count=0\n", inWords(polyline.getProperty()[VexDb::kPolyline][L"Shape"]));
}

TEST_F(PolylineTest, BoxGivesItsOutlineAndItsFourProperties)
{
    CVexDbBox box(&drawing);
    box.Set({1, 2}, 4, 3, 0.0);
    box.setLayer(CString(L"Dimension"));
    box.setLineType(CString(L"Hidden"), true);
    box.setColor(3, true);
    box.setLineWeight(static_cast<VexDb::LineWeight>(50), true);
    box.SetBoundary(6);
    make({{9, 9, 1}});
    box.ConvertToPolyline(polyline);
    EXPECT_EQ("1,2 5,2 5,5 1,5", inWords(polyline.gePolyline().vertices()));
    EXPECT_TRUE(polyline.IsClosed());
    EXPECT_EQ("1,2 5,2 5,5 1,5", grips());
    EXPECT_EQ(L"Dimension", polyline.Layer());
    EXPECT_EQ(L"Hidden", polyline.LineType());
    EXPECT_EQ(3, polyline.ColorIndex());
    EXPECT_EQ(50, polyline.LineWeight());
    EXPECT_EQ(0, polyline.IsBoundary());
}

} // namespace
