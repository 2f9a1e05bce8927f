#include "commandfixture.h"
#include "probeentity.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"

#include <algorithm>

namespace {

class SnapTest : public CommandTest {
protected:
    SnapTest() { dc.SetROP2(R2_XORPEN); }

    bool snapAt(double x, double y)
    {
        return handler().CheckSnapPoint(blip, CVexGePoint2d(x, y), result);
    }
    ProbeEntity* addProbe(VexDb::ClassType type, CVexGePoint2d center)
    {
        auto* probe = new ProbeEntity(database.get(), type, center);
        CVexDbObjectId id;
        database->addEntity(probe, id);
        return probe;
    }
    void snapToGrid(double step, int divisions)
    {
        settings().m_bGridVisible = true;
        settings().m_bGridPointSnap = true;
        settings().m_dGridStep = step;
        settings().m_nGridDivisions = static_cast<std::uint8_t>(divisions);
    }
    /// Every stroke is there an even number of times: in XOR nothing is left of it.
    bool nothingLeft()
    {
        const auto& strokes = dc.strokes();
        return std::ranges::all_of(strokes, [&](const VexStroke& stroke) {
            return std::ranges::count(strokes, stroke) % 2 == 0;
        });
    }

    CVexGePoint2d blip;
    CVexGePoint2d result{-1, -1};
};

TEST_F(SnapTest, WithNoSnapInForceNothingHappens)
{
    addLine({10, 10}, {50, 10});
    EXPECT_FALSE(snapAt(50, 10));
    EXPECT_POINT(-1, -1, result);
    EXPECT_TRUE(dc.strokes().empty());
}

TEST_F(SnapTest, AGridPointCatchesTheCursorWithinTenPixels)
{
    snapToGrid(100.0, 0);
    EXPECT_TRUE(snapAt(110, 90));
    EXPECT_POINT(100, 100, result);
    EXPECT_FALSE(snapAt(111, 100));
    EXPECT_FALSE(snapAt(100, 89));
}

TEST_F(SnapTest, TheFineStepIsTheStepByOneMoreThanTheDivisions)
{
    snapToGrid(60.0, 2);
    EXPECT_TRUE(snapAt(41, 19));
    EXPECT_POINT(40, 20, result);
}

TEST_F(SnapTest, GridPointsNeedTheGridShown)
{
    snapToGrid(100.0, 0);
    settings().m_bGridVisible = false;
    EXPECT_FALSE(snapAt(100, 100));
    snapToGrid(100.0, 0);
    settings().m_bGridPointSnap = false;
    EXPECT_FALSE(snapAt(100, 100));
}

TEST_F(SnapTest, BelowZeroTheGridPointIsCutAndNotRounded)
{
    showSquare({-2, -2, 2, 2}, 400); // 10 pixels are 0.1
    snapToGrid(1.0, 0);
    EXPECT_FALSE(snapAt(-0.95, 0)); // tests 0, which is far away, not -1
    EXPECT_TRUE(snapAt(0.95, 0));
    EXPECT_POINT(1, 0, result);
    EXPECT_TRUE(snapAt(-1.05, 0));
    EXPECT_POINT(-1, 0, result);
}

TEST_F(SnapTest, AGridStepOfZeroCatchesNothing)
{
    snapToGrid(0.0, 0);
    EXPECT_FALSE(snapAt(0, 0));
}

TEST_F(SnapTest, AGripOfTheEntityUnderTheCursorIsExact)
{
    addLine({10.123, 10.456}, {50.789, 10.456});
    settings().m_bGripSnap = true;
    EXPECT_TRUE(snapAt(49, 11));
    EXPECT_POINT(50.789, 10.456, result);
    EXPECT_POINT(50.789, 10.456, blip);
    EXPECT_FALSE(snapAt(40, 10.5)); // on the line, away from its grips
}

TEST_F(SnapTest, AGripReplacesAGridPointWhoseBlipStaysBehind)
{
    addLine({10, 10}, {52, 10});
    snapToGrid(50.0, 0);
    settings().m_bGripSnap = true;
    addLine({0, 1}, {52, 1});
    EXPECT_TRUE(snapAt(51, 1));
    EXPECT_POINT(52, 1, result);
    const std::size_t both = dc.strokes().size();
    handler().CheckBlipDraw(blip);
    EXPECT_GT(both, dc.strokes().size() - both); // one of the two was taken off
    EXPECT_FALSE(nothingLeft());
}

TEST_F(SnapTest, TwoEntitiesGiveTheirCrossing)
{
    addLine({10, 10}, {50, 10});
    addLine({30, 0}, {30, 40});
    settings().m_bSnapIntersection = true;
    EXPECT_TRUE(snapAt(35, 14));
    EXPECT_POINT(30, 10, result);
}

TEST_F(SnapTest, OfThreeOnlyTheFirstTwoCount)
{
    ProbeEntity* first = addProbe(VexDb::kPolyline, {30, 10});
    ProbeEntity* second = addProbe(VexDb::kLine, {31, 10});
    addProbe(VexDb::kLine, {32, 10});
    first->crossings = {{29, 11}};
    settings().m_bSnapIntersection = true;
    EXPECT_TRUE(snapAt(30, 10));
    EXPECT_POINT(29, 11, result);
    EXPECT_EQ(second, first->met);
    EXPECT_EQ(CVexGeEntity2d::kExtendNone, first->usedKind);
    EXPECT_EQ(0.001, first->usedTol);
}

TEST_F(SnapTest, OfManyCrossingsTheNearestWinsAndTheEarlierATie)
{
    ProbeEntity* first = addProbe(VexDb::kPolyline, {30, 10});
    addProbe(VexDb::kLine, {31, 10});
    first->crossings = {{20, 10}, {34, 10}, {26, 10}, {30, 40}};
    settings().m_bSnapIntersection = true;
    EXPECT_TRUE(snapAt(30, 10));
    EXPECT_POINT(34, 10, result);
}

TEST_F(SnapTest, ABoxAndALineCrossNearTheCursor)
{
    auto* box = new CVexDbBox(database.get());
    box->Set(CVexGePoint2d(10, 10), 20, 20, 0);
    CVexDbObjectId id;
    database->addEntity(box, id);
    addLine({24, 34}, {34, 24});
    settings().m_bSnapIntersection = true;
    EXPECT_TRUE(snapAt(31, 27));
    EXPECT_POINT(30, 28, result);
}

TEST_F(SnapTest, OneEntityAloneIsMetWithItselfIfItsKindCanCrossItself)
{
    settings().m_bSnapIntersection = true;
    for (const auto& [type, crosses] :
         {std::pair(VexDb::kPolyline, true), std::pair(VexDb::kSpline, true),
          std::pair(VexDb::kSpiral, true), std::pair(VexDb::kLine, false),
          std::pair(VexDb::kArc, false)}) {
        ProbeEntity* probe = addProbe(type, {30, 10});
        probe->crossings = {{31, 11}};
        EXPECT_EQ(crosses, snapAt(30, 10)) << type;
        EXPECT_EQ(crosses ? probe : nullptr, probe->met);
        probe->setErased();
    }
}

TEST_F(SnapTest, WithNoCrossingTheIntersectionDoesNotSnap)
{
    addLine({10, 10}, {50, 10});
    addLine({10, 12}, {50, 12});
    settings().m_bSnapIntersection = true;
    EXPECT_FALSE(snapAt(30, 11));
}

TEST_F(SnapTest, TheCentreIsThatOfTheEntityUnderTheCursor)
{
    ProbeEntity* probe = addProbe(VexDb::kCircle, {100, 100});
    probe->hasCenter = true;
    settings().m_bSnapCenter = true;
    EXPECT_TRUE(snapAt(120, 100));
    EXPECT_POINT(100, 100, result);
}

TEST_F(SnapTest, AKindWithoutACentreEndsTheSearch)
{
    addProbe(VexDb::kHatch, {100, 100});
    ProbeEntity* below = addProbe(VexDb::kCircle, {110, 100});
    below->hasCenter = true;
    settings().m_bSnapCenter = true;
    EXPECT_FALSE(snapAt(105, 100)); // the pick is not tried again
}

TEST_F(SnapTest, TheNearestPointIsTheFootItself)
{
    addLine({10, 10}, {50, 10});
    settings().m_bSnapNearest = true;
    EXPECT_TRUE(snapAt(31.25, 12));
    EXPECT_POINT(31.25, 10, result);
    EXPECT_TRUE(snapAt(31.25, 8));
    EXPECT_POINT(31.25, 10, result);
}

TEST_F(SnapTest, OnlyCurvesHaveANearestPoint)
{
    addProbe(VexDb::kText, {100, 100});
    settings().m_bSnapNearest = true;
    EXPECT_FALSE(snapAt(100, 100));
}

TEST_F(SnapTest, TheFirstKindThatSnapsKeepsTheOneShotsBehindItOut)
{
    addLine({10, 10}, {50, 10});
    settings().m_bGripSnap = true;
    settings().m_bSnapNearest = true;
    EXPECT_TRUE(snapAt(48, 11));
    EXPECT_POINT(50, 10, result);
    EXPECT_TRUE(snapAt(40, 11));
    EXPECT_POINT(40, 10, result);
}

TEST_F(SnapTest, TheBlipIsStrokedInXorAndTakenOffByTheNextLook)
{
    addLine({10, 10}, {50, 10});
    settings().m_bGripSnap = true;
    snapAt(49, 10);
    ASSERT_FALSE(dc.strokes().empty());
    EXPECT_EQ(R2_XORPEN, dc.strokes()[0].rop);
    EXPECT_TRUE(handler().isBlipDrawn());
    EXPECT_FALSE(nothingLeft());
    snapAt(300, 200);
    EXPECT_FALSE(handler().isBlipDrawn());
    EXPECT_TRUE(nothingLeft());
}

TEST_F(SnapTest, EachKindHasItsShape)
{
    handler().DrawBlip({100, 100}, &dc, 6); // a diamond
    ASSERT_EQ(1u, dc.strokes().size());
    EXPECT_EQ(VexStroke::Kind::kPolygon, dc.strokes()[0].kind);
    dc.clear();
    handler().DrawBlip({100, 100}, &dc, 1); // a circle, 10 pixels about its middle
    ASSERT_EQ(1u, dc.strokes().size());
    EXPECT_EQ(VexStroke::Kind::kEllipse, dc.strokes()[0].kind);
    EXPECT_EQ(20, std::abs(dc.strokes()[0].points[1].x - dc.strokes()[0].points[0].x));
    dc.clear();
    handler().DrawBlip({100, 100}, &dc, 3); // a cross
    EXPECT_EQ(2u, dc.strokes().size());
}

TEST_F(SnapTest, StyleZeroRepeatsTheLastShape)
{
    handler().DrawBlip({100, 100}, &dc, 8);
    handler().DrawBlip({100, 100}, &dc, 0);
    EXPECT_EQ(0u, dc.strokes().size() % 2);
    EXPECT_TRUE(nothingLeft());
}

TEST_F(SnapTest, ABlipLeavesThePointSettingsOfTheDrawing)
{
    settings().m_nPointStyle = 5;
    settings().m_nPointSize = 33;
    handler().DrawBlip({100, 100}, &dc, 8);
    EXPECT_EQ(5, settings().m_nPointStyle);
    EXPECT_EQ(33, settings().m_nPointSize);
}

TEST_F(SnapTest, ABlipNeedsNoContextAndIsNoEntity)
{
    const std::size_t shown = view->displayedIdSet()->size();
    handler().DrawBlip({100, 100}, nullptr, 8);
    handler().DrawBlip({100, 100}, &dc, 8);
    EXPECT_EQ(shown, view->displayedIdSet()->size());
    EXPECT_TRUE(database->selfCheck().empty());
}

TEST_F(SnapTest, SnapCharactersArmTheirOneShot)
{
    EXPECT_TRUE(handler().CheckSnapChar(L'I'));
    EXPECT_TRUE(settings().m_bSnapIntersection);
    EXPECT_TRUE(handler().CheckSnapChar(L'C'));
    EXPECT_TRUE(settings().m_bSnapCenter);
    EXPECT_TRUE(handler().CheckSnapChar(L'N'));
    EXPECT_TRUE(settings().m_bSnapNearest);
    EXPECT_FALSE(handler().CheckSnapChar(L'i'));
    EXPECT_FALSE(handler().CheckSnapChar(L'X'));
    EXPECT_FALSE(handler().CheckSnapChar(L'\0'));
    handler().clearSnaps();
    EXPECT_FALSE(settings().m_bSnapIntersection || settings().m_bSnapCenter ||
                 settings().m_bSnapNearest);
}

// The same inside an input.
class SnappedInputTest : public SnapTest {
protected:
    SnappedInputTest()
    {
        dc.SetROP2(R2_COPYPEN);
        addLine({10, 197}, {50, 197});
        settings().m_bGripSnap = true;
    }
    CVexGePoint2d point;
};

TEST_F(SnappedInputTest, TheClickTakesTheSnapAndNoStrokeIsLeft)
{
    moveTo({48, 100});
    moveTo({49, 101});
    click({49, 99});
    EXPECT_EQ(InputPoint, handler().GetGePoint(3, point));
    EXPECT_POINT(50, 197, point);
    EXPECT_FALSE(dc.strokes().empty());
    EXPECT_TRUE(nothingLeft());
    expectReleased();
}

TEST_F(SnappedInputTest, TheBlipGoesOnEveryWayOut)
{
    for (const unsigned end : {unsigned{VK_ESCAPE}, unsigned{VK_RETURN}, 0u}) {
        dc.clear();
        moveTo({48, 100});
        if (end != 0) {
            press(end);
        } // else the queue runs dry and the capture goes
        handler().GetGePoint(3, point);
        EXPECT_FALSE(dc.strokes().empty());
        EXPECT_TRUE(nothingLeft());
        expectReleased();
    }
}

TEST_F(SnappedInputTest, AMessageThatMayRepaintFindsNoBlip)
{
    bool drawnMeanwhile = true;
    bool drawnAfterwards = false;
    int ropMeanwhile = 0;
    int ropAfterwards = 0;
    display.setHandler([&](const MSG& sent) {
        if (sent.message == WM_MOUSEWHEEL) {
            drawnMeanwhile = handler().isBlipDrawn();
            ropMeanwhile = dc.GetROP2();
        } else if (sent.message == WM_TIMER) {
            drawnAfterwards = handler().isBlipDrawn();
            ropAfterwards = dc.GetROP2();
        }
        return LRESULT(0);
    });
    moveTo({48, 100});
    mouse(WM_MOUSEWHEEL, {48, 100});
    post(WM_TIMER);
    press(VK_ESCAPE);
    handler().GetGePoint(3, point);
    EXPECT_FALSE(drawnMeanwhile);
    EXPECT_TRUE(drawnAfterwards);
    EXPECT_EQ(R2_COPYPEN, ropMeanwhile);
    EXPECT_EQ(R2_XORPEN, ropAfterwards);
    EXPECT_TRUE(nothingLeft());
}

} // namespace
