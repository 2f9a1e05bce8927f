#include "tests/vexdb/entityfixture.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;

/// Displays arcs with `segments` a turn while it lives.
class ArcResolution {
public:
    explicit ArcResolution(std::uint16_t segments) : m_before(_wArcRes) { _wArcRes = segments; }
    ~ArcResolution() { _wArcRes = m_before; }
    ArcResolution(const ArcResolution&) = delete;
    ArcResolution& operator=(const ArcResolution&) = delete;

private:
    std::uint16_t m_before;
};

class ArcTest : public EntityTest {};

TEST_F(ArcTest, FreshOneIsTheWholeUnitCircleByTheDrawingsProperties)
{
    CVexDbArc arc(&drawing);
    EXPECT_EQ(VexDb::kArc, arc.classType());
    EXPECT_EQ(kStatusEntity, arc.status());
    EXPECT_EQ(&arc.geArc(), arc.geCurve());
    EXPECT_EQ(L"0", arc.Layer().str());
    EXPECT_EQ(1.0, arc.Radius());
    EXPECT_TRUE(arc.IsCurveEntity());
    EXPECT_FALSE(arc.IsClosedCurve()); // not even where it is a whole turn
}

TEST_F(ArcTest, ThreePointsRunCounterClockwiseThroughTheSecond)
{
    const CVexDbArc arc({1, 0}, {0, 1}, {-1, 0});
    EXPECT_POINT_NEAR(0, 0, arc.Center(), 1e-12);
    EXPECT_NEAR(0.0, arc.StartAngle(), 1e-12);
    EXPECT_NEAR(kPi, arc.EndAngle(), 1e-12);
    const CVexDbArc back({-1, 0}, {0, 1}, {1, 0});
    EXPECT_POINT_NEAR(1, 0, back.StartPoint(), 1e-12);
}

TEST_F(ArcTest, BulgeOfOneIsTheHalfCircleBelowAChordToTheRight)
{
    const CVexDbArc arc({0, 0}, {2, 0}, 1.0);
    EXPECT_POINT_NEAR(1, 0, arc.Center(), 1e-12);
    EXPECT_NEAR(1.0, arc.Radius(), 1e-12);
    EXPECT_POINT_NEAR(0, 0, arc.StartPoint(), 1e-12);
    EXPECT_POINT_NEAR(2, 0, arc.EndPoint(), 1e-12);
    EXPECT_NEAR(1.0, arc.Bulge(), 1e-12);
}

TEST_F(ArcTest, FromACircleIsItsWholeTurnWithItsProperties)
{
    auto* circle = add(new CVexDbCircle({3, 4}, 5));
    circle->setLayer(CString(L"PipeLine"));
    circle->setColor(2, false);
    circle->SetBoundary(7);
    const CVexDbArc arc(*circle);
    EXPECT_POINT(3, 4, arc.Center());
    EXPECT_EQ(0.0, arc.StartAngle());
    EXPECT_EQ(2.0 * kPi, arc.EndAngle());
    EXPECT_EQ(&drawing, arc.database());
    EXPECT_EQ(L"PipeLine", arc.Layer().str());
    EXPECT_EQ(2, arc.ColorIndex());
    EXPECT_EQ(7, arc.IsBoundary());
    EXPECT_FALSE(arc.IsDbEntity());
    EXPECT_TRUE(arc.objectId() == &arc);
}

struct MiddleRow {
    const char* name;
    double start, end;
    CVexGePoint2d middle;
};

TEST_F(ArcTest, GripsAreCentreStartMiddleOfTheSweepEnd)
{
    const MiddleRow rows[] = {{"quarter", 0.0, kPi / 2.0, {std::sqrt(2.0), std::sqrt(2.0)}},
                              {"through angle zero", 1.5 * kPi, 0.5 * kPi, {2.0, 0.0}},
                              {"from a negative angle", -0.5 * kPi, 0.5 * kPi, {2.0, 0.0}},
                              {"to a negative angle", 0.5 * kPi, -0.5 * kPi, {-2.0, 0.0}}};
    for (const MiddleRow& row : rows) {
        SCOPED_TRACE(row.name);
        CVexDbArc arc({10, 20}, 2.0, row.start, row.end);
        EXPECT_POINT(10, 20, arc.getGripPoint(0));
        EXPECT_POINT_NEAR(10 + 2 * std::cos(row.start), 20 + 2 * std::sin(row.start),
                          arc.getGripPoint(1), 1e-12);
        EXPECT_POINT_NEAR(10 + row.middle.x, 20 + row.middle.y, arc.getGripPoint(2), 1e-12);
        EXPECT_POINT_NEAR(10 + 2 * std::cos(row.end), 20 + 2 * std::sin(row.end),
                          arc.getGripPoint(3), 1e-12);
    }
}

TEST_F(ArcTest, DrawsItsDisplayVertices)
{
    const ArcResolution fourAround(4);
    CVexDbArc arc({0, 0}, 10.0, 0.0, 3.0);
    arc.Draw(&dc);
    EXPECT_EQ("polyline 1000,0 0,1000 -989,141\n", inWords(dc.strokes())); // 0, 90 degrees, the end
    EXPECT_EQ(3U, arc.GrVertexArray().size());
}

TEST_F(ArcTest, DrawsNothingWhenItDoesNotShow)
{
    CVexDbArc arc({0, 0}, 10.0, 0.0, 3.0);
    arc.setInVisable();
    arc.Draw(&dc);
    EXPECT_TRUE(dc.strokes().empty());
    EXPECT_TRUE(arc.GrVertexArray().empty());
}

TEST_F(ArcTest, SmallArcHasFewVerticesAndOneBelowAStepItsEndsAlone)
{
    CVexDbArc degree({0, 0}, 10.0, 0.0, kPi / 180.0);
    degree.Draw(&dc);
    EXPECT_EQ("polyline 1000,0 999,17\n", inWords(dc.strokes()));
    dc.clear();
    CVexDbArc whole({0, 0}, 10.0, 1.0, 1.0 + 1.99 * kPi);
    whole.Draw(&dc);
    EXPECT_EQ(101U, dc.strokes()[0].points.size()); // 100 steps a turn, whatever the radius
}

TEST_F(ArcTest, VerticesOfACopyAreThoseOfTheSourceUntilItIsDrawn)
{
    const ArcResolution fourAround(4);
    CVexDbArc arc({0, 0}, 10.0, 0.0, 3.0);
    arc.Draw(&dc);
    const std::unique_ptr<CVexDbEntity> copied(arc.CopyEntity(false));
    auto& copy = static_cast<CVexDbArc&>(*copied);
    copy.TranslateBy({1.0, 0.0});
    EXPECT_EQ(CPoint(1000, 0), copy.GrVertexArray()[0]);
    copy.Draw(&dc);
    EXPECT_EQ(CPoint(1100, 0), copy.GrVertexArray()[0]);
    EXPECT_EQ(CPoint(1000, 0), arc.GrVertexArray()[0]);
}

TEST_F(ArcTest, OuterRectangleIsTheBoxOfTheDisplayVertices)
{
    const ArcResolution fourAround(4);
    CVexDbArc arc({0, 0}, 10.0, 0.5, 2.5); // vertices at 0.5, 0.5 + pi / 2, 2.5
    const CVexDbRect box = arc.GetOutRect();
    EXPECT_POINT_NEAR(-8.01, 4.79, box.LeftTop(), 1e-12);
    EXPECT_POINT_NEAR(8.77, 8.77, box.RightBottom(), 1e-12); // the arc reaches up to 10
}

TEST_F(ArcTest, ScreenRectangleIsThatOfTheOuterRectangleWithoutKeepingVertices)
{
    CVexDbArc arc({0, 0}, 10.0, 0.0, 3.0);
    arc.setRadius(20.0);
    EXPECT_TRUE(arc.GrVertexArray().empty());
    const CRect held = *arc.GetEntityRect();
    EXPECT_EQ(CRect(-1979, 0, 2000, 2000), held);
    EXPECT_EQ(static_cast<CRect>(arc.GetOutRect()), held);
}

TEST_F(ArcTest, RecordIsRadiusAnglesCentre)
{
    CVexDbArc arc({1.5, 2}, 3.0, -0.25, 7.0);
    Bytes expected = head(arc, VexDb::kArc);
    arc.setDatabase(&drawing);
    expected.u16(0).f64(3.0).f64(-0.25).f64(7.0).point(1.5, 2);
    EXPECT_SAME_BYTES(expected.all(), saved(arc));
}

TEST_F(ArcTest, ReadsItsRecordAndRefreshesTheGrips)
{
    CVexDbArc source({1, 2}, 3.0, 0.5, 1.5);
    source.setDatabase(&drawing);
    CVexDbArc arc(&drawing);
    ASSERT_TRUE(reads(arc, saved(source)));
    EXPECT_TRUE(arc.geArc() == source.geArc());
    EXPECT_POINT_NEAR(1 + 3 * std::cos(1.0), 2 + 3 * std::sin(1.0), arc.getGripPoint(2), 1e-12);
    EXPECT_EQ(*source.GetEntityRect(), *arc.GetEntityRect());
}

TEST_F(ArcTest, RecordThatEndsEarlyIsNotRead)
{
    CVexDbArc arc({1, 2}, 3.0, 0.5, 1.5);
    arc.setDatabase(&drawing);
    const std::vector<std::byte> whole = saved(arc);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        CVexDbArc again(&drawing);
        EXPECT_FALSE(reads(again, {whole.begin(), whole.begin() + static_cast<long>(length)}))
            << length;
    }
}

TEST_F(ArcTest, SettersRefreshGripsAndRectangle)
{
    CVexDbArc arc({0, 0}, 10.0, 0.0, kPi);
    arc.setCenter({5, 5});
    EXPECT_POINT(15, 5, arc.getGripPoint(1));
    arc.setStartAngle(-0.5 * kPi); // kept as the angle without sign
    EXPECT_EQ(1.5 * kPi, arc.StartAngle());
    EXPECT_POINT_NEAR(5, -5, arc.getGripPoint(1), 1e-12);
    arc.setEndAngle(0.0);
    EXPECT_EQ(CRect(500, -500, 1500, 500), *arc.GetEntityRect());
    arc.set({0, 0}, {1, 1}, {2, 0});
    EXPECT_POINT_NEAR(1, 0, arc.getGripPoint(0), 1e-12);
    arc.set({0, 0}, 4.0, -1.0, 1.0); // whole sets keep an angle as it is given
    EXPECT_EQ(-1.0, arc.StartAngle());
    EXPECT_POINT_NEAR(4, 0, arc.getGripPoint(2), 1e-12);
    arc.set({0, 0}, {2, 0}, -1.0);
    EXPECT_POINT_NEAR(1, 1, arc.getGripPoint(2), 1e-12);
}

TEST_F(ArcTest, AssigningTakesGeometryAndProperties)
{
    auto* source = add(new CVexDbArc({1, 2}, 3.0, 0.5, 1.5));
    source->setLayer(CString(L"PipeLine"));
    source->SetBoundary(4);
    CVexDbArc arc(&drawing);
    CVexDbEntity& any = arc;
    any = static_cast<const CVexDbEntity&>(*source);
    EXPECT_TRUE(arc.geArc() == source->geArc());
    EXPECT_EQ(L"PipeLine", arc.Layer().str());
    EXPECT_EQ(4, arc.IsBoundary());
    EXPECT_FALSE(arc.objectId() == source);
}

// An arc and a circle hold the same geometry, but the circle's is whole and must stay so.
TEST_F(ArcTest, AssigningAnotherClassTakesThePropertiesAlone)
{
    CVexDbArc arc({1, 2}, 3.0, 0.5, 1.5);
    arc.setDatabase(&drawing);
    arc.setLayer(CString(L"WeldNum"));
    CVexDbCircle circle(&drawing);
    circle = static_cast<const CVexDbEntity&>(arc);
    EXPECT_EQ(L"WeldNum", circle.Layer().str());
    EXPECT_EQ(1.0, circle.Radius());
    EXPECT_EQ(2.0 * kPi, circle.geCircle().endAng());
}

TEST_F(ArcTest, ShapePropertiesPointAtTheNumbers)
{
    CVexDbArc arc({1.5, 2}, 3.0, 0.5, 1.5);
    const auto rows = arc.getProperty()[VexDb::kArc][L"Shape"];
    EXPECT_EQ("X Center=1.500000\nY Center=2.000000\nRadius=3.000000\nStart Angle=0.500000\n"
              "End Angle=1.500000\n",
              inWords(rows));
    ASSERT_EQ(5U, rows.size());
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(&arc.geArc().center().y), rows[1].data);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(&arc.geArc().radius()), rows[2].data);
    EXPECT_EQ(1.5, *reinterpret_cast<const double*>(rows[4].data));
    EXPECT_EQ(L"Change End Angle", rows[4].change.str());
    EXPECT_EQ(1, rows[3].kind);
}

struct SelectionRow {
    const char* name;
    CVexGePoint2d centre;
    double radius, start, end;
    bool inside, crossing;
};

class ArcSelectionTest : public EntityTest, public testing::WithParamInterface<SelectionRow> {};

TEST_P(ArcSelectionTest, ByRectangle)
{
    const SelectionRow& row = GetParam();
    CVexDbArc arc(row.centre, row.radius, row.start, row.end);
    CVexGePoint2d a(0, 0);
    CVexGePoint2d b(10, 5);
    EXPECT_EQ(row.inside, arc.checkInside(a, b));
    EXPECT_EQ(row.inside, arc.checkInside(b, a));
    EXPECT_EQ(row.crossing, arc.checkInsideOrCross(a, b));
    EXPECT_EQ(row.crossing, arc.checkInsideOrCross(b, a));
}

// The one that bulges out has start, middle and end inside and its top at 5.5; the one through the
// right and left sides has all three outside. A centre inside says nothing.
INSTANTIATE_TEST_SUITE_P(
    , ArcSelectionTest,
    testing::Values(SelectionRow{"Inside", {5, 2.5}, 2.0, 0.0, kPi, true, true},
                    SelectionRow{"BulgesOut", {5, 3}, 2.5, 0.0, 1.5 * kPi, false, true},
                    SelectionRow{"MiddleInside", {5, -8}, 10.0, 0.1, kPi - 0.1, false, true},
                    SelectionRow{"EndInside", {5, -8}, 10.0, -1.0, 1.57, false, true},
                    SelectionRow{"Through", {5, -8}, 10.0, 0.9, 5.0, false, true},
                    SelectionRow{"CentreInside", {5, 2.5}, 20.0, 0.0, 1.0, false, false},
                    SelectionRow{"Around", {5, 2.5}, 20.0, 0.0, 2.0 * kPi, false, false},
                    SelectionRow{"Apart", {50, 50}, 3.0, 0.0, 1.0, false, false}),
    [](const auto& row) { return row.param.name; });

TEST_F(ArcTest, IsOnKnowsTheSweepThroughAngleZero)
{
    const CVexDbArc arc({0, 0}, 5.0, 1.5 * kPi, 0.5 * kPi);
    EXPECT_NE(0, arc.isOn({5, 0}, 1e-6));
    EXPECT_NE(0, arc.isOn({0, -5}, 1e-6));
    EXPECT_EQ(0, arc.isOn({-5, 0}, 1e-6));
    EXPECT_EQ(0, arc.isOn({4, 0}, 1e-6));
}

class ArcIntersectTest : public EntityTest {
protected:
    /// The hits of two entities in words; the count is held against them.
    static std::string hits(const CVexDbEntity& entity, CVexDbEntity& other,
                            CVexDbEntity::Intersect kind = CVexGeEntity2d::kExtendNone)
    {
        int count = 9;
        CVexDbEntity::PointList points(3);
        const bool any = entity.intersectWith(other, count, points, kind, kGeEpsilon);
        EXPECT_EQ(any, count != 0);
        EXPECT_EQ(static_cast<std::size_t>(count), points.size());
        return inWords(points);
    }
};

TEST_F(ArcIntersectTest, LineGivesTheHitWithTheGreaterXFirst)
{
    CVexDbCircle circle({0, 0}, 5);
    CVexDbArc right({0, 0}, 5.0, 1.5 * kPi, 0.5 * kPi);
    CVexDbLine line({-10, 3}, {10, 3});
    CVexDbLine beside({20, 3}, {10, 3});
    EXPECT_EQ("4,3 -4,3", hits(circle, line));
    EXPECT_EQ("4,3", hits(right, line));
    EXPECT_EQ("4,3", hits(line, right));
    EXPECT_EQ("4,3 -4,3", hits(right, line, CVexGeEntity2d::kExtendThis));
    EXPECT_EQ("", hits(right, beside));
    EXPECT_EQ("4,3", hits(right, beside, CVexGeEntity2d::kExtendArg));
}

TEST_F(ArcIntersectTest, CirclesMeetTwiceAndNotWhereTheyTouchOrCoincide)
{
    CVexDbCircle circle({0, 0}, 5);
    CVexDbCircle beside({6, 0}, 5);
    CVexDbCircle touching({10, 0}, 5);
    CVexDbCircle same({0, 0}, 5);
    CVexDbArc upper({6, 0}, 5.0, 0.0, kPi);
    EXPECT_EQ("3,4 3,-4", hits(circle, beside));
    EXPECT_EQ("3,4", hits(circle, upper));
    EXPECT_EQ("3,4", hits(upper, circle));
    EXPECT_EQ("", hits(circle, touching));
    EXPECT_EQ("", hits(circle, same));
}

TEST_F(ArcIntersectTest, ABoxIsMetInItsSidesAndARectangleNotAtAll)
{
    const CVexDbCircle circle({0, 0}, 5);
    CVexDbBox box({0, -3}, 20, 6, 0.0);
    CVexDbRect rect({0, -3}, {20, 3});
    int count = 0;
    CVexDbEntity::PointList points;
    EXPECT_TRUE(circle.intersectWith(box, count, points, CVexGeEntity2d::kExtendNone, 1e-6));
    EXPECT_EQ(2, count);
    EXPECT_FALSE(circle.intersectWith(rect, count, points, CVexGeEntity2d::kExtendNone, 1e-6));
    EXPECT_EQ(0, count);
}

TEST_F(ArcIntersectTest, KernelCurvesAreTakenAsTheyAre)
{
    const CVexDbArc arc({0, 0}, 5.0, 0.0, kPi);
    const CVexGeEllipArc2d ellipse({0, 0}, {1, 0}, {0, 1}, 10, 3);
    int count = 0;
    CVexDbEntity::PointList points;
    EXPECT_TRUE(arc.intersectWith(ellipse, count, points, CVexGeEntity2d::kExtendNone, 1e-6));
    EXPECT_EQ(2, count); // of the four with the whole circle
    CVexGeLine2d line(CVexGePoint2d(0, -10), CVexGePoint2d(0, 10));
    EXPECT_TRUE(arc.intersectWith(line, count, points, CVexGeEntity2d::kExtendNone, 1e-6));
    EXPECT_EQ("0,5", inWords(points));
    CVexDbArc free = arc;
    EXPECT_TRUE(free.IntersectWith(line, 1e-6));
}

struct OffsetRow {
    const char* name;
    CVexGePoint2d side;
    double distance;
    double radius; // 0: refused
};

TEST_F(ArcTest, OffsetIsAFreeArcOnTheSide)
{
    auto* arc = add(new CVexDbArc({1, 2}, 5.0, 0.0, kPi));
    arc->setLayer(CString(L"PipeLine"));
    const OffsetRow rows[] = {{"outwards", {20, 2}, 2.0, 7.0},
                              {"inwards", {1, 3}, 2.0, 3.0},
                              {"onto a point", {1, 9}, 0.0, 7},
                              {"to nothing", {1, 3}, 5.0, 0.0},
                              {"far outwards", {20, 2}, 5, 0}};
    for (const OffsetRow& row : rows) {
        CVexGePoint2d side = row.side;
        CVexDbEntity* result = arc;
        EXPECT_EQ(row.radius != 0.0, arc->getOffset(side, result, row.distance)) << row.name;
        const std::unique_ptr<CVexDbEntity> made(result);
        ASSERT_EQ(row.radius != 0.0, made != nullptr) << row.name;
        if (made != nullptr) {
            EXPECT_EQ(row.radius, static_cast<CVexDbArc&>(*made).Radius()) << row.name;
            EXPECT_EQ(L"PipeLine", made->Layer().str());
            EXPECT_FALSE(made->IsDbEntity());
        }
    }
    EXPECT_EQ(5.0, arc->Radius());
}

TEST_F(ArcTest, TransformsMoveTheGeometryAndTheGettersFollow)
{
    CVexDbArc arc({10, 0}, 5.0, 0.0, 0.5 * kPi);
    arc.RotateBy(0.5 * kPi, {0, 0});
    EXPECT_POINT_NEAR(0, 15, arc.getGripPoint(1), 1e-12);
    arc.Mirror(CVexGeLine2d(CVexGePoint2d(0, 0), CVexGePoint2d(1, 0)));
    EXPECT_POINT_NEAR(0, -10, arc.Center(), 1e-12);
    EXPECT_POINT_NEAR(0, -15, arc.EndPoint(), 1e-9); // still counter-clockwise
    arc.ScaleBy(2.0, {0, 0});
    EXPECT_EQ(10.0, arc.Radius());
    EXPECT_POINT_NEAR(0, -20, arc.getGripPoint(0), 1e-12);
    EXPECT_EQ(static_cast<CRect>(arc.GetOutRect()), *arc.GetEntityRect());
}

TEST_F(ArcTest, HasACentreToSnapTo)
{
    CVexGePoint2d centre;
    EXPECT_TRUE(CVexDbArc({7, 8}, 5.0, 0.0, 1.0).centerPoint(centre));
    EXPECT_POINT(7, 8, centre);
}

TEST_F(ArcTest, SenselessNumbersAreHeldInReach)
{
    const double noNumber = std::numeric_limits<double>::quiet_NaN();
    CVexDbArc wild({1e300, 0}, 1e300, 0.0, 1e300);
    CVexDbArc none({noNumber, noNumber}, noNumber, noNumber, noNumber);
    CVexGePoint2d min, max;
    wild.Draw(&dc);
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
