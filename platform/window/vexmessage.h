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
    WM_COMMAND = 0x0111,
    WM_TIMER = 0x0113,
    WM_MOUSEMOVE = 0x0200,
    WM_LBUTTONDOWN = 0x0201,
    WM_LBUTTONUP = 0x0202,
    WM_LBUTTONDBLCLK = 0x0203,
    WM_RBUTTONDOWN = 0x0204,
    WM_RBUTTONUP = 0x0205,
    WM_MBUTTONDOWN = 0x0207,
    WM_MBUTTONUP = 0x0208,
    WM_USER = 0x0400,
    /// On every mouse move, to the display window: time for the coordinate read-out. wParam points
    /// at the CPoint, lParam at the second one or is 0.
    WM_VEX_COORDINATE = WM_USER + 100,
};

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
};

/// One message. Mouse messages carry the client position in lParam, low half x, high half y.
struct MSG {
    CWnd* hwnd = nullptr;
    unsigned message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    CPoint pt; // screen position of the pointer when the message was made
};

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
