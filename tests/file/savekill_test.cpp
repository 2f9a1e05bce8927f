#include "tests/file/sampledrawing.h"
#include "tests/platform/scratchfolder.h"

#include <csignal>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class SaveKillTest : public FileTest {
protected:
    /// Saves two drawings in turn under one name until it is killed.
    [[noreturn]] void saveForEver()
    {
        CVexDbDatabase small(true);
        fillSample(small);
        CVexDbDatabase large(true);
        fillSample(large);
        for (int i = 0; i < 2000; ++i) {
            addTo(large, new CVexDbLine({0.0, 0.0}, {1.0, 1.0 * i}));
        }
        for (;;) {
            small.SaveAs(target());
            large.SaveAs(target());
        }
    }
    [[nodiscard]] CString target() const { return wide(folder / "a.zpl"); }
    /// Entities in the model space of the drawing on disk; none when it does not read whole.
    std::size_t entitiesOnDisk(const char* name)
    {
        CVexDbDatabase drawing(false);
        CFile file;
        CArchive archive(&file, CArchive::load);
        const bool whole = file.Open(wide(folder / name), CFile::modeRead) && drawing.Read(archive);
        return whole ? entitiesOf(drawing).size() : 0;
    }

    CScratchFolder folder;
};

TEST_F(SaveKillTest, DrawingReadsWholeWhereverTheProcessDies)
{
    constexpr int kKills = 200;
    constexpr unsigned kSeed = 20260314;
    constexpr std::size_t kSmall = 4;
    constexpr std::size_t kLarge = 2004;
    CVexDbDatabase first(true);
    fillSample(first);
    ASSERT_TRUE(first.SaveAs(target()));
    std::mt19937 random(kSeed);
    std::uniform_int_distribution<useconds_t> microseconds(2000, 25000);
    for (int kill = 0; kill < kKills; ++kill) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            saveForEver();
        }
        usleep(microseconds(random));
        ASSERT_EQ(0, ::kill(child, SIGKILL));
        ASSERT_EQ(child, waitpid(child, nullptr, 0));
        const std::size_t found = entitiesOnDisk("a.zpl");
        ASSERT_TRUE(found == kSmall || found == kLarge) << "kill " << kill << ", seed " << kSeed;
        for (const std::string& name : folder.names()) {
            if (name.front() == '.') {
                std::filesystem::remove(folder / name); // what the dead process was writing
            }
        }
    }
    const std::size_t kept = entitiesOnDisk("a.bak");
    EXPECT_TRUE(kept == kSmall || kept == kLarge) << "no save came as far as its backup";
}

} // namespace
