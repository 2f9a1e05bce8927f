#include "guifixture.h"

#include "host/vexdraft/commandpane.h"
#include "platform/qt/vexqttext.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/vexdbdatabase.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDeadlineTimer>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

namespace {

constexpr int kPatience = 20000; // milliseconds
constexpr double kPixelsPerUnit = 50.0;
constexpr int kMargin = 100; // pixels

} // namespace

GuiTest::GuiTest() : m_window(std::make_unique<MainWindow>(m_start))
{
    m_window->resize(1000, 800);
    m_window->show();
    QApplication::setActiveWindow(m_window.get());
    QCoreApplication::processEvents();
    showStandardView();
}

GuiTest::~GuiTest()
{
    m_window.reset();
    QCoreApplication::sendPostedEvents();
}

void GuiTest::showStandardView()
{
    CVexDbDisplayTableRecord& view = *window().database().displays().getCurrentRecord();
    const QSize size = window().view().picture().size();
    const double scale = _dDispScale / kPixelsPerUnit; // logical units a pixel
    const int corner = static_cast<int>(-kMargin * scale);
    view.ZoomWindow(view.GetCurrentDC(),
                    CRect(corner, corner, corner + static_cast<int>(size.width() * scale),
                          corner + static_cast<int>(size.height() * scale)));
}

QWidget* GuiTest::canvas()
{
    return window().view().widget();
}

QWidget* GuiTest::focus()
{
    QWidget* const focused = QApplication::focusWidget();
    return focused != nullptr ? focused : window().commandPane().line();
}

GuiTest& GuiTest::then(std::function<void()> act)
{
    m_acts.push_back(std::move(act));
    return *this;
}

GuiTest& GuiTest::types(const QString& text)
{
    for (const QChar character : text) {
        then([this, character] { QTest::keyClick(focus(), character.toLatin1()); });
    }
    return *this;
}

GuiTest& GuiTest::presses(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    return then([this, key, modifiers] { QTest::keyClick(focus(), key, modifiers); });
}

GuiTest& GuiTest::enters(const QString& text)
{
    return types(text).presses(Qt::Key_Return);
}

/// The event itself: a pointer that the platform moves would report it some acts later.
void GuiTest::moveTo(double x, double y)
{
    const QPoint at = pixelAt(x, y);
    QMouseEvent move(QEvent::MouseMove, at, canvas()->mapToGlobal(at), Qt::NoButton,
                     m_holding ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(canvas(), &move);
}

GuiTest& GuiTest::moves(double x, double y)
{
    return then([=, this] { moveTo(x, y); });
}

GuiTest& GuiTest::clicks(double x, double y, Qt::MouseButton button)
{
    return then([=, this] { moveTo(x, y); })
        .then([=, this] { QTest::mousePress(canvas(), button, {}, pixelAt(x, y)); })
        .then([=, this] { QTest::mouseRelease(canvas(), button, {}, pixelAt(x, y)); });
}

GuiTest& GuiTest::holds(double x, double y)
{
    return then([=, this] {
        m_holding = true;
        QTest::mousePress(canvas(), Qt::LeftButton, {}, pixelAt(x, y));
    });
}

GuiTest& GuiTest::releases(double x, double y)
{
    return then([=, this] {
        m_holding = false;
        QTest::mouseRelease(canvas(), Qt::LeftButton, {}, pixelAt(x, y));
    });
}

GuiTest& GuiTest::turnsWheel(double x, double y, int notches)
{
    return then([=, this] {
        const QPoint at = pixelAt(x, y);
        QWheelEvent turn(at, canvas()->mapToGlobal(at), {}, QPoint(0, notches * kWheelNotch),
                         Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(canvas(), &turn);
    });
}

GuiTest& GuiTest::chooses(const QString& label)
{
    return then([label] {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(nullptr, menu) << "no menu is open";
        for (QAction* const action : menu->actions()) {
            if (action->text() == label) {
                menu->setActiveAction(action);
                QTest::keyClick(menu, Qt::Key_Return);
                return;
            }
        }
        menu->close();
        FAIL() << "the menu has no row " << label.toStdString();
    });
}

GuiTest& GuiTest::answers(const QString& button)
{
    return then([button] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(nullptr, box) << "no message box is open";
        for (QAbstractButton* const each : box->buttons()) {
            if (each->text().remove('&') == button) {
                each->click();
                return;
            }
        }
        box->reject();
        FAIL() << "the box has no button " << button.toStdString();
    });
}

/// A pump that has messages left works on them first.
bool GuiTest::isReady()
{
    return m_start.backend().queued() == 0;
}

void GuiTest::next()
{
    if (m_acts.empty() || m_stuck) {
        return;
    }
    // The timer of the act behind this one: a command that begins in this act waits for it.
    if (!isReady()) {
        QTimer::singleShot(0, m_window.get(), [this] { next(); });
        return;
    }
    const std::function<void()> act = std::move(m_acts.front());
    m_acts.pop_front();
    QTimer::singleShot(0, m_window.get(), [this] { next(); });
    ++m_running;
    act();
    --m_running;
}

void GuiTest::run()
{
    const QDeadlineTimer deadline(kPatience);
    QTimer watchdog; // ends what waits for ever
    QObject::connect(&watchdog, &QTimer::timeout, m_window.get(), [this] {
        m_stuck = true;
        m_acts.clear();
        if (QWidget* const modal = QApplication::activeModalWidget(); modal != nullptr) {
            modal->close();
        }
        if (QWidget* const popup = QApplication::activePopupWidget(); popup != nullptr) {
            popup->close();
        }
        window().session().cancelWaiting();
    });
    watchdog.start(kPatience);
    QTimer::singleShot(0, m_window.get(), [this] { next(); });
    while ((!m_acts.empty() || m_running > 0 || !isReady()) && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::processEvents();
    EXPECT_FALSE(m_stuck) << "something waited for ever";
    // What still waits ends here, so that a failed test does not take the next ones with it.
    window().session().cancelWaiting();
    QCoreApplication::processEvents();
}

QImage GuiTest::picture()
{
    return window().view().picture().copy();
}

QImage GuiTest::freshPicture()
{
    window().session().redraw();
    return picture();
}

QColor GuiTest::colorAt(double x, double y)
{
    const QPoint at = pixelAt(x, y) * window().view().widget()->devicePixelRatio();
    return picture().pixelColor(at);
}

QString GuiTest::line()
{
    return window().commandPane().line()->text();
}

QString GuiTest::history()
{
    return window().commandPane().history()->toPlainText();
}

CVexCommandHandler& GuiTest::handler()
{
    return window().session().handler();
}

std::vector<CVexDbLine*> GuiTest::lines()
{
    std::vector<CVexDbLine*> found;
    const CVexDbIdSet& shown = *window().database().displays().getCurrentRecord()->displayedIdSet();
    for (auto at = shown.begin(); at != shown.end(); ++at) {
        if (auto* const each = dynamic_cast<CVexDbLine*>(at.object());
            each != nullptr && each->isVisiable()) {
            found.push_back(each);
        }
    }
    return found;
}

CVexDbLine* GuiTest::addLine(const CVexGePoint2d& from, const CVexGePoint2d& to)
{
    auto made = std::make_unique<CVexDbLine>(&window().database());
    made->setStartPoint(from);
    made->setEndPoint(to);
    CVexDbLine* const added = made.get();
    CVexDbObjectId id;
    window().database().addEntity(made.release(), id);
    window().session().redraw();
    return added;
}

CVexGePoint2d GuiTest::drawingAt(QPoint at)
{
    const int ratio = static_cast<int>(canvas()->devicePixelRatio());
    return window().database().displays().getCurrentRecord()->GetLogicalPoint(
        {at.x() * ratio, at.y() * ratio});
}

QPoint GuiTest::pixelAt(double x, double y)
{
    const CPoint device = window().database().displays().getCurrentRecord()->GetDecivePoint({x, y});
    return QPoint(device.x, device.y) / canvas()->devicePixelRatio();
}

int differingPixels(const QImage& a, const QImage& b)
{
    if (a.size() != b.size()) {
        return std::max(a.width() * a.height(), b.width() * b.height());
    }
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            count += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
        }
    }
    return count;
}
