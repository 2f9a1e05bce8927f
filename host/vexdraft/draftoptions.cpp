#include "host/vexdraft/draftoptions.h"

#include <QCommandLineParser>

#include <cstdio>
#include <cstdlib>

namespace {

const char* const kDescription =
    "Draws in two dimensions, by mouse and by typed commands.\n\n"
    "Examples:\n"
    "  vexdraft plan.zpl                             open a drawing\n"
    "  vexdraft plan.zpl --script frame.txt --quit   play typed lines into it, watch, and quit";

[[noreturn]] void refuse(const QString& why)
{
    std::fprintf(stderr, "vexdraft: %s\n", qPrintable(why));
    std::exit(2);
}

} // namespace

DraftOptions readOptions(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(kDescription);
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument("drawing", "The drawing (.zpl) to open.", "[drawing]");
    const QCommandLineOption script(
        "script", "Play the lines of FILE as if they were typed; ';' begins a comment.", "FILE");
    const QCommandLineOption keepGoing("keep-going", "Go on behind a refused line of the script.");
    const QCommandLineOption quit("quit",
                                  "Quit when the script is over, without asking about changes; "
                                  "the exit code is 1 when a line was refused.");
    parser.addOptions({script, keepGoing, quit});
    parser.process(arguments);
    if (parser.positionalArguments().size() > 1) {
        refuse("one drawing at a time");
    }
    if (!parser.isSet(script) && (parser.isSet(quit) || parser.isSet(keepGoing))) {
        refuse("--quit and --keep-going belong to --script");
    }
    return {parser.positionalArguments().value(0), parser.value(script), parser.isSet(keepGoing),
            parser.isSet(quit)};
}
