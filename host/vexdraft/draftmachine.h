#pragma once

#include "platform/base/vexmachine.h"

#include <functional>
#include <utility>

/// The machine under the desktop program: what the library has to say about files comes to the
/// person in the window, and to standard error.
class DraftMachine : public CVexMachine {
public:
    void report(const CString& message) override
    {
        m_last = message;
        CVexMachine::report(message);
        if (m_onReport) {
            m_onReport(message);
        }
    }
    /// Called with each message; an empty function for none.
    void setOnReport(std::function<void(const CString&)> onReport)
    {
        m_onReport = std::move(onReport);
    }
    /// Gives the last message, which is forgotten.
    [[nodiscard]] CString takeLast() { return std::exchange(m_last, {}); }

private:
    CString m_last;
    std::function<void(const CString&)> m_onReport;
};
