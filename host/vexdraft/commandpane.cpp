#include "host/vexdraft/commandpane.h"

#include <QCoreApplication>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QVBoxLayout>

namespace {

constexpr int kLinesShown = 6;

bool belongsToDrawing(const QKeyEvent& key, bool lineIsEmpty)
{
    if (key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo)) {
        return true;
    }
    return lineIsEmpty &&
           (key.matches(QKeySequence::SelectAll) || key.matches(QKeySequence::Delete));
}

} // namespace

bool MessageLine::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride &&
        belongsToDrawing(static_cast<const QKeyEvent&>(*event), text().isEmpty())) {
        event->ignore(); // the menu's shortcut runs
        return true;
    }
    return QLineEdit::event(event);
}

HistoryText::HistoryText(MessageLine* line, QWidget* parent) : QPlainTextEdit(parent), m_line(line)
{
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setLineWrapMode(QPlainTextEdit::WidgetWidth);
    setFrameShape(QFrame::NoFrame);
}

void HistoryText::keyPressEvent(QKeyEvent* event)
{
    const bool typed = !event->text().isEmpty() &&
                       !event->modifiers().testFlag(Qt::ControlModifier) &&
                       !event->modifiers().testFlag(Qt::AltModifier);
    if (!typed) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    m_line->setFocus(Qt::OtherFocusReason);
    QCoreApplication::sendEvent(m_line, event);
}

CommandPane::CommandPane(QWidget* parent)
    : QWidget(parent), m_line(new MessageLine(this)), m_history(new HistoryText(m_line, this))
{
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    m_line->setFont(fixed);
    m_line->setPlaceholderText(QCoreApplication::translate(
        "CommandPane", "Type a command, for example LINE, and press Enter"));
    m_history->setFont(fixed);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(2);
    layout->addWidget(m_history, 1);
    layout->addWidget(m_line);
}

QSize CommandPane::sizeHint() const
{
    const int line = m_history->fontMetrics().lineSpacing();
    return {QWidget::sizeHint().width(), kLinesShown * line + 2 * m_line->sizeHint().height()};
}
