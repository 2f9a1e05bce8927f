#include "platform/base/crect.h"
#include "platform/base/vextext.h"
#include "platform/window/cwnd.h"
#include "vexdb/dbcommand/vexcommandsession.h"
#include "vexdb/dbcommand/vexscriptplayer.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <string>
#include <system_error>

namespace {

constexpr const wchar_t* kMenuAction = L"@menu";

/// What an action with a position sends behind its mouse move.
struct MouseAction {
    const wchar_t* name;
    unsigned first;
    unsigned second; // 0: nothing more
};

constexpr std::array kMouseActions = {
    MouseAction{L"@click", WM_LBUTTONDOWN, WM_LBUTTONUP},
    MouseAction{L"@rclick", WM_RBUTTONDOWN, WM_RBUTTONUP},
    MouseAction{kMenuAction, WM_RBUTTONDOWN, WM_RBUTTONUP},
    MouseAction{L"@move", 0, 0},
    MouseAction{L"@press", WM_LBUTTONDOWN, 0},
    MouseAction{L"@release", WM_LBUTTONUP, 0},
};

struct NamedKey {
    const wchar_t* name;
    unsigned key;
    wchar_t character; // 0: the key only acts
};

constexpr std::array kNamedKeys = {
    NamedKey{L"Escape", VK_ESCAPE, VK_ESCAPE},
    NamedKey{L"Enter", VK_RETURN, VK_RETURN},
    NamedKey{L"Space", VK_SPACE, L' '},
    NamedKey{L"Backspace", VK_BACK, VK_BACK},
    NamedKey{L"Delete", VK_DELETE, 0},
    NamedKey{L"Left", VK_LEFT, 0},
    NamedKey{L"Up", VK_UP, 0},
    NamedKey{L"Right", VK_RIGHT, 0},
    NamedKey{L"Down", VK_DOWN, 0},
    NamedKey{L"Break", VK_CANCEL, 0},
};

constexpr int kMostFunctionKeys = 12;

bool isArrow(unsigned key)
{
    return key >= VK_LEFT && key <= VK_DOWN;
}

bool isLetterOrDigit(wchar_t character)
{
    return (character >= L'A' && character <= L'Z') || (character >= L'a' && character <= L'z') ||
           (character >= L'0' && character <= L'9');
}

std::optional<NamedKey> keyNamed(const CString& name)
{
    const auto row = std::ranges::find_if(
        kNamedKeys, [&](const NamedKey& key) { return name.CompareNoCase(key.name) == 0; });
    if (row != kNamedKeys.end()) {
        return *row;
    }
    if (name.GetLength() == 1 && isLetterOrDigit(name[0])) {
        CString upper(name);
        upper.MakeUpper();
        return NamedKey{L"", static_cast<unsigned>(upper[0]), name[0]};
    }
    const int number = toInteger(name.Mid(1).str());
    if ((name[0] == L'F' || name[0] == L'f') && number >= 1 && number <= kMostFunctionKeys) {
        return NamedKey{L"", VK_F1 + static_cast<unsigned>(number) - 1, 0};
    }
    return std::nullopt;
}

/// The number that all of `text` is; whatever the locale, unlike by the C library.
std::optional<double> numberOf(CString text)
{
    const std::string plain = text.Trim().utf8();
    const char* const end = plain.data() + plain.size();
    const char* const start = plain.data() + (plain.starts_with('+') ? 1 : 0);
    double value = 0.0;
    const auto [behind, fault] = std::from_chars(start, end, value);
    if (fault != std::errc() || behind != end) {
        return std::nullopt;
    }
    return value;
}

/// "x,y", with nothing behind it.
std::optional<CVexGePoint2d> positionOf(const CString& text)
{
    const int comma = text.Find(L',');
    if (comma < 0) {
        return std::nullopt;
    }
    const std::optional<double> x = numberOf(text.Left(comma));
    const std::optional<double> y = numberOf(text.Mid(comma + 1));
    if (!x || !y) {
        return std::nullopt;
    }
    return CVexGePoint2d(*x, *y);
}

} // namespace

/// Fills the steps of an action, or does at once what needs none; refuses the line and gives false
/// when it makes no sense.
bool CVexScriptPlayer::beginAction(const CString& line)
{
    const int blank = line.Find(L' ');
    const CString name = blank < 0 ? line : line.Left(blank);
    CString arguments = blank < 0 ? CString() : line.Mid(blank);
    arguments.Trim();
    if (name == L"@layer") {
        return setLayer(arguments);
    }
    if (name == kMenuAction) {
        return beginMenu(arguments);
    }
    return name == L"@key" ? beginKey(arguments) : beginMouse(name, arguments);
}

bool CVexScriptPlayer::setLayer(const CString& name)
{
    if (!m_session.setLayer(name)) {
        refuse(L"there is no layer of that name");
        return false;
    }
    return true;
}

bool CVexScriptPlayer::beginMouse(const CString& name, const CString& arguments)
{
    const auto row = std::ranges::find_if(
        kMouseActions, [&](const MouseAction& action) { return name == action.name; });
    if (row == kMouseActions.end()) {
        refuse(L"there is no action " + name);
        return false;
    }
    const std::optional<CVexGePoint2d> position = positionOf(arguments);
    if (!position) {
        refuse(name + L" wants a position x,y");
        return false;
    }
    CRect client;
    m_session.windows().display->GetClientRect(client);
    const CPoint device =
        m_session.database().displays().getCurrentRecord()->GetDecivePoint(*position);
    if (!client.PtInRect(device)) {
        refuse(L"the position lies outside the view");
        return false;
    }
    const LPARAM at = MAKELPARAM(device.x, device.y);
    for (const unsigned message : {static_cast<unsigned>(WM_MOUSEMOVE), row->first, row->second}) {
        if (message != 0) {
            m_steps.push_back({message, 0, at});
        }
    }
    return true;
}

bool CVexScriptPlayer::beginMenu(const CString& arguments)
{
    const int blank = arguments.Find(L' ');
    CString row = blank < 0 ? CString() : arguments.Mid(blank);
    if (row.Trim().IsEmpty()) {
        refuse(L"@menu wants a position x,y and a row");
        return false;
    }
    if (!beginMouse(kMenuAction, arguments.Left(blank))) {
        return false;
    }
    m_menu = {};
    if (const int equals = row.Find(L'='); equals >= 0) {
        CString text = row.Mid(equals + 1);
        m_menu.text = text.Trim();
        row = row.Left(equals);
    }
    m_menu.row = row.Trim();
    m_menuWaits = true;
    CVexBackend::current().setScriptedMenu(&m_menu);
    return true;
}

bool CVexScriptPlayer::beginKey(const CString& name)
{
    const std::optional<NamedKey> key = keyNamed(name);
    if (!key) {
        refuse(L"there is no key of that name");
        return false;
    }
    addKey(key->key, key->character);
    if (isArrow(key->key)) {
        m_steps.push_back({WM_KEYUP, key->key, 0});
    }
    return true;
}
