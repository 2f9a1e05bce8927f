#include "fuzz/fuzzdrawing.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbpoint.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>

// Writes the seeds of the fuzz targets: small good files, from which a fuzzer starts.

namespace {

void put(const std::filesystem::path& path, const std::byte* bytes, std::size_t size)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes), static_cast<std::streamsize>(size));
}

void put(const std::filesystem::path& path, std::string_view text)
{
    put(path, reinterpret_cast<const std::byte*>(text.data()), text.size());
}

void putTail(const std::filesystem::path& path, CVexDbDatabase& drawing)
{
    const std::vector<std::byte> file = savedDrawing(drawing);
    put(path, file.data() + kTablesAt, file.size() - kTablesAt);
}

void putBlocks(const std::filesystem::path& path, CVexDbDatabase& drawing)
{
    std::vector<std::byte> file = savedDrawing(drawing);
    const auto picture = file.begin() + static_cast<std::ptrdiff_t>(kThumbnailAt);
    file.erase(picture, picture + static_cast<std::ptrdiff_t>(kThumbnailSize));
    put(path, file.data(), kTablesAt - kThumbnailSize);
}

void addEntities(CVexDbDatabase& drawing)
{
    CVexDbObjectId id;
    drawing.addEntity(new CVexDbLine({0.0, 0.0}, {100.0, 50.0}), id);
    drawing.addEntity(new CVexDbBox({20.0, 20.0}, 30.0, 40.0, 0.5), id);
    drawing.addEntity(new CVexDbRect(CVexGePoint2d(1.0, 2.0), CVexGePoint2d(3.0, 4.0)), id);
    drawing.addEntity(new CVexDbPoint(CVexGePoint2d(7.0, 8.0)), id);
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        return 2;
    }
    CFuzzMachine machine;
    const CVexMachineScope scope(machine);
    const std::filesystem::path corpus = arguments[1];
    CVexDbDatabase fresh(false);
    putTail(corpus / "reader/fresh", fresh);
    putBlocks(corpus / "blocks/fresh", fresh);
    CVexDbDatabase filled(true);
    addEntities(filled);
    filled.settings().m_ptViewMax.set(100.0, 80.0);
    filled.settings().m_bGridVisible = true;
    putTail(corpus / "reader/entities", filled);
    putBlocks(corpus / "blocks/view", filled);
    put(corpus / "linetype/dashed", "*DASHED,__ __ __\nA,0.5,-0.25\n");
    put(corpus / "linetype/dots",
        "; dots\n*DOT,. . .\nA,0,-0.2\n*DASHDOT,__ . __\nA,.5,-.25,0,-.25\n");
    return 0;
}
