#pragma once

#include "platform/base/cpoint.h"

#include <cstdint>

class CWnd;

using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;

/// The messages that the library reads or sends.
enum WindowMessage : unsigned {
    WM_SIZE = 0x0005,
    WM_PAINT = 0x000f,
    WM_QUIT = 0x0012,
    WM_KEYDOWN = 0x0100,
    WM_KEYUP = 0x0101,
    WM_CHAR = 0x0102,
    WM_IME_COMPOSITION = 0x010f, // lParam tells what is new: see kCompositionResult
    WM_COMMAND = 0x0111,
    WM_TIMER = 0x0113,
    WM_VSCROLL = 0x0115, // low word of wParam: where to
    WM_MOUSEMOVE = 0x0200,
    WM_LBUTTONDOWN = 0x0201,
    WM_LBUTTONUP = 0x0202,
    WM_LBUTTONDBLCLK = 0x0203,
    WM_RBUTTONDOWN = 0x0204,
    WM_RBUTTONUP = 0x0205,
    WM_MBUTTONDOWN = 0x0207,
    WM_MBUTTONUP = 0x0208,
    WM_MOUSEWHEEL = 0x020a, // high word of wParam: the turn, kWheelNotch a notch, up positive
    WM_USER = 0x0400,
    /// On every mouse move, to the display window: time for the coordinate read-out. wParam points
    /// at the CPoint, lParam at the second one or is 0.
    WM_VEX_COORDINATE = WM_USER + 100,
    /// To the display window, behind what a script has posted: that is taken, the next may come.
    WM_VEX_FEED = WM_USER + 101,
};

/// Where WM_VSCROLL scrolls to.
constexpr WPARAM SB_BOTTOM = 7;
/// One notch of the mouse wheel.
constexpr int kWheelNotch = 120;
/// The bit of WM_IME_COMPOSITION's lParam that says: the text is finished.
constexpr LPARAM kCompositionResult = 0x800;
/// The part of a window that the pointer is over: its client area.
constexpr unsigned HTCLIENT = 1;

/// Key codes of WM_KEYDOWN.
enum VirtualKey : unsigned {
    VK_CANCEL = 0x03, // Ctrl+Break
    VK_BACK = 0x08,
    VK_TAB = 0x09,
    VK_RETURN = 0x0d,
    VK_SHIFT = 0x10,
    VK_CONTROL = 0x11,
    VK_MENU = 0x12, // Alt
    VK_ESCAPE = 0x1b,
    VK_SPACE = 0x20,
    VK_END = 0x23,
    VK_HOME = 0x24,
    VK_LEFT = 0x25,
    VK_UP = 0x26,
    VK_RIGHT = 0x27,
    VK_DOWN = 0x28,
    VK_INSERT = 0x2d,
    VK_DELETE = 0x2e,
    VK_F1 = 0x70,
    VK_F4 = 0x73,
};

/// One message. Mouse messages carry the client position in lParam, low half x, high half y.
struct MSG {
    CWnd* hwnd = nullptr;
    unsigned message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    CPoint pt; // screen position of the pointer when the message was made
};

/// Packs the character that a key types into the lParam of its WM_KEYDOWN, where the maker of the
/// message knows it: TranslateMessage then makes that character, whatever keys are held. 0, and the
/// backend's own idea of the key, where nobody has told.
constexpr LPARAM keyLParam(wchar_t character)
{
    return static_cast<LPARAM>(static_cast<std::uint64_t>(character) << 32);
}
constexpr wchar_t characterOfKey(LPARAM lParam)
{
    return static_cast<wchar_t>(static_cast<std::uint64_t>(lParam) >> 32);
}

/// Packs a client position (each part kept to 16 bits, signed) into an lParam, and back.
constexpr LPARAM MAKELPARAM(int x, int y)
{
    return static_cast<LPARAM>((static_cast<std::uint32_t>(x) & 0xffffu) |
                               ((static_cast<std::uint32_t>(y) & 0xffffu) << 16));
}
constexpr CPoint pointOfLParam(LPARAM lParam)
{
    return {static_cast<std::int16_t>(static_cast<std::uint32_t>(lParam) & 0xffffu),
            static_cast<std::int16_t>((static_cast<std::uint32_t>(lParam) >> 16) & 0xffffu)};
}
