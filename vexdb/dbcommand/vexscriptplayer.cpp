#include "vexdb/dbcommand/vexscriptplayer.h"

#include "platform/base/cstdiofile.h"
#include "platform/headless/vexheadless.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexcommandsession.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <utility>

namespace {

constexpr wchar_t kComment = L';';
constexpr wchar_t kAction = L'@';
constexpr const wchar_t* kBlanks = L" \t";

std::deque<CString> wordsOf(const CString& line)
{
    std::deque<CString> words;
    const std::wstring& text = line.str();
    for (std::size_t at = text.find_first_not_of(kBlanks); at != std::wstring::npos;) {
        const std::size_t end = text.find_first_of(kBlanks, at);
        words.emplace_back(text.substr(at, end == std::wstring::npos ? end : end - at));
        at = text.find_first_not_of(kBlanks, end);
    }
    return words;
}

/// How many message boxes a backend without a screen would have shown.
std::size_t shownBoxes()
{
    const auto* headless = dynamic_cast<const CVexHeadlessBackend*>(&CVexBackend::current());
    return headless == nullptr ? 0 : headless->shownMessages().size();
}

CString lastBox()
{
    const auto* headless = dynamic_cast<const CVexHeadlessBackend*>(&CVexBackend::current());
    return headless == nullptr ? CString() : headless->shownMessages().back().text;
}

} // namespace

CVexScriptPlayer::CVexScriptPlayer(CVexCommandSession& session)
    : m_session(session), m_sessionAlive(session.alive())
{
}

CVexScriptPlayer::~CVexScriptPlayer()
{
    dropMenu();
    if (!m_over && !m_sessionAlive.expired()) {
        m_session.setFeed({});
    }
}

CVexCommandHandler& CVexScriptPlayer::handler() const
{
    return m_session.handler();
}

bool CVexScriptPlayer::readLines(const CString& path, std::vector<CString>& lines)
{
    CStdioFile file;
    if (!file.Open(path)) {
        return false;
    }
    CString line;
    while (file.ReadString(line)) {
        lines.push_back(line);
    }
    return true;
}

void CVexScriptPlayer::start(std::vector<CString> lines, std::function<void()> whenOver)
{
    m_lines = std::move(lines);
    m_whenOver = std::move(whenOver);
    m_next = 0;
    m_words.clear();
    m_steps.clear();
    m_refusals.clear();
    m_answering = false;
    m_over = false;
    m_history = handler().getStrings();
    m_session.setFeed([this] { feed(); });
    m_session.windows().display->PostMessage(WM_VEX_FEED, 0, 0);
}

bool CVexScriptPlayer::playFile(const CString& path)
{
    std::vector<CString> lines;
    return readLines(path, lines) && play(std::move(lines));
}

bool CVexScriptPlayer::play(std::vector<CString> lines)
{
    start(std::move(lines));
    while (!isOver()) {
        MSG message;
        if (!GetMessageW(&message, nullptr, 0, 0)) {
            end();
        } else if (message.hwnd == nullptr && message.message == 0) {
            feed(); // nothing was queued: an input has kept the request to itself
        } else {
            DispatchMessageW(&message);
        }
    }
    if (!m_sessionAlive.expired()) {
        echo();
    }
    return m_refusals.empty();
}

void CVexScriptPlayer::feed()
{
    if (m_over || stepOn()) {
        return;
    }
    if (m_answering && !finishAnswer()) {
        end();
        return;
    }
    echo();
    if (!nextAnswer()) {
        end();
    }
}

/// Sends what the answer still lacks; false when it is complete.
bool CVexScriptPlayer::stepOn()
{
    if (m_steps.empty() && m_wantsClosing) {
        m_wantsClosing = false;
        const bool keyword = !m_word.IsEmpty() && inputWentOn(m_keyMark); // an input took it
        if (!keyword && m_words.empty()) {
            addKey(VK_RETURN, VK_RETURN);
        } else if (!keyword) {
            addKey(VK_SPACE, L' ');
        }
    }
    if (m_steps.empty()) {
        return false;
    }
    m_keyMark = look();
    const Step step = m_steps.front();
    m_steps.pop_front();
    post(step);
    return true;
}

void CVexScriptPlayer::post(const Step& step)
{
    CWnd& display = *m_session.windows().display;
    display.PostMessage(step.message, step.wParam, step.lParam);
    display.PostMessage(WM_VEX_FEED, 0, 0);
}

/// Judges the answer that was sent; false when the script ends by it.
bool CVexScriptPlayer::finishAnswer()
{
    m_answering = false;
    const CString fault = faultOfAnswer();
    dropMenu();
    if (fault.IsEmpty()) {
        return true;
    }
    refuse(fault);
    m_words.clear();
    return m_keepGoing;
}

/// Begins the next answer and sends its first message; false behind the last one.
bool CVexScriptPlayer::nextAnswer()
{
    while (m_words.empty()) {
        if (m_next == m_lines.size()) {
            return false;
        }
        CString line(m_lines[m_next++]);
        line.Trim();
        if (line[0] == kComment) {
            continue;
        }
        if (beginLine(line)) {
            if (stepOn()) {
                return true;
            }
            m_answering = false; // it was done at once
            continue;
        }
        if (m_words.empty() && !m_keepGoing) {
            return false; // an action that makes no sense
        }
    }
    beginWord(std::exchange(m_words.front(), {}));
    return stepOn();
}

/// True when the line is an answer by itself; else its words are, or it was refused.
bool CVexScriptPlayer::beginLine(const CString& line)
{
    m_answerMark = look();
    if (line[0] == kAction) {
        m_typed = false;
        m_wantsClosing = false;
        m_answering = beginAction(line);
        return m_answering;
    }
    m_words = wordsOf(line);
    if (!m_words.empty()) {
        return false;
    }
    beginWord({});
    return true;
}

void CVexScriptPlayer::beginWord(const CString& word)
{
    if (!m_words.empty()) {
        m_words.pop_front();
    }
    m_answerMark = look();
    m_answering = true;
    m_typed = true;
    m_wantsClosing = true;
    m_word = word;
    for (const wchar_t character : word.str()) {
        const bool isKey =
            (character >= L'0' && character <= L'9') || (character >= L'A' && character <= L'Z');
        const bool isSmall = character >= L'a' && character <= L'z';
        // The codes of other characters are those of keys that act.
        constexpr unsigned kNoKey = 0xe7;
        addKey(isKey || isSmall
                   ? static_cast<unsigned>(isSmall ? character - L'a' + L'A' : character)
                   : kNoKey,
               character);
    }
}

void CVexScriptPlayer::addKey(unsigned key, wchar_t character)
{
    m_steps.push_back({WM_KEYDOWN, key, keyLParam(character)});
}

CVexScriptPlayer::Mark CVexScriptPlayer::look() const
{
    const CVexCommandHandler& now = handler();
    return {now.inputSerial(), now.refusals(), shownBoxes(), now.isBusy()};
}

/// Another input waits, or none does any more.
bool CVexScriptPlayer::inputWentOn(const Mark& since) const
{
    return handler().inputSerial() != since.inputs || handler().isBusy() != since.busy;
}

/// Why the answer counts as refused; empty when it was taken.
CString CVexScriptPlayer::faultOfAnswer() const
{
    const Mark now = look();
    if (now.boxes > m_answerMark.boxes) {
        return L"a message appeared: " + lastBox();
    }
    const bool refused = now.refusals != m_answerMark.refusals;
    if (m_menuWaits && !m_menu.isChosen) {
        return L"no menu with such a row came up";
    }
    if (!m_typed) {
        return refused ? L"it was refused" : L"";
    }
    if (!m_answerMark.busy) {
        if (refused) {
            return handler().getCommandId(m_word) == 0 ? L"there is no such command"
                                                       : L"the command is not available";
        }
        return {};
    }
    if (!inputWentOn(m_answerMark)) {
        return L"no input took it";
    }
    return refused ? L"it is not a valid answer" : L"";
}

/// From here on menus are the person's again.
void CVexScriptPlayer::dropMenu()
{
    if (std::exchange(m_menuWaits, false)) {
        CVexBackend::current().setScriptedMenu(nullptr);
    }
}

void CVexScriptPlayer::refuse(const CString& why)
{
    m_refusals.push_back({static_cast<int>(m_next), m_lines[m_next - 1], why});
}

/// Hands on what the history has got since the last time.
void CVexScriptPlayer::echo()
{
    if (!m_echo) {
        return;
    }
    const CString history = handler().getStrings();
    // An unknown command wipes the history; then all of it is new.
    const bool grown = history.str().starts_with(m_history.str());
    std::size_t at = grown ? m_history.str().size() : 0;
    m_history = history;
    while (at < history.str().size()) {
        const std::size_t end = std::min(history.str().find(L'\n', at), history.str().size());
        if (end > at) {
            m_echo(CString(history.str().substr(at, end - at)));
        }
        at = end + 1;
    }
}

void CVexScriptPlayer::end()
{
    if (m_over) {
        return;
    }
    m_over = true;
    dropMenu();
    m_session.setFeed({});
    // Behind the command that still waits, which is cancelled by this.
    m_session.whenIdle(
        [this, alive = std::weak_ptr<bool>(m_alive), whenOver = std::exchange(m_whenOver, {})] {
            if (!alive.expired()) {
                echo();
            }
            if (whenOver) {
                whenOver();
            }
        });
}
