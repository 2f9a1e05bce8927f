#include "tests/vexdb/entityfixture.h"
#include "tests/view/viewfixture.h"
#include "vexdb/dbobject/dbentity/vexdbpoint.h"

namespace {

struct ShapeRow {
    int shape;
    bool fill;
    const char* strokes;
};

class PointShapeTest : public EntityTest, public testing::WithParamInterface<ShapeRow> {};

// At (10, 20) with a half size of 1.01: the box is 899..1101 by 1899..2101, 202 wide.
TEST_P(PointShapeTest, IsDrawn)
{
    CVexDbPoint point(CVexGePoint2d(10, 20));
    point.SetSize(1.01);
    point.SetPdMode(GetParam().shape);
    point.SetFillMode(GetParam().fill);
    drawing.settings().m_nPointStyle = 0;
    const CBrush* before = dc.GetCurrentBrush();
    point.Draw(&dc);
    EXPECT_EQ(GetParam().strokes, inWords(dc.strokes()));
    EXPECT_EQ(before, dc.GetCurrentBrush());
    for (const VexStroke& stroke : dc.strokes()) {
        EXPECT_EQ(GetParam().fill ? BS_SOLID : BS_HOLLOW, stroke.brushStyle);
    }
}

#define CIRCLE "ellipse 899,1899 1101,2101\n"
#define SQUARE "rectangle 899,1899 1101,2101\n"
#define DIAMOND "polygon 1000,1899 1101,2000 1000,2101 899,2000\n"
#define PLUS "line 899,2000 1101,2000\nline 1000,1899 1000,2101\n"
#define CROSS "line 899,1899 1101,2101\nline 1101,1899 899,2101\n"
INSTANTIATE_TEST_SUITE_P(
    , PointShapeTest,
    testing::Values(ShapeRow{0, false, "pixel 1000,2000\n"}, ShapeRow{1, false, CIRCLE},
                    ShapeRow{2, false, PLUS}, ShapeRow{3, false, CROSS},
                    ShapeRow{4, false, "polygon 1000,1899 899,2101 1101,2101\n"},
                    ShapeRow{5, false, SQUARE}, ShapeRow{6, false, DIAMOND},
                    ShapeRow{7, false, "polygon 1101,1899 899,1899 1000,2101\n"},
                    ShapeRow{8, false, CIRCLE "ellipse 950,1950 1050,2050\n"},
                    ShapeRow{9, false, PLUS CROSS}, ShapeRow{10, false, CIRCLE PLUS},
                    ShapeRow{11, false, CIRCLE CROSS}, ShapeRow{12, false, SQUARE PLUS},
                    ShapeRow{13, false, SQUARE CROSS}, ShapeRow{14, false, DIAMOND CROSS},
                    ShapeRow{8, true, CIRCLE}, ShapeRow{9, true, PLUS CROSS},
                    ShapeRow{10, true, CIRCLE}, ShapeRow{11, true, CIRCLE},
                    ShapeRow{12, true, SQUARE}, ShapeRow{13, true, SQUARE},
                    ShapeRow{14, true, DIAMOND}, ShapeRow{-1, false, ""}),
    [](const auto& row) {
        std::ostringstream name;
        name << (row.param.fill ? "Filled" : "Hollow") << (row.param.shape + 1);
        return name.str();
    });

class PointTest : public EntityTest {
protected:
    CVexDbPoint point{CVexGePoint2d(10, 20)};
};

TEST_F(PointTest, FillTakesTheColorRecordsValueAndThePixelThePens)
{
    point.SetFillMode(true);
    point.SetSize(1);
    point.SetPdMode(5);
    point.Draw(&dc); // by layer: white as the record has it, while the pen contrasts
    point.SetPdMode(0);
    drawing.settings().m_nPointStyle = 0;
    point.Draw(&dc);
    ASSERT_EQ(2u, dc.strokes().size());
    EXPECT_EQ(0xffffffu, dc.strokes()[0].brushColor);
    EXPECT_EQ(0x000000u, dc.strokes()[0].color);
    EXPECT_EQ(0x000000u, dc.strokes()[1].color);
}

TEST_F(PointTest, ShapeZeroFollowsTheDrawing)
{
    point.SetSize(1);
    drawing.settings().m_nPointStyle = 5;
    point.Draw(&dc);
    drawing.settings().m_nPointStyle = 15;
    point.Draw(&dc); // no such shape
    EXPECT_EQ("rectangle 900,1900 1100,2100\n", inWords(dc.strokes()));
}

TEST_F(PointTest, ShapesAboveFourteenAreStoredAsZeroAndNegativeOnesAsTheyAre)
{
    point.SetPdMode(15);
    EXPECT_EQ(0, point.PdMode());
    point.SetPdMode(14);
    EXPECT_EQ(14, point.PdMode());
    point.SetPdMode(-1);
    EXPECT_EQ(-1, point.PdMode());
}

TEST_F(PointTest, RecordIsSizeFillFlagPosition)
{
    const std::uint8_t flag = 7;
    point.SetSize(2.5);
    point.SetFillMode(true);
    EXPECT_EQ(0, point.SetFlag(flag));
    EXPECT_EQ(7, point.SetFlag(flag));
    Bytes expected = head(point, VexDb::kPoint);
    expected.u16(0).f64(2.5).u8(1).u8(7).point(10, 20);
    EXPECT_SAME_BYTES(expected.all(), saved(point));
}

TEST_F(PointTest, ReadingDiscardsTheShape)
{
    point.SetPdMode(5);
    const std::vector<std::byte> file = saved(point);
    CVexDbPoint again(&drawing);
    again.SetPdMode(9);
    ASSERT_TRUE(reads(again, file));
    EXPECT_EQ(0, again.PdMode()); // files do not keep it, so that the drawing's shape applies
    EXPECT_POINT(10, 20, again.Position());
    EXPECT_POINT(10, 20, again.getGripPoint(0));
}

TEST_F(PointTest, ExtentsCollapseOnThePosition)
{
    point.SetSize(5);
    EXPECT_TRUE(point.GetOutRect().isRectEmpty());
    EXPECT_EQ(CRect(1000, 2000, 1000, 2000), *point.GetEntityRect());
    point.Set(1, 2);
    EXPECT_EQ(CRect(100, 200, 100, 200), *point.GetEntityRect());
    point.SetPosition({3, 4});
    EXPECT_POINT(3, 4, point.getGripPoint(0));
}

TEST_F(PointTest, SelectsByPositionAndIntersectsNothing)
{
    CVexGePoint2d a(0, 0);
    CVexGePoint2d b(30, 30);
    CVexGePoint2d c(5, 5);
    EXPECT_TRUE(point.checkInside(a, b) && point.checkInsideOrCross(a, b));
    EXPECT_FALSE(point.checkInside(a, c) || point.checkInsideOrCross(a, c));
    EXPECT_NE(0, point.isOn({10, 21}, 1.0)); // a point at the tolerance itself is on it
    EXPECT_EQ(0, point.isOn({10, 21.5}, 1.0));
    CVexDbLine through({0, 20}, {20, 20});
    int count = 0;
    CVexDbEntity::PointList points;
    EXPECT_FALSE(point.intersectWith(through, count, points, CVexGeEntity2d::kExtendNone, 1.0));
}

TEST_F(PointTest, HasNoShapeProperties)
{
    const auto groups = point.getProperty()[VexDb::kPoint];
    EXPECT_EQ(1u, groups.size());
    EXPECT_EQ(1u, groups.count(L"General"));
}

TEST_F(PointTest, CopyKeepsShapeAndAssignmentTakesAll)
{
    point.SetPdMode(6);
    point.SetSize(3);
    const std::unique_ptr<CVexDbEntity> copy(point.CopyEntity(false));
    EXPECT_EQ(6, static_cast<CVexDbPoint&>(*copy).PdMode());
    CVexDbPoint other(&drawing);
    static_cast<CVexDbEntity&>(other) = point;
    EXPECT_EQ(3.0, other.Size());
    EXPECT_POINT(10, 20, other.getGripPoint(0));
}

// A window of 420 by 297 pixels on 420 by 297 drawing units: 100 logical units a pixel.
class PointSizeTest : public ViewTest {};

TEST_F(PointSizeTest, ZeroAndLessFollowTheDrawingAndItsViewAndAPositiveSizeIgnoresThem)
{
    show();
    CVexDbPoint point(database.get());
    point.SetPosition({10, 20});
    settings().m_nPointStyle = 5;
    settings().m_nPointSize = 3; // pixels, so 300 logical units each way
    CVexRecordingDC plain;
    point.Draw(&plain);
    point.SetSize(-2);
    point.Draw(&plain);
    point.SetSize(1);
    point.Draw(&plain);
    EXPECT_EQ("rectangle 700,1700 1300,2300\nrectangle 700,1700 1300,2300\n"
              "rectangle 900,1900 1100,2100\n",
              inWords(plain.strokes()));
}

} // namespace
