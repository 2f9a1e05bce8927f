#include "platform/qt/vexqteventbackend.h"
#include "platform/qt/vexqtkeys.h"
#include "platform/qt/vexqttext.h"
#include "platform/qt/vexqtwindow.h"

#include <QApplication>
#include <QDialog>
#include <QInputMethodEvent>
#include <QKeyEvent>

namespace {

/// Keys that a pump wants though an action has them as its shortcut: those that type, and those
/// that the inputs know. The other function keys switch settings also while a command waits.
bool beatsShortcuts(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers held = event.modifiers();
    if (held.testFlag(Qt::ControlModifier) || held.testFlag(Qt::AltModifier) ||
        held.testFlag(Qt::MetaModifier)) {
        return false;
    }
    const bool isFunctionKey = event.key() >= Qt::Key_F1 && event.key() <= Qt::Key_F35;
    return !isFunctionKey || event.key() == Qt::Key_F4;
}

} // namespace

bool CVexQtEventBackend::filter(QObject* object, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease: {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        noteKey(key);
        return takesKeys(object) && takeKey(key);
    }
    case QEvent::ShortcutOverride:
        if (takesKeys(object) && beatsShortcuts(static_cast<const QKeyEvent&>(*event))) {
            event->accept();
            return true;
        }
        return false;
    case QEvent::InputMethod: return takesKeys(object) && takeComposition(object, event);
    case QEvent::Hide:
    case QEvent::WindowDeactivate: watch(object, *event); return false;
    default: return false;
    }
}

/// Dialogs and menus that stand over a pump keep their keys.
bool CVexQtEventBackend::takesKeys(const QObject* object) const
{
    if (m_capture == nullptr || !object->isWidgetType() ||
        QApplication::activePopupWidget() != nullptr ||
        QApplication::activeModalWidget() != nullptr) {
        return false;
    }
    const auto* const widget = static_cast<const QWidget*>(object);
    return qobject_cast<const QDialog*>(widget->window()) == nullptr;
}

void CVexQtEventBackend::noteKey(const QKeyEvent& event)
{
    const unsigned key = virtualKeyOf(event.key(), event.modifiers());
    if (event.type() == QEvent::KeyPress) {
        m_keysDown.insert(key);
    } else if (!event.isAutoRepeat()) {
        m_keysDown.erase(key);
    }
    if (m_capture == nullptr) {
        m_modifiers = event.modifiers();
    }
}

bool CVexQtEventBackend::takeKey(const QKeyEvent& event)
{
    const bool down = event.type() == QEvent::KeyPress;
    if (!down && event.isAutoRepeat()) {
        return true; // a key that is held comes up once
    }
    const unsigned key = virtualKeyOf(event.key(), event.modifiers());
    push({{m_capture, down ? WM_KEYDOWN : WM_KEYUP, key, 0, m_pointer},
          event.modifiers(),
          {},
          std::unique_ptr<QKeyEvent>(event.clone())});
    return true;
}

/// What an input method has finished goes to the pump; what it is still composing shows where the
/// focus is.
bool CVexQtEventBackend::takeComposition(QObject* object, QEvent* event)
{
    const QString finished = static_cast<const QInputMethodEvent*>(event)->commitString();
    if (finished.isEmpty()) {
        return false;
    }
    push(
        {{m_capture, WM_IME_COMPOSITION, 0, kCompositionResult, m_pointer}, m_modifiers, finished});
    QInputMethodEvent nothingLeft;
    QCoreApplication::sendEvent(object, &nothingLeft);
    return true;
}

void CVexQtEventBackend::watch(const QObject* object, const QEvent& event)
{
    const QWidget* const widget = widgetOf(m_capture);
    if (event.type() == QEvent::WindowDeactivate) {
        m_keysDown.clear();
    }
    if (widget == nullptr) {
        return;
    }
    if (event.type() == QEvent::Hide) {
        if (object == widget && !event.spontaneous()) {
            wake(); // the wait looks whether there is still something to wait for
        }
    } else if (object == widget->window() && m_buttons != Qt::NoButton) {
        m_buttons = Qt::NoButton;
        loseCapture();
    }
}
