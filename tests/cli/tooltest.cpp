#include "tests/cli/toolrun.h"

#include <cstring>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace {

/// Dumped lines without the hard identifiers, which each program draws anew.
std::string withoutIds(std::string lines)
{
    constexpr std::string_view kKey = "\"id\":";
    for (std::size_t at = lines.find(kKey); at != std::string::npos; at = lines.find(kKey, at)) {
        const std::size_t behind = lines.find_first_not_of("0123456789", at + kKey.size());
        lines.erase(at, behind - at + (lines[behind] == ',' ? 1 : 0));
    }
    return lines;
}

TEST_F(ToolTest, HelpOfEverySubcommandShowsTwoExamples)
{
    for (const char* name : {"new", "info", "check", "dump", "render", "scrub", "docs"}) {
        const ToolResult help = run(std::string(name) + " -h");
        EXPECT_EQ(help.code, 0) << name;
        const std::size_t first = help.out.find(std::string("\n  vextool ") + name);
        ASSERT_NE(first, std::string::npos) << name;
        EXPECT_NE(help.out.find(std::string("\n  vextool ") + name, first + 1), std::string::npos)
            << name;
    }
}

TEST_F(ToolTest, VersionGoesToStandardOutput)
{
    const ToolResult version = run("--version");
    EXPECT_EQ(version.code, 0);
    EXPECT_EQ(version.out, "vextool 0.1.0\n");
}

TEST_F(ToolTest, WrongUseIsTwoAndSaysSoOnStandardError)
{
    for (const char* arguments : {"", "frobnicate", "render a.zpl", "info", "new x.zpl --wrong"}) {
        const ToolResult result = run(arguments);
        EXPECT_EQ(result.code, 2) << arguments;
        EXPECT_EQ(result.out, "") << arguments;
        EXPECT_NE(result.err, "") << arguments;
    }
}

TEST_F(ToolTest, FreshDrawingIsWholeAndHasTheDefaultRecords)
{
    ASSERT_EQ(run("new fresh.zpl --paper-space").code, 0);
    EXPECT_EQ(run("check fresh.zpl").code, 0);
    const auto info = nlohmann::json::parse(run("info fresh.zpl --json").out);
    EXPECT_EQ(info["tables"]["layers"], nlohmann::json({"0", "Dimension", "PipeLine", "WeldNum"}));
    EXPECT_EQ(info["tables"]["blocks"], nlohmann::json({"MODEL_SPACE", "PAPER_SPACE"}));
    EXPECT_TRUE(info["extents"].is_null());
    EXPECT_EQ(info["file"]["version"], "1.001a");
}

TEST_F(ToolTest, DumpIsWhatNewMakesAgain)
{
    sampleDrawing("a.zpl");
    const ToolResult first = run("dump a.zpl");
    write("a.jsonl", first.out);
    ASSERT_EQ(run("new b.zpl --from a.jsonl").code, 0);
    const auto withoutNumbers = [](const std::string& lines) {
        std::vector<nlohmann::json> objects;
        std::istringstream input(lines);
        for (std::string line; std::getline(input, line);) {
            objects.push_back(nlohmann::json::parse(line));
            objects.back().erase("id");
        }
        return objects;
    };
    EXPECT_EQ(withoutNumbers(run("dump b.zpl").out), withoutNumbers(first.out));
    EXPECT_NE(first.out.find(R"("start":[0.0,0.0],"end":[100.0,50.0])"), std::string::npos);
}

TEST_F(ToolTest, ArcAndCircleAreDumpedAsTheyAreHeld)
{
    write("a.jsonl", R"({"kind":"arc","center":[1,2],"radius":3,"startAngle":-0.25,"endAngle":7})"
                     "\n"
                     R"({"kind":"circle","center":[4,5],"radius":6.5})"
                     "\n");
    ASSERT_EQ(run("new a.zpl --from a.jsonl").code, 0);
    EXPECT_EQ(run("check a.zpl").code, 0);
    const std::string dump = run("dump a.zpl").out;
    EXPECT_NE(dump.find(R"("center":[1.0,2.0],"radius":3.0,"startAngle":-0.25,"endAngle":7.0)"),
              std::string::npos);
    EXPECT_NE(dump.find(R"("center":[4.0,5.0],"radius":6.5})"), std::string::npos);
}

TEST_F(ToolTest, PolylineIsDumpedVertexByVertex)
{
    write("p.jsonl", R"({"kind":"polyline","vertices":[{"point":[0,0],"bulge":1},{"point":[9,0]},)"
                     R"({"point":[9,4],"startWidth":0,"endWidth":-1}],"closed":true,)"
                     R"("fill":true,"fillMode":5})");
    ASSERT_EQ(run("new p.zpl --from p.jsonl").code, 0);
    EXPECT_EQ(run("check p.zpl").code, 0);
    EXPECT_NE(
        run("dump p.zpl")
            .out.find(R"("vertices":[{"point":[0.0,0.0],"bulge":1.0},{"point":[9.0,0.0]},)"
                      R"({"point":[9.0,4.0],"startWidth":0.0,"endWidth":-1.0}],"closed":true,)"
                      R"("fill":true,"fillMode":5)"),
        std::string::npos);
}

TEST_F(ToolTest, DumpAndNewKeepWhatNoPictureShows)
{
    const char* const lines[] = {
        R"("description":"pump room","ortho":true)",
        R"("linetypeScale":2.5)",
        R"("value":"#123456","naturalName":"teal","modified":true)",
        R"("face":"Deja","bold":true,"italic":false,"charset":2,"pitchAndFamily":34)",
        R"("base":[1.0,2.0,3.0],"points":[[4.0,5.0,6]])",
        R"("xdata":[{"type":3007,"text":"flange 7"},{"type":3004,"bytes":"000000000000f03f00000000000000000000000000000000"}])",
        R"("layer":"Steel","linetype":"Hidden","color":"12","textstyle":"Notes","weight":30)"};
    write(
        "all.jsonl",
        R"({"kind":"settings","description":"pump room","ortho":true,"linetypeScale":2.5})"
        "\n"
        R"({"kind":"color","name":"12","value":"#123456","naturalName":"teal","modified":true})"
        "\n"
        R"({"kind":"layer","name":"Steel","color":12})"
        "\n"
        R"({"kind":"textstyle","name":"Notes","face":"Deja","bold":true,"charset":2,"pitchAndFamily":34})"
        "\n"
        R"({"kind":"symbol","name":"S","base":[1,2,3],"points":[[4,5,6]]})"
        "\n"
        R"({"kind":"line","start":[0,0],"end":[1,1],"invisible":true,"xdata":[{"type":3007,"text":"flange 7"},)"
        R"({"type":3004,"bytes":"000000000000f03f00000000000000000000000000000000"}]})"
        "\n"
        R"({"kind":"current","layer":"Steel","linetype":"Hidden","color":"12","textstyle":"Notes","weight":30})"
        "\n");
    ASSERT_EQ(run("new a.zpl --from all.jsonl").code, 0);
    const std::string first = run("dump a.zpl").out;
    for (const char* line : lines) {
        EXPECT_NE(first.find(line), std::string::npos) << line << '\n' << first;
    }
    write("a.jsonl", first);
    ASSERT_EQ(run("new b.zpl --from a.jsonl").code, 0);
    EXPECT_EQ(withoutIds(run("dump b.zpl").out), withoutIds(first));
}

TEST_F(ToolTest, FixedBlocksComeBackByteForByteThroughADump)
{
    write(
        "blocks.jsonl",
        R"({"kind":"settings","gridStep":2.5,"reserved06":9,"reserved10":4294967295,"reserved38":0.1})"
        "\n"
        R"({"kind":"dimsettings","arrowBlock":"dot","angularPlaces":-4,"arrowSize":3.25,)"
        R"("lengthFactor":25.4,"reserved8e":7,"reservedE0":1e300})"
        "\n"
        R"({"kind":"plane","a":0,"b":0.6,"c":0.8,"d":-12.5})"
        "\n"
        R"({"kind":"project","first":"Plant 4","second":"Steam"})"
        "\n");
    ASSERT_EQ(run("new a.zpl --from blocks.jsonl").code, 0);
    write("a.jsonl", run("dump a.zpl").out);
    ASSERT_EQ(run("new b.zpl --from a.jsonl").code, 0);
    const std::string first = content(path("a.zpl"));
    const std::string second = content(path("b.zpl"));
    // From the settings at 0x543e to the end of the plane: 0x4b0, 0xe8 and 32 bytes.
    ASSERT_GT(first.size(), 0x543eu + 0x4b0 + 0xe8 + 32);
    EXPECT_EQ(first.substr(0x543e, 0x4b0 + 0xe8 + 32), second.substr(0x543e, 0x4b0 + 0xe8 + 32));
    EXPECT_EQ(first.substr(0x543e + 0x4b0, 6), std::string("d\0o\0t\0", 6));
    EXPECT_EQ(first.substr(0x543e + 0x4b0 + 0x80, 2), std::string("\xfc\xff"));
    EXPECT_NE(run("dump b.zpl").out.find(R"("kind":"project","first":"Plant 4","second":"Steam")"),
              std::string::npos);
}

TEST_F(ToolTest, ADimensionSettingOutOfItsRangeIsToldWithItsRange)
{
    write("wrong.jsonl", R"({"kind":"dimsettings","lineColor":32768})"
                         "\n");
    const ToolResult result = run("new a.zpl --from wrong.jsonl");
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err, "vextool: wrong.jsonl, line 1: \"lineColor\" is not a whole number from "
                          "-32768 to 32767\n");
}

TEST_F(ToolTest, DeepNestingIsRefusedBeforeItFillsTheStack)
{
    write("deep.jsonl", "{\"kind\":\"line\",\"start\":" + std::string(500000, '[') +
                            std::string(500000, ']') + "}\n");
    const ToolResult result = run("new deep.zpl --from deep.jsonl");
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.err, "vextool: deep.jsonl, line 1: nested too deeply\n");
}

TEST_F(ToolTest, AFolderIsNoInput)
{
    std::filesystem::create_directory(path("folder.d"));
    for (const char* arguments : {"info folder.d", "render folder.d -o x.png",
                                  "scrub folder.d -o x.zpl", "new x.zpl --from folder.d"}) {
        EXPECT_EQ(run(arguments).code, 3) << arguments;
    }
    EXPECT_FALSE(std::filesystem::exists(path("x.zpl")));
}

TEST_F(ToolTest, AFileWithoutTheSignatureIsNoDrawingHoweverShort)
{
    write("empty.zpl", "");
    EXPECT_EQ(run("check empty.zpl").code, 3);
    write("stub.zpl", content(sampleDrawing("a.zpl")).substr(0, 10));
    EXPECT_EQ(run("check stub.zpl").code, 1);
}

TEST_F(ToolTest, AFullStandardOutputIsFourForHelpToo)
{
    sampleDrawing("a.zpl");
    for (const char* arguments :
         {"info a.zpl", "dump a.zpl", "check a.zpl", "-h", "--version", "docs --man"}) {
        EXPECT_EQ(std::system(("cd '" + path("") + "' && '" VEXTOOL "' " + arguments +
                               " >/dev/full 2>err2.txt; test $? -eq 4")
                                  .c_str()),
                  0)
            << arguments;
    }
}

TEST_F(ToolTest, WindowTakesNegativeNumbersWhereverItStands)
{
    sampleDrawing("a.zpl");
    EXPECT_EQ(run("render a.zpl -o a.png --window -10 -10 50 50").code, 0);
    EXPECT_EQ(run("render --window -.5 -1e1 50 50 --size 64 48 a.zpl -o b.png").code, 0);
    EXPECT_TRUE(std::filesystem::exists(path("b.png")));
    for (const char* window : {"nan 0 1 1", "0 0 1e300 1e300", "0 0 0.01 0.01", "5 5 1 9"}) {
        EXPECT_EQ(run(std::string("render a.zpl -o c.png --window ") + window).code, 2) << window;
    }
}

TEST_F(ToolTest, ScaleIsTrueOnPaper)
{
    write("m.jsonl", "{\"kind\":\"line\",\"start\":[0,0],\"end\":[100,0]}\n");
    ASSERT_EQ(run("new m.zpl --from m.jsonl").code, 0);
    ASSERT_EQ(run("render m.zpl -o m.svg --scale 1:50").code, 0);
    const std::string svg = content(path("m.svg"));
    EXPECT_NE(svg.find("width=\"420mm\""), std::string::npos);
    // 100 units at 1:50 are 2 millimetres, 200 hundredths, in the middle of 42000 by 29700.
    EXPECT_NE(svg.find("points=\"20900,14850 21100,14850 \""), std::string::npos) << svg;
}

TEST_F(ToolTest, NamesWithBlanksAndUmlautsComeThrough)
{
    sampleDrawing("a.zpl");
    std::filesystem::rename(path("a.zpl"), path("Halle \u00e4 1.zpl"));
    EXPECT_EQ(run("render 'Halle \u00e4 1.zpl' -o '%.svg'").code, 0);
    EXPECT_TRUE(std::filesystem::exists(path("Halle \u00e4 1.svg")));
}

TEST_F(ToolTest, CompletionKnowsCommandsBehindAnOptionAndNamesWithBlanks)
{
    write("one drawing.zpl", "");
    write("complete.sh",
          run("docs --bash-completion").out +
              "COMP_WORDS=(vextool -q re); COMP_CWORD=2; _vextool; echo \"${COMPREPLY[*]}\"\n"
              "COMP_WORDS=(vextool render --mo); COMP_CWORD=2; _vextool; echo \"${COMPREPLY[*]}\"\n"
              "COMP_WORDS=(vextool info one); COMP_CWORD=2; _vextool; echo \"${#COMPREPLY[@]} "
              "${COMPREPLY[0]}\"\n");
    ASSERT_EQ(std::system(("cd '" + path("") + "' && bash complete.sh >completed.txt").c_str()), 0);
    EXPECT_EQ(content(path("completed.txt")), "render\n--mono\n1 one drawing.zpl\n");
}

TEST_F(ToolTest, NewFromStandardInputCountsByClass)
{
    write("in.jsonl", "{\"kind\":\"line\",\"start\":[1,2],\"end\":[3,4]}\n\n{\"kind\":\"point\","
                      "\"position\":[5,6]}\n");
    ASSERT_EQ(run("new in.zpl --from - <in.jsonl").code, 0);
    const auto info = nlohmann::json::parse(run("info in.zpl --json").out);
    EXPECT_EQ(info["entities"]["LINE"], 1);
    EXPECT_EQ(info["entities"]["POINT"], 1);
    EXPECT_EQ(info["extents"], nlohmann::json({{1.0, 2.0}, {5.0, 6.0}}));
}

// Two half circles between two vertices on one level.
TEST_F(ToolTest, ExtentsHoldTheArcsOfAPolyline)
{
    write("in.jsonl", R"({"kind":"polyline","closed":true,"vertices":)"
                      R"([{"point":[0,0],"bulge":1},{"point":[10,0],"bulge":1}]})");
    ASSERT_EQ(run("new in.zpl --from in.jsonl").code, 0);
    const auto info = nlohmann::json::parse(run("info in.zpl --json").out);
    EXPECT_EQ(info["extents"], nlohmann::json({{0.0, -5.0}, {10.0, 5.0}}));
}

TEST_F(ToolTest, BadInputLineIsNamedByNumberAndNothingIsWritten)
{
    struct Row {
        const char* line;
        const char* reason;
    };
    const Row rows[] = {
        {"{", "not JSON"},
        {"[]", "a JSON object is expected"},
        {R"({"kind":"teapot"})", "there is no kind \"teapot\""},
        {R"({"kind":"line","start":[0,0]})", "\"end\" is missing"},
        {R"({"kind":"line","start":[0],"end":[1,1]})", "\"start\" is not a pair [x, y]"},
        {R"({"kind":"line","start":[0,0],"end":[1,1],"layer":"Nowhere"})",
         "there is no layer \"Nowhere\""},
        {R"({"kind":"line","start":[0,0],"end":[1,1],"color":999})",
         "\"color\" is not a whole number from 0 to 256"},
        {R"({"kind":"line","start":[0,0],"end":[1,1],"color":1.5})",
         "\"color\" is not a whole number from 0 to 256"},
        {R"({"kind":"line","start":[0,0],"end":[1,1],"id":"x"})",
         "\"id\" is not a positive whole number"},
        {R"({"kind":"line","start":[0,0],"end":[1,1],"layer":5})", "\"layer\" is not a text"},
        {R"({"kind":"line","start":[0,0],"end":[1,1],"colour":1})", "\"colour\" is not known here"},
        {R"({"kind":"point","position":[0,0],"fill":1})", "\"fill\" is not true or false"},
        {R"({"kind":"circle","center":[0,0]})", "\"radius\" is missing"},
        {R"({"kind":"arc","center":[0,0],"radius":1,"startAngle":0})", "\"endAngle\" is missing"},
        {R"({"kind":"polyline"})", "\"vertices\" is missing"},
        {R"({"kind":"polyline","vertices":[[1,2]]})", "\"vertices\" is not made of objects"},
        {R"({"kind":"polyline","vertices":[{"bulge":1}]})", "in a vertex: \"point\" is missing"},
        {R"({"kind":"polyline","vertices":[{"point":[1,2],"width":1}]})",
         "in a vertex: \"width\" is not known here"},
        {R"({"kind":"color","name":"red"})", "a colour's \"name\" is its index from 0 to 256"},
        {R"({"kind":"point","position":[0,0],"xdata":[{"type":3004,"bytes":"00"}]})",
         "\"xdata\": \"bytes\" is not 48 hexadecimal digits"}};
    for (const Row& row : rows) {
        write("bad.jsonl",
              std::string("{\"kind\":\"point\",\"position\":[5,6]}\n") + row.line + "\n");
        const ToolResult result = run("new bad.zpl --from bad.jsonl");
        EXPECT_EQ(result.code, 3) << row.line;
        EXPECT_NE(result.err.find(std::string("bad.jsonl, line 2: ") + row.reason),
                  std::string::npos)
            << result.err;
        EXPECT_FALSE(std::filesystem::exists(path("bad.zpl"))) << row.line;
    }
}

TEST_F(ToolTest, MissingInputIsThreeAndForeignFilesAreNoDrawings)
{
    write("letter.txt", "Dear Sir or Madam\n");
    for (const char* command : {"info", "check", "dump"}) {
        EXPECT_EQ(run(std::string(command) + " missing.zpl").code, 3) << command;
        EXPECT_EQ(run(std::string(command) + " letter.txt").code, 3) << command;
    }
    EXPECT_NE(run("check letter.txt").err.find("is not a drawing"), std::string::npos);
}

TEST_F(ToolTest, TruncatedDrawingHasFaultsAtAnOffsetAndItsWholePart)
{
    const std::string drawing = content(sampleDrawing("a.zpl"));
    write("cut.zpl", drawing.substr(0, drawing.size() - 30));
    const ToolResult check = run("check cut.zpl");
    EXPECT_EQ(check.code, 1);
    EXPECT_NE(check.out.find("cut.zpl: byte "), std::string::npos) << check.out;
    EXPECT_EQ(run("dump cut.zpl").code, 1);
    EXPECT_NE(run("dump cut.zpl").out.find(R"("kind":"line")"), std::string::npos);
}

TEST_F(ToolTest, QuietKeepsWarningsOffStandardError)
{
    const std::string drawing = content(sampleDrawing("a.zpl"));
    write("cut.zpl", drawing.substr(0, drawing.size() - 30));
    EXPECT_NE(run("dump cut.zpl").err, "");
    EXPECT_EQ(run("-q dump cut.zpl").err, "");
}

TEST_F(ToolTest, UnwritableOutputIsFourAndLeavesNothing)
{
    sampleDrawing("a.zpl");
    EXPECT_EQ(run("new no/such/folder/x.zpl").code, 4);
    EXPECT_EQ(run("render a.zpl -o no/such/folder/x.png").code, 4);
    EXPECT_EQ(run("scrub a.zpl -o no/such/folder/x.zpl").code, 4);
    EXPECT_FALSE(std::filesystem::exists(path("no")));
}

TEST_F(ToolTest, ScrubTakesNamesAndFolderAndNothingElse)
{
    const std::string before = content(sampleDrawing("a.zpl"));
    ASSERT_EQ(run("scrub a.zpl -o public.zpl").code, 0);
    const std::string after = content(path("public.zpl"));
    ASSERT_EQ(after.size(), before.size());
    const auto info = nlohmann::json::parse(run("info public.zpl --json").out);
    EXPECT_EQ(info["file"]["computer"], "");
    EXPECT_EQ(info["file"]["user"], "");
    EXPECT_EQ(info["file"]["folder"], "");
    EXPECT_EQ(info["file"]["title"], "a");
    // Behind the folder's field everything is as it was, the small picture included.
    EXPECT_EQ(after.substr(0x306), before.substr(0x306));
    EXPECT_EQ(after.substr(0x9c, 0x6a), before.substr(0x9c, 0x6a));
}

TEST_F(ToolTest, ScrubInPlaceLeavesNoBackupThatKeepsTheNames)
{
    sampleDrawing("a.zpl");
    ASSERT_EQ(run("scrub a.zpl --in-place").code, 0);
    EXPECT_FALSE(std::filesystem::exists(path("a.bak")));
    EXPECT_EQ(run("scrub a.zpl").code, 2);
}

TEST_F(ToolTest, SavingAgainKeepsTheDrawingBeforeAsBackup)
{
    const std::string first = content(sampleDrawing("a.zpl"));
    ASSERT_EQ(run("new a.zpl").code, 0);
    EXPECT_EQ(content(path("a.bak")), first);
    EXPECT_NE(content(path("a.zpl")), first);
}

TEST_F(ToolTest, RenderMakesAPictureOfEachKind)
{
    sampleDrawing("a.zpl");
    struct Row {
        const char* arguments;
        const char* file;
        std::string magic;
    };
    const Row rows[] = {{"a.zpl -o a.png --size 200 100", "a.png", std::string("\x89PNG", 4)},
                        {"a.zpl -o a.pdf --size 297 210 --scale 1:1", "a.pdf", "%PDF"},
                        {"a.zpl -o a.svg --mono --background white", "a.svg", "<?xml"}};
    for (const Row& row : rows) {
        const ToolResult result = run(std::string("render ") + row.arguments);
        EXPECT_EQ(result.code, 0) << row.arguments << '\n' << result.err;
        EXPECT_EQ(content(path(row.file)).substr(0, row.magic.size()), row.magic) << row.arguments;
    }
}

TEST_F(ToolTest, RenderOfManyDrawingsNamesEachPictureByItsTitle)
{
    sampleDrawing("one.zpl");
    sampleDrawing("two.zpl");
    ASSERT_EQ(run("render one.zpl two.zpl -o %.png --size 64 48").code, 0);
    EXPECT_TRUE(std::filesystem::exists(path("one.png")));
    EXPECT_TRUE(std::filesystem::exists(path("two.png")));
    EXPECT_EQ(run("render one.zpl two.zpl -o same.png").code, 2);
    EXPECT_EQ(run("render one.zpl -o picture.bmp").code, 2);
}

TEST_F(ToolTest, SavedDrawingCarriesItsSmallPicture)
{
    const std::string drawing = content(sampleDrawing("a.zpl"));
    // A 40-byte bitmap head of 160 by 120 pixels with 8 bits each stands behind the description.
    std::int32_t head[4] = {};
    std::memcpy(head, drawing.data() + 0x506, sizeof head);
    EXPECT_EQ(head[0], 40);
    EXPECT_EQ(head[1], 160);
    EXPECT_EQ(head[2], 120);
    EXPECT_EQ(head[3], 1 | (8 << 16));
}

TEST_F(ToolTest, DocumentsComeFromTheOptionTable)
{
    const std::string page = run("docs --man").out;
    const std::string script = run("docs --bash-completion").out;
    for (const char* name : {"new", "info", "check", "dump", "render", "scrub"}) {
        EXPECT_NE(page.find(std::string(".SS ") + name), std::string::npos) << name;
        EXPECT_NE(script.find(std::string("        ") + name + ") words="), std::string::npos)
            << name;
    }
    EXPECT_NE(page.find("\\-\\-paper\\-space"), std::string::npos);
    EXPECT_NE(script.find("--mono"), std::string::npos);
}

TEST_F(ToolTest, SampleDrawingComesBackEqualThroughTheTour)
{
    const std::string command = std::string("bash '" VEX_SAMPLES "/tour.sh' '" VEXTOOL "' '") +
                                path("tour") + "' >'" + path("tour.txt") + "' 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0) << content(path("tour.txt"));
    EXPECT_NE(content(path("tour.txt")).find("every object came back"), std::string::npos);
}

} // namespace
