#include "fuzz/fuzzdrawing.h"
#include "vexdb/vexdbdatabase.h"

// The tables and blocks of a drawing. The fixed blocks are put in front: the tail is where the
// reader's work is, and a fuzzer would spend its time on bytes that are only copied.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CFuzzMachine machine;
    const CVexMachineScope scope(machine);
    static const std::vector<std::byte> head = [] {
        CVexDbDatabase fresh(false);
        std::vector<std::byte> file = savedDrawing(fresh);
        file.resize(kTablesAt);
        return file;
    }();
    std::vector<std::byte> file = head;
    const auto* bytes = reinterpret_cast<const std::byte*>(data);
    file.insert(file.end(), bytes, bytes + size);
    exerciseFile(file);
    return 0;
}
