#include "host/vextool/drawinginfo.h"

#include "host/vextool/picturing.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/vexdbdatabase.h"

#include <sstream>

namespace {

JsonObject headerInfo(CVexDbDatabase& database)
{
    const VexDbFileHeader_tag& header = *database.FileInfo();
    JsonObject info;
    info["signature"] = CString(header.m_szSignature).utf8();
    info["version"] = CString(header.m_szVersion).utf8();
    info["title"] = CString(header.m_szTitle).utf8();
    info["date"] = CString(header.m_szDate).utf8();
    info["user"] = CString(header.m_szUser).utf8();
    info["computer"] = CString(header.m_szComputer).utf8();
    info["folder"] = CString(header.m_szFolder).utf8();
    info["description"] = CString(header.m_szDescription).utf8();
    return info;
}

template <class Table>
void addTable(JsonObject& tables, const char* name, Table& table)
{
    tables[name] = JsonObject::array();
    for (const auto& [key, record] : table.records()) {
        if (!record->isErased()) {
            tables[name].push_back(key.utf8());
        }
    }
}

JsonObject tableInfo(CVexDbDatabase& database)
{
    JsonObject tables;
    addTable(tables, "layers", database.layers());
    addTable(tables, "linetypes", database.linetypes());
    addTable(tables, "colors", database.colors());
    addTable(tables, "textStyles", database.textStyles());
    addTable(tables, "symbols", database.symbols());
    addTable(tables, "projectInfos", database.projectInfos());
    addTable(tables, "revisions", database.revisions());
    addTable(tables, "blocks", database.blocks());
    return tables;
}

JsonObject entityCounts(CVexDbDatabase& database)
{
    JsonObject counts = JsonObject::object();
    for (const auto& [key, record] : database.entities().records()) {
        std::size_t live = 0;
        const CVexDbIdSet& set = static_cast<CVexDbEntityTableRecord&>(*record).entitySet();
        for (auto at = set.begin(); at != set.end(); ++at) {
            live += at.object()->isErased() ? 0 : 1;
        }
        counts[key.utf8()] = live;
    }
    return counts;
}

JsonObject settingsInfo(CVexDbDatabase& database)
{
    const VexDbDrawingSettings_tag& settings = database.settings();
    JsonObject info;
    info["space"] = settings.m_nCurrentSpace;
    info["linetypeScale"] = settings.m_dLinetypeScale;
    info["gridStep"] = settings.m_dGridStep;
    info["limits"] = {{settings.m_ptLimitsMin.x, settings.m_ptLimitsMin.y},
                      {settings.m_ptLimitsMax.x, settings.m_ptLimitsMax.y}};
    info["view"] = {{settings.m_ptViewMin.x, settings.m_ptViewMin.y},
                    {settings.m_ptViewMax.x, settings.m_ptViewMax.y}};
    info["currentLayer"] = CString(settings.m_szLayer).utf8();
    info["currentLinetype"] = CString(settings.m_szLinetype).utf8();
    info["currentColor"] = settings.m_nColorIndex;
    info["currentWeight"] = settings.m_nLineWeight;
    info["currentTextStyle"] = CString(settings.m_szTextStyle).utf8();
    return info;
}

} // namespace

JsonObject drawingInfo(CVexDbDatabase& database)
{
    JsonObject info;
    info["file"] = headerInfo(database);
    info["tables"] = tableInfo(database);
    info["entities"] = entityCounts(database);
    info["extents"] = nullptr; // an empty drawing has none
    if (const std::optional<VexExtents> extents = drawingExtents(database)) {
        info["extents"] = {{extents->left, extents->bottom}, {extents->right, extents->top}};
    }
    info["settings"] = settingsInfo(database);
    return info;
}

std::string infoText(const JsonObject& info)
{
    std::ostringstream text;
    for (const auto& [section, content] : info.items()) {
        text << section;
        if (!content.is_object()) {
            text << ": " << (content.is_null() ? "none" : jsonText(content)) << '\n';
            continue;
        }
        text << ":\n";
        for (const auto& [name, value] : content.items()) {
            text << "  " << name << ": "
                 << (value.is_string() ? value.get<std::string>() : jsonText(value)) << '\n';
        }
    }
    return text.str();
}
