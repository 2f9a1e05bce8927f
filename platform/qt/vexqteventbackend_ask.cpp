#include "platform/qt/vexqteventbackend.h"
#include "platform/qt/vexqttext.h"
#include "platform/qt/vexqtwindow.h"
#include "platform/window/cmenu.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMenu>
#include <QMessageBox>

namespace {

QWidget* parentFor(const CWnd* window)
{
    QWidget* const widget = widgetOf(window);
    return widget != nullptr ? widget->window() : QApplication::activeWindow();
}

QMessageBox::StandardButtons buttonsOf(unsigned type)
{
    constexpr unsigned kButtons = 0x0f; // above them stand icons and default buttons
    switch (type & kButtons) {
    case MB_OKCANCEL: return QMessageBox::Ok | QMessageBox::Cancel;
    case MB_YESNOCANCEL: return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    case MB_YESNO: return QMessageBox::Yes | QMessageBox::No;
    default: return QMessageBox::Ok;
    }
}

int answerOf(int button)
{
    switch (button) {
    case QMessageBox::Yes: return IDYES;
    case QMessageBox::No: return IDNO;
    case QMessageBox::Cancel: return IDCANCEL;
    default: return IDOK;
    }
}

void fill(QMenu& shown, const CMenu& menu)
{
    for (const CMenu::Item& item : menu.items()) {
        if (item.id == 0) {
            shown.addSeparator();
            continue;
        }
        QAction* const action = shown.addAction(toQString(item.label).replace('&', "&&"));
        action->setData(item.id);
        action->setEnabled(item.enabled);
    }
}

} // namespace

int CVexQtEventBackend::messageBox(const CString& text, const CString& caption, unsigned type)
{
    QMessageBox box(QMessageBox::Information, toQString(caption), toQString(text), buttonsOf(type),
                    parentFor(m_capture));
    box.setTextFormat(Qt::PlainText);
    return answerOf(box.exec());
}

bool CVexQtEventBackend::chooseFolder(CWnd* parent, const CString& title, const CString& start,
                                      CString& chosen)
{
    const QString folder =
        QFileDialog::getExistingDirectory(parentFor(parent), toQString(title), toQString(start));
    if (folder.isEmpty()) {
        return false;
    }
    chosen = toCString(folder);
    return true;
}

unsigned CVexQtEventBackend::trackPopupMenu(const CMenu& menu, CPoint screen, CWnd* window)
{
    QMenu shown(parentFor(window));
    fill(shown, menu);
    const QAction* const chosen = shown.exec(globalPoint(widgetOf(window), screen));
    return chosen != nullptr ? chosen->data().toUInt() : 0;
}

bool CVexQtEventBackend::askText(CWnd* parent, const CString& label, CString& text)
{
    bool given = false;
    const QString answer =
        QInputDialog::getText(parentFor(parent), QApplication::applicationDisplayName(),
                              toQString(label), QLineEdit::Normal, toQString(text), &given);
    if (given) {
        text = toCString(answer);
    }
    return given;
}
