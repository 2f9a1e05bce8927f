#include "platform/base/cfile.h"
#include "tests/platform/faultylayer.h"
#include "tests/platform/scratchfolder.h"
#include "tests/platform/standinmachine.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <tuple>

namespace {

using Lasting = CFaultyLayer::Lasting;

// What a save finds and how the system treats it.
struct Setting {
    const char* name;
    bool targetExists;
    bool backupExists;
    bool keepsBackup;
    int linkAnswer;
    std::size_t mostPerWrite;
};

constexpr std::size_t kWhole = std::size_t{1} << 30;

constexpr Setting kSettings[] = {
    {"Fresh", false, false, false, 0, kWhole},
    {"Replacing", true, false, false, 0, kWhole},
    {"FirstBackup", true, false, true, 0, kWhole},
    {"LaterBackup", true, true, true, 0, kWhole},
    {"CopiedBackup", true, true, true, -EPERM, kWhole},
    {"ShortWrites", true, true, true, -EXDEV, CFile::kBufferSize / 3},
    {"NoTargetButBackup", false, true, true, 0, kWhole},
};

using Case = std::tuple<Setting, int, Lasting>;

class SaveFaultTest : public testing::TestWithParam<Case> {
protected:
    SaveFaultTest() : scope(machine) { machine.layer = &layer; }

    [[nodiscard]] const Setting& setting() const { return std::get<0>(GetParam()); }
    [[nodiscard]] bool once() const { return std::get<2>(GetParam()) == Lasting::kOnce; }

    void layOut()
    {
        for (const std::string& name : folder.names()) {
            std::filesystem::remove(folder / name);
        }
        if (setting().targetExists) {
            putBytes(folder / "a.zpl", old);
        }
        if (setting().backupExists) {
            putBytes(folder / "a.bak", older);
        }
        layer.setLinkAnswer(setting().linkAnswer);
        layer.setMostPerWrite(setting().mostPerWrite);
    }
    bool save(CFile& file)
    {
        if (setting().keepsBackup) {
            file.setBackupPath(wide(folder / "a.bak"));
        }
        file.Open(wide(folder / "a.zpl"), CFile::modeCreate | CFile::modeWrite);
        std::string text = fresh;
        text.replace(7, 4, "????"); // a count, say, that is known only at the end
        for (std::size_t at = 0; at < text.size(); at += 1000) {
            const std::size_t part = std::min<std::size_t>(1000, text.size() - at);
            file.Write(text.data() + at, part);
        }
        file.Rewrite(7, fresh.data() + 7, 4);
        return file.Close();
    }
    // The names that may stand beside the drawing once no failure is in the way of tidying up.
    void expectOnlyDrawings() const
    {
        for (const std::string& name : folder.names()) {
            EXPECT_TRUE(name == "a.zpl" || name == "a.bak") << "left behind: " << name;
        }
    }
    void expectOneWholeDrawing(bool saved) const
    {
        const std::string before = setting().targetExists ? old : "(none)";
        EXPECT_TRUE(bytesOf(folder / "a.zpl") == (saved ? fresh : before))
            << "the file does not hold what the result says";
        const std::string backup = bytesOf(folder / "a.bak");
        const std::string kept = setting().backupExists ? older : "(none)";
        if (saved && setting().keepsBackup && setting().targetExists) {
            EXPECT_TRUE(backup == old) << "the backup of a good save is the old file";
        } else {
            EXPECT_TRUE(backup == kept || backup == old) << "the backup is not whole";
        }
    }

    const std::string older = "the drawing before the old one";
    const std::string old = std::string(2 * CFile::kBufferSize / 3, 'o');
    const std::string fresh = std::string(2 * CFile::kBufferSize + 5, 'n');
    CScratchFolder folder;
    CStandInMachine machine;
    CFaultyLayer layer;
    CVexMachineScope scope;
};

TEST_P(SaveFaultTest, EveryFailureLeavesOneWholeDrawingAndSaysWhich)
{
    constexpr int kMoreCallsThanASaveMakes = 200;
    const int error = std::get<1>(GetParam());
    int failedAt = 0;
    bool ranClean = false;
    for (int call = 1; !ranClean && call < kMoreCallsThanASaveMakes; ++call) {
        layOut();
        layer.failAt(call, error, std::get<2>(GetParam()));
        CFile file;
        const bool saved = save(file);
        SCOPED_TRACE("call " + std::to_string(call) + " of " + std::to_string(layer.calls()));
        ranClean = !layer.tripped();
        failedAt += saved ? 0 : 1;
        expectOneWholeDrawing(saved);
        const std::string& failed = layer.failedName();
        if (saved) {
            EXPECT_TRUE(ranClean || failed == "syncFolder" || failed == "closeRead") << failed;
            EXPECT_EQ(failed == "syncFolder", file.syncFailed());
        } else {
            EXPECT_EQ(error, file.error());
        }
        if (once() || ranClean) {
            expectOnlyDrawings();
        }
    }
    EXPECT_TRUE(ranClean);
    // resolve, status, create, three writes, seek, write, seek back, sync, close, rename
    EXPECT_GE(failedAt, 11);
    EXPECT_TRUE(bytesOf(folder / "a.zpl") == fresh);
}

INSTANTIATE_TEST_SUITE_P(Matrix, SaveFaultTest,
                         testing::Combine(testing::ValuesIn(kSettings),
                                          testing::Values(EIO, ENOSPC, EROFS),
                                          testing::Values(Lasting::kOnce, Lasting::kForGood)),
                         [](const auto& row) {
                             const int error = std::get<1>(row.param);
                             return std::string(std::get<0>(row.param).name) +
                                    (error == EIO      ? "Io"
                                     : error == ENOSPC ? "NoSpace"
                                                       : "ReadOnly") +
                                    (std::get<2>(row.param) == Lasting::kOnce ? "Once" : "ForGood");
                         });

TEST(SaveOrderTest, BytesAreOnTheDiskBeforeTheBackupAndTheBackupBeforeTheName)
{
    const CScratchFolder folder;
    CStandInMachine machine;
    CFaultyLayer layer;
    machine.layer = &layer;
    const CVexMachineScope scope(machine);
    putBytes(folder / "a.zpl", "old");
    CFile file;
    file.setBackupPath(wide(folder / "a.bak"));
    ASSERT_TRUE(file.Open(wide(folder / "a.zpl"), CFile::modeCreate | CFile::modeWrite));
    EXPECT_TRUE(file.Write("new", 3));
    ASSERT_TRUE(file.Close());
    EXPECT_THAT(layer.names(),
                testing::ElementsAre("resolve", "status", "createNew", "write", "sync", "close",
                                     "status", "status", "link", "rename", "rename", "syncFolder"));
}

TEST(SaveOrderTest, ACopiedBackupIsOnTheDiskBeforeItTakesItsName)
{
    const CScratchFolder folder;
    CStandInMachine machine;
    CFaultyLayer layer;
    machine.layer = &layer;
    layer.setLinkAnswer(-EPERM);
    const CVexMachineScope scope(machine);
    putBytes(folder / "a.zpl", "old");
    CFile file;
    file.setBackupPath(wide(folder / "a.bak"));
    ASSERT_TRUE(file.Open(wide(folder / "a.zpl"), CFile::modeCreate | CFile::modeWrite));
    ASSERT_TRUE(file.Close());
    const std::vector<std::string>& names = layer.names();
    const auto link = std::find(names.begin(), names.end(), "link");
    EXPECT_THAT(std::vector<std::string>(link, names.end()),
                testing::ElementsAre("link", "openRead", "createNew", "read", "write", "read",
                                     "sync", "close", "closeRead", "rename", "rename",
                                     "syncFolder"));
}

TEST(SaveOrderTest, AFolderThatCannotBeSyncedIsToldButTheSaveStands)
{
    const CScratchFolder folder;
    CStandInMachine machine;
    CFaultyLayer layer;
    machine.layer = &layer;
    const CVexMachineScope scope(machine);
    layer.failAt(8, EIO, Lasting::kOnce); // resolve, status, createNew, write, sync, close, rename
    CFile file;
    ASSERT_TRUE(file.Open(wide(folder / "a.zpl"), CFile::modeCreate | CFile::modeWrite));
    EXPECT_TRUE(file.Write("new", 3));
    EXPECT_TRUE(file.Close());
    EXPECT_TRUE(file.syncFailed());
    EXPECT_FALSE(file.failed());
    EXPECT_EQ("new", bytesOf(folder / "a.zpl"));
}

} // namespace
