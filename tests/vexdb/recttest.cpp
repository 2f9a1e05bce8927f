#include "tests/vexdb/entityfixture.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <numbers>

namespace {

class RectTest : public EntityTest {
protected:
    CVexDbRect rect{CVexGePoint2d(1, 2), CVexGePoint2d(5, 8)};
};

TEST_F(RectTest, KeepsTwoPointsUnsorted)
{
    const CVexDbRect swapped({5, 8}, {1, 2});
    EXPECT_POINT(5, 8, swapped.LeftTop());
    EXPECT_POINT(1, 2, swapped.RightBottom());
    EXPECT_POINT(5, 2, swapped.LeftBottom());
    EXPECT_POINT(1, 8, swapped.RightTop());
    EXPECT_EQ(4.0, swapped.Width());
    EXPECT_EQ(6.0, swapped.Height());
}

TEST_F(RectTest, DrawsHollowWithItsPen)
{
    const CBrush* before = dc.GetCurrentBrush();
    rect.Draw(&dc);
    EXPECT_EQ("rectangle 100,200 500,800\n", inWords(dc.strokes()));
    EXPECT_EQ(BS_HOLLOW, dc.strokes()[0].brushStyle);
    EXPECT_EQ(before, dc.GetCurrentBrush());
}

TEST_F(RectTest, GripsAreCentreMiddlesCorners)
{
    CVexDbEntity::PointList* grips = nullptr;
    ASSERT_TRUE(rect.getGripPointVec(grips));
    EXPECT_EQ("3,5 3,8 5,5 3,2 1,5 1,8 5,8 5,2 1,2", inWords(*grips));
    rect.setGripPoints();
    EXPECT_EQ(CRect(100, 200, 500, 800), *rect.GetEntityRect());
}

TEST_F(RectTest, SettersRefreshTheGrips)
{
    rect.setLeftTop({0, 0});
    EXPECT_POINT(2.5, 4, rect.getGripPoint(0));
    rect.setRightBottom({2, 2});
    EXPECT_POINT(1, 1, rect.getGripPoint(0));
    EXPECT_EQ(CRect(0, 0, 200, 200), *rect.GetEntityRect());
}

TEST_F(RectTest, DeviceRectangleIsTruncated)
{
    const CVexDbRect odd({-1.239, 0.999}, {2.001, 3});
    EXPECT_EQ(CRect(-123, 99, 200, 300), CRect(odd));
    EXPECT_EQ(CRect(-123, 99, 200, 300), odd.GetDevRect());
}

TEST_F(RectTest, EmptyOnlyWhenBothSidesVanishExactly)
{
    EXPECT_TRUE(CVexDbRect(&drawing).isRectEmpty());
    EXPECT_TRUE(CVexDbRect({3, 3}, {3, 3}).isRectEmpty());
    EXPECT_FALSE(CVexDbRect({3, 3}, {3, 4}).isRectEmpty());
    EXPECT_FALSE(CVexDbRect({3, 3}, {3, 3.0000000001}).isRectEmpty());
}

TEST_F(RectTest, HoldsPointsAsItsPolygonDoes)
{
    EXPECT_TRUE(rect.isPtInRect({3, 3}));
    EXPECT_FALSE(rect.isPtInRect({3, 9}));
    EXPECT_FALSE(rect.isPtInRect({3, 2})); // the side of the smaller y is outside
    EXPECT_TRUE(rect.isPtInRect({3, 8}));
}

TEST_F(RectTest, RecordIsTopBottomLeftRight)
{
    Bytes expected = head(rect, VexDb::kRectangle);
    expected.u16(0).f64(2).f64(8).f64(1).f64(5);
    EXPECT_SAME_BYTES(expected.all(), saved(rect));
    CVexDbRect again(&drawing);
    ASSERT_TRUE(reads(again, expected.all()));
    EXPECT_POINT(1, 2, again.LeftTop());
    EXPECT_POINT(3, 5, again.getGripPoint(0));
}

TEST_F(RectTest, RotationMovesTheCentreAndTiltsNothing)
{
    for (const double angle : {0.3, std::numbers::pi / 2.0, 2.0, -7.0}) {
        CVexDbRect turned(rect);
        static_cast<CVexDbEntity&>(turned).RotateBy(angle, {3, 5}); // about its own centre
        EXPECT_POINT_NEAR(1, 2, turned.LeftTop(), 1e-12);
        EXPECT_POINT_NEAR(5, 8, turned.RightBottom(), 1e-12);
    }
    static_cast<CVexDbEntity&>(rect).RotateBy(std::numbers::pi / 2.0, {0, 0});
    EXPECT_POINT_NEAR(-7, 0, rect.LeftTop(), 1e-12); // the centre (3, 5) came to (-5, 3)
    EXPECT_POINT_NEAR(-3, 6, rect.RightBottom(), 1e-12);
}

TEST_F(RectTest, MirrorMaySwapLeftAndRight)
{
    static_cast<CVexDbEntity&>(rect).Mirror(CVexGeLine2d({0, 0}, CVexGePoint2d(0, 1)));
    EXPECT_POINT_NEAR(-1, 2, rect.LeftTop(), 1e-12);
    EXPECT_POINT_NEAR(-5, 8, rect.RightBottom(), 1e-12);
    EXPECT_POINT_NEAR(-3, 5, rect.getGripPoint(0), 1e-12); // stale grips are made anew
}

TEST_F(RectTest, ScalesAndMovesByItsCornersAndRefusesMatrices)
{
    CVexDbEntity& entity = rect;
    entity.ScaleBy(2.0, {1, 2});
    EXPECT_POINT(9, 14, rect.RightBottom());
    entity.ScaleBy(0.5, 1.0, {1, 2});
    EXPECT_POINT(5, 14, rect.RightBottom());
    entity.TranslateBy({1, 1});
    EXPECT_POINT(2, 3, rect.LeftTop());
    entity.TransformBy(CVexGeMatrix2d::translation({100, 100}));
    EXPECT_POINT(2, 3, rect.LeftTop());
}

TEST_F(RectTest, IsOnItsSides)
{
    EXPECT_EQ(1, rect.isOn({3, 8}, 1e-6));
    EXPECT_EQ(1, rect.isOn({1, 5}, 1e-6));
    EXPECT_EQ(0, rect.isOn({3, 5}, 1e-6));
}

TEST_F(RectTest, SelectionAsksTheCornersAlone)
{
    CVexGePoint2d a(0, 0);
    CVexGePoint2d whole(10, 10);
    CVexGePoint2d part(3, 3);
    EXPECT_TRUE(rect.checkInside(a, whole));
    EXPECT_FALSE(rect.checkInside(a, part));
    EXPECT_TRUE(rect.checkInsideOrCross(a, part));
    CVexGePoint2d between(2, 0);
    CVexGePoint2d band(3, 10); // crosses two sides and holds no corner
    EXPECT_FALSE(rect.checkInsideOrCross(between, band));
}

TEST_F(RectTest, MeetsLinesAndNoBox)
{
    CVexDbLine line({0, 3}, {10, 3});
    CVexDbBox box({0, 3}, {10, 1});
    int count = 0;
    CVexDbEntity::PointList points;
    EXPECT_TRUE(rect.intersectWith(line, count, points, CVexGeEntity2d::kExtendNone, 1e-6));
    EXPECT_EQ(2, count);
    // A box is the one curve that a rectangle does not see, although a line sees it.
    EXPECT_FALSE(rect.intersectWith(box, count, points, CVexGeEntity2d::kExtendNone, 1e-6));
}

TEST_F(RectTest, ShapePropertiesInTheirOrder)
{
    const auto rows = rect.getProperty()[VexDb::kRectangle][L"Shape"];
    EXPECT_EQ("Top=2.000000\nBottom=8.000000\nLeft=1.000000\nRight=5.000000\n", inWords(rows));
    ASSERT_EQ(4u, rows.size());
    EXPECT_EQ(8.0, *reinterpret_cast<const double*>(rows[1].data));
}

TEST_F(RectTest, GivesItsOutlineClosedAndWithoutWidths)
{
    CVexGePolyline2d outline;
    rect.getPolyline(outline);
    double start = 0.0;
    double end = 0.0;
    EXPECT_EQ("1,2 5,2 5,8 1,8", inWords(outline.vertices()));
    EXPECT_TRUE(outline.isClosed());
    ASSERT_TRUE(outline.getWidthsAt(2, start, end));
    EXPECT_EQ(-1.0, start);
    EXPECT_EQ(-1.0, end);
    const CVexDbRect bounds = outline.getOutRect();
    EXPECT_POINT(1, 2, bounds.LeftTop());
}

TEST_F(RectTest, AsAValueItTakesFieldsAndKeepsIdentity)
{
    CVexDbRect value(&drawing);
    const std::uint64_t number = value.getCreatedTime();
    value = rect.GetOutRect();
    EXPECT_POINT(5, 8, value.RightBottom());
    EXPECT_EQ(number, value.getCreatedTime());
    EXPECT_EQ(CRect(100, 200, 500, 800), *value.GetEntityRect());
}

TEST_F(RectTest, BaseEntityHasEmptyExtents)
{
    EXPECT_TRUE(boundsOf({}).isRectEmpty());
    EXPECT_TRUE(rect.CVexDbEntity::GetOutRect().isRectEmpty());
}

} // namespace
