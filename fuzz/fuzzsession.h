#pragma once

#include "fuzz/fuzzdrawing.h"
#include "platform/headless/vexheadless.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexcommandsession.h"
#include "vexdb/dbcommand/vexprompthandler.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbviewprocess.h"

#include <algorithm>
#include <memory>
#include <string>

/// A program without a screen around one drawing, which is checked after every command.
class CFuzzProgram : public VexSessionHost {
public:
    CFuzzProgram()
    {
        CVexBackend::install(&backend);
        CVexDbViewProcess::current().reset();
        static CVexPromptHandler prompts(findMessageFile());
        _hPROMPT = &prompts;
        CVexDbObject::NextHardID = 0;
        database = std::make_unique<CVexDbDatabase>(false);
        session = std::make_unique<CVexCommandSession>(
            *database, CVexCommandSession::Windows{&display, &message, &history, &coordinates},
            this);
        display.setHandler([this](const MSG& sent) {
            display.recording().clear();
            return session ? session->onDisplayMessage(sent) : LRESULT{0};
        });
    }
    ~CFuzzProgram() override
    {
        session.reset();
        database.reset();
        CVexBackend::install(nullptr);
    }
    CFuzzProgram(const CFuzzProgram&) = delete;
    CFuzzProgram& operator=(const CFuzzProgram&) = delete;

    /// A drawing that is closed by request is replaced by nothing.
    bool onHostCommand(unsigned long number) override
    {
        if (number == kHostNew) {
            session->whenIdle([this] {
                session.reset();
                database.reset();
            });
        }
        return number == kHostNew;
    }
    void onChanged() override { requireWhole(*database); }

    /// The program's own loop, until nothing is queued.
    void run()
    {
        while (backend.queued() > 0) {
            MSG next;
            if (GetMessageW(&next, nullptr, 0, 0)) {
                DispatchMessageW(&next);
            }
        }
    }
    /// All steps back and forth again, and a save that reads whole.
    void finish()
    {
        require(GetCapture() == nullptr, "the capture is given back");
        if (session == nullptr) {
            return;
        }
        require(!session->handler().isBusy(), "nothing waits any more");
        for (int step = 0; step < kMostSteps && database->undoHandler().Undo(); ++step) {
            requireWhole(*database);
        }
        for (int step = 0; step < kMostSteps && database->undoHandler().Redo(); ++step) {
            requireWhole(*database);
        }
        requireSavesWhole(*database);
    }

    CVexHeadlessBackend backend;
    CVexMemoryWindow display{{840, 594}};
    CVexMemoryWindow message{{400, 20}};
    CVexMemoryWindow history{{400, 100}};
    CVexMemoryWindow coordinates{{200, 20}};
    std::unique_ptr<CVexDbDatabase> database;
    std::unique_ptr<CVexCommandSession> session;

private:
    static constexpr int kMostSteps = 1000;
};
