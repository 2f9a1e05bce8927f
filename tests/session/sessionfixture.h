#pragma once

#include "platform/base/cfile.h"
#include "platform/headless/vexheadless.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexcommandsession.h"
#include "vexdb/dbcommand/vexprompthandler.h"
#include "vexdb/dbcommand/vexscriptplayer.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"
#include "vexdb/dbtracker/vexpopupmenu.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbviewprocess.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

#define EXPECT_POINT(px, py, point)                                                                \
    do {                                                                                           \
        const CVexGePoint2d vexPoint_ = (point);                                                   \
        EXPECT_DOUBLE_EQ(px, vexPoint_.x);                                                         \
        EXPECT_DOUBLE_EQ(py, vexPoint_.y);                                                         \
    } while (false)

/// A program around a session: it can be asked things by number, and counts what it is told.
class ProbeHost : public VexSessionHost {
public:
    bool onHostCommand(unsigned long number) override
    {
        asked.push_back(number);
        return onCommand && onCommand(number);
    }
    void onChanged() override { ++changes; }

    std::function<bool(unsigned long)> onCommand;
    std::vector<unsigned long> asked;
    int changes = 0;
};

/// A fresh drawing (limits 420 by 297) in a window of four pixels a drawing unit, and a person who
/// types and clicks: what he does is queued, and happens when run() is called.
class SessionTest : public testing::Test {
public: // what a chain of calls gives back is not the test itself
    SessionTest()
    {
        CVexBackend::install(&backend);
        CVexDbViewProcess::current().reset();
        display.recording().SetBkColor(0); // on white the bands would use another operation
        prompts = std::make_unique<CVexPromptHandler>(findMessageFile());
        _hPROMPT = prompts.get();
        open();
    }
    ~SessionTest() override
    {
        close();
        _hPROMPT = nullptr;
        CVexBackend::install(nullptr);
    }

    void open()
    {
        database = std::make_unique<CVexDbDatabase>(false);
        attach();
    }
    void attach()
    {
        session = std::make_unique<CVexCommandSession>(
            *database, CVexCommandSession::Windows{&display, &message, &history, &coordinates},
            &host);
        display.setHandler([this](const MSG& sent) {
            return session ? session->onDisplayMessage(sent) : LRESULT{0};
        });
    }
    void close()
    {
        session.reset();
        database.reset();
    }

    SessionTest& types(const wchar_t* text)
    {
        for (const wchar_t* at = text; *at != L'\0'; ++at) {
            key(*at == L'\n' ? VK_RETURN : keyOf(*at), *at == L'\n' ? wchar_t{VK_RETURN} : *at);
        }
        return *this;
    }
    SessionTest& key(unsigned code, wchar_t character = 0)
    {
        display.PostMessage(WM_KEYDOWN, code, keyLParam(character));
        return *this;
    }
    SessionTest& mouse(unsigned what, double x, double y)
    {
        const CPoint at = view().GetDecivePoint(CVexGePoint2d(x, y));
        display.PostMessage(what, 0, MAKELPARAM(at.x, at.y));
        return *this;
    }
    SessionTest& moves(double x, double y) { return mouse(WM_MOUSEMOVE, x, y); }
    SessionTest& clicks(double x, double y)
    {
        return moves(x, y).mouse(WM_LBUTTONDOWN, x, y).mouse(WM_LBUTTONUP, x, y);
    }
    SessionTest& chooses(unsigned id, double x, double y)
    {
        backend.chooseNext(id);
        return moves(x, y).mouse(WM_RBUTTONDOWN, x, y);
    }
    /// The program's own loop, until nothing is queued.
    void run()
    {
        while (backend.queued() > 0) {
            MSG next;
            if (!GetMessageW(&next, nullptr, 0, 0)) {
                ++quits;
                continue;
            }
            DispatchMessageW(&next);
        }
    }

    CVexDbLine* addLine(double x1, double y1, double x2, double y2)
    {
        auto* line = new CVexDbLine(CVexGePoint2d(x1, y1), CVexGePoint2d(x2, y2));
        CVexDbObjectId id;
        database->addEntity(line, id);
        return line;
    }
    /// The lines that can be seen, oldest first.
    std::vector<CVexDbLine*> lines()
    {
        std::vector<CVexDbLine*> found;
        for (const CVexDbObjectId& id : *view().displayedIdSet()) {
            if (id.getPObject()->isVisiable()) {
                found.push_back(static_cast<CVexDbLine*>(id.getPObject()));
            }
        }
        return found;
    }
    /// The drawing as a file.
    std::vector<std::byte> bytes()
    {
        CMemFile file{CString(L"plan.zpl")};
        CArchive archive(&file, CArchive::store);
        EXPECT_TRUE(database->Save(archive) && file.Close());
        return file.bytes();
    }
    CVexDbDisplayTableRecord& view() { return *database->displays().getCurrentRecord(); }
    CVexCommandHandler& handler() { return database->commandHandler(); }
    CVexUndoHandler& undo() { return database->undoHandler(); }
    static unsigned keyOf(wchar_t character)
    {
        const bool isSmall = character >= L'a' && character <= L'z';
        const bool isKey = (character >= L'0' && character <= L'9') ||
                           (character >= L'A' && character <= L'Z') || character == L' ' ||
                           character == VK_BACK;
        return isSmall ? static_cast<unsigned>(character - L'a' + L'A')
                       : (isKey ? static_cast<unsigned>(character) : 0xe7u);
    }

    CVexHeadlessBackend backend;
    CVexMemoryWindow display{{1680, 1188}};
    CVexMemoryWindow message{{400, 20}};
    CVexMemoryWindow history{{400, 100}};
    CVexMemoryWindow coordinates{{200, 20}};
    ProbeHost host;
    std::unique_ptr<CVexPromptHandler> prompts;
    std::unique_ptr<CVexDbDatabase> database;
    std::unique_ptr<CVexCommandSession> session;
    int quits = 0;
};
