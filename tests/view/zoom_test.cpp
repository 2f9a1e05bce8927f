#include "tests/view/viewfixture.h"

#include <limits>

using ZoomTest = ViewTest;

TEST_F(ZoomTest, InAndOutScaleByTheStepAboutTheCentre)
{
    show(); // the centre pixel (210, 148) is (21000, 14900)
    record->ZoomIn(&dc);
    EXPECT_EQ(CRect(4200, 2980, 37800, 26740), record->window());
    record->ZoomPrev(&dc);
    record->ZoomOut(&dc);
    EXPECT_EQ(CRect(-4200, -2980, 46200, 32660), record->window());
}

TEST_F(ZoomTest, AScaleKeepsThePointUnderThePointer)
{
    show();
    const CVexGePoint2d before = record->GetLogicalPoint({100, 50});
    record->ScaleUpDown(&dc, {100, 50}, 0.5, true);
    const CVexGePoint2d after = record->GetLogicalPoint({100, 50});
    EXPECT_EQ(CRect(5000, 12350, 26000, 27200), record->window());
    EXPECT_DOUBLE_EQ(before.x, after.x);
    EXPECT_DOUBLE_EQ(before.y, after.y);
}

TEST_F(ZoomTest, AWindowUnderOneUnitZoomsOutOnly)
{
    showSquare({0, 0, 100, 100}, 100);
    record->ScaleUpDown(&dc, {0, 100}, 0.005, false);
    ASSERT_EQ(CRect(0, 0, 50, 50), record->window());
    record->ZoomIn(&dc);
    EXPECT_EQ(CRect(0, 0, 50, 50), record->window());
    record->ZoomOut(&dc); // about (25, 25)
    EXPECT_EQ(CRect(-5, -5, 55, 55), record->window());
}

TEST_F(ZoomTest, AWindowOverTenMillionUnitsZoomsInOnly)
{
    showSquare({-5000001, -5000001, 5000001, 5000001}, 100);
    const CRect largest(-500000100, -500000100, 500000100, 500000100);
    ASSERT_EQ(largest, record->window());
    record->ZoomOut(&dc);
    EXPECT_EQ(largest, record->window());
    record->ZoomIn(&dc);
    EXPECT_EQ(CRect(-400000080, -400000080, 400000080, 400000080), record->window());
}

TEST_F(ZoomTest, GoingBackTwiceShowsWhatGoingBackOnceDoes)
{
    show();
    record->ZoomIn(&dc);
    record->ZoomPrev(&dc);
    EXPECT_EQ(CRect(0, 0, 42000, 29700), record->window());
    // Going back makes the window its own predecessor: no toggle, on which macros rely.
    record->ZoomPrev(&dc);
    EXPECT_EQ(CRect(0, 0, 42000, 29700), record->window());
}

TEST_F(ZoomTest, GoingBackBeforeAnyZoomChangesNothing)
{
    show();
    record->ZoomPrev(&dc);
    EXPECT_EQ(CRect(0, 0, 42000, 29700), record->window());
    EXPECT_TRUE(dc.strokes().empty());
}

TEST_F(ZoomTest, AWindowIsShownAtTheClientsAspect)
{
    show({400, 400});
    record->ZoomWindow(&dc, CRect(1000, 1000, 3000, 2000));
    EXPECT_EQ(CRect(1000, 500, 3000, 2500), record->window());
    record->ZoomPrev(&dc);
    EXPECT_EQ(CRect(0, -6150, 42000, 35850), record->window());
}

TEST_F(ZoomTest, AWindowSmallerThanThePickBoxBothWaysIsRefused)
{
    show({400, 400}); // pick box 5: 500 logical units
    const CRect before = record->window();
    record->ZoomWindow(&dc, CRect(0, 0, 499, 499));
    EXPECT_EQ(before, record->window());
    record->ZoomWindow(&dc, CRect(0, 0, 499, 500));
    EXPECT_EQ(CRect(0, 0, 499, 500), record->window());
}

TEST_F(ZoomTest, ASideBeyondTheCoordinatesIsHeldAtTheirEnd)
{
    showSquare({0, 0, 100, 100}, 100);
    record->ZoomWindow(&dc, CRect(2100000000, 2100000000, -2100000000, -2100000000));
    EXPECT_EQ(CRect(-1000000000, -1000000000, 1000000000, 1000000000), record->window());
    EXPECT_DOUBLE_EQ(2e7, record->xScale());
}

TEST_F(ZoomTest, TheExtentsOfAnEmptyDrawingAreASmallSheet)
{
    show();
    record->ZoomExt();
    EXPECT_EQ(29.0, settings().m_ptExtentsMax.x);
    EXPECT_EQ(21.0, settings().m_ptExtentsMax.y);
    EXPECT_EQ(CRect(0, 0, 2900, 2100), record->window());
    record->MakeUpDisplayWindow(&dc); // 2100 / (297 / 420) - 2900 = 69.7 more across
    EXPECT_EQ(CRect(-34, 0, 2934, 2100), record->window());
    EXPECT_EQ(CRect(0, 0, 29, 21), record->displayWindow());
}

TEST_F(ZoomTest, ExtentsGoByTheGripsOfVisibleEntities)
{
    show();
    addLine({-10.0, 5.0}, {50.0, 8.0});
    addLine({0.0, 0.0}, {20.0, 300.0})->setInVisable();
    addLine({0.0, 0.0}, {20.0, 400.0})->setErased();
    record->getExtend();
    EXPECT_EQ(-10.0, settings().m_ptExtentsMin.x);
    EXPECT_EQ(0.0, settings().m_ptExtentsMin.y);
    EXPECT_EQ(50.0, settings().m_ptExtentsMax.x);
    EXPECT_EQ(21.0, settings().m_ptExtentsMax.y);
}

TEST_F(ZoomTest, ExtentsSkipCoordinatesThatAreNoPlace)
{
    show();
    const double infinite = std::numeric_limits<double>::infinity();
    addLine({infinite, 0.0}, {40.0, 40.0});
    addLine({std::nan(""), -500.0}, {0.0, -infinite});
    record->ZoomExt();
    EXPECT_EQ(CRect(0, -50000, 4000, 4000), record->window());
}

TEST_F(ZoomTest, AllShowsTheLimitsAndForgetsTheWindowBefore)
{
    show();
    record->ZoomIn(&dc);
    settings().m_ptLimitsMax.x = 840.0;
    settings().m_ptLimitsMax.y = 594.0;
    record->ZoomAll();
    EXPECT_EQ(CRect(0, 0, 84000, 59400), record->window());
    record->MakeUpDisplayWindow(&dc);
    record->ZoomPrev(&dc); // the zoom has made itself the previous window
    EXPECT_EQ(CRect(0, 0, 84000, 59400), record->window());
}

TEST_F(ZoomTest, MovingAddsThePixelsWayWithTheSignOfTheDevice)
{
    show();
    // A point above the centre: in drawing units it lies higher, yet the window goes down. Hosts'
    // scroll commands are made for that sign.
    record->MoveWindow(&dc, {310, 48});
    EXPECT_EQ(CRect(10000, -10000, 52000, 19700), record->window());
}

TEST_F(ZoomTest, PansShiftTheWindow)
{
    show();
    record->PanWindow(&dc, 300, -200);
    EXPECT_EQ(CRect(300, -200, 42300, 29500), record->window());
    EXPECT_FALSE(dc.strokes().empty());
}

TEST_F(ZoomTest, AVectorPansByHundredthsOfTheWindowAlongOneAxis)
{
    show();
    record->PanWindow(&dc, CVexGeVector2d(0.0, 0.0));
    EXPECT_TRUE(dc.strokes().empty());
    record->PanWindow(&dc, CVexGeVector2d(10.0, 7.0)); // 420 x 0.01 x 10 logical units; y waits
    EXPECT_EQ(CRect(42, 0, 42042, 29700), record->window());
    record->PanWindow(&dc, CVexGeVector2d(0.0, -10.0)); // 297 x 0.01 x 10
    EXPECT_EQ(CRect(42, -29, 42042, 29671), record->window());
}

TEST_F(ZoomTest, APanStopsAtTheEndOfTheCoordinates)
{
    show();
    record->PanWindow(&dc, 1000000000, 0);
    EXPECT_EQ(CRect(0, 0, 42000, 29700), record->window());
}

TEST_F(ZoomTest, TheDraggedPanSkipsTheAspect)
{
    show();
    window.resize({420, 420}); // not told to the view
    record->RealPanWindow(&dc, -250, 100);
    EXPECT_EQ(CRect(-250, 100, 41750, 29800), record->window());
    EXPECT_EQ(CRect(-2, 1, 417, 298), record->displayWindow());
    EXPECT_EQ(CPoint(-250, 100), dc.GetWindowOrg());
    EXPECT_EQ(-2.0, settings().m_ptViewMin.x);
    EXPECT_EQ(298.0, settings().m_ptViewMax.y);
    record->PanWindow(&dc, 0, 0); // this one fits the window to the square
    EXPECT_NE(29700, record->window().Height());
}

TEST_F(ZoomTest, WithoutAViewNoZoomChangesAnything)
{
    const CRect before = record->window();
    record->ZoomIn(&dc);
    record->ZoomOut(&dc);
    record->ZoomPrev(&dc);
    record->ZoomWindow(&dc, CRect(0, 0, 5000, 5000));
    record->ZoomExt();
    record->ZoomAll();
    record->MoveWindow(&dc, {5, 5});
    record->PanWindow(&dc, 5, 5);
    record->RealPanWindow(&dc, 5, 5);
    EXPECT_EQ(before, record->window());
    EXPECT_TRUE(dc.strokes().empty());
}

TEST_F(ZoomTest, WithoutAScaleOrAClientOrAContextNoZoomChangesAnything)
{
    record->setView(&window, &dc);
    record->ZoomIn(&dc); // no mapping made yet
    record->PanWindow(&dc, 5, 5);
    EXPECT_EQ(CRect(0, 0, 42000, 29700), record->window());
    show();
    record->ZoomIn(nullptr);
    record->RealPanWindow(nullptr, 5, 5);
    window.resize({0, 0});
    record->ZoomOut(&dc);
    record->MoveWindow(&dc, {5, 5});
    EXPECT_EQ(CRect(0, 0, 42000, 29700), record->window());
}

TEST_F(ZoomTest, AZoomStepThatMakesNoSenseIsRefused)
{
    show();
    for (const double step : {1.0, 2.0, std::nan(""), std::numeric_limits<double>::infinity()}) {
        settings().m_dZoomStep = step;
        record->ZoomIn(&dc);
        EXPECT_EQ(CRect(0, 0, 42000, 29700), record->window()) << step;
    }
}

TEST_F(ZoomTest, AZoomDrawsOnceMoreThanTheScalingItself)
{
    show();
    int drawn = 0;
    addProbe([&](CDC*) { ++drawn; });
    record->ScaleUpDown(&dc, {0, 0}, 0.9, false);
    EXPECT_EQ(1, drawn);
    record->ZoomIn(&dc);
    EXPECT_EQ(3, drawn);
}
