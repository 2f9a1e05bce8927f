#include "tests/vexdb/entityfixture.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbpoint.h"
#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeelliparc2d.h"

#include <limits>
#include <utility>

namespace {

class LineTest : public EntityTest {};

TEST_F(LineTest, DrawsOneStrokeTruncatedTowardsZero)
{
    CVexDbLine line({1.239, -1.239}, {10, 5});
    line.Draw(&dc);
    EXPECT_EQ("line 123,-123 1000,500\n", inWords(dc.strokes()));
}

TEST_F(LineTest, DrawsNothingWhenItDoesNotShow)
{
    CVexDbLine line({0, 0}, {10, 5});
    layer(L"0").setIsOff(true);
    line.Draw(&dc);
    EXPECT_TRUE(dc.strokes().empty());
}

TEST_F(LineTest, HugeAndSenselessCoordinatesAreHeldInReach)
{
    CVexDbLine line({1e300, -std::numeric_limits<double>::infinity()},
                    {std::numeric_limits<double>::quiet_NaN(), 5});
    const CVexDbRect box = line.GetOutRect();
    EXPECT_EQ(CRect(0, -1000000000, 1000000000, 500), *line.GetEntityRect());
    EXPECT_POINT(1e300, 5, box.RightBottom()); // what is no number does not count
    line.Draw(&dc);
    EXPECT_EQ(1u, dc.strokes().size());
}

TEST_F(LineTest, GripsAreMidpointStartEnd)
{
    CVexDbLine line({1, 2}, {3, 6});
    CVexDbEntity::PointList* grips = nullptr;
    ASSERT_TRUE(line.getGripPointVec(grips));
    EXPECT_EQ("2,4 1,2 3,6", inWords(*grips));
    line.setStartPoint({-1, 0});
    EXPECT_POINT(1, 3, line.getGripPoint(0));
    EXPECT_EQ(CRect(-100, 0, 300, 600), *line.GetEntityRect());
}

TEST_F(LineTest, BareSetLeavesTheRefreshToTheGetters)
{
    CVexDbLine line({1, 2}, {3, 6});
    line.set({10, 10}, {20, 0});
    EXPECT_POINT(10, 10, line.getGripPoint(1));
    EXPECT_EQ(CRect(1000, 0, 2000, 1000), *line.GetEntityRect());
}

TEST_F(LineTest, OuterRectangleHasTheSmallerYOnTop)
{
    CVexDbLine line({5, 9}, {1, 2});
    const CVexDbRect box = line.GetOutRect();
    EXPECT_POINT(1, 2, box.LeftTop());
    EXPECT_POINT(5, 9, box.RightBottom());
}

TEST_F(LineTest, RecordHoldsItsReferencesAndBothEnds)
{
    CVexDbLine line({1.5, 2}, {3, -4});
    line.setLayer(CString(L"PipeLine"));
    line.setLineType(CString(L"Hidden"), false);
    line.setColor(5, false);
    line.setLineWeight(static_cast<VexDb::LineWeight>(25), false);
    Bytes expected;
    expected.object(line.getCreatedTime(), 6, 0x04);
    expected.u64(layer(L"PipeLine").getCreatedTime()).u64(linetype(L"Hidden").getCreatedTime());
    expected.i32(5).i32(25).u16(0).point(1.5, 2).point(3, -4);
    EXPECT_SAME_BYTES(expected.all(), saved(line));
}

TEST_F(LineTest, NullReferencesAreZeroBytesAndColorByLayer)
{
    CVexDbLine line({1, 2}, {3, 4});
    line.setLayer(CVexDbObjectId());
    line.setLineType(CVexDbObjectId(), false);
    line.setColor(CVexDbObjectId(), false);
    Bytes expected;
    expected.object(line.getCreatedTime(), 6, 0x04).u64(0).u64(0).i32(256).i32(-1).u16(0);
    expected.point(1, 2).point(3, 4);
    EXPECT_SAME_BYTES(expected.all(), saved(line));
}

TEST_F(LineTest, ReadsItsRecordAndRefreshesTheGrips)
{
    CVexDbLine line(&drawing);
    Bytes file;
    file.object(77, 6, 0x05);
    file.u64(layer(L"WeldNum").getCreatedTime()).u64(linetype(L"Hidden").getCreatedTime());
    file.i32(4).i32(-3).u16(0).point(1, 2, 8).point(3, 6);
    ASSERT_TRUE(reads(line, file.all()));
    EXPECT_EQ(77u, line.getCreatedTime());
    EXPECT_FALSE(line.isVisiable()); // the status came with it
    EXPECT_TRUE(line.LayerId() == layer(L"WeldNum").objectId());
    EXPECT_TRUE(line.LineTypeId() == linetype(L"Hidden").objectId());
    EXPECT_TRUE(line.ColorId() == color(L"4").objectId());
    EXPECT_EQ(-3, line.LineWeight());
    EXPECT_EQ(8, line.StartPoint().tag);
    EXPECT_POINT(2, 4, line.getGripPoint(0));
}

TEST_F(LineTest, UnknownReferencesReadAsTheBaseRecords)
{
    CVexDbLine line(&drawing);
    line.setLayer(CString(L"PipeLine"));
    Bytes file;
    file.object(77, 6, 0x04).u64(0xabcdef).u64(0xabcdef).i32(99).i32(0).u16(0);
    file.point(1, 2).point(3, 4);
    ASSERT_TRUE(reads(line, file.all()));
    EXPECT_EQ(L"0", line.Layer().str());
    EXPECT_TRUE(line.LineTypeId() == linetype(L"ByLayer").objectId());
    EXPECT_TRUE(line.ColorId() == color(L"256").objectId());
}

TEST_F(LineTest, RecordThatEndsEarlyIsNotRead)
{
    CVexDbLine line({1, 2}, {3, 4});
    const std::vector<std::byte> whole = saved(line);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        CVexDbLine again(&drawing);
        EXPECT_FALSE(reads(again, {whole.begin(), whole.begin() + static_cast<long>(length)}))
            << length;
    }
}

TEST_F(LineTest, ShapePropertiesPointAtTheNumbers)
{
    CVexDbLine line({1.5, 2}, {3, 4});
    const auto rows = line.getProperty()[VexDb::kLine][L"Shape"];
    EXPECT_EQ("X Start=1.500000\nY Start=2.000000\nX End=3.000000\nY End=4.000000\n",
              inWords(rows));
    ASSERT_EQ(4u, rows.size());
    EXPECT_EQ(1.5, *reinterpret_cast<const double*>(rows[0].data));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(&line.geLine().endPoint().y), rows[3].data);
    EXPECT_EQ(L"Change X Start", rows[0].change.str());
    EXPECT_EQ(1, rows[0].kind);
}

struct SelectionRow {
    const char* name;
    CVexGePoint2d start;
    CVexGePoint2d end;
    bool inside;
    bool crossing;
};

class LineSelectionTest : public EntityTest, public testing::WithParamInterface<SelectionRow> {};

TEST_P(LineSelectionTest, ByRectangle)
{
    CVexDbLine line(GetParam().start, GetParam().end);
    CVexGePoint2d a(0, 0);
    CVexGePoint2d b(10, 5);
    EXPECT_EQ(GetParam().inside, line.checkInside(a, b));
    EXPECT_EQ(GetParam().crossing, line.checkInsideOrCross(a, b));
    EXPECT_EQ(GetParam().crossing, line.checkInsideOrCross(b, a));
}

// Of the two specks on the upper side only the one that starts inside is found: the end is never
// asked, and a line this short crosses nothing.
INSTANTIATE_TEST_SUITE_P(
    , LineSelectionTest,
    testing::Values(SelectionRow{"Inside", {1, 1}, {9, 4}, true, true},
                    SelectionRow{"StartInside", {1, 1}, {20, 1}, false, true},
                    SelectionRow{"EndInside", {20, 1}, {1, 1}, false, true},
                    SelectionRow{"Through", {-5, 2}, {15, 2}, false, true},
                    SelectionRow{"AcrossACorner", {-1, 1}, {1, -1}, false, true},
                    SelectionRow{"Apart", {20, 1}, {30, 1}, false, false},
                    SelectionRow{"AlongTheUpperSideFromAfar", {40, 5}, {5, 5}, false, true},
                    SelectionRow{"SpeckThatEndsInside", {5, 5 + 1e-9}, {5, 5}, false, false},
                    SelectionRow{"SpeckThatStartsInside", {5, 5}, {5, 5 + 1e-9}, false, true}),
    [](const auto& row) { return row.param.name; });

TEST_F(LineTest, IsOnForwardsToTheCurve)
{
    const CVexDbLine line({0, 0}, {10, 0});
    EXPECT_NE(0, line.isOn({5, 0.5}, 1.0));
    EXPECT_EQ(0, line.isOn({5, 1.0}, 1.0)); // at the tolerance itself it is not on
    EXPECT_EQ(0, line.isOn({12, 0}, 1.0));
}

TEST_F(LineTest, CurveQueriesForward)
{
    CVexDbLine line({0, 0}, {10, 0});
    CVexGePoint2d above(3, 4);
    CVexGeVector2d perp;
    EXPECT_TRUE(line.IsCurveEntity());
    EXPECT_FALSE(line.IsClosedCurve());
    EXPECT_EQ(10.0, line.length());
    EXPECT_EQ(5.0, line.length(0.25, 0.75, kGeEpsilon));
    EXPECT_EQ(0.5, line.paramAtPoint({5, 0}, kGeEpsilon));
    EXPECT_EQ(0.75, line.paramAtDist(0.25, 5.0, true, kGeEpsilon));
    EXPECT_POINT(2.5, 0, line.pointAtParam(0.25));
    EXPECT_POINT_NEAR(0, -1, line.normalAtParam(0.5), 1e-12);
    EXPECT_POINT_NEAR(0, -1, line.normalAtPoint({5, 0}, kGeEpsilon), 1e-12);
    EXPECT_TRUE(line.PerpVecFromPoint(above, perp, kGeEpsilon));
    EXPECT_POINT(0, 4, perp);
}

TEST_F(LineTest, LineAndLineGiveOnePointOrNone)
{
    const CVexDbLine line({0, 0}, {10, 0});
    CVexDbLine crossing({4, -1}, {4, 1});
    CVexDbLine apart({4, 1}, {4, 2});
    int count = 7;
    CVexDbEntity::PointList points(3);
    EXPECT_TRUE(line.intersectWith(crossing, count, points, CVexGeEntity2d::kExtendNone, 1e-6));
    EXPECT_EQ(1, count);
    EXPECT_EQ("4,0", inWords(points));
    EXPECT_FALSE(line.intersectWith(apart, count, points, CVexGeEntity2d::kExtendNone, 1e-6));
    EXPECT_EQ(0, count);
    EXPECT_TRUE(line.intersectWith(apart, count, points, CVexGeEntity2d::kExtendArg, 1e-6));
}

TEST_F(LineTest, MeetsABoxInItsSidesAndPointsAndRectanglesNotAtAll)
{
    const CVexDbLine line({-1, 1}, {20, 1});
    CVexDbBox box({0, 0}, {10, 5});
    CVexDbRect rect({0, 0}, {10, 5});
    CVexDbPoint point(CVexGePoint2d(4, 1));
    int count = 0;
    CVexDbEntity::PointList points;
    EXPECT_TRUE(line.intersectWith(box, count, points, CVexGeEntity2d::kExtendNone, 1e-6));
    EXPECT_EQ(2, count);
    EXPECT_FALSE(line.intersectWith(rect, count, points, CVexGeEntity2d::kExtendNone, 1e-6));
    EXPECT_FALSE(line.intersectWith(point, count, points, CVexGeEntity2d::kExtendNone, 1e-6));
}

TEST_F(LineTest, EveryCurveMeetsCirclesAndEllipsesOfTheKernel)
{
    const CVexGeCircArc2d circle(CVexGePoint2d(0, 0), 5);
    const CVexGeEllipArc2d ellipse({0, 0}, {1, 0}, {0, 1}, 10, 5);
    const CVexDbLine line({0, 3}, {20, 3});
    const CVexDbBox box({0, -3}, {20, 6});
    const CVexDbRect rect({0, -3}, {20, 3});
    const std::pair<const CVexDbEntity*, int> curves[] = {{&line, 1}, {&box, 2}, {&rect, 2}};
    for (const auto& [curve, hits] : curves) {
        int count = 0;
        CVexDbEntity::PointList points;
        EXPECT_TRUE(
            curve->intersectWith(ellipse, count, points, CVexGeEntity2d::kExtendNone, 1e-6));
        EXPECT_NEAR(8.0, points.at(0).x, 0.02); // the ellipse is a chain of arcs
        EXPECT_TRUE(curve->intersectWith(circle, count, points, CVexGeEntity2d::kExtendNone, 1e-6));
        EXPECT_EQ(static_cast<std::size_t>(count), points.size());
        EXPECT_NEAR(4.0, points.at(0).x, 1e-9);
        EXPECT_EQ(hits, count);
    }
}

TEST_F(LineTest, OffsetIsAFreeLineOnTheSide)
{
    CVexDbLine* line = addLine({0, 0}, {10, 0});
    line->setLayer(CString(L"PipeLine"));
    CVexGePoint2d side(3, 5);
    CVexDbEntity* result = nullptr;
    ASSERT_TRUE(line->getOffset(side, result, 2.0));
    const std::unique_ptr<CVexDbEntity> offset(result);
    EXPECT_POINT_NEAR(0, 2, static_cast<CVexDbLine&>(*offset).StartPoint(), 1e-6);
    EXPECT_POINT_NEAR(10, 2, static_cast<CVexDbLine&>(*offset).EndPoint(), 1e-6);
    EXPECT_EQ(L"PipeLine", offset->Layer().str());
    EXPECT_FALSE(offset->IsDbEntity());
    EXPECT_TRUE(offset->objectId() == offset.get() && offset->ownerId().isNull());
    EXPECT_EQ(1, layer(L"PipeLine").getNumEntity()); // the offset stands in no drawing yet
    EXPECT_EQ(CRect(0, 200, 1000, 200), *offset->GetEntityRect());
}

/// Stands in for a hatch and notes the boundary that it is told of.
class BoundaryListener : public CVexDbLine {
public:
    BoundaryListener() : CVexDbLine(CVexGePoint2d(0, 0), CVexGePoint2d(1, 1))
    {
        CVexDbObject::setClassType(VexDb::kHatch);
    }
    using CVexDbLine::operator=;
    bool OnBoundaryChanged(CVexDbCurve* curve) override
    {
        changed = curve;
        return true;
    }
    CVexDbCurve* changed = nullptr;
};

TEST_F(LineTest, ChangedBoundaryReachesTheModelSpaceOnlyWithATag)
{
    CVexDbLine* line = addLine({0, 0}, {10, 0});
    const auto* hatch = add(new BoundaryListener);
    line->OnCurveChanged();
    EXPECT_EQ(nullptr, hatch->changed);
    line->SetBoundary(1);
    line->OnCurveChanged();
    EXPECT_EQ(line, hatch->changed);
}

} // namespace
