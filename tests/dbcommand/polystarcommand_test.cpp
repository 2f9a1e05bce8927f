#include "creationfixture.h"
#include "tests/vexdb/polylinewords.h"

namespace {

class PolyStarCommandTest : public CreationTest {
protected:
    std::string draw(const wchar_t* typed)
    {
        type(typed);
        return run();
    }
    std::string run()
    {
        made = make<CVexDbPolyline>(VexDb::CmdPolyStar);
        expectReleased();
        return made == nullptr ? "nothing" : wordsOf(*made);
    }

    std::unique_ptr<CVexDbPolyline> made;
};

TEST_F(PolyStarCommandTest, TipsAndCornersTakeTurns)
{
    EXPECT_EQ("60,50 53.535534,53.535534 50,60 46.464466,53.535534 40,50 46.464466,46.464466 "
              "50,40 53.535534,46.464466 closed",
              draw(L"4\n50,50\n5\n10\n"));
    EXPECT_EQ(L"P32: 4\nP4: 50,50\nP33: 5", told());
    EXPECT_EQ(L"P34: 10", line());
    EXPECT_FALSE(made->HasWidth());
    EXPECT_FALSE(made->HasBulge());
}

TEST_F(PolyStarCommandTest, RadiiMayBeClicked)
{
    type(L"2\n50,50\n");
    click({53, 243}); // (53, 54), 5 away
    click({50, 237});
    EXPECT_EQ("60,50 50,55 40,50 50,45 closed", run());
}

TEST_F(PolyStarCommandTest, EnterAtTheCountGives5Arms)
{
    draw(L"\n50,50\n5\n10\n");
    ASSERT_NE(nullptr, made);
    EXPECT_EQ(10u, made->NumVerts());
}

TEST_F(PolyStarCommandTest, WithoutAnInnerRadiusTheArmsMeetInTheCentre)
{
    EXPECT_EQ("60,50 50,50 40,50 50,50 closed", draw(L"2\n50,50\n\n10\n"));
    EXPECT_EQ("60,50 50,50 40,50 50,50 closed", draw(L"2\n50,50\n-3\n10\n"));
    type(L"2\n50,50\n");
    press(VK_ESCAPE);
    EXPECT_EQ("60,50 50,50 40,50 50,50 closed", draw(L"10\n"));
}

TEST_F(PolyStarCommandTest, WithoutAnOuterRadiusThereIsNone)
{
    for (const wchar_t* const outer : {L"0\n", L"-1\n", L"\n", L"60,60\n"}) {
        type(L"4\n50,50\n5\n");
        EXPECT_EQ("nothing", draw(outer)) << outer;
    }
}

TEST_F(PolyStarCommandTest, WithoutArmsOrWithTooManyThereIsNone)
{
    for (const wchar_t* const arms : {L"0\n", L"-4\n", L"x\n", L"100001\n"}) {
        type(arms);
        EXPECT_EQ("nothing", draw(L"50,50\n5\n10\n")) << arms;
    }
}

TEST_F(PolyStarCommandTest, ACancelOrALossEndsIt)
{
    for (const wchar_t* const typed : {L"", L"4\n", L"4\n50,50\n5\n"}) {
        type(typed);
        press(VK_ESCAPE);
        EXPECT_EQ("nothing", run()) << typed;
        EXPECT_EQ("nothing", draw(typed)) << "lost";
    }
    EXPECT_EQ("nothing", draw(L"4\n50,50\n")) << "lost";
}

} // namespace
