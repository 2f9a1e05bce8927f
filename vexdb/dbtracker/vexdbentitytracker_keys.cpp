#include "platform/base/vextext.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbcommand/vexarrowkeys.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexfoldedkey.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"
#include "vexdb/vexdbdatabase.h"

#include <cmath>
#include <numbers>
#include <optional>
#include <string_view>

namespace {

/// Where `mark` divides the text; nothing when it is not there or nothing stands before it.
std::optional<std::size_t> dividedAt(std::wstring_view text, wchar_t mark)
{
    const std::size_t at = text.find(mark);
    return at == std::wstring_view::npos || at == 0 ? std::nullopt : std::optional(at);
}

std::optional<CVexGePoint2d> absolutePoint(std::wstring_view text, std::size_t comma)
{
    return CVexGePoint2d(toNumber(text.substr(0, comma)), toNumber(text.substr(comma + 1)));
}

/// Nothing for a distance that is not above 0, and for a point beyond all measure.
std::optional<CVexGePoint2d> polarPoint(std::wstring_view text, std::size_t mark,
                                        const CVexGePoint2d& from)
{
    const double distance = toNumber(text.substr(0, mark));
    if (!(distance > 0.0)) {
        return std::nullopt;
    }
    const double angle = toNumber(text.substr(mark + 1)) * std::numbers::pi / 180.0;
    const CVexGePoint2d point = from + CVexGeVector2d(angle) * distance;
    return std::isfinite(point.x) && std::isfinite(point.y) ? std::optional(point) : std::nullopt;
}

/// A text without letters; one that begins with a mark of a point is none, and stays a text.
bool isNumber(std::wstring_view text)
{
    return text.find_first_of(L",<") == std::wstring_view::npos && _isNumericValue(CString(text));
}

} // namespace

void CVexDbEntityTracker::SetKeyWords(const wchar_t* keys)
{
    m_keywords = keys;
}

VexVerdict CVexDbEntityTracker::MoveKeyHandle(CWnd* window, const MSG& message)
{
    return window == nullptr || m_database == nullptr
               ? VexVerdict::kDispatch
               : moveKey(*m_database, *window, message, m_movedByKeys);
}

int CVexDbEntityTracker::KeyDownHandle(const MSG& message, int grip)
{
    switch (message.wParam) {
    case VK_F4:
        if (m_database != nullptr) {
            m_database->settings().m_bGripSnap = !m_database->settings().m_bGripSnap;
        }
        m_consumed = true;
        return InputPoint;
    case VK_CANCEL:
    case VK_ESCAPE:
        liftPicture();
        m_done = m_consumed = true;
        return InputCancel;
    case VK_SPACE:
        if (m_type == TrackerText) {
            return InputEnter; // a blank of the text: the drag goes on, the window gets the key
        }
        [[fallthrough]];
    case VK_RETURN: return takeTyped(grip);
    default: TranslateMessage(&message); return InputPoint;
    }
}

int CVexDbEntityTracker::takeTyped(int grip)
{
    m_done = m_consumed = true;
    m_typed[m_typedLength] = L'\0';
    m_result.type = InputString;
    m_result.value.text = m_typed.data();
    if (m_typedLength == 0 && m_movedByKeys) {
        endAt(grip); // the keys have put the pointer where a click would be
        return InputEnter;
    }
    const int result = m_typedLength == 0 ? static_cast<int>(InputEnter) : parseTyped();
    liftPicture();
    return result;
}

int CVexDbEntityTracker::parseTyped()
{
    const std::wstring_view text(m_typed.data(), m_typedLength);
    std::optional<CVexGePoint2d> point;
    if (const auto comma = dividedAt(text, L',')) {
        point = absolutePoint(text, *comma);
    } else if (const auto mark = dividedAt(text, L'<')) {
        point = polarPoint(text, *mark, m_exactStart);
    } else if (isNumber(text)) {
        m_result.type = InputNumber;
        m_result.value.number = toNumber(text);
    }
    if (point) {
        m_result.type = InputTypedPoint;
        m_result.value.point = VexXY(point->x, point->y);
        if (m_database != nullptr) {
            m_database->setLastPoint(*point);
        }
    }
    return m_result.type;
}

bool CVexDbEntityTracker::CharHandle(const MSG& message)
{
    const wchar_t key = foldedKey(static_cast<wchar_t>(message.wParam));
    if (m_keywords.Find(key) >= 0) {
        m_result.type = InputKeyword;
        m_result.value.character = key;
        liftPicture();
        m_done = true;
        return true;
    }
    if (m_handler != nullptr) {
        m_handler->CheckSnapChar(key);
    }
    // A letter that arms a snap lands in the text all the same, and what is typed behind it is no
    // number then; hosts show the line as it was typed. A backspace is a character like any other.
    if (m_typedLength < kMostTyped) {
        m_typed[m_typedLength++] = key;
    }
    return false;
}
