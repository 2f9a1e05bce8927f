#include "host/vextool/commands.h"
#include "host/vextool/drawingio.h"
#include "host/vextool/drawingjson.h"
#include "host/vextool/picturing.h"
#include "host/vextool/progress.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>

namespace {

// Editors of some systems begin a text with this mark.
constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";

void complainOfLine(const std::string& name, int number, const std::string& wrong)
{
    complain(name + ", line " + std::to_string(number) + ": " + wrong);
}

// Makes every line's object; the first bad line ends it with its number and the reason.
bool makeFrom(std::istream& input, const std::string& name, CVexDbDatabase& database)
{
    std::string line;
    for (int number = 1; std::getline(input, line); ++number) {
        if (number == 1 && line.starts_with(kByteOrderMark)) {
            line.erase(0, kByteOrderMark.size());
        }
        if (line.find_first_not_of(" \t\r") == std::string::npos) {
            continue;
        }
        if (const std::string wrong = makeObject(database, line); !wrong.empty()) {
            complainOfLine(name, number, wrong);
            return false;
        }
    }
    if (input.bad()) { // a folder opens, but cannot be read
        complain("cannot read '" + name + "': " + std::strerror(errno));
    }
    return !input.bad();
}

ExitCode fill(CVexDbDatabase& database, const std::string& from)
{
    if (from == "-") {
        return makeFrom(std::cin, "standard input", database) ? kExitGood : kExitUnreadable;
    }
    std::ifstream input(from);
    if (!input) {
        complain("cannot read '" + from + "': " + std::strerror(errno));
        return kExitUnreadable;
    }
    return makeFrom(input, from, database) ? kExitGood : kExitUnreadable;
}

void selectSpace(CVexDbDatabase& database)
{
    const bool paper = database.settings().m_nCurrentSpace == 1;
    database.blocks().SetCurentSpace(paper ? CVexDbBlockTable::kPaperSpace
                                           : CVexDbBlockTable::kModelSpace);
}

} // namespace

ExitCode runNew(const Options& options)
{
    ToolMachine machine(options.quiet);
    const CVexMachineScope scope(machine);
    const PictureBackend backend; // a saved drawing carries its small picture
    CVexDbDatabase database(options.paperSpace);
    _gpDatabase = &database;
    const Progress progress("making " + options.output, options.quiet);
    if (!options.from.empty()) {
        if (const ExitCode code = fill(database, options.from); code != kExitGood) {
            return code;
        }
        selectSpace(database);
    }
    return database.SaveAs(CString::fromUtf8(options.output)) ? kExitGood : kExitUnwritable;
}
