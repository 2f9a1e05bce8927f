#include "platform/headless/vexrecordingdc.h"
#include "tests/file/filetest.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexge/geentity2d/vexgeline2d.h"

#include <limits>
#include <string>

namespace {

struct NumberRow {
    const char* name;
    double value;
};

class NonFiniteTest : public FileTest, public testing::WithParamInterface<NumberRow> {
protected:
    /// One entity of each class with the number in it.
    void fill(CVexDbDatabase& drawing)
    {
        const double x = GetParam().value;
        addTo(drawing, new CVexDbLine({0.0, 0.0}, {x, 1.0}));
        addTo(drawing, new CVexDbLine({-x, x}, {x, -x}));
        addTo(drawing, new CVexDbBox({x, 0.0}, x, 2.0, x));
        addTo(drawing, new CVexDbRect(CVexGePoint2d(0.0, 0.0), CVexGePoint2d(x, x)));
        addTo(drawing, new CVexDbPoint(CVexGePoint2d(x, 5.0)))->SetSize(x);
        auto* polyline = new CVexDbPolyline(0, &drawing);
        polyline->SetVertexes({{0.0, 0.0}, {10.0, x}, {20.0, 0.0}, {20.0, 20.0}}, true);
        polyline->SetBulgeAt(2, x);
        polyline->SetBulgeAt(3, 0.5);
        polyline->SetWidthsAt(3, x, -x);
        polyline->SetFill(true);
        addTo(drawing, polyline);
    }
};

TEST_P(NonFiniteTest, SurvivesALoadBitByBit)
{
    CVexDbDatabase drawing(false);
    fill(drawing);
    drawing.settings().m_ptViewMax.set(GetParam().value, GetParam().value);
    const std::vector<std::byte> first = saved(drawing);
    CVexDbDatabase again(false);
    ASSERT_TRUE(read(again, first));
    EXPECT_EQ(entitiesOf(drawing).size(), entitiesOf(again).size());
    EXPECT_WHOLE(again);
    EXPECT_SAME_BYTES(first, saved(again));
}

TEST_P(NonFiniteTest, BreaksNeitherDrawingNorGripsNorQueries)
{
    CVexDbDatabase drawing(false);
    fill(drawing);
    CVexDbDatabase again(false);
    ASSERT_TRUE(read(again, saved(drawing)));
    CVexRecordingDC dc;
    for (CVexDbEntity* entity : entitiesOf(again)) {
        CVexGePoint2d near(0.5, 0.5);
        CVexGePoint2d far(100.0, 100.0);
        CVexGePoint2d found;
        double scale = 1.0;
        entity->Draw(&dc);
        entity->GetOutRect();
        entity->GetGripNumber(near, scale, found);
        entity->isOn(near, 0.001);
        entity->checkInside(near, far);
        entity->checkInsideOrCross(near, far);
        int count = 0;
        std::vector<CVexGePoint2d> crossings;
        entity->intersectWith(CVexGeLine2d(near, far), count, crossings,
                              CVexGeEntity2d::kExtendNone, 0.001);
        entity->TranslateBy({1.0, 1.0});
        entity->RotateBy(0.5, near);
        EXPECT_FALSE(entity->getProperty().empty());
    }
    CVexDbDisplayTableRecord& view = *again.displays().getCurrentRecord();
    CVexDbIdSet picked;
    view.selectEntityByCross(CVexGePoint2d(0.0, 0.0), CVexGePoint2d(10.0, 10.0), picked);
    view.ZoomExt();
    view.Draw(&dc);
    EXPECT_WHOLE(again);
}

INSTANTIATE_TEST_SUITE_P(
    All, NonFiniteTest,
    testing::Values(NumberRow{"NotANumber", std::numeric_limits<double>::quiet_NaN()},
                    NumberRow{"Infinite", std::numeric_limits<double>::infinity()},
                    NumberRow{"MinusInfinite", -std::numeric_limits<double>::infinity()},
                    NumberRow{"Largest", std::numeric_limits<double>::max()},
                    NumberRow{"Huge", 1e300}, NumberRow{"BeyondInt", 1e12},
                    NumberRow{"Denormal", std::numeric_limits<double>::denorm_min()},
                    NumberRow{"MinusZero", -0.0}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
