#include "dbfixture.h"
#include "platform/base/vexfields.h"
#include "platform/base/vexmachine.h"
#include "vexdb/dbobject/vexdbvectorfont.h"

#include <filesystem>
#include <fstream>

namespace {

/// A program folder with fonts that a test makes.
class FontFolder : public CVexMachine {
public:
    FontFolder() : m_scope(*this) { std::filesystem::create_directories(m_folder / "font"); }
    ~FontFolder() override { std::filesystem::remove_all(m_folder); }
    CString modulePath() const override
    {
        return CString::fromUtf8((m_folder / "program").string());
    }
    void write(const char* name, const std::string& bytes)
    {
        std::ofstream(m_folder / "font" / name, std::ios::binary) << bytes;
    }

private:
    static std::filesystem::path makeFolder()
    {
        std::string pattern = ::testing::TempDir() + "vexfontXXXXXX";
        return mkdtemp(pattern.data());
    }
    std::filesystem::path m_folder = makeFolder();
    CVexMachineScope m_scope;
};

// A shape font of two shapes; its description is "X", NUL, above 8, below 2, `modes`, 0.
std::string shapeFont(char modes)
{
    std::string font(0x1c, 's');
    font += {2, 0, /* description */ 0, 0, 6, 0, /* A */ 65, 0, 1, 0};
    font += {'X', 0, 8, 2, modes, 0, 0};
    return font;
}

// A unifont whose information block ends with above 8, below 2, `modes` and three bytes.
std::string unifont(char modes)
{
    std::string font(0x19, 'x');
    font[11] = 'u';
    font += {1, 0, 0, 0, 8, 0};
    font += {'X', 0, 8, 2, modes, 0, 0, 0};
    return font;
}

// A big font without ranges whose description, at its end, is "X", NUL, above 8, 0, `modes`, 0.
std::string bigFont(char modes)
{
    std::string font(0x1b, 'b');
    font += {1, 0, 0, 0, /* description */ 0, 0, 6, 0, 0x27, 0, 0, 0};
    font += {'X', 0, 8, 0, modes, 0};
    return font;
}

} // namespace

TEST(VectorFontTest, FolderStandsBesideTheProgram)
{
    class Program : public CVexMachine {
    public:
        CString modulePath() const override { return L"/usr/bin/draft"; }
    } program;
    const CVexMachineScope scope(program);
    EXPECT_EQ(CString(L"/usr/bin/font"), _GetVectorFontPath());
}

TEST(VectorFontTest, HeadsTellWhetherAFontCanBeVertical)
{
    FontFolder fonts;
    fonts.write("flat.shx", shapeFont(0));
    fonts.write("dual.shx", shapeFont(2));
    fonts.write("uniflat.shx", unifont(0));
    fonts.write("unidual.shx", unifont(2));
    fonts.write("bigflat.shx", bigFont(0));
    fonts.write("bigdual.shx", bigFont(2));
    EXPECT_FALSE(isNormalVertical(L"flat"));
    EXPECT_TRUE(isNormalVertical(L"dual"));
    EXPECT_FALSE(isNormalVertical(L"uniflat"));
    EXPECT_TRUE(isNormalVertical(L"unidual"));
    EXPECT_FALSE(isBigVertical(L"bigflat"));
    EXPECT_TRUE(isBigVertical(L"bigdual"));
}

TEST(VectorFontTest, MissingAndCutFontsAreNotVertical)
{
    FontFolder fonts;
    EXPECT_FALSE(isNormalVertical(L"nosuch"));
    EXPECT_FALSE(isBigVertical(L""));
    for (const std::string& whole : {shapeFont(2), unifont(2), bigFont(2)}) {
        // Up to the byte before the modes, the last that is looked at but two to four.
        for (std::size_t length = 0; length + 4 < whole.size(); ++length) {
            fonts.write("cut.shx", whole.substr(0, length));
            ASSERT_FALSE(isNormalVertical(L"cut")) << length;
            ASSERT_FALSE(isBigVertical(L"cut")) << length;
        }
    }
}

TEST(TextStyleRecordTest, StandardStyleIsHorizontalWithTheTwoFonts)
{
    CVexDbDatabase drawing(false);
    auto* standard = drawing.textStyles().getCurrentRecord();
    EXPECT_EQ(CString(L"KOSDICES"), standard->fileName());
    EXPECT_EQ(CString(L"KOSDICHS"), standard->bigFileName());
    EXPECT_FALSE(standard->isVertical() || standard->isMirrorX() || standard->isTTF());
    EXPECT_EQ(0.0, standard->widthFactor());
    EXPECT_TRUE(standard->ownerId() == drawing.TextStyleTable());
}

TEST(TextStyleRecordTest, VerticalNeedsAFontThatCanBe)
{
    FontFolder fonts;
    fonts.write("dual.shx", shapeFont(2));
    CVexDbDatabase drawing(false);
    CVexDbTextStyleTableRecord style(&drawing);
    style.setFileName(L"nosuch");
    style.setIsVertical(true);
    EXPECT_FALSE(style.isVertical());
    style.setFileName(L"dual");
    style.setIsVertical(true);
    EXPECT_TRUE(style.isVertical());
    style.setFileName(L"nosuch");
    style.setIsVertical(true);
    EXPECT_FALSE(style.isVertical()) << "cleared whatever was asked";
}

TEST(TextStyleRecordTest, EitherFontMakesItVertical)
{
    FontFolder fonts;
    fonts.write("bigdual.shx", bigFont(2));
    CVexDbDatabase drawing(false);
    CVexDbTextStyleTableRecord style(&drawing);
    style.setBigFileName(L"bigdual");
    EXPECT_TRUE(style.isVerticalFont());
    style.setFileName(L"nosuch");
    EXPECT_TRUE(style.isVerticalFont());
}

TEST(TextStyleRecordTest, FileRecordHas529BytesBehindItsName)
{
    CVexDbDatabase drawing(false);
    CVexDbTextStyleTableRecord style(&drawing);
    style.setName(CString(L"S"));
    style.setMirrorY(true);
    style.setTextSize(2.5);
    style.setFont(L"Face", true, false, 129, 34);
    const std::vector<std::byte> bytes = savedBytes(drawing, style);
    ASSERT_EQ(704u, bytes.size());
    EXPECT_EQ(std::byte{4}, bytes[175]);
    EXPECT_EQ(2.5, loadLittle<double>(&bytes[176]));
    EXPECT_EQ(std::byte{L'F'}, bytes[532]);
    EXPECT_EQ(std::byte{1}, bytes[694]);
    EXPECT_EQ(std::byte{0}, bytes[695]);
    EXPECT_EQ(129, loadLittle<std::int32_t>(&bytes[696]));
    EXPECT_EQ(34, loadLittle<std::int32_t>(&bytes[700]));
}

TEST(TextStyleRecordTest, ReadStyleIsKeptThoughItsFontIsNotHere)
{
    CVexDbDatabase drawing(false);
    CVexDbTextStyleTableRecord style(&drawing), read(&drawing);
    style.setFileName(L"elsewhere");
    std::vector<std::byte> bytes = savedBytes(drawing, style);
    bytes[175] = std::byte{0x11}; // vertical, by a font that can be
    ASSERT_TRUE(readBytes(drawing, read, bytes));
    EXPECT_TRUE(read.isVertical() && read.isVerticalFont());
    EXPECT_EQ(CString(L"elsewhere"), read.fileName());
    EXPECT_EQ(bytes, savedBytes(drawing, read));
}

TEST(SymbolRecordTest, SymbolsAreNumberedInTheOrderOfCreation)
{
    CVexDbDatabase drawing(false);
    wchar_t name[81];
    for (int i = 0; i < 2; ++i) {
        auto* symbol = new CVexDbSymbolTableRecord(&drawing);
        symbol->SetAutoName(name);
        drawing.symbols().add(symbol);
    }
    EXPECT_EQ(CString(L"*S1"), CString(name));
    EXPECT_EQ(2u, drawing.symbols().GetNextName());
    const CVexDbObjectId last = drawing.symbols().GetLastName(name);
    EXPECT_EQ(CString(L"*S1"), CString(name));
    EXPECT_TRUE(last == drawing.symbols().getLastRecord());
}

TEST(SymbolRecordTest, LastNameOfNoSymbolIsTheLargestNumber)
{
    CVexDbDatabase drawing(false);
    wchar_t name[81];
    EXPECT_TRUE(drawing.symbols().GetLastName(name).isNull());
    EXPECT_EQ(CString(L"*S4294967295"), CString(name));
}

TEST(SymbolRecordTest, TableFrameKeepsTheNextNumber)
{
    CVexDbDatabase drawing(false), other(false);
    auto* symbol = addRecord(drawing.symbols(), L"Valve");
    symbol->SetBase(1.0, 2.0, 3.0);
    symbol->AppendPoint(CVexDbSymPoint(CVexGePoint2d(4.0, 5.0), 9));
    const std::vector<std::byte> bytes = savedBytes(drawing, drawing.symbols());
    ASSERT_EQ(2u + 175u + 24u + 4u + 21u + 4u + 2u, bytes.size());
    ASSERT_TRUE(readBytes(other, other.symbols(), bytes));
    CVexDbSymbolTableRecord* read = nullptr;
    ASSERT_TRUE(other.symbols().getRecord(L"Valve", read, false));
    EXPECT_EQ(1u, other.symbols().GetNextName());
    EXPECT_EQ(3.0, read->GetBase3().z);
    EXPECT_EQ(5.0, read->GetStartPoint().y);
    EXPECT_EQ(9, read->GetEndPoint().flag);
}

TEST(SymbolRecordTest, SenselessPointCountFails)
{
    CVexDbDatabase drawing(false);
    CVexDbSymbolTableRecord symbol(&drawing);
    std::vector<std::byte> bytes = savedBytes(drawing, symbol);
    bytes[199] = std::byte{1}; // one point, and no byte of it
    EXPECT_FALSE(readBytes(drawing, symbol, bytes));
    EXPECT_EQ(0u, symbol.NumPoints());
    EXPECT_EQ(0.0, symbol.GetEndPoint().x);
}

TEST(SymbolRecordTest, InitDropsAllSymbols)
{
    CVexDbDatabase drawing(false);
    addRecord(drawing.symbols(), L"Valve");
    drawing.symbols().initSymbolTable();
    EXPECT_EQ(0, drawing.symbols().size());
    EXPECT_EQ(nullptr, drawing.symbols().getLastRecord());
    EXPECT_FALSE(drawing.symbols().addRefEntity(CVexDbObjectId::kNULL));
    EXPECT_FALSE(drawing.symbols().removeRecord(L"Valve"));
}

TEST(InfoRecordTest, RecordsHaveTheirSizesAndAreInvisible)
{
    CVexDbDatabase drawing(false);
    CVexDbProjectInfoTableRecord info(&drawing);
    CVexDbRevisionTableRecord revision(&drawing);
    EXPECT_EQ(345u, savedBytes(drawing, info).size());
    EXPECT_EQ(1367u, savedBytes(drawing, revision).size());
    EXPECT_FALSE(info.isVisiable());
    EXPECT_FALSE(revision.isVisiable());
}

TEST(InfoRecordTest, FieldsComeBack)
{
    CVexDbDatabase drawing(false);
    CVexDbRevisionTableRecord revision(&drawing), read(&drawing);
    wchar_t name[81];
    revision.SetAutoName(name);
    revision.setValue(-5);
    revision.setFirstText(std::wstring(100, L'a').c_str());
    revision.setThirdText(L"checked");
    ASSERT_TRUE(readBytes(drawing, read, savedBytes(drawing, revision)));
    EXPECT_EQ(CString(L"*S0"), read.getName());
    EXPECT_EQ(-5, read.value());
    EXPECT_EQ(81, read.firstText().GetLength());
    EXPECT_EQ(CString(L"checked"), read.thirdText());
}
