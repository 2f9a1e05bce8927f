#include "host/vextool/entityjson.h"

#include "host/vextool/polylinejson.h"
#include "host/vextool/xdatajson.h"
#include "vexdb/dbobject/dbentity/vexdbarc.h"
#include "vexdb/dbobject/dbentity/vexdbbox.h"
#include "vexdb/dbobject/dbentity/vexdbcircle.h"
#include "vexdb/dbobject/dbentity/vexdbline.h"
#include "vexdb/dbobject/dbentity/vexdbpoint.h"
#include "vexdb/dbobject/dbentity/vexdbrect.h"
#include "vexdb/vexdbdatabase.h"

#include <algorithm>
#include <array>
#include <memory>

namespace {

constexpr int kLeastWeight = -3;   // the three special weights are below 0
constexpr int kMostWeight = 10000; // a stroke of 100 millimetres

// Shapes: what a kind of entity adds to the common fields. A further kind is a further row.
struct ShapeRow {
    VexDb::ClassType type;
    const char* kind;
    void (*write)(CVexDbEntity&, JsonObject&);
    std::unique_ptr<CVexDbEntity> (*make)(JsonFields&, CVexDbDatabase*);
};

void writeLine(CVexDbEntity& entity, JsonObject& object)
{
    auto& line = static_cast<CVexDbLine&>(entity);
    object["start"] = pointOut(line.StartPoint());
    object["end"] = pointOut(line.EndPoint());
}

std::unique_ptr<CVexDbEntity> makeLine(JsonFields& fields, CVexDbDatabase* database)
{
    auto line = std::make_unique<CVexDbLine>(database);
    const CVexGePoint2d start = fields.point("start");
    line->set(start, fields.point("end"));
    return line;
}

void writeArc(CVexDbEntity& entity, JsonObject& object)
{
    auto& arc = static_cast<CVexDbArc&>(entity);
    object["center"] = pointOut(arc.Center());
    object["radius"] = numberOut(arc.Radius());
    object["startAngle"] = numberOut(arc.StartAngle());
    object["endAngle"] = numberOut(arc.EndAngle());
}

std::unique_ptr<CVexDbEntity> makeArc(JsonFields& fields, CVexDbDatabase* database)
{
    auto arc = std::make_unique<CVexDbArc>(database);
    const CVexGePoint2d center = fields.point("center");
    const double radius = fields.number("radius");
    const double start = fields.number("startAngle");
    arc->set(center, radius, start, fields.number("endAngle"));
    return arc;
}

void writeCircle(CVexDbEntity& entity, JsonObject& object)
{
    auto& circle = static_cast<CVexDbCircle&>(entity);
    object["center"] = pointOut(circle.Center());
    object["radius"] = numberOut(circle.Radius());
}

std::unique_ptr<CVexDbEntity> makeCircle(JsonFields& fields, CVexDbDatabase* database)
{
    auto circle = std::make_unique<CVexDbCircle>(database);
    circle->setCenter(fields.point("center"));
    circle->setRadius(fields.number("radius"));
    return circle;
}

void writeBox(CVexDbEntity& entity, JsonObject& object)
{
    auto& box = static_cast<CVexDbBox&>(entity);
    object["base"] = pointOut(box.BasePoint());
    object["width"] = numberOut(box.Width());
    object["height"] = numberOut(box.Height());
    object["rotation"] = numberOut(box.Rotation());
}

std::unique_ptr<CVexDbEntity> makeBox(JsonFields& fields, CVexDbDatabase* database)
{
    auto box = std::make_unique<CVexDbBox>(database);
    const CVexGePoint2d base = fields.point("base");
    const double width = fields.number("width");
    box->Set(base, width, fields.number("height"), 0.0);
    box->SetRotation(fields.number("rotation", 0.0));
    return box;
}

void writeRectangle(CVexDbEntity& entity, JsonObject& object)
{
    auto& rect = static_cast<CVexDbRect&>(entity);
    object["leftTop"] = pointOut(rect.LeftTop());
    object["rightBottom"] = pointOut(rect.RightBottom());
}

std::unique_ptr<CVexDbEntity> makeRectangle(JsonFields& fields, CVexDbDatabase* database)
{
    auto rect = std::make_unique<CVexDbRect>(database);
    rect->setLeftTop(fields.point("leftTop"));
    rect->setRightBottom(fields.point("rightBottom"));
    return rect;
}

void writePoint(CVexDbEntity& entity, JsonObject& object)
{
    auto& marker = static_cast<CVexDbPoint&>(entity);
    object["position"] = pointOut(marker.Position());
    object["size"] = numberOut(marker.Size());
    object["fill"] = marker.FillMode();
    object["flag"] = marker.GetFlag();
}

std::unique_ptr<CVexDbEntity> makePoint(JsonFields& fields, CVexDbDatabase* database)
{
    auto marker = std::make_unique<CVexDbPoint>(database);
    marker->SetPosition(fields.point("position"));
    marker->SetSize(fields.number("size", 0.0));
    marker->SetFillMode(fields.flag("fill", false));
    marker->SetFlag(static_cast<std::uint8_t>(fields.integer("flag", 0, 0, 255)));
    return marker;
}

constexpr std::array kShapes{
    ShapeRow{VexDb::kArc, "arc", writeArc, makeArc},
    ShapeRow{VexDb::kCircle, "circle", writeCircle, makeCircle},
    ShapeRow{VexDb::kLine, "line", writeLine, makeLine},
    ShapeRow{VexDb::kPolyline, "polyline", writePolyline, makePolyline},
    ShapeRow{VexDb::kBox, "box", writeBox, makeBox},
    ShapeRow{VexDb::kRectangle, "rectangle", writeRectangle, makeRectangle},
    ShapeRow{VexDb::kPoint, "point", writePoint, makePoint},
};

// Puts the common fields into an entity that is not in the drawing yet. The colour waits: setting
// one makes its record.
void bindProperties(CVexDbEntity& entity, JsonFields& fields)
{
    if (fields.has("layer") && !entity.setLayer(fields.text("layer", ""))) {
        fields.fail("there is no layer \"" + fields.text("layer", "").utf8() + "\"");
    }
    if (fields.has("linetype")) {
        const CString name = fields.text("linetype", "");
        if (!entity.database()->linetypes().has(name)) {
            fields.fail("there is no linetype \"" + name.utf8() + "\"");
        } else {
            entity.setLineType(name, true);
        }
    }
    const int weight = fields.integer("weight", -1, kLeastWeight, kMostWeight);
    entity.setLineWeight(static_cast<VexDb::LineWeight>(weight), true);
    if (fields.flag("invisible", false)) {
        entity.setInVisable();
    }
}

} // namespace

JsonObject entityObject(CVexDbEntity& entity)
{
    const auto row = std::ranges::find(kShapes, entity.classType(), &ShapeRow::type);
    const auto* linetype = static_cast<const CVexDbTableRecord*>(entity.LineTypeId().getPObject());
    JsonObject object;
    object["kind"] = row != kShapes.end()
                         ? row->kind
                         : "class " + std::to_string(static_cast<int>(entity.classType()));
    object["id"] = entity.hardObjectId();
    object["layer"] = entity.Layer().utf8();
    object["linetype"] = linetype == nullptr ? "ByLayer" : linetype->getName().utf8();
    object["color"] = entity.Color() == nullptr ? CVexDbColorTableRecord::kByLayerIndex
                                                : entity.Color()->colorIndex();
    object["weight"] = static_cast<int>(entity.LineWeight());
    if ((entity.status() & kStatusInvisible) != 0) {
        object["invisible"] = true;
    }
    if (row != kShapes.end()) {
        row->write(entity, object);
    }
    if (entity.xData() != nullptr) {
        object["xdata"] = xdataOut(entity.xData());
    }
    return object;
}

bool makeEntity(CVexDbDatabase& database, const std::string& kind, JsonFields& fields)
{
    const auto row = std::ranges::find(kShapes, kind, &ShapeRow::kind);
    if (row == kShapes.end()) {
        return false;
    }
    std::unique_ptr<CVexDbEntity> entity = row->make(fields, &database);
    bindProperties(*entity, fields);
    const int color = fields.integer("color", CVexDbColorTableRecord::kByLayerIndex, 0,
                                     CVexDbColorTableRecord::kByLayerIndex);
    entity->SetXData(xdataIn(fields));
    if (fields.done()) {
        entity->setColor(color, true);
        CVexDbObjectId id;
        database.addEntity(entity.release(), id);
    }
    return true;
}
