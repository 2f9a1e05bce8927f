#include "fuzz/fuzzdrawing.h"

#include "platform/headless/vexrecordingdc.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/vexdbdatabase.h"

#include <cstdio>
#include <cstdlib>

// Read by the sanitizer when it starts: deep allocation traces would take most of the time.
extern "C" const char* __asan_default_options();

const char* __asan_default_options()
{
    return "malloc_context_size=4:quarantine_size_mb=8";
}

void require(bool holds, const char* what)
{
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
        std::abort();
    }
}

void requireWhole(CVexDbDatabase& drawing)
{
    for (const CString& fault : drawing.selfCheck()) {
        require(false, fault.utf8().c_str());
    }
}

namespace {

bool readFile(CVexDbDatabase& drawing, const std::vector<std::byte>& bytes)
{
    CMemFile file(bytes, CString(L"fuzz.zpl"));
    CArchive archive(&file, CArchive::load);
    return drawing.Read(archive);
}

} // namespace

std::vector<std::byte> savedDrawing(CVexDbDatabase& drawing)
{
    CMemFile file{CString(L"fuzz.zpl")};
    CArchive archive(&file, CArchive::store);
    require(drawing.Save(archive) && file.Close(), "what was read can be saved");
    return file.bytes();
}

void exerciseDrawing(CVexDbDatabase& drawing)
{
    requireWhole(drawing);
    CVexRecordingDC dc;
    CVexDbDisplayTableRecord& view = *drawing.displays().getCurrentRecord();
    view.Draw(&dc);
    view.ZoomExt();
    CVexDbIdSet picked;
    view.selectEntityByCross(CVexGePoint2d(0.0, 0.0), CVexGePoint2d(100.0, 100.0), picked);
    for (const CVexDbObjectId& id : *view.displayedIdSet()) {
        auto& entity = static_cast<CVexDbEntity&>(*id.getPObject());
        entity.Draw(&dc);
        entity.getProperty();
    }
    requireWhole(drawing);
}

void requireSavesWhole(CVexDbDatabase& drawing)
{
    CVexDbDatabase again(false);
    require(readFile(again, savedDrawing(drawing)), "what was saved reads whole");
    requireWhole(again);
}

void exerciseFile(const std::vector<std::byte>& file)
{
    CVexDbObject::NextHardID = 0;
    CVexDbDatabase drawing(false);
    const bool good = readFile(drawing, file);
    require(good || drawing.lastReport().faultCount > 0, "a refused file has a fault");
    exerciseDrawing(drawing);
    requireSavesWhole(drawing);
}
