#include "tests/view/viewfixture.h"

namespace {

class ReadoutTest : public ViewTest {
protected:
    ReadoutTest() { show(); }
    std::string at(CPoint device)
    {
        database->SetCoordinate(&window, &text, &device, nullptr);
        return text.GetWindowText().utf8();
    }
    std::string from(CPoint base, CPoint& point)
    {
        database->SetCoordinate(&window, &text, &point, &base);
        return text.GetWindowText().utf8();
    }
    CVexMemoryWindow text;
};

} // namespace

TEST_F(ReadoutTest, APlainMovementShowsTheDrawingPoint)
{
    show({840, 594});
    record->ZoomAll();
    record->MakeUpDisplayWindow(&dc); // half a unit a pixel
    EXPECT_EQ("10.500000, 286.500000", at({21, 21}));
}

TEST_F(ReadoutTest, GridSnapRoundsByTheWayFromTheLastValue)
{
    showSquare({0, 0, 10, 10}, 100); // a tenth of a unit a pixel, y up
    settings().m_bGridSnap = true;
    EXPECT_EQ("0.000000, 0.000000", at({4, 100}));
    EXPECT_EQ("1.000000, 0.000000", at({6, 100}));
    // From 1 on 1.4 is not half a step further, 1.6 is. On the way back the step comes off the
    // truncated value, so that the read-out overshoots a pointer that turns.
    EXPECT_EQ("1.000000, 0.000000", at({14, 100}));
    EXPECT_EQ("2.000000, 0.000000", at({16, 100}));
    EXPECT_EQ("0.000000, 0.000000", at({14, 100}));
}

TEST_F(ReadoutTest, TheLastValueBelongsToTheProcess)
{
    showSquare({0, 0, 10, 10}, 100);
    at({50, 60});
    EXPECT_DOUBLE_EQ(5.0, CVexDbViewProcess::current().lastReadout.x);
    EXPECT_DOUBLE_EQ(4.0, CVexDbViewProcess::current().lastReadout.y);
    settings().m_bGridSnap = true;
    EXPECT_EQ("5.000000, 4.000000", at({54, 56}));
}

TEST_F(ReadoutTest, TheSizeOfTheGridStepHasNoInfluence)
{
    showSquare({0, 0, 10, 10}, 100);
    settings().m_bGridSnap = true;
    // The read-out works in whole units whenever there is a step at all; the step's size is for
    // picking, and status bars show whole units on purpose.
    settings().m_dGridStep = 2.5;
    EXPECT_EQ("3.000000, 0.000000", at({26, 100}));
    settings().m_dGridStep = 0.0;
    EXPECT_EQ("2.600000, 0.000000", at({26, 100}));
}

TEST_F(ReadoutTest, FromABaseTheCurrentPointIsShownInDrawingUnits)
{
    CPoint point(1234, -50);
    EXPECT_EQ("12.340000, -0.500000", from({0, 0}, point));
    EXPECT_EQ(CPoint(1234, -50), point);
}

TEST_F(ReadoutTest, GridSnapHoldsThePointItself)
{
    settings().m_bGridSnap = true;
    const struct {
        CPoint given;
        CPoint held;
        const char* shown;
    } rows[] = {
        {{1249, 1250}, {1200, 1200}, "12.000000, 12.000000"}, // half a step is not more
        {{1251, 1299}, {1300, 1300}, "13.000000, 13.000000"},
        {{-1249, -1251}, {-1200, -1300}, "-12.000000, -13.000000"},
    };
    for (const auto& row : rows) {
        CPoint point = row.given;
        EXPECT_EQ(row.shown, from({0, 0}, point));
        EXPECT_EQ(row.held, point);
    }
}

TEST_F(ReadoutTest, WithoutAGridStepNothingIsRounded)
{
    settings().m_bGridSnap = true;
    settings().m_dGridStep = 0.0;
    CPoint point(1251, 29);
    EXPECT_EQ("12.510000, 0.290000", from({0, 0}, point));
    EXPECT_EQ(CPoint(1251, 29), point);
}

TEST_F(ReadoutTest, OrthoHoldsThePointToTheNearerAxis)
{
    settings().m_bOrtho = true;
    CPoint steep(150, 400);
    EXPECT_EQ("1.290000, 4.000000", from({129, 100}, steep));
    EXPECT_EQ(CPoint(129, 400), steep);
    CPoint flat(400, 150);
    EXPECT_EQ("4.000000, 1.290000", from({100, 129}, flat));
    EXPECT_EQ(CPoint(400, 129), flat);
}

TEST_F(ReadoutTest, OrthoOfEqualWaysKeepsXAndReplacesY)
{
    settings().m_bOrtho = true;
    CPoint point(300, -100);
    EXPECT_EQ("3.000000, 1.000000", from({100, 100}, point));
    EXPECT_EQ(CPoint(300, 100), point);
}

TEST_F(ReadoutTest, PolarShowsDistanceAndAngleFromTheBase)
{
    settings().m_bPolarReadout = true;
    CPoint up(100, 600);
    EXPECT_EQ("5.000000 < 90.000000", from({100, 100}, up));
    CPoint lowerLeft(-200, -300);
    EXPECT_EQ("5.000000 < 233.130102", from({100, 100}, lowerLeft)); // 3 left, 4 down
    EXPECT_EQ(CPoint(-200, -300), lowerLeft);
}

TEST_F(ReadoutTest, APlainMovementIsNeverPolarNorHeld)
{
    settings().m_bPolarReadout = true;
    settings().m_bOrtho = true;
    EXPECT_EQ("30.000000, 257.000000", at({30, 40}));
}

TEST_F(ReadoutTest, WithoutATextWindowThePointIsHeldAllTheSame)
{
    settings().m_bOrtho = true;
    CPoint base(0, 0);
    CPoint point(500, 20);
    database->SetCoordinate(nullptr, nullptr, &point, &base);
    EXPECT_EQ(CPoint(500, 0), point);
    database->SetCoordinate(nullptr, &text, nullptr, nullptr);
    EXPECT_EQ("", text.GetWindowText().utf8());
}
