#pragma once

#include "platform/base/vexfilelayer.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// The real files behind a counter: the n-th call fails, once or from then on. What fails does
/// nothing, except that a handle is closed all the same, as systems do. Removing counts too, so
/// that "for good" leaves nothing that tidies up.
class CFaultyLayer : public CVexFileLayer {
public:
    enum class Lasting { kOnce, kForGood };

    /// The call numbered `call` (from 1) gives -`error`; 0 fails none.
    void failAt(int call, int error, Lasting lasting)
    {
        m_failAt = call;
        m_error = error;
        m_lasting = lasting;
        m_calls = 0;
        m_tripped = false;
        m_names.clear();
        m_failedName.clear();
    }
    /// A write takes at most so many bytes at a time.
    void setMostPerWrite(std::size_t bytes) { m_mostPerWrite = bytes; }
    /// Every second write and read is interrupted by a signal before it did anything.
    void setInterrupting(bool interrupting) { m_interrupting = interrupting; }
    /// What link answers instead of linking; 0 lets it link.
    void setLinkAnswer(int answer) { m_linkAnswer = answer; }

    [[nodiscard]] int calls() const { return m_calls; }
    /// True when the failure has happened.
    [[nodiscard]] bool tripped() const { return m_tripped; }
    /// Name of the call that failed first; empty when none has.
    [[nodiscard]] const std::string& failedName() const { return m_failedName; }
    /// Names of the calls so far, in order: those of the operations, with "closeRead" for the close
    /// of a handle that was only read.
    [[nodiscard]] const std::vector<std::string>& names() const { return m_names; }
    [[nodiscard]] bool called(const std::string& name) const
    {
        return std::find(m_names.begin(), m_names.end(), name) != m_names.end();
    }

    int openRead(const std::string& path) override
    {
        const int handle = counted("openRead", [&] { return CVexFileLayer::openRead(path); });
        if (handle >= 0) {
            m_readHandles.push_back(handle);
        }
        return handle;
    }
    int createNew(const std::string& path, unsigned mode) override
    {
        return counted("createNew", [&] { return CVexFileLayer::createNew(path, mode); });
    }
    std::int64_t read(int handle, void* buffer, std::size_t count) override
    {
        if (interrupts()) {
            return -EINTR;
        }
        return counted("read", [&] { return CVexFileLayer::read(handle, buffer, count); });
    }
    std::int64_t write(int handle, const void* buffer, std::size_t count) override
    {
        if (interrupts()) {
            return -EINTR;
        }
        return counted("write", [&] {
            return CVexFileLayer::write(handle, buffer, std::min(count, m_mostPerWrite));
        });
    }
    std::int64_t seek(int handle, std::int64_t offset) override
    {
        return counted("seek", [&] { return CVexFileLayer::seek(handle, offset); });
    }
    int sync(int handle) override
    {
        return counted("sync", [&] { return CVexFileLayer::sync(handle); });
    }
    int close(int handle) override
    {
        const int closed = CVexFileLayer::close(handle);
        const bool wasRead = std::erase(m_readHandles, handle) > 0;
        return counted(wasRead ? "closeRead" : "close", [&] { return closed; });
    }
    int link(const std::string& from, const std::string& to) override
    {
        return counted("link", [&] {
            return m_linkAnswer != 0 ? m_linkAnswer : CVexFileLayer::link(from, to);
        });
    }
    int rename(const std::string& from, const std::string& to) override
    {
        return counted("rename", [&] { return CVexFileLayer::rename(from, to); });
    }
    int remove(const std::string& path) override
    {
        return counted("remove", [&] { return CVexFileLayer::remove(path); });
    }
    int syncFolder(const std::string& folder) override
    {
        return counted("syncFolder", [&] { return CVexFileLayer::syncFolder(folder); });
    }
    int status(const std::string& path, VexFileStatus& found) override
    {
        return counted("status", [&] { return CVexFileLayer::status(path, found); });
    }
    int resolve(const std::string& path, std::string& resolved) override
    {
        return counted("resolve", [&] { return CVexFileLayer::resolve(path, resolved); });
    }

private:
    template <class Call>
    auto counted(const char* name, Call call) -> decltype(call())
    {
        ++m_calls;
        m_names.emplace_back(name);
        const bool due = m_calls == m_failAt;
        if (due) {
            m_failedName = name;
        }
        if (due || (m_tripped && m_lasting == Lasting::kForGood)) {
            m_tripped = true;
            return -m_error;
        }
        return call();
    }
    bool interrupts()
    {
        m_wasInterrupted = m_interrupting && !m_wasInterrupted;
        return m_wasInterrupted;
    }

    int m_failAt = 0;
    int m_error = 0;
    Lasting m_lasting = Lasting::kOnce;
    int m_calls = 0;
    bool m_tripped = false;
    std::vector<std::string> m_names;
    std::string m_failedName;
    std::vector<int> m_readHandles;
    std::size_t m_mostPerWrite = std::size_t{1} << 30;
    bool m_interrupting = false;
    bool m_wasInterrupted = false;
    int m_linkAnswer = 0;
};
