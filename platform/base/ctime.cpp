#include "platform/base/ctime.h"

#include <optional>

namespace {

struct Term {
    int value;
    int digits;
};

std::optional<Term> termOf(const VexMoment& moment, wchar_t letter)
{
    switch (letter) {
    case L'Y': return Term{moment.year, 4};
    case L'm': return Term{moment.month, 2};
    case L'd': return Term{moment.day, 2};
    case L'H': return Term{moment.hour, 2};
    case L'M': return Term{moment.minute, 2};
    case L'S': return Term{moment.second, 2};
    default: return std::nullopt;
    }
}

} // namespace

CTime CTime::GetCurrentTime()
{
    return CTime(CVexMachine::current().localNow());
}

CString CTime::Format(const wchar_t* format) const
{
    CString result;
    for (const wchar_t* at = format == nullptr ? L"" : format; *at != L'\0'; ++at) {
        if (*at == L'%' && at[1] == L'%') {
            result += *at++;
        } else if (const auto term = *at == L'%' ? termOf(m_moment, at[1]) : std::nullopt) {
            CString number;
            number.Format(term->digits == 4 ? L"%04d" : L"%02d", term->value);
            result += number;
            ++at;
        } else {
            result += *at;
        }
    }
    return result;
}
