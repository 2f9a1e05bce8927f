#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QWidget>

/// The message line. The keys of drawing commands stay the drawing's while nothing is typed that
/// they could mean instead: undo and redo always, select all and delete on an empty line.
class MessageLine : public QLineEdit {
public:
    using QLineEdit::QLineEdit;

protected:
    bool event(QEvent* event) override;
};

/// The history: to be read and copied from. What is typed over it goes to the message line.
class HistoryText : public QPlainTextEdit {
public:
    HistoryText(MessageLine* line, QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    MessageLine* m_line;
};

/// The history with the message line under it.
class CommandPane : public QWidget {
public:
    explicit CommandPane(QWidget* parent);
    [[nodiscard]] MessageLine* line() const { return m_line; }
    [[nodiscard]] HistoryText* history() const { return m_history; }
    [[nodiscard]] QSize sizeHint() const override;

private:
    MessageLine* m_line;
    HistoryText* m_history;
};
