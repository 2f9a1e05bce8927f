#include "host/vexdraft/draftstart.h"
#include "host/vexdraft/drawingfile.h"
#include "host/vexdraft/exportpicture.h"
#include "host/vexdraft/mainwindow.h"
#include "platform/qt/vexqttext.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/vexdbdatabase.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QMessageBox>

#include <utility>

namespace {

const char* const kExtension = "zpl";
const char* const kFilter = "Drawings (*.zpl);;All files (*)";
const char* const kPictureFilter = "PNG picture (*.png);;PDF page (*.pdf);;SVG picture (*.svg)";

/// A name for writing, asked for; empty when the person thinks better of it.
QString askName(QWidget* parent, const QString& title, const QString& start, const char* filter,
                const char* extension)
{
    QFileDialog dialog(parent, title, start, QCoreApplication::translate("MainWindow", filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(extension);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

} // namespace

void MainWindow::tell(const QString& message)
{
    QMessageBox box(QMessageBox::Warning, QApplication::applicationDisplayName(), message,
                    QMessageBox::Ok, this);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

void MainWindow::newDrawing()
{
    m_session->whenIdle([this] {
        if (mayDiscard()) {
            setDrawing(std::make_unique<CVexDbDatabase>(false), {});
        }
    });
}

void MainWindow::open(const QString& path)
{
    m_session->whenIdle([this, path] {
        if (mayDiscard()) {
            openNow(path);
        }
    });
}

void MainWindow::openNow(const QString& path)
{
    OpenedDrawing drawing = openDrawing(path, m_start.machine());
    if (drawing.database == nullptr) {
        tell(drawing.message);
        return;
    }
    if (!drawing.recovered) {
        setDrawing(std::move(drawing.database), path);
        return;
    }
    // What was lost is in the file still: the copy has no name, so that Save cannot end that.
    setDrawing(std::move(drawing.database), {});
    m_title = tr("%1 (recovered)").arg(path.section('/', -1));
    m_mark.neverSaved();
    refresh();
    tell(tr("%1\n\nWhat was whole is shown as an untitled copy.").arg(drawing.message));
}

void MainWindow::askAndOpen()
{
    if (!mayDiscard()) {
        return;
    }
    const QString chosen = QFileDialog::getOpenFileName(this, tr("Open Drawing"),
                                                        m_path.section('/', 0, -2), tr(kFilter));
    if (!chosen.isEmpty()) {
        openNow(chosen);
    }
}

bool MainWindow::saveTo(const QString& path)
{
    QString message;
    if (!saveDrawing(*m_database, path, m_start.machine(), message)) {
        tell(message);
        return false;
    }
    m_path = path;
    m_mark.saved(m_database->undoHandler());
    refresh();
    return true;
}

bool MainWindow::save()
{
    return m_path.isEmpty() ? saveAs() : saveTo(m_path);
}

bool MainWindow::saveAs()
{
    const QString chosen = askName(this, tr("Save Drawing As"), m_path, kFilter, kExtension);
    return !chosen.isEmpty() && saveTo(chosen);
}

void MainWindow::askAndExport()
{
    const QString chosen = askName(this, tr("Export Picture"), {}, kPictureFilter, "png");
    QString message;
    if (!chosen.isEmpty() && !exportPicture(*m_database, chosen, message)) {
        tell(message);
    }
}

bool MainWindow::mayDiscard()
{
    if (!isModified() || m_discards) {
        return true;
    }
    const auto answer = QMessageBox::question(
        this, QApplication::applicationDisplayName(),
        tr("%1 has changes that are not saved. Save them?")
            .arg(m_path.isEmpty() ? m_title : m_path.section('/', -1)),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    return answer == QMessageBox::Discard || (answer == QMessageBox::Save && save());
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (!m_fitted) {
        const QSize size = m_view.picture().size();
        m_view.PostMessage(WM_SIZE, 0, MAKELPARAM(size.width(), size.height()));
    }
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_session->handler().isBusy()) {
        event->ignore();
        if (QWidget* const menu = QApplication::activePopupWidget(); menu != nullptr) {
            menu->close(); // the command may wait for its answer
        }
        m_session->whenIdle([this] { close(); });
        return;
    }
    event->setAccepted(mayDiscard());
}

void MainWindow::playScript(const QString& path, ScriptMode mode)
{
    m_session->whenIdle([this, path, mode] {
        m_scriptPath = path;
        m_scriptMode = mode;
        if (m_fitted) {
            startScript();
        }
    });
}

void MainWindow::startScript()
{
    std::vector<CString> lines;
    const QString path = std::exchange(m_scriptPath, {});
    m_player = std::make_unique<CVexScriptPlayer>(*m_session);
    if (!CVexScriptPlayer::readLines(toCString(path), lines)) {
        remember(toCString(tr("The script %1 cannot be read.").arg(path)));
        scriptOver(false);
        return;
    }
    m_player->setKeepGoing(m_scriptMode.keepGoing);
    m_player->start(std::move(lines), [this] { scriptOver(m_player->refusals().empty()); });
}

void MainWindow::scriptOver(bool good)
{
    for (const CVexScriptPlayer::Refusal& refusal : m_player->refusals()) {
        remember(toCString(tr("Line %1 refused: %2 (%3)")
                               .arg(refusal.line)
                               .arg(toQString(refusal.text), toQString(refusal.why))));
    }
    if (m_scriptMode.quit) {
        m_discards = true;
        QMetaObject::invokeMethod(
            this,
            [this, good] {
                close();
                QCoreApplication::exit(good ? 0 : 1);
            },
            Qt::QueuedConnection);
    }
}
