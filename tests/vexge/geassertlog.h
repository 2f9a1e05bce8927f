#pragma once

#include "platform/base/vexassert.h"

#include <string>
#include <vector>

/// Collects the promises that VEX_ASSERT finds broken, while it lives.
class GeAssertLog {
public:
    GeAssertLog() : m_before(setVexAssertHandler(&GeAssertLog::note)) { list().clear(); }
    ~GeAssertLog() { setVexAssertHandler(m_before); }
    GeAssertLog(const GeAssertLog&) = delete;
    GeAssertLog& operator=(const GeAssertLog&) = delete;
    [[nodiscard]] const std::vector<std::string>& promises() const { return list(); }

private:
    static void note(const char* promise, const char* /*file*/, int /*line*/)
    {
        list().emplace_back(promise);
    }
    static std::vector<std::string>& list()
    {
        static std::vector<std::string> promises;
        return promises;
    }

    VexAssertHandler m_before;
};
