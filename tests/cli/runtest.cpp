#include "tests/cli/toolrun.h"

namespace {

class RunTest : public ToolTest {
protected:
    static std::string sample() { return std::string("'") + VEX_SAMPLES "/firstlines.scr'"; }
    int linesIn(const std::string& drawing) const
    {
        const std::string dump = run("dump " + drawing).out;
        int count = 0;
        for (std::size_t at = dump.find(R"("kind":"line")"); at != std::string::npos;
             at = dump.find(R"("kind":"line")", at + 1)) {
            ++count;
        }
        return count;
    }
};

TEST_F(RunTest, HelpShowsTwoExamples)
{
    const ToolResult help = run("run -h");
    EXPECT_EQ(help.code, 0);
    const std::size_t first = help.out.find("\n  vextool run ");
    ASSERT_NE(first, std::string::npos);
    EXPECT_NE(help.out.find("\n  vextool run ", first + 1), std::string::npos);
}

TEST_F(RunTest, PlaysTheFirstSampleIntoADrawingAndAPicture)
{
    const ToolResult result = run("run " + sample() + " -o a.zpl --png a.png");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(run("check a.zpl").code, 0);
    EXPECT_EQ(linesIn("a.zpl"), 10);
    EXPECT_NE(run("dump a.zpl").out.find(R"("start":[200.0,50.0],"end":[220.0,150.0])"),
              std::string::npos);
    EXPECT_EQ(content(path("a.png")).substr(0, 4), "\x89PNG");
}

TEST_F(RunTest, PlaysThePipeRackAsItIsDrawnTrimmedAndCopied)
{
    const std::string samples = VEX_SAMPLES;
    ASSERT_EQ(run("new layers.zpl --from '" + samples + "/piperack.jsonl'").code, 0);
    const ToolResult result = run("run '" + samples + "/piperack.scr' -i layers.zpl -o a.zpl");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(run("check a.zpl").code, 0);
    const std::string dump = run("dump a.zpl").out;
    // A beam trimmed at both columns and copied along; a pipe extended to the shell of the tank,
    // 18 about (348, 72); a hole mirrored twice.
    EXPECT_NE(dump.find(R"("start":[138.0,104.0],"end":[138.0,216.0])"), std::string::npos);
    EXPECT_NE(dump.find(R"("start":[342.0,142.0],"end":[342.0,88.970562748477)"),
              std::string::npos);
    EXPECT_NE(dump.find(R"("center":[40.5985,50.0364)"), std::string::npos);
}

TEST_F(RunTest, PlaysThePolylinesOfThePipeRackAsTheyAreRoundedOffsetAndBroken)
{
    const std::string samples = VEX_SAMPLES;
    ASSERT_EQ(run("new layers.zpl --from '" + samples + "/piperack.jsonl'").code, 0);
    ASSERT_EQ(run("run '" + samples + "/piperack.scr' -i layers.zpl -o a.zpl").code, 0);
    const std::string dump = run("dump a.zpl").out;
    const auto count = [&](const std::string& part) {
        int found = 0;
        for (auto at = dump.find(part); at != std::string::npos; at = dump.find(part, at + 1)) {
            ++found;
        }
        return found;
    };
    EXPECT_EQ(count(R"("kind":"polyline")"), 32);
    EXPECT_EQ(count(R"("fill":true)"), 3); // two valves and half a needle
    // The loop between two breaks, rounded by 5 and set off by 1.5; the edges of the run, extended
    // to the shell, 18 about (348, 72).
    EXPECT_EQ(count(R"([{"point":[263.0,115.5],"bulge":0.4142135)"), 1);
    EXPECT_EQ(count(R"({"point":[293.0,115.5]}],"closed":false)"), 1);
    EXPECT_EQ(count(R"({"point":[330.0626088853)"), 2);
    // The edge that the slips of the pen were on, as it was before them.
    EXPECT_EQ(count(R"([{"point":[30.0,202.0]},{"point":[330.0,202.0],"bulge":0.4142135)"), 1);
}

TEST_F(RunTest, EchoesPromptsAndHistoryOnStandardErrorWhenAsked)
{
    write("a.scr", "line\n1,1\n2,2\n\n");
    const ToolResult result = run("run a.scr -o a.zpl -v");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "line\nSpecify start point: 1,1\nSpecify end point: 2,2\n"
                          "Specify end point: \n");
}

TEST_F(RunTest, StopsAtTheFirstRefusedLineAndWritesNothing)
{
    write("a.scr", "; first\nline 1,1 2,2\n\nfrob\nfrob again\n");
    const ToolResult result = run("run a.scr -o a.zpl");
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, "vextool: a.scr, line 4: 'frob': there is no such command\n");
    EXPECT_FALSE(std::filesystem::exists(path("a.zpl")));
}

TEST_F(RunTest, KeepGoingSavesWhatCameOfTheOtherLines)
{
    write("a.scr", "frob\nline 1,1 2,2\n\n@click 1\n");
    const ToolResult result = run("run a.scr -o a.zpl --keep-going");
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.err, "vextool: a.scr, line 1: 'frob': there is no such command\n"
                          "vextool: a.scr, line 4: '@click 1': @click wants a position x,y\n");
    EXPECT_EQ(linesIn("a.zpl"), 1);
}

TEST_F(RunTest, BeginsWithADrawingThatIsThere)
{
    sampleDrawing("a.zpl");
    write("a.scr", "line 1,1 2,2\n\n");
    ASSERT_EQ(run("run a.scr -i a.zpl -o b.zpl").code, 0);
    EXPECT_EQ(linesIn("a.zpl"), 1);
    EXPECT_EQ(linesIn("b.zpl"), 2);
}

TEST_F(RunTest, TellsWhatCannotBeReadOrWritten)
{
    write("a.scr", "line 1,1 2,2\n\n");
    EXPECT_EQ(run("run nothing.scr -o a.zpl").code, 3);
    EXPECT_EQ(run("run a.scr -i nothing.zpl -o a.zpl").code, 3);
    EXPECT_EQ(run("run a.scr -i a.scr -o a.zpl").code, 3);
    EXPECT_EQ(run("run a.scr -o nowhere/a.zpl").code, 4);
    EXPECT_EQ(run("run a.scr -o a.zpl --png nowhere/a.png").code, 4);
    EXPECT_EQ(run("run a.scr -o a.zpl --png a.gif").code, 2);
    EXPECT_EQ(run("run a.scr").code, 2);
}

} // namespace
