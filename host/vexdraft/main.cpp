#include "host/vexdraft/draftoptions.h"
#include "host/vexdraft/draftstart.h"
#include "host/vexdraft/mainwindow.h"

#include <QApplication>
#include <QTimer>

#include <algorithm>
#include <string_view>

namespace {

/// Help and version need no screen.
bool onlyPrints(int argc, char** argv)
{
    return std::any_of(argv + 1, argv + argc, [](std::string_view argument) {
        return argument == "-h" || argument == "--help" || argument == "-v" ||
               argument == "--version" || argument == "--help-all";
    });
}

int draw(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationDisplayName("VexDraft");
    const DraftOptions options = readOptions(QApplication::arguments());

    DraftStart start;
    MainWindow window(start);
    window.show();
    // From the loop, so that messages about the file stand over a window that is there already.
    QTimer::singleShot(0, &window, [&] {
        if (!options.drawing.isEmpty()) {
            window.open(options.drawing);
        }
        if (!options.script.isEmpty()) {
            window.playScript(options.script, {options.keepGoing, options.quit});
        }
    });
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setApplicationName("vexdraft");
    QCoreApplication::setApplicationVersion(MainWindow::version());
    if (onlyPrints(argc, argv)) {
        const QCoreApplication application(argc, argv);
        readOptions(QCoreApplication::arguments()); // prints and ends the program
        return 0;
    }
    return draw(argc, argv);
}
