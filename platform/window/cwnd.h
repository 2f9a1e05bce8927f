#pragma once

#include "platform/base/crect.h"
#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"
#include "platform/window/vexmessage.h"

class CDC;

/// A window as the library sees one. A backend makes the concrete kinds and owns them.
class VEXPLATFORM_EXPORT CWnd {
public:
    CWnd();
    /// Gives back the capture and drops what is queued for the window.
    virtual ~CWnd();
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    /// The client area in device pixels; its left top is (0, 0).
    virtual void GetClientRect(CRect& rect) const = 0;
    [[nodiscard]] virtual CPoint ClientToScreen(CPoint client) const = 0;
    [[nodiscard]] virtual CPoint ScreenToClient(CPoint screen) const = 0;
    [[nodiscard]] virtual CString GetWindowText() const = 0;
    virtual void SetWindowText(const CString& text) = 0;
    /// A context that draws on the client area, owned by the window; null when there is none.
    [[nodiscard]] virtual CDC* GetDC() = 0;
    /// Asks for a repaint of the whole client area.
    virtual void Invalidate() = 0;
    virtual void SetFocus() = 0;
    /// The window's answer to a message, at once.
    virtual LRESULT SendMessage(unsigned message, WPARAM wParam, LPARAM lParam) = 0;
    /// Queues a message.
    virtual void PostMessage(unsigned message, WPARAM wParam, LPARAM lParam);
    /// Mouse messages go to this window until ReleaseCapture.
    void SetCapture();

    /// False for null and for a window that is gone: a message taken before its end may still name
    /// it, and then goes nowhere.
    [[nodiscard]] static bool isLiving(const CWnd* window);
};

/// A window that shows a drawing.
class VEXPLATFORM_EXPORT CView : public CWnd {};
