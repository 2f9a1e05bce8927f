#include "platform/base/cfilefind.h"
#include "platform/base/ctime.h"
#include "platform/base/vexassert.h"
#include "platform/base/vexmachine.h"
#include "tests/platform/scratchfolder.h"
#include "tests/platform/standinmachine.h"

#include <gtest/gtest.h>
#include <string>

namespace {

TEST(MachineTest, TheInstalledOneAnswersForItsScope)
{
    CVexMachine& real = CVexMachine::current();
    CStandInMachine machine;
    {
        const CVexMachineScope scope(machine);
        EXPECT_EQ(&machine, &CVexMachine::current());
        EXPECT_EQ(CVexMachine::current().computerName(), L"DESK-7");
    }
    EXPECT_EQ(&real, &CVexMachine::current());
    EXPECT_EQ(nullptr, CVexMachine::install(nullptr));
}

TEST(MachineTest, TheRealOneKnowsItself)
{
    CVexMachine machine;
    EXPECT_FALSE(machine.computerName().IsEmpty());
    EXPECT_FALSE(machine.userName().IsEmpty());
    CFileFind find;
    ASSERT_TRUE(find.FindFile(machine.modulePath()));
    EXPECT_EQ(find.GetFileName(), L"test_platform");
    EXPECT_TRUE(machine.mayAllocate(std::size_t{1} << 40));
}

TEST(MachineTest, TheRealClockIsACalendar)
{
    const CVexMachine machine;
    const VexMoment now = machine.utcNow();
    EXPECT_GE(now.year, 2024);
    EXPECT_TRUE(now.month >= 1 && now.month <= 12 && now.day >= 1 && now.day <= 31);
    EXPECT_LT(now.millisecond, 1000);
    const double start = machine.steadySeconds();
    EXPECT_LE(start, machine.steadySeconds());
}

class ClockMachine : public CVexMachine {
public:
    VexMoment utcNow() const override { return clock; }
    VexMoment clock;
};

TEST(MachineTest, TheSeedPacksTheClockEachTermEightBitsAboveTheNext)
{
    ClockMachine machine;
    machine.clock = {2026, 3, 14, 15, 9, 26, 0};
    EXPECT_EQ(0x1a030e0f091a00u, machine.identifierSeed());
    machine.clock.millisecond = 535; // 0x217: its carry goes into the seconds
    EXPECT_EQ(0x1a030e0f091c17u, machine.identifierSeed());
    machine.clock = {1999, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(1u, machine.identifierSeed()); // never 0
}

TEST(MachineTest, MessagesGoToStandardErrorInUtf8)
{
    testing::internal::CaptureStderr();
    CVexMachine().report(L"no \u00e4");
    EXPECT_EQ("no \xc3\xa4\n", testing::internal::GetCapturedStderr());
}

TEST(TimeTest, FormatsByTheLocalClock)
{
    CStandInMachine machine;
    const CVexMachineScope scope(machine);
    EXPECT_EQ(CTime::GetCurrentTime().Format(L"%Y-%m-%d"), L"2026-03-14");
    EXPECT_EQ(CTime::GetCurrentTime().Format(L"%H:%M:%S %% %q %"), L"15:09:26 % %q %");
    EXPECT_EQ(CTime({8, 1, 2}).Format(L"%Y%m%d"), L"00080102");
}

TEST(FileFindTest, NamesWhatStandsAtThePath)
{
    const CScratchFolder folder;
    std::filesystem::create_directory(folder / "rev.2");
    putBytes(folder / "rev.2/plan.a.zpl", "x");
    CFileFind find;
    ASSERT_TRUE(find.FindFile(wide(folder / "rev.2/plan.a.zpl")));
    EXPECT_EQ(find.GetFileName(), L"plan.a.zpl");
    EXPECT_EQ(find.GetFileTitle(), L"plan.a");
    EXPECT_FALSE(find.IsDirectory());
    ASSERT_TRUE(find.FindFile(wide(folder / "rev.2/")));
    EXPECT_EQ(find.GetFileName(), L"rev.2");
    EXPECT_TRUE(find.IsDirectory());
}

TEST(FileFindTest, FindsNothingWhereNothingIs)
{
    const CScratchFolder folder;
    CFileFind find;
    EXPECT_FALSE(find.FindFile(wide(folder / "none")));
    EXPECT_EQ(find.GetFileName(), L"");
    std::filesystem::create_symlink("none", folder / "link");
    EXPECT_FALSE(find.FindFile(wide(folder / "link")));
}

std::string heardPromise;

TEST(AssertTest, ABrokenPromiseReachesTheHandler)
{
    const VexAssertHandler hear = [](const char* promise, const char*, int line) {
        heardPromise = promise + std::string(line > 0 ? " heard" : "");
    };
    EXPECT_EQ(nullptr, setVexAssertHandler(hear));
    VEX_ASSERT(1 + 1 == 2, "sums hold");
    EXPECT_EQ("", heardPromise);
    VEX_ASSERT(1 + 1 == 3, "sums do not hold");
    EXPECT_EQ("sums do not hold heard", heardPromise);
    EXPECT_EQ(hear, setVexAssertHandler(nullptr));
}

} // namespace
