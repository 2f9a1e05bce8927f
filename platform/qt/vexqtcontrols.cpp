#include "platform/qt/vexqtcontrols.h"

#include "platform/qt/vexqtkeys.h"
#include "platform/qt/vexqttext.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>

class CVexQtLineWindow::KeyFilter : public QObject {
public:
    explicit KeyFilter(CVexQtLineWindow& window) : m_window(window) {}

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress || !m_window.m_onKey) {
            return false;
        }
        const auto* const key = static_cast<const QKeyEvent*>(event);
        const std::function<bool(unsigned)> onKey = m_window.m_onKey; // it may end the window
        return onKey(virtualKeyOf(key->key(), key->modifiers()));
    }

private:
    CVexQtLineWindow& m_window;
};

CVexQtLineWindow::CVexQtLineWindow(QLineEdit* line)
    : CVexQtControlWindow(line), m_line(line), m_filter(std::make_unique<KeyFilter>(*this))
{
    line->installEventFilter(m_filter.get());
}

CVexQtLineWindow::~CVexQtLineWindow() = default;

CString CVexQtLineWindow::GetWindowText() const
{
    return m_line.isNull() ? CString() : toCString(m_line->text());
}

void CVexQtLineWindow::SetWindowText(const CString& text)
{
    if (!m_line.isNull()) {
        m_line->setText(toQString(text));
    }
}

CVexQtTextWindow::CVexQtTextWindow(QPlainTextEdit* text) : CVexQtControlWindow(text), m_edit(text)
{
}

void CVexQtTextWindow::SetWindowText(const CString& text)
{
    if (m_edit.isNull() || text == m_text) {
        return;
    }
    if (!m_text.IsEmpty() && text.str().starts_with(m_text.str())) {
        QTextCursor end(m_edit->document());
        end.movePosition(QTextCursor::End);
        end.insertText(toQString(text.Mid(m_text.GetLength())));
    } else {
        m_edit->setPlainText(toQString(text));
    }
    m_text = text;
}

LRESULT CVexQtTextWindow::SendMessage(unsigned message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_VSCROLL && wParam == SB_BOTTOM && !m_edit.isNull()) {
        QScrollBar* const bar = m_edit->verticalScrollBar();
        bar->setValue(bar->maximum());
        return 0;
    }
    return CVexQtControlWindow::SendMessage(message, wParam, lParam);
}

CVexQtLabelWindow::CVexQtLabelWindow(QLabel* label) : CVexQtControlWindow(label), m_label(label)
{
}

CString CVexQtLabelWindow::GetWindowText() const
{
    return m_label.isNull() ? CString() : toCString(m_label->text());
}

void CVexQtLabelWindow::SetWindowText(const CString& text)
{
    if (!m_label.isNull()) {
        m_label->setText(toQString(text));
    }
}
