#include "tests/vexdb/entityfixture.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbobject/dbentity/vexdbentitykinds.h"
#include "vexdb/dbobject/dbentity/vexdbpoint.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"

#include <numbers>

namespace {

TEST_F(EntityTest, StartsWithTheCurrentPropertiesOfItsDrawing)
{
    drawing.setCurrentLayer(layer(L"Dimension").objectId());
    const CVexDbLine line(&drawing);
    EXPECT_EQ(L"Dimension", line.Layer().str());
    EXPECT_TRUE(line.LineTypeId() == linetype(L"ByLayer").objectId());
    EXPECT_TRUE(line.ColorId() == color(L"256").objectId());
    EXPECT_EQ(-1, line.LineWeight());
}

TEST_F(EntityTest, NullDatabaseMeansTheActiveOne)
{
    const CVexDbLine line(nullptr);
    EXPECT_EQ(&drawing, line.database());
    _gpDatabase = nullptr;
    const CVexDbLine homeless(nullptr);
    EXPECT_EQ(nullptr, homeless.database());
    EXPECT_TRUE(homeless.LayerId().isNull());
}

TEST_F(EntityTest, NamesByLayerAreThoseOfTheLayer)
{
    CVexDbLine line(&drawing);
    line.setLayer(CString(L"Dimension"));
    EXPECT_EQ(L"CONTINUOUS", line.LineType().str());
    EXPECT_EQ(3, line.ColorIndex());
    layer(L"Dimension").setLinetypeId(CVexDbObjectId());
    layer(L"Dimension").setColorId(CVexDbObjectId());
    EXPECT_EQ(L"CONTINUOUS", line.LineType().str()); // a layer without a linetype is solid
    EXPECT_EQ(7, line.ColorIndex());                 // and one without a colour shows as 7
}

TEST_F(EntityTest, UnknownNamesChangeNothingAndAnswerDifferently)
{
    CVexDbLine line(&drawing);
    EXPECT_FALSE(line.setLayer(CString(L"Nowhere")));
    EXPECT_EQ(L"0", line.Layer().str());
    // The linetype form says true all the same: commands take an unknown linetype for no error.
    EXPECT_TRUE(line.setLineType(CString(L"Nothing"), false));
    EXPECT_TRUE(line.LineTypeId() == linetype(L"ByLayer").objectId());
    EXPECT_TRUE(line.setLineType(CString(L"Hidden"), false));
    EXPECT_EQ(L"Hidden", line.LineType().str());
}

TEST_F(EntityTest, ColorByIndexMakesTheRecordThatTheDrawingLacks)
{
    CVexDbLine line(&drawing);
    EXPECT_TRUE(line.setColor(10, false));
    EXPECT_EQ(10, line.ColorIndex());
    EXPECT_EQ(0x0000ffu, color(L"10").getColor());
    EXPECT_TRUE(color(L"10").ownerId() == drawing.colors().objectId());
    EXPECT_FALSE(line.setColor(257, false));
    EXPECT_EQ(10, line.ColorIndex());
}

TEST_F(EntityTest, SettersMoveADatabaseEntityBetweenTheRecordsUsers)
{
    CVexDbLine* line = addLine({0, 0}, {1, 1});
    line->setLayer(CString(L"PipeLine"));
    line->setLineType(CString(L"Hidden"), false);
    line->setColor(1, false);
    EXPECT_EQ(0, layer(L"0").getNumEntity() + linetype(L"ByLayer").getNumEntity() +
                     color(L"256").getNumEntity());
    EXPECT_EQ(1, layer(L"PipeLine").getNumEntity());
    EXPECT_EQ(1, linetype(L"Hidden").getNumEntity());
    EXPECT_EQ(1, color(L"1").getNumEntity());
}

TEST_F(EntityTest, SettersOfATemporaryOrAPlainCopyLeaveTheUsersAlone)
{
    CVexDbLine* line = addLine({0, 0}, {1, 1});
    CVexDbLine plain(*line); // still bears the identity of the line
    plain.setLayer(CString(L"PipeLine"));
    CVexDbLine temporary(&drawing);
    temporary.setLayer(CString(L"PipeLine"));
    EXPECT_EQ(1, layer(L"0").getNumEntity());
    EXPECT_EQ(0, layer(L"PipeLine").getNumEntity());
}

TEST_F(EntityTest, CopyIsDetachedAndAThingOfItsOwn)
{
    CVexDbLine* line = addLine({1, 2}, {3, 4});
    line->setErased();
    const std::unique_ptr<CVexDbEntity> copy(line->CopyEntity(false));
    ASSERT_NE(nullptr, copy);
    EXPECT_TRUE(copy->objectId() == copy.get());
    EXPECT_GT(copy->getCreatedTime(), line->getCreatedTime());
    EXPECT_TRUE(copy->ownerId().isNull());
    EXPECT_FALSE(copy->IsDbEntity());
    EXPECT_FALSE(copy->isErased());
    EXPECT_POINT(3, 4, static_cast<CVexDbLine&>(*copy).EndPoint());
}

TEST_F(EntityTest, CopiesOfEveryKindAreOfThatKindAndOthersAreNull)
{
    struct Picture : CVexDbPoint {
        Picture() : CVexDbPoint(CVexGePoint2d()) { setClassType(VexDb::kImage); }
        using CVexDbPoint::operator=;
    };
    CVexDbRect rect({1, 2}, {5, 8});
    const std::unique_ptr<CVexDbEntity> copy(rect.CopyEntity(true));
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ(VexDb::kRectangle, copy->classType());
    EXPECT_POINT(5, 8, static_cast<CVexDbRect&>(*copy).RightBottom());
    EXPECT_EQ(nullptr, Picture().CopyEntity(true));
}

TEST_F(EntityTest, CurrentPropertiesComeWithACleanWorkingState)
{
    CVexDbLine line(&drawing);
    line.SetBoundary(4);
    line.SetXData(new Return_Struct);
    line.setLineWeight(static_cast<VexDb::LineWeight>(50), false);
    line.SetEntProperty();
    EXPECT_EQ(0, line.IsBoundary());
    EXPECT_EQ(nullptr, line.xData());
    EXPECT_EQ(-1, line.LineWeight());
}

TEST_F(EntityTest, PlainCopyGoesOnIdentifyingItsSource)
{
    CVexDbLine* line = addLine({1, 2}, {3, 4});
    const CVexDbLine copy(*line);
    EXPECT_TRUE(copy.objectId() == line);
    EXPECT_EQ(line->getCreatedTime(), copy.getCreatedTime());
    EXPECT_EQ(&copy.geLine(), copy.geCurve()); // its geometry is its own
}

TEST_F(EntityTest, AssignmentMovesDataAndNeverIdentity)
{
    CVexDbLine* line = addLine({1, 2}, {3, 4});
    CVexDbLine source({5, 6}, {7, 8});
    source.setLayer(CString(L"PipeLine"));
    source.SetBoundary(9);
    const std::uint64_t number = line->getCreatedTime();
    static_cast<CVexDbEntity&>(*line) = source;
    EXPECT_POINT(7, 8, line->EndPoint());
    EXPECT_EQ(L"PipeLine", line->Layer().str());
    EXPECT_EQ(1, layer(L"PipeLine").getNumEntity());
    EXPECT_EQ(9, line->IsBoundary());
    EXPECT_EQ(number, line->getCreatedTime());
    EXPECT_TRUE(line->objectId() == line && line->IsDbEntity());
}

TEST_F(EntityTest, AssignmentFromAnotherDrawingTakesNamesNotRecords)
{
    CVexDbLine* line = addLine({0, 0}, {1, 1});
    CVexDbDatabase other(false);
    CVexDbLine foreign(&other);
    foreign.setLayer(CString(L"WeldNum"));
    foreign.setColor(1, false);
    *line = foreign;
    EXPECT_TRUE(line->LayerId() == layer(L"WeldNum").objectId());
    EXPECT_TRUE(line->ColorId() == color(L"1").objectId());
    EXPECT_EQ(1, layer(L"WeldNum").getNumEntity());
}

TEST_F(EntityTest, FirstDatabaseGivesItsCurrentProperties)
{
    _gpDatabase = nullptr;
    CVexDbLine line(nullptr);
    line.setDatabase(&drawing);
    EXPECT_EQ(L"0", line.Layer().str());
    EXPECT_EQ(&drawing, line.database());
}

TEST_F(EntityTest, AnotherDatabaseIsBoundByNames)
{
    CVexDbDatabase other(false);
    CVexDbLine line(&other);
    line.setLayer(CString(L"PipeLine"));
    line.setLineType(CString(L"Hidden"), false);
    line.setColor(42, false);
    auto* note = new Return_Struct;
    line.SetXData(note);
    line.setDatabase(&drawing);
    EXPECT_TRUE(line.LayerId() == layer(L"PipeLine").objectId());
    EXPECT_TRUE(line.LineTypeId() == linetype(L"Hidden").objectId());
    EXPECT_TRUE(line.ColorId() == color(L"42").objectId());
    EXPECT_EQ(note, line.xData());
}

TEST_F(EntityTest, NamesThatTheNewDatabaseLacksFallBack)
{
    CVexDbDatabase other(false);
    auto* record = new CVexDbLayerTableRecord(&other);
    record->setName(CString(L"Only here"));
    other.layers().add(record);
    CVexDbLine line(&other);
    line.setLayer(record->objectId());
    line.setDatabase(&drawing);
    EXPECT_TRUE(line.LayerId() == layer(L"0").objectId());
}

TEST_F(EntityTest, VisibleUnlessErasedInvisibleOrOnALayerThatIsOff)
{
    CVexDbLine line(&drawing);
    EXPECT_TRUE(line.isVisiable());
    layer(L"0").setIsLocked(true);
    EXPECT_TRUE(line.isVisiable()); // a locked layer shows
    layer(L"0").setIsOff(true);
    EXPECT_FALSE(line.isVisiable());
    layer(L"0").setIsOff(false);
    line.setInVisable();
    EXPECT_FALSE(line.isVisiable());
    line.setVisable();
    line.setErased();
    EXPECT_FALSE(line.isVisiable());
}

TEST_F(EntityTest, WithoutALayerNothingShows)
{
    CVexDbLine line(&drawing);
    line.setLayer(CVexDbObjectId());
    EXPECT_FALSE(line.isVisiable());
}

TEST_F(EntityTest, EraseTakesADatabaseEntityOutAndKeepsItAlive)
{
    CVexDbLine* line = addLine({0, 0}, {1, 1});
    line->Erase();
    EXPECT_TRUE(line->isErased());
    EXPECT_EQ(0, drawing.blocks().getCurrentRecord()->getNumEntity());
    EXPECT_POINT(1, 1, line->EndPoint());
}

class TrackerOf : public CVexDbEntityTracker {
public:
    explicit TrackerOf(CVexDbEntity* entity)
        : CVexDbEntityTracker(nullptr, entity, VexDb::TransFormNone, false)
    {
    }
};

TEST_F(EntityTest, OnErasedDropsTheFirstTrackerOfTheEntity)
{
    CVexDbLine* line = addLine({0, 0}, {1, 1});
    CVexDbLine* other = addLine({0, 0}, {2, 2});
    CVexCommandHandler& handler = drawing.commandHandler();
    for (CVexDbEntity* entity : {other, line, line}) {
        handler.AddTracker(new TrackerOf(entity));
    }
    EXPECT_TRUE(line->OnErased());
    ASSERT_EQ(2u, handler.trackers().size());
    EXPECT_EQ(other, handler.trackers()[0]->GetEntity());
    EXPECT_EQ(line, handler.trackers()[1]->GetEntity());
    CVexDbLine temporary(&drawing);
    EXPECT_TRUE(temporary.OnErased());
}

TEST_F(EntityTest, GripBoxIsTenPixelsWideWithoutItsFarEdges)
{
    CVexDbLine* line = addLine({10, 10}, {30, 10});
    const double scale = 20.0; // logical units a pixel: the box is 200 wide, 2 drawing units
    CVexGePoint2d grip;
    EXPECT_EQ(1, line->GetGripNumber({9.0, 9.0}, scale, grip));
    EXPECT_POINT(10, 10, grip);
    EXPECT_EQ(-1, line->GetGripNumber({11.0, 10.0}, scale, grip));
    EXPECT_POINT(30, 10, grip); // the grip looked at last
    EXPECT_EQ(2, line->GetGripNumber({30.99, 10.99}, scale, grip));
    EXPECT_EQ(0, line->GetGripNumber({20.0, 10.0}, scale, grip));
    EXPECT_EQ(0, line->GetGripNumber({10.0, 10.0}, 10 * scale, grip)); // of all that hold it
}

TEST_F(EntityTest, GripBoxIsNotEmptyWhenZoomedIn)
{
    CVexDbLine* line = addLine({10.5, 10.5}, {30, 10});
    CVexGePoint2d grip;
    // At a hundredth of a drawing unit a pixel a box in whole drawing units would hold nothing.
    EXPECT_EQ(1, line->GetGripNumber({10.54, 10.46}, 1.0, grip));
    EXPECT_EQ(-1, line->GetGripNumber({10.56, 10.5}, 1.0, grip));
}

TEST_F(EntityTest, TemporaryEntityHasNoGripToHit)
{
    CVexDbLine line({10, 10}, {30, 10});
    CVexGePoint2d grip(7, 7);
    EXPECT_EQ(-1, line.GetGripNumber({10, 10}, 20.0, grip));
    EXPECT_POINT(7, 7, grip);
}

TEST_F(EntityTest, TransformsMarkTheGripsStaleAndTheGettersRefreshThem)
{
    CVexDbLine* line = addLine({0, 0}, {10, 0});
    CVexDbEntity::PointList* grips = nullptr;
    CVexDbEntity::PointList* again = nullptr;
    EXPECT_TRUE(line->getGripPointVec(grips));
    line->TranslateBy({1, 2});
    EXPECT_POINT(1, 2, line->getGripPoint(1));
    EXPECT_EQ(CRect(100, 200, 1100, 200), *line->GetEntityRect());
    EXPECT_TRUE(line->getGripPointVec(again));
    EXPECT_EQ(grips, again);
}

TEST_F(EntityTest, CurveTransformsGoToTheGeometry)
{
    const double quarter = std::numbers::pi / 2.0;
    CVexDbLine line({1, 0}, {3, 0});
    line.RotateBy(quarter, {1, 0});
    EXPECT_POINT_NEAR(1, 2, line.EndPoint(), 1e-12);
    line.ScaleBy(2.0, {1, 0});
    EXPECT_POINT_NEAR(1, 4, line.EndPoint(), 1e-12);
    line.ScaleBy(1.0, 0.5, {1, 0});
    EXPECT_POINT_NEAR(1, 2, line.EndPoint(), 1e-12);
    line.Mirror(CVexGeLine2d({0, 0}, CVexGePoint2d(1, 0)));
    EXPECT_POINT_NEAR(1, -2, line.EndPoint(), 1e-12);
    line.TransformBy(CVexGeMatrix2d::translation({5, 5}));
    EXPECT_POINT_NEAR(6, 5, line.StartPoint(), 1e-12);
}

TEST_F(EntityTest, PointTransformsAllButScaling)
{
    CVexDbPoint point(CVexGePoint2d(2, 0));
    CVexDbEntity& entity = point;
    entity.ScaleBy(3.0, {0, 0});
    entity.ScaleBy(3.0, 4.0, {0, 0});
    EXPECT_POINT(2, 0, point.Position()); // scaling leaves a point where it stands
    entity.TranslateBy({1, 1});
    EXPECT_POINT(3, 1, point.Position());
    entity.RotateBy(std::numbers::pi / 2.0, {3, 0});
    EXPECT_POINT_NEAR(2, 0, point.Position(), 1e-12);
    entity.Mirror(CVexGeLine2d({5, 0}, CVexGePoint2d(5, 1)));
    EXPECT_POINT_NEAR(8, 0, point.Position(), 1e-12);
    entity.TransformBy(CVexGeMatrix2d::translation({1, 1}));
    EXPECT_POINT_NEAR(9, 1, point.Position(), 1e-12);
    EXPECT_POINT_NEAR(9, 1, point.getGripPoint(0), 1e-12);
}

struct InsideRow {
    const char* name;
    CVexGePoint2d point;
    bool inside;
};

class InsideRectTest : public testing::TestWithParam<InsideRow> {};

TEST_P(InsideRectTest, LowerEdgeIsOutsideAndUpperAndRightEdgesAreInside)
{
    const CVexDbLine any(nullptr);
    EXPECT_EQ(GetParam().inside, any.IsInsideRect({0, 0}, {10, 5}, GetParam().point));
    EXPECT_EQ(GetParam().inside, any.IsInsideRect({10, 5}, {0, 0}, GetParam().point));
}

INSTANTIATE_TEST_SUITE_P(
    , InsideRectTest,
    testing::Values(InsideRow{"Middle", {5, 2}, true}, InsideRow{"LowerEdge", {5, 0}, false},
                    InsideRow{"UpperEdge", {5, 5}, true}, InsideRow{"LeftEdge", {0, 2}, false},
                    InsideRow{"RightEdge", {10, 2}, true}, InsideRow{"Above", {5, 5.001}, false},
                    InsideRow{"Left", {-1, 2}, false}, InsideRow{"Right", {11, 2}, false}),
    [](const auto& row) { return row.param.name; });

TEST_F(EntityTest, PolygonIsInsideByCrossings)
{
    const CVexGePoint2d hook[] = {{0, 0}, {10, 0}, {10, 10}, {6, 10}, {6, 4}, {0, 4}};
    const CVexDbLine any(nullptr);
    EXPECT_TRUE(any.IsInsidePolygon(hook, {8, 8}, 6));
    EXPECT_FALSE(any.IsInsidePolygon(hook, {3, 8}, 6)); // in the notch
    EXPECT_TRUE(any.IsInsidePolygon(hook, {3, 2}, 6));
    EXPECT_FALSE(any.IsInsidePolygon(hook, {3, 2}, 0));
}

TEST_F(EntityTest, CrossWidthAsksTheDistanceToTheEnds)
{
    CVexDbLine line({5, -5}, {5, 5});
    CVexGeLine2d wide({0, 0}, CVexGePoint2d(10, 0)); // crosses 5 away from both ends
    EXPECT_TRUE(line.IntersectWith(wide, kGeEpsilon));
    EXPECT_TRUE(line.IsCrossWidth(wide, 4.9));
    EXPECT_FALSE(line.IsCrossWidth(wide, 5.1));
    CVexGeLine2d apart({0, 9}, CVexGePoint2d(10, 9));
    EXPECT_FALSE(line.IntersectWith(apart, kGeEpsilon));
    EXPECT_FALSE(line.IsCrossWidth(apart, 0.0));
}

TEST_F(EntityTest, GeneralPropertiesInTheirOrder)
{
    CVexDbLine line(&drawing);
    line.setLineWeight(static_cast<VexDb::LineWeight>(25), false);
    const auto rows = line.getProperty()[VexDb::kLine][L"General"];
    EXPECT_EQ("Layer=0\nColor=256\nLineType=CONTINUOUS\nLineWeight=25\n", inWords(rows));
    ASSERT_EQ(4u, rows.size());
    EXPECT_EQ(L"Change Layer", rows[0].change.str());
    EXPECT_EQ(L"Change Linetype", rows[2].change.str()); // a small t, unlike its name
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(&layer(L"0")), rows[0].data);
    EXPECT_EQ(25u, rows[3].data);
    EXPECT_EQ(0, rows[3].kind);
}

TEST_F(EntityTest, KindsWithoutAClassAreNotMade)
{
    EXPECT_EQ(nullptr, makeEntityOfClass(VexDb::kImage, &drawing));
    EXPECT_EQ(nullptr, makeEntityOfClass(VexDb::kNotSelected, &drawing));
    EXPECT_EQ(nullptr, makeEntityOfClass(static_cast<VexDb::ClassType>(0xffffffff), &drawing));
    for (const VexDb::ClassType type :
         {VexDb::kLine, VexDb::kPoint, VexDb::kRectangle, VexDb::kBox, VexDb::kPolyline}) {
        const std::unique_ptr<CVexDbEntity> made(makeEntityOfClass(type, &drawing));
        ASSERT_NE(nullptr, made);
        EXPECT_EQ(type, made->classType());
        EXPECT_TRUE(made->isEntity());
    }
}

TEST_F(EntityTest, BoundaryTagIsKeptByCurvesOnlyToBeSeen)
{
    CVexDbLine line(&drawing);
    line.SetBoundary(3);
    EXPECT_EQ(3, line.IsBoundary());
    line.ClearBoundary();
    EXPECT_EQ(0, line.IsBoundary());
    CVexDbPoint point(&drawing);
    point.SetBoundary(3);
    EXPECT_EQ(0, point.IsBoundary());
}

TEST_F(EntityTest, BaseOfEditsRefuses)
{
    CVexDbPoint point(&drawing);
    CVexGePoint2d pick;
    std::vector<CVexDbEntity*> others;
    CVexDbEntity* result = nullptr;
    EXPECT_EQ(nullptr, point.Trim(pick, others, kGeEpsilon));
    EXPECT_FALSE(point.Extend(pick, others, kGeEpsilon));
    EXPECT_FALSE(point.getOffset(pick, result, 1.0));
}

TEST(EntitySizeTest, LineStaysSmall)
{
    // A million lines are kept; their grips are made only when someone asks. What an allocation of
    // 272 bytes holds, its own size included.
    EXPECT_LE(sizeof(CVexDbLine), 264u);
}

} // namespace
