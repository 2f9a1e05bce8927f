#include "platform/device/cdc.h"
#include "tests/view/viewfixture.h"

using MappingTest = ViewTest;

TEST_F(MappingTest, AFreshViewShowsTheDrawingLimits)
{
    EXPECT_EQ(CRect(0, 0, 420, 297), record->displayWindow());
    EXPECT_EQ(CRect(0, 0, 42000, 29700), record->window());
    EXPECT_EQ(0.0, record->xScale());
}

TEST_F(MappingTest, PixelsAndDrawingUnitsConvertBothWays)
{
    show();
    const CVexGePoint2d point = record->GetLogicalPoint({30, 40});
    EXPECT_DOUBLE_EQ(30.0, point.x);
    EXPECT_DOUBLE_EQ(257.0, point.y);
    EXPECT_EQ(CPoint(30, 40), record->GetDecivePoint(point));
    EXPECT_EQ(CPoint(0, 297), record->GetDecivePoint({0.0, 0.0}));
    EXPECT_EQ(CPoint(13, 297), record->GetDecivePoint({12.5, 0.0}));
}

TEST_F(MappingTest, EveryPixelSurvivesTheWayThereAndBackAtOneUnitAPixel)
{
    show();
    for (int x = 0; x < 420; x += 7) {
        for (int y = 0; y < 297; y += 11) {
            const CPoint pixel(x, y);
            ASSERT_EQ(pixel, record->GetDecivePoint(record->GetLogicalPoint(pixel)));
        }
    }
}

TEST_F(MappingTest, ATallerClientWidensTheWindowUpAndDown)
{
    show({400, 300}); // 42000 x 0.75 = 31500: 1800 more, half on each side
    EXPECT_EQ(CRect(0, -900, 42000, 30600), record->window());
    EXPECT_EQ(CRect(0, -9, 420, 306), record->displayWindow());
    EXPECT_DOUBLE_EQ(105.0, record->xScale());
    EXPECT_DOUBLE_EQ(105.0, record->yScale());
}

TEST_F(MappingTest, AWiderClientWidensTheWindowLeftAndRight)
{
    show({800, 400}); // 29700 / 0.5 = 59400: 17400 more
    EXPECT_EQ(CRect(-8700, 0, 50700, 29700), record->window());
    EXPECT_DOUBLE_EQ(74.25, record->xScale());
    EXPECT_EQ(CPoint(400, 200), record->centre());
}

TEST_F(MappingTest, AnAspectWithinAThousandthIsLeftAlone)
{
    record->SetCurDispWin({0, 0}, {10000, 9995});
    show({500, 500}); // 0.9995 against 1
    EXPECT_EQ(CRect(0, 0, 1000000, 999500), record->window());
}

TEST_F(MappingTest, TheContextGetsWindowAndViewportWithYUp)
{
    show({400, 300});
    EXPECT_EQ(MM_ISOTROPIC, dc.GetMapMode());
    EXPECT_EQ(CPoint(0, -900), dc.GetWindowOrg());
    EXPECT_EQ(CPoint(0, 300), dc.GetViewportOrg());
    EXPECT_EQ(CSize(42000, 31500), dc.GetWindowExt());
    EXPECT_EQ(CSize(400, -300), dc.GetViewportExt());
}

TEST_F(MappingTest, TheShownAreaGoesToTheSettingsAndTheLimits)
{
    show({400, 300});
    EXPECT_EQ(-9.0, settings().m_ptViewMin.y);
    EXPECT_EQ(420.0, settings().m_ptViewMax.x);
    CVexGePoint2d first, second;
    record->getLimits(first, second);
    // The first limit has the larger y: the pair is left and bottom, with bottom the upper side.
    EXPECT_EQ(306.0, first.y);
    EXPECT_EQ(-9.0, second.y);
}

TEST_F(MappingTest, AResizeWithoutNoticeTakesTheScaleChangeBackByItsDifference)
{
    show();
    window.resize({840, 594});
    record->MakeUpDisplayWindow(&dc); // factor 0.5: (21000 - 42000) / 2 + 0.5, truncated
    EXPECT_EQ(CRect(-10499, -7424, 52499, 37124), record->window());
}

TEST_F(MappingTest, AShrunkWindowShowsLessOfTheDrawing)
{
    show();
    window.resize({280, 198});
    record->MakeUpDisplayWindow(&dc); // factor 1.5: (63000 - 42000) / 2 - 0.5, truncated
    EXPECT_EQ(CRect(10499, 7424, 31501, 22276), record->window());
}

TEST_F(MappingTest, AShrinkThatWouldTurnTheWindowInsideOutRescales)
{
    show();
    window.resize({140, 99}); // factor 3
    record->MakeUpDisplayWindow(&dc);
    EXPECT_EQ(CRect(0, 0, 42000, 29700), record->window());
    EXPECT_DOUBLE_EQ(300.0, record->xScale());
}

TEST_F(MappingTest, TheClientSeenLastIsSharedByAllViews)
{
    show();
    CVexDbDisplayTableRecord other(database.get());
    other.setView(&window, &dc);
    other.MakeUpDisplayWindow(&dc);
    window.resize({840, 594});
    record->MakeUpDisplayWindow(&dc);
    other.MakeUpDisplayWindow(&dc);
    // The first view has seen the new size, so the second one rescales instead of showing more:
    // hosts that switch views count on it, since they call Onsize on the current one only.
    EXPECT_EQ(CRect(0, 0, 42000, 29700), other.window());
    EXPECT_DOUBLE_EQ(50.0, other.xScale());
}

TEST_F(MappingTest, OnsizeKeepsTheScaleAndTheCentre)
{
    show();
    record->Onsize(440, 307);
    EXPECT_EQ(CRect(-1000, -500, 43000, 30200), record->window());
    window.resize({440, 307});
    record->MakeUpDisplayWindow(&dc);
    EXPECT_EQ(CRect(-1000, -500, 43000, 30200), record->window());
    EXPECT_DOUBLE_EQ(100.0, record->xScale());
}

TEST_F(MappingTest, SizesThatComeBeforeTheNextMappingCountOnce)
{
    show();
    record->Onsize(430, 302);
    record->Onsize(440, 307);
    record->Onsize(440, 307);
    EXPECT_EQ(CRect(-1000, -500, 43000, 30200), record->window());
}

TEST_F(MappingTest, ASavedViewSetsTheWindowToo)
{
    record->SetCurDispWin({10.9, 20.9}, {110.2, 70.8});
    EXPECT_EQ(CRect(10, 20, 110, 70), record->displayWindow());
    EXPECT_EQ(CRect(1000, 2000, 11000, 7000), record->window());
}

TEST_F(MappingTest, AnEmptySavedViewIsIgnored)
{
    record->SetCurDispWin({0.0, 0.0}, {0.0, 0.0});
    record->SetCurDispWin({5.0, 5.0}, {5.9, 90.0});
    record->SetCurDispWin({std::nan(""), 5.0}, {-1.0, 90.0});
    EXPECT_EQ(CRect(0, 0, 42000, 29700), record->window());
    EXPECT_EQ(CRect(0, 0, 420, 297), record->displayWindow());
}

TEST_F(MappingTest, WithoutAViewNothingIsMapped)
{
    record->MakeUpDisplayWindow(&dc);
    record->Onsize(800, 600);
    EXPECT_EQ(CRect(0, 0, 42000, 29700), record->window());
    EXPECT_EQ(MM_TEXT, dc.GetMapMode());
    EXPECT_EQ(CPoint(0, 0), record->GetDecivePoint({100.0, 100.0}));
}

TEST_F(MappingTest, AnEmptyClientAreaChangesNothing)
{
    show();
    window.resize({0, 0});
    record->Onsize(0, 0);
    record->MakeUpDisplayWindow(&dc);
    EXPECT_EQ(CRect(0, 0, 42000, 29700), record->window());
    EXPECT_EQ(CRect(0, 0, 420, 297), record->client());
    EXPECT_DOUBLE_EQ(100.0, record->xScale());
}

TEST_F(MappingTest, FarCoordinatesSaturateAndNoNumberIsZero)
{
    show();
    const double far = 1e300;
    EXPECT_EQ(CPoint(1000000000, -1000000000), record->GetDecivePoint({far, far}));
    EXPECT_EQ(CPoint(-1000000000, 0), record->GetDecivePoint({-far, std::nan("")}));
    record->SetCurDispWin({-far, -far}, {far, far});
    EXPECT_EQ(CRect(-1000000000, -1000000000, 1000000000, 1000000000), record->window());
}

TEST_F(MappingTest, ThePageHasOneUnitAMillimetreWithinItsMargins)
{
    show();
    CVexRecordingDC printer({2000, 2850});
    printer.setPrinting(true);
    printer.SetBkColor(0);
    const std::pair<int, int> caps[] = {{PHYSICALWIDTH, 2100}, {PHYSICALHEIGHT, 2970},
                                        {PHYSICALOFFSETX, 50}, {PHYSICALOFFSETY, 60},
                                        {HORZSIZE, 200},       {VERTSIZE, 287}};
    for (const auto& [index, value] : caps) {
        printer.setDeviceCap(index, value);
    }
    record->MakeUpDisplayWindow(&printer);
    // Client (50, 60, 2000, 2850), aspect 2790 / 1950; area (100, 200, 20200, 29200) is too tall:
    // 29000 / aspect - 20100 = 168.8 more across.
    EXPECT_EQ(RGB(255, 255, 255), printer.GetBkColor());
    EXPECT_EQ(CPoint(15, 200), printer.GetWindowOrg());
    EXPECT_EQ(CSize(20269, 29000), printer.GetWindowExt());
    EXPECT_EQ(CPoint(50, 2850), printer.GetViewportOrg());

    // A lower page grows upwards only, so that its lower margin stays.
    printer.setDeviceCap(VERTSIZE, 250);
    record->MakeUpDisplayWindow(&printer);
    EXPECT_EQ(CPoint(100, 200), printer.GetWindowOrg());
    EXPECT_EQ(CSize(20100, 28758), printer.GetWindowExt());
}

TEST_F(MappingTest, PrintingLeavesTheScreensMappingAsItWas)
{
    show();
    const VexXY viewMax = settings().m_ptViewMax;
    CVexRecordingDC printer({2000, 2850});
    printer.setPrinting(true);
    record->MakeUpDisplayWindow(&printer);
    EXPECT_EQ(CRect(0, 0, 42000, 29700), record->window());
    EXPECT_EQ(CRect(0, 0, 420, 297), record->displayWindow());
    EXPECT_EQ(CRect(0, 0, 420, 297), record->client());
    EXPECT_EQ(CPoint(210, 148), record->centre());
    EXPECT_DOUBLE_EQ(100.0, record->xScale());
    EXPECT_DOUBLE_EQ(100.0, record->yScale());
    EXPECT_EQ(viewMax.x, settings().m_ptViewMax.x);
}
