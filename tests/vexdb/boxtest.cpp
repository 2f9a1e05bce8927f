#include "tests/vexdb/entityfixture.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <numbers>

namespace {

constexpr double kQuarterTurn = std::numbers::pi / 2.0;

class BoxTest : public EntityTest {
protected:
    CVexDbBox box{CVexGePoint2d(1, 2), CVexGeVector2d(4, 3)};
};

TEST_F(BoxTest, DrawsRoundFromTheBase)
{
    box.Draw(&dc);
    EXPECT_EQ("line 100,200 500,200\nline 500,200 500,500\n"
              "line 500,500 100,500\nline 100,500 100,200\n",
              inWords(dc.strokes()));
}

TEST_F(BoxTest, GripsAreCornersAndMiddlesInTurn)
{
    CVexDbEntity::PointList* grips = nullptr;
    ASSERT_TRUE(box.getGripPointVec(grips));
    EXPECT_EQ("1,2 3,2 5,2 5,3.5 5,5 3,5 1,5 1,3.5", inWords(*grips));
    EXPECT_EQ(CRect(100, 200, 500, 500), *box.GetEntityRect());
}

TEST_F(BoxTest, IsAClosedCurveOfItsKind)
{
    EXPECT_EQ(VexDb::kBox, box.classType());
    EXPECT_TRUE(box.IsCurveEntity());
    EXPECT_TRUE(box.IsClosedCurve());
    EXPECT_EQ(14.0, box.length());
}

TEST_F(BoxTest, OuterRectangleOfATurnedBoxIsExact)
{
    CVexDbBox turned({0, 0}, {4, 2}, kQuarterTurn);
    const CVexDbRect outer = turned.GetOutRect();
    EXPECT_POINT_NEAR(-2, 0, outer.LeftTop(), 1e-12);
    EXPECT_POINT_NEAR(0, 4, outer.RightBottom(), 1e-12);
}

TEST_F(BoxTest, RecordIsTheGeometrysFourFields)
{
    CVexDbBox turned({1, 2}, {4, 3}, 0.5);
    Bytes expected = head(turned, VexDb::kBox);
    expected.u16(0).point(1, 2).f64(4).f64(3).f64(0.5);
    EXPECT_SAME_BYTES(expected.all(), saved(turned));
}

TEST_F(BoxTest, ReadsWithItsDiagonalUpright)
{
    CVexDbBox again(&drawing);
    Bytes file = head(again, VexDb::kBox);
    file.u16(0).point(1, 2).f64(4).f64(3).f64(kQuarterTurn);
    ASSERT_TRUE(reads(again, file.all()));
    CVexGePoint2d diagonal;
    again.GetDiagonPoint(diagonal);
    EXPECT_POINT(5, 5, diagonal); // the file keeps no diagonal, and none is turned on reading
    EXPECT_EQ(kQuarterTurn, again.Rotation());
    EXPECT_POINT(5, 5, again.getGripPoint(4));
}

TEST_F(BoxTest, SettersRefreshGripsAndRectangle)
{
    box.SetBasePoint({0, 0});
    EXPECT_POINT(4, 3, box.getGripPoint(4));
    box.SetWidth(6);
    EXPECT_EQ(CRect(0, 0, 600, 300), *box.GetEntityRect());
    box.SetHeight(5);
    EXPECT_POINT(6, 5, box.getGripPoint(4));
    box.SetRotation(kQuarterTurn);
    EXPECT_POINT_NEAR(-5, 6, box.getGripPoint(4), 1e-12);
    EXPECT_EQ(6.0, box.Width());
    EXPECT_EQ(5.0, box.Height());
}

TEST_F(BoxTest, SetsByVectorAndByNumbers)
{
    box.Set({0, 0}, {3, 4});
    EXPECT_EQ(5.0, box.Diagonal());
    box.Set({1, 1}, 2, 7, 0.0);
    EXPECT_POINT(3, 8, box.getGripPoint(4));
    box.SetDiagonalPoint({4, 5});
    EXPECT_EQ(3.0, box.Width());
    EXPECT_EQ(4.0, box.Height());
    EXPECT_POINT(1, 1, box.BasePoint());
}

TEST_F(BoxTest, DiagonalPointOfATurnedBoxIsTheOneBeforeTheTurn)
{
    // A reader expects the corner at the point. The point gives the size, and that is turned.
    box.SetRotation(kQuarterTurn);
    box.SetBasePoint({0, 0});
    box.SetDiagonalPoint({4, 3});
    EXPECT_EQ(4.0, box.Width());
    EXPECT_EQ(3.0, box.Height());
    EXPECT_POINT_NEAR(-3, 4, box.getGripPoint(4), 1e-12);
    EXPECT_EQ(kQuarterTurn, box.Rotation());
}

TEST_F(BoxTest, SetByNumbersLeavesTheDiagonalUpright)
{
    box.Set({0, 0}, 4, 3, kQuarterTurn); // as the geometry does, unlike the form with a vector
    EXPECT_POINT(4, 3, box.getGripPoint(4));
    box.Set({0, 0}, {4, 3}, kQuarterTurn);
    EXPECT_POINT_NEAR(-3, 4, box.getGripPoint(4), 1e-12);
}

TEST_F(BoxTest, ShapePropertiesPointAtTheNumbers)
{
    const auto rows = box.getProperty()[VexDb::kBox][L"Shape"];
    EXPECT_EQ("X Base=1.000000\nY Base=2.000000\nWidth=4.000000\nHeight=3.000000\n"
              "Rotation=0.000000\n",
              inWords(rows));
    ASSERT_EQ(5u, rows.size());
    EXPECT_EQ(4.0, *reinterpret_cast<const double*>(rows[2].data));
    box.SetWidth(9);
    EXPECT_EQ(9.0, *reinterpret_cast<const double*>(rows[2].data));
}

TEST_F(BoxTest, SelectionAsksTheCornersAlone)
{
    CVexGePoint2d a(0, 0);
    CVexGePoint2d whole(10, 10);
    CVexGePoint2d part(3, 3);
    EXPECT_TRUE(box.checkInside(a, whole));
    EXPECT_FALSE(box.checkInside(a, part));
    EXPECT_TRUE(box.checkInsideOrCross(a, part));
    CVexGePoint2d between(2, 0);
    CVexGePoint2d band(3, 10); // crosses two sides and holds no corner
    EXPECT_FALSE(box.checkInsideOrCross(between, band));
}

TEST_F(BoxTest, MeetsLinesInItsSides)
{
    CVexDbLine line({0, 3}, {10, 3});
    int count = 0;
    CVexDbEntity::PointList points;
    EXPECT_TRUE(box.intersectWith(line, count, points, CVexGeEntity2d::kExtendNone, 1e-6));
    ASSERT_EQ(2, count);
    EXPECT_EQ(2u, points.size());
    CVexDbBox apart({50, 50}, {1, 1});
    EXPECT_FALSE(box.intersectWith(apart, count, points, CVexGeEntity2d::kExtendNone, 1e-6));
    EXPECT_TRUE(points.empty());
}

TEST_F(BoxTest, LendsItsClosedOutline)
{
    CVexGePolyline2d outline;
    box.GetPolyline(outline);
    EXPECT_TRUE(outline.isClosed());
    EXPECT_EQ("1,2 5,2 5,5 1,5", inWords(outline.vertices()));
}

TEST_F(BoxTest, OffsetIsAFreeBoxOnTheSide)
{
    CVexGePoint2d outside(3, -5);
    CVexDbEntity* result = nullptr;
    ASSERT_TRUE(box.getOffset(outside, result, 1.0));
    const std::unique_ptr<CVexDbBox> offset(static_cast<CVexDbBox*>(result));
    EXPECT_NEAR(6.0, offset->Width(), 1e-9);
    EXPECT_NEAR(5.0, offset->Height(), 1e-9);
    EXPECT_FALSE(offset->IsDbEntity());
    EXPECT_EQ(4.0, box.Width());
}

TEST_F(BoxTest, OffsetWithoutRoomIsABoxAtTheSamePlace)
{
    // The geometry accepts it all the same: whoever offsets a box compares its corners.
    CVexGePoint2d middle(3, 3.5);
    CVexDbEntity* result = nullptr;
    ASSERT_TRUE(box.getOffset(middle, result, 100.0));
    const std::unique_ptr<CVexDbBox> offset(static_cast<CVexDbBox*>(result));
    EXPECT_POINT(1, 2, offset->BasePoint());
    EXPECT_EQ(CRect(100, 200, 500, 500), *offset->GetEntityRect());
}

TEST_F(BoxTest, CopyAndAssignmentTakeTheGeometry)
{
    const std::unique_ptr<CVexDbEntity> copy(box.CopyEntity(false));
    EXPECT_EQ(4.0, static_cast<CVexDbBox&>(*copy).Width());
    CVexDbBox other(&drawing);
    static_cast<CVexDbEntity&>(other) = box;
    EXPECT_POINT(5, 5, other.getGripPoint(4));
    EXPECT_EQ(&other.geRect(), other.geCurve());
}

} // namespace
