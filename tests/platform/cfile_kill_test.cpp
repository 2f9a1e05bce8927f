#include "platform/base/cfile.h"
#include "tests/platform/scratchfolder.h"

#include <csignal>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <sys/wait.h>

namespace {

constexpr std::size_t kDrawingSize = CFile::kBufferSize + 4321;

// Saves a drawing of a's, of b's and so on, one after the other, until it is killed.
[[noreturn]] void saveForEver(const CScratchFolder& folder)
{
    for (unsigned round = 0;; ++round) {
        const std::string bytes(kDrawingSize, static_cast<char>('a' + round % 26));
        CFile file;
        file.setBackupPath(wide(folder / "a.bak"));
        file.Open(wide(folder / "a.zpl"), CFile::modeCreate | CFile::modeWrite);
        file.Write(bytes.data(), bytes.size());
        file.Close();
    }
}

bool isWhole(const std::string& bytes)
{
    return bytes.size() == kDrawingSize &&
           bytes.find_first_not_of(bytes.front()) == std::string::npos;
}

void removeTemporaries(const CScratchFolder& folder)
{
    for (const std::string& name : folder.names()) {
        if (name.front() == '.') {
            std::filesystem::remove(folder / name);
        }
    }
}

TEST(SaveKilledTest, NoDrawingIsLostWhereverTheProcessDies)
{
    constexpr int kKills = 200;
    constexpr unsigned kSeed = 20260314;
    const CScratchFolder folder;
    putBytes(folder / "a.zpl", std::string(kDrawingSize, 'z'));
    std::mt19937 random(kSeed);
    std::uniform_int_distribution<useconds_t> microseconds(0, 6000);
    for (int kill = 0; kill < kKills; ++kill) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            saveForEver(folder);
        }
        usleep(microseconds(random));
        ASSERT_EQ(0, ::kill(child, SIGKILL));
        ASSERT_EQ(child, waitpid(child, nullptr, 0));
        ASSERT_TRUE(isWhole(bytesOf(folder / "a.zpl"))) << "kill " << kill << ", seed " << kSeed;
        const std::string backup = bytesOf(folder / "a.bak");
        ASSERT_TRUE(backup == "(none)" || isWhole(backup)) << "kill " << kill;
        removeTemporaries(folder);
    }
    EXPECT_TRUE(isWhole(bytesOf(folder / "a.bak"))) << "no save came as far as its backup";
}

} // namespace
