#pragma once

#include "platform/headless/vexrecordingdc.h"
#include "platform/window/cmenu.h"
#include "platform/window/cwnd.h"
#include "platform/window/vexbackend.h"

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

/// A message box that would have been shown.
struct VexShownMessage {
    CString text;
    CString caption;
    unsigned type = MB_OK;
    int answer = IDOK;
};

/// The backend with no screen: messages are what a script queued, message boxes are recorded and
/// answered from a list (the first button when the list is empty). When the queue runs dry, the
/// capture is taken away.
class VEXPLATFORM_EXPORT CVexHeadlessBackend : public CVexBackend {
public:
    /// A mouse message moves the pointer to where it happened; a mouse or key message without a
    /// window of its own goes to the one that holds the capture.
    bool getMessage(MSG& message) override;
    /// Puts the character of a key in front of the queue: the one that the message carries, else
    /// that of a US keyboard with the Shift and Ctrl of setKeyState.
    void translateMessage(const MSG& message) override;
    LRESULT dispatchMessage(const MSG& message) override;
    void postMessage(const MSG& message) override;
    void setCapture(CWnd* window) override;
    [[nodiscard]] CWnd* capture() const override { return m_capture; }
    void setCursor(VexCursor cursor) override { m_cursor = cursor; }
    [[nodiscard]] VexCursor cursor() const override { return m_cursor; }
    [[nodiscard]] CPoint cursorPosition() const override { return m_pointer; }
    void forget(CWnd* window) override;
    /// Kept inside clip() while there is one. The window that holds the capture is told of a new
    /// position by a mouse move in front of the queue.
    void setCursorPosition(CPoint screen) override;
    void clipCursor(const CRect* screen) override;
    [[nodiscard]] int keyState(unsigned virtualKey) const override;
    int messageBox(const CString& text, const CString& caption, unsigned type) override;
    /// Answers from the list of chooseNext; greyed items cannot be chosen.
    unsigned trackPopupMenu(const CMenu& menu, CPoint screen, CWnd* window) override;
    /// Answers from the list of answerTextNext.
    bool askText(CWnd* window, const CString& label, CString& text) override;
    [[nodiscard]] CString compositionResult(CWnd*) override { return m_composition; }
    [[nodiscard]] std::unique_ptr<CDC> createImageDC(CSize size) override;

    /// Message boxes so far, oldest first.
    [[nodiscard]] const std::vector<VexShownMessage>& shownMessages() const { return m_shown; }
    /// What the next message boxes answer, in order.
    void answerNext(int answer) { m_answers.push_back(answer); }
    /// What the next popup menus choose, in order; with none left they are dismissed.
    void chooseNext(unsigned id) { m_choices.push_back(id); }
    /// Popup menus so far, oldest first, as they were shown.
    [[nodiscard]] const std::vector<CMenu>& shownMenus() const { return m_menus; }
    /// What the next questions for a text answer, in order; nothing, and an empty list, cancel.
    void answerTextNext(std::optional<CString> text) { m_texts.push_back(std::move(text)); }
    /// The labels of the questions so far.
    [[nodiscard]] const std::vector<CString>& askedTexts() const { return m_asked; }
    void setComposition(const CString& text) { m_composition = text; }
    void setKeyState(unsigned virtualKey, int state);
    [[nodiscard]] const std::optional<CRect>& clip() const { return m_clip; }
    [[nodiscard]] std::size_t queued() const { return m_queue.size(); }
    /// Called each time a message is asked for and none is queued, before the capture goes.
    void setWhenDry(std::function<void()> whenDry) { m_whenDry = std::move(whenDry); }

private:
    void dropDead();

    std::deque<MSG> m_queue;
    CWnd* m_capture = nullptr;
    VexCursor m_cursor = VexCursor::kArrow;
    CPoint m_pointer;
    std::optional<CRect> m_clip;
    std::vector<std::pair<unsigned, int>> m_keys;
    std::deque<int> m_answers;
    std::deque<unsigned> m_choices;
    std::deque<std::optional<CString>> m_texts;
    std::vector<CMenu> m_menus;
    std::vector<CString> m_asked;
    CString m_composition;
    std::vector<VexShownMessage> m_shown;
    std::function<void()> m_whenDry;
};

/// A window in memory: it records what it is sent and asked, and draws on a recording context.
class VEXPLATFORM_EXPORT CVexMemoryWindow : public CView {
public:
    explicit CVexMemoryWindow(CSize client = {1920, 1080});

    void GetClientRect(CRect& rect) const override;
    [[nodiscard]] CPoint ClientToScreen(CPoint client) const override { return client; }
    [[nodiscard]] CPoint ScreenToClient(CPoint screen) const override { return screen; }
    [[nodiscard]] CString GetWindowText() const override { return m_text; }
    void SetWindowText(const CString& text) override { m_text = text; }
    [[nodiscard]] CDC* GetDC() override { return &m_dc; }
    void Invalidate() override { ++m_invalidations; }
    void SetFocus() override {}
    LRESULT SendMessage(unsigned message, WPARAM wParam, LPARAM lParam) override;

    /// Changes the client area and tells the window with WM_SIZE (new size in lParam).
    void resize(CSize client);
    [[nodiscard]] CVexRecordingDC& recording() { return m_dc; }
    [[nodiscard]] const std::vector<MSG>& received() const { return m_received; }
    [[nodiscard]] int invalidations() const { return m_invalidations; }
    /// Answers messages in place of the default, which records and gives 0.
    void setHandler(std::function<LRESULT(const MSG&)> handler) { m_handler = std::move(handler); }

private:
    CSize m_client;
    CString m_text;
    CVexRecordingDC m_dc;
    std::vector<MSG> m_received;
    int m_invalidations = 0;
    std::function<LRESULT(const MSG&)> m_handler;
};
