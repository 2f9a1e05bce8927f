#include "fuzz/fuzzdrawing.h"
#include "vexdb/dbobject/vexdblinetypefile.h"
#include "vexdb/vexdbdatabase.h"

// A linetype file, loaded into a drawing that is then checked, saved and read.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CFuzzMachine machine;
    const CVexMachineScope scope(machine);
    CVexDbDatabase drawing(false);
    const auto* bytes = reinterpret_cast<const std::byte*>(data);
    std::vector<CString> messages;
    loadLinetypes(std::vector<std::byte>(bytes, bytes + size), drawing, messages);
    exerciseDrawing(drawing);
    requireSavesWhole(drawing);
    return 0;
}
