#include "tests/file/golden.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"

namespace {

class GoldenTest : public FileTest {
protected:
    CVexDbDatabase drawing{false};
};

TEST_F(GoldenTest, FreshDrawingIsWrittenByteForByte)
{
    ASSERT_EQ(0x59f6u, goldenHead().size());
    EXPECT_SAME_BYTES(goldenDrawing(drawing, 0, Bytes()), saved(drawing));
    EXPECT_TRUE(machine.reports.empty());
}

TEST_F(GoldenTest, LineIsItsTwoEnds)
{
    auto* line = addTo(drawing, new CVexDbLine({10.5, -20.0}, {1e6, 0.25}));
    Bytes entities = goldenEntity(drawing, line->hardObjectId(), 6);
    entities.point(10.5, -20.0).point(1e6, 0.25);
    EXPECT_SAME_BYTES(goldenDrawing(drawing, 1, entities), saved(drawing));
}

TEST_F(GoldenTest, ArcIsRadiusAnglesCentre)
{
    auto* arc = addTo(drawing, new CVexDbArc({10.5, -20.0}, 7.25, 0.5, 1.75));
    Bytes entities = goldenEntity(drawing, arc->hardObjectId(), 2);
    entities.f64(7.25).f64(0.5).f64(1.75).point(10.5, -20.0);
    EXPECT_SAME_BYTES(goldenDrawing(drawing, 1, entities), saved(drawing));
}

TEST_F(GoldenTest, CircleIsAnArcOfAWholeTurn)
{
    auto* circle = addTo(drawing, new CVexDbCircle({10.5, -20.0}, 7.25));
    Bytes entities = goldenEntity(drawing, circle->hardObjectId(), 3);
    entities.f64(7.25).f64(0.0).u64(0x401921fb54442d18); // 2 pi
    entities.point(10.5, -20.0);
    EXPECT_SAME_BYTES(goldenDrawing(drawing, 1, entities), saved(drawing));
}

TEST_F(GoldenTest, ArcAndCircleCarryTextsAndNumbersBehindTheEntityRecord)
{
    auto* arc = addTo(drawing, new CVexDbArc({1.0, 2.0}, 3.0, -0.25, 7.0));
    auto* circle = addTo(drawing, new CVexDbCircle({4.0, 5.0}, 6.0));
    giveXData(*arc, L"bend", 90.0);
    giveXData(*circle, L"", 16.0);
    Bytes entities;
    entities.u32(2).object(arc->hardObjectId(), 2, 4);
    entities.u64(numberOf(drawing.layers(), L"0"));
    entities.u64(numberOf(drawing.linetypes(), L"ByLayer")).i32(256).i32(-1).u16(2);
    entities.i32(3007).zeros(4).u16(4).zeros(22).text("bend", 4);
    entities.i32(3004).zeros(4).f64(90.0).zeros(16);
    entities.f64(3.0).f64(-0.25).f64(7.0).point(1.0, 2.0); // angles as they are held
    entities.u32(3).object(circle->hardObjectId(), 3, 4);
    entities.u64(numberOf(drawing.layers(), L"0"));
    entities.u64(numberOf(drawing.linetypes(), L"ByLayer")).i32(256).i32(-1).u16(2);
    entities.i32(3007).zeros(4).u16(0).zeros(22); // no letters, nothing behind the node
    entities.i32(3004).zeros(4).f64(16.0).zeros(16);
    entities.f64(6.0).f64(0.0).u64(0x401921fb54442d18).point(4.0, 5.0);
    EXPECT_SAME_BYTES(goldenDrawing(drawing, 2, entities), saved(drawing));
}

TEST_F(GoldenTest, HandMadeArcAndCircleAreRead)
{
    Bytes entities;
    entities.u32(2).object(0x50000, 2, 4);
    entities.u64(numberOf(drawing.layers(), L"PipeLine"));
    entities.u64(numberOf(drawing.linetypes(), L"Hidden")).i32(3).i32(25).u16(2);
    entities.i32(3007).u32(0xcdcdcdcd).u16(4).zeros(22).text("bend", 4);
    entities.i32(3004).zeros(4).f64(90.0).zeros(16);
    entities.f64(3.0).f64(-0.25).f64(7.0).point(1.0, 2.0, 77);
    entities << goldenEntity(drawing, 0x50001, 3);
    entities.f64(6.0).f64(0.0).u64(0x401921fb54442d18).point(4.0, 5.0);
    CVexDbDatabase again(false);
    ASSERT_TRUE(read(again, goldenDrawing(drawing, 2, entities)));
    EXPECT_WHOLE(again);
    ASSERT_EQ(2u, entitiesOf(again).size());
    auto& arc = static_cast<CVexDbArc&>(*entitiesOf(again)[0]);
    EXPECT_EQ(3.0, arc.Radius());
    EXPECT_EQ(-0.25, arc.StartAngle());
    EXPECT_EQ(7.0, arc.EndAngle());
    EXPECT_EQ(77, arc.Center().tag);
    EXPECT_EQ(L"PipeLine", arc.Layer());
    ASSERT_NE(nullptr, arc.xData());
    EXPECT_STREQ(L"bend", arc.xData()->value.text);
    EXPECT_EQ(90.0, arc.xData()->next->value.number);
    auto& circle = static_cast<CVexDbCircle&>(*entitiesOf(again)[1]);
    EXPECT_EQ(6.0, circle.Radius());
    EXPECT_EQ(10.0, circle.getGripPoint(1).x);
}

TEST_F(GoldenTest, BoxIsBaseWidthHeightRotation)
{
    auto* box = addTo(drawing, new CVexDbBox({1.0, 2.0}, 30.0, 40.0, 0.5));
    Bytes entities = goldenEntity(drawing, box->hardObjectId(), 26);
    entities.point(1.0, 2.0).f64(30.0).f64(40.0).f64(0.5);
    EXPECT_SAME_BYTES(goldenDrawing(drawing, 1, entities), saved(drawing));
}

TEST_F(GoldenTest, RectangleIsTopBottomLeftRight)
{
    auto* rect = addTo(drawing, new CVexDbRect(CVexGePoint2d(1.0, 2.0), CVexGePoint2d(3.0, 4.0)));
    Bytes entities = goldenEntity(drawing, rect->hardObjectId(), 16);
    entities.f64(2.0).f64(4.0).f64(1.0).f64(3.0);
    EXPECT_SAME_BYTES(goldenDrawing(drawing, 1, entities), saved(drawing));
}

TEST_F(GoldenTest, PointIsSizeFillFlagPosition)
{
    auto* point = addTo(drawing, new CVexDbPoint(CVexGePoint2d(7.0, 8.0)));
    point->SetSize(2.5);
    point->SetFillMode(true);
    point->SetPdMode(5); // not in the file: a point that is read follows the drawing's mode
    unsigned char flag = 0xa5;
    point->SetFlag(flag);
    Bytes entities = goldenEntity(drawing, point->hardObjectId(), 14);
    entities.f64(2.5).u8(1).u8(0xa5).point(7.0, 8.0);
    EXPECT_SAME_BYTES(goldenDrawing(drawing, 1, entities), saved(drawing));
}

TEST_F(GoldenTest, PolylineIsItsVerticesFillAndMode)
{
    auto* polyline = new CVexDbPolyline(0, &drawing);
    polyline->AppendVertex({0.0, 0.0}, 0.0, -1.0, -1.0);
    polyline->AppendVertex({30.0, 0.0}, -0.5, 0.25, 0.75);
    polyline->AppendVertex({30.0, 20.0}, 0.0, -1.0, -1.0);
    polyline->SetClosed(true);
    polyline->SetBulgeAt(2, 1.5);
    polyline->SetFill(true);
    polyline->SetFillMode(3);
    addTo(drawing, polyline);
    Bytes entities = goldenEntity(drawing, polyline->hardObjectId(), 7, 0x14);
    entities.i32(3).u8(1);
    entities.point(0.0, 0.0).f64(0.0).f64(-1.0).f64(-1.0);
    entities.point(30.0, 0.0).f64(-0.5).f64(0.25).f64(0.75);
    entities.point(30.0, 20.0).f64(1.5).f64(-1.0).f64(-1.0);
    entities.u8(1).i32(3);
    EXPECT_SAME_BYTES(goldenDrawing(drawing, 1, entities), saved(drawing));
}

TEST_F(GoldenTest, HandMadePolylineIsRead)
{
    Bytes entities = goldenEntity(drawing, 0x50000, 7, 0x14);
    entities.i32(2).u8(0).point(1.0, 2.0, 5).f64(-1.0).f64(0.5).f64(0.25);
    entities.point(9.0, 2.0).f64(0.0).f64(-1.0).f64(-1.0);
    entities.u8(1).i32(4); // a fill that an open one keeps without showing it
    CVexDbDatabase again(false);
    ASSERT_TRUE(read(again, goldenDrawing(drawing, 1, entities)));
    EXPECT_WHOLE(again);
    ASSERT_EQ(1u, entitiesOf(again).size());
    auto& polyline = static_cast<CVexDbPolyline&>(*entitiesOf(again)[0]);
    EXPECT_EQ(2u, polyline.NumVerts());
    EXPECT_EQ(5, polyline.gePolyline().vertices()[0].tag);
    EXPECT_EQ(-1.0, polyline.GetBulgeAt(0));
    EXPECT_EQ(0.25, polyline.gePolyline().endWidths()[0]);
    EXPECT_FALSE(polyline.IsFill());
    EXPECT_EQ(4, polyline.FillMode());
    polyline.SetClosed(true);
    EXPECT_TRUE(polyline.IsFill());
}

TEST_F(GoldenTest, ExtendedDataIsACountOfNodesAndTheTextsBehindThem)
{
    auto* line = addTo(drawing, new CVexDbLine({0.0, 0.0}, {1.0, 0.0}));
    giveXData(*line, L"weld", 2.5);
    Bytes entities;
    entities.u32(6).object(line->hardObjectId(), 6, 4);
    entities.u64(numberOf(drawing.layers(), L"0"));
    entities.u64(numberOf(drawing.linetypes(), L"ByLayer")).i32(256).i32(-1);
    entities.u16(2);
    entities.i32(3007).zeros(4).u16(4).zeros(22).text("weld", 4);
    entities.i32(3004).zeros(4).f64(2.5).zeros(16);
    entities.point(0.0, 0.0).point(1.0, 0.0);
    EXPECT_SAME_BYTES(goldenDrawing(drawing, 1, entities), saved(drawing));
}

TEST_F(GoldenTest, EntityRefersToItsRecordsByNumberAndToItsColourByIndex)
{
    auto* line = addTo(drawing, new CVexDbLine({0.0, 0.0}, {1.0, 0.0}));
    line->setLayer(CString(L"PipeLine"));
    line->setLineType(CString(L"Hidden"), true);
    line->setColor(3, true);
    line->setLineWeight(static_cast<VexDb::LineWeight>(25), true);
    Bytes entities;
    entities.u32(6).object(line->hardObjectId(), 6, 4);
    entities.u64(numberOf(drawing.layers(), L"PipeLine"));
    entities.u64(numberOf(drawing.linetypes(), L"Hidden")).i32(3).i32(25).u16(0);
    entities.point(0.0, 0.0).point(1.0, 0.0);
    EXPECT_SAME_BYTES(goldenDrawing(drawing, 1, entities), saved(drawing));
}

// What a file laid out by hand gives when it is read.

TEST_F(GoldenTest, EveryFieldOfAHandMadeFileIsRead)
{
    Bytes entities;
    entities.u32(6).object(0x50000, 6, 4);
    entities.u64(numberOf(drawing.layers(), L"PipeLine"));
    entities.u64(numberOf(drawing.linetypes(), L"Hidden")).i32(3).i32(25);
    entities.u16(2).i32(3007).zeros(4).u16(4).zeros(22).text("weld", 4);
    entities.i32(3004).u32(0xcdcdcdcd).f64(2.5).zeros(16);
    entities.point(10.5, -20.0, 77).point(1e6, 0.25);
    entities << goldenEntity(drawing, 0x50001, 14).f64(2.5).u8(1).u8(0xa5).point(7.0, 8.0);
    CVexDbDatabase again(false);
    ASSERT_TRUE(read(again, goldenDrawing(drawing, 2, entities)));
    EXPECT_WHOLE(again);
    ASSERT_EQ(2u, entitiesOf(again).size());
    auto& line = static_cast<CVexDbLine&>(*entitiesOf(again)[0]);
    EXPECT_EQ(10.5, line.StartPoint().x);
    EXPECT_EQ(77, line.StartPoint().tag);
    EXPECT_EQ(L"PipeLine", line.Layer());
    EXPECT_EQ(L"Hidden", line.LineType());
    EXPECT_EQ(3, line.ColorIndex());
    EXPECT_EQ(25, line.LineWeight());
    EXPECT_EQ(0x50000u, line.getCreatedTime());
    ASSERT_NE(nullptr, line.xData());
    EXPECT_STREQ(L"weld", line.xData()->value.text);
    EXPECT_EQ(2.5, line.xData()->next->value.number);
    auto& point = static_cast<CVexDbPoint&>(*entitiesOf(again)[1]);
    EXPECT_EQ(7.0, point.Position().x);
    EXPECT_EQ(0xa5, point.GetFlag());
}

TEST_F(GoldenTest, ReaderThatStopsBehindTheBlockTableHasTheWholeFile)
{
    const std::vector<std::byte> bytes = goldenDrawing(drawing, 0, Bytes());
    CMemFile file(bytes, kPath);
    CArchive archive(&file, CArchive::load);
    CVexDbDatabase again(false);
    EXPECT_TRUE(again.Read(archive));
    EXPECT_EQ(bytes.size(), file.GetPosition());
    EXPECT_EQ(0u, file.remaining());
}

} // namespace
