#pragma once

#include "platform/base/vexmachine.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

/// A machine whose answers a test knows: a clock that stands still, fixed names, a fixed first
/// identifier. Messages are collected; the files are the real ones until a test hands in its own.
class CStandInMachine : public CVexMachine {
public:
    VexMoment utcNow() const override { return clock; }
    VexMoment localNow() const override { return clock; }
    /// Counts on by `steadyStep` with every look at it.
    double steadySeconds() const override { return m_steady += steadyStep; }
    CString computerName() const override { return computer; }
    CString userName() const override { return user; }
    CString modulePath() const override { return module; }
    std::uint64_t identifierSeed() const override { return seed; }
    bool mayAllocate(std::size_t bytes) const override { return bytes <= mostBytes; }
    void report(const CString& message) override { reports.push_back(message); }
    CVexFileLayer& files() override { return layer != nullptr ? *layer : CVexMachine::files(); }

    VexMoment clock{2026, 3, 14, 15, 9, 26, 535};
    double steadyStep = 0.0;
    CString computer = L"DESK-7";
    CString user = L"mara";
    CString module = L"/opt/vex/bin/vexdraft";
    std::uint64_t seed = 0x1000;
    /// The largest single allocation that is granted.
    std::size_t mostBytes = std::numeric_limits<std::size_t>::max();
    std::vector<CString> reports;
    /// Not owned; null stands for the real files.
    CVexFileLayer* layer = nullptr;

private:
    mutable double m_steady = 0.0;
};
