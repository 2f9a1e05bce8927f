#include "creationfixture.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"

namespace {

class RectCommandTest : public CreationTest {
protected:
    std::unique_ptr<CVexDbRect> run() { return make<CVexDbRect>(VexDb::CmdRect); }
    static void expectSides(const CVexDbRect& rect)
    {
        EXPECT_POINT(10, 20, rect.LeftTop());
        EXPECT_POINT(40, 60, rect.RightBottom());
    }
};

TEST_F(RectCommandTest, TwoClicksAreOppositeCorners)
{
    click({10, 277});
    moveTo({30, 250});
    click({40, 237});
    const auto rect = run();
    ASSERT_NE(nullptr, rect);
    expectSides(*rect);
    EXPECT_POINT(40, 60, database->lastPoint());
}

TEST_F(RectCommandTest, WhicheverCornerComesFirstTheSidesAreSorted)
{
    const wchar_t* const answers[] = {L"10,20\n40,60\n", L"40,60\n10,20\n", L"10,60\n40,20\n"};
    for (const wchar_t* corners : answers) {
        type(corners);
        const auto rect = run();
        ASSERT_NE(nullptr, rect);
        expectSides(*rect);
    }
}

TEST_F(RectCommandTest, ADragAcrossTheFirstCornerStaysSorted)
{
    click({40, 237});
    moveTo({100, 100});
    click({10, 277});
    const auto rect = run();
    ASSERT_NE(nullptr, rect);
    expectSides(*rect);
}

TEST_F(RectCommandTest, APolarCornerCountsFromTheFirst)
{
    type(L"10,20\n50<0\n");
    const auto rect = run();
    ASSERT_NE(nullptr, rect);
    EXPECT_POINT(10, 20, rect->LeftTop());
    EXPECT_POINT(60, 20, rect->RightBottom());
}

TEST_F(RectCommandTest, ANumberAloneIsNoCornerAndIsRefused)
{
    type(L"10,20\n5\n");
    const auto rect = run();
    ASSERT_NE(nullptr, rect);
    EXPECT_POINT(11, 21, rect->RightBottom()); // as it began
    EXPECT_EQ(L"P12: 10,20\nP13: 5\nInvalid input.", told());
    EXPECT_EQ(1u, handler().refusals());
}

} // namespace
