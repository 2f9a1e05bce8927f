#include "tests/vexdb/polylinefixture.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"

#include <numbers>

namespace {

TEST_F(PolylineTest, VerticesAreAddedChangedAndRemovedAndTheGripsFollow)
{
    EXPECT_TRUE(polyline.AppendVertex({0, 0}, 0, -1, -1));
    EXPECT_TRUE(polyline.AppendVertex({10, 0}, 1, -1, -1));
    EXPECT_EQ("0,0 10,0", grips());
    EXPECT_TRUE(polyline.AddVertexAt(1, {5, 5}, -1, 2, 3));
    EXPECT_EQ("0,0 5,5 10,5 10,0", grips()); // clockwise, so it swells to the left
    EXPECT_TRUE(polyline.SetBulgeAt(1, 0));
    EXPECT_TRUE(polyline.SetPointAt(0, {1, 1}));
    EXPECT_EQ("1,1 5,5 10,0", grips());
    EXPECT_TRUE(polyline.SetWidthsAt(0, 4, 5));
    EXPECT_TRUE(polyline.RemoveVertexAt(1));
    EXPECT_EQ("1,1 10,0", grips());
    EXPECT_EQ(CRect(100, 0, 1000, 100), *polyline.GetEntityRect());
}

TEST_F(PolylineTest, RangesOfVerticesAreRemovedTogether)
{
    make({{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}});
    EXPECT_TRUE(polyline.RemoveVertexAt(1, 3));
    EXPECT_EQ("0,0 4,0", grips());
    EXPECT_FALSE(polyline.RemoveVertexAt(1, -1));
    EXPECT_FALSE(polyline.RemoveVertexAt(2));
    EXPECT_EQ(2u, polyline.NumVerts());
}

TEST_F(PolylineTest, IndicesThatDoNotExistChangeNothing)
{
    make({{1, 2, 0.5, 3, 4}});
    CVexGePoint2d point(7, 7);
    double a = 7;
    double b = 8;
    EXPECT_FALSE(polyline.AddVertexAt(2, {0, 0}, 0, -1, -1));
    EXPECT_FALSE(polyline.SetPointAt(1, {0, 0}));
    EXPECT_FALSE(polyline.SetBulgeAt(1, 9));
    EXPECT_FALSE(polyline.SetWidthsAt(1, 9, 9));
    EXPECT_FALSE(polyline.GetPointAt(1, point));
    EXPECT_FALSE(polyline.GetBulgeAt(1, a));
    EXPECT_FALSE(polyline.GetWidthsAt(1, a, b));
    EXPECT_POINT(7, 7, point);
    EXPECT_EQ(7.0, a);
    EXPECT_EQ(0.0, polyline.GetBulgeAt(1));
    EXPECT_EQ(1u, polyline.NumVerts());
}

TEST_F(PolylineTest, SetVertexesMakesAStraightChainWithoutWidths)
{
    make({{9, 9, 1, 2, 2}, {8, 8}}, true);
    polyline.SetVertexes({{0, 0}, {10, 0}, {0, 10}}, false);
    EXPECT_EQ("0,0 10,0 0,10", grips());
    EXPECT_FALSE(polyline.IsClosed());
    EXPECT_FALSE(polyline.HasBulge());
    EXPECT_FALSE(polyline.HasWidth());
    polyline.SetVertexes({{0, 0}, {10, 0}, {0, 10}}, true);
    EXPECT_TRUE(polyline.IsClosed());
}

TEST_F(PolylineTest, QueriesAreTheGeometrysOwn)
{
    make({{0, 0}, {10, 0, 1, 2, 2}, {10, 10}});
    EXPECT_EQ(0, polyline.SegType(0));
    EXPECT_EQ(1, polyline.SegType(1));
    EXPECT_EQ(3, polyline.SegType(2));
    EXPECT_TRUE(polyline.HasBulge());
    EXPECT_TRUE(polyline.HasWidth());
    EXPECT_FALSE(polyline.IsOnlyLines());
    EXPECT_EQ(1.0, polyline.GetBulgeAt(1));
    CVexGeLine2d line;
    CVexGeCircArc2d arc;
    EXPECT_TRUE(polyline.GetLineSegAt(0, line));
    EXPECT_FALSE(polyline.GetArcSegAt(0, arc));
    EXPECT_TRUE(polyline.GetArcSegAt(1, arc));
    EXPECT_POINT_NEAR(10, 5, arc.center(), 1e-12);
}

TEST_F(PolylineTest, ParametersOfSegmentsAndOfTheWholeAreConverted)
{
    make({{0, 0}, {10, 0}, {10, 30}});
    int segment = -1;
    EXPECT_NEAR(0.5, polyline.SegParamAtParam(25.0 / 40.0, segment), 1e-9);
    EXPECT_EQ(1, segment);
    EXPECT_NEAR(25.0 / 40.0, polyline.ParamAtSegParam(1, 0.5), 1e-9);
    double param = -1.0;
    EXPECT_TRUE(polyline.OnSegAt(0, {4, 0}, param, 1e-6));
    EXPECT_NEAR(0.4, param, 1e-12);
    EXPECT_FALSE(polyline.OnSegAt(1, {4, 0}, param, 1e-6));
}

TEST_F(PolylineTest, IsVertexFindsTheFirstWithinTheTolerance)
{
    make({{0, 0}, {1, 0}, {1.25, 0}});
    EXPECT_EQ(1, polyline.IsVertex({1.25, 0}, 0.25)); // a distance equal to the tolerance counts
    EXPECT_EQ(2, polyline.IsVertex({1.25, 0}, 0.0));
    EXPECT_EQ(-1, polyline.IsVertex({1.25, 1e-12}, 0.0)); // exact vertices only
    EXPECT_EQ(-1, polyline.IsVertex({5, 5}, 1.0));
}

TEST_F(PolylineTest, ReverseTurnsTheTravelAndTheBulges)
{
    make({{0, 0, 1}, {10, 0}, {20, 0}});
    polyline.Reverse();
    EXPECT_EQ("20,0 10,0 5,-5 0,0", grips());
    EXPECT_EQ(-1.0, polyline.GetBulgeAt(1));
}

TEST_F(PolylineTest, ChangeStartRotatesAClosedOneAndReversesAtTheLastVertex)
{
    make({{0, 0}, {10, 0}, {0, 10}}, true);
    EXPECT_TRUE(polyline.ChangeStart(1));
    EXPECT_EQ("10,0 0,10 0,0", grips());
    EXPECT_TRUE(polyline.ChangeStart(2));
    EXPECT_EQ("0,0 0,10 10,0", grips());
    polyline.SetClosed(false);
    EXPECT_FALSE(polyline.ChangeStart(1));
}

TEST_F(PolylineTest, ClosingContinuesALastArcSmoothly)
{
    make({{10, 0, 1}, {-10, 0}});
    polyline.SetClosed(true);
    EXPECT_NEAR(1.0, polyline.GetBulgeAt(1), 1e-9); // the other half of the circle
    EXPECT_POINT_NEAR(0, -10, polyline.getGripPoint(3), 1e-7);
}

TEST_F(PolylineTest, JoinsAPolylineThatMeetsAnEnd)
{
    make({{0, 0}, {10, 0}});
    CVexDbPolyline other(0, &drawing);
    setCorners(other, {{10, 0, 1}, {20, 0}, {30, 0}});
    int index = -1;
    EXPECT_TRUE(polyline.AppendPolyline(&other, index));
    EXPECT_EQ(2, index);
    EXPECT_EQ("0,0 10,0 15,-5 20,0 30,0", grips());
    other.TranslateBy({5, 5});
    EXPECT_FALSE(polyline.AppendPolyline(&other, index)); // no ends meet
    EXPECT_EQ(3u, other.NumVerts());
}

TEST_F(PolylineTest, JoinsALineAndAnArcAndNothing)
{
    make({{0, 0}, {10, 0}});
    const CVexDbLine line({10, 0}, {10, 10});
    const CVexDbArc arc({0, 5}, 5, std::numbers::pi / 2, std::numbers::pi * 3 / 2); // ends at 0,0
    int index = -1;
    EXPECT_TRUE(polyline.AppendPolyline(&line, index));
    EXPECT_EQ(2, index);
    EXPECT_TRUE(polyline.AppendPolyline(&arc, index));
    EXPECT_EQ(0, index);
    EXPECT_POINT_NEAR(0, 10, vertex(0), 1e-12);
    EXPECT_NEAR(1.0, polyline.GetBulgeAt(0), 1e-12);
    EXPECT_EQ(4u, polyline.NumVerts());
    EXPECT_FALSE(polyline.AppendPolyline(static_cast<const CVexDbLine*>(nullptr), index));
    EXPECT_FALSE(polyline.AppendPolyline(&polyline, index));
}

TEST_F(PolylineTest, TransformsTurnGeometryAndGrips)
{
    make({{0, 0, 1}, {10, 0}});
    polyline.TranslateBy({1, 2});
    EXPECT_EQ("1,2 6,-3 11,2", grips());
    polyline.Mirror(CVexGeLine2d({0, 2}, CVexGePoint2d(1, 2)));
    EXPECT_EQ(-1.0, polyline.GetBulgeAt(0));
    EXPECT_POINT_NEAR(6, 7, polyline.getGripPoint(1), 1e-12);
    polyline.ScaleBy(2.0, {1, 2});
    EXPECT_POINT_NEAR(21, 2, polyline.getGripPoint(2), 1e-12);
}

} // namespace
