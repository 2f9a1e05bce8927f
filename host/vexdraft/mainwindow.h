#pragma once

#include "host/vexdraft/savemark.h"
#include "platform/qt/vexqtcontrols.h"
#include "platform/qt/vexqtview.h"
#include "vexdb/dbcommand/vexcommandsession.h"
#include "vexdb/dbcommand/vexscriptplayer.h"
#include "vexge/gemath/vexxy.h"

#include <QMainWindow>

#include <memory>
#include <vector>

class CommandPane;
class CVexDbDatabase;
class DraftStart;
class QAction;
class QLabel;

/// The program's window: one drawing, its view, the message line with the history, and the menus.
/// What a drawing's session does itself (commands, mouse, keys, view) is not told again here; the
/// window adds files, menus and titles.
class MainWindow : public QMainWindow, public VexSessionHost {
    Q_OBJECT

public:
    /// How a script is played.
    struct ScriptMode {
        bool keepGoing = false; // behind a refused line
        bool quit = false;      // at the end, without asking
    };

    /// `start` outlives the window.
    explicit MainWindow(DraftStart& start);
    ~MainWindow() override;
    static QString version();

    // Each cancels a command that waits, and runs when it has unwound.
    /// Shows a file in place of the present drawing, after asking about its changes.
    void open(const QString& path);
    void newDrawing();
    /// Plays the lines of a file as if they were typed.
    void playScript(const QString& path, ScriptMode mode);

    /// At once: the drawing under a name, which becomes its own. False, with a message, on a
    /// failure.
    bool saveTo(const QString& path);

    [[nodiscard]] CVexDbDatabase& database() const { return *m_database; }
    [[nodiscard]] CVexCommandSession& session() const { return *m_session; }
    [[nodiscard]] CVexQtView& view() { return m_view; }
    [[nodiscard]] CommandPane& commandPane() const { return *m_pane; }
    /// Where the drawing stands; empty for one without a name.
    [[nodiscard]] const QString& path() const { return m_path; }
    [[nodiscard]] bool isModified() const;
    [[nodiscard]] bool isPlaying() const { return m_player != nullptr && !m_player->isOver(); }
    [[nodiscard]] QAction* action(unsigned long number) const;

    bool onHostCommand(unsigned long number) override;
    void onChanged() override;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    struct NumberedAction {
        unsigned long number;
        QAction* action;
    };

    // Building.
    void makePanes();
    void makeActions();
    QAction* makeAction(unsigned long number);
    void makeMenus();
    void addOwnActions();
    void makeStatusBar();

    // The drawing.
    void setDrawing(std::unique_ptr<CVexDbDatabase> database, const QString& path);
    void fitView();
    LRESULT onDisplayMessage(const MSG& message);
    [[nodiscard]] bool isOnGrip(CPoint device) const;

    // Files.
    void openNow(const QString& path);
    void askAndOpen();
    bool save();
    bool saveAs();
    void askAndExport();
    [[nodiscard]] bool mayDiscard();
    void tell(const QString& message);
    void remember(const CString& message);

    void startScript();
    void scriptOver(bool good);
    void refresh();
    void refreshSwitches();
    void setLightBackground(bool light);

    DraftStart& m_start;
    CVexQtView m_view;
    CommandPane* m_pane;
    QLabel* m_coordinates;
    CVexQtLineWindow m_lineWindow;
    CVexQtTextWindow m_historyWindow;
    CVexQtLabelWindow m_coordinatesWindow;
    std::vector<NumberedAction> m_actions;
    std::unique_ptr<CVexDbDatabase> m_database;
    std::unique_ptr<CVexCommandSession> m_session; // over m_database
    std::unique_ptr<CVexScriptPlayer> m_player;    // over m_session
    SaveMark m_mark;
    QString m_path;
    QString m_title; // of a drawing without a name
    QString m_scriptPath;
    ScriptMode m_scriptMode;
    VexXY m_shownMin{}; // what the drawing's file shows, drawing units; empty in a fresh one
    VexXY m_shownMax{};
    bool m_fitted = false; // the view has shown the drawing at its real size
    bool m_discards = false;
};
