#include "creationfixture.h"
#include "tests/dbtracker/trackerfixture.h"
#include "tests/vexdb/polylinewords.h"

namespace {

/// What became of a polyline command; "nothing" when it made none.
std::string wordsOf(const std::unique_ptr<CVexDbPolyline>& made)
{
    return made == nullptr ? "nothing" : wordsOf(*made);
}

class PolylineCommandTest : public CreationTest {
protected:
    /// What comes of what is typed, all of which is taken.
    std::string draw(const wchar_t* typed, unsigned long in = 0)
    {
        type(typed);
        return run(VexDb::CmdPolyline, in);
    }
    std::string drawByArcs(const wchar_t* typed)
    {
        type(typed);
        return run(VexDb::CmdArcPolyline, 0);
    }
    std::string run(VexDb::CommandID id = VexDb::CmdPolyline, unsigned long in = 0)
    {
        step = in;
        made = make<CVexDbPolyline>(id, step);
        EXPECT_EQ(0u, backend.queued());
        expectReleased();
        return wordsOf(made);
    }
    /// Types, and looks which prompt stands behind each part.
    void typeWatched(std::initializer_list<const wchar_t*> parts)
    {
        for (const wchar_t* const part : parts) {
            type(part);
            whileWaiting([this] { prompted.push_back(handler().currentPrompt()); });
        }
    }

    unsigned long step = 0;
    std::unique_ptr<CVexDbPolyline> made;
    std::vector<int> prompted;
};

// Lines.

TEST_F(PolylineCommandTest, PointsAreVerticesUntilEnter)
{
    EXPECT_EQ("1,1 10,1 10,5", draw(L"1,1\n10,1\n10,5\n\n"));
    EXPECT_EQ(L"Start point: 1,1\nP18: 10,1\nP18: 10,5", told());
    EXPECT_EQ(made.get(), handler().lastEntity());
    EXPECT_FALSE(made->IsDbEntity()); // the host adds it
    EXPECT_FALSE(made->HasWidth());
    EXPECT_EQ(0u, step);
}

TEST_F(PolylineCommandTest, ClicksDoTheSame)
{
    click({10, 287});
    moveTo({25, 280});
    click({30, 287});
    moveTo({31, 200});
    click({30, 267});
    type(L"\n");
    EXPECT_EQ("10,10 30,10 30,30", run());
}

TEST_F(PolylineCommandTest, PolarPointsAndNumbersCountFromTheLastVertex)
{
    EXPECT_EQ("1,1 1,6 -2,6", draw(L"1,1\n5<90\n3<180\n\n"));
    EXPECT_EQ("1,1 6,1 8,1", draw(L"1,1\n5\n2\n\n")); // a number goes to the right
    EXPECT_EQ(0u, handler().refusals());
}

TEST_F(PolylineCommandTest, EnterBehindTheFirstPointGivesNothing)
{
    EXPECT_EQ("nothing", draw(L"1,1\n\n"));
    EXPECT_EQ(nullptr, handler().lastEntity());
}

TEST_F(PolylineCommandTest, ACancelDropsAllVertices)
{
    type(L"1,1\n10,1\n10,5\n");
    press(VK_ESCAPE);
    EXPECT_EQ("nothing", run());
    type(L"1,1\n10,1\n10,5\n");
    mouse(WM_RBUTTONDOWN, {5, 5});
    EXPECT_EQ("nothing", run());
    press(VK_ESCAPE);
    EXPECT_EQ("nothing", run());
    EXPECT_EQ(nullptr, handler().lastEntity());
}

TEST_F(PolylineCommandTest, ALossDropsThemToo)
{
    EXPECT_EQ("nothing", draw(L"1,1\n10,1\n10,5\n"));
    EXPECT_EQ("nothing", draw(L"1,1\n"));
    EXPECT_EQ("nothing", draw(L"1,1\n10,1\np20,2\n"));
}

TEST_F(PolylineCommandTest, ATextThatNamesNothingIsRefusedAndAskedAgain)
{
    EXPECT_EQ("1,1 10,1 10,5", draw(L"1,1\n10,1\nzz\n10,5\n\n"));
    EXPECT_EQ(1u, handler().refusals());
}

TEST_F(PolylineCommandTest, APlaceBeyondAllMeasureIsRefused)
{
    EXPECT_EQ("nothing", draw(L"0,0\n1e308\n1e308\n\n"));
    EXPECT_EQ(nullptr, handler().lastEntity());
    EXPECT_GE(handler().refusals(), 1u);
}

// Hosts end the vertices by Enter whatever moved the cursor; elsewhere it would count as a click.
TEST_F(PolylineCommandTest, EnterBehindArrowKeysEndsTheVertices)
{
    type(L"1,1\n10,1\n");
    moveTo({50, 50});
    press(VK_RIGHT);
    post(WM_KEYUP, VK_RIGHT);
    type(L"\n");
    EXPECT_EQ("1,1 10,1", run());
}

// Arcs.

TEST_F(PolylineCommandTest, AThreePointArcTakesTwoPoints)
{
    typeWatched({L"30,10\n", L"p", L"20,20\n", L"10,10\n"});
    type(L"\n");
    EXPECT_EQ("30,10 b1 10,10", run());
    EXPECT_EQ((std::vector<int>{18, 20, 5, 20}), prompted);
}

TEST_F(PolylineCommandTest, OneThatRunsClockwiseHasANegativeBulge)
{
    EXPECT_EQ("10,10 b-1 30,10", draw(L"10,10\np20,20\n30,10\n\n"));
    EXPECT_EQ("0,0 10,10 b-1 30,10 b1 50,10", draw(L"0,0\n10,10\np20,20\n30,10\n40,0\n50,10\n\n"));
}

TEST_F(PolylineCommandTest, ArcsByTwoClicksEach)
{
    click({30, 287});
    type(L"P");
    moveTo({25, 280});
    click({20, 277});
    moveTo({15, 285});
    click({10, 287});
    type(L"\n");
    EXPECT_EQ("30,10 b1 10,10", run());
}

TEST_F(PolylineCommandTest, AnArcThatHardlyBendsIsStraight)
{
    EXPECT_EQ("0,0 100,0", draw(L"0,0\np50,-0.025\n100,0\n\n")); // a bulge of 0.0005
    EXPECT_EQ("0,0 b0.002 100,0", draw(L"0,0\np50,-0.1\n100,0\n\n"));
    EXPECT_EQ("0,0 b-0.002 100,0", draw(L"0,0\np50,0.1\n100,0\n\n"));
}

TEST_F(PolylineCommandTest, ThreePointsThatAreNoArcAreALine)
{
    EXPECT_EQ("0,0 10,0", draw(L"0,0\np5,0\n10,0\n\n"));
    EXPECT_EQ("0,0 10,0", draw(L"0,0\np0,0\n10,0\n\n"));
    EXPECT_EQ("0,0 10,0", draw(L"0,0\np10,0\n10,0\n\n"));
    EXPECT_EQ("0,0 0,0", draw(L"0,0\np5,5\n0,0\n\n"));
}

TEST_F(PolylineCommandTest, ATangentArcGoesOnFromALine)
{
    typeWatched({L"0,0\n20,0\n", L"a", L"30,10\n"});
    type(L"\n");
    EXPECT_EQ("0,0 20,0 b0.414214 30,10", run());
    EXPECT_EQ((std::vector<int>{18, 19, 19}), prompted);
    EXPECT_EQ("0,20 20,20 b-0.414214 30,10", draw(L"0,20\n20,20\na30,10\n\n"));
}

TEST_F(PolylineCommandTest, TangentArcsGoOnFromEachOther)
{
    EXPECT_EQ("0,100 20,100 b0.414214 30,110 b-0.414214 40,120",
              draw(L"0,100\n20,100\na30,110\n40,120\n\n"));
    EXPECT_EQ("10,10 b-1 30,10 b1 50,10", draw(L"10,10\np20,20\n30,10\na50,10\n\n"));
}

TEST_F(PolylineCommandTest, WithNothingBeforeItATangentArcLeavesAlongX)
{
    EXPECT_EQ("10,10 b0.414214 20,20", draw(L"10,10\na20,20\n\n"));
    EXPECT_EQ("10,10 20,10", draw(L"10,10\na20,10\n\n")); // and nearly straight is straight
}

TEST_F(PolylineCommandTest, BehindThreePointsThatAreNoArcATangentArcGoesOnFromTheLine)
{
    EXPECT_EQ("0,0 10,0 b0.414214 20,10", draw(L"0,0\np5,0\n10,0\na20,10\n\n"));
    EXPECT_EQ("0,0 10,0 b0.414214 20,10", draw(L"0,0\np0,0\n10,0\na20,10\n\n"));
    EXPECT_EQ("0,0 0,10 b-0.414214 10,20", draw(L"0,0\np0,10\n0,10\na10,20\n\n"));
    EXPECT_EQ("0,0 10,0 20,0", draw(L"0,0\np5,0\n10,0\n30,0\n40,0\nu20,0\n\n"));
}

TEST_F(PolylineCommandTest, LGoesBackToLines)
{
    typeWatched({L"0,0\na10,10\n", L"l", L"20,10\n"});
    type(L"\n");
    EXPECT_EQ("0,0 b0.414214 10,10 20,10", run());
    EXPECT_EQ((std::vector<int>{19, 18, 18}), prompted);
    EXPECT_EQ("0,0 20,0", draw(L"0,0\nl20,0\n\n")); // among lines it does nothing
}

TEST_F(PolylineCommandTest, AKeyInTheMiddleOfAnArcDropsItsSecondPoint)
{
    EXPECT_EQ("30,10 10,10", draw(L"30,10\np20,20\nl10,10\n\n"));
    EXPECT_EQ("30,10 b0.414214 40,20", draw(L"30,10\np20,20\na40,20\n\n"));
    EXPECT_EQ("30,10 b1 10,10", draw(L"30,10\np99,99\np20,20\n10,10\n\n"));
    EXPECT_EQ("30,10 b1 10,10", draw(L"30,10\np99,99\nu20,20\n10,10\n\n"));
    EXPECT_EQ("0,0 50,0 closed", draw(L"0,0\n50,0\np20,20\no"));
}

TEST_F(PolylineCommandTest, ADroppedPointIsNotTheLastOne)
{
    CVexGePoint2d during;
    type(L"30,10\np20,20\nl");
    whileWaiting([&] { during = database->lastPoint(); });
    type(L"\n");
    EXPECT_EQ("nothing", run());
    EXPECT_POINT(30, 10, during);
}

// The other keys.

TEST_F(PolylineCommandTest, OClosesAndEnds)
{
    EXPECT_EQ("0,0 10,0 10,10 closed", draw(L"0,0\n10,0\n10,10\no"));
    EXPECT_EQ(made.get(), handler().lastEntity());
    EXPECT_EQ("0,0 10,0 closed", draw(L"0,0\n10,0\nO"));
}

TEST_F(PolylineCommandTest, BehindAnArcItClosesSmoothly)
{
    EXPECT_EQ("0,0 10,0 b1 10,10 b0.414214 closed", draw(L"0,0\n10,0\na10,10\no"));
}

TEST_F(PolylineCommandTest, OBeforeASecondVertexGivesNothing)
{
    EXPECT_EQ("nothing", draw(L"0,0\no"));
    EXPECT_EQ("nothing", draw(L"0,0\np10,10\no"));
}

TEST_F(PolylineCommandTest, UTakesTheLastVertexBack)
{
    EXPECT_EQ("0,0 10,0 10,10", draw(L"0,0\n10,0\n20,0\nu10,10\n\n"));
    EXPECT_EQ("0,0 0,5", draw(L"0,0\n10,0\n20,0\nuu5<90\n\n"));
}

TEST_F(PolylineCommandTest, UWithOnlyTheFirstVertexIsIgnored)
{
    EXPECT_EQ("0,0 10,0", draw(L"0,0\nuu10,0\n\n"));
    EXPECT_EQ("0,0 b0.414214 10,10", draw(L"0,0\nau10,10\n\n"));
}

TEST_F(PolylineCommandTest, BehindUTheSegmentBeforeTellsTheMode)
{
    EXPECT_EQ("0,0 10,0 20,0", draw(L"0,0\n10,0\na20,10\nu20,0\n\n"));
    EXPECT_EQ("0,0 b0.414214 10,10 b-0.414214 20,20", draw(L"0,0\na10,10\n0,20\nu20,20\n\n"));
    EXPECT_EQ("0,0 b0.414214 10,10 b-0.414214 20,20", draw(L"0,0\na10,10\nl0,20\nu20,20\n\n"));
    EXPECT_EQ("0,0 20,0", draw(L"0,0\na10,10\nu20,0\n\n"));
}

TEST_F(PolylineCommandTest, AnArcTakenBackLeavesNoBulge)
{
    EXPECT_EQ("0,0 10,0 10,10 closed", draw(L"0,0\n10,0\n10,10\na0,10\nuo"));
}

TEST_F(PolylineCommandTest, WChangesNothing)
{
    typeWatched({L"0,0\n10,0\n", L"w", L"20,0\n"});
    type(L"\n");
    EXPECT_EQ("0,0 10,0 20,0", run());
    EXPECT_EQ((std::vector<int>{18, 18, 18}), prompted);
    EXPECT_FALSE(made->HasWidth());
    EXPECT_EQ("30,10 b1 10,10", draw(L"30,10\np20,20\nw10,10\n\n"));
}

// Begun with an arc.

TEST_F(PolylineCommandTest, AnArcPolylineBeginsWithThreePoints)
{
    EXPECT_EQ("30,10 b1 10,10", drawByArcs(L"30,10\n20,20\n10,10\n\n"));
    EXPECT_EQ(L"Start point: 30,10\nP6: 20,20\nEnd point: 10,10", told());
    EXPECT_EQ(100u, step);
    EXPECT_EQ("30,10 b1 10,10", draw(L"30,10\n20,20\n10,10\n\n", 100));
    EXPECT_EQ(100u, step);
}

TEST_F(PolylineCommandTest, ItGoesOnAsAnyPolyline)
{
    EXPECT_EQ("30,10 b1 10,10 b1 -10,10", drawByArcs(L"30,10\n20,20\n10,10\n0,20\n-10,10\n\n"));
    EXPECT_EQ("30,10 b1 10,10 0,0", drawByArcs(L"30,10\n20,20\n10,10\nl0,0\n\n"));
    EXPECT_EQ("30,10 40,40", drawByArcs(L"30,10\n20,20\nl40,40\n\n"));
}

TEST_F(PolylineCommandTest, WithoutASecondPointItIsNone)
{
    EXPECT_EQ("nothing", drawByArcs(L"30,10\n5\n")); // a number names no point there
    EXPECT_EQ("nothing", drawByArcs(L"30,10\n20,20\n\n"));
    type(L"30,10\n");
    press(VK_ESCAPE);
    EXPECT_EQ("nothing", run(VexDb::CmdArcPolyline));
    EXPECT_EQ(100u, step);
}

// What is to be seen meanwhile.

class PolylinePictureTest : public TrackerTest {
protected:
    /// How many strokes stand in XOR.
    void countShown()
    {
        whileWaiting([this] { shown.push_back(leftOver().size()); });
    }
    void runCancelled()
    {
        unsigned long step = 0;
        press(VK_ESCAPE);
        EXPECT_EQ(nullptr, handler().DoCommand(VexDb::CmdPolyline, step));
    }

    std::vector<std::size_t> shown;
};

TEST_F(PolylinePictureTest, AcceptedSegmentsStayAndUTakesThemOff)
{
    type(L"10,10\n");
    countShown();
    type(L"20,10\n");
    countShown();
    type(L"a30,20\n");
    countShown();
    type(L"u");
    countShown();
    type(L"u");
    countShown();
    runCancelled();
    // The band's copy, and then one stroke more for each segment.
    EXPECT_EQ((std::vector<std::size_t>{1, 2, 3, 2, 1}), shown);
    EXPECT_TRUE(leftOver().empty());
}

TEST_F(PolylinePictureTest, TheSecondPointOfAnArcIsAskedWithABandAlone)
{
    std::vector<VexStroke> seen;
    type(L"10,10\np");
    moveAt(20, 15);
    whileWaiting([&] { seen = leftOver(); });
    runCancelled();
    ASSERT_EQ(1u, seen.size());
    EXPECT_EQ((std::vector{px(10, 10), px(20, 15)}), seen[0].points);
    EXPECT_EQ(kBand, seen[0].color);
    EXPECT_TRUE(leftOver().empty());
}

TEST_F(PolylinePictureTest, ThreePointsThatAreNoArcShowALine)
{
    std::vector<VexStroke> seen;
    type(L"10,10\np15,10\n20,10\n");
    whileWaiting([&] { seen = leftOver(); });
    type(L"u");
    runCancelled();
    ASSERT_EQ(2u, seen.size()); // it and the band, of no length yet
    EXPECT_EQ((std::vector{px(10, 10), px(20, 10)}), seen[0].points);
    EXPECT_EQ((std::vector{px(20, 10), px(20, 10)}), seen[1].points);
    EXPECT_TRUE(leftOver().empty());
}

TEST_F(PolylinePictureTest, ARepaintFindsNothingInXorAndAllOfItComesBack)
{
    std::vector<std::size_t> atPaint;
    display.setHandler([&](const MSG& sent) {
        if (sent.message == WM_PAINT) {
            atPaint.push_back(leftOver().size());
        } else if (sent.message == WM_TIMER) {
            shown.push_back(leftOver().size());
        }
        return LRESULT(0);
    });
    click(px(10, 10));
    click(px(20, 10));
    click(px(20, 20));
    moveAt(30, 30);
    post(WM_TIMER);
    post(WM_PAINT);
    post(WM_TIMER);
    runCancelled();
    EXPECT_EQ((std::vector<std::size_t>{3, 3}), shown);
    EXPECT_EQ((std::vector<std::size_t>{0}), atPaint);
}

TEST_F(PolylinePictureTest, TheEndHasTheViewPainted)
{
    const int before = display.invalidations();
    type(L"10,10\n20,10\n");
    runCancelled();
    EXPECT_GT(display.invalidations(), before);
}

} // namespace
