#include "platform/window/cwnd.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexcommandsession.h"
#include "vexdb/dbcommand/vexpromptid.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <array>

namespace {

constexpr wchar_t kBackspace = 8;
constexpr wchar_t kFirstShown = L' '; // what lies below acts and is not shown
constexpr int kKeyIsDown = 0x8000;

/// A key that runs a numbered command while nothing waits.
struct Shortcut {
    unsigned key;
    bool control;
    unsigned long number;
};

constexpr unsigned kF7 = VK_F1 + 6;
constexpr unsigned kF8 = VK_F1 + 7;
constexpr unsigned kF9 = VK_F1 + 8;

constexpr std::array kShortcuts = {
    Shortcut{VK_F4, false, kHostGripSnap},
    Shortcut{kF7, false, kHostGrid},
    Shortcut{kF8, false, kHostOrtho},
    Shortcut{kF9, false, kHostGridSnap},
    Shortcut{VK_DELETE, false, hostNumberOf(VexDb::CmdErase)},
    Shortcut{'A', true, kHostSelectAll},
    Shortcut{'Y', true, kHostRedo},
    Shortcut{'Z', true, kHostUndo},
};

bool endsLine(unsigned key)
{
    return key == VK_RETURN || key == VK_SPACE || key == VK_ESCAPE;
}

} // namespace

/// The line as something else wrote it is a prompt, which the person's backspace must not eat.
void CVexCommandSession::noticePrompt()
{
    const CString line = m_windows.message->GetWindowText();
    if (!handler().isBusy() && handler().currentPrompt() == VexDb::PromptNone) {
        m_promptLength = 0;
    } else if (!(line == m_line)) {
        m_promptLength = static_cast<std::size_t>(line.GetLength());
    }
    m_line = line;
}

void CVexCommandSession::typeCharacter(wchar_t character)
{
    if (m_windows.message == nullptr || (character < kFirstShown && character != kBackspace)) {
        return;
    }
    noticePrompt();
    if (character != kBackspace) {
        m_line += character;
    } else if (static_cast<std::size_t>(m_line.GetLength()) > m_promptLength) {
        m_line = m_line.Left(m_line.GetLength() - 1);
    }
    m_windows.message->SetWindowText(m_line);
}

void CVexCommandSession::compose(const MSG& message)
{
    if (m_windows.message == nullptr) {
        return;
    }
    noticePrompt();
    handler().OnComposition(static_cast<unsigned>(message.wParam), message.lParam);
    m_line = m_windows.message->GetWindowText(); // what was composed is the person's
}

void CVexCommandSession::flushLine()
{
    if (m_windows.message != nullptr && !m_windows.message->GetWindowText().IsEmpty()) {
        handler().setMsg();
    }
}

// A key over the drawing while nothing waits goes where the message line's own keys go.
void CVexCommandSession::key(const MSG& message)
{
    const auto code = static_cast<unsigned>(message.wParam);
    const bool control = (GetKeyState(VK_CONTROL) & kKeyIsDown) != 0;
    const auto row = std::ranges::find_if(kShortcuts, [&](const Shortcut& shortcut) {
        return shortcut.key == code && shortcut.control == control;
    });
    if (row != kShortcuts.end()) {
        command(row->number);
    } else if (endsLine(code)) {
        onMessageKey(code);
    } else if (const wchar_t character = characterOfKey(message.lParam); character != 0) {
        typeCharacter(character);
    } else if (!control) {
        TranslateMessage(&message);
    }
}
