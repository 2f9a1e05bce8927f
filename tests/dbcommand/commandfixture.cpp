#include "commandfixture.h"

#include "vexdb/vexdbviewprocess.h"

namespace {

/// Prompt n is "Pn: ", but for the ones that tests read.
std::string promptFile()
{
    std::string text;
    for (int id = 1; id <= 73; ++id) {
        switch (id) {
        case 3: text.append("Start point: "); break;
        case 5: text.append("End point: "); break;
        case 72: text.append("Invalid input."); break;
        case 73: text.append("Unknown command:"); break;
        default: text.append("P").append(std::to_string(id)).append(": "); break;
        }
        text.append(";\n");
    }
    return text;
}

/// Only what a key means where it matters: the character goes along in the message.
unsigned keyOf(wchar_t character)
{
    switch (character) {
    case L'\n': return VK_RETURN;
    case L' ': return VK_SPACE;
    case L'\b': return VK_BACK;
    case L',': return 0xbc;
    case L'.': return 0xbe;
    case L'-': return 0xbd;
    case L'<': return 0xe2;
    case L'{': return 0xdb;
    default:
        return static_cast<unsigned>(character >= L'a' && character <= L'z' ? character - 0x20
                                                                            : character);
    }
}

} // namespace

CommandTest::CommandTest()
{
    CVexBackend::install(&backend);
    CVexDbViewProcess::current().reset();
    machine.module = wide(folder / "vexdraft");
    putBytes(folder / "prompts.msg", promptFile());
    prompts = std::make_unique<CVexPromptHandler>(wide(folder / "prompts.msg"));
    _hPROMPT = prompts.get();
    database = std::make_unique<CVexDbDatabase>(false);
    view = database->displays().getCurrentRecord();
    handler().SetDispWindow(&display);
    handler().setMsgWindow(&history, &message);
    display.setHandler([this](const MSG& sent) { return onDisplay(sent); });
    map({kWidth, kHeight});
}

CommandTest::~CommandTest()
{
    database.reset();
    _hPROMPT = nullptr;
    CVexBackend::install(nullptr);
}

void CommandTest::map(CSize size)
{
    display.resize(size);
    dc.resize(size);
    view->setView(&display, &dc);
    view->MakeUpDisplayWindow(&dc);
    dc.clear();
}

void CommandTest::showSquare(CRect units, int pixels)
{
    map({pixels, pixels});
    view->SetCurDispWin(CVexGePoint2d(units.left, units.top),
                        CVexGePoint2d(units.right, units.bottom));
    view->MakeUpDisplayWindow(&dc);
}

CVexDbLine* CommandTest::addLine(CVexGePoint2d start, CVexGePoint2d end)
{
    auto* line = new CVexDbLine(database.get());
    line->setStartPoint(start);
    line->setEndPoint(end);
    CVexDbObjectId id;
    database->addEntity(line, id);
    return line;
}

void CommandTest::type(std::wstring_view text)
{
    for (const wchar_t character : text) {
        post(WM_KEYDOWN, keyOf(character), keyLParam(character));
    }
}

void CommandTest::whileWaiting(std::function<void()> look)
{
    m_looks.push_back(std::move(look));
    post(WM_TIMER);
}

int CommandTest::received(unsigned kind) const
{
    int count = 0;
    for (const MSG& sent : display.received()) {
        count += sent.message == kind ? 1 : 0;
    }
    return count;
}

void CommandTest::expectReleased()
{
    EXPECT_EQ(nullptr, GetCapture());
    EXPECT_EQ(R2_COPYPEN, dc.GetROP2());
    EXPECT_EQ(VexCursor::kArrow, backend.cursor());
    EXPECT_FALSE(settings().m_bSnapIntersection || settings().m_bSnapCenter ||
                 settings().m_bSnapNearest);
    EXPECT_FALSE(handler().isBlipDrawn());
    EXPECT_FALSE(handler().isBusy());
}

/// A host: characters that come back are echoed in the message line.
LRESULT CommandTest::onDisplay(const MSG& sent)
{
    if (sent.message == WM_CHAR) {
        CString text = message.GetWindowText();
        const auto character = static_cast<wchar_t>(sent.wParam);
        message.SetWindowText(character == L'\b' ? text.Left(text.GetLength() - 1)
                                                 : text + character);
    } else if (sent.message == WM_TIMER && m_nextLook < m_looks.size()) {
        m_looks[m_nextLook++]();
    }
    return 0;
}
