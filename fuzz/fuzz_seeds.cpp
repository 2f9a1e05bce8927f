#include "fuzz/fuzzdrawing.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbpoint.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>
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

// A tail with polylines, good, and with one whose record is wrong in one way each.
class PolylineTail {
public:
    PolylineTail()
    {
        CVexDbDatabase drawing(false);
        for (const double size : {kMarker, 20.0}) {
            auto polyline = std::make_unique<CVexDbPolyline>(0, &drawing);
            polyline->AppendVertex({size, 0.0}, 0.5, -1.0, -1.0);
            polyline->AppendVertex({30.0, size / 2}, -1.5, 0.25, 0.0);
            polyline->AppendVertex({0.0, 20.0}, 0.0, 0.0, 0.75);
            polyline->AppendVertex({5.0, -10.0}, 1.0, -1.0, -1.0);
            polyline->SetClosed(size == kMarker);
            polyline->SetFill(true);
            CVexDbObjectId id;
            drawing.addEntity(polyline.release(), id);
        }
        const std::vector<std::byte> file = savedDrawing(drawing);
        m_bytes.assign(file.begin() + static_cast<std::ptrdiff_t>(kTablesAt), file.end());
        const auto marker = std::bit_cast<std::array<std::byte, sizeof kMarker>>(kMarker);
        m_first = static_cast<std::size_t>(
            std::search(m_bytes.begin(), m_bytes.end(), marker.begin(), marker.end()) -
            m_bytes.begin());
    }
    void putAll(const std::filesystem::path& folder) const
    {
        putWith(folder / "polylines", m_first, kMarker);
        putWith(folder / "polyline_more", m_first - kCountBack, std::int32_t{5});
        putWith(folder / "polyline_many", m_first - kCountBack, std::int32_t{0x7fffffff});
        putWith(folder / "polyline_negative", m_first - kCountBack, std::int32_t{-1});
        putWith(folder / "polyline_flag", m_first - 1, std::uint8_t{0xff});
        putWith(folder / "polyline_fill", m_first + 4 * kVertexSize, std::uint8_t{0x80});
        putWith(folder / "polyline_bulge", m_first + kBulgeAt,
                std::numeric_limits<double>::quiet_NaN());
        putWith(folder / "polyline_far", m_first + kVertexSize, 1e300);
        put(folder / "polyline_short", m_bytes.data(), m_first + kVertexSize + kBulgeAt + 3);
    }

private:
    static constexpr double kMarker = 40.625;
    static constexpr std::size_t kCountBack = 5; // the count, then the closed flag
    static constexpr std::size_t kBulgeAt = 20;  // x, y, tag
    static constexpr std::size_t kVertexSize = 44;

    template <class Value>
    void putWith(const std::filesystem::path& path, std::size_t at, Value value) const
    {
        std::vector<std::byte> changed = m_bytes;
        std::memcpy(changed.data() + at, &value, sizeof value);
        put(path, changed.data(), changed.size());
    }

    std::vector<std::byte> m_bytes;
    std::size_t m_first = 0; // the first vertex of the first polyline
};

void addEntities(CVexDbDatabase& drawing)
{
    CVexDbObjectId id;
    drawing.addEntity(new CVexDbLine({0.0, 0.0}, {100.0, 50.0}), id);
    drawing.addEntity(new CVexDbArc({40.0, 30.0}, 15.0, 5.5, 0.75), id);
    drawing.addEntity(new CVexDbCircle({70.0, 30.0}, 12.5), id);
    drawing.addEntity(new CVexDbBox({20.0, 20.0}, 30.0, 40.0, 0.5), id);
    drawing.addEntity(new CVexDbRect(CVexGePoint2d(1.0, 2.0), CVexGePoint2d(3.0, 4.0)), id);
    drawing.addEntity(new CVexDbPoint(CVexGePoint2d(7.0, 8.0)), id);
    auto polyline = std::make_unique<CVexDbPolyline>(0, &drawing);
    polyline->SetVertexes({{0.0, 0.0}, {30.0, 0.0}, {30.0, 20.0}}, true);
    polyline->SetBulgeAt(1, -0.5);
    polyline->SetWidthsAt(2, 0.25, 0.75);
    polyline->SetFill(true);
    drawing.addEntity(polyline.release(), id);
}

// What is typed and clicked (see fuzz_session.cpp for the bytes), scripts and the text files.
void putSession(const std::filesystem::path& corpus)
{
    put(corpus / "session/line", std::string_view("\x00\x01\x02\x03\x04\x06\x0f\x07\x04\x0a\x0f"
                                                  "\x0b\x04\x04",
                                                  14));
    put(corpus / "session/grip",
        std::string_view("\xb0\x00\x60\x01\x40\x40\x60\x01\x80\x40\x60\x04\x80\x40\x60\x01"
                         "\x50\x40\x60\x01\x80\x40\x60\x00\x80\x60\x60\x02\x80\x60",
                         30));
    put(corpus / "script/line", "LINE\n1,1\n5<90\n\nu\nredo\n");
    put(corpus / "script/grip",
        "line 10,10 50,10\n\n@click 20,10\n@press 50,10\n@release 60,20\n@key Delete\n");
    put(corpus / "commands/short", "; names\n101 LINE L ;\n2001\tUNDO U; take back\nno end\n");
    put(corpus / "messages/short", "; prompts\nSpecify start point: ;\n\nno end\nText;more;\n");
}

// Scripts of editing commands (see fuzz_editing.cpp for the bytes).
void putEditing(const std::filesystem::path& corpus)
{
    put(corpus / "editing/move", std::string_view("\x01\x50\x00\x06\x02\xa8\xab\xac", 8));
    put(corpus / "editing/trim",
        std::string_view("\x07\x50\x00\x06\x02\xa8\x50\x00\x0a\x01\xa8\x10", 12));
    put(corpus / "editing/turn",
        std::string_view("\x50\x00\x06\x02\x04\xab\xac\xb3\x03\xac\xb3\x10\x10\x11", 14));
}

// Polylines that are drawn and then edited (see fuzz_polyline.cpp for the bytes): how many vertices
// and where, how it ends, and then a polyline and an edit with what it asks, each time.
void putPolyline(const std::filesystem::path& corpus)
{
    constexpr std::string_view kZigzag("\x01\x02\x02\x03\x80\x0a\x02\x80\x0a\x0a\x80\x12\x0a"
                                       "\x80\x12\x12\x01\x00",
                                       18);
    const auto with = [&](const char* name, std::string_view edits) {
        std::string bytes(kZigzag);
        put(corpus / "polyline" / name, bytes.append(edits));
    };
    with("fillet", std::string_view("\x00\x05\x02\x00\x20\x08\x00", 7));
    with("divide", std::string_view("\x00\x00\x02\x01\x10\x01\x03\x03\x04\x04\x00", 11));
    with("break", std::string_view("\x00\x07\x02\x10\x00\x00\x08\x10\x20\x03\x03\x00", 12));
    with("trim", std::string_view("\x00\x0a\x00\x01\x08\x10\x00\x00\x0b\x00\x01\x20\x01\x00", 14));
    with("drag", std::string_view("\x00\x03\x09\x0a\x10\x02\x05\x05\x00", 9));
    with("arcs", std::string_view("\x00\x0f\x00\x05\x05\x04\x90\x07\x07\x90\x09\x05\x01\x90"
                                  "\x0b\x07\x90\x0d\x05\x00\x00",
                                  21));
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
    putSession(corpus);
    putEditing(corpus);
    putPolyline(corpus);
    PolylineTail().putAll(corpus / "reader");
    put(corpus / "linetype/dots",
        "; dots\n*DOT,. . .\nA,0,-0.2\n*DASHDOT,__ . __\nA,.5,-.25,0,-.25\n");
    return 0;
}
