#include "commandfixture.h"

namespace {

class CommandFileTest : public CommandTest {
protected:
    int load(const std::string& text)
    {
        putBytes(folder / "VexDb.cmd", text);
        return handler().LoadCommandFrom();
    }
};

TEST_F(CommandFileTest, ANumberMayHaveAnyNumberOfNames)
{
    EXPECT_EQ(3, load("100 LINE L ;\n200 ERASE;\n"));
    EXPECT_EQ(100u, handler().getCommandId(L"LINE"));
    EXPECT_EQ(100u, handler().getCommandId(L"L"));
    EXPECT_EQ(200u, handler().getCommandId(L"ERASE"));
}

TEST_F(CommandFileTest, NamesMatchInAnyCase)
{
    load("100 Line;\n");
    EXPECT_EQ(100u, handler().getCommandId(L"line"));
    EXPECT_EQ(100u, handler().getCommandId(L"Line"));
    EXPECT_EQ(100u, handler().getCommandId(L"LINE"));
    EXPECT_EQ(0u, handler().getCommandId(L"LINES"));
}

TEST_F(CommandFileTest, ALineWithoutItsEndDefinesNothing)
{
    EXPECT_EQ(0, load("100 LINE L\n"));
    EXPECT_EQ(0u, handler().getCommandId(L"LINE"));
}

TEST_F(CommandFileTest, WhatStandsBehindTheFirstEndIsNotRead)
{
    EXPECT_EQ(1, load("100 LINE ; L ;\n"));
    EXPECT_EQ(0u, handler().getCommandId(L"L"));
}

TEST_F(CommandFileTest, EmptyLinesAndCommentsAreSkipped)
{
    EXPECT_EQ(1, load("\n; 100 LINE ;\n300 ARC ;\n"));
    EXPECT_EQ(0u, handler().getCommandId(L"LINE"));
    EXPECT_EQ(300u, handler().getCommandId(L"ARC"));
}

TEST_F(CommandFileTest, TabsAndBlanksInAnyNumberSeparate)
{
    EXPECT_EQ(2, load("\t 100\t\tLINE \t L  ;\r\n"));
    EXPECT_EQ(100u, handler().getCommandId(L"L"));
}

TEST_F(CommandFileTest, TheFirstNumberOfANameStays)
{
    EXPECT_EQ(2, load("100 LINE;\n200 LINE LN;\n"));
    EXPECT_EQ(100u, handler().getCommandId(L"LINE"));
    EXPECT_EQ(200u, handler().getCommandId(L"LN"));
}

TEST_F(CommandFileTest, NamesOnlyAccumulate)
{
    load("100 LINE;\n");
    EXPECT_EQ(2, load("300 ARC;\n"));
    EXPECT_EQ(3, handler().addCommand(L"400 BOX"));
    EXPECT_EQ(100u, handler().getCommandId(L"LINE"));
    EXPECT_EQ(400u, handler().getCommandId(L"BOX"));
}

TEST_F(CommandFileTest, ANewDatabaseLoadsTheFileBesideTheProgram)
{
    putBytes(folder / "VexDb.cmd", "100 LINE L ;\n");
    CVexDbDatabase other(false);
    EXPECT_EQ(2, other.commandHandler().commandCount());
    EXPECT_EQ(100u, other.commandHandler().getCommandId(L"l"));
}

TEST_F(CommandFileTest, AMissingFileLeavesTheTableEmptyWithoutAMessage)
{
    EXPECT_EQ(0, handler().LoadCommandFrom());
    EXPECT_EQ(0, handler().commandCount());
    EXPECT_TRUE(backend.shownMessages().empty());
}

TEST_F(CommandFileTest, AProgramPathBeyondItsBufferIsSimplyNotFound)
{
    // The path is read into 128 characters: what is cut off gives another folder.
    const auto deep = folder / std::string(200, 'y');
    std::filesystem::create_directory(deep);
    putBytes(deep / "VexDb.cmd", "100 LINE;\n");
    machine.module = wide(deep / "vexdraft");
    EXPECT_EQ(0, handler().LoadCommandFrom());
}

TEST_F(CommandFileTest, NumbersStopAtThirtyTwoBits)
{
    load("99999999999999999999 BIG;\n-5 LESS;\n0x10 HEX;\n12b TWELVE;\n");
    EXPECT_EQ(2147483647u, handler().getCommandId(L"BIG"));
    EXPECT_EQ(4294967291u, handler().getCommandId(L"LESS"));
    EXPECT_EQ(0u, handler().getCommandId(L"HEX"));
    EXPECT_EQ(12u, handler().getCommandId(L"TWELVE"));
}

TEST_F(CommandFileTest, HugeLinesAndNulsAreOnlyOddNames)
{
    const std::string huge(1000000, 'x');
    EXPECT_EQ(3,
              load("100 " + huge + " LINE;\n" + huge + "\n200 A" + std::string(1, '\0') + "C;\n"));
    EXPECT_EQ(100u, handler().getCommandId(L"LINE"));
    EXPECT_EQ(100u, handler().getCommandId(CString(std::wstring(1000000, L'X'))));
    EXPECT_EQ(0u, handler().getCommandId(L"A"));
    EXPECT_EQ(200u, handler().getCommandId(CString(std::wstring(L"a\0c", 3))));
}

TEST_F(CommandFileTest, ALineWithoutNamesOrNumberNamesNoCommand)
{
    EXPECT_EQ(0, load("100 ;\n   ;\n"));
    EXPECT_EQ(1, load("LINE L;\n"));
    EXPECT_EQ(0u, handler().getCommandId(L"L"));
}

} // namespace
