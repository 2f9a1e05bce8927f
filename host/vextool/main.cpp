#include "host/vextool/commands.h"
#include "host/vextool/drawingio.h"
#include "host/vextool/options.h"

#include <array>
#include <exception>
#include <iostream>

namespace {

ExitCode runDocs(const CLI::App& app, const Options& options)
{
    std::cout << (options.bashCompletion ? bashCompletion(app) : manualPage(app));
    return kExitGood;
}

ExitCode dispatch(const CLI::App& app, const Options& options)
{
    struct Row {
        const char* name;
        ExitCode (*run)(const Options&);
    };
    static constexpr std::array kRows{Row{"new", runNew},       Row{"info", runInfo},
                                      Row{"check", runCheck},   Row{"dump", runDump},
                                      Row{"render", runRender}, Row{"run", runRun},
                                      Row{"scrub", runScrub}};
    const std::string name = app.get_subcommands().front()->get_name();
    for (const Row& row : kRows) {
        if (name == row.name) {
            return row.run(options);
        }
    }
    return runDocs(app, options);
}

ExitCode run(CLI::App& app, const Options& options, std::vector<std::string> arguments)
{
    try {
        app.parse(arguments);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kExitGood : kExitUsage;
    }
    return dispatch(app, options);
}

/// The arguments, last first, as the parser takes them. "-.5" would pass for an option: it becomes
/// "-0.5".
std::vector<std::string> argumentsOf(int argc, char** argv)
{
    std::vector<std::string> arguments;
    for (int i = argc - 1; i > 0; --i) {
        std::string argument = argv[i];
        if (argument.size() > 2 && argument.starts_with("-.") && argument[2] >= '0' &&
            argument[2] <= '9') {
            argument.insert(1, "0");
        }
        arguments.push_back(std::move(argument));
    }
    return arguments;
}

} // namespace

int main(int argc, char** argv)
{
    std::ios::sync_with_stdio(false);
    Options options;
    try {
        const std::unique_ptr<CLI::App> app = makeCommandLine(options);
        const ExitCode code = run(*app, options, argumentsOf(argc, argv));
        std::cout.flush();
        if (!std::cout) {
            complain("cannot write to standard output");
            return kExitUnwritable;
        }
        return code;
    } catch (const std::exception& error) {
        complain(error.what());
        return kExitUnreadable;
    }
}
