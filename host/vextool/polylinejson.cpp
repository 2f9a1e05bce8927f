#include "host/vextool/polylinejson.h"

#include "vexdb/dbobject/dbentity/vexdbpolyline.h"

#include <cmath>
#include <limits>

namespace {

JsonObject vertexOut(const CVexGePolyline2d& chain, unsigned index)
{
    JsonObject vertex;
    vertex["point"] = pointOut(chain.vertices()[index]);
    const double bulge = chain.getBulgeAt(index);
    if (bulge != 0.0 || std::signbit(bulge)) { // a mirrored straight segment has -0.0
        vertex["bulge"] = numberOut(bulge);
    }
    const double startWidth = chain.startWidths()[index];
    const double endWidth = chain.endWidths()[index];
    if (startWidth != CVexGePolyline2d::kNoWidth || endWidth != CVexGePolyline2d::kNoWidth) {
        vertex["startWidth"] = numberOut(startWidth);
        vertex["endWidth"] = numberOut(endWidth);
    }
    return vertex;
}

void appendVertex(CVexGePolyline2d& chain, const JsonObject& vertex, JsonFields& fields)
{
    if (!vertex.is_object()) {
        fields.fail("\"vertices\" is not made of objects");
        return;
    }
    JsonFields members(vertex);
    const CVexGePoint2d point = members.point("point");
    const double bulge = members.number("bulge", 0.0);
    const double startWidth = members.number("startWidth", CVexGePolyline2d::kNoWidth);
    chain.appendVertex(point, bulge, startWidth,
                       members.number("endWidth", CVexGePolyline2d::kNoWidth));
    if (!members.done()) {
        fields.fail("in a vertex: " + members.fault());
    }
}

} // namespace

void writePolyline(CVexDbEntity& entity, JsonObject& object)
{
    auto& polyline = static_cast<CVexDbPolyline&>(entity);
    JsonObject& vertices = object["vertices"] = JsonObject::array();
    for (unsigned i = 0; i < polyline.NumVerts(); ++i) {
        vertices.push_back(vertexOut(polyline.gePolyline(), i));
    }
    object["closed"] = polyline.IsClosed();
    object["fill"] = polyline.IsFill();
    object["fillMode"] = polyline.FillMode();
}

std::unique_ptr<CVexDbEntity> makePolyline(JsonFields& fields, CVexDbDatabase* database)
{
    auto polyline = std::make_unique<CVexDbPolyline>(0, database);
    CVexGePolyline2d chain;
    if (!fields.has("vertices")) {
        fields.fail("\"vertices\" is missing");
    }
    for (const JsonObject& vertex : fields.list("vertices")) {
        appendVertex(chain, vertex, fields);
    }
    if (fields.flag("closed", false) && chain.numVerts() > 0) {
        const unsigned last = chain.numVerts() - 1;
        const double bulge = chain.getBulgeAt(last);
        chain.setClosed(true);
        chain.setBulgeAt(last, bulge); // closing computes one of its own
    }
    polyline->SetGeometry(chain);
    polyline->SetFill(fields.flag("fill", false));
    using Mode = std::numeric_limits<int>;
    polyline->SetFillMode(fields.integer("fillMode", 0, Mode::min(), Mode::max()));
    return polyline;
}
