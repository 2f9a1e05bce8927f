#pragma once

#include "platform/base/cstring.h"
#include "platform/qt/vexqtwindow.h"

#include <functional>
#include <memory>

class QLabel;
class QLineEdit;
class QPlainTextEdit;

/// The message line over a line of text that a person edits.
class VEXQT_EXPORT CVexQtLineWindow : public CVexQtControlWindow {
public:
    explicit CVexQtLineWindow(QLineEdit* line);
    ~CVexQtLineWindow() override;
    [[nodiscard]] CString GetWindowText() const override;
    /// The cursor goes behind the text.
    void SetWindowText(const CString& text) override;
    /// Gets each key-down of the line first, as a VirtualKey; with the answer true the line itself
    /// does not see it.
    void setKeyHandler(std::function<bool(unsigned key)> handler) { m_onKey = std::move(handler); }

private:
    class KeyFilter;

    QPointer<QLineEdit> m_line;
    std::function<bool(unsigned)> m_onKey;
    std::unique_ptr<KeyFilter> m_filter;
};

/// The history over many lines of text that nobody edits. A text that begins with the one before is
/// appended, so a long history costs what is new.
class VEXQT_EXPORT CVexQtTextWindow : public CVexQtControlWindow {
public:
    explicit CVexQtTextWindow(QPlainTextEdit* text);
    [[nodiscard]] CString GetWindowText() const override { return m_text; }
    void SetWindowText(const CString& text) override;
    LRESULT SendMessage(unsigned message, WPARAM wParam, LPARAM lParam) override;

private:
    QPointer<QPlainTextEdit> m_edit;
    CString m_text;
};

/// A text that is only shown.
class VEXQT_EXPORT CVexQtLabelWindow : public CVexQtControlWindow {
public:
    explicit CVexQtLabelWindow(QLabel* label);
    [[nodiscard]] CString GetWindowText() const override;
    void SetWindowText(const CString& text) override;

private:
    QPointer<QLabel> m_label;
};
