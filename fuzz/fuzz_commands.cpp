#include "fuzz/fuzzfilelayer.h"
#include "vexdb/dbcommand/vexcommandhandler.h"

// A command file, as a handler finds it beside the program.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    COneFileMachine machine(data, size);
    const CVexMachineScope scope(machine);
    CVexCommandHandler handler(nullptr);
    const int count = handler.commandCount();
    require(count >= 0 && handler.LoadCommandFrom() == count, "names are not taken over");
    const CString text = CString::fromUtf8(std::string(reinterpret_cast<const char*>(data), size));
    const unsigned long number = handler.getCommandId(text);
    require(handler.addCommand(text) >= count, "names only accumulate");
    require(number == 0 || handler.getCommandId(text) == number, "the first number stays");
    return 0;
}
