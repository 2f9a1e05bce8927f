#include "host/vextool/commands.h"
#include "host/vextool/drawingio.h"
#include "host/vextool/picturing.h"
#include "host/vextool/toolwindow.h"
#include "vexdb/dbcommand/vexcommandhandler.h"
#include "vexdb/dbcommand/vexcommandsession.h"
#include "vexdb/dbcommand/vexprompthandler.h"
#include "vexdb/dbcommand/vexscriptplayer.h"

#include <filesystem>
#include <iostream>

namespace {

/// The prompts for a scope.
class PromptScope {
public:
    PromptScope() : m_prompts(findMessageFile()), m_before(_hPROMPT) { _hPROMPT = &m_prompts; }
    ~PromptScope() { _hPROMPT = m_before; }
    PromptScope(const PromptScope&) = delete;
    PromptScope& operator=(const PromptScope&) = delete;
    [[nodiscard]] bool isLoaded() const { return m_prompts.count() > VexDb::PromptUnknownCommand; }

private:
    CVexPromptHandler m_prompts;
    CVexPromptHandler* m_before;
};

bool isPng(const std::string& path)
{
    return std::filesystem::path(path).extension() == ".png";
}

LoadedDrawing openDrawing(const Options& options)
{
    if (!options.input.empty()) {
        return loadDrawing(options.input, options.quiet);
    }
    LoadedDrawing fresh;
    fresh.database = std::make_unique<CVexDbDatabase>(false);
    _gpDatabase = fresh.database.get();
    return fresh;
}

void tellRefusals(const Options& options, const std::vector<CVexScriptPlayer::Refusal>& refusals)
{
    for (const CVexScriptPlayer::Refusal& refusal : refusals) {
        complain(options.script + ", line " + std::to_string(refusal.line) + ": '" +
                 refusal.text.utf8() + "': " + refusal.why.utf8());
    }
}

/// Plays the lines into the drawing; true when none was refused.
bool play(CVexDbDatabase& database, const Options& options, std::vector<CString> lines)
{
    ToolView view;
    ToolText message;
    ToolText history;
    CVexCommandSession session(database, {&view, &message, &history, nullptr});
    session.setRedraws(false); // nobody looks
    view.setSession(&session);
    CVexScriptPlayer player(session);
    player.setKeepGoing(options.keepGoing);
    if (options.verbose) {
        player.setEcho([](const CString& line) { std::cerr << line.utf8() << '\n'; });
    }
    const bool good = player.play(std::move(lines));
    view.setSession(nullptr);
    tellRefusals(options, player.refusals());
    return good;
}

ExitCode save(CVexDbDatabase& database, const std::string& path)
{
    return database.SaveAs(CString::fromUtf8(path)) ? kExitGood : kExitUnwritable;
}

ExitCode picture(const Options& options)
{
    Options render;
    render.quiet = options.quiet;
    render.inputs = {options.output};
    render.output = options.png;
    return runRender(render);
}

} // namespace

ExitCode runRun(const Options& options)
{
    if (!options.png.empty() && !isPng(options.png)) {
        complain("run: the picture's extension is .png");
        return kExitUsage;
    }
    std::vector<CString> lines;
    if (!CVexScriptPlayer::readLines(CString::fromUtf8(options.script), lines)) {
        complain("cannot read '" + options.script + "'");
        return kExitUnreadable;
    }
    ToolMachine machine(options.quiet);
    const CVexMachineScope machineScope(machine);
    const PictureBackend backend; // no screen; a saved drawing carries its small picture
    const PromptScope prompts;
    if (!prompts.isLoaded()) {
        complain("the message file 'vexdb.msg' is missing or too short");
        return kExitUnreadable;
    }
    const LoadedDrawing drawing = openDrawing(options);
    if (!drawing.database) {
        return drawing.code;
    }
    const bool good = play(*drawing.database, options, std::move(lines));
    if (!good && !options.keepGoing) {
        return kExitFaults; // a half-played drawing would pass for a whole one
    }
    if (const ExitCode saved = save(*drawing.database, options.output); saved != kExitGood) {
        return saved;
    }
    const ExitCode pictured = options.png.empty() ? kExitGood : picture(options);
    if (pictured != kExitGood) {
        return pictured;
    }
    return good ? drawing.code : kExitFaults;
}
