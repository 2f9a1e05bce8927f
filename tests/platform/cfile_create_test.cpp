#include "platform/base/cfile.h"
#include "tests/platform/faultylayer.h"
#include "tests/platform/scratchfolder.h"
#include "tests/platform/standinmachine.h"

#include <cerrno>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using testing::ElementsAre;

class CreateTest : public testing::Test {
protected:
    bool save(const std::filesystem::path& path, const std::string& bytes,
              const CString& backup = CString())
    {
        file.setBackupPath(backup);
        return file.Open(wide(path), CFile::modeCreate | CFile::modeWrite) &&
               file.Write(bytes.data(), bytes.size()) && file.Close();
    }
    static unsigned modeOf(const std::filesystem::path& path)
    {
        struct stat found = {};
        return stat(path.c_str(), &found) == 0 ? found.st_mode & 0777u : 0u;
    }

    CScratchFolder folder;
    CFile file;
};

TEST_F(CreateTest, TheOldFileStandsUntilClose)
{
    putBytes(folder / "a.zpl", "old");
    ASSERT_TRUE(file.Open(wide(folder / "a.zpl"), CFile::modeCreate | CFile::modeWrite));
    EXPECT_TRUE(file.Write("new", 3));
    EXPECT_EQ("old", bytesOf(folder / "a.zpl"));
    EXPECT_EQ(2u, folder.names().size());
    EXPECT_TRUE(file.Close());
    EXPECT_EQ("new", bytesOf(folder / "a.zpl"));
    EXPECT_THAT(folder.names(), ElementsAre("a.zpl"));
    EXPECT_FALSE(file.syncFailed());
}

TEST_F(CreateTest, AbortAndTheEndOfTheObjectLeaveTheOldFile)
{
    putBytes(folder / "a.zpl", "old");
    ASSERT_TRUE(file.Open(wide(folder / "a.zpl"), CFile::modeCreate | CFile::modeWrite));
    EXPECT_TRUE(file.Write("new", 3));
    file.Abort();
    EXPECT_FALSE(file.Close());
    {
        CFile dropped;
        ASSERT_TRUE(dropped.Open(wide(folder / "a.zpl"), CFile::modeCreate | CFile::modeWrite));
    }
    EXPECT_EQ("old", bytesOf(folder / "a.zpl"));
    EXPECT_THAT(folder.names(), ElementsAre("a.zpl"));
}

TEST_F(CreateTest, AFileMarkedFailedIsNotPutInPlace)
{
    putBytes(folder / "a.zpl", "old");
    ASSERT_TRUE(file.Open(wide(folder / "a.zpl"), CFile::modeCreate | CFile::modeWrite));
    file.fail();
    EXPECT_FALSE(file.Close());
    EXPECT_EQ("old", bytesOf(folder / "a.zpl"));
    EXPECT_THAT(folder.names(), ElementsAre("a.zpl"));
}

TEST_F(CreateTest, OpeningAgainGivesUpWhatWasOpen)
{
    ASSERT_TRUE(file.Open(wide(folder / "a.zpl"), CFile::modeCreate | CFile::modeWrite));
    EXPECT_TRUE(save(folder / "b.zpl", "b"));
    EXPECT_THAT(folder.names(), ElementsAre("b.zpl"));
}

TEST_F(CreateTest, LinksAreFollowedAndStayLinks)
{
    std::filesystem::create_directory(folder / "store");
    putBytes(folder / "store/real.zpl", "old");
    std::filesystem::create_symlink("store/real.zpl", folder / "hop.zpl");
    std::filesystem::create_symlink(folder / "hop.zpl", folder / "a.zpl");
    ASSERT_TRUE(save(folder / "a.zpl", "new"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "a.zpl"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "hop.zpl"));
    EXPECT_EQ("new", bytesOf(folder / "store/real.zpl"));
    EXPECT_FALSE(std::filesystem::is_symlink(folder / "store/real.zpl"));
}

TEST_F(CreateTest, ALinkThatLeadsNowhereGetsItsFile)
{
    std::filesystem::create_directory(folder / "store");
    std::filesystem::create_symlink("store/real.zpl", folder / "a.zpl");
    ASSERT_TRUE(save(folder / "a.zpl", "new"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "a.zpl"));
    EXPECT_EQ("new", bytesOf(folder / "store/real.zpl"));
}

TEST_F(CreateTest, LinksInACircleAreRefused)
{
    std::filesystem::create_symlink("b.zpl", folder / "a.zpl");
    std::filesystem::create_symlink("a.zpl", folder / "b.zpl");
    EXPECT_FALSE(save(folder / "a.zpl", "new"));
    EXPECT_EQ(ELOOP, file.error());
}

TEST_F(CreateTest, TheModeIsKeptWhateverTheMask)
{
    putBytes(folder / "a.zpl", "old");
    ASSERT_EQ(0, chmod((folder / "a.zpl").c_str(), 0666));
    const mode_t mask = umask(027);
    const bool replaced = save(folder / "a.zpl", "new");
    const bool created = save(folder / "b.zpl", "new");
    umask(mask);
    EXPECT_TRUE(replaced && created);
    EXPECT_EQ(0666u, modeOf(folder / "a.zpl"));
    EXPECT_EQ(0640u, modeOf(folder / "b.zpl"));
}

TEST_F(CreateTest, AFileThatNobodyMayWriteIsNotReplaced)
{
    putBytes(folder / "a.zpl", "old");
    ASSERT_EQ(0, chmod((folder / "a.zpl").c_str(), 0444));
    EXPECT_FALSE(save(folder / "a.zpl", "new"));
    EXPECT_EQ(EACCES, file.error());
    EXPECT_EQ("old", bytesOf(folder / "a.zpl"));
}

TEST_F(CreateTest, FoldersPipesAndMissingFoldersAreRefused)
{
    ASSERT_EQ(0, mkfifo((folder / "pipe").c_str(), 0600));
    EXPECT_FALSE(save(folder / "", "x"));
    EXPECT_EQ(EISDIR, file.error());
    EXPECT_FALSE(save(folder / "pipe", "x"));
    EXPECT_EQ(EINVAL, file.error());
    EXPECT_FALSE(save(folder / "none/a.zpl", "x"));
    EXPECT_EQ(ENOENT, file.error());
    EXPECT_THAT(folder.names(), ElementsAre("pipe"));
}

TEST_F(CreateTest, AFolderThatTakesNoFilesRefusesTheOpen)
{
    EXPECT_FALSE(file.Open(L"/proc/drawing.zpl", CFile::modeCreate | CFile::modeWrite));
    EXPECT_NE(0, file.error());
    EXPECT_FALSE(file.isOpen());
}

// Runs `act` in a process of its own that is nobody in particular, since the superuser may write
// everywhere, and gives what it gave (0 to 254); 255 when it could not be run.
int asOrdinaryUser(const std::function<int()>& act)
{
    constexpr int kNotRun = 255;
    constexpr uid_t kNobody = 65534;
    const pid_t child = fork();
    if (child == 0) {
        const bool super = geteuid() == 0;
        if (super && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) {
            _exit(kNotRun);
        }
        _exit(act());
    }
    int status = 0;
    const bool ended = child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status);
    return ended ? WEXITSTATUS(status) : kNotRun;
}

TEST_F(CreateTest, AFolderWithoutTheRightToWriteRefusesTheOpen)
{
    std::filesystem::create_directory(folder / "kept");
    putBytes(folder / "kept/a.zpl", "old");
    ASSERT_EQ(0, chmod((folder / "").c_str(), 0755));
    ASSERT_EQ(0, chmod((folder / "kept/a.zpl").c_str(), 0666));
    ASSERT_EQ(0, chmod((folder / "kept").c_str(), 0555));
    const int error =
        asOrdinaryUser([&] { return save(folder / "kept/a.zpl", "new") ? 0 : file.error(); });
    ASSERT_EQ(0, chmod((folder / "kept").c_str(), 0755));
    EXPECT_EQ(EACCES, error);
    EXPECT_EQ("old", bytesOf(folder / "kept/a.zpl"));
    EXPECT_THAT(folder.names(), ElementsAre("kept"));
    std::filesystem::remove(folder / "kept/a.zpl");
    EXPECT_TRUE(std::filesystem::is_empty(folder / "kept"));
}

TEST_F(CreateTest, ANameThatEndsInASlashIsNoFile)
{
    putBytes(folder / "a.zpl", "old");
    EXPECT_FALSE(save(folder / "a.zpl/", "new"));
    EXPECT_EQ(ENOTDIR, file.error());
    EXPECT_FALSE(save(folder / "none.zpl/", "new"));
    EXPECT_EQ(ENOENT, file.error());
    EXPECT_EQ("old", bytesOf(folder / "a.zpl"));
    EXPECT_THAT(folder.names(), ElementsAre("a.zpl"));
}

TEST_F(CreateTest, NamesLongerThanTheSystemTakesAreRefusedAtOnce)
{
    EXPECT_FALSE(save(folder / std::string(256, 'a'), "new"));
    EXPECT_EQ(ENAMETOOLONG, file.error());
    std::string deep;
    for (int i = 0; i < 1000; ++i) {
        deep += "abcd/";
    }
    EXPECT_FALSE(save(folder / (deep + "a.zpl"), "new"));
    EXPECT_NE(0, file.error()) << "too long, or the first folder is missing";
    EXPECT_TRUE(folder.names().empty());
}

TEST_F(CreateTest, AFileOfNoBytesIsWrittenAndReadBack)
{
    EXPECT_TRUE(save(folder / "a.zpl", ""));
    EXPECT_EQ("", bytesOf(folder / "a.zpl"));
    ASSERT_TRUE(file.Open(wide(folder / "a.zpl"), CFile::modeRead));
    std::byte one{};
    EXPECT_EQ(0u, file.Read(&one, 1));
    EXPECT_EQ(0u, file.remaining());
    EXPECT_TRUE(file.Close());
    EXPECT_FALSE(file.Close()) << "it is closed";
}

TEST_F(CreateTest, NamesAsLongAsTheSystemTakesAreSaved)
{
    std::string name;
    for (int i = 0; i < 82; ++i) {
        name += "\xe7\xae\xa1"; // three bytes
    }
    name += ".zpl"; // 250 bytes: less would be left for a plain suffix
    EXPECT_TRUE(save(folder / name, "new"));
    EXPECT_THAT(folder.names(), ElementsAre(name));
}

TEST_F(CreateTest, TemporariesOfOtherProcessesAreLeftAlone)
{
    putBytes(folder / ".a.zpl.1-1.tmp", "theirs");
    ASSERT_TRUE(save(folder / "a.zpl", "new"));
    EXPECT_EQ("theirs", bytesOf(folder / ".a.zpl.1-1.tmp"));
}

TEST_F(CreateTest, ANameTakenByAnEndedProcessIsPassedOver)
{
    const std::string before = ".a.zpl." + std::to_string(getpid()) + "-";
    for (int i = 1; i < 400; ++i) {
        if (i % 50 != 0) { // every fiftieth number is free
            putBytes(folder / (before + std::to_string(i) + ".tmp"), "theirs");
        }
    }
    EXPECT_TRUE(save(folder / "a.zpl", "new"));
    EXPECT_EQ("new", bytesOf(folder / "a.zpl"));
    EXPECT_EQ(393u, folder.names().size());
}

class BackupTest : public CreateTest {};

TEST_F(BackupTest, ABackupNameWithNulFailsTheSave)
{
    putBytes(folder / "a.zpl", "old");
    putBytes(folder / "a.bak", "other");
    std::wstring name = wide(folder / "a.bak").str();
    name += std::wstring(L"\0.x", 3);
    EXPECT_FALSE(save(folder / "a.zpl", "new", CString(name)));
    EXPECT_EQ(EINVAL, file.error());
    EXPECT_EQ("old", bytesOf(folder / "a.zpl"));
    EXPECT_EQ("other", bytesOf(folder / "a.bak"));
}

TEST_F(BackupTest, TheOldFileStandsUnderTheBackupsName)
{
    putBytes(folder / "a.zpl", "old");
    putBytes(folder / "a.bak", "older");
    ASSERT_TRUE(save(folder / "a.zpl", "new", wide(folder / "a.bak")));
    EXPECT_EQ("new", bytesOf(folder / "a.zpl"));
    EXPECT_EQ("old", bytesOf(folder / "a.bak"));
    EXPECT_THAT(folder.names(), ElementsAre("a.bak", "a.zpl"));
}

TEST_F(BackupTest, WithoutAnOldFileTheBackupIsLeftAlone)
{
    putBytes(folder / "a.bak", "older");
    ASSERT_TRUE(save(folder / "a.zpl", "new", wide(folder / "a.bak")));
    EXPECT_EQ("older", bytesOf(folder / "a.bak"));
}

TEST_F(BackupTest, AFolderWithAPointInItsNameIsNoConcern)
{
    std::filesystem::create_directory(folder / "rev.2");
    putBytes(folder / "rev.2/plan", "old");
    ASSERT_TRUE(save(folder / "rev.2/plan", "new", wide(folder / "rev.2/plan.bak")));
    EXPECT_EQ("old", bytesOf(folder / "rev.2/plan.bak"));
    EXPECT_EQ("new", bytesOf(folder / "rev.2/plan"));
}

TEST_F(BackupTest, TheBackupMayStandInAnotherFolder)
{
    std::filesystem::create_directory(folder / "old");
    putBytes(folder / "a.zpl", "old");
    ASSERT_TRUE(save(folder / "a.zpl", "new", wide(folder / "old/a.zpl")));
    EXPECT_EQ("old", bytesOf(folder / "old/a.zpl"));
    EXPECT_THAT(folder.names(), ElementsAre("a.zpl", "old"));
}

TEST_F(BackupTest, AFileThatIsItsOwnBackupIsJustReplaced)
{
    putBytes(folder / "a.bak", "old");
    ASSERT_TRUE(save(folder / "a.bak", "new", wide(folder / "a.bak")));
    EXPECT_EQ("new", bytesOf(folder / "a.bak"));
    EXPECT_THAT(folder.names(), ElementsAre("a.bak"));
}

TEST_F(BackupTest, ALinkToTheTargetIsNotReplacedByItsBackup)
{
    putBytes(folder / "a.zpl", "old");
    std::filesystem::create_symlink("a.zpl", folder / "a.bak");
    ASSERT_TRUE(save(folder / "a.zpl", "new", wide(folder / "a.bak")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "a.bak"));
    EXPECT_EQ("new", bytesOf(folder / "a.zpl"));
}

TEST_F(BackupTest, ASaveThatDiedAfterItsBackupIsFollowedByAWholeOne)
{
    putBytes(folder / "a.zpl", "old"); // both names lead to one file, as such a save leaves them
    std::filesystem::create_hard_link(folder / "a.zpl", folder / "a.bak");
    ASSERT_TRUE(save(folder / "a.zpl", "new", wide(folder / "a.bak")));
    EXPECT_EQ("new", bytesOf(folder / "a.zpl"));
    EXPECT_EQ("old", bytesOf(folder / "a.bak"));
    EXPECT_THAT(folder.names(), ElementsAre("a.bak", "a.zpl"));
}

TEST_F(BackupTest, AFolderInTheBackupsPlaceFailsTheSave)
{
    putBytes(folder / "a.zpl", "old");
    std::filesystem::create_directory(folder / "a.bak");
    EXPECT_FALSE(save(folder / "a.zpl", "new", wide(folder / "a.bak")));
    EXPECT_EQ(EISDIR, file.error());
    EXPECT_EQ("old", bytesOf(folder / "a.zpl"));
    EXPECT_THAT(folder.names(), ElementsAre("a.bak", "a.zpl"));
}

TEST_F(BackupTest, WhereThereAreNoLinksTheBackupIsACopyWithTheMode)
{
    CStandInMachine machine;
    CFaultyLayer layer;
    machine.layer = &layer;
    const CVexMachineScope scope(machine);
    for (const int error : {EPERM, EOPNOTSUPP, EMLINK, EXDEV}) {
        layer.setLinkAnswer(-error);
        putBytes(folder / "a.zpl", "old");
        ASSERT_EQ(0, chmod((folder / "a.zpl").c_str(), 0600));
        ASSERT_TRUE(save(folder / "a.zpl", "new", wide(folder / "a.bak"))) << error;
        EXPECT_EQ("old", bytesOf(folder / "a.bak"));
        EXPECT_EQ(0600u, modeOf(folder / "a.bak"));
        EXPECT_THAT(folder.names(), ElementsAre("a.bak", "a.zpl"));
        std::filesystem::remove(folder / "a.bak");
    }
}

} // namespace
