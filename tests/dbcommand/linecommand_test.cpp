#include "commandfixture.h"

namespace {

class LineCommandTest : public CommandTest {
protected:
    std::unique_ptr<CVexDbLine> run(unsigned long step = 0)
    {
        CVexDbEntity* made = handler().DoCommand(VexDb::CmdLine, step);
        return std::unique_ptr<CVexDbLine>(static_cast<CVexDbLine*>(made));
    }
};

TEST_F(LineCommandTest, TwoClicksMakeALine)
{
    click({10, 197});
    moveTo({30, 150});
    click({60, 97});
    const auto line = run();
    ASSERT_NE(nullptr, line);
    EXPECT_POINT(10, 100, line->StartPoint());
    EXPECT_POINT(60, 200, line->EndPoint());
    EXPECT_EQ(L"Start point: ", told());
    EXPECT_EQ(L"End point: ", this->line());
    expectReleased();
}

TEST_F(LineCommandTest, PolarAnswerCountsFromTheStart)
{
    type(L"1,1\n");
    type(L"5<90\n");
    const auto line = run();
    ASSERT_NE(nullptr, line);
    EXPECT_POINT(1, 1, line->StartPoint());
    EXPECT_POINT(1, 6, line->EndPoint());
    EXPECT_POINT(1, 6, database->lastPoint());
}

TEST_F(LineCommandTest, TypedPointsAreKeptToTheLastBit)
{
    type(L"0.123456789,1\n");
    type(L"7.000000001,2\n");
    const auto line = run();
    ASSERT_NE(nullptr, line);
    EXPECT_EQ(0.123456789, line->StartPoint().x);
    EXPECT_EQ(7.000000001, line->EndPoint().x);
}

TEST_F(LineCommandTest, ASnappedEndMeetsItsTargetExactly)
{
    addLine({10.123, 100.456}, {60.789, 100.456});
    settings().m_bGripSnap = true;
    click({60, 197});
    click({200, 50});
    const auto line = run();
    ASSERT_NE(nullptr, line);
    EXPECT_EQ(60.789, line->StartPoint().x);
    EXPECT_EQ(100.456, line->StartPoint().y);
}

TEST_F(LineCommandTest, AStepChainsAtTheLastPoint)
{
    database->setLastPoint({50, 60});
    type(L"70,80\n");
    const auto line = run(1);
    ASSERT_NE(nullptr, line);
    EXPECT_POINT(50, 60, line->StartPoint());
    EXPECT_POINT(70, 80, line->EndPoint());
    EXPECT_EQ(L"", told());
}

TEST_F(LineCommandTest, TheStepIsLeftAsItWas)
{
    unsigned long step = 0;
    type(L"1,1\n2,2\n");
    delete handler().DoCommand(VexDb::CmdLine, step);
    EXPECT_EQ(0u, step);
    step = 5;
    type(L"3,3\n");
    delete handler().DoCommand(VexDb::CmdLine, step);
    EXPECT_EQ(5u, step);
}

TEST_F(LineCommandTest, ItTakesTheCurrentPropertiesAndIsNotInTheDrawing)
{
    type(L"1,1\n2,2\n");
    const auto line = run();
    ASSERT_NE(nullptr, line);
    EXPECT_EQ(database.get(), line->database());
    EXPECT_EQ(database->currentLayer(), line->LayerId());
    EXPECT_FALSE(line->IsDbEntity());
    EXPECT_EQ(nullptr, database->lastEntity());
    EXPECT_EQ(line.get(), handler().lastEntity());
}

TEST_F(LineCommandTest, ACancelAtEitherPromptMakesNothing)
{
    press(VK_ESCAPE);
    EXPECT_EQ(nullptr, run());
    type(L"1,1\n");
    press(VK_ESCAPE);
    EXPECT_EQ(nullptr, run());
    type(L"1,1\n\n"); // Return with nothing typed at the end point
    EXPECT_EQ(nullptr, run());
    EXPECT_EQ(nullptr, handler().lastEntity());
    expectReleased();
}

TEST_F(LineCommandTest, ALossAtEitherPromptMakesNothing)
{
    EXPECT_EQ(nullptr, run());
    type(L"1,1\n");
    EXPECT_EQ(nullptr, run());
    EXPECT_EQ(0u, backend.queued());
    expectReleased();
}

TEST_F(LineCommandTest, ANumberKeepsTheEndThatTheMouseLeftAndIsRefused)
{
    type(L"1,1\n");
    type(L"5\n");
    const auto line = run();
    ASSERT_NE(nullptr, line);
    EXPECT_POINT(1, 1, line->StartPoint());
    EXPECT_FALSE(handler().setMsg());
    EXPECT_EQ(1u, handler().refusals());
}

TEST_F(LineCommandTest, APolarAnswerIsNoRefusalAlthoughItsPromptCallsItInvalid)
{
    type(L"1,1\n");
    type(L"5<90\n");
    const auto line = run();
    EXPECT_FALSE(handler().setMsg());
    EXPECT_EQ(0u, handler().refusals());
}

TEST_F(LineCommandTest, NoStrokeOfTheBandIsLeft)
{
    click({10, 197});
    moveTo({30, 150});
    moveTo({40, 150});
    press(VK_ESCAPE);
    run();
    const auto& strokes = dc.strokes();
    EXPECT_FALSE(strokes.empty());
    for (const VexStroke& stroke : strokes) {
        EXPECT_EQ(0, std::count(strokes.begin(), strokes.end(), stroke) % 2);
    }
}

} // namespace
