#include "host/vextool/recordjson.h"

#include "host/vextool/settingsjson.h"
#include "platform/base/vextext.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <memory>

namespace {

constexpr std::size_t kMostDashes = 1000; // a drawing draws 32 of them
constexpr int kMostStatus = 0xffff;
constexpr int kMostWeight = 10000; // a stroke of 100 millimetres

std::string colorText(COLORREF color)
{
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", GetRValue(color), GetGValue(color),
                  GetBValue(color));
    return text;
}

void writeLinetype(CVexDbTableRecord& record, JsonObject& object)
{
    auto& linetype = static_cast<CVexDbLTypeTableRecord&>(record);
    object["description"] = linetype.getDescription().utf8();
    object["patternLength"] = numberOut(linetype.patternLength());
    object["dashes"] = JsonObject::array();
    for (int i = 0; i < linetype.numDashes(); ++i) {
        object["dashes"].push_back(numberOut(linetype.dashLengthAt(i)));
    }
}

void writeColor(CVexDbTableRecord& record, JsonObject& object)
{
    auto& color = static_cast<CVexDbColorTableRecord&>(record);
    object["value"] = colorText(color.getColor());
    object["naturalName"] = color.getColorName().utf8();
    object["modified"] = color.isColorModified();
}

void writeLayer(CVexDbTableRecord& record, JsonObject& object)
{
    auto& layer = static_cast<CVexDbLayerTableRecord&>(record);
    const auto* color = static_cast<CVexDbTableRecord*>(layer.getColorId().getPObject());
    const auto* linetype = static_cast<CVexDbTableRecord*>(layer.getLinetypeId().getPObject());
    object["color"] = color == nullptr ? 7 : toInteger(color->name());
    object["linetype"] = linetype == nullptr ? "CONTINUOUS" : linetype->getName().utf8();
    object["weight"] = static_cast<int>(layer.getLineWeight());
    object["off"] = layer.isOff();
    object["locked"] = layer.isLocked();
    object["status"] = layer.status();
}

void writeTextStyle(CVexDbTableRecord& record, JsonObject& object)
{
    auto& style = static_cast<CVexDbTextStyleTableRecord&>(record);
    wchar_t* face = nullptr;
    bool bold = false;
    bool italic = false;
    int charset = 0;
    int pitchAndFamily = 0;
    style.font(face, bold, italic, charset, pitchAndFamily);
    object["file"] = style.fileName().utf8();
    object["bigFile"] = style.bigFileName().utf8();
    object["face"] = CString(face).utf8();
    object["bold"] = bold;
    object["italic"] = italic;
    object["charset"] = charset;
    object["pitchAndFamily"] = pitchAndFamily;
    object["trueType"] = style.isTTF();
    object["vertical"] = style.isVertical();
    object["mirrorX"] = style.isMirrorX();
    object["mirrorY"] = style.isMirrorY();
    object["size"] = numberOut(style.textSize());
    object["priorSize"] = numberOut(style.priorSize());
    object["obliquing"] = numberOut(style.obliquingAngle());
    object["widthFactor"] = numberOut(style.widthFactor());
}

void writeSymbol(CVexDbTableRecord& record, JsonObject& object)
{
    auto& symbol = static_cast<CVexDbSymbolTableRecord&>(record);
    const CVexGePoint3d base = symbol.GetBase3();
    object["base"] = {numberOut(base.x), numberOut(base.y), numberOut(base.z)};
    object["points"] = JsonObject::array();
    for (unsigned long i = 0; i < symbol.NumPoints(); ++i) {
        const CVexDbSymPoint point = symbol.GetPointAt(i);
        object["points"].push_back({numberOut(point.x), numberOut(point.y), point.flag});
    }
}

/// The record of that name, made when the table has none.
template <class Record, class Table>
Record& findOrAdd(CVexDbDatabase& database, Table& table, const CString& name)
{
    Record* record = nullptr;
    if (!table.getRecord(name, record, false)) {
        auto fresh = std::make_unique<Record>(&database);
        record = fresh.get();
        record->setName(name);
        record->setOwnerId(table.objectId());
        table.add(fresh.release());
    }
    return *record;
}

void makeLinetype(CVexDbDatabase& database, JsonFields& fields)
{
    const CString name = fields.name("name");
    const CString description = fields.text("description", "");
    std::vector<double> dashes;
    double total = 0.0;
    for (const JsonObject& dash : fields.list("dashes")) {
        dashes.push_back(fields.numberIn(dash, "dashes"));
        total += std::abs(dashes.back());
    }
    const double length = fields.number("patternLength", total);
    if (dashes.size() > kMostDashes) {
        fields.fail("\"dashes\" has more than 1000 numbers");
    }
    if (!fields.done()) {
        return;
    }
    auto& record = findOrAdd<CVexDbLTypeTableRecord>(database, database.linetypes(), name);
    record.setDescription(description);
    record.setNumDashes(static_cast<int>(dashes.size()));
    for (std::size_t i = 0; i < dashes.size(); ++i) {
        record.setDashLengthAt(static_cast<int>(i), dashes[i]);
    }
    record.setPatternLength(length);
}

/// The colour of that index, made from the palette when the drawing has none.
CVexDbColorTableRecord& colorRecord(CVexDbDatabase& database, int index)
{
    const CString name = CString::fromUtf8(std::to_string(index));
    const bool isNew = !database.colors().has(name);
    auto& record = findOrAdd<CVexDbColorTableRecord>(database, database.colors(), name);
    if (isNew) {
        record.setColor(_getColorValueByIndex(index));
    }
    return record;
}

void makeColor(CVexDbDatabase& database, JsonFields& fields)
{
    const CString name = fields.name("name");
    const int index = toInteger(name.str());
    if (index < 0 || index > CVexDbColorTableRecord::kByLayerIndex ||
        name.utf8() != std::to_string(index)) {
        fields.fail("a colour's \"name\" is its index from 0 to 256");
    }
    const unsigned long value =
        fields.color("value", _getColorValueByIndex(std::clamp(index, 0, 256)));
    const CString naturalName = fields.text("naturalName", "", 9);
    const bool modified = fields.flag("modified", false);
    if (fields.done()) {
        CVexDbColorTableRecord& record = colorRecord(database, index);
        record.setColor(value);
        record.setColorName(naturalName);
        record.setColorModified(modified);
    }
}

void makeLayer(CVexDbDatabase& database, JsonFields& fields)
{
    const CString name = fields.name("name");
    const int color = fields.integer("color", 7, 0, CVexDbColorTableRecord::kByLayerIndex);
    const CString linetypeName = fields.text("linetype", "CONTINUOUS");
    const int weight = fields.integer("weight", 0, -3, kMostWeight);
    const int status = fields.integer("status", 0, 0, kMostStatus);
    const bool off = fields.flag("off", (status & 1) != 0);
    const bool locked = fields.flag("locked", (status & 2) != 0);
    CVexDbObjectId linetype;
    if (!database.linetypes().getAt(linetypeName, linetype, false)) {
        fields.fail("there is no linetype \"" + linetypeName.utf8() + "\"");
    }
    if (!fields.done()) {
        return;
    }
    auto& record = findOrAdd<CVexDbLayerTableRecord>(database, database.layers(), name);
    record.setColorId(colorRecord(database, color).objectId());
    record.setLinetypeId(linetype);
    record.setLineWeight(static_cast<VexDb::LineWeight>(weight));
    record.setStatus(static_cast<std::uint16_t>(status));
    record.setIsOff(off);
    record.setIsLocked(locked);
}

void makeTextStyle(CVexDbDatabase& database, JsonFields& fields)
{
    // A copy outside of the table takes the fields, so that a wrong one changes nothing.
    const CString name = fields.name("name");
    CVexDbTextStyleTableRecord style(&database);
    CVexDbTextStyleTableRecord* before = nullptr;
    if (database.textStyles().getRecord(name, before, false)) {
        style = *before;
    }
    style.setName(name);
    style.setFileName(fields.text("file", style.fileName().utf8().c_str()));
    style.setBigFileName(fields.text("bigFile", style.bigFileName().utf8().c_str()));
    const CString face = fields.text("face", "", 31);
    const bool bold = fields.flag("bold", false);
    const bool italic = fields.flag("italic", false);
    const int charset = fields.integer("charset", 0, 0, 255);
    style.setFont(face, bold, italic, charset, fields.integer("pitchAndFamily", 0, 0, 255));
    style.setIsTTF(fields.flag("trueType", style.isTTF()));
    style.setIsVertical(fields.flag("vertical", style.isVertical()));
    style.setMirrorX(fields.flag("mirrorX", style.isMirrorX()));
    style.setMirrorY(fields.flag("mirrorY", style.isMirrorY()));
    style.setTextSize(fields.number("size", style.textSize()));
    style.setPriorSize(fields.number("priorSize", style.priorSize()));
    style.setObliquingAngle(fields.number("obliquing", style.obliquingAngle()));
    style.setWidthFactor(fields.number("widthFactor", style.widthFactor()));
    if (fields.done()) {
        findOrAdd<CVexDbTextStyleTableRecord>(database, database.textStyles(), name) = style;
    }
}

CVexDbSymPoint symbolPoint(const JsonObject& triple, JsonFields& fields)
{
    if (!triple.is_array() || triple.size() != 3) {
        fields.fail("\"points\" is not made of triples [x, y, flag]");
        return {};
    }
    const double flag = fields.numberIn(triple[2], "points");
    if (!(flag >= 0.0 && flag <= 255.0)) {
        fields.fail("a flag of \"points\" is not from 0 to 255");
        return {};
    }
    return {{fields.numberIn(triple[0], "points"), fields.numberIn(triple[1], "points")},
            static_cast<std::uint8_t>(flag)};
}

void makeSymbol(CVexDbDatabase& database, JsonFields& fields)
{
    auto symbol = std::make_unique<CVexDbSymbolTableRecord>(&database);
    const CString name = fields.name("name");
    symbol->setName(name);
    symbol->setOwnerId(database.symbols().objectId());
    const JsonObject& base = fields.list("base");
    if (base.size() == 3) {
        symbol->SetBase(fields.numberIn(base[0], "base"), fields.numberIn(base[1], "base"),
                        fields.numberIn(base[2], "base"));
    } else if (!base.empty()) {
        fields.fail("\"base\" is not a triple [x, y, z]");
    }
    for (const JsonObject& triple : fields.list("points")) {
        symbol->AppendPoint(symbolPoint(triple, fields));
    }
    if (fields.done()) {
        database.symbols().add(symbol.release());
    }
}

void makeBlock(CVexDbDatabase& database, JsonFields& fields)
{
    const CString name = fields.name("name");
    if (!fields.done()) {
        return;
    }
    auto& record = findOrAdd<CVexDbBlockTableRecord>(database, database.blocks(), name);
    if (record.displayRecord() == nullptr) {
        record.initDisplayRec();
    }
    database.blocks().SetCurentSpace(record.name());
}

struct RecordRow {
    const char* kind;
    void (*make)(CVexDbDatabase&, JsonFields&);
};

constexpr std::array kRecords{
    RecordRow{"settings", makeSettings}, RecordRow{"dimsettings", makeDimSettings},
    RecordRow{"plane", makePlane},       RecordRow{"project", makeProject},
    RecordRow{"linetype", makeLinetype}, RecordRow{"color", makeColor},
    RecordRow{"layer", makeLayer},       RecordRow{"textstyle", makeTextStyle},
    RecordRow{"symbol", makeSymbol},     RecordRow{"block", makeBlock},
    RecordRow{"current", makeCurrent},
};

} // namespace

JsonObject recordObject(const char* kind, CVexDbTableRecord& record)
{
    JsonObject object;
    object["kind"] = kind;
    object["name"] = record.getName().utf8();
    object["id"] = record.hardObjectId();
    return object;
}

void writeRecords(CVexDbDatabase& database, const std::function<void(const JsonObject&)>& sink)
{
    const auto writeTable = [&sink](auto& table, const char* kind, auto write) {
        for (const auto& [name, record] : table.records()) {
            if (!record->isErased()) {
                JsonObject object = recordObject(kind, *record);
                write(*record, object);
                sink(object);
            }
        }
    };
    sink(settingsObject(database));
    sink(dimSettingsObject(database));
    sink(planeObject(database));
    sink(projectObject(database));
    writeTable(database.linetypes(), "linetype", writeLinetype);
    writeTable(database.colors(), "color", writeColor);
    writeTable(database.layers(), "layer", writeLayer);
    writeTable(database.textStyles(), "textstyle", writeTextStyle);
    writeTable(database.symbols(), "symbol", writeSymbol);
}

bool makeRecord(CVexDbDatabase& database, const std::string& kind, JsonFields& fields)
{
    const auto row = std::ranges::find(kRecords, kind, &RecordRow::kind);
    if (row == kRecords.end()) {
        return false;
    }
    row->make(database, fields);
    return true;
}
