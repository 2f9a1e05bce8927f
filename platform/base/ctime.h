#pragma once

#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"
#include "platform/base/vexmachine.h"

/// A local calendar time.
class VEXPLATFORM_EXPORT CTime {
public:
    explicit CTime(const VexMoment& moment) : m_moment(moment) {}
    /// Local time by the machine's clock.
    static CTime GetCurrentTime();
    /// %Y %m %d %H %M %S and %%; anything else stays as it stands.
    [[nodiscard]] CString Format(const wchar_t* format) const;

private:
    VexMoment m_moment;
};
