#include "platform/window/cwnd.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexprompthandler.h"

CString CVexCommandHandler::promptText(int id) const
{
    return m_prompts == nullptr ? CString() : m_prompts->getPrompt(id);
}

bool CVexCommandHandler::setMsg()
{
    if (messageWindow() == nullptr) {
        return true;
    }
    takeInputText();
    const bool fits = fitsPrompt();
    if (!fits) {
        const int kind =
            CVexPromptHandler::getPromptKind(static_cast<VexDb::PromptId>(m_currentPrompt));
        if (kind != PromptKindNone && !m_answerTaken) {
            ++m_refusals;
        }
        CString refused;
        refused.Format(L"%s\n%s", m_inputText, promptText(VexDb::PromptInvalidInput));
        m_inputText = refused;
    }
    appendToHistory(m_inputText);
    endLine();
    return fits;
}

/// Whether what stands behind the current prompt in the input text is nothing, or of its kind.
bool CVexCommandHandler::fitsPrompt() const
{
    if (m_currentPrompt == VexDb::PromptNone) {
        return true;
    }
    const CString prompt = promptText(m_currentPrompt);
    CString typed(m_inputText);
    if (typed.Find(prompt) >= 0) {
        typed = typed.Mid(prompt.GetLength());
    }
    return typed.IsEmpty() || isValidValue(typed);
}

/// The line is done with: an empty one, without a prompt, and the history shown as it is now.
void CVexCommandHandler::endLine()
{
    if (CWnd* message = messageWindow(); message != nullptr) {
        message->SetWindowText(CString());
    }
    m_currentPrompt = VexDb::PromptNone;
    m_answerTaken = false;
    if (CWnd* shown = historyWindow(); shown != nullptr) {
        shown->Invalidate();
    }
}

void CVexCommandHandler::appendToHistory(const CString& text)
{
    const CWnd* shown = historyWindow();
    CString history = shown == nullptr ? m_historyText : shown->GetWindowText();
    if (!history.IsEmpty() && history[history.GetLength() - 1] != L'\n') {
        history += L'\n';
    }
    writeHistory(history + text);
}

void CVexCommandHandler::writeHistory(const CString& text)
{
    m_historyText = text;
    if (CWnd* shown = historyWindow(); shown != nullptr) {
        shown->SetWindowText(text);
        shown->SendMessage(WM_VSCROLL, SB_BOTTOM, 0);
    }
}

void CVexCommandHandler::appendHistory(const CString& text)
{
    appendToHistory(text);
    if (CWnd* shown = historyWindow(); shown != nullptr) {
        shown->Invalidate();
    }
}

void CVexCommandHandler::refuse(const CString& why)
{
    ++m_refusals;
    appendHistory(why);
}

void CVexCommandHandler::SetPrompt(int id)
{
    if (id < 0 || messageWindow() == nullptr) {
        return;
    }
    setMsg();
    showLine(promptText(id));
    m_currentPrompt = id;
}

void CVexCommandHandler::Prompt(const CString& text)
{
    if (messageWindow() == nullptr) {
        return;
    }
    setMsg();
    showLine(text);
}

void CVexCommandHandler::showLine(const CString& text)
{
    m_message->SetWindowText(text);
    m_message->SendMessage(WM_PAINT, 0, 0); // at once: the host's loop does not run in a command
}
