#include "commandfixture.h"
#include "vexdb/dbcommand/vexobjectnamehandler.h"
#include "vexdb/dbobject/vexdbclasstype.h"

namespace {

class PromptFileTest : public testing::Test {
protected:
    PromptFileTest() { CVexBackend::install(&backend); }
    ~PromptFileTest() override { CVexBackend::install(nullptr); }
    CVexPromptHandler read(const std::string& text)
    {
        putBytes(folder / "vexdb.msg", text);
        return CVexPromptHandler(wide(folder / "vexdb.msg"));
    }

    CVexHeadlessBackend backend;
    CScratchFolder folder;
};

TEST_F(PromptFileTest, DataLinesCountFromOneAndKeepTheirBlanks)
{
    const CVexPromptHandler prompts = read("Start point: ;\nEnd point:;\n");
    EXPECT_EQ(3, prompts.count());
    EXPECT_EQ(L"", prompts.getPrompt(0).str());
    EXPECT_EQ(L"Start point: ", prompts.getPrompt(1).str());
    EXPECT_EQ(L"End point:", prompts.getPrompt(2).str());
}

TEST_F(PromptFileTest, CommentsAndEmptyLinesTakeNoNumber)
{
    const CVexPromptHandler prompts = read("One: ;\n;a comment: ;\n\nTwo: ;\n");
    EXPECT_EQ(3, prompts.count());
    EXPECT_EQ(L"Two: ", prompts.getPrompt(2).str());
}

TEST_F(PromptFileTest, ALineWithoutItsEndIsEmptyAndKeepsItsNumber)
{
    // The cut at the first ';' is unconditional: with none there, nothing is left.
    const CVexPromptHandler prompts = read("One: ;\nTwo: \nThree: ; rest ; more\n");
    EXPECT_EQ(4, prompts.count());
    EXPECT_EQ(L"", prompts.getPrompt(2).str());
    EXPECT_EQ(L"Three: ", prompts.getPrompt(3).str());
}

TEST_F(PromptFileTest, LoadingAgainAppends)
{
    CVexPromptHandler prompts = read("One: ;\n");
    EXPECT_EQ(3, prompts.LoadPrompt(wide(folder / "vexdb.msg")));
    EXPECT_EQ(L"One: ", prompts.getPrompt(2).str());
}

TEST_F(PromptFileTest, AMissingFileShowsOneBoxAndLeavesTheEmptyEntry)
{
    const CVexPromptHandler prompts(wide(folder / "nothing.msg"));
    EXPECT_EQ(1, prompts.count());
    ASSERT_EQ(1u, backend.shownMessages().size());
    EXPECT_EQ(L"Loading message file fail.", backend.shownMessages()[0].text.str());
    EXPECT_EQ(L"", prompts.getPrompt(3).str());
}

TEST_F(PromptFileTest, AnEmptyPathReadsNothingAndSaysNothing)
{
    const CVexPromptHandler prompts((CString()));
    EXPECT_EQ(0, prompts.count());
    EXPECT_TRUE(backend.shownMessages().empty());
    EXPECT_EQ(L"", prompts.getPrompt(0).str());
}

TEST_F(PromptFileTest, IdsOutsideTheTableAreEmpty)
{
    const CVexPromptHandler prompts = read("One: ;\n");
    EXPECT_EQ(L"", prompts.getPrompt(-1).str());
    EXPECT_EQ(L"", prompts.getPrompt(2).str());
}

TEST_F(PromptFileTest, HugeLinesAndNulsKeepTheirNumber)
{
    const std::string huge(1000000, 'x');
    const CVexPromptHandler prompts =
        read(huge + "\n" + std::string(1, '\0') + ";\n" + huge + ";\n");
    EXPECT_EQ(4, prompts.count());
    EXPECT_EQ(L"", prompts.getPrompt(1).str());
    EXPECT_EQ(1, prompts.getPrompt(2).GetLength());
    EXPECT_EQ(1000000, prompts.getPrompt(3).GetLength());
}

TEST(PromptKindTest, EveryPromptHasItsKind)
{
    // By id from 0: n none, r real, t text, p point, i integer.
    const std::string kinds = "npppppprrr"           // 0 to 9
                              "ppppri"               // 10 to 15
                              "nnppn"                // 16 to 20
                              "pppppprr"             // 21 to 28
                              "tpnirr"               // 29 to 34
                              "nnnprnrnnnnn"         // 35 to 46
                              "tnnntnnt"             // 47 to 54
                              "nnnnnnnnnnnnnnnnnnn"; // 55 to 73
    ASSERT_EQ(74u, kinds.size());
    for (int id = 0; id <= 73; ++id) {
        const int kind = CVexPromptHandler::getPromptKind(static_cast<VexDb::PromptId>(id));
        EXPECT_EQ(kinds[static_cast<std::size_t>(id)], "nrtpi"[kind]) << "prompt " << id;
    }
}

TEST(PromptKindTest, KindsHaveTheirNumbers)
{
    EXPECT_EQ(0, PromptKindNone);
    EXPECT_EQ(1, PromptKindReal);
    EXPECT_EQ(2, PromptKindText);
    EXPECT_EQ(3, PromptKindPoint);
    EXPECT_EQ(4, PromptKindInteger);
}

TEST(ObjectNameTest, TheTableIsInTheOrderOfTheClasses)
{
    const std::vector<std::wstring> names = {
        L"Entity",
        L"Curve",
        L"Arc",
        L"Circle",
        L"Ellipse",
        L"EllipseArc",
        L"Line",
        L"Polyline",
        L"Spline",
        L"CubicSpline",
        L"Spiral",
        L"Cobweb",
        L"BlockInsert",
        L"Hatch",
        L"Point",
        L"Text",
        L"Rectangle",
        L"Dimension",
        L"2LineAngularDim",
        L"3PointAngularDim",
        L"AlignedDim",
        L"DiametricDim",
        L"HorizontalDim",
        L"LeaderDim",
        L"RadialDim",
        L"VerticalDim",
        L"Box",
        L"Image",
        L"Symbol",
        L"AttribDefinition",
        L"Attribute",
        L"TextTable",
        L"BlockTable",
        L"ColorTable",
        L"DisplayTable",
        L"LayerTable",
        L"EntityTable",
        L"LinetypeTable",
        L"SymbolTable",
        L"TextStyleTable",
        L"ProjectInfoTable",
        L"RevisionTable",
        L"BlockTableRecord",
        L"ColorTableRecord",
        L"DisplayTableRecord",
        L"EntityTableRecord",
        L"LayerTableRecord",
        L"LinetypeTableRecord",
        L"SymbolTableRecord",
        L"TextStyleTableRecord",
        L"ProjectInfoTableRecord",
        L"RevisionTableRecord",
        L"CommandHandler",
        L"UndoHandler",
        L"Not Selected",
    };
    CVexObjectNameHandler handler;
    ASSERT_EQ(55, handler.LoadName(L"looked at by nobody"));
    for (std::size_t at = 0; at < names.size(); ++at) {
        EXPECT_EQ(names[at], handler.getName(static_cast<int>(at)).str());
    }
    EXPECT_EQ(L"Line", handler.getName(VexDb::kLine).str());
    EXPECT_EQ(L"Point", handler.getName(VexDb::kPoint).str());
}

TEST(ObjectNameTest, PolylineTypesAreNoneAndComposite)
{
    CVexObjectNameHandler handler;
    EXPECT_EQ(L"", handler.getPolyType(0).str());
    EXPECT_EQ(2, handler.LoadType(CString()));
    EXPECT_EQ(L"None", handler.getPolyType(0).str());
    EXPECT_EQ(L"Composite", handler.getPolyType(1).str());
}

TEST(ObjectNameTest, LoadingTwiceAndIndexesOutsideAreHarmless)
{
    CVexObjectNameHandler handler;
    handler.LoadName(CString());
    EXPECT_EQ(55, handler.LoadName(CString()));
    EXPECT_EQ(L"", handler.getName(-1).str());
    EXPECT_EQ(L"", handler.getName(55).str());
}

} // namespace
