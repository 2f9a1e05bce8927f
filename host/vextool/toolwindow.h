#pragma once

#include "platform/headless/vexrecordingdc.h"
#include "platform/window/cwnd.h"

class CVexCommandSession;

/// The drawing view of a session that nobody looks at: it answers by the session and drops what is
/// drawn on it.
class ToolView : public CView {
public:
    /// Four pixels a drawing unit on a fresh drawing of 420 by 297 units, so that every quarter of
    /// a unit is a pixel.
    static constexpr CSize kSize{1680, 1188};

    ToolView() : m_dc(kSize) {}
    /// Null: messages go nowhere. Not owned.
    void setSession(CVexCommandSession* session) { m_session = session; }

    void GetClientRect(CRect& rect) const override { rect = CRect(0, 0, kSize.cx, kSize.cy); }
    [[nodiscard]] CPoint ClientToScreen(CPoint client) const override { return client; }
    [[nodiscard]] CPoint ScreenToClient(CPoint screen) const override { return screen; }
    [[nodiscard]] CString GetWindowText() const override { return {}; }
    void SetWindowText(const CString&) override {}
    [[nodiscard]] CDC* GetDC() override { return &m_dc; }
    void Invalidate() override {}
    void SetFocus() override {}
    LRESULT SendMessage(unsigned message, WPARAM wParam, LPARAM lParam) override;

private:
    CVexRecordingDC m_dc;
    CVexCommandSession* m_session = nullptr;
};

/// A line or a page of text that nobody looks at.
class ToolText : public CWnd {
public:
    void GetClientRect(CRect& rect) const override { rect = CRect(0, 0, 1, 1); }
    [[nodiscard]] CPoint ClientToScreen(CPoint client) const override { return client; }
    [[nodiscard]] CPoint ScreenToClient(CPoint screen) const override { return screen; }
    [[nodiscard]] CString GetWindowText() const override { return m_text; }
    void SetWindowText(const CString& text) override { m_text = text; }
    [[nodiscard]] CDC* GetDC() override { return nullptr; }
    void Invalidate() override {}
    void SetFocus() override {}
    LRESULT SendMessage(unsigned, WPARAM, LPARAM) override { return 0; }

private:
    CString m_text;
};
