#pragma once

#include "host/vexdraft/draftmachine.h"
#include "platform/qt/vexqteventbackend.h"
#include "vexdb/dbcommand/vexprompthandler.h"

/// What the program sets up once before its first drawing, and takes down after its last: machine,
/// windows, prompts, menus. It is made behind the QApplication.
class DraftStart {
public:
    DraftStart();
    ~DraftStart();
    DraftStart(const DraftStart&) = delete;
    DraftStart& operator=(const DraftStart&) = delete;

    [[nodiscard]] CVexQtEventBackend& backend() { return m_backend; }
    [[nodiscard]] DraftMachine& machine() { return m_machine; }
    /// False when the message file is missing: commands then work without their prompts.
    [[nodiscard]] bool hasPrompts() const { return m_prompts.count() > 0; }

private:
    DraftMachine m_machine;
    const CVexMachineScope m_machineScope;
    CVexQtEventBackend m_backend;
    CVexBackend* const m_backendBefore;
    CVexPromptHandler m_prompts;
};
