#include "tests/vexdb/entityfixture.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"

#include <limits>
#include <numbers>

namespace {

class CircleTest : public EntityTest {};

TEST_F(CircleTest, FreshOneIsTheUnitCircleAndClosed)
{
    CVexDbCircle circle(&drawing);
    EXPECT_EQ(VexDb::kCircle, circle.classType());
    EXPECT_EQ(kStatusEntity, circle.status());
    EXPECT_EQ(&circle.geCircle(), circle.geCurve());
    EXPECT_EQ(1.0, circle.Radius());
    EXPECT_TRUE(circle.IsCurveEntity());
    EXPECT_TRUE(circle.IsClosedCurve());
}

TEST_F(CircleTest, FromCentreAndRadiusRunsFromAngleZeroOneTurn)
{
    const CVexDbCircle circle({3, 4}, 5);
    EXPECT_POINT(3, 4, circle.Center());
    EXPECT_POINT(8, 4, circle.StartPoint());
    EXPECT_EQ(0.0, circle.geCircle().startAng());
    EXPECT_EQ(2.0 * std::numbers::pi, circle.geCircle().endAng());
}

TEST_F(CircleTest, GripsAreCentreRightTopLeftBottom)
{
    CVexDbCircle circle({3, 4}, 5);
    CVexDbEntity::PointList* grips = nullptr;
    ASSERT_TRUE(circle.getGripPointVec(grips));
    EXPECT_EQ("3,4 8,4 3,9 -2,4 3,-1", inWords(*grips));
    circle.setCenter({0, 0});
    EXPECT_POINT(5, 0, circle.getGripPoint(1));
    circle.setRadius(2.5);
    EXPECT_POINT(0, -2.5, circle.getGripPoint(4));
    EXPECT_EQ(CRect(-250, -250, 250, 250), *circle.GetEntityRect());
}

TEST_F(CircleTest, DrawsTheOutlineWithThePenAlone)
{
    const CBrush brush(RGB(255, 0, 0));
    dc.SelectObject(&brush);
    CVexDbCircle circle({3, 4}, 5);
    circle.Draw(&dc);
    EXPECT_EQ("ellipse -200,-100 800,900\n", inWords(dc.strokes()));
    EXPECT_EQ(BS_HOLLOW, dc.strokes()[0].brushStyle);
    EXPECT_EQ(&brush, dc.GetCurrentBrush());
}

// The pen goes to the start point first. Cut to integers apart, centre and radius may begin one
// logical unit off it, and then that unit is stroked.
TEST_F(CircleTest, StrokesFromTheStartPointToWhereTheOutlineBegins)
{
    CVexDbCircle circle({0.006, 0.0}, 1.006); // starts at 101.2, begins at 0 + 100
    circle.Draw(&dc);
    EXPECT_EQ("line 101,0 100,0\nellipse -100,-100 100,100\n", inWords(dc.strokes()));
}

TEST_F(CircleTest, DrawsNothingWhenItDoesNotShow)
{
    CVexDbCircle circle({3, 4}, 5);
    layer(L"0").setIsOff(true);
    circle.Draw(&dc);
    EXPECT_TRUE(dc.strokes().empty());
}

TEST_F(CircleTest, OuterRectangleIsExact)
{
    CVexDbCircle circle({3, 4}, 5);
    EXPECT_POINT(-2, -1, circle.GetOutRect().LeftTop());
    EXPECT_POINT(8, 9, circle.GetOutRect().RightBottom());
    CVexGePoint2d min, max;
    ASSERT_TRUE(circle.trueExtents(min, max));
    EXPECT_POINT(-2, -1, min);
    EXPECT_POINT(8, 9, max);
}

TEST_F(CircleTest, RecordIsThatOfAWholeArc)
{
    CVexDbCircle circle({1.5, 2}, 3.0);
    Bytes expected = head(circle, VexDb::kCircle);
    circle.setDatabase(&drawing);
    expected.u16(0).f64(3.0).f64(0.0).f64(2.0 * std::numbers::pi).point(1.5, 2);
    EXPECT_SAME_BYTES(expected.all(), saved(circle));
}

TEST_F(CircleTest, ReadsItsRecordAndRefreshesTheGrips)
{
    CVexDbCircle source({1, 2}, 3.0);
    source.setDatabase(&drawing);
    const std::vector<std::byte> whole = saved(source);
    CVexDbCircle circle(&drawing);
    ASSERT_TRUE(reads(circle, whole));
    EXPECT_TRUE(circle.geCircle() == source.geCircle());
    EXPECT_POINT(4, 2, circle.getGripPoint(1));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_FALSE(reads(circle, {whole.begin(), whole.begin() + static_cast<long>(length)}));
    }
}

TEST_F(CircleTest, ShapePropertiesPointAtTheNumbers)
{
    CVexDbCircle circle({1.5, 2}, 3.0);
    const auto rows = circle.getProperty()[VexDb::kCircle][L"Shape"];
    EXPECT_EQ("X Center=1.500000\nY Center=2.000000\nRadius=3.000000\n", inWords(rows));
    ASSERT_EQ(3U, rows.size());
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(&circle.geCircle().radius()), rows[2].data);
    EXPECT_EQ(L"Change Radius", rows[2].change.str());
    EXPECT_EQ(1, rows[2].kind);
}

struct SelectionRow {
    const char* name;
    CVexGePoint2d centre;
    double radius;
    bool inside, crossing;
};

class CircleSelectionTest : public EntityTest, public testing::WithParamInterface<SelectionRow> {};

TEST_P(CircleSelectionTest, ByRectangle)
{
    CVexDbCircle circle(GetParam().centre, GetParam().radius);
    CVexGePoint2d a(0, 0);
    CVexGePoint2d b(10, 5);
    EXPECT_EQ(GetParam().inside, circle.checkInside(a, b));
    EXPECT_EQ(GetParam().inside, circle.checkInside(b, a));
    EXPECT_EQ(GetParam().crossing, circle.checkInsideOrCross(a, b));
    EXPECT_EQ(GetParam().crossing, circle.checkInsideOrCross(b, a));
}

INSTANTIATE_TEST_SUITE_P(, CircleSelectionTest,
                         testing::Values(SelectionRow{"Inside", {5, 2.5}, 2.0, true, true},
                                         SelectionRow{"TopOutside", {5, 2.5}, 3.0, false, true},
                                         SelectionRow{"OverTheCorner", {-1, -1}, 2.0, false, true},
                                         SelectionRow{
                                             "AroundTheRectangle", {5, 2.5}, 50.0, false, false},
                                         SelectionRow{"Apart", {50, 50}, 3.0, false, false}),
                         [](const auto& row) { return row.param.name; });

TEST_F(CircleTest, OffsetIsAFreeCircleOrNone)
{
    auto* circle = add(new CVexDbCircle({0, 0}, 5));
    CVexGePoint2d outside(10, 0);
    CVexGePoint2d inside(1, 0);
    CVexDbEntity* result = nullptr;
    ASSERT_TRUE(circle->getOffset(outside, result, 2.0));
    const std::unique_ptr<CVexDbEntity> larger(result);
    EXPECT_EQ(7.0, static_cast<CVexDbCircle&>(*larger).Radius());
    EXPECT_EQ(CRect(-700, -700, 700, 700), *larger->GetEntityRect());
    EXPECT_FALSE(circle->getOffset(inside, result, 5.0));
    EXPECT_EQ(nullptr, result);
}

TEST_F(CircleTest, HasNoExtend)
{
    CVexDbCircle circle({0, 0}, 5);
    CVexDbLine line({-10, 0}, {10, 0});
    std::vector<CVexDbEntity*> boundaries{&line};
    CVexGePoint2d pick(5, 0);
    EXPECT_FALSE(circle.Extend(pick, boundaries, 1e-6));
}

TEST_F(CircleTest, TurnedAndMirroredItStaysWhole)
{
    CVexDbCircle circle({10, 0}, 5);
    circle.RotateBy(1.0, {10, 0});
    circle.Mirror(CVexGeLine2d(CVexGePoint2d(0, 0), CVexGePoint2d(0, 1)));
    EXPECT_POINT_NEAR(-10, 0, circle.Center(), 1e-12);
    EXPECT_EQ(0.0, circle.geCircle().startAng());
    EXPECT_EQ(2.0 * std::numbers::pi, circle.geCircle().endAng());
}

TEST_F(CircleTest, CopyIsAThingOfItsOwn)
{
    auto* circle = add(new CVexDbCircle({3, 4}, 5));
    const std::unique_ptr<CVexDbEntity> copied(circle->CopyEntity(false));
    auto& copy = static_cast<CVexDbCircle&>(*copied);
    EXPECT_EQ(&copy.geCircle(), copy.geCurve());
    EXPECT_FALSE(copy.IsDbEntity());
    copy.setRadius(1);
    EXPECT_EQ(5.0, circle->Radius());
    CVexGePoint2d centre;
    EXPECT_TRUE(copy.centerPoint(centre));
    EXPECT_POINT(3, 4, centre);
}

TEST_F(CircleTest, SenselessNumbersAreHeldInReach)
{
    const double noNumber = std::numeric_limits<double>::quiet_NaN();
    CVexDbCircle huge({1e300, -1e300}, 1e300);
    CVexDbCircle none({noNumber, 1}, noNumber);
    CVexGePoint2d min, max;
    huge.Draw(&dc);
    none.Draw(&dc);
    EXPECT_FALSE(none.trueExtents(min, max));
    for (const VexStroke& stroke : dc.strokes()) {
        for (const CPoint& point : stroke.points) {
            EXPECT_LE(std::abs(point.x), 1000000000);
            EXPECT_LE(std::abs(point.y), 1000000000);
        }
    }
}

} // namespace
