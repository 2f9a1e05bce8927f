#include "fuzz/fuzzsession.h"
#include "vexdb/dbcommand/vexscriptplayer.h"

#include <sstream>

// A script, played to its end whatever is refused; the drawing is checked after every command.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr std::size_t kMostScript = 512;

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CFuzzMachine machine;
    const CVexMachineScope scope(machine);
    CFuzzProgram program;
    std::istringstream text(
        std::string(reinterpret_cast<const char*>(data), std::min(size, kMostScript)));
    std::vector<CString> lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(CString::fromUtf8(line));
    }
    {
        CVexScriptPlayer player(*program.session);
        player.setKeepGoing(true);
        player.setEcho([&](const CString&) { requireWhole(*program.database); });
        player.play(lines);
        require(player.isOver(), "a script ends");
    }
    program.finish();
    return 0;
}
