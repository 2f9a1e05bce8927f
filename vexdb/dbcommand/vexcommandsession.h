#pragma once

#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"
#include "platform/window/vexmessage.h"
#include "vexdb/dbcommand/vexcommandid.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

class CView;
class CVexDbDatabase;
class CVexDbEntity;
class CVexCommandHandler;
class CWnd;

/// The host's own command numbers, as they stand in VexDb.cmd: what a typed name, a menu row and a
/// tool button send as WM_COMMAND. Those below kHostFirst run a drawing command.
enum HostCommand : unsigned long {
    kHostDrawingFirst = 100,    // 100 + VexDb::CommandID, the variants of one from 1000 on
    kHostArcContinue = 1002,    // tangentially on from what was drawn last
    kHostArcThreePoints = 1003, // ways of drawing an arc, asked for by name
    kHostArcCenter = 1004,
    kHostArcRadius = 1005,
    kHostDimensionFirst = 1100, // 1100 + the kind of dimension, 1 to 10
    kHostFirst = 2000,
    kHostUndo = 2001,
    kHostRedo = 2002,
    kHostSelectAll = 2003,
    kHostClearSelection = 2004,
    kHostOffset = 2005,
    kHostFill = 2006,
    kHostZoomExtents = 2010,
    kHostZoomAll = 2011,
    kHostZoomIn = 2012,
    kHostZoomOut = 2013,
    kHostZoomPrevious = 2014,
    kHostZoomWindow = 2015,
    kHostPan = 2016,
    kHostRedraw = 2017,
    kHostGrid = 2020,
    kHostGridSnap = 2021,
    kHostOrtho = 2022,
    kHostGripSnap = 2023,
    kHostNew = 2030,
    kHostOpen = 2031,
    kHostSave = 2032,
    kHostSaveAs = 2033,
    kHostQuit = 2034,
};

/// The number that runs a drawing command.
constexpr unsigned long hostNumberOf(VexDb::CommandID id)
{
    return kHostDrawingFirst + static_cast<unsigned long>(id);
}

/// What a session asks of the program around it.
class VEXDB_EXPORT VexSessionHost {
public:
    virtual ~VexSessionHost() = default;
    /// A command number that the session does not know itself: kHostNew to kHostQuit and whatever
    /// the program adds. True when it did something.
    virtual bool onHostCommand(unsigned long /*number*/) { return false; }
    /// The drawing, the selection or a setting has changed: titles, buttons and panels follow.
    virtual void onChanged() {}
};

/// What stands between a program's windows and one drawing, the same for the desktop program, the
/// command-line tool and the tests: it answers the windows' messages, runs numbered commands, adds
/// what they made, records it, selects, undoes and redraws.
class VEXDB_EXPORT CVexCommandSession {
public:
    /// The windows a session works with; only the display is needed. None is owned.
    struct Windows {
        CView* display = nullptr;
        CWnd* message = nullptr;
        CWnd* history = nullptr;
        CWnd* coordinates = nullptr;
    };

    /// Gives the handler and the current view their windows. All outlive the session.
    CVexCommandSession(CVexDbDatabase& database, const Windows& windows,
                       VexSessionHost* host = nullptr);
    /// Takes its windows from the handler and the view again.
    ~CVexCommandSession();
    CVexCommandSession(const CVexCommandSession&) = delete;
    CVexCommandSession& operator=(const CVexCommandSession&) = delete;

    /// The display window's procedure. Mouse positions are device pixels of its client area.
    LRESULT onDisplayMessage(const MSG& message);
    /// A key of the message window while no command runs; true when it was consumed.
    bool onMessageKey(unsigned key);
    /// A menu row or a button. While a command waits it is cancelled first and this one runs behind
    /// it.
    void start(unsigned long number);
    /// Runs `request` now, or when the waiting command, cancelled by this call, has unwound.
    void whenIdle(std::function<void()> request);
    /// What whenIdle kept back, oldest first; the program calls it from its own loop too. A request
    /// may end this session.
    void runKept();
    /// Cancels a command that waits, which unwinds when the pump runs again.
    void cancelWaiting();
    /// What answers WM_VEX_FEED: the player of a script. An empty function takes it away.
    void setFeed(std::function<void()> feed) { m_feed = std::move(feed); }

    void undo();
    void redo();
    /// Erases the selection, one undo step; false when nothing is selected.
    bool eraseSelected();
    /// Asks for a distance, then for curves and the sides that their parallels go to.
    void offsetCurves();
    /// Asks for closed polylines and fills them, or empties those that are filled.
    void fillOutlines();
    void selectAll();
    void clearSelection();
    /// What is drawn from here on goes onto the layer of this name; false when there is none.
    bool setLayer(const CString& name);
    /// Draws the view anew.
    void redraw();
    /// A program that nobody looks at needs no picture: with false, redraw() does nothing.
    void setRedraws(bool redraws) { m_redraws = redraws; }
    [[nodiscard]] CVexDbDatabase& database() const { return m_database; }
    [[nodiscard]] CVexCommandHandler& handler() const;
    [[nodiscard]] const Windows& windows() const { return m_windows; }
    /// Expires with the session.
    [[nodiscard]] std::weak_ptr<const bool> alive() const { return m_alive; }
    /// True once a quit was asked for.
    [[nodiscard]] bool quitAsked() const { return m_quitAsked; }

private:
    class CallScope;

    LRESULT answer(const MSG& message);
    LRESULT answerIdle(const MSG& message);
    bool answerAnytime(const MSG& message);
    void settle();
    void command(unsigned long number);
    bool run(unsigned long number);
    bool runDrawing(VexDb::CommandID id, unsigned long step);
    void drawLines(unsigned long step);
    bool runEdit(unsigned long number);
    bool runView(unsigned long number);
    void zoomTo(unsigned long number);
    void trackView(wchar_t mode);
    void pan(CPoint device);
    bool toggleSetting(unsigned long number);
    void addResult(CVexDbEntity* entity);
    bool askOffsetDistance();
    bool askEntity(const wchar_t* prompt, CVexDbEntity*& entity);
    void finish();
    void flushLine();
    void press(CPoint device);
    void selectFrom(CPoint device);
    void popup(CPoint device);
    void wheel(const MSG& message);
    void resize(CPoint size);
    void readOut(const MSG& message);
    void hover(CPoint device);
    void key(const MSG& message);
    void compose(const MSG& message);
    void typeCharacter(wchar_t character);
    void noticePrompt();
    void say(const CString& text);

    CVexDbDatabase& m_database;
    Windows m_windows;
    VexSessionHost* m_host;
    std::vector<std::function<void()>> m_kept; // oldest first
    std::function<void()> m_feed;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true); // tells a request's caller
    CString m_line;                 // the message line as this session left it
    std::size_t m_promptLength = 0; // characters of it that are not the person's
    double m_offsetDistance = 1.0;  // the last one, drawing units
    int m_depth = 0;                // calls into this session on the stack
    bool m_quitAsked = false;
    bool m_viewTracking = false; // zoom window or pan runs
    bool m_redraws = true;
};

/// The message file "vexdb.msg": beside the program, else in its share folder; empty when it is in
/// neither place.
VEXDB_EXPORT CString findMessageFile();
