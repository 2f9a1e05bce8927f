#include "host/vextool/options.h"

namespace {

// Two examples a subcommand: the shortest use, and the one that people come for.
CLI::App* subcommand(CLI::App& app, const char* name, const char* what, const char* first,
                     const char* second)
{
    CLI::App* sub = app.add_subcommand(name, what);
    sub->footer(std::string("Examples:\n  vextool ") + first + "\n  vextool " + second);
    sub->fallthrough();
    return sub;
}

CLI::Option* addInput(CLI::App* sub, Options& options)
{
    return sub->add_option("drawing", options.input, "Drawing file (.zpl)")
        ->required()
        ->type_name("FILE");
}

void addNew(CLI::App& app, Options& options)
{
    CLI::App* sub =
        subcommand(app, "new", "Make a drawing: empty, or from the lines that 'dump' writes",
                   "new empty.zpl", "new pipes.zpl --from pipes.jsonl");
    sub->add_option("drawing", options.output, "Drawing file to write (.zpl)")
        ->required()
        ->type_name("FILE");
    sub->add_option("--from", options.from,
                    "JSON lines to make records and entities from, '-' for standard input");
    sub->add_flag("--paper-space", options.paperSpace, "Also make the block PAPER_SPACE");
}

void addInfo(CLI::App& app, Options& options)
{
    CLI::App* sub = subcommand(app, "info", "Tell tables, counts by class, extents and settings",
                               "info pipes.zpl", "info pipes.zpl --json | jq .extents");
    addInput(sub, options);
    sub->add_flag("--json", options.json, "As one JSON object");
}

void addCheck(CLI::App& app, Options& options)
{
    CLI::App* sub =
        subcommand(app, "check", "Read with every check on and list all faults with their offsets",
                   "check pipes.zpl", "check pipes.zpl && echo whole");
    addInput(sub, options);
}

void addDump(CLI::App& app, Options& options)
{
    CLI::App* sub =
        subcommand(app, "dump", "Write records and entities as JSON lines", "dump pipes.zpl",
                   "dump pipes.zpl | grep '\"kind\":\"line\"' | wc -l");
    addInput(sub, options);
}

void addRender(CLI::App& app, Options& options)
{
    CLI::App* sub =
        subcommand(app, "render", "Picture drawings as PNG, PDF or SVG, by the output's extension",
                   "render pipes.zpl -o pipes.png --size 1920 1080",
                   "render pipes.zpl -o pipes.pdf --scale 1:50 --mono");
    sub->add_option("drawings", options.inputs, "Drawing files (.zpl)")
        ->required()
        ->type_name("FILE");
    sub->add_option(
           "-o,--output", options.output,
           "File to write; a % in it stands for each drawing's own title, for many at once")
        ->required();
    CLI::Option* size = sub->add_option(
        "--size", options.size,
        "Width and height: pixels, for PDF and SVG millimetres of paper (default 1600 1000, A3)");
    size->type_name("WIDTH HEIGHT")->each([&](const std::string&) { options.sizeGiven = true; });
    CLI::Option* window =
        sub->add_option("--window", options.window, "Shown area in drawing units (default: all)");
    window->type_name("LEFT BOTTOM RIGHT TOP")->each([&](const std::string&) {
        options.windowGiven = true;
    });
    sub->add_option("--scale", options.scale,
                    "Fixed scale, one drawing unit being one millimetre; for PDF and SVG")
        ->type_name("PAPER:DRAWING");
    sub->add_option("--background", options.background,
                    "black (default), white or #rrggbb; PDF pages stay white")
        ->type_name("COLOUR");
    sub->add_flag("--mono", options.mono,
                  "Every stroke in the colour that stands against the background");
}

void addRun(CLI::App& app, Options& options)
{
    CLI::App* sub = subcommand(app, "run", "Play what a person would type, and save the drawing",
                               "run lines.scr -o lines.zpl",
                               "run lines.scr -i pipes.zpl -o more.zpl --png more.png -v");
    sub->add_option("script", options.script,
                    "Text file, a line an answer; ';' begins a comment, '@' a mouse, key, menu or "
                    "layer action")
        ->required()
        ->type_name("FILE");
    sub->add_option("-i,--input", options.input, "Drawing to begin with (default: a new one)")
        ->type_name("FILE");
    sub->add_option("-o,--output", options.output, "Drawing file to write (.zpl)")
        ->required()
        ->type_name("FILE");
    sub->add_option("--png", options.png, "Also write a picture of the drawing")->type_name("FILE");
    sub->add_flag("-v,--verbose", options.verbose, "Prompts and history on standard error");
    sub->add_flag("--keep-going", options.keepGoing,
                  "Go on behind a refused line, and save what came of the others");
}

void addScrub(CLI::App& app, Options& options)
{
    CLI::App* sub =
        subcommand(app, "scrub", "Remove computer, user and folder names from a drawing",
                   "scrub pipes.zpl -o public.zpl", "scrub pipes.zpl --in-place");
    addInput(sub, options);
    CLI::Option* output = sub->add_option("-o,--output", options.output, "File to write");
    sub->add_flag("--in-place", options.inPlace, "Write over the drawing itself")->excludes(output);
}

void addDocs(CLI::App& app, Options& options)
{
    CLI::App* sub = subcommand(
        app, "docs", "Write the man page or the shell completion, made from this table",
        "docs --man > vextool.1", "docs --bash-completion > /etc/bash_completion.d/vextool");
    CLI::Option* man = sub->add_flag("--man", options.man, "Manual page");
    sub->add_flag("--bash-completion", options.bashCompletion, "Completion for bash")
        ->excludes(man);
}

} // namespace

std::unique_ptr<CLI::App> makeCommandLine(Options& options)
{
    auto app = std::make_unique<CLI::App>(
        "Makes, checks, converts and pictures drawings, with no screen", "vextool");
    app->set_version_flag("--version", std::string("vextool " VEXTOOL_VERSION));
    app->add_flag("-q,--quiet", options.quiet, "No progress and no warnings on standard error");
    app->require_subcommand(1);
    app->footer("Data goes to standard output, all else to standard error.\n"
                "Exit: 0 good, 1 the drawing has faults or a line of a script was refused, 2 wrong "
                "use, 3 input unreadable, 4 output unwritable.\n\n"
                "Examples:\n  vextool new pipes.zpl --from pipes.jsonl\n  vextool render pipes.zpl "
                "-o pipes.pdf");
    addNew(*app, options);
    addInfo(*app, options);
    addCheck(*app, options);
    addDump(*app, options);
    addRender(*app, options);
    addRun(*app, options);
    addScrub(*app, options);
    addDocs(*app, options);
    return app;
}
