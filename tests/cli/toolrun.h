#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

/// What one run of the program gave.
struct ToolResult {
    int code = -1;
    std::string out;
    std::string err;
};

/// Runs vextool as a process in a folder of its own, with no display to be found.
class ToolTest : public testing::Test {
protected:
    ToolTest()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "vextool-XXXXXX").string();
        m_folder = mkdtemp(pattern.data());
    }
    ~ToolTest() override { std::filesystem::remove_all(m_folder); }

    [[nodiscard]] std::string path(const std::string& name) const
    {
        return (m_folder / name).string();
    }
    [[nodiscard]] static std::string content(const std::string& file)
    {
        std::ifstream input(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(input), {}};
    }
    void write(const std::string& name, const std::string& text) const
    {
        std::ofstream(path(name), std::ios::binary) << text;
    }

    /// `arguments` as a shell reads them; the working folder is the test's own.
    ToolResult run(const std::string& arguments) const
    {
        const std::string command =
            "cd '" + m_folder.string() +
            "' && env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM </dev/null '" VEXTOOL "' " +
            arguments + " >out.txt 2>err.txt";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, content(path("out.txt")),
                content(path("err.txt"))};
    }
    /// A drawing with one object of each kind, made by the program itself.
    std::string sampleDrawing(const std::string& name) const
    {
        write("sample.jsonl",
              R"({"kind":"layer","name":"Steel","color":4,"linetype":"Hidden","weight":25})"
              "\n"
              R"({"kind":"line","layer":"Steel","start":[0,0],"end":[100,50]})"
              "\n"
              R"({"kind":"arc","center":[40,30],"radius":15,"startAngle":5.5,"endAngle":0.75})"
              "\n"
              R"({"kind":"circle","layer":"Steel","center":[70,30],"radius":12.5})"
              "\n"
              R"({"kind":"box","base":[10,10],"width":20,"height":5,"rotation":0.5,"color":1})"
              "\n"
              R"({"kind":"rectangle","leftTop":[0,0],"rightBottom":[120,80],"weight":50})"
              "\n"
              R"({"kind":"point","position":[60,40],"size":2,"fill":true,"linetype":"ByLayer"})"
              "\n"
              R"({"kind":"polyline","vertices":[{"point":[5,60]},{"point":[40,60],"bulge":-0.5},)"
              R"({"point":[40,75],"startWidth":1,"endWidth":2}],"closed":true,"fill":true})"
              "\n");
        EXPECT_EQ(run("new " + name + " --from sample.jsonl").code, 0);
        return path(name);
    }

private:
    std::filesystem::path m_folder;
};
