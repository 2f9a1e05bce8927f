#include "fuzz/fuzzfilelayer.h"
#include "platform/headless/vexheadless.h"
#include "vexdb/dbcommand/vexprompthandler.h"

// A message file.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    COneFileMachine machine(data, size);
    const CVexMachineScope scope(machine);
    CVexHeadlessBackend backend;
    CVexBackend::install(&backend);
    CVexPromptHandler prompts(L"vexdb.msg");
    const int count = prompts.count();
    require(count >= 1 && prompts.getPrompt(0).IsEmpty(), "entry 0 is empty");
    for (int id = -1; id <= count; ++id) {
        require(prompts.getPrompt(id).Find(L';') < 0, "a prompt is cut at its semicolon");
    }
    require(prompts.LoadPrompt(L"again.msg") == 2 * count - 1, "lines are appended");
    return 0;
}
