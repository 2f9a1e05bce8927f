#pragma once

#include "host/vextool/exitcode.h"
#include "platform/base/vexmachine.h"
#include "vexdb/vexdbdatabase.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>

/// The machine as vextool shows it: messages of the library go to standard error behind the
/// program's name, or nowhere when it is to be quiet.
class ToolMachine : public CVexMachine {
public:
    explicit ToolMachine(bool quiet) : m_quiet(quiet) {}
    void report(const CString& message) override;

private:
    bool m_quiet;
};

/// A drawing that was read, and how well that went. `database` is null when nothing could be read.
struct LoadedDrawing {
    std::unique_ptr<CVexDbDatabase> database;
    ExitCode code = kExitGood;
    bool hasSignature = false;
};

/// Reads a drawing. One with faults is given as far as it was whole, with code kExitFaults; a path
/// that cannot be opened, or leads to something else than a drawing, gives kExitUnreadable.
LoadedDrawing loadDrawing(const std::string& path, bool quiet);

/// Writes bytes to a file, whole or not at all; a message and kExitUnwritable when that fails.
ExitCode writeWhole(const std::string& path, std::span<const std::byte> bytes);

/// Why the last call on `file` failed.
std::string reasonOf(const CFile& file);

/// Says `text` behind the program's name on standard error.
void complain(const std::string& text);
