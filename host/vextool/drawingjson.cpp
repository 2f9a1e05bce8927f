#include "host/vextool/drawingjson.h"

#include "host/vextool/entityjson.h"
#include "host/vextool/recordjson.h"
#include "host/vextool/settingsjson.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/vexdbdatabase.h"

#include <optional>

namespace {

/// No object of a drawing is nested deeper; a text of a million brackets would exhaust the stack.
constexpr int kDeepest = 8;

void writeBlocks(CVexDbDatabase& database, const std::function<void(const JsonObject&)>& sink)
{
    for (const auto& [name, record] : database.blocks().records()) {
        if (record->isErased()) {
            continue;
        }
        auto& block = static_cast<CVexDbBlockTableRecord&>(*record);
        sink(recordObject("block", block));
        for (auto at = block.entitySet()->begin(); at != block.entitySet()->end(); ++at) {
            if (!at.object()->isErased()) {
                sink(entityObject(static_cast<CVexDbEntity&>(*at.object())));
            }
        }
    }
}

std::optional<JsonObject> parse(const std::string& line, std::string& wrong)
{
    const auto keep = [&wrong](int depth, JsonObject::parse_event_t, JsonObject&) {
        if (depth > kDeepest) {
            wrong = "nested too deeply";
        }
        return depth <= kDeepest;
    };
    JsonObject object = JsonObject::parse(line, keep, false);
    if (wrong.empty() && !object.is_object()) {
        wrong = object.is_discarded() ? "not JSON" : "a JSON object is expected";
    }
    return wrong.empty() ? std::optional(std::move(object)) : std::nullopt;
}

} // namespace

void writeObjects(CVexDbDatabase& database, const std::function<void(const JsonObject&)>& sink)
{
    writeRecords(database, sink);
    writeBlocks(database, sink);
    sink(currentObject(database));
}

std::string makeObject(CVexDbDatabase& database, const std::string& line)
{
    std::string wrong;
    const std::optional<JsonObject> object = parse(line, wrong);
    if (!object) {
        return wrong;
    }
    JsonFields fields(*object);
    const std::string kind = fields.text("kind", "").utf8();
    if (kind.empty()) {
        return "\"kind\" is missing or no text";
    }
    if (!makeRecord(database, kind, fields) && !makeEntity(database, kind, fields)) {
        return "there is no kind \"" + kind + "\"";
    }
    return fields.fault();
}
