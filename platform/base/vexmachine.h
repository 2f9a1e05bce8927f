#pragma once

#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"
#include "platform/base/vexfilelayer.h"

#include <cstddef>
#include <cstdint>

/// A moment of the calendar, in the zone that the call that gave it names.
struct VexMoment {
    int year = 1970;
    int month = 1; // 1 to 12
    int day = 1;   // 1 to 31
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;
};

/// What the library asks of the machine it runs on. The base class answers from the real one; a
/// test installs a subclass and so decides the clock, the names, the files and the messages.
class VEXPLATFORM_EXPORT CVexMachine {
public:
    virtual ~CVexMachine() = default;

    virtual VexMoment utcNow() const;
    virtual VexMoment localNow() const;
    /// Seconds of a clock that never steps back, for time budgets.
    virtual double steadySeconds() const;
    virtual CString computerName() const;
    virtual CString userName() const;
    /// Full path of the running program.
    virtual CString modulePath() const;
    /// First hard identifier of the process: the terms of the UTC clock (years since 2000, month,
    /// day, hour, minute, second, millisecond), each 8 bits above the next. Never 0.
    virtual std::uint64_t identifierSeed() const;
    /// Asked before each allocation whose size a file decides; false makes the reader refuse it.
    virtual bool mayAllocate(std::size_t bytes) const;
    /// One message for the person at the machine: what went wrong, and where. The base class writes
    /// it to standard error.
    virtual void report(const CString& message);
    /// The file operations; never null.
    virtual CVexFileLayer& files();

    /// The machine in force: the one installed last, else the real one.
    static CVexMachine& current();
    /// Puts `machine` (not owned) in force and returns the one before; null stands for the real
    /// one.
    static CVexMachine* install(CVexMachine* machine);
};

/// Installs a machine for a scope and puts the one before back at its end.
class CVexMachineScope {
public:
    explicit CVexMachineScope(CVexMachine& machine) : m_before(CVexMachine::install(&machine)) {}
    ~CVexMachineScope() { CVexMachine::install(m_before); }
    CVexMachineScope(const CVexMachineScope&) = delete;
    CVexMachineScope& operator=(const CVexMachineScope&) = delete;

private:
    CVexMachine* m_before;
};
