#include "platform/base/cfile.h"
#include "platform/base/vexassert.h"
#include "tests/platform/faultylayer.h"
#include "tests/platform/scratchfolder.h"
#include "tests/platform/standinmachine.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>

namespace {

std::vector<std::byte> pattern(std::size_t size)
{
    std::vector<std::byte> bytes(size);
    for (std::size_t i = 0; i < size; ++i) {
        bytes[i] = static_cast<std::byte>(i * 7 + i / 251);
    }
    return bytes;
}

TEST(CFileTest, BytesComeBackAcrossManyBuffers)
{
    const CScratchFolder folder;
    const std::vector<std::byte> bytes = pattern(3 * CFile::kBufferSize + 12345);
    CFile out;
    ASSERT_TRUE(out.Open(wide(folder / "a.zpl"), CFile::modeCreate | CFile::modeWrite));
    EXPECT_TRUE(out.Write(bytes.data(), 17));
    EXPECT_TRUE(out.Write(bytes.data() + 17, bytes.size() - 17));
    EXPECT_EQ(bytes.size(), out.GetPosition());
    ASSERT_TRUE(out.Close());

    CFile in;
    ASSERT_TRUE(in.Open(wide(folder / "a.zpl"), CFile::modeRead));
    EXPECT_EQ(bytes.size(), in.GetLength());
    std::vector<std::byte> back(bytes.size() + 1);
    EXPECT_EQ(bytes.size(), in.Read(back.data(), back.size()));
    back.pop_back();
    EXPECT_TRUE(bytes == back);
    EXPECT_FALSE(in.failed()); // reading up to the end is no failure
    EXPECT_TRUE(in.Close());
}

TEST(CFileTest, TakeCrossesBufferEdgesAndKnowsWhatIsLeft)
{
    const std::vector<std::byte> bytes = pattern(2 * CFile::kBufferSize + 100);
    CMemFile file(bytes);
    constexpr std::size_t kStep = 1000;
    std::size_t at = 0;
    for (; at + kStep <= bytes.size(); at += kStep) {
        ASSERT_EQ(bytes.size() - at, file.remaining());
        ASSERT_EQ(0, std::memcmp(bytes.data() + at, file.take(kStep), kStep)) << at;
    }
    EXPECT_EQ(bytes.size() - at, file.remaining());
    EXPECT_EQ(nullptr, file.take(kStep));
    EXPECT_EQ(at, file.GetPosition());
}

TEST(CFileTest, ATakeOfTheWholeBufferWorksAnywhere)
{
    const std::vector<std::byte> bytes = pattern(CFile::kBufferSize + 1);
    CMemFile file(bytes);
    ASSERT_NE(nullptr, file.take(1));
    const std::byte* block = file.take(CFile::kBufferSize);
    ASSERT_NE(nullptr, block);
    EXPECT_EQ(0, std::memcmp(bytes.data() + 1, block, CFile::kBufferSize));
    EXPECT_EQ(0u, file.remaining());
}

TEST(CFileTest, TakingTooMuchFailsForGoodWithErrorZero)
{
    CMemFile file(pattern(10));
    EXPECT_EQ(nullptr, file.take(11));
    EXPECT_TRUE(file.failed());
    EXPECT_EQ(0, file.error());
    EXPECT_EQ(nullptr, file.take(1));
    std::byte one{};
    EXPECT_EQ(0u, file.Read(&one, 1));
    EXPECT_FALSE(file.Close());
}

TEST(CFileTest, GiveFillsFileInOrder)
{
    CMemFile file;
    const std::vector<std::byte> bytes = pattern(CFile::kBufferSize + 4096);
    for (std::size_t at = 0; at < bytes.size(); at += 32) {
        std::memcpy(file.give(32), bytes.data() + at, 32);
    }
    ASSERT_TRUE(file.Close());
    EXPECT_TRUE(bytes == file.bytes());
    EXPECT_EQ(bytes.size(), file.GetPosition());
}

TEST(CFileTest, AFailedFileGivesRoomThatGoesNowhere)
{
    CMemFile file;
    std::memset(file.give(4), 1, 4);
    file.fail(ENOSPC);
    for (int i = 0; i < 3; ++i) {
        std::byte* const room = file.give(CFile::kBufferSize);
        ASSERT_NE(nullptr, room);
        std::memset(room, 0x55, CFile::kBufferSize);
    }
    file.fail(EIO);
    EXPECT_EQ(ENOSPC, file.error()); // the first failure is the one that tells
    EXPECT_EQ(4u, file.GetPosition());
    EXPECT_FALSE(file.Close());
    EXPECT_TRUE(file.bytes().empty());
}

TEST(CFileTest, AClosedFileReadsAndWritesNothing)
{
    CFile file;
    std::byte one{};
    EXPECT_EQ(0u, file.Read(&one, 1));
    EXPECT_FALSE(file.Write(&one, 1));
    EXPECT_EQ(EBADF, file.error());
    EXPECT_EQ(nullptr, file.take(1));
    EXPECT_NE(nullptr, file.give(CFile::kBufferSize));
    EXPECT_FALSE(file.Close());
}

TEST(CFileTest, WritingToAFileThatIsReadFailsIt)
{
    CMemFile file(pattern(10));
    ASSERT_NE(nullptr, file.take(2));
    EXPECT_NE(nullptr, file.give(CFile::kBufferSize));
    EXPECT_TRUE(file.failed());
    EXPECT_EQ(2u, file.GetPosition());
}

int promisesBroken = 0;

TEST(CFileTest, AskingForMoreThanTheBufferIsABrokenPromise)
{
    promisesBroken = 0;
    const VexAssertHandler before =
        setVexAssertHandler([](const char*, const char*, int) { ++promisesBroken; });
    CMemFile file;
    std::memset(file.give(CFile::kBufferSize + 1), 1, CFile::kBufferSize + 1);
    CMemFile other(pattern(2 * CFile::kBufferSize));
    EXPECT_EQ(nullptr, other.take(CFile::kBufferSize + 1));
    setVexAssertHandler(before);
    EXPECT_EQ(2, promisesBroken);
    EXPECT_TRUE(file.failed());
    EXPECT_TRUE(other.failed());
}

struct RewriteRow {
    const char* name;
    std::size_t offset; // of 300 bytes; a buffer and 1000 bytes are written
};

class RewriteTest : public testing::TestWithParam<RewriteRow> {
protected:
    /// Writes the pattern, then 300 zeros over a part of it; the position must stay at the end.
    static void writeAndRewrite(CFile& file, const std::vector<std::byte>& bytes)
    {
        ASSERT_TRUE(file.Write(bytes.data(), bytes.size()));
        const std::byte zeros[300] = {};
        EXPECT_TRUE(file.Rewrite(GetParam().offset, zeros, sizeof zeros));
        EXPECT_EQ(bytes.size(), file.GetPosition());
        EXPECT_TRUE(file.Write("end", 3));
        EXPECT_TRUE(file.Close());
    }
    static std::string expected(std::vector<std::byte> bytes)
    {
        std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(GetParam().offset), 300,
                    std::byte{0});
        return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    }
    const std::vector<std::byte> bytes = pattern(CFile::kBufferSize + 1000);
};

TEST_P(RewriteTest, ChangesBytesInPlaceAndWritingGoesOnAtTheEnd)
{
    const CScratchFolder folder;
    CFile file;
    ASSERT_TRUE(file.Open(wide(folder / "a.zpl"), CFile::modeCreate | CFile::modeWrite));
    writeAndRewrite(file, bytes);
    EXPECT_TRUE(bytesOf(folder / "a.zpl") == expected(bytes) + "end");
}

TEST_P(RewriteTest, DoesTheSameInMemory)
{
    CMemFile file;
    writeAndRewrite(file, bytes);
    const std::string text(reinterpret_cast<const char*>(file.bytes().data()), file.bytes().size());
    EXPECT_TRUE(text == expected(bytes) + "end");
}

INSTANTIATE_TEST_SUITE_P(All, RewriteTest,
                         testing::Values(RewriteRow{"LongWritten", 0},
                                         RewriteRow{"AcrossTheBuffersEdge",
                                                    CFile::kBufferSize - 100},
                                         RewriteRow{"InTheBuffer", CFile::kBufferSize + 100},
                                         RewriteRow{"AtTheVeryEnd", CFile::kBufferSize + 700}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(CFileTest, RewritingWhatIsReadOrClosedFails)
{
    CMemFile file(pattern(10));
    std::byte bytes[10] = {};
    EXPECT_EQ(10u, file.Read(bytes, 10));
    EXPECT_FALSE(file.Rewrite(0, bytes, 2));
    EXPECT_EQ(EBADF, file.error());
}

struct FullPathRow {
    const char* name;
    const char* given;
    const char* full; // behind the folder "work" of the scratch folder, which is the working one
};

class FullPathTest : public testing::TestWithParam<FullPathRow> {};

TEST_P(FullPathTest, IsWhatAnOpenedFileTells)
{
    const CScratchFolder folder;
    std::filesystem::create_directory(folder / "work");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder / "work");
    const std::filesystem::path here = std::filesystem::current_path();
    CFile file;
    file.Open(CString::fromUtf8(GetParam().given), CFile::modeRead); // need not be there
    std::filesystem::current_path(before);
    EXPECT_EQ(GetParam().full[0] == '/' ? GetParam().full
                                        : (here.parent_path() / GetParam().full).string(),
              file.GetFilePath().utf8());
}

INSTANTIATE_TEST_SUITE_P(
    All, FullPathTest,
    testing::Values(FullPathRow{"PlainName", "a.zpl", "work/a.zpl"},
                    FullPathRow{"InAFolder", "b/a.zpl", "work/b/a.zpl"},
                    FullPathRow{"Dot", "./a.zpl", "work/a.zpl"},
                    FullPathRow{"FolderAbove", "../b/a.zpl", "b/a.zpl"},
                    // "b" may be a link, and then its ".." is not the folder it stands in
                    FullPathRow{"DotsBehindAFolder", "b/../a.zpl", "work/b/../a.zpl"},
                    FullPathRow{"FromTheRoot", "/b/../a.zpl", "/b/../a.zpl"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CFileTest, AMemoryFileIsReadBackAfterWriting)
{
    CMemFile file(L"note");
    EXPECT_EQ(file.GetFilePath(), L"note");
    EXPECT_TRUE(file.Write("abc", 3));
    ASSERT_TRUE(file.Close());
    ASSERT_TRUE(file.Open(L"note", CFile::modeRead));
    char text[4] = "";
    EXPECT_EQ(3u, file.Read(text, 3));
    EXPECT_STREQ("abc", text);
}

TEST(CFileTest, AMemoryFileRefusesWritingInPlaceAsAFileDoes)
{
    CMemFile file(pattern(10));
    EXPECT_FALSE(file.Open(L"note", CFile::modeWrite));
    EXPECT_EQ(EINVAL, file.error());
    EXPECT_FALSE(file.isOpen());
}

TEST(CFileTest, ReadingOnAfterTheEndGivesNothingAndIsNoFailure)
{
    CMemFile file(pattern(10));
    std::byte bytes[16] = {};
    EXPECT_EQ(10u, file.Read(bytes, 16));
    EXPECT_EQ(0u, file.Read(bytes, 16));
    EXPECT_EQ(10u, file.GetPosition());
    EXPECT_FALSE(file.failed());
    EXPECT_TRUE(file.Close());
    EXPECT_FALSE(file.Close());
    EXPECT_EQ(0u, file.Read(bytes, 16));
}

struct Refusal {
    const char* name;
    const char* path; // below the scratch folder
    int error;
};

class OpenRefusalTest : public testing::TestWithParam<Refusal> {};

TEST_P(OpenRefusalTest, ReadingSaysWhyNot)
{
    const CScratchFolder folder;
    std::filesystem::create_directory(folder / "folder");
    putBytes(folder / "file", "x");
    std::filesystem::create_symlink("circle", folder / "circle");
    ASSERT_EQ(0, mkfifo((folder / "pipe").c_str(), 0600));
    CFile file;
    EXPECT_FALSE(file.Open(wide(folder / GetParam().path), CFile::modeRead));
    EXPECT_EQ(GetParam().error, file.error());
    EXPECT_FALSE(file.isOpen());
    EXPECT_FALSE(file.Close());
}

INSTANTIATE_TEST_SUITE_P(All, OpenRefusalTest,
                         testing::Values(Refusal{"Missing", "none", ENOENT},
                                         Refusal{"Folder", "folder", EISDIR},
                                         Refusal{"Pipe", "pipe", EINVAL},
                                         Refusal{"BelowAFile", "file/x", ENOTDIR},
                                         Refusal{"SlashBehindAFile", "file/", ENOTDIR},
                                         Refusal{"LinkToItself", "circle", ELOOP}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(CFileTest, APathWithNulAndAFlagForWritingInPlaceAreRefused)
{
    CFile file;
    EXPECT_FALSE(file.Open(CString(std::wstring(L"a\0b", 3)), CFile::modeRead));
    EXPECT_EQ(EINVAL, file.error());
    EXPECT_FALSE(file.Open(L"a", CFile::modeWrite));
    EXPECT_EQ(EINVAL, file.error());
    EXPECT_FALSE(file.Open(L"", CFile::modeRead));
    EXPECT_EQ(ENOENT, file.error());
}

TEST(CFileTest, AReadErrorSticksWithItsNumber)
{
    const CScratchFolder folder;
    putBytes(folder / "a", std::string(100, 'x'));
    CStandInMachine machine;
    CFaultyLayer layer;
    machine.layer = &layer;
    const CVexMachineScope scope(machine);
    CFile file;
    layer.failAt(3, EIO, CFaultyLayer::Lasting::kOnce); // status, openRead, read
    ASSERT_TRUE(file.Open(wide(folder / "a"), CFile::modeRead));
    EXPECT_EQ(nullptr, file.take(1));
    EXPECT_EQ(EIO, file.error());
    EXPECT_EQ(nullptr, file.take(1));
    EXPECT_FALSE(file.Close());
}

TEST(CFileTest, AFileThatShrinksWhileItIsReadFails)
{
    const CScratchFolder folder;
    putBytes(folder / "a", std::string(CFile::kBufferSize + 10, 'x'));
    CFile file;
    ASSERT_TRUE(file.Open(wide(folder / "a"), CFile::modeRead));
    ASSERT_NE(nullptr, file.take(1));
    std::filesystem::resize_file(folder / "a", 5);
    EXPECT_NE(nullptr, file.take(CFile::kBufferSize - 1));
    EXPECT_EQ(nullptr, file.take(10));
    EXPECT_TRUE(file.failed());
    EXPECT_EQ(0, file.error());
}

TEST(CFileTest, AFileThatGrowsWhileItIsReadKeepsItsLength)
{
    const CScratchFolder folder;
    putBytes(folder / "a", "12345");
    CFile file;
    ASSERT_TRUE(file.Open(wide(folder / "a"), CFile::modeRead));
    putBytes(folder / "a", "1234567890");
    std::byte bytes[10];
    EXPECT_EQ(5u, file.Read(bytes, 10));
    EXPECT_EQ(0u, file.remaining());
}

TEST(CFileTest, SignalsAndShortWritesAreTakenUpAgain)
{
    const CScratchFolder folder;
    CStandInMachine machine;
    CFaultyLayer layer;
    machine.layer = &layer;
    layer.setInterrupting(true);
    layer.setMostPerWrite(1000);
    const CVexMachineScope scope(machine);
    const std::vector<std::byte> bytes = pattern(CFile::kBufferSize + 777);
    CFile file;
    ASSERT_TRUE(file.Open(wide(folder / "a"), CFile::modeCreate | CFile::modeWrite));
    EXPECT_TRUE(file.Write(bytes.data(), bytes.size()));
    ASSERT_TRUE(file.Close());
    ASSERT_TRUE(file.Open(wide(folder / "a"), CFile::modeRead));
    std::vector<std::byte> back(bytes.size());
    EXPECT_EQ(bytes.size(), file.Read(back.data(), back.size()));
    EXPECT_TRUE(bytes == back);
}

TEST(CFileTest, AWriteThatTakesNothingIsAnError)
{
    const CScratchFolder folder;
    CStandInMachine machine;
    CFaultyLayer layer;
    machine.layer = &layer;
    layer.setMostPerWrite(0);
    const CVexMachineScope scope(machine);
    CFile file;
    ASSERT_TRUE(file.Open(wide(folder / "a"), CFile::modeCreate | CFile::modeWrite));
    EXPECT_TRUE(file.Write("x", 1));
    EXPECT_FALSE(file.Close());
    EXPECT_EQ(EIO, file.error());
    EXPECT_TRUE(folder.names().empty());
}

} // namespace
