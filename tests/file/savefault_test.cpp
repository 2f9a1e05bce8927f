#include "tests/file/sampledrawing.h"
#include "tests/platform/faultylayer.h"
#include "tests/platform/scratchfolder.h"

#include <cerrno>
#include <string>
#include <tuple>

namespace {

using Lasting = CFaultyLayer::Lasting;
using Case = std::tuple<int, Lasting, bool>; // the error, how long, whether a backup stands already

class SaveAsFaultTest : public FileTest, public testing::WithParamInterface<Case> {
protected:
    SaveAsFaultTest()
    {
        machine.layer = &layer;
        fillSample(before);
        fillSample(after);
        addTo(after, new CVexDbLine({0.0, 0.0}, {9.0, 9.0}));
    }
    [[nodiscard]] CString target() const { return wide(folder / "a.zpl"); }
    /// Puts the old drawing under the target's name again; its bytes.
    std::string layOut()
    {
        layer.failAt(0, 0, Lasting::kOnce);
        for (const std::string& name : folder.names()) {
            std::filesystem::remove(folder / name);
        }
        EXPECT_TRUE(before.SaveAs(target()));
        if (std::get<2>(GetParam())) {
            putBytes(folder / "a.bak", "an older drawing");
        }
        return bytesOf(folder / "a.zpl");
    }

    CScratchFolder folder;
    CFaultyLayer layer;
    CVexDbDatabase before{true};
    CVexDbDatabase after{true};
};

TEST_P(SaveAsFaultTest, LeavesTheOldOrTheNewDrawingWholeAndSaysWhich)
{
    const auto [error, lasting, backup] = GetParam();
    layOut();
    ASSERT_TRUE(after.SaveAs(target()));
    const std::string fresh = bytesOf(folder / "a.zpl");
    for (int call = 1;; ++call) {
        ASSERT_LT(call, 200) << "a save makes fewer calls";
        const std::string old = layOut();
        machine.reports.clear();
        layer.failAt(call, error, lasting);
        const bool stands = after.SaveAs(target());
        const bool tripped = layer.tripped();
        layer.failAt(0, 0, Lasting::kOnce);
        ASSERT_TRUE((stands ? fresh : old) == bytesOf(folder / "a.zpl")) << "call " << call;
        // One message for a save that failed, none for one that stands.
        ASSERT_EQ(stands ? 0u : 1u, machine.reports.size()) << "call " << call;
        ASSERT_EQ(stands ? 0u : 1u, after.lastReport().faultCount) << "call " << call;
        if (!tripped) {
            EXPECT_TRUE(stands);
            break;
        }
    }
    CVexDbDatabase again(false);
    CFile file;
    ASSERT_TRUE(file.Open(target(), CFile::modeRead));
    CArchive archive(&file, CArchive::load);
    EXPECT_TRUE(again.Read(archive));
    EXPECT_WHOLE(again);
}

INSTANTIATE_TEST_SUITE_P(All, SaveAsFaultTest,
                         testing::Combine(testing::Values(EIO, ENOSPC, EROFS),
                                          testing::Values(Lasting::kOnce, Lasting::kForGood),
                                          testing::Bool()));

class SaveAsTest : public FileTest {
protected:
    [[nodiscard]] CString path(const char* name) const { return wide(folder / name); }

    CScratchFolder folder;
    CVexDbDatabase drawing{false};
};

TEST_F(SaveAsTest, KeepsWhatStoodThereUnderTheBackupsName)
{
    putBytes(folder / "a.zpl", "the drawing before");
    putBytes(folder / "a.bak", "the one before that");
    ASSERT_TRUE(drawing.SaveAs(path("a.zpl")));
    EXPECT_EQ("the drawing before", bytesOf(folder / "a.bak"));
    EXPECT_EQ((std::vector<std::string>{"a.bak", "a.zpl"}), folder.names());
}

TEST_F(SaveAsTest, FirstSaveMakesNoBackup)
{
    ASSERT_TRUE(drawing.SaveAs(path("a.zpl")));
    EXPECT_EQ((std::vector<std::string>{"a.zpl"}), folder.names());
}

TEST_F(SaveAsTest, BackupIsNamedAfterTheFileAndNeverAfterAPointInItsFolder)
{
    std::filesystem::create_directory(folder / "v1.0");
    putBytes(folder / "v1.0/plan", "the drawing before");
    ASSERT_TRUE(drawing.SaveAs(path("v1.0/plan")));
    EXPECT_EQ("the drawing before", bytesOf(folder / "v1.0/plan.bak"));
}

TEST_F(SaveAsTest, DrawingThatIsItsOwnBackupIsReplacedWithoutOne)
{
    putBytes(folder / "a.bak", "the drawing before");
    ASSERT_TRUE(drawing.SaveAs(path("a.bak")));
    EXPECT_EQ((std::vector<std::string>{"a.bak"}), folder.names());
    EXPECT_EQ(0u, bytesOf(folder / "a.bak").find('Z'));
}

TEST_F(SaveAsTest, PathThatCannotBeMadeIsReportedOnce)
{
    EXPECT_FALSE(drawing.SaveAs(path("missing/a.zpl")));
    ASSERT_EQ(1u, machine.reports.size());
    EXPECT_EQ("The drawing '" + (folder / "missing/a.zpl").string() +
                  "' was not saved: its file cannot be made: No such file or directory",
              machine.reports[0].utf8());
    EXPECT_EQ(1u, drawing.lastReport().faults.size());
}

TEST_F(SaveAsTest, MoreRecordsThanATableCanCountAreRefusedBeforeTheTargetIsTouched)
{
    putBytes(folder / "a.zpl", "the drawing before");
    for (int i = 0; i < 65536 - 4; ++i) {
        auto* layer = new CVexDbLayerTableRecord(&drawing);
        CString name;
        name.Format(L"L%d", i);
        layer->setName(name);
        drawing.layers().add(layer);
    }
    EXPECT_FALSE(drawing.SaveAs(path("a.zpl")));
    EXPECT_EQ("the drawing before", bytesOf(folder / "a.zpl"));
    ASSERT_EQ(1u, machine.reports.size());
    EXPECT_NE(std::string::npos,
              machine.reports[0].utf8().find("the layer table has more than 65535 records"));
    drawing.layers().records().begin()->second->setErased(); // erased ones do not count
    EXPECT_TRUE(drawing.SaveAs(path("a.zpl")));
}

TEST_F(SaveAsTest, ExtendedDataThatAFileCannotCountIsRefused)
{
    putBytes(folder / "a.zpl", "the drawing before");
    auto* line = addTo(drawing, new CVexDbLine({0.0, 0.0}, {1.0, 0.0}));
    giveXData(*line, std::wstring(65536, L'x'), 1.0);
    EXPECT_FALSE(drawing.SaveAs(path("a.zpl")));
    EXPECT_EQ("the drawing before", bytesOf(folder / "a.zpl"));
    EXPECT_EQ((std::vector<std::string>{"a.zpl"}), folder.names());
    ASSERT_EQ(1u, machine.reports.size());
    EXPECT_NE(std::string::npos, machine.reports[0].utf8().find("more than 65535 parts"));
}

TEST_F(SaveAsTest, ArchiveWithoutAFileIsRefused)
{
    CArchive archive(nullptr, CArchive::store);
    EXPECT_FALSE(drawing.Save(archive));
    EXPECT_EQ(1u, machine.reports.size());
}

// MakeBakFile by itself, as hosts call it.

using BackupTest = SaveAsTest;

TEST_F(BackupTest, RenamesTheFileOverItsBackup)
{
    putBytes(folder / "a.zpl", "new");
    putBytes(folder / "a.bak", "old");
    drawing.MakeBakFile(path("a.zpl"));
    EXPECT_EQ((std::vector<std::string>{"a.bak"}), folder.names());
    EXPECT_EQ("new", bytesOf(folder / "a.bak"));
}

TEST_F(BackupTest, MissingFileChangesNothing)
{
    putBytes(folder / "a.bak", "old");
    drawing.MakeBakFile(path("a.zpl"));
    EXPECT_EQ("old", bytesOf(folder / "a.bak"));
}

TEST_F(BackupTest, FileThatIsItsOwnBackupStays)
{
    putBytes(folder / "a.bak", "old");
    drawing.MakeBakFile(path("a.bak"));
    EXPECT_EQ("old", bytesOf(folder / "a.bak"));
    std::filesystem::create_symlink("a.bak", folder / "a.zpl");
    drawing.MakeBakFile(path("a.zpl"));
    EXPECT_EQ("old", bytesOf(folder / "a.bak"));
}

TEST_F(BackupTest, WorksOnNamesOfEveryAlphabet)
{
    putBytes(folder / "план-图.zpl", "new");
    drawing.MakeBakFile(path("план-图.zpl"));
    EXPECT_EQ("new", bytesOf(folder / "план-图.bak"));
}

} // namespace
