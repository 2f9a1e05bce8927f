#include "platform/base/vextext.h"
#include "platform/window/cwnd.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexpromptid.h"

namespace {

// The input method's text is read into 512 bytes of 16-bit units, the NUL among them.
constexpr std::size_t kComposedUnits = 256;

} // namespace

bool CVexCommandHandler::onKeyDown(unsigned key, unsigned /*repeat*/, unsigned /*flags*/)
{
    if (isBusy() || (key != VK_RETURN && key != VK_ESCAPE && key != VK_SPACE)) {
        return false;
    }
    if (key == VK_SPACE && m_currentPrompt == VexDb::PromptTextString) {
        return true; // a blank of a free text: the edit control's
    }
    const CWnd* message = messageWindow();
    CString line = message == nullptr ? CString() : message->GetWindowText();
    line.Trim();
    if (key == VK_ESCAPE) {
        return cancelLine(line);
    }
    if (line.IsEmpty()) {
        return RunCommand(m_lastCommand);
    }
    setMsg();
    const unsigned long number = getCommandId(line);
    return number != 0 ? RunCommand(number) : answerUnknown(line);
}

bool CVexCommandHandler::cancelLine(const CString& line)
{
    CString cancelled(L"Cancel");
    if (!line.IsEmpty()) {
        cancelled.Format(L"%s Cancel", line);
    }
    if (CWnd* message = messageWindow(); message != nullptr) {
        message->SetWindowText(cancelled);
    }
    m_currentPrompt = VexDb::PromptNone;
    return setMsg();
}

bool CVexCommandHandler::answerUnknown(const CString& name)
{
    ++m_refusals;
    CString answer;
    answer.Format(L"%s %s", promptText(VexDb::PromptUnknownCommand), name);
    // In place of the whole history: the one line stands alone, where nobody can overlook it.
    writeHistory(answer);
    endLine();
    return true;
}

void CVexCommandHandler::OnComposition(unsigned /*wParam*/, long lParam)
{
    CWnd* const display = GetDispWindow();
    CWnd* const message = messageWindow();
    if ((lParam & kCompositionResult) == 0 || display == nullptr || message == nullptr) {
        return;
    }
    wchar_t composed[kComposedUnits];
    copyText(composed, CVexBackend::current().compositionResult(display));
    CString line;
    line.Format(L"%s%s", message->GetWindowText(), composed);
    message->SetWindowText(line);
}
