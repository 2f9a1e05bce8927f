#include "platform/base/cstdiofile.h"
#include "tests/platform/scratchfolder.h"
#include "tests/platform/standinmachine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

std::vector<std::wstring> linesOf(const std::string& text)
{
    CStdioFile file;
    const auto* bytes = reinterpret_cast<const std::byte*>(text.data());
    EXPECT_TRUE(file.OpenText({bytes, bytes + text.size()}));
    std::vector<std::wstring> lines;
    for (CString line; file.ReadString(line);) {
        lines.push_back(line.str());
    }
    return lines;
}

TEST(TextFileTest, EveryLineEndCounts)
{
    EXPECT_THAT(linesOf("a\nb\r\nc\rd"), ElementsAre(L"a", L"b", L"c", L"d"));
    EXPECT_THAT(linesOf("a\n\n\r\nb\n"), ElementsAre(L"a", L"", L"", L"b"));
    EXPECT_THAT(linesOf(""), ElementsAre());
    EXPECT_THAT(linesOf("\n"), ElementsAre(L""));
}

TEST(TextFileTest, TheMarkDecidesTheCode)
{
    EXPECT_THAT(linesOf("\xef\xbb\xbf\xc3\xa4"), ElementsAre(L"\u00e4"));
    EXPECT_THAT(linesOf(std::string("\xff\xfe\xe4\0\n\0b\0", 8)), ElementsAre(L"\u00e4", L"b"));
    EXPECT_THAT(linesOf(std::string("\xfe\xff\0\xe4\xd8\x3d\xde\0", 8)),
                ElementsAre(L"\u00e4\U0001f600"));
    EXPECT_THAT(linesOf("\xc3\xa4\xe4"), ElementsAre(L"\u00e4\xfffd"));
    EXPECT_THAT(linesOf(std::string("\xff\xfe\x61\0\x62", 5)), ElementsAre(L"a\xfffd"));
}

TEST(TextFileTest, LinesAreCountedFromOne)
{
    const CScratchFolder folder;
    putBytes(folder / "VexDb.cmd", "LINE\nARC\n");
    CStdioFile file;
    ASSERT_TRUE(file.Open(wide(folder / "VexDb.cmd")));
    CString line;
    EXPECT_EQ(0, file.lineNumber());
    EXPECT_TRUE(file.ReadString(line) && file.ReadString(line));
    EXPECT_EQ(line, L"ARC");
    EXPECT_EQ(2, file.lineNumber());
    EXPECT_FALSE(file.ReadString(line));
    file.Close();
    EXPECT_FALSE(file.ReadString(line));
}

TEST(TextFileTest, ALineOfManyMegabytesIsOneLine)
{
    constexpr std::size_t kLong = std::size_t{8} << 20;
    const auto lines = linesOf(std::string(kLong, 'x') + "\nend");
    ASSERT_EQ(2u, lines.size());
    EXPECT_EQ(kLong, lines[0].size());
    EXPECT_EQ(L"end", lines[1]);
}

TEST(TextFileTest, MarksWithoutATextBehindThemAreEmpty)
{
    EXPECT_THAT(linesOf("\xff\xfe"), ElementsAre());
    EXPECT_THAT(linesOf("\xef\xbb\xbf"), ElementsAre());
    EXPECT_THAT(linesOf("\xff"), ElementsAre(L"\xfffd"));
    EXPECT_THAT(linesOf("\xfe\xff\x61"), ElementsAre(L"\xfffd")) << "half a character";
    EXPECT_THAT(linesOf(std::string("a\0b", 3)), ElementsAre(std::wstring(L"a\0b", 3)));
}

TEST(TextFileTest, MissingAndTooLargeFilesAreRefused)
{
    const CScratchFolder folder;
    CStdioFile file;
    EXPECT_FALSE(file.Open(wide(folder / "none")));
    putBytes(folder / "large", "");
    std::filesystem::resize_file(folder / "large", CStdioFile::kMostBytes + 1);
    EXPECT_FALSE(file.Open(wide(folder / "large")));
    putBytes(folder / "small", "abc");
    CStandInMachine machine;
    machine.mostBytes = 2;
    const CVexMachineScope scope(machine);
    EXPECT_FALSE(file.Open(wide(folder / "small")));
}

} // namespace
