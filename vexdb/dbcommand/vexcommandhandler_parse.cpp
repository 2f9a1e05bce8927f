#include "platform/base/vextext.h"
#include "platform/window/cwnd.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexprompthandler.h"
#include "vexdb/vexdbdatabase.h"

void CVexCommandHandler::takeInputText()
{
    const CWnd* message = messageWindow();
    m_inputText = message == nullptr ? CString() : message->GetWindowText();
}

CString CVexCommandHandler::getInputValue() const
{
    CString value = m_inputText.Mid(m_inputText.Find(L':') + 1);
    return value.Trim();
}

bool CVexCommandHandler::getInputValue(int& value) const
{
    const CString text = getInputValue();
    const bool isNumber = _isNumericValue(text);
    value = isNumber ? toInteger(text.str()) : 0;
    return isNumber;
}

bool CVexCommandHandler::getInputValue(double& value) const
{
    const CString text = getInputValue();
    const bool isNumber = _isNumericValue(text);
    value = isNumber ? toNumber(text.str()) : 0.0;
    return isNumber;
}

bool CVexCommandHandler::getInputValue(CString& value) const
{
    value = getInputValue();
    return !value.IsEmpty();
}

bool CVexCommandHandler::getInputValue(CVexGePoint2d& value) const
{
    value = CVexGePoint2d();
    const CString text = getInputValue();
    const int comma = text.Find(L',');
    const CString y = text.Mid(comma + 1);
    if (comma < 0 || y.IsEmpty() || !_isNumericValue(y)) {
        return false;
    }
    // Only y decides whether this is a point; an x that is no number reads as 0. People who type
    // ",5" or a name before the comma get the y that they meant.
    const CString x = text.Left(comma);
    value.set(_isNumericValue(x) ? toNumber(x.str()) : 0.0, toNumber(y.str()));
    return true;
}

bool CVexCommandHandler::isValidValue(const CString& /*text*/) const
{
    switch (CVexPromptHandler::getPromptKind(static_cast<VexDb::PromptId>(m_currentPrompt))) {
    case PromptKindReal: {
        double value = 0.0;
        return getInputValue(value);
    }
    case PromptKindText: {
        CString value;
        return getInputValue(value);
    }
    case PromptKindPoint: {
        CVexGePoint2d value;
        return getInputValue(value);
    }
    case PromptKindInteger: {
        int value = 0;
        return getInputValue(value);
    }
    default: return false;
    }
}
