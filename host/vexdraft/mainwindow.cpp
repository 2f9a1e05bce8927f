#include "host/vexdraft/mainwindow.h"

#include "host/vexdraft/commandpane.h"
#include "host/vexdraft/draftstart.h"
#include "platform/qt/vexqttext.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/dbtracker/vexdbentitytracker.h"
#include "vexdb/vexdbdatabase.h"

#include <QAction>
#include <QLabel>

#include <algorithm>

namespace {

constexpr COLORREF kDarkGround = RGB(0x1c, 0x21, 0x27);
constexpr COLORREF kLightGround = RGB(0xff, 0xff, 0xff);

} // namespace

MainWindow::MainWindow(DraftStart& start)
    : m_start(start), m_view(start.backend(), this), m_pane(new CommandPane(this)),
      m_coordinates(new QLabel(this)), m_lineWindow(m_pane->line()),
      m_historyWindow(m_pane->history()), m_coordinatesWindow(m_coordinates)
{
    makePanes();
    makeActions();
    makeMenus();
    makeStatusBar();
    m_view.setBackground(kDarkGround);
    m_view.setHandler([this](const MSG& message) { return onDisplayMessage(message); });
    m_lineWindow.setKeyHandler([this](unsigned key) { return m_session->onMessageKey(key); });
    m_start.machine().setOnReport([this](const CString& message) { remember(message); });
    setDrawing(std::make_unique<CVexDbDatabase>(false), {});
    if (!m_start.hasPrompts()) {
        remember(L"The message file vexdb.msg was not found: commands ask without words.");
    }
}

MainWindow::~MainWindow()
{
    m_start.machine().setOnReport({});
    m_lineWindow.setKeyHandler({});
    m_view.setHandler({});
    m_player.reset();
    m_session.reset();
}

QString MainWindow::version()
{
    return QStringLiteral(VEXDRAFT_VERSION);
}

void MainWindow::setDrawing(std::unique_ptr<CVexDbDatabase> database, const QString& path)
{
    // From the last one made to the first: each works with the one before.
    m_player.reset();
    m_session.reset();
    m_database = std::move(database);
    _gpDatabase = m_database.get();
    // The session fits the view to the window, which writes these anew.
    m_shownMin = m_database->settings().m_ptViewMin;
    m_shownMax = m_database->settings().m_ptViewMax;
    m_session = std::make_unique<CVexCommandSession>(
        *m_database,
        CVexCommandSession::Windows{&m_view, &m_lineWindow, &m_historyWindow, &m_coordinatesWindow},
        this);
    m_path = path;
    m_title = tr("Untitled");
    m_mark.saved(m_database->undoHandler());
    if (m_fitted) {
        fitView();
    }
    refresh();
}

/// A fresh drawing shows its limits, one that was saved what it showed then.
void MainWindow::fitView()
{
    m_fitted = true;
    CVexDbDisplayTableRecord& view = *m_database->displays().getCurrentRecord();
    view.MakeUpDisplayWindow(m_view.GetDC()); // takes the new size, at the scale of the old one
    const bool wasShown = m_shownMin.x < m_shownMax.x && m_shownMin.y < m_shownMax.y;
    if (wasShown) {
        view.SetCurDispWin({m_shownMin.x, m_shownMin.y}, {m_shownMax.x, m_shownMax.y});
    } else {
        view.ZoomAll();
    }
    view.MakeUpDisplayWindow(m_view.GetDC());
    m_session->redraw();
}

bool MainWindow::isOnGrip(CPoint device) const
{
    return std::ranges::any_of(m_session->handler().trackers(), [&](CVexDbEntityTracker* tracker) {
        return tracker->HitTest(device) >= 0;
    });
}

LRESULT MainWindow::onDisplayMessage(const MSG& message)
{
    const bool idle = !m_session->handler().isBusy();
    if (idle && message.message == WM_SIZE && !m_fitted && isVisible()) {
        fitView();
        if (!m_scriptPath.isEmpty()) {
            startScript();
        }
        return 0;
    }
    if (idle && message.message == WM_RBUTTONDOWN && !isOnGrip(pointOfLParam(message.lParam))) {
        m_session->onMessageKey(VK_RETURN); // Enter: the typed command, or the last one again
        return 0;
    }
    return m_session->onDisplayMessage(message);
}

bool MainWindow::onHostCommand(unsigned long number)
{
    switch (number) {
    case kHostNew: newDrawing(); return true;
    case kHostOpen: m_session->whenIdle([this] { askAndOpen(); }); return true;
    case kHostSave: m_session->whenIdle([this] { save(); }); return true;
    case kHostSaveAs: m_session->whenIdle([this] { saveAs(); }); return true;
    case kHostQuit: m_session->whenIdle([this] { close(); }); return true;
    default: return false;
    }
}

void MainWindow::onChanged()
{
    m_mark.changed(m_database->undoHandler());
    refresh();
}

bool MainWindow::isModified() const
{
    return m_mark.isModified(m_database->undoHandler());
}

void MainWindow::refresh()
{
    const QString name = m_path.isEmpty() ? m_title : m_path.section('/', -1);
    setWindowTitle(name + "[*]");
    setWindowFilePath(m_path);
    setWindowModified(isModified());
    const CVexUndoHandler& undo = m_database->undoHandler();
    action(kHostUndo)->setEnabled(!undo.undoStack().empty());
    action(kHostRedo)->setEnabled(!undo.redoStack().empty());
    const bool selected = !m_session->handler().selectedEntities().empty();
    action(hostNumberOf(VexDb::CmdErase))->setEnabled(selected);
    action(kHostClearSelection)->setEnabled(selected);
    refreshSwitches();
}

/// Inputs switch settings too, by keys of their own.
void MainWindow::refreshSwitches()
{
    const VexDbDrawingSettings_tag& settings = m_database->settings();
    action(kHostGrid)->setChecked(settings.m_bGridVisible);
    action(kHostGridSnap)->setChecked(settings.m_bGridSnap);
    action(kHostOrtho)->setChecked(settings.m_bOrtho);
    action(kHostGripSnap)->setChecked(settings.m_bGripSnap);
}

void MainWindow::setLightBackground(bool light)
{
    m_view.setBackground(light ? kLightGround : kDarkGround);
    m_session->start(kHostRedraw);
}

void MainWindow::remember(const CString& message)
{
    if (m_session != nullptr) {
        m_session->handler().appendHistory(message);
    }
}
