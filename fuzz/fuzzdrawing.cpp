#include "fuzz/fuzzdrawing.h"

#include "platform/headless/vexrecordingdc.h"
#include "vexdb/dbcommand/vexentityedits.h"
#include "vexdb/dbcommand/vexpolylineedits.h"
#include "vexdb/dbcommand/vexundohandler.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbpolyline.h"
#include "vexdb/dbobject/vexdbdisplaytablerecord.h"
#include "vexdb/vexdbdatabase.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

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

namespace {

constexpr std::size_t kMostEdited = 3;  // polylines
constexpr unsigned kMostVertices = 200; // of those
constexpr unsigned kMostOffsetVertices = 20;

void edit(CVexDbPolyline& polyline)
{
    require(polyline.vertexProperties(polyline.NumVerts() / 2).size() > 0, "a polyline has rows");
    flipRecorded(polyline, 0);
    polyline.DivideSegment(3, static_cast<int>(polyline.NumVerts()) - 1, false);
    polyline.Fillet(1, 2.0, 0.1);
    polyline.Fillet(0.5);
    openRecorded(polyline);
    closeRecorded(polyline);
    changeStartRecorded(polyline, 1);
    reverseRecorded(polyline);
    if (polyline.NumVerts() < kMostOffsetVertices) {
        std::list<CVexDbPolyline*> offsets;
        polyline.Offset({1.0, 2.0}, offsets, 3.0, true);
        for (CVexDbPolyline* made : offsets) {
            delete made;
        }
    }
    CVexDbLine cutter({-50.0, 7.0}, {90.0, 11.0});
    std::vector<CVexDbEntity*> cutters = {&cutter};
    CVexGePoint2d at(20.0, 5.0);
    polyline.Extend(at, cutters, kGeEpsilon);
    addRecorded(polyline.Trim(at, cutters, kGeEpsilon));
    polyline.Explode();
}

} // namespace

void editPolylines(CVexDbDatabase& drawing)
{
    std::vector<CVexDbPolyline*> polylines;
    for (const CVexDbObjectId& id : *drawing.displays().getCurrentRecord()->displayedIdSet()) {
        CVexDbObject* const object = id.getPObject();
        if (object->classType() == VexDb::kPolyline && polylines.size() < kMostEdited) {
            polylines.push_back(static_cast<CVexDbPolyline*>(object));
        }
    }
    for (CVexDbPolyline* polyline : polylines) {
        if (polyline->NumVerts() < kMostVertices) {
            edit(*polyline);
        }
    }
    requireWhole(drawing);
    while (drawing.undoHandler().Undo()) {
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
    editPolylines(drawing);
}
