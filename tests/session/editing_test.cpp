#include "tests/session/scriptedtest.h"

#include <cstddef>

namespace {

/// Editing commands as lines of a script, on two level lines at (10, 10) and (10, 50).
class EditingScriptTest : public ScriptedTest {
protected:
    EditingScriptTest()
    {
        first = addLine(10, 10, 40, 10);
        second = addLine(10, 50, 40, 50);
        start = bytes();
    }

    /// Back step by step to the bytes of the start, and forth again.
    void expectExactUndo(int steps)
    {
        const std::vector<std::byte> end = bytes();
        for (int step = 0; step < steps; ++step) {
            EXPECT_FALSE(start == bytes());
            plays({L"u"});
        }
        EXPECT_TRUE(start == bytes());
        for (int step = 0; step < steps; ++step) {
            plays({L"redo"});
        }
        EXPECT_TRUE(end == bytes());
        EXPECT_TRUE(database->selfCheck().empty());
    }

    CVexDbLine* first = nullptr;
    CVexDbLine* second = nullptr;
    std::vector<std::byte> start;
};

TEST_F(EditingScriptTest, MoveTakesTheSelectionOrAsksForOne)
{
    plays({L"@click 20,10", L"MOVE 0,0 5,6", L"@key Escape"});
    EXPECT_POINT(15.0, 16.0, first->StartPoint());
    plays({L"MOVE", L"@click 20,50", L"", L"0,0", L"1<90"});
    EXPECT_POINT(10.0, 51.0, second->StartPoint());
    expectExactUndo(2);
}

TEST_F(EditingScriptTest, CopiesGoOnUntilEnter)
{
    plays(
        {L"@click 20,10", L"COPY 10,10", L"10,20", L"10,30", L"10,40", L"", L"LINE 1,1 2,2", L""});
    ASSERT_EQ(6u, lines().size());
    EXPECT_POINT(10.0, 40.0, lines()[4]->StartPoint());
    expectExactUndo(4);
}

TEST_F(EditingScriptTest, RotateAndScaleTakeNumbers)
{
    plays({L"@click 20,10", L"ROTATE 10,10 90", L"SCALE 10,10 2"});
    EXPECT_NEAR(10.0, first->EndPoint().x, 1e-9);
    EXPECT_NEAR(70.0, first->EndPoint().y, 1e-9);
    plays({L"u", L"u"});
    EXPECT_NEAR(40.0, first->EndPoint().x, 1e-9);
}

TEST_F(EditingScriptTest, CopyRotateGoesRoundTheFirstBase)
{
    plays({L"@click 20,10", L"COPYROTATE 10,10 40,10 90"});
    ASSERT_EQ(3u, lines().size());
    EXPECT_NEAR(10.0, lines()[2]->StartPoint().x, 1e-9);
    EXPECT_NEAR(40.0, lines()[2]->StartPoint().y, 1e-9);
    plays({L"u"});
    EXPECT_EQ(2u, lines().size());
    EXPECT_TRUE(start == bytes());
}

TEST_F(EditingScriptTest, MirrorAsksWhetherTheSourcesGo)
{
    plays({L"@click 20,10", L"MIRROR", L"n", L"50,0", L"50,1"});
    ASSERT_EQ(3u, lines().size());
    EXPECT_POINT(90.0, 10.0, lines()[2]->StartPoint());
    plays({L"MIRROR", L"y", L"50,0", L"50,1"});
    EXPECT_EQ(3u, lines().size());
    EXPECT_POINT(90.0, 10.0, first->StartPoint());
    expectExactUndo(2);
}

TEST_F(EditingScriptTest, EraseByNameAndByPick)
{
    plays({L"ERASE", L"@click 20,10", L"", L"@click 20,50", L"ERASE"});
    EXPECT_TRUE(lines().empty());
    EXPECT_NE(-1, handler().getStrings().Find(L"Erased: 1."));
    expectExactUndo(2);
}

TEST_F(EditingScriptTest, TrimAndExtendGoByPicks)
{
    plays({L"LINE 20,0 20,60", L"", L"TRIM", L"@click 20,30", L"", L"@click 30,10", L"@click 30,50",
           L"", L"EXTEND", L"@click 20,30", L""});
    EXPECT_POINT(20.0, 10.0, first->EndPoint());
    EXPECT_POINT(20.0, 50.0, second->EndPoint());
    expectExactUndo(3);
}

TEST_F(EditingScriptTest, WhatIsTrimmedShowsAtOnce)
{
    addLine(20, 0, 20, 60);
    display.recording().clear();
    plays({L"TRIM", L"@click 20,30", L"", L"@click 30,10", L""});
    const auto& strokes = display.recording().strokes();
    const CPoint end = view().GetDecivePoint(CVexGePoint2d(20, 10));
    EXPECT_TRUE(std::ranges::any_of(strokes, [&](const VexStroke& stroke) {
        return stroke.kind == VexStroke::Kind::kLine && stroke.points.back() == end;
    }));
}

TEST_F(EditingScriptTest, ARefusedPickRefusesTheLine)
{
    addLine(100, 100, 120, 100);
    EXPECT_EQ(L"it is not a valid answer", refusalOf({L"@click 20,10", L"MOVE 0,0 5"}));
    EXPECT_TRUE(start != bytes());
    EXPECT_POINT(10.0, 10.0, first->StartPoint());
}

TEST_F(EditingScriptTest, ExplodeOfLinesDoesNothing)
{
    plays({L"@click 20,10", L"EXPLODE"});
    EXPECT_TRUE(handler().trackers().empty());
    EXPECT_TRUE(start == bytes());
}

TEST_F(EditingScriptTest, EnterRepeatsAnEditingCommand)
{
    plays({L"@click 20,10", L"MOVE 0,0 1,0", L"", L"0,0", L"1,0"});
    EXPECT_POINT(12.0, 10.0, first->StartPoint());
}

TEST_F(EditingScriptTest, AnotherCommandInTheMiddleCancelsThisOne)
{
    clicks(20, 10).types(L"MOVE\n0,0\n").moves(30, 30);
    display.PostMessage(WM_COMMAND, hostNumberOf(VexDb::CmdErase), 0);
    run();
    EXPECT_TRUE(first->isErased()) << "the erasure ran behind the cancelled move";
    EXPECT_POINT(10.0, 10.0, first->StartPoint());
    plays({L"u"});
    EXPECT_TRUE(start == bytes());
}

} // namespace
