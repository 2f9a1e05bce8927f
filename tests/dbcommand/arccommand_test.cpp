#include "creationfixture.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"

#include <numbers>

namespace {

constexpr double kPi = std::numbers::pi;

class ArcCommandTest : public CreationTest {
protected:
    std::unique_ptr<CVexDbArc> run(unsigned long in = 0)
    {
        step = in;
        return make<CVexDbArc>(VexDb::CmdArc, step);
    }
    static void expectArc(const CVexDbArc& arc, CVexGePoint2d center, double radius,
                          double startAngle, double endAngle)
    {
        EXPECT_POINT(center.x, center.y, arc.Center());
        EXPECT_NEAR(radius, arc.Radius(), 1e-12);
        EXPECT_NEAR(startAngle, arc.StartAngle(), 1e-12);
        EXPECT_NEAR(endAngle, arc.EndAngle(), 1e-12);
    }
    /// Puts an arc into the drawing as a command and its host leave it: from (30, 10) over
    /// (20, 20) to (10, 10).
    CVexDbArc* drawArc()
    {
        type(L"30,10\n20,20\n10,10\n");
        CVexDbArc* const arc = run().release();
        CVexDbObjectId id;
        database->addEntity(arc, id);
        return arc;
    }

    unsigned long step = 0;
};

// Three points.

TEST_F(ArcCommandTest, ThreePointsGiveTheArcOverTheSecondOne)
{
    type(L"30,10\n20,20\n10,10\n");
    const auto arc = run();
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {20, 10}, 10, 0.0, kPi);
    EXPECT_POINT(10, 10, database->lastPoint());
    EXPECT_EQ(100u, step);
}

TEST_F(ArcCommandTest, ThreeClicksDoTheSame)
{
    click({30, 287});
    moveTo({25, 280});
    click({20, 277});
    moveTo({15, 285});
    click({10, 287});
    const auto arc = run();
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {20, 10}, 10, 0.0, kPi);
    EXPECT_POINT(10, 10, database->lastPoint());
}

TEST_F(ArcCommandTest, OneDrawnClockwiseIsStoredFromItsLastPointAndGoesOnFromThere)
{
    type(L"10,10\n20,20\n30,10\n");
    const auto arc = run();
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {20, 10}, 10, 0.0, kPi);
    EXPECT_POINT(30, 10, database->lastPoint()); // where the person ended it
}

TEST_F(ArcCommandTest, PolarPointsCountFromTheFirst)
{
    type(L"30,10\n20<90\n20<180\n"); // (30, 30), (10, 10)
    const auto arc = run();
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {20, 20}, 10 * std::sqrt(2.0), 7 * kPi / 4, 5 * kPi / 4);
}

TEST_F(ArcCommandTest, ANumberAloneIsNoSecondPointAndEndsIt)
{
    type(L"30,10\n5\n");
    EXPECT_EQ(nullptr, run());
    EXPECT_EQ(100u, step);
    EXPECT_EQ(0u, backend.queued());
}

TEST_F(ArcCommandTest, ANumberAloneIsNoEndPointAndIsRefused)
{
    type(L"30,10\n20,20\n5\n");
    const auto arc = run();
    ASSERT_NE(nullptr, arc);
    EXPECT_FALSE(handler().setMsg());
    EXPECT_EQ(1u, handler().refusals());
}

// Round a centre.

TEST_F(ArcCommandTest, TheKeyAsksForTheCentreFirst)
{
    type(L"c10,20\n40,20\n"); // the key in any case
    type(L"135\n");
    const auto arc = run();
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {10, 20}, 30, 0.0, 0.75 * kPi);
    EXPECT_POINT(10 - 15 * std::sqrt(2.0), 20 + 15 * std::sqrt(2.0), database->lastPoint());
    EXPECT_EQ(200u, step);
}

TEST_F(ArcCommandTest, AClickEndsTheArcInItsDirection)
{
    type(L"C10,20\n40,20\n");
    moveTo({100, 100});
    click({10, 177}); // above the centre, beyond the arc
    const auto arc = run();
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {10, 20}, 30, 0.0, kPi / 2);
    EXPECT_POINT(10, 50, database->lastPoint()); // on the arc, not where the click was
}

TEST_F(ArcCommandTest, ATypedPointEndsTheArcInItsDirection)
{
    type(L"C10,20\n40,20\n10,120\n");
    const auto arc = run();
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {10, 20}, 30, 0.0, kPi / 2);
    EXPECT_POINT(10, 50, database->lastPoint());
}

TEST_F(ArcCommandTest, OfATextCountsTheAngleThatItBeginsWith)
{
    type(L"C10,20\n40,20\n90deg\n");
    const auto arc = run();
    ASSERT_NE(nullptr, arc);
    EXPECT_NEAR(kPi / 2, arc->EndAngle(), 1e-12);
}

TEST_F(ArcCommandTest, ANegativeEndAngleIsCountedFromTheFullTurn)
{
    type(L"C10,20\n40,20\n-90\n");
    const auto arc = run();
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {10, 20}, 30, 0.0, 1.5 * kPi);
}

TEST_F(ArcCommandTest, AStartOnTheCentreIsNoArc)
{
    type(L"C10,20\n10,20\n");
    EXPECT_EQ(nullptr, run());
    EXPECT_EQ(0u, backend.queued());
}

TEST_F(ArcCommandTest, TheForcedWayAsksForTheCentreWithoutAKey)
{
    type(L"10,20\n10,50\n");
    type(L"180\n");
    const auto arc = run(200);
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {10, 20}, 30, kPi / 2, kPi);
    EXPECT_EQ(200u, step);
}

// By radius and angles.

TEST_F(ArcCommandTest, TheSecondKeyAsksForRadiusAndAngles)
{
    type(L"C10,20\nr30\n45\n90\n");
    const auto arc = run();
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {10, 20}, 30, kPi / 4, kPi / 2);
    EXPECT_EQ(300u, step);
}

TEST_F(ArcCommandTest, RadiusAndAngleMayBeClicked)
{
    type(L"C10,20\nR");
    click({40, 237}); // (40, 60), 50 away
    click({10, 177});
    type(L"180\n");
    const auto arc = run();
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {10, 20}, 50, kPi / 2, kPi);
}

TEST_F(ArcCommandTest, ARadiusThatIsNotAbove0EndsIt)
{
    for (const unsigned long in : {0ul, 300ul}) {
        for (const wchar_t* radius : {L"0\n", L"-5\n", L"40,20\n"}) {
            type(in == 0 ? L"C10,20\nR" : L"10,20\n");
            type(radius);
            EXPECT_EQ(nullptr, run(in)) << in;
            EXPECT_EQ(0u, backend.queued());
        }
    }
}

// An angle of 0 is a cancel in the forced way and a good angle behind the key.
TEST_F(ArcCommandTest, AStartAngleOf0IsRefusedByTheForcedWayAlone)
{
    type(L"10,20\n30\n0\n");
    EXPECT_EQ(nullptr, run(300));
    EXPECT_EQ(0u, backend.queued());
    type(L"C10,20\nR30\n0\n90\n");
    const auto arc = run();
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {10, 20}, 30, 0.0, kPi / 2);
}

TEST_F(ArcCommandTest, TheForcedWayLeavesItsStep)
{
    type(L"10,20\n30\n45\n90\n");
    const auto arc = run(300);
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {10, 20}, 30, kPi / 4, kPi / 2);
    EXPECT_EQ(300u, step);
}

// Going on.

TEST_F(ArcCommandTest, WithNoLastEntityAContinuationAsksLikeAnyArc)
{
    type(L"30,10\n20,20\n10,10\n");
    const auto arc = run(400);
    ASSERT_NE(nullptr, arc);
    EXPECT_EQ(100u, step);
    EXPECT_EQ(L"P21: 30,10\nP6: 20,20", told());
}

TEST_F(ArcCommandTest, ACancelOfThatLeavesTheStepAt0)
{
    press(VK_ESCAPE);
    EXPECT_EQ(nullptr, run(400));
    EXPECT_EQ(0u, step);
}

TEST_F(ArcCommandTest, AnEntityThatWasUndoneIsNoneToGoOnFrom)
{
    CVexDbLine* const line = addLine({0, 0}, {20, 0});
    handler().setLastEntity(line);
    line->setErased();
    type(L"30,10\n20,20\n10,10\n");
    const auto arc = run(400);
    EXPECT_EQ(100u, step);
}

TEST_F(ArcCommandTest, OnFromALineItBeginsAlongTheLine)
{
    handler().setLastEntity(addLine({0, 0}, {20, 0}));
    database->setLastPoint({20, 0});
    type(L"30,10\n");
    const auto arc = run(400);
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {20, 10}, 10, 1.5 * kPi, 0.0);
    EXPECT_POINT(30, 10, database->lastPoint());
    EXPECT_EQ(400u, step);
}

TEST_F(ArcCommandTest, AClickContinuesLikeATypedPoint)
{
    handler().setLastEntity(addLine({0, 100}, {20, 100}));
    database->setLastPoint({20, 100});
    moveTo({200, 40});
    click({30, 187}); // (30, 110)
    const auto arc = run(400);
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {20, 110}, 10, 1.5 * kPi, 0.0);
}

TEST_F(ArcCommandTest, OneThatBendsToTheRightIsStoredFromItsEndAndGoesOnFromThere)
{
    handler().setLastEntity(addLine({0, 20}, {20, 20}));
    database->setLastPoint({20, 20});
    type(L"30,10\n");
    const auto arc = run(400);
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {20, 10}, 10, 0.0, kPi / 2);
    EXPECT_POINT(30, 10, database->lastPoint());
}

TEST_F(ArcCommandTest, OnFromAnArcItTurnsTheOtherWayRound)
{
    CVexDbArc* const first = drawArc(); // ends at (10, 10), downwards
    type(L"0,0\n");
    const auto arc = run(400);
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {0, 10}, 10, 1.5 * kPi, 0.0); // clockwise, so from its end
    EXPECT_POINT(0, 0, database->lastPoint());
    EXPECT_NE(static_cast<CVexDbEntity*>(first), handler().lastEntity());
}

TEST_F(ArcCommandTest, ItGoesOnFromTheStartOfAnArcDrawnClockwise)
{
    type(L"10,10\n20,20\n30,10\n"); // ends at (30, 10), downwards
    const auto first = run();
    type(L"40,0\n");
    const auto arc = run(400);
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {40, 10}, 10, kPi, 1.5 * kPi);
    EXPECT_POINT(40, 0, database->lastPoint());
}

TEST_F(ArcCommandTest, OnTheTangentItIsNearlyStraight)
{
    handler().setLastEntity(addLine({0, 0}, {20, 0}));
    database->setLastPoint({20, 0});
    type(L"60,0\n");
    const auto arc = run(400);
    ASSERT_NE(nullptr, arc);
    EXPECT_NEAR(0.001, arc->Bulge(), 1e-9);
    EXPECT_NEAR(20, arc->StartPoint().x, 1e-9);
    EXPECT_NEAR(60, arc->EndPoint().x, 1e-9);
}

TEST_F(ArcCommandTest, ChainedArcsOfAWaveLeaveEachOtherSmoothly)
{
    handler().setLastEntity(addLine({0, 100}, {20, 100}));
    database->setLastPoint({20, 100});
    type(L"30,110\n"); // a quarter to the left, up at its end
    const auto up = run(400);
    type(L"40,120\n"); // a quarter to the right, level again
    const auto level = run(400);
    ASSERT_NE(nullptr, level);
    expectArc(*level, {40, 110}, 10, kPi / 2, kPi);
    EXPECT_POINT(40, 120, database->lastPoint());
}

TEST_F(ArcCommandTest, ATypedAngleBeyondATurnIsTheSameDirection)
{
    type(L"C10,20\n40,20\n450\n");
    const auto arc = run();
    ASSERT_NE(nullptr, arc);
    EXPECT_NEAR(kPi / 2, arc->EndAngle(), 1e-9);
    type(L"C10,20\nR30\n1000\n90\n");
    const auto second = run();
    ASSERT_NE(nullptr, second);
    EXPECT_NEAR(280.0 * kPi / 180.0, second->StartAngle(), 1e-9);
}

TEST_F(ArcCommandTest, ATypedPointGivesTheStartAngleByItsDirection)
{
    type(L"C10,20\nR30\n10,50\n180\n");
    const auto arc = run();
    ASSERT_NE(nullptr, arc);
    expectArc(*arc, {10, 20}, 30, kPi / 2, kPi);
}

TEST_F(ArcCommandTest, ThreePointsOnOneLineAreRefused)
{
    for (const wchar_t* points : {L"10,10\n20,10\n30,10\n", L"10,10\n10,10\n30,10\n"}) {
        const unsigned long before = handler().refusals();
        type(points);
        EXPECT_EQ(nullptr, run());
        EXPECT_EQ(before + 1, handler().refusals());
    }
    EXPECT_EQ(nullptr, handler().lastEntity());
}

TEST_F(ArcCommandTest, OneBeyondAllMeasureIsRefused)
{
    const unsigned long before = handler().refusals();
    type(L"0,0\n1.7e308,1.7e308\n45\n");
    EXPECT_EQ(nullptr, run(200));
    EXPECT_EQ(before + 1, handler().refusals());
}

} // namespace
