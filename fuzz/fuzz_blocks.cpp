#include "fuzz/fuzzdrawing.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>

// The fixed blocks and the plane, without the picture, in front of a drawing's own tables: hostile
// settings meet what draws and measures by them.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CFuzzMachine machine;
    const CVexMachineScope scope(machine);
    static const std::vector<std::byte> fresh = [] {
        CVexDbDatabase drawing(false);
        return savedDrawing(drawing);
    }();
    std::vector<std::byte> file = fresh;
    const auto* bytes = reinterpret_cast<const std::byte*>(data);
    const std::size_t before = std::min(size, kThumbnailAt);
    const std::size_t room = kTablesAt - kThumbnailAt - kThumbnailSize;
    std::copy_n(bytes, before, file.begin());
    std::copy_n(bytes + before, std::min(size - before, room),
                file.begin() + static_cast<std::ptrdiff_t>(kThumbnailAt + kThumbnailSize));
    exerciseFile(file);
    return 0;
}
