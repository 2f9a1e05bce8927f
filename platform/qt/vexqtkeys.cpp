#include "platform/qt/vexqtkeys.h"

#include "platform/window/vexmessage.h"

#include <algorithm>
#include <array>

namespace {

struct Row {
    int key;
    unsigned code;
};

constexpr unsigned kPadMultiply = 0x6a;
constexpr unsigned kPadAdd = 0x6b;
constexpr unsigned kPadSubtract = 0x6d;
constexpr unsigned kPadDecimal = 0x6e;
constexpr unsigned kPadDivide = 0x6f;
constexpr unsigned kFirstPadDigit = 0x60;

constexpr std::array kActing = {
    Row{Qt::Key_Escape, VK_ESCAPE},   Row{Qt::Key_Return, VK_RETURN},
    Row{Qt::Key_Enter, VK_RETURN},    Row{Qt::Key_Space, VK_SPACE},
    Row{Qt::Key_Backspace, VK_BACK},  Row{Qt::Key_Tab, VK_TAB},
    Row{Qt::Key_Backtab, VK_TAB},     Row{Qt::Key_Shift, VK_SHIFT},
    Row{Qt::Key_Control, VK_CONTROL}, Row{Qt::Key_Alt, VK_MENU},
    Row{Qt::Key_Cancel, VK_CANCEL},   Row{Qt::Key_End, VK_END},
    Row{Qt::Key_Home, VK_HOME},       Row{Qt::Key_Left, VK_LEFT},
    Row{Qt::Key_Up, VK_UP},           Row{Qt::Key_Right, VK_RIGHT},
    Row{Qt::Key_Down, VK_DOWN},       Row{Qt::Key_Insert, VK_INSERT},
    Row{Qt::Key_Delete, VK_DELETE},   Row{Qt::Key_PageUp, 0x21},
    Row{Qt::Key_PageDown, 0x22},
};

// The signs by the key of a US keyboard that they stand on. As numbers many of them are the codes
// of arrows and other keys that act, so none may pass as it is.
constexpr std::array kSigns = {
    Row{Qt::Key_Exclam, '1'},        Row{Qt::Key_At, '2'},
    Row{Qt::Key_NumberSign, '3'},    Row{Qt::Key_Dollar, '4'},
    Row{Qt::Key_Percent, '5'},       Row{Qt::Key_AsciiCircum, '6'},
    Row{Qt::Key_Ampersand, '7'},     Row{Qt::Key_Asterisk, '8'},
    Row{Qt::Key_ParenLeft, '9'},     Row{Qt::Key_ParenRight, '0'},
    Row{Qt::Key_Semicolon, 0xba},    Row{Qt::Key_Colon, 0xba},
    Row{Qt::Key_Equal, 0xbb},        Row{Qt::Key_Plus, 0xbb},
    Row{Qt::Key_Comma, 0xbc},        Row{Qt::Key_Less, 0xbc},
    Row{Qt::Key_Minus, 0xbd},        Row{Qt::Key_Underscore, 0xbd},
    Row{Qt::Key_Period, 0xbe},       Row{Qt::Key_Greater, 0xbe},
    Row{Qt::Key_Slash, 0xbf},        Row{Qt::Key_Question, 0xbf},
    Row{Qt::Key_QuoteLeft, 0xc0},    Row{Qt::Key_AsciiTilde, 0xc0},
    Row{Qt::Key_BracketLeft, 0xdb},  Row{Qt::Key_BraceLeft, 0xdb},
    Row{Qt::Key_Backslash, 0xdc},    Row{Qt::Key_Bar, 0xdc},
    Row{Qt::Key_BracketRight, 0xdd}, Row{Qt::Key_BraceRight, 0xdd},
    Row{Qt::Key_Apostrophe, 0xde},   Row{Qt::Key_QuoteDbl, 0xde},
};

constexpr std::array kPadSigns = {
    Row{Qt::Key_Asterisk, kPadMultiply}, Row{Qt::Key_Plus, kPadAdd},
    Row{Qt::Key_Minus, kPadSubtract},    Row{Qt::Key_Period, kPadDecimal},
    Row{Qt::Key_Comma, kPadDecimal},     Row{Qt::Key_Slash, kPadDivide},
};

template <std::size_t count>
unsigned codeIn(const std::array<Row, count>& rows, int key)
{
    const auto row = std::ranges::find(rows, key, &Row::key);
    return row == rows.end() ? 0 : row->code;
}

unsigned codeOnPad(int key)
{
    if (key >= Qt::Key_0 && key <= Qt::Key_9) {
        return kFirstPadDigit + static_cast<unsigned>(key - Qt::Key_0);
    }
    return codeIn(kPadSigns, key);
}

} // namespace

unsigned virtualKeyOf(int key, Qt::KeyboardModifiers modifiers)
{
    // Ctrl+Break is a key of its own to those who read these codes.
    if (key == Qt::Key_Pause && modifiers.testFlag(Qt::ControlModifier)) {
        return VK_CANCEL;
    }
    if (modifiers.testFlag(Qt::KeypadModifier)) {
        if (const unsigned code = codeOnPad(key); code != 0) {
            return code;
        }
    }
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) {
        return static_cast<unsigned>(key);
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) {
        return VK_F1 + static_cast<unsigned>(key - Qt::Key_F1);
    }
    if (const unsigned code = codeIn(kActing, key); code != 0) {
        return code;
    }
    const unsigned code = codeIn(kSigns, key);
    return code != 0 ? code : kUnnamedKey;
}
