#include "tests/session/sessionfixture.h"

#include <algorithm>

namespace {

TEST_F(SessionTest, TheMessageFileHasEveryPrompt)
{
    EXPECT_EQ(74, prompts->count()); // with the empty one in front
    EXPECT_EQ(std::wstring(L"Specify start point: "),
              prompts->getPrompt(VexDb::PromptStartPoint).str());
    EXPECT_EQ(std::wstring(L"Invalid input."), prompts->getPrompt(VexDb::PromptInvalidInput).str());
    EXPECT_EQ(std::wstring(L"Unknown command:"),
              prompts->getPrompt(VexDb::PromptUnknownCommand).str());
}

TEST_F(SessionTest, APromptForATypedAnswerHasExactlyOneColonAndABlankBehindIt)
{
    for (int id = 1; id < VexDb::PromptInvalidInput; ++id) {
        const std::wstring text = prompts->getPrompt(id).str();
        EXPECT_EQ(1, std::ranges::count(text, L':')) << id;
        EXPECT_TRUE(text.ends_with(L": ")) << id;
    }
}

/// The keys that a prompt offers, as in "[A = arc, O = close]".
std::wstring keysOffered(const CString& prompt)
{
    std::wstring keys;
    const std::wstring& text = prompt.str();
    for (std::size_t at = text.find(L" = "); at != std::wstring::npos;
         at = text.find(L" = ", at + 1)) {
        keys += text[at - 1];
    }
    return keys;
}

TEST_F(SessionTest, PolylinePromptsOfferTheKeysThatDoSomething)
{
    const auto keysAt = [this](int prompt) { return keysOffered(prompts->getPrompt(prompt)); };
    EXPECT_EQ(L"APUO", keysAt(VexDb::PromptPolylineLine)); // W is taken, and does nothing
    EXPECT_EQ(L"PLUO", keysAt(VexDb::PromptPolylineArcNext));
    EXPECT_EQ(L"ALUO", keysAt(VexDb::PromptPolylineArcFirst));
    EXPECT_EQ(L"OCBJF", keysAt(VexDb::PromptPolylineEdit));
    EXPECT_EQ(L"YN", keysAt(VexDb::PromptConvertToPolyline));
    EXPECT_EQ(L"A", keysAt(VexDb::PromptFilletPoint));
    EXPECT_EQ(L"E", keysAt(VexDb::PromptPolygonCenter));
    EXPECT_EQ(L"IO", keysAt(VexDb::PromptPolygonMode));
}

TEST_F(SessionTest, TheCommandFileNamesEveryCommand)
{
    struct Row {
        const wchar_t* name;
        unsigned long number;
    };
    const Row rows[] = {
        {L"LINE", 101},
        {L"l", 101},
        {L"ARC", 102},
        {L"CIRCLE", 103},
        {L"ELLIPSE", 104},
        {L"EllipseArc", 105},
        {L"POLYLINE", 106},
        {L"ARCPOLYLINE", 107},
        {L"POLYGON", 108},
        {L"STAR", 109},
        {L"SPIRAL", 110},
        {L"SPLINE", 111},
        {L"CUBICSPLINE", 112},
        {L"COBWEB", 113},
        {L"HATCH", 115},
        {L"TEXT", 116},
        {L"RECTANGLE", 117},
        {L"BOX", 118},
        {L"DIM", 119},
        {L"ERASE", 124},
        {L"ARRAY", 125},
        {L"COPY", 126},
        {L"COPYROTATE", 127},
        {L"MIRROR", 128},
        {L"ROTATE", 129},
        {L"SCALE", 130},
        {L"MOVE", 131},
        {L"EXPLODE", 132},
        {L"EXTEND", 133},
        {L"TRIM", 134},
        {L"POLYLINEEDIT", 136},
        {L"pl", 106},
        {L"apl", 107},
        {L"pg", 108},
        {L"st", 109},
        {L"pe", 136},
        {L"ARCCONTINUE", kHostArcContinue},
        {L"ac", kHostArcContinue},
        {L"ARCPOINTS", kHostArcThreePoints},
        {L"ARCCENTER", kHostArcCenter},
        {L"ARCRADIUS", kHostArcRadius},
        {L"DIMALIGNED", kHostDimensionFirst + 2},
        {L"UNDO", kHostUndo},
        {L"REDO", kHostRedo},
        {L"OFFSET", kHostOffset},
        {L"FILL", kHostFill},
        {L"ZW", kHostZoomWindow},
        {L"GRID", kHostGrid},
        {L"ORTHO", kHostOrtho},
        {L"QUIT", kHostQuit},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.number, handler().getCommandId(row.name)) << CString(row.name).utf8();
    }
}

TEST_F(SessionTest, EveryNameOfTheCommandFileLeadsSomewhere)
{
    host.onCommand = [](unsigned long number) { return number >= kHostNew; };
    for (unsigned long number = 101; number <= 136; ++number) {
        session->start(number);
        EXPECT_FALSE(handler().isBusy()) << number;
    }
    EXPECT_EQ(-1, handler().getStrings().Find(L"not available here"));
}

} // namespace
