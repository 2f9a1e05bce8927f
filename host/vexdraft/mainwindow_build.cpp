#include "host/vexdraft/commandpane.h"
#include "host/vexdraft/draftcommands.h"
#include "host/vexdraft/drafticons.h"
#include "host/vexdraft/mainwindow.h"

#include <QAbstractEventDispatcher>
#include <QAction>
#include <QDockWidget>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr QSize kFirstSize(1200, 800);
constexpr QSize kIconSize(22, 22);

} // namespace

void MainWindow::makePanes()
{
    resize(kFirstSize);
    setCentralWidget(m_view.widget());
    // Typing goes to the message line wherever the person has clicked.
    m_view.widget()->setFocusProxy(m_pane->line());
    auto* const dock = new QDockWidget(tr("Command"), this);
    dock->setObjectName("command");
    dock->setFeatures(QDockWidget::NoDockWidgetFeatures);
    dock->setTitleBarWidget(new QWidget(dock)); // none: its room is the drawing's
    dock->setWidget(m_pane);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    m_pane->line()->setFocus();
}

QAction* MainWindow::action(unsigned long number) const
{
    const auto row = std::ranges::find(m_actions, number, &NumberedAction::number);
    return row == m_actions.end() ? nullptr : row->action;
}

void MainWindow::makeActions()
{
    for (const DraftCommand& command : draftCommands()) {
        auto* const made = new QAction(draftIcon(command.icon, palette().windowText().color()),
                                       tr(command.text), this);
        made->setStatusTip(tr(command.tip));
        made->setToolTip(tr(command.tip));
        made->setShortcut(QKeySequence(command.shortcut));
        made->setCheckable(command.isSwitch);
        connect(made, &QAction::triggered, this,
                [this, number = command.number] { m_session->start(number); });
        m_actions.push_back({command.number, made});
    }
}

void MainWindow::makeMenus()
{
    const auto fill = [this](QWidget& target, std::span<const unsigned long> numbers) {
        for (const unsigned long number : numbers) {
            if (number == 0) {
                auto* const line = new QAction(&target);
                line->setSeparator(true);
                target.addAction(line);
            } else {
                target.addAction(action(number));
            }
        }
    };
    for (const DraftMenu& menu : draftMenus()) {
        fill(*menuBar()->addMenu(tr(menu.title)), menu.numbers);
    }
    addOwnActions();
    QToolBar* const tools = addToolBar(tr("Tools"));
    tools->setObjectName("tools");
    tools->setIconSize(kIconSize);
    tools->setMovable(false);
    fill(*tools, draftTools());
    for (QToolButton* const button : tools->findChildren<QToolButton*>()) {
        button->setFocusPolicy(Qt::NoFocus);
    }
}

/// What has no number: it never comes from a typed name.
void MainWindow::addOwnActions()
{
    const QList<QAction*> menus = menuBar()->actions();
    auto* const exporting = new QAction(tr("&Export Picture…"), this);
    exporting->setStatusTip(tr("Write what the view shows as PNG, PDF or SVG"));
    connect(exporting, &QAction::triggered, this,
            [this] { m_session->whenIdle([this] { askAndExport(); }); });
    QMenu* const file = menus[0]->menu();
    file->insertAction(file->actions().at(file->actions().size() - 2), exporting);

    auto* const light = new QAction(tr("Light &Background"), this);
    light->setCheckable(true);
    connect(light, &QAction::toggled, this, [this](bool on) { setLightBackground(on); });
    QMenu* const view = menus[2]->menu();
    view->addSeparator();
    view->addAction(light);

    menuBar()->addMenu(tr("&Help"))->addAction(tr("&About VexDraft"), this, [this] {
        QMessageBox::about(this, tr("About VexDraft"),
                           tr("VexDraft %1\nTwo-dimensional drafting.").arg(version()));
    });
}

void MainWindow::makeStatusBar()
{
    // Wide enough for any coordinates, so that the bar does not move with the mouse.
    m_coordinates->setMinimumWidth(
        m_coordinates->fontMetrics().horizontalAdvance("-0000000.000000, -0000000.000000"));
    statusBar()->addPermanentWidget(m_coordinates);
    for (const unsigned long number : draftSwitches()) {
        auto* const button = new QToolButton(this);
        button->setDefaultAction(action(number));
        button->setToolButtonStyle(Qt::ToolButtonTextOnly);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::NoFocus);
        statusBar()->addPermanentWidget(button);
    }
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { refreshSwitches(); });
}
