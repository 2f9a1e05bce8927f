#include "dbfixture.h"
#include "vexdb/dbobject/vexdblinetypefile.h"

#include <cstring>

namespace {

std::vector<std::byte> bytesOf(const std::string& text)
{
    std::vector<std::byte> bytes(text.size());
    std::memcpy(bytes.data(), text.data(), text.size());
    return bytes;
}

VexDbLinetypeFile parsed(const std::string& text)
{
    return parseLinetypes(bytesOf(text));
}

} // namespace

TEST(LinetypeFileTest, EntryIsANameLineAndAPatternLine)
{
    const VexDbLinetypeFile file =
        parsed(";; ours\n\n*CENTER,Center ____ _ ____, long\nA,1.25,-.25,.25,-.25\n");
    ASSERT_EQ(1u, file.entries.size());
    EXPECT_EQ(CString(L"CENTER"), file.entries[0].name);
    EXPECT_EQ(CString(L"Center ____ _ ____, long"), file.entries[0].description);
    EXPECT_EQ((std::vector<double>{1.25, -0.25, 0.25, -0.25}), file.entries[0].dashes);
    EXPECT_TRUE(file.messages.empty());
}

TEST(LinetypeFileTest, BadLinesAreSkippedAndNamed)
{
    const VexDbLinetypeFile file = parsed("A,1,-1\n"
                                          "*LOST,no pattern follows\n"
                                          "*SHAPED,with text\n"
                                          "A,1,-.2,[\"HW\",STANDARD],-.2\n"
                                          "*,no name\n"
                                          "noise\n"
                                          "*DOT,Dot\n"
                                          "A,0,-.25\n"
                                          "*END");
    ASSERT_EQ(1u, file.entries.size());
    EXPECT_EQ(CString(L"DOT"), file.entries[0].name);
    ASSERT_EQ(6u, file.messages.size());
    EXPECT_EQ(CString(L"Line 1 is no part of a linetype; it is skipped."), file.messages[0]);
    EXPECT_EQ(CString(L"Line 2 begins a linetype without a pattern; it is skipped."),
              file.messages[1]);
    EXPECT_EQ(CString(L"Line 4 holds something else than 1 to 32 dash lengths; it is skipped."),
              file.messages[2]);
    EXPECT_EQ(CString(L"Line 9 begins a linetype without a pattern; it is skipped."),
              file.messages[5]);
}

TEST(LinetypeFileTest, DashListsAreBounded)
{
    std::string most = "*A,\nA,1";
    for (int i = 1; i < 32; ++i) {
        most += ",-1";
    }
    EXPECT_EQ(1u, parsed(most).entries.size());
    EXPECT_TRUE(parsed(most + ",1").entries.empty());
    EXPECT_TRUE(parsed("*A,\nA,1e999,-1e999\n").entries.empty());
    EXPECT_TRUE(parsed("*A,\nA,\n").entries.empty());
}

TEST(LinetypeFileTest, NewNamesAreAddedAndKnownOnesStay)
{
    CVexDbDatabase drawing(false);
    std::vector<CString> messages;
    const int added = loadLinetypes(
        bytesOf("*Hidden,other\nA,9,-9\n*DOT,Dot . .\nA,0,-.25\n*DOT,again\nA,5,-5\n"), drawing,
        messages);
    EXPECT_EQ(1, added);
    auto* dot = recordNamed(drawing.linetypes(), L"DOT");
    ASSERT_NE(nullptr, dot);
    EXPECT_EQ(2, dot->numDashes());
    EXPECT_EQ(0.25, dot->patternLength());
    EXPECT_EQ(CString(L"Dot . ."), dot->getDescription());
    EXPECT_TRUE(dot->ownerId() == drawing.LinetypeTable());
    EXPECT_EQ(1.0, recordNamed(drawing.linetypes(), L"Hidden")->dashLengthAt(0));
}

TEST(LinetypeFileTest, MissingFileSaysSo)
{
    CVexDbDatabase drawing(false);
    std::vector<CString> messages;
    EXPECT_EQ(-1, loadLinetypes(CString(L"nosuch.lin"), drawing, messages));
    ASSERT_EQ(1u, messages.size());
    EXPECT_EQ(CString(L"The linetype file 'nosuch.lin' cannot be read."), messages[0]);
}
