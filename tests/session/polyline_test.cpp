#include "tests/session/scriptedtest.h"

#include <cstddef>

namespace {

/// Polylines as lines of a script.
class PolylineScriptTest : public ScriptedTest {
protected:
    /// Where the last point was does not count.
    std::vector<std::byte> bytes()
    {
        database->setLastPoint({0, 0});
        return SessionTest::bytes();
    }
};

TEST_F(PolylineScriptTest, APipeRunIsDrawnWithBendsAndClosed)
{
    plays({L"PL", L"10,10", L"50,10", L"A", L"60,20", L"L", L"60,50", L"90,50", L"U", L"10,50",
           L"O"});
    EXPECT_EQ((std::vector<std::string>{"10,10 50,10 b0.414214 60,20 60,50 10,50 closed"}), seen());
    plays({L"U"});
    EXPECT_TRUE(seen().empty());
    plays({L"REDO"});
    EXPECT_EQ(1u, seen().size());
}

TEST_F(PolylineScriptTest, ThreePointArcsComeOneBehindTheOther)
{
    plays({L"APL", L"30,10", L"20,20", L"10,10", L"0,0", L"-10,10", L""});
    EXPECT_EQ((std::vector<std::string>{"30,10 b1 10,10 b-1 -10,10"}), seen());
}

TEST_F(PolylineScriptTest, PolygonsAndStars)
{
    plays({L"POLYGON 4", L"50,50", L"I", L"60,50", L"PG 3", L"E", L"100,100", L"110,100", L"STAR 2",
           L"200,50", L"5", L"10"});
    EXPECT_EQ((std::vector<std::string>{"60,50 50,60 40,50 50,40 closed",
                                        "100,100 110,100 105,108.660254 closed",
                                        "210,50 200,55 190,50 200,45 closed"}),
              seen());
}

TEST_F(PolylineScriptTest, EditingGoesStepByStepThereAndBack)
{
    plays({L"PL", L"10,10", L"50,10", L"50,40", L"90,40", L""});
    plays({L"LINE", L"90,40", L"120,40", L""});
    const std::vector<std::byte> start = bytes();
    plays({L"PE", L"@click 30,10", L"J", L"@click 105,40", L""});
    EXPECT_EQ((std::vector<std::string>{"10,10 50,10 50,40 90,40 120,40"}), seen());
    plays({L"PE", L"@click 30,10", L"F", L"5", L"A"});
    EXPECT_EQ((std::vector<std::string>{
                  "10,10 45,10 b0.414214 50,15 50,35 b-0.414214 55,40 90,40 120,40"}),
              seen());
    plays({L"PE", L"@click 30,10", L"B", L"90,40"});
    plays({L"PE", L"@click 30,10", L"C"});
    const std::vector<std::byte> end = bytes();
    plays({L"U", L"U", L"U", L"U"});
    EXPECT_TRUE(start == bytes());
    plays({L"REDO", L"REDO", L"REDO", L"REDO"});
    EXPECT_TRUE(end == bytes());
    EXPECT_TRUE(database->selfCheck().empty());
}

/// Questions of the polyline commands, as what was typed and clicked before each.
const std::vector<std::vector<CString>> kQuestions = {
    {L"PL"},
    {L"PL", L"0,0"},
    {L"PL", L"0,0", L"9,0", L"P", L"5,5"},
    {L"PL", L"0,0", L"9,0", L"A"},
    {L"APL", L"0,0"},
    {L"PG"},
    {L"PG 5", L"9,9"},
    {L"PG 5", L"9,9", L"I"},
    {L"PG 5", L"E", L"9,9"},
    {L"ST 5", L"9,9", L"2"},
    {L"PE"},
    {L"PE", L"@click 30,10"},
    {L"PE", L"@click 30,10", L"B"},
    {L"PE", L"@click 30,10", L"J", L"@click 105,40"},
    {L"PE", L"@click 30,10", L"F"},
    {L"PE", L"@click 30,10", L"F", L"2"},
    {L"PE", L"@click 105,40"},
};

TEST_F(PolylineScriptTest, AScriptThatStopsAtAQuestionLeavesNoTrace)
{
    plays({L"PL", L"10,10", L"50,10", L"50,40", L"90,40", L""});
    plays({L"LINE", L"90,40", L"120,40", L""});
    const std::vector<std::byte> start = bytes();
    for (std::size_t i = 0; i < kQuestions.size(); ++i) {
        plays(kQuestions[i]); // its end cancels what waits
        EXPECT_TRUE(start == bytes()) << i;
        EXPECT_EQ(2u, undo().undoStack().size()) << i;
        EXPECT_TRUE(database->selfCheck().empty()) << i;
        EXPECT_EQ(nullptr, GetCapture()) << i;
    }
}

TEST_F(PolylineScriptTest, TheDrawingMayBeClosedAtAnyQuestion)
{
    for (std::size_t i = 0; i < kQuestions.size(); ++i) {
        plays({L"PL", L"10,10", L"50,10", L"50,40", L"90,40", L""});
        plays({L"LINE", L"90,40", L"120,40", L""});
        CVexScriptPlayer player(*session);
        player.start(kQuestions[i], [this] { close(); });
        run();
        EXPECT_EQ(nullptr, database) << i;
        EXPECT_EQ(nullptr, GetCapture()) << i;
        open();
    }
}

TEST_F(PolylineScriptTest, AVertexAndTheMiddleOfAnArcAreDragged)
{
    plays({L"PL", L"10,10", L"50,10", L"50,40", L""});
    plays({L"@click 30,10", L"@press 50,10", L"@move 60,10", L"@release 70,10"});
    EXPECT_EQ((std::vector<std::string>{"10,10 70,10 50,40"}), seen());
    chooses(kPopupLineArc, 10, 10).run();
    EXPECT_EQ((std::vector<std::string>{"10,10 b0.01 70,10 50,40"}), seen());
    plays({L"@press 40,9.7", L"@move 40,5", L"@release 40,2.5"});
    EXPECT_EQ((std::vector<std::string>{"10,10 b0.25 70,10 50,40"}), seen());
}

TEST_F(PolylineScriptTest, TrimExtendAndExplodeWorkOnWhatWasDrawn)
{
    plays({L"PL", L"10,10", L"50,10", L"50,40", L""});
    plays({L"LINE", L"30,0", L"30,50", L""});
    plays({L"TR", L"@click 30,40", L"", L"@click 15,10", L""});
    EXPECT_EQ((std::vector<std::string>{"30,10 50,10 50,40", "6"}), seen());
    plays({L"LINE", L"0,60", L"80,60", L""});
    plays({L"EX", L"@click 60,60", L"", L"@click 50,35", L""});
    EXPECT_EQ((std::vector<std::string>{"30,10 50,10 50,60", "6", "6"}), seen());
    plays({L"X", L"@click 40,10", L""});
    EXPECT_EQ((std::vector<std::string>{"6", "6", "6", "6"}), seen());
}

} // namespace
