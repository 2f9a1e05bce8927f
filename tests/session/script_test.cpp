#include "tests/session/sessionfixture.h"

namespace {

class ScriptTest : public SessionTest {
protected:
    ScriptTest() : player(*session) {}
    ~ScriptTest() override = default;

    bool plays(std::vector<CString> script) { return player.play(std::move(script)); }
    /// What the only refusal says, behind its line number.
    std::wstring refusal()
    {
        if (player.refusals().size() != 1) {
            return std::to_wstring(player.refusals().size()) + L" refusals";
        }
        const CVexScriptPlayer::Refusal& only = player.refusals().front();
        return std::to_wstring(only.line) + L": " + only.why.str();
    }

    CVexScriptPlayer player;
};

TEST_F(ScriptTest, PlaysWhatAPersonWouldType)
{
    EXPECT_TRUE(plays({L"; a comment", L"LINE", L"1,1", L"  5<90  ", L"4,5", L""}));
    ASSERT_EQ(2u, lines().size());
    EXPECT_POINT(1.0, 6.0, lines()[0]->EndPoint());
    EXPECT_POINT(4.0, 5.0, lines()[1]->EndPoint());
}

TEST_F(ScriptTest, ABlankClosesAnAnswer)
{
    EXPECT_TRUE(plays({L"line 1,1 2,2\t3,3", L""}));
    EXPECT_EQ(2u, lines().size());
}

TEST_F(ScriptTest, MouseActionsArePositionsInTheDrawing)
{
    EXPECT_TRUE(
        plays({L"LINE", L"@click 10,10", L"@move 15,15", L"@click 20,30", L"@rclick 20,30"}));
    ASSERT_EQ(1u, lines().size());
    EXPECT_POINT(20.0, 30.0, lines()[0]->EndPoint());
}

TEST_F(ScriptTest, APositionMayHaveASignAnExponentAndABlankBehindItsComma)
{
    EXPECT_TRUE(plays({L"LINE", L"@click +10, 1e1", L"@click 2e+1, 30.5", L"@key Escape"}));
    ASSERT_EQ(1u, lines().size());
    EXPECT_POINT(10.0, 10.0, lines()[0]->StartPoint());
    EXPECT_POINT(20.0, 30.5, lines()[0]->EndPoint());
}

TEST_F(ScriptTest, AGripIsDraggedByPressAndRelease)
{
    CVexDbLine* const line = addLine(10, 10, 20, 10);
    EXPECT_TRUE(plays({L"@click 12,10", L"@press 20,10", L"@move 25,15", L"@release 30,20"}));
    EXPECT_POINT(30.0, 20.0, line->EndPoint());
}

TEST_F(ScriptTest, KeysGoByTheirNames)
{
    EXPECT_TRUE(plays({L"@key F8", L"LINE", L"1,1", L"2,2", L"@key Escape"}));
    EXPECT_TRUE(database->settings().m_bOrtho);
    EXPECT_EQ(1u, lines().size());
    EXPECT_FALSE(handler().isBusy());
}

TEST_F(ScriptTest, AnArrowMovesTheCursorByAPixel)
{
    EXPECT_TRUE(
        plays({L"LINE", L"1,1", L"@move 20,20", L"@key Right", L"@key Enter", L"@key Escape"}));
    ASSERT_EQ(1u, lines().size());
    EXPECT_POINT(20.25, 20.0, lines()[0]->EndPoint());
}

TEST_F(ScriptTest, AKeywordIsNotClosedWithEnter)
{
    handler().addCommand(L"3000 ASK");
    std::vector<int> answers;
    host.onCommand = [&](unsigned long) {
        const VexBusyScope busy(handler());
        CVexGePoint2d point;
        wchar_t key = 0;
        answers.push_back(handler().GetGePoint(VexDb::PromptArcStart, point, L"C", key));
        answers.push_back(handler().GetGePoint(VexDb::PromptCenterPoint, point));
        return true;
    };
    EXPECT_TRUE(plays({L"ASK", L"c", L"5,6"})) << refusal().c_str();
    EXPECT_EQ((std::vector<int>{InputKeyword, InputPoint}), answers);
}

TEST_F(ScriptTest, StopsAtAnUnknownCommandWithItsLine)
{
    EXPECT_FALSE(plays({L"LINE 1,1 2,2", L"", L"FROB", L"LINE 3,3 4,4", L""}));
    EXPECT_EQ(L"3: there is no such command", refusal());
    EXPECT_EQ(1u, lines().size());
}

TEST_F(ScriptTest, GoesOnBehindARefusedLineWhenTold)
{
    player.setKeepGoing(true);
    EXPECT_FALSE(plays({L"FROB", L"@jump", L"LINE 3,3 4,4", L""}));
    EXPECT_EQ(2u, player.refusals().size());
    EXPECT_EQ(1u, lines().size());
}

TEST_F(ScriptTest, RefusedLinesSayWhy)
{
    struct Row {
        std::vector<CString> script;
        const wchar_t* refusal;
    };
    const Row rows[] = {
        {{L"ELLIPSE"}, L"1: the command is not available"},
        {{L"SAVE"}, L"1: the command is not available"},
        {{L"LINE", L"abc"}, L"2: it is not a valid answer"},
        {{L"LINE", L"1,1", L"abc"}, L"3: it is not a valid answer"},
        {{L"LINE", L"1,1", L"7"}, L"3: it is not a valid answer"},
        {{L"@jump 1,1"}, L"1: there is no action @jump"},
        {{L"@click"}, L"1: @click wants a position x,y"},
        {{L"@click 1;2"}, L"1: @click wants a position x,y"},
        {{L"@click 1,2 3"}, L"1: @click wants a position x,y"},
        {{L"@click 1,"}, L"1: @click wants a position x,y"},
        {{L"@click 10,10mm"}, L"1: @click wants a position x,y"},
        {{L"@click 900,10"}, L"1: the position lies outside the view"},
        {{L"@key Hyper"}, L"1: there is no key of that name"},
        {{L"@layer Nowhere"}, L"1: there is no layer of that name"},
    };
    for (const Row& row : rows) {
        EXPECT_FALSE(plays(row.script)) << row.refusal;
        EXPECT_EQ(row.refusal, refusal());
        EXPECT_FALSE(handler().isBusy());
    }
}

TEST_F(ScriptTest, AMessageBoxRefusesTheLine)
{
    handler().addCommand(L"3000 SHOUT");
    host.onCommand = [](unsigned long) {
        MessageBoxW(L"Can not join with Closed Polyline", L"", MB_OK);
        return true;
    };
    EXPECT_FALSE(plays({L"SHOUT"}));
    EXPECT_EQ(L"1: a message appeared: Can not join with Closed Polyline", refusal());
}

TEST_F(ScriptTest, ACommandThatStillWaitsAtTheEndIsCancelled)
{
    EXPECT_TRUE(plays({L"LINE", L"1,1"}));
    EXPECT_TRUE(lines().empty());
    EXPECT_FALSE(handler().isBusy());
    EXPECT_EQ(nullptr, GetCapture());
}

TEST_F(ScriptTest, AQuitEndsTheScript)
{
    MSG quit;
    quit.message = WM_QUIT;
    backend.postMessage(quit);
    EXPECT_TRUE(plays({L"LINE", L"1,1", L"2,2", L""}));
    EXPECT_TRUE(lines().empty());
    EXPECT_TRUE(player.isOver());
}

TEST_F(ScriptTest, EachLineOfTheHistoryIsEchoedOnce)
{
    std::vector<std::wstring> echoed;
    player.setEcho([&](const CString& line) { echoed.push_back(line.str()); });
    player.setKeepGoing(true);
    plays({L"LINE", L"1,1", L"2,2", L"", L"FROB"});
    EXPECT_EQ(
        (std::vector<std::wstring>{L"LINE", L"Specify start point: 1,1", L"Specify end point: 2,2",
                                   L"Specify end point: ", L"Unknown command: FROB"}),
        echoed);
}

TEST_F(ScriptTest, PlaysByItselfInTheProgramsLoop)
{
    bool over = false;
    player.start({L"LINE", L"1,1", L"2,2"}, [&] { over = true; });
    EXPECT_FALSE(player.isOver());
    run();
    EXPECT_TRUE(over);
    EXPECT_FALSE(handler().isBusy()) << "the chain that waited was cancelled";
    EXPECT_EQ(1u, lines().size());
}

TEST_F(ScriptTest, AScriptThatClosesTheDrawingEndsThere)
{
    host.onCommand = [this](unsigned long) {
        session->whenIdle([this] { close(); });
        return true;
    };
    EXPECT_TRUE(plays({L"NEW", L"LINE 1,1 2,2", L""}));
    EXPECT_TRUE(player.isOver());
    EXPECT_EQ(nullptr, database);
}

TEST_F(ScriptTest, AFileThatIsNotThereIsToldByTheAnswer)
{
    EXPECT_FALSE(player.playFile(L"nowhere/at-all.scr"));
    EXPECT_TRUE(player.refusals().empty());
}

} // namespace
