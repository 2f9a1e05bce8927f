#pragma once

#include "platform/base/cpoint.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

#include <array>
#include <functional>
#include <utility>

/// One application for the whole run, on a platform that needs no display. It is not destroyed: at
/// the very end Qt's own statics are gone before it.
inline void startApplication()
{
    static std::array<char, 6> name{"bench"};
    static std::array<char*, 2> arguments{name.data(), nullptr};
    static int count = 1;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    static const auto* const application = new QApplication(count, arguments.data());
    static_cast<void>(application);
}

/// A person's hand over a widget: each step is done as soon as the one before is on the screen.
class Hand : public QObject {
public:
    /// `step` gets the number of steps done, from 1, posts the next event and answers whether
    /// something is to be painted for it. The first one is to be posted by the caller.
    Hand(QWidget& canvas, std::function<bool(int)> step) : m_canvas(canvas), m_next(std::move(step))
    {
        canvas.installEventFilter(this);
    }
    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Paint && m_goesOn) {
            QMetaObject::invokeMethod(
                this, [this] { takeStep(); }, Qt::QueuedConnection);
        }
        return QObject::eventFilter(object, event);
    }
    void takeStep()
    {
        if (m_goesOn) {
            m_goesOn = m_next(++m_step);
        }
    }
    void post(QEvent::Type type, Qt::MouseButton button, CPoint at)
    {
        const QPointF local(at.x, at.y);
        QCoreApplication::postEvent(&m_canvas,
                                    new QMouseEvent(type, local, m_canvas.mapToGlobal(local),
                                                    button, button, Qt::NoModifier));
    }
    void press(Qt::Key key)
    {
        QCoreApplication::postEvent(&m_canvas,
                                    new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier));
    }

private:
    QWidget& m_canvas;
    std::function<bool(int)> m_next;
    int m_step = 0;
    bool m_goesOn = true;
};
