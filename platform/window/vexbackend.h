#pragma once

#include "platform/base/cpoint.h"
#include "platform/base/crect.h"
#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"
#include "platform/window/vexmessage.h"

#include <memory>
#include <optional>

class CDC;
class CMenu;
class CWnd;

/// Cursor shapes that the library asks for.
enum class VexCursor { kArrow, kCross, kPickBox, kMove, kResize, kHand, kWait };

/// Buttons of a message box and what it answers.
enum MessageBoxType : unsigned { MB_OK = 0, MB_OKCANCEL = 1, MB_YESNOCANCEL = 3, MB_YESNO = 4 };
enum MessageBoxAnswer : int { IDOK = 1, IDCANCEL = 2, IDYES = 6, IDNO = 7 };

/// What a script answers in place of the person when a popup menu comes up.
struct VexScriptedMenu {
    CString row;                 // by its label
    std::optional<CString> text; // for the question that the row asks
    bool isChosen = false;       // the menu came up and had such a row, not greyed
};

/// What the library asks of a window system. One backend is in force at a time; with none installed
/// the headless one is.
class VEXPLATFORM_EXPORT CVexBackend {
public:
    /// A backend that is still in force leaves the headless one in its place.
    virtual ~CVexBackend();

    /// The next message; false for WM_QUIT, which takes the capture away too. Never waits for ever:
    /// without a source of messages the capture is taken away and a null message comes, so that
    /// every pump ends.
    virtual bool getMessage(MSG& message) = 0;
    virtual void translateMessage(const MSG& message) = 0;
    virtual LRESULT dispatchMessage(const MSG& message) = 0;
    virtual void postMessage(const MSG& message) = 0;
    virtual void setCapture(CWnd* window) = 0;
    [[nodiscard]] virtual CWnd* capture() const = 0;
    /// Called by a window that dies: it gives back the capture if it holds it. A backend with a
    /// queue drops the window's messages too.
    virtual void forget(CWnd* window);
    virtual void setCursor(VexCursor cursor) = 0;
    [[nodiscard]] virtual VexCursor cursor() const = 0;
    [[nodiscard]] virtual CPoint cursorPosition() const = 0; // screen
    virtual void setCursorPosition(CPoint screen) = 0;
    /// Keeps the pointer in a screen rectangle; null frees it.
    virtual void clipCursor(const CRect* screen) = 0;
    /// Bit 0x8000 while the key is down, bit 1 while a toggle is on.
    [[nodiscard]] virtual int keyState(unsigned virtualKey) const = 0;
    virtual int messageBox(const CString& text, const CString& caption, unsigned type) = 0;
    /// Asks the person for a folder, beginning at `start`; false on cancel, and on a backend that
    /// has nobody to ask.
    virtual bool chooseFolder(CWnd*, const CString& /*title*/, const CString& /*start*/,
                              CString& /*chosen*/)
    {
        return false;
    }
    /// Shows a menu at a screen point until something is chosen: its id, or 0. A backend that has
    /// nobody to ask chooses nothing.
    virtual unsigned trackPopupMenu(const CMenu&, CPoint /*screen*/, CWnd*) { return 0; }
    /// Asks the person for a line of text, `text` at first; false on cancel, and on a backend that
    /// has nobody to ask.
    virtual bool askText(CWnd*, const CString& /*label*/, CString& /*text*/) { return false; }
    /// The next popup menu is not shown: `answer` (not owned) chooses its row, and answers the
    /// question for a text behind it. Null gives both back to the person.
    void setScriptedMenu(VexScriptedMenu* answer) { m_scriptedMenu = answer; }
    /// Shows `menu`, unless a script answers it.
    unsigned chooseFrom(const CMenu& menu, CPoint screen, CWnd* window);
    /// Asks for a text, unless a script answers it.
    bool askForText(CWnd* window, const CString& label, CString& text);
    /// The text that the input method has finished composing for a window.
    [[nodiscard]] virtual CString compositionResult(CWnd*) { return {}; }
    /// A context over an image of its own, for pictures without a window; null when this backend
    /// has no pixels.
    [[nodiscard]] virtual std::unique_ptr<CDC> createImageDC(CSize size) = 0;

    static CVexBackend& current();
    /// Puts `backend` (not owned) in force and returns the one before; null stands for the
    /// headless.
    static CVexBackend* install(CVexBackend* backend);

private:
    VexScriptedMenu* m_scriptedMenu = nullptr;
};

// The names under which the library calls it.

/// Window and message range are not looked at: the library asks for every message.
VEXPLATFORM_EXPORT bool GetMessageW(MSG* message, CWnd* window, unsigned first, unsigned last);
/// True for a key message, whether or not it became a character.
VEXPLATFORM_EXPORT bool TranslateMessage(const MSG* message);
/// 0, and nothing happens, for a message without a window or whose window is gone.
VEXPLATFORM_EXPORT LRESULT DispatchMessageW(const MSG* message);
VEXPLATFORM_EXPORT CWnd* GetCapture();
VEXPLATFORM_EXPORT void ReleaseCapture();
/// Gives the cursor before.
VEXPLATFORM_EXPORT VexCursor SetCursor(VexCursor cursor);
VEXPLATFORM_EXPORT void GetCursorPos(CPoint* screen);
VEXPLATFORM_EXPORT void SetCursorPos(int x, int y);
VEXPLATFORM_EXPORT void ClipCursor(const CRect* screen);
VEXPLATFORM_EXPORT int GetKeyState(unsigned virtualKey);
VEXPLATFORM_EXPORT int MessageBoxW(const CString& text, const CString& caption, unsigned type);
