#include "creationfixture.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"

namespace {

class CircleCommandTest : public CreationTest {
protected:
    std::unique_ptr<CVexDbCircle> run() { return make<CVexDbCircle>(VexDb::CmdCircle); }
};

TEST_F(CircleCommandTest, AClickGivesThePointThatTheCircleGoesThrough)
{
    click({10, 197});
    moveTo({20, 100});
    click({40, 157}); // 30 to the right of the centre and 40 above
    const auto circle = run();
    ASSERT_NE(nullptr, circle);
    EXPECT_POINT(10, 100, circle->Center());
    EXPECT_DOUBLE_EQ(50.0, circle->Radius());
    EXPECT_POINT(40, 140, database->lastPoint());
}

TEST_F(CircleCommandTest, ATypedRadiusIsKeptToTheLastBitAndShown)
{
    const int before = display.invalidations();
    type(L"0.123456789,1\n12.000000001\n");
    const auto circle = run();
    ASSERT_NE(nullptr, circle);
    EXPECT_EQ(0.123456789, circle->Center().x);
    EXPECT_EQ(12.000000001, circle->Radius());
    EXPECT_EQ(before + 1, display.invalidations());
}

TEST_F(CircleCommandTest, OfATextCountsTheNumberThatItBeginsWith)
{
    type(L"10,10\n7mm\n");
    const auto circle = run();
    ASSERT_NE(nullptr, circle);
    EXPECT_DOUBLE_EQ(7.0, circle->Radius());
}

struct NoRadius {
    const char* name;
    const wchar_t* answer;
};

std::ostream& operator<<(std::ostream& out, const NoRadius& row)
{
    return out << row.name;
}

class NoRadiusTest : public CircleCommandTest, public testing::WithParamInterface<NoRadius> {};

// A circle comes of it all the same, with the radius of 1 that it began with; a script hears of it.
TEST_P(NoRadiusTest, LeavesTheRadiusThatTheCircleBeganWith)
{
    const unsigned long before = handler().refusals();
    type(L"10,10\n");
    type(GetParam().answer);
    const auto circle = run();
    ASSERT_NE(nullptr, circle);
    EXPECT_DOUBLE_EQ(1.0, circle->Radius());
    EXPECT_EQ(before + 1, handler().refusals());
    EXPECT_EQ(0, display.invalidations());
    EXPECT_EQ(circle.get(), handler().lastEntity());
}

constexpr NoRadius kNoRadius[] = {{"Zero", L"0\n"},
                                  {"Negative", L"-3\n"},
                                  {"Point", L"20,10\n"},
                                  {"Polar", L"5<90\n"},
                                  {"Word", L"wide\n"}};
INSTANTIATE_TEST_SUITE_P(Answers, NoRadiusTest, testing::ValuesIn(kNoRadius),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(CircleCommandTest, EnterAtTheRadiusMakesNothing)
{
    type(L"10,10\n\n");
    EXPECT_EQ(nullptr, run());
    EXPECT_EQ(nullptr, handler().lastEntity());
    EXPECT_EQ(L"P9: ", line()); // what is cancelled stays for the host to flush
}

TEST_F(CircleCommandTest, EnterAtTheCentreTakesTheLastPoint)
{
    database->setLastPoint({30, 40});
    type(L"\n5\n");
    const auto circle = run();
    ASSERT_NE(nullptr, circle);
    EXPECT_POINT(30, 40, circle->Center());
}

TEST_F(CircleCommandTest, ASnappedRadiusMeetsItsTargetExactly)
{
    addLine({60.789, 100.456}, {200, 250});
    settings().m_bGripSnap = true;
    type(L"10,100.456\n");
    click({60, 196});
    const auto circle = run();
    ASSERT_NE(nullptr, circle);
    EXPECT_EQ(60.789 - 10.0, circle->Radius());
}

TEST_F(CircleCommandTest, ItEndsWithItsLineInTheHistory)
{
    type(L"10,10\n5\n");
    const auto circle = run();
    EXPECT_EQ(L"", line());
    EXPECT_EQ(L"P4: 10,10\nP9: 5", told());
    EXPECT_EQ(VexDb::PromptNone, handler().currentPrompt());
}

} // namespace
