#include "creationfixture.h"
#include "tests/vexdb/polylinewords.h"

namespace {

class PolygonCommandTest : public CreationTest {
protected:
    std::string draw(const wchar_t* typed)
    {
        type(typed);
        return run();
    }
    std::string run()
    {
        step = 7;
        made = make<CVexDbPolyline>(VexDb::CmdPolygon, step);
        expectReleased();
        return made == nullptr ? "nothing" : wordsOf(*made);
    }

    unsigned long step = 0;
    std::unique_ptr<CVexDbPolyline> made;
};

TEST_F(PolygonCommandTest, AnInscribedOneHasItsFirstCornerWhereTheBandEnds)
{
    EXPECT_EQ("60,50 50,60 40,50 50,40 closed", draw(L"4\n50,50\ni60,50\n"));
    EXPECT_EQ(20000u, step);
    EXPECT_EQ(made.get(), handler().lastEntity());
    EXPECT_EQ("50,60 40,50 50,40 60,50 closed", draw(L"4\n50,50\nI10<90\n"));
}

TEST_F(PolygonCommandTest, ACircumscribedOneHasTheMiddleOfASideThere)
{
    EXPECT_EQ("60,60 40,60 40,40 60,40 closed", draw(L"4\n50,50\no60,50\n"));
    EXPECT_EQ(30000u, step);
}

TEST_F(PolygonCommandTest, AnythingButTheKeyOfInscribedMeansCircumscribed)
{
    EXPECT_EQ("60,60 40,60 40,40 60,40 closed", draw(L"4\n50,50\n\n60,50\n"));
    EXPECT_EQ(30000u, step);
    type(L"4\n50,50\n");
    press(VK_ESCAPE);
    EXPECT_EQ("60,60 40,60 40,40 60,40 closed", draw(L"10\n"));
    EXPECT_EQ(30000u, step);
}

TEST_F(PolygonCommandTest, ATriangleByItsEdgeLiesToTheLeftOfTheDrag)
{
    EXPECT_EQ("0,0 10,0 5,8.660254 closed", draw(L"3\ne0,0\n10,0\n"));
    EXPECT_EQ(10000u, step);
    EXPECT_EQ("10,0 0,0 5,-8.660254 closed", draw(L"3\nE10,0\n0,0\n"));
}

TEST_F(PolygonCommandTest, TheDialogueAsksForCountPlaceWayAndSize)
{
    draw(L"6\n50,50\n");
    EXPECT_EQ(L"P17: ", line());
    std::vector<int> asked;
    const auto watch = [&] { whileWaiting([&] { asked.push_back(handler().currentPrompt()); }); };
    watch();
    type(L"6\n");
    watch();
    type(L"e");
    watch();
    type(L"1,1\n");
    watch();
    type(L"5,1\n");
    run();
    type(L"6\n50,50\ni");
    watch();
    type(L"5\n");
    run();
    EXPECT_EQ((std::vector<int>{15, 16, 1, 2, 9}), asked);
}

TEST_F(PolygonCommandTest, EnterAtTheCountGives4)
{
    EXPECT_EQ("60,50 50,60 40,50 50,40 closed", draw(L"\n50,50\ni10\n"));
}

TEST_F(PolygonCommandTest, AClickSizesIt)
{
    type(L"4\n50,50\ni");
    moveTo({100, 100});
    click({70, 247});
    EXPECT_EQ("70,50 50,70 30,50 50,30 closed", run());
}

TEST_F(PolygonCommandTest, EnterTakesWhatIsShown)
{
    type(L"4\n50,50\ni");
    moveTo({70, 247});
    type(L"\n");
    EXPECT_EQ("70,50 50,70 30,50 50,30 closed", run());
}

TEST_F(PolygonCommandTest, FewerThan3SidesAndMoreThanThereAreWordsForMakeNone)
{
    for (const wchar_t* const sides :
         {L"2\n", L"0\n", L"-5\n", L"x\n", L"10000\n", L"99999999\n"}) {
        type(sides);
        EXPECT_EQ("nothing", draw(L"50,50\ni60,50\n")) << sides;
    }
}

TEST_F(PolygonCommandTest, ACancelEndsItWhereverItComes)
{
    for (const wchar_t* const typed : {L"", L"4\n", L"4\ne", L"4\n50,50\ni", L"4\ne0,0\n"}) {
        type(typed);
        press(VK_ESCAPE);
        EXPECT_EQ("nothing", run()) << typed;
        EXPECT_EQ(0u, backend.queued());
        EXPECT_EQ("nothing", draw(typed)) << "lost";
    }
    EXPECT_EQ(nullptr, handler().lastEntity());
}

} // namespace
