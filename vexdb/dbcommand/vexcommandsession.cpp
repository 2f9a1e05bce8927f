#include "vexdb/dbcommand/vexcommandsession.h"

#include "platform/base/cfilefind.h"
#include "platform/window/cwnd.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"
#include "vexdb/dbtracker/vexpopupmenu.h"
#include "vexdb/vexdbdatabase.h"

#include <utility>

/// A call into the session. What must wait until nothing of it is on the stack any more runs behind
/// the last one.
class CVexCommandSession::CallScope {
public:
    explicit CallScope(CVexCommandSession& session) : m_session(session) { ++m_session.m_depth; }
    ~CallScope() { --m_session.m_depth; }
    CallScope(const CallScope&) = delete;
    CallScope& operator=(const CallScope&) = delete;

private:
    CVexCommandSession& m_session;
};

CVexCommandSession::CVexCommandSession(CVexDbDatabase& database, const Windows& windows,
                                       VexSessionHost* host)
    : m_database(database), m_windows(windows), m_host(host)
{
    if (CVexDbEntityTracker::m_Menu.subMenuCount() == 0) {
        CVexDbEntityTracker::m_Menu = makePopupMenus();
    }
    handler().SetDispWindow(m_windows.display);
    handler().setMsgWindow(m_windows.history, m_windows.message);
    m_database.undoHandler().setView(m_windows.display);
    if (CVexDbDisplayTableRecord* view = m_database.displays().getCurrentRecord();
        view != nullptr && m_windows.display != nullptr) {
        CDC* const dc = m_windows.display->GetDC();
        view->setView(m_windows.display, dc);
        view->MakeUpDisplayWindow(dc);
    }
}

CVexCommandSession::~CVexCommandSession()
{
    handler().ClearTracker(false); // they draw on the window that goes
    handler().SetDispWindow(nullptr);
    handler().setMsgWindow(nullptr, nullptr);
    m_database.undoHandler().setView(nullptr);
    if (CVexDbDisplayTableRecord* view = m_database.displays().getCurrentRecord();
        view != nullptr && view->getView() == m_windows.display) {
        view->setView(nullptr, nullptr);
    }
}

CVexCommandHandler& CVexCommandSession::handler() const
{
    return m_database.commandHandler();
}

LRESULT CVexCommandSession::onDisplayMessage(const MSG& message)
{
    LRESULT result = 0;
    {
        const CallScope call(*this);
        result = answer(message);
    }
    settle(); // last: it may end this session
    return result;
}

bool CVexCommandSession::onMessageKey(unsigned key)
{
    if (handler().isBusy()) {
        return false;
    }
    bool consumed = false;
    {
        const CallScope call(*this);
        if (key == VK_ESCAPE) {
            clearSelection();
        }
        consumed = handler().onKeyDown(key, 1, 0);
    }
    settle();
    return consumed;
}

LRESULT CVexCommandSession::answer(const MSG& message)
{
    if (answerAnytime(message)) {
        return 0;
    }
    // What a waiting input lets through is its own affair, not the beginning of something else.
    return handler().isBusy() ? 0 : answerIdle(message);
}

bool CVexCommandSession::answerAnytime(const MSG& message)
{
    switch (message.message) {
    case WM_COMMAND: command(message.wParam); return true;
    case WM_VEX_COORDINATE: readOut(message); return true;
    case WM_CHAR: typeCharacter(static_cast<wchar_t>(message.wParam)); return true;
    case WM_IME_COMPOSITION: compose(message); return true;
    case WM_MOUSEWHEEL: wheel(message); return true;
    case WM_MBUTTONDOWN: pan(pointOfLParam(message.lParam)); return true;
    case WM_SIZE:
        resize({pointOfLParam(message.lParam).x, pointOfLParam(message.lParam).y});
        return true;
    case WM_PAINT: redraw(); return true;
    case WM_VEX_FEED:
        if (const std::function<void()> next = m_feed; next) {
            next();
        }
        return true;
    default: return false;
    }
}

LRESULT CVexCommandSession::answerIdle(const MSG& message)
{
    const CPoint at = pointOfLParam(message.lParam);
    switch (message.message) {
    case WM_MOUSEMOVE: hover(at); break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: press(at); break; // the second press of a double click is one more
    case WM_RBUTTONDOWN: popup(at); break;
    case WM_KEYDOWN: key(message); break;
    default: break;
    }
    return 0;
}

void CVexCommandSession::start(unsigned long number)
{
    if (handler().isBusy() && m_windows.display != nullptr) {
        // As a message, so that the pump takes its bands off around a change of the view.
        m_windows.display->PostMessage(WM_COMMAND, number, 0);
        return;
    }
    {
        const CallScope call(*this);
        if (number < kHostGrid) { // a switch is not what Enter should repeat
            handler().takeInputText();
            handler().SetLastCommand(number);
        }
        command(number);
    }
    settle();
}

void CVexCommandSession::whenIdle(std::function<void()> request)
{
    m_kept.push_back(std::move(request));
    cancelWaiting();
    settle();
}

void CVexCommandSession::cancelWaiting()
{
    if (!handler().isBusy()) {
        return;
    }
    handler().markInputLost();
    if (GetCapture() == m_windows.display) {
        ReleaseCapture();
    }
    // Any message wakes the pump, which then sees the mark. An Escape would do too, but one that
    // the pump does not get to would cancel what runs next; a timer without a window hurts nobody.
    MSG wake;
    wake.message = WM_TIMER;
    CVexBackend::current().postMessage(wake);
}

void CVexCommandSession::settle()
{
    if (m_depth > 0 || handler().isBusy()) {
        return;
    }
    if (handler().takeQuit()) {
        m_quitAsked = true;
        MSG quit;
        quit.message = WM_QUIT;
        CVexBackend::current().postMessage(
            quit); // the one that a pump took from the program's loop
    }
    runKept();
}

void CVexCommandSession::runKept()
{
    const std::weak_ptr<bool> alive = m_alive;
    while (!alive.expired() && !m_kept.empty() && m_depth == 0 && !handler().isBusy()) {
        const std::function<void()> request = std::move(m_kept.front());
        m_kept.erase(m_kept.begin());
        request();
    }
}

void CVexCommandSession::redraw()
{
    if (CVexDbDisplayTableRecord* view = m_database.displays().getCurrentRecord();
        view != nullptr && m_redraws) {
        view->Draw(view->GetCurrentDC());
    }
}

void CVexCommandSession::resize(CPoint size)
{
    CVexDbDisplayTableRecord* const view = m_database.displays().getCurrentRecord();
    if (view == nullptr || size.x <= 0 || size.y <= 0) {
        return;
    }
    view->Onsize(size.x, size.y);
    view->MakeUpDisplayWindow(view->GetCurrentDC());
    redraw();
}

void CVexCommandSession::finish()
{
    flushLine();
    handler().dropInvisible();
    redraw();
    if (m_host != nullptr) {
        m_host->onChanged();
    }
}

void CVexCommandSession::say(const CString& text)
{
    handler().appendHistory(text);
}

CString findMessageFile()
{
    CString program;
    _GetModulePath(program);
    const CString folder = program.Left(program.ReverseFind(L'/'));
    for (const wchar_t* place : {L"/vexdb.msg", L"/../share/vexdblib/vexdb.msg"}) {
        CString path = folder + place;
        if (CFileFind find; find.FindFile(path) && !find.IsDirectory()) {
            return path;
        }
    }
    return {};
}
